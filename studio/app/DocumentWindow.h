#pragma once

#include <QWidget>
#include <memory>

class QLabel;
class QPushButton;
class QSplitter;

namespace Orvane {
class CDataSourcesData;
class SourcePreview;
class SourceSettingsEditor;
class XDataSourcesColumn;
class XDataSourcesGen;
class XDataSourcesODBC;
} // namespace Orvane

namespace Orvane::Studio {

class DocumentStore;
class SqlQueryService;
class StudioDocumentType;

// One open data source: the settings editor of its type above the column layout editor.
// Every edit marks it modified; saving validates both editors, writes the document row and
// the columns in one transaction, and reloads the document from the database. A save that finds
// the data source changed by someone else since it was read writes nothing and keeps the edits;
// the user may save them as a copy or reload.
class DocumentWindow : public QWidget {
    Q_OBJECT

public:
    // A new document: the user picks its entity first. Null when the user cancelled.
    static DocumentWindow* CreateNew(std::shared_ptr<StudioDocumentType> type,
                                     SqlQueryService& database, QWidget* parent = nullptr);
    // A stored document. Raises Orvane::Error when it cannot be read.
    static DocumentWindow* Open(qint32 documentId, SqlQueryService& database,
                                QWidget* parent = nullptr);
    ~DocumentWindow() override;

    // Writes nothing without edit permission.
    bool Save();
    // Asks to save a modified document; false when the user chose to stay.
    bool MayClose();

    // Compares the columns on screen with the data file; tells the user the differences and
    // returns them. ASCII sources only.
    QStringList CheckFile();

    bool IsModified() const { return m_modified; }
    qint32 DocumentId() const;
    QString Title() const;
    const std::shared_ptr<CDataSourcesData>& Document() const { return m_document; }
    const std::shared_ptr<StudioDocumentType>& Type() const { return m_type; }

    XDataSourcesGen* asciiEditor = nullptr;
    XDataSourcesODBC* odbcEditor = nullptr;
    XDataSourcesColumn* columnEditor = nullptr;
    // Under the ASCII editor: the file's first records, and the command that checks the file.
    SourcePreview* sourcePreview = nullptr;
    QPushButton* cmdCheckFile = nullptr;
    // The preview and the grid, one above the other.
    QSplitter* splFile = nullptr;
    // The entity whose rows the data source describes: chosen once, shown above the settings.
    QLabel* lblEntity = nullptr;

signals:
    void modifiedChanged(bool modified);
    void saved(qint32 documentId);
    // The window can no longer show its document and asks to be closed.
    void closeRequested();

private:
    DocumentWindow(std::shared_ptr<StudioDocumentType> type, SqlQueryService& database,
                   QWidget* parent);
    void showDocument(std::shared_ptr<CDataSourcesData> document, bool isNew);
    void createEditors();
    QWidget* createFileViews();
    void initializeSettings(bool isNew);
    SourceSettingsEditor* settingsEditor() const;
    void settingsChanged(bool isTimeSeriesChange);
    void setModified(bool modified);
    enum class WriteOutcome { Written, Failed, ChangedElsewhere };

    bool editorsValid();
    // A free name, trimmed; empty when the user gave none. exceptId's own name counts as free.
    QString askName(const QString& prompt, qint32 exceptId);
    void copySettingsIntoDocument();
    WriteOutcome writeInOneTransaction();
    void writeDocument(bool insert);
    bool changedElsewhere(bool insert, const QString& name);
    bool resolveConflict(bool insert, const QString& name);
    bool saveAsCopy();
    void offerReload();
    void reload();
    void readBack();

    std::shared_ptr<StudioDocumentType> m_type;
    SqlQueryService& m_database;
    std::unique_ptr<DocumentStore> m_store;
    std::shared_ptr<CDataSourcesData> m_document;
    // The stored document's change stamp as this window read it.
    qint32 m_changeStamp = 0;
    bool m_modified = false;
};

} // namespace Orvane::Studio
