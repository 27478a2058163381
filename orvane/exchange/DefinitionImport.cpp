#include "orvane/exchange/DefinitionImport.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/DataTypes.h"
#include "orvane/model/FrequencyList.h"
#include "orvane/model/MSQL.h"

#include <QCoreApplication>
#include <QDateTime>

namespace Orvane {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::DefinitionImport)
};

const QString AppGroup = QStringLiteral("Traffic");

struct EntityRef {
    qint32 id = 0;
    QString label;
};

std::optional<EntityRef> entityNamed(const QString& name) {
    IQueryService& query = HostRegistry::Query();
    const auto rst = query.OpenRecordset(MSQL::EntityByNameQuery(name), 60);
    if (!rst || rst->Eof())
        return std::nullopt;
    return EntityRef{query.ValueAsLong(rst->Value(QStringLiteral("entity_id"))),
                     rst->Value(QStringLiteral("entity_label")).toString()};
}

QString quoted(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

// As the field editor takes it: only where the dictionary offers element aggregation.
QString elementAggregator(const FieldDefinition& definition) {
    return HostRegistry::FieldInfo().ElementAggregationOffered() ? definition.elementAggregator
                                                                 : QString();
}

} // namespace

DefinitionImport::DefinitionImport(EdsDefinition definition)
    : m_definition(std::move(definition))
    , m_document(std::make_shared<CDataSourcesData>()) {}

DefinitionImport::~DefinitionImport() = default;

void DefinitionImport::problem(const QString& path, const QString& message) {
    m_problems.append({path, message});
}

bool DefinitionImport::Resolve() {
    CDataSourcesData& d = *m_document;
    d.setDocName(m_definition.name);
    d.setDocDescription(m_definition.description);
    d.setFileName(m_definition.fileName);
    d.setDelimeter(m_definition.delimiter);
    d.setServer(m_definition.server);
    d.setSchema(m_definition.database);
    d.setTable(m_definition.table);
    d.setUserId(m_definition.user);
    d.setIsTimeSeries(m_definition.timeSeries);
    d.setIsNew(true);
    resolveEntity();
    resolveFrequency();
    for (qsizetype i = 0; i < m_definition.columns.size(); ++i)
        resolveColumn(m_definition.columns.at(i), i);
    return m_problems.isEmpty();
}

void DefinitionImport::resolveEntity() {
    const auto found = entityNamed(m_definition.entity);
    if (!found) {
        problem(QStringLiteral("entity"),
                Texts::tr("there is no entity named %1").arg(quoted(m_definition.entity)));
        return;
    }
    // The rule of the entity chooser: only an entity open to external data.
    auto entity =
        HostRegistry::FieldInfo().ExternalDataEntity(QString(), QString::number(found->id));
    if (!entity) {
        problem(QStringLiteral("entity"), Texts::tr("the entity %1 may not be used for "
                                                    "external data")
                                              .arg(quoted(m_definition.entity)));
        return;
    }
    m_document->setEntity(entity);
    m_document->Columns()->setEntity(entity);
}

void DefinitionImport::resolveFrequency() {
    if (!m_definition.timeSeries)
        return;
    const qint32 id = FrequencyList::IdOf(m_definition.frequency);
    if (id == 0)
        problem(QStringLiteral("frequency"), Texts::tr("there is no frequency %1 for data sources")
                                                 .arg(quoted(m_definition.frequency)));
    m_document->setFreqId(id);
}

void DefinitionImport::resolveColumn(const ColumnDefinition& definition, qsizetype index) {
    const QString path = QStringLiteral("columns[%1]").arg(index);
    const qint32 before = m_document->Columns()->Count();
    const auto column = m_document->Columns()->Add(definition.name);
    // Add finds the time stamp column under "Time Stamp" whatever its name.
    if (m_document->Columns()->Count() == before) {
        problem(path + QStringLiteral(".name"),
                Texts::tr("\"Time Stamp\" names the time stamp column, which is %1")
                    .arg(quoted(column->Column_Name())));
        return;
    }
    column->setColumn_Type(definition.type);
    column->setPosition(definition.position);
    column->setIsTimeStamp(definition.timeStamp);
    column->setColPosition(static_cast<qint32>(index) + 1);
    if (definition.key)
        resolveKey(*definition.key, *column, path + QStringLiteral(".key"));
    if (definition.field && m_document->Entity())
        resolveField(*definition.field, column, path + QStringLiteral(".field"));
}

void DefinitionImport::resolveKey(const KeyReference& key, CDataSourcesColumn& column,
                                  const QString& path) {
    const auto entity = entityNamed(key.entity);
    if (!entity) {
        problem(path + QStringLiteral(".entity"),
                Texts::tr("there is no entity named %1").arg(quoted(key.entity)));
        return;
    }
    const qint32 fieldId = ColumnSave::FieldIdNamed(entity->id, key.field);
    if (fieldId == 0) {
        problem(
            path + QStringLiteral(".field"),
            Texts::tr("the entity %1 has no field %2").arg(quoted(key.entity), quoted(key.field)));
        return;
    }
    column.setKey_Ordinal(key.ordinal);
    column.setKeyEntity_Id(entity->id);
    column.setKeyEntity(key.entity);
    column.setKeyEntity_Label(entity->label);
    column.setKeyFld_Id(fieldId);
    column.setKeyFld_Name(key.field);
}

