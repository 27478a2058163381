#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/dialogs/fFieldInfo.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "studio/widgets/TechnologiesChecklist.h"
#include "studio/widgets/TemplateTree.h"
#include "tests/integration/StudioDictionaryTest.h"
#include "tests/support/QtPrinters.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTreeWidget>

namespace Orvane::Testing {

namespace {

// The texts of the items under an item (or at the top), shown ones only.
QStringList shownChildren(QTreeWidget& tree, QTreeWidgetItem* parent = nullptr) {
    QStringList texts;
    const int count = parent ? parent->childCount() : tree.topLevelItemCount();
    for (int i = 0; i < count; ++i) {
        QTreeWidgetItem* item = parent ? parent->child(i) : tree.topLevelItem(i);
        if (!item->isHidden())
            texts << item->text(0);
    }
    return texts;
}

QTreeWidgetItem* findItem(QTreeWidget& tree, const QString& text) {
    const auto found = tree.findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
}

} // namespace

// The studio's widgets on the demo dictionary; the database kind does not matter to them.
class StudioWidgetsTest : public StudioDictionaryTest {};

INSTANTIATE_TEST_SUITE_P(Demo, StudioWidgetsTest,
                         ::testing::Values(DatabaseTarget{Studio::SqlBackend::SQLite,
                                                          Studio::SchemaForm::WithEditorPosition}),
                         targetName);

TEST_P(StudioWidgetsTest, TreeOfEntitiesFollowsTheNetwork) {
    Studio::TemplateTree tree(*service);
    tree.setMode(2);
    tree.setShowFields(0);
    tree.LoadTree(QStringLiteral("System"), QStringLiteral("Traffic"));
    QTreeWidget& view = *tree.tvwTemplate;
    EXPECT_EQ(shownChildren(view), QStringList{QStringLiteral("Network")});
    QTreeWidgetItem* site = findItem(view, QStringLiteral("Site"));
    ASSERT_TRUE(site);
    EXPECT_EQ(shownChildren(view, site),
              QStringList({QStringLiteral("Cell"), QStringLiteral("LTE Base Station"),
                           QStringLiteral("NR Base Station")}));
    EXPECT_EQ(view.findItems(QStringLiteral("*"), Qt::MatchWildcard | Qt::MatchRecursive).size(),
              10);

    EXPECT_EQ(tree.SelectedKey(), QString());
    tree.SelectItem(8);
    EXPECT_EQ(tree.SelectedKey(), QStringLiteral("8"));
    EXPECT_TRUE(tree.SelectedFields().isEmpty());

    // A schema naming an entity keeps that entity and the ones above it.
    tree.LoadTree(QStringLiteral("cell"), QStringLiteral("Traffic"));
    EXPECT_EQ(view.findItems(QStringLiteral("*"), Qt::MatchWildcard | Qt::MatchRecursive).size(),
              4);
    EXPECT_TRUE(findItem(view, QStringLiteral("Cell")));
    EXPECT_FALSE(findItem(view, QStringLiteral("Trunk Group")));
}

TEST_P(StudioWidgetsTest, FieldsFilterSelectAndChoose) {
    Studio::TemplateTree tree(*service);
    tree.setMode(0);
    tree.setShowFields(1);
    tree.LoadTree(QStringLiteral("System"), QStringLiteral("Traffic"));
    tree.setFieldTypeFilter(service->FieldTypeMask(QStringLiteral("External"), QString()));
    QTreeWidget& view = *tree.tvwTemplate;
    QTreeWidgetItem* cell = findItem(view, QStringLiteral("Cell"));
    ASSERT_TRUE(cell);
    EXPECT_EQ(shownChildren(view, cell),
              QStringList({QStringLiteral("Call_Attempts"), QStringLiteral("Cell_Name"),
                           QStringLiteral("CI"), QStringLiteral("Dropped_Calls"),
                           QStringLiteral("HO_Attempts"), QStringLiteral("RRC_Setup_Success")}));

    tree.SelectItem(28);
    EXPECT_EQ(tree.SelectedKey(), QStringLiteral("7"));
    ASSERT_EQ(tree.SelectedFields().size(), 1);
    EXPECT_EQ(tree.SelectedFields().first()->Field_Name(), QStringLiteral("HO_Attempts"));

    // LTE hides the GSM/UMTS handover field, which loses the selection.
    tree.setTechTypeFilter(service->TechnologyType(QStringLiteral("LTE")));
    EXPECT_EQ(shownChildren(view, cell),
              QStringList({QStringLiteral("Cell_Name"), QStringLiteral("CI"),
                           QStringLiteral("RRC_Setup_Success")}));
    EXPECT_TRUE(tree.SelectedFields().isEmpty());
    tree.SelectItem(28);
    EXPECT_TRUE(tree.SelectedFields().isEmpty());

    QList<std::pair<qint32, QString>> chosen;
    QObject::connect(&tree, &XTemplate::FieldChosen,
                     [&](const std::shared_ptr<IField>& field, const QString& key) {
                         chosen.append({field->Field_Id(), key});
                     });
    QTreeWidgetItem* name = findItem(view, QStringLiteral("Cell_Name"));
    ASSERT_TRUE(name);
    emit view.itemDoubleClicked(name, 0);
    emit view.itemDoubleClicked(cell, 0);
    EXPECT_EQ(chosen, (QList<std::pair<qint32, QString>>{{1, QStringLiteral("7")}}));
}

// The library's selector on the studio's tree and dictionary, as the key selector opens it.
TEST_P(StudioWidgetsTest, EntitySelectorOnTheStudioTree) {
    FSelectEntityTree keys;
    keys.Initialize(QStringLiteral("Select Key Field"), 0, QStringLiteral("Cell"), 1);
    ASSERT_TRUE(dynamic_cast<Studio::TemplateTree*>(keys.tpl));
    EXPECT_EQ(keys.cboTypeFilter->currentText(), QStringLiteral("External"));
    EXPECT_EQ(keys.cboTechTypeFilter->currentText(), QStringLiteral("All"));
    keys.cmdButton[1]->click();
    ASSERT_TRUE(keys.Ok());
    EXPECT_EQ(keys.FieldCategory()->Entity_Id(), 7);
    EXPECT_EQ(keys.Field()->Field_Name(), QStringLiteral("Cell_Name"));

    FSelectEntityTree entities;
    entities.Initialize(QStringLiteral("Select Entity for this Data Source"), 2,
                        QStringLiteral("System"), 0);
    entities.tpl->SelectItem(2);
    entities.cmdButton[1]->click();
    EXPECT_FALSE(entities.Ok());
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes.first().title, QStringLiteral("Select Entity"));
}

