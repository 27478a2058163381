#pragma once

#include "studio/db/DatabaseSchema.h"
#include "studio/db/SqlQueryService.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeDictionary.h"
#include "tests/support/FakeWidgets.h"
#include "tests/support/QtPrinters.h"

#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace Orvane::Testing {

// One database the integration tests run against: SQLite always, PostgreSQL when the test
// script started a server and exported ORVANE_TEST_PG; each in both forms of eds_column.
struct DatabaseTarget {
    Studio::SqlBackend backend;
    Studio::SchemaForm form;
};

// How test names and failures show a target: "SQLite_WithoutEditorPosition".
std::string targetName(const ::testing::TestParamInfo<DatabaseTarget>& info);
void PrintTo(const DatabaseTarget& target, std::ostream* out);

// Creates a fresh database for each test (a file in a temporary folder, or a new PostgreSQL
// database dropped afterwards), opens the service on it and installs it as the host's query
// service, beside fake dictionary, application and widgets.
class DatabaseTest : public ::testing::TestWithParam<DatabaseTarget> {
protected:
    void SetUp() override;
    void TearDown() override;

    bool withEditorPosition() const;
    bool onPostgres() const;
    // The connection text of a second service on the same database.
    QString connectionText() const { return m_connection; }

    // Runs a SELECT and returns its first value.
    QVariant scalar(const QString& statement);
    qint32 count(const QString& table, const QString& condition = QString());
    // Every row a save or an import writes, as "table|value|...", to compare before and after.
    QStringList savedRows();
    // Ends every other session on the test's PostgreSQL database, as a server restart does.
    void dropConnections();

    std::shared_ptr<Studio::SqlQueryService> db;
    std::shared_ptr<FakeFieldInfoService> dictionary = std::make_shared<FakeFieldInfoService>();
    std::shared_ptr<FakeApplication> app = std::make_shared<FakeApplication>();
    std::shared_ptr<FakeWidgetFactory> widgets = std::make_shared<FakeWidgetFactory>();

private:
    QTemporaryDir m_folder;
    QString m_connection;
    QString m_postgresDatabase;
};

// The targets every database test runs on; the one for tests the database kind does not matter to.
::testing::internal::ParamGenerator<DatabaseTarget> AllDatabases();
::testing::internal::ParamGenerator<DatabaseTarget> SqliteOnly();

// The connection text of the throwaway PostgreSQL server, with another database name.
QString postgresConnection(const QString& database);
// Runs one statement on the throwaway server's own database, "postgres".
void administer(const QString& statement);
// A database name no other test uses.
QString freshDatabaseName();

// The message of the Orvane::Error the action raises; a test failure when it raises none.
std::string errorOf(const std::function<void()>& action);

} // namespace Orvane::Testing
