#include "orvane/columns/ColumnGridRows.h"
#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/dialogs/fFieldInfo.h"
#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/host/XTemplate.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "studio/app/DefinitionTransfer.h"
#include "studio/app/DocumentStore.h"
#include "studio/app/DocumentWindow.h"
#include "studio/app/MainWindow.h"
#include "studio/db/SqlQueryService.h"
#include "tests/integration/StudioDictionaryTest.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>
#include <deque>
#include <future>
#include <gmock/gmock.h>
#include <thread>

namespace Orvane::Testing {

using Studio::DocumentWindow;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
namespace Rows = ColumnGridRows;

namespace {

// Demo dictionary: entities and the key fields the tests pick.
constexpr qint32 CellEntity = 7;
constexpr qint32 TrunkGroupEntity = 8;
constexpr qint32 CellNameField = 1;
constexpr qint32 CellIdentityField = 2;
constexpr qint32 TrunkGroupNameField = 18;

// Types over whatever the box holds, as a user who selected it all.
void type(QLineEdit* box, const QString& text) {
    box->selectAll();
    QTest::keyClicks(box, text);
}

void choose(QComboBox* list, const QString& entry) {
    const int index = list->findText(entry, Qt::MatchContains);
    ASSERT_GE(index, 0) << "no entry " << entry.toStdString() << " in "
                        << list->objectName().toStdString();
    list->setCurrentIndex(index);
}

} // namespace

// Orvane Studio as a user drives it: the real main window on a fresh database with the studio's
// own dictionary and widgets. The fake application answers the message and input boxes, and
// runs one script per modal dialog, in the order the dialogs are shown; each script fills in the
// real dialog and presses its real buttons.
class StudioEndToEndTest : public StudioDictionaryTest {
protected:
    using Script = std::function<void(QDialog&)>;

    void SetUp() override {
        StudioDictionaryTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        app->modalHandlers = {[this](QDialog& dialog) { return runScript(dialog); }};
        studio = std::make_unique<Studio::MainWindow>(db);
        studio->show();
    }

    void TearDown() override {
        studio.reset();
        for (const auto& [name, script] : scripts)
            ADD_FAILURE() << "the dialog " << name.toStdString() << " was never shown";
        StudioDictionaryTest::TearDown();
    }

    // ---- Scripted dialogs

    void expectDialog(const QString& name, Script script) {
        scripts.emplace_back(name, std::move(script));
    }

    int runScript(QDialog& dialog) {
        if (scripts.empty() || scripts.front().first != dialog.objectName()) {
            ADD_FAILURE() << "unexpected dialog " << dialog.objectName().toStdString();
            return QDialog::Rejected;
        }
        const Script script = std::move(scripts.front().second);
        scripts.pop_front();
        script(dialog);
        return dialog.result();
    }

    // FSelectEntityTree: the entity, or the field, selected in the real template tree, then OK;
    // no id: Cancel.
    void pickInTree(qint32 id) {
        expectDialog("FSelectEntityTree", [id](QDialog& dialog) {
            dialog.findChild<XTemplate*>("tpl")->SelectItem(id);
            dialog.findChild<QPushButton*>(id ? "cmdButton(1)" : "cmdButton(0)")->click();
        });
    }

    // frmKeySelector: "..." picks the key field in the tree, the ordinal is typed, then OK.
    void pickKey(qint32 fieldId, qint32 ordinal) {
        expectDialog("frmKeySelector", [ordinal](QDialog& dialog) {
            auto& selector = static_cast<frmKeySelector&>(dialog);
            selector.findChild<QPushButton*>("cmdSelect")->click();
            type(selector.findChild<QLineEdit*>("txtOrdinal"), QString::number(ordinal));
            selector.findChild<QPushButton*>("cmdOk")->click();
        });
        pickInTree(fieldId);
    }

    // fFieldInfo: a new field, its name typed and in lower case as its counter (the first extra
    // column), one technology checked, the element aggregator chosen, then OK.
    void createField(const QString& name, const QString& technology,
                     const QString& elementAggregator) {
        expectDialog("fFieldInfo", [=](QDialog& dialog) {
            auto& editor = static_cast<fFieldInfo&>(dialog);
            type(editor.findChild<QLineEdit*>("txtName"), name);
            type(editor.findChild<QLineEdit*>("txtExt(1)"), name.toLower());
            for (QCheckBox* box : editor.findChildren<QCheckBox*>()) {
                if (box->text() == technology)
                    box->click();
            }
            choose(editor.findChild<QComboBox*>("cboElementAggregator"), elementAggregator);
            editor.findChild<QPushButton*>("cmdOk")->click();
        });
    }

    // ---- The studio's window

    DocumentWindow* newDocument(QAction* command, qint32 entityId) {
        const int tabsBefore = studio->documentTabs->count();
        pickInTree(entityId);
        command->trigger();
        return studio->documentTabs->count() > tabsBefore ? studio->CurrentDocument() : nullptr;
    }

    static QTableView& grid(DocumentWindow& doc) {
        return *doc.columnEditor->findChild<QTableView*>("fpsColumns");
    }

    static QAction* command(DocumentWindow& doc, const QString& key) {
        return doc.columnEditor->findChild<QToolBar*>("tbColumns")->findChild<QAction*>(key);
    }

