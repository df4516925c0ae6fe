// korm_linalg_bench [--quick] [--filter TEXT] [--out FILE.json]: LU, solve, inverse and determinant beside what one would
// use otherwise.
//
// Peers that the build didn't find are left out. bench/linalg/report.py makes tables of FILE.json.
#include <korm.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "rows.h"
#include "side_by_side.h"

// Taken by the library instead of the core library's: everything is measured on one thread.
extern "C" __attribute__((visibility("default"))) std::int32_t ownGetNumThreads();
extern "C" std::int32_t ownGetNumThreads() { return 1; }

namespace {

bool write(const char* name, const std::vector<linalgbench::Measured>& rows,
           const std::vector<linalgbench::ExtendedRow>& extended) {
    std::FILE* const to = std::fopen(name, "w");
    if (to == nullptr) return false;
    std::fprintf(to,
                 "{\"context\": {\"library\": \"%s, %s\", \"compiler\": \"%s\", \"flags\": \"%s\", "
                 "\"openblasKernels\": \"%s\"},\n",
                 kormGetLibVersion()->name, kormGetLibVersion()->version, KORM_BENCH_COMPILER, KORM_BENCH_FLAGS,
                 std::getenv("OPENBLAS_CORETYPE"));
    std::fprintf(to, " \"rows\": [");
    linalgbench::writeRows(to, rows);
    std::fprintf(to, "],\n \"x87\": {\"gigahertz\": %.4g, \"multiplication\": %.4g, \"rows\": [",
                 linalgbench::cyclesPerNanosecond(), linalgbench::x87MultiplicationCycles());
    const char* before = "";
    for (const linalgbench::ExtendedRow& row : extended) {
        std::fprintf(to, "%s\n    {\"name\": \"%s\", \"multiplications\": %d, \"additions\": %d, \"cycles\": %.4g}",
                     before, row.name.c_str(), row.multiplications, row.additions, row.cycles);
        before = ",";
    }
    std::fprintf(to, "]}}\n");
    return std::fclose(to) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    // OpenBLAS looks at these before main: one thread, and kernels for the same instruction set as everybody's.
    if (std::getenv("OPENBLAS_CORETYPE") == nullptr) {
        setenv("OPENBLAS_CORETYPE", "Core2", 1);
        setenv("OPENBLAS_NUM_THREADS", "1", 1);
        execv("/proc/self/exe", argv);
    }
    const char* file = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--quick")) linalgbench::options.quick = true;
        else if (!std::strcmp(argv[i], "--filter") && i + 1 < argc) linalgbench::options.filter = argv[++i];
        else if (!std::strcmp(argv[i], "--out") && i + 1 < argc) file = argv[++i];
        else return std::fprintf(stderr, "usage: korm_linalg_bench [--quick] [--filter TEXT] [--out FILE.json]\n"), 2;
    }
    std::vector<linalgbench::Measured> rows;
    linalgbench::measureDecompositions(rows);
    linalgbench::measureSolutions(rows);
    linalgbench::measureInverses(rows);
    linalgbench::measureDeterminants(rows);
    const auto extended = linalgbench::measureExtendedDeterminants();
    if (file != nullptr && !write(file, rows, extended)) return std::perror(file), 1;
    return linalgbench::resultsDiffered() ? 1 : 0;
}
