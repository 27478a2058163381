#pragma once

#include <QStyledItemDelegate>

namespace Orvane {

// Edits the two cells of the column grid that the user may change in place: the Type cell with a
// drop-down list of the data types, which takes a choice at once, and the Position cell, which
// takes digits only. Reports each edit the user makes, and only those.
class ColumnGridDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit ColumnGridDelegate(QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;

signals:
    // Row and column of the model (0-based) whose text the user changed.
    void cellEdited(int row, int column) const;

private slots:
    void commitAndClose();
};

} // namespace Orvane
