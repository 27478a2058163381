#include "tests/widgets/ColumnEditorFixture.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QToolBar>

namespace Orvane::Testing {
namespace {

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

TEST_F(ColumnGridTest, TheTypeListAndThePositionCellEditTheColumn) {
    const ColumnPtr a = stored(*columns, "A", 1, 1, "I");
    editor().InitEdit(columns);
    forgetChanges();

    grid().edit(cell(1, 2));
    auto* combo = grid().viewport()->findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->count(), 5);
    EXPECT_EQ(combo->currentText(), "Integer");
    combo->setCurrentIndex(combo->findText("ENUM"));
    emit combo->activated(combo->currentIndex());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(text(1, 2), "ENUM");
    EXPECT_EQ(a->Column_Type(), "E") << "held as the stored code";
    EXPECT_TRUE(a->Dirty());
    EXPECT_EQ(changeCount(), 1);

    grid().edit(cell(1, 6));
    auto* edit = grid().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    edit->setText("7");
    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents(); // the view commits the editor queued
    EXPECT_EQ(text(1, 6), "7");
    EXPECT_EQ(a->Position(), 7);
    EXPECT_EQ(changeCount(), 2);
}

} // namespace
} // namespace Orvane::Testing
