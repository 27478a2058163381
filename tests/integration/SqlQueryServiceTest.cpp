#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/FrequencyList.h"
#include "orvane/model/MSQL.h"
#include "studio/db/TransactionScope.h"
#include "tests/integration/DatabaseTest.h"

#include <QSet>
#include <gmock/gmock.h>
#include <thread>

namespace Orvane::Testing {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class SqlQueryServiceTest : public DatabaseTest {
protected:
    void insertColumn(qint32 colId, const QString& name, qint32 position) {
        db->ExecuteStatement(MSQL::InsertColumn(colId, 1, name, "S", position, "N", position));
    }

    QString columnName(qint32 colId) {
        return scalar(
                   QStringLiteral("SELECT col_name v FROM eds_column WHERE col_id = %1").arg(colId))
            .toString();
    }
};

INSTANTIATE_TEST_SUITE_P(Databases, SqlQueryServiceTest, AllDatabases(), targetName);

TEST_P(SqlQueryServiceTest, NewDatabaseHoldsTheSchemaAndTheDemoDictionaryAndReopensAsItIs) {
    EXPECT_TRUE(db->SetUpOnOpen());
    EXPECT_EQ(db->ColumnExists("eds_column", "editor_position"), withEditorPosition());
    EXPECT_EQ(std::tuple(db->ColumnExists("EDS_COLUMN", "Col_Name"),
                         db->ColumnExists("no_such_table", "col_name")),
              std::tuple(true, false));
    const auto group = db->OpenRecordset(MSQL::ExternalFieldGroupQuery());
    EXPECT_EQ(QList<qint32>({db->ColumnWidth("eds_column", "col_name"),
                             db->ColumnWidth("QVD_DICT_FIELD", "field_name"),
                             db->ColumnWidth("eds_column", "col_position"),
                             db->ValueAsLong(group->Value("field_group_id"))}),
              QList<qint32>({40, 30, 0, 3}));

    QStringList frequencies;
    for (const FrequencyItem& item : FrequencyList::Items())
        frequencies << item.Description;
    frequencies.sort();
    EXPECT_EQ(frequencies, QStringList({"15 Minutes", "Daily", "Hourly"}));
    EXPECT_EQ(FrequencyList::DescriptionOf(2), "Hourly");

    // Opened again, the database keeps its data and is not set up a second time.
    insertColumn(201, "KEPT", 9);
    Studio::SqlQueryService again(connectionText());
    EXPECT_FALSE(again.SetUpOnOpen());
    const auto rst = again.OpenRecordset("SELECT col_name FROM eds_column WHERE col_id = 201");
    EXPECT_EQ(rst->Value("col_name").toString(), "KEPT");

    // A database an earlier version set up gets the saves' change stamp when it is opened.
    db->ExecuteStatement("ALTER TABLE eds_document DROP COLUMN change_stamp");
    Studio::SqlQueryService reopened(connectionText());
    EXPECT_EQ(reopened.ExecuteCounted("UPDATE eds_document SET change_stamp = change_stamp + 1 "
                                      "WHERE change_stamp = 0"),
              2);
    EXPECT_EQ(reopened.ColumnExists("eds_column", "editor_position"), withEditorPosition());
}

TEST_P(SqlQueryServiceTest, QuotesRoundTripThroughSetAndValueLists) {
    const QString obrien = "O'Brien's \"col\" -- ; (+)";
    insertColumn(201, obrien, 9);
    EXPECT_EQ(columnName(201), obrien);

    db->ExecuteStatement(MSQL::UpdateColumn(201, "D'Arcy", "I", 10, 3));
    EXPECT_EQ(
        std::tuple(columnName(201), count("eds_column", "col_id = 201 AND col_position = 10")),
        std::tuple(QString("D'Arcy"), 1));

    db->ExecuteStatement(
        QStringLiteral("INSERT INTO eds_document (id, name, description, eds_type, "
                       "entity_id, is_time_series, frequency_id, doc_type) VALUES(") +
        db->BuildValueList(
            {301, "Ann's Feed", QVariant(), "A", 7, false, QVariant(), "ASCII Data Source"}) +
        QStringLiteral(")"));
    const auto rst = db->OpenRecordset("SELECT * FROM eds_document WHERE id = 301");
    EXPECT_EQ(rst->Value("Name").toString(), "Ann's Feed");
    EXPECT_EQ(std::tuple(rst->Value("Description").isValid(),
                         db->ValueAsBoolean(rst->Value("is_time_series")),
                         db->ValueAsLong(rst->Value("frequency_id"))),
              std::tuple(false, false, 0));
}

TEST_P(SqlQueryServiceTest, FailingStatementsRaiseTheDatabasesOwnMessageWithoutPasswords) {
    const QString statement = "SELECT nosuch FROM eds_column";
    EXPECT_THAT(errorOf([&] { db->OpenRecordset(statement); }),
                AllOf(HasSubstr(onPostgres() ? "column \"nosuch\" does not exist"
                                             : "no such column: nosuch"),
                      HasSubstr(statement.toStdString())));
    EXPECT_THAT(errorOf([&] { insertColumn(201, "SECOND", 1); }),
                AllOf(HasSubstr(onPostgres() ? "duplicate key value violates unique constraint"
                                             : "UNIQUE constraint failed: eds_column.eds_id, "
                                               "eds_column.col_position"),
                      Not(HasSubstr("connection"))));

    // The field-name check quotes the name as it stands, so a quote breaks the statement.
    EXPECT_THROW(ColumnSave::FieldNameInUse("O'Brien", 7, 0), Error);
    EXPECT_EQ(std::tuple(ColumnSave::FieldNameInUse(" cell_name ", 7, 0),
                         ColumnSave::FieldNameInUse("cell_name", 7, 1),
                         ColumnSave::FieldNameInUse("cell_name", 6, 0)),
              std::tuple(true, false, false));

    // What a failing statement writes to a password column is hidden where the error shows it,
    // PostgreSQL's "Failing row contains (...)" included.
    const std::pair<QString, std::string> statements[] = {
        {"INSERT INTO eds_odbc_file (eds_id, db_server, table_name, db_userid, db_password) "
         "VALUES (NULL, 's', 't', 'pm', 'it''s secret')",
         "table_name, db_userid, db_password) VALUES (NULL, 's', 't', 'pm', ***)"},
        {"UPDATE eds_odbc_file SET db_userid = 'pm', DB_Password = 'it''s secret' WHERE nosuch = 1",
         "SET db_userid = 'pm', DB_Password = *** WHERE nosuch = 1"},
    };
    for (const auto& [statement, shown] : statements) {
        const std::string error = errorOf([&] { db->ExecuteStatement(statement); });
        EXPECT_THAT(error, AllOf(HasSubstr(shown), Not(HasSubstr("secret"))));
    }
}

TEST_P(SqlQueryServiceTest, RecordsetsReadForwardWithFieldNamesInAnyCase) {
    const auto rst = db->OpenRecordset(
        "SELECT col_id, col_name, is_timestamp TimeStamp FROM eds_column WHERE eds_id = 1 "
        "ORDER BY col_position");
    ASSERT_TRUE(rst);
    QStringList names;
    for (; !rst->Eof(); rst->MoveNext())
        names << rst->Value("COL_NAME").toString();
    EXPECT_EQ(names, QStringList({"Time Stamp", "CELL", "HO_ATTEMPTS", "COMMENT"}));
    EXPECT_THROW(rst->Value("col_name"), Error);
    rst->MoveFirst();
    EXPECT_EQ(std::tuple(db->ValueAsBoolean(rst->Value("timestamp")),
                         db->ValueAsLong(rst->Value("Col_Id"))),
              std::tuple(true, 1));
    EXPECT_THAT(errorOf([&] { rst->Value("nosuch"); }), HasSubstr("nosuch"));
    // A name once resolved reads each row's own value; an unknown one fails every time.
    rst->MoveNext();
    EXPECT_EQ(rst->Value("Col_Id").toString() + rst->Value("col_NAME").toString(), "2CELL");
    EXPECT_THROW(rst->Value("nosuch"), Error);
    // Literal names, resolved by where their text lies, in their own case and in another.
    for (const auto& [name, text] :
         {std::pair{QStringLiteral("COL_ID"), "2"}, std::pair{QStringLiteral("TimeStamp"), "N"}}) {
        EXPECT_EQ(rst->Value(name).toString(), text);
        EXPECT_EQ(rst->Value(name.toLower()).toString(), text);
    }
    EXPECT_THROW(rst->Value(QStringLiteral("nosuch")), Error);

    // Of two fields with one name, the first answers.
    const auto twice =
        db->OpenRecordset("SELECT col_name x, col_id X FROM eds_column WHERE col_id = 2");
    EXPECT_EQ(twice->Value("x").toString() + twice->Value("X").toString(), "CELLCELL");

    const auto odbc = db->OpenRecordset(MSQL::OdbcSettingsQuery(2));
    EXPECT_EQ(odbc->Value("DB_Server").toString(), "pmdb01");
    const QVariant password = odbc->Value("DB_Password");
    EXPECT_EQ(std::tuple(password.isNull(), password.isValid()), std::tuple(true, false));

    EXPECT_EQ(db->OpenRecordset("UPDATE eds_document SET description = 'x' WHERE id = 2"), nullptr);
}

TEST_P(SqlQueryServiceTest, SequencesNeverRepeat) {
    Studio::SqlQueryService other(connectionText());
    for (const QString& sequence : {MSQL::ColumnSequence, MSQL::PrimaryKeySequence}) {
        QSet<qint32> seen;
        qint32 last = 0;
        for (int i = 0; i < 20; ++i) {
            const qint32 mine = db->NextSequenceValue(sequence);
            const qint32 theirs = other.NextSequenceValue(sequence.toUpper());
            EXPECT_GT(mine, last);
            EXPECT_GT(theirs, mine);
            last = theirs;
            seen << mine << theirs;
        }
        EXPECT_EQ(seen.size(), 40) << sequence.toStdString();
        EXPECT_GT(*std::min_element(seen.begin(), seen.end()), 6) << "above the demo data";
    }
    for (const char* bad : {"sq_no_such", "sq_eds_column; DROP TABLE eds_column"})
        EXPECT_THROW(db->NextSequenceValue(bad), Error);
}

TEST_P(SqlQueryServiceTest, ATransactionCommitsOrChangesNothing) {
    const qint32 before = count("eds_column");
    {
        Studio::TransactionScope transaction(*db);
        insertColumn(201, "ROLLED_BACK", 9);
        EXPECT_THROW(insertColumn(202, "CLASHES", 9), Error);
    }
    EXPECT_EQ(std::tuple(db->InTransaction(), count("eds_column")), std::tuple(false, before));

    db->BeginTransaction();
    EXPECT_THROW(db->BeginTransaction(), Error);
    insertColumn(203, "COMMITTED", 9);
    db->CommitTransaction();
    EXPECT_EQ(count("eds_column"), before + 1);
    EXPECT_THROW(db->CommitTransaction(), Error);
    EXPECT_NO_THROW(db->RollbackTransaction());
}

// Held statements reach the database before any read and before the commit; the first that fails
// is reported by name, and nothing of the transaction is committed.
TEST_P(SqlQueryServiceTest, BatchedStatementsAreReadBackAndAFailureCommitsNothing) {
    const qint32 before = count("eds_column");
    {
        Studio::TransactionScope transaction(*db, Studio::StatementDelivery::Batched);
        insertColumn(201, "HELD", 9);
        EXPECT_EQ(columnName(201), "HELD");
        db->ExecuteStatement("UPDATE eds_column SET col_name = 'A?' || '?' WHERE col_id = 201");
        EXPECT_EQ(db->ExecuteCounted("UPDATE eds_column SET col_position = 8 WHERE col_id = 201"),
                  1);
        EXPECT_EQ(columnName(201), "A??");
        const std::string error = errorOf([&] {
            insertColumn(202, "BEFORE", 9);
            insertColumn(201, "CLASHES", 9);
            insertColumn(203, "AFTER", 9);
            transaction.Commit();
        });
        EXPECT_THAT(error, AllOf(HasSubstr("Statement: INSERT INTO eds_column"),
                                 HasSubstr("'CLASHES'"), Not(HasSubstr("AFTER"))));
    }
    EXPECT_EQ(count("eds_column"), before);
}

// More statements than one round trip takes: the server works on each batch while the next is
// made; a failure in an earlier batch is still named, and a rollback drops what was sent.
TEST_P(SqlQueryServiceTest, ManyBatchedStatementsCommitOrFailTogether) {
    const qint32 before = count("eds_column");
    const auto insertMany = [&](qint32 first, int n) {
        for (qint32 id = first; id < first + n; ++id)
            insertColumn(id, "MANY", id);
    };
    const auto batched = [&](const std::function<void()>& work, bool commit) {
        Studio::TransactionScope transaction(*db, Studio::StatementDelivery::Batched);
        work();
        if (commit)
            transaction.Commit();
    };
    batched([&] { insertMany(3000, 2500); }, true);
    EXPECT_EQ(count("eds_column"), before + 2500);
    const std::string error = errorOf([&] {
        batched(
            [&] {
                insertColumn(3000, "CLASHES", 5999);
                insertMany(6000, 2100);
            },
            true);
    });
    EXPECT_THAT(error, HasSubstr("'CLASHES'"));
    batched([&] { insertMany(9000, 1500); }, false);
    EXPECT_EQ(count("eds_column"), before + 2500);
}

// Each session draws ids ahead, many per round trip; drawn at once by two, and kept across a
// rollback, none is handed out twice.
TEST_P(SqlQueryServiceTest, IdsDrawnAheadByTwoSessionsAtOnceNeverRepeat) {
    if (!onPostgres())
        GTEST_SKIP() << "SQLite's sequence table takes back what a rollback undoes";
    const auto draw = [](Studio::SqlQueryService& service, QList<qint32>& ids) {
        for (int round = 0; round < 3; ++round) {
            Studio::TransactionScope transaction(service, Studio::StatementDelivery::Batched);
            for (int i = 0; i < 700; ++i)
                ids << service.NextSequenceValue(MSQL::ColumnSequence);
            if (round != 1)
                transaction.Commit();
        }
    };
    QList<qint32> mine, theirs;
    std::thread other([&] {
        Studio::SqlQueryService service(connectionText());
        draw(service, theirs);
    });
    draw(*db, mine);
    other.join();
    QSet<qint32> all(mine.begin(), mine.end());
    all.unite(QSet<qint32>(theirs.begin(), theirs.end()));
    EXPECT_EQ(all.size(), mine.size() + theirs.size());
    EXPECT_GT(*std::min_element(all.begin(), all.end()), 6) << "above the demo data";
    EXPECT_GT(db->NextSequenceValue(MSQL::ColumnSequence),
              *std::max_element(all.begin(), all.end()));
}

// Statements that differ only in their values share one prepared query; each must answer as its
// literal text does, and a table changed since must be read with its new columns.
TEST_P(SqlQueryServiceTest, PreparedStatementsAnswerAsTheirLiteralText) {
    db->ExecuteStatement("CREATE TABLE shape_t (id INTEGER, s VARCHAR(10), n BIGINT)");
    db->ExecuteStatement("INSERT INTO shape_t (id, s, n) VALUES (1, '', 7)");
    db->ExecuteStatement("INSERT INTO shape_t (id, s, n) VALUES (2, '007', 3000000000)");
    db->ExecuteStatement("INSERT INTO shape_t (id, s, n) VALUES (3, NULL, 7)");
    EXPECT_EQ(scalar("SELECT count(*) v FROM shape_t WHERE s = ''").toInt(), 1);
    EXPECT_EQ(scalar("SELECT id v FROM shape_t WHERE s = '007'").toInt(), 2);
    EXPECT_EQ(scalar("SELECT id v FROM shape_t WHERE n = '7' AND id = 1").toInt(), 1);
    EXPECT_EQ(scalar("SELECT id v FROM shape_t WHERE n = 3000000000").toInt(), 2);
    EXPECT_EQ(scalar("SELECT CASE WHEN id = 2 THEN 1 ELSE 0 END v FROM shape_t WHERE id = 2"), 1);

    // More shapes than a connection keeps, each run twice: the ones dropped are prepared again.
    for (int pass = 0; pass < 2; ++pass) {
        for (int i = 1; i <= 80; ++i)
            db->ExecuteStatement(
                QStringLiteral("UPDATE shape_t SET n = n + %1 WHERE id = 3").arg(i));
    }
    EXPECT_EQ(scalar("SELECT n v FROM shape_t WHERE id = 3").toInt(), 7 + 2 * 3240);
    EXPECT_EQ(db->OpenRecordset("SELECT * FROM shape_t WHERE id = 1")->Value("n").toInt(), 7);
    db->ExecuteStatement("ALTER TABLE shape_t ADD COLUMN extra INTEGER");
    EXPECT_TRUE(db->OpenRecordset("SELECT * FROM shape_t WHERE id = 2")->Value("extra").isNull());
}

// Values keep the types and texts the database holds, whichever way the rows are read.
TEST_P(SqlQueryServiceTest, RecordsetValuesKeepTheirTypesAndTexts) {
    db->ExecuteStatement("CREATE TABLE typed_t (id INTEGER, i BIGINT, r REAL, s VARCHAR(20))");
    db->ExecuteStatement(
        QStringLiteral("INSERT INTO typed_t VALUES (1, 3000000000, 2.5, 'Z\u00fcrich \u2713')"));
    db->ExecuteStatement("INSERT INTO typed_t VALUES (2, -7, NULL, '')");
    db->ExecuteStatement("INSERT INTO typed_t VALUES (3, NULL, NULL, NULL)");
    const auto rst = db->OpenRecordset("SELECT i, r, s FROM typed_t ORDER BY id");
    const QList<QVariantList> expected{
        {qlonglong(3000000000), 2.5, QStringLiteral("Z\u00fcrich \u2713")},
        {qlonglong(-7), QVariant(), QStringLiteral("")},
        {QVariant(), QVariant(), QVariant()}};
    for (const QVariantList& row : expected) {
        ASSERT_FALSE(rst->Eof());
        const QVariantList read{rst->Value("i"), rst->Value("r"), rst->Value("s")};
        // Numbers compare by value (PostgreSQL gives a positive BIGINT unsigned).
        EXPECT_EQ(read, row);
        EXPECT_EQ(read[2].typeId(), row[2].typeId());
        rst->MoveNext();
    }
    EXPECT_TRUE(rst->Eof());
    EXPECT_TRUE(db->OpenRecordset("SELECT i FROM typed_t WHERE id = 4")->Eof());
}

// The server drops the connection as a restart does; the service opens it again, but never under
// an open transaction, and a failed begin leaves none open.
TEST_P(SqlQueryServiceTest, TheNextStatementOutsideATransactionReconnects) {
    if (!onPostgres())
        GTEST_SKIP() << "only a server drops a connection";
    const auto lost = [&](const std::function<void()>& action) {
        EXPECT_THAT(errorOf(action), HasSubstr("was lost"));
    };
    dropConnections();
    lost([&] { count("qvn_entity"); });
    EXPECT_FALSE(db->IsConnected());
    EXPECT_GT(count("qvn_entity"), 0);
    EXPECT_TRUE(db->IsConnected());
    EXPECT_EQ(scalar("SELECT current_setting('statement_timeout') AS v"), "1min")
        << "the new session lacks the time-out";

    db->BeginTransaction();
    count("qvn_entity");
    dropConnections();
    lost([&] { count("qvn_entity"); });
    lost([&] { count("qvn_entity"); });
    EXPECT_TRUE(db->InTransaction());
    db->RollbackTransaction();
    for (bool beginFails : {false, true}) {
        if (beginFails) {
            dropConnections();
            lost([&] { db->BeginTransaction(); });
        }
        db->BeginTransaction();
        EXPECT_GT(count("qvn_entity"), 0);
        db->CommitTransaction();
    }
}

// Statements held for a connection the server dropped fail at the commit, which ends the
// transaction, and the next one reconnects.
TEST_P(SqlQueryServiceTest, HeldStatementsOfADroppedConnectionFailAtTheCommit) {
    if (!onPostgres())
        GTEST_SKIP() << "only a server drops a connection";
    db->BeginTransaction(Studio::StatementDelivery::Batched);
    count("qvn_entity");
    db->ExecuteStatement("UPDATE eds_document SET description = 'x' WHERE id = 2");
    dropConnections();
    EXPECT_THAT(errorOf([&] { db->CommitTransaction(); }),
                AllOf(HasSubstr("was lost"), HasSubstr("Statement: UPDATE eds_document")));
    EXPECT_FALSE(db->InTransaction());

    db->BeginTransaction(Studio::StatementDelivery::Batched);
    db->ExecuteStatement("UPDATE eds_document SET description = 'y' WHERE id = 2");
    db->CommitTransaction();
    EXPECT_EQ(scalar("SELECT description v FROM eds_document WHERE id = 2"), "y");
}

} // namespace Orvane::Testing
