#include "studio/app/DocumentStore.h"

#include "orvane/host/IEntity.h"
#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/MSQL.h"
#include "orvane/widgets/TemplateUseCheck.h"
#include "studio/app/StoredTexts.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/SqlQueryService.h"

#include <QCoreApplication>

namespace Orvane::Studio {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::Studio::DocumentStore)
};

QString number(qint32 value) {
    return QString::number(value);
}

QVariant frequencyOf(const CDataSourcesData& document) {
    return document.IsTimeSeries() && document.FreqId() > 0 ? QVariant(document.FreqId())
                                                            : QVariant();
}

} // namespace

DocumentStore::DocumentStore(SqlQueryService& query)
    : m_query(query) {}

QList<DocumentSummary> DocumentStore::List() {
    QList<DocumentSummary> documents;
    const auto rst = m_query.OpenRecordset(
        QStringLiteral("SELECT d.id, d.name, d.doc_type, e.entity_name, d.is_time_series "
                       "FROM eds_document d, qvn_entity e WHERE e.entity_id(+) = d.entity_id "
                       "ORDER BY d.name"));
    for (; rst && !rst->Eof(); rst->MoveNext()) {
        documents.append({m_query.ValueAsLong(rst->Value(QStringLiteral("id"))),
                          rst->Value(QStringLiteral("name")).toString(),
                          rst->Value(QStringLiteral("doc_type")).toString(),
                          rst->Value(QStringLiteral("entity_name")).toString(),
                          m_query.ValueAsBoolean(rst->Value(QStringLiteral("is_time_series")))});
    }
    return documents;
}

std::shared_ptr<IRecordset> DocumentStore::Row(qint32 id) {
    auto rst = m_query.OpenRecordset(QStringLiteral("SELECT * FROM eds_document WHERE id = ") +
                                     number(id));
    return rst && !rst->Eof() ? rst : nullptr;
}

std::shared_ptr<CDataSourcesData> DocumentStore::Load(qint32 id, qint32* changeStamp) {
    const auto row = Row(id);
    if (!row)
        throw Error(Texts::tr("The data source %1 no longer exists.").arg(id));
    if (changeStamp)
        *changeStamp =
            hasChangeStamp() ? m_query.ValueAsLong(row->Value(QStringLiteral("change_stamp"))) : 0;
    const auto type = StudioDocumentType::ByName(row->Value(QStringLiteral("doc_type")).toString());
    if (!type)
        throw Error(Texts::tr("The data source %1 has an unknown type.").arg(id));
    auto document = std::make_shared<CDataSourcesData>();
    document->InitEdit(*row, type);
    document->setDocName(row->Value(QStringLiteral("name")).toString());
    document->setDocDescription(row->Value(QStringLiteral("description")).toString());
    return document;
}

bool DocumentStore::hasChangeStamp() {
    return m_query.ColumnExists(QStringLiteral("eds_document"), QStringLiteral("change_stamp"));
}

void DocumentStore::Claim(qint32 id, qint32 changeStamp) {
    if (!hasChangeStamp())
        return;
    if (m_query.ExecuteCounted(
            QStringLiteral("UPDATE eds_document SET change_stamp = change_stamp + 1 WHERE id = ") +
            number(id) + QStringLiteral(" AND change_stamp = ") + number(changeStamp)) != 1)
        throw Error(Texts::tr("The data source %1 was changed by someone else.").arg(id));
}

bool DocumentStore::ChangedSince(qint32 id, qint32 changeStamp) {
    if (!hasChangeStamp())
        return false;
    const auto rst = m_query.OpenRecordset(
        QStringLiteral("SELECT change_stamp FROM eds_document WHERE id = ") + number(id));
    return !rst || rst->Eof() ||
           m_query.ValueAsLong(rst->Value(QStringLiteral("change_stamp"))) != changeStamp;
}

bool DocumentStore::NameExists(const QString& name, qint32 exceptId) {
    const auto rst = m_query.OpenRecordset(
        QStringLiteral("SELECT id FROM eds_document WHERE UPPER(name) = UPPER(") +
        m_query.FormatLiteral(name.trimmed()) + QStringLiteral(") AND id <> ") + number(exceptId));
    return rst && !rst->Eof();
}

