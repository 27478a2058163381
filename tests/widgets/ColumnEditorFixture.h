#pragma once

#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QAction>
#include <QMenu>
#include <QSignalSpy>
#include <QTableView>
#include <memory>

namespace Orvane::Testing {

// A column as the document's load leaves it: stored, clean.
inline CDataSourcesColumns::ColumnPtr stored(CDataSourcesColumns& columns, const QString& name,
                                             qint32 id, qint32 position,
                                             const QString& typeCode = QStringLiteral("I")) {
    auto column = columns.Add(name);
    column->setColumn_Id(id);
    column->setColumn_Type(typeCode);
    column->setPosition(position);
    return column;
}

inline void makeKey(CDataSourcesColumn& column, qint32 ordinal, qint32 fieldId) {
    column.setPK_Id(fieldId + 1000);
    column.setKeyFld_Id(fieldId);
    column.setKey_Ordinal(ordinal);
    column.setKeyEntity(QStringLiteral("Cell"));
    column.setKeyFld_Name(QStringLiteral("cell_name"));
}

inline std::shared_ptr<FakeField> field(qint32 id, const QString& name) {
    return std::make_shared<FakeField>(id, name);
}

// Drives a real column layout editor, shown offscreen, through its grid view, toolbar actions
// and pop-up menus, and reads the grid through its model.
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

    QTableView& grid() { return *editor().findChild<QTableView*>(QStringLiteral("fpsColumns")); }
    int columnCount() { return grid().model()->columnCount(); }
    bool enabled(const QString& name) { return editor().findChild<QAction*>(name)->isEnabled(); }
    void trigger(const QString& name) { editor().findChild<QAction*>(name)->trigger(); }

    // Grid columns and rows are numbered from 1, as the user sees them.
    QModelIndex cell(int column, int row) { return grid().model()->index(row - 1, column - 1); }
    QString text(int column, int row, int role = Qt::DisplayRole) {
        return cell(column, row).data(role).toString();
    }
    QStringList gridRow(int row) {
        QStringList texts;
        for (int column = 1; column <= columnCount(); ++column)
            texts << text(column, row);
        return texts;
    }
    void click(int column, int row) { emit grid().clicked(cell(column, row)); }
    void doubleClick(int column, int row) { emit grid().doubleClicked(cell(column, row)); }
    // Right-clicks a cell, or beside the cells with no column given, and returns the pop-up menu
    // that shows (closing it) as "menu: item=1 item=0 ..." with each item's enable state, or an
    // empty text.
    QString rightClick(int column = 0, int row = 0) {
        const QPoint at = column > 0 ? grid().visualRect(cell(column, row)).center()
                                     : grid().viewport()->rect().bottomRight() - QPoint(2, 2);
        emit grid().customContextMenuRequested(at);
        QString shown;
        for (QMenu* candidate : editor().findChildren<QMenu*>()) {
            if (!candidate->isVisible())
                continue;
            shown = candidate->objectName() + ':';
            for (const QAction* item : candidate->actions()) {
                if (!item->isSeparator())
                    shown += ' ' + item->objectName() + (item->isEnabled() ? "=1" : "=0");
            }
            candidate->hide();
        }
        return shown;
    }
    // Which of the named actions are enabled, as "name=1 name=0 ...".
    QString states(const QStringList& names) {
        QStringList list;
        for (const QString& name : names)
            list << name + (enabled(name) ? "=1" : "=0");
        return list.join(' ');
    }
    int changeCount() { return changes ? static_cast<int>(changes->count()) : 0; }
    void forgetChanges() { changes->clear(); }

    QStringList prompts() const {
        QStringList list;
        for (const RecordedInputBox& box : app->inputBoxes)
            list << box.prompt + QStringLiteral(" | ") + box.title;
        return list;
    }

    std::shared_ptr<CDataSourcesColumns> columns = std::make_shared<CDataSourcesColumns>();
    std::unique_ptr<QSignalSpy> changes;

private:
    std::unique_ptr<XDataSourcesColumn> m_editor;
};

} // namespace Orvane::Testing
