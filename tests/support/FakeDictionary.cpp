#include "tests/support/FakeDictionary.h"

namespace Orvane::Testing {

bool FakeField::Save(const FieldSaveRequest& request, QVariant&) {
    saves.append(request);
    if (failSave)
        return false;
    name = request.name;
    entityId = request.entityId;
    technologyMask = request.technologyMask;
    dataType = request.dataTypeCode;
    heading1 = request.heading1;
    heading2 = request.heading2;
    description = request.description;
    aggregationPairId = request.aggregationPairId;
    style = request.style;
    styleColour = request.styleColour;
    for (const auto& [column, value] : request.extraColumns)
        extra.insert(column, value);
    return true;
}

QHash<QString, std::shared_ptr<IField>> FakeFieldInfoService::FieldsByIds(const QString& idList) {
    fieldIdLists << idList;
    QHash<QString, std::shared_ptr<IField>> found;
    for (const QString& id : idList.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (const auto field = fields.value(id.toInt()))
            found.insert(id, field);
    }
    return found;
}

std::shared_ptr<IEntity> FakeFieldInfoService::ExternalDataEntity(const QString&,
                                                                  const QString& key) {
    const qint32 id = key.toInt();
    return externalDataEntities.contains(id) ? entities.value(id) : nullptr;
}

QVariant FakeFieldInfoService::TechnologyType(const QString& name) {
    const qsizetype index = technologyTypes.indexOf(name);
    return index < 0 ? QVariant() : QVariant(static_cast<int>(index));
}

std::optional<qint32> FakeFieldInfoService::AggregationPairId(const QString& timeAggregator,
                                                              const QString& elementAggregator) {
    if (pairs.isEmpty())
        return 1;
    const auto found = pairs.constFind({timeAggregator, elementAggregator});
    if (found == pairs.constEnd())
        return std::nullopt;
    return *found;
}

bool FakeFieldInfoService::ChooseStyle(qint32& style, qint32& styleColour, QWidget*) {
    if (!styleChosen)
        return false;
    style = chosenStyle;
    styleColour = chosenStyleColour;
    return true;
}

std::shared_ptr<FakeEntity> FakeFieldInfoService::addEntity(qint32 id, const QString& name,
                                                            const QString& label,
                                                            bool externalData) {
    auto entity = std::make_shared<FakeEntity>(id, name, label);
    entities.insert(id, entity);
    if (externalData)
        externalDataEntities.insert(id);
    return entity;
}

std::shared_ptr<FakeField> FakeFieldInfoService::addField(qint32 id, const QString& name,
                                                          qint32 entityId) {
    auto field = std::make_shared<FakeField>(id, name);
    field->entityId = entityId;
    fields.insert(id, field);
    return field;
}

} // namespace Orvane::Testing
