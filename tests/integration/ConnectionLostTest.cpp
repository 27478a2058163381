#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlQueryService.h"
#include "tests/integration/DatabaseTest.h"

#include <gmock/gmock.h>

namespace Orvane::Testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

// The server drops the connection as a restart does; the service opens it again, but never under
// an open transaction.
class ConnectionLostTest : public DatabaseTest {
protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        if (!IsSkipped() && !onPostgres())
            GTEST_SKIP() << "only a server drops a connection";
    }

    QVariant timeout() { return scalar("SELECT current_setting('statement_timeout') AS v"); }
};

TEST_P(ConnectionLostTest, StatementOutsideATransactionOpensTheConnectionAgain) {
    dropConnections();
    EXPECT_THAT(errorOf([&] { count("qvn_entity"); }), HasSubstr("was lost"));
    EXPECT_FALSE(db->IsConnected());

    EXPECT_GT(count("qvn_entity"), 0);
    EXPECT_TRUE(db->IsConnected());
    EXPECT_EQ(timeout(), "1min") << "the new session lacks the time-out";
}

TEST_P(ConnectionLostTest, TransactionFailsUntilRolledBackAndTheNextOneReconnects) {
    db->BeginTransaction();
    count("qvn_entity");
    dropConnections();
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_THAT(errorOf([&] { count("qvn_entity"); }), HasSubstr("was lost"))
            << "attempt " << attempt;
    }
    EXPECT_TRUE(db->InTransaction());
    db->RollbackTransaction();

    db->BeginTransaction();
    EXPECT_GT(count("qvn_entity"), 0);
    db->CommitTransaction();
}

TEST_P(ConnectionLostTest, BeginOnADroppedConnectionFailsAndTheNextOneReconnects) {
    count("qvn_entity");
    dropConnections();
    // A failed begin leaves no transaction open: the next one may follow without a rollback.
    EXPECT_THAT(errorOf([&] { db->BeginTransaction(); }), HasSubstr("was lost"));
    db->BeginTransaction();
    EXPECT_GT(count("qvn_entity"), 0);
    db->CommitTransaction();
}

// Statements held for a connection the server dropped fail at the commit, which ends the
// transaction, and the next one reconnects.
TEST_P(ConnectionLostTest, HeldStatementsOfADroppedConnectionFailAtTheCommit) {
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

INSTANTIATE_TEST_SUITE_P(Databases, ConnectionLostTest, AllDatabases(), targetName);

} // namespace
} // namespace Orvane::Testing
