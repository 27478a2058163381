#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <ostream>

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