    // One row of the grid, its cells joined by "|".
    static QString gridRow(DocumentWindow& doc, qint32 row) {
        const QAbstractItemModel& cells = *grid(doc).model();
        QStringList texts;
        for (int column = 0; column < cells.columnCount(); ++column)
            texts << cells.index(row - 1, column).data().toString();
        return texts.join(QLatin1Char('|'));
    }

    static void selectColumn(DocumentWindow& doc, int column) {
        QTableView& table = grid(doc);
        emit table.clicked(table.model()->index(Rows::Name - 1, column - 1));
    }

    void appendColumn(DocumentWindow& doc, const QString& name) {
        app->inputAnswers.push_back(name);
        command(doc, "Add")->trigger();
    }

    // Through the drop-down list of the column's Type cell.
    static void chooseType(DocumentWindow& doc, int column, const QString& typeName) {
        QTableView& table = grid(doc);
        table.edit(table.model()->index(Rows::Type - 1, column - 1));
        auto* list = table.viewport()->findChild<QComboBox*>();
        ASSERT_TRUE(list);
        choose(list, typeName);
        emit list->activated(list->currentIndex());
        // The grid drops its closed editor as the event loop would.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void save(const QString& name = QString()) {
        if (!name.isEmpty())
            app->inputAnswers.push_back(name);
        studio->actSave->trigger();
    }

    // Where the list of data sources shows one: its folder, entity and time-series mark.
    QString listing(const QString& name) const {
        const QTreeWidgetItem* item = listed(name);
        return item ? QStringList{item->parent()->text(0), item->text(1), item->text(2)}.join('|')
                    : "<not listed>";
    }

    QTreeWidgetItem* listed(const QString& name) const {
        const auto found =
            studio->documentTree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        return found.size() == 1 ? found.first() : nullptr;
    }

    DocumentWindow* reopen(const QString& name) {
        QTreeWidgetItem* item = listed(name);
        if (!item)
            return nullptr;
        studio->documentTree->setCurrentItem(item);
        studio->actOpen->trigger();
        return studio->CurrentDocument();
    }

    // Closes the current document and lets Qt delete its window; true when it is gone.
    bool closeCurrent() {
        QPointer<DocumentWindow> window = studio->CurrentDocument();
        studio->actClose->trigger();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.isNull();
    }

    QString lastMessage() const {
        return app->msgBoxes.isEmpty() ? "<none>" : app->msgBoxes.last().prompt;
    }

    // ---- The cell document most tests use

    // Hourly cell data from a comma-separated file: the time stamp, a key column naming the
    // cell, a column that fills a new LTE field, and a plain one.
    DocumentWindow* buildCellDocument() {
        DocumentWindow* doc = newDocument(studio->actNewAscii, CellEntity);
        if (!doc)
            return nullptr;
        XDataSourcesGen& settings = *doc->asciiEditor;
        type(settings.findChild<QLineEdit*>("txtDescription"), "Cell counters, O'Brien's export");
        type(settings.findChild<QLineEdit*>("txtFile"), "/data/cells.csv");
        choose(settings.findChild<QComboBox*>("cboDelimeter"), "comma");
        choose(settings.findChild<QComboBox*>("cboFrequency"), "Hourly");

        appendColumn(*doc, "CELL");
        chooseType(*doc, 2, "String");
        pickKey(CellNameField, 1);
        command(*doc, "Key")->trigger();

        appendColumn(*doc, "DROPS");
        createField("Drops_Ext", "LTE", "Average");
        command(*doc, "Field")->trigger();

        appendColumn(*doc, "NOTE");
        chooseType(*doc, 4, "Float");
        return doc;
    }

    // The cell document's layout, in the grid and in the document's columns.
    static void expectCellLayout(DocumentWindow& doc) {
        EXPECT_EQ(gridRow(doc, Rows::Name), "Time Stamp|CELL|DROPS|NOTE");
        EXPECT_EQ(gridRow(doc, Rows::Type), "Date|String|Integer|Float");
        EXPECT_EQ(gridRow(doc, Rows::Field), "||Drops_Ext|");
        EXPECT_EQ(gridRow(doc, Rows::Key), "|1||");
        EXPECT_EQ(gridRow(doc, Rows::KeyField), "|Cell: Cell_Name||");
        EXPECT_EQ(gridRow(doc, Rows::Position), "1|2|3|4");

        // The grid shows the new field's name; what else it holds is read here.
        const auto drops = doc.Document()->Columns()->Item("DROPS");
        ASSERT_TRUE(drops && drops->Field());
        EXPECT_EQ(drops->Field()->Technologies() + "|" + drops->Field()->ElementAggregator(),
                  "LTE|Average");
    }

    // Makes the database refuse every new key row (or row of the table), as a trigger that raises
    // an error. SQLite: ABORT undoes the statement, ROLLBACK the whole transaction.
    void lockKeys(const QString& sqliteResolution, const QString& table = "eds_primarykey") {
        if (onPostgres()) {
            db->ExecuteStatement(
                "CREATE OR REPLACE FUNCTION refuse_key() RETURNS trigger LANGUAGE plpgsql AS "
                "'BEGIN RAISE EXCEPTION ''keys are locked for the audit''; END'");
            db->ExecuteStatement("CREATE TRIGGER lock_keys BEFORE INSERT ON " + table +
                                 " FOR EACH ROW EXECUTE FUNCTION refuse_key()");
            return;
        }
        db->ExecuteStatement(QStringLiteral("CREATE TRIGGER lock_keys BEFORE INSERT ON %1 BEGIN "
                                            "SELECT RAISE(%2, 'keys are locked for the audit'); "
                                            "END")
                                 .arg(table, sqliteResolution));
    }

