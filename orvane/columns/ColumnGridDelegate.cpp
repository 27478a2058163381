#include "orvane/columns/ColumnGridDelegate.h"

#include "orvane/columns/ColumnGridRows.h"
#include "orvane/model/DataTypes.h"

#include <QComboBox>
#include <QIntValidator>
#include <QLineEdit>

namespace Orvane {

namespace {

const char* const ChosenProperty = "orvaneChosen";

bool isTypeCell(const QModelIndex& index) {
    return index.row() + 1 == ColumnGridRows::Type;
}

bool isPositionCell(const QModelIndex& index) {
    return index.row() + 1 == ColumnGridRows::Position;
}

} // namespace

ColumnGridDelegate::ColumnGridDelegate(QObject* parent)
    : QStyledItemDelegate(parent) {}

QWidget* ColumnGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const {
    if (isTypeCell(index)) {
        auto* combo = new QComboBox(parent);
        combo->addItems(mOrvane::DataTypeList.split(QLatin1Char('\t'), Qt::SkipEmptyParts));
        connect(combo, &QComboBox::activated, this, &ColumnGridDelegate::commitAndClose);
        return combo;
    }
    if (isPositionCell(index)) {
        auto* edit = new QLineEdit(parent);
        // A record position is a 16-bit number.
        edit->setValidator(new QIntValidator(0, 32767, edit));
        return edit;
    }
    return QStyledItemDelegate::createEditor(parent, option, index);
}

void ColumnGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        combo->setCurrentIndex(combo->findText(index.data().toString()));
        return;
    }
    QStyledItemDelegate::setEditorData(editor, index);
}

void ColumnGridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                      const QModelIndex& index) const {
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        // Only a choice from the list counts, even the same type again; leaving the list
        // without choosing changes nothing.
        if (!combo->property(ChosenProperty).toBool() || combo->currentIndex() < 0)
            return;
        model->setData(index, combo->currentText());
        emit cellEdited(index.row(), index.column());
        return;
    }
    const QString before = index.data().toString();
    QStyledItemDelegate::setModelData(editor, model, index);
    if (index.data().toString() != before)
        emit cellEdited(index.row(), index.column());
}

void ColumnGridDelegate::commitAndClose() {
    auto* editor = qobject_cast<QWidget*>(sender());
    editor->setProperty(ChosenProperty, true);
    emit commitData(editor);
    emit closeEditor(editor);
}

} // namespace Orvane
