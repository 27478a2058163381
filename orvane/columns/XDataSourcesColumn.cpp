#include "orvane/columns/XDataSourcesColumn.h"

#include "orvane/columns/ColumnGridDelegate.h"
#include "orvane/columns/ColumnGridRows.h"
#include "orvane/columns/ColumnNamePrompt.h"
#include "orvane/columns/ColumnRules.h"
#include "orvane/columns/ColumnValidation.h"
#include "orvane/dialogs/fFieldInfo.h"
#include "orvane/dialogs/frmKeySelector.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IField.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/DataTypes.h"
#include "orvane/model/MSQL.h"
#include "orvane/widgets/TemplateUseCheck.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

namespace Orvane {

namespace Rows = ColumnGridRows;

namespace {

const QString TimeStampName = QStringLiteral("Time Stamp");
const QString DateType = QStringLiteral("Date");
const QColor TimeStampGrey(192, 192, 192);
// Room for the cell margins and the drop-down button of the Type cell.
constexpr int CellPadding = 24;

// A new column starts with the first type of the list.
QString newColumnType() {
    return mOrvane::DataTypeList.section(QLatin1Char('\t'), 0, 0);
}

// Loaded columns carry the stored one-letter code; the grid shows the type's name.
QString typeText(const QString& columnType) {
    const QString name =
        columnType.size() == 1 ? mOrvane::DataTypeNameFromCode(columnType) : QString();
    return name.isEmpty() ? columnType : name;
}

QString keyText(const CDataSourcesColumn& column) {
    return QString::number(column.Key_Ordinal());
}

// A key chosen in this edit has no entity name: its field name already carries the label.
QString keyFieldText(const CDataSourcesColumn& column) {
    if (column.KeyEntity().isEmpty())
        return column.KeyFld_Name();
    return column.KeyEntity() + QStringLiteral(": ") + column.KeyFld_Name();
}

QTableWidgetItem* makeCell(qint32 row, const QString& text, bool timeStamp) {
    auto* item = new QTableWidgetItem(text);
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if ((row == Rows::Type && !timeStamp) || row == Rows::Position)
        flags |= Qt::ItemIsEditable;
    item->setFlags(flags);
    if (timeStamp && (row == Rows::Field || row == Rows::KeyField))
        item->setBackground(TimeStampGrey);
    return item;
}

// Renaming replaces the column by one under the new name that keeps everything else.
void copyForRename(const CDataSourcesColumn& from, CDataSourcesColumn& to, bool newDocument) {
    to.setColumn_Id(from.Column_Id());
    to.setColumn_Type(from.Column_Type());
    to.setColumnDeleted(from.ColumnDeleted());
    // A stored document must write the new name.
    to.setDirty(newDocument ? from.Dirty() : true);
    to.setField(from.Field());
    // Before FieldAdded, which it would otherwise clear.
    to.setFieldDeleted(from.FieldDeleted());
    to.setFieldAdded(from.FieldAdded());
    to.setFieldDirty(from.FieldDirty());
    to.setKey_Ordinal(from.Key_Ordinal());
    to.setKeyAdded(from.KeyAdded());
    to.setKeyDeleted(from.KeyDeleted());
    to.setKeyDirty(from.KeyDirty());
    to.setKeyEntity(from.KeyEntity());
    to.setKeyEntity_Label(from.KeyEntity_Label());
    to.setKeyEntity_Id(from.KeyEntity_Id());
    to.setKeyFld_Id(from.KeyFld_Id());
    to.setKeyFld_Name(from.KeyFld_Name());
    to.setPK_Id(from.PK_Id());
    to.setPosition(from.Position());
    to.setColPosition(from.ColPosition());
    to.setIsTimeStamp(from.IsTimeStamp());
}

// The save updates a key row only when one is stored (PK_Id > 0); a key given to a stored column
// during this edit is still to be inserted, however often it is edited. Either way an edited
// key is live again, also on a column whose row is still to be inserted.
void markKeyEdited(CDataSourcesColumn& column) {
    if (column.Column_Id() <= 0)
        column.setKeyDeleted(false);
    else if (column.PK_Id() > 0)
        column.setKeyDirty(true);
    else
        column.setKeyAdded(true);
}

// Field names compare without regard to case, as the dictionary does.
bool fieldNameUsedElsewhere(const CDataSourcesColumns& columns, const CDataSourcesColumn& self,
                            const QString& name) {
    return std::any_of(columns.begin(), columns.end(), [&](const auto& other) {
        return other.get() != &self && other->Field() &&
               other->Field_Name().compare(name, Qt::CaseInsensitive) == 0;
    });
}

void wipeKey(CDataSourcesColumn& column) {
    column.setKey_Ordinal(0);
    column.setKeyAdded(false);
    column.setKeyEntity(QString());
    column.setKeyEntity_Id(0);
    column.setKeyEntity_Label(QString());
    column.setKeyFld_Id(0);
    column.setKeyFld_Name(QString());
    column.setPK_Id(0);
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
    , m_columns(std::make_shared<CDataSourcesColumns>()) {
    setObjectName(QStringLiteral("XDataSourcesColumn"));
    createToolbar();
    createGrid();
    createMenus();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tbColumns);
    layout->addWidget(fpsColumns);

    if (HostRegistry::HasQuery()) {
        m_nameLengthLimit = HostRegistry::Query().ColumnWidth(QStringLiteral("eds_column"),
                                                              QStringLiteral("col_name"));
    }
    refreshToolbar();
}

XDataSourcesColumn::~XDataSourcesColumn() = default;

void XDataSourcesColumn::createToolbar() {
    tbColumns = new QToolBar(this);
    tbColumns->setObjectName(QStringLiteral("tbColumns"));
    tbColumns->setIconSize(QSize(16, 16));
    tbColumns->setToolButtonStyle(Qt::ToolButtonIconOnly);

    struct Button {
        QString key;
        QString toolTip;
        Command command;
    };
    const Button buttons[] = {
        {QStringLiteral("sep1"), QString(), nullptr},
        {QStringLiteral("Add"), QStringLiteral("Append column."),
         &XDataSourcesColumn::appendColumn},
        {QStringLiteral("Insert"), QStringLiteral("Insert column."),
         &XDataSourcesColumn::insertColumn},
        {QStringLiteral("Delete"), QStringLiteral("Delete selected column."),
         &XDataSourcesColumn::deleteColumn},
        {QStringLiteral("sep2"), QString(), nullptr},
        {QStringLiteral("ReName"), QStringLiteral("Rename column."),
         &XDataSourcesColumn::renameColumn},
        {QStringLiteral("Clear"), QStringLiteral("Clear column."),
         &XDataSourcesColumn::clearColumn},
        {QStringLiteral("sep4"), QString(), nullptr},
        {QStringLiteral("Key"), QStringLiteral("Add or edit Key Field."),
         &XDataSourcesColumn::keyButton},
        {QStringLiteral("DelKey"), QStringLiteral("Delete Key Field."),
         &XDataSourcesColumn::delKeyButton},
        {QStringLiteral("sep5"), QString(), nullptr},
        {QStringLiteral("Field"), QStringLiteral("Add or edit Field."),
         &XDataSourcesColumn::fieldButton},
        {QStringLiteral("DelField"), QStringLiteral("Delete Field."),
         &XDataSourcesColumn::delFieldButton},
        {QStringLiteral("sep3"), QString(), nullptr},
        {QStringLiteral("Left"), QStringLiteral("Move column left."),
         &XDataSourcesColumn::moveLeft},
        {QStringLiteral("Right"), QStringLiteral("Move column right."),
         &XDataSourcesColumn::moveRight},
    };
    for (const Button& button : buttons) {
        if (!button.command) {
            addSeparator(tbColumns, button.key);
            continue;
        }
        ilsColumns.insert(button.key,
                          QIcon(QStringLiteral(":/orvane/columns/%1.svg").arg(button.key)));
        QAction* action = addCommand(tbColumns, button.key, button.key, button.command);
        action->setToolTip(button.toolTip);
        action->setIcon(ilsColumns.value(button.key));
    }
    m_actions.value(QStringLiteral("Add"))->setStatusTip(QStringLiteral("Add new column"));
    m_actions.value(QStringLiteral("ReName"))->setStatusTip(QStringLiteral("rename"));
}

void XDataSourcesColumn::createGrid() {
    fpsColumns = new QTableWidget(Rows::Count, 0, this);
    fpsColumns->setObjectName(QStringLiteral("fpsColumns"));
    fpsColumns->setVerticalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Type"),
                                         QStringLiteral("Field"), QStringLiteral("Key"),
                                         QStringLiteral("Key Field"), QStringLiteral("Position")});
    fpsColumns->setSelectionMode(QAbstractItemView::ContiguousSelection);
    fpsColumns->setEditTriggers(
        QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
        QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    auto* delegate = new ColumnGridDelegate(fpsColumns);
    fpsColumns->setItemDelegate(delegate);
    connect(delegate, &ColumnGridDelegate::cellEdited, this,
            [this](int row, int column) { cellEdited(column + 1, row + 1); });

    connect(fpsColumns, &QTableWidget::cellClicked, this,
            [this](int row, int column) { cellClick(column + 1, row + 1); });
    connect(fpsColumns, &QTableWidget::currentCellChanged, this, [this](int row, int column) {
        // Keyboard moves count as clicks; the control's own moves do not.
        if (m_redrawOffDepth == 0 && row >= 0 && column >= 0)
            cellClick(column + 1, row + 1);
    });
    connect(fpsColumns, &QTableWidget::cellDoubleClicked, this,
            [this](int row, int column) { gridDoubleClick(column + 1, row + 1); });

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

void XDataSourcesColumn::createMenus() {
    mnuDropDown = new QMenu(QStringLiteral("Select"), this);
    mnuDropDown->setObjectName(QStringLiteral("mnuDropDown"));
    addCommand(mnuDropDown, QStringLiteral("mnuAddField"), QStringLiteral("Add Field"),
               &XDataSourcesColumn::addField);
    addCommand(mnuDropDown, QStringLiteral("mnuEditField"), QStringLiteral("Edit Field"),
               &XDataSourcesColumn::editField);
    addCommand(mnuDropDown, QStringLiteral("mnuDeleteField"), QStringLiteral("Delete Field"),
               &XDataSourcesColumn::deleteField);
    addSeparator(mnuDropDown, QStringLiteral("mnuSep1"));

    mnuColumns = new QMenu(QStringLiteral("Columns"), this);
    mnuColumns->setObjectName(QStringLiteral("mnuColumns"));
    addCommand(mnuColumns, QStringLiteral("mnuColAdd"), QStringLiteral("Add"),
               &XDataSourcesColumn::appendColumn);
    addCommand(mnuColumns, QStringLiteral("mnuColInsert"), QStringLiteral("Insert"),
               &XDataSourcesColumn::insertColumn);
    addCommand(mnuColumns, QStringLiteral("mnuColDelete"), QStringLiteral("Delete"),
               &XDataSourcesColumn::deleteColumn);
    addSeparator(mnuColumns, QStringLiteral("mnuSep2"));
    addCommand(mnuColumns, QStringLiteral("mnuColEdit"), QStringLiteral("ReName"),
               &XDataSourcesColumn::renameColumn);
    addCommand(mnuColumns, QStringLiteral("mnuColClear"), QStringLiteral("Clear"),
               &XDataSourcesColumn::clearColumn);
    addSeparator(mnuColumns, QStringLiteral("mnuSep3"));

    mnuKeys = new QMenu(QStringLiteral("Keys"), this);
    mnuKeys->setObjectName(QStringLiteral("mnuKeys"));
    addCommand(mnuKeys, QStringLiteral("mnuKeysAdd"), QStringLiteral("Add Key Field"),
               &XDataSourcesColumn::addKeyField);
    addCommand(mnuKeys, QStringLiteral("mnuKeysEdit"), QStringLiteral("Edit Key Field"),
               &XDataSourcesColumn::editKeyField);
    addCommand(mnuKeys, QStringLiteral("mnuKeysDelete"), QStringLiteral("Delete Key Field"),
               &XDataSourcesColumn::deleteKeyField);
    addSeparator(mnuKeys, QStringLiteral("mnuSep4"));
}

QAction* XDataSourcesColumn::addCommand(QWidget* owner, const QString& key, const QString& caption,
                                        Command command) {
    auto* action = new QAction(caption, owner);
    action->setObjectName(key);
    owner->addAction(action);
    connect(action, &QAction::triggered, this, [this, command] { runCommand(command); });
    m_actions.insert(key, action);
    return action;
}

QAction* XDataSourcesColumn::addSeparator(QWidget* owner, const QString& key) {
    auto* separator = new QAction(owner);
    separator->setSeparator(true);
    separator->setObjectName(key);
    owner->addAction(separator);
    return separator;
}

// ---- Public members -------------------------------------------------------------------------

void XDataSourcesColumn::ShowTimeSeriesColumn(bool bVisible) {
    const ColumnPtr timeStamp = m_columns->TSColumn();
    const qint32 shownAt = timeStamp ? gridColumnOf(timeStamp) : 0;
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
    fillGrid();
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
    const ColumnValidation::GridTexts grid{
        columnCount(), [this](qint32 column, qint32 row) { return cellText(column, row); }};
    const auto failure = ColumnValidation::FirstFailure(*m_columns, grid);
    if (!failure)
        return true;
    HostRegistry::App().MsgBox(failure->message, MsgBoxButtons::OKOnly, MsgBoxIcon::Exclamation,
                               sMsgBoxTitle);
    if (cell(failure->column, failure->row)) {
        selectCell(failure->column, failure->row);
    } else {
        fpsColumns->clearSelection();
        fpsColumns->setCurrentIndex(QModelIndex());
    }
    return false;
}

// ---- Grid access ----------------------------------------------------------------------------

qint32 XDataSourcesColumn::columnCount() const {
    return fpsColumns->columnCount();
}

QTableWidgetItem* XDataSourcesColumn::cell(qint32 column, qint32 row) const {
    if (column < 1 || row < 1)
        return nullptr;
    return fpsColumns->item(row - 1, column - 1);
}

QString XDataSourcesColumn::cellText(qint32 column, qint32 row) const {
    const QTableWidgetItem* item = cell(column, row);
    return item ? item->text() : QString();
}

void XDataSourcesColumn::setCellText(qint32 column, qint32 row, const QString& text) {
    if (QTableWidgetItem* item = cell(column, row))
        item->setText(text);
}

void XDataSourcesColumn::insertGridColumn(qint32 column, const ColumnPtr& model) {
    fpsColumns->insertColumn(column - 1);
    m_columnArray.insert(m_columnArray.begin() + (column - 1), model);
    showColumn(column, *model);
}

void XDataSourcesColumn::removeGridColumn(qint32 column) {
    fpsColumns->removeColumn(column - 1);
    m_columnArray.erase(m_columnArray.begin() + (column - 1));
}

void XDataSourcesColumn::showColumn(qint32 column, const CDataSourcesColumn& model) {
    const bool timeStamp = model.IsTimeStamp();
    const bool liveKey = ColumnRules::IsLiveKey(model);
    const QString texts[Rows::Count] = {
        model.Column_Name(),
        timeStamp ? DateType : typeText(model.Column_Type()),
        model.Field_Name(),
        liveKey ? keyText(model) : QString(),
        liveKey ? keyFieldText(model) : QString(),
        QString::number(model.Position()),
    };
    for (qint32 row = 1; row <= Rows::Count; ++row)
        fpsColumns->setItem(row - 1, column - 1, makeCell(row, texts[row - 1], timeStamp));
    fitWidth(column);
}

void XDataSourcesColumn::fitWidth(qint32 column) {
    const QFont& font = fpsColumns->font();
    int widest = m_textWidths.Width(font, QString::number(column));
    for (qint32 row = 1; row <= Rows::Count; ++row)
        widest = std::max(widest, m_textWidths.Width(font, cellText(column, row)));
    fpsColumns->setColumnWidth(column - 1, widest + CellPadding);
}

void XDataSourcesColumn::fillGrid() {
    RedrawOff redraw(*this);
    m_columnArray.clear();
    for (const ColumnPtr& model : *m_columns) {
        if (!model->ColumnDeleted())
            m_columnArray.push_back(model);
    }
    // One count for the whole grid; every cell of every column is then written anew.
    fpsColumns->setColumnCount(static_cast<int>(m_columnArray.size()));
    qint32 counter = 1;
    for (const ColumnPtr& model : m_columnArray) {
        showColumn(counter, *model);
        model->setColPosition(counter);
        ++counter;
    }
}

void XDataSourcesColumn::selectCell(qint32 column, qint32 row) {
    if (cell(column, row))
        fpsColumns->setCurrentCell(row - 1, column - 1);
}

XDataSourcesColumn::ColumnPtr XDataSourcesColumn::currentColumn() const {
    if (m_currentColumn < 1 || m_currentColumn > static_cast<qint32>(m_columnArray.size()))
        return nullptr;
    return m_columnArray[static_cast<std::size_t>(m_currentColumn - 1)];
}

qint32 XDataSourcesColumn::gridColumnOf(const ColumnPtr& model) const {
    const auto found = std::find(m_columnArray.begin(), m_columnArray.end(), model);
    return found == m_columnArray.end() ? 0
                                        : static_cast<qint32>(found - m_columnArray.begin()) + 1;
}

// ---- Grid events ----------------------------------------------------------------------------

void XDataSourcesColumn::cellClick(qint32 column, qint32 row) {
    m_currentColumn = std::min(column, columnCount());
    m_currentRow = row;
    // The grid's active cell follows, leaving any selection as it is.
    if (cell(m_currentColumn, row) &&
        (fpsColumns->currentColumn() != m_currentColumn - 1 || fpsColumns->currentRow() != row - 1))
        fpsColumns->setCurrentCell(row - 1, m_currentColumn - 1, QItemSelectionModel::NoUpdate);
    refreshToolbar();
}

void XDataSourcesColumn::clickActiveCell() {
    cellClick(fpsColumns->currentColumn() + 1, fpsColumns->currentRow() + 1);
}

void XDataSourcesColumn::gridRightClick(qint32 column, qint32 row, const QPoint& globalPos) {
    if (columnCount() == 0 || column <= 0) {
        applyStates(ColumnRules::ColumnsMenuState(nullptr, m_appName));
        popUpMenu(*mnuColumns, globalPos);
        return;
    }
    cellClick(column, row);
    const ColumnPtr model = currentColumn();
    if (row == Rows::Field) {
        if (!model->IsTimeStamp()) {
            applyStates(ColumnRules::FieldMenuState(*model, m_newDocument));
            popUpMenu(*mnuDropDown, globalPos);
        }
        return;
    }
    if (row == Rows::Key || row == Rows::KeyField) {
        if (!model->IsTimeStamp()) {
            applyStates(ColumnRules::KeysMenuState(*model));
            popUpMenu(*mnuKeys, globalPos);
        }
        return;
    }
    applyStates(ColumnRules::ColumnsMenuState(model.get(), m_appName));
    popUpMenu(*mnuColumns, globalPos);
}

void XDataSourcesColumn::gridDoubleClick(qint32 column, qint32 row) {
    if (columnCount() == 0 || column <= 0) {
        runCommand(&XDataSourcesColumn::appendColumn);
        return;
    }
    cellClick(column, row);
    const ColumnPtr model = currentColumn();
    const bool timeStamp = model->IsTimeStamp();
    if (row == Rows::Name) {
        if (!timeStamp || m_appName == ColumnRules::OdbcAppName)
            runCommand(&XDataSourcesColumn::renameColumn);
    } else if (row == Rows::Field) {
        if (!timeStamp && !ColumnRules::IsLiveKey(*model))
            runCommand(model->Field() ? &XDataSourcesColumn::editField
                                      : &XDataSourcesColumn::addField);
    } else if (row == Rows::Key || row == Rows::KeyField) {
        if (!timeStamp && !model->Field())
            runCommand(model->Is_Key() ? &XDataSourcesColumn::editKeyField
                                       : &XDataSourcesColumn::addKeyField);
    }
}

void XDataSourcesColumn::cellEdited(qint32 column, qint32 row) {
    if (row == Rows::Type)
        typeSelected(column, row);
    else if (row == Rows::Position)
        positionTyped(column);
    emit xdscChange();
    fpsColumns->viewport()->update();
}

void XDataSourcesColumn::typeSelected(qint32 column, qint32 row) {
    m_currentColumn = column;
    m_currentRow = row;
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    const QString text = cellText(column, row);
    if (text != model->Column_Type())
        model->setDirty(true);
    model->setColumn_Type(text);
    fitWidth(column);
}

// The number the user typed becomes the column's place in the record; validation asks again
// when it is missing or taken.
void XDataSourcesColumn::positionTyped(qint32 column) {
    const ColumnPtr model = m_columnArray[static_cast<std::size_t>(column - 1)];
    bool ok = false;
    qint32 position = cellText(column, Rows::Position).toInt(&ok);
    if (!ok)
        position = 0;
    if (model->Position() != position) {
        model->setPosition(position);
        model->setDirty(true);
    }
}

void XDataSourcesColumn::popUpMenu(QMenu& menu, const QPoint& globalPos) {
    menu.popup(globalPos);
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
    applyStates(ColumnRules::ToolbarState(currentColumn().get(), m_currentColumn, columnCount(),
                                          m_appName));
}

void XDataSourcesColumn::applyStates(const QHash<QString, bool>& states) {
    for (auto it = states.constBegin(); it != states.constEnd(); ++it)
        m_actions.value(it.key())->setEnabled(it.value());
}

void XDataSourcesColumn::runCommand(Command command) {
    (this->*command)();
    clickActiveCell();
}

// ---- Column commands ------------------------------------------------------------------------

void XDataSourcesColumn::appendColumn() {
    const QString name = askColumnName(false);
    if (name.isEmpty())
        return;
    addNewColumn(name, columnCount() + 1);
    m_currentColumn = columnCount();
    emit xdscChange();
}

void XDataSourcesColumn::insertColumn() {
    const QString name = askColumnName(false);
    if (name.isEmpty())
        return;
    const qint32 at = m_currentColumn > 0 ? m_currentColumn : columnCount() + 1;
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
    const QString name = askColumnName(true);
    if (name.isEmpty())
        return;
    m_columns->Remove(old->Column_Name());
    const ColumnPtr renamed = m_columns->Add(name);
    copyForRename(*old, *renamed, m_newDocument);
    m_columnArray[static_cast<std::size_t>(m_currentColumn - 1)] = renamed;

    setCellText(m_currentColumn, Rows::Name, renamed->Column_Name());
    fitWidth(m_currentColumn);
    fpsColumns->viewport()->update();
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
    setCellText(m_currentColumn, Rows::Position, QString());
}

void XDataSourcesColumn::moveLeft() {
    moveColumn(m_currentColumn, m_currentColumn - 1);
}

void XDataSourcesColumn::moveRight() {
    moveColumn(m_currentColumn, m_currentColumn + 1);
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
    setCellText(m_currentColumn, Rows::Key, QString());
    setCellText(m_currentColumn, Rows::KeyField, QString());
    fitWidth(m_currentColumn);
    fpsColumns->viewport()->update();
    if (m_newDocument) {
        wipeKey(*model);
        return;
    }
    // A stored document keeps the key until the save deletes its row.
    model->setKeyDeleted(true);
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
    if (storedField)
        model->setFieldDeleted(true);
    setCellText(m_currentColumn, Rows::Field, QString());
    fitWidth(m_currentColumn);
    fpsColumns->viewport()->update();
    refreshToolbar();
    emit xdscChange();
}

void XDataSourcesColumn::addKeyField() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    {
        RedrawOff redraw(*this);
        if (!selectKey(*model, false))
            return;
        if (model->Column_Id() > 0)
            model->setKeyAdded(true);
        showKey(*model);
    }
    fpsColumns->viewport()->update();
    emit xdscChange();
    refreshToolbar();
}

void XDataSourcesColumn::editKeyField() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    {
        RedrawOff redraw(*this);
        if (selectKey(*model, true)) {
            markKeyEdited(*model);
            showKey(*model);
        }
    }
    fpsColumns->viewport()->update();
    emit xdscChange();
    refreshToolbar();
}

