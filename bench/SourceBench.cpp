// Reading delimited files: the preview's head of a 1 GB file beside that of a 1 KB file; type
// detection over 1,000,000 records of 20 fields beside a bare libcsv pass over the same bytes;
// Detect Columns on a 500-column header, plan, proposal dialog and grid included. The last
// lines printed are the ratios.

#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/sources/ColumnDetector.h"
#include "orvane/sources/SourceHead.h"
#include "studio/app/ConsoleApplication.h"

#include "bench/QtBenchmarkApp.h"
#include "bench/RatioReporter.h"

#include <QDialog>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <csv.h>
#include <memory>

namespace {

using namespace Orvane;

constexpr qint64 HugeSize = qint64(1) << 30;
constexpr int Records = 1'000'000;
constexpr int Fields = 20;

struct Files {
    QTemporaryDir folder;
    QString small = folder.filePath(QStringLiteral("small.csv"));
    QString huge = folder.filePath(QStringLiteral("huge.csv"));
    QString wide = folder.filePath(QStringLiteral("wide.csv"));
    qint64 wideBytes = 0;
};
Files* files = nullptr;

QByteArray record(int n) {
    QByteArray line;
    for (int field = 0; field < Fields; ++field) {
        if (field > 0)
            line += ',';
        switch (field % 4) {
        case 0:
            line += QByteArray::number(n * 7 + field);
            break;
        case 1:
            line += QByteArray::number(n * 0.25 + field, 'f', 2);
            break;
        case 2:
            line += "2024-01-31 10:15";
            break;
        default:
            line += "cell_" + QByteArray::number(n % 977);
            break;
        }
    }
    return line + '\n';
}

void write(const QString& path, int records, qint64 size = 0) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        std::abort();
    QByteArray block;
    for (int n = 0; n < records; ++n) {
        block += record(n);
        if (block.size() > (1 << 20)) {
            file.write(block);
            block.clear();
        }
    }
    file.write(block);
    // The rest of a huge file is sparse: nothing past the head is ever read.
    if (size > file.size() && !file.resize(size))
        std::abort();
}

void BM_PreviewSmallFile(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadSourceHead(files->small, QStringLiteral(","), 20));
}

void BM_PreviewHugeFile(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadSourceHead(files->huge, QStringLiteral(","), 20));
}

void BM_DetectTypes(benchmark::State& state) {
    for (auto _ : state) {
        const ColumnDetection detection =
            ColumnDetector::Detect(files->wide, QStringLiteral(","), Records);
        if (detection.records != Records)
            state.SkipWithError("not every record was read");
    }
    state.SetBytesProcessed(state.iterations() * files->wideBytes);
}

void noField(void*, size_t, void*) {}
void noRecord(int, void*) {}

void BM_BareLibcsv(benchmark::State& state) {
    QByteArray block(64 * 1024, Qt::Uninitialized);
    for (auto _ : state) {
        QFile file(files->wide);
        file.open(QIODevice::ReadOnly);
        csv_parser parser;
        csv_init(&parser, 0);
        csv_set_delim(&parser, ',');
        for (qint64 got; (got = file.read(block.data(), block.size())) > 0;)
            csv_parse(&parser, block.constData(), static_cast<size_t>(got), noField, noRecord,
                      nullptr);
        csv_fini(&parser, noField, noRecord, nullptr);
        csv_free(&parser);
    }
    state.SetBytesProcessed(state.iterations() * files->wideBytes);
}

// Answers the proposal with OK, as a user would.
class AcceptingApplication : public Studio::ConsoleApplication {
public:
    int ShowModal(QDialog& dialog) override {
        dialog.accept();
        return QDialog::Accepted;
    }
};

void BM_DetectColumns500(benchmark::State& state) {
    DetectedColumns detected;
    for (int i = 1; i <= 500; ++i)
        detected.append({QStringLiteral("Counter %1").arg(i), QStringLiteral("I"), i});
    for (auto _ : state) {
        state.PauseTiming();
        auto editor = std::make_unique<XDataSourcesColumn>();
        editor->InitEdit(std::make_shared<CDataSourcesColumns>());
        state.ResumeTiming();
        editor->DetectColumns(detected);
        state.PauseTiming();
        editor.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(BM_PreviewSmallFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PreviewHugeFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DetectTypes)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_BareLibcsv)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_DetectColumns500)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    QtBenchmarkApp app(argc, argv);
    if (!app.Ready())
        return 1;
    Files data;
    files = &data;
    write(data.small, 12);
    write(data.huge, 2000, HugeSize);
    write(data.wide, Records);
    data.wideBytes = QFile(data.wide).size();
    HostRegistry::Install({nullptr, nullptr, std::make_shared<AcceptingApplication>(), nullptr});
    RatioReporter reporter(
        {{"preview of 1 GB / of 1 KB", "BM_PreviewHugeFile", "BM_PreviewSmallFile"},
         {"type detection / bare libcsv", "BM_DetectTypes/iterations:3",
          "BM_BareLibcsv/iterations:3"}});
    const int status = app.Run(reporter);
    HostRegistry::Uninstall();
    return status;
}
