// Loading and saving a 500-column ASCII document through the library on the studio's SQLite
// database, each beside the same statements executed directly through Qt Sql in the same run.
//
// - Load: CDataSourcesData::InitEdit of a stored document whose every column is mapped to a
//   dictionary field and every fifth is a key; the anchor runs the statements InitEdit sends (the
//   column query, the one batch field lookup, the settings query) and reads every value.
// - Save: SaveData of a new document's 500 columns, every fifth a key, in one transaction that
//   commits, as the studio saves; the anchor runs the same sequence steps and inserts in one
//   transaction. Both remove the rows they wrote while the clock is stopped.
// The last lines printed are the ratios.

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IRecordset.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "studio/app/DocumentStore.h"
#include "studio/app/StudioApplication.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/SqlQueryService.h"
#include "studio/db/TransactionScope.h"
#include "studio/dictionary/DictionaryService.h"
#include "studio/widgets/StudioWidgetFactory.h"

#include "bench/QtBenchmarkApp.h"
#include "bench/RatioReporter.h"
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <stdexcept>

namespace {

using namespace Orvane;
using Studio::SqlQueryService;

constexpr int ColumnCount = 500;
constexpr int KeyEvery = 5;
// Far above what the sequences hand out while the benchmarks run.
constexpr int FirstBenchId = 50000000;
const QString DirectConnection = QStringLiteral("document_bench_direct");

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

// The studio's services on a fresh SQLite file, and a bare Qt Sql connection to the same file.
struct Bench {
    QTemporaryDir folder;
    std::shared_ptr<SqlQueryService> db;
    std::shared_ptr<Studio::DictionaryService> dictionary;
    std::unique_ptr<Studio::DocumentStore> store;
    std::shared_ptr<Studio::StudioDocumentType> type = Studio::StudioDocumentType::Ascii();
    qint32 loadDocument = 0;
    qint32 saveDocument = 0;
    // The host's row of the document to load, read once: the host has it before InitEdit.
    std::shared_ptr<IRecordset> loadRow;
    std::vector<Step> loadSteps;
    std::vector<Step> saveSteps;

