#pragma once

#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "tests/support/FakeHost.h"

#include <QAction>
#include <QMenu>
#include <QSignalSpy>
#include <QTableWidget>
#include <memory>

namespace Orvane::Testing {

// Drives a real column layout editor, shown offscreen, through its grid signals, toolbar actions
// and pop-up menus.
class ColumnEditorTest : public FakeHostTest {
protected:
    using ColumnPtr = CDataSourcesColumns::ColumnPtr;

    // Created on first use, so that a test can set the database's name width first.
    XDataSourcesColumn& editor() {
        if (!m_editor) {
            m_editor = std::make_unique<XDataSourcesColumn>();
            m_editor->resize(900, 300);
            m_editor->show();
            changes = std::make_unique<QSignalSpy>(m_editor.get(), &XDataSourcesColumn::xdscChange);
        }
        return *m_editor;
    }

    QTableWidget& grid() {
        return *editor().findChild<QTableWidget*>(QStringLiteral("fpsColumns"));
    }
    QAction& action(const QString& name) { return *editor().findChild<QAction*>(name); }
    QMenu& menu(const QString& name) { return *editor().findChild<QMenu*>(name); }
    bool enabled(const QString& name) { return action(name).isEnabled(); }
    void trigger(const QString& name) { action(name).trigger(); }

    // Grid columns and rows are numbered from 1, as the user sees them.
    QString text(int column, int row) {
        const QTableWidgetItem* item = grid().item(row - 1, column - 1);
        return item ? item->text() : QStringLiteral("<no cell>");
    }
    void click(int column, int row) { emit grid().cellClicked(row - 1, column - 1); }
    void doubleClick(int column, int row) { emit grid().cellDoubleClicked(row - 1, column - 1); }
    void rightClick(int column, int row) {
        const QModelIndex index = grid().model()->index(row - 1, column - 1);
        emit grid().customContextMenuRequested(grid().visualRect(index).center());
    }
    // Right-click beside the cells, where no column is.
    void rightClickBesideCells() {
        emit grid().customContextMenuRequested(grid().viewport()->rect().bottomRight() -
                                               QPoint(2, 2));
    }
    // The pop-up menu that is showing, or an empty name; closes it.
    QString shownMenu() {
        QString shown;
        for (QMenu* candidate : editor().findChildren<QMenu*>()) {
            if (candidate->isVisible()) {
                shown = candidate->objectName();
                candidate->hide();
            }
        }
        return shown;
    }
    int changeCount() { return changes ? static_cast<int>(changes->count()) : 0; }
    void forgetChanges() { changes->clear(); }

    // A column as the document's load leaves it: stored, clean.
    static ColumnPtr stored(CDataSourcesColumns& columns, const QString& name, qint32 id,
                            qint32 position, const QString& typeCode = QStringLiteral("I")) {
        ColumnPtr column = columns.Add(name);
        column->setColumn_Id(id);
        column->setColumn_Type(typeCode);
        column->setPosition(position);
        return column;
    }
    static void makeKey(CDataSourcesColumn& column, qint32 ordinal, qint32 fieldId) {
        column.setPK_Id(fieldId + 1000);
        column.setKeyFld_Id(fieldId);
        column.setKey_Ordinal(ordinal);
        column.setKeyEntity(QStringLiteral("Cell"));
        column.setKeyFld_Name(QStringLiteral("cell_name"));
    }
    static std::shared_ptr<FakeField> field(qint32 id, const QString& name) {
        return std::make_shared<FakeField>(id, name);
    }

    QStringList prompts() const {
        QStringList list;
        for (const RecordedInputBox& box : app->inputBoxes)
            list << box.prompt + QStringLiteral(" | ") + box.title;
        return list;
    }
    QStringList messages() const {
        QStringList list;
        for (const RecordedMsgBox& box : app->msgBoxes)
            list << box.prompt;
        return list;
    }

    std::shared_ptr<CDataSourcesColumns> columns = std::make_shared<CDataSourcesColumns>();
    std::unique_ptr<QSignalSpy> changes;

private:
    std::unique_ptr<XDataSourcesColumn> m_editor;
};

} // namespace Orvane::Testing
