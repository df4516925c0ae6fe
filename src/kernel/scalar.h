// What an algorithm may do with its scalar S. It is written once and serves as
//
//   float, double     one object: the form that all others are held against
//   long double       one object in the extended precision of the x87 unit
//   Vec<T, N>         one object in each lane, each lane exactly as the scalar would
//
// Decisions are masks: bool for one object, all bits of a lane for lanes.
#pragma once

#include <tmmintrin.h>
#if KORM_VECTOR_BYTES > 16
#include <immintrin.h>
#endif

#include <cmath>
#include <cstdint>

#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT {

// Element: what is in memory. Mask: what a comparison gives. Index: a small integer that masks can move.
template <class S>
struct ScalarTraits {
    using Element = std::remove_reference_t<decltype(std::declval<S&>()[0])>;
    using Mask = decltype(std::declval<S>() < std::declval<S>());
    using Index = Mask;
    static constexpr int lanes = sizeof(S) / sizeof(Element);
};
template <class S>
requires std::is_arithmetic_v<S>
struct ScalarTraits<S> {
    using Element = S;
    using Mask = bool;
    using Index = std::int32_t;
    static constexpr int lanes = 1;
};

template <class S>
using ElementOf = typename ScalarTraits<S>::Element;
template <class S>
using MaskOf = typename ScalarTraits<S>::Mask;
template <class S>
using IndexOf = typename ScalarTraits<S>::Index;
template <class S>
inline constexpr int lanesOf = ScalarTraits<S>::lanes;

// The same value in all lanes.
template <class S>
[[gnu::always_inline]] inline S all(ElementOf<S> value) {
    if constexpr (lanesOf<S> == 1) return value;
    else return fromLanes<S>([value](int) { return value; });
}

template <class S>
[[gnu::always_inline]] inline ElementOf<S> firstLane(S x) {
    if constexpr (lanesOf<S> == 1) return x;
    else return x[0];
}

template <class S>
[[gnu::always_inline]] inline IndexOf<S> allIndices(int number) {
    if constexpr (lanesOf<S> == 1) return number;
    else return all<IndexOf<S>>(number);
}

// The number of each lane.
template <class S>
[[gnu::always_inline]] inline S laneNumbers() {
    return fromLanes<S>([](int l) { return static_cast<ElementOf<S>>(l); });
}

template <class S>
[[gnu::always_inline]] inline S magnitude(S x) {
    if constexpr (lanesOf<S> == 1) return std::fabs(x);
    else return reinterpret_cast<S>(reinterpret_cast<MaskOf<S>>(x) & ~reinterpret_cast<MaskOf<S>>(all<S>(-0.0F)));
}

// The processor's root, which is rounded correctly. By its instructions: of a negative number the library's function would
// be called as well, to set an error number.
template <class S>
[[gnu::always_inline]] inline S squareRoot(S x) {
    if constexpr (std::is_same_v<S, float>) return _mm_cvtss_f32(_mm_sqrt_ss(_mm_set_ss(x)));
    else if constexpr (std::is_same_v<S, double>) return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_set_sd(x), _mm_set_sd(x)));
    else if constexpr (sizeof(S) > 16) return joinedHalves(squareRoot(lowHalf(x)), squareRoot(highHalf(x)));
    else if constexpr (isFloat<ElementOf<S>>) return reinterpret_cast<S>(_mm_sqrt_ps(reinterpret_cast<__m128>(x)));
    else return reinterpret_cast<S>(_mm_sqrt_pd(reinterpret_cast<__m128d>(x)));
}

// --- Masks --------------------------------------------------------------------------------------

[[gnu::always_inline]] inline bool any(bool mask) { return mask; }
template <class M>
[[gnu::always_inline]] inline bool any(M mask) {
    static_assert(sizeof(M) % 16 == 0);
    if constexpr (sizeof(M) == 16) return _mm_movemask_epi8(reinterpret_cast<__m128i>(mask)) != 0;
    else return any(lowHalf(mask) | highHalf(mask));
}

template <class M>
[[gnu::always_inline]] inline M either(M a, M b) {
    if constexpr (std::is_same_v<M, bool>) return a || b;
    else return a | b;
}
template <class M>
[[gnu::always_inline]] inline M butNot(M a, M b) {
    if constexpr (std::is_same_v<M, bool>) return a && !b;
    else return a & ~b;
}

// Hides from the optimiser that a mask came from a comparison: knowing it, gcc takes exchanges apart into selects,
// those of doubles into branches or moves of single elements.
template <class M>
[[gnu::always_inline]] inline M asBits(M mask) {
    if constexpr (!std::is_same_v<M, bool>) asm("" : "+x"(mask));
    return mask;
}

// The first where the mask is set, else the second.
template <class M, class X>
[[gnu::always_inline]] inline X chosen(M mask, X first, X second) {
    if constexpr (std::is_same_v<M, bool>) return mask ? first : second;
    else return reinterpret_cast<X>((mask & reinterpret_cast<M>(first)) | (~mask & reinterpret_cast<M>(second)));
}

template <class M, class X>
[[gnu::always_inline]] inline void exchangeIf(M mask, X& a, X& b) {
    if constexpr (std::is_same_v<M, bool>) {
        const X old = a;
        a = mask ? b : a;
        b = mask ? old : b;
    } else {
        const M difference = (reinterpret_cast<M>(a) ^ reinterpret_cast<M>(b)) & mask;
        a = reinterpret_cast<X>(reinterpret_cast<M>(a) ^ difference);
        b = reinterpret_cast<X>(reinterpret_cast<M>(b) ^ difference);
    }
}

// The first if it is greater, else, and if they don't compare, the second: what the processor's maximum does.
template <class S>
[[gnu::always_inline]] inline S greater(S a, S b) {
    if constexpr (std::is_same_v<S, Float4>)
        return reinterpret_cast<S>(_mm_max_ps(reinterpret_cast<__m128>(a), reinterpret_cast<__m128>(b)));
    else if constexpr (std::is_same_v<S, Double2>)
        return reinterpret_cast<S>(_mm_max_pd(reinterpret_cast<__m128d>(a), reinterpret_cast<__m128d>(b)));
    else return a > b ? a : b;
}

// --- Approximations -------------------------------------------------------------------------------

// The processor's approximate reciprocal, good to about 12 bits. Always by the instruction for four floats: those for
// more have other bits.
template <class S>
[[gnu::always_inline]] inline S roughReciprocal(S x) {
    if constexpr (lanesOf<S> == 1) return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x)));
    else if constexpr (lanesOf<S> == 4) return reinterpret_cast<S>(_mm_rcp_ps(reinterpret_cast<__m128>(x)));
    else return joinedHalves(roughReciprocal(lowHalf(x)), roughReciprocal(highHalf(x)));
}

}  // namespace korm::inline KORM_VARIANT
