#pragma once

#include "studio/db/DatabaseBackend.h"

namespace Orvane::Studio {

// Any ODBC data source, the client's Oracle database above all: statements pass unchanged,
// sequences are read as NAME.NEXTVAL FROM DUAL, procedures are called with the ODBC escape
// {call name(?, ...)}, a parameter without value being bound as in/out and handed back.
class OdbcBackend : public DatabaseBackend {
public:
    explicit OdbcBackend(SqlConnection& connection)
        : m_connection(connection) {}

    QString Translate(const QString& statement) const override { return statement; }
    qint32 NextSequenceValue(const QString& sequence) override;
    QVariant CallProcedure(const QString& procedure,
                           const QList<ProcedureParameter>& parameters) override;
    QHash<QString, qint32> ColumnsOf(const QString& table) override;

private:
    SqlConnection& m_connection;
};

} // namespace Orvane::Studio
