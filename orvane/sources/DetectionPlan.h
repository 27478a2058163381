#pragma once

#include "orvane/sources/DetectedColumn.h"

#include <QStringList>

namespace Orvane {

class CDataSourcesColumns;

// What Detect Columns would do to a layout: the columns to append, a new place for the time
// stamp, and what differs from columns the layout already has, which it leaves alone.
struct DetectionPlan {
    // Names trimmed, cut to the column-name width and unique in the layout.
    DetectedColumns additions;
    // The position the time-stamp column moves to; 0 when it stays.
    qint32 timeStampPosition = 0;
    QStringList differences;

    bool ChangesLayout() const { return !additions.isEmpty() || timeStampPosition > 0; }

    // nameLengthLimit is the declared width of the column name in the database. In a time
    // series the first date column of the source is the time stamp.
    static DetectionPlan Make(const CDataSourcesColumns& layout, const DetectedColumns& detected,
                              qint32 nameLengthLimit);
};

} // namespace Orvane
