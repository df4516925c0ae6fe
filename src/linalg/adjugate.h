// Closed-form inverses: the adjugate times the reciprocal of the determinant, over any scalar.
#pragma once

#include "kernel/scalar.h"
#include "linalg/minors.h"

namespace korm::inline KORM_VARIANT::linalg {

// How a path comes by the reciprocal of a determinant or a pivot. The approximate ones are the processor's 12 bits
// and one Newton step, whose two forms round differently.
enum class Reciprocal { divided, newton3, newton4 };

template <Reciprocal kind, class S>
[[gnu::always_inline]] inline S reciprocalOf(S x) {
    if constexpr (kind == Reciprocal::divided) return all<S>(1) / x;
    else {
        const S r = roughReciprocal(x);
        if constexpr (kind == Reciprocal::newton3) return (r + r) - (x * r) * r;
        else return (r + r) - x * (r * r);
    }
}

// How a cofactor with a negative sign is made of its minor x and the reciprocal r. A minor that is zero gives +0
// by subtraction, whatever the sign of r; by a flip of its sign it may give -0.
enum class Minus { subtracted, flipped };

template <Minus minus, class S>
[[gnu::always_inline]] inline S scaledCofactor(bool positive, S x, S r) {
    if (positive) return x * r;
    if constexpr (minus == Minus::flipped) return -x * r;
    else return S() - x * r;
}

// Inverts `a` into `inverse` unless the determinant of an object is below `threshold`; tells whether one is, and
// the determinant in any case.
template <int n, Reciprocal kind, Minus minus, class S>
[[gnu::always_inline]] inline bool invertByAdjugate(const S (&a)[n][n], S threshold, S (&inverse)[n][n],
                                                    S& determinant) {
    constexpr int size = 1 << n;
    constexpr unsigned everyRow = size - 1;
    S c[n][n];  // columns
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i)
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) c[j][i] = a[i][j];

    // chain[k]: minors of the last k columns.
    S chain[n][size];
    startMinors(c[n - 1], chain[1]);
    if constexpr (n > 2) expandAll<Line::first, 2>(c[n - 2], chain[1], chain[2]);
    if constexpr (n > 3) expandAll<Line::first, 3>(c[n - 3], chain[2], chain[3]);
    if constexpr (n > 4) expandAll<Line::first, 4>(c[n - 4], chain[3], chain[4]);
    if constexpr (n > 5) expandAll<Line::first, 5>(c[n - 5], chain[4], chain[5]);
    determinant = expanded<Line::first, everyRow>(c[0], chain[n - 1]);
    if (any(threshold > magnitude(determinant))) return false;
    // All minors come before the first is scaled: they keep the processor busy until the reciprocal is there.
    const S r = reciprocalOf<kind>(determinant);
    S minorsOf[n][n];
    const auto keepRow = [&](int j, const S(&minors)[size]) __attribute__((always_inline)) {
#pragma GCC unroll 6
        for (int i = 0; i < n; ++i) minorsOf[j][i] = minors[everyRow ^ 1U << i];
    };
    S above[size], own[size];
    keepRow(0, chain[n - 1]);
    expandAll<Line::first, n - 1>(c[0], chain[n - 2], own);
    keepRow(1, own);
    if constexpr (n > 4) {
        expandAll<Line::first, n - 2>(c[1], chain[n - 3], above);
        expandAll<Line::first, n - 1>(c[0], above, own);
        keepRow(2, own);
    }

    // From the first columns upwards, for the rows whose minors have the last columns.
    S front[n][size];
    startMinors(c[0], front[1]);
    expandAll<Line::last, 2>(c[1], front[1], front[2]);
    if constexpr (n == 3) {
        keepRow(2, front[2]);
    } else if constexpr (n == 4) {
        expandAll<Line::last, 3>(c[3], front[2], own);
        keepRow(2, own);
        expandAll<Line::last, 3>(c[2], front[2], own);
        keepRow(3, own);
    } else if constexpr (n == 5) {
        expandAll<Line::last, 3>(c[2], front[2], front[3]);
        expandAll<Line::last, 4>(c[4], front[3], own);
        keepRow(3, own);
        expandAll<Line::last, 4>(c[3], front[3], own);
        keepRow(4, own);
    } else {
        expandAll<Line::last, 3>(c[2], front[2], front[3]);
        expandAll<Line::last, 4>(c[4], front[3], above);
        expandAll<Line::last, 5>(c[5], above, own);
        keepRow(3, own);
        expandAll<Line::last, 4>(c[3], front[3], front[4]);
        expandAll<Line::last, 5>(c[5], front[4], own);
        keepRow(4, own);
        expandAll<Line::last, 5>(c[4], front[4], own);
        keepRow(5, own);
    }
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j)
#pragma GCC unroll 6
        for (int i = 0; i < n; ++i) inverse[j][i] = scaledCofactor<minus>((i + j) % 2 == 0, minorsOf[j][i], r);
    return true;
}

}  // namespace korm::inline KORM_VARIANT::linalg
