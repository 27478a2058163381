#include "tests/widgets/ColumnEditorFixture.h"

#include <functional>

namespace Orvane::Testing {
namespace {

const QString PositionHint = "\r\nA unique position between 1 and 500 must be specified";

struct Layout {
    const char* check;
    std::function<void(CDataSourcesColumns&)> build;
    QString message;  // empty when the layout passes
    QString selected; // "column,row" of the one selected cell, or "none"
};

void PrintTo(const Layout& layout, std::ostream* os) {
    *os << layout.check;
}

class ColumnValidationTest : public ColumnEditorTest, public ::testing::WithParamInterface<Layout> {
protected:
    QString selectedCell() {
        const QModelIndexList selected = grid().selectionModel()->selectedIndexes();
        if (selected.isEmpty())
            return QStringLiteral("none");
        EXPECT_EQ(selected.size(), 1);
        EXPECT_EQ(grid().currentIndex(), selected.first()) << "the selected cell is the active one";
        return QStringLiteral("%1,%2")
            .arg(selected.first().column() + 1)
            .arg(selected.first().row() + 1);
    }
};

TEST_P(ColumnValidationTest, TheFirstFailedCheckIsReportedAndItsCellSelected) {
    stored(*columns, "A", 1, 1);
    GetParam().build(*columns);
    editor().InitEdit(columns);
    grid().clearSelection();

    const bool valid = editor().IsValid("Save Data Source");

    EXPECT_EQ(valid, GetParam().message.isEmpty());
    EXPECT_EQ(messages().join('|'), GetParam().message);
    if (!valid) {
        EXPECT_EQ(app->msgBoxes[0].title, "Save Data Source");
        EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Exclamation);
        EXPECT_EQ(app->msgBoxes[0].buttons, MsgBoxButtons::OKOnly);
        EXPECT_EQ(selectedCell(), GetParam().selected);
    }
}

const Layout Layouts[] = {
    {"good layout; 501 passes, only the lower bound counts",
     [](CDataSourcesColumns& c) {
         makeKey(*stored(c, "Site", 2, 2), 1, 44);
         stored(c, "Calls", 3, 501)->setField(field(12, "calls"));
         stored(c, "Drops", 4, 3);
     },
     "", ""},
    {"no column", [](CDataSourcesColumns& c) { c.Clear(); }, "At least one column must be defined",
     "none"},
    {"no position", [](CDataSourcesColumns& c) { stored(c, "B", 2, 0); },
     "Column 2 has no position specified." + PositionHint, "2,6"},
    {"no name before a later column's fault",
     [](CDataSourcesColumns& c) {
         stored(c, "", 2, 2);
         stored(c, "C", 3, 0);
     },
     "Column 2 has no name.  Please provide a name or delete the column.", "2,1"},
    {"duplicate fields regardless of case; first i, then first j",
     [](CDataSourcesColumns& c) {
         stored(c, "B", 2, 2)->setField(field(12, "calls"));
         stored(c, "C", 3, 3)->setField(field(14, "drops"));
         stored(c, "D", 4, 4)->setField(field(13, "CALLS"));
         stored(c, "E", 5, 5)->setField(field(15, "Drops"));
         stored(c, "F", 6, 6)->setField(field(16, "calls"));
         stored(c, "", 7, 7);
     },
     "Column 2 and column 4 have duplicate field names specified.\r\n"
     "Each field must have a unique name.",
     "none"},
    {"duplicate key ordinal, named by the later column",
     [](CDataSourcesColumns& c) {
         makeKey(*stored(c, "First", 2, 2), 1, 44);
         makeKey(*stored(c, "Second", 3, 3), 1, 45);
     },
     "Column Second has a duplicate key specified.", "3,4"},
    {"a deleted key frees its ordinal",
     [](CDataSourcesColumns& c) {
         makeKey(*stored(c, "First", 2, 2), 1, 44);
         const auto second = stored(c, "Second", 3, 3);
         makeKey(*second, 1, 45);
         second->setKeyDeleted(true);
         const auto gone = stored(c, "Gone", 4, 4);
         makeKey(*gone, 2, 46);
         gone->setColumnDeleted(true);
         makeKey(*stored(c, "Third", 5, 5), 2, 47);
     },
     "", ""},
    {"key column without its key field",
     [](CDataSourcesColumns& c) {
         const auto key = stored(c, "K", 2, 2);
         makeKey(*key, 1, 44);
         key->setKeyEntity("");
         key->setKeyFld_Name("");
     },
     "Column K is missing a key field.", "2,5"},
    {"duplicate position, deleted columns included",
     [](CDataSourcesColumns& c) {
         stored(c, "B", 2, 3);
         stored(c, "C", 3, 4);
         stored(c, "Gone", 4, 4)->setColumnDeleted(true);
     },
     "Column C has a duplicate position spceified." + PositionHint, "3,6"},
};

INSTANTIATE_TEST_SUITE_P(Checks, ColumnValidationTest, ::testing::ValuesIn(Layouts));

} // namespace
} // namespace Orvane::Testing
