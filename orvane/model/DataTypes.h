#pragma once

#include <QString>
#include <QStringList>

// The column and field types: stored as one letter, shown as a word.
namespace Orvane::mOrvane {

// The type words; splitting at tabs yields a sixth, empty entry.
inline const QString DataTypeList = QStringLiteral("Integer\tFloat\tString\tENUM\tDate\t");

// The types a dictionary field may have: the column types but ENUM and Date.
inline const QStringList FieldDataTypes{QStringLiteral("Integer"), QStringLiteral("Float"),
                                        QStringLiteral("String")};

// The word of a one-letter code; empty when no type starts with it.
QString DataTypeNameFromCode(const QString& code);
// The one-letter code of a type word.
QString DataTypeCode(const QString& typeName);

} // namespace Orvane::mOrvane
