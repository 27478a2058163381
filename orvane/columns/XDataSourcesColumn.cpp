#include "orvane/columns/XDataSourcesColumn.h"

#include "orvane/columns/ColumnCommands.h"
#include "orvane/columns/ColumnFieldPrompt.h"
#include "orvane/columns/ColumnGridDelegate.h"
#include "orvane/columns/ColumnGridModel.h"
#include "orvane/columns/ColumnGridRows.h"
#include "orvane/columns/ColumnNamePrompt.h"
#include "orvane/columns/ColumnValidation.h"
#include "orvane/dialogs/fDetectColumns.h"
#include "orvane/host/BusyPointer.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/DataTypes.h"
#include "orvane/model/MSQL.h"
#include "orvane/sources/ColumnDetector.h"
#include "orvane/sources/DetectionPlan.h"
#include "orvane/widgets/ErrorReport.h"
#include "orvane/widgets/NoHostNotice.h"
#include "orvane/widgets/TemplateUseCheck.h"

#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

namespace Orvane {

namespace Rows = ColumnGridRows;

namespace {

const QString TimeStampName = QStringLiteral("Time Stamp");
const QString DateCode = QStringLiteral("D");
// Room for the cell margins and the drop-down button of the Type cell.
constexpr int CellPadding = 24;

// A new column starts with the first type of the list.
QString newColumnType() {
    return mOrvane::DataTypeCode(mOrvane::DataTypeList.section(QLatin1Char('\t'), 0, 0));
}

} // namespace

// Turns the grid's redrawing off for a scope; grid events that the control causes itself
// while it is off are not taken as the user's.
class XDataSourcesColumn::RedrawOff {
public:
    explicit RedrawOff(XDataSourcesColumn& owner)
        : m_owner(owner)
        , m_wasEnabled(owner.fpsColumns->updatesEnabled()) {
        ++m_owner.m_redrawOffDepth;
        m_owner.fpsColumns->setUpdatesEnabled(false);
    }
    ~RedrawOff() {
        m_owner.fpsColumns->setUpdatesEnabled(m_wasEnabled);
        --m_owner.m_redrawOffDepth;
    }
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;

private:
    XDataSourcesColumn& m_owner;
    bool m_wasEnabled;
};

XDataSourcesColumn::XDataSourcesColumn(QWidget* parent)
    : QWidget(parent)
    , m_commands(new ColumnCommands(*this))
    , m_columns(std::make_shared<CDataSourcesColumns>()) {
    setObjectName(QStringLiteral("XDataSourcesColumn"));
    createGrid();
    connectGridEvents();
    connect(m_commands, &ColumnCommands::triggered, this,
            [this](ColumnCommand command) { runCommand(command); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_commands->Toolbar());
    layout->addWidget(fpsColumns);

    if (HostRegistry::HasQuery()) {
        m_nameLengthLimit = HostRegistry::Query().ColumnWidth(QStringLiteral("eds_column"),
                                                              QStringLiteral("col_name"));
    }
    refreshToolbar();
    setDetectSource(nullptr);
    mOrvane::ShowWhenNoHost(*this);
}

XDataSourcesColumn::~XDataSourcesColumn() = default;

void XDataSourcesColumn::createGrid() {
    m_grid = new ColumnGridModel(this);
    fpsColumns = new QTableView(this);
    fpsColumns->setObjectName(QStringLiteral("fpsColumns"));
    fpsColumns->setModel(m_grid);
    fpsColumns->setSelectionMode(QAbstractItemView::ContiguousSelection);
    fpsColumns->setEditTriggers(
        QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
        QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    auto* delegate = new ColumnGridDelegate(fpsColumns);
    fpsColumns->setItemDelegate(delegate);
    connect(delegate, &ColumnGridDelegate::cellEdited, this,
            [this](int row, int column) { cellEdited(column + 1, row + 1); });
}

void XDataSourcesColumn::connectGridEvents() {
    connect(fpsColumns, &QTableView::clicked, this,
            [this](const QModelIndex& index) { cellClick(index.column() + 1, index.row() + 1); });
    connect(fpsColumns->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                // Keyboard moves count as clicks; the control's own moves do not.
                if (m_redrawOffDepth == 0 && current.isValid())
                    cellClick(current.column() + 1, current.row() + 1);
            });
    connect(fpsColumns, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        gridDoubleClick(index.column() + 1, index.row() + 1);
    });

    fpsColumns->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(fpsColumns, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        const QModelIndex index = fpsColumns->indexAt(pos);
        const QPoint globalPos = fpsColumns->viewport()->mapToGlobal(pos);
        if (index.isValid())
            gridRightClick(index.column() + 1, index.row() + 1, globalPos);
        else
            gridRightClick(0, 0, globalPos);
    });
    QHeaderView* columnHeader = fpsColumns->horizontalHeader();
    columnHeader->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(columnHeader, &QWidget::customContextMenuRequested, this,
            [this, columnHeader](const QPoint& pos) {
                gridRightClick(columnHeader->logicalIndexAt(pos) + 1, 0,
                               columnHeader->mapToGlobal(pos));
            });
    QHeaderView* rowHeader = fpsColumns->verticalHeader();
    rowHeader->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(rowHeader, &QWidget::customContextMenuRequested, this,
            [this, rowHeader](const QPoint& pos) {
                gridRightClick(0, rowHeader->logicalIndexAt(pos) + 1, rowHeader->mapToGlobal(pos));
            });
    connect(rowHeader, &QHeaderView::sectionDoubleClicked, this,
            [this](int row) { gridDoubleClick(0, row + 1); });
    fpsColumns->viewport()->installEventFilter(this);
}

