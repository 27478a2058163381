#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace Orvane {

// Where an ODBC source lies and whose login reads it, as the ODBC editor holds them.
struct SourceLogin {
    QString server; // a data source name, or a connection text with DRIVER=...
    QString database;
    QString userId;
    QString password;
};

// A column of a source's table: its name and its type as the one-letter code a column stores.
struct CatalogColumn {
    QString name;
    QString typeCode;
};

// What a host can tell of the database an ODBC source reads: whether the login connects, its
// tables and a table's columns. Optional: without one the editors offer none of this. Each call
// connects on its own and disconnects before it returns. A failure is an Orvane::Error with the
// driver's reason, which never shows the password.
class ISourceCatalog {
public:
    virtual ~ISourceCatalog() = default;

    virtual void TestConnection(const SourceLogin& login) = 0;
    // The tables and views the login may read, sorted by name.
    virtual QStringList Tables(const SourceLogin& login) = 0;
    // In the table's own order; an unknown table is an error.
    virtual QList<CatalogColumn> Columns(const SourceLogin& login, const QString& table) = 0;
};

} // namespace Orvane
