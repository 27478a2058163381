#include "orvane/model/ColumnSave.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "orvane/widgets/TemplateUseCheck.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>

namespace Orvane::Testing {
namespace {

using ColumnPtr = CDataSourcesColumns::ColumnPtr;

// Saves through the document, which takes the new-document path or the edit path.
class ColumnSaveTest : public FakeHostTest {
protected:
    ColumnSaveTest() {
        doc.setDocId(42);
        doc.setEntity(cell);
        columns.setEDS_Id(42);
        columns.setEntity(cell);
        query->Answer("field_group_short = 'EXT'", {Row{{"field_group_id", 9}}});
        query->procedureResults.insert("eds_client.createfield", 5000);
    }

    // A column at the position given; one with id 0 has no row yet.
    ColumnPtr column(const QString& name, int id, int position, const QString& type = "String") {
        const auto column = columns.Add(name);
        column->setColumn_Id(id);
        column->setColumn_Type(type);
        column->setPosition(position);
        column->setColPosition(position);
        return column;
    }

    static void key(const ColumnPtr& column, qint32 fieldId, qint32 ordinal) {
        column->setKeyFld_Id(fieldId);
        column->setKey_Ordinal(ordinal);
    }

    static std::shared_ptr<FakeField> newField(const QString& name, qint32 id = 0) {
        auto field = std::make_shared<FakeField>(id, name);
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

    std::shared_ptr<FakeEntity> cell = dictionary->addEntity(3, "Cell", "Cell");
    CDataSourcesData doc;
    CDataSourcesColumns& columns = *doc.Columns();
};

TEST_F(ColumnSaveTest, NewDocumentInsertsColumnsThenFieldsThenKeys) {
    columns.setEDS_Id(0);
    column("When", 0, 1, "Date")->setIsTimeStamp(true);
    const auto kind = column("Kind", 0, 2, "ENUM");
    kind->setField(newField("kind"));
    key(kind, 300, 1);
    doc.setIsNew(true);

    EXPECT_TRUE(doc.SaveData());

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
    EXPECT_EQ(QList<qint32>({kind->Field_Id(), kind->PK_Id(), columns.EDS_Id(), cell->reloads}),
              QList<qint32>({5000, 102, 42, 1}));
    EXPECT_TRUE(doc.IsNew()); // the host decides when the document stops being new
    // The hourglass shows while the document and its columns are written, then goes.
    EXPECT_EQ(app->pointerHistory, (QList<qint32>{HourglassPointer, HourglassPointer,
                                                  HourglassPointer, DefaultPointer}));
}

TEST_F(ColumnSaveTest, TheFieldGroupIsReadOncePerConnection) {
    ColumnSave::CreateField(newField("a"), 42, 1, 3);
    ColumnSave::CreateField(newField("b"), 42, 2, 3);
    EXPECT_EQ(query->log.filter("field_group_short").size(), 1);
}

// Without the editor position; a cleared field loses its mapping (the dictionary field is the
// entity's, nothing deletes it), before a field that replaces it is created.
TEST_F(ColumnSaveTest, DirtyColumnsMoveToNegativePositionsThenClearedFieldsAreUnmapped) {
    query->editorPosition = false;
    column("A", 1, 1)->setDirty(true);
    column("B", 2, 2);
    column("C", 3, 3)->setFieldDeleted(true);
    const auto replaced = column("D", 4, 4);
    replaced->setFieldDeleted(true);
    replaced->setField(newField("fresh"));
    replaced->setFieldAdded(true);

    doc.SaveData();

    EXPECT_EQ(query->log,
              (QStringList{
                  "EXEC UPDATE eds_column SET col_position = -1 WHERE col_id = 1",
                  "EXEC UPDATE eds_column SET col_position = -3 WHERE col_id = 3",
                  "EXEC UPDATE eds_column SET col_position = -4 WHERE col_id = 4",
                  "EXEC UPDATE eds_column SET col_name = 'A', col_type = 'S', col_position = 1 "
                  "WHERE col_id = 1",
                  "EXEC UPDATE eds_column SET col_name = 'C', col_type = 'S', col_position = 3 "
                  "WHERE col_id = 3",
                  "EXEC DELETE FROM qvd_eds_def WHERE eds_id = 42 AND col_id = 3",
                  "EXEC UPDATE eds_column SET col_name = 'D', col_type = 'S', col_position = 4 "
                  "WHERE col_id = 4",
                  "EXEC DELETE FROM qvd_eds_def WHERE eds_id = 42 AND col_id = 4",
                  "OPEN select field_group_id from qvd_field_group where field_group_short = 'EXT'",
                  "CALL eds_client.createfield(integer:-, integer:42, integer:4, integer:3, "
                  "string:fresh, string:desc, string:H1, string:H2, string:S, string:F, "
                  "string:5, integer:5, integer:4, integer:9, integer:2)",
              }));
}

TEST_F(ColumnSaveTest, EditPathRunsItsFourPassesInOrder) {
    const auto gone = column("Gone", 1, 1);
    gone->setKeyFld_Id(300);
    gone->setPK_Id(70);
    gone->setKeyDeleted(true);
    gone->setColumnDeleted(true);
    const auto rekeyed = column("Rekeyed", 2, 2);
    rekeyed->setPK_Id(71);
    key(rekeyed, 301, 2);
    rekeyed->setKeyDirty(true);
    const auto unkeyed = column("Unkeyed", 3, 3);
    unkeyed->setPK_Id(72);
    unkeyed->setKeyDeleted(true);
    unkeyed->setFieldAdded(true); // without a field: nothing to create
    const auto fielded = column("Fielded", 4, 4);
    fielded->setField(newField("drops", 77));
    fielded->setFieldDirty(true);
    key(fielded, 303, 3);
    fielded->setKeyAdded(true);
    const auto fresh = column("Fresh", 0, 5, "Integer");
    fresh->setColPosition(4);
    key(fresh, 302, 1);

    doc.SaveData();

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
                  "EXEC UPDATE qvd_field_def SET  field_desc = 'desc', field_aggregator = 4, "
                  "datatype = 'F' WHERE field_id = 77",
                  "EXEC UPDATE qvd_dict_name SET  report_header = 'H1', report_header2 = 'H2', "
                  "name = 'drops' WHERE field_id = 77",
                  "EXEC DELETE FROM qvd_field_tech WHERE field_id = 77",
                  "CALL qv_dictionary.add_tech_from_mask(integer:77, integer:5)",
                  "SEQ SQ_EDS_PRIMARYKEY",
                  "EXEC INSERT INTO eds_primarykey VALUES(100,42,4,303,3)",
                  // 4. the new column with its key
                  "SEQ sq_eds_column",
                  "EXEC INSERT INTO eds_column(col_id,eds_id,col_name,col_type,col_position,"
                  "is_timestamp,editor_position)VALUES(101,42,'Fresh','I',5,'N',4)",
                  "SEQ SQ_EDS_PRIMARYKEY",
                  "EXEC INSERT INTO eds_primarykey VALUES(102,42,101,302,1)",
              }));
    EXPECT_TRUE(rekeyed->KeyDirty()) << "flags are left as they are after the save";
}

