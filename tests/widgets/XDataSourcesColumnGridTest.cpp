#include "tests/widgets/ColumnEditorFixture.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QToolBar>
#include <functional>

namespace Orvane::Testing {
namespace {

const QString PositionHint = "\r\nA unique position between 1 and 500 must be specified";
const QString Grey = QColor(192, 192, 192).name();
const QStringList Buttons = {"Add",    "Insert", "Delete",   "ReName", "Clear", "Key",
                             "DelKey", "Field",  "DelField", "Left",   "Right"};

using ColumnGridTest = ColumnEditorTest;

TEST_F(ColumnGridTest, AnEmptyEditorShowsTheToolbarInOrderAndTheRowHeadingsAndOffersAdd) {
    QStringList keys;
    for (const QAction* a : editor().findChild<QToolBar*>("tbColumns")->actions())
        keys << a->objectName();
    EXPECT_EQ(keys.join(' '), "sep1 Add Insert Delete sep2 ReName Clear sep4 Key DelKey sep5 "
                              "Field DelField sep3 Left Right sep6 Detect");
    QStringList headings;
    for (int row = 0; row < grid().model()->rowCount(); ++row)
        headings << grid().model()->headerData(row, Qt::Vertical).toString();
    EXPECT_EQ(headings, QStringList({"Name", "Type", "Field", "Key", "Key Field", "Position"}));
    EXPECT_EQ(columnCount(), 0);
    EXPECT_EQ(states(Buttons), "Add=1 Insert=0 Delete=0 ReName=0 Clear=0 Key=0 DelKey=0 Field=0 "
                               "DelField=0 Left=0 Right=0");
}

TEST_F(ColumnGridTest, InitNewShowsTheTimeStampColumnFirstAndOnce) {
    editor().setAppName("ASCII Data Source");
    editor().InitNew(columns);

    ASSERT_EQ(columnCount(), 1);
    EXPECT_EQ(gridRow(1) + gridRow(2) + gridRow(6), QStringList({"Time Stamp", "Date", "1"}));
    EXPECT_EQ(text(1, 3, Qt::BackgroundRole), Grey);
    EXPECT_EQ(text(1, 5, Qt::BackgroundRole), Grey);
    EXPECT_EQ(text(1, 4, Qt::BackgroundRole), "");
    EXPECT_FALSE(cell(1, 2).flags() & Qt::ItemIsEditable) << "the time stamp is always a Date";
    const ColumnPtr ts = columns->TSColumn();
    EXPECT_EQ(ts->Column_Type(), "D");
    EXPECT_EQ(ts->Position(), 1);
    EXPECT_EQ(ts->ColPosition(), 1);
    EXPECT_TRUE(ts->Dirty());
    EXPECT_EQ(changeCount(), 1);
    EXPECT_EQ(states(Buttons), "Add=1 Insert=1 Delete=0 ReName=0 Clear=1 Key=0 DelKey=0 Field=0 "
                               "DelField=0 Left=0 Right=0");
    editor().setAppName("ODBC Data Source");
    click(1, 1);
    EXPECT_TRUE(enabled("ReName"));

    // A collection that holds its time stamp already, after another column, shows it once, first.
    const auto copied = std::make_shared<CDataSourcesColumns>();
    stored(*copied, "A", 0, 2);
    stored(*copied, "When", 0, 5, "D")->setIsTimeStamp(true);
    editor().InitNew(copied);
    EXPECT_EQ(gridRow(1), QStringList({"When", "A"}));
    EXPECT_EQ(text(1, 6), "5");
    EXPECT_EQ(copied->Item("A")->ColPosition(), 2);
}

// Then the type list and the position cell edit the column.
TEST_F(ColumnGridTest, InitEditShowsEachColumnNotDeletedInCollectionOrder) {
    const ColumnPtr site = stored(*columns, "Site", 1, 2, "S");
    makeKey(*site, 1, 44);
    stored(*columns, "Calls", 2, 3, "F")->setField(field(12, "calls_total"));
    const ColumnPtr old = stored(*columns, "Old", 3, 1, "E");
    makeKey(*old, 2, 45);
    old->setKeyDeleted(true);
    old->setDirty(false);
    stored(*columns, "Gone", 4, 4)->setColumnDeleted(true);

    editor().InitEdit(columns);

    EXPECT_EQ(gridRow(1), QStringList({"Site", "Calls", "Old"}));
    EXPECT_EQ(gridRow(2), QStringList({"String", "Float", "ENUM"}));
    EXPECT_EQ(gridRow(3), QStringList({"", "calls_total", ""}));
    EXPECT_EQ(gridRow(4), QStringList({"1", "", ""})) << "a deleted key shows nothing";
    EXPECT_EQ(gridRow(5), QStringList({"Cell: cell_name", "", ""}));
    EXPECT_EQ(gridRow(6), QStringList({"2", "3", "1"}));
    EXPECT_EQ(old->ColPosition(), 3);
    EXPECT_FALSE(site->Dirty() || old->Dirty());
    EXPECT_EQ(changeCount(), 0);
    EXPECT_GT(grid().horizontalHeader()->sectionSize(1),
              grid().fontMetrics().horizontalAdvance("calls_total"));

    grid().edit(cell(1, 2));
    auto* combo = grid().viewport()->findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->count(), 5);
    EXPECT_EQ(combo->currentText(), "String");
    combo->setCurrentIndex(combo->findText("ENUM"));
    emit combo->activated(combo->currentIndex());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(text(1, 2), "ENUM");
    EXPECT_EQ(site->Column_Type(), "E") << "held as the stored code";
    EXPECT_TRUE(site->Dirty());
    EXPECT_EQ(changeCount(), 1);

