#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/sources/ColumnDetector.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <functional>
#include <memory>

namespace Orvane::Testing {
namespace {

// A column as the document's load leaves it: stored, clean.
inline CDataSourcesColumns::ColumnPtr stored(CDataSourcesColumns& columns, const QString& name,
                                             qint32 id, qint32 position,
                                             const QString& typeCode = QStringLiteral("I")) {
    auto column = columns.Add(name);
    column->setColumn_Id(id);
    column->setColumn_Type(typeCode);
    column->setPosition(position);
    return column;
}

inline void makeKey(CDataSourcesColumn& column, qint32 ordinal, qint32 fieldId) {
    column.setPK_Id(fieldId + 1000);
    column.setKeyFld_Id(fieldId);
    column.setKey_Ordinal(ordinal);
    column.setKeyEntity(QStringLiteral("Cell"));
    column.setKeyFld_Name(QStringLiteral("cell_name"));
}

inline std::shared_ptr<FakeField> field(qint32 id, const QString& name) {
    return std::make_shared<FakeField>(id, name);
}

// Drives a real column layout editor, shown offscreen, through its grid view, toolbar actions
// and pop-up menus, and reads the grid through its model.
class ColumnEditorTest : public FakeHostTest {
protected:
    using ColumnPtr = CDataSourcesColumns::ColumnPtr;

    // Created on first use, so that a test can set the database's name width first.
    XDataSourcesColumn& editor() {
        if (!m_editor) {
            m_editor = std::make_unique<XDataSourcesColumn>();
            m_editor->resize(900, 300);
            m_editor->show();
            changes = std::make_unique<QSignalSpy>(m_editor.get(), &XDataSourcesColumn::xdscChange);
        }
        return *m_editor;
    }

    QTableView& grid() { return *editor().findChild<QTableView*>(QStringLiteral("fpsColumns")); }
    int columnCount() { return grid().model()->columnCount(); }
    bool enabled(const QString& name) { return editor().findChild<QAction*>(name)->isEnabled(); }
    void trigger(const QString& name) { editor().findChild<QAction*>(name)->trigger(); }

    // Grid columns and rows are numbered from 1, as the user sees them.
    QModelIndex cell(int column, int row) { return grid().model()->index(row - 1, column - 1); }
    QString text(int column, int row, int role = Qt::DisplayRole) {
        return cell(column, row).data(role).toString();
    }
    QStringList gridRow(int row) {
        QStringList texts;
        for (int column = 1; column <= columnCount(); ++column)
            texts << text(column, row);
        return texts;
    }
    void click(int column, int row) { emit grid().clicked(cell(column, row)); }
    void doubleClick(int column, int row) { emit grid().doubleClicked(cell(column, row)); }
    // Right-clicks a cell, or beside the cells with no column given, and returns the pop-up menu
    // that shows (closing it) as "menu: item=1 item=0 ..." with each item's enable state, or an
    // empty text.
    QString rightClick(int column = 0, int row = 0) {
        const QPoint at = column > 0 ? grid().visualRect(cell(column, row)).center()
                                     : grid().viewport()->rect().bottomRight() - QPoint(2, 2);
        emit grid().customContextMenuRequested(at);
        QString shown;
        for (QMenu* candidate : editor().findChildren<QMenu*>()) {
            if (!candidate->isVisible())
                continue;
            shown = candidate->objectName() + ':';
            for (const QAction* item : candidate->actions()) {
                if (!item->isSeparator())
                    shown += ' ' + item->objectName() + (item->isEnabled() ? "=1" : "=0");
            }
            candidate->hide();
        }
        return shown;
    }
    // Which of the named actions are enabled, as "name=1 name=0 ...".
    QString states(const QStringList& names) {
        QStringList list;
        for (const QString& name : names)
            list << name + (enabled(name) ? "=1" : "=0");
        return list.join(' ');
    }
    int changeCount() { return changes ? static_cast<int>(changes->count()) : 0; }
    void forgetChanges() { changes->clear(); }

    QStringList prompts() const {
        QStringList list;
        for (const RecordedInputBox& box : app->inputBoxes)
            list << box.prompt + QStringLiteral(" | ") + box.title;
        return list;
    }

