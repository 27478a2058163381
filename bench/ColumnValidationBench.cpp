// Validating a column layout before the save, at 500, 2,000 and 10,000 columns. The last line
// printed is the growth exponent of the time with the number of columns: 1 is linear.

#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/host/IField.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"

#include "bench/GrowthReporter.h"
#include "bench/QtBenchmarkApp.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

using Orvane::CDataSourcesColumns;
using Orvane::XDataSourcesColumn;

// A dictionary field that has only a name, all that validation reads of it.
class NamedField : public Orvane::IField {
public:
    explicit NamedField(QString name)
        : m_name(std::move(name)) {}
    qint32 Field_Id() const override { return 0; }
    void setField_Id(qint32) override {}
    QString Field_Name() const override { return m_name; }
    qint32 Entity_Id() const override { return 0; }
    QString Entity_Label() const override { return {}; }
    QString Description() const override { return {}; }
    QString Heading1() const override { return {}; }
    QString Heading2() const override { return {}; }
    QString TimeAggregator() const override { return {}; }
    QString ElementAggregator() const override { return {}; }
    qint32 AggregationPairId() const override { return 0; }
    QString DataType() const override { return QStringLiteral("I"); }
    QString Technologies() const override { return {}; }
    qint32 TechnologyMask() const override { return 0; }
    qint32 Style() const override { return 0; }
    qint32 StyleColour() const override { return 0; }
    QString ExtraColumnValue(const QString&) const override { return {}; }
    bool Save(const Orvane::FieldSaveRequest&, QVariant&) override { return false; }
    Orvane::FieldSaveError LastError() const override { return {}; }

private:
    QString m_name;
};

// A layout that passes every check, so that each check runs over every column: distinct names,
// positions, fields and key ordinals; every other column is mapped to a field and every fifth of
// the rest is a key.
std::shared_ptr<CDataSourcesColumns> validLayout(int count) {
    auto columns = std::make_shared<CDataSourcesColumns>();
    for (int i = 1; i <= count; ++i) {
        const auto column = columns->Add(QStringLiteral("Counter %1").arg(i));
        column->setColumn_Id(i);
        column->setColumn_Type(QStringLiteral("I"));
        column->setPosition(i);
        if (i % 2 == 0) {
            column->setField(std::make_shared<NamedField>(QStringLiteral("counter_%1").arg(i)));
        } else if (i % 5 == 0) {
            column->setKeyFld_Id(1000 + i);
            column->setKey_Ordinal(i / 5);
            column->setKeyEntity(QStringLiteral("Cell"));
            column->setKeyFld_Name(QStringLiteral("cell_key_%1").arg(i));
        }
    }
    return columns;
}

void BM_IsValid(benchmark::State& state) {
    XDataSourcesColumn editor;
    editor.InitEdit(validLayout(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        const bool valid = editor.IsValid(QStringLiteral("Save Data Source"));
        if (!valid)
            state.SkipWithError("the layout did not validate");
        benchmark::DoNotOptimize(valid);
    }
    state.counters["columns"] = static_cast<double>(state.range(0));
}

BENCHMARK(BM_IsValid)->Arg(500)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QtBenchmarkApp app(argc, argv);
    if (!app.Ready())
        return 1;
    GrowthReporter reporter("IsValid", "BM_IsValid");
    return app.Run(reporter);
}
