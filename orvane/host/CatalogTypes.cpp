#include "orvane/host/CatalogTypes.h"

namespace Orvane {

QString CatalogTypes::Code(QMetaType type) {
    switch (type.id()) {
    case QMetaType::Bool:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return QStringLiteral("I");
    case QMetaType::Float:
    case QMetaType::Double:
        return QStringLiteral("F");
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return QStringLiteral("D");
    default:
        return QStringLiteral("S");
    }
}

} // namespace Orvane
