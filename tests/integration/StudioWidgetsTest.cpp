#include "orvane/host/IField.h"
#include "studio/app/HelpBrowser.h"
#include "studio/app/StudioApplication.h"
#include "studio/widgets/TechnologiesChecklist.h"
#include "studio/widgets/TemplateTree.h"
#include "tests/integration/StudioDictionaryTest.h"

#include <QCheckBox>
#include <QSignalSpy>
#include <QTextBrowser>
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

INSTANTIATE_TEST_SUITE_P(Demo, StudioWidgetsTest, SqliteOnly(), targetName);

TEST_P(StudioWidgetsTest, TreeOfEntitiesFollowsTheNetwork) {
    Studio::TemplateTree tree(*service);
    tree.setMode(2);
    tree.setShowFields(0);
    tree.LoadTree("System", "Traffic");
    QTreeWidget& view = *tree.tvwTemplate;
    EXPECT_EQ(shownChildren(view), QStringList{"Network"});
    QTreeWidgetItem* site = findItem(view, "Site");
    ASSERT_TRUE(site);
    EXPECT_EQ(shownChildren(view, site),
              QStringList({"Cell", "LTE Base Station", "NR Base Station"}));
    EXPECT_EQ(view.findItems("*", Qt::MatchWildcard | Qt::MatchRecursive).size(), 10);

    EXPECT_EQ(tree.SelectedKey(), QString());
    tree.SelectItem(8);
    EXPECT_EQ(std::tuple(tree.SelectedKey(), tree.SelectedFields().size()),
              std::tuple(QString("8"), 0));

    // A schema naming an entity keeps that entity and the ones above it.
    tree.LoadTree("cell", "Traffic");
    EXPECT_EQ(view.findItems("*", Qt::MatchWildcard | Qt::MatchRecursive).size(), 4);
    EXPECT_TRUE(findItem(view, "Cell"));
    EXPECT_FALSE(findItem(view, "Trunk Group"));
}

TEST_P(StudioWidgetsTest, FieldsFilterSelectAndChoose) {
    Studio::TemplateTree tree(*service);
    tree.setMode(0);
    tree.setShowFields(1);
    tree.LoadTree("System", "Traffic");
    tree.setFieldTypeFilter(service->FieldTypeMask("External", QString()));
    QTreeWidget& view = *tree.tvwTemplate;
    QTreeWidgetItem* cell = findItem(view, "Cell");
    ASSERT_TRUE(cell);
    EXPECT_EQ(shownChildren(view, cell),
              QStringList({"Call_Attempts", "Cell_Name", "CI", "Dropped_Calls", "HO_Attempts",
                           "RRC_Setup_Success"}));

    tree.SelectItem(28);
    ASSERT_EQ(tree.SelectedFields().size(), 1);
    EXPECT_EQ(tree.SelectedKey() + tree.SelectedFields().first()->Field_Name(), "7HO_Attempts");

    // LTE hides the GSM/UMTS handover field, which loses the selection.
    tree.setTechTypeFilter(service->TechnologyType("LTE"));
    EXPECT_EQ(shownChildren(view, cell), QStringList({"Cell_Name", "CI", "RRC_Setup_Success"}));
    EXPECT_TRUE(tree.SelectedFields().isEmpty());
    tree.SelectItem(28);
    EXPECT_TRUE(tree.SelectedFields().isEmpty());

    QList<std::pair<qint32, QString>> chosen;
    QObject::connect(&tree, &XTemplate::FieldChosen,
                     [&](const std::shared_ptr<IField>& field, const QString& key) {
                         chosen.append({field->Field_Id(), key});
                     });
    QTreeWidgetItem* name = findItem(view, "Cell_Name");
    ASSERT_TRUE(name);
    emit view.itemDoubleClicked(name, 0);
    emit view.itemDoubleClicked(cell, 0);
    EXPECT_EQ(chosen, (QList<std::pair<qint32, QString>>{{1, "7"}}));
}

TEST_P(StudioWidgetsTest, ChecklistHoldsTheDictionaryTechnologies) {
    Studio::TechnologiesChecklist checklist(*service);
    ASSERT_EQ(checklist.chkTechnology.size(), 4);
    EXPECT_EQ(checklist.chkTechnology[2]->objectName() + checklist.chkTechnology[2]->text(),
              "chkTechnology(2)LTE");

    QSignalSpy changed(&checklist, &XTechnologies::Changed);
    checklist.setTechnologies(" lte,GSM , WiMAX");
    EXPECT_EQ(checklist.Technologies(), "GSM, LTE");
    EXPECT_EQ(std::tuple(checklist.TechnologyMask(), changed.size()), std::tuple(5, 0));

    checklist.chkTechnology[1]->click();
    EXPECT_EQ(std::tuple(changed.size(), checklist.TechnologyMask()), std::tuple(1, 7));
    checklist.chkTechnology[0]->click();
    EXPECT_EQ(std::tuple(changed.size(), checklist.Technologies()),
              std::tuple(2, QString("UMTS, LTE")));

    // A technology added to the dictionary appears on the next Initialize; the checks stay.
    db->ExecuteStatement("INSERT INTO qvd_technology (tech_id, tech_name, tech_bit) "
                         "VALUES (5, '6G', 16)");
    checklist.Initialize();
    ASSERT_EQ(checklist.chkTechnology.size(), 5);
    EXPECT_EQ(checklist.TechnologyMask(), 6);
    checklist.setTechnologies(QString());
    EXPECT_EQ(checklist.TechnologyMask(), 0);
}

// The user guide opens on the page of the window it is asked from, in one window.
TEST(StudioHelpTest, EachWindowHasItsPage) {
    QWidget mainWindow;
    Studio::StudioApplication studio;
    studio.setMainWindow(&mainWindow);
    const std::pair<const char*, const char*> pages[] = {
        {"ODBC Data Source", "odbc.html"},
        {"ASCII Data Source", "ascii.html"},
        {"fFieldInfo", "field-editor.html"},
        {"MainWindow", "index.html"},
    };
    for (const auto& [context, page] : pages) {
        studio.ShowHelp(context);
        auto* help = mainWindow.findChild<Studio::HelpBrowser*>();
        ASSERT_TRUE(help) << context;
        EXPECT_EQ(std::tuple(help->PageShown(), help->isVisible()), std::tuple(page, true))
            << context;
        EXPECT_TRUE(help->findChild<QTextBrowser*>()->toPlainText().contains("Orvane Studio"))
            << page;
    }
    EXPECT_EQ(mainWindow.findChildren<Studio::HelpBrowser*>().size(), 1);
}

} // namespace Orvane::Testing
