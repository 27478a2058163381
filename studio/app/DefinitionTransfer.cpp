#include "studio/app/DefinitionTransfer.h"

#include "orvane/exchange/DefinitionExport.h"
#include "orvane/exchange/DefinitionImport.h"
#include "orvane/exchange/DefinitionJson.h"
#include "orvane/model/CDataSourcesData.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/SqlQueryService.h"
#include "studio/db/TransactionScope.h"

#include <QCoreApplication>
#include <QSet>

namespace Orvane::Studio {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::Studio::DefinitionTransfer)
};

QString located(const QString& source, const ExchangeProblem& problem) {
    return source.isEmpty() ? problem.Text() : source + QStringLiteral(": ") + problem.Text();
}

} // namespace

DefinitionTransfer::DefinitionTransfer(SqlQueryService& database)
    : m_database(database)
    , m_store(database) {}

QList<DocumentSummary> DefinitionTransfer::List() {
    return m_store.List();
}

std::optional<DocumentSummary> DefinitionTransfer::Find(const QString& name) {
    for (const DocumentSummary& document : m_store.List()) {
        if (document.name.compare(name.trimmed(), Qt::CaseInsensitive) == 0)
            return document;
    }
    return std::nullopt;
}

QByteArray DefinitionTransfer::Export(qint32 documentId) {
    return DefinitionJson::Write(DefinitionExport::FromDocument(*m_store.Load(documentId)));
}

ImportOutcome DefinitionTransfer::Import(const QList<ImportInput>& inputs, bool replace) {
    ImportOutcome outcome;
    QList<EdsDefinition> definitions;
    QSet<QString> names;
    for (const ImportInput& input : inputs) {
        const auto read = DefinitionJson::Read(input.text);
        for (const ExchangeProblem& problem : read.problems)
            outcome.problems << located(input.source, problem);
        if (!read.definition)
            continue;
        const QString name = read.definition->name;
        if (names.contains(name.toLower()))
            outcome.problems << located(
                input.source,
                {Texts::tr("name"), Texts::tr("another file defines \"%1\"").arg(name)});
        else if (!replace && Find(name)) {
            outcome.nameTaken = true;
            outcome.problems << located(
                input.source, {QStringLiteral("name"),
                               Texts::tr("a data source named \"%1\" exists already").arg(name)});
        }
        names.insert(name.toLower());
        definitions << *read.definition;
    }
    if (!outcome.Succeeded())
        return outcome;

    TransactionScope transaction(m_database);
    for (qsizetype i = 0; i < inputs.size(); ++i)
        importOne(inputs.at(i), definitions.at(i), replace, outcome);
    if (outcome.Succeeded())
        transaction.Commit();
    else
        outcome.imported.clear();
    return outcome;
}

ImportOutcome DefinitionTransfer::Copy(const CDataSourcesData& document, const QString& name) {
    EdsDefinition definition = DefinitionExport::FromDocument(document);
    definition.name = name;
    ImportOutcome outcome;
    TransactionScope transaction(m_database);
    const qint32 copyId = importOne({}, definition, false, outcome);
    if (!outcome.Succeeded())
        return outcome;
    if (!document.Password().isEmpty())
        m_database.ExecuteStatement(
            QStringLiteral("UPDATE eds_odbc_file SET") +
            m_database.BuildSetList({{QStringLiteral("DB_Password"), document.Password()}}) +
            QStringLiteral(" WHERE eds_id = ") + QString::number(copyId));
    transaction.Commit();
    return outcome;
}

qint32 DefinitionTransfer::importOne(const ImportInput& input, const EdsDefinition& definition,
                                     bool replace, ImportOutcome& outcome) {
    if (const auto existing = Find(definition.name); existing && replace) {
        if (!m_store.Delete(existing->id)) {
            outcome.problems << located(
                input.source, {Texts::tr("name"), Texts::tr("\"%1\" cannot be replaced: report "
                                                            "templates use its fields")
                                                      .arg(existing->name)});
            return 0;
        }
    }
    DefinitionImport import(definition);
    if (!import.Resolve()) {
        for (const ExchangeProblem& problem : import.Problems())
            outcome.problems << located(input.source, problem);
        return 0;
    }
    const auto type = StudioDocumentType::ByName(definition.type);
    const auto& document = import.Document();
    document->setDocId(m_store.NewId());
    m_store.Write(*document, *type, true);
    import.Save(document->DocId());
    outcome.imported << definition.name;
    return document->DocId();
}

} // namespace Orvane::Studio
