#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlQueryService.h"
#include "tests/integration/DatabaseTest.h"

#include <gmock/gmock.h>

namespace Orvane::Testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class ConnectionLostTest : public DatabaseTest {};

// The server drops the connection as a restart does; the service opens it again, but never under
// an open transaction, and a failed begin leaves none open.
TEST_P(ConnectionLostTest, TheNextStatementOutsideATransactionReconnects) {
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
TEST_P(ConnectionLostTest, HeldStatementsOfADroppedConnectionFailAtTheCommit) {
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

INSTANTIATE_TEST_SUITE_P(Databases, ConnectionLostTest, AllDatabases(), targetName);

} // namespace
} // namespace Orvane::Testing
