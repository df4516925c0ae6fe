// Inverses of orders 5 and 6 by blocks: one or two pivots are eliminated by columns, and what is left is a 4 by 4
// matrix, which is inverted by its cofactors. Over any scalar.
//
// With the pivots' columns in front the matrix is (P B; C D). S = D - C P' B, where ' is the inverse, and
//
//     inverse = (P' + u S' w   -u S')     u = P' B
//               (   -S' w        S' )     w = C P'
#pragma once

#include "kernel/scalar.h"
#include "linalg/adjugate.h"

namespace korm::inline KORM_VARIANT::linalg {

// The columns that were exchanged for one pivot: at most one mask is set for each object.
template <int n, class S>
struct ColumnExchange {
    MaskOf<S> with[n];
};

// Searches row `k` from column k on and brings the column of the greatest magnitude to place k. Among equals the
// last is taken; at order 5 column 4 alone must be greater than all others.
template <int k, int n, class S>
[[gnu::always_inline]] inline ColumnExchange<n, S> exchangeColumns(S (&a)[n][n]) {
    S best = magnitude(a[k][k]);
    ColumnExchange<n, S> exchange{};
#pragma GCC unroll 6
    for (int j = k + 1; j < n; ++j) {
        const S candidate = magnitude(a[k][j]);
        exchange.with[j] = asBits(n == 5 && j == 4 ? candidate > best : candidate >= best);
        best = chosen(exchange.with[j], candidate, best);
    }
    // Only the last that was taken is exchanged.
    MaskOf<S> later = exchange.with[n - 1];
#pragma GCC unroll 6
    for (int j = n - 2; j > k; --j) {
        const MaskOf<S> taken = exchange.with[j];
        exchange.with[j] = butNot(taken, later);
        later = either(later, taken);
    }
#pragma GCC unroll 6
    for (int j = k + 1; j < n; ++j)
#pragma GCC unroll 6
        for (int i = 0; i < n; ++i) exchangeIf(exchange.with[j], a[i][k], a[i][j]);
    return exchange;
}

// Inverts `a`, which it uses up, unless a pivot or the determinant of S is below `threshold` in any object.
template <int n, class S>
[[gnu::always_inline]] inline bool invertByBlocks(S (&a)[n][n], S threshold, S (&inverse)[n][n]) {
    constexpr int p = n - 4;  // pivots
    ColumnExchange<n, S> exchange[p];
    S r[p], u[p][4], w[4][p];  // reciprocals of the pivots, and the blocks of the formula

    exchange[0] = exchangeColumns<0>(a);
    if (any(threshold > magnitude(a[0][0]))) return false;
    r[0] = reciprocalOf<Reciprocal::newton4>(a[0][0]);
    if constexpr (p == 2) {
        const S factor = a[1][0] * r[0];
#pragma GCC unroll 6
        for (int j = 1; j < n; ++j) a[1][j] = a[1][j] - factor * a[0][j];
        exchange[1] = exchangeColumns<1>(a);
        if (any(threshold > magnitude(a[1][1]))) return false;
        r[1] = reciprocalOf<Reciprocal::newton4>(a[1][1]);
        // From here on: row 1 is that of the triangle, `factor` its multiplier. u by substitution upwards, w by
        // columns from the left.
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j) {
            u[1][j] = a[1][j + 2] * r[1];
            u[0][j] = (a[0][j + 2] - a[0][1] * u[1][j]) * r[0];
        }
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            const S first = a[i + 2][0] * r[0];
            w[i][1] = (a[i + 2][1] - first * a[0][1]) * r[1];
            w[i][0] = first - w[i][1] * factor;
        }
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i)
#pragma GCC unroll 4
            for (int j = 0; j < 4; ++j)
                a[i + 2][j + 2] = (a[i + 2][j + 2] - a[i + 2][0] * u[0][j]) - a[i + 2][1] * u[1][j];
        const S corner = a[0][1] * r[0] * r[1];
        inverse[0][0] = r[0] + corner * factor;
        inverse[0][1] = S() - corner;
        inverse[1][0] = S() - r[1] * factor;
        inverse[1][1] = r[1];
    } else {
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i) {
            u[0][i] = a[0][i + 1] * r[0];
            w[i][0] = a[i + 1][0] * r[0];
        }
#pragma GCC unroll 4
        for (int i = 0; i < 4; ++i)
#pragma GCC unroll 4
            for (int j = 0; j < 4; ++j) a[i + 1][j + 1] = a[i + 1][j + 1] - a[i + 1][0] * u[0][j];
        inverse[0][0] = r[0];
    }

    S left[4][4], leftInverse[4][4], determinant;
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i)
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j) left[i][j] = a[i + p][j + p];
    if (!invertByAdjugate<4, Reciprocal::newton4, Minus::subtracted>(left, threshold, leftInverse, determinant))
        return false;

#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j) inverse[i + p][j + p] = leftInverse[i][j];
#pragma GCC unroll 2
        for (int q = 0; q < p; ++q) {
            S below = leftInverse[i][0] * w[0][q], beside = u[q][0] * leftInverse[0][i];
#pragma GCC unroll 4
            for (int j = 1; j < 4; ++j) {
                below = below + leftInverse[i][j] * w[j][q];
                beside = beside + u[q][j] * leftInverse[j][i];
            }
            inverse[i + p][q] = S() - below;
            inverse[q][i + p] = S() - beside;
        }
    }
#pragma GCC unroll 2
    for (int i = 0; i < p; ++i)
#pragma GCC unroll 2
        for (int q = 0; q < p; ++q)
#pragma GCC unroll 4
            for (int j = 0; j < 4; ++j) inverse[i][q] = inverse[i][q] - u[i][j] * inverse[j + p][q];

                // Columns that were exchanged in the matrix are rows of its inverse.
#pragma GCC unroll 2
    for (int k = p - 1; k >= 0; --k)
#pragma GCC unroll 6
        for (int j = k + 1; j < n; ++j)
#pragma GCC unroll 6
            for (int i = 0; i < n; ++i) exchangeIf(exchange[k].with[j], inverse[k][i], inverse[j][i]);
    return true;
}

}  // namespace korm::inline KORM_VARIANT::linalg
