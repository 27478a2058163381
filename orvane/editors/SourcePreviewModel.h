#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

namespace Orvane {

// The records of a file's head as a table: one row a record, one column a field; a record with
// fewer fields shows empty cells.
class SourcePreviewModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setRecords(QList<QStringList> records);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    QList<QStringList> m_records;
    int m_width = 0;
};

} // namespace Orvane
