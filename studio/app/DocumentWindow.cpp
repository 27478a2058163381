#include "studio/app/DocumentWindow.h"

#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/editors/SettingsCopy.h"
#include "orvane/editors/SourcePreview.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IDocumentType.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesColumnsState.h"
#include "orvane/model/CDataSourcesData.h"
#include "orvane/sources/ColumnDetector.h"
#include "orvane/sources/DefinitionCheck.h"
#include "studio/app/DefinitionTransfer.h"
#include "studio/app/DocumentStore.h"
#include "studio/app/StoredTexts.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/SqlQueryService.h"
#include "studio/db/TransactionScope.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace Orvane::Studio {

namespace {

constexpr int MaxNameLength = 60;

IApplication& app() {
    return HostRegistry::App();
}

} // namespace

DocumentWindow::DocumentWindow(std::shared_ptr<StudioDocumentType> type, SqlQueryService& database,
                               QWidget* parent)
    : QWidget(parent)
    , m_type(std::move(type))
    , m_database(database)
    , m_store(std::make_unique<DocumentStore>(database)) {
    setObjectName(QStringLiteral("DocumentWindow"));
    lblEntity = new QLabel(this);
    lblEntity->setObjectName(QStringLiteral("lblEntity"));
    auto* page = new QVBoxLayout(this);
    page->addWidget(lblEntity);
}

DocumentWindow::~DocumentWindow() = default;

DocumentWindow* DocumentWindow::CreateNew(std::shared_ptr<StudioDocumentType> type,
                                          SqlQueryService& database, QWidget* parent) {
    auto document = std::make_shared<CDataSourcesData>();
    if (!document->InitNew(type))
        return nullptr;
    auto* window = new DocumentWindow(std::move(type), database, parent);
    window->showDocument(std::move(document), true);
    window->setModified(true);
    return window;
}

DocumentWindow* DocumentWindow::Open(qint32 documentId, SqlQueryService& database,
                                     QWidget* parent) {
    qint32 changeStamp = 0;
    auto document = DocumentStore(database).Load(documentId, &changeStamp);
    const auto type = StudioDocumentType::ByName(document->DocumentType()->TypeName());
    auto* window = new DocumentWindow(type, database, parent);
    window->showDocument(std::move(document), false);
    window->m_changeStamp = changeStamp;
    return window;
}

void DocumentWindow::showDocument(std::shared_ptr<CDataSourcesData> document, bool isNew) {
    m_document = std::move(document);
    const auto& entity = m_document->Entity();
    lblEntity->setText(tr("Entity: %1").arg(entity ? entity->Entity_Label() : QString()));
    createEditors();
    initializeSettings(isNew);
    columnEditor->setAppName(m_type->TypeName());
    if (isNew)
        columnEditor->InitNew(m_document->Columns());
    else
        columnEditor->InitEdit(m_document->Columns());
}

void DocumentWindow::createEditors() {
    delete asciiEditor;
    delete odbcEditor;
    delete columnEditor;
    delete splFile;
    splFile = nullptr;
    sourcePreview = nullptr;
    cmdCheckFile = nullptr;
    asciiEditor = nullptr;
    odbcEditor = nullptr;
    if (m_type->IsOdbc())
        odbcEditor = new XDataSourcesODBC(this);
    else
        asciiEditor = new XDataSourcesGen(this);
    columnEditor = new XDataSourcesColumn(this);
    StoredTexts(m_database).LimitBoxes(*settingsEditor());
    auto* page = static_cast<QVBoxLayout*>(layout());
    page->addWidget(settingsEditor());
    if (asciiEditor) {
        // The file's head and the grid share the room left; the user moves the line between.
        splFile = new QSplitter(Qt::Vertical, this);
        splFile->setObjectName(QStringLiteral("splFile"));
        splFile->setChildrenCollapsible(false);
        splFile->addWidget(createFileViews());
        splFile->addWidget(columnEditor);
        splFile->setStretchFactor(0, 1);
        splFile->setStretchFactor(1, 2);
        page->addWidget(splFile, 1);
    } else {
        page->addWidget(columnEditor, 1);
        columnEditor->setDetectSource([this] { return odbcEditor->TableDetection(); });
    }

    connect(settingsEditor(), &SourceSettingsEditor::dsgChange, this,
            &DocumentWindow::settingsChanged);
    connect(columnEditor, &XDataSourcesColumn::xdscChange, this, [this] { setModified(true); });
}

