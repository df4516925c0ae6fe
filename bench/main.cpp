// korm_bench [--quick | --all] [options of Google Benchmark, --benchmark_filter=REGEX first of all]
#include <cstdlib>
#include <cstring>

#include "rows.h"
#include "threads.h"

// Taken by the library instead of the core library's: rows are measured on one thread.
extern "C" std::int32_t ownGetNumThreads() { return bench::threadsAllowed; }

int main(int argc, char** argv) {
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--quick")) bench::settings.quick = true;
        else if (!std::strcmp(argv[i], "--all")) bench::settings.all = true;
        else argv[kept++] = argv[i];
    }
    argc = kept;
    bench::addMatrixSums();
    bench::addTransposedSums();
    bench::addScaledMatrices();
    bench::addVectorSums();
    bench::addConstants();
    bench::addConstantsFirst();
    bench::addSingles();
    bench::addThreadRows();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    const kormLibVersion* const version = kormGetLibVersion();
    benchmark::AddCustomContext("library", std::string(version->name) + ", " + version->version);
    benchmark::AddCustomContext("compiler", KORM_BENCH_COMPILER);
    benchmark::AddCustomContext("flags", KORM_BENCH_FLAGS);
    benchmark::AddCustomContext("eigen", std::to_string(EIGEN_WORLD_VERSION) + "." +
                                             std::to_string(EIGEN_MAJOR_VERSION) + "." +
                                             std::to_string(EIGEN_MINOR_VERSION));
    benchmark::AddCustomContext("mode", bench::settings.quick ? "quick" : bench::settings.all ? "all" : "default");
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
