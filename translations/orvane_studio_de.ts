<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>DatabaseContents</name>
    <message>
        <location filename="../studio/db/DatabaseContents.cpp" line="+35"/>
        <source>Cannot use %1: it holds only some of Orvane&apos;s tables, or other tables of the same names; missing: %2. It was left unchanged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Cannot use %1: it is not empty, it holds other tables and none of Orvane&apos;s. It was left unchanged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Add Orvane&apos;s tables and the demo dictionary to %1? It is not empty: it holds other tables and none of Orvane&apos;s.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Cannot use %1: it has no Orvane tables (eds_column and the others). Databases reached over ODBC are used as they are, never set up.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::CommandLine</name>
    <message>
        <location filename="../studio/app/CommandLine.cpp" line="+76"/>
        <source>A SQLite file, postgresql://user@host:port/database (the password from PGPASSWORD or ~/.pgpass), or odbc:DSN (default: the demo database in the user&apos;s data folder).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Window: open every document without edit permission.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Window: open the data source of that name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>export: every data source, into a folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>import: replace a data source of the same name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Show this help.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-53"/>
        <source>Orvane Studio: define External Data Sources for the performance-management client.

Without a command it opens its window. The commands run without a window or a display:
  list                       the data sources: name, type, entity
  export NAME [FILE]         one data source as JSON, to FILE or to the standard output
  export --all DIR           every data source, one NAME.json each, into DIR
  import FILE... [--replace] create the data sources of the files, all or none; with
                             --replace a data source of the same name is replaced
  check NAME [FILE]          an ASCII data source&apos;s columns against its data file (or
                             FILE): each difference on a line
Exit status: 0 success, 1 a problem with the command or the files (said on the standard
error), 2 a database error, 3 the checked file differs from its definition.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+57"/>
        <source>list, export, import or check, and its arguments.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+33"/>
        <source>
