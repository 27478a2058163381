#include "orvane/widgets/TablePicker.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QStringListModel>
#include <QVBoxLayout>

namespace Orvane {

TablePicker::TablePicker(const QStringList& tables, QWidget* parent)
    : QDialog(parent)
    , txtFilter(new QLineEdit(this))
    , lstTables(new QListView(this))
    , m_tables(new QStringListModel(tables, this))
    , m_shown(new QSortFilterProxyModel(this)) {
    setObjectName(QStringLiteral("TablePicker"));
    setWindowTitle(tr("Select Table"));
    txtFilter->setObjectName(QStringLiteral("txtFilter"));
    txtFilter->setPlaceholderText(tr("Filter"));
    txtFilter->setClearButtonEnabled(true);
    m_shown->setSourceModel(m_tables);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    lstTables->setObjectName(QStringLiteral("lstTables"));
    lstTables->setModel(m_shown);
    lstTables->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);

    auto* page = new QVBoxLayout(this);
    page->addWidget(txtFilter);
    page->addWidget(lstTables, 1);
    page->addWidget(buttons);

    connect(txtFilter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_shown->setFilterFixedString(text);
        selectFirstShown();
    });
    connect(lstTables, &QListView::activated, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    selectFirstShown();
}

QString TablePicker::Pick(const QStringList& tables, const QString& current, QWidget* parent) {
    TablePicker picker(tables, parent);
    picker.setChosen(current);
    if (HostRegistry::App().ShowModal(picker) != QDialog::Accepted)
        return QString();
    return picker.Chosen();
}

QString TablePicker::Chosen() const {
    return lstTables->currentIndex().data().toString();
}

void TablePicker::setChosen(const QString& table) {
    const QModelIndexList found =
        m_shown->match(m_shown->index(0, 0), Qt::DisplayRole, table, 1, Qt::MatchFixedString);
    if (!found.isEmpty())
        lstTables->setCurrentIndex(found.first());
}

void TablePicker::selectFirstShown() {
    lstTables->setCurrentIndex(m_shown->index(0, 0));
}

} // namespace Orvane
