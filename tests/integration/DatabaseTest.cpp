#include "tests/integration/DatabaseTest.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/SqlConnection.h"

#include <QCoreApplication>
#include <QUrl>
#include <atomic>

namespace Orvane::Testing {

using Studio::SchemaForm;
using Studio::SqlBackend;

namespace {

QString postgresServer() {
    return qEnvironmentVariable("ORVANE_TEST_PG");
}

} // namespace

// Databases are made and dropped through the server's own database "postgres", which is left as
// it is (a query service would set it up).
void administer(const QString& statement) {
    Studio::SqlConnection admin(Studio::ConnectionDescription::Parse(postgresServer()));
    admin.Run(statement);
}

QString freshDatabaseName() {
    static std::atomic<int> counter{0};
    return QStringLiteral("orvane_test_%1_%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++counter);
}

std::string targetName(const ::testing::TestParamInfo<DatabaseTarget>& info) {
    const std::string backend = info.param.backend == SqlBackend::SQLite ? "SQLite" : "PostgreSQL";
    const std::string form = info.param.form == SchemaForm::WithEditorPosition
                                 ? "WithEditorPosition"
                                 : "WithoutEditorPosition";
    return backend + "_" + form;
}

void PrintTo(const DatabaseTarget& target, std::ostream* out) {
    *out << targetName({target, 0});
}

::testing::internal::ParamGenerator<DatabaseTarget> AllDatabases() {
    return ::testing::Values(
        DatabaseTarget{SqlBackend::SQLite, SchemaForm::WithEditorPosition},
        DatabaseTarget{SqlBackend::SQLite, SchemaForm::WithoutEditorPosition},
        DatabaseTarget{SqlBackend::PostgreSQL, SchemaForm::WithEditorPosition},
        DatabaseTarget{SqlBackend::PostgreSQL, SchemaForm::WithoutEditorPosition});
}

::testing::internal::ParamGenerator<DatabaseTarget> SqliteOnly() {
    return ::testing::Values(DatabaseTarget{SqlBackend::SQLite, SchemaForm::WithEditorPosition});
}

std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.message().toStdString();
    }
    ADD_FAILURE() << "no error was raised";
    return {};
}

QString postgresConnection(const QString& database) {
    QUrl url(postgresServer());
    url.setPath(QLatin1Char('/') + database);
    return url.toString();
}

void DatabaseTest::SetUp() {
    if (onPostgres()) {
        if (postgresServer().isEmpty())
            GTEST_SKIP() << "ORVANE_TEST_PG is not set: no PostgreSQL server to test against";
        m_postgresDatabase = freshDatabaseName();
        administer(QStringLiteral("CREATE DATABASE ") + m_postgresDatabase);
        m_connection = postgresConnection(m_postgresDatabase);
    } else {
        ASSERT_TRUE(m_folder.isValid());
        m_connection = QStringLiteral("sqlite:") + m_folder.filePath(QStringLiteral("orvane.db"));
    }
    db = std::make_shared<Studio::SqlQueryService>(m_connection, GetParam().form);
    HostRegistry::Install({db, dictionary, app, widgets});
}

void DatabaseTest::TearDown() {
    HostRegistry::Uninstall();
    db.reset();
    if (!m_postgresDatabase.isEmpty())
        administer(
            QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_postgresDatabase));
}

bool DatabaseTest::withEditorPosition() const {
    return GetParam().form == SchemaForm::WithEditorPosition;
}

bool DatabaseTest::onPostgres() const {
    return GetParam().backend == SqlBackend::PostgreSQL;
}

QVariant DatabaseTest::scalar(const QString& statement) {
    const auto rst = db->OpenRecordset(statement);
    if (!rst || rst->Eof())
        return {};
    return rst->Value(QStringLiteral("v"));
}

qint32 DatabaseTest::count(const QString& table, const QString& condition) {
    QString statement = QStringLiteral("SELECT count(*) v FROM ") + table;
    if (!condition.isEmpty())
        statement += QStringLiteral(" WHERE ") + condition;
    return db->ValueAsLong(scalar(statement));
}

QStringList DatabaseTest::savedRows() {
    const std::pair<const char*, QStringList> tables[] = {
        {"eds_document",
         {"id", "name", "description", "entity_id", "frequency_id", "is_time_series"}},
        {"eds_ascii_file", {"eds_id", "filename", "separator"}},
        {"eds_odbc_file", {"eds_id", "db_server", "table_name"}},
        {"eds_column", {"col_id", "eds_id", "col_name", "col_type", "col_position"}},
        {"eds_primarykey", {"pk_id", "col_id", "field_id", "ordinal"}},
        {"qvd_eds_def", {"eds_id", "col_id", "field_id"}},
        {"qvd_dict_name", {"field_id", "entity_id", "name"}},
    };
    QStringList all;
    for (const auto& [table, columns] : tables) {
        const auto rst = db->OpenRecordset(
            QStringLiteral("SELECT %1 FROM %2 ORDER BY 1, 2").arg(columns.join(", "), table));
        for (; !rst->Eof(); rst->MoveNext()) {
            QString row = QLatin1String(table);
            for (const QString& column : columns)
                row += QLatin1Char('|') + rst->Value(column).toString();
            all << row;
        }
    }
    return all;
}

void DatabaseTest::dropConnections() {
    Studio::SqlConnection other(Studio::ConnectionDescription::Parse(m_connection));
    other.Run(QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                             "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
}

} // namespace Orvane::Testing
