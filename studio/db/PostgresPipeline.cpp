#include "studio/db/PostgresPipeline.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QStringList>
#include <libpq-fe.h>

namespace Orvane::Studio {

namespace {

// Far more than the shapes of the statements a session sends; beyond it the names start over.
constexpr qsizetype PreparedNames = 256;

PGconn* connectionOf(const QSqlDatabase& database) {
    const QVariant handle = database.driver()->handle();
    // Qt names the type as the compiler spells it: the struct behind libpq's typedef.
    const char* type = handle.typeName();
    if (!type || (qstrcmp(type, "pg_conn*") != 0 && qstrcmp(type, "PGconn*") != 0))
        return nullptr;
    return *static_cast<PGconn* const*>(handle.constData());
}

// The query with $1, $2, … for its ? placeholders; quoted text and quoted names are passed over,
// as Qt's driver passes them over when it prepares.
QByteArray numbered(const QString& text) {
    QString result;
    result.reserve(text.size() + 16);
    QChar quote;
    int count = 0;
    for (const QChar ch : text) {
        if (!quote.isNull()) {
            if (ch == quote)
                quote = QChar();
            result += ch;
        } else if (ch == u'?') {
            result += u'$' + QString::number(++count);
        } else {
            if (ch == u'\'' || ch == u'"')
                quote = ch;
            result += ch;
        }
    }
    return result.toUtf8();
}

QByteArray textOf(const QVariant& value) {
    if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int)
        return QByteArray::number(value.toLongLong());
    return value.toString().toUtf8();
}

// The error as Qt's driver words it, so that messages read the same whichever way a statement
// went; a connection that broke is a connection error, which tells the caller it was lost.
QSqlError errorOf(PGconn* connection, const PGresult* result) {
    QString message =
        QString::fromUtf8(result ? PQresultErrorMessage(result) : PQerrorMessage(connection));
    const QString code =
        result ? QString::fromLatin1(PQresultErrorField(result, PG_DIAG_SQLSTATE)) : QString();
    if (!code.isEmpty())
        message += QStringLiteral("(%1)").arg(code);
    const auto type = PQstatus(connection) == CONNECTION_BAD ? QSqlError::ConnectionError
                                                             : QSqlError::StatementError;
    return QSqlError(QStringLiteral("QPSQL: Unable to execute statement"), message, type, code);
}

bool sendExecution(PGconn* connection, const QByteArray& name, const QVariantList& values) {
    std::vector<QByteArray> texts;
    std::vector<const char*> pointers;
    texts.reserve(values.size());
    pointers.reserve(values.size());
    for (const QVariant& value : values) {
        texts.push_back(value.isNull() ? QByteArray() : textOf(value));
        pointers.push_back(value.isNull() ? nullptr : texts.back().constData());
    }
    return PQsendQueryPrepared(connection, name.constData(), int(values.size()), pointers.data(),
                               nullptr, nullptr, 0) != 0;
}

// Results Qt's driver left unread would keep the connection from entering pipeline mode; Qt
// drops them itself before its next statement.
void dropUnreadResults(PGconn* connection) {
    while (PGresult* result = PQgetResult(connection))
        PQclear(result);
}

void leavePipeline(PGconn* connection) {
    while (!PQexitPipelineMode(connection)) {
        PGresult* result = PQgetResult(connection);
        if (!result && PQstatus(connection) == CONNECTION_BAD)
            return;
        PQclear(result);
    }
}

} // namespace

void PostgresPipeline::Add(QString statement, QVariantList values, QString shown) {
    m_held.push_back({std::move(statement), std::move(values), std::move(shown)});
}

void PostgresPipeline::Discard(const QSqlDatabase& database) {
    m_held.clear();
    if (!m_sent)
        return;
    if (PGconn* connection = connectionOf(database))
        finish(connection);
    m_sent.reset();
}