See --help.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Unknown command &quot;%1&quot;. See --help.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Database error: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>list takes nothing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Usage: export NAME [FILE], or export --all DIR.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+32"/>
        <source>There is no data source named &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-25"/>
        <location line="+14"/>
        <source>Cannot write %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-8"/>
        <source>Usage: export --all DIR.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Cannot create the folder %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Usage: check NAME [FILE].</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>check reads the files of ASCII data sources only.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>%1 matches its definition.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Usage: import FILE... [--replace].</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Cannot read %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Nothing was imported; --replace replaces those.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Nothing was imported.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Imported &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::ConnectionDescription</name>
    <message>
        <location filename="../studio/db/ConnectionDescription.cpp" line="+68"/>
        <source>The connection &quot;sqlite:&quot; names no database file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>The connection &quot;odbc:&quot; names no data source.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>The PostgreSQL connection cannot be read: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>The PostgreSQL connection names no database: write it as postgresql://user@host:port/dbname.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>No database was named.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&quot;%1&quot; is not a kind of database Orvane Studio opens: use sqlite:, postgresql:// or odbc:.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+58"/>
        <source>the SQLite database &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>the local server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>the PostgreSQL database &quot;%1&quot; on %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source> as user &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>the ODBC data source &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::ConnectionDialog</name>
    <message>
        <location filename="../studio/app/ConnectionDialog.cpp" line="+18"/>
        <source>Orvane Studio: Open Database</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Name a SQLite file (a new one is created with the demo dictionary), a PostgreSQL server as postgresql://user@host:port/database, or an ODBC data source as odbc:DSN. Type the password below, if the database needs one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>&amp;Password:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&amp;Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+30"/>
        <source>SQLite Database</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>SQLite databases (*.sqlite *.db);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::DatabaseSchema</name>
    <message>
        <location filename="../studio/db/DatabaseSchema.cpp" line="+29"/>
        <source>The schema script %1 is missing from the program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Orvane Studio does not set up databases reached over ODBC.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+115"/>
        <source>Cannot set up %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Cannot bring %1 up to date: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::DefinitionTransfer</name>
    <message>
        <location filename="../studio/app/DefinitionTransfer.cpp" line="+63"/>
        <location line="+45"/>
        <source>name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-45"/>
        <source>another file defines &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>a data source named &quot;%1&quot; exists already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+40"/>
        <source>&quot;%1&quot; cannot be replaced: report templates use its fields</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::DictionaryField</name>
    <message>
        <location filename="../studio/dictionary/DictionaryField.cpp" line="+37"/>
        <source>The entity already has a field named %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::DocumentWindow</name>
    <message>
        <location filename="../studio/app/DocumentWindow.cpp" line="+83"/>
        <source>Entity: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+125"/>
        <source>New %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+44"/>
        <source>The data source &quot;%1&quot; was saved, but reading it back failed:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Read it again now? No closes it; it can be opened again from the list.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-38"/>
        <source>Please enter a name for this data source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-83"/>
        <source>Check &amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Compare the columns with the data file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>The file matches the definition.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+3"/>
        <source>Check File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+115"/>
        <source>Save %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>A name has at most %1 characters. Please enter a shorter name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>A data source named &quot;%1&quot; already exists. Please enter another name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+31"/>
        <source>The data source was not saved; nothing was changed in the database.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+38"/>
        <source>Your changes were not saved; they are still here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Someone else saved a data source named &quot;%1&quot; meanwhile; this one was not saved and is still here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Save it under another name?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The data source &quot;%1&quot; was deleted by someone else since it was opened.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Save them as a copy under a new name?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>The data source &quot;%1&quot; was changed by someone else since it was opened.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Yes saves them as a copy under a new name. No reloads the data source as it is stored now. Cancel goes back to your changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Please enter a name for the copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Someone else saved a data source named &quot;%1&quot; meanwhile. Please enter another name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The copy was not saved:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Reload &quot;%1&quot; as it is stored now? Your changes will be lost.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Do you want to save the changes to %1?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Orvane Studio</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::FieldStore</name>
    <message>
        <location filename="../studio/dictionary/FieldStore.cpp" line="+107"/>
        <source>This field object holds field %1 and cannot save field %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>A field needs a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&quot;%1&quot; is not a data type of the dictionary; use I, F, S, E or D.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>There is no entity %1 in the dictionary.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>There is no aggregation pair %1 in the dictionary.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>The technology mask %1 names technologies the dictionary does not have.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::FieldStyleDialog</name>
    <message>
        <location filename="../studio/dictionary/FieldStyleDialog.cpp" line="+30"/>
        <source>Black</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Maroon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Green</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Olive</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Navy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Purple</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Teal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Grey</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Silver</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Red</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Lime</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Yellow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Blue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Fuchsia</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Aqua</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>White</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Field Style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>&amp;Bold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Italic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Underline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Other Colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Sample</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Font:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>C&amp;olour:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::MainWindow</name>
    <message>
        <location filename="../studio/app/MainWindow.cpp" line="+52"/>
        <location line="+409"/>
        <source>Orvane Studio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-384"/>
        <source>Open &amp;Database...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>New &amp;ASCII Data Source...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>New &amp;ODBC Data Source...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>&amp;Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Delete...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Export...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Import...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;User Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>E&amp;xit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Documents</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Entity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Time Series</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>ASCII Data Sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>ODBC Data Sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+46"/>
        <source>The open documents are closed first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>No</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+63"/>
        <source>Saved &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Delete the data source &quot;%1&quot; with all its columns?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delete Data Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Export Data Source</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+21"/>
        <source>Data source definitions (*.json)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-7"/>
        <source>Cannot write %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Exported &quot;%1&quot; to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+11"/>
        <location line="+16"/>
        <location line="+12"/>
        <source>Import Data Sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-29"/>
        <source>Cannot read %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <source>

Replace the existing data sources?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Nothing was imported:
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Imported %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+108"/>
        <source>%1: connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1: connection lost</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Orvane::Studio::TemplateTree</name>
    <message>
        <location filename="../studio/widgets/TemplateTree.cpp" line="+86"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Description</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <location filename="../studio/db/OdbcCatalog.cpp" line="+60"/>
        <source>No ODBC data source was named.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+37"/>
        <source>The table &quot;%1&quot; was not found in %2.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StatementRedaction</name>
    <message>
        <location filename="../studio/db/StatementRedaction.cpp" line="+97"/>
        <source>(not shown)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <location filename="../studio/app/main.cpp" line="+83"/>
        <source>Orvane Studio created its demo database: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Created the demo database: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>There is no data source named &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
