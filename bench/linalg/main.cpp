// korm_linalg_bench [--quick] [--filter TEXT]: LU, solve, inverse and determinant beside what one would use otherwise.
//
// Peers that the build didn't find are named and left out.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "rows.h"
#include "side_by_side.h"

// Taken by the library instead of the core library's: everything is measured on one thread.
extern "C" __attribute__((visibility("default"))) std::int32_t ownGetNumThreads();
extern "C" std::int32_t ownGetNumThreads() { return 1; }

namespace {

std::string processorName() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);) {
        const std::size_t colon = line.find(": ");
        if (line.compare(0, 10, "model name") == 0 && colon != std::string::npos) return line.substr(colon + 2);
    }
    return "an unknown processor";
}

}  // namespace

int main(int argc, char** argv) {
    // OpenBLAS looks at these before main: one thread, and kernels for the same instruction set as everybody's.
    if (std::getenv("OPENBLAS_CORETYPE") == nullptr) {
        setenv("OPENBLAS_CORETYPE", "Core2", 1);
        setenv("OPENBLAS_NUM_THREADS", "1", 1);
        execv("/proc/self/exe", argv);
    }
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--quick")) linalgbench::options.quick = true;
        else if (!std::strcmp(argv[i], "--filter") && i + 1 < argc) linalgbench::options.filter = argv[++i];
        else return std::fprintf(stderr, "usage: korm_linalg_bench [--quick] [--filter TEXT]\n"), 2;
    }
    std::printf(
        "# LU, solve, inverse, determinant: measured\n\n"
        "Written by `scripts/bench linalg`. Packed arrays on one thread of %s; contenders take turns in one run and\n"
        "medians are compared; all are compiled with %s, and OpenBLAS uses its %s kernels.\n"
        "`cache`: 24 KiB of matrices. `shuffled`: up to a hundred thousand objects with their rows in random order, "
        "so\n"
        "that no branch on a pivot can be learnt. Results are compared before anything is timed.\n\n",
        processorName().c_str(), KORM_BENCH_COMPILER " " KORM_BENCH_FLAGS, std::getenv("OPENBLAS_CORETYPE"));
#ifndef LINALG_BENCH_LAPACK
    std::printf("Without LAPACK: the build found none (Debian: libopenblas-pthread-dev, liblapacke-dev).\n\n");
#endif
#ifndef LINALG_BENCH_GLM
    std::printf("Without GLM: the build found none (Debian: libglm-dev).\n\n");
#endif
#ifndef LINALG_BENCH_CGLM
    std::printf("Without cglm: the build found none (Debian: libcglm-dev).\n\n");
#endif
    linalgbench::measureDecompositions();
    linalgbench::measureSolutions();
    linalgbench::measureInverses();
    linalgbench::measureDeterminants();
    return linalgbench::resultsDiffered() ? 1 : 0;
}