void DefinitionImport::resolveField(const FieldReference& field,
                                    const std::shared_ptr<CDataSourcesColumn>& column,
                                    const QString& path) {
    const qint32 fieldId = ColumnSave::FieldIdNamed(m_document->Entity()->Entity_Id(), field.name);
    if (fieldId > 0) {
        const auto found = HostRegistry::FieldInfo().FieldsByIds(QString::number(fieldId));
        column->setField(found.value(QString::number(fieldId)));
        column->setFieldMapped(true);
        return;
    }
    if (!field.definition) {
        problem(path + QStringLiteral(".name"),
                Texts::tr("the entity %1 has no field %2, and no definition is given to "
                          "create it")
                    .arg(quoted(m_definition.entity), quoted(field.name)));
        return;
    }
    if (m_newFieldNames.contains(field.name, Qt::CaseInsensitive)) {
        problem(path + QStringLiteral(".name"),
                Texts::tr("another column already creates the field %1").arg(quoted(field.name)));
        return;
    }
    if (auto created = newField(field, path)) {
        m_newFieldNames << field.name;
        column->setField(std::move(created));
    }
}

qint32 DefinitionImport::technologyMask(const FieldDefinition& definition, const QString& path) {
    qint32 mask = 0;
    for (qsizetype i = 0; i < definition.technologies.size(); ++i) {
        const QString& name = definition.technologies.at(i);
        const QVariant bit = HostRegistry::FieldInfo().TechnologyType(name);
        if (bit.isNull() || bit.toInt() <= 0)
            problem(QStringLiteral("%1.technologies[%2]").arg(path).arg(i),
                    Texts::tr("there is no technology %1").arg(quoted(name)));
        else
            mask |= bit.toInt();
    }
    return mask;
}

void DefinitionImport::checkLength(const QString& text, qint32 maximum, const QString& path) {
    if (text.size() > maximum)
        problem(path,
                Texts::tr("has more than the %1 characters the dictionary holds").arg(maximum));
}

// The field editor's checks, in its order, each reported under its member.
bool DefinitionImport::checkNewField(const FieldReference& field, const QString& path) {
    const qsizetype problemsBefore = m_problems.size();
    IFieldInfoService& fieldInfo = HostRegistry::FieldInfo();
    const FieldDefinition& d = *field.definition;
    const FieldTextLimits limits = fieldInfo.TextLimits();
    checkLength(field.name.trimmed(), limits.name, path + QStringLiteral(".name"));
    checkLength(d.description, limits.description, path + QStringLiteral(".description"));
    checkLength(d.heading1, limits.heading1, path + QStringLiteral(".heading1"));
    checkLength(d.heading2, limits.heading2, path + QStringLiteral(".heading2"));
    if (!mOrvane::FieldDataTypes.contains(d.dataType))
        problem(path + QStringLiteral(".dataType"),
                Texts::tr("a field's data type is Integer, Float or String"));
    if (!fieldInfo.AggregationPairId(d.timeAggregator, elementAggregator(d)))
        problem(path + QStringLiteral(".timeAggregator"),
                Texts::tr("%1 over time with %2 across elements is not a valid aggregation")
                    .arg(quoted(d.timeAggregator), quoted(elementAggregator(d))));
    const QList<ExtraColumn> extraColumns = fieldInfo.ExtraColumns(AppGroup);
    for (auto it = d.extra.cbegin(); it != d.extra.cend(); ++it) {
        const bool known =
            std::any_of(extraColumns.cbegin(), extraColumns.cend(),
                        [&](const ExtraColumn& c) { return c.inUse && c.name == it.key(); });
        if (!known)
            problem(
                path + QStringLiteral(".extra.") + it.key(),
                Texts::tr("the dictionary has no extra column %1 in use").arg(quoted(it.key())));
    }
    return m_problems.size() == problemsBefore;
}

std::shared_ptr<IField> DefinitionImport::newField(const FieldReference& field,
                                                   const QString& path) {
    const FieldDefinition& d = *field.definition;
    const qint32 mask = technologyMask(d, path);
    if (!checkNewField(field, path) || mask == 0)
        return nullptr;
    IFieldInfoService& fieldInfo = HostRegistry::FieldInfo();
    FieldSaveRequest request;
    request.name = field.name.trimmed();
    request.entityId = m_document->Entity()->Entity_Id();
    request.appGroup = AppGroup;
    request.kind = QStringLiteral("X");
    request.technologyMask = mask;
    request.dataTypeCode = mOrvane::DataTypeCode(d.dataType);
    request.heading1 = d.heading1;
    request.heading2 = d.heading2;
    request.description = d.description;
    request.aggregationPairId =
        fieldInfo.AggregationPairId(d.timeAggregator, elementAggregator(d)).value_or(0);
    request.ownerId = HostRegistry::App().OwnerId();
    request.savedAt = QDateTime::currentDateTime();
    for (const ExtraColumn& column : fieldInfo.ExtraColumns(AppGroup))
        request.extraColumns.append(
            {column.name, column.inUse ? d.extra.value(column.name) : QString()});
    request.style = d.style;
    request.styleColour = d.styleColour;

    auto created = fieldInfo.NewField();
    QVariant result;
    if (!created->Save(request, result)) {
        problem(path + QStringLiteral(".name"), created->LastError().description);
        return nullptr;
    }
    return created;
}

void DefinitionImport::Save(qint32 docId) {
    m_document->setDocId(docId);
    m_document->SaveData();
}

} // namespace Orvane
