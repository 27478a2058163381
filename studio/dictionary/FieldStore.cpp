#include "studio/dictionary/FieldStore.h"

#include "orvane/host/IField.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlQueryService.h"
#include "studio/db/TransactionScope.h"
#include "studio/dictionary/DictionarySql.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

namespace Orvane::Studio {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::Studio::FieldStore)
};

const QString AddTechFromMask = QStringLiteral("qv_dictionary.add_tech_from_mask");
const QStringList DataTypeCodes{QStringLiteral("I"), QStringLiteral("F"), QStringLiteral("S"),
                                QStringLiteral("E"), QStringLiteral("D")};
// The group eds_client.createfield puts every new field in.
const QString ExternalGroup = QStringLiteral("EXT");

ProcedureParameter integer(qint32 value) {
    return {value, QString(), QStringLiteral("integer")};
}

// Reads a field's values from the rows of a DictionarySql field statement: one row per field, or
// one per extra value where a field has several.
struct FieldRowsReader {
    IQueryService& query;
    IRecordset& rst;

    QString text(const QString& name) const { return rst.Value(name).toString().trimmed(); }
    qint32 number(const QString& name) const { return query.ValueAsLong(rst.Value(name)); }

    FieldValues first() const {
        FieldValues values;
        values.id = number(QStringLiteral("field_id"));
        values.name = rst.Value(QStringLiteral("name")).toString();
        values.entityId = number(QStringLiteral("entity_id"));
        values.entityLabel = text(QStringLiteral("entity_label"));
        values.description = rst.Value(QStringLiteral("field_desc")).toString();
        values.heading1 = rst.Value(QStringLiteral("report_header")).toString();
        values.heading2 = rst.Value(QStringLiteral("report_header2")).toString();
        values.aggregationPairId = number(QStringLiteral("field_aggregator"));
        values.timeAggregator = text(QStringLiteral("time_aggregator"));
        values.elementAggregator = text(QStringLiteral("element_aggregator"));
        values.dataType = text(QStringLiteral("datatype"));
        values.appGroup = text(QStringLiteral("app_group"));
        values.groupShort = text(QStringLiteral("field_group_short"));
        values.technologyMask = number(QStringLiteral("tech_mask"));
        values.style = number(QStringLiteral("field_style"));
        values.styleColour = number(QStringLiteral("style_colour"));
        values.ownerId = number(QStringLiteral("owner_id"));
        return values;
    }

    void addExtra(FieldValues& values) const {
        const QString extra = text(QStringLiteral("extra_column"));
        if (!extra.isEmpty())
            values.extra.insert(extra, rst.Value(QStringLiteral("extra_value")).toString());
    }
};

} // namespace

QList<FieldValues> FieldStore::Read(const QString& statement) {
    QList<FieldValues> fields;
    const auto rst = m_query.OpenRecordset(statement, 60);
    if (!rst)
        return fields;
    const FieldRowsReader reader{m_query, *rst};
    bool anyTechnology = false;
    for (; !rst->Eof(); rst->MoveNext()) {
        const qint32 id = reader.number(QStringLiteral("field_id"));
        if (fields.isEmpty() || fields.last().id != id) {
            fields << reader.first();
            anyTechnology = anyTechnology || fields.last().technologyMask != 0;
        }
        reader.addExtra(fields.last());
    }
    // The names come from the technology table, as the mask does, read once for all fields.
    if (anyTechnology) {
        const QList<Technology> technologies = Technologies();
        // Fields share a few masks: each mask's text is written once and shared.
        QHash<qint32, QString> texts;
        for (FieldValues& values : fields) {
            auto text = texts.constFind(values.technologyMask);
            if (text == texts.constEnd())
                text = texts.insert(values.technologyMask,
                                    TechnologyText(technologies, values.technologyMask));
            values.technologies = *text;
        }
    }
    return fields;
}