QWidget* DocumentWindow::createFileViews() {
    auto* fileViews = new QWidget(this);
    fileViews->setObjectName(QStringLiteral("fileViews"));
    sourcePreview = new SourcePreview(fileViews);
    cmdCheckFile = new QPushButton(tr("Check &File"), fileViews);
    cmdCheckFile->setObjectName(QStringLiteral("cmdCheckFile"));
    cmdCheckFile->setToolTip(tr("Compare the columns with the data file"));
    connect(cmdCheckFile, &QPushButton::clicked, this, [this] { CheckFile(); });
    auto* commands = new QVBoxLayout;
    commands->addWidget(cmdCheckFile);
    commands->addStretch(1);
    auto* views = new QHBoxLayout(fileViews);
    views->setContentsMargins(0, 0, 0, 0);
    views->addWidget(sourcePreview, 1);
    views->addLayout(commands);
    columnEditor->setDetectSource([this] {
        return ColumnDetector::Detect(asciiEditor->Eds_File(), asciiEditor->Eds_Delimeter());
    });
    return fileViews;
}

QStringList DocumentWindow::CheckFile() {
    if (!asciiEditor)
        return {};
    const QStringList differences = DefinitionCheck::Check(
        *columnEditor->Columns(), asciiEditor->Eds_File(), asciiEditor->Eds_Delimeter());
    if (differences.isEmpty())
        app().MsgBox(tr("The file matches the definition."), MsgBoxButtons::OKOnly,
                     MsgBoxIcon::Information, tr("Check File"));
    else
        app().MsgBox(differences.join(MsgBoxLineBreak), MsgBoxButtons::OKOnly,
                     MsgBoxIcon::Exclamation, tr("Check File"));
    return differences;
}

void DocumentWindow::initializeSettings(bool isNew) {
    const CDataSourcesData& doc = *m_document;
    if (asciiEditor) {
        asciiEditor->setData(m_document);
        if (isNew)
            asciiEditor->InitializeDefaults();
        else
            asciiEditor->Initialize(doc.DocDescription(), doc.FileName(), doc.Delimeter(),
                                    doc.IsTimeSeries(), doc.FreqId());
        sourcePreview->Follow(*asciiEditor);
        return;
    }
    if (isNew)
        odbcEditor->InitializeDefaults();
    else
        odbcEditor->Initialize(doc.IsTimeSeries(), doc.FreqId(), doc.Server(), doc.Schema(),
                               doc.Table(), doc.UserId(), doc.Password());
}

SourceSettingsEditor* DocumentWindow::settingsEditor() const {
    return asciiEditor ? static_cast<SourceSettingsEditor*>(asciiEditor)
                       : static_cast<SourceSettingsEditor*>(odbcEditor);
}

void DocumentWindow::settingsChanged(bool isTimeSeriesChange) {
    if (isTimeSeriesChange)
        columnEditor->ShowTimeSeriesColumn(settingsEditor()->IsTimeSeries());
    setModified(true);
}

void DocumentWindow::setModified(bool modified) {
    if (m_modified == modified)
        return;
    m_modified = modified;
    emit modifiedChanged(modified);
}

qint32 DocumentWindow::DocumentId() const {
    return m_document->IsNew() ? 0 : m_document->DocId();
}

QString DocumentWindow::Title() const {
    const QString name = m_document->DocName().isEmpty() ? tr("New %1").arg(m_type->TypeName())
                                                         : m_document->DocName();
    return m_modified ? name + QLatin1Char('*') : name;
}

bool DocumentWindow::Save() {
    if (!app().EditPermission() || !editorsValid())
        return false;
    if (m_document->DocName().isEmpty()) {
        const QString name =
            askName(tr("Please enter a name for this data source"), m_document->DocId());
        if (name.isEmpty())
            return false;
        m_document->setDocName(name);
    }
    copySettingsIntoDocument();
    const bool insert = m_document->IsNew();
    const QString name = m_document->DocName();
    switch (writeInOneTransaction()) {
    case WriteOutcome::Written:
        break;
    case WriteOutcome::Failed:
        return false;
    case WriteOutcome::ChangedElsewhere:
        return resolveConflict(insert, name);
    }
    // Committed: from here on the data source is stored, whatever reading it back does.
    m_document->setIsNew(false);
    setModified(false);
    emit saved(m_document->DocId());
    readBack();
    return true;
}