void XDataSourcesColumn::addField() {
    const ColumnPtr model = currentColumn();
    if (!model)
        return;
    std::shared_ptr<IField> field;
    do {
        fFieldInfo dialog(this);
        dialog.InitializeForNew(m_columns->Entity(), typeText(model->Column_Type()), nullptr);
        HostRegistry::App().ShowModal(dialog);
        if (!dialog.Ok())
            return;
        field = dialog.Field();
    } while (refuseDuplicateFieldName(*model, *field));

    model->setField(field);
    showField(*model);
    if (model->Column_Id() > 0)
        model->setFieldAdded(true);
    refreshToolbar();
    emit xdscChange();
}

void XDataSourcesColumn::editField() {
    const ColumnPtr model = currentColumn();
    if (!model || !model->Field())
        return;
    fFieldInfo dialog(this);
    dialog.InitializeForNew(m_columns->Entity(), typeText(model->Column_Type()), model->Field());
    HostRegistry::App().ShowModal(dialog);
    if (!dialog.Ok() || !dialog.Modified())
        return;
    // The grid always shows the field's current name, which validation compares; a field added
    // during this edit is still to be created, so it is not marked for an update.
    showField(*model);
    if (!model->FieldAdded())
        model->setFieldDirty(true);
    emit xdscChange();
}

