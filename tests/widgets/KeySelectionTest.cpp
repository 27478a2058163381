#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

// The entity tree and the key field selector that opens it.
namespace Orvane::Testing {
namespace {

class FSelectEntityTreeTest : public FakeHostTest {
protected:
    FSelectEntityTreeTest() {
        dictionary->addEntity(3, "Cell", "Cell");
        dictionary->addEntity(4, "Alarm", "Alarm", false);
    }

    FakeTemplateTree* tree() { return child<FakeTemplateTree>(dialog, "tpl"); }
    QComboBox* filter(const char* name) { return child<QComboBox>(dialog, name); }
    void press(int button) {
        child<QPushButton>(dialog, QString("cmdButton(%1)").arg(button))->click();
    }

    // The one message shown, refusing what was picked.
    void expectRefused(const QString& what) {
        EXPECT_EQ(boxes(*app), QStringList{"Information Select " + what + ": Selected " + what +
                                           " is not allowed to be used for external data\r\n"
                                           "Please select another " +
                                           what});
        EXPECT_FALSE(dialog.Ok());
        app->msgBoxes.clear();
    }

    FSelectEntityTree dialog;
};

TEST_F(FSelectEntityTreeTest, EntityModeRefusesAnEntityNotForExternalDataAndClosesWithNoField) {
    dialog.Initialize("Select Entity for this Data Source", 2, "System", 0);
    EXPECT_EQ(std::tuple(dialog.EntityOnly(), filter("cboTypeFilter")->isHidden()),
              std::tuple(true, true));
    EXPECT_EQ(
        QString("%1|%2|%3").arg(tree()->showFields).arg(tree()->treeOwner).arg(dialog.width()),
        "0|system|283");
    tree()->selectedKey = "4";
    press(1);
    expectRefused("Entity");
    EXPECT_EQ(dialog.FieldCategory(), nullptr);

    tree()->selectedKey = "3";
    tree()->selectedFields = {std::make_shared<FakeField>(8, "drops")};
    press(1);
    EXPECT_EQ(std::tuple(dialog.Ok(), dialog.result(), dialog.Field() == nullptr),
              std::tuple(true, QDialog::Accepted, true));
    EXPECT_EQ(dialog.FieldCategory()->Entity_Id(), 3);
}

TEST_F(FSelectEntityTreeTest,
       FieldModeWithOnlyAnEntityAsksForAFieldCancelLeavesOkFalseAndAChosenFieldConfirms) {
    dialog.Initialize("Select Key Field", 0, "Cell", 8);
    EXPECT_EQ(QString("%1|%2|%3|%4|%5|%6")
                  .arg(tree()->showFields)
                  .arg(tree()->selectedItem)
                  .arg(filter("cboTypeFilter")->currentText(), tree()->fieldTypeFilter)
                  .arg(filter("cboTechTypeFilter")->count())
                  .arg(dialog.width()),
              "1|8|External|X|3|820");
    tree()->selectedKey = "3";
    press(1);
    expectRefused("Field");

    filter("cboTechTypeFilter")->setCurrentText("LTE");
    EXPECT_EQ(tree()->techTypeFilter, QVariant(2));
    press(0);
    EXPECT_EQ(std::tuple(dialog.Ok(), dialog.result()), std::tuple(false, QDialog::Rejected));

    // Choosing a field in the tree confirms at once.
    const auto field = std::make_shared<FakeField>(8, "cell_id");
    tree()->selectedFields = {field};
    emit tree()->FieldChosen(field, "3");
    EXPECT_EQ(std::tuple(dialog.Ok(), dialog.Field()), std::tuple(true, field));
    EXPECT_EQ(dialog.FieldCategory()->Entity_Id(), 3);
}

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
        EXPECT_EQ(std::tuple(dialog.isVisible(), dialog.Cancel()), std::tuple(true, true));
    }
}

// The ordinal box takes digits only and follows the arrows.
TEST_F(KeySelectorTest, TheKeyFieldGivenIsShownAndAcceptedAndCancelChangesNothing) {
    open(499, 10);
    EXPECT_EQ(child<QLineEdit>(dialog, "txtField")->text(), "Cell: CellId");
    EXPECT_EQ(QList<qint32>({upDown()->value(), dialog.FieldId(), dialog.EntityID()}),
              QList<qint32>({499, 10, 0}));
    QTest::mouseClick(button("cmdSelect"), Qt::LeftButton); // no handler: the tree is cancelled
    EXPECT_EQ(dialog.FieldName(), "Cell: CellId");
    EXPECT_FALSE(button("cmdOk")->isEnabled());

    QTest::keyClicks(ordinalBox(), "x -");
    QTest::keyClick(ordinalBox(), Qt::Key_Backspace);
    EXPECT_EQ(ordinalBox()->text(), "499");
    QTest::keyClick(ordinalBox(), Qt::Key_Home);
    QTest::keyClick(ordinalBox(), Qt::Key_Delete);
    EXPECT_EQ(std::tuple(dialog.Ordinal(), upDown()->value()), std::tuple(99, 99));
    typeOrdinal("499");
    upDown()->stepUp();
    upDown()->stepUp();
    EXPECT_EQ(ordinalBox()->text(), "500");
    EXPECT_TRUE(button("cmdOk")->isEnabled());
    EXPECT_EQ(pressOk(), QString());
    EXPECT_EQ(std::tuple(dialog.Cancel(), dialog.Ordinal()), std::tuple(false, 500));

    open(2, 10);
    QTest::mouseClick(button("cmdCancel"), Qt::LeftButton);
    EXPECT_EQ(std::tuple(dialog.Cancel(), dialog.isVisible()), std::tuple(true, false));
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
    // The tree's mode and the field and entity taken are checked by the grid's key commands.
    EXPECT_EQ(widgets->lastTree->loads, QStringList{"CELL|Traffic"});
    EXPECT_EQ(widgets->lastTree->selectedItem, 10);
    EXPECT_EQ(child<QLineEdit>(dialog, "txtField")->text(), "Site: SiteId");
    EXPECT_TRUE(button("cmdOk")->isEnabled());

    app->modalHandlers.push_back([](QDialog&) -> int { throw Error("ORA-03113"); });
    QTest::mouseClick(button("cmdSelect"), Qt::LeftButton);
    EXPECT_EQ(treeCaptions, QStringList({"Select Key Field", "Update Key Field Selection"}));
    EXPECT_EQ(widgets->lastTree->selectedItem, 20);

    // A failing selection is reported under the caption and keeps the field.
    QTest::mouseClick(button("cmdSelect"), Qt::LeftButton);
    EXPECT_EQ(boxes(*app), QStringList{"Critical Select Key Field: ORA-03113"});
    EXPECT_EQ(std::tuple(dialog.FieldName(), dialog.isVisible()),
              std::tuple(QString("Site: SiteId"), true));
}

} // namespace
} // namespace Orvane::Testing
