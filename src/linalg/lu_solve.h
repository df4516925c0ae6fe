// Solves with an LU decomposition: y by the multipliers, downwards, then x by the upper triangle, upwards.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/known.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/lu_solve_general.h"
#include "linalg/order1.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- Orders 3 to 6 ------------------------------------------------------------------------------

// Both sweeps over `v`, whose element k belongs to row k of `a`; rows are in the order of the pivots. Terms are
// subtracted one at a time, that of the highest column first. By the diagonal rows are divided; where one matrix serves
// many vectors, it has reciprocals, by which they are multiplied.
template <bool multiplies, int n, class S>
[[gnu::always_inline]] inline void sweep(const S (&a)[n][n], S (&v)[n]) {
#pragma GCC unroll 6
    for (int k = 1; k < n; ++k)
#pragma GCC unroll 6
        for (int j = k - 1; j >= 0; --j) v[k] = v[k] - a[k][j] * v[j];
#pragma GCC unroll 6
    for (int k = n - 1; k >= 0; --k) {
#pragma GCC unroll 6
        for (int j = n - 1; j > k; --j) v[k] = v[k] - a[k][j] * v[j];
        v[k] = multiplies ? v[k] * a[k][k] : v[k] / a[k][k];
    }
}

// Row `pivots[k]` of a matrix becomes row k.
template <int n, class S, class A>
[[gnu::always_inline]] inline void readPivoted(const A& matrix, const std::byte* pivots, S (&a)[n][n]) {
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k) readRow(matrix, load<std::int32_t>(pivots + 4 * k), a[k]);
}

template <int n, class S, class B>
[[gnu::always_inline]] inline void readPivotedVector(const B& vector, const std::byte* pivots, S (&v)[n]) {
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k)
        v[k] = all<S>(load<ElementOf<S>>(vector.address(0, load<std::int32_t>(pivots + 4 * k))));
}

template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void luSolveSized(const A& matrix, const B& src, const D& dst, const std::byte* pivots) {
    T a[n][n], v[n];
    readPivoted(matrix, pivots, a);
    readPivotedVector(src, pivots, v);
    sweep<false>(a, v);
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
        S a[n][n], v[n];
        const auto matrices = groupAt<lanes>(matrix, t);
        const auto vectors = groupAt<lanes>(src, t);
        const std::byte* const own = pivots + 4 * n * t;
#pragma GCC unroll 6
        for (int k = 0; k < n; ++k) {
            const auto row = [&](int l) { return load<std::int32_t>(own + 4 * (n * l + k)); };
            readRows(matrices, row, a[k]);
            v[k] = readElement<S>(vectors.at(sameRow(0), row));
        }
        sweep<false>(a, v);
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
    S a[n][n];
    readPivoted(matrix.at(0), pivots, a);
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k) a[k][k] = all<S>(1) / a[k][k];
    std::ptrdiff_t t = 0;
    for (; t + lanes <= count; t += lanes) {
        S v[n];
        const auto vectors = groupAt<lanes>(src, t);
#pragma GCC unroll 6
        for (int k = 0; k < n; ++k) v[k] = readElement<S>(vectors.at(0, load<std::int32_t>(pivots + 4 * k)));
        sweep<true>(a, v);
        writeRows(groupAt<lanes>(dst, t), sameRow(0), v);
    }
    for (; t < count; ++t) {
        S v[n];
        readPivotedVector(src.at(t), pivots, v);
        sweep<true>(a, v);
        writeRow(dst.at(t), 0, v);
    }
}

// --- Orders 1 and 2 in lanes ------------------------------------------------------------------------

// Which lanes have row 1 as their first and their second; false if a pivot names no row. At order 1 there is one of them.
template <int n, class S>
[[gnu::always_inline]] inline bool readSmallPivots(const std::byte* pivots, std::ptrdiff_t apart,
                                                   MaskOf<S> (&isLow)[n]) {
    if constexpr (sizeof(S) > 16) {
        MaskOf<HalfOf<S>> low[n], high[n];
        if (!readSmallPivots<n, HalfOf<S>>(pivots, apart, low) ||
            !readSmallPivots<n, HalfOf<S>>(pivots + lanesOf<S> / 2 * apart, apart, high))
            return false;
        for (int k = 0; k < n; ++k) isLow[k] = joinedHalves(low[k], high[k]);
        return true;
    } else {
        using Int4 = MaskOf<Float4>;
        Int4 row[n], all = {};
        if constexpr (isFloat<ElementOf<S>>) {
            Float4 bits[n];
            const Places<const std::byte, 4> places{{pivots, pivots + apart, pivots + 2 * apart, pivots + 3 * apart}};
            readRun<n>(places, bits);
            for (int k = 0; k < n; ++k) row[k] = reinterpret_cast<Int4>(bits[k]);
        } else {
            for (int k = 0; k < n; ++k) {
                const std::int32_t first = load<std::int32_t>(pivots + 4 * k);
                const std::int32_t second = load<std::int32_t>(pivots + apart + 4 * k);
                row[k] = Int4{first, first, second, second};
            }
        }
        for (int k = 0; k < n; ++k) {
            all = all | row[k];
            isLow[k] = reinterpret_cast<MaskOf<S>>(Int4(row[k] != 0));
        }
        return !any(Int4((all & ~(n - 1)) != 0));
    }
}

