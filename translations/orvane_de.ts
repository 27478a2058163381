<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Orvane::CDataSourcesColumns</name>
    <message>
        <location filename="../orvane/model/CDataSourcesColumns.cpp" line="+185"/>
        <source>There is no column named &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>There is no column number %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::CDataSourcesData</name>
    <message>
        <location filename="../orvane/model/CDataSourcesData.cpp" line="+31"/>
        <source>Invalid use of Null: field &quot;%1&quot; of the document.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Type mismatch: field &quot;%1&quot; holds &quot;%2&quot;, not a number.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Select Entity for this Data Source</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::ColumnCommands</name>
    <message>
        <location filename="../orvane/columns/ColumnCommands.cpp" line="+37"/>
        <source>Append column.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Insert column.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delete selected column.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Rename column.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Clear column.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Add or edit Key Field.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delete Key Field.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Add or edit Field.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delete Field.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Move column left.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Move column right.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Detect the source&apos;s columns.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Add new column</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>rename</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Add Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Edit Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Delete Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Insert</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>ReName</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Detect Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Keys</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Add Key Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Edit Key Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Delete Key Field</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::ColumnFieldPrompt</name>
    <message>
        <location filename="../orvane/columns/ColumnFieldPrompt.cpp" line="+33"/>
        <source>Field name is in use.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Please select a different name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>CANNOT USE DUPLICATE FIELD NAMES</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::ColumnGridModel</name>
    <message>
        <location filename="../orvane/columns/ColumnGridModel.cpp" line="+165"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Key Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::ColumnNamePrompt</name>
    <message>
        <location filename="../orvane/columns/ColumnNamePrompt.cpp" line="+24"/>
        <source>Please enter new column name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Please enter a unique column name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Please enter column name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>RENAMING COLUMN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+46"/>
        <source>COLUMN NAME EXISTS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-42"/>
        <source>ADDING COLUMN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Column name must be 40 characters or fewer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Do you wish to restore the existing column?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>This column name is already in use.  Please enter a unique name.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::ColumnValidation</name>
    <message>
        <location filename="../orvane/columns/ColumnValidation.cpp" line="+23"/>
        <source>A unique position between 1 and 500 must be specified</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Column %1 has no name.  Please provide a name or delete the column.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Column %1 has no position specified.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Column %1 and column %2 have duplicate field names specified.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Each field must have a unique name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Column %1 has a duplicate key specified.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Column %1 is missing a key field.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Column %1 has a duplicate position spceified.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>At least one column must be defined</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::DefinitionCheck</name>
    <message>
        <location filename="../orvane/sources/DefinitionCheck.cpp" line="+49"/>
        <source>Column &quot;%1&quot; is %2, but record %3 holds &quot;%4&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>The file &quot;%1&quot; is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Column &quot;%1&quot; is at position %2, but the file&apos;s records have %3 fields.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Column &quot;%1&quot; is at position %2, where the file&apos;s header has &quot;%3&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>The file&apos;s field %1 (&quot;%2&quot;) is in no column of the definition.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>The file&apos;s field %1 is in no column of the definition.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::DefinitionImport</name>
    <message>
        <location filename="../orvane/exchange/DefinitionImport.cpp" line="+91"/>
        <location line="+52"/>
        <source>there is no entity named %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-45"/>
        <source>the entity %1 may not be used for external data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>there is no frequency %1 for data sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>&quot;Time Stamp&quot; names the time stamp column, which is %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>the entity %1 has no field %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+23"/>
        <source>the entity %1 has no field %2, and no definition is given to create it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>another column already creates the field %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>there is no technology %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>has more than the %1 characters the dictionary holds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <source>a field&apos;s data type is Integer, Float or String</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>%1 over time with %2 across elements is not a valid aggregation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>the dictionary has no extra column %1 in use</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::DefinitionJson</name>
    <message>
        <location filename="../orvane/exchange/DefinitionJson.cpp" line="+100"/>
        <location line="+9"/>
        <location line="+27"/>
        <location line="+8"/>
        <source>is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-44"/>
        <location line="+74"/>
        <location line="+17"/>
        <source>must be a text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-74"/>
        <source>must be a whole number from %1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>must be true or false</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <location line="+167"/>
        <source>must be an object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-159"/>
        <source>must be an array</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>&quot;%1&quot; is not one of Integer, Float, String, ENUM, Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>must name at least one technology</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+39"/>
        <source>&quot;%1&quot; is no field name: it must begin with a letter or _ and go on with letters, digits, %% or _</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <location line="+73"/>
        <source>must not be empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-50"/>
        <source>another column is named &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>another column is at position %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>another key has ordinal %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>another column is the time stamp</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>a password is never kept in a definition file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+32"/>
        <source>must be &quot;%1&quot; or &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+37"/>
        <source>not JSON: %1 at offset %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>not a data source: the file must hold one JSON object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>is missing; expected &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&quot;%1&quot; is not supported; expected &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::DelimitedReader</name>
    <message>
        <location filename="../orvane/sources/DelimitedReader.cpp" line="+120"/>
        <source>No file name is given.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The file &quot;%1&quot; does not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&quot;%1&quot; is a folder, not a file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+21"/>
        <source>The file &quot;%1&quot; cannot be read: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-4"/>
        <source>Reading was cancelled.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>The file &quot;%1&quot; holds binary data, not delimited text.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>The file &quot;%1&quot; cannot be split: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::FSelectEntityTree</name>
    <message>
        <location filename="../orvane/dialogs/FSelectEntityTree.cpp" line="+35"/>
        <source>Select  Entity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Field Type Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Technology Type Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+83"/>
        <source>Entity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Selected %1 is not allowed to be used for external data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Please select another %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Select %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::NoHost</name>
    <message>
        <location filename="../orvane/widgets/NoHostNotice.cpp" line="+66"/>
        <source>This control has no host: the application has not installed Orvane&apos;s host components.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Planner</name>
    <message>
        <location filename="../orvane/sources/DetectionPlan.cpp" line="+91"/>
        <source>The time stamp is at position %1; the source&apos;s first date, &quot;%2&quot;, is at position %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>The source&apos;s &quot;%1&quot; at position %2 lies beyond position %3, the last a column may have.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>The source&apos;s &quot;%1&quot; at position %2 falls on column &quot;%3&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Column &quot;%1&quot; is at position %2; the source has it at position %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Column &quot;%1&quot; is %2; the source&apos;s values look %3.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::SourceHead</name>
    <message>
        <location filename="../orvane/sources/SourceHead.cpp" line="+68"/>
        <source>No record of &quot;%1&quot; ends within its first %2 MB: is it a delimited text file?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::SourcePreview</name>
    <message>
        <location filename="../orvane/editors/SourcePreview.cpp" line="+55"/>
        <location line="+65"/>
        <source>No file to preview.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-50"/>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+54"/>
        <source>Reading &quot;%1&quot;...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+49"/>
        <source>The file &quot;%1&quot; is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <location line="+6"/>
        <source>All %n record(s) of the file.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location line="+1"/>
        <source>The first %n record(s) of the file.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The file is not UTF-8; it is read as Latin-1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Records %1 have a different number of fields than the first (%2).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::SourceSettingsEditor</name>
    <message>
        <location filename="../orvane/editors/SourceSettingsEditor.cpp" line="+23"/>
        <source>Data IsTime Series</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Check if data is time series</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Frequency:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::TablePicker</name>
    <message>
        <location filename="../orvane/widgets/TablePicker.cpp" line="+22"/>
        <source>Select Table</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::XDataSourcesColumn</name>
    <message>
        <location filename="../orvane/columns/XDataSourcesColumn.cpp" line="+592"/>
        <source>The source has no columns to detect.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+14"/>
        <source>Detect Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-3"/>
        <source>The layout already has every column of the source.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+115"/>
        <source>Naming Error. Column: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Resetting Columns array</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::XDataSourcesGen</name>
    <message>
        <location filename="../orvane/editors/XDataSourcesGen.cpp" line="+34"/>
        <source>   &lt;space&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> : &lt;colon&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> , &lt;comma&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> / &lt;slash&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>   &lt;tab&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Description:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Enter Description of Document</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>File Name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Enter file path and name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delimeter:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Select Delimeter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Choose the data file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+81"/>
        <source>A full path must be supplied to the data file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> Path Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+68"/>
        <source>A file name cannot include any of the following characters: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-66"/>
        <source> File Name Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>A delimeter type must be selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> Delimeter Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>A time series frequency must be selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> Frequency Selection Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+49"/>
        <source>Select Data File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delimited files (*.csv *.txt *.tsv *.dat);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>File Name Error</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::XDataSourcesODBC</name>
    <message>
        <location filename="../orvane/editors/XDataSourcesODBC.cpp" line="+48"/>
        <source>Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Table:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Database:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Server:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Login</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Password:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>UserId:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Select data frequency</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Choose the table from the database&apos;s list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+153"/>
        <source>Test Connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-151"/>
        <source>Connect with this login and disconnect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+95"/>
        <source>A time series frequency must be selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>: Frequency Selection Missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Please enter </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>: Required Information is Missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <location line="+25"/>
        <source>This application cannot read the database&apos;s catalog.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-22"/>
        <location line="+27"/>
        <source>Please enter %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>The connection succeeded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+12"/>
        <source>Select Table</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-2"/>
        <source>The database lists no tables for this login.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::fDetectColumns</name>
    <message>
        <location filename="../orvane/dialogs/fDetectColumns.cpp" line="+30"/>
        <source>Detect Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>These columns will be added:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>These differ from the layout and are left as they are:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Time Stamp (moves)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::fFieldInfo</name>
    <message>
        <location filename="../orvane/dialogs/fFieldInfo.cpp" line="+33"/>
        <source>Creating new EDS field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+52"/>
        <source>A Field name must have at least 1 but no more than </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> characters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>and first character must begin with alphabet or _ and subsequent </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>character can be alphanumeric, % or _ only.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Field Editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>&amp;Name: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&amp;Description: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Heading Line &amp;1: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Heading Line &amp;2: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>D&amp;ata Type: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&amp;Time Aggregator:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Element Aggregator: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Extra Column:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>T&amp;echnologies:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Field &amp;Style:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Sample</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Field Style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+90"/>
        <source>Loading Field Editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+78"/>
        <source>Aggrega&amp;tor:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Create New Data Source Field For </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source> Update Data Source Field </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+81"/>
        <source>A Field must be associated with at least one technology type.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Please select one or more technology types for this Field. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>A Field with this name already exists. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Please select another name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Field&apos;s time aggregation and element aggregation is not a valid choice.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Please check your aggregation selection and try again. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+82"/>
        <source>A field with the name you specified already exists. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Please specify a different name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Unable to save New Field.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::frmKeySelector</name>
    <message>
        <location filename="../orvane/dialogs/frmKeySelector.cpp" line="+72"/>
        <location line="+137"/>
        <source>Select Key Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-128"/>
        <source>Field:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Key Field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Select field</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Ordinal:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Select Key Ordinal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+99"/>
        <source>Update Key Field Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>A unique Ordinal between 1 and 500 must be chosen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Ordinal %1 is already in use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>A key field has not been selected</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::mOrvane</name>
    <message>
        <location filename="../orvane/widgets/TemplateUseCheck.cpp" line="+24"/>
        <source>This will remove the &apos;Time Stamp&apos; column and may affect existing reports</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>ARE YOU SURE?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>This column may not be deleted because it is currently in use in </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>one or more templates.  It must be removed from the template(s)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>before it may be deleted from this document.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
