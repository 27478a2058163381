#pragma once

#include "orvane/exchange/EdsDefinition.h"
#include "studio/app/DocumentStore.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace Orvane {
class CDataSourcesData;
}

namespace Orvane::Studio {

class SqlQueryService;

// One file to import: where it came from (shown before each of its problems) and its text.
struct ImportInput {
    QString source;
    QByteArray text;
};

struct ImportOutcome {
    QStringList problems; // "source: path: message", one a line
    // Some data source of a name in the files exists and replacing was not asked for.
    bool nameTaken = false;
    QStringList imported; // the names, in the files' order

    bool Succeeded() const { return problems.isEmpty(); }
};

// Data sources of the Studio's database to and from their JSON form. An import runs in one
// transaction: a problem in any file, or a database error, leaves the database as it was. A
// database error is an Orvane::Error; everything wrong with the files is an outcome's problem.
class DefinitionTransfer {
public:
    explicit DefinitionTransfer(SqlQueryService& database);

    QList<DocumentSummary> List();
    // The data source of that name, any case; nothing when there is none.
    std::optional<DocumentSummary> Find(const QString& name);
    QByteArray Export(qint32 documentId);
    std::shared_ptr<CDataSourcesData> Load(qint32 documentId) { return m_store.Load(documentId); }
    // Replacing removes the data source of the same name first, as Delete would.
    ImportOutcome Import(const QList<ImportInput>& inputs, bool replace);
    // A new data source under that name holding what the document holds, as an export and import
    // of it would make (its columns anew, with the dictionary's fields of the same names), and
    // the ODBC password, which a definition never holds. One transaction.
    ImportOutcome Copy(const CDataSourcesData& document, const QString& name);

private:
    // The new data source's id; 0 when it met a problem.
    qint32 importOne(const ImportInput& input, const EdsDefinition& definition, bool replace,
                     ImportOutcome& outcome);

    SqlQueryService& m_database;
    DocumentStore m_store;
};

} // namespace Orvane::Studio
