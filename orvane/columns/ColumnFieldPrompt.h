#pragma once

class QWidget;

namespace Orvane {

class CDataSourcesColumn;
class CDataSourcesColumns;

// The dialogs behind a column's Field and Key commands, shown through the host; what the user
// chooses is written onto the column with the marks the save needs.
namespace ColumnFieldPrompt {

// A new field for the column from the field editor, asked again while its name is another
// column's field; false when the user cancelled.
bool AddField(QWidget* parent, const CDataSourcesColumns& layout, CDataSourcesColumn& column);

// The column's field in the field editor; false when the user changed nothing.
bool EditField(QWidget* parent, const CDataSourcesColumns& layout, CDataSourcesColumn& column);

// A key field for the column from the key selector, starting from its present key when editing;
// false when the user cancelled.
bool ChooseKey(QWidget* parent, CDataSourcesColumns& layout, CDataSourcesColumn& column,
               bool editing);

} // namespace ColumnFieldPrompt

} // namespace Orvane
