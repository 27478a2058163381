#include "orvane/host/HostRegistry.h"
#include "orvane/host/IEntityChooser.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>

namespace Orvane::Testing {
namespace {

class DataSourcesDataTest : public FakeHostTest {
protected:
    DataSourcesDataTest() { cell = dictionary->addEntity(3, "Cell", "Cell"); }

    // Loads the document row with the given id into doc.
    void edit(CDataSourcesData& doc, const std::shared_ptr<FakeDocumentType>& type, int id = 42,
              const QVariant& isTimeSeries = "Y", const QVariant& frequency = 12) {
        FakeRecordset rst({Row{{"Id", id},
                               {"EDS_Type", "A"},
                               {"Entity_id", 3},
                               {"is_time_series", isTimeSeries},
                               {"frequency_id", frequency}}});
        EXPECT_FALSE(doc.InitEdit(rst, type)); // the result is never a success flag
    }

    std::shared_ptr<FakeEntity> cell;
    std::shared_ptr<FakeDocumentType> ascii =
        std::make_shared<FakeDocumentType>("ASCII Data Source", "ASCII Data Source");
    std::shared_ptr<FakeDocumentType> odbc =
        std::make_shared<FakeDocumentType>("ODBC Data Source", "ODBC Data Source");
};

TEST_F(DataSourcesDataTest, InitEditReadsTheDocumentRowColumnsAndTheSettingsOfItsType) {
    query->Answer("SELECT * FROM eds_ascii_file WHERE eds_id =42",
                  {Row{{"FileName", "/data/cells.csv"}, {"separator", ","}}});
    CDataSourcesData doc;
    edit(doc, ascii);
    EXPECT_EQ(std::tuple(doc.Entity(), doc.Columns()->Entity()), std::tuple(cell, cell));
    EXPECT_EQ(std::tuple(doc.IsTimeSeries(), doc.IsNew()), std::tuple(true, false));
    EXPECT_EQ(
        QList<qsizetype>({doc.DocId(), doc.FreqId(), query->lastTimeout,
                          query->log.filter("FROM eds_column a").filter("a.EDS_Id = 42").size()}),
        QList<qsizetype>({42, 12, 60, 1}));
    EXPECT_EQ(QStringList({doc.EDS_Type(), doc.FileName(), doc.Delimeter(), doc.Category(),
                           doc.EditorName()}),
              QStringList(
                  {"A", "/data/cells.csv", ",", "ASCII Data Sources", "ASCII Data Source Editor"}));

    for (const QVariant& flag : {QVariant("y"), QVariant("N"), QVariant()}) {
        edit(doc, ascii, 42, flag, QVariant());
        EXPECT_FALSE(doc.IsTimeSeries())
            << "only an upper-case Y: " << flag.toString().toStdString();
        EXPECT_EQ(doc.FreqId(), 0) << "a null frequency";
    }
    edit(doc, ascii, 44); // no settings row: the previous values stay
    EXPECT_EQ(doc.FileName(), "/data/cells.csv");
    query->log.clear();
    edit(doc, std::make_shared<FakeDocumentType>("Report"));
    EXPECT_EQ(doc.Category(), "");
    EXPECT_EQ(query->log.size(), 1) << "another type loads no settings, the columns alone";
}

TEST_F(DataSourcesDataTest, OdbcNullsBecomeEmptyWhereAllowedAndErrorsElsewhere) {
    const auto settings = [](const QVariant& server) {
        return QList<Row>{Row{{"DB_Server", server},
                              {"DB_Database", QVariant()},
                              {"Table_Name", "cell_kpi"},
                              {"DB_UserId", QVariant()},
                              {"DB_Password", QVariant()}}};
    };
    query->Answer("SELECT * FROM eds_odbc_file WHERE eds_id =42", settings("pmdb01"));
    query->Answer("eds_id =43", settings(QVariant()));
    CDataSourcesData doc;
    doc.setSchema("old");
    edit(doc, odbc);
    EXPECT_EQ(QStringList({doc.Server(), doc.Table(), doc.Schema(), doc.UserId(), doc.Category()}),
              QStringList({"pmdb01", "cell_kpi", "", "", "ODBC Data Sources"}));
    EXPECT_THAT([&] { edit(doc, odbc, 43); },
                testing::ThrowsMessage<Error>(testing::HasSubstr("\"DB_Server\"")));
}

// The model asks through the host's chooser and knows no dialog.
TEST_F(DataSourcesDataTest, InitNewTakesTheChosenEntityOrIsCancelled) {
    struct Chooser : IEntityChooser {
        std::shared_ptr<IEntity> ChooseEntity(const QString& caption,
                                              const QString& schema) override {
            asked << caption + "|" + schema;
            return answer;
        }
        std::shared_ptr<IEntity> answer;
        QStringList asked;
    };
    const auto chooser = std::make_shared<Chooser>();
    HostRegistry::InstallEntityChooser(chooser);

    CDataSourcesData cancelled;
    const auto before = cancelled.Columns();
    EXPECT_FALSE(cancelled.InitNew(ascii));
    EXPECT_EQ(std::tuple(cancelled.IsNew(), cancelled.Entity() == nullptr),
              std::tuple(false, true));
    // A new, empty collection stays in place.
    EXPECT_EQ(std::tuple(cancelled.Columns() == before, cancelled.Columns()->Count()),
              std::tuple(false, 0));

    chooser->answer = cell;
    CDataSourcesData doc;
    EXPECT_TRUE(doc.InitNew(ascii));
    EXPECT_TRUE(doc.IsNew());
    EXPECT_EQ(std::tuple(doc.Entity(), doc.Columns()->Entity()), std::tuple(cell, cell));
    EXPECT_EQ(chooser->asked, QStringList(2, "Select Entity for this Data Source|System"));
    EXPECT_TRUE(app->modalShown.isEmpty());
}

// The rules the commands' and the save's tests do not reach; the others they check.
TEST(ColumnFlags, EachSetterKeepsTheOtherFlagsConsistentWithoutCascading) {
    CDataSourcesColumn c;
    c.setFieldDirty(true);
    EXPECT_TRUE(c.Dirty()) << "a changed field is saved with its column";
    c.setFieldAdded(true);
    c.setFieldDirty(true);
    EXPECT_FALSE(c.FieldAdded());
    c.setColumnDeleted(true);
    EXPECT_FALSE(c.Dirty());
    c.setDirty(true);
    c.setColumnDeleted(false);
    EXPECT_TRUE(c.Dirty()) << "clearing a flag changes nothing else";
    c.setColumnDeleted(true);
    c.setKeyAdded(true);
    EXPECT_TRUE(c.ColumnDeleted()) << "Dirty is set without its own rule";
    c.setKeyDirty(true);
    EXPECT_FALSE(c.KeyAdded());
    c.setKeyDeleted(true);
    EXPECT_FALSE(c.KeyDirty());
    c.setFieldAdded(true);
    c.setFieldDeleted(true);
    EXPECT_FALSE(c.FieldAdded());
    c.setFieldDirty(true);
    EXPECT_FALSE(c.FieldDeleted());
}

TEST(ColumnCopies, ACloneFollowsTheSetterOrderAndARenameCopyKeepsTheEditorPosition) {
    CDataSourcesColumn source;
    source.setColumn_Id(4);
    source.setColumn_Name("Cell");
    source.setColumnDeleted(true);
    source.setKeyDeleted(true); // Dirty and ColumnDeleted both true now
    source.setFieldDeleted(true);
    source.setField(std::make_shared<FakeField>(9, "cell_name"));
    source.setFieldAdded(true);
    source.setColPosition(7);
    source.setPosition(3);
    source.setKeyFld_Id(12);
    source.setKey_Ordinal(2);
    source.setIsTimeStamp(true);

    const auto clone = source.Clone();
    EXPECT_EQ(std::tuple(clone->Dirty(), clone->ColumnDeleted(), clone->IsTimeStamp()),
              std::tuple(true, false, true));
    EXPECT_EQ(std::tuple(clone->KeyDeleted(), clone->FieldDeleted(), clone->FieldAdded()),
              std::tuple(true, true, true));
    EXPECT_EQ(QList<qint32>({clone->ColPosition(), clone->Column_Id(), clone->Position(),
                             clone->Key_Ordinal()}),
              QList<qint32>({0, 4, 3, 2}));
    EXPECT_EQ(clone->Field(), source.Field()) << "the same field object, shared";

    // The rename command's tests check the name, the ids and the stored document's mark.
    CDataSourcesColumn renamed;
    renamed.CopyForRename(source, true);
    EXPECT_EQ(renamed.ColPosition(), 7);
    EXPECT_EQ(std::tuple(renamed.FieldDeleted(), renamed.FieldAdded(), renamed.KeyDeleted()),
              std::tuple(true, true, true));
    EXPECT_FALSE(renamed.ColumnDeleted());
    renamed.CopyForRename(CDataSourcesColumn(), true);
    EXPECT_FALSE(renamed.Dirty()) << "a new document keeps the copied mark";
}

TEST(ColumnKeys, AnEditedKeyIsLiveAndFlaggedByWhatIsStored) {
    struct Case {
        qint32 columnId, pkId;
        bool added, dirty;
    };
    for (const Case& k :
         {Case{0, 5, false, false}, Case{3, 5, false, true}, Case{3, 0, true, false}}) {
        CDataSourcesColumn column;
        column.setColumn_Id(k.columnId);
        column.setPK_Id(k.pkId);
        column.setKeyDeleted(true);
        column.MarkKeyEdited();
        EXPECT_EQ(QList<bool>({column.KeyDeleted(), column.KeyAdded(), column.KeyDirty()}),
                  QList<bool>({false, k.added, k.dirty}))
            << k.columnId << "," << k.pkId;
    }

    CDataSourcesColumn wiped;
    wiped.setPK_Id(5);
    wiped.setKeyFld_Id(44);
    wiped.setKey_Ordinal(2);
    wiped.setKeyEntity_Id(6);
    wiped.setKeyEntity("Cell");
    wiped.setKeyEntity_Label("Cells");
    wiped.setKeyFld_Name("cell_name");
    wiped.setKeyAdded(true);
    wiped.WipeKey();
    EXPECT_EQ(std::tuple(wiped.Is_Key(), wiped.KeyAdded()), std::tuple(false, false));
    EXPECT_EQ(std::tuple(wiped.PK_Id(), wiped.Key_Ordinal(), wiped.KeyEntity_Id()),
              std::tuple(0, 0, 0));
    EXPECT_EQ(wiped.KeyEntity() + wiped.KeyEntity_Label() + wiped.KeyFld_Name(), "");
}

TEST(ColumnCollection, AFieldNameCountsAsUsedOnlyOnAnotherColumnRegardlessOfCase) {
    CDataSourcesColumns columns;
    const auto self = columns.Add("A");
    self->setField(std::make_shared<FakeField>(1, "Calls"));
    columns.Add("B");
    EXPECT_FALSE(columns.FieldNameUsedElsewhere(*self, "calls"));
    columns.Add("C")->setField(std::make_shared<FakeField>(2, "CALLS"));
    EXPECT_EQ(std::tuple(columns.FieldNameUsedElsewhere(*self, "calls"),
                         columns.FieldNameUsedElsewhere(*self, "drops")),
              std::tuple(true, false));
}

TEST(ColumnCollection, KeysAreTrimmedNamesWithoutRegardToCaseInInsertionOrder) {
    CDataSourcesColumns columns;
    const auto first = columns.Add("  Cell Name ");
    EXPECT_EQ(first->Column_Name(), "Cell Name");
    EXPECT_EQ(columns.Add("cell name"), first);
    EXPECT_EQ(columns.Item("CELL NAME"), first);
    EXPECT_EQ(std::tuple(columns.Item("missing") == nullptr, columns.Item(2) == nullptr),
              std::tuple(true, true));
    const auto stamp = columns.Add("When");
    stamp->setIsTimeStamp(true);
    EXPECT_EQ(columns.Add("Time Stamp"), stamp) << "the time stamp under its old name";
    EXPECT_NE(columns.Add(" Time Stamp"), stamp) << "only the exact untrimmed text";
    columns.Remove("when");
    EXPECT_EQ(columns.Item(2)->Column_Name(), "Time Stamp");
    EXPECT_THROW(columns.Remove("When"), Error);
    columns.Clear();
    EXPECT_EQ(std::tuple(columns.Count(), columns.Exists("cell name")), std::tuple(0, false));
    EXPECT_EQ(first.use_count(), 1) << "the collection holds no reference any more";
}

TEST(ColumnCollection, AddItemCopiesIntoAStoredColumnButKeepsItsFlags) {
    CDataSourcesColumns columns;
    const auto stored = columns.Add("A");
    CDataSourcesColumn update;
    update.setColumn_Name("a");
    update.setColumn_Id(5);
    update.setPosition(9);
    update.setColPosition(3);
    update.setKeyDeleted(true);
    EXPECT_TRUE(columns.AddItem(update));
    EXPECT_EQ(columns.Count(), 1);
    EXPECT_EQ(std::tuple(stored->Column_Id(), stored->Position(), stored->ColPosition()),
              std::tuple(5, 9, 3));
    EXPECT_EQ(std::tuple(stored->KeyDeleted(), stored->Dirty()), std::tuple(false, false));
    update.setColumn_Name("B");
    EXPECT_TRUE(columns.AddItem(update));
    EXPECT_EQ(columns.Item("B")->ColPosition(), 0) << "added as a clone";
}

TEST(ColumnCollection, PositionAndOrdinalQueriesCountDeletedColumnsAsTheyShould) {
    CDataSourcesColumns columns;
    columns.Add("A")->setPosition(1);
    const auto key = columns.Add("K");
    key->setPosition(3);
    key->setKeyFld_Id(7);
    key->setKey_Ordinal(2);
    key->setColumnDeleted(true);
    EXPECT_EQ(QList<qint32>(
                  {columns.FirstFreePosition(), columns.ActiveColumns(), columns.BiggestOrdinal()}),
              QList<qint32>({2, 1, 2}));
    EXPECT_EQ(std::tuple(columns.PositionInUse(3, "k"), columns.PositionInUse(3, "K")),
              std::tuple(true, false))
        << "names compare exactly";
    EXPECT_EQ(QList<bool>({columns.OrdInUse(2), columns.KeyExists(2), columns.KeyExists(0),
                           columns.OrdInUse(0)}),
              QList<bool>({false, true, false, true}));
    for (int i = 2; i <= 500; ++i)
        columns.Add(QString("C%1").arg(i))->setPosition(i);
    EXPECT_EQ(columns.FirstFreePosition(), 501);
}

// What the columns hold once loaded is checked against real databases in both schema forms;
// here, how often the database and the dictionary are asked.
TEST_F(FakeHostTest, LoadColumnsAsksTheDictionaryOnceAndNothingForAnUnsavedDocument) {
    CDataSourcesColumns columns;
    columns.LoadColumns(0);
    EXPECT_TRUE(query->log.isEmpty());

    dictionary->addField(71, "drops");
    const auto row = [](int id, const QString& name, const QVariant& fieldId) {
        return Row{{"col_id", id},         {"col_name", name},       {"col_type", "S"},
                   {"col_position", id},   {"Field_id", fieldId},    {"TimeStamp", "N"},
                   {"pk_id", QVariant()},  {"pkFld_id", QVariant()}, {"ordinal", QVariant()},
                   {"pkEntity_id", 0},     {"pkFld_name", ""},       {"pkEntity_name", ""},
                   {"pkEntity_label", ""}, {"editor_position", id}};
    };
    query->Answer("FROM eds_column a",
                  {row(10, "When", QVariant()), row(11, "Cell", 0), row(12, "Drops", 71)});
    columns.LoadColumns(42);
    EXPECT_EQ(query->log.size(), 1);
    EXPECT_EQ(dictionary->fieldIdLists, QStringList{"0,0,71"});
    EXPECT_EQ(columns.Item("Drops")->Field_Name(), "drops");
    EXPECT_FALSE(columns.Item("Drops")->Dirty()) << "a loaded column is clean";
}

} // namespace
} // namespace Orvane::Testing
