// Inverses of any order, each element a cofactor of its own: orders 2, 7 and up.
//
// The cost grows with the fifth power of the order, since each of the n^2 elements takes an elimination of order
// n - 1. A cofactor that is too small counts as the tolerance, not as zero: results rest on both.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/rows.h"
#include "linalg/tolerance.h"

namespace korm::inline KORM_VARIANT::linalg {

// A square matrix in the buffer, with the positions of its rows behind the room for the largest one.
template <class T>
struct Scratchpad {
    Grid<T, Spacing::rowAdjacent> matrix;
    std::byte* positions;

    Scratchpad(T* buffer, std::ptrdiff_t n)
        : matrix(plain(buffer, n * static_cast<std::ptrdiff_t>(sizeof(T))).at(0)), positions(matrix.address(n, 0)) {}

    std::int32_t row(std::ptrdiff_t position) const { return load<std::int32_t>(positions + 4 * position); }
    T at(std::ptrdiff_t position, std::ptrdiff_t j) const { return load<T>(matrix.address(row(position), j)); }
    void reset(std::ptrdiff_t n) const {
        for (std::ptrdiff_t i = 0; i < n; ++i) store(positions + 4 * i, static_cast<std::int32_t>(i));
    }
};

template <class T>
struct Elimination {
    bool complete;
    T sign, product;  // of the exchanges, and of the pivots before the last
};

// Eliminates the first n - 1 columns of the matrix in the scratchpad, unless a pivot is too small.
template <class T>
[[gnu::noinline]] Elimination<T> eliminateRows(Scratchpad<T> pad, std::ptrdiff_t n, T tiny) {
    Elimination<T> result{true, 1, 1};
    for (std::ptrdiff_t k = 0; k < n - 1; ++k) {
        T best;
        const std::ptrdiff_t bestPosition = greatestPosition(
            k, n, [&](std::ptrdiff_t i) { return pad.at(i, k); }, best);
        const std::int32_t pivotRow = pad.row(bestPosition);
        if (bestPosition != k) {
            store(pad.positions + 4 * bestPosition, pad.row(k));
            store(pad.positions + 4 * k, pivotRow);
            result.sign = -result.sign;
        }
        if (tiny > best) {
            result.complete = false;
            return result;
        }
        const T pivot = load<T>(pad.matrix.address(pivotRow, k));
        const T scale = 1 / pivot;
        for (std::ptrdiff_t i = k + 1; i < n; ++i)
            eliminateFromRow(pad.matrix, pad.row(i), pivotRow, pad.at(i, k) * scale, k, n);
        result.product = result.product * pivot;
    }
    return result;
}

// The matrix without one row and one column.
template <class T, class A>
[[gnu::always_inline]] inline void copyMinor(const A& src, const Scratchpad<T>& pad, std::ptrdiff_t n,
                                             std::ptrdiff_t row, std::ptrdiff_t column) {
    for (std::ptrdiff_t i = 0; i < n - 1; ++i)
        for (std::ptrdiff_t j = 0; j < n - 1; ++j)
            store(pad.matrix.address(i, j), load<T>(src.address(i + (i >= row), j + (j >= column))));
}

template <class T, class A>
[[gnu::always_inline]] inline T cofactor(const A& src, const Scratchpad<T>& pad, std::ptrdiff_t n, std::ptrdiff_t row,
                                         std::ptrdiff_t column, T tiny) {
    copyMinor(src, pad, n, row, column);
    pad.reset(n - 1);
    Elimination<T> minor = eliminateRows(pad, n - 1, tiny);
    if (!minor.complete) minor.product = tiny;
    const T last = pad.at(n - 2, n - 2);
    return std::fabs(last) > tiny ? (last * minor.sign) * minor.product : tiny;
}

// --- Minors in lanes ------------------------------------------------------------------------------

// Minors without the same row differ in the column that they are without: each lane has one, with pivots of its own.
// They lie on the stack, which bounds their order.
inline constexpr std::ptrdiff_t greatestMinor = 16;
template <class S>
using Minors = S[greatestMinor][greatestMinor];

// The matrix without one row and, lane by lane, without one of the columns from `column` on.
template <class S, class A>
[[gnu::always_inline]] inline void readMinors(const A& src, Minors<S>& minors, std::ptrdiff_t n, std::ptrdiff_t row,
                                              std::ptrdiff_t column) {
    using T = ElementOf<S>;
    const S without = all<S>(static_cast<T>(column)) + laneNumbers<S>();
    const auto element = [&](std::ptrdiff_t i, std::ptrdiff_t j) {
        return all<S>(load<T>(src.address(i + (i >= row), j)));
    };
    for (std::ptrdiff_t i = 0; i < n - 1; ++i)
        for (std::ptrdiff_t j = 0; j < n - 1; ++j)
            minors[i][j] = chosen(all<S>(static_cast<T>(j)) >= without, element(i, j + 1), element(i, j));
}

// eliminateRows in lanes, with rows exchanged instead of their positions; false if a pivot of any lane is too small.
template <class S>
[[gnu::noinline]] bool eliminateMinors(Minors<S>& a, std::ptrdiff_t n, S tiny, S& sign, S& product) {
    sign = product = all<S>(1);
    for (std::ptrdiff_t k = 0; k < n - 1; ++k) {
        MaskOf<S> with[greatestMinor], exchanged{};
        S multiplier[greatestMinor];
        S best = magnitude(a[k][k]);
        for (std::ptrdiff_t i = k + 1; i < n; ++i) {
            const S candidate = magnitude(a[i][k]);
            with[i] = asBits(candidate > best);
            best = greater(candidate, best);
        }
        if (any(tiny > best)) return false;
        // Only the last that was taken is exchanged.
        for (std::ptrdiff_t i = n - 1; i > k; --i) {
            const MaskOf<S> taken = with[i];
            with[i] = asBits(butNot(taken, exchanged));
            exchanged = either(exchanged, taken);
        }
        sign = chosen(exchanged, -sign, sign);
        const auto exchangeInColumn = [&](std::ptrdiff_t j) __attribute__((always_inline)) {
            S top = a[k][j];
            for (std::ptrdiff_t i = k + 1; i < n; ++i) exchangeIf(with[i], top, a[i][j]);
            return top;
        };
        const S pivot = exchangeInColumn(k), scale = all<S>(1) / pivot;
        for (std::ptrdiff_t i = k + 1; i < n; ++i) multiplier[i] = a[i][k] * scale;
        for (std::ptrdiff_t j = k + 1; j < n; ++j) {
            const S top = exchangeInColumn(j);
            for (std::ptrdiff_t i = k + 1; i < n; ++i) a[i][j] = a[i][j] - top * multiplier[i];
        }
        product = product * pivot;
    }
    return true;
}

// Cofactors of a row, without their alternating sign, from `column` on; false if one has to be computed alone.
template <class S, class A>
[[gnu::noinline]] bool cofactorsInLanes(A src, std::ptrdiff_t n, std::ptrdiff_t row, std::ptrdiff_t column, S tiny,
                                        S& values) {
    Minors<S> minors;
    S sign, product;
    readMinors(src, minors, n, row, column);
    if (!eliminateMinors(minors, n - 1, tiny, sign, product)) return false;
    const S last = minors[n - 2][n - 2];
    values = chosen(magnitude(last) > tiny, (last * sign) * product, tiny);
    return true;
}

// Calls f with the number of lanes for groups of at most `most` cofactors, as a type: of wide vectors as many lanes as can be
// filled, 16 bytes at least, or one.
template <class T, int lanes, class F>
[[gnu::always_inline]] inline void forGroupWidth(std::ptrdiff_t most, const F& f) {
    if constexpr (lanes * sizeof(T) < 16) f(Int<1>{});
    else if (most >= lanes) f(Int<lanes>{});
    else forGroupWidth<T, lanes / 2>(most, f);
}

// --- The inverse ----------------------------------------------------------------------------------

template <class T, class A, class D>
[[gnu::noinline]] std::int32_t invertByCofactors(A src, D dst, T* buffer, std::int32_t order) {
    const std::ptrdiff_t n = order;
    const T tiny = tolerance<T>(order);
    const Scratchpad<T> pad(buffer, n);
    pad.reset(n);
    for (std::ptrdiff_t i = 0; i < n; ++i) copyRow<T>(src, pad.matrix, i, n);
    const Elimination<T> whole = eliminateRows(pad, n, tiny);
    if (!whole.complete) {
        store(pad.matrix.address(0, 0), T{0});
        return korStatusSingular;
    }
    const T determinant = (whole.sign * pad.at(n - 1, n - 1)) * whole.product;
    // Here equality fails, unlike in the closed forms.
    if (tiny >= std::fabs(determinant)) return korStatusSingular;
    const T scale = 1 / determinant;

    const auto write = [&](std::ptrdiff_t i, std::ptrdiff_t j, T value) {
        store(dst.address(j, i), (value * scale) * ((i + j) % 2 == 0 ? T{1} : T{-1}));
    };
    forGroupWidth<T, laneCount<T>>(n <= greatestMinor + 1 ? n : 1, [&](auto lanes) {
        for (std::ptrdiff_t i = 0; i < n; ++i)
            for (std::ptrdiff_t j = 0; j < n; j += lanes) {
                // The last group of a row begins early enough to be full.
                const std::ptrdiff_t first = j + lanes <= n ? j : n - lanes;
                if constexpr (lanes > 1) {
                    using V = Vec<T, lanes>;
                    V values;
                    if (cofactorsInLanes(src, n, i, first, all<V>(tiny), values)) {
                        for (int l = 0; l < lanes; ++l) write(i, first + l, values[l]);
                        continue;
                    }
                }
                for (std::ptrdiff_t l = first; l < first + lanes; ++l) write(i, l, cofactor(src, pad, n, i, l, tiny));
            }
    });
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::linalg
