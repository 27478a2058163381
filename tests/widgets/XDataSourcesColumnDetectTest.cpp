#include "orvane/sources/ColumnDetector.h"
#include "tests/widgets/ColumnEditorFixture.h"

#include <QAbstractItemModel>
#include <QDialog>
#include <QTableView>

namespace Orvane::Testing {
namespace {

using DetectTest = ColumnEditorTest;

TEST_F(DetectTest, ProposesAppendsOnOkAndNeverOverwrites) {
    editor().setAppName("ASCII Data Source");
    editor().InitNew(columns);
    EXPECT_FALSE(enabled("Detect"));
    ColumnDetection source;
    source.columns = {{" Cell ", "S", 1}, {"When", "D", 2}, {"Drops", "I", 3}, {"cell", "F", 4}};
    editor().setDetectSource([&source] { return source; });
    forgetChanges();

    QStringList proposed;
    app->modalHandlers = {[&](QDialog& dialog) {
        const auto* model = dialog.findChild<QTableView*>("grdColumns")->model();
        for (int row = 0; row < model->rowCount(); ++row)
            proposed << model->index(row, 0).data().toString();
        return int(QDialog::Rejected);
    }};
    trigger("Detect");
    EXPECT_EQ(proposed.join('|'), "Time Stamp (moves)|Cell|Drops|cell_2");
    EXPECT_EQ(columnCount(), 1);
    EXPECT_EQ(changeCount(), 0);

    app->modalHandlers = {[](QDialog&) { return int(QDialog::Accepted); }};
    trigger("mnuColDetect");
    EXPECT_EQ(gridRow(1).join('|'), "Time Stamp|Cell|Drops|cell_2");
    EXPECT_EQ(gridRow(2).join('|'), "Date|String|Integer|Float");
    EXPECT_EQ(gridRow(6).join('|'), "2|1|3|4");
    EXPECT_EQ(changeCount(), 1);

    // A second pass finds only what differs and changes nothing.
    source.columns = {{"Drops", "F", 5}, {"Lost", "I", 1}};
    app->modalHandlers.clear();
    trigger("Detect");
    EXPECT_EQ(columnCount(), 4);
    EXPECT_EQ(changeCount(), 1);
    EXPECT_EQ(messages().join('|'),
              "Column \"Drops\" is at position 3; the source has it at position 5.\r\n"
              "Column \"Drops\" is Integer; the source's values look Float.\r\n"
              "The source's \"Lost\" at position 1 falls on column \"Cell\".");

    source.error = "The file \"x\" does not exist.";
    trigger("Detect");
    EXPECT_EQ(messages().last(), source.error);
}

} // namespace
} // namespace Orvane::Testing
