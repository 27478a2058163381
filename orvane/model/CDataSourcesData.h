#pragma once

#include <QString>
#include <memory>

namespace Orvane {

class CDataSourcesColumns;
class IDocumentType;
class IEntity;
class IRecordset;

// One External Data Source document in memory: the source's settings, its time-series setting,
// its entity and its columns. The host writes the document row from these properties; SaveData
// writes the columns, their dictionary fields and their key fields.
class CDataSourcesData {
public:
    CDataSourcesData();
    ~CDataSourcesData();
    CDataSourcesData(const CDataSourcesData&) = delete;
    CDataSourcesData& operator=(const CDataSourcesData&) = delete;

    // Asks the user for the entity; false when the user cancelled.
    bool InitNew(std::shared_ptr<IDocumentType> dbfdta);
    // Loads a stored document from the host's document row. Its result is always false and says
    // nothing about success: a failure is an Orvane::Error.
    bool InitEdit(IRecordset& rst, std::shared_ptr<IDocumentType> dbfdta);
    bool SaveData();

    QString Category() const;
    QString AppName() const;
    QString EditorName() const;

    const QString& DocName() const { return m_docName; }
    void setDocName(const QString& value) { m_docName = value; }
    const QString& DocDescription() const { return m_docDescription; }
    void setDocDescription(const QString& value) { m_docDescription = value; }
    const QString& FileName() const { return m_fileName; }
    void setFileName(const QString& value) { m_fileName = value; }
    const QString& Delimeter() const { return m_delimeter; }
    void setDelimeter(const QString& value) { m_delimeter = value; }
    qint32 DocId() const { return m_docId; }
    void setDocId(qint32 value) { m_docId = value; }
    bool IsNew() const { return m_isNew; }
    void setIsNew(bool value) { m_isNew = value; }
    bool IsTimeSeries() const { return m_isTimeSeries; }
    void setIsTimeSeries(bool value) { m_isTimeSeries = value; }
    qint32 FreqId() const { return m_freqId; }
    void setFreqId(qint32 value) { m_freqId = value; }
    const QString& EDS_Type() const { return m_edsType; }
    void setEDS_Type(const QString& value) { m_edsType = value; }
    const QString& Server() const { return m_server; }
    void setServer(const QString& value) { m_server = value; }
    const QString& Table() const { return m_table; }
    void setTable(const QString& value) { m_table = value; }
    const QString& UserId() const { return m_userId; }
    void setUserId(const QString& value) { m_userId = value; }
    const QString& Password() const { return m_password; }
    void setPassword(const QString& value) { m_password = value; }
    const QString& Schema() const { return m_schema; }
    void setSchema(const QString& value) { m_schema = value; }
    const std::shared_ptr<IEntity>& Entity() const { return m_entity; }
    void setEntity(std::shared_ptr<IEntity> value) { m_entity = std::move(value); }
    const std::shared_ptr<IDocumentType>& DocumentType() const { return m_documentType; }
    // Never null; InitNew and InitEdit replace it with a new collection.
    const std::shared_ptr<CDataSourcesColumns>& Columns() const { return m_columns; }

private:
    void loadAsciiSettings();
    void loadOdbcSettings();
    QString typeName() const;

    QString m_docName;
    QString m_docDescription;
    QString m_fileName;
    QString m_delimeter;
    qint32 m_docId = 0;
    bool m_isNew = false;
    bool m_isTimeSeries = false;
    qint32 m_freqId = 0;
    QString m_edsType;
    QString m_server;
    QString m_table;
    QString m_userId;
    QString m_password;
    QString m_schema;
    std::shared_ptr<IEntity> m_entity;
    std::shared_ptr<IDocumentType> m_documentType;
    std::shared_ptr<CDataSourcesColumns> m_columns;
};

} // namespace Orvane
