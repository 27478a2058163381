#include "orvane/model/DataTypes.h"

#include <QStringList>

namespace Orvane::mOrvane {

QString DataTypeNameFromCode(const QString& code) {
    // The grid asks for every Type cell it paints; the fixed list is split once.
    static const QStringList names = DataTypeList.split(QLatin1Char('\t'), Qt::SkipEmptyParts);
    const QString wanted = code.trimmed();
    for (const QString& name : names) {
        if (name.left(1) == wanted)
            return name;
    }
    return QString();
}

QString DataTypeCode(const QString& typeName) {
    return typeName.left(1);
}

} // namespace Orvane::mOrvane
