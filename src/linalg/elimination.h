// Elimination with row pivoting on square matrices of known order, over any scalar.
#pragma once

#include "kernel/scalar.h"

namespace korm::inline KORM_VARIANT::linalg {

// The rows that take part in an exchange with row k: at most one mask is set for each object.
template <int n, class S>
struct RowExchange {
    MaskOf<S> with[n];
};

// Strictly greater: the first of equals stays, and a NaN is never taken but never left either.
template <int k, int n, class S>
[[gnu::always_inline]] inline RowExchange<n, S> searchColumn(const S (&a)[n][n], S& best) {
    RowExchange<n, S> exchange{};
    best = magnitude(a[k][k]);
#pragma GCC unroll 6
    for (int i = k + 1; i < n; ++i) {
        const S candidate = magnitude(a[i][k]);
        exchange.with[i] = asBits(candidate > best);
        best = greater(candidate, best);
    }
    // Only the last that was taken is exchanged.
    MaskOf<S> later = exchange.with[n - 1];
#pragma GCC unroll 6
    for (int i = n - 2; i > k; --i) {
        const MaskOf<S> taken = exchange.with[i];
        exchange.with[i] = butNot(taken, later);
        later = either(later, taken);
    }
    return exchange;
}

template <int k, int n, class S>
[[gnu::always_inline]] inline void exchangeInColumn(const RowExchange<n, S>& exchange, S (&a)[n][n], int j) {
#pragma GCC unroll 6
    for (int i = k + 1; i < n; ++i) exchangeIf(exchange.with[i], a[k][j], a[i][j]);
}

// One step; false if the pivot of an object is below `tiny`. The exchange is done in any case, for the caller sees
// it in the pivots. Column by column, so that a column's elements are in registers for exchange and update.
template <int k, int n, class S>
[[gnu::always_inline]] inline bool eliminateColumn(S (&a)[n][n], IndexOf<S> (&row)[n], S tiny) {
    S best;
    const RowExchange<n, S> exchange = searchColumn<k>(a, best);
#pragma GCC unroll 6
    for (int i = k + 1; i < n; ++i) exchangeIf(exchange.with[i], row[k], row[i]);
    if (any(tiny > best)) return false;
    exchangeInColumn<k>(exchange, a, k);
    // One remaining row costs one division either way, so it has the exact one.
    const S scale = k < n - 2 ? all<S>(1) / a[k][k] : a[k][k];
#pragma GCC unroll 6
    for (int i = k + 1; i < n; ++i) a[i][k] = k < n - 2 ? a[i][k] * scale : a[i][k] / scale;
#pragma GCC unroll 6
    for (int j = k + 1; j < n; ++j) {
        exchangeInColumn<k>(exchange, a, j);
#pragma GCC unroll 6
        for (int i = k + 1; i < n; ++i) a[i][j] = a[i][j] - a[k][j] * a[i][k];
    }
#pragma GCC unroll 6
    for (int j = 0; j < k; ++j) exchangeInColumn<k>(exchange, a, j);
    return true;
}

// Factors `a`, whose rows end up in the order of the pivots with `row` saying where they came from; rows are
// moved here, in registers, and go back to their places when they are stored.
//
// Returns the number of finished rows: n, or the step at which the pivot of an object was below `tiny`.
template <int n, class S>
[[gnu::always_inline]] inline int eliminate(S (&a)[n][n], IndexOf<S> (&row)[n], S tiny) {
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) row[i] = allIndices<S>(i);
    if (!eliminateColumn<0>(a, row, tiny)) return 0;
    if (!eliminateColumn<1>(a, row, tiny)) return 1;
    if constexpr (n > 3)
        if (!eliminateColumn<2>(a, row, tiny)) return 2;
    if constexpr (n > 4)
        if (!eliminateColumn<3>(a, row, tiny)) return 3;
    if constexpr (n > 5)
        if (!eliminateColumn<4>(a, row, tiny)) return 4;
    return any(tiny > magnitude(a[n - 1][n - 1])) ? n - 1 : n;
}

}  // namespace korm::inline KORM_VARIANT::linalg