// ---- Public members -------------------------------------------------------------------------

void XDataSourcesColumn::ShowTimeSeriesColumn(bool bVisible) {
    const ColumnPtr timeStamp = m_columns->TSColumn();
    const qint32 shownAt = timeStamp ? m_grid->GridColumnOf(*timeStamp) : 0;
    if (bVisible) {
        if (shownAt == 0)
            addTimeStampColumn();
        return;
    }
    if (shownAt == 0)
        return;
    m_currentColumn = shownAt;
    deleteCurrentGridColumn();
}

void XDataSourcesColumn::InitNew(std::shared_ptr<CDataSourcesColumns> dscsNew) {
    if (!dscsNew)
        throw Error(QStringLiteral("The column editor was given no column collection."));
    m_newDocument = true;
    m_columns = std::move(dscsNew);
    // A time-stamp column the collection already holds is shown once, first.
    fillGrid(m_columns->TSColumn().get());
    addTimeStampColumn();
}

void XDataSourcesColumn::InitEdit(std::shared_ptr<CDataSourcesColumns> dscsNew) {
    if (!dscsNew)
        throw Error(QStringLiteral("The column editor was given no column collection."));
    m_newDocument = false;
    m_columns = std::move(dscsNew);
    {
        RedrawOff redraw(*this);
        fillGrid();
        selectCell(1, Rows::Name);
    }
    cellClick(1, Rows::Name);
}

bool XDataSourcesColumn::IsValid(const QString& sMsgBoxTitle) {
    const auto failure = ColumnValidation::FirstFailure(*m_columns, *m_grid);
    if (!failure)
        return true;
    HostRegistry::App().MsgBox(failure->message, MsgBoxButtons::OKOnly, MsgBoxIcon::Exclamation,
                               sMsgBoxTitle);
    if (m_grid->ColumnAt(failure->column) && failure->row >= 1) {
        selectCell(failure->column, failure->row);
    } else {
        fpsColumns->clearSelection();
        fpsColumns->setCurrentIndex(QModelIndex());
    }
    return false;
}

// ---- Grid -----------------------------------------------------------------------------------

void XDataSourcesColumn::fillGrid(const CDataSourcesColumn* leftOut) {
    RedrawOff redraw(*this);
    m_grid->Fill(*m_columns, leftOut);
    for (qint32 column = 1; column <= m_grid->ColumnCount(); ++column)
        fitWidth(column);
}

void XDataSourcesColumn::insertGridColumn(qint32 column, const ColumnPtr& model) {
    m_grid->Insert(column, model);
    fitWidth(column);
}

void XDataSourcesColumn::fitWidth(qint32 column) {
    const QFont& font = fpsColumns->font();
    int widest = m_textWidths.Width(font, QString::number(column));
    for (qint32 row = 1; row <= Rows::Count; ++row)
        widest = std::max(widest, m_textWidths.Width(font, m_grid->Text(column, row)));
    fpsColumns->setColumnWidth(column - 1, widest + CellPadding);
}