// In the order of the general solve, whose sums start from zero.
template <int n, class S>
[[gnu::always_inline]] inline void sweepSmall(const S (&a)[n][n], const MaskOf<S> (&isLow)[n], S (&v)[n]) {
    if constexpr (n == 1) {
        v[0] = v[0] / a[0][0];
    } else {
        const auto top = [&](int j) { return chosen(isLow[0], a[1][j], a[0][j]); };
        const auto low = [&](int j) { return chosen(isLow[1], a[1][j], a[0][j]); };
        const S y = chosen(isLow[0], v[1], v[0]);
        v[1] = (chosen(isLow[1], v[1], v[0]) - (S() + low(0) * y)) / low(1);
        v[0] = (y - (S() + top(1) * v[1])) / top(0);
    }
}

template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void luSolveSmall(const A& matrix, const B& src, const D& dst, const std::byte* pivots,
                                    std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr std::ptrdiff_t apart = isShared<A> ? 0 : 4 * n;
    S a[n][n];
    MaskOf<S> isLow[n];
    bool isValid = false;
    if constexpr (isShared<A>) {
        const auto one = matrix.at(0);
        isValid = readSmallPivots<n, S>(pivots, apart, isLow);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) a[i][j] = all<S>(load<T>(one.address(i, j)));
    }
    const auto together = [&](std::ptrdiff_t t) __attribute__((always_inline)) {
        S v[n];
        if constexpr (!isShared<A>) {
            isValid = readSmallPivots<n, S>(pivots + apart * t, apart, isLow);
            readMatrices(groupAt<lanes>(matrix, t), a);
        }
        if (!isValid) return false;
        readRows(groupAt<lanes>(src, t), sameRow(0), v);
        sweepSmall<n>(a, isLow, v);
        writeRows(groupAt<lanes>(dst, t), sameRow(0), v);
        return true;
    };
    const auto each = [&](std::ptrdiff_t t) {
        luSolveGeneral<T>(matrix.at(t), src.at(t), dst.at(t), pivots + apart * t, Known<n>());
        return std::int32_t{korStatusOk};
    };
    std::ptrdiff_t done = 0;
    if constexpr (n == 1) {
        std::int32_t rows = 0;
        for (std::ptrdiff_t t = 0; t < (isShared<A> ? 1 : count); ++t) rows |= load<std::int32_t>(pivots + apart * t);
        if (rows == 0)
            done = computeElements<T>(
                count, [](S a, S b) { return b / a; }, dst, matrix, src);
    }
    inGroups<lanes>(
        count - done, [&](std::ptrdiff_t t) __attribute__((always_inline)) { return together(done + t); },
        [&](std::ptrdiff_t t) __attribute__((always_inline)) { return each(done + t); });
}

// --- Choice ---------------------------------------------------------------------------------------

template <int n, class T, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void luSolveObjects(const A& matrix, const B& src, const D& dst, const std::byte* pivots,
                                                  Count count) {
    if constexpr (isOneObject<Count>) luSolveSized<n, T>(matrix.at(0), src.at(0), dst.at(0), pivots);
    else if constexpr (isShared<A>)
        luSolveVectors<n, T>(matrix, withAnyObjects<n>(src), withAnyObjects<n>(dst), pivots, count);
    else luSolveArray<n, T>(withAnyObjects<1>(matrix), withAnyObjects<1>(src), withAnyObjects<1>(dst), pivots, count);
}

// One matrix for all vectors or one for each.
template <class A, class B, class D, class Count>
[[gnu::always_inline]] inline void luSolve(A matrix, B src, D dst, const std::int32_t* pivots, std::int32_t order,
                                           Count count) {
    using T = typename D::Element;
    const auto* const bytes = reinterpret_cast<const std::byte*>(pivots);
    const auto solveSmall = [&](auto n) __attribute__((always_inline)) {
        if constexpr (isOneObject<Count>)
            luSolveGeneral<T>(matrix.at(0), src.at(0), dst.at(0), bytes, Known<n.value>());
        else
            luSolveSmall<n, T>(withAnyObjects<n>(matrix), withAnyObjects<n>(src), withAnyObjects<n>(dst), bytes, count);
    };
    if (order == 1) return solveSmall(Int<1>());
    if (order == 2) return solveSmall(Int<2>());
    forOrder(
        order, [&](auto n) __attribute__((always_inline)) { luSolveObjects<n, T>(matrix, src, dst, bytes, count); },
        [&]() __attribute__((always_inline)) {
            if constexpr (isOneObject<Count>)
                luSolveGeneral<T>(matrix.at(0), src.at(0), dst.at(0), bytes, static_cast<std::ptrdiff_t>(order));
            else
                luSolveManyGeneral<T>(withAnyObjects<1>(matrix), withAnyObjects<1>(src), withAnyObjects<1>(dst), bytes,
                                      static_cast<std::ptrdiff_t>(order), count);
        });
}

}  // namespace korm::inline KORM_VARIANT::linalg
