#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/FrequencyList.h"
#include "orvane/model/MSQL.h"
#include "studio/db/TransactionScope.h"
#include "tests/integration/DatabaseTest.h"

#include <QDate>
#include <QSet>
#include <gmock/gmock.h>

namespace Orvane::Testing {

using ::testing::HasSubstr;

class SqlQueryServiceTest : public DatabaseTest {
protected:
    void insertColumn(qint32 colId, const QString& name, qint32 position) {
        db->ExecuteStatement(MSQL::InsertColumn(colId, 1, name, QStringLiteral("S"), position,
                                                QStringLiteral("N"), position));
    }

    QString columnName(qint32 colId) {
        return scalar(
                   QStringLiteral("SELECT col_name v FROM eds_column WHERE col_id = %1").arg(colId))
            .toString();
    }

    // The message of the error the statement raises, or nothing when it raises none.
    QString errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const Error& error) {
            return error.message();
        }
        ADD_FAILURE() << "no error was raised";
        return QString();
    }
};

INSTANTIATE_TEST_SUITE_P(Databases, SqlQueryServiceTest, AllDatabases(), targetName);

TEST_P(SqlQueryServiceTest, NewDatabaseHoldsTheSchemaAndTheDemoDictionary) {
    EXPECT_TRUE(db->SetUpOnOpen());
    EXPECT_EQ(db->ColumnExists(QStringLiteral("eds_column"), QStringLiteral("editor_position")),
              withEditorPosition());
    EXPECT_TRUE(db->ColumnExists(QStringLiteral("EDS_COLUMN"), QStringLiteral("Col_Name")));
    EXPECT_EQ(db->ColumnWidth(QStringLiteral("eds_column"), QStringLiteral("col_name")), 40);
    EXPECT_EQ(db->ColumnWidth(QStringLiteral("QVD_DICT_FIELD"), QStringLiteral("field_name")), 30);
    EXPECT_EQ(db->ColumnWidth(QStringLiteral("eds_column"), QStringLiteral("col_position")), 0);
    EXPECT_FALSE(db->ColumnExists(QStringLiteral("no_such_table"), QStringLiteral("col_name")));

    EXPECT_EQ(count(QStringLiteral("qvn_entity"), QStringLiteral("allow_external = 'N'")), 2);
    EXPECT_EQ(count(QStringLiteral("qvd_aggregator")), 5);
    EXPECT_EQ(count(QStringLiteral("qvd_field_tech"), QStringLiteral("field_id = 1")), 4);
    const auto group = db->OpenRecordset(MSQL::ExternalFieldGroupQuery());
    EXPECT_EQ(db->ValueAsLong(group->Value(QStringLiteral("field_group_id"))), 3);

    QStringList frequencies;
    for (const FrequencyItem& item : FrequencyList::Items())
        frequencies << item.Description;
    frequencies.sort();
    EXPECT_EQ(frequencies, QStringList({QStringLiteral("15 Minutes"), QStringLiteral("Daily"),
                                        QStringLiteral("Hourly")}));
    EXPECT_EQ(FrequencyList::DescriptionOf(2), QStringLiteral("Hourly"));
}

TEST_P(SqlQueryServiceTest, ReopeningFindsTheDataAndSetsNothingUp) {
    insertColumn(201, QStringLiteral("KEPT"), 9);
    Studio::SqlQueryService again(connectionText());
    EXPECT_FALSE(again.SetUpOnOpen());
    const auto rst =
        again.OpenRecordset(QStringLiteral("SELECT col_name FROM eds_column WHERE col_id = 201"));
    EXPECT_EQ(rst->Value(QStringLiteral("col_name")).toString(), QStringLiteral("KEPT"));
}

TEST_P(SqlQueryServiceTest, QuotesRoundTripThroughSetAndValueLists) {
    const QString obrien = QStringLiteral("O'Brien's \"col\" -- ; (+)");
    insertColumn(201, obrien, 9);
    EXPECT_EQ(columnName(201), obrien);

    db->ExecuteStatement(
        MSQL::UpdateColumn(201, QStringLiteral("D'Arcy"), QStringLiteral("I"), 10, 3));
    EXPECT_EQ(columnName(201), QStringLiteral("D'Arcy"));
    EXPECT_EQ(
        count(QStringLiteral("eds_column"), QStringLiteral("col_id = 201 AND col_position = 10")),
        1);

    db->ExecuteStatement(
        QStringLiteral("INSERT INTO eds_document (id, name, description, eds_type, "
                       "entity_id, is_time_series, frequency_id, doc_type) VALUES(") +
        db->BuildValueList({301, QStringLiteral("Ann's Feed"), QVariant(), QStringLiteral("A"), 7,
                            false, QVariant(), QStringLiteral("ASCII Data Source")}) +
        QStringLiteral(")"));
    const auto rst = db->OpenRecordset(QStringLiteral("SELECT * FROM eds_document WHERE id = 301"));
    EXPECT_EQ(rst->Value(QStringLiteral("Name")).toString(), QStringLiteral("Ann's Feed"));
    EXPECT_FALSE(rst->Value(QStringLiteral("Description")).isValid());
    EXPECT_FALSE(db->ValueAsBoolean(rst->Value(QStringLiteral("is_time_series"))));
    EXPECT_EQ(db->ValueAsLong(rst->Value(QStringLiteral("frequency_id"))), 0);
}