void XDataSourcesColumn::selectCell(qint32 column, qint32 row) {
    if (m_grid->ColumnAt(column) && row >= 1 && row <= Rows::Count)
        fpsColumns->setCurrentIndex(m_grid->index(row - 1, column - 1));
}

XDataSourcesColumn::ColumnPtr XDataSourcesColumn::currentColumn() const {
    return m_grid->ColumnAt(m_currentColumn);
}

void XDataSourcesColumn::redrawCurrentColumn() {
    m_grid->Refresh(m_currentColumn);
    fitWidth(m_currentColumn);
}

// ---- Grid events ----------------------------------------------------------------------------

void XDataSourcesColumn::cellClick(qint32 column, qint32 row) {
    m_currentColumn = std::min(column, m_grid->ColumnCount());
    m_currentRow = row;
    // The grid's active cell follows, leaving any selection as it is.
    const QModelIndex index = m_grid->index(row - 1, m_currentColumn - 1);
    if (index.isValid() && fpsColumns->currentIndex() != index)
        fpsColumns->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    refreshToolbar();
}

void XDataSourcesColumn::clickActiveCell() {
    const QModelIndex active = fpsColumns->currentIndex();
    cellClick(active.column() + 1, active.row() + 1);
}

void XDataSourcesColumn::gridRightClick(qint32 column, qint32 row, const QPoint& globalPos) {
    if (m_grid->ColumnCount() == 0 || column <= 0) {
        m_commands->Apply(ColumnCommands::ColumnsMenuState(nullptr, m_appName));
        m_commands->ColumnsMenu()->popup(globalPos);
        return;
    }
    cellClick(column, row);
    const ColumnPtr model = currentColumn();
    if (row == Rows::Field || row == Rows::Key || row == Rows::KeyField) {
        // The time stamp takes neither a field nor a key.
        if (model->IsTimeStamp())
            return;
        const bool fieldRow = row == Rows::Field;
        m_commands->Apply(fieldRow ? ColumnCommands::FieldMenuState(*model, m_newDocument)
                                   : ColumnCommands::KeysMenuState(*model));
        (fieldRow ? m_commands->FieldMenu() : m_commands->KeysMenu())->popup(globalPos);
        return;
    }
    m_commands->Apply(ColumnCommands::ColumnsMenuState(model.get(), m_appName));
    m_commands->ColumnsMenu()->popup(globalPos);
}

void XDataSourcesColumn::gridDoubleClick(qint32 column, qint32 row) {
    if (m_grid->ColumnCount() == 0 || column <= 0) {
        runCommand(ColumnCommand::Add);
        return;
    }
    cellClick(column, row);
    const ColumnPtr model = currentColumn();
    const bool timeStamp = model->IsTimeStamp();
    if (row == Rows::Name) {
        if (!timeStamp || m_appName == ColumnCommands::OdbcAppName)
            runCommand(ColumnCommand::ReName);
    } else if (row == Rows::Field) {
        if (!timeStamp && !model->IsLiveKey())
            runCommand(model->Field() ? ColumnCommand::EditField : ColumnCommand::AddField);
    } else if (row == Rows::Key || row == Rows::KeyField) {
        if (!timeStamp && !model->Field())
            runCommand(model->Is_Key() ? ColumnCommand::KeysEdit : ColumnCommand::KeysAdd);
    }
}

// The model has taken the edit already; a type choice makes its column the current one.
void XDataSourcesColumn::cellEdited(qint32 column, qint32 row) {
    if (row == Rows::Type) {
        m_currentColumn = column;
        m_currentRow = row;
    }
    fitWidth(column);
    emit xdscChange();
    fpsColumns->viewport()->update();
}

bool XDataSourcesColumn::eventFilter(QObject* watched, QEvent* event) {
    // A double-click beside the cells counts as one on no column.
    if (watched == fpsColumns->viewport() && event->type() == QEvent::MouseButtonDblClick) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (!fpsColumns->indexAt(mouse->position().toPoint()).isValid())
            gridDoubleClick(0, 0);
    }
    return QWidget::eventFilter(watched, event);
}

// ---- Command state --------------------------------------------------------------------------

