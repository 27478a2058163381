#include "studio/db/OdbcCatalog.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/host/HostRegistry.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlQueryService.h"
#include "tests/integration/DatabaseTest.h"
#include "tests/support/FakeHost.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <gmock/gmock.h>

namespace Orvane::Testing {

using ::testing::HasSubstr;
using ::testing::Not;

// A database of the throwaway server with one table of counters, reached through the ODBC data
// source the test script registered.
class OdbcCatalogTest : public FakeHostTest {
protected:
    void SetUp() override {
        if (qEnvironmentVariable("ORVANE_TEST_ODBC_DSN").isEmpty())
            GTEST_SKIP() << "ORVANE_TEST_ODBC_DSN is not set: no ODBC data source to test";
        administer("CREATE DATABASE " + m_name);
        Studio::SqlConnection(Studio::ConnectionDescription::Parse(postgresConnection(m_name)))
            .Run(QStringLiteral("CREATE TABLE cell_counters (cell_id INTEGER, calls BIGINT, "
                                "traffic DOUBLE PRECISION, erlangs NUMERIC(10,2), site "
                                "VARCHAR(20), note TEXT, day DATE, taken TIMESTAMP)"));
        const auto server = Studio::ConnectionDescription::Parse(postgresConnection(m_name));
        login = {qEnvironmentVariable("ORVANE_TEST_ODBC_DSN"), m_name, server.user,
                 server.password};
        HostRegistry::InstallSourceCatalog(catalog);
    }
    void TearDown() override {
        if (!qEnvironmentVariable("ORVANE_TEST_ODBC_DSN").isEmpty())
            administer(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_name));
    }

    std::shared_ptr<Studio::OdbcCatalog> catalog = std::make_shared<Studio::OdbcCatalog>();
    SourceLogin login;

private:
    QString m_name = freshDatabaseName();
};

// A failed login gives the driver's reason without the password; tables and columns come with
// their type codes.
TEST_F(OdbcCatalogTest, LoginIsTestedAndTablesAndColumnsAreListed) {
    EXPECT_NO_THROW(catalog->TestConnection(login));
    SourceLogin wrong = login;
    wrong.password = "Wr0ng;Secret";
    const std::string refused = errorOf([&] { catalog->TestConnection(wrong); });
    EXPECT_THAT(refused, AllOf(HasSubstr("password authentication failed"), Not(HasSubstr("Wr0ng")),
                               Not(HasSubstr("Secret"))));
    wrong.server = "no_such_source";
    EXPECT_THAT(errorOf([&] { catalog->TestConnection(wrong); }),
                AllOf(HasSubstr("no_such_source"), Not(HasSubstr("Wr0ng"))));

    EXPECT_THAT(catalog->Tables(login), ::testing::Contains("cell_counters"));
    QStringList columns;
    for (const CatalogColumn& column : catalog->Columns(login, "CELL_COUNTERS"))
        columns << column.name + QLatin1Char(' ') + column.typeCode;
    EXPECT_EQ(columns.join(", "),
              "cell_id I, calls I, traffic F, erlangs F, site S, note S, day D, taken D");
    EXPECT_THAT(errorOf([&] { catalog->Columns(login, "no_such_table"); }),
                HasSubstr("\"no_such_table\" was not found"));
}

TEST_F(OdbcCatalogTest, EditorTestsTheLoginPicksTheTableAndReadsItsColumns) {
    XDataSourcesODBC editor;
    editor.findChild<QPushButton*>("cmdTestConnection")->click();
    editor.setServer(login.server);
    editor.setDatabase(login.database);
    editor.setUserId(login.userId);
    editor.setPassword("Wr0ngSecret");
    editor.findChild<QPushButton*>("cmdTestConnection")->click();
    editor.setPassword(login.password);
    editor.findChild<QPushButton*>("cmdTestConnection")->click();
    ASSERT_EQ(app->msgBoxes.size(), 3);
    EXPECT_EQ(app->msgBoxes[0].prompt, "Please enter Server");
    EXPECT_EQ(app->msgBoxes[1].icon, MsgBoxIcon::Critical);
    EXPECT_THAT(app->msgBoxes[1].prompt.toStdString(),
                AllOf(HasSubstr("password authentication failed"), Not(HasSubstr("Wr0ng"))));
    EXPECT_EQ(app->msgBoxes[2].prompt, "The connection succeeded.");

    app->modalHandlers.push_back([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("txtFilter")->setText("CELL");
        return QDialog::Accepted;
    });
    editor.findChild<QAbstractButton*>("cmdTables")->click();
    EXPECT_EQ(editor.Table(), "cell_counters");
    const ColumnDetection detected = editor.TableDetection();
    ASSERT_EQ(detected.columns.size(), 8) << detected.error.toStdString();
    EXPECT_EQ(detected.columns[7].name + detected.columns[7].typeCode, "takenD");
    EXPECT_EQ(detected.columns[7].position, 8);
    editor.setTable(QString());
    EXPECT_EQ(editor.TableDetection().error, "Please enter Table");

    HostRegistry::InstallSourceCatalog(nullptr);
    XDataSourcesODBC withoutCatalog;
    EXPECT_TRUE(withoutCatalog.findChild<QWidget*>("cmdTables")->isHidden());
}

// The Studio's ODBC backend speaks the Oracle dialect unchanged, so over PostgreSQL only its
// opening and its refusal of a database without Orvane's tables can be tried.
TEST_F(OdbcCatalogTest, StudioOpensOrvaneDatabasesOverOdbcAndRefusesOthersPlainly) {
    const QString odbc = "odbc:" + Studio::OdbcCatalog::ConnectionText(login);
    EXPECT_THAT(errorOf([&] { Studio::SqlQueryService refused(odbc); }),
                AllOf(HasSubstr("has no Orvane tables"), HasSubstr("never set up"),
                      Not(HasSubstr(login.password.toStdString()))));
    administer(QStringLiteral("DROP DATABASE %1 WITH (FORCE)").arg(login.database));
    administer("CREATE DATABASE " + login.database);
    { Studio::SqlQueryService setUp(postgresConnection(login.database)); }
    Studio::SqlQueryService opened(odbc);
    EXPECT_EQ(opened.Backend(), Studio::SqlBackend::ODBC);
    EXPECT_FALSE(opened.OpenRecordset("SELECT frequency_id FROM qv_frequency")->Eof());
}

} // namespace Orvane::Testing