    void unlockKeys(const QString& table = "eds_primarykey") {
        db->ExecuteStatement(onPostgres() ? "DROP TRIGGER lock_keys ON " + table
                                          : "DROP TRIGGER lock_keys");
    }

    std::unique_ptr<Studio::MainWindow> studio;
    std::deque<std::pair<QString, Script>> scripts;
};

// Each database the studio runs on; PostgreSQL when the test script started a server.
INSTANTIATE_TEST_SUITE_P(Databases, StudioEndToEndTest, AllDatabases(), targetName);

TEST_P(StudioEndToEndTest, AsciiDocumentIsSavedClosedAndFoundAgain) {
    pickInTree(0); // a cancelled entity dialog creates no document
    studio->actNewAscii->trigger();
    EXPECT_EQ(studio->documentTabs->count(), 0);

    DocumentWindow* doc = buildCellDocument();
    ASSERT_TRUE(doc);
    EXPECT_EQ(studio->documentTabs->tabText(0), "New ASCII Data Source*");
    // A name in use, without regard to case and blanks, or too long is asked again.
    app->inputBoxes.clear();
    app->inputAnswers = {" cell TRAFFIC feed ", QString(61, QLatin1Char('x')), "Cell Counters"};
    save();
    EXPECT_TRUE(app->msgBoxes.isEmpty()) << lastMessage().toStdString();
    ASSERT_EQ(app->inputBoxes.size(), 3);
    EXPECT_EQ(QStringList({app->inputBoxes[0].prompt, app->inputBoxes[1].prompt,
                           app->inputBoxes[2].prompt, app->inputBoxes[2].title}),
              QStringList({"Please enter a name for this data source",
                           "A data source named \"cell TRAFFIC feed\" already exists. Please "
                           "enter another name",
                           "A name has at most 60 characters. Please enter a shorter name",
                           "Save ASCII Data Source"}));
    EXPECT_FALSE(doc->IsModified());
    EXPECT_EQ(studio->documentTabs->tabText(0) + "|" + studio->statusBar()->currentMessage(),
              "Cell Counters|Saved \"Cell Counters\"");
    EXPECT_TRUE(closeCurrent());
    EXPECT_EQ(listing("Cell Counters"), "ASCII Data Sources|Cell|Yes");

    DocumentWindow* reopened = reopen("Cell Counters");
    ASSERT_TRUE(reopened);
    EXPECT_EQ(reopened->lblEntity->text(), "Entity: Cell");
    reopened->columnEditor->setFocus();
    studio->actHelp->trigger();
    EXPECT_EQ(app->helpShown, QStringList{"ASCII Data Source"});
    const XDataSourcesGen& settings = *reopened->asciiEditor;
    EXPECT_EQ(
        QStringList({settings.Eds_Description(), settings.Eds_File(), settings.Eds_Delimeter(),
                     settings.findChild<QComboBox*>("cboFrequency")->currentText()}),
        QStringList({"Cell counters, O'Brien's export", "/data/cells.csv", ",", "Hourly"}));
    EXPECT_TRUE(settings.findChild<QCheckBox*>("ckTimeSeries")->isChecked());
    expectCellLayout(*reopened);
    // What the creating procedure does not take is written when the field is registered.
    EXPECT_EQ(count("qvd_dict_name n, qvd_field_def d, qvd_field_extra x",
                    "n.name = 'Drops_Ext' AND d.field_id = n.field_id AND d.owner_id = 7 AND "
                    "x.field_id = n.field_id AND x.extra_value = 'drops_ext'"),
              1);

    // Opening it again, also by name as --open does, only shows its tab.
    EXPECT_EQ(reopen("Cell Counters"), reopened);
    EXPECT_TRUE(studio->OpenDocumentNamed("CELL COUNTERS"));
    EXPECT_EQ(studio->documentTabs->count(), 1);
    EXPECT_FALSE(studio->OpenDocumentNamed("ASCII Data Sources"));
    EXPECT_TRUE(studio->OpenDocumentNamed("cell traffic feed"));
    EXPECT_EQ(studio->CurrentDocument()->Title(), "Cell Traffic Feed");
}

TEST_P(StudioEndToEndTest, OdbcDocumentIsSavedClosedAndFoundAgain) {
    DocumentWindow* doc = newDocument(studio->actNewOdbc, TrunkGroupEntity);
    ASSERT_TRUE(doc && doc->odbcEditor);
    XDataSourcesODBC& settings = *doc->odbcEditor;
    // A box takes no more than its database column holds.
    type(settings.findChild<QLineEdit*>("txtDB_UserId"), QString(80, QLatin1Char('u')));
    EXPECT_EQ(settings.UserId().size(), 60);
    const QStringList login{"pmdb02", "PMSTAGE", "TG_HOURLY", "pm_reader", "it's secret"};
    for (int i = 0; i < login.size(); ++i) {
        const char* boxes[] = {"Server", "Database", "Table", "UserId", "Password"};
        type(settings.findChild<QLineEdit*>(QStringLiteral("txtDB_") + boxes[i]), login[i]);
    }
    // Not a time series: the time-stamp column goes, so TG is the first.
    settings.findChild<QCheckBox*>("ckTimeSeries")->click();
    appendColumn(*doc, "TG");
    chooseType(*doc, 1, "String");
    pickKey(TrunkGroupNameField, 1);
    command(*doc, "Key")->trigger();
    appendColumn(*doc, "BLOCKED");
    chooseType(*doc, 2, "Float");
    createField("TG_Blocked_Ext", "UMTS", "Sum");
    command(*doc, "Field")->trigger();

    // A failed save shows the statement that failed, but neither its password nor the
    // database's; nor do the window titles and the status bar.
    lockKeys("ABORT", "eds_odbc_file");
    save("Trunk Group Hourly");
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_THAT(lastMessage().toStdString(), HasSubstr("DB_Password) VALUES ("));
    QStringList shown{studio->windowTitle(),
                      studio->statusBar()->currentMessage(),
                      studio->lblConnection->text(),
                      app->msgBoxes[0].prompt,
                      app->msgBoxes[0].title,
                      doc->windowTitle(),
                      doc->Title()};
    const QString databasePassword = QUrl(qEnvironmentVariable("ORVANE_TEST_PG")).password();
    for (const QString& secret : {QStringLiteral("secret"), databasePassword}) {
        if (!secret.isEmpty()) {
            EXPECT_THAT(shown.join('\n').toStdString(), Not(HasSubstr(secret.toStdString())));
        }
    }
    unlockKeys("eds_odbc_file");
    save("Trunk Group Hourly");
    EXPECT_EQ(app->msgBoxes.size(), 1) << lastMessage().toStdString();
    EXPECT_TRUE(closeCurrent());
    EXPECT_EQ(listing("Trunk Group Hourly"), "ODBC Data Sources|Trunk Group|No");

    DocumentWindow* reopened = reopen("Trunk Group Hourly");
    ASSERT_TRUE(reopened && reopened->odbcEditor);
    const XDataSourcesODBC& stored = *reopened->odbcEditor;
    EXPECT_EQ(QStringList({stored.Server(), stored.Database(), stored.Table(), stored.UserId(),
                           stored.Password()}),
              login);
    EXPECT_FALSE(stored.findChild<QCheckBox*>("ckTimeSeries")->isChecked());
    EXPECT_EQ(gridRow(*reopened, Rows::Name) + "|" + gridRow(*reopened, Rows::KeyField),
              "TG|BLOCKED|Trunk Group: Trunk_Group_Name|");
    const CDataSourcesColumns& columns = *reopened->Document()->Columns();
    EXPECT_EQ(columns.TSColumn(), nullptr);
    const auto blocked = columns.Item("BLOCKED")->Field();
    ASSERT_TRUE(blocked);
    EXPECT_EQ(blocked->Technologies() + "|" + blocked->DataType(), "UMTS|F");

    // A text longer than its column, as an import may bring, or a required one of blanks, is
    // refused before anything is written, naming the field.
    for (const auto& [server, refusal] :
         {std::pair{QString(101, QLatin1Char('s')),
                    "The Server has 101 characters; it may have at most 100."},
          std::pair{QStringLiteral("   "), "The Server must not be blank."}}) {
        reopened->Document()->setServer(server);
        EXPECT_THAT(errorOf([&] {
                        Studio::DocumentStore(*db).Write(*reopened->Document(), *reopened->Type(),
                                                         false);
                    }),
                    HasSubstr(refusal));
    }
    EXPECT_EQ(count("eds_odbc_file", "db_server = 'pmdb02'"), 1);
}

// A save that the database refuses part-way leaves the database as it was and the edits on
// screen; once the cause is gone the same edits save.
TEST_P(StudioEndToEndTest, FailedSaveChangesNothingAndCanBeRetried) {
    DocumentWindow* doc = buildCellDocument();
    ASSERT_TRUE(doc);
    lockKeys("ABORT");
    const QStringList before = savedRows();
    save("Cell Counters");
    EXPECT_EQ(savedRows(), before);
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_THAT(lastMessage().toStdString(),
                AllOf(HasSubstr("The data source was not saved; nothing was changed in the "
                                "database."),
                      HasSubstr("keys are locked for the audit")));
    EXPECT_EQ(std::tuple(app->msgBoxes.last().icon, app->pointer),
              std::tuple(MsgBoxIcon::Critical, DefaultPointer));
    EXPECT_EQ(std::tuple(doc->IsModified(), doc->Document()->DocName()),
              std::tuple(true, QString()));
    EXPECT_EQ(studio->CurrentDocument(), doc);
    expectCellLayout(*doc);

    unlockKeys();
    save("Cell Counters");
    EXPECT_EQ(app->msgBoxes.size(), 1) << lastMessage().toStdString();
    EXPECT_FALSE(doc->IsModified());
    expectCellLayout(*doc);
    const qint32 id = doc->DocumentId();
    EXPECT_EQ(std::tuple(count("eds_column", QStringLiteral("eds_id = %1").arg(id)),
                         count("qvd_dict_name", "name = 'Drops_Ext'")),
              std::tuple(4, 1));

    // A stored document: a column renamed, one deleted, a new key column and a new column with a
    // new field. The rename and the deletion are written before the new key is refused; this time
    // the database ends the transaction itself, so the studio's own rollback fails as well.
    selectColumn(*doc, 2);
    app->inputAnswers.push_back("CELL_ID");
    command(*doc, "ReName")->trigger();
    selectColumn(*doc, 4);
    command(*doc, "Delete")->trigger();
    appendColumn(*doc, "REMARK");
    pickKey(CellIdentityField, 2);
    command(*doc, "Key")->trigger();
    appendColumn(*doc, "EXTRA");
    createField("Extra_Ext", "GSM", "Sum");
    command(*doc, "Field")->trigger();
    lockKeys("ROLLBACK");
    const QStringList stored = savedRows();
    save();
    EXPECT_EQ(savedRows(), stored);
    ASSERT_EQ(app->msgBoxes.size(), 2);
    EXPECT_THAT(lastMessage().toStdString(), HasSubstr("keys are locked for the audit"));
    EXPECT_EQ(std::tuple(doc->IsModified(), doc->DocumentId()), std::tuple(true, id));
    const auto expectEdited = [&] {
        EXPECT_EQ(gridRow(*doc, Rows::Name), "Time Stamp|CELL_ID|DROPS|REMARK|EXTRA");
        EXPECT_EQ(gridRow(*doc, Rows::Field), "||Drops_Ext||Extra_Ext");
        EXPECT_EQ(gridRow(*doc, Rows::KeyField), "|Cell: Cell_Name||Cell: CI|");
        const auto remark = doc->Document()->Columns()->Item("REMARK");
        ASSERT_TRUE(remark);
        EXPECT_EQ(std::tuple(remark->Key_Ordinal(), remark->KeyFld_Id()),
                  std::tuple(2, CellIdentityField));
    };
    expectEdited();

    unlockKeys();
    save();
    EXPECT_EQ(app->msgBoxes.size(), 2) << lastMessage().toStdString();
    EXPECT_FALSE(doc->IsModified());
    expectEdited();
    const QString ofDocument = QStringLiteral("eds_id = %1").arg(id);
    EXPECT_EQ(QList<qint32>({count("eds_column", ofDocument),
                             count("eds_column", ofDocument + " AND col_name IN ('CELL_ID', "
                                                              "'REMARK', 'EXTRA')"),
                             count("eds_primarykey", ofDocument)}),
              QList<qint32>({5, 3, 2}));
    EXPECT_EQ(count("qvd_dict_name n, qvd_eds_def m",
                    "n.name = 'Extra_Ext' AND m.field_id = n.field_id AND m." + ofDocument),
              1);
}

// The server drops the connection under the open window, as a restart does: the save that finds
// it gone fails and keeps the edits, the status bar says so, and the next save opens it again.
TEST_P(StudioEndToEndTest, SaveAfterTheServerDroppedTheConnectionSucceeds) {
    if (!onPostgres())
        GTEST_SKIP() << "only a server drops a connection";
    DocumentWindow* doc = buildCellDocument();
    ASSERT_TRUE(doc);
    dropConnections();
    save("Cell Counters");
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_THAT(lastMessage().toStdString(),
                HasSubstr("was lost; it is opened again on the next try"));
    EXPECT_THAT(studio->lblConnection->text().toStdString(), HasSubstr("connection lost"));

    save("Cell Counters");
    EXPECT_EQ(app->msgBoxes.size(), 1) << lastMessage().toStdString();
    EXPECT_FALSE(doc->IsModified());
    EXPECT_EQ(count("eds_column", QStringLiteral("eds_id = %1").arg(doc->DocumentId())), 4);
    EXPECT_THAT(studio->lblConnection->text().toStdString(), HasSubstr(": connected"));
}

// Open Database... closes the documents of the old database, asking to save the modified ones,
// and lists the data sources of the new one.
TEST_P(StudioEndToEndTest, OpenDatabaseClosesTheDocumentsAndListsTheOtherDatabase) {
    if (onPostgres())
        GTEST_SKIP() << "switching is the same on every backend";
    DocumentWindow* doc = buildCellDocument();
    ASSERT_TRUE(doc);
    save("Cell Counters");
    ASSERT_TRUE(listed("Cell Counters"));
    selectColumn(*doc, 4);
    command(*doc, "Delete")->trigger();
    std::shared_ptr<Studio::SqlQueryService> switched;
    studio->SetDatabaseSwitch(
        [&](const std::shared_ptr<Studio::SqlQueryService>& database) { switched = database; });
    QTemporaryDir folder;
    const QString other = folder.filePath("other.db");

    app->msgBoxAnswers = {MsgBoxResult::Cancel};
    EXPECT_FALSE(studio->OpenDatabase(other));
    EXPECT_FALSE(switched);
    EXPECT_EQ(studio->OpenDocuments(), QList<DocumentWindow*>{doc});

    app->msgBoxAnswers = {MsgBoxResult::No};
    EXPECT_TRUE(studio->OpenDatabase(other));
    EXPECT_EQ(studio->OpenDocuments().size(), 0);
    ASSERT_TRUE(switched);
    EXPECT_THAT(switched->DatabaseShown().toStdString(), HasSubstr(other.toStdString()));
    EXPECT_FALSE(listed("Cell Counters"));
    EXPECT_THAT(studio->lblConnection->text().toStdString(),
                AllOf(HasSubstr("other.db"), HasSubstr(": connected")));
}

// A save that committed is a saved document even when reading it back fails: the list shows it,
// and the window, which can no longer show what is stored, closes once the user gives up.
TEST_P(StudioEndToEndTest, ACommittedSaveStaysSavedWhenReadingItBackFails) {
    if (onPostgres())
        GTEST_SKIP() << "a position that is not a number needs SQLite's loose column types";
    DocumentWindow* doc = buildCellDocument();
    ASSERT_TRUE(doc);
    db->ExecuteStatement("CREATE TRIGGER garble AFTER INSERT ON eds_column WHEN "
                         "NEW.col_name = 'NOTE' BEGIN UPDATE eds_column SET col_position = 'x' "
                         "WHERE col_id = NEW.col_id; END");
    app->msgBoxAnswers = {MsgBoxResult::Yes, MsgBoxResult::No};
    save("Cell Counters");
    ASSERT_EQ(app->msgBoxes.size(), 2);
    EXPECT_THAT(lastMessage().toStdString(),
                HasSubstr("The data source \"Cell Counters\" was saved, but reading it back "
                          "failed"));
    EXPECT_EQ(studio->statusBar()->currentMessage(), "Saved \"Cell Counters\"");
    EXPECT_EQ(std::tuple(listed("Cell Counters") != nullptr,
                         count("eds_document", "name = 'Cell Counters'")),
              std::tuple(true, 1));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(studio->OpenDocuments().isEmpty());
}

TEST_P(StudioEndToEndTest, ClosingAModifiedDocumentAsksToSaveIt) {
    DocumentWindow* doc = buildCellDocument();
    ASSERT_TRUE(doc);

    app->msgBoxAnswers = {MsgBoxResult::Cancel};
    EXPECT_FALSE(closeCurrent());
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes.last().prompt,
              "Do you want to save the changes to New ASCII Data Source?");
    EXPECT_EQ(app->msgBoxes.last().buttons, MsgBoxButtons::YesNoCancel);
    EXPECT_EQ(studio->OpenDocuments(), QList<DocumentWindow*>{doc});

