#include "studio/db/SqliteBackend.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/OracleDialectBridge.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlLiterals.h"
#include "studio/db/SqliteProcedures.h"

#include <QRegularExpression>

namespace Orvane::Studio {

namespace {

// The declared width of a text column ("VARCHAR(40)" gives 40); 0 for any other type.
qint32 textWidth(const QString& declaredType) {
    static const QRegularExpression width(QStringLiteral("\\(\\s*(\\d+)\\s*\\)"));
    const QString type = declaredType.toUpper();
    if (!type.contains(QLatin1String("CHAR")) && !type.contains(QLatin1String("TEXT")))
        return 0;
    const auto match = width.match(type);
    return match.hasMatch() ? match.captured(1).toInt() : 0;
}

} // namespace

QString SqliteBackend::Translate(const QString& statement) const {
    return OracleDialectBridge::Translate(statement);
}

namespace {

const QString NextValueStatement =
    QStringLiteral("UPDATE sequence_counter SET next_value = next_value + 1 "
                   "WHERE sequence_name = ? RETURNING next_value - 1");

QString nextValueShown(const QString& name) {
    return QStringLiteral("UPDATE sequence_counter SET next_value = next_value + 1 "
                          "WHERE sequence_name = '%1' RETURNING next_value - 1")
        .arg(name);
}

qint32 drawnValue(const QVariant& value, const QString& sequence, SqlConnection& connection) {
    if (value.isNull())
        throw Error(QStringLiteral("The sequence %1 does not exist in %2.")
                        .arg(sequence, connection.Description().Shown()));
    return SqlLiterals::AsLong(value);
}

} // namespace

SqliteBackend::SqliteBackend(SqlConnection& connection)
    : m_connection(connection)
    , m_statements(connection, 4) {}

// The save draws its ids one at a time: the statement runs straight on SQLite.
qint32 SqliteBackend::NextSequenceValue(const QString& sequence) {
    RequirePlainName(sequence, QStringLiteral("sequence"));
    const QString name = sequence.toLower();
    return drawnValue(m_statements.Run(NextValueStatement, {name}, nextValueShown(name)), sequence,
                      m_connection);
}

qint32 SqliteBackend::NextValue(SqlConnection& connection, const QString& sequence) {
    RequirePlainName(sequence, QStringLiteral("sequence"));
    const QString name = sequence.toLower();
    QSqlQuery& query = connection.RunPrepared(NextValueStatement, {name}, nextValueShown(name));
    const QVariant value = query.next() ? query.value(0) : QVariant();
    query.finish();
    return drawnValue(value, sequence, connection);
}

QVariant SqliteBackend::CallProcedure(const QString& procedure,
                                      const QList<ProcedureParameter>& parameters) {
    return SqliteProcedures(m_connection).Call(procedure, parameters);
}

QHash<QString, qint32> SqliteBackend::ColumnsOf(const QString& table) {
    RequirePlainName(table, QStringLiteral("table"));
    QSqlQuery query =
        m_connection.Run(QStringLiteral("SELECT name, type FROM pragma_table_info(?)"), {table});
    QHash<QString, qint32> columns;
    while (query.next())
        columns.insert(query.value(0).toString().toCaseFolded(),
                       textWidth(query.value(1).toString()));
    return columns;
}

} // namespace Orvane::Studio
