#pragma once

#include "studio/db/ConnectionDescription.h"
#include "studio/db/PostgresPipeline.h"
#include "studio/db/StatementDelivery.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>
#include <memory>

namespace Orvane::Studio {

class PreparedQueryCache;

// One open Qt Sql connection. Everything that goes wrong is an Orvane::Error: opening names the
// database and the reason (missing folder, missing driver, refused connection, bad password),
// a failing statement carries the database's own message and the statement as it was sent, the
// values of its password columns hidden.
//
// A connection the server dropped is opened again before the next transaction or the next
// statement outside one; never inside a transaction, which fails until it is rolled back.
class SqlConnection {
public:
    explicit SqlConnection(ConnectionDescription description);
    ~SqlConnection();
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;

    const ConnectionDescription& Description() const { return m_description; }
    SqlBackend Backend() const { return m_description.backend; }
    QSqlDatabase Database() const;

    // Runs one statement exactly as given; with values, they are bound to its placeholders.
    // A statement that creates, alters or drops drops the prepared queries too.
    QSqlQuery Run(const QString& statement, const QVariantList& values = {});
    // Runs a statement with values through a query prepared on its first run and kept, with
    // the last used few, as long as the session; shown is the statement as failures name it.
    // The query answered is the kept one: read it before the next statement.
    QSqlQuery& RunPrepared(const QString& statement, const QVariantList& values,
                           const QString& shown);

    // Runs a statement as RunPrepared does, or, inside a batched transaction on PostgreSQL, holds
    // it: what is held is sent before the next statement run here and before the commit, which
    // fail with the first held statement that failed. A rollback drops what is held.
    void Defer(const QString& statement, const QVariantList& values, const QString& shown);

    void Begin(StatementDelivery delivery = StatementDelivery::AtOnce);
    void Commit();
    void Rollback();
    bool InTransaction() const { return m_inTransaction; }
    // True inside a transaction begun Batched on PostgreSQL.
    bool Batching() const { return m_batching; }
    // False once a statement found the connection lost, until it is opened again.
    bool IsConnected() const { return !m_lost; }
    // Opens a lost connection again unless a transaction is open.
    void ReopenIfLost();
    // Counts the openings: settings made on the server live only as long as one session.
    int Session() const { return m_session; }

private:
    void open();
    void checkSqlitePath() const;
    void prepareSession();
    QString failureOf(const QSqlError& error);
    void sendHeld(PostgresPipeline::Wait wait = PostgresPipeline::Wait::All);
    QSqlQuery newQuery();
    [[noreturn]] void failStatement(const QSqlQuery& query, const QString& shown);
    [[noreturn]] void failStatement(const QSqlError& error, const QString& shown);
    [[noreturn]] void failOpening(const QString& reason) const;

    ConnectionDescription m_description;
    QString m_name;
    bool m_inTransaction = false;
    bool m_batching = false;
    bool m_lost = false;
    int m_session = 0;
    std::unique_ptr<PreparedQueryCache> m_prepared;
    std::unique_ptr<PostgresPipeline> m_pipeline; // PostgreSQL only
};

} // namespace Orvane::Studio