    // Yes, but the name prompt cancelled: nothing is saved and the document stays.
    app->msgBoxAnswers = {MsgBoxResult::Yes};
    EXPECT_FALSE(closeCurrent());
    EXPECT_EQ(studio->OpenDocuments(), QList<DocumentWindow*>{doc});
    EXPECT_EQ(count("eds_document"), 2);

    app->msgBoxAnswers = {MsgBoxResult::Yes};
    app->inputAnswers = {"Cell Counters"};
    EXPECT_TRUE(closeCurrent());
    EXPECT_EQ(studio->OpenDocuments().size(), 0);
    ASSERT_TRUE(listed("Cell Counters"));

    // Unmodified, it closes without a question.
    DocumentWindow* last = reopen("Cell Counters");
    ASSERT_TRUE(last);
    const qint32 id = last->DocumentId();
    const auto questions = app->msgBoxes.size();
    EXPECT_TRUE(closeCurrent());
    EXPECT_EQ(app->msgBoxes.size(), questions);

    // Leaving the studio asks for every modified document; Cancel stays, No drops the edit.
    last = reopen("Cell Counters");
    ASSERT_TRUE(last);
    selectColumn(*last, 4);
    command(*last, "Delete")->trigger();
    app->msgBoxAnswers = {MsgBoxResult::Cancel};
    EXPECT_FALSE(studio->close());
    EXPECT_TRUE(studio->isVisible());
    EXPECT_EQ(studio->OpenDocuments(), QList<DocumentWindow*>{last});
    app->msgBoxAnswers = {MsgBoxResult::No};
    EXPECT_TRUE(studio->close());
    EXPECT_EQ(app->msgBoxes.size(), questions + 2);
    EXPECT_EQ(count("eds_column", QStringLiteral("eds_id = %1").arg(id)), 4);
}