// ---- Shared steps ---------------------------------------------------------------------------

bool XDataSourcesColumn::selectKey(CDataSourcesColumn& model, bool editing) {
    frmKeySelector selector(this);
    selector.setColumns(m_columns.get());
    if (editing)
        selector.Initialize(model.Key_Ordinal(), model.KeyFld_Id());
    else
        selector.setOrdinal(m_columns->BiggestOrdinal() + 1);
    HostRegistry::App().ShowModal(selector);
    if (selector.Cancel())
        return false;
    model.setKey_Ordinal(selector.Ordinal());
    model.setKeyEntity_Id(selector.EntityID());
    model.setKeyFld_Id(selector.FieldId());
    model.setKeyFld_Name(selector.FieldName());
    // The selector's name carries the entity's label; a stored entity name no longer applies.
    model.setKeyEntity(QString());
    model.setKeyEntity_Label(QString());
    return true;
}

void XDataSourcesColumn::showKey(const CDataSourcesColumn& model) {
    setCellText(m_currentColumn, Rows::Key, keyText(model));
    // The selector's name already carries the entity label; a reload shows the stored entity.
    setCellText(m_currentColumn, Rows::KeyField, model.KeyFld_Name());
    fitWidth(m_currentColumn);
}

void XDataSourcesColumn::showField(const CDataSourcesColumn& model) {
    setCellText(m_currentColumn, Rows::Field, model.Field_Name());
    fitWidth(m_currentColumn);
    fpsColumns->viewport()->update();
}

