#pragma once

#include <QAbstractTableModel>
#include <QSet>
#include <memory>
#include <vector>

namespace Orvane {

class CDataSourcesColumn;
class CDataSourcesColumns;

// The column grid's model: one grid column per column of the collection that is not marked
// deleted, in display order, and one row per attribute (ColumnGridRows). It is the grid's one
// source of truth: every cell is derived from the column object it shows. The methods with
// upper-case names count grid columns and rows from 1, as the user does; Qt's own from 0.
class ColumnGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using ColumnPtr = std::shared_ptr<CDataSourcesColumn>;

    explicit ColumnGridModel(QObject* parent = nullptr);
    ~ColumnGridModel() override;

    // Shows the collection's columns that are not marked deleted, in collection order but for
    // leftOut, and gives each its grid column as ColPosition.
    void Fill(const CDataSourcesColumns& columns, const CDataSourcesColumn* leftOut = nullptr);
    qint32 ColumnCount() const { return static_cast<qint32>(m_shown.size()); }
    // The column shown in a grid column; null outside the grid.
    ColumnPtr ColumnAt(qint32 gridColumn) const;
    // The grid column that shows the column; 0 when it is not shown.
    qint32 GridColumnOf(const CDataSourcesColumn& column) const;
    void Insert(qint32 gridColumn, ColumnPtr column);
    // Shows the columns after the last grid column, in one insertion.
    void Append(const std::vector<ColumnPtr>& columns);
    void Remove(qint32 gridColumn);
    void Replace(qint32 gridColumn, ColumnPtr column);
    // The column's attributes changed: its cells are drawn anew.
    void Refresh(qint32 gridColumn);
    // Leaves the Position cell empty, whatever the column holds, until the user types one or the
    // column is shown anew.
    void ClearPosition(qint32 gridColumn);
    // The text of a cell as the user sees it.
    QString Text(qint32 gridColumn, qint32 row) const;
    // The number the Position cell shows; 0 when it is empty.
    qint32 PositionShown(qint32 gridColumn) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // The Type cell takes a type's name and keeps its code; the Position cell takes a number
    // (anything else counts as none). A change marks the column Dirty.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
    void setType(CDataSourcesColumn& column, const QString& typeName);
    void setPosition(CDataSourcesColumn& column, const QString& text);

    std::vector<ColumnPtr> m_shown;
    QSet<const CDataSourcesColumn*> m_blankPositions;
};

} // namespace Orvane
