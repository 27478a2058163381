#pragma once

#include "studio/db/DatabaseBackend.h"
#include "studio/db/SqliteStatements.h"

namespace Orvane::Studio {

// SQLite: statements through the Oracle-dialect bridge, sequences as rows of the table
// sequence_counter, the stored procedures as C++ routines (SqliteProcedures).
class SqliteBackend : public DatabaseBackend {
public:
    explicit SqliteBackend(SqlConnection& connection);

    QString Translate(const QString& statement) const override;
    qint32 NextSequenceValue(const QString& sequence) override;
    QVariant CallProcedure(const QString& procedure,
                           const QList<ProcedureParameter>& parameters) override;
    QHash<QString, qint32> ColumnsOf(const QString& table) override;

    // Advances the named sequence in one statement, so two connections never get one value.
    // Inside a transaction that is rolled back the values go back with everything else (SQLite
    // has one writer at a time), so only values that were never committed are handed out again.
    static qint32 NextValue(SqlConnection& connection, const QString& sequence);

private:
    SqlConnection& m_connection;
    SqliteStatements m_statements;
};

} // namespace Orvane::Studio
