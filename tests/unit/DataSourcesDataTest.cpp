#include "orvane/host/HostRegistry.h"
#include "orvane/host/IEntityChooser.h"
#include "orvane/host/OrvaneError.h"
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
        std::make_shared<FakeDocumentType>("ASCII Data Source", "EDS", "ASCII Data Source");
    std::shared_ptr<FakeDocumentType> odbc =
        std::make_shared<FakeDocumentType>("ODBC Data Source", "EDS", "ODBC Data Source");
};

TEST_F(DataSourcesDataTest, InitEditReadsTheDocumentRowColumnsAndTheSettingsOfItsType) {
    query->Answer("SELECT * FROM eds_ascii_file WHERE eds_id =42",
                  {Row{{"FileName", "/data/cells.csv"}, {"separator", ","}}});
    CDataSourcesData doc;
    edit(doc, ascii);
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
    EXPECT_EQ(query->lastTimeout, 60);
    EXPECT_EQ(doc.Category(), "ASCII Data Sources");
    EXPECT_EQ(doc.EditorName(), "ASCII Data Source Editor");

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
    EXPECT_EQ(doc.Server(), "pmdb01");
    EXPECT_EQ(doc.Table(), "cell_kpi");
    EXPECT_EQ(doc.Schema(), "");
    EXPECT_EQ(doc.UserId(), "");
    EXPECT_EQ(doc.Category(), "ODBC Data Sources");
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

} // namespace
} // namespace Orvane::Testing
