#include "studio/dictionary/DictionaryService.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "studio/dictionary/DictionaryEntity.h"
#include "studio/dictionary/DictionaryField.h"
#include "studio/dictionary/DictionarySql.h"
#include "studio/dictionary/FieldStore.h"
#include "studio/dictionary/FieldStyleDialog.h"

#include <QDialog>
#include <QSet>

namespace Orvane::Studio {

namespace {

const QString AllFilter = QStringLiteral("All");
const QString ExternalFilter = QStringLiteral("External");
// The groups external data may use: the fields sources fill and the stored fields keys name.
const QStringList ExternalGroups{QStringLiteral("SYS"), QStringLiteral("EXT")};
const QString ElementAggregationSetting = QStringLiteral("ElementAggregation");

// The widths of the studio's schema, for catalogs that do not tell.
constexpr FieldTextLimits SchemaLimits{30, 80, 20, 20};

// The positive ids of a comma-separated list, each once, in the list's order.
QList<qint32> idsOf(const QString& idList) {
    QList<qint32> ids;
    QSet<qint32> seen;
    for (const QString& piece : idList.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool ok = false;
        const qint32 id = piece.trimmed().toInt(&ok);
        if (ok && id > 0 && !seen.contains(id)) {
            seen.insert(id);
            ids << id;
        }
    }
    return ids;
}

EntityRow entityRowOf(IQueryService& query, const IRecordset& rst) {
    return EntityRow{query.ValueAsLong(rst.Value(QStringLiteral("entity_id"))),
                     rst.Value(QStringLiteral("entity_name")).toString().trimmed(),
                     rst.Value(QStringLiteral("entity_label")).toString().trimmed(),
                     query.ValueAsLong(rst.Value(QStringLiteral("parent_entity_id"))),
                     query.ValueAsBoolean(rst.Value(QStringLiteral("allow_external")))};
}

qint32 widthOr(IQueryService& query, const char* table, const char* column, qint32 fallback) {
    const qint32 width = query.ColumnWidth(QLatin1String(table), QLatin1String(column));
    return width > 0 ? width : fallback;
}

} // namespace

DictionaryService::DictionaryService(IQueryService& query)
    : m_query(query) {}

DictionaryService::~DictionaryService() = default;

// Entities

std::shared_ptr<IEntity> DictionaryService::EntityById(qint32 entityId) {
    return entityFrom(entityId);
}

std::shared_ptr<IEntity> DictionaryService::ExternalDataEntity(const QString&, const QString& key) {
    bool ok = false;
    const qint32 id = key.trimmed().toInt(&ok);
    if (!ok)
        return nullptr;
    const auto entity = entityFrom(id);
    if (!entity || !entity->AllowsExternalData())
        return nullptr;
    return entity;
}

std::optional<EntityRow> DictionaryService::EntityRowById(qint32 entityId) {
    const auto rst = m_query.OpenRecordset(DictionarySql::Entity(entityId), 60);
    if (!rst || rst->Eof())
        return std::nullopt;
    return entityRowOf(m_query, *rst);
}

QList<EntityRow> DictionaryService::Entities() {
    QList<EntityRow> entities;
    const auto rst = m_query.OpenRecordset(DictionarySql::Entities(), 60);
    for (; rst && !rst->Eof(); rst->MoveNext())
        entities << entityRowOf(m_query, *rst);
    return entities;
}

QList<EntityField> DictionaryService::FieldsOfEntity(qint32 entityId) {
    QList<EntityField> fields;
    const auto rst = m_query.OpenRecordset(DictionarySql::FieldsOfEntity(entityId), 60);
    for (; rst && !rst->Eof(); rst->MoveNext())
        fields << EntityField{m_query.ValueAsLong(rst->Value(QStringLiteral("field_id"))),
                              rst->Value(QStringLiteral("name")).toString()};
    return fields;
}

std::shared_ptr<DictionaryEntity> DictionaryService::entityFrom(qint32 entityId) {
    const std::optional<EntityRow> row = EntityRowById(entityId);
    if (!row)
        return nullptr;
    return std::make_shared<DictionaryEntity>(*this, *row);
}

// Fields

QHash<QString, std::shared_ptr<IField>> DictionaryService::FieldsByIds(const QString& idList) {
    QHash<QString, std::shared_ptr<IField>> fields;
    const QList<qint32> ids = idsOf(idList);
    if (ids.isEmpty())
        return fields;
    for (FieldValues& values : FieldStore(m_query).Read(DictionarySql::FieldsWithIds(ids)))
        fields.insert(QString::number(values.id), fieldFrom(std::move(values)));
    return fields;
}

std::shared_ptr<IField> DictionaryService::FieldById(const QString& appGroup, qint32 fieldId) {
    if (fieldId <= 0)
        return nullptr;
    QList<FieldValues> found =
        FieldStore(m_query).Read(DictionarySql::FieldOfAppGroup(m_query, fieldId, appGroup));
    if (found.isEmpty())
        return nullptr;
    return fieldFrom(std::move(found.first()));
}

QList<std::shared_ptr<DictionaryField>>
DictionaryService::FieldsOfAppGroup(const QString& appGroup) {
    QList<std::shared_ptr<DictionaryField>> fields;
    for (FieldValues& values :
         FieldStore(m_query).Read(DictionarySql::FieldsOfAppGroup(m_query, appGroup)))
        fields << fieldFrom(std::move(values));
    return fields;
}

std::shared_ptr<IField> DictionaryService::NewField() {
    return fieldFrom(FieldValues{});
}

void DictionaryService::RegisterField(const std::shared_ptr<IField>& field) {
    if (!field || field->Field_Id() <= 0)
        return;
    FieldStore store(m_query);
    const auto own = std::dynamic_pointer_cast<DictionaryField>(field);
    store.WriteRegistered(own ? own->Values() : valuesOf(*field));
    if (!own)
        return;
    QList<FieldValues> stored = store.Read(DictionarySql::FieldsWithIds({field->Field_Id()}));
    if (stored.isEmpty())
        return;
    stored.first().savedAt = own->Values().savedAt;
    own->setValues(std::move(stored.first()));
}

// A field object of another kind tells what it can through the field interface.
FieldValues DictionaryService::valuesOf(const IField& field) {
    FieldValues values;
    values.id = field.Field_Id();
    values.appGroup = QStringLiteral("Traffic");
    values.styleColour = field.StyleColour();
    for (const ExtraColumnRow& column : FieldStore(m_query).ExtraColumns(values.appGroup)) {
        const QString value = field.ExtraColumnValue(column.name);
        if (!value.isEmpty())
            values.extra.insert(column.name, value);
    }
    return values;
}

std::shared_ptr<DictionaryField> DictionaryService::fieldFrom(FieldValues values) {
    return std::make_shared<DictionaryField>(m_query, std::move(values));
}

// Filters of the template tree

QString DictionaryService::FieldTypeMask(const QString& filterName, const QString&) {
    const QString name = filterName.trimmed();
    QStringList all;
    QStringList named;
    const auto rst = m_query.OpenRecordset(DictionarySql::FieldGroups(), 60);
    for (; rst && !rst->Eof(); rst->MoveNext()) {
        const QString shortName =
            rst->Value(QStringLiteral("field_group_short")).toString().trimmed();
        const QString longName =
            rst->Value(QStringLiteral("field_group_name")).toString().trimmed();
        all << shortName;
        if (shortName.compare(name, Qt::CaseInsensitive) == 0 ||
            longName.compare(name, Qt::CaseInsensitive) == 0)
            named << shortName;
    }
    if (name.compare(AllFilter, Qt::CaseInsensitive) == 0)
        return all.join(QLatin1Char(','));
    if (name.compare(ExternalFilter, Qt::CaseInsensitive) == 0) {
        QStringList external;
        for (const QString& group : all) {
            if (ExternalGroups.contains(group, Qt::CaseInsensitive))
                external << group;
        }
        return external.join(QLatin1Char(','));
    }
    return named.join(QLatin1Char(','));
}

QStringList DictionaryService::MaskGroups(const QString& mask) {
    QStringList groups;
    for (const QString& group : mask.split(QLatin1Char(','), Qt::SkipEmptyParts))
        groups << group.trimmed();
    return groups;
}

QStringList DictionaryService::TechnologyTypes() {
    QStringList names{AllFilter};
    for (const Technology& technology : Technologies())
        names << technology.name;
    return names;
}

QVariant DictionaryService::TechnologyType(const QString& name) {
    if (name.trimmed().compare(AllFilter, Qt::CaseInsensitive) == 0)
        return 0;
    for (const Technology& technology : Technologies()) {
        if (technology.name.compare(name.trimmed(), Qt::CaseInsensitive) == 0)
            return technology.bit;
    }
    return {};
}

QList<Technology> DictionaryService::Technologies() {
    return FieldStore(m_query).Technologies();
}

// The field editor

FieldTextLimits DictionaryService::TextLimits() {
    return {widthOr(m_query, "qvd_dict_name", "name", SchemaLimits.name),
            widthOr(m_query, "qvd_field_def", "field_desc", SchemaLimits.description),
            widthOr(m_query, "qvd_dict_name", "report_header", SchemaLimits.heading1),
            widthOr(m_query, "qvd_dict_name", "report_header2", SchemaLimits.heading2)};
}

QStringList DictionaryService::AggregatorNames() {
    QStringList names;
    const auto rst = m_query.OpenRecordset(DictionarySql::Aggregators(), 60);
    for (; rst && !rst->Eof(); rst->MoveNext())
        names << rst->Value(QStringLiteral("aggregator_name")).toString().trimmed();
    return names;
}

bool DictionaryService::ElementAggregationOffered() {
    const auto rst =
        m_query.OpenRecordset(DictionarySql::Setting(m_query, ElementAggregationSetting), 60);
    return rst && !rst->Eof() &&
           m_query.ValueAsBoolean(rst->Value(QStringLiteral("setting_value")));
}

std::optional<qint32> DictionaryService::AggregationPairId(const QString& timeAggregator,
                                                           const QString& elementAggregator) {
    if (timeAggregator.trimmed().isEmpty())
        return std::nullopt;
    const auto rst =
        m_query.OpenRecordset(DictionarySql::AggregationPair(m_query, timeAggregator.trimmed(),
                                                             elementAggregator.trimmed()),
                              60);
    if (!rst || rst->Eof())
        return std::nullopt;
    return m_query.ValueAsLong(rst->Value(QStringLiteral("pair_id")));
}

QList<ExtraColumn> DictionaryService::ExtraColumns(const QString& appGroup) {
    QList<ExtraColumn> columns;
    for (const ExtraColumnRow& row : FieldStore(m_query).ExtraColumns(appGroup))
        columns << ExtraColumn{row.name, row.inUse};
    return columns;
}

bool DictionaryService::ChooseStyle(qint32& style, qint32& styleColour, QWidget* parent) {
    FieldStyleDialog dialog(parent);
    dialog.setStyle(style);
    dialog.setStyleColour(styleColour);
    if (HostRegistry::App().ShowModal(dialog) != QDialog::Accepted)
        return false;
    style = dialog.Style();
    styleColour = dialog.StyleColour();
    return true;
}

} // namespace Orvane::Studio
