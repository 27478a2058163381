#pragma once

#include "orvane/host/IDocumentType.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"

#include <QHash>
#include <QMap>
#include <QSet>

namespace Orvane::Testing {

class FakeEntity : public IEntity {
public:
    FakeEntity(qint32 id, QString name, QString label)
        : id(id)
        , name(std::move(name))
        , label(std::move(label)) {}
    qint32 Entity_Id() const override { return id; }
    QString Entity_Name() const override { return name; }
    QString Entity_Label() const override { return label; }
    void Reload() override { ++reloads; }

    qint32 id;
    QString name;
    QString label;
    int reloads = 0;
};

// A field object whose every value the test sets directly.
class FakeField : public IField {
public:
    FakeField() = default;
    FakeField(qint32 id, QString name)
        : id(id)
        , name(std::move(name)) {}

    qint32 Field_Id() const override { return id; }
    void setField_Id(qint32 value) override { id = value; }
    QString Field_Name() const override { return name; }
    qint32 Entity_Id() const override { return entityId; }
    QString Entity_Label() const override { return entityLabel; }
    QString Description() const override { return description; }
    QString Heading1() const override { return heading1; }
    QString Heading2() const override { return heading2; }
    QString TimeAggregator() const override { return timeAggregator; }
    QString ElementAggregator() const override { return elementAggregator; }
    qint32 AggregationPairId() const override { return aggregationPairId; }
    QString DataType() const override { return dataType; }
    QString Technologies() const override { return technologies; }
    qint32 TechnologyMask() const override { return technologyMask; }
    qint32 Style() const override { return style; }
    qint32 StyleColour() const override { return styleColour; }
    QString ExtraColumnValue(const QString& column) const override { return extra.value(column); }
    // Records the request and, unless told to fail, takes its values.
    bool Save(const FieldSaveRequest& request, QVariant& result) override;
    FieldSaveError LastError() const override { return error; }

    qint32 id = 0;
    QString name;
    qint32 entityId = 0;
    QString entityLabel;
    QString description, heading1, heading2;
    QString timeAggregator, elementAggregator;
    qint32 aggregationPairId = 0;
    QString dataType = QStringLiteral("I");
    QString technologies;
    qint32 technologyMask = 0;
    qint32 style = 0;
    qint32 styleColour = 0;
    QHash<QString, QString> extra;

    bool failSave = false;
    FieldSaveError error;
    QList<FieldSaveRequest> saves;
};

// A dictionary held in memory.
class FakeFieldInfoService : public IFieldInfoService {
public:
    std::shared_ptr<IEntity> EntityById(qint32 entityId) override {
        return entities.value(entityId);
    }
    QHash<QString, std::shared_ptr<IField>> FieldsByIds(const QString& idList) override;
    std::shared_ptr<IField> FieldById(const QString&, qint32 fieldId) override {
        return fields.value(fieldId);
    }
    std::shared_ptr<IField> NewField() override { return std::make_shared<FakeField>(); }
    void RegisterField(const std::shared_ptr<IField>&) override {}
    std::shared_ptr<IEntity> ExternalDataEntity(const QString& category,
                                                const QString& key) override;
    QString FieldTypeMask(const QString& filterName, const QString&) override {
        return filterName == "External" ? "X" : QString();
    }
    QStringList TechnologyTypes() override { return technologyTypes; }
    QVariant TechnologyType(const QString& name) override;
    FieldTextLimits TextLimits() override { return {30, 80, 20, 20}; }
    QStringList AggregatorNames() override { return {"Sum", "Average", "Maximum"}; }
    bool ElementAggregationOffered() override { return elementAggregation; }
    std::optional<qint32> AggregationPairId(const QString& timeAggregator,
                                            const QString& elementAggregator) override;
    QList<ExtraColumn> ExtraColumns(const QString&) override { return extraColumns; }
    bool ChooseStyle(qint32& style, qint32& styleColour, QWidget*) override;

    std::shared_ptr<FakeEntity> addEntity(qint32 id, const QString& name, const QString& label,
                                          bool externalData = true);
    std::shared_ptr<FakeField> addField(qint32 id, const QString& name, qint32 entityId = 0);

    QMap<qint32, std::shared_ptr<FakeEntity>> entities;
    QSet<qint32> externalDataEntities;
    QMap<qint32, std::shared_ptr<FakeField>> fields;
    QStringList fieldIdLists; // every list asked for by FieldsByIds
    QStringList technologyTypes{QStringLiteral("All"), QStringLiteral("GSM"),
                                QStringLiteral("LTE")};
    bool elementAggregation = true;
    // Valid (time, element) pairs and their ids; empty means every pair is valid with id 1.
    QMap<std::pair<QString, QString>, qint32> pairs;
    QList<ExtraColumn> extraColumns;
    bool styleChosen = false;
    qint32 chosenStyle = 0;
    qint32 chosenStyleColour = 0;
};

class FakeDocumentType : public IDocumentType {
public:
    explicit FakeDocumentType(QString typeName, QString displayName = QString())
        : typeName(std::move(typeName))
        , displayName(std::move(displayName)) {}
    QString TypeName() const override { return typeName; }
    QString AppName() const override { return QString(); }
    QString DisplayName() const override { return displayName; }

    QString typeName, displayName;
};

} // namespace Orvane::Testing
