#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>

class QWidget;

namespace Orvane {

class IEntity;
class IField;

// An extra column that the dictionary defines for an application group.
struct ExtraColumn {
    QString name;
    bool inUse = false;
};

// Maximum lengths of a field's texts.
struct FieldTextLimits {
    qint32 name = 0;
    qint32 description = 0;
    qint32 heading1 = 0;
    qint32 heading2 = 0;
};

// The host's dictionary of entities and fields.
class IFieldInfoService {
public:
    virtual ~IFieldInfoService() = default;

    // Entities and fields.
    virtual std::shared_ptr<IEntity> EntityById(qint32 entityId) = 0;
    // One batch lookup; the result is keyed by the decimal field id.
    virtual QHash<QString, std::shared_ptr<IField>> FieldsByIds(const QString& idList) = 0;
    virtual std::shared_ptr<IField> FieldById(const QString& appGroup, qint32 fieldId) = 0;
    virtual std::shared_ptr<IField> NewField() = 0;
    // Makes a field created by a save known to later lookups.
    virtual void RegisterField(const std::shared_ptr<IField>& field) = 0;

    // Entity selection: null when the entity may not be used for external data.
    virtual std::shared_ptr<IEntity> ExternalDataEntity(const QString& category,
                                                        const QString& key) = 0;
    virtual QString FieldTypeMask(const QString& filterName, const QString& category) = 0;
    virtual QStringList TechnologyTypes() = 0;
    virtual QVariant TechnologyType(const QString& name) = 0;

    // The field editor.
    virtual FieldTextLimits TextLimits() = 0;
    virtual QStringList AggregatorNames() = 0;
    virtual bool ElementAggregationOffered() = 0;
    // The id of the aggregation pair, or nothing when the combination is not valid.
    virtual std::optional<qint32> AggregationPairId(const QString& timeAggregator,
                                                    const QString& elementAggregator) = 0;
    virtual QList<ExtraColumn> ExtraColumns(const QString& appGroup) = 0;
    // Lets the user choose a style; false when cancelled, the values then unchanged.
    virtual bool ChooseStyle(qint32& style, qint32& styleColour, QWidget* parent) = 0;
};

} // namespace Orvane
