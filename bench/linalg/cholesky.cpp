// Cholesky decomposition of arrays of matrices, and solves with it: each vector with a factor of its own, and all with one.
#include <memory>

#include "rows.h"

namespace bench {
namespace {

// One unit more on the diagonal than the rest of a row can hold against it.
template <class T>
const T* definiteMatrices(int number, std::size_t order, std::size_t count) {
    T* const memory = memoryOf<T>(number, order * order * count);
    std::uint64_t state = 0x9e3779b97f4a7c15U;
    for (std::size_t k = 0; k < count; ++k) {
        for (std::size_t i = 0; i < order; ++i) {
            for (std::size_t j = 0; j <= i; ++j) {
                state = state * 6364136223846793005U + 1442695040888963407U;
                const T value = static_cast<T>(static_cast<std::uint32_t>(state >> 33)) / T(1 << 30) - 1;
                memory[(k * order + i) * order + j] = memory[(k * order + j) * order + i] =
                    i == j ? static_cast<T>(order) + value : value;
            }
        }
    }
    return memory;
}

template <class T>
void kormDecompose(const T* source, T* to, std::size_t n, std::size_t count) {
    pick<T>(kormCholeskyDecomp_ma_32f, kormCholeskyDecomp_ma_64f)(
        source, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), to, bytes<T>(n * n), bytes<T>(n), bytes<T>(1),
        static_cast<std::int32_t>(n), static_cast<std::int32_t>(count));
}

#ifdef BENCH_LAPACK
// The lower triangle of a matrix stored by rows is the upper one for LAPACK.
template <class T>
void lapackDecompose(int n, T* a) {
    std::int32_t info = 0;
    const char upper = 'U';
    pick<T>([](auto... p) { LAPACK_spotrf(p...); }, [](auto... p) { LAPACK_dpotrf(p...); })(&upper, &n, a, &n, &info);
}
template <class T>
void lapackSubstitute(int n, int vectors, const T* a, T* b) {
    std::int32_t info = 0;
    const char upper = 'U';
    pick<T>([](auto... p) { LAPACK_spotrs(p...); }, [](auto... p) { LAPACK_dpotrs(p...); })(&upper, &n, &vectors, a, &n,
                                                                                            b, &n, &info);
}
#endif

// Element i of the results, below the diagonal and on it; what stands above belongs to nobody.
template <class T, int n, bool reciprocals>
double lowerElement(const T* result, std::size_t i) {
    const std::size_t row = i / n % n, column = i % n;
    if (column > row) return 0;
    const double element = static_cast<double>(result[i]);
    return reciprocals && column == row ? 1 / element : element;
}

template <class T, int n>
void decompositionRow(const Objects& objects) {
    const std::string name = rowName<T>("cholesky", "CholeskyDecomp_ma", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(objects, n);
    const T* const source = definiteMatrices<T>(matrices, n, count);
    T* const result = memoryOf<T>(results, size * count);
    Row row(name, static_cast<double>(count));
    row.results(result, size * count, 1e3 * Eigen::NumTraits<T>::epsilon());
    row.korm([=] { kormDecompose(source, result, n, count); },
             [=](std::size_t i) { return lowerElement<T, n, true>(result, i); });
    const auto ofPeers = [=](std::size_t i) { return lowerElement<T, n, false>(result, i); };
    row.peer(
        "Eigen",
        [=] {
            for (std::size_t k = 0; k < count; ++k) {
                const Eigen::LLT<Matrix<T, n>> llt(mapOf<const Matrix<T, n>>(source + k * size));
                mapOf<Matrix<T, n>>(result + k * size) = llt.matrixLLT();
            }
        },
        ofPeers);
#ifdef BENCH_LAPACK
    row.peer(
        "LAPACK",
        [=] {
            std::memcpy(result, source, size * count * sizeof(T));
            for (std::size_t k = 0; k < count; ++k) lapackDecompose(n, result + k * size);
        },
        ofPeers);
#endif
    row.measure();
}

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

// The same rows for matrices of one place more, and so on.
using Orders = std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 32>;

}  // namespace

void measureCholeskyDecompositions() {
    forOrders(Orders(), []<class T, int n>(const Objects& objects) { decompositionRow<T, n>(objects); });
}

void measureCholeskySolutions() {
    forOrders(Orders(), []<class T, int n>(const Objects& objects) { solutionRow<T, n, false>(objects); });
    forOrders(Orders(), []<class T, int n>(const Objects& objects) { solutionRow<T, n, true>(objects); });
}

}  // namespace bench
