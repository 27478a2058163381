#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace Orvane::Testing {
namespace {

const QString RangeMessage = "None Select Key Field: A unique Ordinal between 1 and 500 must be "
                             "chosen.";
const QString NoFieldMessage = "None Select Key Field: A key field has not been selected";

class KeySelectorTest : public FakeHostTest {
protected:
    KeySelectorTest() {
        columns.setEntity(dictionary->addEntity(5, "CELL", "Cell"));
        addKey("A", 10, 1);
        addKey("B", 11, 2);
        addKey("C", 12, 3)->setColumnDeleted(true);
        dictionary->addField(10, "CellId", 5)->entityLabel = "Cell";
    }

    CDataSourcesColumns::ColumnPtr addKey(const char* name, qint32 fieldId, qint32 ordinal) {
        auto column = columns.Add(QString::fromLatin1(name));
        column->setKeyFld_Id(fieldId);
        column->setKey_Ordinal(ordinal);
        return column;
    }

    void open(qint32 ordinal, qint32 fieldId) {
        dialog.setColumns(&columns);
        dialog.Initialize(ordinal, fieldId);
        showActive(dialog);
    }

    QLineEdit* ordinalBox() { return child<QLineEdit>(dialog, "txtOrdinal"); }
    QSpinBox* upDown() { return child<QSpinBox>(dialog, "udOrdinal"); }
    QPushButton* button(const char* name) { return child<QPushButton>(dialog, name); }

    void typeOrdinal(const QString& text) {
        ordinalBox()->selectAll();
        QTest::keyClick(ordinalBox(), Qt::Key_Delete);
        QTest::keyClicks(ordinalBox(), text);
    }

    // Presses OK and returns the messages shown, none when the dialog closed.
    QString pressOk() {
        app->msgBoxes.clear();
        QTest::mouseClick(button("cmdOk"), Qt::LeftButton);
        return boxes(*app).join('|');
    }

    CDataSourcesColumns columns;
    frmKeySelector dialog;
};

// The ordinal lies between 1 and 500 and is no other live key's; then a key field is needed.
TEST_F(KeySelectorTest, OkChecksTheOrdinalThenTheKeyField) {
    const struct {
        const char* ordinal;
        QString message;
    } cases[] = {
        {"0", RangeMessage},   {"501", RangeMessage},
        {"", RangeMessage},    {"1", "None Select Key Field: Ordinal 1 is already in use"},
        {"3", NoFieldMessage}, // a deleted key column's ordinal is free
        {"2", NoFieldMessage}, // its own ordinal is not tested against the columns
    };
    open(2, 0);
    EXPECT_FALSE(button("cmdOk")->isEnabled());
    for (const auto& c : cases) {
        SCOPED_TRACE(c.ordinal);
        typeOrdinal(c.ordinal);
        ASSERT_EQ(pressOk(), c.message);
        EXPECT_EQ(QApplication::focusWidget()->objectName(),
                  c.message == NoFieldMessage ? "cmdSelect" : "txtOrdinal");
        EXPECT_TRUE(dialog.isVisible() && dialog.Cancel());
    }
}

// The ordinal box takes digits only and follows the arrows.
TEST_F(KeySelectorTest, TheKeyFieldGivenIsShownAndAcceptedAndCancelChangesNothing) {
    open(499, 10);
    EXPECT_EQ(child<QLineEdit>(dialog, "txtField")->text(), "Cell: CellId");
    EXPECT_EQ(upDown()->value(), 499);
    EXPECT_EQ(dialog.FieldId(), 10);
    EXPECT_EQ(dialog.EntityID(), 0);
    QTest::mouseClick(button("cmdSelect"), Qt::LeftButton); // no handler: the tree is cancelled
    EXPECT_EQ(dialog.FieldName(), "Cell: CellId");
    EXPECT_FALSE(button("cmdOk")->isEnabled());

    QTest::keyClicks(ordinalBox(), "x -");
    QTest::keyClick(ordinalBox(), Qt::Key_Backspace);
    EXPECT_EQ(ordinalBox()->text(), "499");
    QTest::keyClick(ordinalBox(), Qt::Key_Home);
    QTest::keyClick(ordinalBox(), Qt::Key_Delete);
    EXPECT_EQ(dialog.Ordinal(), 99);
    EXPECT_EQ(upDown()->value(), 99);
    typeOrdinal("499");
    upDown()->stepUp();
    upDown()->stepUp();
    EXPECT_EQ(ordinalBox()->text(), "500");
    EXPECT_TRUE(button("cmdOk")->isEnabled());
    EXPECT_EQ(pressOk(), QString());
    EXPECT_FALSE(dialog.Cancel());
    EXPECT_EQ(dialog.Ordinal(), 500);

    open(2, 10);
    QTest::mouseClick(button("cmdCancel"), Qt::LeftButton);
    EXPECT_TRUE(dialog.Cancel());
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(KeySelectorTest, SelectOpensTheEntityTreeOnTheColumnsEntity) {
    auto siteId = dictionary->addField(20, "SiteId", 6);
    siteId->entityLabel = "Site";
    dictionary->addEntity(6, "SITE", "Site");
    QStringList treeCaptions;
    app->modalHandlers.push_back([&](QDialog& tree) {
        treeCaptions << tree.windowTitle();
        widgets->lastTree->selectedKey = "6";
        widgets->lastTree->selectedFields = {siteId};
        child<QPushButton>(tree, "cmdButton(1)")->click();
        return tree.result();
    });
    open(2, 10);
    QTest::mouseClick(button("cmdSelect"), Qt::LeftButton);
    EXPECT_EQ(app->modalShown, QStringList{"FSelectEntityTree"});
    EXPECT_EQ(widgets->lastTree->mode, 0);
    EXPECT_EQ(widgets->lastTree->loads, QStringList{"CELL|Traffic"});
    EXPECT_EQ(widgets->lastTree->selectedItem, 10);
    EXPECT_EQ(dialog.FieldName(), "Site: SiteId");
    EXPECT_EQ(dialog.FieldId(), 20);
    EXPECT_EQ(dialog.EntityID(), 6);
    EXPECT_TRUE(button("cmdOk")->isEnabled());

    app->modalHandlers.push_back([](QDialog&) -> int { throw Error("ORA-03113"); });
    QTest::mouseClick(button("cmdSelect"), Qt::LeftButton);
    EXPECT_EQ(treeCaptions, QStringList({"Select Key Field", "Update Key Field Selection"}));
    EXPECT_EQ(widgets->lastTree->selectedItem, 20);

    // A failing selection is reported under the caption and keeps the field.
    QTest::mouseClick(button("cmdSelect"), Qt::LeftButton);
    EXPECT_EQ(boxes(*app), QStringList{"Critical Select Key Field: ORA-03113"});
    EXPECT_EQ(dialog.FieldName(), "Site: SiteId");
    EXPECT_TRUE(dialog.isVisible());
}

} // namespace
} // namespace Orvane::Testing