    std::shared_ptr<CDataSourcesColumns> columns = std::make_shared<CDataSourcesColumns>();
    std::unique_ptr<QSignalSpy> changes;

private:
    std::unique_ptr<XDataSourcesColumn> m_editor;
};

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
    EXPECT_EQ(QStringList({text(1, 3, Qt::BackgroundRole), text(1, 5, Qt::BackgroundRole),
                           text(1, 4, Qt::BackgroundRole)}),
              QStringList({Grey, Grey, ""}));
    EXPECT_FALSE(cell(1, 2).flags() & Qt::ItemIsEditable) << "the time stamp is always a Date";
    const ColumnPtr ts = columns->TSColumn();
    EXPECT_EQ(ts->Column_Type() + QString::number(ts->Position()) +
                  QString::number(ts->ColPosition()),
              "D11");
    EXPECT_EQ(std::tuple(ts->Dirty(), changeCount()), std::tuple(true, 1));
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
    EXPECT_EQ(gridRow(1) + gridRow(6), QStringList({"When", "A", "5", "2"}));
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
    EXPECT_EQ(std::tuple(site->Dirty(), old->Dirty(), changeCount()), std::tuple(false, false, 0));
    EXPECT_GT(grid().horizontalHeader()->sectionSize(1),
              grid().fontMetrics().horizontalAdvance("calls_total"));

    grid().edit(cell(1, 2));
    auto* combo = grid().viewport()->findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->currentText() + QString::number(combo->count()), "String5");
    combo->setCurrentIndex(combo->findText("ENUM"));
    emit combo->activated(combo->currentIndex());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(text(1, 2) + "|" + site->Column_Type(), "ENUM|E") << "held as the stored code";
    EXPECT_EQ(std::tuple(site->Dirty(), changeCount()), std::tuple(true, 1));

    grid().edit(cell(1, 6));
    auto* edit = grid().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    edit->setText("7");
    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents(); // the view commits the editor queued
    EXPECT_EQ(QList<qint32>({text(1, 6).toInt(), site->Position(), changeCount()}),
              QList<qint32>({7, 7, 2}));
}

