#pragma once

#include "orvane/host/ISourceCatalog.h"

namespace Orvane::Studio {

class SqlConnection;

// The catalog of the databases ODBC sources read, through Qt Sql's ODBC driver. Each call opens
// a connection of its own, never the Studio's, and closes it before it returns.
class OdbcCatalog : public ISourceCatalog {
public:
    void TestConnection(const SourceLogin& login) override;
    QStringList Tables(const SourceLogin& login) override;
    QList<CatalogColumn> Columns(const SourceLogin& login, const QString& table) override;

    // The ODBC connection text of a login, as the driver takes it. The server is a data source
    // name (DSN=name written or not) or a connection text of its own (DRIVER=...;SERVER=...);
    // the database, user and password are added as DATABASE, UID and PWD when given.
    static QString ConnectionText(const SourceLogin& login);

private:
    // Runs the reading on an open connection; the password is masked in any error it raises.
    template <typename Reading> static auto withConnection(const SourceLogin& login, Reading read);
};

} // namespace Orvane::Studio
