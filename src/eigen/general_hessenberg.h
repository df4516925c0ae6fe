// General eigenproblems: reflections, and the reduction of a matrix to Hessenberg form by them.
#pragma once

#include <cstddef>

#include "eigen/general_policies.h"

namespace korm::inline KORM_VARIANT::eigen {

// The reflection I - tau v v^T, v = (1, x), takes (alpha, x) to (beta, 0): puts beta into alpha and gives tau. `squares`
// is the sum of the squares of x, `scale` multiplies x by its argument. A tau of zero leaves everything as it is, as it does
// outside of `lanes`.
template <class P, class Scale>
[[gnu::always_inline]] inline typename P::Scalar makeReflection(typename P::Scalar& alpha, typename P::Norm squares,
                                                                MaskOf<typename P::Scalar> lanes, const Scale& scale) {
    using S = typename P::Scalar;
    const S norm = static_cast<S>(squareRoot(squares)), one = constant<P>(1);
    lanes = asBits(butNot(lanes, norm < constant<P>(Limits<typename P::Element>::negligible)));
    if (!any(lanes)) return S{};
    const S length = hypotenuse<P>(magnitude(alpha), norm);  // at least `norm`
    const S beta = chosen(asBits(alpha < S{}), length, S{} - length);
    const S difference = beta - alpha;
    scale(chosen(lanes, one / (S{} - difference), one));
    alpha = chosen(lanes, beta, alpha);
    return onlyIn(lanes, difference / beta);
}

template <class P>
[[gnu::always_inline]] inline MaskOf<typename P::Scalar> isApplied(typename P::Scalar tau) {
    return asBits(magnitude(tau) > constant<P>(Limits<typename P::Element>::negligible));
}

// For each row i the sum of start(i) and the products of `count` columns, from `first` on, with as many coefficients,
// added one by one and given to put(i, sum).
template <class P, class Start, class Put>
[[gnu::always_inline]] inline void combineColumns(Columns<P> a, std::ptrdiff_t first, std::ptrdiff_t count,
                                                  Strip<P> coefficients, const Start& start, const Put& put) {
    using S = typename P::Scalar;
    const auto rows = [&](std::ptrdiff_t i, auto number) __attribute__((always_inline)) {
        S sums[number];
        unrolled<number>([&](auto l) __attribute__((always_inline)) { sums[l] = start(i + l); });
        for (std::ptrdiff_t c = 0; c < count; ++c) {
            const Strip<P> column = a.column(first + c);
            const S coefficient = coefficients[c];
            unrolled<number>([&](auto l)
                                 __attribute__((always_inline)) { sums[l] = sums[l] + coefficient * column[i + l]; });
        }
        unrolled<number>([&](auto l) __attribute__((always_inline)) { put(i + l, sums[l]); });
    };
    constexpr int together = lanesOf<S> == 1 ? 4 : 2;
    std::ptrdiff_t i = 0;
    for (; i + together <= a.n; i += together) rows(i, Int<together>{});
    for (; i < a.n; ++i) rows(i, Int<1>{});
}

// Reduces h to Hessenberg form, column by column: h becomes Q^T h Q. What defines Q stays below the first subdiagonal, a
// reflection's v without its leading 1, and in `tau`. `work` holds n numbers.
template <class P>
[[gnu::noinline]] void reduceToHessenberg(Columns<P> h, Strip<P> tau, Strip<P> work) {
    using S = typename P::Scalar;
    using N = typename P::Norm;
    const std::ptrdiff_t n = h.n;
    for (std::ptrdiff_t k = 0; k < n - 1; ++k) {
        const std::ptrdiff_t size = n - k - 1;
        const Strip<P> v{h.column(k).address(k + 1)};
        S beta = v[0], factor{};
        if (size > 1) {
            const N squares = adjacentSum<N>(size - 1, [&](std::ptrdiff_t i) {
                const N x = static_cast<N>(v[i + 1]);
                return x * x;
            });
            factor = makeReflection<P>(beta, squares, everyLane<S>(), [&](S scale) {
                for (std::ptrdiff_t i = 1; i < size; ++i) v.set(i, v[i] * scale);
            });
        }
        tau.set(k, factor);
        v.set(0, constant<P>(1));
        const MaskOf<S> lanes = isApplied<P>(factor);
        if (any(lanes)) {
            // Where it isn't applied v becomes +0, and so do all products.
            if constexpr (lanesOf < S >> 1)
                for (std::ptrdiff_t i = 0; i < size; ++i) v.set(i, onlyIn(lanes, v[i]));
            combineColumns(
                h, k + 1, size, v, [](std::ptrdiff_t) { return S{}; },
                [&](std::ptrdiff_t i, S sum) { work.set(i, onlyIn(lanes, sum)); });
            for (std::ptrdiff_t c = 0; c < size; ++c) {
                const Strip<P> column = h.column(k + 1 + c);
                const S multiplier = onlyIn(lanes, factor * v[c]);
                for (std::ptrdiff_t i = 0; i < n; ++i) column.set(i, column[i] - multiplier * work[i]);
            }
            for (std::ptrdiff_t r = 0; r < size; ++r) {
                const Strip<P> column{h.column(k + 1 + r).address(k + 1)};
                const S sum = adjacentSum<S>(size, [&](std::ptrdiff_t c) { return column[c] * v[c]; });
                const S multiplier = onlyIn(lanes, factor * sum);
                for (std::ptrdiff_t c = 0; c < size; ++c) column.set(c, column[c] - multiplier * v[c]);
            }
        }
        v.set(0, beta);
    }
}

// q becomes the product of the reflections of a reduction, from the last to the first.
template <class P>
[[gnu::noinline]] void collectReflections(Columns<P> h, Strip<P> tau, Columns<P> q) {
    using S = typename P::Scalar;
    const std::ptrdiff_t n = h.n;
    for (std::ptrdiff_t j = 0; j < n; ++j)
        for (std::ptrdiff_t i = 0; i < n; ++i) q.set(i, j, constant<P>(i == j));
    for (std::ptrdiff_t k = n - 3; k >= 0; --k) {
        const MaskOf<S> lanes = isApplied<P>(tau[k]);
        if (!any(lanes)) continue;
        const Strip<P> v{h.column(k).address(k + 1)};
        for (std::ptrdiff_t j = k + 1; j < n; ++j) {
            const Strip<P> column{q.column(j).address(k + 1)};
            const S sum =
                column[0] + adjacentSum<S>(n - k - 2, [&](std::ptrdiff_t i) { return column[i + 1] * v[i + 1]; });
            const S multiplier = onlyIn(lanes, tau[k] * sum);
            column.set(0, column[0] - multiplier);
            for (std::ptrdiff_t i = 1; i < n - k - 1; ++i) column.set(i, column[i] - multiplier * v[i]);
        }
    }
}

template <class P>
[[gnu::always_inline]] inline void clearBelowSubdiagonal(Columns<P> h) {
    using S = typename P::Scalar;
    for (std::ptrdiff_t k = 0; k < h.n - 2; ++k)
        for (std::ptrdiff_t i = k + 2; i < h.n; ++i) h.set(i, k, S{});
}

}  // namespace korm::inline KORM_VARIANT::eigen
