#pragma once

#include <QHash>
#include <QString>

namespace Orvane {

class CDataSourcesColumn;

// Which commands the column layout editor offers for the column the user is on. Each state maps
// an action's objectName to its enabled flag; an action that is not named keeps its flag.
namespace ColumnRules {

using EnabledStates = QHash<QString, bool>;

inline const QString OdbcAppName = QStringLiteral("ODBC Data Source");

// A key column whose key has not been deleted.
bool IsLiveKey(const CDataSourcesColumn& column);

// The toolbar buttons for the column shown in gridColumn (1-based) of columnCount; with no
// column (null, or gridColumn 0) only Add is offered.
EnabledStates ToolbarState(const CDataSourcesColumn* column, qint32 gridColumn, qint32 columnCount,
                           const QString& appName);
// The "Columns" pop-up; with no column only mnuColAdd is offered.
EnabledStates ColumnsMenuState(const CDataSourcesColumn* column, const QString& appName);
// The "Select" pop-up (field items). Deleting is offered for a field added during this edit or
// for any field of a new document.
EnabledStates FieldMenuState(const CDataSourcesColumn& column, bool newDocument);
// The "Keys" pop-up.
EnabledStates KeysMenuState(const CDataSourcesColumn& column);

} // namespace ColumnRules

} // namespace Orvane
