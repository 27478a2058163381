#include "tests/widgets/ColumnEditorFixture.h"

namespace Orvane::Testing {
namespace {

class ColumnValidationTest : public ColumnEditorTest {
protected:
    // Validates and returns the one message shown.
    QString failure() {
        EXPECT_FALSE(editor().IsValid("Save Data Source"));
        EXPECT_EQ(app->msgBoxes.size(), 1);
        if (app->msgBoxes.isEmpty())
            return QString();
        const RecordedMsgBox box = app->msgBoxes.takeFirst();
        EXPECT_EQ(box.title, "Save Data Source");
        EXPECT_EQ(box.icon, MsgBoxIcon::Exclamation);
        EXPECT_EQ(box.buttons, MsgBoxButtons::OKOnly);
        return box.prompt;
    }
    // The one selected cell as "column,row" (1-based), or "none".
    QString selectedCell() {
        const QList<QTableWidgetItem*> selected = grid().selectedItems();
        if (selected.isEmpty())
            return QStringLiteral("none");
        EXPECT_EQ(selected.size(), 1);
        EXPECT_EQ(grid().currentItem(), selected.first()) << "the selected cell is the active one";
        return QStringLiteral("%1,%2")
            .arg(selected.first()->column() + 1)
            .arg(selected.first()->row() + 1);
    }
    void setText(int column, int row, const QString& value) {
        grid().item(row - 1, column - 1)->setText(value);
    }
};

TEST_F(ColumnValidationTest, AGoodLayoutPassesSilently) {
    const ColumnPtr site = stored(*columns, "Site", 1, 1);
    makeKey(*site, 1, 44);
    stored(*columns, "Calls", 2, 501)->setField(field(12, "calls"));
    stored(*columns, "Drops", 3, 3);
    stored(*columns, "Setups", 4, 4);
    editor().InitEdit(columns);

    EXPECT_TRUE(editor().IsValid("Save Data Source")) << "501 passes: only the lower bound counts";
    EXPECT_TRUE(app->msgBoxes.isEmpty());
}

TEST_F(ColumnValidationTest, AnEmptyLayoutNeedsAColumn) {
    editor().InitEdit(columns);
    EXPECT_EQ(failure(), "At least one column must be defined");
}

TEST_F(ColumnValidationTest, EachGridColumnNeedsANameAndAPosition) {
    stored(*columns, "A", 1, 1);
    stored(*columns, "B", 2, 0);
    editor().InitEdit(columns);
    click(1, 1);

    EXPECT_EQ(failure(), "Column 2 has no position specified.\r\n"
                         "A unique position between 1 and 500 must be specified");
    EXPECT_EQ(selectedCell(), "2,6");

    setText(2, 6, "2");
    setText(1, 1, "");
    EXPECT_EQ(failure(), "Column 1 has no name.  Please provide a name or delete the column.");
    EXPECT_EQ(selectedCell(), "1,1");
}

TEST_F(ColumnValidationTest, AClearedPositionCellFails) {
    stored(*columns, "A", 1, 1);
    editor().InitEdit(columns);
    click(1, 1);
    trigger("Clear");
    EXPECT_EQ(failure(), "Column 1 has no position specified.\r\n"
                         "A unique position between 1 and 500 must be specified");
}

TEST_F(ColumnValidationTest, FieldNamesMustDifferRegardlessOfCase) {
    stored(*columns, "A", 1, 1);
    stored(*columns, "B", 2, 2)->setField(field(12, "calls"));
    stored(*columns, "C", 3, 3);
    stored(*columns, "D", 4, 4)->setField(field(13, "CALLS"));
    editor().InitEdit(columns);

    EXPECT_EQ(failure(), "Column 2 and column 4 have duplicate field names specified.\r\n"
                         "Each field must have a unique name.");
    EXPECT_EQ(selectedCell(), "none");
}

TEST_F(ColumnValidationTest, TheFirstFailingGridColumnWins) {
    stored(*columns, "A", 1, 1)->setField(field(12, "calls"));
    stored(*columns, "B", 2, 2)->setField(field(13, "Calls"));
    stored(*columns, "", 3, 3);
    editor().InitEdit(columns);

    EXPECT_EQ(failure(), "Column 1 and column 2 have duplicate field names specified.\r\n"
                         "Each field must have a unique name.");
}

TEST_F(ColumnValidationTest, KeyOrdinalsMustBeUnique) {
    stored(*columns, "A", 1, 1);
    const ColumnPtr first = stored(*columns, "First", 2, 2);
    const ColumnPtr second = stored(*columns, "Second", 3, 3);
    makeKey(*first, 1, 44);
    makeKey(*second, 1, 45);
    editor().InitEdit(columns);

    EXPECT_EQ(failure(), "Column Second has a duplicate key specified.");
    EXPECT_EQ(selectedCell(), "3,4");

    // A deleted key frees its ordinal.
    click(3, 1);
    trigger("DelKey");
    EXPECT_TRUE(editor().IsValid("Save Data Source"));
}

TEST_F(ColumnValidationTest, AKeyColumnNeedsItsKeyField) {
    stored(*columns, "A", 1, 1);
    makeKey(*stored(*columns, "K", 2, 2), 1, 44);
    editor().InitEdit(columns);
    setText(2, 5, "");

    EXPECT_EQ(failure(), "Column K is missing a key field.");
    EXPECT_EQ(selectedCell(), "2,5");
}

TEST_F(ColumnValidationTest, ADeletedKeyColumnDoesNotBlockTheSave) {
    stored(*columns, "A", 1, 1);
    makeKey(*stored(*columns, "K", 2, 2), 1, 44);
    editor().InitEdit(columns);
    click(2, 1);
    trigger("Delete");

    EXPECT_TRUE(editor().IsValid("Save Data Source"));
}

TEST_F(ColumnValidationTest, PositionsMustBeUnique) {
    stored(*columns, "A", 1, 1);
    stored(*columns, "B", 2, 3);
    stored(*columns, "C", 3, 3);
    editor().InitEdit(columns);

    EXPECT_EQ(failure(), "Column B has a duplicate position spceified.\r\n"
                         "A unique position between 1 and 500 must be specified");
    EXPECT_EQ(selectedCell(), "2,6");
}

} // namespace
} // namespace Orvane::Testing
