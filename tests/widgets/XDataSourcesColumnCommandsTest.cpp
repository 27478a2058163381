#include "orvane/sources/ColumnDetector.h"
#include "tests/widgets/ColumnEditorFixture.h"

#include <QDialog>
#include <QHeaderView>

namespace Orvane::Testing {
namespace {

const QStringList Buttons = {"Delete", "ReName", "Key", "DelKey", "Field", "DelField"};

class ColumnCommandsTest : public ColumnEditorTest {
protected:
    // A stored document with columns A, B and C at positions 1 to 3, after a time stamp (ID 10,
    // position 4) when asked for one.
    void openStoredDocument(bool withTimeStamp = false) {
        if (withTimeStamp)
            stored(*columns, "Time Stamp", 10, 4, "D")->setIsTimeStamp(true);
        a = stored(*columns, "A", 11, 1);
        b = stored(*columns, "B", 12, 2);
        c = stored(*columns, "C", 13, 3);
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
    EXPECT_EQ(text(2, 2) + text(2, 6), "Integer2");
    const ColumnPtr added = columns->Item("abcde");
    EXPECT_EQ(added->Column_Type(), "I");
    EXPECT_EQ(added->ColPosition(), 2);
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
    EXPECT_EQ(gridRow(1), QStringList({"B", "A", "C"}));
    EXPECT_EQ(gridRow(6), QStringList({"2", "1", "3"}));
    EXPECT_FALSE(b->ColumnDeleted());
    EXPECT_TRUE(b->Dirty());
    EXPECT_EQ(a->ColPosition(), 2);
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
    EXPECT_EQ(columns->Count(), 3);
    EXPECT_EQ(gamma->Column_Id(), 12) << "the save updates the stored row";
    EXPECT_TRUE(gamma->Dirty());
    EXPECT_EQ(gamma->ColPosition(), 2);
    EXPECT_EQ(changeCount(), 4) << "each named run reports a change, the refused one too";
}

TEST_F(ColumnCommandsTest, InsertPutsTheColumnBeforeTheCurrentOneAndRenumbers) {
    openStoredDocument();
    click(2, 1);
    app->inputAnswers = {"N"};

    trigger("Insert");

    EXPECT_EQ(gridRow(1), QStringList({"A", "N", "B", "C"}));
    EXPECT_EQ(columns->Item("N")->Position(), 4);
    EXPECT_EQ(c->ColPosition(), 4);
    EXPECT_TRUE(b->Dirty() && c->Dirty());
    EXPECT_FALSE(a->Dirty());

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
    EXPECT_TRUE(b->ColumnDeleted());
    EXPECT_EQ(columns->Count(), 3);
    EXPECT_EQ(gridRow(1), QStringList({"A", "C"}));
    EXPECT_EQ(c->ColPosition(), 2);

    // A database failure is reported with the caption and changes nothing.
    editor().setWindowTitle("Orders");
    a->setField(field(11, "a_field"));
    query->FailOn("a.Field_Id", "ORA-03113");
    app->msgBoxes.clear();
    click(1, 1);
    trigger("Delete");
    trigger("Clear");
    EXPECT_EQ(boxes(*app), QStringList(2, "Critical Orders: ORA-03113"));
    EXPECT_FALSE(a->ColumnDeleted());
    EXPECT_NE(a->Field(), nullptr);
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
        EXPECT_EQ(a->ColPosition(), 2);
        EXPECT_TRUE(a->Dirty());
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

    EXPECT_EQ(b->Field(), nullptr);
    EXPECT_FALSE(b->KeyDeleted());
    EXPECT_TRUE(query->log.join('\n').contains("a.Field_Id = 12"));
    EXPECT_TRUE(c->KeyDeleted());
    EXPECT_EQ(c->KeyFld_Id(), 45) << "a stored key goes when the document is saved";
    EXPECT_EQ(gridRow(4), QStringList({"", "1", ""}));
    EXPECT_EQ(gridRow(6), QStringList({"1", "", ""}));
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
    EXPECT_EQ(states(Buttons), "Delete=1 ReName=1 Key=1 DelKey=1 Field=0 DelField=0");

    EXPECT_EQ(rightClick(3, 3), "mnuDropDown: mnuAddField=0 mnuEditField=1 mnuDeleteField=0");
    EXPECT_EQ(rightClick(3, 5), "mnuKeys: mnuKeysAdd=0 mnuKeysEdit=0 mnuKeysDelete=0");
    EXPECT_EQ(states(Buttons), "Delete=1 ReName=1 Key=0 DelKey=0 Field=1 DelField=0")
        << "a stored field goes only with Clear";

    EXPECT_EQ(rightClick(4, 6), "mnuColumns: mnuColAdd=1 mnuColInsert=1 mnuColDelete=1 "
                                "mnuColEdit=1 mnuColClear=1 mnuColDetect=0");
    EXPECT_EQ(states(Buttons), "Delete=1 ReName=1 Key=0 DelKey=0 Field=1 DelField=1");
    forgetChanges();
    trigger("DelField");
    EXPECT_EQ(c->Field(), nullptr);
    EXPECT_EQ(text(4, 3), "");
    EXPECT_EQ(changeCount(), 1);
    EXPECT_EQ(rightClick(4, 3), "mnuDropDown: mnuAddField=1 mnuEditField=0 mnuDeleteField=0");
    EXPECT_EQ(states(Buttons), "Delete=1 ReName=1 Key=1 DelKey=0 Field=1 DelField=0");

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
    source.error = "The file \"x\" does not exist.";
    trigger("Detect");
    EXPECT_EQ(boxes(*app).join('|'),
              "Information Detect Columns: Column \"Drops\" is at position 3; the source has it at "
              "position 5.\r\nColumn \"Drops\" is Integer; the source's values look Float.\r\n"
              "The source's \"Lost\" at position 1 falls on column \"Cell\".|Exclamation Detect "
              "Columns: The file \"x\" does not exist.");
}

} // namespace
} // namespace Orvane::Testing
