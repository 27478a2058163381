#include "studio/db/SqlConnection.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/PostgresPipeline.h"
#include "studio/db/PreparedQueryCache.h"
#include "studio/db/StatementRedaction.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <atomic>

namespace Orvane::Studio {

namespace {

QString nextConnectionName() {
    static std::atomic<int> counter{0};
    return QStringLiteral("orvane-studio-%1").arg(++counter);
}

QString packageOf(const QString& driver) {
    if (driver == QLatin1String("QSQLITE"))
        return QStringLiteral("libqt6sql6-sqlite");
    if (driver == QLatin1String("QPSQL"))
        return QStringLiteral("libqt6sql6-psql");
    return QStringLiteral("libqt6sql6-odbc");
}

// The database's own words when it gave any, else Qt's.
QString messageOf(const QSqlError& error) {
    const QString own = error.databaseText().trimmed();
    return own.isEmpty() ? error.text().trimmed() : own;
}

// Qt's own verdict, a connection exception (SQLSTATE class 08) or the server ending the session
// (57P: shutdown, terminated, database dropped, idle too long); the driver may still call it open.
// Qt's SQLite driver calls every failed step a connection error; a file has no server to drop it,
// so only a closed database counts as lost there.
bool endsTheConnection(const QSqlError& error, const QString& driver) {
    if (driver == QLatin1String("QSQLITE"))
        return false;
    const QString state = error.nativeErrorCode();
    return error.type() == QSqlError::ConnectionError || state.startsWith(QLatin1String("08")) ||
           state.startsWith(QLatin1String("57P"));
}

// Enough for every shape of statement one save or load sends.
constexpr qsizetype PreparedQueries = 64;

// Statements held before they are sent anyway: a round trip per thousand costs little and keeps
// the memory held small.
constexpr qsizetype HeldStatements = 1000;

bool changesSchema(const QString& statement) {
    const QString start = statement.trimmed().left(6);
    return start.compare(QLatin1String("CREATE"), Qt::CaseInsensitive) == 0 ||
           start.compare(QLatin1String("ALTER "), Qt::CaseInsensitive) == 0 ||
           start.left(5).compare(QLatin1String("DROP "), Qt::CaseInsensitive) == 0;
}

} // namespace

SqlConnection::SqlConnection(ConnectionDescription description)
    : m_description(std::move(description))
    , m_name(nextConnectionName())
    , m_prepared(std::make_unique<PreparedQueryCache>(PreparedQueries)) {
    if (m_description.backend == SqlBackend::PostgreSQL)
        m_pipeline = std::make_unique<PostgresPipeline>();
    try {
        open();
    } catch (...) {
        QSqlDatabase::removeDatabase(m_name);
        throw;
    }
}

SqlConnection::~SqlConnection() {
    m_prepared->Clear();
    {
        QSqlDatabase database = Database();
        if (m_pipeline)
            m_pipeline->Discard(database);
        if (m_inTransaction)
            database.rollback();
        database.close();
    }
    QSqlDatabase::removeDatabase(m_name);
}

QSqlDatabase SqlConnection::Database() const {
    return QSqlDatabase::database(m_name, false);
}

void SqlConnection::open() {
    const QString driver = m_description.DriverName();
    if (!QSqlDatabase::isDriverAvailable(driver)) {
        failOpening(QStringLiteral("the Qt SQL driver %1 is not installed (Debian package %2)")
                        .arg(driver, packageOf(driver)));
    }
    if (m_description.backend == SqlBackend::SQLite)
        checkSqlitePath();

    QSqlDatabase database = QSqlDatabase::addDatabase(driver, m_name);
    database.setDatabaseName(m_description.databaseName);
    if (!m_description.host.isEmpty())
        database.setHostName(m_description.host);
    if (m_description.port > 0)
        database.setPort(m_description.port);
    if (!m_description.user.isEmpty())
        database.setUserName(m_description.user);
    if (!m_description.password.isEmpty())
        database.setPassword(m_description.password);
    database.setConnectOptions(m_description.backend == SqlBackend::SQLite
                                   ? QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000")
                                   : m_description.options);
    if (!database.open())
        failOpening(messageOf(database.lastError()));
    prepareSession();
}

void SqlConnection::ReopenIfLost() {
    if (!m_lost || m_inTransaction)
        return;
    m_prepared->Clear();
    QSqlDatabase database = Database();
    database.close();
    if (!database.open())
        failOpening(messageOf(database.lastError()));
    m_lost = false;
    ++m_session;
    prepareSession();
}

// SQLite would create the file anywhere it may; a folder that is missing is the user's mistake.
void SqlConnection::checkSqlitePath() const {
    const QString& path = m_description.databaseName;
    if (path == QLatin1String(":memory:"))
        return;
    const QFileInfo file(path);
    if (file.isDir())
        failOpening(QStringLiteral("it is a folder, not a database file"));
    const QDir folder = file.absoluteDir();
    if (!folder.exists())
        failOpening(QStringLiteral("the folder \"%1\" does not exist").arg(folder.path()));
}

// Settings every statement relies on; for SQLite also the first read, which tells a file that
// is not a database.
void SqlConnection::prepareSession() {
    try {
        if (m_description.backend == SqlBackend::SQLite) {
            Run(QStringLiteral("PRAGMA foreign_keys = ON"));
            Run(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        } else if (m_description.backend == SqlBackend::PostgreSQL) {
            Run(QStringLiteral("SET client_min_messages = warning"));
        }
    } catch (const Error& error) {
        failOpening(error.message().section(QLatin1Char('\n'), 0, 0));
    }
}

void SqlConnection::failOpening(const QString& reason) const {
    throw Error(QStringLiteral("Cannot open %1: %2").arg(m_description.Shown(), reason));
}

QSqlQuery SqlConnection::Run(const QString& statement, const QVariantList& values) {
    ReopenIfLost();
    sendHeld();
    if (changesSchema(statement))
        m_prepared->Clear();
    QSqlQuery query = newQuery();
    bool ok = false;
    if (values.isEmpty()) {
        ok = query.exec(statement);
    } else if (query.prepare(statement)) {
        for (const QVariant& value : values)
            query.addBindValue(value);
        ok = query.exec();
    }
    if (!ok)
        failStatement(query, statement);
    return query;
}

// Results are read whole and at once (see SqlRecordset). Forward only, Qt keeps no rows it has
// passed; but on PostgreSQL its driver then reads in single-row mode, one result object copied for
// each row, which cost more than converting the values: there a result comes in one piece.
QSqlQuery SqlConnection::newQuery() {
    QSqlQuery query(Database());
    query.setForwardOnly(Backend() != SqlBackend::PostgreSQL);
    return query;
}

QSqlQuery& SqlConnection::RunPrepared(const QString& statement, const QVariantList& values,
                                      const QString& shown) {
    ReopenIfLost();
    sendHeld();
    QSqlQuery* query = m_prepared->Find(statement);
    if (!query) {
        QSqlQuery prepared = newQuery();
        if (!prepared.prepare(statement))
            failStatement(prepared, shown);
        query = &m_prepared->Keep(statement, std::move(prepared));
    }
    for (qsizetype i = 0; i < values.size(); ++i)
        query->bindValue(int(i), values[i]);
    if (!query->exec())
        failStatement(*query, shown);
    return *query;
}

void SqlConnection::Defer(const QString& statement, const QVariantList& values,
                          const QString& shown) {
    if (!m_batching) {
        RunPrepared(statement, values, shown).finish();
        return;
    }
    m_pipeline->Add(statement, values, shown);
    if (m_pipeline->Size() >= HeldStatements)
        sendHeld(PostgresPipeline::Wait::Earlier);
}

void SqlConnection::sendHeld(PostgresPipeline::Wait wait) {
    if (!m_pipeline || !m_pipeline->Pending())
        return;
    if (const auto failure = m_pipeline->Send(Database(), m_session, wait))
        failStatement(failure->error, failure->shown);
}

void SqlConnection::failStatement(const QSqlQuery& query, const QString& shown) {
    failStatement(query.lastError(), shown);
}

void SqlConnection::failStatement(const QSqlError& error, const QString& shown) {
    const StatementRedaction redaction(shown);
    throw Error(QStringLiteral("%1\nStatement: %2")
                    .arg(redaction.Hide(failureOf(error)), redaction.Statement()));
}

// Notes a lost connection; a server that dropped it leaves later statements without a reason of
// their own.
QString SqlConnection::failureOf(const QSqlError& error) {
    const QString reason = messageOf(error);
    m_lost = m_lost || endsTheConnection(error, Database().driverName()) || !Database().isOpen();
    if (!m_lost && !reason.isEmpty())
        return reason;
    m_lost = true;
    return QStringLiteral("The connection to %1 was lost; it is opened again on the next try. %2")
        .arg(m_description.Shown(), reason)
        .trimmed();
}

void SqlConnection::Begin(StatementDelivery delivery) {
    if (m_inTransaction)
        throw Error(
            QStringLiteral("A transaction is already open on %1.").arg(m_description.Shown()));
    ReopenIfLost();
    QSqlDatabase database = Database();
    if (!database.transaction())
        throw Error(QStringLiteral("Cannot begin a transaction on %1: %2")
                        .arg(m_description.Shown(), failureOf(database.lastError())));
    m_inTransaction = true;
    m_batching = m_pipeline && delivery == StatementDelivery::Batched;
}

void SqlConnection::Commit() {
    if (!m_inTransaction)
        throw Error(QStringLiteral("There is no open transaction to commit."));
    QSqlDatabase database = Database();
    try {
        sendHeld();
    } catch (const Error&) {
        // As a failed commit does: the caller finds the transaction ended.
        m_inTransaction = false;
        m_batching = false;
        if (!m_lost)
            database.rollback();
        throw;
    }
    m_batching = false;
    if (!database.commit()) {
        const QString reason = failureOf(database.lastError());
        database.rollback();
        m_inTransaction = false;
        throw Error(QStringLiteral("Cannot commit on %1; the transaction was rolled back: %2")
                        .arg(m_description.Shown(), reason));
    }
    m_inTransaction = false;
}

void SqlConnection::Rollback() {
    if (!m_inTransaction)
        return;
    m_inTransaction = false;
    m_batching = false;
    if (m_pipeline)
        m_pipeline->Discard(Database());
    // The server ended the transaction with the session.
    if (m_lost)
        return;
    QSqlDatabase database = Database();
    if (!database.rollback())
        throw Error(QStringLiteral("Cannot roll back on %1: %2")
                        .arg(m_description.Shown(), messageOf(database.lastError())));
}

} // namespace Orvane::Studio