bool XDataSourcesColumn::refuseDuplicateFieldName(const CDataSourcesColumn& model,
                                                  const IField& field) {
    if (!fieldNameUsedElsewhere(*m_columns, model, field.Field_Name()))
        return false;
    HostRegistry::App().MsgBox(QStringLiteral("Field name is in use.") + MsgBoxLineBreak +
                                   QStringLiteral("Please select a different name."),
                               MsgBoxButtons::OKOnly, MsgBoxIcon::Critical,
                               QStringLiteral("CANNOT USE DUPLICATE FIELD NAMES"));
    return true;
}

QString XDataSourcesColumn::askColumnName(bool renaming) {
    const ColumnNamePrompt::Answer answer =
        ColumnNamePrompt::Ask(*m_columns, m_nameLengthLimit, renaming);
    if (answer.restore)
        restoreColumn(answer.restore);
    if (answer.gotName)
        emit xdscChange();
    return answer.name;
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
        model->setColumn_Type(DateType);
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
        removeGridColumn(m_currentColumn);
    }
    resyncPositions();
    m_currentColumn = std::min(m_currentColumn, columnCount());
    selectCell(m_currentColumn, m_currentRow > 0 ? m_currentRow : Rows::Name);
    refreshToolbar();
}

void XDataSourcesColumn::restoreColumn(const ColumnPtr& model) {
    const qint32 at = m_currentColumn > 0 ? m_currentColumn : columnCount() + 1;
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
    if (to < 1 || to > columnCount())
        return;
    const ColumnPtr model = m_columns->Item(cellText(from, Rows::Name));
    if (!model)
        return;
    {
        RedrawOff redraw(*this);
        removeGridColumn(from);
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

void XDataSourcesColumn::resyncPositions() {
    for (qint32 i = 1; i <= columnCount(); ++i) {
        const ColumnPtr model = m_columns->Item(cellText(i, Rows::Name));
        if (!model) {
            HostRegistry::App().MsgBox(QStringLiteral("Naming Error. Column: ") +
                                           QString::number(i),
                                       MsgBoxButtons::OKOnly, MsgBoxIcon::Critical,
                                       QStringLiteral("Resetting Columns array"));
            continue;
        }
        m_columnArray[static_cast<std::size_t>(i - 1)] = model;
        if (model->ColPosition() != i) {
            model->setColPosition(i);
            model->setDirty(true);
        }
    }
}

} // namespace Orvane
