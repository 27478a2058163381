#pragma once

#include <QList>
#include <QString>

namespace Orvane {

struct FrequencyItem {
    qint32 frequency_id = 0;
    QString Description;
};

// The frequencies a time-series source may have, read once per database connection with the
// frequency-list query for the orientation "T" and shared by every editor.
namespace FrequencyList {

const QList<FrequencyItem>& Items();
// The description of the first item with that id; empty when there is none.
QString DescriptionOf(qint32 frequencyId);
// The id of the first item with that description; 0 when there is none.
qint32 IdOf(const QString& description);

} // namespace FrequencyList

} // namespace Orvane