// The window shows what was stored, with fresh ids and flags. While it cannot, it holds what the
// user saw before the save, which must not be saved again: the user may try once more, or the
// window closes and the data source is opened again from the list.
void DocumentWindow::readBack() {
    for (;;) {
        try {
            reload();
            return;
        } catch (const Error& error) {
            const MsgBoxResult answer = app().MsgBox(
                tr("The data source \"%1\" was saved, but reading it back failed:")
                        .arg(m_document->DocName()) +
                    MsgBoxLineBreak + MsgBoxLineBreak + error.message() + MsgBoxLineBreak +
                    MsgBoxLineBreak +
                    tr("Read it again now? No closes it; it can be opened again from the list."),
                MsgBoxButtons::YesNo, MsgBoxIcon::Exclamation, m_document->EditorName());
            if (answer != MsgBoxResult::Yes) {
                emit closeRequested();
                return;
            }
        }
    }
}

bool DocumentWindow::editorsValid() {
    const QString title = m_document->EditorName();
    const bool settingsValid =
        asciiEditor ? asciiEditor->IsValid(title) : odbcEditor->IsValid(title);
    return settingsValid && columnEditor->IsValid(title);
}

QString DocumentWindow::askName(const QString& firstPrompt, qint32 exceptId) {
    QString prompt = firstPrompt;
    for (;;) {
        const QString name =
            app().InputBox(prompt, tr("Save %1").arg(m_type->TypeName())).trimmed();
        if (name.isEmpty())
            return name;
        if (name.size() > MaxNameLength)
            prompt = tr("A name has at most %1 characters. Please enter a shorter name")
                         .arg(MaxNameLength);
        else if (m_store->NameExists(name, exceptId))
            prompt = tr("A data source named \"%1\" already exists. Please enter "
                        "another name")
                         .arg(name);
        else
            return name;
    }
}

void DocumentWindow::copySettingsIntoDocument() {
    mOrvane::CopySettingsIntoDocument(*settingsEditor(), *m_document);
}

DocumentWindow::WriteOutcome DocumentWindow::writeInOneTransaction() {
    // The save changes the column objects as it goes; a failed save puts them back so that the
    // user's edits stay as they were and the save can be retried.
    const auto columnsBefore = m_document->Columns()->SaveState();
    const qint32 idBefore = m_document->DocId();
    const bool insert = m_document->IsNew();
    const qint32 pointerBefore = app().MousePointer();
    const QString name = m_document->DocName();
    try {
        writeDocument(insert);
        return WriteOutcome::Written;
    } catch (const Error& error) {
        m_document->Columns()->RestoreState(*columnsBefore);
        m_document->setDocId(idBefore);
        if (insert)
            m_document->setDocName(QString());
        app().setMousePointer(pointerBefore);
        if (changedElsewhere(insert, name))
            return WriteOutcome::ChangedElsewhere;
        app().MsgBox(tr("The data source was not saved; nothing was changed in the "
                        "database.") +
                         MsgBoxLineBreak + MsgBoxLineBreak + error.message(),
                     MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, m_document->EditorName());
        return WriteOutcome::Failed;
    }
}

// A rollback that fails in turn (the database may have ended the transaction itself) has
// committed nothing either, and must not hide the error that stopped the save. Any failure,
// wherever a batched statement reports it, undoes the whole save alike.
void DocumentWindow::writeDocument(bool insert) {
    TransactionScope transaction(m_database, StatementDelivery::Batched);
    if (insert)
        m_document->setDocId(m_store->NewId());
    else
        m_store->Claim(m_document->DocId(), m_changeStamp);
    m_store->Write(*m_document, *m_type, insert);
    m_document->SaveData();
    transaction.Commit();
    m_changeStamp = insert ? 0 : m_changeStamp + 1;
}

// Whether the failed save met another session's: a new document's name taken meanwhile, a stored
// one changed or removed since it was read. Asking needs the connection, which may be what failed.
bool DocumentWindow::changedElsewhere(bool insert, const QString& name) {
    try {
        return insert ? m_store->NameExists(name, 0)
                      : m_store->ChangedSince(m_document->DocId(), m_changeStamp);
    } catch (const Error&) {
        return false;
    }
}

