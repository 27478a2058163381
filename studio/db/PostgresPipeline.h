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
// types inferred from the query as Qt's PREPARE infers them. The connection leaves pipeline mode
// before Send returns, so Qt finds it as it left it.
class PostgresPipeline {
public:
    struct Failure {
        QSqlError error;
        QString shown; // the statement as failures name it
    };

    void Add(QString statement, QVariantList values, QString shown);
    qsizetype Size() const { return qsizetype(m_held.size()); }
    void Discard() { m_held.clear(); }
    // Sends the statements held, in order, and waits for their outcome. The server skips every
    // statement after the first that fails, which is answered. None is held afterwards. Names
    // prepared in an earlier session of the connection are forgotten.
    std::optional<Failure> Send(const QSqlDatabase& database, int session);

private:
    struct Statement {
        QString text;
        QVariantList values;
        QString shown;
    };
    // One message of the pipeline: a statement's PREPARE (naming it) or its execution.
    struct Command {
        const Statement* statement;
        QByteArray prepared;
    };

    std::vector<Command> sendAll(pg_conn* connection, const std::vector<Statement>& statements,
                                 std::optional<Failure>& failure);
    std::optional<Failure> collect(pg_conn* connection, const std::vector<Command>& commands);
    QByteArray nameFor(const QString& text, bool& isNew);
    void forgetNames(pg_conn* connection);

    std::vector<Statement> m_held;
    QHash<QString, QByteArray> m_names; // query text -> the name it is prepared under
    int m_session = -1;
    int m_lastName = 0;
};

} // namespace Orvane::Studio
