#pragma once

#include <QList>
#include <QString>
#include <memory>

namespace Orvane {
class CDataSourcesData;
class IRecordset;
} // namespace Orvane

namespace Orvane::Studio {

class SqlQueryService;
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
//
// The row's change stamp counts the saves. A window keeps the stamp it read, and its save claims
// the row first: of two sessions saving one document, the later finds the stamp moved and learns
// that someone else changed it, before anything of its own is written. Databases reached over
// ODBC may lack the stamp; there every save goes through as it always did.
class DocumentStore {
public:
    explicit DocumentStore(SqlQueryService& query);

    QList<DocumentSummary> List();
    // The document row, positioned on the document, as InitEdit reads it; null when it is gone.
    std::shared_ptr<IRecordset> Row(qint32 id);
    // True when another document (not exceptId) already has the name, regardless of case.
    // The stored document with its columns and settings, its name and description, as the editors
    // show it. An Orvane::Error when it is gone or of a type the Studio does not know. The change
    // stamp, when asked for, is read before the rest: a save made meanwhile counts as a change.
    std::shared_ptr<CDataSourcesData> Load(qint32 id, qint32* changeStamp = nullptr);
    // First in a save's transaction: moves the stamp on if it is still changeStamp, which holds the
    // row against other saves until the transaction ends; an Orvane::Error if it is not.
    void Claim(qint32 id, qint32 changeStamp);
    // After a failed save: whether someone else changed or removed the document since changeStamp.
    bool ChangedSince(qint32 id, qint32 changeStamp);
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

    bool hasChangeStamp();

    SqlQueryService& m_query;
};

} // namespace Orvane::Studio
