#pragma once

#include <QMetaType>
#include <QString>

namespace Orvane {

// How a database column's value type becomes a column type of a data source.
class CatalogTypes {
public:
    // "I" for whole numbers and truth values, "F" for other numbers, "D" for dates and times,
    // "S" for everything else; a catalog cannot tell an ENUM.
    static QString Code(QMetaType type);
};

} // namespace Orvane
