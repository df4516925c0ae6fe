// Solves with Cholesky factors: each vector with a factor of its own, and all vectors with one.
#include <memory>

#include "cholesky.h"

namespace bench {
namespace {

template <class T, int n, bool oneMatrix>
void solutionRow(const Objects& objects) {
    const std::string name = oneMatrix ? rowName<T>("cholesky-solve-one", "CholeskyBackSubst_mva", n, objects)
                                       : rowName<T>("cholesky-solve", "CholeskyBackSubst_mava", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(objects, n), all = oneMatrix ? 1 : count;
    const auto vectors = static_cast<std::int32_t>(count);
    const T* const source = definiteMatrices<T>(matrices, n, all);
    T* const right = memoryOf<T>(rightSides, n * count);
    T* const solution = memoryOf<T>(solutions, n * count);
    Row row(name, static_cast<double>(count));
    row.results(solution, n * count, 1e3 * Eigen::NumTraits<T>::epsilon());

    T* const factor = memoryOf<T>(results, size * all);
    kormDecompose(source, factor, n, all);
    row.korm([=] {
        if constexpr (oneMatrix)
            pick<T>(kormCholeskyBackSubst_mva_32f, kormCholeskyBackSubst_mva_64f)(
                factor, bytes<T>(n), bytes<T>(1), right, bytes<T>(n), bytes<T>(1), solution, bytes<T>(n), bytes<T>(1),
                n, vectors);
        else
            pick<T>(kormCholeskyBackSubst_mava_32f, kormCholeskyBackSubst_mava_64f)(
                factor, bytes<T>(size), bytes<T>(n), bytes<T>(1), right, bytes<T>(n), bytes<T>(1), solution,
                bytes<T>(n), bytes<T>(1), n, vectors);
    });

    using Llt = Eigen::LLT<Matrix<T, n>>;
    const auto eigenFactors = std::make_shared<std::vector<Llt, Eigen::aligned_allocator<Llt>>>();
    for (std::size_t k = 0; k < all; ++k) eigenFactors->emplace_back(mapOf<const Matrix<T, n>>(source + k * size));
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            mapOf<Vector<T, n>>(solution + k * n) =
                (*eigenFactors)[oneMatrix ? 0 : k].solve(mapOf<const Vector<T, n>>(right + k * n));
    });
    if constexpr (oneMatrix) {
        row.peer("Eigen, one call", [=] {
            using Sides = Eigen::Matrix<T, n, Eigen::Dynamic, n == 1 ? Eigen::RowMajor : Eigen::ColMajor>;
            Eigen::Map<Sides>(solution, n, vectors) =
                (*eigenFactors)[0].solve(Eigen::Map<const Sides>(right, n, vectors));
        });
    }
#ifdef BENCH_LAPACK
    T* const lapackFactors = memoryOf<T>(factors, size * all);
    std::memcpy(lapackFactors, source, size * all * sizeof(T));
    for (std::size_t k = 0; k < all; ++k) lapackDecompose(n, lapackFactors + k * size);
    row.peer("LAPACK", [=] {
        std::memcpy(solution, right, n * count * sizeof(T));
        if constexpr (oneMatrix) lapackSubstitute(n, vectors, lapackFactors, solution);
        else
            for (std::size_t k = 0; k < count; ++k) lapackSubstitute(n, 1, lapackFactors + k * size, solution + k * n);
    });
#endif
    row.measure();
}

}  // namespace

void measureCholeskySolutions() {
    forOrders(choleskyOrders, []<class T, int n>(const Objects& objects) { solutionRow<T, n, false>(objects); });
    forOrders(choleskyOrders, []<class T, int n>(const Objects& objects) { solutionRow<T, n, true>(objects); });
}

}  // namespace bench
