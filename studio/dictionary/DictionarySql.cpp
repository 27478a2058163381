#include "studio/dictionary/DictionarySql.h"

#include "orvane/host/IQueryService.h"

#include <QStringList>

namespace Orvane::Studio::DictionarySql {

namespace {

// Oracle refuses IN lists of more than 1000 expressions.
constexpr qsizetype MaxInList = 1000;

const QString FieldSelect = QStringLiteral(
    "SELECT d.field_id, n.name, n.entity_id, e.entity_label, d.field_desc, n.report_header, "
    "n.report_header2, d.field_aggregator, ta.aggregator_name time_aggregator, "
    "ea.aggregator_name element_aggregator, d.datatype, d.app_group, g.field_group_short, "
    "d.field_style, d.style_colour, d.owner_id, "
    "(SELECT SUM(t.tech_bit) FROM qvd_field_tech ft "
    "JOIN qvd_technology t ON t.tech_id = ft.tech_id WHERE ft.field_id = d.field_id) tech_mask, "
    "xc.column_name extra_column, x.extra_value "
    "FROM qvd_field_def d "
    "JOIN qvd_dict_name n ON n.field_id = d.field_id "
    "JOIN qvn_entity e ON e.entity_id = n.entity_id "
    "JOIN qvd_field_group g ON g.field_group_id = d.field_group_id "
    "LEFT JOIN qvd_aggregation_pair p ON p.pair_id = d.field_aggregator "
    "LEFT JOIN qvd_aggregator ta ON ta.aggregator_id = p.time_aggregator_id "
    "LEFT JOIN qvd_aggregator ea ON ea.aggregator_id = p.element_aggregator_id "
    "LEFT JOIN qvd_field_extra x ON x.field_id = d.field_id "
    "LEFT JOIN qvd_extra_column xc ON xc.extra_column_id = x.extra_column_id ");

QString number(qint32 value) {
    return QString::number(value);
}

QString inLists(const QList<qint32>& ids) {
    QStringList lists;
    for (qsizetype start = 0; start < ids.size(); start += MaxInList) {
        QStringList numbers;
        for (const qint32 id : ids.mid(start, MaxInList))
            numbers << number(id);
        lists << QStringLiteral("d.field_id IN (") + numbers.join(QLatin1Char(',')) +
                     QLatin1Char(')');
    }
    return lists.join(QStringLiteral(" OR "));
}

} // namespace

QString FieldsWithIds(const QList<qint32>& ids) {
    return FieldSelect + QStringLiteral("WHERE ") + inLists(ids) +
           QStringLiteral(" ORDER BY d.field_id");
}

QString FieldsOfAppGroup(IQueryService& query, const QString& appGroup) {
    return FieldSelect + QStringLiteral("WHERE d.app_group = ") + query.FormatLiteral(appGroup) +
           QStringLiteral(" ORDER BY n.entity_id, n.name, d.field_id");
}

QString FieldOfAppGroup(IQueryService& query, qint32 id, const QString& appGroup) {
    return FieldSelect + QStringLiteral("WHERE d.field_id = ") + number(id) +
           QStringLiteral(" AND d.app_group = ") + query.FormatLiteral(appGroup);
}

QString Entity(qint32 id) {
    return QStringLiteral("SELECT entity_id, entity_name, entity_label, parent_entity_id, "
                          "allow_external FROM qvn_entity WHERE entity_id = ") +
           number(id);
}

QString Entities() {
    return QStringLiteral("SELECT entity_id, entity_name, entity_label, parent_entity_id, "
                          "allow_external FROM qvn_entity ORDER BY entity_label, entity_id");
}

QString FieldsOfEntity(qint32 entityId) {
    return QStringLiteral("SELECT field_id, name FROM qvd_dict_name WHERE entity_id = ") +
           number(entityId) + QStringLiteral(" ORDER BY name, field_id");
}

QString FieldNamed(IQueryService& query, qint32 entityId, const QString& name, qint32 exceptId) {
    return QStringLiteral("SELECT field_id FROM qvd_dict_field WHERE entity_id = ") +
           number(entityId) + QStringLiteral(" AND UPPER(TRIM(field_name)) = UPPER(TRIM(") +
           query.FormatLiteral(name) + QStringLiteral(")) AND field_id <> ") + number(exceptId);
}

QString Technologies() {
    return QStringLiteral("SELECT tech_id, tech_name, tech_bit FROM qvd_technology "
                          "ORDER BY tech_bit");
}

QString FieldGroups() {
    return QStringLiteral("SELECT field_group_id, field_group_short, field_group_name "
                          "FROM qvd_field_group ORDER BY field_group_id");
}

QString Aggregators() {
    return QStringLiteral("SELECT aggregator_name FROM qvd_aggregator "
                          "ORDER BY display_order, aggregator_id");
}

QString AggregatorsOfPair(qint32 pairId) {
    return QStringLiteral("SELECT ta.aggregator_name time_aggregator, "
                          "ea.aggregator_name element_aggregator FROM qvd_aggregation_pair p "
                          "JOIN qvd_aggregator ta ON ta.aggregator_id = p.time_aggregator_id "
                          "LEFT JOIN qvd_aggregator ea ON ea.aggregator_id = "
                          "p.element_aggregator_id WHERE p.pair_id = ") +
           number(pairId);
}

QString AggregationPair(IQueryService& query, const QString& timeAggregator,
                        const QString& elementAggregator) {
    QString statement = QStringLiteral("SELECT p.pair_id FROM qvd_aggregation_pair p "
                                       "JOIN qvd_aggregator ta ON ta.aggregator_id = "
                                       "p.time_aggregator_id "
                                       "LEFT JOIN qvd_aggregator ea ON ea.aggregator_id = "
                                       "p.element_aggregator_id WHERE ta.aggregator_name = ") +
                        query.FormatLiteral(timeAggregator);
    if (elementAggregator.isEmpty())
        return statement + QStringLiteral(" AND p.element_aggregator_id IS NULL");
    return statement + QStringLiteral(" AND ea.aggregator_name = ") +
           query.FormatLiteral(elementAggregator);
}

QString Setting(IQueryService& query, const QString& name) {
    return QStringLiteral("SELECT setting_value FROM qvd_dict_setting WHERE setting_name = ") +
           query.FormatLiteral(name);
}

QString ExtraColumns(IQueryService& query, const QString& appGroup) {
    return QStringLiteral("SELECT extra_column_id, column_name, in_use FROM qvd_extra_column "
                          "WHERE app_group = ") +
           query.FormatLiteral(appGroup) +
           QStringLiteral(" ORDER BY display_order, extra_column_id");
}

QString UpdateFieldDefinition(qint32 fieldId, const QString& setList) {
    return QStringLiteral("UPDATE qvd_field_def SET") + setList +
           QStringLiteral(" WHERE field_id = ") + number(fieldId);
}

QString UpdateFieldNames(qint32 fieldId, const QString& setList) {
    return QStringLiteral("UPDATE qvd_dict_name SET") + setList +
           QStringLiteral(" WHERE field_id = ") + number(fieldId);
}

QString DeleteFieldTechnologies(qint32 fieldId) {
    return QStringLiteral("DELETE FROM qvd_field_tech WHERE field_id = ") + number(fieldId);
}

QString DeleteExtraValue(qint32 fieldId, qint32 extraColumnId) {
    return QStringLiteral("DELETE FROM qvd_field_extra WHERE field_id = ") + number(fieldId) +
           QStringLiteral(" AND extra_column_id = ") + number(extraColumnId);
}

QString InsertExtraValue(IQueryService& query, qint32 fieldId, qint32 extraColumnId,
                         const QString& value) {
    return QStringLiteral("INSERT INTO qvd_field_extra (field_id, extra_column_id, extra_value) "
                          "VALUES (") +
           query.BuildValueList({fieldId, extraColumnId, value}) + QLatin1Char(')');
}

} // namespace Orvane::Studio::DictionarySql
