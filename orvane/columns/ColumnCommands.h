#pragma once

#include "orvane/columns/ColumnCommand.h"

#include <QHash>
#include <QObject>

class QAction;
class QMenu;
class QToolBar;
class QWidget;

namespace Orvane {

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