TEST_P(StudioEndToEndTest, DeleteRemovesTheDocumentWithItsColumnsAfterAsking) {
    DocumentWindow* doc = buildCellDocument();
    ASSERT_TRUE(doc);
    save("Cell Counters");
    const qint32 id = doc->DocumentId();
    ASSERT_GT(id, 0);
    const QString ofDocument = QStringLiteral("eds_id = %1").arg(id);

    // Del in the document's grid is the grid's; in the list of data sources it deletes one.
    studio->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(studio.get()));
    studio->documentTree->setCurrentItem(listed("Cell Counters"));
    grid(*doc).setFocus();
    QTest::keyClick(&grid(*doc), Qt::Key_Delete);
    EXPECT_TRUE(app->msgBoxes.isEmpty()) << lastMessage().toStdString();
    app->msgBoxAnswers = {MsgBoxResult::No};
    studio->documentTree->setFocus();
    QTest::keyClick(studio->documentTree, Qt::Key_Delete);
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes.last().prompt,
              "Delete the data source \"Cell Counters\" with all its columns?");
    EXPECT_EQ(app->msgBoxes.last().defaultButton, MsgBoxDefaultButton::Second) << "No";
    EXPECT_EQ(std::tuple(listed("Cell Counters") != nullptr, count("eds_column", ofDocument)),
              std::tuple(true, 4));

    app->msgBoxAnswers = {MsgBoxResult::Yes};
    studio->actDelete->trigger();
    EXPECT_EQ(std::tuple(listing("Cell Counters"), studio->OpenDocuments().size()),
              std::tuple(QString("<not listed>"), 0));
    EXPECT_EQ(count("eds_document", QStringLiteral("id = %1").arg(id)), 0);
    for (const char* table : {"eds_ascii_file", "eds_column", "eds_primarykey", "qvd_eds_def"})
        EXPECT_EQ(count(QLatin1String(table), ofDocument), 0) << table;
    EXPECT_EQ(count("qvd_dict_name", "name = 'Drops_Ext'"), 0);
    // The demo's documents stay.
    EXPECT_EQ(count("eds_document"), 2);

    // A data source whose field a report template uses is kept, as its column would be.
    db->ExecuteStatement("INSERT INTO pm_templatefield (templateid, field_id) VALUES (1, 28)");
    studio->documentTree->setCurrentItem(listed("Cell Traffic Feed"));
    studio->actDelete->trigger();
    EXPECT_THAT(lastMessage().toStdString(), HasSubstr("currently in use in"));
    EXPECT_EQ(std::tuple(listed("Cell Traffic Feed") != nullptr, count("eds_column", "eds_id = 1")),
              std::tuple(true, 4));
}

