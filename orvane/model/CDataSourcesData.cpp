#include "orvane/model/CDataSourcesData.h"

#include "orvane/host/BusyPointer.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IDocumentType.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IEntityChooser.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/MSQL.h"

#include <QCoreApplication>

namespace Orvane {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::CDataSourcesData)
};

const QString AsciiType = QStringLiteral("ASCII Data Source");
const QString OdbcType = QStringLiteral("ODBC Data Source");

Error nullField(const QString& field) {
    return Error(Texts::tr("Invalid use of Null: field \"%1\" of the document.").arg(field));
}

// A text that must be there: a null is a conversion error.
QString requiredText(const IRecordset& rst, const QString& field) {
    const QVariant value = rst.Value(field);
    if (value.isNull())
        throw nullField(field);
    return value.toString();
}

// A text whose null reads as the empty string.
QString optionalText(const IRecordset& rst, const QString& field) {
    return rst.Value(field).toString();
}

qint32 toInteger(const QString& text, const QString& field) {
    bool ok = false;
    const qint32 value = text.trimmed().toInt(&ok);
    if (!ok)
        throw Error(
            Texts::tr("Type mismatch: field \"%1\" holds \"%2\", not a number.").arg(field, text));
    return value;
}

qint32 requiredInteger(const IRecordset& rst, const QString& field) {
    return toInteger(requiredText(rst, field), field);
}

} // namespace

CDataSourcesData::CDataSourcesData()
    : m_columns(std::make_shared<CDataSourcesColumns>()) {}

CDataSourcesData::~CDataSourcesData() = default;

bool CDataSourcesData::InitNew(std::shared_ptr<IDocumentType> dbfdta) {
    m_documentType = std::move(dbfdta);
    m_columns = std::make_shared<CDataSourcesColumns>();

    auto entity = HostRegistry::EntityChooser().ChooseEntity(
        Texts::tr("Select Entity for this Data Source"), QStringLiteral("System"));
    if (!entity)
        return false;
    m_entity = std::move(entity);
    m_columns->setEntity(m_entity);
    m_isNew = true;
    return true;
}

bool CDataSourcesData::InitEdit(IRecordset& rst, std::shared_ptr<IDocumentType> dbfdta) {
    m_docId = requiredInteger(rst, QStringLiteral("Id"));
    m_documentType = std::move(dbfdta);
    m_edsType = requiredText(rst, QStringLiteral("EDS_Type"));
    m_entity =
        HostRegistry::FieldInfo().EntityById(requiredInteger(rst, QStringLiteral("Entity_id")));
    m_isTimeSeries = optionalText(rst, QStringLiteral("is_time_series")) == QLatin1String("Y");
    // A null frequency reads as 0: the digit 0 goes before the stored text.
    m_freqId = toInteger(QLatin1Char('0') + optionalText(rst, QStringLiteral("frequency_id")),
                         QStringLiteral("frequency_id"));

    m_columns = std::make_shared<CDataSourcesColumns>();
    m_columns->LoadColumns(m_docId);
    m_columns->setEntity(m_entity);

    if (typeName() == AsciiType)
        loadAsciiSettings();
    else if (typeName() == OdbcType)
        loadOdbcSettings();
    m_isNew = false;
    return false;
}

void CDataSourcesData::loadAsciiSettings() {
    const auto settings =
        HostRegistry::Query().OpenRecordset(MSQL::AsciiSettingsQuery(m_docId), 60);
    if (!settings || settings->Eof())
        return;
    m_fileName = requiredText(*settings, QStringLiteral("FileName"));
    m_delimeter = requiredText(*settings, QStringLiteral("separator"));
}

void CDataSourcesData::loadOdbcSettings() {
    const auto settings = HostRegistry::Query().OpenRecordset(MSQL::OdbcSettingsQuery(m_docId), 60);
    if (!settings || settings->Eof())
        return;
    m_server = requiredText(*settings, QStringLiteral("DB_Server"));
    m_schema = optionalText(*settings, QStringLiteral("DB_Database"));
    m_table = requiredText(*settings, QStringLiteral("Table_Name"));
    m_userId = optionalText(*settings, QStringLiteral("DB_UserId"));
    m_password = optionalText(*settings, QStringLiteral("DB_Password"));
}

bool CDataSourcesData::SaveData() {
    const BusyPointer busy;
    if (m_isNew) {
        ColumnSave::InsertNewColumns(m_docId, *m_columns);
        ColumnSave::CreateNewFields(m_docId, *m_columns);
        ColumnSave::InsertNewKeys(m_docId, *m_columns);
        m_columns->setEDS_Id(m_docId);
    } else {
        ColumnSave::SaveColumns(*m_columns);
    }
    if (m_entity)
        m_entity->Reload();
    return true;
}

QString CDataSourcesData::typeName() const {
    return m_documentType ? m_documentType->TypeName() : QString();
}

QString CDataSourcesData::Category() const {
    if (typeName() == AsciiType)
        return QStringLiteral("ASCII Data Sources");
    if (typeName() == OdbcType)
        return QStringLiteral("ODBC Data Sources");
    return QString();
}

QString CDataSourcesData::AppName() const {
    return m_documentType ? m_documentType->AppName() : QString();
}

QString CDataSourcesData::EditorName() const {
    return (m_documentType ? m_documentType->DisplayName() : QString()) + QStringLiteral(" Editor");
}

} // namespace Orvane
