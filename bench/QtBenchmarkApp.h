#pragma once

#include <QApplication>
#include <benchmark/benchmark.h>

// The start and end every benchmark program shares: an offscreen Qt application (unless the
// caller chose a platform) around Google Benchmark's command line.
class QtBenchmarkApp {
public:
    QtBenchmarkApp(int& argc, char** argv)
        : m_app((offscreenByDefault(), argc), argv) {
        benchmark::Initialize(&argc, argv);
        m_ready = !benchmark::ReportUnrecognizedArguments(argc, argv);
    }
    ~QtBenchmarkApp() { benchmark::Shutdown(); }

    // False when the command line held an argument the benchmarks do not know.
    bool Ready() const { return m_ready; }

    int Run(benchmark::BenchmarkReporter& reporter) {
        benchmark::RunSpecifiedBenchmarks(&reporter);
        return 0;
    }

private:
    static void offscreenByDefault() {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    QApplication m_app;
    bool m_ready = false;
};
