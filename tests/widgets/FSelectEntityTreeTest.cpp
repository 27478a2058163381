#include "orvane/dialogs/FSelectEntityTree.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QComboBox>
#include <QPushButton>

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
    EXPECT_TRUE(dialog.EntityOnly());
    EXPECT_EQ(tree()->showFields, 0);
    EXPECT_TRUE(filter("cboTypeFilter")->isHidden());
    EXPECT_EQ(tree()->treeOwner, "system");
    EXPECT_EQ(dialog.width(), 283);
    tree()->selectedKey = "4";
    press(1);
    expectRefused("Entity");
    EXPECT_EQ(dialog.FieldCategory(), nullptr);

    tree()->selectedKey = "3";
    tree()->selectedFields = {std::make_shared<FakeField>(8, "drops")};
    press(1);
    EXPECT_TRUE(dialog.Ok());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.FieldCategory()->Entity_Id(), 3);
    EXPECT_EQ(dialog.Field(), nullptr);
}

TEST_F(FSelectEntityTreeTest,
       FieldModeWithOnlyAnEntityAsksForAFieldCancelLeavesOkFalseAndAChosenFieldConfirms) {
    dialog.Initialize("Select Key Field", 0, "Cell", 8);
    EXPECT_EQ(tree()->showFields, 1);
    EXPECT_EQ(tree()->selectedItem, 8);
    EXPECT_EQ(filter("cboTypeFilter")->currentText(), "External");
    EXPECT_EQ(tree()->fieldTypeFilter, "X");
    EXPECT_EQ(filter("cboTechTypeFilter")->count(), dictionary->technologyTypes.size());
    EXPECT_EQ(dialog.width(), 820);
    tree()->selectedKey = "3";
    press(1);
    expectRefused("Field");

    filter("cboTechTypeFilter")->setCurrentText("LTE");
    EXPECT_EQ(tree()->techTypeFilter, QVariant(2));
    press(0);
    EXPECT_FALSE(dialog.Ok());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);

    // Choosing a field in the tree confirms at once.
    const auto field = std::make_shared<FakeField>(8, "cell_id");
    tree()->selectedFields = {field};
    emit tree()->FieldChosen(field, "3");
    EXPECT_TRUE(dialog.Ok());
    EXPECT_EQ(dialog.Field(), field);
    EXPECT_EQ(dialog.FieldCategory()->Entity_Id(), 3);
}

} // namespace
} // namespace Orvane::Testing