// Nothing was written and the edits are still in the window; they are lost only on the user's
// yes to reloading.
bool DocumentWindow::resolveConflict(bool insert, const QString& name) {
    const QString title = m_document->EditorName();
    const QString kept = tr("Your changes were not saved; they are still here.");
    if (insert) {
        const MsgBoxResult answer = app().MsgBox(
            tr("Someone else saved a data source named \"%1\" meanwhile; this one was not "
               "saved and is still here.")
                    .arg(name) +
                MsgBoxLineBreak + MsgBoxLineBreak + tr("Save it under another name?"),
            MsgBoxButtons::YesNo, MsgBoxIcon::Exclamation, title);
        return answer == MsgBoxResult::Yes && Save();
    }
    if (!m_store->Row(m_document->DocId())) {
        const MsgBoxResult answer = app().MsgBox(
            tr("The data source \"%1\" was deleted by someone else since it was opened.")
                    .arg(name) +
                MsgBoxLineBreak + kept + MsgBoxLineBreak + MsgBoxLineBreak +
                tr("Save them as a copy under a new name?"),
            MsgBoxButtons::YesNo, MsgBoxIcon::Exclamation, title);
        return answer == MsgBoxResult::Yes && saveAsCopy();
    }
    const MsgBoxResult answer = app().MsgBox(
        tr("The data source \"%1\" was changed by someone else since it was opened.").arg(name) +
            MsgBoxLineBreak + kept + MsgBoxLineBreak + MsgBoxLineBreak +
            tr("Yes saves them as a copy under a new name. No reloads the data source as it is "
               "stored now. Cancel goes back to your changes."),
        MsgBoxButtons::YesNoCancel, MsgBoxIcon::Exclamation, title, MsgBoxDefaultButton::Third);
    if (answer == MsgBoxResult::Yes)
        return saveAsCopy();
    if (answer == MsgBoxResult::No)
        offerReload();
    return false;
}

// The window goes on with the copy, and the data source it was opened on stays as the other
// session saved it.
bool DocumentWindow::saveAsCopy() {
    QString prompt = tr("Please enter a name for the copy");
    for (;;) {
        const QString name = askName(prompt, 0);
        if (name.isEmpty())
            return false;
        DefinitionTransfer transfer(m_database);
        ImportOutcome outcome;
        try {
            outcome = transfer.Copy(*m_document, name);
        } catch (const Error&) {
            if (!m_store->NameExists(name, 0))
                throw;
            prompt = tr("Someone else saved a data source named \"%1\" meanwhile. Please enter "
                        "another name")
                         .arg(name);
            continue;
        }
        if (!outcome.Succeeded()) {
            app().MsgBox(tr("The copy was not saved:") + MsgBoxLineBreak +
                             outcome.problems.join(MsgBoxLineBreak),
                         MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, m_document->EditorName());
            return false;
        }
        m_document->setDocId(transfer.Find(name)->id);
        m_document->setDocName(name);
        setModified(false);
        emit saved(m_document->DocId());
        readBack();
        return true;
    }
}

void DocumentWindow::offerReload() {
    if (app().MsgBox(tr("Reload \"%1\" as it is stored now? Your changes will be lost.")
                         .arg(m_document->DocName()),
                     MsgBoxButtons::YesNo, MsgBoxIcon::Question, m_document->EditorName(),
                     MsgBoxDefaultButton::Second) != MsgBoxResult::Yes)
        return;
    reload();
    setModified(false);
}

void DocumentWindow::reload() {
    qint32 changeStamp = 0;
    auto document = m_store->Load(m_document->DocId(), &changeStamp);
    showDocument(std::move(document), false);
    m_changeStamp = changeStamp;
}

bool DocumentWindow::MayClose() {
    // Without edit permission there is nothing the user could save.
    if (!m_modified || !app().EditPermission())
        return true;
    const MsgBoxResult answer =
        app().MsgBox(tr("Do you want to save the changes to %1?").arg(Title().chopped(1)),
                     MsgBoxButtons::YesNoCancel, MsgBoxIcon::Question, tr("Orvane Studio"));
    if (answer == MsgBoxResult::Cancel)
        return false;
    return answer == MsgBoxResult::No || Save();
}

} // namespace Orvane::Studio
