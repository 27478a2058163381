#include "studio/db/SqlQueryService.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/DatabaseBackend.h"
#include "studio/db/DatabaseContents.h"
#include "studio/db/OracleDialectBridge.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlLiterals.h"
#include "studio/db/SqlRecordset.h"
#include "studio/db/SqliteStatements.h"
#include "studio/db/StatementShape.h"

#include <QHash>

namespace Orvane::Studio {

namespace {

// Enough for every shape of statement one save sends.
constexpr qsizetype PreparedStatements = 64;

} // namespace

struct SqlQueryService::Private {
    explicit Private(const QString& connection)
        : connection(ConnectionDescription::Parse(connection))
        , backend(DatabaseBackend::For(this->connection)) {}

    SqlConnection connection;
    std::unique_ptr<DatabaseBackend> backend;
    QHash<QString, QHash<QString, qint32>> catalog; // case-folded table -> its columns
    bool setUp = false;
    QSqlQuery unprepared; // the last statement run as text

    // Statements that return no rows, run straight on SQLite (declared after the connection,
    // so that they end before it closes).
    std::unique_ptr<SqliteStatements> sqlite;

    // The query that ran the statement; read it before the next. A statement whose result is
    // not wanted (forResult false) may be held or run outside Qt: then there is none, null.
    QSqlQuery* run(const QString& statement, bool forResult = true);
};

// On SQLite and PostgreSQL the statement's literals are bound to a query prepared once per
// shape, so that statements differing only in their values are compiled once. Without a result
// to read, a statement with values runs straight on SQLite (Qt's binding and executing cost more
// than SQLite's work for one row) and is held in PostgreSQL's batched transactions.
QSqlQuery* SqlQueryService::Private::run(const QString& statement, bool forResult) {
    const SqlBackend kind = connection.Backend();
    if (kind == SqlBackend::ODBC)
        return &(unprepared = connection.Run(statement));
    const SqlTokenList tokens = OracleDialectBridge::TranslatedTokens(statement);
    const QString& sent = tokens.Statement();
    const StatementShape shape(tokens, kind == SqlBackend::PostgreSQL
                                           ? StatementShape::Binding::PostgreSQL
                                           : StatementShape::Binding::SQLite);
    if (!shape.HasValues())
        return &(unprepared = connection.Run(sent));
    if (forResult)
        return &connection.RunPrepared(shape.Text(), shape.Values(), sent);
    if (kind == SqlBackend::PostgreSQL) {
        connection.Defer(shape.Text(), shape.Values(), sent);
        return nullptr;
    }
    if (!sqlite)
        sqlite = std::make_unique<SqliteStatements>(connection, PreparedStatements);
    sqlite->Run(shape.Text(), shape.Values(), sent);
    return nullptr;
}

SqlQueryService::SqlQueryService(const QString& connection, SchemaForm newDatabaseForm,
                                 const SetUpConsent& askToSetUp)
    : d(std::make_unique<Private>(connection)) {
    if (Backend() != SqlBackend::ODBC)
        prepareSchema(newDatabaseForm, askToSetUp);
    else if (d->backend->ColumnsOf(QStringLiteral("eds_column")).isEmpty())
        throw Error(DatabaseContents::OdbcRefusal(DatabaseShown()));
}

void SqlQueryService::prepareSchema(SchemaForm form, const SetUpConsent& askToSetUp) {
    const DatabaseContents contents = DatabaseContents::Of(d->connection);
    if (contents.Contents() == DatabaseContents::Kind::Orvane) {
        DatabaseSchema::Upgrade(d->connection);
        return;
    }
    const bool foreignAllowed = contents.Contents() == DatabaseContents::Kind::Foreign &&
                                askToSetUp &&
                                askToSetUp(DatabaseContents::Question(DatabaseShown()));
    if (contents.Contents() != DatabaseContents::Kind::Empty && !foreignAllowed)
        throw Error(contents.Refusal(DatabaseShown()));
    d->backend->BeginSetUp();
    try {
        setUpUnderLock(form, foreignAllowed);
    } catch (...) {
        d->backend->EndSetUp();
        throw;
    }
    d->backend->EndSetUp();
}

// Another session may have set the database up, or changed it, while this one waited.
void SqlQueryService::setUpUnderLock(SchemaForm form, bool foreignAllowed) {
    const DatabaseContents contents = DatabaseContents::Of(d->connection);
    switch (contents.Contents()) {
    case DatabaseContents::Kind::Orvane:
        return;
    case DatabaseContents::Kind::Foreign:
        if (foreignAllowed)
            break;
        [[fallthrough]];
    case DatabaseContents::Kind::Partial:
        throw Error(contents.Refusal(DatabaseShown()));
    case DatabaseContents::Kind::Empty:
        break;
    }
    DatabaseSchema::Install(d->connection, form);
    d->setUp = true;
}

SqlQueryService::~SqlQueryService() = default;

std::shared_ptr<IRecordset> SqlQueryService::OpenRecordset(const QString& statement,
                                                           qint32 timeoutSeconds) {
    d->backend->SetTimeout(timeoutSeconds);
    QSqlQuery& query = *d->run(statement);
    std::shared_ptr<SqlRecordset> recordset;
    if (query.isSelect())
        recordset = std::make_shared<SqlRecordset>(query);
    query.finish();
    return recordset;
}

void SqlQueryService::ExecuteStatement(const QString& statement) {
    if (QSqlQuery* query = d->run(statement, false))
        query->finish();
}

qint32 SqlQueryService::ExecuteCounted(const QString& statement) {
    return d->connection.Run(Translate(statement)).numRowsAffected();
}

qint32 SqlQueryService::NextSequenceValue(const QString& sequence) {
    return d->backend->NextSequenceValue(sequence);
}

QVariant SqlQueryService::CallProcedure(const QString& procedure,
                                        const QList<ProcedureParameter>& parameters) {
    return d->backend->CallProcedure(procedure, parameters);
}

QString SqlQueryService::BuildSetList(const QList<SetPair>& pairs) {
    return SqlLiterals::SetList(pairs);
}

QString SqlQueryService::BuildValueList(const QVariantList& values) {
    return SqlLiterals::ValueList(values);
}

QString SqlQueryService::FormatLiteral(const QVariant& value) {
    return SqlLiterals::Format(value);
}

qint32 SqlQueryService::ValueAsLong(const QVariant& value) {
    return SqlLiterals::AsLong(value);
}

bool SqlQueryService::ValueAsBoolean(const QVariant& value) {
    return SqlLiterals::AsBoolean(value);
}

bool SqlQueryService::ColumnExists(const QString& table, const QString& column) {
    return columnsOf(table).contains(column.toCaseFolded());
}

qint32 SqlQueryService::ColumnWidth(const QString& table, const QString& column) {
    return columnsOf(table).value(column.toCaseFolded(), 0);
}

const QHash<QString, qint32>& SqlQueryService::columnsOf(const QString& table) {
    const QString key = table.toCaseFolded();
    auto cached = d->catalog.find(key);
    if (cached == d->catalog.end())
        cached = d->catalog.insert(key, d->backend->ColumnsOf(table));
    return *cached;
}

void SqlQueryService::BeginTransaction(StatementDelivery delivery) {
    d->connection.Begin(delivery);
}

void SqlQueryService::CommitTransaction() {
    d->connection.Commit();
}

void SqlQueryService::RollbackTransaction() {
    d->connection.Rollback();
}

bool SqlQueryService::InTransaction() const {
    return d->connection.InTransaction();
}

bool SqlQueryService::IsConnected() const {
    return d->connection.IsConnected();
}

SqlBackend SqlQueryService::Backend() const {
    return d->connection.Backend();
}

QString SqlQueryService::DatabaseShown() const {
    return d->connection.Description().Shown();
}

bool SqlQueryService::SetUpOnOpen() const {
    return d->setUp;
}

QString SqlQueryService::Translate(const QString& statement) const {
    return d->backend->Translate(statement);
}

} // namespace Orvane::Studio
