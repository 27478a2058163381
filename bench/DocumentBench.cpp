// Loading and saving documents of 50, 500, 2,000 and 10,000 columns through the library on the
// studio's SQLite database, and on PostgreSQL when ORVANE_TEST_PG names a server (as
// scripts/postgres-test-server exports it), each beside the same statements run as plain text
// through Qt Sql in the same run, as a naive host would run them.
//
// - Load: CDataSourcesData::InitEdit of a stored document whose every column is mapped to a
//   dictionary field and every fifth is a key; the anchor runs the statements InitEdit sends (the
//   column query, the one batch field lookup, the settings query) and reads every value.
// - Save: SaveData of a new document's columns, every fifth a key, in one batched transaction
//   that commits, as the studio saves; the anchor runs the same sequence steps and inserts one by
//   one in one transaction. Both remove the rows they wrote while the clock is stopped.
// - Ids: NextSequenceValue drawn 100 and 1,000 times, beside the sequence statement as text.
// - Studio save: DocumentWindow::Save of the stored document of each size, opened once: the
//   editors' validation, the document row and SaveData in one transaction, and the reload of the
//   saved document into the window; unchanged (/0: no column is written) and with every column
//   changed (/1: each column's row and key rewritten). It runs last, as it writes the load
//   benchmarks' documents.
// The last lines printed are the ratios at each size, with the growth of each figure.

#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IRecordset.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "studio/app/ConsoleApplication.h"
#include "studio/app/DocumentStore.h"
#include "studio/app/DocumentWindow.h"
#include "studio/app/StudioApplication.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/SqlQueryService.h"
#include "studio/db/TransactionScope.h"
#include "studio/dictionary/DictionaryService.h"
#include "studio/widgets/StudioWidgetFactory.h"

#include "bench/QtBenchmarkApp.h"
#include "bench/RatioReporter.h"
#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QUrl>

#include <benchmark/benchmark.h>
#include <map>
#include <stdexcept>

namespace {

using namespace Orvane;
using Studio::SqlQueryService;

constexpr int Sizes[] = {50, 500, 2000, 10000};
constexpr int KeyEvery = 5;
// Far above what the sequences hand out while the benchmarks run; each size has its own range.
constexpr int FirstBenchId = 50000000;
constexpr int IdsPerSize = 100000;

// One step of a recorded save: a statement, or the next value of a sequence.
struct Step {
    QString statement;
    QString sequence;
};

// Passes every call to the studio's service and writes down what reached the database, as the
// database was sent it.
class Recorder : public IQueryService {
public:
    explicit Recorder(SqlQueryService& inner)
        : m_inner(inner) {}

    std::vector<Step> steps;

    std::shared_ptr<IRecordset> OpenRecordset(const QString& statement, qint32 timeout) override {
        steps.push_back({m_inner.Translate(statement), {}});
        return m_inner.OpenRecordset(statement, timeout);
    }
    void ExecuteStatement(const QString& statement) override {
        steps.push_back({m_inner.Translate(statement), {}});
        m_inner.ExecuteStatement(statement);
    }
    qint32 NextSequenceValue(const QString& sequence) override {
        steps.push_back({{}, sequence.toLower()});
        return m_inner.NextSequenceValue(sequence);
    }
    QVariant CallProcedure(const QString& procedure, const QList<ProcedureParameter>&) override {
        throw std::logic_error("the benchmarked paths call no procedure, yet called " +
                               procedure.toStdString());
    }
    QString BuildSetList(const QList<SetPair>& p) override { return m_inner.BuildSetList(p); }
    QString BuildValueList(const QVariantList& v) override { return m_inner.BuildValueList(v); }
    QString FormatLiteral(const QVariant& v) override { return m_inner.FormatLiteral(v); }
    qint32 ValueAsLong(const QVariant& v) override { return m_inner.ValueAsLong(v); }
    bool ValueAsBoolean(const QVariant& v) override { return m_inner.ValueAsBoolean(v); }
    bool ColumnExists(const QString& t, const QString& c) override {
        return m_inner.ColumnExists(t, c);
    }
    qint32 ColumnWidth(const QString& t, const QString& c) override {
        return m_inner.ColumnWidth(t, c);
    }

private:
    SqlQueryService& m_inner;
};

// One document to load and one to save, of one size, with what the library sends for them.
struct Sized {
    qint32 loadDocument = 0;
    qint32 saveDocument = 0;
    // The host's row of the document to load, read once: the host has it before InitEdit.
    std::shared_ptr<IRecordset> loadRow;
    std::vector<Step> loadSteps;
    std::vector<Step> saveSteps;
};

// The studio's services on one database, and a bare Qt Sql connection to the same database.
class Bench {
public:
    Bench(std::string label, const QString& connection, QSqlDatabase direct);
    ~Bench();

