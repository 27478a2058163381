// Filling the column layout editor with a document of 50, 500, 2,000 and 10,000 columns, beside
// a bare QTableWidget filled with the same texts in the same way (one column count, redrawing
// off). The last line printed is the ratio of the two at each size, with their growth.

#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"

#include "bench/QtBenchmarkApp.h"
#include "bench/RatioReporter.h"
#include <QTableView>
#include <QTableWidget>
#include <array>

#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace {

using Orvane::CDataSourcesColumns;
using Orvane::XDataSourcesColumn;

constexpr int RowCount = 6;
using ColumnTexts = std::array<QString, RowCount>;

const char* const GridFill = "BM_ColumnGridFill";
const char* const BareFill = "BM_BareTableFill";

// A loaded document: every column stored, a type of each kind, every fifth one a key.
std::shared_ptr<CDataSourcesColumns> document(int columnCount) {
    static const char* const codes[] = {"I", "F", "S", "E", "D"};
    auto columns = std::make_shared<CDataSourcesColumns>();
    for (int i = 1; i <= columnCount; ++i) {
        const auto column =
            columns->Add(QStringLiteral("Counter %1").arg(i, 3, 10, QLatin1Char('0')));
        column->setColumn_Id(i);
        column->setColumn_Type(QLatin1String(codes[i % 5]));
        column->setPosition(i);
        if (i % 5 == 0) {
            column->setKeyFld_Id(1000 + i);
            column->setKey_Ordinal(i / 5);
            column->setKeyEntity(QStringLiteral("Cell"));
            column->setKeyFld_Name(QStringLiteral("cell_key_%1").arg(i));
        }
    }
    return columns;
}

// The texts the editor shows for the document, read back from its grid.
std::vector<ColumnTexts> shownTexts(int columnCount) {
    XDataSourcesColumn editor;
    editor.InitEdit(document(columnCount));
    const auto* grid = editor.findChild<QTableView*>(QStringLiteral("fpsColumns"))->model();
    std::vector<ColumnTexts> texts(static_cast<std::size_t>(grid->columnCount()));
    for (int column = 0; column < grid->columnCount(); ++column) {
        for (int row = 0; row < RowCount; ++row)
            texts[static_cast<std::size_t>(column)][static_cast<std::size_t>(row)] =
                grid->index(row, column).data().toString();
    }
    return texts;
}

void BM_ColumnGridFill(benchmark::State& state) {
    const auto columns = document(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto editor = std::make_unique<XDataSourcesColumn>();
        state.ResumeTiming();
        editor->InitEdit(columns);
        state.PauseTiming();
        editor.reset();
        state.ResumeTiming();
    }
    state.counters["columns"] = static_cast<double>(state.range(0));
}

void BM_BareTableFill(benchmark::State& state) {
    const std::vector<ColumnTexts> texts = shownTexts(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto table = std::make_unique<QTableWidget>(RowCount, 0);
        state.ResumeTiming();
        table->setUpdatesEnabled(false);
        table->setColumnCount(static_cast<int>(texts.size()));
        for (std::size_t column = 0; column < texts.size(); ++column) {
            for (std::size_t row = 0; row < RowCount; ++row)
                table->setItem(static_cast<int>(row), static_cast<int>(column),
                               new QTableWidgetItem(texts[column][row]));
        }
        table->setUpdatesEnabled(true);
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
    state.counters["columns"] = static_cast<double>(texts.size());
}

BENCHMARK(BM_ColumnGridFill)
    ->Arg(50)
    ->Arg(500)
    ->Arg(2000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareTableFill)
    ->Arg(50)
    ->Arg(500)
    ->Arg(2000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QtBenchmarkApp app(argc, argv);
    if (!app.Ready())
        return 1;
    RatioReporter reporter(
        {{"column grid fill / bare QTableWidget fill, by columns", GridFill, BareFill}});
    return app.Run(reporter);
}
