#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>

class QAction;
class QLabel;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

class QSettings;
class QSplitter;

namespace Orvane::Studio {

class DocumentWindow;
struct ImportInput;
class SqlQueryService;
class StudioDocumentType;

// Orvane Studio's main window: the stored data sources by category on the left, one tab per
// open document on the right.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(std::shared_ptr<SqlQueryService> database, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Installs the host's components on a database the window switches to.
    using DatabaseSwitch = std::function<void(const std::shared_ptr<SqlQueryService>&)>;
    void SetDatabaseSwitch(DatabaseSwitch switchTo) { m_switchDatabase = std::move(switchTo); }
    // Closes the open documents, asking to save the modified ones, and works on that database
    // from then on; false when a document stays open or the database cannot be opened.
    bool OpenDatabase(const QString& connection);

    void RefreshDocuments();
    void NewDocument(const std::shared_ptr<StudioDocumentType>& type);
    void OpenDocument(qint32 documentId);
    // Opens the stored data source of that name; false when there is none.
    bool OpenDocumentNamed(const QString& name);
    bool SaveCurrent();
    bool CloseDocument(DocumentWindow* window);
    void DeleteSelected();
    // The selected data source as a JSON file, and data sources from such files; the File menu
    // asks for the files first.
    void ExportSelected(const QString& path);
    void ImportFiles(const QStringList& paths);

    // Puts back what the last session on this database left: the window's size and place, the
    // split between list and documents, and the data sources that were open. The session is
    // written back to the same settings when the window closes.
    void RestoreSession(QSettings& settings);
    // Where the session keeps the database it opens next time, without its password.
    static inline const QString LastDatabaseKey = QStringLiteral("lastDatabase");

    DocumentWindow* CurrentDocument() const;
    QList<DocumentWindow*> OpenDocuments() const;

    QTreeWidget* documentTree = nullptr;
    QTabWidget* documentTabs = nullptr;
    QAction* actOpenDatabase = nullptr;
    QAction* actNewAscii = nullptr;
    QAction* actNewOdbc = nullptr;
    QAction* actOpen = nullptr;
    QAction* actSave = nullptr;
    QAction* actClose = nullptr;
    QAction* actDelete = nullptr;
    QAction* actExport = nullptr;
    QAction* actImport = nullptr;
    QAction* actHelp = nullptr;
    // In the status bar: the database, and whether it is connected.
    QLabel* lblConnection = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void createActions();
    void createMenusAndToolbar();
    void createPanes();
    void addDocumentTab(DocumentWindow* window);
    void updateTabTitle(DocumentWindow* window);
    void updateActions();
    void updateConnectionState();
    DocumentWindow* windowOf(qint32 documentId) const;
    qint32 selectedDocumentId() const;
    void removeDocument(qint32 documentId);
    void chooseDatabase();
    void chooseExportFile();
    void chooseImportFiles();
    void importInputs(const QList<ImportInput>& inputs);
    // Runs a command and shows any error it raises instead of letting it escape the event loop.
    void guarded(const std::function<void()>& command);
    QString sessionKey(const QString& name) const;
    void saveSession(const QStringList& openNames);

    std::shared_ptr<SqlQueryService> m_database;
    DatabaseSwitch m_switchDatabase;
    QTreeWidgetItem* m_asciiCategory = nullptr;
    QTreeWidgetItem* m_odbcCategory = nullptr;
    QSplitter* m_splitter = nullptr;
    QSettings* m_session = nullptr;
};

} // namespace Orvane::Studio
