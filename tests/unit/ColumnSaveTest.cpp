#include "orvane/model/ColumnSave.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/widgets/TemplateUseCheck.h"
#include "tests/support/FakeHost.h"

namespace Orvane::Testing {
namespace {

class ColumnSaveTest : public FakeHostTest {
protected:
    ColumnSaveTest() {
        columns.setEDS_Id(42);
        columns.setEntity(dictionary->addEntity(3, "Cell", "Cell"));
        query->Answer("field_group_short = 'EXT'", {Row{{"field_group_id", 9}}});
        query->procedureResults.insert("eds_client.createfield", 5000);
    }

    CDataSourcesColumns::ColumnPtr stored(const QString& name, int id, int position) {
        const auto column = columns.Add(name);
        column->setColumn_Id(id);
        column->setColumn_Type("String");
        column->setPosition(position);
        column->setColPosition(position);
        return column;
    }

    std::shared_ptr<FakeField> newField(const QString& name) {
        auto field = std::make_shared<FakeField>(0, name);
        field->description = "desc";
        field->heading1 = "H1";
        field->heading2 = "H2";
        field->dataType = "F";
        field->technologies = "5";
        field->technologyMask = 5;
        field->aggregationPairId = 4;
        field->style = 2;
        return field;
    }

    CDataSourcesColumns columns;
};

TEST_F(ColumnSaveTest, NewDocumentInsertsColumnsThenFieldsThenKeys) {
    const auto stamp = columns.Add("When");
    stamp->setColumn_Type("Date");
    stamp->setIsTimeStamp(true);
    stamp->setPosition(1);
    stamp->setColPosition(1);
    const auto kind = columns.Add("Kind");
    kind->setColumn_Type("ENUM");
    kind->setPosition(2);
    kind->setColPosition(2);
    kind->setField(newField("kind"));
    kind->setKeyFld_Id(300);
    kind->setKey_Ordinal(1);

    ColumnSave::InsertNewColumns(42, columns);
    ColumnSave::CreateNewFields(42, columns);
    ColumnSave::InsertNewKeys(42, columns);

    EXPECT_EQ(query->log,
              (QStringList{
                  "SEQ sq_eds_column",
                  "EXEC INSERT INTO eds_column(col_id,eds_id,col_name,col_type,col_position,"
                  "is_timestamp,editor_position)VALUES(100,42,'When','D',1,'Y',1)",
                  "SEQ sq_eds_column",
                  "EXEC INSERT INTO eds_column(col_id,eds_id,col_name,col_type,col_position,"
                  "is_timestamp,editor_position)VALUES(101,42,'Kind','E',2,'N',2)",
                  "OPEN select field_group_id from qvd_field_group where field_group_short = 'EXT'",
                  "CALL eds_client.createfield(integer:-, integer:42, integer:101, integer:3, "
                  "string:kind, string:desc, string:H1, string:H2, string:S, string:F, string:5, "
                  "integer:5, integer:4, integer:9, integer:2)",
                  "SEQ SQ_EDS_PRIMARYKEY",
                  "EXEC INSERT INTO eds_primarykey VALUES(102,42,101,300,1)",
              }));
    EXPECT_EQ(kind->Field_Id(), 5000);
    ASSERT_EQ(dictionary->registered.size(), 1);
    EXPECT_EQ(dictionary->registered.first(), kind->Field());
    EXPECT_EQ(kind->PK_Id(), 102);
    // The pointer shows the hourglass while the columns are inserted, then comes back.
    EXPECT_EQ(app->pointerHistory, (QList<qint32>{HourglassPointer, DefaultPointer}));
}

TEST_F(ColumnSaveTest, TheFieldGroupIsReadOncePerConnection) {
    ColumnSave::CreateField(newField("a"), 42, 1, 3);
    ColumnSave::CreateField(newField("b"), 42, 2, 3);
    EXPECT_EQ(query->log.filter("field_group_short").size(), 1);
}

TEST_F(ColumnSaveTest, DirtyColumnsGetNegativePositionsByCollectionOrderBeforeTheirRealOnes) {
    query->editorPosition = false;
    stored("A", 1, 1)->setDirty(true);
    stored("B", 2, 2);
    stored("C", 3, 3)->setDirty(true);
    stored("D", 4, 4)->setDirty(true);

    ColumnSave::SaveColumns(columns);

    EXPECT_EQ(query->executed(),
              (QStringList{
                  "UPDATE eds_column SET col_position = -1 WHERE col_id = 1",
                  "UPDATE eds_column SET col_position = -3 WHERE col_id = 3",
                  "UPDATE eds_column SET col_position = -4 WHERE col_id = 4",
                  "UPDATE eds_column SET col_name = 'A', col_type = 'S', col_position = 1 "
                  "WHERE col_id = 1",
                  "UPDATE eds_column SET col_name = 'C', col_type = 'S', col_position = 3 "
                  "WHERE col_id = 3",
                  "UPDATE eds_column SET col_name = 'D', col_type = 'S', col_position = 4 "
                  "WHERE col_id = 4",
              }));
}

TEST_F(ColumnSaveTest, EditPathRunsItsFourPassesInOrder) {
    const auto gone = stored("Gone", 1, 1);
    gone->setKeyFld_Id(300);
    gone->setPK_Id(70);
    gone->setKeyDeleted(true);
    gone->setColumnDeleted(true);
    const auto rekeyed = stored("Rekeyed", 2, 2);
    rekeyed->setPK_Id(71);
    rekeyed->setKeyFld_Id(301);
    rekeyed->setKey_Ordinal(2);
    rekeyed->setKeyDirty(true);
    const auto unkeyed = stored("Unkeyed", 3, 3);
    unkeyed->setPK_Id(72);
    unkeyed->setKeyDeleted(true);
    const auto fielded = stored("Fielded", 4, 4);
    fielded->setField(newField("fielded"));
    fielded->setFieldAdded(true);
    const auto fresh = columns.Add("Fresh");
    fresh->setColumn_Type("Integer");
    fresh->setPosition(5);
    fresh->setColPosition(4);
    fresh->setKeyFld_Id(302);
    fresh->setKey_Ordinal(1);

    ColumnSave::SaveColumns(columns);

    EXPECT_FALSE(columns.Exists("Gone"));
    EXPECT_EQ(query->log,
              (QStringList{
                  // 1. deletion by the procedure alone: no key statement for the deleted key
                  "CALL EDS_CLIENT.DeleteColumn(integer:1)",
                  // 2. negative positions, counted over all remaining columns
                  "EXEC UPDATE eds_column SET col_position = -1 WHERE col_id = 2",
                  "EXEC UPDATE eds_column SET editor_position = -1 WHERE col_id = 2",
                  "EXEC UPDATE eds_primarykey SET  field_id = 301, ordinal = -1 WHERE pk_id = 71",
                  "EXEC UPDATE eds_column SET col_position = -2 WHERE col_id = 3",
                  "EXEC UPDATE eds_column SET editor_position = -2 WHERE col_id = 3",
                  "EXEC UPDATE eds_column SET col_position = -3 WHERE col_id = 4",
                  "EXEC UPDATE eds_column SET editor_position = -3 WHERE col_id = 4",
                  // 3. updates with their fields and keys
                  "EXEC UPDATE eds_column SET col_name = 'Rekeyed', col_type = 'S', "
                  "col_position = 2, editor_position = 2 WHERE col_id = 2",
                  "EXEC UPDATE eds_primarykey SET  field_id = 301, ordinal = 2 WHERE pk_id = 71",
                  "EXEC UPDATE eds_column SET col_name = 'Unkeyed', col_type = 'S', "
                  "col_position = 3, editor_position = 3 WHERE col_id = 3",
                  "EXEC DELETE FROM eds_primarykey WHERE pk_id = 72",
                  "EXEC UPDATE eds_column SET col_name = 'Fielded', col_type = 'S', "
                  "col_position = 4, editor_position = 4 WHERE col_id = 4",
                  "OPEN select field_group_id from qvd_field_group where field_group_short = 'EXT'",
                  "CALL eds_client.createfield(integer:-, integer:42, integer:4, integer:3, "
                  "string:fielded, string:desc, string:H1, string:H2, string:S, string:F, "
                  "string:5, integer:5, integer:4, integer:9, integer:2)",
                  // 4. the new column with its key
                  "SEQ sq_eds_column",
                  "EXEC INSERT INTO eds_column(col_id,eds_id,col_name,col_type,col_position,"
                  "is_timestamp,editor_position)VALUES(100,42,'Fresh','I',5,'N',4)",
                  "SEQ SQ_EDS_PRIMARYKEY",
                  "EXEC INSERT INTO eds_primarykey VALUES(101,42,100,302,1)",
              }));
    // Flags are left as they are after the save.
    EXPECT_TRUE(rekeyed->KeyDirty());
}

// A field marked added without a field creates nothing; an added key is inserted, but not the key
// of a new column that was deleted before the save.
TEST_F(ColumnSaveTest, OnlyLiveKeysAreInsertedAndOnlyRealFieldsCreated) {
    const auto column = stored("A", 1, 1);
    column->setFieldAdded(true);
    column->setKeyFld_Id(300);
    column->setKey_Ordinal(3);
    column->setKeyAdded(true);
    const auto unkeyed = columns.Add("Unkeyed");
    unkeyed->setColumn_Type("Integer");
    unkeyed->setPosition(2);
    unkeyed->setKeyFld_Id(300);
    unkeyed->setKey_Ordinal(1);
    unkeyed->setKeyDeleted(true);
    const auto keyed = columns.Add("Keyed");
    keyed->setColumn_Type("Integer");
    keyed->setPosition(3);
    keyed->setKeyFld_Id(301);
    keyed->setKey_Ordinal(2);

    ColumnSave::SaveColumns(columns);

    EXPECT_TRUE(query->log.filter("createfield").isEmpty());
    EXPECT_EQ(unkeyed->Column_Id(), 101);
    EXPECT_EQ(unkeyed->PK_Id(), 0);
    EXPECT_EQ(query->log.filter("INSERT INTO eds_primarykey"),
              (QStringList{"EXEC INSERT INTO eds_primarykey VALUES(100,42,1,300,3)",
                           "EXEC INSERT INTO eds_primarykey VALUES(103,42,102,301,2)"}));
}

TEST_F(ColumnSaveTest, AChangedFieldIsUpdatedWithItsTechnologies) {
    const auto column = stored("A", 1, 1);
    auto field = newField("drops");
    field->id = 77;
    column->setField(field);
    column->setFieldDirty(true);
    ColumnSave::SaveColumns(columns);
    const QStringList tail = query->log.mid(query->log.size() - 4);
    EXPECT_EQ(tail, (QStringList{
                        "EXEC UPDATE qvd_field_def SET  field_desc = 'desc', field_aggregator = 4, "
                        "datatype = 'F' WHERE field_id = 77",
                        "EXEC UPDATE qvd_dict_name SET  report_header = 'H1', report_header2 = "
                        "'H2', name = 'drops' WHERE field_id = 77",
                        "EXEC DELETE FROM qvd_field_tech WHERE field_id = 77",
                        "CALL qv_dictionary.add_tech_from_mask(integer:77, integer:5)",
                    }));
}

TEST_F(ColumnSaveTest, AClearedFieldIsUnmappedBeforeAFieldInItsPlaceIsCreated) {
    query->editorPosition = false;
    const auto cleared = stored("Cleared", 1, 1);
    cleared->setFieldDeleted(true);
    const auto replaced = stored("Replaced", 2, 2);
    replaced->setFieldDeleted(true);
    replaced->setField(newField("fresh"));
    replaced->setFieldAdded(true);

    ColumnSave::SaveColumns(columns);

    EXPECT_EQ(query->log.mid(2),
              (QStringList{
                  "EXEC UPDATE eds_column SET col_name = 'Cleared', col_type = 'S', "
                  "col_position = 1 WHERE col_id = 1",
                  "EXEC DELETE FROM qvd_eds_def WHERE eds_id = 42 AND col_id = 1",
                  "EXEC UPDATE eds_column SET col_name = 'Replaced', col_type = 'S', "
                  "col_position = 2 WHERE col_id = 2",
                  "EXEC DELETE FROM qvd_eds_def WHERE eds_id = 42 AND col_id = 2",
                  "OPEN select field_group_id from qvd_field_group where field_group_short = 'EXT'",
                  "CALL eds_client.createfield(integer:-, integer:42, integer:2, integer:3, "
                  "string:fresh, string:desc, string:H1, string:H2, string:S, string:F, "
                  "string:5, integer:5, integer:4, integer:9, integer:2)",
              }));
    // The dictionary field of a cleared column is the entity's: nothing deletes it.
    EXPECT_TRUE(query->log.filter("qvd_field_def").isEmpty());
    EXPECT_TRUE(query->log.filter("DeleteColumn").isEmpty());
}

TEST_F(ColumnSaveTest, AFailingStatementStopsTheSaveWithTheDatabaseMessage) {
    stored("A", 1, 1)->setDirty(true);
    stored("B", 2, 2)->setDirty(true);
    query->FailOn("col_name = 'A'", "ORA-00001: unique constraint violated");
    try {
        ColumnSave::SaveColumns(columns);
        FAIL() << "the save went on";
    } catch (const Error& error) {
        EXPECT_EQ(error.message(), "ORA-00001: unique constraint violated");
    }
    EXPECT_TRUE(query->log.filter("col_name = 'B'").isEmpty());
}

TEST_F(ColumnSaveTest, ARestoredStateLetsAFailedSaveBeRetriedFromTheStart) {
    const auto gone = stored("Gone", 1, 1);
    gone->setColumnDeleted(true);
    const auto fresh = columns.Add("Fresh");
    fresh->setField(newField("fresh"));
    const auto state = columns.SaveState();
    query->FailOn("INSERT INTO eds_primarykey");
    fresh->setKeyFld_Id(300);
    fresh->setKey_Ordinal(1);
    const auto keyed = columns.SaveState();

    EXPECT_THROW(ColumnSave::SaveColumns(columns), Error);
    EXPECT_FALSE(columns.Exists("Gone"));
    EXPECT_EQ(fresh->Column_Id(), 100);
    EXPECT_EQ(fresh->Field_Id(), 5000);

    columns.RestoreState(*keyed);
    ASSERT_EQ(columns.Count(), 2);
    EXPECT_EQ(columns.Item(1), gone); // the same objects, in their order
    EXPECT_TRUE(gone->ColumnDeleted());
    EXPECT_EQ(columns.Item("fresh"), fresh);
    EXPECT_EQ(fresh->Column_Id(), 0);
    EXPECT_EQ(fresh->Field_Id(), 0);
    EXPECT_EQ(fresh->Key_Ordinal(), 1);

    columns.RestoreState(*state);
    EXPECT_FALSE(fresh->Is_Key());
}

TEST_F(ColumnSaveTest, ColumnsGoOnlyWithTheUsersYesAndWhenNoTemplateUsesTheirField) {
    app->msgBoxAnswers = {MsgBoxResult::No, MsgBoxResult::Yes};
    EXPECT_FALSE(mOrvane::TemplateUseCheck(true, 0));
    EXPECT_TRUE(mOrvane::TemplateUseCheck(true, 0));
    ASSERT_EQ(app->msgBoxes.size(), 2);
    // Its text and title are compared where the general tab asks it.
    EXPECT_EQ(app->msgBoxes[0].buttons, MsgBoxButtons::YesNo);
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
    EXPECT_TRUE(query->log.isEmpty());

    app->msgBoxes.clear();
    EXPECT_TRUE(mOrvane::TemplateUseCheck(false, 8));
    EXPECT_TRUE(app->msgBoxes.isEmpty());
    query->Answer("PM_TemplateField", {Row{{"TemplateId", 1}}});
    EXPECT_FALSE(mOrvane::TemplateUseCheck(false, 8));
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].prompt,
              "This column may not be deleted because it is currently in use in \r\n"
              "one or more templates.  It must be removed from the template(s)\r\n"
              "before it may be deleted from this document.");
    EXPECT_EQ(app->msgBoxes[0].title, "");
    EXPECT_EQ(app->msgBoxes[0].buttons, MsgBoxButtons::OKOnly);
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
}

} // namespace
} // namespace Orvane::Testing
