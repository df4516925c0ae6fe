// The program's rows: LU and Cholesky decomposition, solve, inverse, determinant.
#include "rows.h"
#include "sweeps.h"
#ifdef BENCH_CGLM
#include <cglm/version.h>
#endif
#ifdef BENCH_OPENBLAS
extern "C" char* openblas_get_config(void);
extern "C" char* openblas_get_corename(void);
#endif

namespace bench {

template <class T>
const T* shuffledMatrices(int number, std::size_t order, std::size_t count) {
    std::uint64_t state = 0x9e3779b97f4a7c15U;
    const auto next = [&] {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::uint32_t>(state >> 33);
    };
    // As heavy as half a row, or large matrices would be too ill conditioned to compare results.
    const T weight = static_cast<T>(2 + order / 4);
    T* const memory = memoryOf<T>(number, order * order * count);
    std::vector<std::size_t> rows(order);
    for (std::size_t k = 0; k < count; ++k) {
        for (std::size_t i = 0; i < order; ++i) rows[i] = i;
        for (std::size_t i = order; i > 1; --i) std::swap(rows[i - 1], rows[next() % i]);
        for (std::size_t i = 0; i < order; ++i) {
            T* const row = memory + (k * order + rows[i]) * order;
            for (std::size_t j = 0; j < order; ++j) row[j] = static_cast<T>(next()) / T(1 << 30) - 1;
            row[i] += row[i] < 0 ? -weight : weight;
        }
    }
    return memory;
}

template const float* shuffledMatrices(int, std::size_t, std::size_t);
template const double* shuffledMatrices(int, std::size_t, std::size_t);

void measureRows() {
    noteVersion("Eigen", EIGEN_WORLD_VERSION, EIGEN_MAJOR_VERSION, EIGEN_MINOR_VERSION);
#ifdef BENCH_GLM
    note("GLM", std::to_string(GLM_VERSION));
#endif
#ifdef BENCH_CGLM
    noteVersion("cglm", CGLM_VERSION_MAJOR, CGLM_VERSION_MINOR, CGLM_VERSION_PATCH);
#endif
#ifdef BENCH_OPENBLAS
    note("LAPACK", std::string("of ") + openblas_get_config() + ", kernels for " + openblas_get_corename());
#endif
    measureDecompositions();
    measureSolutions();
    measureLeastSquares();
    measureInverses();
    measureDeterminants();
    measureCholeskyDecompositions();
    measureCholeskySolutions();
    measureSweeps();
}

}  // namespace bench
