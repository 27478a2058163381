#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <iomanip>
#include <map>
#include <string>

// The usual console table, then for one benchmark run at several sizes the exponent k of its
// growth, time ~ size^k, fitted between the smallest and the largest size of the same run:
// 1 is linear, 2 quadratic. CPU time is used, which other work on a shared machine disturbs less.
class GrowthReporter : public benchmark::ConsoleReporter {
public:
    GrowthReporter(std::string label, std::string benchmarkName)
        : ConsoleReporter(OO_Tabular)
        , m_label(std::move(label))
        , m_prefix(std::move(benchmarkName) + "/") {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const std::string name = run.benchmark_name();
            if (run.run_type == Run::RT_Iteration && name.rfind(m_prefix, 0) == 0)
                m_cpuTime[std::stod(name.substr(m_prefix.size()))] = run.GetAdjustedCPUTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void Finalize() override {
        ConsoleReporter::Finalize();
        if (m_cpuTime.size() < 2)
            return;
        const auto& [smallSize, smallTime] = *m_cpuTime.begin();
        const auto& [largeSize, largeTime] = *m_cpuTime.rbegin();
        if (smallTime <= 0)
            return;
        GetOutputStream() << m_label << ": growth exponent " << std::fixed << std::setprecision(2)
                          << std::log(largeTime / smallTime) / std::log(largeSize / smallSize)
                          << " (" << smallSize << " to " << largeSize << ")\n";
    }

private:
    std::string m_label;
    std::string m_prefix;
    std::map<double, double> m_cpuTime; // by size
};
