#pragma once

#include "orvane/host/IQueryService.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/DatabaseSchema.h"
#include "studio/db/StatementDelivery.h"

#include <functional>
#include <memory>

namespace Orvane::Studio {

// The query service of Orvane Studio, on Qt Sql: SQLite (QSQLITE), PostgreSQL (QPSQL) or any
// ODBC data source (QODBC).
//
// Opening takes one connection description (see ConnectionDescription):
//   "/home/me/orvane.db" or "sqlite:/home/me/orvane.db"
//   "postgresql://orvane@db.example.net:5432/orvane" (the password from PGPASSWORD or ~/.pgpass)
//   "odbc:PMDB" or "odbc:DRIVER={Oracle};DBQ=pmdb;UID=pm;PWD=secret"
// and fails with an Orvane::Error naming the database and the reason. An empty SQLite or
// PostgreSQL database (a new SQLite file, a new PostgreSQL database) is set up first with the
// schema, its procedures and the demo dictionary, eds_column in the given form; of two sessions
// setting up one PostgreSQL database at once, one does it and the other waits and uses it. A
// database with only some of Orvane's tables is refused, as is one with other tables and none of
// Orvane's unless askToSetUp, given, answers yes. ODBC databases are used as they are, and
// refused without Orvane's tables.
//
// The library's statements are in the Oracle dialect; on SQLite and PostgreSQL they pass through
// OracleDialectBridge, over ODBC unchanged. On SQLite and PostgreSQL their literals are then
// bound to a query prepared once per statement shape (see StatementShape) and kept by the
// connection, so that statements differing only in their values are compiled once. Every
// failure is an Orvane::Error: a failing statement carries the database's own message and the
// statement as sent, its literals in place.
//
// A host wraps each save in one transaction:
//     service.BeginTransaction();
//     try { document.SaveData(); service.CommitTransaction(); }
//     catch (...) { service.RollbackTransaction(); throw; }
// or, the same, with a TransactionScope. Outside a transaction every statement commits alone.
// A connection the server dropped is opened again before the next transaction or statement
// outside one; a transaction it dropped fails until rolled back. The catalog read stays.
class SqlQueryService : public IQueryService {
public:
    // Asked, with a question that names the database, whether to set up a database that holds
    // other tables; without one such a database is never changed.
    using SetUpConsent = std::function<bool(const QString& question)>;

    explicit SqlQueryService(const QString& connection,
                             SchemaForm newDatabaseForm = SchemaForm::WithEditorPosition,
                             const SetUpConsent& askToSetUp = {});
    ~SqlQueryService() override;

    std::shared_ptr<IRecordset> OpenRecordset(const QString& statement,
                                              qint32 timeoutSeconds = 60) override;
    void ExecuteStatement(const QString& statement) override;
    // As ExecuteStatement, and says how many rows the statement changed.
    qint32 ExecuteCounted(const QString& statement);
    qint32 NextSequenceValue(const QString& sequence) override;
    QVariant CallProcedure(const QString& procedure,
                           const QList<ProcedureParameter>& parameters) override;
    QString BuildSetList(const QList<SetPair>& pairs) override;
    QString BuildValueList(const QVariantList& values) override;
    QString FormatLiteral(const QVariant& value) override;
    qint32 ValueAsLong(const QVariant& value) override;
    bool ValueAsBoolean(const QVariant& value) override;
    // Both read the table's columns from the catalog once and keep them.
    bool ColumnExists(const QString& table, const QString& column) override;
    qint32 ColumnWidth(const QString& table, const QString& column) override;

    // A second BeginTransaction before the first ends is an error; RollbackTransaction without
    // an open transaction does nothing, so error handlers may always call it. In a Batched
    // transaction on PostgreSQL, ExecuteStatement holds its statement back and the next call
    // that reads, or the commit, sends it with the others held, many per round trip; a statement
    // that failed is reported there, named as always. Ids are then drawn many at a time.
    void BeginTransaction(StatementDelivery delivery = StatementDelivery::AtOnce);
    void CommitTransaction();
    void RollbackTransaction();
    bool InTransaction() const;
    // False once a statement found the connection lost; the next transaction, or statement
    // outside one, opens it again.
    bool IsConnected() const;

    SqlBackend Backend() const;
    // The database as messages name it: the SQLite database "/home/me/orvane.db".
    QString DatabaseShown() const;
    // True when this opening set the database up.
    bool SetUpOnOpen() const;
    // The statement as this database is sent it.
    QString Translate(const QString& statement) const;

private:
    void prepareSchema(SchemaForm form, const SetUpConsent& askToSetUp);
    void setUpUnderLock(SchemaForm form, bool foreignAllowed);
    const QHash<QString, qint32>& columnsOf(const QString& table);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Orvane::Studio
