#include "studio/db/PostgresBackend.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/OracleDialectBridge.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlLiterals.h"

#include <QSqlField>
#include <QSqlRecord>
#include <QStringList>

namespace Orvane::Studio {

namespace {

// The advisory lock all Orvane sessions take to set up a database: "Orvane" in ASCII.
constexpr qint64 SetUpLockKey = 0x4f7276616e65;

constexpr int VoidType = 2278; // pg_type oid of void: what a function without result returns

// The type a parameter is cast to, so that PostgreSQL finds the function's overload.
QString sqlTypeOf(const ProcedureParameter& parameter) {
    const QString type = parameter.type.toLower();
    if (type == QLatin1String("integer"))
        return QStringLiteral("integer");
    if (type == QLatin1String("string"))
        return QStringLiteral("text");
    if (!type.isEmpty())
        throw Error(QStringLiteral("\"%1\" is not a parameter type (integer or string).")
                        .arg(parameter.type));
    switch (parameter.value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QStringLiteral("integer");
    case QMetaType::Double:
        return QStringLiteral("double precision");
    default:
        return QStringLiteral("text");
    }
}

} // namespace

PostgresBackend::PostgresBackend(SqlConnection& connection)
    : m_connection(connection)
    , m_pool(connection) {
    SetTimeout(60);
}

QString PostgresBackend::Translate(const QString& statement) const {
    return OracleDialectBridge::Translate(statement);
}

qint32 PostgresBackend::NextSequenceValue(const QString& sequence) {
    RequirePlainName(sequence, QStringLiteral("sequence"));
    // Kept prepared: a query prepared per call costs the server a PREPARE and a DEALLOCATE.
    const QString name = sequence.toLower();
    if (m_connection.Batching())
        return m_pool.Next(name);
    QSqlQuery& query =
        m_connection.RunPrepared(QStringLiteral("SELECT nextval(CAST(? AS regclass))"), {name},
                                 QStringLiteral("SELECT nextval('%1')").arg(name));
    query.next();
    const qint32 value = SqlLiterals::AsLong(query.value(0));
    query.finish();
    return value;
}

QVariant PostgresBackend::CallProcedure(const QString& procedure,
                                        const QList<ProcedureParameter>& parameters) {
    RequirePlainName(procedure, QStringLiteral("procedure"));
    QStringList arguments;
    for (const ProcedureParameter& parameter : parameters) {
        arguments << QStringLiteral("CAST(%1 AS %2)")
                         .arg(SqlLiterals::Format(parameter.value), sqlTypeOf(parameter));
    }
    QSqlQuery query = m_connection.Run(QStringLiteral("SELECT * FROM %1(%2)")
                                           .arg(procedure, arguments.join(QStringLiteral(", "))));
    if (!query.next() || query.record().field(0).typeID() == VoidType)
        return {};
    const QVariant result = query.value(0);
    return result.isNull() ? QVariant() : result;
}

QHash<QString, qint32> PostgresBackend::ColumnsOf(const QString& table) {
    RequirePlainName(table, QStringLiteral("table"));
    // A varchar(n) or char(n) column keeps n + 4 in atttypmod; other types keep -1.
    QSqlQuery query = m_connection.Run(
        QStringLiteral("SELECT a.attname, CASE WHEN a.atttypid IN (1042, 1043) AND "
                       "a.atttypmod > 4 THEN a.atttypmod - 4 ELSE 0 END "
                       "FROM pg_attribute a WHERE a.attrelid = to_regclass(?) "
                       "AND a.attnum > 0 AND NOT a.attisdropped"),
        {table});
    QHash<QString, qint32> columns;
    while (query.next())
        columns.insert(query.value(0).toString().toCaseFolded(), query.value(1).toInt());
    return columns;
}

void PostgresBackend::SetTimeout(qint32 seconds) {
    m_connection.ReopenIfLost();
    if (seconds == m_timeout && m_timeoutSession == m_connection.Session())
        return;
    m_connection.Run(
        QStringLiteral("SET statement_timeout = %1").arg(qint64(qMax(0, seconds)) * 1000));
    m_timeout = seconds;
    m_timeoutSession = m_connection.Session();
}

void PostgresBackend::BeginSetUp() {
    m_connection.Run(QStringLiteral("SELECT pg_advisory_lock(%1)").arg(SetUpLockKey));
}

// The lock ends with the session as well, so a failure here may be ignored.
void PostgresBackend::EndSetUp() {
    QSqlQuery(m_connection.Database())
        .exec(QStringLiteral("SELECT pg_advisory_unlock(%1)").arg(SetUpLockKey));
}

} // namespace Orvane::Studio
