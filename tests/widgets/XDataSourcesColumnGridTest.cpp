#include "tests/widgets/ColumnEditorFixture.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QToolBar>

namespace Orvane::Testing {
namespace {

const QColor Grey(192, 192, 192);

using ColumnGridTest = ColumnEditorTest;

TEST_F(ColumnGridTest, ToolbarAndGridAreLaidOutAsTheUserKnowsThem) {
    const auto* toolbar = editor().findChild<QToolBar*>(QStringLiteral("tbColumns"));
    ASSERT_NE(toolbar, nullptr);
    QStringList keys, tips;
    for (const QAction* a : toolbar->actions()) {
        keys << a->objectName();
        if (!a->isSeparator()) {
            tips << a->toolTip();
            EXPECT_FALSE(a->icon().isNull()) << a->objectName().toStdString();
        }
    }
    EXPECT_EQ(keys.join(' '), "sep1 Add Insert Delete sep2 ReName Clear sep4 Key DelKey sep5 "
                              "Field DelField sep3 Left Right");
    EXPECT_EQ(tips, QStringList({"Append column.", "Insert column.", "Delete selected column.",
                                 "Rename column.", "Clear column.", "Add or edit Key Field.",
                                 "Delete Key Field.", "Add or edit Field.", "Delete Field.",
                                 "Move column left.", "Move column right."}));
    EXPECT_EQ(action("Add").statusTip(), "Add new column");
    EXPECT_EQ(action("ReName").statusTip(), "rename");

    QStringList headings;
    for (int row = 0; row < grid().rowCount(); ++row)
        headings << grid().verticalHeaderItem(row)->text();
    EXPECT_EQ(headings, QStringList({"Name", "Type", "Field", "Key", "Key Field", "Position"}));
    EXPECT_EQ(grid().columnCount(), 0);

    QStringList items;
    for (const QAction* a : menu("mnuColumns").actions())
        items << a->objectName() + (a->isSeparator() ? QString() : "=" + a->text());
    EXPECT_EQ(items.join(' '), "mnuColAdd=Add mnuColInsert=Insert mnuColDelete=Delete mnuSep2 "
                               "mnuColEdit=ReName mnuColClear=Clear mnuSep3");
    EXPECT_EQ(menu("mnuDropDown").title(), "Select");
    EXPECT_EQ(menu("mnuKeys").title(), "Keys");

    // An empty editor offers only Add.
    EXPECT_TRUE(enabled("Add"));
    for (const char* key : {"Insert", "Delete", "ReName", "Clear", "Key", "DelKey", "Field",
                            "DelField", "Left", "Right"})
        EXPECT_FALSE(enabled(key)) << key;
}

TEST_F(ColumnGridTest, InitNewShowsTheTimeStampColumnFirst) {
    editor().setAppName("ASCII Data Source");
    editor().InitNew(columns);

    ASSERT_EQ(grid().columnCount(), 1);
    EXPECT_EQ(text(1, 1), "Time Stamp");
    EXPECT_EQ(text(1, 2), "Date");
    EXPECT_EQ(text(1, 6), "1");
    EXPECT_EQ(grid().item(2, 0)->background().color(), Grey);
    EXPECT_EQ(grid().item(4, 0)->background().color(), Grey);
    EXPECT_NE(grid().item(3, 0)->background().color(), Grey);
    EXPECT_FALSE(grid().item(1, 0)->flags() & Qt::ItemIsEditable) << "static Date";

    const ColumnPtr ts = columns->TSColumn();
    ASSERT_NE(ts, nullptr);
    EXPECT_EQ(ts->Column_Name(), "Time Stamp");
    EXPECT_EQ(ts->Column_Type(), "Date");
    EXPECT_EQ(ts->Position(), 1);
    EXPECT_EQ(ts->ColPosition(), 1);
    EXPECT_TRUE(ts->Dirty());
    EXPECT_EQ(changeCount(), 1);

    // On the time-stamp column of an ASCII source only adding, inserting and clearing remain.
    for (const char* key : {"Add", "Insert", "Clear"})
        EXPECT_TRUE(enabled(key)) << key;
    for (const char* key :
         {"Delete", "ReName", "Key", "DelKey", "Field", "DelField", "Left", "Right"})
        EXPECT_FALSE(enabled(key)) << key;

    editor().setAppName("ODBC Data Source");
    click(1, 1);
    EXPECT_TRUE(enabled("ReName"));
}

TEST_F(ColumnGridTest, InitEditShowsEachStoredColumnInCollectionOrder) {
    const ColumnPtr site = stored(*columns, "Site", 1, 2, "S");
    makeKey(*site, 1, 44);
    const ColumnPtr calls = stored(*columns, "Calls", 2, 3, "F");
    calls->setField(field(12, "calls_total"));
    const ColumnPtr old = stored(*columns, "Old", 3, 1, "E");
    makeKey(*old, 2, 45);
    old->setKeyDeleted(true);
    old->setDirty(false);

    editor().InitEdit(columns);

    ASSERT_EQ(grid().columnCount(), 3);
    EXPECT_EQ(QStringList({text(1, 1), text(1, 2), text(1, 3), text(1, 4), text(1, 5), text(1, 6)}),
              QStringList({"Site", "String", "", "1", "Cell: cell_name", "2"}));
    EXPECT_EQ(QStringList({text(2, 1), text(2, 2), text(2, 3), text(2, 4), text(2, 5)}),
              QStringList({"Calls", "Float", "calls_total", "", ""}));
    EXPECT_EQ(text(3, 4), "") << "a deleted key shows no ordinal";
    EXPECT_EQ(text(3, 5), "");
    EXPECT_EQ(site->ColPosition(), 1);
    EXPECT_EQ(calls->ColPosition(), 2);
    EXPECT_EQ(old->ColPosition(), 3);
    EXPECT_FALSE(site->Dirty() || calls->Dirty() || old->Dirty());
    EXPECT_EQ(changeCount(), 0);
    EXPECT_TRUE(grid().horizontalHeader()->sectionSize(1) >
                grid().fontMetrics().horizontalAdvance("calls_total"));
}

TEST_F(ColumnGridTest, RemovingTheTimeStampOfASavedDocumentOnlyMarksIt) {
    const ColumnPtr ts = stored(*columns, "Time Stamp", 9, 4, "D");
    ts->setIsTimeStamp(true);
    stored(*columns, "A", 10, 1);
    editor().InitEdit(columns);

    editor().ShowTimeSeriesColumn(false);

    EXPECT_EQ(grid().columnCount(), 1);
    EXPECT_EQ(text(1, 1), "A");
    EXPECT_EQ(columns->Count(), 2);
    EXPECT_TRUE(ts->ColumnDeleted());
    EXPECT_TRUE(app->msgBoxes.isEmpty()) << "no confirmation when the host removes it";
    EXPECT_EQ(changeCount(), 1);

    // Turning the time series on again brings the same column back, first, at its position.
    editor().ShowTimeSeriesColumn(true);
    EXPECT_EQ(grid().columnCount(), 2);
    EXPECT_EQ(text(1, 1), "Time Stamp");
    EXPECT_EQ(text(1, 6), "4");
    EXPECT_FALSE(ts->ColumnDeleted());
    EXPECT_EQ(columns->Count(), 2);
    editor().ShowTimeSeriesColumn(true);
    EXPECT_EQ(grid().columnCount(), 2) << "shown once only";
}

TEST_F(ColumnGridTest, RemovingTheTimeStampOfANewDocumentDropsIt) {
    editor().InitNew(columns);
    editor().ShowTimeSeriesColumn(false);
    EXPECT_EQ(grid().columnCount(), 0);
    EXPECT_EQ(columns->Count(), 0);
    EXPECT_EQ(columns->TSColumn(), nullptr);
}

TEST_F(ColumnGridTest, ChoosingATypeFromTheDropDownUpdatesTheColumn) {
    const ColumnPtr a = stored(*columns, "A", 1, 1, "I");
    editor().InitEdit(columns);
    forgetChanges();

    grid().editItem(grid().item(1, 0));
    auto* combo = grid().viewport()->findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->count(), 5);
    EXPECT_EQ(combo->currentText(), "Integer");
    combo->setCurrentIndex(combo->findText("ENUM"));
    emit combo->activated(combo->currentIndex());

