// General eigenproblems: words for scalars that may hold one object in each lane. For a single object they cost nothing.
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <type_traits>

#include "eigen/cells.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::eigen {

// --- Masks --------------------------------------------------------------------------------------------

template <class M>
[[gnu::always_inline]] inline Twin<M> asBits(Twin<M> mask) {
    return {korm::asBits(mask.first), korm::asBits(mask.second)};
}
using korm::asBits;

template <class V>
[[gnu::always_inline]] inline Twin<V> greater(Twin<V> a, Twin<V> b) {
    return {korm::greater(a.first, b.first), korm::greater(a.second, b.second)};
}
using korm::greater;

// Whether a lane takes part. A single object does where its place is asked for.
template <class S>
[[gnu::always_inline]] inline MaskOf<S> ownLane(MaskOf<S> lanes) {
    if constexpr (lanesOf<S> == 1) return true;
    else return asBits(lanes);
}

// --- Places -------------------------------------------------------------------------------------------

// A row or column of one object, or of each lane's own. In lanes it is a number of the scalar's type, which compares as fast
// as scalars do.
template <class S>
using Place = std::conditional_t<lanesOf<S> == 1, std::ptrdiff_t, S>;

template <class S>
[[gnu::always_inline]] inline Place<S> everywhere(std::ptrdiff_t k) {
    if constexpr (lanesOf<S> == 1) return k;
    else return all<S>(static_cast<ElementOf<S>>(k));
}

template <class S>
[[gnu::always_inline]] inline std::ptrdiff_t lowest(Place<S> places) {
    if constexpr (lanesOf<S> == 1) return places;
    else if constexpr (isTwin<S>)
        return lowest<TwinOf<S>>(chosen(places.first < places.second, places.first, places.second));
    else {
        ElementOf<S> least = places[0];
        for (int l = 1; l < lanesOf<S>; ++l) least = places[l] < least ? places[l] : least;
        return static_cast<std::ptrdiff_t>(least);
    }
}
template <class S>
[[gnu::always_inline]] inline std::ptrdiff_t highest(Place<S> places) {
    if constexpr (lanesOf<S> == 1) return places;
    else return -lowest<S>(S{} - places);
}

template <class S>
[[gnu::always_inline]] inline ElementOf<S> inLane(const S& x, int l) {
    return load<ElementOf<S>>(reinterpret_cast<const std::byte*>(&x) +
                              static_cast<std::size_t>(l) * sizeof(ElementOf<S>));
}
template <class S>
[[gnu::always_inline]] inline void setLane(S& x, int l, ElementOf<S> value) {
    store(reinterpret_cast<std::byte*>(&x) + static_cast<std::size_t>(l) * sizeof value, value);
}
template <class S>
[[gnu::always_inline]] inline std::ptrdiff_t placeIn(const S& places, int l) {
    return static_cast<std::ptrdiff_t>(inLane(places, l));
}

// Calls f with the number of each lane of the mask.
template <class S, class F>
[[gnu::always_inline]] inline void eachLane(const MaskOf<S>& lanes, const F& f) {
    for (int l = 0; l < lanesOf<S>; ++l)
        if (inLane(lanes, l) != 0) f(l);
}

// --- Doubles ------------------------------------------------------------------------------------------

[[gnu::always_inline]] inline Double2 doublesOf(Float4 x) {
    return reinterpret_cast<Double2>(_mm_cvtps_pd(reinterpret_cast<__m128>(x)));
}
[[gnu::always_inline]] inline Float4 floatsOf(Double2 low, Double2 high) {
    return reinterpret_cast<Float4>(
        _mm_movelh_ps(_mm_cvtpd_ps(reinterpret_cast<__m128d>(low)), _mm_cvtpd_ps(reinterpret_cast<__m128d>(high))));
}

// f of the arguments as doubles, rounded to their type; or a mask.
template <class F, class S, class... More>
[[gnu::always_inline]] inline auto inDoubles(const F& f, S x, More... more) {
    if constexpr (isTwin<S>) {
        const auto first = inDoubles(f, x.first, more.first...), second = inDoubles(f, x.second, more.second...);
        return Twin<std::remove_const_t<decltype(first)>>{first, second};
    } else if constexpr (std::is_same_v<S, float>) {
        const auto result = f(static_cast<double>(x), static_cast<double>(more)...);
        if constexpr (std::is_same_v<decltype(result), const bool>) return result;
        else return static_cast<float>(result);
    } else if constexpr (std::is_same_v<S, Float4>) {
        const auto high = [](Float4 v) { return __builtin_shufflevector(v, v, 2, 3, 2, 3); };
        const auto a = f(doublesOf(x), doublesOf(more)...), b = f(doublesOf(high(x)), doublesOf(high(more))...);
        if constexpr (std::is_same_v<decltype(a), const Double2>) return floatsOf(a, b);
        else return __builtin_shufflevector(reinterpret_cast<MaskOf<S>>(a), reinterpret_cast<MaskOf<S>>(b), 0, 2, 4, 6);
    } else {
        return f(x, more...);
    }
}

// Rounded to float.
[[gnu::always_inline]] inline double roundedToFloat(double x) { return static_cast<double>(static_cast<float>(x)); }
[[gnu::always_inline]] inline Double2 roundedToFloat(Double2 x) { return doublesOf(floatsOf(x, x)); }
[[gnu::always_inline]] inline Twin<Double2> roundedToFloat(Twin<Double2> x) {
    return {roundedToFloat(x.first), roundedToFloat(x.second)};
}

}  // namespace korm::inline KORM_VARIANT::eigen
