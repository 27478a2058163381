#include "orvane/model/MSQL.h"
#include "tests/support/FakeHost.h"

namespace Orvane::Testing {
namespace {

using MSQLTest = FakeHostTest;

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

} // namespace
} // namespace Orvane::Testing
