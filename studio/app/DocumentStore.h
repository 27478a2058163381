#pragma once

#include <QList>
#include <QString>
#include <memory>

namespace Orvane {
class CDataSourcesData;
class IQueryService;
class IRecordset;
} // namespace Orvane

namespace Orvane::Studio {

class StudioDocumentType;

struct DocumentSummary {
    qint32 id = 0;
    QString name;
    QString typeName;
    QString entityName;
    bool isTimeSeries = false;
};

// The host's own part of a document: its row in eds_document and its settings row
// (eds_ascii_file or eds_odbc_file). The library writes the columns, fields and keys.
class DocumentStore {
public:
    explicit DocumentStore(IQueryService& query);

    QList<DocumentSummary> List();
    // The document row, positioned on the document, as InitEdit reads it; null when it is gone.
    std::shared_ptr<IRecordset> Row(qint32 id);
    // True when another document (not exceptId) already has the name, regardless of case.
    // The stored document with its columns and settings, its name and description, as the editors
    // show it. An Orvane::Error when it is gone or of a type the Studio does not know.
    std::shared_ptr<CDataSourcesData> Load(qint32 id);
    bool NameExists(const QString& name, qint32 exceptId);
    qint32 NewId();
    // Inserts or updates the document row and its settings row from the document's properties.
    void Write(const CDataSourcesData& document, const StudioDocumentType& type, bool insert);
    // Removes the document with its columns, keys, mappings and settings. A document one of whose
    // fields report templates use stays, as its column would: false, and the user was told.
    bool Delete(qint32 id);

private:
    void writeDocumentRow(const CDataSourcesData& document, const StudioDocumentType& type,
                          bool insert);
    void writeSettingsRow(const CDataSourcesData& document, const StudioDocumentType& type);

    IQueryService& m_query;
};

} // namespace Orvane::Studio
