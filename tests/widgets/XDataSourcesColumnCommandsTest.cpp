#include "tests/widgets/ColumnEditorFixture.h"

#include <QHeaderView>

namespace Orvane::Testing {
namespace {

class ColumnCommandsTest : public ColumnEditorTest {
protected:
    // A stored document with columns A, B and C at positions 1 to 3.
    void openStoredDocument() {
        a = stored(*columns, "A", 11, 1);
        b = stored(*columns, "B", 12, 2);
        c = stored(*columns, "C", 13, 3);
        editor().InitEdit(columns);
        forgetChanges();
    }
    QStringList gridNames() {
        QStringList names;
        for (int column = 1; column <= grid().columnCount(); ++column)
            names << text(column, 1);
        return names;
    }

    ColumnPtr a, b, c;
};

TEST_F(ColumnCommandsTest, AppendAsksForANameAndAddsTheColumnAtTheEnd) {
    editor().InitNew(columns);
    forgetChanges();
    app->inputAnswers = {"  Calls  "};

    trigger("Add");

    EXPECT_EQ(prompts(), QStringList({"Please enter column name | ADDING COLUMN"}));
    ASSERT_EQ(grid().columnCount(), 2);
    EXPECT_EQ(text(2, 1), "Calls");
    EXPECT_EQ(text(2, 2), "Integer");
    EXPECT_EQ(text(2, 6), "2");
    const ColumnPtr calls = columns->Item("Calls");
    ASSERT_NE(calls, nullptr);
    EXPECT_EQ(calls->Column_Type(), "Integer");
    EXPECT_EQ(calls->Position(), 2);
    EXPECT_EQ(calls->ColPosition(), 2);
    EXPECT_GE(changeCount(), 1);
    // The new column is the current one: it is last, so it cannot move right.
    EXPECT_TRUE(enabled("Left"));
    EXPECT_FALSE(enabled("Right"));
    EXPECT_TRUE(enabled("Delete"));
}

TEST_F(ColumnCommandsTest, ANameLongerThanTheDatabaseAllowsIsRefused) {
    query->colNameWidth = 5;
    editor().InitNew(columns);
    app->inputAnswers = {"abcdef", "abcde"};

    trigger("Add");

    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].prompt, "Column name must be 40 characters or fewer.");
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Exclamation);
    EXPECT_EQ(app->inputBoxes.size(), 2);
    EXPECT_EQ(columns->Item("abcdef"), nullptr);
    EXPECT_NE(columns->Item("abcde"), nullptr) << "a name of exactly the width fits";
}

TEST_F(ColumnCommandsTest, ANameInUseIsRefusedAndTheAskingStartsOver) {
    openStoredDocument();
    click(2, 1);
    app->inputAnswers = {"a", ""};

    trigger("ReName");

    EXPECT_EQ(messages(),
              QStringList({"This column name is already in use.  Please enter a unique name."}));
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
    // Even when renaming, the second question is the plain adding one.
    EXPECT_EQ(prompts(), QStringList({"Please enter new column name | RENAMING COLUMN",
                                      "Please enter column name | ADDING COLUMN"}));
    EXPECT_EQ(gridNames(), QStringList({"A", "B", "C"}));
    EXPECT_EQ(changeCount(), 1) << "a name was given, so the run reports a change";
}

