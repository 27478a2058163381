#include "orvane/columns/ColumnCommands.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QToolBar>

namespace Orvane {

ColumnCommands::ColumnCommands(QWidget& owner)
    : QObject(&owner) {
    createToolbar(owner);
    createMenus(owner);
}

void ColumnCommands::Apply(const CommandStates& states) {
    for (const auto& [command, enabled] : states)
        m_actions.value(command)->setEnabled(enabled);
}

void ColumnCommands::createToolbar(QWidget& owner) {
    m_toolbar = new QToolBar(&owner);
    m_toolbar->setObjectName(QStringLiteral("tbColumns"));
    m_toolbar->setIconSize(QSize(16, 16));
    m_toolbar->setToolButtonStyle(Qt::ToolButtonIconOnly);

    struct Button {
        QString key;
        QString toolTip;
        ColumnCommand command;
    };
    const QString separator;
    const Button buttons[] = {
        {QStringLiteral("sep1"), separator, ColumnCommand::Add},
        {QStringLiteral("Add"), tr("Append column."), ColumnCommand::Add},
        {QStringLiteral("Insert"), tr("Insert column."), ColumnCommand::Insert},
        {QStringLiteral("Delete"), tr("Delete selected column."), ColumnCommand::Delete},
        {QStringLiteral("sep2"), separator, ColumnCommand::Add},
        {QStringLiteral("ReName"), tr("Rename column."), ColumnCommand::ReName},
        {QStringLiteral("Clear"), tr("Clear column."), ColumnCommand::Clear},
        {QStringLiteral("sep4"), separator, ColumnCommand::Add},
        {QStringLiteral("Key"), tr("Add or edit Key Field."), ColumnCommand::Key},
        {QStringLiteral("DelKey"), tr("Delete Key Field."), ColumnCommand::DelKey},
        {QStringLiteral("sep5"), separator, ColumnCommand::Add},
        {QStringLiteral("Field"), tr("Add or edit Field."), ColumnCommand::Field},
        {QStringLiteral("DelField"), tr("Delete Field."), ColumnCommand::DelField},
        {QStringLiteral("sep3"), separator, ColumnCommand::Add},
        {QStringLiteral("Left"), tr("Move column left."), ColumnCommand::Left},
        {QStringLiteral("Right"), tr("Move column right."), ColumnCommand::Right},
    };
    for (const Button& button : buttons) {
        if (button.toolTip.isEmpty()) {
            addSeparator(m_toolbar, button.key);
            continue;
        }
        QAction* action = add(m_toolbar, button.command, button.key, button.key);
        action->setToolTip(button.toolTip);
        action->setIcon(QIcon(QStringLiteral(":/orvane/columns/%1.svg").arg(button.key)));
    }
    Action(ColumnCommand::Add)->setStatusTip(tr("Add new column"));
    Action(ColumnCommand::ReName)->setStatusTip(tr("rename"));
}

void ColumnCommands::createMenus(QWidget& owner) {
    m_fieldMenu = new QMenu(tr("Select"), &owner);
    m_fieldMenu->setObjectName(QStringLiteral("mnuDropDown"));
    add(m_fieldMenu, ColumnCommand::AddField, QStringLiteral("mnuAddField"), tr("Add Field"));
    add(m_fieldMenu, ColumnCommand::EditField, QStringLiteral("mnuEditField"), tr("Edit Field"));
    add(m_fieldMenu, ColumnCommand::DeleteField, QStringLiteral("mnuDeleteField"),
        tr("Delete Field"));
    addSeparator(m_fieldMenu, QStringLiteral("mnuSep1"));

    m_columnsMenu = new QMenu(tr("Columns"), &owner);
    m_columnsMenu->setObjectName(QStringLiteral("mnuColumns"));
    add(m_columnsMenu, ColumnCommand::ColAdd, QStringLiteral("mnuColAdd"), tr("Add"));
    add(m_columnsMenu, ColumnCommand::ColInsert, QStringLiteral("mnuColInsert"), tr("Insert"));
    add(m_columnsMenu, ColumnCommand::ColDelete, QStringLiteral("mnuColDelete"), tr("Delete"));
    addSeparator(m_columnsMenu, QStringLiteral("mnuSep2"));
    add(m_columnsMenu, ColumnCommand::ColEdit, QStringLiteral("mnuColEdit"), tr("ReName"));
    add(m_columnsMenu, ColumnCommand::ColClear, QStringLiteral("mnuColClear"), tr("Clear"));
    addSeparator(m_columnsMenu, QStringLiteral("mnuSep3"));

    m_keysMenu = new QMenu(tr("Keys"), &owner);
    m_keysMenu->setObjectName(QStringLiteral("mnuKeys"));
    add(m_keysMenu, ColumnCommand::KeysAdd, QStringLiteral("mnuKeysAdd"), tr("Add Key Field"));
    add(m_keysMenu, ColumnCommand::KeysEdit, QStringLiteral("mnuKeysEdit"), tr("Edit Key Field"));
    add(m_keysMenu, ColumnCommand::KeysDelete, QStringLiteral("mnuKeysDelete"),
        tr("Delete Key Field"));
    addSeparator(m_keysMenu, QStringLiteral("mnuSep4"));
}

QAction* ColumnCommands::add(QWidget* container, ColumnCommand command, const QString& key,
                             const QString& caption) {
    auto* action = new QAction(caption, container);
    action->setObjectName(key);
    container->addAction(action);
    connect(action, &QAction::triggered, this, [this, command] { emit triggered(command); });
    m_actions.insert(command, action);
    return action;
}

void ColumnCommands::addSeparator(QWidget* container, const QString& key) {
    auto* separator = new QAction(container);
    separator->setSeparator(true);
    separator->setObjectName(key);
    container->addAction(separator);
}

} // namespace Orvane
