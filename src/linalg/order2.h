// Orders 1 and 2 of the algorithms for any order, straight on and in lanes: the same operations in the same order.
// Where an object takes a turn that others don't, nothing is said of the group, and the general kernel does it.
#pragma once

#include "kernel/scalar.h"

namespace korm::inline KORM_VARIANT::linalg {

// The rows in the order of the pivots.
template <class S>
struct PivotedRows {
    S top[2], low[2];
    MaskOf<S> exchanged;

    [[gnu::always_inline]] explicit PivotedRows(const S (&a)[2][2])
        : top{a[0][0], a[0][1]}, low{a[1][0], a[1][1]}, exchanged(asBits(magnitude(a[1][0]) > magnitude(a[0][0]))) {
        exchangeIf(exchanged, top[0], low[0]);
        exchangeIf(exchanged, top[1], low[1]);
    }
    // The last element once the first column is eliminated, with the sign of the exchange.
    [[gnu::always_inline]] S signedLast(S multiplier) const {
        const S last = low[1] - top[1] * multiplier;
        return chosen(exchanged, -last, last);
    }
};

template <class S>
[[gnu::always_inline]] inline bool factorOrder1(const S (&a)[1][1], IndexOf<S> (&row)[1], S tiny) {
    row[0] = allIndices<S>(0);
    return !any(tiny >= magnitude(a[0][0]));
}

template <class S>
[[gnu::always_inline]] inline bool factorOrder2(S (&a)[2][2], IndexOf<S> (&row)[2], S tiny) {
    PivotedRows<S> rows(a);
    row[0] = allIndices<S>(0);
    row[1] = allIndices<S>(1);
    exchangeIf(rows.exchanged, row[0], row[1]);
    const S multiplier = rows.low[0] * (all<S>(1) / rows.top[0]);
    const S last = rows.low[1] - rows.top[1] * multiplier;
    a[0][0] = rows.top[0];
    a[0][1] = rows.top[1];
    a[1][0] = multiplier;
    a[1][1] = last;
    return !any(either(tiny >= magnitude(rows.top[0]), tiny >= magnitude(last)));
}

template <class S>
[[gnu::always_inline]] inline bool determinantOrder2(const S (&a)[2][2], S tiny, S& determinant) {
    const PivotedRows<S> rows(a);
    const S last = rows.signedLast(rows.low[0] / rows.top[0]);
    determinant = chosen(asBits(magnitude(last) > tiny), last * rows.top[0], S());
    return !any(tiny > magnitude(rows.top[0]));
}

// A cofactor is an element of the matrix; if it is not above the tolerance it counts as that.
template <class S>
[[gnu::always_inline]] inline bool invertOrder2(const S (&a)[2][2], S tiny, S (&inverse)[2][2]) {
    const PivotedRows<S> rows(a);
    const S determinant = rows.signedLast(rows.low[0] * (all<S>(1) / rows.top[0])) * rows.top[0];
    const S scale = all<S>(1) / determinant;
#pragma GCC unroll 2
    for (int i = 0; i < 2; ++i)
#pragma GCC unroll 2
        for (int j = 0; j < 2; ++j) {
            const S minor = a[1 - i][1 - j];
            const S scaled = chosen(asBits(magnitude(minor) > tiny), minor, tiny) * scale;
            inverse[j][i] = i == j ? scaled : -scaled;
        }
    return !any(either(tiny > magnitude(rows.top[0]), tiny >= magnitude(determinant)));
}

}  // namespace korm::inline KORM_VARIANT::linalg
