#include "orvane/columns/ColumnGridModel.h"

#include "orvane/columns/ColumnGridRows.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/DataTypes.h"

#include <QColor>
#include <algorithm>

namespace Orvane {

namespace Rows = ColumnGridRows;

namespace {

const QColor TimeStampGrey(192, 192, 192);

// Loaded columns carry the stored one-letter code; the grid shows the type's name.
QString typeText(const CDataSourcesColumn& column) {
    if (column.IsTimeStamp())
        return QStringLiteral("Date");
    const QString& type = column.Column_Type();
    const QString name = type.size() == 1 ? mOrvane::DataTypeNameFromCode(type) : QString();
    return name.isEmpty() ? type : name;
}

// A key chosen in this edit has no entity name: its field name already carries the label.
QString keyFieldText(const CDataSourcesColumn& column) {
    if (column.KeyEntity().isEmpty())
        return column.KeyFld_Name();
    return column.KeyEntity() + QStringLiteral(": ") + column.KeyFld_Name();
}

std::size_t slot(qint32 gridColumn) {
    return static_cast<std::size_t>(gridColumn - 1);
}

} // namespace

ColumnGridModel::ColumnGridModel(QObject* parent)
    : QAbstractTableModel(parent) {}

ColumnGridModel::~ColumnGridModel() = default;

void ColumnGridModel::Fill(const CDataSourcesColumns& columns, const CDataSourcesColumn* leftOut) {
    beginResetModel();
    m_shown.clear();
    m_blankPositions.clear();
    for (const ColumnPtr& column : columns) {
        if (!column->ColumnDeleted() && column.get() != leftOut) {
            m_shown.push_back(column);
            column->setColPosition(ColumnCount());
        }
    }
    endResetModel();
}

ColumnGridModel::ColumnPtr ColumnGridModel::ColumnAt(qint32 gridColumn) const {
    if (gridColumn < 1 || gridColumn > ColumnCount())
        return nullptr;
    return m_shown[slot(gridColumn)];
}

qint32 ColumnGridModel::GridColumnOf(const CDataSourcesColumn& column) const {
    const auto found = std::find_if(m_shown.begin(), m_shown.end(),
                                    [&](const ColumnPtr& shown) { return shown.get() == &column; });
    return found == m_shown.end() ? 0 : static_cast<qint32>(found - m_shown.begin()) + 1;
}

void ColumnGridModel::Insert(qint32 gridColumn, ColumnPtr column) {
    beginInsertColumns(QModelIndex(), gridColumn - 1, gridColumn - 1);
    m_blankPositions.remove(column.get());
    m_shown.insert(m_shown.begin() + (gridColumn - 1), std::move(column));
    endInsertColumns();
}

void ColumnGridModel::Append(const std::vector<ColumnPtr>& columns) {
    if (columns.empty())
        return;
    const int first = ColumnCount();
    beginInsertColumns(QModelIndex(), first, first + static_cast<int>(columns.size()) - 1);
    m_shown.insert(m_shown.end(), columns.begin(), columns.end());
    endInsertColumns();
}

void ColumnGridModel::Remove(qint32 gridColumn) {
    beginRemoveColumns(QModelIndex(), gridColumn - 1, gridColumn - 1);
    m_blankPositions.remove(m_shown[slot(gridColumn)].get());
    m_shown.erase(m_shown.begin() + (gridColumn - 1));
    endRemoveColumns();
}

void ColumnGridModel::Replace(qint32 gridColumn, ColumnPtr column) {
    m_shown[slot(gridColumn)] = std::move(column);
    Refresh(gridColumn);
}

void ColumnGridModel::Refresh(qint32 gridColumn) {
    emit dataChanged(index(0, gridColumn - 1), index(Rows::Count - 1, gridColumn - 1));
}

void ColumnGridModel::ClearPosition(qint32 gridColumn) {
    m_blankPositions.insert(m_shown[slot(gridColumn)].get());
    Refresh(gridColumn);
}

QString ColumnGridModel::Text(qint32 gridColumn, qint32 row) const {
    if (gridColumn < 1 || gridColumn > ColumnCount())
        return QString();
    const ColumnPtr& column = m_shown[slot(gridColumn)];
    switch (row) {
    case Rows::Name:
        return column->Column_Name();
    case Rows::Type:
        return typeText(*column);
    case Rows::Field:
        return column->Field_Name();
    case Rows::Key:
        return column->IsLiveKey() ? QString::number(column->Key_Ordinal()) : QString();
    case Rows::KeyField:
        return column->IsLiveKey() ? keyFieldText(*column) : QString();
    case Rows::Position:
        return m_blankPositions.contains(column.get()) ? QString()
                                                       : QString::number(column->Position());
    default:
        return QString();
    }
}

qint32 ColumnGridModel::PositionShown(qint32 gridColumn) const {
    if (gridColumn < 1 || gridColumn > ColumnCount())
        return 0;
    const ColumnPtr& column = m_shown[slot(gridColumn)];
    return m_blankPositions.contains(column.get()) ? 0 : column->Position();
}

int ColumnGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Rows::Count;
}

int ColumnGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount();
}

QVariant ColumnGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return QVariant();
    const qint32 row = index.row() + 1;
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return Text(index.column() + 1, row);
    if (role == Qt::BackgroundRole && (row == Rows::Field || row == Rows::KeyField) &&
        m_shown[slot(index.column() + 1)]->IsTimeStamp())
        return TimeStampGrey;
    return QVariant();
}

QVariant ColumnGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Horizontal)
        return section + 1;
    // Translated on each call, so a translator installed later is followed.
    static const char* const headings[Rows::Count] = {
        QT_TR_NOOP("Name"), QT_TR_NOOP("Type"),      QT_TR_NOOP("Field"),
        QT_TR_NOOP("Key"),  QT_TR_NOOP("Key Field"), QT_TR_NOOP("Position")};
    return section >= 0 && section < Rows::Count ? tr(headings[section]) : QVariant();
}

Qt::ItemFlags ColumnGridModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    const qint32 row = index.row() + 1;
    // The time stamp's type is always Date.
    if ((row == Rows::Type && !m_shown[slot(index.column() + 1)]->IsTimeStamp()) ||
        row == Rows::Position)
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool ColumnGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    CDataSourcesColumn& column = *m_shown[slot(index.column() + 1)];
    if (index.row() + 1 == Rows::Type)
        setType(column, value.toString());
    else
        setPosition(column, value.toString());
    emit dataChanged(index, index);
    return true;
}

void ColumnGridModel::setType(CDataSourcesColumn& column, const QString& typeName) {
    const QString code = mOrvane::DataTypeCode(typeName);
    if (code != column.Column_Type())
        column.setDirty(true);
    column.setColumn_Type(code);
}

// The number the user typed becomes the column's place in the record; validation asks again
// when it is missing or taken.
void ColumnGridModel::setPosition(CDataSourcesColumn& column, const QString& text) {
    bool ok = false;
    qint32 position = text.trimmed().toInt(&ok);
    if (!ok)
        position = 0;
    m_blankPositions.remove(&column);
    if (column.Position() != position) {
        column.setPosition(position);
        column.setDirty(true);
    }
}

} // namespace Orvane
