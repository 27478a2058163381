#include "orvane/host/IRecordset.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/MSQL.h"
#include "studio/db/TransactionScope.h"
#include "tests/integration/DatabaseTest.h"

#include <gmock/gmock.h>

namespace Orvane::Testing {

using ::testing::HasSubstr;

// The library's column query and its save routines against the real schema: what is saved is
// what the column query reads back, in both forms of eds_column. The three stored procedures
// they call, PL/pgSQL on PostgreSQL and C++ routines on SQLite, must have the same effect.
class ColumnSaveRoundTripTest : public DatabaseTest {
protected:
    static ProcedureParameter integer(const QVariant& value) {
        return {value, QString(), "integer"};
    }
    static ProcedureParameter text(const QString& value) { return {value, QString(), "string"}; }

    // The fifteen parameters in the order the library's field creation passes them.
    static QList<ProcedureParameter> createField(qint32 columnId, qint32 entityId,
                                                 const QString& name, qint32 groupId = 3) {
        return {integer(QVariant()), integer(1),       integer(columnId),
                integer(entityId),   text(name),       text("Free text from the feed"),
                text("O'Brien"),     text("Text"),     text("S"),
                text("S"),           text("GSM, NR"),  integer(9),
                integer(2),          integer(groupId), integer(3)};
    }

    std::string errorOfCall(const QString& procedure, const QList<ProcedureParameter>& parameters) {
        return errorOf([&] { db->CallProcedure(procedure, parameters); });
    }

    QList<qint32> technologiesOf(qint32 fieldId) {
        QList<qint32> ids;
        const auto rst = db->OpenRecordset(
            QStringLiteral("SELECT tech_id FROM qvd_field_tech WHERE field_id = %1 ORDER BY 1")
                .arg(fieldId));
        for (; !rst->Eof(); rst->MoveNext())
            ids << db->ValueAsLong(rst->Value("tech_id"));
        return ids;
    }

    // The names of the columns the column query reads back, sorted.
    QStringList columnNames(qint32 edsId) {
        QStringList names;
        for (auto rst = db->OpenRecordset(MSQL::ColumnQuery(edsId)); !rst->Eof(); rst->MoveNext())
            names << rst->Value("col_name").toString();
        names.sort();
        return names;
    }