TEST_F(ColumnCommandsTest, AppendingTheNameOfADeletedColumnOffersToRestoreIt) {
    openStoredDocument();
    b->setPosition(5);
    click(2, 1);
    trigger("Delete");
    ASSERT_TRUE(b->ColumnDeleted());
    ASSERT_EQ(gridNames(), QStringList({"A", "C"}));

    click(1, 1);
    app->inputAnswers = {"b", "B"};
    app->msgBoxAnswers = {MsgBoxResult::No, MsgBoxResult::Yes};
    trigger("Add");

    EXPECT_EQ(prompts(), QStringList({"Please enter column name | ADDING COLUMN",
                                      "Please enter a unique column name | COLUMN NAME EXISTS"}));
    ASSERT_EQ(app->msgBoxes.size(), 2);
    EXPECT_EQ(app->msgBoxes[1].prompt, "Do you wish to restore the existing column?");
    EXPECT_EQ(app->msgBoxes[1].buttons, MsgBoxButtons::YesNo);
    EXPECT_EQ(app->msgBoxes[1].title, "COLUMN NAME EXISTS");
    // Back before the current column, unmarked, at the first free position, not its old one.
    EXPECT_EQ(gridNames(), QStringList({"B", "A", "C"}));
    EXPECT_FALSE(b->ColumnDeleted());
    EXPECT_TRUE(b->Dirty());
    EXPECT_EQ(b->Position(), 2);
    EXPECT_EQ(text(1, 6), "2");
    EXPECT_EQ(b->ColPosition(), 1);
    EXPECT_EQ(a->ColPosition(), 2);
    EXPECT_EQ(columns->Count(), 3);
}

TEST_F(ColumnCommandsTest, RenamingAStoredColumnKeepsItsRowAndMarksItDirty) {
    openStoredDocument();
    makeKey(*b, 1, 44);
    b->setField(field(0, "b_field"));
    click(2, 1);
    app->inputAnswers = {"Beta"};

    trigger("ReName");

    EXPECT_EQ(prompts(), QStringList({"Please enter new column name | RENAMING COLUMN"}));
    EXPECT_EQ(columns->Item("B"), nullptr);
    const ColumnPtr beta = columns->Item("Beta");
    ASSERT_NE(beta, nullptr);
    EXPECT_EQ(beta->Column_Id(), 12);
    EXPECT_TRUE(beta->Dirty());
    EXPECT_EQ(beta->Position(), 2);
    EXPECT_EQ(beta->ColPosition(), 2);
    EXPECT_EQ(beta->Key_Ordinal(), 1);
    EXPECT_EQ(beta->KeyFld_Id(), 44);
    EXPECT_EQ(beta->Field_Name(), "b_field");
    EXPECT_EQ(gridNames(), QStringList({"A", "Beta", "C"}));
    EXPECT_GE(changeCount(), 1);

    // The editor now acts on the renamed column.
    app->inputAnswers = {"Gamma"};
    trigger("ReName");
    EXPECT_NE(columns->Item("Gamma"), nullptr);
    EXPECT_EQ(columns->Item("Gamma")->Column_Id(), 12);
}

TEST_F(ColumnCommandsTest, RenamingInANewDocumentKeepsTheDirtyFlag) {
    editor().InitNew(columns);
    app->inputAnswers = {"A", "Alpha"};
    trigger("Add");
    trigger("ReName");
    const ColumnPtr alpha = columns->Item("Alpha");
    ASSERT_NE(alpha, nullptr);
    EXPECT_FALSE(alpha->Dirty());
    EXPECT_EQ(alpha->Column_Type(), "Integer");
}

TEST_F(ColumnCommandsTest, InsertPutsTheColumnBeforeTheCurrentOneAndRenumbers) {
    openStoredDocument();
    click(2, 1);
    app->inputAnswers = {"N"};

    trigger("Insert");

    EXPECT_EQ(gridNames(), QStringList({"A", "N", "B", "C"}));
    const ColumnPtr n = columns->Item("N");
    EXPECT_EQ(n->ColPosition(), 2);
    EXPECT_EQ(n->Position(), 4);
    EXPECT_EQ(b->ColPosition(), 3);
    EXPECT_EQ(c->ColPosition(), 4);
    EXPECT_TRUE(b->Dirty());
    EXPECT_TRUE(c->Dirty());
    EXPECT_FALSE(a->Dirty());
    EXPECT_GE(changeCount(), 1);
}

