#pragma once

#include "orvane/sqlhost/OrvaneSqlHostExport.h"

#include <QList>
#include <QString>
#include <memory>

class QWidget;

namespace Orvane {

class CDataSourcesData;
class IDocumentType;
class IQueryService;

// A ready host for Orvane's controls on a SQL database: SQLite, PostgreSQL or any ODBC source.
//
// Opening one installs every host component into HostRegistry: the query service (with the
// bridge from the library's Oracle dialect to SQLite and PostgreSQL), the dictionary service,
// the application object on real Qt message boxes, input boxes and modal dialogs, and the
// widget factory. They stay installed while the SqlHost lives; one SqlHost at a time.
//
// @code
// QString error;
// auto host = Orvane::SqlHost::Open(QStringLiteral("/home/me/orvane.db"), &error);
// if (!host)
//     return fail(error);
// auto document = host->Load(host->Documents().first().id);
// @endcode
class ORVANE_SQLHOST_EXPORT SqlHost {
public:
    // A stored data source, as Documents() lists it.
    struct Document {
        qint32 id = 0;
        QString name;
        // "ASCII Data Source" or "ODBC Data Source".
        QString typeName;
        QString entityName;
        bool isTimeSeries = false;
    };

    // Opens the database that the connection text names and installs the host components:
    //   "/path/orvane.db" or "sqlite:/path/orvane.db" (created with a demo dictionary when new),
    //   "postgresql://user@host:port/dbname" (set up when empty),
    //   "odbc:DSN" or "odbc:DRIVER=...;UID=..." (used as it is).
    // Null when the database cannot be opened, with the reason in @p error when given.
    // Without @p editPermission the controls show everything and change nothing.
    static std::unique_ptr<SqlHost> Open(const QString& connection, QString* error = nullptr,
                                         bool editPermission = true);
    // Uninstalls the host components.
    ~SqlHost();
    SqlHost(const SqlHost&) = delete;
    SqlHost& operator=(const SqlHost&) = delete;

    // The database as messages name it, its password masked.
    QString DatabaseShown() const;
    // The window that message and input boxes are shown over.
    void setMainWindow(QWidget* window);
    // The installed query service, for a host's own statements.
    IQueryService& Query() const;

    // The two kinds of document, for CDataSourcesData::InitNew.
    static std::shared_ptr<IDocumentType> AsciiType();
    static std::shared_ptr<IDocumentType> OdbcType();

    // The stored data sources, by name. Throws Orvane::Error when the database fails.
    QList<Document> Documents() const;
    // A stored data source with its settings and columns, ready for the editors'
    // Initialize and XDataSourcesColumn::InitEdit. Throws Orvane::Error when it is gone.
    std::shared_ptr<CDataSourcesData> Load(qint32 id) const;
    // Writes the document row, its settings and its columns, fields and keys in one
    // transaction. The document must have a name no other data source has, and hold the
    // editors' settings. On failure nothing is changed in the database, the columns are as
    // they were, and an Orvane::Error says why.
    void Save(CDataSourcesData& document);

private:
    struct Private;
    explicit SqlHost(std::unique_ptr<Private> d);
    std::unique_ptr<Private> d;
};

} // namespace Orvane
