#pragma once

#include "orvane/sources/DetectedColumn.h"

#include <QStringList>
#include <memory>
#include <vector>

namespace Orvane {

class CDataSourcesColumn;
class CDataSourcesColumns;
class IField;

// What Detect Columns would do to a layout: the columns to append, a new place for the time
// stamp, and what differs from columns the layout already has, which it leaves alone.
struct DetectionPlan {
    // Names trimmed, cut to the column-name width and unique in the layout.
    DetectedColumns additions;
    // The position the time-stamp column moves to; 0 when it stays.
    qint32 timeStampPosition = 0;
    QStringList differences;
    // Beside each addition, the entity's dictionary field of the same name when the layout does
    // not use it yet, proposed for the column's Field; null where there is none.
    std::vector<std::shared_ptr<IField>> fields;

    bool ChangesLayout() const { return !additions.isEmpty() || timeStampPosition > 0; }

    // Fills `fields` from the dictionary of the layout's entity (one lookup for all of them).
    void ProposeFields(const CDataSourcesColumns& layout);

    // Carries the plan out on the layout: the time stamp's new place and the new columns, each
    // mapped to its proposed field and numbered in the editor from firstColPosition on.
    std::vector<std::shared_ptr<CDataSourcesColumn>> Apply(CDataSourcesColumns& layout,
                                                           qint32 firstColPosition) const;

    // nameLengthLimit is the declared width of the column name in the database. In a time
    // series the first date column of the source is the time stamp.
    static DetectionPlan Make(const CDataSourcesColumns& layout, const DetectedColumns& detected,
                              qint32 nameLengthLimit);
};

} // namespace Orvane