    Bench();
    ~Bench();
    QSqlDatabase direct() const { return QSqlDatabase::database(DirectConnection); }
    void install(std::shared_ptr<IQueryService> query);
};

Bench* bench = nullptr;

QSqlQuery run(const QString& statement, const QVariantList& values = {}) {
    QSqlQuery query(bench->direct());
    query.setForwardOnly(true);
    if (!query.prepare(statement))
        throw std::runtime_error(query.lastError().text().toStdString());
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (!query.exec())
        throw std::runtime_error(query.lastError().text().toStdString());
    return query;
}

void insertDocumentRow(qint32 id, const QString& name) {
    run(QStringLiteral("INSERT INTO eds_document (id, name, eds_type, entity_id, is_time_series, "
                       "doc_type) VALUES (?, ?, 'A', 7, 'N', 'ASCII Data Source')"),
        {id, name});
    run(QStringLiteral("INSERT INTO eds_ascii_file (eds_id, filename, separator) VALUES "
                       "(?, '/data/bench.csv', ',')"),
        {id});
}

// 500 columns, each mapped to a field of its own, every fifth a key on Cell_Name or CI.
void storeLoadDocument(qint32 id) {
    insertDocumentRow(id, QStringLiteral("Bench Load"));
    for (int i = 1; i <= ColumnCount; ++i) {
        const qint32 key = FirstBenchId + i;
        run(QStringLiteral("INSERT INTO qvd_field_def (field_id, field_desc, field_aggregator, "
                           "datatype, field_group_id, technologies) VALUES (?, ?, 1, 'I', 3, "
                           "'GSM, LTE')"),
            {key, QStringLiteral("Bench counter %1").arg(i)});
        run(QStringLiteral("INSERT INTO qvd_dict_name (field_id, entity_id, name, report_header, "
                           "report_header2) VALUES (?, 7, ?, 'Bench', ?)"),
            {key, QStringLiteral("Bench_%1").arg(i, 3, 10, QLatin1Char('0')), i});
        run(QStringLiteral("INSERT INTO qvd_field_tech (field_id, tech_id) VALUES (?, 1)"), {key});
        run(QStringLiteral("INSERT INTO qvd_field_tech (field_id, tech_id) VALUES (?, 3)"), {key});
        run(QStringLiteral("INSERT INTO eds_column (col_id, eds_id, col_name, col_type, "
                           "col_position, is_timestamp, editor_position) VALUES "
                           "(?, ?, ?, 'I', ?, 'N', ?)"),
            {key, id, QStringLiteral("C%1").arg(i, 3, 10, QLatin1Char('0')), i, i});
        run(QStringLiteral("INSERT INTO qvd_eds_def (eds_id, col_id, field_id) VALUES (?, ?, ?)"),
            {id, key, key});
        if (i % KeyEvery == 0)
            run(QStringLiteral("INSERT INTO eds_primarykey VALUES (?, ?, ?, ?, ?)"),
                {key, id, key, 1 + (i / KeyEvery) % 2, i / KeyEvery});
    }
}

std::unique_ptr<CDataSourcesData> newDocument(qint32 id) {
    auto document = std::make_unique<CDataSourcesData>();
    document->setDocId(id);
    document->setIsNew(true);
    document->setEntity(bench->dictionary->EntityById(7));
    CDataSourcesColumns& columns = *document->Columns();
    columns.setEntity(document->Entity());
    for (int i = 1; i <= ColumnCount; ++i) {
        const auto column = columns.Add(QStringLiteral("N%1").arg(i, 3, 10, QLatin1Char('0')));
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

void removeColumns(qint32 id) {
    run(QStringLiteral("DELETE FROM eds_primarykey WHERE eds_id = ?"), {id});
    run(QStringLiteral("DELETE FROM eds_column WHERE eds_id = ?"), {id});
}

void loadDocument() {
    CDataSourcesData document;
    document.InitEdit(*bench->loadRow, bench->type);
    if (document.Columns()->Count() != ColumnCount)
        throw std::runtime_error("the benchmark document did not load whole");
}

void saveDocument(CDataSourcesData& document) {
    Studio::TransactionScope transaction(*bench->db);
    document.SaveData();
    transaction.Commit();
}

Bench::Bench() {
    db = std::make_shared<SqlQueryService>(folder.filePath(QStringLiteral("bench.db")));
    dictionary = std::make_shared<Studio::DictionaryService>(*db);
    store = std::make_unique<Studio::DocumentStore>(*db);
    QSqlDatabase connection =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), DirectConnection);
    connection.setDatabaseName(folder.filePath(QStringLiteral("bench.db")));
    if (!connection.open())
        throw std::runtime_error(connection.lastError().text().toStdString());
    run(QStringLiteral("PRAGMA foreign_keys = ON"));
    loadDocument = store->NewId();
    saveDocument = store->NewId();
    connection.transaction();
    storeLoadDocument(loadDocument);
    insertDocumentRow(saveDocument, QStringLiteral("Bench Save"));
    connection.commit();
    loadRow = store->Row(loadDocument);
}

Bench::~Bench() {
    HostRegistry::Uninstall();
    QSqlDatabase::database(DirectConnection).close();
    QSqlDatabase::removeDatabase(DirectConnection);
}

void Bench::install(std::shared_ptr<IQueryService> query) {
    HostRegistry::Install({std::move(query), dictionary,
                           std::make_shared<Studio::StudioApplication>(),
                           std::make_shared<Studio::StudioWidgetFactory>(dictionary)});
}

// What the library sends for one load and one save, recorded once; the dictionary reads
// through the recorder too, so that its batch lookup is among the load's statements.
void recordSteps() {
    auto recorder = std::make_shared<Recorder>(*bench->db);
    const auto dictionary = bench->dictionary;
    bench->dictionary = std::make_shared<Studio::DictionaryService>(*recorder);
    bench->install(recorder);
    loadDocument();
    bench->loadSteps = std::move(recorder->steps);
    const auto document = newDocument(bench->saveDocument);
    recorder->steps.clear();
    saveDocument(*document);
    bench->saveSteps = std::move(recorder->steps);
    removeColumns(bench->saveDocument);
    bench->dictionary = dictionary;
    bench->install(bench->db);
}

void readAll(QSqlQuery& query) {
    const int fields = query.record().count();
    while (query.next()) {
        for (int i = 0; i < fields; ++i)
            benchmark::DoNotOptimize(query.value(i));
    }
}

void replay(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        if (!step.sequence.isEmpty()) {
            QSqlQuery next = run(QStringLiteral("UPDATE sequence_counter SET next_value = "
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

const char* const LibraryLoad = "BM_LibraryInitEdit";
const char* const DirectLoad = "BM_DirectLoadStatements";
const char* const LibrarySave = "BM_LibrarySaveData";
const char* const DirectSave = "BM_DirectSaveStatements";

void BM_LibraryInitEdit(benchmark::State& state) {
    for (auto _ : state)
        loadDocument();
    state.counters["columns"] = ColumnCount;
}

void BM_DirectLoadStatements(benchmark::State& state) {
    for (auto _ : state)
        replay(bench->loadSteps);
    state.counters["statements"] = static_cast<double>(bench->loadSteps.size());
}

void BM_LibrarySaveData(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto document = newDocument(bench->saveDocument);
        state.ResumeTiming();
        saveDocument(*document);
        state.PauseTiming();
        document.reset();
        removeColumns(bench->saveDocument);
        state.ResumeTiming();
    }
    state.counters["columns"] = ColumnCount;
}

void BM_DirectSaveStatements(benchmark::State& state) {
    for (auto _ : state) {
        bench->direct().transaction();
        replay(bench->saveSteps);
        bench->direct().commit();
        state.PauseTiming();
        removeColumns(bench->saveDocument);
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(bench->saveSteps.size());
}

// What a save adds so that it sees another session's: checking and moving the change stamp, one
// statement in the save's transaction.
void BM_ChangeStampClaim(benchmark::State& state) {
    // The stamp goes on counting over the runs the benchmark makes of this function.
    static qint32 changeStamp = 0;
    for (auto _ : state) {
        state.PauseTiming();
        Studio::TransactionScope transaction(*bench->db);
        state.ResumeTiming();
        bench->store->Claim(bench->saveDocument, changeStamp++);
        state.PauseTiming();
        transaction.Commit();
        state.ResumeTiming();
    }
}

BENCHMARK(BM_LibraryInitEdit)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DirectLoadStatements)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LibrarySaveData)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DirectSaveStatements)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ChangeStampClaim)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    QtBenchmarkApp app(argc, argv);
    if (!app.Ready())
        return 1;
    {
        Bench setUp;
        bench = &setUp;
        recordSteps();
        RatioReporter reporter({
            {"InitEdit of a 500-column document / its statements through Qt Sql", LibraryLoad,
             DirectLoad},
            {"SaveData of 500 new columns / its statements through Qt Sql", LibrarySave,
             DirectSave},
        });
        app.Run(reporter);
        bench = nullptr;
    }
    return 0;
}