qint32 DocumentStore::NewId() {
    return m_query.NextSequenceValue(QStringLiteral("sq_eds_document"));
}

void DocumentStore::Write(const CDataSourcesData& document, const StudioDocumentType& type,
                          bool insert) {
    StoredTexts(m_query).Check(document, type.IsOdbc());
    writeDocumentRow(document, type, insert);
    writeSettingsRow(document, type);
}

void DocumentStore::writeDocumentRow(const CDataSourcesData& document,
                                     const StudioDocumentType& type, bool insert) {
    const qint32 entityId = document.Entity() ? document.Entity()->Entity_Id() : 0;
    const QString timeSeries = document.IsTimeSeries() ? QStringLiteral("Y") : QStringLiteral("N");
    if (insert) {
        m_query.ExecuteStatement(
            QStringLiteral("INSERT INTO eds_document (id, name, description, eds_type, entity_id, "
                           "is_time_series, frequency_id, doc_type) VALUES (") +
            m_query.BuildValueList({document.DocId(), document.DocName(), document.DocDescription(),
                                    type.EdsType(), entityId, timeSeries, frequencyOf(document),
                                    type.TypeName()}) +
            QStringLiteral(")"));
        return;
    }
    m_query.ExecuteStatement(
        QStringLiteral("UPDATE eds_document SET") +
        m_query.BuildSetList({{QStringLiteral("name"), document.DocName()},
                              {QStringLiteral("description"), document.DocDescription()},
                              {QStringLiteral("is_time_series"), timeSeries},
                              {QStringLiteral("frequency_id"), frequencyOf(document)}}) +
        QStringLiteral(" WHERE id = ") + number(document.DocId()));
}

void DocumentStore::writeSettingsRow(const CDataSourcesData& document,
                                     const StudioDocumentType& type) {
    const QString id = number(document.DocId());
    if (type.IsOdbc()) {
        m_query.ExecuteStatement(QStringLiteral("DELETE FROM eds_odbc_file WHERE eds_id = ") + id);
        m_query.ExecuteStatement(
            QStringLiteral("INSERT INTO eds_odbc_file (eds_id, DB_Server, DB_Database, "
                           "Table_Name, DB_UserId, DB_Password) VALUES (") +
            m_query.BuildValueList({document.DocId(), document.Server(), document.Schema(),
                                    document.Table(), document.UserId(), document.Password()}) +
            QStringLiteral(")"));
        return;
    }
    m_query.ExecuteStatement(QStringLiteral("DELETE FROM eds_ascii_file WHERE eds_id = ") + id);
    m_query.ExecuteStatement(
        QStringLiteral("INSERT INTO eds_ascii_file (eds_id, FileName, separator) VALUES (") +
        m_query.BuildValueList({document.DocId(), document.FileName(), document.Delimeter()}) +
        QStringLiteral(")"));
}

bool DocumentStore::Delete(qint32 id) {
    CDataSourcesColumns columns;
    columns.LoadColumns(id);
    for (const auto& column : columns) {
        if (column->Field_Id() > 0 && !mOrvane::TemplateUseCheck(false, column->Field_Id()))
            return false;
    }
    // Each column goes as the library's save removes one, with its key, mapping and field.
    for (const auto& column : columns) {
        m_query.CallProcedure(MSQL::DeleteColumnProcedure,
                              {{column->Column_Id(), QString(), QStringLiteral("integer")}});
    }
    m_query.ExecuteStatement(QStringLiteral("DELETE FROM eds_ascii_file WHERE eds_id = ") +
                             number(id));
    m_query.ExecuteStatement(QStringLiteral("DELETE FROM eds_odbc_file WHERE eds_id = ") +
                             number(id));
    m_query.ExecuteStatement(QStringLiteral("DELETE FROM eds_document WHERE id = ") + number(id));
    return true;
}

} // namespace Orvane::Studio
