// Scalars of linear algebra: an algorithm is written once over S, which is
//
//   float, double     one object: the form that all others are held against
//   long double       one object in the extended precision of the x87 unit
//   Float4, Double2   one object in each lane, each lane exactly as the scalar would
//
// Decisions are masks: bool for one object, all bits of a lane for lanes.
#pragma once

#include <tmmintrin.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "entry/lanes.h"

namespace korm {

// What a comparison of lanes gives; which integer type has 64 bits differs between targets.
using Int4 = decltype(Float4{} < Float4{});
using Long2 = decltype(Double2{} < Double2{});

// Element: what is in memory. Mask: the type of a comparison. Index: a small integer that masks can move.
template <class S>
struct ScalarTraits {
    using Element = S;
    using Mask = bool;
    using Index = std::int32_t;
    static constexpr int lanes = 1;
};
template <>
struct ScalarTraits<Float4> {
    using Element = float;
    using Mask = Int4;
    using Index = Int4;
    static constexpr int lanes = 4;
};
template <>
struct ScalarTraits<Double2> {
    using Element = double;
    using Mask = Long2;
    using Index = Long2;
    static constexpr int lanes = 2;
};

template <class S>
using ElementOf = typename ScalarTraits<S>::Element;
template <class S>
using MaskOf = typename ScalarTraits<S>::Mask;
template <class S>
using IndexOf = typename ScalarTraits<S>::Index;
template <class S>
inline constexpr int lanesOf = ScalarTraits<S>::lanes;

// The number of each lane.
template <class T>
[[gnu::always_inline]] inline Lanes<T> numbered() {
    if constexpr (laneCount<T> == 4) return Float4{0, 1, 2, 3};
    else return Double2{0, 1};
}

// The same value in all lanes.
template <class S>
[[gnu::always_inline]] inline S all(ElementOf<S> value) {
    if constexpr (lanesOf<S> == 1) return value;
    else return broadcast(value);
}

template <class S>
[[gnu::always_inline]] inline S magnitude(S x) {
    if constexpr (lanesOf<S> == 1) return std::fabs(x);
    else return reinterpret_cast<S>(reinterpret_cast<MaskOf<S>>(x) & ~reinterpret_cast<MaskOf<S>>(all<S>(-0.0F)));
}

// The first if it is greater, else, and if they don't compare, the second: what the processor's maximum does.
template <class S>
[[gnu::always_inline]] inline S greater(S a, S b) {
    return a > b ? a : b;
}
[[gnu::always_inline]] inline Float4 greater(Float4 a, Float4 b) {
    return reinterpret_cast<Float4>(_mm_max_ps(reinterpret_cast<__m128>(a), reinterpret_cast<__m128>(b)));
}
[[gnu::always_inline]] inline Double2 greater(Double2 a, Double2 b) {
    return reinterpret_cast<Double2>(_mm_max_pd(reinterpret_cast<__m128d>(a), reinterpret_cast<__m128d>(b)));
}

template <class S>
[[gnu::always_inline]] inline IndexOf<S> allIndices(int number) {
    if constexpr (lanesOf<S> == 1) return number;
    else if constexpr (lanesOf<S> == 2) return Long2{number, number};
    else return Int4{number, number, number, number};
}

[[gnu::always_inline]] inline bool any(bool mask) { return mask; }
[[gnu::always_inline]] inline bool any(Int4 mask) { return _mm_movemask_epi8(reinterpret_cast<__m128i>(mask)) != 0; }
[[gnu::always_inline]] inline bool any(Long2 mask) { return _mm_movemask_epi8(reinterpret_cast<__m128i>(mask)) != 0; }

[[gnu::always_inline]] inline bool either(bool a, bool b) { return a || b; }
template <class M>
[[gnu::always_inline]] inline M either(M a, M b) {
    return a | b;
}
[[gnu::always_inline]] inline bool butNot(bool a, bool b) { return a && !b; }
template <class M>
[[gnu::always_inline]] inline M butNot(M a, M b) {
    return a & ~b;
}

// Hides from the optimiser that a mask came from a comparison: knowing it, gcc takes exchanges apart into selects,
// those of doubles into branches or moves of single elements.
[[gnu::always_inline]] inline bool asBits(bool mask) { return mask; }
template <class M>
[[gnu::always_inline]] inline M asBits(M mask) {
    asm("" : "+x"(mask));
    return mask;
}

// The first where the mask is set, else the second.
template <class X>
[[gnu::always_inline]] inline X chosen(bool mask, X first, X second) {
    return mask ? first : second;
}
template <class X>
[[gnu::always_inline]] inline X chosen(Int4 mask, X first, X second) {
    return reinterpret_cast<X>((mask & reinterpret_cast<Int4>(first)) | (~mask & reinterpret_cast<Int4>(second)));
}
template <class X>
[[gnu::always_inline]] inline X chosen(Long2 mask, X first, X second) {
    return reinterpret_cast<X>((mask & reinterpret_cast<Long2>(first)) | (~mask & reinterpret_cast<Long2>(second)));
}

template <class X>
[[gnu::always_inline]] inline void exchangeIf(bool mask, X& a, X& b) {
    const X old = a;
    a = mask ? b : a;
    b = mask ? old : b;
}
template <class M, class X>
[[gnu::always_inline]] inline void exchangeIf(M mask, X& a, X& b) {
    const M difference = (reinterpret_cast<M>(a) ^ reinterpret_cast<M>(b)) & mask;
    a = reinterpret_cast<X>(reinterpret_cast<M>(a) ^ difference);
    b = reinterpret_cast<X>(reinterpret_cast<M>(b) ^ difference);
}

// The processor's approximate reciprocal, good to about 12 bits.
[[gnu::always_inline]] inline float roughReciprocal(float x) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x))); }
[[gnu::always_inline]] inline Float4 roughReciprocal(Float4 x) {
    return reinterpret_cast<Float4>(_mm_rcp_ps(reinterpret_cast<__m128>(x)));
}

// 2 * n^3 as a 32-bit integer that wraps, times the smallest normal number: below it a pivot or a
// determinant counts as zero.
template <class T>
inline T tolerance(std::int32_t n) {
    const auto u = static_cast<std::uint32_t>(n);
    return static_cast<T>(static_cast<std::int32_t>(u * 2 * (u * u))) * std::numeric_limits<T>::min();
}

}  // namespace korm
