#include "studio/app/MainWindow.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesData.h"
#include "studio/app/ConnectionDialog.h"
#include "studio/app/DefinitionTransfer.h"
#include "studio/app/DocumentStore.h"
#include "studio/app/DocumentWindow.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/SqlQueryService.h"
#include "studio/db/TransactionScope.h"

#include <QAction>
#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>

namespace Orvane::Studio {

namespace {

constexpr int IdRole = Qt::UserRole + 1;
// Reading the connection's state costs nothing: no statement is sent.
constexpr int ConnectionStateMilliseconds = 2000;

IApplication& app() {
    return HostRegistry::App();
}

} // namespace

MainWindow::MainWindow(std::shared_ptr<SqlQueryService> database, QWidget* parent)
    : QMainWindow(parent)
    , m_database(std::move(database)) {
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(tr("Orvane Studio"));
    createActions();
    createMenusAndToolbar();
    createPanes();
    lblConnection = new QLabel;
    lblConnection->setObjectName(QStringLiteral("lblConnection"));
    statusBar()->addPermanentWidget(lblConnection);
    auto* connectionTimer = new QTimer(this);
    connect(connectionTimer, &QTimer::timeout, this, &MainWindow::updateConnectionState);
    connectionTimer->start(ConnectionStateMilliseconds);
    updateConnectionState();
    RefreshDocuments();
    updateActions();
    resize(1100, 700);
}

MainWindow::~MainWindow() = default;

void MainWindow::createActions() {
    const auto action = [this](const char* name, const QString& text, const QKeySequence& keys) {
        auto* act = new QAction(text, this);
        act->setObjectName(QLatin1String(name));
        act->setShortcut(keys);
        return act;
    };
    actOpenDatabase = action("actOpenDatabase", tr("Open &Database..."), QKeySequence());
    actNewAscii = action("actNewAscii", tr("New &ASCII Data Source..."), QKeySequence::New);
    actNewOdbc = action("actNewOdbc", tr("New &ODBC Data Source..."),
                        QKeySequence(QStringLiteral("Ctrl+Shift+N")));
    actOpen = action("actOpen", tr("&Open"), QKeySequence::Open);
    actSave = action("actSave", tr("&Save"), QKeySequence::Save);
    actClose = action("actClose", tr("&Close"), QKeySequence::Close);
    actDelete = action("actDelete", tr("&Delete..."), QKeySequence::Delete);
    actExport = action("actExport", tr("&Export..."), QKeySequence());
    actImport = action("actImport", tr("&Import..."), QKeySequence());
    actHelp = action("actHelp", tr("&User Guide"), QKeySequence::HelpContents);

    connect(actOpenDatabase, &QAction::triggered, this, &MainWindow::chooseDatabase);
    connect(actNewAscii, &QAction::triggered, this,
            [this] { NewDocument(StudioDocumentType::Ascii()); });
    connect(actNewOdbc, &QAction::triggered, this,
            [this] { NewDocument(StudioDocumentType::Odbc()); });
    connect(actOpen, &QAction::triggered, this, [this] { OpenDocument(selectedDocumentId()); });
    connect(actSave, &QAction::triggered, this, [this] { SaveCurrent(); });
    connect(actClose, &QAction::triggered, this, [this] { CloseDocument(CurrentDocument()); });
    connect(actDelete, &QAction::triggered, this, &MainWindow::DeleteSelected);
    connect(actExport, &QAction::triggered, this, &MainWindow::chooseExportFile);
    connect(actImport, &QAction::triggered, this, &MainWindow::chooseImportFiles);
    // The page of what the user is looking at: the open document's kind, else the main window.
    connect(actHelp, &QAction::triggered, this, [this] {
        DocumentWindow* document = CurrentDocument();
        app().ShowHelp(document ? document->Type()->TypeName() : QStringLiteral("MainWindow"));
    });
}

void MainWindow::createMenusAndToolbar() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(actOpenDatabase);
    file->addSeparator();
    file->addActions({actNewAscii, actNewOdbc, actOpen});
    file->addSeparator();
    file->addActions({actSave, actClose, actDelete});
    file->addSeparator();
    file->addActions({actExport, actImport});
    file->addSeparator();
    QAction* quit = file->addAction(tr("E&xit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);

    menuBar()->addMenu(tr("&Help"))->addAction(actHelp);

    QToolBar* toolbar = addToolBar(tr("Documents"));
    toolbar->setObjectName(QStringLiteral("tbDocuments"));
    toolbar->addActions({actNewAscii, actNewOdbc, actOpen, actSave, actClose, actDelete});
}

void MainWindow::createPanes() {
    documentTree = new QTreeWidget;
    documentTree->setObjectName(QStringLiteral("documentTree"));
    documentTree->setHeaderLabels({tr("Name"), tr("Entity"), tr("Time Series")});
    documentTree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    // Del deletes a stored data source only where the data sources are listed: pressed in a
    // document's grid or text boxes it must never reach this command.
    actDelete->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    documentTree->addAction(actDelete);
    m_asciiCategory = new QTreeWidgetItem(documentTree, {tr("ASCII Data Sources")});
    m_odbcCategory = new QTreeWidgetItem(documentTree, {tr("ODBC Data Sources")});

    documentTabs = new QTabWidget;
    documentTabs->setObjectName(QStringLiteral("documentTabs"));
    documentTabs->setTabsClosable(true);
    documentTabs->setDocumentMode(true);

    m_splitter = new QSplitter;
    m_splitter->setObjectName(QStringLiteral("splitter"));
    m_splitter->addWidget(documentTree);
    m_splitter->addWidget(documentTabs);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({330, 770});
    setCentralWidget(m_splitter);

    connect(documentTree, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { OpenDocument(item->data(0, IdRole).toInt()); });
    connect(documentTree, &QTreeWidget::currentItemChanged, this, &MainWindow::updateActions);
    connect(documentTabs, &QTabWidget::currentChanged, this, &MainWindow::updateActions);
    connect(documentTabs, &QTabWidget::tabCloseRequested, this, [this](int index) {
        CloseDocument(static_cast<DocumentWindow*>(documentTabs->widget(index)));
    });
}

bool MainWindow::OpenDatabase(const QString& connection) {
    // Documents belong to the database they were read from.
    for (DocumentWindow* window : OpenDocuments()) {
        if (!CloseDocument(window))
            return false;
    }
    std::shared_ptr<SqlQueryService> database;
    guarded([&] { database = std::make_shared<SqlQueryService>(connection); });
    if (!database)
        return false;
    if (m_switchDatabase)
        m_switchDatabase(database);
    m_database = database;
    if (m_session)
        m_session->setValue(LastDatabaseKey, ConnectionDescription::WithoutPassword(connection));
    RefreshDocuments();
    updateActions();
    updateConnectionState();
    return true;
}

void MainWindow::chooseDatabase() {
    ConnectionDialog dialog(QString(), tr("The open documents are closed first."), this);
    dialog.cmdQuit->setText(tr("Cancel"));
    if (app().ShowModal(dialog) == QDialog::Accepted && !dialog.Connection().isEmpty())
        OpenDatabase(dialog.Connection());
}

void MainWindow::RefreshDocuments() {
    guarded([this] {
        qDeleteAll(m_asciiCategory->takeChildren());
        qDeleteAll(m_odbcCategory->takeChildren());
        for (const DocumentSummary& doc : DocumentStore(*m_database).List()) {
            QTreeWidgetItem* category = doc.typeName == StudioDocumentType::Odbc()->TypeName()
                                            ? m_odbcCategory
                                            : m_asciiCategory;
            auto* item = new QTreeWidgetItem(
                category, {doc.name, doc.entityName, doc.isTimeSeries ? tr("Yes") : tr("No")});
            item->setData(0, IdRole, doc.id);
        }
        documentTree->expandAll();
    });
}

void MainWindow::NewDocument(const std::shared_ptr<StudioDocumentType>& type) {
    guarded([&] {
        if (DocumentWindow* window = DocumentWindow::CreateNew(type, *m_database))
            addDocumentTab(window);
    });
}

void MainWindow::OpenDocument(qint32 documentId) {
    if (documentId <= 0)
        return;
    if (DocumentWindow* open = windowOf(documentId)) {
        documentTabs->setCurrentWidget(open);
        return;
    }
    guarded([&] { addDocumentTab(DocumentWindow::Open(documentId, *m_database)); });
}

bool MainWindow::OpenDocumentNamed(const QString& name) {
    const QList<QTreeWidgetItem*> found =
        documentTree->findItems(name, Qt::MatchFixedString | Qt::MatchRecursive, 0);
    for (QTreeWidgetItem* item : found) {
        if (item->data(0, IdRole).toInt() > 0) {
            documentTree->setCurrentItem(item);
            OpenDocument(item->data(0, IdRole).toInt());
            return true;
        }
    }
    return false;
}

void MainWindow::addDocumentTab(DocumentWindow* window) {
    documentTabs->addTab(window, window->Title());
    documentTabs->setCurrentWidget(window);
    connect(window, &DocumentWindow::modifiedChanged, this,
            [this, window] { updateTabTitle(window); });
    connect(window, &DocumentWindow::saved, this, [this, window] {
        updateTabTitle(window);
        RefreshDocuments();
    });
    connect(window, &DocumentWindow::closeRequested, this,
            [this, window] { CloseDocument(window); });
    updateActions();
}

void MainWindow::updateTabTitle(DocumentWindow* window) {
    const int index = documentTabs->indexOf(window);
    if (index >= 0)
        documentTabs->setTabText(index, window->Title());
}

bool MainWindow::SaveCurrent() {
    DocumentWindow* window = CurrentDocument();
    bool saved = false;
    if (window)
        guarded([&] { saved = window->Save(); });
    if (saved)
        statusBar()->showMessage(tr("Saved \"%1\"").arg(window->Title()));
    return saved;
}

bool MainWindow::CloseDocument(DocumentWindow* window) {
    if (!window)
        return true;
    bool mayClose = false;
    guarded([&] { mayClose = window->MayClose(); });
    if (!mayClose)
        return false;
    documentTabs->removeTab(documentTabs->indexOf(window));
    window->deleteLater();
    updateActions();
    return true;
}

void MainWindow::DeleteSelected() {
    const qint32 id = selectedDocumentId();
    if (id <= 0)
        return;
    const QString name = documentTree->currentItem()->text(0);
    if (app().MsgBox(tr("Delete the data source \"%1\" with all its columns?").arg(name),
                     MsgBoxButtons::YesNo, MsgBoxIcon::Question, tr("Delete Data Source"),
                     MsgBoxDefaultButton::Second) != MsgBoxResult::Yes)
        return;
    guarded([&] { removeDocument(id); });
    RefreshDocuments();
}

void MainWindow::chooseExportFile() {
    if (selectedDocumentId() <= 0)
        return;
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Export Data Source"),
                                     documentTree->currentItem()->text(0) + QStringLiteral(".json"),
                                     tr("Data source definitions (*.json)"));
    if (!path.isEmpty())
        ExportSelected(path);
}

void MainWindow::ExportSelected(const QString& path) {
    const qint32 id = selectedDocumentId();
    if (id <= 0)
        return;
    const QString name = documentTree->currentItem()->text(0);
    guarded([&] {
        QFile file(path);
        const QByteArray text = DefinitionTransfer(*m_database).Export(id);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text) < 0)
            throw Error(tr("Cannot write %1: %2").arg(path, file.errorString()));
        statusBar()->showMessage(tr("Exported \"%1\" to %2").arg(name, path));
    });
}

