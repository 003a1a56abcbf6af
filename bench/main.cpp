#include "bench/suite.h"

#include <benchmark/benchmark.h>

#include <QLoggingCategory>
#include <QTemporaryDir>

#include <malloc.h>

#include <limits>
#include <string_view>

namespace {

/// Makes the allocator keep released memory, as in a long-lived program. Otherwise the time of a
/// benchmark would depend on how those before it had tuned the allocator.
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

/// reads such a file, and prints how much memory that took
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