void XDataSourcesColumn::refreshToolbar() {
    m_commands->Apply(ColumnCommands::ToolbarState(currentColumn().get(), m_currentColumn,
                                                   m_grid->ColumnCount(), m_appName));
}

void XDataSourcesColumn::runCommand(ColumnCommand command) {
    mOrvane::RunReported(*this, [this, command] {
        switch (command) {
        case ColumnCommand::Add:
        case ColumnCommand::ColAdd:
            return appendColumn();
        case ColumnCommand::Insert:
        case ColumnCommand::ColInsert:
            return insertColumn();
        case ColumnCommand::Delete:
        case ColumnCommand::ColDelete:
            return deleteColumn();
        case ColumnCommand::ReName:
        case ColumnCommand::ColEdit:
            return renameColumn();
        case ColumnCommand::Clear:
        case ColumnCommand::ColClear:
            return clearColumn();
        case ColumnCommand::Key:
            return keyButton();
        case ColumnCommand::DelKey:
            return delKeyButton();
        case ColumnCommand::Field:
            return fieldButton();
        case ColumnCommand::DelField:
            return delFieldButton();
        case ColumnCommand::Left:
            return moveColumn(m_currentColumn, m_currentColumn - 1);
        case ColumnCommand::Right:
            return moveColumn(m_currentColumn, m_currentColumn + 1);
        case ColumnCommand::AddField:
            return addField();
        case ColumnCommand::EditField:
            return editField();
        case ColumnCommand::DeleteField:
            return deleteField();
        case ColumnCommand::Detect:
        case ColumnCommand::ColDetect:
            return detectColumns();
        case ColumnCommand::KeysAdd:
            return addKeyField();
        case ColumnCommand::KeysEdit:
            return editKeyField();
        case ColumnCommand::KeysDelete:
            return deleteKeyField();
        }
    });
    clickActiveCell();
}

// ---- Column commands ------------------------------------------------------------------------

void XDataSourcesColumn::appendColumn() {
    const QString name = askColumnName(nullptr);
    if (name.isEmpty())
        return;
    addNewColumn(name, m_grid->ColumnCount() + 1);
    m_currentColumn = m_grid->ColumnCount();
    emit xdscChange();
}

void XDataSourcesColumn::insertColumn() {
    const QString name = askColumnName(nullptr);
    if (name.isEmpty())
        return;
    const qint32 at = m_currentColumn > 0 ? m_currentColumn : m_grid->ColumnCount() + 1;
    addNewColumn(name, at);
    m_currentColumn = at;
    resyncPositions();
    emit xdscChange();
}

void XDataSourcesColumn::deleteColumn() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    if (model->Column_Id() >= 1 &&
        !mOrvane::TemplateUseCheck(model->IsTimeStamp(), model->Field_Id()))
        return;
    deleteCurrentGridColumn();
}

void XDataSourcesColumn::renameColumn() {
    const ColumnPtr old = currentColumn();
    if (!old)
        return;
    const QString name = askColumnName(old.get());
    if (name.isEmpty())
        return;
    m_columns->Remove(old->Column_Name());
    const ColumnPtr renamed = m_columns->Add(name);
    renamed->CopyForRename(*old, m_newDocument);
    m_grid->Replace(m_currentColumn, renamed);
    fitWidth(m_currentColumn);
    selectCell(m_currentColumn, Rows::Name);
    resyncPositions();
    refreshToolbar();
    emit xdscChange();
}

void XDataSourcesColumn::clearColumn() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    if (model->Field_Id() > 0) {
        if (!mOrvane::TemplateUseCheck(false, model->Field_Id()))
            return;
        // The key stays: only the stored field needed the templates' consent.
        deleteField();
    } else {
        deleteField();
        deleteKeyField();
    }
    // The model keeps its position until the user types a new one; validation insists on it.
    m_grid->ClearPosition(m_currentColumn);
}

void XDataSourcesColumn::keyButton() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    if (model->Is_Key())
        editKeyField();
    else
        addKeyField();
}

void XDataSourcesColumn::delKeyButton() {
    const ColumnPtr model = currentColumn();
    if (model && model->Is_Key())
        deleteKeyField();
}

void XDataSourcesColumn::fieldButton() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    if (model->Field())
        editField();
    else
        addField();
}

void XDataSourcesColumn::delFieldButton() {
    const ColumnPtr model = currentColumn();
    if (model && model->Field())
        deleteField();
}

