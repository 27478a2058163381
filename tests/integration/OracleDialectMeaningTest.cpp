// Checks the Oracle-dialect bridge by meaning: random Oracle-style queries with (+) outer joins
// over three small tables, each run as the bridge translates it and as the ANSI query built from
// the generator's own parts, on random data with NULLs. Both must return the same rows; the
// bridge may refuse only the queries made invalid on purpose.

#include "orvane/host/OrvaneError.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/OracleDialectBridge.h"
#include "studio/db/SqlConnection.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace Orvane::Testing {

using Studio::OracleDialectBridge;
using Studio::SqlBackend;

namespace {

constexpr int DataSets = 120;
constexpr int QueriesPerDataSet = 50;
const QStringList Tables{"t1", "t2", "t3"};
const QStringList Columns{"id", "a", "b"};

class Dice {
public:
    explicit Dice(quint32 seed)
        : m_engine(seed) {}
    int below(qsizetype n) { return static_cast<int>(m_engine() % static_cast<quint32>(n)); }
    bool chance(int percent) { return below(100) < percent; }
    QString oneOf(const QStringList& list) { return list[below(list.size())]; }
    // Bare names are read regardless of case, so they are written in any.
    QString anyCase(const QString& name) {
        const int form = below(3);
        return form == 0 ? name : form == 1 ? name.toUpper() : name.left(1).toUpper() + name.mid(1);
    }

private:
    std::mt19937 m_engine;
};

// One condition in both dialects, the outer item whose ON clause holds it (-1: WHERE), and for a
// link the item it links that one to.
struct Condition {
    QString oracle;
    QString ansi;
    int on = -1;
    int linked = -1;
};

Condition inWhere(const QString& text) {
    return {text, text, -1};
}

struct Item {
    QString table;
    QString name; // the correlation name: the alias, else the table
    bool outer = false;
};

// A random Oracle-style query: chains of outer joins, outer tables joined to two tables, several
// conditions and constants marking one table, plain filters (OR, NOT, CASE) on outer columns,
// implicit cross joins, in random order and parenthesised AND groups. Now and then it is made
// invalid: (+) beside OR, two tables outer-joined to each other, or (+) on both sides.
class QueryGenerator {
public:
    explicit QueryGenerator(quint32 seed)
        : m_dice(seed) {
        pickItems();
        for (int k = 1; k < m_items.size(); ++k)
            m_items[k].outer ? joinOuter(k) : joinPlain(k);
        for (int n = m_dice.below(3); n > 0; --n)
            m_conditions << inWhere(filter());
        if (m_dice.chance(12))
            spoil();
        m_distinct = m_dice.chance(20);
    }

    bool Invalid() const { return m_invalid; }

    QString Oracle() {
        QStringList from;
        for (const Item& item : m_items)
            from.insert(m_dice.below(from.size() + 1), fromEntry(item));
        QStringList conditions;
        for (const Condition& condition : m_conditions)
            conditions.insert(m_dice.below(conditions.size() + 1), condition.oracle);
        const QString where = conditions.isEmpty() ? QString() : " WHERE " + grouped(conditions, 0);
        return selectList(m_distinct ? "SELECT UNIQUE " : "SELECT ") + " FROM " + from.join(", ") +
               where;
    }

    QString Reference() const {
        QStringList from;
        for (const Item& item : m_items) {
            if (!item.outer)
                from << item.table + " " + item.name;
        }
        QString text = selectList(m_distinct ? "SELECT DISTINCT " : "SELECT ") + " FROM " +
                       from.join(" CROSS JOIN ");
        for (int k = 0; k < m_items.size(); ++k) {
            if (m_items[k].outer)
                text += " LEFT JOIN " + m_items[k].table + " " + m_items[k].name + " ON " +
                        ansiConditions(k).join(" AND ");
        }
        const QStringList filters = ansiConditions(-1);
        return filters.isEmpty() ? text : text + " WHERE " + filters.join(" AND ");
    }

private:
    void pickItems() {
        const int count = 2 + m_dice.below(3);
        for (int k = 0; k < count; ++k) {
            Item item{m_dice.oneOf(Tables), QString(), k > 0 && m_dice.chance(60)};
            const bool taken = std::any_of(m_items.begin(), m_items.end(), [&](const Item& other) {
                return other.table == item.table;
            });
            item.name =
                taken || m_dice.chance(40) ? QStringList{"x", "y", "z", "w"}[k] : item.table;
            m_items << item;
        }
    }