    grid().edit(cell(1, 6));
    auto* edit = grid().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    edit->setText("7");
    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents(); // the view commits the editor queued
    EXPECT_EQ(text(1, 6), "7");
    EXPECT_EQ(site->Position(), 7);
    EXPECT_EQ(changeCount(), 2);
}

TEST_F(ColumnGridTest, RemovingTheTimeStampMarksASavedOneAndDropsANewOne) {
    const ColumnPtr ts = stored(*columns, "Time Stamp", 9, 4, "D");
    ts->setIsTimeStamp(true);
    stored(*columns, "A", 10, 1);
    editor().InitEdit(columns);

    editor().ShowTimeSeriesColumn(false);
    EXPECT_EQ(gridRow(1), QStringList({"A"}));
    EXPECT_TRUE(ts->ColumnDeleted());
    EXPECT_TRUE(app->msgBoxes.isEmpty()) << "no confirmation when the host removes it";
    EXPECT_EQ(changeCount(), 1);

    editor().ShowTimeSeriesColumn(true);
    editor().ShowTimeSeriesColumn(true);
    EXPECT_EQ(gridRow(1), QStringList({"Time Stamp", "A"})) << "back first, once";
    EXPECT_EQ(text(1, 6), "4");
    EXPECT_FALSE(ts->ColumnDeleted());

    editor().InitNew(std::make_shared<CDataSourcesColumns>());
    editor().ShowTimeSeriesColumn(false);
    EXPECT_EQ(columnCount(), 0);
    EXPECT_EQ(editor().Columns()->Count(), 0) << "a new time stamp is dropped";
}

// Each layout after a plain column A: the first failed check is reported and its cell selected.
TEST_F(ColumnGridTest, IsValidReportsTheFirstFailedCheckAndSelectsItsCell) {
    const struct {
        const char* check;
        std::function<void(CDataSourcesColumns&)> build;
        QString message;  // empty when the layout passes
        QString selected; // "column,row" of the one selected cell, or "none"
    } layouts[] = {
        {"good layout; 501 passes, only the lower bound counts; a deleted key frees its ordinal",
         [](CDataSourcesColumns& c) {
             makeKey(*stored(c, "Site", 2, 2), 1, 44);
             stored(c, "Calls", 3, 501)->setField(field(12, "calls"));
             const auto second = stored(c, "Second", 4, 3);
             makeKey(*second, 1, 45);
             second->setKeyDeleted(true);
             const auto gone = stored(c, "Gone", 5, 4);
             makeKey(*gone, 2, 46);
             gone->setColumnDeleted(true);
             makeKey(*stored(c, "Third", 6, 5), 2, 47);
         },
         "", "none"},
        {"no column", [](CDataSourcesColumns& c) { c.Clear(); },
         "At least one column must be defined", "none"},
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
    for (const auto& layout : layouts) {
        SCOPED_TRACE(layout.check);
        columns = std::make_shared<CDataSourcesColumns>();
        stored(*columns, "A", 1, 1);
        layout.build(*columns);
        editor().InitEdit(columns);
        grid().clearSelection();
        app->msgBoxes.clear();

        EXPECT_EQ(editor().IsValid("Save Data Source"), layout.message.isEmpty());

        const QString shown = layout.message.isEmpty() ? "" : "Exclamation Save Data Source: ";
        EXPECT_EQ(boxes(*app).join('|'), shown + layout.message);
        const QModelIndexList selected = grid().selectionModel()->selectedIndexes();
        const QModelIndex first = selected.value(0);
        EXPECT_EQ(selected.isEmpty()
                      ? "none"
                      : QString("%1,%2").arg(first.column() + 1).arg(first.row() + 1),
                  layout.selected);
        EXPECT_LE(selected.size(), 1);
        EXPECT_TRUE(selected.isEmpty() || grid().currentIndex() == first)
            << "the selected cell is the active one";
    }
}

} // namespace
} // namespace Orvane::Testing
