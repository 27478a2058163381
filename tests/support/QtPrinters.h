#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <ostream>
#include <type_traits>

// Lets GoogleTest print Qt values readably when an expectation fails.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& value, std::ostream* out) {
    *out << '"' << value.toStdString() << '"';
}
inline void PrintTo(const QStringList& value, std::ostream* out) {
    *out << '[';
    for (qsizetype i = 0; i < value.size(); ++i)
        *out << (i ? ", \"" : "\"") << value[i].toStdString() << '"';
    *out << ']';
}
inline void PrintTo(const QVariant& value, std::ostream* out) {
    *out << (value.isNull() ? std::string("null") : value.toString().toStdString());
}
QT_END_NAMESPACE

namespace Orvane {
// Scoped enums print as their numbers rather than as raw bytes.
template <typename Enum>
concept ScopedEnum = std::is_enum_v<Enum> && !std::is_convertible_v<Enum, int>;
template <ScopedEnum Enum> void PrintTo(const Enum& value, std::ostream* out) {
    *out << static_cast<std::underlying_type_t<Enum>>(value);
}
namespace Studio {
using Orvane::PrintTo;
}
} // namespace Orvane
