// What is common to the calls of the peers.
#pragma once

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#pragma GCC diagnostic ignored "-Wconversion"
#endif
#include <Eigen/Dense>
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

#include <korm.h>

#ifdef LINALG_BENCH_LAPACK
#include <lapack.h>
#endif

#include <cstdint>

namespace linalgbench {

template <class T, int n>
using Matrix = Eigen::Matrix<T, n, n, n == 1 ? Eigen::ColMajor : Eigen::RowMajor>;
template <class T, int n>
using Vector = Eigen::Matrix<T, n, 1>;

// Eigen's fixed-size types may want more alignment than packed objects have.
template <class M, class T>
auto mapOf(T* data) {
    return Eigen::Map<M, Eigen::Unaligned>(data);
}

template <class T>
constexpr bool isSingle = sizeof(T) == 4;

template <class T, class Single, class Double>
constexpr auto pick(Single single, Double real) {
    if constexpr (isSingle<T>) return single;
    else return real;
}

template <class T>
std::int32_t bytes(std::size_t elements) {
    return static_cast<std::int32_t>(elements * sizeof(T));
}

// A matrix stored by rows is its transpose for the peers from Fortran; factors and inverses of that are as good.
#ifdef LINALG_BENCH_LAPACK
template <class T>
void lapackFactor(int n, T* a, std::int32_t* pivots) {
    std::int32_t info = 0;
    if constexpr (isSingle<T>) LAPACK_sgetrf(&n, &n, a, &n, pivots, &info);
    else LAPACK_dgetrf(&n, &n, a, &n, pivots, &info);
}
template <class T>
void lapackSolve(int n, int vectors, const T* a, const std::int32_t* pivots, T* b) {
    std::int32_t info = 0;
    const char transposed = 'T';
    if constexpr (isSingle<T>) LAPACK_sgetrs(&transposed, &n, &vectors, a, &n, pivots, b, &n, &info);
    else LAPACK_dgetrs(&transposed, &n, &vectors, a, &n, pivots, b, &n, &info);
}
template <class T>
void lapackInvert(int n, T* a, const std::int32_t* pivots, T* work) {
    std::int32_t info = 0;
    const int size = 64 * n;
    if constexpr (isSingle<T>) LAPACK_sgetri(&n, a, &n, pivots, work, &size, &info);
    else LAPACK_dgetri(&n, a, &n, pivots, work, &size, &info);
}
#endif

}  // namespace linalgbench
