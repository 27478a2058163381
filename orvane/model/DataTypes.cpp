#include "orvane/model/DataTypes.h"

#include <QStringList>

namespace Orvane::mOrvane {

QString DataTypeNameFromCode(const QString& code) {
    const QString wanted = code.trimmed();
    for (const QString& name : DataTypeList.split(QLatin1Char('\t'))) {
        if (name.left(1) == wanted)
            return name;
    }
    return QString();
}

QString DataTypeCode(const QString& typeName) {
    return typeName.left(1);
}

} // namespace Orvane::mOrvane