TEST_P(SqlQueryServiceTest, FailingStatementsRaiseTheDatabasesOwnMessage) {
    const QString statement = QStringLiteral("SELECT nosuch FROM eds_column");
    const QString message = errorOf([&] { db->OpenRecordset(statement); });
    EXPECT_THAT(message.toStdString(), HasSubstr(onPostgres() ? "column \"nosuch\" does not exist"
                                                              : "no such column: nosuch"));
    EXPECT_THAT(message.toStdString(), HasSubstr(statement.toStdString()));

    const QString duplicate = errorOf([&] { insertColumn(201, QStringLiteral("SECOND"), 1); });
    EXPECT_THAT(duplicate.toStdString(),
                HasSubstr(onPostgres() ? "duplicate key value violates unique constraint"
                                       : "UNIQUE constraint failed: eds_column.eds_id, "
                                         "eds_column.col_position"));

    // The field-name check quotes the name as it stands, so a quote breaks the statement.
    EXPECT_THROW(ColumnSave::FieldNameInUse(QStringLiteral("O'Brien"), 7, 0), Error);
    EXPECT_TRUE(ColumnSave::FieldNameInUse(QStringLiteral(" cell_name "), 7, 0));
    EXPECT_FALSE(ColumnSave::FieldNameInUse(QStringLiteral("cell_name"), 7, 1));
    EXPECT_FALSE(ColumnSave::FieldNameInUse(QStringLiteral("cell_name"), 6, 0));
}

TEST_P(SqlQueryServiceTest, RecordsetsReadForwardWithFieldNamesInAnyCase) {
    const auto rst = db->OpenRecordset(QStringLiteral(
        "SELECT col_id, col_name, is_timestamp TimeStamp FROM eds_column WHERE eds_id = 1 "
        "ORDER BY col_position"));
    ASSERT_TRUE(rst);
    QStringList names;
    for (; !rst->Eof(); rst->MoveNext())
        names << rst->Value(QStringLiteral("COL_NAME")).toString();
    EXPECT_EQ(names, QStringList({QStringLiteral("Time Stamp"), QStringLiteral("CELL"),
                                  QStringLiteral("HO_ATTEMPTS"), QStringLiteral("COMMENT")}));
    EXPECT_THROW(rst->Value(QStringLiteral("col_name")), Error);
    rst->MoveFirst();
    EXPECT_TRUE(db->ValueAsBoolean(rst->Value(QStringLiteral("timestamp"))));
    EXPECT_EQ(db->ValueAsLong(rst->Value(QStringLiteral("Col_Id"))), 1);
    EXPECT_THAT(errorOf([&] { rst->Value(QStringLiteral("nosuch")); }).toStdString(),
                HasSubstr("nosuch"));
    // A name once resolved reads each row's own value; an unknown one fails every time.
    rst->MoveNext();
    EXPECT_EQ(db->ValueAsLong(rst->Value(QStringLiteral("Col_Id"))), 2);
    EXPECT_EQ(rst->Value(QStringLiteral("col_NAME")).toString(), QStringLiteral("CELL"));
    EXPECT_THROW(rst->Value(QStringLiteral("nosuch")), Error);

    // Of two fields with one name, the first answers.
    const auto twice = db->OpenRecordset(
        QStringLiteral("SELECT col_name x, col_id X FROM eds_column WHERE col_id = 2"));
    EXPECT_EQ(twice->Value(QStringLiteral("x")).toString(), QStringLiteral("CELL"));
    EXPECT_EQ(twice->Value(QStringLiteral("X")).toString(), QStringLiteral("CELL"));

    const auto odbc = db->OpenRecordset(MSQL::OdbcSettingsQuery(2));
    EXPECT_EQ(odbc->Value(QStringLiteral("DB_Server")).toString(), QStringLiteral("pmdb01"));
    const QVariant password = odbc->Value(QStringLiteral("DB_Password"));
    EXPECT_TRUE(password.isNull());
    EXPECT_FALSE(password.isValid());

    EXPECT_EQ(
        db->OpenRecordset(QStringLiteral("UPDATE eds_document SET description = 'x' WHERE id = 2")),
        nullptr);
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
    EXPECT_THROW(db->NextSequenceValue(QStringLiteral("sq_no_such")), Error);
    EXPECT_THROW(db->NextSequenceValue(QStringLiteral("sq_eds_column; DROP TABLE eds_column")),
                 Error);
}

TEST_P(SqlQueryServiceTest, ATransactionCommitsOrChangesNothing) {
    const qint32 before = count(QStringLiteral("eds_column"));
    {
        Studio::TransactionScope transaction(*db);
        insertColumn(201, QStringLiteral("ROLLED_BACK"), 9);
        EXPECT_THROW(insertColumn(202, QStringLiteral("CLASHES"), 9), Error);
    }
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(count(QStringLiteral("eds_column")), before);

    db->BeginTransaction();
    EXPECT_THROW(db->BeginTransaction(), Error);
    insertColumn(203, QStringLiteral("COMMITTED"), 9);
    db->CommitTransaction();
    EXPECT_EQ(count(QStringLiteral("eds_column")), before + 1);
    EXPECT_THROW(db->CommitTransaction(), Error);
    EXPECT_NO_THROW(db->RollbackTransaction());
}

} // namespace Orvane::Testing
