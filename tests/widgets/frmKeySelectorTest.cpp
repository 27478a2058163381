#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "tests/support/FakeHost.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace Orvane::Testing {
namespace {

const QString RangeMessage = "A unique Ordinal between 1 and 500 must be chosen.";

class KeySelectorTest : public FakeHostTest {
protected:
    KeySelectorTest() {
        columns.setEntity(dictionary->addEntity(5, "CELL", "Cell"));
        addKey("A", 10, 1);
        addKey("B", 11, 2);
        addKey("C", 12, 3)->setColumnDeleted(true);
        keyField = dictionary->addField(10, "CellId", 5);
        keyField->entityLabel = "Cell";
    }

    CDataSourcesColumns::ColumnPtr addKey(const char* name, qint32 fieldId, qint32 ordinal) {
        auto column = columns.Add(QString::fromLatin1(name));
        column->setKeyFld_Id(fieldId);
        column->setKey_Ordinal(ordinal);
        return column;
    }

    void open(frmKeySelector& dialog, qint32 ordinal, qint32 fieldId) {
        dialog.setColumns(&columns);
        dialog.Initialize(ordinal, fieldId);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }

    static void typeOrdinal(frmKeySelector& dialog, const QString& text) {
        dialog.txtOrdinal->selectAll();
        QTest::keyClick(dialog.txtOrdinal, Qt::Key_Delete);
        QTest::keyClicks(dialog.txtOrdinal, text);
    }

    // Presses OK and returns the message shown, or an empty text when the dialog closed.
    QString pressOk(frmKeySelector& dialog) {
        app->msgBoxes.clear();
        QTest::mouseClick(dialog.cmdOk, Qt::LeftButton);
        return app->msgBoxes.isEmpty() ? QString() : app->msgBoxes.last().prompt;
    }

    // The next entity tree answers with this entity and field and presses its OK.
    void treeChooses(qint32 entityId, const std::shared_ptr<IField>& field) {
        app->modalHandlers.push_back([=, this](QDialog& dialog) {
            auto& tree = dynamic_cast<FSelectEntityTree&>(dialog);
            treeCaptions << tree.windowTitle();
            widgets->lastTree->selectedKey = QString::number(entityId);
            widgets->lastTree->selectedFields = {field};
            tree.cmdButton[1]->click();
            return tree.result();
        });
    }

    CDataSourcesColumns columns;
    std::shared_ptr<FakeField> keyField;
    QStringList treeCaptions;
};

TEST_F(KeySelectorTest, InitializeShowsTheOrdinalAndTheKeyFieldAndCancelChangesNothing) {
    frmKeySelector dialog;
    open(dialog, 2, 10);

    EXPECT_EQ(dialog.objectName(), "frmKeySelector");
    EXPECT_EQ(dialog.windowTitle(), "Select Key Field");
    EXPECT_EQ(dialog.udOrdinal->toolTip(), "Select Key Ordinal");
    EXPECT_EQ(dialog.txtOrdinal->text(), "2");
    EXPECT_EQ(dialog.udOrdinal->value(), 2);
    EXPECT_EQ(dialog.Ordinal(), 2);
    EXPECT_EQ(dialog.txtField->text(), "Cell: CellId");
    EXPECT_EQ(dialog.FieldName(), "Cell: CellId");
    EXPECT_EQ(dialog.FieldId(), 10);
    EXPECT_EQ(dialog.EntityID(), 0);
    EXPECT_FALSE(dialog.cmdOk->isEnabled());

    QTest::mouseClick(dialog.cmdSelect, Qt::LeftButton); // no handler: the tree is cancelled
    EXPECT_EQ(dialog.FieldName(), "Cell: CellId");
    EXPECT_EQ(dialog.FieldId(), 10);
    EXPECT_EQ(dialog.EntityID(), 0);
    EXPECT_FALSE(dialog.cmdOk->isEnabled());

    typeOrdinal(dialog, "4");
    EXPECT_TRUE(dialog.cmdOk->isEnabled());
    EXPECT_EQ(dialog.Ordinal(), 4);
    EXPECT_EQ(dialog.udOrdinal->value(), 4);
    QTest::mouseClick(dialog.cmdCancel, Qt::LeftButton);
    EXPECT_TRUE(dialog.Cancel());
    EXPECT_FALSE(dialog.isVisible());
}

// The ordinal lies between 1 and 500 and is no other live key's; then a key field is needed.
TEST_F(KeySelectorTest, OkChecksTheOrdinalThenTheKeyField) {
    const QString noField = "A key field has not been selected";
    const struct {
        const char* ordinal;
        QString message;
    } cases[] = {
        {"0", RangeMessage}, {"501", RangeMessage},
        {"", RangeMessage},  {"1", "Ordinal 1 is already in use"},
        {"3", noField}, // a deleted key column's ordinal is free
        {"2", noField}, // its own ordinal is not tested against the columns
    };
    frmKeySelector dialog;
    open(dialog, 2, 0);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.ordinal);
        typeOrdinal(dialog, c.ordinal);
        ASSERT_EQ(pressOk(dialog), c.message);
        const RecordedMsgBox& box = app->msgBoxes.at(0);
        EXPECT_EQ(box.icon, MsgBoxIcon::None);
        EXPECT_EQ(box.buttons, MsgBoxButtons::OKOnly);
        EXPECT_EQ(box.title, "Select Key Field");
        QWidget* focus =
            c.message == noField ? static_cast<QWidget*>(dialog.cmdSelect) : dialog.txtOrdinal;
        EXPECT_EQ(QApplication::focusWidget(), focus);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(dialog.Cancel());
    }

    frmKeySelector keyed;
    open(keyed, 2, 10);
    typeOrdinal(keyed, "500");
    EXPECT_EQ(pressOk(keyed), QString());
    EXPECT_FALSE(keyed.Cancel());
    EXPECT_EQ(keyed.Ordinal(), 500);
}

