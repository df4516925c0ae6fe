// Inverses of any order, each element a cofactor of its own: orders 2, 7 and up.
//
// The cost grows with the fifth power of the order, since each of the n^2 elements takes an elimination of order
// n - 1. A cofactor that is too small counts as the tolerance, not as zero: results rest on both.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "entry/lanes.h"
#include "entry/views.h"
#include "korm.h"
#include "linalg/rows.h"
#include "linalg/scalars.h"

namespace korm {

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

    for (std::ptrdiff_t i = 0; i < n; ++i)
        for (std::ptrdiff_t j = 0; j < n; ++j) {
            copyMinor(src, pad, n, i, j);
            pad.reset(n - 1);
            Elimination<T> minor = eliminateRows(pad, n - 1, tiny);
            if (!minor.complete) minor.product = tiny;
            const T last = pad.at(n - 2, n - 2);
            const T value = std::fabs(last) > tiny ? (last * minor.sign) * minor.product : tiny;
            store(dst.address(j, i), (value * scale) * ((i + j) % 2 == 0 ? T{1} : T{-1}));
        }
    return korStatusOk;
}

}  // namespace korm
