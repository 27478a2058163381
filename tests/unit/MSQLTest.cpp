#include "orvane/model/MSQL.h"
#include "tests/support/FakeHost.h"

namespace Orvane::Testing {
namespace {

class MSQLTest : public FakeHostTest, public ::testing::WithParamInterface<bool> {
protected:
    MSQLTest() { query->editorPosition = GetParam(); }
    bool withEditorPosition() const { return GetParam(); }
};

TEST_P(MSQLTest, ColumnQueryFollowsTheSchemaForm) {
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
    const QString expected = withEditorPosition()
                                 ? head + ", a.editor_position" + body + " a.editor_position"
                                 : head + body + " a.col_position";
    EXPECT_EQ(MSQL::ColumnQuery(42), expected);
}

// The other column, key and field statements are compared in the save's statement log.
TEST_P(MSQLTest, ColumnInsertNamesTheEditorPositionOnlyWhenTheTableHasIt) {
    EXPECT_EQ(MSQL::InsertColumn(5, 42, "Cell Name", "S", 3, "N", 2),
              withEditorPosition()
                  ? "INSERT INTO eds_column(col_id,eds_id,col_name,col_type,col_position,"
                    "is_timestamp,editor_position)VALUES(5,42,'Cell Name','S',3,'N',2)"
                  : "INSERT INTO eds_column(col_id,eds_id,col_name,col_type,col_position,"
                    "is_timestamp)VALUES(5,42,'Cell Name','S',3,'N')");
}

INSTANTIATE_TEST_SUITE_P(SchemaForms, MSQLTest, ::testing::Bool(), [](const auto& info) {
    return info.param ? "WithEditorPosition" : "WithoutEditorPosition";
});

using StatementTest = FakeHostTest;

TEST_F(StatementTest, SettingsTemplateAndFrequencyQueries) {
    // The settings queries put no blank before the id.
    EXPECT_EQ(MSQL::AsciiSettingsQuery(17), "SELECT * FROM eds_ascii_file WHERE eds_id =17");
    EXPECT_EQ(MSQL::OdbcSettingsQuery(17), "SELECT * FROM eds_odbc_file WHERE eds_id =17");
    EXPECT_EQ(MSQL::TemplatesUsingFieldQuery(8),
              "SELECT UNIQUE a.TemplateId FROM PM_TemplateField a, QVD_EDS_Def c "
              "WHERE a.Field_Id = c.Field_Id AND a.Field_Id = 8");
    // The orientation is quoted through the query service.
    EXPECT_EQ(MSQL::FrequencyListQuery("T"),
              "SELECT DISTINCT a.frequency_id,a.description FROM qv_frequency a, pm_groupby b "
              "WHERE b.orientation = 'T' AND a.frequency_id=b.frequency_id");
}

TEST_F(StatementTest, FieldNameInUseTrimsAndUpperCasesTheName) {
    EXPECT_EQ(MSQL::FieldNameInUseQuery(3, "  drop_rate ", 0),
              "SELECT field_id FROM QVD_DICT_FIELD WHERE entity_id = 3 AND "
              "UPPER(field_name) = 'DROP_RATE'");
    // The name is quoted as it stands: an embedded quote is not doubled.
    EXPECT_EQ(
        MSQL::FieldNameInUseQuery(3, "o'x", 0),
        "SELECT field_id FROM QVD_DICT_FIELD WHERE entity_id = 3 AND UPPER(field_name) = 'O'X'");
}

} // namespace
} // namespace Orvane::Testing
