// General eigenproblems: what the functions differ in, and the words that their one text is written in.
#pragma once

#include <cstddef>
#include <limits>
#include <type_traits>

#include "eigen/cells.h"
#include "eigen/general_lanes.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"

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

// What is left of a policy for steps that don't depend on all of it, so that they have fewer instances.
template <class P>
using WithoutNorms = std::conditional_t<std::is_same_v<typename P::Scalar, typename P::Element>,
                                        ElementScalars<typename P::Element>, DoubleScalars<typename P::Element>>;
template <class P>
using WithoutShifts = std::conditional_t<std::is_same_v<typename P::Norm, typename P::Scalar>, WithoutNorms<P>, P>;

// The same for a group, one object in each lane.
template <class P>
struct Grouped : P {
    static_assert(std::is_same_v<typename P::Norm, typename P::Scalar>);
    using One = P;
    using Scalar = Twin<Lanes<typename P::Scalar>>;
    using Norm = Scalar;
};

// A divisor of the shift is taken for zero up to this, whatever the element, where shifts are rounded to float.
inline constexpr double smallestDivisor = 0x1p-125;

template <class P>
inline constexpr bool roundsShifts = !std::is_same_v<typename P::Shift, ElementOf<typename P::Scalar>>;

template <class T>
struct Limits {
    static constexpr T epsilon = std::numeric_limits<T>::epsilon();
    static constexpr T realBlock = 4 * epsilon;  // from here on a 2 by 2 block has real eigenvalues
    static constexpr T negligible =
        2 * std::numeric_limits<T>::min();  // norms, factors and elements up to this are zero
    static constexpr T big = 1 / (4 * std::numeric_limits<T>::min());  // quotients up to this don't overflow
};

template <class P, class Number>
[[gnu::always_inline]] inline typename P::Scalar constant(Number x) {
    using S = typename P::Scalar;
    return all<S>(static_cast<ElementOf<S>>(x));
}

// What an element is compared with whose neighbours are all tiny, and what a divisor is replaced with.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar smallestNumber(std::ptrdiff_t n) {
    using E = ElementOf<typename P::Scalar>;
    using L = Limits<typename P::Element>;
    return constant<P>(E(L::negligible) * (static_cast<E>(n) / E(L::epsilon)));
}

// --- Scratch ------------------------------------------------------------------------------------------

// A vector in scratch, and a matrix whose column j lies behind column j - 1: elements are read as scalars, and a store
// rounds to the element. Scratch has no alignment. Of a group each element is a cell with one of each object; one object of
// it is reached with a step of as many elements.
template <class P, int step = lanesOf<typename P::Scalar>>
struct Strip {
    using T = typename P::Element;
    using S = typename P::Scalar;
    std::byte* origin;

    [[gnu::always_inline]] std::byte* address(std::ptrdiff_t i) const {
        return origin + i * static_cast<std::ptrdiff_t>(step * sizeof(T));
    }
    [[gnu::always_inline]] S operator[](std::ptrdiff_t i) const { return readCell<S, T>(address(i)); }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, S value) const { writeCell<S, T>(address(i), value); }
};

template <class P, int step = lanesOf<typename P::Scalar>>
struct Columns {
    using S = typename P::Scalar;
    Strip<P, step> elements;
    std::ptrdiff_t n;

    [[gnu::always_inline]] Strip<P, step> column(std::ptrdiff_t j) const { return {elements.address(j * n)}; }
    [[gnu::always_inline]] S operator()(std::ptrdiff_t i, std::ptrdiff_t j) const { return elements[j * n + i]; }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, std::ptrdiff_t j, S value) const {
        elements.set(j * n + i, value);
    }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, std::ptrdiff_t j, S value, MaskOf<S> lanes) const {
        if constexpr (lanesOf < S >> 1) value = chosen(lanes, value, (*this)(i, j));
        else if (!lanes) return;
        set(i, j, value);
    }
};

// The same under another policy.
template <class Q, class P>
[[gnu::always_inline]] inline Strip<Q> as(Strip<P> strip) {
    return {strip.origin};
}
template <class Q, class P>
[[gnu::always_inline]] inline Columns<Q> as(Columns<P> matrix) {
    return {as<Q>(matrix.elements), matrix.n};
}

// One object of a group.
template <class P>
using LaneColumns = Columns<typename P::One, lanesOf<typename P::Scalar>>;
template <class P>
[[gnu::always_inline]] inline LaneColumns<P> laneOf(Columns<P> a, std::ptrdiff_t l) {
    return {{a.elements.origin + l * static_cast<std::ptrdiff_t>(sizeof(typename P::Element))}, a.n};
}

// --- Arithmetic ---------------------------------------------------------------------------------------

// The greater and the lesser of two; of numbers that don't compare, the first and the second.
template <class S>
[[gnu::always_inline]] inline S greaterOf(S a, S b) {
    return greater(b, a);
}
template <class S>
[[gnu::always_inline]] inline S lesserOf(S a, S b) {
    return chosen(asBits(b > a), a, b);
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
    const MaskOf<S> alone = asBits(low < constant<P>(Limits<typename P::Element>::negligible));
    if constexpr (lanesOf<S> == 1)
        if (alone) return high;
    const S ratio = low * low / (high * high);
    const S root = inDoubles([](auto q) { return squareRoot(all<decltype(q)>(1) + q); }, ratio);
    return chosen(alone, high, high * root);
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
