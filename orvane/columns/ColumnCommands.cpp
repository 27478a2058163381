#include "orvane/columns/ColumnCommands.h"

#include "orvane/model/CDataSourcesColumn.h"

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
        {QStringLiteral("sep6"), separator, ColumnCommand::Add},
        {QStringLiteral("Detect"), tr("Detect the source's columns."), ColumnCommand::Detect},
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
    add(m_columnsMenu, ColumnCommand::ColDetect, QStringLiteral("mnuColDetect"),
        tr("Detect Columns"));

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

// ---- Enabled states ------------------------------------------------------------------------

using C = ColumnCommand;

CommandStates ColumnCommands::ToolbarState(const CDataSourcesColumn* column, qint32 gridColumn,
                                           qint32 columnCount, const QString& appName) {
    if (!column || gridColumn <= 0) {
        return {{C::Add, true},       {C::Insert, false}, {C::Delete, false}, {C::ReName, false},
                {C::Clear, false},    {C::Key, false},    {C::DelKey, false}, {C::Field, false},
                {C::DelField, false}, {C::Left, false},   {C::Right, false}};
    }
    const bool timeStamp = column->IsTimeStamp();
    const bool named = !column->Column_Name().isEmpty();
    const bool hasField = column->Field() != nullptr;
    CommandStates states{
        {C::Add, true},
        {C::Insert, true},
        {C::Delete, !timeStamp},
        {C::Clear, named},
        {C::Key, !hasField && !timeStamp},
        {C::DelKey, column->IsLiveKey()},
        {C::Field, !column->IsLiveKey() && !timeStamp},
        // A stored field goes only with Clear, which asks whether templates use it.
        {C::DelField, hasField && column->Field_Id() < 1},
        {C::Left, gridColumn >= 2},
        {C::Right, gridColumn < columnCount},
    };
    if (named)
        states.append({C::ReName, appName == OdbcAppName || !timeStamp});
    return states;
}

CommandStates ColumnCommands::ColumnsMenuState(const CDataSourcesColumn* column,
                                               const QString& appName) {
    if (!column) {
        return {{C::ColAdd, true},
                {C::ColInsert, false},
                {C::ColDelete, false},
                {C::ColEdit, false},
                {C::ColClear, false}};
    }
    if (column->IsTimeStamp()) {
        return {{C::ColAdd, true},
                {C::ColInsert, false},
                {C::ColDelete, false},
                {C::ColEdit, appName == OdbcAppName},
                {C::ColClear, false}};
    }
    return {{C::ColInsert, true}, {C::ColDelete, true}, {C::ColEdit, true}, {C::ColClear, true}};
}

CommandStates ColumnCommands::FieldMenuState(const CDataSourcesColumn& column, bool newDocument) {
    const bool offered = !column.IsTimeStamp() && !column.IsLiveKey();
    const bool hasField = column.Field() != nullptr;
    return {{C::AddField, offered && !hasField},
            {C::EditField, offered && hasField},
            {C::DeleteField, offered && hasField && (column.FieldAdded() || newDocument)}};
}

CommandStates ColumnCommands::KeysMenuState(const CDataSourcesColumn& column) {
    const bool offered = !column.IsTimeStamp() && !column.Field();
    return {{C::KeysAdd, offered && !column.Is_Key()},
            {C::KeysEdit, offered && column.Is_Key()},
            {C::KeysDelete, offered && column.Is_Key() && !column.KeyDeleted()}};
}

} // namespace Orvane