// Two sessions on one database: the later save of one data source is told, keeps its edits and
// may store them as a copy.
TEST_P(StudioEndToEndTest, TheLaterOfTwoSavesIsToldAndKeepsItsEdits) {
    auto db2 = std::make_shared<Studio::SqlQueryService>(connectionText());
    auto service2 = std::make_shared<Studio::DictionaryService>(*db2);
    const auto session = [&](bool second) {
        HostRegistry::Install({second ? db2 : db, second ? service2 : service, app, factory});
    };
    db->ExecuteStatement("UPDATE eds_odbc_file SET db_password = 'pw' WHERE eds_id = 2");
    Studio::MainWindow other(db2);
    session(true);
    other.OpenDocument(2);
    session(false);
    DocumentWindow* mine = reopen("Trunk Group Export");
    ASSERT_TRUE(mine && other.CurrentDocument());
    appendColumn(*mine, "Mine");
    session(true);
    appendColumn(*other.CurrentDocument(), "Theirs");
    ASSERT_TRUE(other.SaveCurrent()) << lastMessage().toStdString();
    session(false);

    app->msgBoxAnswers = {MsgBoxResult::Cancel, MsgBoxResult::Yes};
    app->inputAnswers = {"Trunk Group Export", "Trunk Group Mine"};
    EXPECT_FALSE(studio->SaveCurrent());
    EXPECT_THAT(
        lastMessage().toStdString(),
        HasSubstr("\"Trunk Group Export\" was changed by someone else since it was opened"));
    EXPECT_TRUE(mine->IsModified());
    EXPECT_TRUE(studio->SaveCurrent()) << lastMessage().toStdString();
    EXPECT_EQ(mine->Title() + "|" + mine->Document()->Password(), "Trunk Group Mine|pw");
    EXPECT_EQ(count("eds_column",
                    "col_name = 'Mine' AND eds_id = " + QString::number(mine->DocumentId())),
              1);
    EXPECT_EQ(count("eds_column", "eds_id = 2 AND col_name IN ('Mine', 'Theirs')"), 1);
}

