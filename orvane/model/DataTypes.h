#pragma once

#include <QString>

// The column and field types: stored as one letter, shown as a word.
namespace Orvane::mOrvane {

// The type words; splitting at tabs yields a sixth, empty entry.
inline const QString DataTypeList = QStringLiteral("Integer\tFloat\tString\tENUM\tDate\t");

// The word of a one-letter code; empty when no type starts with it.
QString DataTypeNameFromCode(const QString& code);
// The one-letter code of a type word.
QString DataTypeCode(const QString& typeName);

} // namespace Orvane::mOrvane