void XDataSourcesColumn::deleteKeyField() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    if (m_newDocument) {
        model->WipeKey();
        redrawCurrentColumn();
        return;
    }
    // A stored document keeps the key until the save deletes its row.
    model->setKeyDeleted(true);
    redrawCurrentColumn();
    emit xdscChange();
}

void XDataSourcesColumn::deleteField() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    // The column's mapping to a stored field must go with the save; the field itself stays in
    // the dictionary.
    const bool storedField = !m_newDocument && model->Column_Id() > 0 && model->Field_Id() > 0;
    model->setField(nullptr);
    model->setFieldAdded(false);
    model->setFieldDirty(false);
    model->setFieldMapped(false);
    if (storedField)
        model->setFieldDeleted(true);
    redrawCurrentColumn();
    refreshToolbar();
    emit xdscChange();
}

void XDataSourcesColumn::addKeyField() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    {
        RedrawOff redraw(*this);
        if (!ColumnFieldPrompt::ChooseKey(this, *m_columns, *model, false))
            return;
        if (model->Column_Id() > 0)
            model->setKeyAdded(true);
        redrawCurrentColumn();
    }
    emit xdscChange();
    refreshToolbar();
}

void XDataSourcesColumn::editKeyField() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    {
        RedrawOff redraw(*this);
        if (ColumnFieldPrompt::ChooseKey(this, *m_columns, *model, true)) {
            model->MarkKeyEdited();
            redrawCurrentColumn();
        }
    }
    emit xdscChange();
    refreshToolbar();
}

void XDataSourcesColumn::addField() {
    const ColumnPtr model = currentColumn();
    if (!model || !ColumnFieldPrompt::AddField(this, *m_columns, *model))
        return;
    redrawCurrentColumn();
    refreshToolbar();
    emit xdscChange();
}

// The grid shows the field's current name, which validation compares.
void XDataSourcesColumn::editField() {
    const ColumnPtr model = currentColumn();
    if (!model || !model->Field() || !ColumnFieldPrompt::EditField(this, *m_columns, *model))
        return;
    redrawCurrentColumn();
    emit xdscChange();
}

// ---- Shared steps ---------------------------------------------------------------------------

QString XDataSourcesColumn::askColumnName(const CDataSourcesColumn* renaming) {
    const ColumnNamePrompt::Answer answer =
        ColumnNamePrompt::Ask(*m_columns, m_nameLengthLimit, renaming);
    if (answer.restore)
        restoreColumn(answer.restore);
    if (answer.gotName)
        emit xdscChange();
    return answer.name;
}

void XDataSourcesColumn::setDetectSource(DetectSource source) {
    m_detectSource = std::move(source);
    for (const ColumnCommand command : {ColumnCommand::Detect, ColumnCommand::ColDetect})
        m_commands->Action(command)->setEnabled(m_detectSource != nullptr);
}

void XDataSourcesColumn::detectColumns() {
    if (!m_detectSource)
        return;
    ColumnDetection detection;
    {
        BusyPointer busy;
        detection = m_detectSource();
    }
    QString problem = detection.error;
    if (problem.isEmpty() && detection.columns.isEmpty())
        problem = tr("The source has no columns to detect.");
    if (!problem.isEmpty()) {
        HostRegistry::App().MsgBox(problem, MsgBoxButtons::OKOnly, MsgBoxIcon::Exclamation,
                                   tr("Detect Columns"));
        return;
    }
    DetectColumns(detection.columns);
}

bool XDataSourcesColumn::DetectColumns(const DetectedColumns& detected) {
    DetectionPlan plan = DetectionPlan::Make(*m_columns, detected, m_nameLengthLimit);
    plan.ProposeFields(*m_columns);
    if (!plan.ChangesLayout()) {
        const QString message = plan.differences.isEmpty()
                                    ? tr("The layout already has every column of the source.")
                                    : plan.differences.join(MsgBoxLineBreak);
        HostRegistry::App().MsgBox(message, MsgBoxButtons::OKOnly, MsgBoxIcon::Information,
                                   tr("Detect Columns"));
        return false;
    }
    fDetectColumns dialog(plan, this);
    if (HostRegistry::App().ShowModal(dialog) != QDialog::Accepted)
        return false;
    applyDetection(plan);
    emit xdscChange();
    return true;
}

