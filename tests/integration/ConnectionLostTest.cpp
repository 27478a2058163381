#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlQueryService.h"
#include "tests/integration/DatabaseTest.h"

namespace Orvane::Testing {
namespace {

using ConnectionLostTest = DatabaseTest;

TEST_P(ConnectionLostTest, StatementsAfterTheServerDroppedTheConnectionSaySo) {
    if (!onPostgres())
        GTEST_SKIP() << "only a server drops a connection";
    const qint32 ownBackend = scalar("SELECT pg_backend_pid() AS v").toInt();
    Studio::SqlQueryService other(connectionText());
    other.OpenRecordset(QStringLiteral("SELECT pg_terminate_backend(%1)").arg(ownBackend));

    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            db->OpenRecordset("SELECT entity_id FROM qvn_entity");
            FAIL() << "a statement on a dropped connection succeeded";
        } catch (const Error& error) {
            EXPECT_FALSE(error.message().startsWith('\n')) << error.what();
            if (attempt == 1) {
                EXPECT_TRUE(error.message().contains("was lost")) << error.what();
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Databases, ConnectionLostTest, AllDatabases(), targetName);

} // namespace
} // namespace Orvane::Testing
