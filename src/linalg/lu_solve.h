// Solves with an LU decomposition: y by the multipliers, downwards, then x by the upper triangle, upwards.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/known.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "linalg/lu_solve_general.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- Orders 3 to 6 ------------------------------------------------------------------------------

// Both sweeps over `v`, whose element k belongs to row k of `a`; rows are in the order of the pivots. Terms are
// subtracted one at a time, that of the highest column first. `scale` is what a row is divided by, or, where one
// matrix serves many vectors, multiplied by.
template <bool multiplies, int n, class S>
[[gnu::always_inline]] inline void sweep(const S (&a)[n][n], const S (&scale)[n], S (&v)[n]) {
#pragma GCC unroll 6
    for (int k = 1; k < n; ++k)
#pragma GCC unroll 6
        for (int j = k - 1; j >= 0; --j) v[k] = v[k] - a[k][j] * v[j];
#pragma GCC unroll 6
    for (int k = n - 1; k >= 0; --k) {
#pragma GCC unroll 6
        for (int j = n - 1; j > k; --j) v[k] = v[k] - a[k][j] * v[j];
        v[k] = multiplies ? v[k] * scale[k] : v[k] / scale[k];
    }
}

// Row `pivots[k]` of a matrix becomes row k.
template <int n, class T, class A>
[[gnu::always_inline]] inline void readPivoted(const A& matrix, const std::byte* pivots, T (&a)[n][n]) {
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k) {
        const std::int32_t row = load<std::int32_t>(pivots + 4 * k);
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) a[k][j] = load<T>(matrix.address(row, j));
    }
}

template <int n, class T, class B>
[[gnu::always_inline]] inline void readPivotedVector(const B& vector, const std::byte* pivots, T (&v)[n]) {
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k) v[k] = load<T>(vector.address(0, load<std::int32_t>(pivots + 4 * k)));
}

template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void luSolveSized(const A& matrix, const B& src, const D& dst, const std::byte* pivots) {
    T a[n][n], scale[n], v[n];
    readPivoted(matrix, pivots, a);
    for (int k = 0; k < n; ++k) scale[k] = a[k][k];
    readPivotedVector(src, pivots, v);
    sweep<false>(a, scale, v);
    writeRow(dst, 0, v);
}

// Objects in lanes: each lane has a matrix, pivots and a vector of its own.
template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void luSolveArray(const A& matrix, const B& src, const D& dst, const std::byte* pivots,
                                    std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr int bytes = n * n * static_cast<int>(sizeof(T));
    const std::ptrdiff_t fetchEnd = endOfFetching(count, bytes);
    std::ptrdiff_t t = 0;
    for (; t + lanes <= count; t += lanes) {
        if (t < fetchEnd) fetchAhead<lanes, bytes>(matrix, t);
        S a[n][n], scale[n], v[n];
        const auto matrices = groupAt<lanes>(matrix, t);
        const auto vectors = groupAt<lanes>(src, t);
        const std::byte* const own = pivots + 4 * n * t;
#pragma GCC unroll 6
        for (int k = 0; k < n; ++k) {
            const auto row = [&](int l) { return load<std::int32_t>(own + 4 * (n * l + k)); };
            readRows(matrices, row, a[k]);
            v[k] = readElement<S>(vectors.at(sameRow(0), row));
            scale[k] = a[k][k];
        }
        sweep<false>(a, scale, v);
        writeRows(groupAt<lanes>(dst, t), sameRow(0), v);
    }
    for (; t < count; ++t) luSolveSized<n, T>(matrix.at(t), src.at(t), dst.at(t), pivots + 4 * n * t);
}

// One matrix, many vectors: its divisions are made once.
template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void luSolveVectors(const A& matrix, const B& src, const D& dst, const std::byte* pivots,
                                      std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    T a[n][n], scale[n];
    readPivoted(matrix.at(0), pivots, a);
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k) scale[k] = 1 / a[k][k];
    S everywhere[n][n], scales[n];
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k) {
        scales[k] = broadcast(scale[k]);
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) everywhere[k][j] = broadcast(a[k][j]);
    }
    std::ptrdiff_t t = 0;
    for (; t + lanes <= count; t += lanes) {
        S v[n];
        const auto vectors = groupAt<lanes>(src, t);
#pragma GCC unroll 6
        for (int k = 0; k < n; ++k) v[k] = readElement<S>(vectors.at(0, load<std::int32_t>(pivots + 4 * k)));
        sweep<true>(everywhere, scales, v);
        writeRows(groupAt<lanes>(dst, t), sameRow(0), v);
    }
    for (; t < count; ++t) {
        T v[n];
        readPivotedVector(src.at(t), pivots, v);
        sweep<true>(a, scale, v);
        writeRow(dst.at(t), 0, v);
    }
}

// --- Choice ---------------------------------------------------------------------------------------

template <int n, class T, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void luSolveObjects(const A& matrix, const B& src, const D& dst, const std::byte* pivots,
                                                  Count count) {
    if constexpr (isOneObject<Count>) luSolveSized<n, T>(matrix.at(0), src.at(0), dst.at(0), pivots);
    else if constexpr (isShared<A>)
        luSolveVectors<n, T>(matrix, withAnyObjects(src), withAnyObjects(dst), pivots, count);
    else luSolveArray<n, T>(withAnyObjects(matrix), withAnyObjects(src), withAnyObjects(dst), pivots, count);
}

// One matrix for all vectors or one for each.
template <class A, class B, class D, class Count>
[[gnu::always_inline]] inline void luSolve(A matrix, B src, D dst, const std::int32_t* pivots, std::int32_t order,
                                           Count count) {
    using T = typename D::Element;
    const auto* const bytes = reinterpret_cast<const std::byte*>(pivots);
    // Orders 1 and 2 of arrays are the general case with the order known, so that no loop over rows is left: that takes
    // half the time.
    if constexpr (!isOneObject<Count>) {
        if (order == 1)
            return luSolveManyGeneral<T>(withAnyObjects(matrix), withAnyObjects(src), withAnyObjects(dst), bytes,
                                         Known<1>(), count);
        if (order == 2)
            return luSolveManyGeneral<T>(withAnyObjects(matrix), withAnyObjects(src), withAnyObjects(dst), bytes,
                                         Known<2>(), count);
    }
    forOrder(
        order, [&](auto n) __attribute__((always_inline)) { luSolveObjects<n, T>(matrix, src, dst, bytes, count); },
        [&]() __attribute__((always_inline)) {
            if constexpr (isOneObject<Count>) luSolveGeneral<T>(matrix.at(0), src.at(0), dst.at(0), bytes, order);
            else
                luSolveManyGeneral<T>(withAnyObjects(matrix), withAnyObjects(src), withAnyObjects(dst), bytes,
                                      static_cast<std::ptrdiff_t>(order), count);
        });
}

}  // namespace korm::inline KORM_VARIANT::linalg
