#pragma once

#include <QString>
#include <memory>

namespace Orvane {

class CDataSourcesColumn;
class CDataSourcesColumns;

// Asks the user for a column name through the host's input box until the name is usable, the
// user gives up, or the user chooses to bring back a deleted column of that name.
namespace ColumnNamePrompt {

struct Answer {
    // The accepted name, trimmed; empty when the user gave none or chose to restore.
    QString name;
    // The deleted column the user chose to bring back.
    std::shared_ptr<CDataSourcesColumn> restore;
    // The user typed something at least once, whatever came of it.
    bool gotName = false;
};

// lengthLimit is the declared width of the column name in the database. When renaming, the box
// starts with the column's name, so a small change is a small edit; the answer is checked as
// any other, so OK on the name unchanged finds it in use.
Answer Ask(const CDataSourcesColumns& columns, qint32 lengthLimit,
           const CDataSourcesColumn* renaming = nullptr);

} // namespace ColumnNamePrompt

} // namespace Orvane
