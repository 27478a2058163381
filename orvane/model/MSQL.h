#pragma once

#include <QString>
#include <QVariant>

// Every statement the library sends to the database is built here, in the Oracle dialect.
// The builders that touch eds_column.editor_position ask the query service whether the
// column exists and leave it out when it does not.
namespace Orvane::MSQL {

inline const QString ColumnSequence = QStringLiteral("sq_eds_column");
inline const QString PrimaryKeySequence = QStringLiteral("SQ_EDS_PRIMARYKEY");
inline const QString CreateFieldProcedure = QStringLiteral("eds_client.createfield");
inline const QString DeleteColumnProcedure = QStringLiteral("EDS_CLIENT.DeleteColumn");
inline const QString AddTechFromMaskProcedure = QStringLiteral("qv_dictionary.add_tech_from_mask");

// Whether eds_column has the column editor_position in the connected database.
bool HasEditorPosition();

QString ColumnQuery(qint32 edsId);
QString AsciiSettingsQuery(qint32 edsId);
QString OdbcSettingsQuery(qint32 edsId);

QString InsertColumn(qint32 colId, qint32 edsId, const QString& name, const QString& typeCode,
                     qint32 position, const QString& timeStampFlag, qint32 editorPosition);
QString UpdateColumn(qint32 colId, const QString& name, const QString& typeCode, qint32 position,
                     qint32 editorPosition);
QString MoveColumn(qint32 colId, qint32 position);
QString MoveColumnInEditor(qint32 colId, qint32 editorPosition);

QString InsertKey(qint32 pkId, qint32 edsId, qint32 colId, qint32 fieldId, qint32 ordinal);
QString UpdateKey(qint32 pkId, qint32 fieldId, qint32 ordinal);
QString DeleteKey(qint32 pkId);

QString UpdateFieldNames(qint32 fieldId, const QString& header, const QString& header2,
                         const QString& name);
QString UpdateFieldDefinition(qint32 fieldId, const QString& description,
                              const QVariant& aggregator, const QString& dataType);
QString DeleteFieldTechnologies(qint32 fieldId);
// Unmaps a column from its field; the field stays in the dictionary.
QString DeleteFieldMapping(qint32 edsId, qint32 colId);
QString ExternalFieldGroupQuery();
// The name is quoted as it stands: a quote inside it is not doubled.
QString FieldNameInUseQuery(qint32 entityId, const QString& name, qint32 fieldId);
QString TemplatesUsingFieldQuery(qint32 fieldId);
QString FrequencyListQuery(const QString& orientation);

// Looking up the dictionary by name, for definitions that travel as text.
QString EntityByNameQuery(const QString& entityName);
QString FieldByNameQuery(qint32 entityId, const QString& fieldName);
// Maps a column to a field the dictionary already has.
QString InsertFieldMapping(qint32 edsId, qint32 colId, qint32 fieldId);

} // namespace Orvane::MSQL
