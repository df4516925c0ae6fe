// What rows of LU, Cholesky, solve, inverse and determinant share: matrices that have an inverse, and their peers.
#pragma once

#include "../harness/eigen.h"
#include "../harness/operands.h"
#ifdef BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef BENCH_CGLM
#include <cglm/cglm.h>
#endif
#ifdef BENCH_LAPACK
#include <lapack.h>
#endif

#include <cstring>
#include <utility>

namespace bench {

// Half of a first-level cache; and many objects, so that no branch on a pivot is learnt.
struct Objects {
    const char* place;
    std::size_t bytes;  // of all matrices that are read or written
    std::size_t most;
};
inline constexpr Objects places[] = {{"cache", 24 << 10, 1U << 20}, {"shuffled", 48U << 20, 100000}};

template <class T>
std::size_t objectsIn(const Objects& objects, std::size_t order) {
    // A dear object need not be there a hundred thousand times: its own branches are as many.
    return std::clamp<std::size_t>(objects.bytes / (2 * order * order * sizeof(T)), 4, order > 8 ? 4000 : objects.most);
}

template <class T>
std::string rowName(const std::string& section, const std::string& form, int order, const Objects& objects) {
    return section + "/" + form + suffix<T> + "/" + std::to_string(order) + "/" + objects.place;
}

// Elements below 1 in size and a heavier diagonal, so that no determinant comes near zero; then rows are exchanged. The
// matrices are in the memory of operand `number`.
template <class T>
const T* shuffledMatrices(int number, std::size_t order, std::size_t count);

// Numbers of operands. Sources and results are half a page apart or more.
enum { matrices, factors, results, rightSides, scratch, solutions };

template <class T>
std::int32_t bytes(std::size_t elements) {
    return static_cast<std::int32_t>(elements * sizeof(T));
}

// Calls f with each order as a constant of the compiler, for both types and all places.
template <int... orders, class F>
void forOrders(std::integer_sequence<int, orders...>, const F& f) {
    for (const Objects& objects : places) {
        (f.template operator()<float, orders>(objects), ...);
        (f.template operator()<double, orders>(objects), ...);
    }
}

// --- Peers -------------------------------------------------------------------------------------

template <class T, int n>
using Matrix = Eigen::Matrix<T, n, n, n == 1 ? Eigen::ColMajor : Eigen::RowMajor>;
template <class T, int n>
using Vector = Eigen::Matrix<T, n, 1>;

// Eigen's fixed-size types may want more alignment than packed objects have.
template <class M, class T>
auto mapOf(T* data) {
    return Eigen::Map<M, Eigen::Unaligned>(data);
}

template <class Value, class T>
Value loaded(const T* from) {
    Value value;
    static_assert(sizeof value % sizeof(T) == 0);
    std::memcpy(static_cast<void*>(&value), from, sizeof value);
    return value;
}

// A matrix stored by rows is its transpose for LAPACK; an inverse or a determinant of that is as good.
#ifdef BENCH_LAPACK
template <class T>
void lapackFactor(int n, T* a, std::int32_t* pivots) {
    std::int32_t info = 0;
    pick<T>([](auto... p) { LAPACK_sgetrf(p...); }, [](auto... p) { LAPACK_dgetrf(p...); })(&n, &n, a, &n, pivots,
                                                                                            &info);
}
template <class T>
void lapackSolve(int n, int vectors, const T* a, const std::int32_t* pivots, T* b) {
    std::int32_t info = 0;
    const char transposed = 'T';
    pick<T>([](auto... p) { LAPACK_sgetrs(p...); }, [](auto... p) { LAPACK_dgetrs(p...); })(
        &transposed, &n, &vectors, a, &n, pivots, b, &n, &info);
}
template <class T>
void lapackInvert(int n, T* a, const std::int32_t* pivots, T* work) {
    std::int32_t info = 0;
    const int size = 64 * n;
    pick<T>([](auto... p) { LAPACK_sgetri(p...); }, [](auto... p) { LAPACK_dgetri(p...); })(&n, a, &n, pivots, work,
                                                                                            &size, &info);
}
#endif

// The library's LU decomposition of packed matrices.
template <class T>
void kormFactor(const T* source, T* to, std::int32_t* pivots, std::size_t n, std::size_t count) {
    pick<T>(kormLUDecomp_ma_32f, kormLUDecomp_ma_64f)(source, bytes<T>(n * n), bytes<T>(n), bytes<T>(1), pivots, to,
                                                      bytes<T>(n * n), bytes<T>(n), bytes<T>(1),
                                                      static_cast<std::int32_t>(n), static_cast<std::int32_t>(count));
}

// A file for each.
void measureDecompositions();
void measureSolutions();
void measureLeastSquares();
void measureInverses();
void measureDeterminants();
void measureCholeskyDecompositions();
void measureCholeskySolutions();

}  // namespace bench
