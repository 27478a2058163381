#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlQueryService.h"
#include "tests/integration/DatabaseTest.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <thread>

namespace Orvane::Testing {

using Studio::SchemaForm;
using Studio::SqlQueryService;
using ::testing::AllOf;
using ::testing::HasSubstr;

namespace {

void run(const QString& connection, const QStringList& statements) {
    Studio::SqlConnection direct(Studio::ConnectionDescription::Parse(connection));
    for (const QString& statement : statements)
        direct.Run(statement);
}

// A database of someone else's: one table of its own with two rows.
void makeForeign(const QString& connection) {
    run(connection, {QStringLiteral("CREATE TABLE invoices (id INTEGER PRIMARY KEY, total "
                                    "VARCHAR(20))"),
                     "INSERT INTO invoices VALUES (1, '12.50'), (2, '99.00')"});
}

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::string refusal(const QString& connection, const SqlQueryService::SetUpConsent& answer = {}) {
    return errorOf(
        [&] { SqlQueryService service(connection, SchemaForm::WithEditorPosition, answer); });
}

class PostgresDatabase {
public:
    PostgresDatabase()
        : m_name(freshDatabaseName()) {
        administer("CREATE DATABASE " + m_name);
    }
    ~PostgresDatabase() {
        administer(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_name));
    }
    QString Connection() const { return postgresConnection(m_name); }

private:
    QString m_name;
};

} // namespace

// A file of someone else's is set up only when the user says yes; one with only some of Orvane's
// tables is refused without asking.
TEST(ForeignDatabaseTest, SqliteFileIsLeftAsItIsUnlessTheUserSaysYes) {
    QTemporaryDir folder;
    const QString path = folder.filePath("accounts.db");
    makeForeign(path);
    const QByteArray before = bytesOf(path);
    EXPECT_THAT(refusal(path), AllOf(HasSubstr("accounts.db"),
                                     HasSubstr("holds other tables and none of Orvane's"),
                                     HasSubstr("left unchanged")));
    QStringList questions;
    const auto answer = [&](bool yes) {
        return [&questions, yes](const QString& question) {
            questions << question;
            return yes;
        };
    };
    EXPECT_THAT(refusal(path, answer(false)), HasSubstr("left unchanged"));
    ASSERT_EQ(questions.size(), 1);
    EXPECT_THAT(questions[0].toStdString(), AllOf(HasSubstr("to the SQLite database"),
                                                  HasSubstr("accounts.db\"? It is not empty")));
    EXPECT_EQ(bytesOf(path), before);
    {
        SqlQueryService db(path, SchemaForm::WithEditorPosition, answer(true));
        EXPECT_TRUE(db.SetUpOnOpen());
        EXPECT_EQ(db.OpenRecordset("SELECT group_concat(id || '=' || total, ';') v FROM invoices")
                      ->Value("v")
                      .toString(),
                  "1=12.50;2=99.00");
    }
    EXPECT_EQ(questions.size(), 2);

    run(path, {"DROP TABLE eds_primarykey", "DROP TABLE qvd_eds_def"});
    const QByteArray partial = bytesOf(path);
    EXPECT_THAT(refusal(path, answer(true)),
                AllOf(HasSubstr("only some of Orvane's tables"),
                      HasSubstr("missing: eds_primarykey, qvd_eds_def")));
    EXPECT_EQ(questions.size(), 2) << "a partial schema is refused without asking";
    EXPECT_EQ(bytesOf(path), partial);
}

// Someone else's database is left row for row. Two first opens of an empty one at once both
// succeed: one sets it up, the other waits for it and uses it.
TEST(ForeignDatabaseTest, PostgresForeignDatabaseIsLeftAndAnEmptyOneIsSetUpOnce) {
    if (qEnvironmentVariable("ORVANE_TEST_PG").isEmpty())
        GTEST_SKIP() << "ORVANE_TEST_PG is not set: no PostgreSQL server to test against";
    const PostgresDatabase database;
    makeForeign(database.Connection());

    EXPECT_THAT(refusal(database.Connection(), [](const QString&) { return false; }),
                AllOf(HasSubstr("the PostgreSQL database"), HasSubstr("left unchanged")));
    Studio::SqlConnection look(Studio::ConnectionDescription::Parse(database.Connection()));
    auto relations = look.Run(QStringLiteral(
        "SELECT string_agg(relname, ',' ORDER BY relname) FROM pg_class c JOIN pg_namespace n "
        "ON n.oid = c.relnamespace WHERE n.nspname = 'public' AND c.relkind IN ('r', 'v', 'S')"));
    ASSERT_TRUE(relations.next());
    EXPECT_EQ(relations.value(0).toString(), "invoices");
    auto rows = look.Run(QStringLiteral("SELECT string_agg(id || '=' || total, ';' ORDER BY id) "
                                        "FROM invoices"));
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.value(0).toString(), "1=12.50;2=99.00");

    const PostgresDatabase empty;
    QString errors[2];
    bool setUp[2] = {false, false};
    const auto open = [&](int which) {
        try {
            setUp[which] = SqlQueryService(empty.Connection()).SetUpOnOpen();
        } catch (const Error& error) {
            errors[which] = error.message();
        }
    };
    {
        const std::jthread first(open, 0);
        const std::jthread second(open, 1);
    }
    EXPECT_EQ(errors[0] + errors[1], QString());
    EXPECT_NE(setUp[0], setUp[1]);
    EXPECT_FALSE(SqlQueryService(empty.Connection()).SetUpOnOpen());
}

} // namespace Orvane::Testing
