#pragma once

#include "orvane/host/IQueryService.h"

#include <QHash>
#include <QString>
#include <memory>

namespace Orvane::Studio {

class SqlConnection;

// What differs between the databases behind SqlQueryService: the dialect of the statements,
// sequences, stored procedures and the catalog.
class DatabaseBackend {
public:
    virtual ~DatabaseBackend() = default;

    static std::unique_ptr<DatabaseBackend> For(SqlConnection& connection);

    // The statement as this database is sent it.
    virtual QString Translate(const QString& statement) const = 0;
    virtual qint32 NextSequenceValue(const QString& sequence) = 0;
    // What the procedure hands back (its out parameter), or null.
    virtual QVariant CallProcedure(const QString& procedure,
                                   const QList<ProcedureParameter>& parameters) = 0;
    // The columns of a table or view, by case-folded name, with the declared width of text
    // columns (0 for any other); empty when there is no such table.
    virtual QHash<QString, qint32> ColumnsOf(const QString& table) = 0;
    // Applies a statement time-out where the database supports one; 0 means none.
    virtual void SetTimeout(qint32 seconds) { Q_UNUSED(seconds); }
    // Keeps other sessions from setting up the same database at the same time, where the
    // database has a lock for that; EndSetUp never fails.
    virtual void BeginSetUp() {}
    virtual void EndSetUp() {}

    // Names that are put into statements unquoted must be plain (schema.)names.
    static void RequirePlainName(const QString& name, const QString& what);
};

} // namespace Orvane::Studio
