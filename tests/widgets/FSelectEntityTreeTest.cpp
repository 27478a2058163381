#include "orvane/dialogs/FSelectEntityTree.h"
#include "tests/support/FakeHost.h"

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

    FakeTemplateTree* tree() { return static_cast<FakeTemplateTree*>(dialog.tpl); }

    FSelectEntityTree dialog;
};

TEST_F(FSelectEntityTreeTest, EntityModeRefusesAnEntityNotForExternalDataAndClosesWithNoField) {
    dialog.Initialize("Select Entity for this Data Source", 2, "System", 0);
    EXPECT_TRUE(dialog.EntityOnly());
    EXPECT_EQ(tree()->showFields, 0);
    EXPECT_TRUE(dialog.cboTypeFilter->isHidden());
    EXPECT_EQ(tree()->treeOwner, "system");
    tree()->selectedKey = "4";
    dialog.cmdButton[1]->click();
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].prompt, "Selected Entity is not allowed to be used for external "
                                       "data\r\nPlease select another Entity");
    EXPECT_EQ(app->msgBoxes[0].title, "Select Entity");
    EXPECT_EQ(dialog.FieldCategory(), nullptr);
    EXPECT_FALSE(dialog.Ok());

    tree()->selectedKey = "3";
    tree()->selectedFields = {std::make_shared<FakeField>(8, "drops")};
    dialog.cmdButton[1]->click();
    EXPECT_TRUE(dialog.Ok());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.FieldCategory()->Entity_Id(), 3);
    EXPECT_EQ(dialog.Field(), nullptr);
}

TEST_F(FSelectEntityTreeTest, FieldModeWithOnlyAnEntityAsksForAFieldAndCancelLeavesOkFalse) {
    dialog.Initialize("Select Key Field", 0, "Cell", 8);
    EXPECT_EQ(tree()->showFields, 1);
    EXPECT_EQ(tree()->selectedItem, 8);
    EXPECT_EQ(dialog.cboTypeFilter->currentText(), "External");
    EXPECT_EQ(tree()->fieldTypeFilter, "X");
    EXPECT_EQ(dialog.cboTechTypeFilter->count(), dictionary->technologyTypes.size());
    tree()->selectedKey = "3";
    dialog.cmdButton[1]->click();
    EXPECT_FALSE(dialog.Ok());
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].prompt, "Selected Field is not allowed to be used for external "
                                       "data\r\nPlease select another Field");
    EXPECT_EQ(app->msgBoxes[0].title, "Select Field");
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Information);

    dialog.cboTechTypeFilter->setCurrentText("LTE");
    EXPECT_EQ(tree()->techTypeFilter, QVariant(2));
    dialog.cmdButton[0]->click();
    EXPECT_FALSE(dialog.Ok());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST_F(FSelectEntityTreeTest, ChoosingAFieldInTheTreeConfirmsAtOnce) {
    dialog.Initialize("Select Key Field", 0, "Cell", 0);
    const auto field = std::make_shared<FakeField>(8, "cell_id");
    tree()->selectedKey = "3";
    tree()->selectedFields = {field};
    emit tree()->FieldChosen(field, "3");
    EXPECT_TRUE(dialog.Ok());
    EXPECT_EQ(dialog.Field(), field);
    EXPECT_EQ(dialog.FieldCategory()->Entity_Id(), 3);
}

TEST_F(FSelectEntityTreeTest, WidthFollowsTheMode) {
    dialog.Initialize("x", 2, "System", 0);
    EXPECT_EQ(dialog.width(), 4250 / 15);
    FSelectEntityTree wide;
    wide.Initialize("x", 0, "System", 0);
    EXPECT_EQ(wide.width(), 12300 / 15);
    EXPECT_GT(wide.tpl->y(), dialog.tpl->y()); // below the filter row
    EXPECT_EQ(wide.cmdButton[1]->geometry().right(), wide.width() - 120 / 15 - 1);
}

} // namespace
} // namespace Orvane::Testing
