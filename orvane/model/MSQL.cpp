#include "orvane/model/MSQL.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IQueryService.h"

namespace Orvane::MSQL {

namespace {

QString number(qint32 value) {
    return QString::number(value);
}

IQueryService& query() {
    return HostRegistry::Query();
}

} // namespace

bool HasEditorPosition() {
    return query().ColumnExists(QStringLiteral("eds_column"), QStringLiteral("editor_position"));
}

QString ColumnQuery(qint32 edsId) {
    const bool editorPosition = HasEditorPosition();
    return QStringLiteral("SELECT a.col_id, a.col_name, a.col_type, a.col_position, b.Field_id,") +
           QStringLiteral(" e.pk_id, e.field_id pkFld_id, e.ordinal, f.entity_id pkEntity_id,") +
           QStringLiteral(" f.name pkFld_name, g.entity_name pkEntity_name,") +
           QStringLiteral(" g.entity_label pkEntity_label, a.is_timestamp TimeStamp") +
           (editorPosition ? QStringLiteral(", a.editor_position") : QString()) +
           QStringLiteral(" FROM eds_column a,qvd_eds_def b,") +
           QStringLiteral(" eds_primarykey e,qvd_dict_name f, qvn_entity g ") +
           QStringLiteral("WHERE a.EDS_Id = ") + number(edsId) +
           QStringLiteral(" AND e.eds_id(+) = a.eds_id AND e.col_id(+) = a.col_id ") +
           QStringLiteral("AND b.col_id(+) = a.col_id AND b.eds_id(+) = a.eds_id ") +
           QStringLiteral("AND e.field_id = f.field_id(+) AND f.entity_id = g.entity_id(+)") +
           QStringLiteral("ORDER BY") +
           (editorPosition ? QStringLiteral(" a.editor_position")
                           : QStringLiteral(" a.col_position"));
}

QString AsciiSettingsQuery(qint32 edsId) {
    return QStringLiteral("SELECT * FROM eds_ascii_file WHERE eds_id =") + number(edsId);
}

QString OdbcSettingsQuery(qint32 edsId) {
    return QStringLiteral("SELECT * FROM eds_odbc_file WHERE eds_id =") + number(edsId);
}

QString InsertColumn(qint32 colId, qint32 edsId, const QString& name, const QString& typeCode,
                     qint32 position, const QString& timeStampFlag, qint32 editorPosition) {
    QVariantList values{colId, edsId, name, typeCode, position, timeStampFlag};
    QString columns = QStringLiteral("(col_id,eds_id,col_name,col_type,col_position,is_timestamp");
    if (HasEditorPosition()) {
        values << editorPosition;
        columns += QStringLiteral(",editor_position");
    }
    return QStringLiteral("INSERT INTO eds_column") + columns + QStringLiteral(")") +
           QStringLiteral("VALUES(") + query().BuildValueList(values) + QStringLiteral(")");
}

QString UpdateColumn(qint32 colId, const QString& name, const QString& typeCode, qint32 position,
                     qint32 editorPosition) {
    QList<SetPair> pairs{{QStringLiteral("col_name"), name},
                         {QStringLiteral("col_type"), typeCode},
                         {QStringLiteral("col_position"), position}};
    if (HasEditorPosition())
        pairs.append({QStringLiteral("editor_position"), editorPosition});
    return QStringLiteral("UPDATE eds_column SET") + query().BuildSetList(pairs) +
           QStringLiteral(" WHERE col_id = ") + number(colId);
}

QString MoveColumn(qint32 colId, qint32 position) {
    return QStringLiteral("UPDATE eds_column SET col_position = ") + number(position) +
           QStringLiteral(" WHERE col_id = ") + number(colId);
}

QString MoveColumnInEditor(qint32 colId, qint32 editorPosition) {
    return QStringLiteral("UPDATE eds_column SET editor_position = ") + number(editorPosition) +
           QStringLiteral(" WHERE col_id = ") + number(colId);
}

QString InsertKey(qint32 pkId, qint32 edsId, qint32 colId, qint32 fieldId, qint32 ordinal) {
    return QStringLiteral("INSERT INTO eds_primarykey VALUES(") +
           query().BuildValueList({pkId, edsId, colId, fieldId, ordinal}) + QStringLiteral(")");
}

QString UpdateKey(qint32 pkId, qint32 fieldId, qint32 ordinal) {
    return QStringLiteral("UPDATE eds_primarykey SET ") +
           query().BuildSetList(
               {{QStringLiteral("field_id"), fieldId}, {QStringLiteral("ordinal"), ordinal}}) +
           QStringLiteral(" WHERE pk_id = ") + number(pkId);
}

QString DeleteKey(qint32 pkId) {
    return QStringLiteral("DELETE FROM eds_primarykey WHERE pk_id = ") + number(pkId);
}

QString UpdateFieldNames(qint32 fieldId, const QString& header, const QString& header2,
                         const QString& name) {
    return QStringLiteral("UPDATE qvd_dict_name SET ") +
           query().BuildSetList({{QStringLiteral("report_header"), header},
                                 {QStringLiteral("report_header2"), header2},
                                 {QStringLiteral("name"), name}}) +
           QStringLiteral(" WHERE field_id = ") + number(fieldId);
}

QString UpdateFieldDefinition(qint32 fieldId, const QString& description,
                              const QVariant& aggregator, const QString& dataType) {
    return QStringLiteral("UPDATE qvd_field_def SET ") +
           query().BuildSetList({{QStringLiteral("field_desc"), description},
                                 {QStringLiteral("field_aggregator"), aggregator},
                                 {QStringLiteral("datatype"), dataType}}) +
           QStringLiteral(" WHERE field_id = ") + number(fieldId);
}

QString DeleteFieldTechnologies(qint32 fieldId) {
    return QStringLiteral("DELETE FROM qvd_field_tech WHERE field_id = ") + number(fieldId);
}

QString DeleteFieldMapping(qint32 edsId, qint32 colId) {
    return QStringLiteral("DELETE FROM qvd_eds_def WHERE eds_id = ") + number(edsId) +
           QStringLiteral(" AND col_id = ") + number(colId);
}

QString ExternalFieldGroupQuery() {
    return QStringLiteral(
        "select field_group_id from qvd_field_group where field_group_short = 'EXT'");
}

QString FieldNameInUseQuery(qint32 entityId, const QString& name, qint32 fieldId) {
    QString text = QStringLiteral("SELECT field_id FROM QVD_DICT_FIELD WHERE entity_id = ") +
                   number(entityId) + QStringLiteral(" AND UPPER(field_name) = '") +
                   name.trimmed().toUpper() + QStringLiteral("'");
    if (fieldId >= 1)
        text += QStringLiteral(" AND field_id <> ") + number(fieldId);
    return text;
}

QString TemplatesUsingFieldQuery(qint32 fieldId) {
    return QStringLiteral("SELECT UNIQUE a.TemplateId FROM ") +
           QStringLiteral("PM_TemplateField a, QVD_EDS_Def c ") +
           QStringLiteral("WHERE a.Field_Id = c.Field_Id AND a.Field_Id = ") + number(fieldId);
}

QString FrequencyListQuery(const QString& orientation) {
    return QStringLiteral("SELECT DISTINCT a.frequency_id,a.description ") +
           QStringLiteral("FROM qv_frequency a, pm_groupby b ") +
           QStringLiteral("WHERE b.orientation = ") + query().FormatLiteral(orientation) +
           QStringLiteral(" AND a.frequency_id=b.frequency_id");
}

QString EntityByNameQuery(const QString& entityName) {
    return QStringLiteral("SELECT entity_id, entity_label FROM qvn_entity WHERE entity_name = ") +
           query().FormatLiteral(entityName);
}

QString FieldByNameQuery(qint32 entityId, const QString& fieldName) {
    return QStringLiteral("SELECT field_id FROM qvd_dict_field WHERE entity_id = ") +
           number(entityId) + QStringLiteral(" AND field_name = ") +
           query().FormatLiteral(fieldName);
}

QString InsertFieldMapping(qint32 edsId, qint32 colId, qint32 fieldId) {
    return QStringLiteral("INSERT INTO qvd_eds_def (eds_id, col_id, field_id) VALUES(") +
           query().BuildValueList({edsId, colId, fieldId}) + QStringLiteral(")");
}

} // namespace Orvane::MSQL
