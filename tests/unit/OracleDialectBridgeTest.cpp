#include "studio/db/OracleDialectBridge.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/MSQL.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>

namespace Orvane::Testing {

using Studio::OracleDialectBridge;
using ::testing::HasSubstr;
using OracleDialectBridgeTest = FakeHostTest;
using MSQLTest = FakeHostTest;

TEST_F(OracleDialectBridgeTest, StatementsWithoutOracleSyntaxPassUnchanged) {
    for (const QString& statement : QStringList{
             MSQL::AsciiSettingsQuery(5), MSQL::OdbcSettingsQuery(5), MSQL::FrequencyListQuery("T"),
             MSQL::InsertKey(1, 2, 3, 4, 5), MSQL::UpdateColumn(3, "x", "S", 1, 1),
             MSQL::ExternalFieldGroupQuery(), MSQL::FieldNameInUseQuery(7, "Name", 3),
             "INSERT INTO t VALUES('a.x(+) = b.y', 'SELECT UNIQUE', \"q(+)\") -- (+)",
             "  /* SELECT UNIQUE */ SELECT unique_id FROM t  "}) {
        EXPECT_EQ(OracleDialectBridge::Translate(statement), statement);
    }
}

TEST_F(OracleDialectBridgeTest, UniqueAndOuterJoinsOfEveryShapeBecomeAnsi) {
    const struct {
        const char* what;
        QString oracle;
        QString ansi;
    } cases[] = {
        // The schema forms differ only in the editor position, which the statement tests compare.
        {"the library's column query", MSQL::ColumnQuery(7),
         "SELECT a.col_id, a.col_name, a.col_type, a.col_position, b.Field_id, e.pk_id, "
         "e.field_id pkFld_id, e.ordinal, f.entity_id pkEntity_id, f.name pkFld_name, "
         "g.entity_name pkEntity_name, g.entity_label pkEntity_label, a.is_timestamp TimeStamp, "
         "a.editor_position FROM eds_column a"
         " LEFT JOIN qvd_eds_def b ON b.col_id = a.col_id AND b.eds_id = a.eds_id"
         " LEFT JOIN eds_primarykey e ON e.eds_id = a.eds_id AND e.col_id = a.col_id"
         " LEFT JOIN qvd_dict_name f ON e.field_id = f.field_id"
         " LEFT JOIN qvn_entity g ON f.entity_id = g.entity_id"
         " WHERE a.EDS_Id = 7 ORDER BY a.editor_position"},
        {"SELECT UNIQUE at any level",
         "select unique x from t where t.y in (SELECT UNIQUE y FROM u)",
         "select DISTINCT x from t where t.y in (SELECT DISTINCT y FROM u)"},
        {"schema-qualified tables without alias, blanks inside the mark",
         "SELECT 1 FROM pm.t1, pm.t2 WHERE t1.id = t2.id ( + ) GROUP BY t1.id",
         "SELECT 1 FROM pm.t1 LEFT JOIN pm.t2 ON t1.id = t2.id GROUP BY t1.id"},
        {"quoted names and an AS alias",
         "SELECT 1 FROM \"T1\" a, t2 AS \"B\" WHERE a.\"Id\" = \"B\".id(+)",
         "SELECT 1 FROM \"T1\" a LEFT JOIN t2 AS \"B\" ON a.\"Id\" = \"B\".id"},
        {"a BETWEEN, a function and IS NULL after a mark",
         "SELECT 1 FROM a, b WHERE a.d BETWEEN 1 AND 5 AND NVL(b.v(+), 0) > a.v AND b.w(+)IS NULL",
         "SELECT 1 FROM a LEFT JOIN b ON NVL(b.v, 0) > a.v AND b.w IS NULL WHERE a.d BETWEEN 1 AND "
         "5"},
        {"outer joins inside a subquery and a union",
         "SELECT x FROM t WHERE t.id IN (SELECT a.id FROM a, b WHERE a.id = b.id(+)) UNION ALL "
         "SELECT c.x FROM c, d WHERE c.k = d.k(+)",
         "SELECT x FROM t WHERE t.id IN (SELECT a.id FROM a LEFT JOIN b ON a.id = b.id) UNION ALL "
         "SELECT c.x FROM c LEFT JOIN d ON c.k = d.k"},
        {"a derived table with its alias",
         "SELECT 1 FROM (SELECT UNIQUE id FROM t) a, u b WHERE a.id = b.id(+) AND b.z(+) > 2",
         "SELECT 1 FROM (SELECT DISTINCT id FROM t) a LEFT JOIN u b ON a.id = b.id AND b.z > 2"},
        {"nested groups, an OR group without (+), a BETWEEN inside a group, AND and OR in a CASE",
         "SELECT 1 FROM a, b, c WHERE ((a.id = b.id(+) AND (c.id(+) = b.id)) AND (a.x = 1 OR "
         "b.y = 2) AND (a.d BETWEEN 1 AND 2)) AND CASE WHEN a.x = 1 AND a.y = 2 OR a.z = 3 THEN 1 "
         "END = 1",
         "SELECT 1 FROM a LEFT JOIN b ON a.id = b.id LEFT JOIN c ON c.id = b.id WHERE (a.x = 1 OR "
         "b.y = 2) AND a.d BETWEEN 1 AND 2 AND CASE WHEN a.x = 1 AND a.y = 2 OR a.z = 3 THEN 1 "
         "END = 1"},
        {"an insert that copies an outer join",
         "INSERT INTO x (a, b) SELECT a.a, b.b FROM a, b WHERE a.id = b.id(+)",
         "INSERT INTO x (a, b) SELECT a.a, b.b FROM a LEFT JOIN b ON a.id = b.id"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const QString out = OracleDialectBridge::Translate(c.oracle);
        EXPECT_EQ(out, c.ansi);
        EXPECT_EQ(OracleDialectBridge::Translate(out), out);
    }
}

TEST_F(OracleDialectBridgeTest, WhatCannotBeTranslatedWithCertaintyIsRefused) {
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT 1 FROM a, b WHERE a.id = b.id(+) OR a.x = 1", "joined by OR"},
        {"SELECT 1 FROM a, b WHERE (a.id = b.id(+) OR b.x(+) = 1)", "may not use OR"},
        {"SELECT 1 FROM a, b WHERE NOT (a.id = b.id(+) AND a.x = 1)", "under NOT"},
        {"SELECT 1 FROM a, b WHERE id = b.id(+)", "must be qualified"},
        {"SELECT 1 FROM a, b WHERE a.id = x(+)", "must be qualified"},
        {"SELECT 1 FROM a, b WHERE a.id(+) = b.id(+)", "several tables"},
        {"SELECT 1 FROM a, b WHERE a.x = b.x(+) AND b.y = a.y(+)", "every table is outer-joined"},
        {"SELECT 1 FROM a, b, c WHERE a.x = b.x AND b.y = c.y(+) AND c.z = b.z(+)",
         "depend on each other"},
        {"SELECT 1 FROM a, b WHERE b.x(+) = b.y", "both sides"},
        {"SELECT 1 FROM a, b WHERE b.kind(+) = 'K'", "without a condition that links it"},
        {"SELECT 1 FROM a, b WHERE z.id = b.id(+)", "Z is not a table of the FROM list"},
        {"SELECT 1 FROM a JOIN c ON c.id = a.id, b WHERE a.id = b.id(+)",
         "cannot be mixed with JOIN"},
        {"SELECT 1 FROM a, a WHERE a.id = a.id(+)", "both called A"},
        {"SELECT b.x(+) FROM a, b WHERE a.id = b.id", "only in the WHERE clause"},
        {"UPDATE t SET x = 1 WHERE t.a = u.b(+)", "no outer join can be formed"},
        {"SELECT 1 FROM a, b WHERE a.id = b.id(+) AND b.x(+) = (SELECT max(c.x) FROM c)",
         "subquery"},
        {"SELECT 1 FROM a, b WHERE a.id = b.id(+) AND b.x = 'open", "never closed"},
        {"SELECT 1 FROM a, b WHERE (a.id = b.id(+)", "parentheses do not match"},
        {"SELECT 1 FROM a, (SELECT 1 FROM c) WHERE a.id = b.id(+)", "needs an alias"},
    };
    for (const auto& [statement, reason] : cases) {
        EXPECT_THAT([&] { OracleDialectBridge::Translate(statement); },
                    testing::ThrowsMessage<Error>(
                        testing::AllOf(HasSubstr("Cannot translate this statement"),
                                       HasSubstr(reason), HasSubstr(statement))));
    }
}

// The other column, key, field and settings statements are compared in the logs of the save and
// of the document's loading.
TEST_F(MSQLTest, ColumnStatementsNameTheEditorPositionOnlyWhenTheTableHasIt) {
    const QString head = "SELECT a.col_id, a.col_name, a.col_type, a.col_position, b.Field_id,"
                         " e.pk_id, e.field_id pkFld_id, e.ordinal, f.entity_id pkEntity_id,"
                         " f.name pkFld_name, g.entity_name pkEntity_name,"
                         " g.entity_label pkEntity_label, a.is_timestamp TimeStamp";
    const QString body = " FROM eds_column a,qvd_eds_def b,"
                         " eds_primarykey e,qvd_dict_name f, qvn_entity g "
                         "WHERE a.EDS_Id = 42"
                         " AND e.eds_id(+) = a.eds_id AND e.col_id(+) = a.col_id "
                         "AND b.col_id(+) = a.col_id AND b.eds_id(+) = a.eds_id "
                         "AND e.field_id = f.field_id(+) AND f.entity_id = g.entity_id(+)ORDER BY";
    const QString insert = "INSERT INTO eds_column(col_id,eds_id,col_name,col_type,col_position,"
                           "is_timestamp";
    for (const bool editorPosition : {false, true}) {
        SCOPED_TRACE(editorPosition ? "with editor_position" : "without editor_position");
        query->editorPosition = editorPosition;
        EXPECT_EQ(MSQL::ColumnQuery(42),
                  editorPosition ? head + ", a.editor_position" + body + " a.editor_position"
                                 : head + body + " a.col_position");
        EXPECT_EQ(MSQL::InsertColumn(5, 42, "Cell Name", "S", 3, "N", 2),
                  editorPosition ? insert + ",editor_position)VALUES(5,42,'Cell Name','S',3,'N',2)"
                                 : insert + ")VALUES(5,42,'Cell Name','S',3,'N')");
    }
}

TEST_F(MSQLTest, LookupQueries) {
    EXPECT_EQ(MSQL::TemplatesUsingFieldQuery(8),
              "SELECT UNIQUE a.TemplateId FROM PM_TemplateField a, QVD_EDS_Def c "
              "WHERE a.Field_Id = c.Field_Id AND a.Field_Id = 8");
    // The orientation is quoted through the query service.
    EXPECT_EQ(MSQL::FrequencyListQuery("T"),
              "SELECT DISTINCT a.frequency_id,a.description FROM qv_frequency a, pm_groupby b "
              "WHERE b.orientation = 'T' AND a.frequency_id=b.frequency_id");
    // The name is trimmed, upper-cased and quoted as it stands: an embedded quote is not doubled.
    EXPECT_EQ(MSQL::FieldNameInUseQuery(3, "  o'x ", 0),
              "SELECT field_id FROM QVD_DICT_FIELD WHERE entity_id = 3 AND "
              "UPPER(field_name) = 'O'X'");
}

} // namespace Orvane::Testing
