#pragma once

#include <QVariantList>

class QSqlQuery;
struct sqlite3_stmt;

namespace Orvane::Studio {

// Reads the rows of a query that Qt's SQLite driver executed straight from its SQLite statement,
// with the values the driver would give (text as QString, integers as qlonglong, reals as double,
// blobs as QByteArray), but without its row cache and without SQLite turning every text into
// UTF-16 first: most of the cost of reading a result through Qt.
class SqliteRows {
public:
    // The statement under a query of Qt's SQLite driver; null for any other driver or a query
    // that has not run.
    static sqlite3_stmt* StatementOf(const QSqlQuery& query);
    // Appends the values of the row the statement stands on.
    static void ReadRow(sqlite3_stmt* statement, QVariantList& values);
    // Appends the values of every row the executed statement has left, the row it stands on
    // first, one row after the other, a database null as a null QVariant; answers how many rows.
    // A failing step is an Orvane::Error with SQLite's message.
    static qsizetype ReadAll(sqlite3_stmt* statement, QVariantList& values);
};

} // namespace Orvane::Studio
