#pragma once

#include "studio/db/ConnectionDescription.h"

#include <QString>
#include <QStringList>

namespace Orvane::Studio {

class SqlConnection;

// The two forms of eds_column: newer databases keep the editor's column order in
// editor_position, older ones lack that column. The library works with both.
enum class SchemaForm { WithEditorPosition, WithoutEditorPosition };

// Sets up an empty SQLite or PostgreSQL database: the tables, view, sequences and procedures of
// the schema (one SQL script per backend, in the resource :/orvane/db/) and the demo dictionary
// (one script shared by both), all in one transaction.
class DatabaseSchema {
public:
    static void Install(SqlConnection& connection, SchemaForm form);
    // Brings a database an earlier version set up up to date, in place: eds_document gets the
    // change stamp that saves check. Of two sessions doing it at once, one adds it.
    static void Upgrade(SqlConnection& connection);

    // The tables the schema of a SQLite or PostgreSQL database creates, lower case.
    static QStringList Tables(SqlBackend backend);

    // The statements of a script: split at semicolons outside quotes, comments and $tag$ bodies,
    // empty ones left out.
    static QStringList Statements(const QString& script);
};

} // namespace Orvane::Studio
