#pragma once

#include "orvane/model/CDataSourcesColumn.h"

#include <QString>
#include <memory>
#include <vector>

namespace Orvane {

// What CDataSourcesColumns::SaveState keeps of one collection.
class CDataSourcesColumnsState {
public:
    struct Item {
        QString key;
        std::shared_ptr<CDataSourcesColumn> column;
        CDataSourcesColumn values;
        qint32 fieldId = 0;
    };

    std::vector<Item> items;
    qint32 edsId = 0;
};

} // namespace Orvane