TEST_F(ColumnCommandsTest, DeletingAnUnsavedColumnRemovesItWithoutAsking) {
    openStoredDocument();
    app->inputAnswers = {"New"};
    trigger("Add");
    app->msgBoxes.clear();
    query->clearLog();

    trigger("Delete");

    EXPECT_EQ(columns->Item("New"), nullptr);
    EXPECT_TRUE(app->msgBoxes.isEmpty());
    EXPECT_TRUE(query->log.isEmpty()) << "no template check for an unsaved column";
    EXPECT_EQ(gridNames(), QStringList({"A", "B", "C"}));
    EXPECT_FALSE(enabled("Right")) << "the current column is the new last one";
}

TEST_F(ColumnCommandsTest, DeletingAStoredColumnAsksTheTemplatesAndOnlyMarksIt) {
    openStoredDocument();
    b->setField(field(12, "b_field"));
    c->setField(field(13, "c_field"));
    query->Answer("a.Field_Id = 13", {Row{{"TemplateId", 5}}});

    click(3, 1);
    trigger("Delete");
    EXPECT_FALSE(c->ColumnDeleted()) << "a template uses its field";
    EXPECT_EQ(gridNames(), QStringList({"A", "B", "C"}));
    EXPECT_EQ(app->msgBoxes.size(), 1);

    click(2, 1);
    trigger("Delete");
    EXPECT_TRUE(b->ColumnDeleted());
    EXPECT_EQ(columns->Count(), 3);
    EXPECT_EQ(gridNames(), QStringList({"A", "C"}));
    EXPECT_EQ(c->ColPosition(), 2);
    EXPECT_EQ(changeCount(), 1);
}

TEST_F(ColumnCommandsTest, MovingChangesNothingToSaveWithoutEditorPosition) {
    query->editorPosition = false;
    openStoredDocument();
    click(1, 1);
    EXPECT_FALSE(enabled("Left"));

    trigger("Right");

    EXPECT_EQ(gridNames(), QStringList({"B", "A", "C"}));
    EXPECT_EQ(changeCount(), 0);
    EXPECT_EQ(a->ColPosition(), 2);
    EXPECT_EQ(b->ColPosition(), 1);
    EXPECT_EQ(a->Position(), 1) << "the record position is not the display order";
    // The moved column stays current, now second.
    EXPECT_TRUE(enabled("Left"));
    EXPECT_TRUE(enabled("Right"));
}

TEST_F(ColumnCommandsTest, MovingIsAChangeWhenTheDatabaseKeepsTheOrder) {
    openStoredDocument();
    click(3, 1);
    EXPECT_FALSE(enabled("Right"));

    trigger("Left");

    EXPECT_EQ(gridNames(), QStringList({"A", "C", "B"}));
    EXPECT_EQ(changeCount(), 1);
    EXPECT_TRUE(c->Dirty());
    EXPECT_EQ(grid().selectedItems().size(), 6) << "the whole moved column is selected";
}

TEST_F(ColumnCommandsTest, ClearingAColumnWithAStoredFieldKeepsItsKey) {
    openStoredDocument();
    makeKey(*b, 1, 44);
    b->setField(field(12, "b_field"));
    editor().InitEdit(columns);

    click(2, 1);
    trigger("Clear");

    EXPECT_EQ(b->Field(), nullptr);
    EXPECT_EQ(text(2, 3), "");
    EXPECT_EQ(text(2, 4), "1");
    EXPECT_FALSE(b->KeyDeleted());
    EXPECT_EQ(text(2, 6), "");
    EXPECT_EQ(b->Position(), 2) << "the model keeps its position until the user types one";
    EXPECT_TRUE(query->log.join('\n').contains("a.Field_Id = 12"));
}