    // Linked to one or two earlier items, sometimes by two columns.
    void joinOuter(int k) {
        const int parent = m_dice.below(k);
        m_conditions << link(k, parent);
        if (m_dice.chance(35))
            m_conditions << link(k, parent);
        if (k > 1 && m_dice.chance(30))
            m_conditions << link(k, (parent + 1 + m_dice.below(k - 1)) % k);
        if (m_dice.chance(40))
            m_conditions << ownCondition(k);
    }

    // A condition on an outer item's columns alone: IS NULL, a constant, or two of its columns.
    Condition ownCondition(int k) {
        const QString column = columnOf(k);
        const QString other = columnOf(k);
        const int form = m_dice.below(3);
        const QString test = form == 0 ? " IS NULL" : form == 1 ? " = 1" : " = " + other;
        return {column + mark() + test + (form == 2 ? mark() : QString()), column + test, k};
    }

    // Linked to an earlier item in WHERE, or an implicit cross join.
    void joinPlain(int k) {
        if (m_dice.chance(50))
            m_conditions << inWhere(columnOf(k) + " = " + columnOf(m_dice.below(k)));
    }

    Condition link(int outer, int other) {
        const QString op = m_dice.chance(80) ? " = " : " < ";
        const QString marked = columnOf(outer);
        const QString plain = columnOf(other);
        if (m_dice.chance(50))
            return {plain + op + marked + mark(), plain + op + marked, outer, other};
        return {marked + mark() + op + plain, marked + op + plain, outer, other};
    }

    QString filter() {
        const QString column = columnOf(m_dice.below(m_items.size()));
        const QString other = columnOf(m_dice.below(m_items.size()));
        return QStringList{column + " IS NULL",
                           column + " IS NOT NULL",
                           column + " = " + QString::number(m_dice.below(3)),
                           "(" + column + " = 1 OR " + other + " IS NULL)",
                           "NOT (" + column + " = 1 AND " + other + " IS NULL)",
                           "CASE WHEN " + column + " = 1 OR " + other +
                               " IS NULL THEN 1 END = 1"}[m_dice.below(6)];
    }

    // The first condition of an outer item is its link; it gets an OR or a link back.
    void spoil() {
        m_invalid = true;
        const auto link = std::find_if(m_conditions.begin(), m_conditions.end(),
                                       [](const Condition& c) { return c.on >= 0; });
        if (link == m_conditions.end() || m_dice.chance(30))
            m_conditions.append({columnOf(0) + mark() + " = " + columnOf(1) + mark(), {}, -1});
        else if (m_dice.chance(50))
            link->oracle = "(" + link->oracle + " OR " + filter() + ")";
        else
            m_conditions.append(
                {columnOf(link->on) + " = " + columnOf(link->linked) + mark(), {}, -1});
    }

    // The conditions AND-ed in runs, some runs in parentheses, nested up to three deep.
    QString grouped(const QStringList& conditions, int depth) {
        if (conditions.size() == 1)
            return m_dice.chance(15) ? "(" + conditions[0] + ")" : conditions[0];
        QStringList runs;
        for (qsizetype at = 0; at < conditions.size();) {
            const int run = 1 + m_dice.below(conditions.size() - at);
            const QStringList part = conditions.mid(at, run);
            at += run;
            runs << (depth < 3 && m_dice.chance(50) ? "(" + grouped(part, depth + 1) + ")"
                                                    : part.join(" AND "));
        }
        return runs.join(" AND ");
    }

    QString fromEntry(const Item& item) {
        const QString table = m_dice.anyCase(item.table);
        return item.name == item.table ? table : table + " " + m_dice.anyCase(item.name);
    }

    QString columnOf(int item) {
        return m_dice.anyCase(m_items[item].name) + "." + m_dice.anyCase(m_dice.oneOf(Columns));
    }

    QString mark() { return m_dice.oneOf({"(+)", " (+)", "( + )"}); }

    QString selectList(const QString& select) const {
        QStringList columns;
        for (const Item& item : m_items)
            columns << item.name + ".id" << item.name + ".a";
        return select + columns.join(", ");
    }

    QStringList ansiConditions(int on) const {
        QStringList texts;
        for (const Condition& condition : m_conditions) {
            if (condition.on == on)
                texts << condition.ansi;
        }
        return texts;
    }

