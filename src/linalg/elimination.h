// Elimination with row pivoting on square matrices of known order, over any scalar.
#pragma once

#include "linalg/scalars.h"

namespace korm {

// Factors `a`, whose rows end up in the order of the pivots with `row` saying where they came from; rows are
// moved here, in registers, and go back to their places when they are stored.
//
// Returns the number of finished rows: n, or the step at which the pivot of an object was below `tiny`. The
// exchange of that step is done then, for the caller sees it in the pivots.
template <int n, class S>
[[gnu::always_inline]] inline int eliminate(S (&a)[n][n], IndexOf<S> (&row)[n], S tiny) {
#pragma GCC unroll 6
    for (int i = 0; i < n; ++i) row[i] = allIndices<S>(i);
#pragma GCC unroll 6
    for (int k = 0; k < n - 1; ++k) {
        // Strictly greater: the first of equals stays, and a NaN is never taken but never left either.
        S best = magnitude(a[k][k]);
        MaskOf<S> taken[n] = {};
#pragma GCC unroll 6
        for (int i = k + 1; i < n; ++i) {
            const S candidate = magnitude(a[i][k]);
            const MaskOf<S> greater = candidate > best;
            best = chosen(greater, candidate, best);
            taken[i] = greater;
        }
        // Only the last that was taken is exchanged with row k.
        MaskOf<S> later = {};
#pragma GCC unroll 6
        for (int i = n - 1; i > k; --i) {
            const MaskOf<S> here = butNot(taken[i], later);
            later = either(later, taken[i]);
#pragma GCC unroll 6
            for (int j = 0; j < n; ++j) exchangeIf(here, a[k][j], a[i][j]);
            exchangeIf(here, row[k], row[i]);
        }
        if (any(tiny > best)) return k;
        const S pivot = a[k][k];
        // One remaining row costs one division either way, so it has the exact one.
        const S scale = k < n - 2 ? all<S>(1) / pivot : pivot;
#pragma GCC unroll 6
        for (int i = k + 1; i < n; ++i) {
            const S multiplier = k < n - 2 ? a[i][k] * scale : a[i][k] / scale;
            a[i][k] = multiplier;
#pragma GCC unroll 6
            for (int j = k + 1; j < n; ++j) a[i][j] = a[i][j] - a[k][j] * multiplier;
        }
    }
    return any(tiny > magnitude(a[n - 1][n - 1])) ? n - 1 : n;
}

}  // namespace korm
