#include "studio/app/DefinitionTransfer.h"
#include "studio/app/MainWindow.h"
#include "tests/integration/StudioDictionaryTest.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace Orvane::Testing {

// The File menu's Export and Import, past their file dialogs.
class StudioExchangeTest : public StudioDictionaryTest {
protected:
    void SetUp() override {
        StudioDictionaryTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        studio = std::make_unique<Studio::MainWindow>(db);
    }

    void TearDown() override {
        studio.reset();
        StudioDictionaryTest::TearDown();
    }

    qint32 idOf(const QString& name) {
        return db->ValueAsLong(
            scalar(QStringLiteral("SELECT id v FROM eds_document WHERE name = '%1'").arg(name)));
    }

    std::unique_ptr<Studio::MainWindow> studio;
};

INSTANTIATE_TEST_SUITE_P(Databases, StudioExchangeTest, AllDatabases(), targetName);

TEST_P(StudioExchangeTest, ExportWritesTheSelectionAndImportReplacesOnlyWhenTheUserAgrees) {
    const QString name = QStringLiteral("Cell Traffic Feed");
    const qint32 stored = idOf(name);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cell.json"));
    studio->documentTree->setCurrentItem(
        studio->documentTree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0));
    studio->ExportSelected(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), Studio::DefinitionTransfer(*db).Export(stored));

    ASSERT_TRUE(studio->OpenDocumentNamed(name));
    app->msgBoxAnswers = {MsgBoxResult::No};
    studio->ImportFiles({path});
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_TRUE(app->msgBoxes[0].prompt.contains(QStringLiteral("exists already")));
    EXPECT_EQ(idOf(name), stored);
    EXPECT_EQ(studio->OpenDocuments().size(), 1);

    app->msgBoxAnswers = {MsgBoxResult::Yes};
    studio->ImportFiles({path});
    EXPECT_EQ(app->msgBoxes.size(), 2);
    EXPECT_NE(idOf(name), stored);
    EXPECT_TRUE(studio->OpenDocuments().isEmpty());
    EXPECT_EQ(studio->documentTree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).size(),
              1);
}

} // namespace Orvane::Testing