TEST_F(ColumnCommandsTest, ClearingAKeyColumnDeletesItsKey) {
    openStoredDocument();
    makeKey(*b, 1, 44);
    editor().InitEdit(columns);
    forgetChanges();

    click(2, 1);
    EXPECT_TRUE(enabled("DelKey"));
    trigger("Clear");

    EXPECT_TRUE(b->KeyDeleted());
    EXPECT_EQ(b->KeyFld_Id(), 44) << "a stored key goes when the document is saved";
    EXPECT_EQ(text(2, 4), "");
    EXPECT_EQ(text(2, 5), "");
    EXPECT_FALSE(enabled("DelKey"));
    EXPECT_GE(changeCount(), 1);
}

TEST_F(ColumnCommandsTest, DeletingAKeyInANewDocumentWipesIt) {
    editor().InitNew(columns);
    app->inputAnswers = {"Site"};
    trigger("Add");
    const ColumnPtr site = columns->Item("Site");
    makeKey(*site, 1, 44);
    click(2, 4);
    forgetChanges();

    trigger("DelKey");

    EXPECT_FALSE(site->Is_Key());
    EXPECT_EQ(site->Key_Ordinal(), 0);
    EXPECT_EQ(site->PK_Id(), 0);
    EXPECT_TRUE(site->KeyFld_Name().isEmpty());
    EXPECT_FALSE(site->KeyDeleted());
    EXPECT_EQ(changeCount(), 0);
}

TEST_F(ColumnCommandsTest, ToolbarFollowsTheColumnsKeyAndField) {
    openStoredDocument();
    makeKey(*a, 1, 44);
    b->setField(field(12, "stored_field"));
    c->setField(field(0, "new_field"));
    editor().InitEdit(columns);

    click(1, 1); // a live key, no field
    EXPECT_TRUE(enabled("Key"));
    EXPECT_TRUE(enabled("DelKey"));
    EXPECT_FALSE(enabled("Field"));
    EXPECT_FALSE(enabled("DelField"));
    EXPECT_TRUE(enabled("Delete"));
    EXPECT_TRUE(enabled("ReName"));

    click(2, 1); // a stored field goes only with Clear
    EXPECT_FALSE(enabled("Key"));
    EXPECT_FALSE(enabled("DelKey"));
    EXPECT_TRUE(enabled("Field"));
    EXPECT_FALSE(enabled("DelField"));

    click(3, 1); // a field not yet stored
    EXPECT_TRUE(enabled("DelField"));
    forgetChanges();
    trigger("DelField");
    EXPECT_EQ(c->Field(), nullptr);
    EXPECT_EQ(text(3, 3), "");
    EXPECT_EQ(changeCount(), 1);
    EXPECT_TRUE(enabled("Key"));
    EXPECT_FALSE(enabled("DelField"));
}