TEST_F(KeySelectorTest, OrdinalBoxTakesDigitsOnly) {
    frmKeySelector dialog;
    open(dialog, 0, 10);
    EXPECT_EQ(dialog.txtOrdinal->text(), "");
    QTest::keyClicks(dialog.txtOrdinal, "1x2 -");
    EXPECT_EQ(dialog.txtOrdinal->text(), "12");

    QTest::keyClick(dialog.txtOrdinal, Qt::Key_Backspace);
    EXPECT_EQ(dialog.txtOrdinal->text(), "12");

    QTest::keyClick(dialog.txtOrdinal, Qt::Key_Home);
    QTest::keyClick(dialog.txtOrdinal, Qt::Key_Delete);
    EXPECT_EQ(dialog.txtOrdinal->text(), "2");
    EXPECT_EQ(dialog.Ordinal(), 2);
}

TEST_F(KeySelectorTest, UpDownAndOrdinalBoxStayInStep) {
    frmKeySelector dialog;
    open(dialog, 499, 10);
    EXPECT_EQ(dialog.udOrdinal->minimum(), 1);
    EXPECT_EQ(dialog.udOrdinal->maximum(), 500);

    dialog.udOrdinal->stepUp();
    EXPECT_EQ(dialog.txtOrdinal->text(), "500");
    EXPECT_EQ(dialog.Ordinal(), 500);
    EXPECT_TRUE(dialog.cmdOk->isEnabled());
    dialog.udOrdinal->stepUp();
    EXPECT_EQ(dialog.txtOrdinal->text(), "500");

    typeOrdinal(dialog, "17");
    EXPECT_EQ(dialog.udOrdinal->value(), 17);
    dialog.udOrdinal->stepDown();
    EXPECT_EQ(dialog.txtOrdinal->text(), "16");
}

TEST_F(KeySelectorTest, SelectOpensTheEntityTreeOnTheColumnsEntity) {
    auto siteId = dictionary->addField(20, "SiteId", 6);
    siteId->entityLabel = "Site";
    dictionary->addEntity(6, "SITE", "Site");
    treeChooses(6, siteId);
    frmKeySelector dialog;
    open(dialog, 2, 10);
    QTest::mouseClick(dialog.cmdSelect, Qt::LeftButton);

    EXPECT_EQ(app->modalShown, QStringList{"FSelectEntityTree"});
    EXPECT_EQ(treeCaptions, QStringList{"Select Key Field"});
    EXPECT_EQ(widgets->lastTree->mode, 0);
    EXPECT_EQ(widgets->lastTree->loads, QStringList{"CELL|Traffic"});
    EXPECT_EQ(widgets->lastTree->selectedItem, 10);
    EXPECT_EQ(dialog.txtField->text(), "Site: SiteId");
    EXPECT_EQ(dialog.FieldId(), 20);
    EXPECT_EQ(dialog.EntityID(), 6);
    EXPECT_TRUE(dialog.cmdOk->isEnabled());

    QTest::mouseClick(dialog.cmdSelect, Qt::LeftButton);
    EXPECT_EQ(treeCaptions.last(), "Update Key Field Selection");
    EXPECT_EQ(widgets->lastTree->selectedItem, 20);

    EXPECT_EQ(pressOk(dialog), QString());
    EXPECT_FALSE(dialog.Cancel());
    EXPECT_EQ(dialog.FieldName(), "Site: SiteId");
}

} // namespace
} // namespace Orvane::Testing
