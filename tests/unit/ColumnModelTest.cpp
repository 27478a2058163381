#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "tests/support/FakeHost.h"

namespace Orvane::Testing {
namespace {

TEST(ColumnFlags, EachSetterKeepsTheOtherFlagsConsistent) {
    CDataSourcesColumn c;
    c.setFieldAdded(true);
    c.setFieldDirty(true);
    EXPECT_TRUE(c.FieldDirty());
    EXPECT_FALSE(c.FieldAdded());
    EXPECT_TRUE(c.Dirty());

    c.setFieldAdded(true);
    EXPECT_FALSE(c.FieldDirty());

    c.setColumnDeleted(true);
    EXPECT_FALSE(c.Dirty());
    c.setDirty(true);
    EXPECT_FALSE(c.ColumnDeleted());

    c.setKeyAdded(true);
    c.setKeyDirty(true);
    EXPECT_FALSE(c.KeyAdded());
    c.setKeyDeleted(true);
    EXPECT_FALSE(c.KeyDirty());
    c.setKeyAdded(true);
    EXPECT_FALSE(c.KeyDeleted());
}

TEST(ColumnFlags, ADeletedStoredFieldMayBeReplacedButNotUpdated) {
    CDataSourcesColumn c;
    c.setFieldDirty(true);
    c.setDirty(false);
    c.setFieldDeleted(true);
    EXPECT_TRUE(c.Dirty());
    EXPECT_FALSE(c.FieldDirty());

    // A new field in place of the stored one: the old mapping must still go.
    c.setFieldAdded(true);
    EXPECT_TRUE(c.FieldDeleted());
    c.setFieldDeleted(true);
    EXPECT_FALSE(c.FieldAdded());

    // An update is of the mapped field, so that mapping stays.
    c.setFieldDirty(true);
    EXPECT_FALSE(c.FieldDeleted());
}

TEST(ColumnFlags, ClearingAFlagChangesNothingElse) {
    CDataSourcesColumn c;
    c.setKeyDirty(true);
    c.setKeyDirty(false);
    EXPECT_TRUE(c.Dirty());
    c.setColumnDeleted(true);
    c.setColumnDeleted(false);
    EXPECT_FALSE(c.Dirty());
}

TEST(ColumnFlags, SideEffectsDoNotCascade) {
    // KeyDeleted sets Dirty directly, without Dirty's own rule clearing ColumnDeleted.
    CDataSourcesColumn c;
    c.setColumnDeleted(true);
    c.setKeyDeleted(true);
    EXPECT_TRUE(c.ColumnDeleted());
    EXPECT_TRUE(c.Dirty());
}

TEST(ColumnClone, FlagsFollowTheSetterOrderAndTheEditorPositionIsDropped) {
    CDataSourcesColumn source;
    source.setColumn_Id(4);
    source.setColumn_Name("Cell");
    source.setColumnDeleted(true);
    source.setKeyDeleted(true); // Dirty and ColumnDeleted both true now
    source.setColPosition(7);
    source.setPosition(3);
    source.setKeyFld_Id(12);
    source.setKey_Ordinal(2);
    source.setIsTimeStamp(true);
    auto field = std::make_shared<FakeField>(9, "cell_name");
    source.setField(field);

    const auto clone = source.Clone();
    EXPECT_TRUE(clone->Dirty());
    EXPECT_FALSE(clone->ColumnDeleted());
    EXPECT_TRUE(clone->KeyDeleted());
    EXPECT_EQ(clone->ColPosition(), 0);
    EXPECT_EQ(clone->Column_Id(), 4);
    EXPECT_EQ(clone->Position(), 3);
    EXPECT_EQ(clone->Key_Ordinal(), 2);
    EXPECT_TRUE(clone->Is_Key());
    EXPECT_TRUE(clone->IsTimeStamp());
    EXPECT_EQ(clone->Field(), source.Field()); // the same field object, shared
    EXPECT_EQ(clone->Field_Name(), "cell_name");
}

TEST(ColumnClone, AStoredFieldReplacedByANewOneStaysReplaced) {
    CDataSourcesColumn source;
    source.setFieldDeleted(true);
    source.setField(std::make_shared<FakeField>(0, "drops"));
    source.setFieldAdded(true);
    const auto clone = source.Clone();
    EXPECT_TRUE(clone->FieldDeleted());
    EXPECT_TRUE(clone->FieldAdded());
    EXPECT_TRUE(clone->Dirty());
}

TEST(ColumnCollection, AddTrimsAndFindsByNameWithoutRegardToCase) {
    CDataSourcesColumns columns;
    const auto first = columns.Add("  Cell Name ");
    EXPECT_EQ(first->Column_Name(), "Cell Name");
    EXPECT_EQ(columns.Add("cell name"), first);
    EXPECT_EQ(columns.Count(), 1);
    EXPECT_EQ(columns.Item("CELL NAME"), first);
    EXPECT_EQ(columns.Item(1), first);
    EXPECT_EQ(columns.Item("missing"), nullptr);
    EXPECT_EQ(columns.Item(2), nullptr);
}

TEST(ColumnCollection, TimeStampIsFoundUnderItsOldName) {
    CDataSourcesColumns columns;
    columns.Add("A");
    const auto stamp = columns.Add("When");
    stamp->setIsTimeStamp(true);
    EXPECT_EQ(columns.Add("Time Stamp"), stamp);
    EXPECT_EQ(columns.Count(), 2);
    // Only the exact untrimmed text falls back to the time stamp column.
    EXPECT_NE(columns.Add(" Time Stamp"), stamp);
}

TEST(ColumnCollection, RemoveKeepsOrderAndRefusesAMissingKey) {
    CDataSourcesColumns columns;
    columns.Add("A");
    columns.Add("B");
    columns.Add("C");
    columns.Remove("b");
    ASSERT_EQ(columns.Count(), 2);
    EXPECT_EQ(columns.Item(2)->Column_Name(), "C");
    EXPECT_FALSE(columns.Exists("B"));
    EXPECT_THROW(columns.Remove("B"), Error);
    columns.Add("B");
    EXPECT_EQ(columns.Item(3)->Column_Name(), "B");
}

TEST(ColumnCollection, AddItemCopiesIntoAStoredColumnButKeepsItsFlags) {
    CDataSourcesColumns columns;
    const auto stored = columns.Add("A");
    stored->setDirty(true);
    CDataSourcesColumn update;
    update.setColumn_Name("a");
    update.setColumn_Id(5);
    update.setPosition(9);
    update.setColPosition(3);
    update.setKeyDeleted(true);
    EXPECT_TRUE(columns.AddItem(update));
    EXPECT_EQ(columns.Count(), 1);
    EXPECT_EQ(stored->Column_Id(), 5);
    EXPECT_EQ(stored->Position(), 9);
    EXPECT_EQ(stored->ColPosition(), 3);
    EXPECT_FALSE(stored->KeyDeleted());

    update.setColumn_Name("B");
    EXPECT_TRUE(columns.AddItem(update));
    EXPECT_EQ(columns.Item("B")->ColPosition(), 0); // added as a clone
}

TEST(ColumnCollection, ClearLeavesNothingBehindUnderAnyKey) {
    CDataSourcesColumns columns;
    const auto a = columns.Add("A");
    columns.Add("B");
    columns.Clear();
    EXPECT_EQ(columns.Count(), 0);
    EXPECT_FALSE(columns.Exists("a"));
    EXPECT_EQ(a.use_count(), 1) << "the collection holds no reference any more";
    const auto again = columns.Add("a");
    EXPECT_NE(again, a);
    EXPECT_EQ(columns.Item(1), again);
}

TEST(ColumnCollection, PositionsCountDeletedColumnsAndCompareNamesExactly) {
    CDataSourcesColumns columns;
    columns.Add("A")->setPosition(1);
    const auto b = columns.Add("B");
    b->setPosition(3);
    b->setColumnDeleted(true);
    EXPECT_EQ(columns.FirstFreePosition(), 2);
    EXPECT_FALSE(columns.PositionInUse(3, "B"));
    EXPECT_TRUE(columns.PositionInUse(3, "b"));
    EXPECT_TRUE(columns.PositionInUse(3, ""));
    EXPECT_EQ(columns.ActiveColumns(), 1);
}

TEST(ColumnCollection, FirstFreePositionIs501WhenAllAreTaken) {
    CDataSourcesColumns columns;
    for (int i = 1; i <= 500; ++i)
        columns.Add(QString("C%1").arg(i))->setPosition(i);
    EXPECT_EQ(columns.FirstFreePosition(), 501);
    columns.Item("C250")->setPosition(0);
    EXPECT_EQ(columns.FirstFreePosition(), 250);
}

TEST(ColumnCollection, OrdinalQueriesTreatDeletedColumnsDifferently) {
    CDataSourcesColumns columns;
    const auto key = columns.Add("K");
    key->setKeyFld_Id(7);
    key->setKey_Ordinal(2);
    key->setColumnDeleted(true);
    const auto plain = columns.Add("P");
    plain->setKey_Ordinal(0);

    EXPECT_FALSE(columns.OrdInUse(2));
    EXPECT_TRUE(columns.KeyExists(2));
    EXPECT_EQ(columns.BiggestOrdinal(), 2);
    EXPECT_FALSE(columns.KeyExists(0));
    EXPECT_TRUE(columns.OrdInUse(0));
    EXPECT_EQ(CDataSourcesColumns().BiggestOrdinal(), 0);
}

class LoadColumnsTest : public FakeHostTest {
protected:
    Row row(int colId, const QString& name, int position, QVariant fieldId, QVariant pkId,
            QVariant ordinal, const QString& timeStamp, int editorPosition) {
        return Row{{"col_id", colId},
                   {"col_name", name},
                   {"col_type", "S"},
                   {"col_position", position},
                   {"Field_id", fieldId},
                   {"pk_id", pkId},
                   {"pkFld_id", pkId.isNull() ? QVariant() : QVariant(300)},
                   {"ordinal", ordinal},
                   {"pkEntity_id", QVariant()},
                   {"pkFld_name", pkId.isNull() ? QVariant() : QVariant("cell_id")},
                   {"pkEntity_name", QVariant()},
                   {"pkEntity_label", QVariant()},
                   {"TimeStamp", timeStamp},
                   {"editor_position", editorPosition}};
    }
};

TEST_F(LoadColumnsTest, LoadsEveryColumnWithOneBatchLookupOfFields) {
    dictionary->addField(71, "drops");
    query->Answer("FROM eds_column a",
                  {row(10, "When", 1, QVariant(), QVariant(), QVariant(), "Y", 1),
                   row(11, "Cell", 2, QVariant(), 5, 1, "N", 2),
                   row(12, "Drops", 3, 71, QVariant(), QVariant(), "N", 3)});
    CDataSourcesColumns columns;
    columns.LoadColumns(42);

    ASSERT_EQ(columns.Count(), 3);
    EXPECT_EQ(dictionary->fieldIdLists, QStringList{"0,0,71"});
    EXPECT_EQ(columns.EDS_Id(), 42);

    const auto when = columns.Item("When");
    EXPECT_TRUE(when->IsTimeStamp());
    EXPECT_EQ(when->Field(), nullptr);
    EXPECT_EQ(when->PK_Id(), 0);
    EXPECT_EQ(when->KeyFld_Name(), "");

    const auto cell = columns.Item("Cell");
    EXPECT_TRUE(cell->Is_Key());
    EXPECT_EQ(cell->Key_Ordinal(), 1);
    EXPECT_EQ(cell->PK_Id(), 5);
    EXPECT_EQ(cell->KeyFld_Name(), "cell_id");
    EXPECT_EQ(cell->ColPosition(), 2);

    EXPECT_EQ(columns.Item("Drops")->Field_Name(), "drops");
    EXPECT_EQ(columns.Item("Drops")->Column_Id(), 12);
    EXPECT_FALSE(columns.Item("Drops")->Dirty());
}

TEST_F(LoadColumnsTest, WithoutEditorPositionTheColumnIsNotRead) {
    query->editorPosition = false;
    Row r = row(10, "A", 4, QVariant(), QVariant(), QVariant(), "N", 9);
    r.remove("editor_position"); // reading it would throw
    query->Answer("FROM eds_column a", {r});
    CDataSourcesColumns columns;
    columns.LoadColumns(42);
    EXPECT_EQ(columns.Item("A")->ColPosition(), 0);
    EXPECT_TRUE(query->log.first().endsWith("ORDER BY a.col_position"));
}

TEST_F(LoadColumnsTest, NothingHappensForAnUnsavedDocument) {
    CDataSourcesColumns columns;
    columns.LoadColumns(0);
    EXPECT_TRUE(query->log.isEmpty());
    EXPECT_EQ(columns.EDS_Id(), 0);
}

} // namespace
} // namespace Orvane::Testing
