#pragma once

#include "studio/db/ConnectionDescription.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

namespace Orvane::Studio {

// One open Qt Sql connection. Everything that goes wrong is an Orvane::Error: opening names the
// database and the reason (missing folder, missing driver, refused connection, bad password),
// a failing statement carries the database's own message and the statement as it was sent, the
// values of its password columns hidden.
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
    QSqlQuery Run(const QString& statement, const QVariantList& values = {});

    void Begin();
    void Commit();
    void Rollback();
    bool InTransaction() const { return m_inTransaction; }

private:
    void open();
    void checkSqlitePath() const;
    void prepareSession();
    QString failureOf(const QSqlQuery& query) const;
    [[noreturn]] void failOpening(const QString& reason) const;

    ConnectionDescription m_description;
    QString m_name;
    bool m_inTransaction = false;
};

} // namespace Orvane::Studio