    EXPECT_EQ(text(1, 2), "ENUM");
    EXPECT_EQ(a->Column_Type(), "ENUM");
    EXPECT_TRUE(a->Dirty());
    EXPECT_EQ(changeCount(), 1);
}

TEST_F(ColumnGridTest, TypingAPositionMovesTheColumnInTheRecord) {
    const ColumnPtr a = stored(*columns, "A", 1, 1);
    editor().InitEdit(columns);
    forgetChanges();

    grid().editItem(grid().item(5, 0));
    auto* edit = grid().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    edit->setText("7");
    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents(); // the view commits the editor queued

    EXPECT_EQ(text(1, 6), "7");
    EXPECT_EQ(a->Position(), 7);
    EXPECT_TRUE(a->Dirty());
    EXPECT_EQ(changeCount(), 1);
}

TEST_F(ColumnGridTest, TheNameWidthIsReadFromTheDatabaseOnCreation) {
    query->colNameWidth = 0;
    editor().InitNew(columns);
    app->inputAnswers = {"A", ""};
    trigger("Add");
    // Without a width no name fits.
    EXPECT_EQ(messages(), QStringList({"Column name must be 40 characters or fewer."}));
    EXPECT_EQ(grid().columnCount(), 1);
}

} // namespace
} // namespace Orvane::Testing
