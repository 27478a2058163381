#include "orvane/sources/DetectionPlan.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/DataTypes.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>

namespace Orvane {

namespace {

const QString TimeStampName = QStringLiteral("Time Stamp");
// Record positions run from 1 to 500.
constexpr qint32 LastPosition = 500;

QString tr(const char* text) {
    return QCoreApplication::translate("Orvane::DetectionPlan", text);
}

QString typeWord(const QString& code) {
    const QString word = mOrvane::DataTypeNameFromCode(code);
    return word.isEmpty() ? code : word;
}

// Builds the plan column by column against the layout's names and occupied positions.
class Planner {
public:
    Planner(const CDataSourcesColumns& layout, qint32 nameLengthLimit)
        : m_layout(layout)
        , m_limit(nameLengthLimit > 0 ? nameLengthLimit : 40)
        , m_timeStamp(layout.TSColumn()) {
        if (m_timeStamp && m_timeStamp->ColumnDeleted())
            m_timeStamp.reset();
        for (qint32 i = 1; i <= layout.Count(); ++i) {
            const auto column = layout.Item(i);
            m_taken.insert(column->Column_Name().toCaseFolded());
            if (!column->ColumnDeleted())
                m_occupied.insert(column->Position(), column->Column_Name());
        }
        if (m_timeStamp)
            m_taken.insert(TimeStampName.toCaseFolded());
    }

    DetectionPlan Run(const DetectedColumns& detected) {
        const DetectedColumn* date = timeStampCandidate(detected);
        if (date)
            placeTimeStamp(*date);
        for (const DetectedColumn& column : detected) {
            if (&column != date)
                place(column);
        }
        return m_plan;
    }

private:
    std::shared_ptr<CDataSourcesColumn> existing(const QString& name) const {
        auto column = m_layout.Item(name.trimmed());
        return column && !column->ColumnDeleted() && column != m_timeStamp ? column : nullptr;
    }

    const DetectedColumn* timeStampCandidate(const DetectedColumns& detected) const {
        if (!m_timeStamp)
            return nullptr;
        for (const DetectedColumn& column : detected) {
            if (column.typeCode == QLatin1String("D") && !existing(column.name))
                return &column;
        }
        return nullptr;
    }

    // A time stamp that nothing else has been placed around yet simply moves; otherwise the
    // user decides.
    void placeTimeStamp(const DetectedColumn& date) {
        const qint32 current = m_timeStamp->Position();
        if (current == date.position)
            return;
        if (m_layout.ActiveColumns() == 1 && m_timeStamp->Column_Id() <= 0) {
            m_occupied.remove(current);
            m_occupied.insert(date.position, m_timeStamp->Column_Name());
            m_plan.timeStampPosition = date.position;
            return;
        }
        m_plan.differences << tr("The time stamp is at position %1; the source's first date, "
                                 "\"%2\", is at position %3.")
                                  .arg(current)
                                  .arg(date.name)
                                  .arg(date.position);
    }

    void place(const DetectedColumn& column) {
        if (const auto known = existing(column.name)) {
            compare(*known, column);
            return;
        }
        if (column.position > LastPosition) {
            m_plan.differences << tr("The source's \"%1\" at position %2 lies beyond position %3, "
                                     "the last a column may have.")
                                      .arg(column.name)
                                      .arg(column.position)
                                      .arg(LastPosition);
            return;
        }
        if (m_occupied.contains(column.position)) {
            m_plan.differences << tr("The source's \"%1\" at position %2 falls on column \"%3\".")
                                      .arg(column.name)
                                      .arg(column.position)
                                      .arg(m_occupied.value(column.position));
            return;
        }
        DetectedColumn added = column;
        added.name = uniqueName(column.name);
        m_occupied.insert(added.position, added.name);
        m_plan.additions.append(added);
    }

    void compare(const CDataSourcesColumn& known, const DetectedColumn& column) {
        if (known.Position() != column.position)
            m_plan.differences << tr("Column \"%1\" is at position %2; the source has it at "
                                     "position %3.")
                                      .arg(known.Column_Name())
                                      .arg(known.Position())
                                      .arg(column.position);
        if (known.Column_Type() != column.typeCode)
            m_plan.differences << tr("Column \"%1\" is %2; the source's values look %3.")
                                      .arg(known.Column_Name(), typeWord(known.Column_Type()),
                                           typeWord(column.typeCode));
    }

    // Trimmed, within the width, and unlike any name in the layout (deleted columns included,
    // so none is brought back by accident).
    QString uniqueName(const QString& proposed) {
        QString base = proposed.trimmed().left(m_limit);
        if (base.isEmpty())
            base = QStringLiteral("Column");
        QString name = base;
        for (int n = 2; m_taken.contains(name.toCaseFolded()); ++n) {
            const QString suffix = QStringLiteral("_%1").arg(n);
            name = base.left(m_limit - suffix.size()) + suffix;
        }
        m_taken.insert(name.toCaseFolded());
        return name;
    }

    const CDataSourcesColumns& m_layout;
    qint32 m_limit;
    std::shared_ptr<CDataSourcesColumn> m_timeStamp;
    QSet<QString> m_taken;
    QHash<qint32, QString> m_occupied;
    DetectionPlan m_plan;
};

} // namespace

DetectionPlan DetectionPlan::Make(const CDataSourcesColumns& layout,
                                  const DetectedColumns& detected, qint32 nameLengthLimit) {
    return Planner(layout, nameLengthLimit).Run(detected);
}

// The entity's fields named as the new columns, each proposed once and only when no column of
// the layout has it already (a field fills one column of a layout).
void DetectionPlan::ProposeFields(const CDataSourcesColumns& layout) {
    fields.assign(static_cast<std::size_t>(additions.size()), nullptr);
    if (!layout.Entity())
        return;
    const qint32 entityId = layout.Entity()->Entity_Id();
    QSet<qint32> taken;
    for (const auto& column : layout)
        if (column->Field() && !column->ColumnDeleted())
            taken.insert(column->Field()->Field_Id());
    std::vector<QString> ids(fields.size());
    QStringList wanted;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const qint32 fieldId =
            ColumnSave::FieldIdNamed(entityId, additions[static_cast<qsizetype>(i)].name);
        if (fieldId <= 0 || taken.contains(fieldId))
            continue;
        taken.insert(fieldId);
        ids[i] = QString::number(fieldId);
        wanted << ids[i];
    }
    if (wanted.isEmpty())
        return;
    const auto found = HostRegistry::FieldInfo().FieldsByIds(wanted.join(QLatin1Char(',')));
    for (std::size_t i = 0; i < ids.size(); ++i)
        if (!ids[i].isEmpty())
            fields[i] = found.value(ids[i]);
}

std::vector<std::shared_ptr<CDataSourcesColumn>>
DetectionPlan::Apply(CDataSourcesColumns& layout, qint32 firstColPosition) const {
    if (timeStampPosition > 0) {
        const auto timeStamp = layout.TSColumn();
        timeStamp->setPosition(timeStampPosition);
        timeStamp->setDirty(true);
    }
    std::vector<std::shared_ptr<CDataSourcesColumn>> added;
    for (const DetectedColumn& column : additions) {
        const auto model = layout.Add(column.name);
        model->setColumn_Type(column.typeCode);
        model->setPosition(column.position);
        const std::size_t at = added.size();
        if (at < fields.size() && fields[at]) {
            model->setField(fields[at]);
            model->setFieldMapped(true);
        }
        model->setColPosition(firstColPosition + static_cast<qint32>(at));
        added.push_back(model);
    }
    return added;
}

} // namespace Orvane
