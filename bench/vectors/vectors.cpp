// The program's rows: combinations, dot and cross products and norms of vectors, traces and norms of matrices.
#include "rows.h"

namespace bench {

void measureRows() {
    noteVersion("Eigen", EIGEN_WORLD_VERSION, EIGEN_MAJOR_VERSION, EIGEN_MINOR_VERSION);
#ifdef BENCH_GLM
    note("GLM", std::to_string(GLM_VERSION));
#endif
    measureReductions();
    measureCombinations();
    measureSweeps();
}

}  // namespace bench
