// Solving with factored matrices: each vector with a matrix of its own, and all vectors with one matrix.
#include <memory>

#include "rows.h"

namespace bench {
namespace {

template <class T, int n, bool oneMatrix>
void solutionRow(const Objects& objects) {
    const std::string name = oneMatrix ? rowName<T>("solve-one", "LUBackSubst_mva", n, objects)
                                       : rowName<T>("solve", "LUBackSubst_mava", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(objects, n), all = oneMatrix ? 1 : count;
    const auto vectors = static_cast<std::int32_t>(count);
    const T* const source = shuffledMatrices<T>(matrices, n, all);
    T* const right = memoryOf<T>(rightSides, n * count);
    T* const solution = memoryOf<T>(solutions, n * count);
    Row row(name, static_cast<double>(count));
    row.results(solution, n * count, 1e3 * Eigen::NumTraits<T>::epsilon());

    T* const lu = memoryOf<T>(results, size * all);
    auto* const pivots = memoryOf<std::int32_t>(results, n * all);
    kormFactor(source, lu, pivots, n, all);
    row.korm([=] {
        if constexpr (oneMatrix)
            pick<T>(kormLUBackSubst_mva_32f, kormLUBackSubst_mva_64f)(lu, bytes<T>(n), bytes<T>(1), pivots, right,
                                                                      bytes<T>(n), bytes<T>(1), solution, bytes<T>(n),
                                                                      bytes<T>(1), n, vectors);
        else
            pick<T>(kormLUBackSubst_mava_32f, kormLUBackSubst_mava_64f)(lu, bytes<T>(size), bytes<T>(n), bytes<T>(1),
                                                                        pivots, right, bytes<T>(n), bytes<T>(1),
                                                                        solution, bytes<T>(n), bytes<T>(1), n, vectors);
    });

    using Lu = Eigen::PartialPivLU<Matrix<T, n>>;
    const auto eigenLus = std::make_shared<std::vector<Lu, Eigen::aligned_allocator<Lu>>>();
    for (std::size_t k = 0; k < all; ++k) eigenLus->emplace_back(mapOf<const Matrix<T, n>>(source + k * size));
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k)
            mapOf<Vector<T, n>>(solution + k * n) =
                (*eigenLus)[oneMatrix ? 0 : k].solve(mapOf<const Vector<T, n>>(right + k * n));
    });
    if constexpr (oneMatrix) {
        row.peer("Eigen, one call", [=] {
            using Sides = Eigen::Matrix<T, n, Eigen::Dynamic, n == 1 ? Eigen::RowMajor : Eigen::ColMajor>;
            Eigen::Map<Sides>(solution, n, vectors) = (*eigenLus)[0].solve(Eigen::Map<const Sides>(right, n, vectors));
        });
    }
#ifdef BENCH_LAPACK
    T* const lapackLus = memoryOf<T>(factors, size * all);
    auto* const lapackPivots = memoryOf<std::int32_t>(factors, n * all);
    std::memcpy(lapackLus, source, size * all * sizeof(T));
    for (std::size_t k = 0; k < all; ++k) lapackFactor(n, lapackLus + k * size, lapackPivots + k * n);
    row.peer("LAPACK", [=] {
        std::memcpy(solution, right, n * count * sizeof(T));
        if constexpr (oneMatrix) lapackSolve(n, vectors, lapackLus, lapackPivots, solution);
        else
            for (std::size_t k = 0; k < count; ++k)
                lapackSolve(n, 1, lapackLus + k * size, lapackPivots + k * n, solution + k * n);
    });
#endif
    row.measure();
}

}  // namespace

void measureSolutions() {
    const std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 32> orders;
    forOrders(orders, []<class T, int n>(const Objects& objects) { solutionRow<T, n, false>(objects); });
    forOrders(orders, []<class T, int n>(const Objects& objects) { solutionRow<T, n, true>(objects); });
}

}  // namespace bench