TEST_F(ColumnGridTest, RemovingTheTimeStampMarksASavedOneAndDropsANewOne) {
    const ColumnPtr ts = stored(*columns, "Time Stamp", 9, 4, "D");
    ts->setIsTimeStamp(true);
    stored(*columns, "A", 10, 1);
    editor().InitEdit(columns);

    editor().ShowTimeSeriesColumn(false);
    EXPECT_EQ(gridRow(1), QStringList({"A"}));
    EXPECT_EQ(std::tuple(ts->ColumnDeleted(), changeCount()), std::tuple(true, 1));
    EXPECT_TRUE(app->msgBoxes.isEmpty()) << "no confirmation when the host removes it";

    editor().ShowTimeSeriesColumn(true);
    editor().ShowTimeSeriesColumn(true);
    EXPECT_EQ(gridRow(1) + gridRow(6), QStringList({"Time Stamp", "A", "4", "1"}))
        << "back first, once";
    EXPECT_FALSE(ts->ColumnDeleted());

    editor().InitNew(std::make_shared<CDataSourcesColumns>());
    editor().ShowTimeSeriesColumn(false);
    EXPECT_EQ(std::tuple(columnCount(), editor().Columns()->Count()), std::tuple(0, 0))
        << "a new time stamp is dropped";
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

const QStringList EditButtons = {"Delete", "ReName", "Key", "DelKey", "Field", "DelField"};

class ColumnCommandsTest : public ColumnEditorTest {
protected:
    // A stored document with columns A, B and C (a Float) at positions 1 to 3, after a time
    // stamp (ID 10, position 4) when asked for one.
    void openStoredDocument(bool withTimeStamp = false) {
        if (withTimeStamp)
            stored(*columns, "Time Stamp", 10, 4, "D")->setIsTimeStamp(true);
        a = stored(*columns, "A", 11, 1);
        b = stored(*columns, "B", 12, 2);
        c = stored(*columns, "C", 13, 3, "F");
        editor().InitEdit(columns);
        forgetChanges();
    }

    ColumnPtr a, b, c;
};

TEST_F(ColumnCommandsTest, AppendAsksForANameAndAddsTheColumnAtTheEnd) {
    query->colNameWidth = 5;
    editor().InitNew(columns);
    forgetChanges();
    app->inputAnswers = {"abcdef", "  abcde  "};

    trigger("Add");

    EXPECT_EQ(boxes(*app),
              QStringList{"Exclamation : Column name must be 40 characters or fewer."});
    EXPECT_EQ(prompts(), QStringList(2, "Please enter column name | ADDING COLUMN"));
    EXPECT_EQ(gridRow(1), QStringList({"Time Stamp", "abcde"})) << "exactly the width fits";
    const ColumnPtr added = columns->Item("abcde");
    EXPECT_EQ(text(2, 2) + text(2, 6) + added->Column_Type() +
                  QString::number(added->ColPosition()),
              "Integer2I2");
    EXPECT_GE(changeCount(), 1);
    EXPECT_EQ(states({"Left", "Right", "Delete"}), "Left=1 Right=0 Delete=1") << "now current";
}

TEST_F(ColumnCommandsTest, AppendingTheNameOfADeletedColumnOffersToRestoreIt) {
    openStoredDocument();
    b->setPosition(5);
    click(2, 1);
    trigger("Delete");
    click(1, 1);
    app->inputAnswers = {"b", "B"};
    app->msgBoxAnswers = {MsgBoxResult::No, MsgBoxResult::Yes};

    trigger("Add");

    EXPECT_EQ(prompts(), QStringList({"Please enter column name | ADDING COLUMN",
                                      "Please enter a unique column name | COLUMN NAME EXISTS"}));
    EXPECT_EQ(boxes(*app), QStringList(2, "None COLUMN NAME EXISTS: Do you wish to restore the "
                                          "existing column? [YesNo]"));
    // Back before the current column, unmarked, at the first free position, not its old one.
    EXPECT_EQ(gridRow(1) + gridRow(6), QStringList({"B", "A", "C", "2", "1", "3"}));
    EXPECT_EQ(std::tuple(b->ColumnDeleted(), b->Dirty(), a->ColPosition()),
              std::tuple(false, true, 2));
}

// A cancelled rename changes nothing; a name in use is refused and asked for again.
TEST_F(ColumnCommandsTest, RenamingReplacesTheColumnAndANameInUseStartsTheAskingOver) {
    openStoredDocument();
    click(2, 1);
    app->inputAnswers = {QString(), "a", "Beta", "Gamma"};

    trigger("ReName");
    EXPECT_EQ(app->inputBoxes.last().defaultText, "B");
    EXPECT_EQ(changeCount(), 0);
    trigger("ReName");
    trigger("mnuColEdit");

    EXPECT_EQ(boxes(*app), QStringList{"Critical : This column name is already in use."
                                       "  Please enter a unique name."});
    // Even when renaming, the question after a refusal is the plain adding one.
    EXPECT_EQ(prompts().mid(1), QStringList({"Please enter new column name | RENAMING COLUMN",
                                             "Please enter column name | ADDING COLUMN",
                                             "Please enter new column name | RENAMING COLUMN"}));
    EXPECT_EQ(gridRow(1), QStringList({"A", "Gamma", "C"})) << "the second acts on the new one";
    const ColumnPtr gamma = columns->Item("Gamma");
    EXPECT_EQ(std::tuple(columns->Count(), gamma->Dirty(), gamma->ColPosition()),
              std::tuple(3, true, 2));
    EXPECT_EQ(gamma->Column_Id(), 12) << "the save updates the stored row";
    EXPECT_EQ(changeCount(), 4) << "each named run reports a change, the refused one too";
}

TEST_F(ColumnCommandsTest, InsertPutsTheColumnBeforeTheCurrentOneAndRenumbers) {
    openStoredDocument();
    click(2, 1);
    app->inputAnswers = {"N"};

    trigger("Insert");

    EXPECT_EQ(gridRow(1), QStringList({"A", "N", "B", "C"}));
    EXPECT_EQ(std::tuple(columns->Item("N")->Position(), c->ColPosition()), std::tuple(4, 4));
    EXPECT_EQ(std::tuple(b->Dirty(), c->Dirty(), a->Dirty()), std::tuple(true, true, false));

    // A shown column that the collection lost is reported; the others are still renumbered.
    columns->Remove("B");
    click(1, 1);
    app->inputAnswers = {"M"};
    trigger("Insert");
    EXPECT_EQ(boxes(*app),
              QStringList{"Critical Resetting Columns array: Naming Error. Column: 4"});
    EXPECT_EQ(c->ColPosition(), 5);
}

TEST_F(ColumnCommandsTest, DeletingAsksTheTemplatesOnlyForAStoredColumnAndOnlyMarksIt) {
    openStoredDocument();
    b->setField(field(12, "b_field"));
    c->setField(field(13, "c_field"));
    query->Answer("a.Field_Id = 13", {Row{{"TemplateId", 5}}});
    app->inputAnswers = {"New"};
    trigger("Add");
    query->log.clear();
    trigger("Delete");
    EXPECT_EQ(columns->Item("New"), nullptr);
    EXPECT_TRUE(query->log.isEmpty()) << "no template check for an unsaved column";
    EXPECT_FALSE(enabled("Right")) << "the current column is the new last one";

    click(3, 1);
    trigger("Delete");
    EXPECT_FALSE(c->ColumnDeleted()) << "a template uses its field";
    ASSERT_EQ(app->msgBoxes.size(), 1);

    rightClick(2, 1);
    trigger("mnuColDelete");
    EXPECT_EQ(std::tuple(b->ColumnDeleted(), columns->Count(), c->ColPosition()),
              std::tuple(true, 3, 2));
    EXPECT_EQ(gridRow(1), QStringList({"A", "C"}));

    // A database failure is reported with the caption and changes nothing.
    editor().setWindowTitle("Orders");
    a->setField(field(11, "a_field"));
    query->FailOn("a.Field_Id", "ORA-03113");
    app->msgBoxes.clear();
    click(1, 1);
    trigger("Delete");
    trigger("Clear");
    EXPECT_EQ(boxes(*app), QStringList(2, "Critical Orders: ORA-03113"));
    EXPECT_EQ(std::tuple(a->ColumnDeleted(), a->Field() != nullptr), std::tuple(false, true));
    EXPECT_TRUE(enabled("Right")) << "the toolbar still follows the current column";
}

TEST_F(ColumnCommandsTest, MovingIsAChangeOnlyWhenTheDatabaseKeepsTheOrder) {
    for (const bool editorPosition : {false, true}) {
        query->editorPosition = editorPosition;
        columns = std::make_shared<CDataSourcesColumns>();
        openStoredDocument();
        click(1, 1);
        EXPECT_FALSE(enabled("Left"));
        trigger("Right");
        EXPECT_EQ(gridRow(1), QStringList({"B", "A", "C"}));
        EXPECT_EQ(changeCount(), editorPosition ? 1 : 0);
        EXPECT_EQ(std::tuple(a->ColPosition(), a->Dirty()), std::tuple(2, true));
        EXPECT_EQ(a->Position(), 1) << "the record position is not the display order";
        EXPECT_EQ(grid().selectionModel()->selectedIndexes().size(), 6);
        EXPECT_EQ(states({"Left", "Right"}), "Left=1 Right=1") << "the moved column stays current";
    }
}

TEST_F(ColumnCommandsTest, ClearingKeepsTheKeyOnlyOfAColumnWithAStoredField) {
    openStoredDocument();
    makeKey(*b, 1, 44);
    b->setField(field(12, "b_field"));
    makeKey(*c, 2, 45);
    editor().InitEdit(columns);

    click(2, 1);
    trigger("Clear");
    click(3, 1);
    trigger("mnuColClear");

    EXPECT_EQ(std::tuple(b->Field() == nullptr, b->KeyDeleted()), std::tuple(true, false));
    EXPECT_TRUE(query->log.join('\n').contains("a.Field_Id = 12"))
        << query->log.join('\n').toStdString();
    EXPECT_TRUE(c->KeyDeleted());
    EXPECT_EQ(c->KeyFld_Id(), 45) << "a stored key goes when the document is saved";
    EXPECT_EQ(gridRow(4) + gridRow(6), QStringList({"", "1", "", "1", "", ""}));
    EXPECT_EQ(c->Position(), 3) << "the model keeps it until the user types one";
    EXPECT_FALSE(enabled("DelKey"));
    EXPECT_FALSE(editor().IsValid("Save")) << "for want of a position";
}

TEST_F(ColumnCommandsTest, ToolbarAndPopUpsFollowTheColumnsKeyAndField) {
    openStoredDocument(true);
    makeKey(*a, 1, 44);
    b->setField(field(12, "stored_field"));
    c->setField(field(0, "new_field"));
    editor().InitEdit(columns);

    EXPECT_EQ(rightClick(1, 1), "mnuColumns: mnuColAdd=1 mnuColInsert=0 mnuColDelete=0 "
                                "mnuColEdit=0 mnuColClear=0 mnuColDetect=0");
    EXPECT_EQ(rightClick(1, 3) + rightClick(1, 5), "") << "the time stamp takes no field or key";

    EXPECT_EQ(rightClick(2, 4), "mnuKeys: mnuKeysAdd=0 mnuKeysEdit=1 mnuKeysDelete=1");
    EXPECT_EQ(rightClick(2, 3), "mnuDropDown: mnuAddField=0 mnuEditField=0 mnuDeleteField=0");
    EXPECT_EQ(states(EditButtons), "Delete=1 ReName=1 Key=1 DelKey=1 Field=0 DelField=0");

    EXPECT_EQ(rightClick(3, 3), "mnuDropDown: mnuAddField=0 mnuEditField=1 mnuDeleteField=0");
    EXPECT_EQ(rightClick(3, 5), "mnuKeys: mnuKeysAdd=0 mnuKeysEdit=0 mnuKeysDelete=0");
    EXPECT_EQ(states(EditButtons), "Delete=1 ReName=1 Key=0 DelKey=0 Field=1 DelField=0")
        << "a stored field goes only with Clear";

    EXPECT_EQ(rightClick(4, 6), "mnuColumns: mnuColAdd=1 mnuColInsert=1 mnuColDelete=1 "
                                "mnuColEdit=1 mnuColClear=1 mnuColDetect=0");
    EXPECT_EQ(states(EditButtons), "Delete=1 ReName=1 Key=0 DelKey=0 Field=1 DelField=1");
    forgetChanges();
    trigger("DelField");
    EXPECT_EQ(std::tuple(c->Field() == nullptr, text(4, 3), changeCount()),
              std::tuple(true, QString(), 1));
    EXPECT_EQ(rightClick(4, 3), "mnuDropDown: mnuAddField=1 mnuEditField=0 mnuDeleteField=0");
    EXPECT_EQ(states(EditButtons), "Delete=1 ReName=1 Key=1 DelKey=0 Field=1 DelField=0");

    EXPECT_EQ(rightClick(), "mnuColumns: mnuColAdd=1 mnuColInsert=0 mnuColDelete=0 mnuColEdit=0 "
                            "mnuColClear=0 mnuColDetect=0");
}

TEST_F(ColumnCommandsTest, DoubleClicksRenameOrAppend) {
    openStoredDocument(true);
    editor().setAppName("ASCII Data Source");

    doubleClick(1, 1);
    doubleClick(2, 6);
    EXPECT_TRUE(app->inputBoxes.isEmpty()) << "the time stamp keeps its name in an ASCII source";

    app->inputAnswers = {"Alpha", "Stamp", "Last"};
    doubleClick(2, 1);
    editor().setAppName("ODBC Data Source");
    doubleClick(1, 1);
    emit grid().verticalHeader()->sectionDoubleClicked(0);
    EXPECT_EQ(gridRow(1), QStringList({"Stamp", "Alpha", "B", "C", "Last"}));
    EXPECT_TRUE(columns->Item("Stamp")->IsTimeStamp());
}

// Detect Columns proposes what the source holds, appends it on OK and never overwrites.
TEST_F(ColumnCommandsTest, DetectProposesAppendsOnOkAndReportsOnlyDifferences) {
    editor().setAppName("ASCII Data Source");
    editor().InitNew(columns);
    EXPECT_FALSE(enabled("Detect"));
    ColumnDetection source;
    source.columns = {{" Cell ", "S", 1}, {"When", "D", 2}, {"Drops", "I", 3}, {"cell", "F", 4}};
    editor().setDetectSource([&source] { return source; });
    forgetChanges();

    QStringList proposed;
    app->modalHandlers = {[&](QDialog& dialog) {
        const auto* model = child<QTableView>(dialog, "grdColumns")->model();
        for (int row = 0; row < model->rowCount(); ++row)
            proposed << model->index(row, 0).data().toString();
        return int(QDialog::Rejected);
    }};
    trigger("Detect");
    EXPECT_EQ(proposed.join('|'), "Time Stamp (moves)|Cell|Drops|cell_2");
    EXPECT_EQ(std::tuple(columnCount(), changeCount()), std::tuple(1, 0));

    app->modalHandlers = {[](QDialog&) { return int(QDialog::Accepted); }};
    trigger("mnuColDetect");
    EXPECT_EQ((gridRow(1) + gridRow(2) + gridRow(6)).join('|'),
              "Time Stamp|Cell|Drops|cell_2|Date|String|Integer|Float|2|1|3|4");
    EXPECT_EQ(changeCount(), 1);

    // A second pass finds only what differs and changes nothing.
    source.columns = {{"Drops", "F", 5}, {"Lost", "I", 1}};
    app->modalHandlers.clear();
    trigger("Detect");
    EXPECT_EQ(std::tuple(columnCount(), changeCount()), std::tuple(4, 1));
    source.error = "The file \"x\" does not exist.";
    trigger("Detect");
    EXPECT_EQ(boxes(*app).join('|'),
              "Information Detect Columns: Column \"Drops\" is at position 3; the source has it at "
              "position 5.\r\nColumn \"Drops\" is Integer; the source's values look Float.\r\n"
              "The source's \"Lost\" at position 1 falls on column \"Cell\".|Exclamation Detect "
              "Columns: The file \"x\" does not exist.");
}

// The key and field commands, through the real key field selector and field editor that the
// fake application's modal handlers fill in. Each handler records what its dialog showed as it
// opened; the fake keeps the last handler for later shows, so a later command starts anew.
class ColumnKeyFieldTest : public ColumnCommandsTest {
protected:
    ColumnKeyFieldTest() {
        columns->setEntity(dictionary->addEntity(5, QStringLiteral("CELL"), "Cell"));
        dictionary->addEntity(6, QStringLiteral("SITE"), "Site");
        siteId = dictionary->addField(20, QStringLiteral("SiteId"), 6);
        siteId->entityLabel = QStringLiteral("Site");
        dictionary->addField(44, QStringLiteral("cell_name"), 5)->entityLabel = "Cell";
    }

    // The stored document with A a key column (ordinal 1) and B a stored field.
    void openStoredDocument(bool withTimeStamp = false) {
        ColumnCommandsTest::openStoredDocument(withTimeStamp);
        makeKey(*a, 1, 44);
        volume->technologies = QStringLiteral("1");
        b->setField(volume);
        editor().InitEdit(columns);
        forgetChanges();
    }

    // The next key selector picks Site's SiteId in the entity tree when asked to, types the
    // ordinal when one is given, and presses OK.
    void keySelectorAnswers(bool chooseSite, const QString& ordinal = QString()) {
        app->modalHandlers.push_back([=, this](QDialog& dialog) {
            auto* txtOrdinal = child<QLineEdit>(dialog, "txtOrdinal");
            opened << "key " + txtOrdinal->text();
            if (chooseSite)
                child<QPushButton>(dialog, "cmdSelect")->click();
            if (!ordinal.isEmpty()) {
                txtOrdinal->selectAll();
                QTest::keyClicks(txtOrdinal, ordinal);
            }
            child<QPushButton>(dialog, "cmdOk")->click();
            return dialog.result();
        });
        if (chooseSite) {
            app->modalHandlers.push_back([this](QDialog& dialog) {
                widgets->lastTree->selectedKey = QStringLiteral("6");
                widgets->lastTree->selectedFields = {siteId};
                child<QPushButton>(dialog, "cmdButton(1)")->click();
                return dialog.result();
            });
        }
    }

    // The next field editor types the name over the old one, makes sure a technology is checked,
    // and presses OK.
    void fieldEditorNames(const QString& name) {
        app->modalHandlers.push_back([=, this](QDialog& dialog) {
            opened << dialog.windowTitle() + " | " +
                          child<QComboBox>(dialog, "cboDataType")->currentText();
            auto* txtName = child<QLineEdit>(dialog, "txtName");
            txtName->selectAll();
            QTest::keyClicks(txtName, name);
            if (widgets->lastTechnologies->TechnologyMask() == 0)
                widgets->lastTechnologies->check(3);
            child<QPushButton>(dialog, "cmdOk")->click();
            return dialog.result();
        });
    }

    // The next command's dialogs start from new handlers and a new record.
    void nextDialogs() {
        app->modalHandlers.clear();
        opened.clear();
    }

    // Every later dialog is cancelled.
    void dialogsAreCancelled() {
        app->modalHandlers.push_back([this](QDialog& dialog) {
            const auto* txtOrdinal = dialog.findChild<QLineEdit*>("txtOrdinal");
            opened << (txtOrdinal ? "key " + txtOrdinal->text() : dialog.windowTitle());
            dialog.reject();
            return dialog.result();
        });
    }

    std::shared_ptr<FakeField> siteId;
    std::shared_ptr<FakeField> volume = field(12, QStringLiteral("Volume"));
    QStringList opened;
};

TEST_F(ColumnKeyFieldTest, AKeyAddedToAStoredColumnIsInsertedAndAnEditedStoredOneUpdated) {
    openStoredDocument();
    click(3, 4);
    keySelectorAnswers(true);

    trigger("Key");

    EXPECT_EQ(std::tuple(c->KeyEntity_Id(), c->KeyFld_Id(), c->KeyAdded(), c->Dirty()),
              std::tuple(6, 20, true, true));
    EXPECT_EQ(text(3, 4) + "|" + text(3, 5), "2|Site: SiteId")
        << "the next free ordinal, as offered; the selector's name alone";
    EXPECT_EQ(std::tuple(changeCount(), enabled("DelKey")), std::tuple(1, true));

    nextDialogs();
    keySelectorAnswers(false, QStringLiteral("5"));
    trigger("mnuKeysEdit");
    EXPECT_EQ(text(3, 4), "5");
    EXPECT_TRUE(c->KeyAdded()) << "still to be inserted however often it is edited";

    click(1, 5);
    nextDialogs();
    keySelectorAnswers(false, QStringLiteral("3"));
    trigger("Key");
    EXPECT_EQ(a->KeyFld_Name() + text(1, 4), "Cell: cell_name3");
    EXPECT_TRUE(a->KeyDirty());

    nextDialogs();
    dialogsAreCancelled();
    a->setKeyDirty(false);
    forgetChanges();
    trigger("mnuKeysEdit");
    EXPECT_EQ(changeCount(), 1) << "a cancelled edit still reports a change";
    EXPECT_FALSE(a->KeyDirty());

    // A move draws the column anew from its model; a loaded key shows its entity.
    click(1, 1);
    trigger("Right");
    EXPECT_EQ(gridRow(5), QStringList({"", "Cell: cell_name", "Site: SiteId"}));
}

// Nor does clearing a field in a new document, even one with stored IDs, mark it for the save.
TEST_F(ColumnKeyFieldTest, KeysOfUnsavedColumnsCarryNoFlagsAndADeletedOneIsWiped) {
    const ColumnPtr copied = stored(*columns, "D", 14, 1);
    copied->setField(field(12, QStringLiteral("Volume")));
    editor().InitNew(columns);
    app->inputAnswers = {"Site"};
    trigger("Add");
    const ColumnPtr site = columns->Item("Site");
    keySelectorAnswers(true);
    doubleClick(3, 5);
    EXPECT_EQ(opened, QStringList{"key 1"});
    EXPECT_FALSE(site->KeyAdded()) << "an unsaved column inserts its key with its row";
    forgetChanges();

    trigger("DelKey");

    EXPECT_EQ(std::tuple(site->Is_Key(), site->KeyDeleted(), changeCount()),
              std::tuple(false, false, 0));
    EXPECT_EQ(text(3, 4) + text(3, 5), "");

    click(2, 1);
    trigger("Clear");
    EXPECT_EQ(std::tuple(copied->Field() == nullptr, copied->FieldDeleted()),
              std::tuple(true, false));
}

TEST_F(ColumnKeyFieldTest, ANewFieldIsAddedUnderANameNotInUseAndAStoredOneMarkedOrUnmapped) {
    openStoredDocument();
    click(3, 3);
    fieldEditorNames(QStringLiteral("VOLUME"));
    fieldEditorNames(QStringLiteral("Drops"));

    trigger("Field");

    EXPECT_EQ(opened, QStringList(2, "Create New Data Source Field For CELL | Float"));
    EXPECT_EQ(boxes(*app), QStringList{"Critical CANNOT USE DUPLICATE FIELD NAMES: Field name is "
                                       "in use.\r\nPlease select a different name."});
    EXPECT_EQ(text(3, 3), "Drops");
    EXPECT_EQ(std::tuple(c->FieldAdded(), c->Dirty(), changeCount()), std::tuple(true, true, 1));
    EXPECT_EQ(rightClick(3, 3), "mnuDropDown: mnuAddField=0 mnuEditField=1 mnuDeleteField=1")
        << "a field added in this edit";
    trigger("mnuDeleteField");
    EXPECT_FALSE(c->FieldDeleted()) << "a new field had no mapping";

    click(2, 3);
    nextDialogs();
    fieldEditorNames(QStringLiteral("Volume2"));
    trigger("Field");
    EXPECT_EQ(opened, QStringList{" Update Data Source Field CELL: Volume | Integer"});
    EXPECT_EQ(std::tuple(b->Field(), b->FieldDirty(), changeCount()), std::tuple(volume, true, 3));
    EXPECT_EQ(text(2, 3), "Volume2");

    b->setFieldAdded(true);
    nextDialogs();
    fieldEditorNames(QStringLiteral("Volume3"));
    trigger("mnuEditField");
    EXPECT_EQ(std::tuple(b->FieldAdded(), b->FieldDirty()), std::tuple(true, false));
    EXPECT_EQ(text(2, 3), "Volume3");

    nextDialogs();
    dialogsAreCancelled();
    trigger("Field");
    EXPECT_EQ(changeCount(), 4) << "a cancelled field edit changes nothing";

    // Clearing unmaps a stored field of a stored column in a stored document.
    click(2, 1);
    trigger("Clear");
    EXPECT_EQ(std::tuple(b->Field() == nullptr, b->FieldDeleted()), std::tuple(true, true));
}

TEST_F(ColumnKeyFieldTest, DoubleClicksOnFieldAndKeyRowsOpenTheRightDialog) {
    openStoredDocument(true);
    dialogsAreCancelled();
    const auto open = [this](int column, int row) {
        const qsizetype before = opened.size();
        doubleClick(column, row);
        return opened.size() == before ? QString() : opened.last();
    };

    EXPECT_EQ(open(4, 3), "Create New Data Source Field For CELL");
    EXPECT_EQ(open(3, 3), " Update Data Source Field CELL: Volume");
    EXPECT_EQ(open(2, 3), "") << "a live key takes no field";
    EXPECT_EQ(open(2, 4), "key 1") << "the key is edited";
    EXPECT_EQ(open(4, 5), "key 2") << "a key is added with the next free ordinal";
    EXPECT_EQ(open(3, 4), "") << "a column with a field takes no key";
    EXPECT_EQ(open(1, 3) + open(1, 4) + open(4, 2), "");
}

} // namespace
} // namespace Orvane::Testing
