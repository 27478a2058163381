#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>

namespace Orvane::Studio {

// What the dictionary holds of one field, as one read of its tables gives it.
struct FieldValues {
    qint32 id = 0;
    QString name;
    qint32 entityId = 0;
    QString entityLabel;
    QString description;
    QString heading1;
    QString heading2;
    qint32 aggregationPairId = 0;
    QString timeAggregator;
    QString elementAggregator;
    QString dataType; // I, F, S, E or D
    QString appGroup;
    QString groupShort;   // the field group's short name: SYS, KPI, EXT, ...
    QString technologies; // names in bit order, joined by ", "
    qint32 technologyMask = 0;
    qint32 style = 0;
    qint32 styleColour = 0;
    qint32 ownerId = 0;
    QDateTime savedAt;
    QHash<QString, QString> extra; // extra-column name to value
};

// One technology of the radio network and its bit in a technology mask.
struct Technology {
    QString name;
    qint32 bit = 0;
};

// One entity of the dictionary, where it stands in the network and whether external data may
// deliver rows for it.
struct EntityRow {
    qint32 id = 0;
    QString name;
    QString label;
    qint32 parentId = 0; // 0 at the top
    bool allowExternal = false;
};

// A field as its entity knows it.
struct EntityField {
    qint32 id = 0;
    QString name;
};

} // namespace Orvane::Studio
