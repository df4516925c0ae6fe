// Eigenvalues of symmetric matrices, with and without vectors.
#include <Eigen/Eigenvalues>
#include <cmath>
#include <functional>
#include <numeric>
#include <vector>

#include "rows.h"

namespace bench {
namespace {

// The sum of the squares of the eigenvalues is that of the elements.
template <class T>
bool areValuesOf(const T* matrix, const std::vector<T>& values) {
    const auto squares = [](const T* first, std::size_t count) {
        return std::inner_product(first, first + count, first, 0.0, std::plus<>(),
                                  [](T x, T y) { return static_cast<double>(x) * static_cast<double>(y); });
    };
    const double ofElements = squares(matrix, values.size() * values.size());
    return std::fabs(squares(values.data(), values.size()) - ofElements) < 1e-4 * ofElements;
}

// By the kernels with vectors and by those without, which part where an element is dropped.
template <class T>
bool isSolved(const T* matrix, std::size_t order) {
    std::vector<T> values(order), vectors(order * order), work(order * order);
    const auto n = static_cast<std::int32_t>(order);
    const std::int32_t object = bytes<T>(order * order), row = bytes<T>(order), element = bytes<T>(1);
    return pick<T>(kormEigenValuesVectorsSym_ma_32f, kormEigenValuesVectorsSym_ma_64f)(
               matrix, object, row, element, work.data(), vectors.data(), object, row, element, values.data(), n, 1) ==
               korStatusOk &&
           areValuesOf(matrix, values) &&
           pick<T>(kormEigenValuesSym_ma_32f, kormEigenValuesSym_ma_64f)(matrix, object, row, element, work.data(),
                                                                         values.data(), n, 1) == korStatusOk &&
           areValuesOf(matrix, values);
}

// Elements up to 1, and a diagonal that keeps the eigenvalues apart from each other and from zero, so that none is singular.
// One in 10,000 or so wouldn't converge, and an array's call ends with it; one in 100,000 loses an element on the way. Such
// matrices are left out.
template <class T>
const T* symmetricMatrices(std::size_t order, std::size_t count) {
    T* const memory = memoryOf<T>(matrices, order * order * count);
    RandomNumbers<T> random;
    for (std::size_t k = 0; k < count; ++k) {
        T* const matrix = memory + k * order * order;
        do {
            for (std::size_t i = 0; i < order; ++i) {
                for (std::size_t j = 0; j <= i; ++j) matrix[i * order + j] = matrix[j * order + i] = random();
                const T apart = static_cast<T>(2 * i + 3);
                matrix[i * order + i] += i % 2 != 0 ? -apart : apart;
            }
        } while (!isSolved(matrix, order));
    }
    return memory;
}

#ifdef BENCH_LAPACK
template <class T>
void lapackSymmetric(char what, int n, T* a, T* values, T* work) {
    std::int32_t info = 0;
    const char upper = 'U';
    const int size = 64 * n;
    pick<T>([](auto... p) { LAPACK_ssyev(p...); }, [](auto... p) { LAPACK_dsyev(p...); })(&what, &upper, &n, a, &n,
                                                                                          values, work, &size, &info);
}
#endif

// Values are compared; the sign of a vector is everybody's own.
template <class T, int n, bool withVectors>
void symmetricRow(const Objects& objects) {
    const std::string name = withVectors ? rowName<T>("symmetric-vectors", "EigenValuesVectorsSym_ma", n, objects)
                                         : rowName<T>("symmetric-values", "EigenValuesSym_ma", n, objects);
    if (!isWanted(name)) return;
    constexpr std::size_t size = n * n;
    const std::size_t count = objectsIn<T>(objects, n);
    const T* const source = symmetricMatrices<T>(n, count);
    T* const values = memoryOf<T>(solutions, n * count);
    T* const vectors = memoryOf<T>(results, size * count);
    T* const work = memoryOf<T>(scratch, 64 * n + size);
    Row row(name, static_cast<double>(count));
    row.results(values, n * count, 1e3 * Eigen::NumTraits<T>::epsilon());
    const auto sorted = [=](std::size_t i) { return static_cast<double>(values[i]); };
    const auto ascending = [=](std::size_t i) { return static_cast<double>(values[i / n * n + n - 1 - i % n]); };
    row.korm(
        [=] {
            const auto objectsToDo = static_cast<std::int32_t>(count);
            if constexpr (withVectors)
                pick<T>(kormEigenValuesVectorsSym_ma_32f, kormEigenValuesVectorsSym_ma_64f)(
                    source, bytes<T>(size), bytes<T>(n), bytes<T>(1), work, vectors, bytes<T>(size), bytes<T>(n),
                    bytes<T>(1), values, n, objectsToDo);
            else
                pick<T>(kormEigenValuesSym_ma_32f, kormEigenValuesSym_ma_64f)(
                    source, bytes<T>(size), bytes<T>(n), bytes<T>(1), work, values, n, objectsToDo);
        },
        // Order 2 isn't sorted.
        [=](std::size_t i) {
            if (n != 2) return sorted(i);
            const auto [low, high] = std::minmax(values[i / 2 * 2], values[i / 2 * 2 + 1]);
            return static_cast<double>(i % 2 == 0 ? high : low);
        });
    const auto eigen = [=](const auto& solve) {
        for (std::size_t k = 0; k < count; ++k) {
            Eigen::SelfAdjointEigenSolver<Matrix<T, n>> solver;
            solve(solver, mapOf<const Matrix<T, n>>(source + k * size));
            mapOf<Vector<T, n>>(values + k * n) = solver.eigenvalues();
            if constexpr (withVectors) mapOf<Matrix<T, n>>(vectors + k * size) = solver.eigenvectors();
        }
    };
    constexpr int what = withVectors ? Eigen::ComputeEigenvectors : Eigen::EigenvaluesOnly;
    row.peer(
        "Eigen", [=] { eigen([](auto& solver, const auto& a) { solver.compute(a, what); }); }, ascending);
    if constexpr (n == 2 || n == 3)
        row.peer(
            "Eigen, closed form", [=] { eigen([](auto& solver, const auto& a) { solver.computeDirect(a, what); }); },
            ascending);
#ifdef BENCH_LAPACK
    row.peer(
        "LAPACK",
        [=] {
            std::copy_n(source, size * count, vectors);
            for (std::size_t k = 0; k < count; ++k)
                lapackSymmetric(withVectors ? 'V' : 'N', n, vectors + k * size, values + k * n, work);
        },
        ascending);
#endif
    row.measure();
}

}  // namespace

void measureSymmetric() {
    using Orders = std::integer_sequence<int, 2, 3, 4, 5, 6, 8, 16>;
    forOrders(Orders{}, []<class T, int n>(const Objects& objects) { symmetricRow<T, n, true>(objects); });
    forOrders(Orders{}, []<class T, int n>(const Objects& objects) { symmetricRow<T, n, false>(objects); });
}

}  // namespace bench