    const std::string& Label() const { return m_label; }
    void Register();

private:
    QSqlQuery run(const QString& statement, const QVariantList& values = {});
    void insertDocumentRow(qint32 id, const QString& name);
    void storeLoadDocument(qint32 id, int columnCount, int firstKey);
    std::unique_ptr<CDataSourcesData> newDocument(qint32 id, int columnCount);
    void removeColumns(qint32 id);
    void loadDocument(const Sized& sized, int columnCount);
    void saveDocument(CDataSourcesData& document);
    void install(
        std::shared_ptr<IQueryService> query,
        std::shared_ptr<IApplication> application = std::make_shared<Studio::StudioApplication>());
    void recordSteps(Sized& sized, int columnCount);
    void readAll(QSqlQuery& query);
    void replay(const std::vector<Step>& steps);

    void libraryLoad(benchmark::State& state);
    void directLoad(benchmark::State& state);
    void librarySave(benchmark::State& state);
    void directSave(benchmark::State& state);
    void librarySequence(benchmark::State& state);
    void directSequence(benchmark::State& state);
    void studioSave(benchmark::State& state);

    std::string m_label;
    QString m_direct;
    std::shared_ptr<SqlQueryService> m_db;
    std::shared_ptr<Studio::DictionaryService> m_dictionary;
    std::unique_ptr<Studio::DocumentStore> m_store;
    std::shared_ptr<Studio::StudioDocumentType> m_type = Studio::StudioDocumentType::Ascii();
    std::map<int, Sized> m_sized;
};

Bench::Bench(std::string label, const QString& connection, QSqlDatabase direct)
    : m_label(std::move(label))
    , m_direct(direct.connectionName()) {
    m_db = std::make_shared<SqlQueryService>(connection);
    m_dictionary = std::make_shared<Studio::DictionaryService>(*m_db);
    m_store = std::make_unique<Studio::DocumentStore>(*m_db);
    if (!direct.open())
        throw std::runtime_error(direct.lastError().text().toStdString());
    int firstKey = FirstBenchId;
    for (const int size : Sizes) {
        Sized& sized = m_sized[size];
        sized.loadDocument = m_store->NewId();
        sized.saveDocument = m_store->NewId();
        direct.transaction();
        storeLoadDocument(sized.loadDocument, size, firstKey);
        insertDocumentRow(sized.saveDocument, QStringLiteral("Bench Save %1").arg(size));
        direct.commit();
        firstKey += IdsPerSize;
        sized.loadRow = m_store->Row(sized.loadDocument);
    }
    // A server's statistics are current on a database in use; without them PostgreSQL guesses
    // its plans for tables thousands of rows larger than it last saw.
    if (m_db->Backend() == Studio::SqlBackend::PostgreSQL)
        run(QStringLiteral("ANALYZE"));
    for (const int size : Sizes)
        recordSteps(m_sized[size], size);
}

Bench::~Bench() {
    HostRegistry::Uninstall();
    QSqlDatabase::database(m_direct).close();
    QSqlDatabase::removeDatabase(m_direct);
}

// The setup binds its values; the anchors run their statements as text.
QSqlQuery Bench::run(const QString& statement, const QVariantList& values) {
    QSqlQuery query(QSqlDatabase::database(m_direct));
    query.setForwardOnly(true);
    bool ok = false;
    if (values.isEmpty()) {
        ok = query.exec(statement);
    } else if (query.prepare(statement)) {
        for (const QVariant& value : values)
            query.addBindValue(value);
        ok = query.exec();
    }
    if (!ok)
        throw std::runtime_error(query.lastError().text().toStdString() +
                                 "\nStatement: " + statement.toStdString());
    return query;
}

void Bench::insertDocumentRow(qint32 id, const QString& name) {
    run(QStringLiteral("INSERT INTO eds_document (id, name, eds_type, entity_id, is_time_series, "
                       "doc_type) VALUES (?, ?, 'A', 7, 'N', 'ASCII Data Source')"),
        {id, name});
    run(QStringLiteral("INSERT INTO eds_ascii_file (eds_id, filename, separator) VALUES "
                       "(?, '/data/bench.csv', ',')"),
        {id});
}

// Each column mapped to a field of its own, every fifth a key on Cell_Name or CI.
void Bench::storeLoadDocument(qint32 id, int columnCount, int firstKey) {
    insertDocumentRow(id, QStringLiteral("Bench Load %1").arg(columnCount));
    for (int i = 1; i <= columnCount; ++i) {
        const qint32 key = firstKey + i;
        run(QStringLiteral("INSERT INTO qvd_field_def (field_id, field_desc, field_aggregator, "
                           "datatype, field_group_id, technologies) VALUES (?, ?, 1, 'I', 3, "
                           "'GSM, LTE')"),
            {key, QStringLiteral("Bench counter %1").arg(key)});
        run(QStringLiteral("INSERT INTO qvd_dict_name (field_id, entity_id, name, report_header, "
                           "report_header2) VALUES (?, 7, ?, 'Bench', ?)"),
            {key, QStringLiteral("Bench_%1").arg(key), QString::number(i)});
        run(QStringLiteral("INSERT INTO qvd_field_tech (field_id, tech_id) VALUES (?, 1)"), {key});
        run(QStringLiteral("INSERT INTO qvd_field_tech (field_id, tech_id) VALUES (?, 3)"), {key});
        run(QStringLiteral("INSERT INTO eds_column (col_id, eds_id, col_name, col_type, "
                           "col_position, is_timestamp, editor_position) VALUES "
                           "(?, ?, ?, 'I', ?, 'N', ?)"),
            {key, id, QStringLiteral("C%1").arg(i, 5, 10, QLatin1Char('0')), i, i});
        run(QStringLiteral("INSERT INTO qvd_eds_def (eds_id, col_id, field_id) VALUES (?, ?, ?)"),
            {id, key, key});
        if (i % KeyEvery == 0)
            run(QStringLiteral("INSERT INTO eds_primarykey VALUES (?, ?, ?, ?, ?)"),
                {key, id, key, 1 + (i / KeyEvery) % 2, i / KeyEvery});
    }
}

std::unique_ptr<CDataSourcesData> Bench::newDocument(qint32 id, int columnCount) {
    auto document = std::make_unique<CDataSourcesData>();
    document->setDocId(id);
    document->setIsNew(true);
    document->setEntity(m_dictionary->EntityById(7));
    CDataSourcesColumns& columns = *document->Columns();
    columns.setEntity(document->Entity());
    for (int i = 1; i <= columnCount; ++i) {
        const auto column = columns.Add(QStringLiteral("N%1").arg(i, 5, 10, QLatin1Char('0')));
        column->setColumn_Type(QStringLiteral("Integer"));
        column->setPosition(i);
        column->setColPosition(i);
        if (i % KeyEvery == 0) {
            column->setKeyFld_Id(1);
            column->setKey_Ordinal(i / KeyEvery);
        }
    }
    return document;
}

void Bench::removeColumns(qint32 id) {
    run(QStringLiteral("DELETE FROM eds_primarykey WHERE eds_id = ?"), {id});
    run(QStringLiteral("DELETE FROM eds_column WHERE eds_id = ?"), {id});
}

void Bench::loadDocument(const Sized& sized, int columnCount) {
    CDataSourcesData document;
    document.InitEdit(*sized.loadRow, m_type);
    if (document.Columns()->Count() != columnCount)
        throw std::runtime_error("the benchmark document did not load whole");
}

void Bench::saveDocument(CDataSourcesData& document) {
    Studio::TransactionScope transaction(*m_db, Studio::StatementDelivery::Batched);
    document.SaveData();
    transaction.Commit();
}

void Bench::install(std::shared_ptr<IQueryService> query,
                    std::shared_ptr<IApplication> application) {
    HostRegistry::Install({std::move(query), m_dictionary, std::move(application),
                           std::make_shared<Studio::StudioWidgetFactory>(m_dictionary)});
}

// What the library sends for one load and one save, recorded once; the dictionary reads
// through the recorder too, so that its batch lookup is among the load's statements.
void Bench::recordSteps(Sized& sized, int columnCount) {
    auto recorder = std::make_shared<Recorder>(*m_db);
    const auto dictionary = m_dictionary;
    m_dictionary = std::make_shared<Studio::DictionaryService>(*recorder);
    install(recorder);
    loadDocument(sized, columnCount);
    sized.loadSteps = std::move(recorder->steps);
    const auto document = newDocument(sized.saveDocument, columnCount);
    recorder->steps.clear();
    saveDocument(*document);
    sized.saveSteps = std::move(recorder->steps);
    removeColumns(sized.saveDocument);
    m_dictionary = dictionary;
    install(m_db);
}

void Bench::readAll(QSqlQuery& query) {
    const int fields = query.record().count();
    while (query.next()) {
        for (int i = 0; i < fields; ++i)
            benchmark::DoNotOptimize(query.value(i));
    }
}

void Bench::replay(const std::vector<Step>& steps) {
    const bool postgres = m_db->Backend() == Studio::SqlBackend::PostgreSQL;
    for (const Step& step : steps) {
        if (!step.sequence.isEmpty()) {
            QSqlQuery next = postgres
                                 ? run(QStringLiteral("SELECT nextval('%1')").arg(step.sequence))
                                 : run(QStringLiteral("UPDATE sequence_counter SET next_value = "
                                                      "next_value + 1 WHERE sequence_name = ? "
                                                      "RETURNING next_value - 1"),
                                       {step.sequence});
            next.next();
            benchmark::DoNotOptimize(next.value(0));
            continue;
        }
        QSqlQuery query = run(step.statement);
        if (query.isSelect())
            readAll(query);
    }
}

void Bench::libraryLoad(benchmark::State& state) {
    const int size = static_cast<int>(state.range(0));
    install(m_db);
    for (auto _ : state)
        loadDocument(m_sized[size], size);
    state.counters["columns"] = size;
}

void Bench::directLoad(benchmark::State& state) {
    const Sized& sized = m_sized[static_cast<int>(state.range(0))];
    for (auto _ : state)
        replay(sized.loadSteps);
    state.counters["statements"] = static_cast<double>(sized.loadSteps.size());
}

void Bench::librarySave(benchmark::State& state) {
    const int size = static_cast<int>(state.range(0));
    const qint32 id = m_sized[size].saveDocument;
    install(m_db);
    for (auto _ : state) {
        state.PauseTiming();
        auto document = newDocument(id, size);
        state.ResumeTiming();
        saveDocument(*document);
        state.PauseTiming();
        document.reset();
        removeColumns(id);
        state.ResumeTiming();
    }
    state.counters["columns"] = size;
}

void Bench::directSave(benchmark::State& state) {
    const Sized& sized = m_sized[static_cast<int>(state.range(0))];
    QSqlDatabase direct = QSqlDatabase::database(m_direct);
    for (auto _ : state) {
        direct.transaction();
        replay(sized.saveSteps);
        direct.commit();
        state.PauseTiming();
        removeColumns(sized.saveDocument);
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(sized.saveSteps.size());
}

// The ids a save draws one by one: the library's kept query against the naive host's text.
void Bench::librarySequence(benchmark::State& state) {
    for (auto _ : state) {
        for (int64_t i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(m_db->NextSequenceValue(QStringLiteral("sq_eds_column")));
    }
}

void Bench::directSequence(benchmark::State& state) {
    replay(std::vector<Step>(1, Step{{}, QStringLiteral("sq_eds_column")}));
    const std::vector<Step> steps(static_cast<std::size_t>(state.range(0)),
                                  Step{{}, QStringLiteral("sq_eds_column")});
    for (auto _ : state)
        replay(steps);
}

// The console's application answers a message with its safe choice on the standard error stream
// instead of waiting for a user, so a save that fails shows here as an error.
void Bench::studioSave(benchmark::State& state) {
    install(m_db, std::make_shared<Studio::ConsoleApplication>());
    const std::unique_ptr<Studio::DocumentWindow> window(Studio::DocumentWindow::Open(
        m_sized[static_cast<int>(state.range(0))].loadDocument, *m_db));
    const bool allChanged = state.range(1) != 0;
    for (auto _ : state) {
        if (allChanged) {
            state.PauseTiming();
            // The window builds new editors for the document it reads back after each save.
            for (const auto& column : *window->findChild<XDataSourcesColumn*>()->Columns()) {
                column->setDirty(true);
                column->setKeyDirty(column->Is_Key());
            }
            state.ResumeTiming();
        }
        if (!window->Save()) {
            state.SkipWithError("the studio did not save the document");
            break;
        }
    }
    state.counters["columns"] = static_cast<double>(state.range(0));
}

void Bench::Register() {
    const std::pair<const char*, void (Bench::*)(benchmark::State&)> benchmarks[] = {
        {"/LibraryInitEdit", &Bench::libraryLoad},
        {"/DirectLoadStatements", &Bench::directLoad},
        {"/LibrarySaveData", &Bench::librarySave},
        {"/DirectSaveStatements", &Bench::directSave},
    };
    for (const auto& [name, function] : benchmarks) {
        auto* registered = benchmark::RegisterBenchmark(
            (m_label + name).c_str(),
            [this, function](benchmark::State& state) { (this->*function)(state); });
        for (const int size : Sizes)
            registered->Arg(size);
        registered->Unit(benchmark::kMillisecond);
    }
    const std::pair<const char*, void (Bench::*)(benchmark::State&)> sequences[] = {
        {"/LibraryNextSequenceValue", &Bench::librarySequence},
        {"/DirectNextval", &Bench::directSequence},
    };
    for (const auto& [name, function] : sequences) {
        benchmark::RegisterBenchmark(
            (m_label + name).c_str(),
            [this, function](benchmark::State& state) { (this->*function)(state); })
            ->Arg(100)
            ->Arg(1000)
            ->Unit(benchmark::kMillisecond);
    }
    auto* save = benchmark::RegisterBenchmark(
        (m_label + "/StudioSave").c_str(), [this](benchmark::State& state) { studioSave(state); });
    for (const int size : Sizes)
        save->Args({size, 0})->Args({size, 1});
    save->Unit(benchmark::kMillisecond);
}

QSqlDatabase directConnection(const QString& driver, const QString& name) {
    return QSqlDatabase::addDatabase(driver, name);
}

// A database of its own on the test server, dropped at the end.
class PostgresDatabase {
public:
    explicit PostgresDatabase(const QString& server)
        : m_url(server)
        , m_name(QStringLiteral("orvane_bench_%1").arg(QCoreApplication::applicationPid())) {
        administer(QStringLiteral("DROP DATABASE IF EXISTS ") + m_name);
        administer(QStringLiteral("CREATE DATABASE ") + m_name);
    }
    ~PostgresDatabase() { administer(QStringLiteral("DROP DATABASE IF EXISTS ") + m_name); }

    QString Connection() const {
        QUrl url = m_url;
        url.setPath(QLatin1Char('/') + m_name);
        return url.toString();
    }
    QSqlDatabase Direct(const QString& connectionName) const {
        QSqlDatabase database = connect(connectionName);
        database.setDatabaseName(m_name);
        return database;
    }

private:
    QSqlDatabase connect(const QString& connectionName) const {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connectionName);
        database.setHostName(m_url.host());
        database.setPort(m_url.port(5432));
        database.setUserName(m_url.userName());
        database.setPassword(m_url.password());
        return database;
    }

    void administer(const QString& statement) const {
        const QString name = QStringLiteral("document_bench_admin");
        {
            QSqlDatabase database = connect(name);
            database.setDatabaseName(m_url.path().mid(1));
            if (!database.open() || !QSqlQuery(database).exec(statement))
                throw std::runtime_error("cannot run on the PostgreSQL server: " +
                                         statement.toStdString());
            database.close();
        }
        QSqlDatabase::removeDatabase(name);
    }

    QUrl m_url;
    QString m_name;
};

} // namespace

int main(int argc, char** argv) {
    QtBenchmarkApp app(argc, argv);
    if (!app.Ready())
        return 1;
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("bench.db"));
    QSqlDatabase sqliteDirect =
        directConnection(QStringLiteral("QSQLITE"), QStringLiteral("document_bench_sqlite"));
    sqliteDirect.setDatabaseName(file);
    std::vector<std::unique_ptr<Bench>> benches;
    benches.push_back(std::make_unique<Bench>("SQLite", file, sqliteDirect));
    QSqlQuery(sqliteDirect).exec(QStringLiteral("PRAGMA foreign_keys = ON"));

    std::unique_ptr<PostgresDatabase> postgres;
    const QString server = qEnvironmentVariable("ORVANE_TEST_PG");
    if (!server.isEmpty()) {
        postgres = std::make_unique<PostgresDatabase>(server);
        benches.push_back(
            std::make_unique<Bench>("PostgreSQL", postgres->Connection(),
                                    postgres->Direct(QStringLiteral("document_bench_postgres"))));
    }
    std::vector<RatioReporter::Ratio> ratios;
    for (const auto& bench : benches) {
        bench->Register();
        const std::string& label = bench->Label();
        ratios.push_back({"InitEdit / its statements as text, " + label, label + "/LibraryInitEdit",
                          label + "/DirectLoadStatements"});
        ratios.push_back({"SaveData in one transaction / its statements as text, " + label,
                          label + "/LibrarySaveData", label + "/DirectSaveStatements"});
        ratios.push_back({"ids drawn one by one / the sequence statement as text, by ids, " + label,
                          label + "/LibraryNextSequenceValue", label + "/DirectNextval"});
    }
    RatioReporter reporter(std::move(ratios));
    app.Run(reporter);
    benches.clear();
    return 0;
}
