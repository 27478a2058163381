#pragma once

#include "orvane/columns/ColumnCommand.h"

#include <QHash>
#include <QObject>
#include <QString>

class QAction;
class QMenu;
class QToolBar;
class QWidget;

namespace Orvane {

class CDataSourcesColumn;

// The column layout editor's commands as actions: the toolbar tbColumns and the pop-up menus
// mnuDropDown, mnuColumns and mnuKeys. Each action's objectName is its key, by which hosts and
// tests find it; the editor names them by ColumnCommand.
class ColumnCommands : public QObject {
    Q_OBJECT
public:
    explicit ColumnCommands(QWidget& owner);

    QToolBar* Toolbar() const { return m_toolbar; }
    QMenu* FieldMenu() const { return m_fieldMenu; }
    QMenu* ColumnsMenu() const { return m_columnsMenu; }
    QMenu* KeysMenu() const { return m_keysMenu; }

    QAction* Action(ColumnCommand command) const { return m_actions.value(command); }
    void Apply(const CommandStates& states);

    // Which commands are offered for the column the user is on.
    static inline const QString OdbcAppName = QStringLiteral("ODBC Data Source");
    // The toolbar buttons for the column shown in gridColumn (1-based) of columnCount; with no
    // column (null, or gridColumn 0) only Add is offered.
    static CommandStates ToolbarState(const CDataSourcesColumn* column, qint32 gridColumn,
                                      qint32 columnCount, const QString& appName);
    // The "Columns" pop-up; with no column only Add is offered.
    static CommandStates ColumnsMenuState(const CDataSourcesColumn* column, const QString& appName);
    // The "Select" pop-up (field items). Deleting is offered for a field added during this edit
    // or for any field of a new document.
    static CommandStates FieldMenuState(const CDataSourcesColumn& column, bool newDocument);
    // The "Keys" pop-up.
    static CommandStates KeysMenuState(const CDataSourcesColumn& column);

signals:
    void triggered(Orvane::ColumnCommand command);

private:
    void createToolbar(QWidget& owner);
    void createMenus(QWidget& owner);
    QAction* add(QWidget* container, ColumnCommand command, const QString& key,
                 const QString& caption);
    static void addSeparator(QWidget* container, const QString& key);

    QToolBar* m_toolbar = nullptr;
    QMenu* m_fieldMenu = nullptr;
    QMenu* m_columnsMenu = nullptr;
    QMenu* m_keysMenu = nullptr;
    QHash<ColumnCommand, QAction*> m_actions;
};

} // namespace Orvane
