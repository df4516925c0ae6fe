// General eigenproblems: what the functions differ in, and the words that their one text is written in.
#pragma once

#include <cstddef>
#include <limits>
#include <type_traits>

#include "entry/views.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::eigen {

// A policy tells which precision a step computes in. Matrices and vectors in scratch are always of Elements.
//
//   Scalar   all other numbers
//   Norm     sums of squares and their roots
//   Shift    shifts and what is derived from them: results depend on it through the path of convergence only
//   roughRoots  reciprocal roots come from the processor's estimate and one Newton step
template <class T>
struct ElementScalars {
    using Element = T;
    using Scalar = T;
    using Norm = T;
    using Shift = T;
    static constexpr bool roughRoots = false;
};

template <class T>
struct DoubleScalars : ElementScalars<T> {
    using Scalar = double;
    using Norm = double;
    using Shift = float;
};

struct DoubleNorms : ElementScalars<float> {
    using Norm = double;
};

struct RoughRoots : ElementScalars<float> {
    static constexpr bool roughRoots = true;
};

// A divisor of the shift is taken for zero up to this, whatever the element, where shifts are rounded to float.
inline constexpr double smallestDivisor = 0x1p-125;

template <class P>
inline constexpr bool roundsShifts = !std::is_same_v<typename P::Shift, typename P::Scalar>;

template <class T>
struct Limits {
    static constexpr T epsilon = std::numeric_limits<T>::epsilon();
    static constexpr T realBlock = 4 * epsilon;  // from here on a 2 by 2 block has real eigenvalues
    static constexpr T negligible =
        2 * std::numeric_limits<T>::min();  // norms, factors and elements up to this are zero
    static constexpr T big = 1 / (4 * std::numeric_limits<T>::min());  // quotients up to this don't overflow
};

// What an element is compared with whose neighbours are all tiny, and what a divisor is replaced with.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar smallestNumber(std::ptrdiff_t n) {
    using S = typename P::Scalar;
    using L = Limits<typename P::Element>;
    return S(L::negligible) * (static_cast<S>(n) / S(L::epsilon));
}

// --- Scratch ------------------------------------------------------------------------------------------

// A vector in scratch, and a matrix whose column j lies behind column j - 1: elements are read as scalars, and a store
// rounds to the element. Scratch has no alignment.
template <class P>
struct Strip {
    using T = typename P::Element;
    using S = typename P::Scalar;
    std::byte* origin;

    [[gnu::always_inline]] std::byte* address(std::ptrdiff_t i) const {
        return origin + i * static_cast<std::ptrdiff_t>(sizeof(T));
    }
    [[gnu::always_inline]] S operator[](std::ptrdiff_t i) const { return static_cast<S>(load<T>(address(i))); }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, S value) const { store(address(i), static_cast<T>(value)); }
};

template <class P>
struct Columns {
    using S = typename P::Scalar;
    Strip<P> elements;
    std::ptrdiff_t n;

    [[gnu::always_inline]] Strip<P> column(std::ptrdiff_t j) const { return {elements.address(j * n)}; }
    [[gnu::always_inline]] S operator()(std::ptrdiff_t i, std::ptrdiff_t j) const { return elements[j * n + i]; }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, std::ptrdiff_t j, S value) const {
        elements.set(j * n + i, value);
    }
};

// --- Arithmetic ---------------------------------------------------------------------------------------

// The greater and the lesser of two; of numbers that don't compare, the first and the second.
template <class S>
[[gnu::always_inline]] inline S greaterOf(S a, S b) {
    return b > a ? b : a;
}
template <class S>
[[gnu::always_inline]] inline S lesserOf(S a, S b) {
    return b > a ? a : b;
}

template <class S>
[[gnu::always_inline]] inline double wideRoot(S x) {
    return squareRoot(static_cast<double>(x));
}

// A sum over adjacent elements: from 8 on in eight partial sums, to which the rest is added one by one.
template <class S, class Term>
[[gnu::always_inline]] inline S adjacentSum(std::ptrdiff_t terms, const Term& term) {
    constexpr int partials = 8;
    std::ptrdiff_t k = 0;
    S sum{};
    if (terms >= partials) {
        S l[partials] = {};
        for (; k + partials <= terms; k += partials)
            unrolled<partials>([&](auto c) __attribute__((always_inline)) { l[c] += term(k + c); });
        sum = ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
    }
    for (; k < terms; ++k) sum += term(k);
    return sum;
}

// The root of x^2 + y^2 for x and y that aren't negative. The root itself is taken in double.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar hypotenuse(typename P::Scalar x, typename P::Scalar y) {
    using S = typename P::Scalar;
    const S high = greaterOf(x, y), low = lesserOf(x, y);
    if (low < Limits<typename P::Element>::negligible) return high;
    const S ratio = low * low / (high * high);
    return high * static_cast<S>(wideRoot(1.0 + static_cast<double>(ratio)));
}

template <class P>
[[gnu::always_inline]] inline typename P::Scalar reciprocalRoot(typename P::Scalar x) {
    using S = typename P::Scalar;
    if constexpr (P::roughRoots) {
        const S y = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(x)));
        return y * S{-0.5F} * (x * y * y - S{3});
    } else {
        return 1 / squareRoot(x);
    }
}

}  // namespace korm::inline KORM_VARIANT::eigen
