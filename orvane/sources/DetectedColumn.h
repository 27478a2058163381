#pragma once

#include <QList>
#include <QString>

namespace Orvane {

// A column found in a source (a file's header or a table's catalog), as the column layout
// editor's Detect Columns command takes it.
struct DetectedColumn {
    QString name;
    // One of the one-letter type codes: "I", "F", "S", "E" or "D".
    QString typeCode;
    // 1-based place of the value in the record.
    qint32 position = 0;
};

using DetectedColumns = QList<DetectedColumn>;

} // namespace Orvane