std::optional<PostgresPipeline::Failure> PostgresPipeline::Send(const QSqlDatabase& database,
                                                                int session, Wait wait) {
    std::vector<Statement> statements = std::exchange(m_held, {});
    if (statements.empty() && !m_sent)
        return {};
    const QString first = m_sent ? m_sent->statements.front().shown : statements.front().shown;
    PGconn* connection = connectionOf(database);
    // A session that ended took what was sent in it along.
    if (!connection || PQstatus(connection) == CONNECTION_BAD || (m_sent && session != m_session)) {
        m_sent.reset();
        return Failure{QSqlError(QString(), QStringLiteral("The connection is not open."),
                                 QSqlError::ConnectionError),
                       first};
    }
    if (!m_sent) {
        if (session != m_session) {
            m_names.clear();
            m_session = session;
        }
        dropUnreadResults(connection);
        if (m_names.size() >= PreparedNames)
            forgetNames(connection);
        if (!PQenterPipelineMode(connection))
            return Failure{errorOf(connection, nullptr), first};
    }
    std::optional<Failure> unsent;
    std::optional<Failure> failure;
    if (!statements.empty()) {
        Batch batch = sendAll(connection, std::move(statements), unsent);
        // The server answers in order: what was sent before is read while it works on this one.
        if (m_sent)
            failure = collect(connection, *m_sent);
        m_sent = std::move(batch);
    }
    if (wait == Wait::All || failure || unsent) {
        const std::optional<Failure> later = finish(connection);
        if (!failure)
            failure = later;
    }
    return failure ? failure : unsent;
}

// Reads the outcome of what was sent last and leaves pipeline mode.
std::optional<PostgresPipeline::Failure> PostgresPipeline::finish(PGconn* connection) {
    std::optional<Failure> failure = collect(connection, *m_sent);
    m_sent.reset();
    leavePipeline(connection);
    return failure;
}

// A statement that cannot be sent (the connection broke) ends the sending; those sent before it
// are still read.
PostgresPipeline::Batch PostgresPipeline::sendAll(PGconn* connection,
                                                  std::vector<Statement> statements,
                                                  std::optional<Failure>& failure) {
    Batch batch{std::move(statements), {}};
    batch.commands.reserve(batch.statements.size() + 8);
    for (std::size_t index = 0; index < batch.statements.size(); ++index) {
        const Statement& statement = batch.statements[index];
        bool isNew = false;
        const QByteArray name = nameFor(statement.text, isNew);
        bool sent = true;
        if (isNew) {
            sent = PQsendPrepare(connection, name.constData(), numbered(statement.text).constData(),
                                 0, nullptr) != 0;
            if (sent)
                batch.commands.push_back({index, name});
            else
                m_names.remove(statement.text);
        }
        if (!sent || !sendExecution(connection, name, statement.values)) {
            failure = Failure{errorOf(connection, nullptr), statement.shown};
            break;
        }
        batch.commands.push_back({index, {}});
    }
    PQpipelineSync(connection);
    return batch;
}

// Each command answers one result, then null; the sync ends the batch. A name whose PREPARE
// did not succeed is not kept, so the next statement of its shape prepares it again.
std::optional<PostgresPipeline::Failure> PostgresPipeline::collect(PGconn* connection,
                                                                   const Batch& batch) {
    const std::vector<Command>& commands = batch.commands;
    std::optional<Failure> failure;
    std::size_t index = 0;
    for (;;) {
        PGresult* result = PQgetResult(connection);
        if (!result) {
            if (PQstatus(connection) == CONNECTION_BAD || ++index > commands.size())
                break;
            continue;
        }
        const ExecStatusType status = PQresultStatus(result);
        if (status == PGRES_PIPELINE_SYNC) {
            PQclear(result);
            break;
        }
        const Command* command = index < commands.size() ? &commands[index] : nullptr;
        const Statement* statement = command ? &batch.statements[command->statement] : nullptr;
        const bool succeeded = status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
        if (command && !command->prepared.isEmpty() && !succeeded)
            m_names.remove(statement->text);
        if (command && status == PGRES_FATAL_ERROR && !failure)
            failure = Failure{errorOf(connection, result), statement->shown};
        PQclear(result);
    }
    if (!failure && !commands.empty() && PQstatus(connection) == CONNECTION_BAD) {
        const Command& last = commands[qMin(index, commands.size() - 1)];
        failure = Failure{errorOf(connection, nullptr), batch.statements[last.statement].shown};
    }
    return failure;
}

QByteArray PostgresPipeline::nameFor(const QString& text, bool& isNew) {
    auto found = m_names.constFind(text);
    isNew = found == m_names.constEnd();
    if (!isNew)
        return *found;
    const QByteArray name = "orvane_shape_" + QByteArray::number(++m_lastName);
    m_names.insert(text, name);
    return name;
}

// One round trip, outside the pipeline; in a transaction that already failed the server ignores
// it and the names stay until the session ends, unused.
void PostgresPipeline::forgetNames(PGconn* connection) {
    QStringList statements;
    for (const QByteArray& name : std::as_const(m_names))
        statements << QStringLiteral("DEALLOCATE ") + QString::fromLatin1(name);
    PQclear(PQexec(connection, statements.join(QLatin1Char(';')).toUtf8().constData()));
    m_names.clear();
}

} // namespace Orvane::Studio
