#include "orvane/model/ColumnSave.h"

#include "orvane/host/BusyPointer.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/ConnectionCache.h"
#include "orvane/model/DataTypes.h"
#include "orvane/model/MSQL.h"

#include <vector>

namespace Orvane::ColumnSave {

namespace {

using ColumnPtr = CDataSourcesColumns::ColumnPtr;

IQueryService& query() {
    return HostRegistry::Query();
}

void execute(const QString& statement) {
    query().ExecuteStatement(statement);
}

QString timeStampFlag(const CDataSourcesColumn& column) {
    return column.IsTimeStamp() ? QStringLiteral("Y") : QStringLiteral("N");
}

qint32 entityIdOf(const CDataSourcesColumns& columns) {
    return columns.Entity() ? columns.Entity()->Entity_Id() : 0;
}

void insertColumnRow(CDataSourcesColumn& column, qint32 edsId) {
    column.setColumn_Id(query().NextSequenceValue(MSQL::ColumnSequence));
    execute(MSQL::InsertColumn(column.Column_Id(), edsId, column.Column_Name(),
                               mOrvane::DataTypeCode(column.Column_Type()), column.Position(),
                               timeStampFlag(column), column.ColPosition()));
}

void insertKeyRow(CDataSourcesColumn& column, qint32 edsId) {
    column.setPK_Id(query().NextSequenceValue(MSQL::PrimaryKeySequence));
    execute(MSQL::InsertKey(column.PK_Id(), edsId, column.Column_Id(), column.KeyFld_Id(),
                            column.Key_Ordinal()));
}

ProcedureParameter integer(const QVariant& value) {
    return {value, QString(), QStringLiteral("integer")};
}

ProcedureParameter text(const QString& value) {
    return {value, QString(), QStringLiteral("string")};
}

qint32 externalFieldGroupId() {
    static ConnectionCache<qint32> cache;
    return cache.Get([] {
        const auto rst = query().OpenRecordset(MSQL::ExternalFieldGroupQuery(), 60);
        if (!rst || rst->Eof())
            return 0;
        return query().ValueAsLong(rst->Value(QStringLiteral("field_group_id")));
    });
}

// Pass 1 of the edit path: stored rows of deleted columns go, with their key and mapping rows.
void deleteColumns(CDataSourcesColumns& columns) {
    const std::vector<ColumnPtr> all(columns.begin(), columns.end());
    for (const ColumnPtr& column : all) {
        if (!column->ColumnDeleted())
            continue;
        query().CallProcedure(MSQL::DeleteColumnProcedure, {integer(column->Column_Id())});
        columns.Remove(column->Column_Name());
    }
}

// Pass 2: every dirty column first moves to a negative position (and ordinal), so that the real
// values written next never collide with a row that has not been updated yet.
void clearPositions(const CDataSourcesColumns& columns) {
    const bool editorPosition = MSQL::HasEditorPosition();
    qint32 counter = 0;
    for (const ColumnPtr& column : columns) {
        --counter;
        if (!column->Dirty())
            continue;
        execute(MSQL::MoveColumn(column->Column_Id(), counter));
        if (editorPosition)
            execute(MSQL::MoveColumnInEditor(column->Column_Id(), counter));
        if (column->KeyDirty())
            execute(MSQL::UpdateKey(column->PK_Id(), column->KeyFld_Id(), counter));
    }
}

// A field the dictionary has already is only mapped to the column; any other is created for it.
void giveField(const CDataSourcesColumn& column, qint32 edsId, qint32 entityId) {
    if (column.FieldMapped() && column.Field()->Field_Id() > 0) {
        if (column.FieldDirty())
            UpdateField(*column.Field());
        execute(MSQL::InsertFieldMapping(edsId, column.Column_Id(), column.Field()->Field_Id()));
    } else
        CreateField(column.Field(), edsId, column.Column_Id(), entityId);
}

// A stored field taken off the column loses its mapping before any new field is created for the
// column, so that one edit may replace the field.
void saveFieldOf(CDataSourcesColumn& column, const CDataSourcesColumns& columns) {
    if (column.FieldDeleted())
        execute(MSQL::DeleteFieldMapping(columns.EDS_Id(), column.Column_Id()));
    if (column.FieldDirty()) {
        if (column.Field())
            UpdateField(*column.Field());
    } else if (column.FieldAdded() && column.Field()) {
        CreateField(column.Field(), columns.EDS_Id(), column.Column_Id(), entityIdOf(columns));
    }
}

void saveKeyOf(CDataSourcesColumn& column, const CDataSourcesColumns& columns) {
    if (column.KeyDeleted())
        execute(MSQL::DeleteKey(column.PK_Id()));
    else if (column.KeyDirty())
        execute(MSQL::UpdateKey(column.PK_Id(), column.KeyFld_Id(), column.Key_Ordinal()));
    else if (column.KeyAdded())
        insertKeyRow(column, columns.EDS_Id());
}

// Pass 3: the rows of changed columns, then their fields and keys.
void updateColumns(CDataSourcesColumns& columns) {
    for (const ColumnPtr& column : columns) {
        if (!column->Dirty())
            continue;
        execute(MSQL::UpdateColumn(column->Column_Id(), column->Column_Name(),
                                   mOrvane::DataTypeCode(column->Column_Type()), column->Position(),
                                   column->ColPosition()));
        saveFieldOf(*column, columns);
        saveKeyOf(*column, columns);
    }
}

// Pass 4: columns that have no row yet.
void insertColumns(CDataSourcesColumns& columns) {
    for (const ColumnPtr& column : columns) {
        if (column->Column_Id() != 0)
            continue;
        insertColumnRow(*column, columns.EDS_Id());
        if (column->Field())
            giveField(*column, columns.EDS_Id(), entityIdOf(columns));
        // A key the user deleted keeps its key field until the save; it gets no row.
        if (column->Is_Key() && !column->KeyDeleted())
            insertKeyRow(*column, columns.EDS_Id());
    }
}

} // namespace

void InsertNewColumns(qint32 docId, CDataSourcesColumns& columns) {
    const BusyPointer busy;
    for (const ColumnPtr& column : columns)
        insertColumnRow(*column, docId);
}

void CreateNewFields(qint32 docId, CDataSourcesColumns& columns) {
    for (const ColumnPtr& column : columns) {
        if (column->Field())
            giveField(*column, docId, entityIdOf(columns));
    }
}

void InsertNewKeys(qint32 docId, CDataSourcesColumns& columns) {
    for (const ColumnPtr& column : columns) {
        if (column->KeyFld_Id() > 0)
            insertKeyRow(*column, docId);
    }
}

void SaveColumns(CDataSourcesColumns& columns) {
    deleteColumns(columns);
    clearPositions(columns);
    updateColumns(columns);
    insertColumns(columns);
}

void UpdateField(const IField& field) {
    const qint32 id = field.Field_Id();
    execute(MSQL::UpdateFieldDefinition(id, field.Description(), field.AggregationPairId(),
                                        field.DataType()));
    execute(MSQL::UpdateFieldNames(id, field.Heading1(), field.Heading2(), field.Field_Name()));
    execute(MSQL::DeleteFieldTechnologies(id));
    if (id > 0) {
        query().CallProcedure(MSQL::AddTechFromMaskProcedure,
                              {integer(id), integer(field.TechnologyMask())});
    }
}

void CreateField(const std::shared_ptr<IField>& field, qint32 edsId, qint32 columnId,
                 qint32 entityId) {
    const qint32 groupId = externalFieldGroupId();
    const QList<ProcedureParameter> parameters{
        integer(QVariant()),
        integer(edsId),
        integer(columnId),
        integer(entityId),
        text(field->Field_Name()),
        text(field->Description()),
        text(field->Heading1()),
        text(field->Heading2()),
        text(QStringLiteral("S")),
        text(field->DataType()),
        text(field->Technologies()),
        integer(field->TechnologyMask()),
        integer(field->AggregationPairId()),
        integer(groupId),
        integer(field->Style()),
    };
    const QVariant newId = query().CallProcedure(MSQL::CreateFieldProcedure, parameters);
    field->setField_Id(query().ValueAsLong(newId));
    HostRegistry::FieldInfo().RegisterField(field);
}

qint32 FieldIdNamed(qint32 entityId, const QString& name) {
    const auto rst = query().OpenRecordset(MSQL::FieldByNameQuery(entityId, name), 60);
    return rst && !rst->Eof() ? query().ValueAsLong(rst->Value(QStringLiteral("field_id"))) : 0;
}

bool FieldInTemplates(qint32 fieldId) {
    const auto rst = query().OpenRecordset(MSQL::TemplatesUsingFieldQuery(fieldId), 60);
    return rst && !rst->Eof();
}

bool FieldNameInUse(const QString& name, qint32 entityId, qint32 fieldId) {
    const BusyPointer busy;
    const auto rst = query().OpenRecordset(MSQL::FieldNameInUseQuery(entityId, name, fieldId), 60);
    return rst && !rst->Eof();
}

} // namespace Orvane::ColumnSave
