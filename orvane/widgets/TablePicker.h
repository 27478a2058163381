#pragma once

#include <QDialog>

class QLineEdit;
class QListView;
class QSortFilterProxyModel;
class QStringListModel;

namespace Orvane {

// Lists a database's tables for the user to choose one; the filter box narrows the list as the
// user types. Shown through the host's application object.
class TablePicker : public QDialog {
    Q_OBJECT

public:
    explicit TablePicker(const QStringList& tables, QWidget* parent = nullptr);

    // The chosen table, or empty when the user cancelled or chose none.
    static QString Pick(const QStringList& tables, const QString& current, QWidget* parent);

    QString Chosen() const;
    void setChosen(const QString& table);

private:
    void selectFirstShown();

    QLineEdit* txtFilter = nullptr;
    QListView* lstTables = nullptr;
    QStringListModel* m_tables = nullptr;
    QSortFilterProxyModel* m_shown = nullptr;
};

} // namespace Orvane