// Another session's new data source of the same name, not yet committed when this one checks the
// name and committed while this one's insert waits for it, as only PostgreSQL lets a test stage.
TEST_P(StudioEndToEndTest, ANewDataSourceWhoseNameIsTakenMeanwhileIsKept) {
    if (!onPostgres())
        GTEST_SKIP() << "needs a server on which a second session's insert can wait";
    DocumentWindow* fresh = buildCellDocument();
    ASSERT_TRUE(fresh);
    std::promise<void> inserted;
    std::thread other([&] {
        Studio::SqlQueryService db2(connectionText());
        db2.BeginTransaction();
        db2.ExecuteStatement("INSERT INTO eds_document (id, name, eds_type, entity_id, doc_type) "
                             "VALUES (900, 'Cell Counters', 'A', 7, 'ASCII Data Source')");
        inserted.set_value();
        QThread::msleep(500);
        db2.CommitTransaction();
    });
    inserted.get_future().wait();
    app->msgBoxAnswers = {MsgBoxResult::Yes};
    app->inputAnswers = {"Cell Counters", "Cell Counters 2"};
    studio->actSave->trigger();
    other.join();
    EXPECT_THAT(lastMessage().toStdString(),
                HasSubstr("Someone else saved a data source named \"Cell Counters\" meanwhile"));
    EXPECT_EQ(fresh->Title(), "Cell Counters 2");
}

// The next session on the database opens what the last one left open.
TEST_P(StudioEndToEndTest, ASessionReopensWhatWasOpen) {
    QTemporaryDir folder;
    QSettings session(folder.filePath("session.ini"), QSettings::IniFormat);
    studio->RestoreSession(session);
    ASSERT_TRUE(reopen("Trunk Group Export"));
    ASSERT_TRUE(reopen("Cell Traffic Feed"));
    EXPECT_TRUE(studio->close());
    EXPECT_FALSE(session.value("window/geometry").toByteArray().isEmpty());

    studio = std::make_unique<Studio::MainWindow>(db);
    studio->RestoreSession(session);
    QStringList open;
    for (DocumentWindow* window : studio->OpenDocuments())
        open << window->Title();
    EXPECT_EQ(open, QStringList({"Trunk Group Export", "Cell Traffic Feed"}));
}

