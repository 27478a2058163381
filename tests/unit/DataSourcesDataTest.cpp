#include "orvane/host/HostRegistry.h"
#include "orvane/host/IEntityChooser.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "tests/support/FakeHost.h"

namespace Orvane::Testing {
namespace {

class DataSourcesDataTest : public FakeHostTest {
protected:
    DataSourcesDataTest() { cell = dictionary->addEntity(3, "Cell", "Cell"); }

    Row documentRow(QVariant isTimeSeries = "Y", QVariant frequency = 12) {
        return Row{{"Id", 42},
                   {"EDS_Type", "A"},
                   {"Entity_id", 3},
                   {"is_time_series", isTimeSeries},
                   {"frequency_id", frequency}};
    }

    std::shared_ptr<FakeEntity> cell;
    std::shared_ptr<FakeDocumentType> ascii =
        std::make_shared<FakeDocumentType>("ASCII Data Source", "EDS", "ASCII Data Source");
    std::shared_ptr<FakeDocumentType> odbc =
        std::make_shared<FakeDocumentType>("ODBC Data Source", "EDS", "ODBC Data Source");
};

TEST_F(DataSourcesDataTest, InitEditReadsTheDocumentRowColumnsAndAsciiSettings) {
    query->Answer("eds_ascii_file", {Row{{"FileName", "/data/cells.csv"}, {"separator", ","}}});
    FakeRecordset rst({documentRow()});
    CDataSourcesData doc;
    EXPECT_FALSE(doc.InitEdit(rst, ascii)); // the result is never a success flag

    EXPECT_EQ(doc.DocId(), 42);
    EXPECT_EQ(doc.EDS_Type(), "A");
    EXPECT_EQ(doc.Entity(), cell);
    EXPECT_EQ(doc.Columns()->Entity(), cell);
    EXPECT_TRUE(doc.IsTimeSeries());
    EXPECT_EQ(doc.FreqId(), 12);
    EXPECT_EQ(query->log.filter("FROM eds_column a").filter("a.EDS_Id = 42").size(), 1);
    EXPECT_EQ(doc.FileName(), "/data/cells.csv");
    EXPECT_EQ(doc.Delimeter(), ",");
    EXPECT_FALSE(doc.IsNew());
    EXPECT_TRUE(query->log.contains("OPEN SELECT * FROM eds_ascii_file WHERE eds_id =42"));
    EXPECT_EQ(query->lastTimeout, 60);
    EXPECT_EQ(doc.Category(), "ASCII Data Sources");
    EXPECT_EQ(doc.EditorName(), "ASCII Data Source Editor");
}

TEST_F(DataSourcesDataTest, OnlyAnUpperCaseYIsATimeSeriesAndANullFrequencyIsZero) {
    for (const QVariant& flag : {QVariant("y"), QVariant("N"), QVariant()}) {
        FakeRecordset rst({documentRow(flag, QVariant())});
        CDataSourcesData doc;
        doc.InitEdit(rst, ascii);
        EXPECT_FALSE(doc.IsTimeSeries()) << flag.toString().toStdString();
        EXPECT_EQ(doc.FreqId(), 0);
    }
}

TEST_F(DataSourcesDataTest, OdbcNullsBecomeEmptyWhereAllowedAndErrorsElsewhere) {
    query->Answer("eds_odbc_file", {Row{{"DB_Server", "pmdb01"},
                                        {"DB_Database", QVariant()},
                                        {"Table_Name", "cell_kpi"},
                                        {"DB_UserId", QVariant()},
                                        {"DB_Password", QVariant()}}});
    FakeRecordset rst({documentRow()});
    CDataSourcesData doc;
    doc.setSchema("old");
    doc.InitEdit(rst, odbc);
    EXPECT_EQ(doc.Server(), "pmdb01");
    EXPECT_EQ(doc.Table(), "cell_kpi");
    EXPECT_EQ(doc.Schema(), "");
    EXPECT_EQ(doc.UserId(), "");
    EXPECT_EQ(doc.Category(), "ODBC Data Sources");

    auto nullServer = std::make_shared<FakeQueryService>();
    nullServer->Answer("eds_odbc_file", {Row{{"DB_Server", QVariant()},
                                             {"DB_Database", "x"},
                                             {"Table_Name", "t"},
                                             {"DB_UserId", "u"},
                                             {"DB_Password", "p"}}});
    HostRegistry::Install({nullServer, dictionary, app, widgets});
    FakeRecordset again({documentRow()});
    EXPECT_THROW(CDataSourcesData().InitEdit(again, odbc), Error);
}

TEST_F(DataSourcesDataTest, AnotherTypeLoadsNoSettingsAndAMissingRowKeepsThePreviousValues) {
    FakeRecordset rst({documentRow()});
    CDataSourcesData doc;
    doc.setFileName("kept");
    doc.InitEdit(rst, std::make_shared<FakeDocumentType>("Report"));
    EXPECT_EQ(doc.Category(), "");
    EXPECT_EQ(query->log.size(), 1) << "the column query alone";

    FakeRecordset again({documentRow()});
    doc.InitEdit(again, ascii); // no settings row answered
    EXPECT_EQ(doc.FileName(), "kept");
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
    EXPECT_FALSE(cancelled.IsNew());
    EXPECT_EQ(cancelled.Entity(), nullptr);
    EXPECT_NE(cancelled.Columns(), before); // a new, empty collection stays in place
    EXPECT_EQ(cancelled.Columns()->Count(), 0);

    chooser->answer = cell;
    CDataSourcesData doc;
    EXPECT_TRUE(doc.InitNew(ascii));
    EXPECT_TRUE(doc.IsNew());
    EXPECT_EQ(doc.Entity(), cell);
    EXPECT_EQ(doc.Columns()->Entity(), cell);
    EXPECT_EQ(chooser->asked, QStringList(2, "Select Entity for this Data Source|System"));
    EXPECT_TRUE(app->modalShown.isEmpty());
}

TEST_F(DataSourcesDataTest, SaveDataChoosesThePathAndReloadsTheEntity) {
    CDataSourcesData doc;
    doc.setDocId(42);
    doc.setEntity(cell);
    doc.setIsNew(true);
    doc.Columns()->Add("A")->setColumn_Type("String");
    EXPECT_TRUE(doc.SaveData());
    EXPECT_EQ(doc.Columns()->EDS_Id(), 42);
    EXPECT_EQ(cell->reloads, 1);
    EXPECT_EQ(query->log.filter("INSERT INTO eds_column").size(), 1);
    EXPECT_EQ(app->pointer, DefaultPointer);
    EXPECT_TRUE(doc.IsNew()); // the host decides when the document stops being new

    query->log.clear();
    doc.setIsNew(false);
    doc.Columns()->Item("A")->setDirty(true);
    doc.SaveData();
    EXPECT_TRUE(query->log.filter("INSERT INTO eds_column").isEmpty());
    EXPECT_EQ(query->executed().last(),
              "UPDATE eds_column SET col_name = 'A', col_type = 'S', col_position = 0, "
              "editor_position = 0 WHERE col_id = 100");
}

} // namespace
} // namespace Orvane::Testing
