#include "orvane/editors/SourcePreviewModel.h"

namespace Orvane {

void SourcePreviewModel::setRecords(QList<QStringList> records) {
    beginResetModel();
    m_records = std::move(records);
    m_width = 0;
    for (const QStringList& record : std::as_const(m_records))
        m_width = std::max(m_width, static_cast<int>(record.size()));
    endResetModel();
}

int SourcePreviewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_records.size());
}

int SourcePreviewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_width;
}

QVariant SourcePreviewModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const QStringList& record = m_records.at(index.row());
    return index.column() < record.size() ? record.at(index.column()) : QString();
}

QVariant SourcePreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    // Fields and records are counted from 1, as positions are.
    Q_UNUSED(orientation);
    return section + 1;
}

} // namespace Orvane