// The user deleted the key of a column that has no row yet: the column keeps its key field until
// the save, and gets no key row.
TEST_F(ColumnSaveTest, ANewColumnsDeletedKeyGetsNoRow) {
    const auto dropped = column("Dropped", 0, 1, "Integer");
    key(dropped, 300, 1);
    dropped->setKeyDeleted(true);
    doc.SaveData();
    EXPECT_EQ(QList<qint32>({dropped->Column_Id(), dropped->PK_Id()}), QList<qint32>({100, 0}));
    EXPECT_TRUE(query->log.filter("INSERT INTO eds_primarykey").isEmpty());
}

TEST_F(ColumnSaveTest, AFailingStatementStopsTheSaveAndARestoredStateLetsItBeRetried) {
    const auto gone = column("Gone", 1, 1);
    gone->setColumnDeleted(true);
    const auto fresh = columns.Add("Fresh");
    fresh->setField(newField("fresh"));
    key(fresh, 300, 1);
    columns.Add("Later");
    const auto keyed = columns.SaveState();
    query->FailOn("INSERT INTO eds_primarykey", "ORA-00001: unique constraint violated");

    EXPECT_THAT([&] { doc.SaveData(); }, testing::ThrowsMessage<Error>(testing::StrEq(
                                             "ORA-00001: unique constraint violated")));
    EXPECT_TRUE(query->log.filter("'Later'").isEmpty()) << "the save went on";
    EXPECT_EQ(app->pointer, DefaultPointer);
    EXPECT_FALSE(columns.Exists("Gone"));
    EXPECT_EQ(QList<qint32>({fresh->Column_Id(), fresh->Field_Id()}), QList<qint32>({100, 5000}));

    columns.RestoreState(*keyed);
    ASSERT_EQ(columns.Count(), 3);
    // The same objects, in their order.
    EXPECT_EQ(std::tuple(columns.Item(1), gone->ColumnDeleted(), columns.Item("fresh")),
              std::tuple(gone, true, fresh));
    EXPECT_EQ(QList<qint32>({fresh->Column_Id(), fresh->Field_Id(), fresh->Key_Ordinal()}),
              QList<qint32>({0, 0, 1}));
}

// The answers of both questions are checked through the general tab and the grid that ask them;
// here, that the time stamp's question reads no templates and the refusal's own message.
TEST_F(ColumnSaveTest, TheTimeStampsQuestionReadsNoTemplatesAndATemplatesFieldIsRefused) {
    mOrvane::TemplateUseCheck(true, 0);
    EXPECT_TRUE(query->log.isEmpty());
    query->Answer("PM_TemplateField", {Row{{"TemplateId", 1}}});
    EXPECT_FALSE(mOrvane::TemplateUseCheck(false, 8));
    ASSERT_EQ(app->msgBoxes.size(), 2);
    EXPECT_EQ(app->msgBoxes[1].prompt + "|" + app->msgBoxes[1].title,
              "This column may not be deleted because it is currently in use in \r\n"
              "one or more templates.  It must be removed from the template(s)\r\n"
              "before it may be deleted from this document.|");
    EXPECT_EQ(std::tuple(app->msgBoxes[1].buttons, app->msgBoxes[1].icon),
              std::tuple(MsgBoxButtons::OKOnly, MsgBoxIcon::Critical));
}

} // namespace
} // namespace Orvane::Testing
