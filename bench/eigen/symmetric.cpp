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

// Matrices of one order, and where their values and vectors go.
template <class T>
struct Problems {
    std::size_t n, count;
    const T* source;
    T *values, *vectors, *work;

    std::size_t size() const { return n * n; }
};

template <class T>
void kormSymmetric(const Problems<T>& p, bool withVectors) {
    const auto n = static_cast<std::int32_t>(p.n), count = static_cast<std::int32_t>(p.count);
    const std::int32_t object = bytes<T>(p.size()), row = bytes<T>(p.n), element = bytes<T>(1);
    if (withVectors)
        pick<T>(kormEigenValuesVectorsSym_ma_32f, kormEigenValuesVectorsSym_ma_64f)(
            p.source, object, row, element, p.work, p.vectors, object, row, element, p.values, n, count);
    else
        pick<T>(kormEigenValuesSym_ma_32f, kormEigenValuesSym_ma_64f)(p.source, object, row, element, p.work, p.values,
                                                                      n, count);
}

// `order` may be Eigen::Dynamic.
template <class T, int order, class Solve>
void eigenSymmetric(const Problems<T>& p, bool withVectors, const Solve& solve) {
    const auto n = static_cast<Eigen::Index>(p.n);
    Eigen::SelfAdjointEigenSolver<Matrix<T, order>> solver(n);
    for (std::size_t k = 0; k < p.count; ++k) {
        solve(solver, Eigen::Map<const Matrix<T, order>, Eigen::Unaligned>(p.source + k * p.size(), n, n));
        Eigen::Map<Vector<T, order>, Eigen::Unaligned>(p.values + k * p.n, n) = solver.eigenvalues();
        if (withVectors)
            Eigen::Map<Matrix<T, order>, Eigen::Unaligned>(p.vectors + k * p.size(), n, n) = solver.eigenvectors();
    }
}

// Values are compared; the sign of a vector is everybody's own.
template <class T, int known>
void symmetricRow(const std::string& name, std::size_t n, const Objects& objects, bool withVectors) {
    if (!isWanted(name)) return;
    const std::size_t size = n * n, count = objectsIn<T>(objects, n);
    const Problems<T> p{n,
                        count,
                        symmetricMatrices<T>(n, count),
                        memoryOf<T>(solutions, n * count),
                        memoryOf<T>(results, size * count),
                        memoryOf<T>(scratch, 64 * n + size)};
    Row row(name, static_cast<double>(count));
    row.results(p.values, n * count, 1e3 * Eigen::NumTraits<T>::epsilon());
    const auto ascending = [=](std::size_t i) { return static_cast<double>(p.values[i / n * n + n - 1 - i % n]); };
    row.korm([=] { kormSymmetric(p, withVectors); },
             // Order 2 isn't sorted.
             [=](std::size_t i) {
                 if (n != 2) return static_cast<double>(p.values[i]);
                 const auto [low, high] = std::minmax(p.values[i / 2 * 2], p.values[i / 2 * 2 + 1]);
                 return static_cast<double>(i % 2 == 0 ? high : low);
             });
    const int what = withVectors ? Eigen::ComputeEigenvectors : Eigen::EigenvaluesOnly;
    row.peer(
        known == Eigen::Dynamic ? "Eigen, order at run time" : "Eigen",
        [=] {
            eigenSymmetric<T, known>(p, withVectors, [=](auto& solver, const auto& a) { solver.compute(a, what); });
        },
        ascending);
    if constexpr (known == 2 || known == 3)
        row.peer(
            "Eigen, closed form",
            [=] {
                eigenSymmetric<T, known>(p, withVectors,
                                         [=](auto& solver, const auto& a) { solver.computeDirect(a, what); });
            },
            ascending);
#ifdef BENCH_LAPACK
    row.peer(
        "LAPACK",
        [=] {
            std::copy_n(p.source, size * count, p.vectors);
            for (std::size_t k = 0; k < count; ++k)
                lapackSymmetric(withVectors ? 'V' : 'N', static_cast<int>(n), p.vectors + k * size, p.values + k * n,
                                p.work);
        },
        ascending);
#endif
    row.measure();
}

template <class T>
void sweep(const std::string& section, const std::string& form, bool withVectors) {
    for (int n = 1; n <= 16; ++n)
        symmetricRow<T, Eigen::Dynamic>(section + "/" + form + suffix<T> + "/" + std::to_string(n),
                                        static_cast<std::size_t>(n), places[0], withVectors);
}

}  // namespace

void measureSymmetric() {
    using Orders = std::integer_sequence<int, 2, 3, 4, 5, 6, 8, 16>;
    const std::string values = "EigenValuesSym_ma", vectors = "EigenValuesVectorsSym_ma";
    forOrders(Orders{}, [&]<class T, int n>(const Objects& objects) {
        symmetricRow<T, n>(rowName<T>("symmetric-vectors", vectors, n, objects), n, objects, true);
    });
    forOrders(Orders{}, [&]<class T, int n>(const Objects& objects) {
        symmetricRow<T, n>(rowName<T>("symmetric-values", values, n, objects), n, objects, false);
    });
    sweep<float>("symmetric-vectors-sweep", vectors, true);
    sweep<double>("symmetric-vectors-sweep", vectors, true);
    sweep<float>("symmetric-values-sweep", values, false);
    sweep<double>("symmetric-values-sweep", values, false);
}

}  // namespace bench
