#include "studio/db/StatementShape.h"

#include <gtest/gtest.h>

namespace Orvane::Testing {

using Studio::SqlTokenList;
using Studio::StatementShape;

// Only literals whose type the context fixes are bound; the rest, and statements that could be
// misread by a driver, keep their text. Every shape writes back to its statement.
TEST(StatementShapeTest, BindsOnlyLiteralsTheContextTypesAndRendersBack) {
    const struct {
        const char* statement;
        const char* shape; // numbers bare
        QVariantList values;
    } cases[]{
        {"INSERT INTO t (a,b,c)VALUES(12,'it''s','')",
         "INSERT INTO t (a,b,c)VALUES(?,?,?)",
         {12LL, "it's", ""}},
        {"UPDATE t SET a = 'x', b = 3000000000 WHERE id=7 AND k IN (1, 'y')",
         "UPDATE t SET a = ?, b = ? WHERE id=? AND k IN (?, ?)",
         {"x", 3000000000LL, 7LL, 1LL, "y"}},
        {"SELECT a FROM t WHERE s = '007' AND n = 007 ORDER BY 1",
         "SELECT a FROM t WHERE s = ? AND n = 007 ORDER BY 1",
         {"007"}},
        {"SELECT CAST(a AS varchar(40)) FROM t WHERE d = DATE '2024-01-01' AND x = 1.5",
         "SELECT CAST(a AS varchar(40)) FROM t WHERE d = DATE '2024-01-01' AND x = 1.5",
         {}},
        {"SELECT a FROM t WHERE x = 5 + 1 AND y = - 2 AND z = 3 -4 AND 'a' = b",
         "SELECT a FROM t WHERE x = 5 + 1 AND y = - 2 AND z = 3 -4 AND 'a' = b",
         {}},
        {"UPDATE t SET p = -2 WHERE k IN (-1,-3000000000) AND q >= -0",
         "UPDATE t SET p = ? WHERE k IN (?,?) AND q >= -0",
         {-2LL, -1LL, -3000000000LL}},
        {"SELECT a FROM t WHERE x = 1 -- why?", "SELECT a FROM t WHERE x = 1 -- why?", {}},
        {"SELECT a FROM t WHERE x = 1; DELETE FROM t",
         "SELECT a FROM t WHERE x = 1; DELETE FROM t",
         {}},
        {"CREATE TABLE t (a CHAR(1) DEFAULT 'N')", "CREATE TABLE t (a CHAR(1) DEFAULT 'N')", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.statement);
        const StatementShape shape{SqlTokenList(QString::fromUtf8(c.statement))};
        EXPECT_EQ(shape.Text(StatementShape::Numbers::Bare), QString::fromUtf8(c.shape));
        // Equal values of another type would bind differently.
        EXPECT_EQ(shape.Values(), c.values);
        for (qsizetype i = 0; i < c.values.size() && i < shape.Values().size(); ++i)
            EXPECT_EQ(shape.Values()[i].typeId(), c.values[i].typeId()) << i;
        EXPECT_EQ(shape.Render(), QString::fromUtf8(c.statement));
    }
    // An empty text must not bind as NULL, which drivers make of a null string.
    const StatementShape empty{SqlTokenList(QStringLiteral("SELECT a FROM t WHERE b = ''"))};
    EXPECT_FALSE(empty.Values().value(0).toString().isNull());
    const StatementShape typed{SqlTokenList(QStringLiteral("SELECT a FROM t WHERE b = 1 OR "
                                                           "c = 3000000000 OR d = 'x'"))};
    EXPECT_EQ(typed.Text(StatementShape::Numbers::Cast),
              "SELECT a FROM t WHERE b = CAST(? AS integer) OR c = CAST(? AS bigint) OR d = ?");
}

} // namespace Orvane::Testing
