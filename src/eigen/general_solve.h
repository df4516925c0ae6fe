// General eigenproblems: the small systems of the back substitution, for real and for complex unknowns.
#pragma once

#include <utility>

#include "eigen/general_policies.h"

namespace korm::inline KORM_VARIANT::eigen {

template <class S>
struct Complex {
    S re, im;
};

template <class S>
[[gnu::always_inline]] inline Complex<S> operator-(Complex<S> x, Complex<S> y) {
    return {x.re - y.re, x.im - y.im};
}
template <class S>
[[gnu::always_inline]] inline Complex<S> operator*(S x, Complex<S> y) {
    return {x * y.re, x * y.im};
}
template <class S>
[[gnu::always_inline]] inline Complex<S> operator*(Complex<S> x, Complex<S> y) {
    return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
}
// By the quotient of the divisor's parts, so that no square over- or underflows.
template <class S>
[[gnu::always_inline]] inline Complex<S> operator/(Complex<S> x, Complex<S> y) {
    if (magnitude(y.re) >= magnitude(y.im)) {
        const S ratio = y.im / y.re, divisor = y.re + y.im * ratio;
        return {(x.re + x.im * ratio) / divisor, (x.im - x.re * ratio) / divisor};
    }
    const S ratio = y.re / y.im, divisor = y.re * ratio + y.im;
    return {(x.re * ratio + x.im) / divisor, (x.im * ratio - x.re) / divisor};
}

// What an unknown is compared by.
template <class S>
[[gnu::always_inline]] inline S sizeOf(S x) {
    return magnitude(x);
}
template <class S>
[[gnu::always_inline]] inline S sizeOf(Complex<S> x) {
    return magnitude(x.re) + magnitude(x.im);
}

template <class U>
inline constexpr bool isComplex = !std::is_arithmetic_v<U>;

// A real number as an unknown.
template <class U, class S>
[[gnu::always_inline]] inline U asUnknown(S x) {
    if constexpr (isComplex<U>) return {x, 0};
    else return x;
}

// x solves the system whose right-hand side was multiplied by `scale`.
template <class U, class S>
struct Solution {
    U x[2];
    S scale;
    bool found;
};

// What to multiply a right-hand side of this size with, so that it can be divided by `divisor`.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar safeScale(typename P::Scalar size, typename P::Scalar divisor) {
    constexpr typename P::Scalar big = Limits<typename P::Element>::big;
    return divisor < 1 && size > 1 && size > big * divisor ? 1 / size : 1;
}

// One unknown. A divisor below `least` counts as that.
template <class P, class U>
[[gnu::always_inline]] inline Solution<U, typename P::Scalar> solveOne(U divisor, U b, typename P::Scalar least) {
    if (sizeOf(divisor) < least) divisor = asUnknown<U>(least);
    const typename P::Scalar scale = safeScale<P>(sizeOf(b), sizeOf(divisor));
    return {{scale * b / divisor, U{}}, scale, true};
}

// Two unknowns, by elimination with complete pivoting. `c` are the coefficients by columns. Not found, where the greatest of
// them is below `least`.
template <class P, class U>
[[gnu::always_inline]] inline Solution<U, typename P::Scalar> solveTwo(const U (&c)[4], const U (&b)[2],
                                                                       typename P::Scalar least) {
    using S = typename P::Scalar;
    int pivot = 0;
    S greatest = 0;
    for (int i = 0; i < 4; ++i) {
        if (!(sizeOf(c[i]) > greatest)) continue;
        greatest = sizeOf(c[i]);
        pivot = i;
    }
    if (greatest < least) return {{}, 1, false};
    // From the pivot's place the others are found by flipping the bits of row (1) and column (2).
    const bool swapsRows = (pivot & 1) != 0, swapsColumns = (pivot & 2) != 0;
    const U u11 = c[pivot], u12 = c[pivot ^ 2];
    const U l21 = c[pivot ^ 1] / u11;
    U u22 = c[pivot ^ 3] - u12 * l21;
    if (sizeOf(u22) < least) u22 = asUnknown<U>(least);
    U first = b[swapsRows ? 1 : 0];
    U second = b[swapsRows ? 0 : 1] - l21 * first;
    const S bound = greaterOf(sizeOf(first) * (sizeOf(u22) / sizeOf(u11)), sizeOf(second));
    const S scale = safeScale<P>(bound, sizeOf(u22));
    second = scale * second / u22;
    first = (scale * first - u12 * second) / u11;
    if (swapsColumns) std::swap(first, second);
    return {{first, second}, scale, true};
}

}  // namespace korm::inline KORM_VARIANT::eigen
