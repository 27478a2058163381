#include "studio/db/SqlLiterals.h"

#include "orvane/host/OrvaneError.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>
#include <QTime>
#include <cmath>
#include <limits>

namespace Orvane::Studio {

namespace {

QString quoted(const QString& text) {
    if (text.contains(QChar(u'\0')))
        throw Error(
            QStringLiteral("A text value holds a NUL character, which no database stores."));
    QString escaped = text;
    escaped.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + escaped + QLatin1Char('\'');
}

QString floatingPoint(double value) {
    if (!std::isfinite(value))
        throw Error(QStringLiteral("The number %1 has no SQL literal.").arg(value));
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString timeText(const QTime& time) {
    return time.toString(time.msec() ? QStringLiteral("HH:mm:ss.zzz") : QStringLiteral("HH:mm:ss"));
}

QString dateTimeText(const QDateTime& dateTime) {
    return dateTime.toString(dateTime.time().msec() ? Qt::ISODateWithMs : Qt::ISODate);
}

bool isPlainName(const QString& name) {
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_$#]*$"));
    return plain.match(name).hasMatch();
}

qint32 checkedLong(long double value, const QVariant& original) {
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        throw Error(QStringLiteral("The value %1 does not fit a 32-bit whole number.")
                        .arg(original.toString()));
    return static_cast<qint32>(value);
}

qint32 wholeNumber(double value, const QVariant& original) {
    if (!std::isfinite(value) || std::trunc(value) != value)
        throw Error(QStringLiteral("The value %1 is not a whole number.").arg(original.toString()));
    return checkedLong(value, original);
}

qint32 longFromText(const QVariant& value) {
    const QString text = value.toString().trimmed();
    if (text.isEmpty())
        return 0;
    bool ok = false;
    const qlonglong integer = text.toLongLong(&ok);
    if (ok)
        return checkedLong(integer, value);
    const double number = text.toDouble(&ok);
    if (!ok)
        throw Error(QStringLiteral("The value \"%1\" is not a number.").arg(text));
    return wholeNumber(number, value);
}

} // namespace

QString SqlLiterals::Format(const QVariant& value) {
    if (!value.isValid() || value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("'Y'") : QStringLiteral("'N'");
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::SChar:
        return QString::number(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UChar:
        return QString::number(value.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return floatingPoint(value.toDouble());
    case QMetaType::QDate:
        return value.toDate().isValid() ? quoted(value.toDate().toString(Qt::ISODate))
                                        : QStringLiteral("NULL");
    case QMetaType::QTime:
        return value.toTime().isValid() ? quoted(timeText(value.toTime())) : QStringLiteral("NULL");
    case QMetaType::QDateTime:
        return value.toDateTime().isValid() ? quoted(dateTimeText(value.toDateTime()))
                                            : QStringLiteral("NULL");
    case QMetaType::QString:
    case QMetaType::QChar:
    case QMetaType::Char:
    case QMetaType::QByteArray:
        return quoted(value.toString());
    default:
        throw Error(QStringLiteral("A value of type %1 has no SQL literal.")
                        .arg(QString::fromLatin1(value.typeName())));
    }
}

QString SqlLiterals::SetList(const QList<SetPair>& pairs) {
    QStringList items;
    for (const auto& [column, value] : pairs) {
        if (!isPlainName(column))
            throw Error(QStringLiteral("\"%1\" is not a column name.").arg(column));
        items << column + QStringLiteral(" = ") + Format(value);
    }
    return QLatin1Char(' ') + items.join(QStringLiteral(", "));
}

QString SqlLiterals::ValueList(const QVariantList& values) {
    QStringList items;
    for (const QVariant& value : values)
        items << Format(value);
    return items.join(QLatin1Char(','));
}

qint32 SqlLiterals::AsLong(const QVariant& value) {
    // What the databases give for the ids a load reads (SQLite's integers, PostgreSQL's integer
    // columns), taken without a conversion: a load reads thousands.
    if (value.typeId() == QMetaType::Int)
        return *static_cast<const int*>(value.constData());
    if (value.typeId() == QMetaType::LongLong) {
        const qlonglong number = *static_cast<const qlonglong*>(value.constData());
        if (number >= std::numeric_limits<qint32>::min() &&
            number <= std::numeric_limits<qint32>::max())
            return qint32(number);
    }
    if (!value.isValid() || value.isNull())
        return 0;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? 1 : 0;
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::SChar:
        return checkedLong(value.toLongLong(), value);
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UChar:
        return checkedLong(value.toULongLong(), value);
    case QMetaType::Double:
    case QMetaType::Float:
        return wholeNumber(value.toDouble(), value);
    case QMetaType::QString:
    case QMetaType::QByteArray:
    case QMetaType::QChar:
        return longFromText(value);
    default:
        throw Error(QStringLiteral("A value of type %1 is not a number.")
                        .arg(QString::fromLatin1(value.typeName())));
    }
}

bool SqlLiterals::AsBoolean(const QVariant& value) {
    if (!value.isValid() || value.isNull())
        return false;
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    QString text = value.toString();
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text == QLatin1String("Y");
}

} // namespace Orvane::Studio
