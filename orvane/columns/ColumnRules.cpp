#include "orvane/columns/ColumnRules.h"

#include "orvane/model/CDataSourcesColumn.h"

namespace Orvane::ColumnRules {

using C = ColumnCommand;

CommandStates ToolbarState(const CDataSourcesColumn* column, qint32 gridColumn, qint32 columnCount,
                           const QString& appName) {
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

CommandStates ColumnsMenuState(const CDataSourcesColumn* column, const QString& appName) {
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

CommandStates FieldMenuState(const CDataSourcesColumn& column, bool newDocument) {
    const bool offered = !column.IsTimeStamp() && !column.IsLiveKey();
    const bool hasField = column.Field() != nullptr;
    return {{C::AddField, offered && !hasField},
            {C::EditField, offered && hasField},
            {C::DeleteField, offered && hasField && (column.FieldAdded() || newDocument)}};
}

CommandStates KeysMenuState(const CDataSourcesColumn& column) {
    const bool offered = !column.IsTimeStamp() && !column.Field();
    return {{C::KeysAdd, offered && !column.Is_Key()},
            {C::KeysEdit, offered && column.Is_Key()},
            {C::KeysDelete, offered && column.Is_Key() && !column.KeyDeleted()}};
}

} // namespace Orvane::ColumnRules