void MainWindow::chooseImportFiles() {
    const QStringList paths = QFileDialog::getOpenFileNames(
        this, tr("Import Data Sources"), QString(), tr("Data source definitions (*.json)"));
    if (!paths.isEmpty())
        ImportFiles(paths);
}

void MainWindow::ImportFiles(const QStringList& paths) {
    QList<ImportInput> inputs;
    for (const QString& path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            app().MsgBox(tr("Cannot read %1: %2").arg(path, file.errorString()),
                         MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, tr("Import Data Sources"));
            return;
        }
        inputs.append({QFileInfo(path).fileName(), file.readAll()});
    }
    guarded([&] { importInputs(inputs); });
}

// A data source of the same name is replaced only when the user says so, and only once every
// open document is closed, so that no window goes on showing a replaced one.
void MainWindow::importInputs(const QList<ImportInput>& inputs) {
    DefinitionTransfer transfer(*m_database);
    ImportOutcome outcome = transfer.Import(inputs, false);
    if (outcome.nameTaken && app().MsgBox(outcome.problems.join(QStringLiteral("\n")) +
                                              tr("\n\nReplace the existing data sources?"),
                                          MsgBoxButtons::YesNo, MsgBoxIcon::Question,
                                          tr("Import Data Sources")) == MsgBoxResult::Yes) {
        for (DocumentWindow* window : OpenDocuments()) {
            if (!CloseDocument(window))
                return;
        }
        outcome = transfer.Import(inputs, true);
    } else if (outcome.nameTaken) {
        return;
    }
    RefreshDocuments();
    if (!outcome.Succeeded()) {
        app().MsgBox(tr("Nothing was imported:\n") + outcome.problems.join(QStringLiteral("\n")),
                     MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, tr("Import Data Sources"));
        return;
    }
    statusBar()->showMessage(tr("Imported %1").arg(outcome.imported.join(QStringLiteral(", "))));
}

