#include "studio/sqlhost/SqlHost.h"

#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesColumnsState.h"
#include "orvane/model/CDataSourcesData.h"
#include "studio/app/DocumentStore.h"
#include "studio/app/StudioApplication.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/app/StudioHost.h"
#include "studio/db/SqlQueryService.h"
#include "studio/db/TransactionScope.h"

#include <QCoreApplication>

namespace Orvane {

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("Orvane::SqlHost", text);
}

std::shared_ptr<Studio::StudioDocumentType> typeOf(const CDataSourcesData& document) {
    const auto& type = document.DocumentType();
    auto known = type ? Studio::StudioDocumentType::ByName(type->TypeName()) : nullptr;
    if (!known)
        throw Error(translated("The data source is of a type this host does not store."));
    return known;
}

} // namespace

struct SqlHost::Private {
    Studio::StudioHost host;
    Studio::DocumentStore store;

    explicit Private(std::shared_ptr<Studio::SqlQueryService> database, bool editPermission)
        : host(std::move(database), editPermission)
        , store(*host.Database()) {}
};

std::unique_ptr<SqlHost> SqlHost::Open(const QString& connection, QString* error,
                                       bool editPermission) {
    try {
        auto database = std::make_shared<Studio::SqlQueryService>(connection);
        return std::unique_ptr<SqlHost>(
            new SqlHost(std::make_unique<Private>(std::move(database), editPermission)));
    } catch (const Error& failure) {
        if (error)
            *error = failure.message();
        return nullptr;
    }
}

SqlHost::SqlHost(std::unique_ptr<Private> d)
    : d(std::move(d)) {}

SqlHost::~SqlHost() = default;

QString SqlHost::DatabaseShown() const {
    return d->host.Database()->DatabaseShown();
}

void SqlHost::setMainWindow(QWidget* window) {
    d->host.Application().setMainWindow(window);
}

IQueryService& SqlHost::Query() const {
    return *d->host.Database();
}

std::shared_ptr<IDocumentType> SqlHost::AsciiType() {
    return Studio::StudioDocumentType::Ascii();
}

std::shared_ptr<IDocumentType> SqlHost::OdbcType() {
    return Studio::StudioDocumentType::Odbc();
}

QList<SqlHost::Document> SqlHost::Documents() const {
    QList<Document> documents;
    for (const Studio::DocumentSummary& stored : d->store.List())
        documents.append(
            {stored.id, stored.name, stored.typeName, stored.entityName, stored.isTimeSeries});
    return documents;
}

std::shared_ptr<CDataSourcesData> SqlHost::Load(qint32 id) const {
    return d->store.Load(id);
}

// The save changes the column objects as it goes; a failed one puts them back, so that the same
// document can be saved again once the cause is removed.
void SqlHost::Save(CDataSourcesData& document) {
    const auto type = typeOf(document);
    if (document.DocName().trimmed().isEmpty())
        throw Error(translated("A data source needs a name before it is saved."));
    if (d->store.NameExists(document.DocName(), document.IsNew() ? 0 : document.DocId()))
        throw Error(
            translated("A data source named \"%1\" already exists.").arg(document.DocName()));
    const auto columnsBefore = document.Columns()->SaveState();
    const qint32 idBefore = document.DocId();
    const bool insert = document.IsNew();
    try {
        Studio::TransactionScope transaction(*d->host.Database(),
                                             Studio::StatementDelivery::Batched);
        if (insert)
            document.setDocId(d->store.NewId());
        d->store.Write(document, *type, insert);
        document.SaveData();
        transaction.Commit();
    } catch (const Error&) {
        document.Columns()->RestoreState(*columnsBefore);
        document.setDocId(idBefore);
        throw;
    }
    document.setIsNew(false);
}

} // namespace Orvane
