#pragma once

#include <QList>
#include <QPair>

namespace Orvane {

// The commands of the column layout editor: the toolbar buttons, then the pop-up menu items.
enum class ColumnCommand {
    Add,
    Insert,
    Delete,
    ReName,
    Clear,
    Key,
    DelKey,
    Field,
    DelField,
    Left,
    Right,
    Detect,
    ColAdd,
    ColInsert,
    ColDelete,
    ColEdit,
    ColClear,
    ColDetect,
    AddField,
    EditField,
    DeleteField,
    KeysAdd,
    KeysEdit,
    KeysDelete,
};

// Enabled flags for some commands; a command that is not listed keeps its flag.
using CommandStates = QList<QPair<ColumnCommand, bool>>;

} // namespace Orvane
