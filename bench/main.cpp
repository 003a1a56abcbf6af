#include "bench/suite.h"

#include <benchmark/benchmark.h>

#include <QLoggingCategory>
#include <QTemporaryDir>

#include <malloc.h>

#include <limits>
#include <string_view>

namespace {

/// Keeps what is released, as a long-lived program does after a while: otherwise the time of a
/// benchmark would hang on whether those before it taught the allocator to keep pages.
void keepMemory() {
    mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

int runSuite(int argc, char* argv[]) {
    keepMemory();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    const QTemporaryDir folder;
    const bench::Tables tables(folder.path());
    bench::registerFormats(tables);
    bench::registerCalc();
    bench::registerFloors(tables);
    bench::registerPeer(tables);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace

/// tintwell-bench [--benchmark_...]      runs the suite on tables in a temporary folder
/// tintwell-bench --make-cube FILE       makes a cube file of 65 points per axis
/// tintwell-bench --peak-memory FILE     reads that, and prints what it took
int main(int argc, char* argv[]) {
    QLoggingCategory::setFilterRules(QStringLiteral("tintwell.*=false"));
    const std::string_view mode = argc == 3 ? argv[1] : "";
    const QString path = QString::fromLocal8Bit(argv[argc - 1]);
    if (mode == "--make-cube") {
        return bench::makeTable(bench::formats().front(), 65, path) ? 0 : 1;
    }
    if (mode == "--peak-memory") {
        return bench::printPeakMemory(path) ? 0 : 1;
    }
    return runSuite(argc, argv);
}
