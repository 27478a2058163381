#pragma once

#include "orvane/columns/ColumnCommand.h"

#include <QString>

namespace Orvane {

class CDataSourcesColumn;

// Which commands the column layout editor offers for the column the user is on.
namespace ColumnRules {

inline const QString OdbcAppName = QStringLiteral("ODBC Data Source");

// The toolbar buttons for the column shown in gridColumn (1-based) of columnCount; with no
// column (null, or gridColumn 0) only Add is offered.
CommandStates ToolbarState(const CDataSourcesColumn* column, qint32 gridColumn, qint32 columnCount,
                           const QString& appName);
// The "Columns" pop-up; with no column only Add is offered.
CommandStates ColumnsMenuState(const CDataSourcesColumn* column, const QString& appName);
// The "Select" pop-up (field items). Deleting is offered for a field added during this edit or
// for any field of a new document.
CommandStates FieldMenuState(const CDataSourcesColumn& column, bool newDocument);
// The "Keys" pop-up.
CommandStates KeysMenuState(const CDataSourcesColumn& column);

} // namespace ColumnRules

} // namespace Orvane
