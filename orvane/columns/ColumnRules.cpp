#include "orvane/columns/ColumnRules.h"

#include "orvane/model/CDataSourcesColumn.h"

namespace Orvane::ColumnRules {

bool IsLiveKey(const CDataSourcesColumn& column) {
    return column.Is_Key() && !column.KeyDeleted();
}

EnabledStates ToolbarState(const CDataSourcesColumn* column, qint32 gridColumn, qint32 columnCount,
                           const QString& appName) {
    if (!column || gridColumn <= 0) {
        return {{QStringLiteral("Add"), true},       {QStringLiteral("Insert"), false},
                {QStringLiteral("Delete"), false},   {QStringLiteral("ReName"), false},
                {QStringLiteral("Clear"), false},    {QStringLiteral("Key"), false},
                {QStringLiteral("DelKey"), false},   {QStringLiteral("Field"), false},
                {QStringLiteral("DelField"), false}, {QStringLiteral("Left"), false},
                {QStringLiteral("Right"), false}};
    }
    const bool timeStamp = column->IsTimeStamp();
    const bool named = !column->Column_Name().isEmpty();
    const bool hasField = column->Field() != nullptr;
    EnabledStates states{
        {QStringLiteral("Add"), true},
        {QStringLiteral("Insert"), true},
        {QStringLiteral("Delete"), !timeStamp},
        {QStringLiteral("Clear"), named},
        {QStringLiteral("Key"), !hasField && !timeStamp},
        {QStringLiteral("DelKey"), IsLiveKey(*column)},
        {QStringLiteral("Field"), !IsLiveKey(*column) && !timeStamp},
        // A stored field goes only with Clear, which asks whether templates use it.
        {QStringLiteral("DelField"), hasField && column->Field_Id() < 1},
        {QStringLiteral("Left"), gridColumn >= 2},
        {QStringLiteral("Right"), gridColumn < columnCount},
    };
    if (named)
        states.insert(QStringLiteral("ReName"), appName == OdbcAppName || !timeStamp);
    return states;
}

EnabledStates ColumnsMenuState(const CDataSourcesColumn* column, const QString& appName) {
    if (!column) {
        return {{QStringLiteral("mnuColAdd"), true},
                {QStringLiteral("mnuColInsert"), false},
                {QStringLiteral("mnuColDelete"), false},
                {QStringLiteral("mnuColEdit"), false},
                {QStringLiteral("mnuColClear"), false}};
    }
    if (column->IsTimeStamp()) {
        return {{QStringLiteral("mnuColAdd"), true},
                {QStringLiteral("mnuColInsert"), false},
                {QStringLiteral("mnuColDelete"), false},
                {QStringLiteral("mnuColEdit"), appName == OdbcAppName},
                {QStringLiteral("mnuColClear"), false}};
    }
    return {{QStringLiteral("mnuColInsert"), true},
            {QStringLiteral("mnuColDelete"), true},
            {QStringLiteral("mnuColEdit"), true},
            {QStringLiteral("mnuColClear"), true}};
}

EnabledStates FieldMenuState(const CDataSourcesColumn& column, bool newDocument) {
    EnabledStates states{{QStringLiteral("mnuAddField"), false},
                         {QStringLiteral("mnuEditField"), false},
                         {QStringLiteral("mnuDeleteField"), false}};
    if (column.IsTimeStamp() || IsLiveKey(column))
        return states;
    if (!column.Field()) {
        states[QStringLiteral("mnuAddField")] = true;
    } else {
        states[QStringLiteral("mnuEditField")] = true;
        states[QStringLiteral("mnuDeleteField")] = column.FieldAdded() || newDocument;
    }
    return states;
}

EnabledStates KeysMenuState(const CDataSourcesColumn& column) {
    EnabledStates states{{QStringLiteral("mnuKeysAdd"), false},
                         {QStringLiteral("mnuKeysEdit"), false},
                         {QStringLiteral("mnuKeysDelete"), false}};
    if (column.IsTimeStamp() || column.Field())
        return states;
    if (column.Is_Key()) {
        states[QStringLiteral("mnuKeysEdit")] = true;
        states[QStringLiteral("mnuKeysDelete")] = !column.KeyDeleted();
    } else {
        states[QStringLiteral("mnuKeysAdd")] = true;
    }
    return states;
}

} // namespace Orvane::ColumnRules