    Dice m_dice;
    QList<Item> m_items;
    QList<Condition> m_conditions;
    bool m_distinct = false;
    bool m_invalid = false;
};

// One to four rows a table, now and then none, each value 0, 1, 2 or NULL.
QStringList randomData(quint32 seed) {
    Dice dice(seed);
    QStringList inserts;
    for (const QString& table : Tables) {
        QStringList rows;
        for (int n = dice.chance(15) ? 0 : 1 + dice.below(4); n > 0; --n) {
            QStringList values;
            for (int c = 0; c < Columns.size(); ++c)
                values << (dice.chance(25) ? "NULL" : QString::number(dice.below(3)));
            rows << "(" + values.join(", ") + ")";
        }
        if (!rows.isEmpty())
            inserts << "INSERT INTO " + table + " VALUES " + rows.join(", ");
    }
    return inserts;
}

} // namespace

class OracleDialectMeaningTest : public ::testing::TestWithParam<SqlBackend> {
protected:
    void SetUp() override {
        QString connection = QStringLiteral("sqlite::memory:");
        if (GetParam() == SqlBackend::PostgreSQL) {
            connection = qEnvironmentVariable("ORVANE_TEST_PG");
            if (connection.isEmpty())
                GTEST_SKIP() << "ORVANE_TEST_PG is not set: no PostgreSQL server to test against";
        }
        db = std::make_unique<Studio::SqlConnection>(
            Studio::ConnectionDescription::Parse(connection));
        // Unanalysed tables look large to the planner, which would compile each query to machine
        // code first, a tenth of a second apiece.
        if (GetParam() == SqlBackend::PostgreSQL)
            db->Run("SET jit = off");
        for (const QString& table : Tables)
            db->Run("CREATE TEMP TABLE " + table + " (id INTEGER, a INTEGER, b INTEGER)");
    }

    void load(const QStringList& inserts) {
        for (const QString& table : Tables)
            db->Run("DELETE FROM " + table);
        for (const QString& insert : inserts)
            db->Run(insert);
    }

    // The rows in a fixed order, so that two results compare as multisets.
    QStringList rowsOf(const QString& statement) {
        QSqlQuery query = db->Run(statement);
        QStringList rows;
        while (query.next()) {
            QStringList values;
            for (int c = 0; c < query.record().count(); ++c)
                values << (query.isNull(c) ? QStringLiteral("NULL") : query.value(c).toString());
            rows << "(" + values.join(", ") + ")";
        }
        rows.sort();
        return rows;
    }

    // The bridge's rows equal the reference's, or it refuses what was spoilt on purpose.
    void check(quint32 seed, const QStringList& data) {
        QueryGenerator query(seed);
        const QString oracle = query.Oracle();
        const QString reference = query.Reference();
        QString translated;
        QString problem;
        try {
            translated = OracleDialectBridge::Translate(oracle);
            if (query.Invalid())
                problem = "an invalid query was translated";
            else if (rowsOf(translated) != rowsOf(reference))
                problem = "different rows:\n  bridge:    " + rowsOf(translated).join(" ") +
                          "\n  reference: " + rowsOf(reference).join(" ");
        } catch (const Error& error) {
            if (!query.Invalid())
                problem = error.message();
        }
        if (!problem.isEmpty())
            ADD_FAILURE() << "seed " << seed << ": " << problem.toStdString()
                          << "\nOracle:    " << oracle.toStdString()
                          << "\nbridge:    " << translated.toStdString()
                          << "\nreference: " << reference.toStdString()
                          << "\ndata:      " << data.join("; ").toStdString();
    }

    std::unique_ptr<Studio::SqlConnection> db;
};

TEST_P(OracleDialectMeaningTest, ConditionsInParenthesesFilterAfterTheJoin) {
    load({"INSERT INTO t1 VALUES (1, 2, NULL)"});
    const QString statement =
        "SELECT t1.id, t2.id FROM t1, t2 WHERE (t1.id = t2.id(+) AND t1.a = 1)";
    EXPECT_TRUE(rowsOf(OracleDialectBridge::Translate(statement)).isEmpty());
}

// Stops at the first difference.
TEST_P(OracleDialectMeaningTest, RandomQueriesMeanWhatTheirOracleTextMeans) {
    for (quint32 set = 0; set < DataSets && !HasFailure(); ++set) {
        const QStringList data = randomData(set);
        load(data);
        for (quint32 n = 0; n < QueriesPerDataSet && !HasFailure(); ++n)
            check(set * QueriesPerDataSet + n, data);
    }
}

INSTANTIATE_TEST_SUITE_P(Backends, OracleDialectMeaningTest,
                         ::testing::Values(SqlBackend::SQLite, SqlBackend::PostgreSQL),
                         [](const ::testing::TestParamInfo<SqlBackend>& info) {
                             return info.param == SqlBackend::SQLite ? "SQLite" : "PostgreSQL";
                         });

} // namespace Orvane::Testing