void MainWindow::removeDocument(qint32 documentId) {
    {
        TransactionScope transaction(*m_database);
        if (!DocumentStore(*m_database).Delete(documentId))
            return;
        transaction.Commit();
    }
    if (DocumentWindow* open = windowOf(documentId)) {
        documentTabs->removeTab(documentTabs->indexOf(open));
        open->deleteLater();
    }
}

DocumentWindow* MainWindow::CurrentDocument() const {
    return static_cast<DocumentWindow*>(documentTabs->currentWidget());
}

QList<DocumentWindow*> MainWindow::OpenDocuments() const {
    QList<DocumentWindow*> windows;
    for (int i = 0; i < documentTabs->count(); ++i)
        windows << static_cast<DocumentWindow*>(documentTabs->widget(i));
    return windows;
}

DocumentWindow* MainWindow::windowOf(qint32 documentId) const {
    for (DocumentWindow* window : OpenDocuments()) {
        if (window->DocumentId() == documentId)
            return window;
    }
    return nullptr;
}

qint32 MainWindow::selectedDocumentId() const {
    const QTreeWidgetItem* item = documentTree->currentItem();
    return item ? item->data(0, IdRole).toInt() : 0;
}

// Without edit permission data sources can be opened and closed, never changed.
void MainWindow::updateActions() {
    const bool mayChange = app().EditPermission();
    const bool hasDocument = CurrentDocument() != nullptr;
    const bool hasSelection = selectedDocumentId() > 0;
    actNewAscii->setEnabled(mayChange);
    actNewOdbc->setEnabled(mayChange);
    actSave->setEnabled(mayChange && hasDocument);
    actClose->setEnabled(hasDocument);
    actOpen->setEnabled(hasSelection);
    actDelete->setEnabled(mayChange && hasSelection);
    actExport->setEnabled(hasSelection);
    actImport->setEnabled(mayChange);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    QStringList openNames;
    for (DocumentWindow* window : OpenDocuments()) {
        if (window->DocumentId() > 0)
            openNames << window->Document()->DocName();
    }
    for (DocumentWindow* window : OpenDocuments()) {
        if (!CloseDocument(window)) {
            event->ignore();
            return;
        }
    }
    saveSession(openNames);
    event->accept();
}

