#pragma once

#include <QHash>
#include <QString>
#include <QVariantList>
#include <list>
#include <utility>

struct sqlite3;
struct sqlite3_stmt;

namespace Orvane::Studio {

class SqlConnection;

// Statements run straight on the SQLite connection under Qt's driver, each text prepared once
// and kept (the least recently used finalized beyond a bound): a save binds and steps thousands
// of them, and Qt's binding and executing cost more per statement than SQLite's own work.
// Every statement is reset once run, so none holds a lock or stands in the way of a commit;
// a new session of the connection starts with none kept. Destroy it before the connection.
class SqliteStatements {
public:
    SqliteStatements(SqlConnection& connection, qsizetype capacity);
    ~SqliteStatements();
    SqliteStatements(const SqliteStatements&) = delete;
    SqliteStatements& operator=(const SqliteStatements&) = delete;

    // Runs the statement with the values bound to its ? in order, and answers the first column
    // of its first row, null when it gives none. A failure is an Orvane::Error with SQLite's
    // message and shown, the statement as failures name it.
    QVariant Run(const QString& statement, const QVariantList& values, const QString& shown);

private:
    sqlite3_stmt* prepared(const QString& statement, const QString& shown);
    void bind(sqlite3_stmt* statement, const QVariantList& values, const QString& shown);
    [[noreturn]] void fail(const QString& shown) const;
    void clear();

    SqlConnection& m_connection;
    qsizetype m_capacity;
    int m_session = -1;
    sqlite3* m_database = nullptr;
    std::list<std::pair<QString, sqlite3_stmt*>> m_kept; // most recently used first
    QHash<QString, std::list<std::pair<QString, sqlite3_stmt*>>::iterator> m_byText;
};

} // namespace Orvane::Studio