// Without edit permission (--read-only) the studio shows data sources and changes none.
TEST_P(StudioEndToEndTest, ReadOnlyStudioChangesNothing) {
    app->editPermission = false;
    studio = std::make_unique<Studio::MainWindow>(db);
    studio->show();
    DocumentWindow* doc = reopen("Cell Traffic Feed");
    ASSERT_TRUE(doc);
    for (QAction* change :
         {studio->actNewAscii, studio->actNewOdbc, studio->actSave, studio->actDelete})
        EXPECT_FALSE(change->isEnabled()) << change->objectName().toStdString();
    EXPECT_EQ(std::tuple(studio->actOpen->isEnabled(), studio->actClose->isEnabled()),
              std::tuple(true, true));

    // What the grid still lets the user try is never written, and closing asks nothing.
    appendColumn(*doc, "EXTRA");
    studio->SaveCurrent();
    EXPECT_TRUE(closeCurrent());
    EXPECT_EQ(count("eds_column", "eds_id = 1"), 4);
    EXPECT_TRUE(app->msgBoxes.isEmpty()) << lastMessage().toStdString();
}

// A CSV with a header: Detect Columns lays it out, the saved document checks clean against the
// file, and a column renamed in the file is named by the check.
TEST_P(StudioEndToEndTest, DetectedColumnsSaveAndCheckAgainstTheirFile) {
    QTemporaryDir dir;
    const QString path = dir.filePath("cells.csv");
    const auto writeCsv = [&path](const QByteArray& header) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(header + "\nA1,2024-01-01 10:00,3,0.5,7\nB2,2024-01-01 11:00,4,1.25,9\n");
    };
    // The entity's own field of the same name is proposed and mapped, not created again.
    writeCsv("Cell,When,Drops,Rate,Call_Attempts");
    DocumentWindow* doc = newDocument(studio->actNewAscii, CellEntity);
    ASSERT_TRUE(doc);
    type(doc->asciiEditor->findChild<QLineEdit*>("txtFile"), path);
    choose(doc->asciiEditor->findChild<QComboBox*>("cboDelimeter"), "comma");
    expectDialog("fDetectColumns",
                 [](QDialog& dialog) { dialog.findChild<QPushButton*>("cmdOk")->click(); });
    command(*doc, "Detect")->trigger();
    EXPECT_EQ(gridRow(*doc, Rows::Name), "Time Stamp|Cell|Drops|Rate|Call_Attempts");
    selectColumn(*doc, 2);
    pickKey(CellNameField, 1);
    command(*doc, "Key")->trigger();
    save("Detected cells");
    ASSERT_FALSE(doc->IsModified()) << lastMessage().toStdString();

    ASSERT_TRUE(closeCurrent());
    doc = reopen("Detected cells");
    ASSERT_TRUE(doc && doc->cmdCheckFile);
    doc->cmdCheckFile->click();
    EXPECT_EQ(lastMessage() + gridRow(*doc, Rows::Field),
              "The file matches the definition.||||Call_Attempts");
    EXPECT_EQ(count("qvd_dict_name", "name = 'Call_Attempts'"), 1);

    // A stored layout: the appended column's row exists before its field is mapped.
    writeCsv("Cell,When,Drops,Rate,Call_Attempts,HO_Attempts");
    expectDialog("fDetectColumns",
                 [](QDialog& dialog) { dialog.findChild<QPushButton*>("cmdOk")->click(); });
    command(*doc, "Detect")->trigger();
    save("Detected cells");
    ASSERT_FALSE(doc->IsModified()) << lastMessage().toStdString();
    EXPECT_EQ(gridRow(*doc, Rows::Field), "||||Call_Attempts|HO_Attempts");
    EXPECT_EQ(count("qvd_dict_name", "name = 'HO_Attempts'"), 1);
}

// The File menu's Export and Import, past their file dialogs.
TEST_P(StudioEndToEndTest, ExportWritesTheSelectionAndImportReplacesOnlyWhenTheUserAgrees) {
    const QString name = "Cell Traffic Feed";
    const auto idOf = [&] {
        return db->ValueAsLong(scalar("SELECT id v FROM eds_document "
                                      "WHERE name = '" +
                                      name + "'"));
    };
    const qint32 stored = idOf();
    QTemporaryDir folder;
    const QString path = folder.filePath("cell.json");
    studio->documentTree->setCurrentItem(listed(name));
    studio->ExportSelected(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), Studio::DefinitionTransfer(*db).Export(stored));

    ASSERT_TRUE(studio->OpenDocumentNamed(name));
    app->msgBoxAnswers = {MsgBoxResult::No};
    studio->ImportFiles({path});
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_THAT(lastMessage().toStdString(), HasSubstr("exists already"));
    EXPECT_EQ(std::tuple(idOf(), studio->OpenDocuments().size()), std::tuple(stored, 1));

    app->msgBoxAnswers = {MsgBoxResult::Yes};
    studio->ImportFiles({path});
    EXPECT_EQ(app->msgBoxes.size(), 2);
    EXPECT_NE(idOf(), stored);
    EXPECT_EQ(std::tuple(studio->OpenDocuments().size(), listed(name) != nullptr),
              std::tuple(0, true));
}

} // namespace Orvane::Testing
