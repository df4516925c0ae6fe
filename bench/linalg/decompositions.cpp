// LU decomposition of arrays of matrices, and of one large matrix.
#include <cmath>
#include <limits>

#include "rows.h"

namespace bench {
namespace {

// What order 1 amounts to: a copy that stops at the first pivot that is too small.
template <class T>
[[gnu::noinline]] void copyPivots(const T* from, T* to, std::int32_t* pivots, std::size_t count) {
    for (std::size_t k = 0; k < count; ++k) {
        if (std::abs(from[k]) <= std::numeric_limits<T>::epsilon()) return;
        to[k] = from[k];
        pivots[k] = 0;
    }
}

template <class T, int n>
void decompositionRow(const Objects& objects) {
    const std::string name = rowName<T>("lu", "LUDecomp_ma", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(objects, n);
    const T* const source = shuffledMatrices<T>(matrices, n, count);
    T* const result = memoryOf<T>(results, size * count);
    auto* const pivots = memoryOf<std::int32_t>(results, n * count);
    Row row(name, static_cast<double>(count));
    row.results(result, size * count, 1e3 * Eigen::NumTraits<T>::epsilon());
    // The rows in the order of the pivots, as the peers have them.
    row.korm(
        [=] { kormFactor(source, result, pivots, n, count); },
        [=](std::size_t i) {
            const std::size_t k = i / size, step = i % size / n;
            return static_cast<double>(result[k * size + static_cast<std::size_t>(pivots[k * n + step]) * n + i % n]);
        });
    row.peer("Eigen", [=] {
        for (std::size_t k = 0; k < count; ++k) {
            const Eigen::PartialPivLU<Matrix<T, n>> lu(mapOf<const Matrix<T, n>>(source + k * size));
            mapOf<Matrix<T, n>>(result + k * size) = lu.matrixLU();
            mapOf<Vector<std::int32_t, n>>(pivots + k * n) = lu.permutationP().indices();
        }
    });
    if constexpr (n == 1) row.control("plain loop", [=] { copyPivots(source, result, pivots, count); });
#ifdef BENCH_LAPACK
    // It stores by columns, so it is given the same matrices that way.
    T* const byColumns = memoryOf<T>(factors, size * count);
    for (std::size_t i = 0; i < size * count; ++i) byColumns[i] = source[i / size * size + i % n * n + i % size / n];
    row.peer(
        "LAPACK",
        [=] {
            std::memcpy(result, byColumns, size * count * sizeof(T));
            for (std::size_t k = 0; k < count; ++k) lapackFactor(n, result + k * size, pivots + k * n);
        },
        [=](std::size_t i) { return static_cast<double>(result[i / size * size + i % n * n + i % size / n]); });
#endif
    row.measure();
}

// One matrix; rows are a power of two apart where the order is one.
template <class T>
void largeRow(std::size_t n) {
    const std::string name = "lu-large/LUDecomp_m" + std::string(suffix<T>) + "/" + std::to_string(n);
    if (!isWanted(name)) return;
    const T* const source = shuffledMatrices<T>(matrices, n, 1);
    T* const result = memoryOf<T>(results, n * n);
    auto* const pivots = memoryOf<std::int32_t>(solutions, n);
    Row row(name, 1);
    row.results(result, n * n, 1e4 * Eigen::NumTraits<T>::epsilon());
    row.korm(
        [=] {
            pick<T>(kormLUDecomp_m_32f, kormLUDecomp_m_64f)(source, bytes<T>(n), bytes<T>(1), pivots, result,
                                                            bytes<T>(n), bytes<T>(1), static_cast<std::int32_t>(n));
        },
        [=](std::size_t i) {
            return static_cast<double>(result[static_cast<std::size_t>(pivots[i / n]) * n + i % n]);
        });
    using Rows = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    const auto order = static_cast<Eigen::Index>(n);
    row.peer("Eigen", [=] {
        const Eigen::PartialPivLU<Rows> lu(Eigen::Map<const Rows>(source, order, order));
        Eigen::Map<Rows>(result, order, order) = lu.matrixLU();
    });
#ifdef BENCH_LAPACK
    T* const byColumns = memoryOf<T>(factors, n * n);
    for (std::size_t i = 0; i < n * n; ++i) byColumns[i] = source[i % n * n + i / n];
    row.peer(
        "LAPACK",
        [=] {
            std::memcpy(result, byColumns, n * n * sizeof(T));
            lapackFactor(static_cast<int>(n), result, pivots);
        },
        [=](std::size_t i) { return static_cast<double>(result[i % n * n + i / n]); });
#endif
    row.measure();
}

}  // namespace

void measureDecompositions() {
    forOrders(std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 32>(),
              []<class T, int n>(const Objects& objects) { decompositionRow<T, n>(objects); });
    for (const std::size_t n : {64, 100, 128, 200, 256, 500, 512}) {
        largeRow<float>(n);
        largeRow<double>(n);
    }
}

}  // namespace bench
