#include "studio/db/DatabaseBackend.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/OdbcBackend.h"
#include "studio/db/PostgresBackend.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqliteBackend.h"

#include <QRegularExpression>

namespace Orvane::Studio {

std::unique_ptr<DatabaseBackend> DatabaseBackend::For(SqlConnection& connection) {
    switch (connection.Backend()) {
    case SqlBackend::SQLite:
        return std::make_unique<SqliteBackend>(connection);
    case SqlBackend::PostgreSQL:
        return std::make_unique<PostgresBackend>(connection);
    case SqlBackend::ODBC:
        return std::make_unique<OdbcBackend>(connection);
    }
    return nullptr;
}

void DatabaseBackend::RequirePlainName(const QString& name, const QString& what) {
    static const QRegularExpression plain(
        QStringLiteral("^[A-Za-z_][A-Za-z0-9_$#]*(\\.[A-Za-z_][A-Za-z0-9_$#]*)?$"));
    if (!plain.match(name).hasMatch())
        throw Error(QStringLiteral("\"%1\" is not a %2 name.").arg(name, what));
}

} // namespace Orvane::Studio