TEST_P(StudioWidgetsTest, ChecklistHoldsTheDictionaryTechnologies) {
    Studio::TechnologiesChecklist checklist(*service);
    ASSERT_EQ(checklist.chkTechnology.size(), 4);
    EXPECT_EQ(checklist.chkTechnology[2]->objectName(), QStringLiteral("chkTechnology(2)"));
    EXPECT_EQ(checklist.chkTechnology[2]->text(), QStringLiteral("LTE"));

    QSignalSpy changed(&checklist, &XTechnologies::Changed);
    checklist.setTechnologies(QStringLiteral(" lte,GSM , WiMAX"));
    EXPECT_EQ(checklist.TechnologyMask(), 5);
    EXPECT_EQ(checklist.Technologies(), QStringLiteral("GSM, LTE"));
    EXPECT_EQ(changed.size(), 0);

    checklist.chkTechnology[1]->click();
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(checklist.TechnologyMask(), 7);
    checklist.chkTechnology[0]->click();
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(checklist.Technologies(), QStringLiteral("UMTS, LTE"));

    // A technology added to the dictionary appears on the next Initialize; the checks stay.
    db->ExecuteStatement(QStringLiteral("INSERT INTO qvd_technology (tech_id, tech_name, tech_bit) "
                                        "VALUES (5, '6G', 16)"));
    checklist.Initialize();
    ASSERT_EQ(checklist.chkTechnology.size(), 5);
    EXPECT_EQ(checklist.TechnologyMask(), 6);
    checklist.setTechnologies(QString());
    EXPECT_EQ(checklist.TechnologyMask(), 0);
}

// The field editor on a stored field: the studio's checklist shows its technologies and the
// save goes to the dictionary at once.
TEST_P(StudioWidgetsTest, FieldEditorSavesAStoredField) {
    const auto attempts = service->FieldById(QStringLiteral("Traffic"), 4);
    fFieldInfo editor;
    editor.InitializeForNew(service->EntityById(7), QStringLiteral("Integer"), attempts);
    auto* checklist = dynamic_cast<Studio::TechnologiesChecklist*>(editor.xTech);
    ASSERT_TRUE(checklist);
    EXPECT_EQ(checklist->TechnologyMask(), 3);
    editor.txtDescription->setText(QStringLiteral("Attempts, all kinds"));
    checklist->chkTechnology[3]->click();
    editor.cmdOk->click();
    ASSERT_TRUE(editor.Ok()) << (app->msgBoxes.isEmpty()
                                     ? ""
                                     : app->msgBoxes.last().prompt.toStdString());
    EXPECT_EQ(count(QStringLiteral("qvd_field_def"),
                    QStringLiteral("field_id = 4 AND field_desc = 'Attempts, all kinds'")),
              1);
    EXPECT_EQ(count(QStringLiteral("qvd_field_tech"), QStringLiteral("field_id = 4")), 3);
    EXPECT_EQ(attempts->Technologies(), QStringLiteral("GSM, UMTS, NR"));
}

} // namespace Orvane::Testing