// Open documents belong to one database; the window's shape to all.
QString MainWindow::sessionKey(const QString& name) const {
    return QStringLiteral("databases/%1/%2")
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(m_database->DatabaseShown())), name);
}

void MainWindow::RestoreSession(QSettings& settings) {
    m_session = &settings;
    restoreGeometry(settings.value(QStringLiteral("window/geometry")).toByteArray());
    m_splitter->restoreState(settings.value(QStringLiteral("window/splitter")).toByteArray());
    // A data source deleted since is simply not there any more.
    for (const QString& name : settings.value(sessionKey(QStringLiteral("open"))).toStringList())
        OpenDocumentNamed(name);
}

void MainWindow::saveSession(const QStringList& openNames) {
    if (!m_session)
        return;
    m_session->setValue(QStringLiteral("window/geometry"), saveGeometry());
    m_session->setValue(QStringLiteral("window/splitter"), m_splitter->saveState());
    m_session->setValue(sessionKey(QStringLiteral("open")), openNames);
    m_session->sync();
}

void MainWindow::guarded(const std::function<void()>& command) {
    try {
        command();
    } catch (const Error& error) {
        app().setMousePointer(DefaultPointer);
        app().MsgBox(error.message(), MsgBoxButtons::OKOnly, MsgBoxIcon::Critical,
                     tr("Orvane Studio"));
    }
    updateConnectionState();
}

void MainWindow::updateConnectionState() {
    const QString database = m_database->DatabaseShown();
    lblConnection->setText(m_database->IsConnected() ? tr("%1: connected").arg(database)
                                                     : tr("%1: connection lost").arg(database));
}

} // namespace Orvane::Studio
