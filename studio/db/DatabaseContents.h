#pragma once

#include <QCoreApplication>
#include <QStringList>

namespace Orvane::Studio {

class SqlConnection;

// What a SQLite or PostgreSQL database holds, as far as Orvane is concerned: nothing at all
// (it may be set up), Orvane's tables, some of them only, or other tables and none of Orvane's.
// A database that is not Orvane's own is never changed without the user's yes.
class DatabaseContents {
    Q_DECLARE_TR_FUNCTIONS(DatabaseContents)

public:
    enum class Kind { Empty, Orvane, Partial, Foreign };

    static DatabaseContents Of(SqlConnection& connection);

    Kind Contents() const { return m_kind; }
    // Why the database is not used as it is: which tables are missing, or that it holds others.
    QString Refusal(const QString& databaseShown) const;
    // Whether a database of other tables is to be set up all the same.
    static QString Question(const QString& databaseShown);
    // ODBC databases are used as they are, never set up.
    static QString OdbcRefusal(const QString& databaseShown);

private:
    Kind m_kind = Kind::Empty;
    QStringList m_missing;
};

} // namespace Orvane::Studio