TEST_F(ColumnCommandsTest, PopUpMenusFollowTheRowAndTheColumn) {
    const ColumnPtr ts = stored(*columns, "Time Stamp", 10, 4, "D");
    ts->setIsTimeStamp(true);
    openStoredDocument();
    makeKey(*a, 1, 44);
    b->setField(field(12, "stored_field"));
    editor().InitEdit(columns);

    rightClick(1, 1); // the time-stamp column
    EXPECT_EQ(shownMenu(), "mnuColumns");
    EXPECT_TRUE(enabled("mnuColAdd"));
    for (const char* item : {"mnuColInsert", "mnuColDelete", "mnuColEdit", "mnuColClear"})
        EXPECT_FALSE(enabled(item)) << item;
    rightClick(1, 3);
    EXPECT_EQ(shownMenu(), "") << "no field menu on the time stamp";
    rightClick(1, 5);
    EXPECT_EQ(shownMenu(), "");

    rightClick(2, 4); // key column A
    EXPECT_EQ(shownMenu(), "mnuKeys");
    EXPECT_FALSE(enabled("mnuKeysAdd"));
    EXPECT_TRUE(enabled("mnuKeysEdit"));
    EXPECT_TRUE(enabled("mnuKeysDelete"));
    rightClick(2, 3);
    EXPECT_EQ(shownMenu(), "mnuDropDown");
    for (const char* item : {"mnuAddField", "mnuEditField", "mnuDeleteField"})
        EXPECT_FALSE(enabled(item)) << "a live key takes no field: " << item;

    rightClick(3, 3); // B with a stored field, in a stored document
    EXPECT_EQ(shownMenu(), "mnuDropDown");
    EXPECT_FALSE(enabled("mnuAddField"));
    EXPECT_TRUE(enabled("mnuEditField"));
    EXPECT_FALSE(enabled("mnuDeleteField"));
    rightClick(3, 5);
    EXPECT_EQ(shownMenu(), "mnuKeys");
    for (const char* item : {"mnuKeysAdd", "mnuKeysEdit", "mnuKeysDelete"})
        EXPECT_FALSE(enabled(item)) << "a column with a field takes no key: " << item;

    rightClick(4, 3); // C, plain
    EXPECT_EQ(shownMenu(), "mnuDropDown");
    EXPECT_TRUE(enabled("mnuAddField"));
    rightClick(4, 6);
    EXPECT_EQ(shownMenu(), "mnuColumns");
    for (const char* item : {"mnuColInsert", "mnuColDelete", "mnuColEdit", "mnuColClear"})
        EXPECT_TRUE(enabled(item)) << item;

    rightClickBesideCells();
    EXPECT_EQ(shownMenu(), "mnuColumns");
    EXPECT_TRUE(enabled("mnuColAdd"));
    EXPECT_FALSE(enabled("mnuColDelete"));
}

TEST_F(ColumnCommandsTest, MenuItemsRunTheCommandsOnTheClickedColumn) {
    openStoredDocument();
    rightClick(3, 1);
    ASSERT_EQ(shownMenu(), "mnuColumns");
    trigger("mnuColDelete");
    EXPECT_TRUE(c->ColumnDeleted());

    rightClick(1, 2);
    shownMenu();
    app->inputAnswers = {"Z"};
    trigger("mnuColInsert");
    EXPECT_EQ(gridNames(), QStringList({"Z", "A", "B"}));
}

TEST_F(ColumnCommandsTest, DoubleClicksRenameOrAppend) {
    const ColumnPtr ts = stored(*columns, "Time Stamp", 10, 4, "D");
    ts->setIsTimeStamp(true);
    openStoredDocument();
    editor().setAppName("ASCII Data Source");

    doubleClick(1, 1);
    EXPECT_TRUE(app->inputBoxes.isEmpty()) << "the time stamp keeps its name in an ASCII source";

    app->inputAnswers = {"Alpha"};
    doubleClick(2, 1);
    EXPECT_EQ(prompts(), QStringList({"Please enter new column name | RENAMING COLUMN"}));
    EXPECT_EQ(text(2, 1), "Alpha");

    editor().setAppName("ODBC Data Source");
    app->inputAnswers = {"Stamp"};
    doubleClick(1, 1);
    EXPECT_EQ(text(1, 1), "Stamp");
    EXPECT_TRUE(columns->Item("Stamp")->IsTimeStamp());

    app->inputBoxes.clear();
    doubleClick(2, 6);
    EXPECT_TRUE(app->inputBoxes.isEmpty());

    app->inputAnswers = {"Last"};
    emit grid().verticalHeader()->sectionDoubleClicked(0);
    EXPECT_EQ(text(grid().columnCount(), 1), "Last");
}

TEST_F(ColumnCommandsTest, AGridColumnWithoutAModelColumnIsReported) {
    openStoredDocument();
    columns->Remove("B");
    click(1, 1);
    app->inputAnswers = {"N"};

    trigger("Insert");

    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].prompt, "Naming Error. Column: 3");
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
    EXPECT_EQ(app->msgBoxes[0].title, "Resetting Columns array");
    EXPECT_EQ(c->ColPosition(), 4) << "the others are still renumbered";
}

} // namespace
} // namespace Orvane::Testing
