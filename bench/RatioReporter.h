#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <map>
#include <string>
#include <vector>

// The usual console table, then each library figure as a multiple of its anchor measured in the
// same run, in plain text so that logs stay readable. For benchmarks run at several sizes
// ("name/size") the ratio is printed at every size with the growth exponent k of both, time ~
// size^k between the smallest and the largest size (1 is linear); a benchmark without a size has
// one ratio. Ratios use real time with the ratio of CPU times beside them: other work on a shared
// machine disturbs CPU time less, but it leaves out a database server's own work. Exponents use
// CPU time. Run with --benchmark_repetitions=N (and --benchmark_enable_random_interleaving=true, so
// that a disturbance falls on library and anchor alike) and each figure is the median of its N
// runs: a server on the same cores makes single runs of one build differ by a third.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    struct Ratio {
        std::string label;
        std::string measured; // benchmark names without the size
        std::string anchor;
    };

    explicit RatioReporter(std::vector<Ratio> ratios)
        : ConsoleReporter(OO_Tabular)
        , m_ratios(std::move(ratios)) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const std::string name = run.benchmark_name();
            const auto slash = name.rfind('/');
            const bool sized = slash != std::string::npos && slash + 1 < name.size() &&
                               name.find_first_not_of("0123456789", slash + 1) == std::string::npos;
            Runs& times = sized ? m_times[name.substr(0, slash)][std::stod(name.substr(slash + 1))]
                                : m_times[name][0];
            times.real.push_back(run.GetAdjustedRealTime());
            times.cpu.push_back(run.GetAdjustedCPUTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void Finalize() override {
        ConsoleReporter::Finalize();
        for (const Ratio& ratio : m_ratios)
            print(ratio);
    }

private:
    struct Times {
        double real = 0;
        double cpu = 0;
    };
    // Every repetition of one benchmark at one size.
    struct Runs {
        std::vector<double> real;
        std::vector<double> cpu;
        Times Median() const { return {median(real), median(cpu)}; }
    };
    using BySize = std::map<double, Runs>;

    static double median(std::vector<double> values) {
        if (values.empty())
            return 0;
        const auto middle = values.begin() + values.size() / 2;
        std::nth_element(values.begin(), middle, values.end());
        if (values.size() % 2 != 0)
            return *middle;
        return (*middle + *std::max_element(values.begin(), middle)) / 2;
    }

    void print(const Ratio& ratio) {
        const auto measured = m_times.find(ratio.measured);
        const auto anchor = m_times.find(ratio.anchor);
        if (measured == m_times.end() || anchor == m_times.end())
            return;
        std::ostream& out = GetOutputStream();
        out << ratio.label << ':' << std::fixed << std::setprecision(2);
        for (const auto& [size, runs] : measured->second) {
            const auto other = anchor->second.find(size);
            if (other == anchor->second.end())
                continue;
            const Times times = runs.Median();
            const Times base = other->second.Median();
            if (base.real > 0 && base.cpu > 0)
                out << "  " << (size > 0 ? std::to_string(static_cast<long long>(size)) + ": " : "")
                    << times.real / base.real << " (cpu " << times.cpu / base.cpu << ')';
        }
        if (measured->second.size() > 1)
            out << "  growth exponent " << exponent(measured->second) << " (anchor "
                << exponent(anchor->second) << ')';
        out << '\n';
    }

    static double exponent(const BySize& times) {
        if (times.size() < 2)
            return NAN;
        const double small = times.begin()->second.Median().cpu;
        const double large = times.rbegin()->second.Median().cpu;
        if (small <= 0)
            return NAN;
        return std::log(large / small) / std::log(times.rbegin()->first / times.begin()->first);
    }

    std::vector<Ratio> m_ratios;
    std::map<std::string, BySize> m_times;
};
