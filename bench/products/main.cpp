// korm_bench_products [--quick] [--filter REGEX] [--out FILE] [--any-blas]
//
// OpenBLAS is held to kernels of the instruction set that the library and all other peers are built for (SSSE3),
// by the core type that it reads when it is loaded; --any-blas lets it take what the processor has.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifdef KORM_BENCH_CGLM
#include <cglm/version.h>
#endif

#include "korm_calls.h"
#include "peers.h"
#include "results.h"

#ifdef KORM_BENCH_OPENBLAS
extern "C" char* openblas_get_config(void);
extern "C" char* openblas_get_corename(void);
#endif

// Taken by the library instead of the core library's.
extern "C" __attribute__((visibility("default"))) std::int32_t ownGetNumThreads() {
    return bench::products::threadsAllowed;
}

namespace {

// The environment is read before main, so the program starts itself again.
void holdOpenBlas(char** argv, bool anyKernels) {
    if (std::getenv("OPENBLAS_NUM_THREADS") != nullptr) return;
    setenv("OPENBLAS_NUM_THREADS", "1", 1);
    if (anyKernels) unsetenv("OPENBLAS_CORETYPE");
    else setenv("OPENBLAS_CORETYPE", "Core2", 1);
    execv("/proc/self/exe", argv);
    std::perror("cannot start again");
    std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace bench::products;
    std::string out;
    bool anyBlas = false;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--quick")) settings.quick = true;
        else if (!std::strcmp(argv[i], "--any-blas")) anyBlas = true;
        else if (!std::strcmp(argv[i], "--filter") && i + 1 < argc) settings.filter = argv[++i];
        else if (!std::strcmp(argv[i], "--out") && i + 1 < argc) out = argv[++i];
        else {
            std::fprintf(stderr, "usage: %s [--quick] [--filter REGEX] [--out FILE] [--any-blas]\n", argv[0]);
            return 2;
        }
    }
    holdOpenBlas(argv, anyBlas);

    const kormLibVersion* const version = kormGetLibVersion();
    Context context{{"library", std::string(version->name) + ", " + version->version},
                    {"target", KORM_BENCH_TARGET},
                    {"compiler", KORM_BENCH_COMPILER},
                    {"flags", KORM_BENCH_FLAGS},
                    {"eigen", std::to_string(EIGEN_WORLD_VERSION) + "." + std::to_string(EIGEN_MAJOR_VERSION) + "." +
                                  std::to_string(EIGEN_MINOR_VERSION)},
                    {"mode", settings.quick ? "quick" : "default"}};
#ifdef KORM_BENCH_GLM
    context.push_back({"glm", std::to_string(GLM_VERSION)});
#endif
#ifdef KORM_BENCH_CGLM
    context.push_back({"cglm", std::to_string(CGLM_VERSION_MAJOR) + "." + std::to_string(CGLM_VERSION_MINOR) + "." +
                                   std::to_string(CGLM_VERSION_PATCH)});
#endif
#ifdef KORM_BENCH_OPENBLAS
    context.push_back({"openblas", openblas_get_config()});
    context.push_back({"openblasKernels", openblas_get_corename()});
#endif
    addArrays();
    addStreams();
    addSingles();
    addVectors();
    addThreads();
    if (!out.empty() && !writeResults(out, context)) {
        std::perror(out.c_str());
        return 1;
    }
    return 0;
}
