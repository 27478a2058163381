#pragma once

#include <benchmark/benchmark.h>

#include <iomanip>
#include <map>
#include <string>
#include <vector>

// The usual console table, then each library figure as a multiple of its anchor measured in
// the same run, in plain text so that logs stay readable.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    struct Ratio {
        std::string label;
        std::string measured; // benchmark names
        std::string anchor;
    };

    explicit RatioReporter(std::vector<Ratio> ratios)
        : ConsoleReporter(OO_Tabular)
        , m_ratios(std::move(ratios)) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration)
                m_realTime[run.benchmark_name()] = run.GetAdjustedRealTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void Finalize() override {
        ConsoleReporter::Finalize();
        for (const Ratio& ratio : m_ratios)
            print(ratio);
    }

private:
    void print(const Ratio& ratio) {
        const auto measured = m_realTime.find(ratio.measured);
        const auto anchor = m_realTime.find(ratio.anchor);
        if (measured == m_realTime.end() || anchor == m_realTime.end() || anchor->second <= 0)
            return;
        GetOutputStream() << ratio.label << ": " << std::fixed << std::setprecision(2)
                          << measured->second / anchor->second << '\n';
    }

    std::vector<Ratio> m_ratios;
    std::map<std::string, double> m_realTime;
};