void XDataSourcesColumn::applyDetection(const DetectionPlan& plan) {
    RedrawOff redraw(*this);
    const qint32 firstNew = m_grid->ColumnCount() + 1;
    m_grid->Append(plan.Apply(*m_columns, firstNew));
    if (plan.timeStampPosition > 0 && m_grid->ColumnAt(1) == m_columns->TSColumn())
        m_grid->Refresh(1);
    for (qint32 column = firstNew; column <= m_grid->ColumnCount(); ++column)
        fitWidth(column);
    refreshToolbar();
}

void XDataSourcesColumn::addNewColumn(const QString& name, qint32 at) {
    const ColumnPtr model = m_columns->Add(name);
    RedrawOff redraw(*this);
    model->setColumn_Type(newColumnType());
    model->setPosition(m_columns->FirstFreePosition());
    model->setColPosition(at);
    insertGridColumn(at, model);
    selectCell(at, m_currentRow > 0 ? m_currentRow : Rows::Name);
}

void XDataSourcesColumn::addTimeStampColumn() {
    ColumnPtr model;
    {
        RedrawOff redraw(*this);
        model = m_columns->Add(TimeStampName);
        model->setColumn_Type(DateCode);
        if (model->Position() == 0)
            model->setPosition(m_columns->FirstFreePosition());
        model->setIsTimeStamp(true);
        insertGridColumn(1, model);
    }
    model->setDirty(true);
    resyncPositions();
    emit xdscChange();
    cellClick(1, Rows::Name);
}

void XDataSourcesColumn::deleteCurrentGridColumn() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    {
        RedrawOff redraw(*this);
        if (model->Column_Id() > 0) {
            // The stored row goes when the document is saved.
            model->setColumnDeleted(true);
            emit xdscChange();
        } else {
            m_columns->Remove(model->Column_Name());
        }
        m_grid->Remove(m_currentColumn);
    }
    resyncPositions();
    m_currentColumn = std::min(m_currentColumn, m_grid->ColumnCount());
    selectCell(m_currentColumn, m_currentRow > 0 ? m_currentRow : Rows::Name);
    refreshToolbar();
}

void XDataSourcesColumn::restoreColumn(const ColumnPtr& model) {
    const qint32 at = m_currentColumn > 0 ? m_currentColumn : m_grid->ColumnCount() + 1;
    {
        RedrawOff redraw(*this);
        // A restored column never gets its old position back.
        model->setPosition(0);
        model->setPosition(m_columns->FirstFreePosition());
        insertGridColumn(at, model);
    }
    model->setColumnDeleted(false);
    model->setDirty(true);
    resyncPositions();
    emit xdscChange();
    m_currentColumn = at;
    selectCell(at, Rows::Name);
    refreshToolbar();
}

void XDataSourcesColumn::moveColumn(qint32 from, qint32 to) {
    const ColumnPtr model = m_grid->ColumnAt(from);
    if (!model || to < 1 || to > m_grid->ColumnCount())
        return;
    {
        RedrawOff redraw(*this);
        m_grid->Remove(from);
        insertGridColumn(to, model);
        fpsColumns->selectColumn(to - 1);
    }
    // Without editor_position the database cannot keep the order, so a move changes nothing
    // that would be saved.
    if (HostRegistry::HasQuery() && MSQL::HasEditorPosition())
        emit xdscChange();
    resyncPositions();
    cellClick(to, Rows::Name);
}

// Each grid column's number becomes its column's editor position. A shown column that the
// collection no longer holds cannot be saved; the user is told and the others are renumbered.
void XDataSourcesColumn::resyncPositions() {
    for (qint32 i = 1; i <= m_grid->ColumnCount(); ++i) {
        const ColumnPtr model = m_grid->ColumnAt(i);
        if (m_columns->Item(model->Column_Name()) != model) {
            HostRegistry::App().MsgBox(tr("Naming Error. Column: ") + QString::number(i),
                                       MsgBoxButtons::OKOnly, MsgBoxIcon::Critical,
                                       tr("Resetting Columns array"));
            continue;
        }
        if (model->ColPosition() != i) {
            model->setColPosition(i);
            model->setDirty(true);
        }
    }
}

} // namespace Orvane