FieldValues FieldStore::Prepare(const FieldSaveRequest& request, const FieldValues& current) {
    if (request.fieldId != current.id)
        throw Error(Texts::tr("This field object holds field %1 and cannot save field %2.")
                        .arg(current.id)
                        .arg(request.fieldId));
    FieldValues values = current;
    values.name = request.name.trimmed();
    if (values.name.isEmpty())
        throw Error(Texts::tr("A field needs a name."));
    if (!DataTypeCodes.contains(request.dataTypeCode))
        throw Error(Texts::tr("\"%1\" is not a data type of the dictionary; use I, F, S, E "
                              "or D.")
                        .arg(request.dataTypeCode));
    if (current.id == 0) {
        values.entityId = request.entityId;
        values.entityLabel = entityLabel(request.entityId);
        values.appGroup = request.appGroup;
        values.groupShort = ExternalGroup;
    }
    values.description = request.description;
    values.heading1 = request.heading1;
    values.heading2 = request.heading2;
    values.dataType = request.dataTypeCode;
    values.aggregationPairId = request.aggregationPairId;
    values.technologyMask = request.technologyMask;
    values.style = request.style;
    values.styleColour = request.styleColour;
    values.ownerId = request.ownerId;
    values.savedAt = request.savedAt;
    resolveAggregators(values);
    resolveTechnologies(values);
    takeExtraValues(request, values);
    return values;
}

QString FieldStore::entityLabel(qint32 entityId) {
    const auto rst = m_query.OpenRecordset(DictionarySql::Entity(entityId), 60);
    if (!rst || rst->Eof())
        throw Error(Texts::tr("There is no entity %1 in the dictionary.").arg(entityId));
    return rst->Value(QStringLiteral("entity_label")).toString().trimmed();
}

void FieldStore::resolveAggregators(FieldValues& values) {
    values.timeAggregator.clear();
    values.elementAggregator.clear();
    if (values.aggregationPairId == 0)
        return;
    const auto rst =
        m_query.OpenRecordset(DictionarySql::AggregatorsOfPair(values.aggregationPairId), 60);
    if (!rst || rst->Eof())
        throw Error(Texts::tr("There is no aggregation pair %1 in the dictionary.")
                        .arg(values.aggregationPairId));
    values.timeAggregator = rst->Value(QStringLiteral("time_aggregator")).toString().trimmed();
    values.elementAggregator =
        rst->Value(QStringLiteral("element_aggregator")).toString().trimmed();
}

void FieldStore::resolveTechnologies(FieldValues& values) {
    const QList<Technology> technologies = Technologies();
    qint32 known = 0;
    for (const Technology& technology : technologies)
        known |= technology.bit;
    if (values.technologyMask < 0 || (values.technologyMask & ~known) != 0)
        throw Error(Texts::tr("The technology mask %1 names technologies the dictionary "
                              "does not have.")
                        .arg(values.technologyMask));
    values.technologies = TechnologyText(technologies, values.technologyMask);
}

// Only the columns in use are shown, so only they are taken; the others keep their values.
void FieldStore::takeExtraValues(const FieldSaveRequest& request, FieldValues& values) {
    const QList<ExtraColumnRow> columns = ExtraColumns(values.appGroup);
    for (const auto& [name, value] : request.extraColumns) {
        const auto column = std::find_if(columns.begin(), columns.end(),
                                         [&](const ExtraColumnRow& c) { return c.name == name; });
        if (column == columns.end() || !column->inUse)
            continue;
        if (value.isEmpty())
            values.extra.remove(name);
        else
            values.extra.insert(name, value);
    }
}

bool FieldStore::NameTaken(qint32 entityId, const QString& name, qint32 exceptId) {
    const auto rst =
        m_query.OpenRecordset(DictionarySql::FieldNamed(m_query, entityId, name, exceptId), 60);
    return rst && !rst->Eof();
}

