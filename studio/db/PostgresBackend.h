#pragma once

#include "studio/db/DatabaseBackend.h"
#include "studio/db/SequencePool.h"

namespace Orvane::Studio {

// PostgreSQL: statements through the Oracle-dialect bridge, native sequences, the stored
// procedures as PL/pgSQL functions (an Oracle package.procedure is the function procedure in
// the schema package), the catalog from pg_attribute, time-outs as statement_timeout.
class PostgresBackend : public DatabaseBackend {
public:
    // Starts with the library's time-out of 60 seconds, set outside any transaction so that no
    // rollback takes it back.
    explicit PostgresBackend(SqlConnection& connection);

    QString Translate(const QString& statement) const override;
    // In a batched transaction from values drawn ahead, elsewhere one by one.
    qint32 NextSequenceValue(const QString& sequence) override;
    QVariant CallProcedure(const QString& procedure,
                           const QList<ProcedureParameter>& parameters) override;
    QHash<QString, qint32> ColumnsOf(const QString& table) override;
    void SetTimeout(qint32 seconds) override;
    void BeginSetUp() override;
    void EndSetUp() override;

private:
    SqlConnection& m_connection;
    SequencePool m_pool;
    qint32 m_timeout = -1;
    int m_timeoutSession = -1; // the connection's session the time-out was set in
};

} // namespace Orvane::Studio
