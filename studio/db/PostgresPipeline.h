#pragma once

#include <QHash>
#include <QSqlError>
#include <QString>
#include <QVariantList>
#include <optional>
#include <vector>

class QSqlDatabase;
struct pg_conn;

namespace Orvane::Studio {

// Statements held back and sent to PostgreSQL many per round trip, through libpq's pipeline mode
// on the connection Qt's driver opened. A statement is a query with ? placeholders and its
// values; each query is prepared on the server once per session under a name of this class's
// own (Qt's driver names its prepared queries apart), its values are sent as text and their
// types inferred from the query as Qt's PREPARE infers them.
class PostgresPipeline {
public:
    struct Failure {
        QSqlError error;
        QString shown; // the statement as failures name it
    };
    // What Send waits for: the outcome of everything sent, leaving pipeline mode so that Qt
    // finds the connection as it left it; or only that of the statements sent before, so that
    // the server works on these while the caller prepares the next (nothing may use the
    // connection but this class until a Send that waits for all, or Discard).
    enum class Wait { All, Earlier };

    void Add(QString statement, QVariantList values, QString shown);
    qsizetype Size() const { return qsizetype(m_held.size()); }
    bool Pending() const { return !m_held.empty() || m_sent.has_value(); }
    // Forgets what is held, and reads and drops the outcome of what was sent.
    void Discard(const QSqlDatabase& database);
    // Sends the statements held, in order, and waits as asked. The server skips every statement
    // after the first that fails, which is answered; after a failure nothing is left sent. Names
    // prepared in an earlier session of the connection are forgotten.
    std::optional<Failure> Send(const QSqlDatabase& database, int session, Wait wait);

private:
    struct Statement {
        QString text;
        QVariantList values;
        QString shown;
    };
    // One message of the pipeline: a statement's PREPARE (naming it) or its execution.
    struct Command {
        std::size_t statement; // its index in the batch
        QByteArray prepared;
    };
    // Statements sent in one pipeline segment, ended by a sync.
    struct Batch {
        std::vector<Statement> statements;
        std::vector<Command> commands;
    };

    Batch sendAll(pg_conn* connection, std::vector<Statement> statements,
                  std::optional<Failure>& failure);
    std::optional<Failure> collect(pg_conn* connection, const Batch& batch);
    std::optional<Failure> finish(pg_conn* connection);
    QByteArray nameFor(const QString& text, bool& isNew);
    void forgetNames(pg_conn* connection);

    std::vector<Statement> m_held;
    std::optional<Batch> m_sent;        // sent in pipeline mode, its outcome not read yet
    QHash<QString, QByteArray> m_names; // query text -> the name it is prepared under
    int m_session = -1;
    int m_lastName = 0;
};

} // namespace Orvane::Studio
