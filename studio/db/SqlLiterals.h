#pragma once

#include "orvane/host/IQueryService.h"

#include <QString>
#include <QVariant>

namespace Orvane::Studio {

// How values become SQL text and come back from recordsets, the same on every backend.
//
// Literals: a null (or invalid) value is NULL; text is quoted with embedded quotes doubled;
// numbers are written plainly (integers in decimal, floating point in its shortest exact form);
// a Boolean is 'Y' or 'N', the flag convention of the schema; dates, times and date-times are
// quoted ISO 8601 ('2024-05-31', '13:45:00', '2024-05-31T13:45:00'). Text holding a NUL
// character, a number that is not finite and values of any other type are Orvane::Errors.
class SqlLiterals {
public:
    static QString Format(const QVariant& value);
    // " a = 1, b = 'x'": a leading blank, pairs joined by ", ". Column names must be plain names.
    static QString SetList(const QList<SetPair>& pairs);
    // "1,'x',NULL": no parentheses, no blanks.
    static QString ValueList(const QVariantList& values);

    // Null and empty text are 0; whole numbers in any numeric or text form are read; anything
    // else (fractions, words, values beyond 32 bits) is an Orvane::Error.
    static qint32 AsLong(const QVariant& value);
    // "Y" is true (trailing blanks of a CHAR column ignored), as is a Boolean true.
    static bool AsBoolean(const QVariant& value);
};

} // namespace Orvane::Studio
