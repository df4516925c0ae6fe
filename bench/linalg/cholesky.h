// What rows of Cholesky decompositions and of solves with them share: positive definite matrices, and calls.
#pragma once

#include "rows.h"

namespace bench {

inline constexpr std::integer_sequence<int, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 32> choleskyOrders;

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

}  // namespace bench
