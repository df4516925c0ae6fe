// Several vectors in lanes, on their way from memory and back.
//
// Where a result has two or four elements, two vectors stand side by side, each element repeated (x0 x0 x1 x1): results
// come out in an order in which halves can be stored. Where it has three, four vectors go at once (x0 x1 x2 x3).
// Packed vectors are read whole; others by pairs and single elements, so that no gap is touched.
//
// The distance from one vector to the next is `Known` when compiling, or a number.
#pragma once

#include <type_traits>

#include "geometry/elements.h"
#include "kernel/known.h"

namespace korm::inline KORM_VARIANT::geometry {

// Asks for what a loop will need some twenty to forty rounds later, on both sides. Out of cache that saves 10 to 20 %
// of the time: a round has so many instructions for its few bytes that the processor doesn't see far enough ahead by
// itself. Nothing is read, so an address behind the end does no harm. Always inlined: gcc drops calls of functions that
// only do this.
[[gnu::always_inline]] inline void fetchAhead(const std::byte* from, const std::byte* to) {
    constexpr std::uintptr_t ahead = 2048;
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(from) + ahead));
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(to) + ahead), 1);
}

// Does a round reach more than one line of cache? Then asking for one line a round would leave lines out.
inline bool takesTwoLines(std::ptrdiff_t srcStep, std::ptrdiff_t dstStep, std::ptrdiff_t round) {
    const std::ptrdiff_t most = 64 / round;
    return srcStep > most || srcStep < -most || dstStep > most || dstStep < -most;
}

// Of vectors of n without gaps.
template <int n>
using Packed = Known<n * std::ptrdiff_t{sizeof(float)}>;

template <int n, class Step>
inline constexpr bool isPacked = std::is_same_v<Step, Packed<n>>;

// --- Two side by side --------------------------------------------------------------------------

struct TwoVectors {
    Float4 x, y, z, w;
};

// An element in lane 0, by itself: put together with another in a constructor it would cost two more shuffles.
inline Float4 loadFirst(const std::byte* from) { return settled(Float4{load<float>(from)}); }

inline Float4 evenTwice(Float4 v) { return __builtin_shufflevector(v, v, 0, 0, 2, 2); }
inline Float4 oddTwice(Float4 v) { return __builtin_shufflevector(v, v, 1, 1, 3, 3); }
inline Float4 endsTwice(Float4 v) { return __builtin_shufflevector(v, v, 0, 0, 3, 3); }
template <int i>
inline Float4 eachTwice(Float4 a, Float4 b) {
    return __builtin_shufflevector(a, b, i, i, i + 4, i + 4);
}

// `isAligned`: from a multiple of 16 bytes on.
template <int n, bool isAligned, class Step>
inline TwoVectors loadTwo(const std::byte* from, Step step) {
    TwoVectors v;
    if constexpr (n == 4) {
        const Float4 a = load<Float4>(from), b = load<Float4>(from + step);
        v.x = eachTwice<0>(a, b);
        v.y = eachTwice<1>(a, b);
        v.z = eachTwice<2>(a, b);
        v.w = eachTwice<3>(a, b);
    } else if constexpr (n == 3 && isPacked<n, Step>) {
        // Each element starts a load that ends with the same element of the second vector.
        v.x = endsTwice(load<Float4>(from));
        v.y = endsTwice(load<Float4>(from + 4));
        v.z = endsTwice(load<Float4>(from + 8));
    } else if constexpr (n == 2 && isPacked<n, Step> && isAligned) {
        // The processor repeats elements as it loads them, if the address is a multiple of 16.
        v.x = evenTwice(loadAligned<Float4>(from));
        v.y = oddTwice(loadAligned<Float4>(from));
    } else if constexpr (n == 2 && isPacked<n, Step>) {
        const Float4 both = load<Float4>(from);
        v.x = evenTwice(both);
        v.y = oddTwice(both);
    } else {
        const Float4 a = loadFirstPair(from), b = loadFirstPair(from + step);
        v.x = eachTwice<0>(a, b);
        v.y = eachTwice<1>(a, b);
        if constexpr (n == 3) v.z = eachTwice<0>(loadFirst(from + 8), loadFirst(from + step + 8));
    }
    return v;
}

// --- Four at once ------------------------------------------------------------------------------

struct FourVectors {
    Float4 x, y, z;
};

inline Float4 evenOfBoth(Float4 a, Float4 b) { return __builtin_shufflevector(a, b, 0, 2, 4, 6); }
inline Float4 oddOfBoth(Float4 a, Float4 b) { return __builtin_shufflevector(a, b, 1, 3, 5, 7); }

// Vectors of three.
template <class Step>
inline FourVectors loadFour(const std::byte* from, Step step) {
    if constexpr (isPacked<3, Step>) {
        // An element of the first vector starts a load that ends with the same element of the second.
        const auto ends = [](const std::byte* first) {
            const Float4 a = load<Float4>(first), b = load<Float4>(first + 24);
            return __builtin_shufflevector(a, b, 0, 3, 4, 7);
        };
        return {ends(from), ends(from + 4), ends(from + 8)};
    } else {
        const Float4 xy01 = loadPairs(from, from + step), xy23 = loadPairs(from + 2 * step, from + 3 * step);
        return {evenOfBoth(xy01, xy23), oddOfBoth(xy01, xy23), gatherFour(from + 2 * sizeof(float), step)};
    }
}

// Stores are cheap here and shuffles are short. So a third element is stored as half of a pair, with whatever stands
// beside it, and the other two elements are then stored over what was not wanted: two shuffles for packed vectors
// instead of the six that whole vectors take, which saves a seventh of a transform's time.
template <class Step>
inline void storeFour(std::byte* to, Step step, const FourVectors& v) {
    const Float4 xy01 = zipLow(v.x, v.y), xy23 = zipHigh(v.x, v.y);
    if constexpr (isPacked<3, Step>) {
        storeLowPair(to + 8, v.z);    // z0, and z1 where x1 belongs
        storeLowPair(to + 16, v.z);   // z0 where y1 belongs, and z1
        storeHighPair(to + 32, v.z);  // likewise z2 and z3
        storeHighPair(to + 40, v.z);
        storeLowPair(to, xy01);
        storeHighPair(to + 12, xy01);
        storeLowPair(to + 24, xy23);
        storeHighPair(to + 36, xy23);
    } else {
        // Behind a vector may lie a gap or another vector's result: each is done before the next, in ascending order, and
        // its own y alone is stored over.
        const Float4 even = evenTwice(v.z);
        storeLowPair(to + 4, even);
        storeLowPair(to, xy01);
        storeLowPair(to + step + 4, v.z);
        storeHighPair(to + step, xy01);
        storeHighPair(to + 2 * step + 4, even);
        storeLowPair(to + 2 * step, xy23);
        storeHighPair(to + 3 * step + 4, v.z);
        storeHighPair(to + 3 * step, xy23);
    }
}

}  // namespace korm::inline KORM_VARIANT::geometry
