#include "studio/db/OdbcCatalog.h"

#include "orvane/host/CatalogTypes.h"
#include "orvane/host/OrvaneError.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/SqlConnection.h"

#include <QRegularExpression>
#include <QSqlField>
#include <QSqlRecord>

namespace Orvane::Studio {

namespace {

// A value as a connection text may hold it: in braces when it has a separator, a brace or an
// outer blank.
QString written(QString value) {
    static const QRegularExpression plain(QStringLiteral("^[^;{}=\\s]+$"));
    if (plain.match(value).hasMatch())
        return value;
    return QLatin1Char('{') + value.replace(QStringLiteral("}"), QStringLiteral("}}")) +
           QLatin1Char('}');
}

// The driver takes a text that names neither DRIVER nor SERVER as a data source name and writes
// DSN= in front of it itself.
QString serverPart(const QString& server) {
    static const QRegularExpression ownText(QStringLiteral("(^|;)\\s*(DRIVER|SERVER)\\s*="),
                                            QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression dsn(QStringLiteral("^\\s*DSN\\s*="),
                                        QRegularExpression::CaseInsensitiveOption);
    if (ownText.match(server).hasMatch())
        return server;
    return QString(server).remove(dsn).trimmed();
}

QString withoutPassword(QString message, const QString& password) {
    if (!password.isEmpty())
        message.replace(password, QStringLiteral("***"));
    return message;
}

} // namespace

QString OdbcCatalog::ConnectionText(const SourceLogin& login) {
    QStringList parts{serverPart(login.server.trimmed())};
    if (!login.database.isEmpty())
        parts << QStringLiteral("DATABASE=") + written(login.database);
    if (!login.userId.isEmpty())
        parts << QStringLiteral("UID=") + written(login.userId);
    if (!login.password.isEmpty())
        parts << QStringLiteral("PWD=") + written(login.password);
    return parts.join(QLatin1Char(';'));
}

template <typename Reading>
auto OdbcCatalog::withConnection(const SourceLogin& login, Reading read) {
    if (login.server.trimmed().isEmpty())
        throw Error(QObject::tr("No ODBC data source was named."));
    ConnectionDescription description;
    description.backend = SqlBackend::ODBC;
    description.databaseName = ConnectionText(login);
    try {
        SqlConnection connection(description);
        return read(connection);
    } catch (const Error& error) {
        throw Error(withoutPassword(error.message(), login.password));
    }
}

void OdbcCatalog::TestConnection(const SourceLogin& login) {
    withConnection(login, [](SqlConnection&) { return true; });
}

QStringList OdbcCatalog::Tables(const SourceLogin& login) {
    return withConnection(login, [](SqlConnection& connection) {
        const QSqlDatabase database = connection.Database();
        QStringList tables = database.tables(QSql::Tables) + database.tables(QSql::Views);
        tables.sort(Qt::CaseInsensitive);
        tables.removeDuplicates();
        return tables;
    });
}

// Databases fold unquoted names differently: the name as given, then in upper and lower case.
QList<CatalogColumn> OdbcCatalog::Columns(const SourceLogin& login, const QString& table) {
    return withConnection(login, [&](SqlConnection& connection) {
        const QSqlDatabase database = connection.Database();
        QSqlRecord record;
        for (const QString& name :
             {table.trimmed(), table.trimmed().toUpper(), table.trimmed().toLower()}) {
            if (record.isEmpty() && !name.isEmpty())
                record = database.record(name);
        }
        if (record.isEmpty())
            throw Error(QObject::tr("The table \"%1\" was not found in %2.")
                            .arg(table, connection.Description().Shown()));
        QList<CatalogColumn> columns;
        for (int i = 0; i < record.count(); ++i) {
            const QSqlField field = record.field(i);
            columns.append({field.name(), CatalogTypes::Code(field.metaType())});
        }
        return columns;
    });
}

} // namespace Orvane::Studio