    CDataSourcesColumns::ColumnPtr addColumn(CDataSourcesColumns& columns, const QString& name,
                                             const QString& type, qint32 position,
                                             qint32 editorPosition) {
        auto column = columns.Add(name);
        column->setColumn_Type(type);
        column->setPosition(position);
        column->setColPosition(editorPosition);
        return column;
    }
};

INSTANTIATE_TEST_SUITE_P(Databases, ColumnSaveRoundTripTest, AllDatabases(), targetName);

// The demo document: the time stamp, a key column, a column mapped to a field, a plain one.
TEST_P(ColumnSaveRoundTripTest, LoadColumnsFillsTheModel) {
    dictionary->addField(28, "HO_Attempts", 7);
    CDataSourcesColumns columns;
    columns.LoadColumns(1);
    ASSERT_EQ(columns.Count(), 4);
    EXPECT_EQ(std::tuple(columns.EDS_Id(), columns.TSColumn()), std::tuple(1, columns.Item(1)));
    EXPECT_EQ(columns.Item(1)->Column_Name(), "Time Stamp");
    const auto key = columns.Item("CELL");
    EXPECT_EQ(
        QList<qint32>({key->PK_Id(), key->KeyFld_Id(), key->Key_Ordinal(), key->KeyEntity_Id()}),
        QList<qint32>({1, 1, 1, 7}));
    EXPECT_EQ(key->KeyFld_Name() + "|" + key->KeyEntity() + "|" + key->KeyEntity_Label(),
              "Cell_Name|Cell|Cell");
    EXPECT_EQ(key->Field(), nullptr);
    const auto mapped = columns.Item("HO_ATTEMPTS");
    ASSERT_NE(mapped->Field(), nullptr);
    EXPECT_EQ(std::tuple(mapped->Field()->Field_Id(), mapped->Is_Key()), std::tuple(28, false));
    EXPECT_EQ(mapped->Column_Type() + QString::number(mapped->ColPosition()),
              withEditorPosition() ? "I3" : "I0");
    // Nulls of the outer joins read as zero and empty.
    const auto plain = columns.Item("COMMENT");
    EXPECT_EQ(std::tuple(plain->Field() == nullptr, plain->IsTimeStamp()), std::tuple(true, false));
    EXPECT_EQ(
        std::tuple(plain->PK_Id(), plain->KeyFld_Id(), plain->Key_Ordinal(), plain->KeyEntity_Id()),
        std::tuple(0, 0, 0, 0));
    EXPECT_EQ(plain->KeyFld_Name() + plain->KeyEntity() + plain->KeyEntity_Label(), QString());
}

TEST_P(ColumnSaveRoundTripTest, EditedDocumentSavesMovesKeysAndDeletions) {
    dictionary->addField(28, "HO_Attempts", 7);
    CDataSourcesColumns columns;
    columns.LoadColumns(1);
    // CELL and COMMENT swap record positions: only the negative step lets them pass each other.
    auto cell = columns.Item("CELL");
    cell->setPosition(4);
    cell->setKey_Ordinal(2);
    cell->setKeyDirty(true);
    auto comment = columns.Item("COMMENT");
    comment->setPosition(2);
    comment->setDirty(true);
    columns.Item("HO_ATTEMPTS")->setColumnDeleted(true);
    addColumn(columns, "NEW_COL", "Float", 5, 4);
    {
        Studio::TransactionScope transaction(*db);
        ColumnSave::SaveColumns(columns);
        transaction.Commit();
    }

    EXPECT_EQ(count("eds_column", "col_name = 'CELL' AND col_position = 4"), 1);
    EXPECT_EQ(count("eds_column", "col_name = 'COMMENT' AND col_position = 2"), 1);
    EXPECT_EQ(count("eds_primarykey", "col_id = 2 AND ordinal = 2"), 1);
    EXPECT_GT(columns.Item("NEW_COL")->Column_Id(), 100);

    // HO_ATTEMPTS went by the delete procedure, whose effects the procedure tests check.
    EXPECT_EQ(columnNames(1), QStringList({"CELL", "COMMENT", "NEW_COL", "Time Stamp"}));
}

TEST_P(ColumnSaveRoundTripTest, CreateFieldMakesAnExternalFieldForTheColumn) {
    const qint32 fieldId = db->ValueAsLong(
        db->CallProcedure(MSQL::CreateFieldProcedure, createField(4, 7, "Comment_Text")));
    EXPECT_GE(fieldId, 1001);
    const QString byId = QStringLiteral("field_id = %1").arg(fieldId);
    EXPECT_EQ(count("qvd_field_def", byId + " AND field_group_id = 3 AND datatype = 'S' AND "
                                            "field_kind = 'S' AND field_aggregator = 2 AND "
                                            "field_style = 3 AND technologies = 'GSM, NR' AND "
                                            "app_group = 'Traffic'"),
              1);
    EXPECT_EQ(count("qvd_dict_name", byId +
                                         " AND entity_id = 7 AND name = 'Comment_Text' AND "
                                         "report_header = 'O''Brien' AND report_header2 = 'Text'"),
              1);
    EXPECT_EQ(technologiesOf(fieldId), QList<qint32>({1, 4}));
    EXPECT_EQ(count("qvd_eds_def", "eds_id = 1 AND col_id = 4 AND " + byId), 1);
    EXPECT_TRUE(ColumnSave::FieldNameInUse("COMMENT_TEXT", 7, 0));

    // A second field for the same column takes over its mapping; names match without case.
    const qint32 second = db->ValueAsLong(
        db->CallProcedure("EDS_CLIENT.CREATEFIELD", createField(4, 7, "Comment_Text_2")));
    EXPECT_EQ(count("qvd_eds_def", "col_id = 4"), 1);
    EXPECT_EQ(count("qvd_eds_def", QStringLiteral("col_id = 4 AND field_id = %1").arg(second)), 1);
}

TEST_P(ColumnSaveRoundTripTest, CreateFieldRefusesWhatTheDictionaryForbidsAndLeavesNothing) {
    const qint32 fields = count("qvd_field_def");
    EXPECT_THAT(errorOfCall(MSQL::CreateFieldProcedure, createField(4, 1, "Uptime")),
                HasSubstr("entity 1 may not be used for external data"));
    EXPECT_THAT(errorOfCall(MSQL::CreateFieldProcedure, createField(4, 99, "Uptime")),
                HasSubstr("entity 99 does not exist"));
    EXPECT_THAT(errorOfCall(MSQL::CreateFieldProcedure, createField(4, 7, "Uptime", 1)),
                HasSubstr("field group 1 is not the external-data group EXT"));
    // The name is taken regardless of case: the database's unique index says so.
    errorOfCall(MSQL::CreateFieldProcedure, createField(4, 7, "cell_NAME"));
    errorOfCall(MSQL::CreateFieldProcedure, {integer(QVariant()), integer(1)});
    EXPECT_EQ(std::tuple(count("qvd_field_def"), count("qvd_eds_def", "col_id = 4")),
              std::tuple(fields, 0));

    // Unknown procedures and anything but a plain name are refused.
    errorOfCall("eds_client.nosuch", {integer(1)});
    errorOfCall("eds_client.deletecolumn(1); --", {});
}

TEST_P(ColumnSaveRoundTripTest, AddTechFromMaskWritesOneRowPerBit) {
    db->ExecuteStatement(MSQL::DeleteFieldTechnologies(2));
    db->CallProcedure(MSQL::AddTechFromMaskProcedure, {integer(2), integer(6)});
    EXPECT_EQ(technologiesOf(2), QList<qint32>({2, 3}));
    db->CallProcedure("QV_DICTIONARY.ADD_TECH_FROM_MASK", {integer(2), integer(14)});
    db->CallProcedure(MSQL::AddTechFromMaskProcedure, {integer(2), integer(0)});
    EXPECT_THAT(errorOfCall(MSQL::AddTechFromMaskProcedure, {integer(2), integer(17)}),
                HasSubstr("name no technology (16)"));
    EXPECT_THAT(errorOfCall(MSQL::AddTechFromMaskProcedure, {integer(9999), integer(1)}),
                HasSubstr("field 9999 does not exist"));
    EXPECT_EQ(technologiesOf(2), QList<qint32>({2, 3, 4}));
}

TEST_P(ColumnSaveRoundTripTest, DeleteColumnTakesItsKeyItsMappingAndItsUnusedExternalField) {
    db->CallProcedure(MSQL::DeleteColumnProcedure, {integer(3)});
    EXPECT_EQ(count("eds_column", "col_id = 3"), 0);
    EXPECT_EQ(count("qvd_eds_def", "col_id = 3"), 0);
    for (const char* table : {"qvd_field_def", "qvd_dict_name", "qvd_field_tech"})
        EXPECT_EQ(count(table, "field_id = 28"), 0) << table;

    // The key column's key row goes; its key field belongs to the system and stays.
    db->CallProcedure("eds_client.deletecolumn", {integer(2)});
    EXPECT_EQ(
        std::tuple(count("eds_primarykey", "col_id = 2"), count("qvd_field_def", "field_id = 1")),
        std::tuple(0, 1));

    // An EXT field that a report template uses stays.
    db->ExecuteStatement("INSERT INTO pm_templatefield (templateid, field_id) VALUES(2, 29)");
    db->CallProcedure(MSQL::DeleteColumnProcedure, {integer(6)});
    EXPECT_EQ(count("eds_column", "col_id = 6"), 0);
    EXPECT_EQ(count("qvd_dict_name", "field_id = 29"), 1);

    const qint32 columns = count("eds_column");
    EXPECT_NO_THROW(db->CallProcedure(MSQL::DeleteColumnProcedure, {integer(9999)}));
    EXPECT_EQ(count("eds_column"), columns);
}

// Two columns map the demo's EXT field 28: the template query joins each template twice, and
// the field outlives the first column deleted.
TEST_P(ColumnSaveRoundTripTest, AFieldTwoColumnsMapIsSeenOnceByTemplatesAndKeptByTheFirstDelete) {
    EXPECT_FALSE(ColumnSave::FieldInTemplates(28));
    db->ExecuteStatement(MSQL::InsertColumn(201, 1, "HO_AGAIN", "I", 5, "N", 5));
    db->ExecuteStatement("INSERT INTO qvd_eds_def (eds_id, col_id, field_id) VALUES(1, 201, 28)");
    db->ExecuteStatement("INSERT INTO pm_templatefield (templateid, field_id) VALUES(1, 28)");
    db->ExecuteStatement("INSERT INTO pm_templatefield (templateid, field_id) VALUES(2, 28)");
    qint32 rows = 0;
    for (auto rst = db->OpenRecordset(MSQL::TemplatesUsingFieldQuery(28)); !rst->Eof();
         rst->MoveNext())
        ++rows;
    EXPECT_EQ(rows, 2) << "UNIQUE keeps one row of each template";
    EXPECT_TRUE(ColumnSave::FieldInTemplates(28));

    db->ExecuteStatement("DELETE FROM pm_templatefield WHERE field_id = 28");
    db->CallProcedure(MSQL::DeleteColumnProcedure, {integer(3)});
    EXPECT_EQ(count("qvd_field_def", "field_id = 28"), 1);
    db->CallProcedure(MSQL::DeleteColumnProcedure, {integer(201)});
    EXPECT_EQ(count("qvd_field_def", "field_id = 28"), 0);
}

} // namespace Orvane::Testing
