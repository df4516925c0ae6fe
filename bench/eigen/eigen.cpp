// The program's rows: eigenproblems.
#include "rows.h"
#ifdef BENCH_OPENBLAS
extern "C" char* openblas_get_config(void);
extern "C" char* openblas_get_corename(void);
#endif

namespace bench {

void measureRows() {
    noteVersion("Eigen", EIGEN_WORLD_VERSION, EIGEN_MAJOR_VERSION, EIGEN_MINOR_VERSION);
#ifdef BENCH_OPENBLAS
    note("LAPACK", std::string("of ") + openblas_get_config() + ", kernels for " + openblas_get_corename());
#endif
    measureSymmetric();
    measureGeneral();
}

}  // namespace bench