void FieldStore::WriteStored(const FieldValues& values) {
    inOneTransaction([&] {
        m_query.ExecuteStatement(DictionarySql::UpdateFieldDefinition(
            values.id, m_query.BuildSetList({
                           {QStringLiteral("field_desc"), values.description},
                           {QStringLiteral("field_aggregator"), values.aggregationPairId},
                           {QStringLiteral("datatype"), values.dataType},
                           {QStringLiteral("technologies"), values.technologies},
                           {QStringLiteral("field_style"), values.style},
                           {QStringLiteral("style_colour"), values.styleColour},
                           {QStringLiteral("owner_id"), values.ownerId},
                           {QStringLiteral("saved_at"), values.savedAt},
                       })));
        m_query.ExecuteStatement(DictionarySql::UpdateFieldNames(
            values.id, m_query.BuildSetList({
                           {QStringLiteral("name"), values.name},
                           {QStringLiteral("report_header"), values.heading1},
                           {QStringLiteral("report_header2"), values.heading2},
                       })));
        m_query.ExecuteStatement(DictionarySql::DeleteFieldTechnologies(values.id));
        m_query.CallProcedure(AddTechFromMask,
                              {integer(values.id), integer(values.technologyMask)});
        writeExtras(values);
    });
}

void FieldStore::WriteRegistered(const FieldValues& values) {
    inOneTransaction([&] {
        m_query.ExecuteStatement(DictionarySql::UpdateFieldDefinition(
            values.id, m_query.BuildSetList({
                           {QStringLiteral("style_colour"), values.styleColour},
                           {QStringLiteral("owner_id"), values.ownerId},
                           {QStringLiteral("saved_at"), values.savedAt},
                       })));
        writeExtras(values);
    });
}

void FieldStore::writeExtras(const FieldValues& values) {
    for (const ExtraColumnRow& column : ExtraColumns(values.appGroup)) {
        if (!column.inUse)
            continue;
        m_query.ExecuteStatement(DictionarySql::DeleteExtraValue(values.id, column.id));
        const QString value = values.extra.value(column.name);
        if (!value.isEmpty())
            m_query.ExecuteStatement(
                DictionarySql::InsertExtraValue(m_query, values.id, column.id, value));
    }
}

QList<Technology> FieldStore::Technologies() {
    QList<Technology> technologies;
    const auto rst = m_query.OpenRecordset(DictionarySql::Technologies(), 60);
    for (; rst && !rst->Eof(); rst->MoveNext())
        technologies << Technology{rst->Value(QStringLiteral("tech_name")).toString().trimmed(),
                                   m_query.ValueAsLong(rst->Value(QStringLiteral("tech_bit")))};
    return technologies;
}

QList<ExtraColumnRow> FieldStore::ExtraColumns(const QString& appGroup) {
    QList<ExtraColumnRow> columns;
    const auto rst = m_query.OpenRecordset(DictionarySql::ExtraColumns(m_query, appGroup), 60);
    for (; rst && !rst->Eof(); rst->MoveNext())
        columns << ExtraColumnRow{
            m_query.ValueAsLong(rst->Value(QStringLiteral("extra_column_id"))),
            rst->Value(QStringLiteral("column_name")).toString().trimmed(),
            m_query.ValueAsBoolean(rst->Value(QStringLiteral("in_use")))};
    return columns;
}

QString FieldStore::TechnologyText(const QList<Technology>& technologies, qint32 mask) {
    QStringList names;
    for (const Technology& technology : technologies) {
        if ((mask & technology.bit) != 0)
            names << technology.name;
    }
    return names.join(QStringLiteral(", "));
}

void FieldStore::inOneTransaction(const std::function<void()>& work) {
    auto* sql = dynamic_cast<SqlQueryService*>(&m_query);
    if (!sql || sql->InTransaction()) {
        work();
        return;
    }
    TransactionScope transaction(*sql);
    work();
    transaction.Commit();
}

} // namespace Orvane::Studio
