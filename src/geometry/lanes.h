// Several vectors in lanes: how they come from memory at any distance, and how they go back.
//
// Two side by side, an element of each repeated (x0 x0 x1 x1), where a result has two or four elements: they come
// out in an order in which halves can be stored. Four at once, a lane each (x0 x1 x2 x3), where it has three.
// Packed vectors are read whole; others by pairs and single elements, so that no gap is touched.
#pragma once

#include "geometry/elements.h"

namespace korm {

// Asks for what a loop will need some twenty to forty rounds later, on both sides. Out of cache that is 10 to 20 % of
// the time: a round has so many instructions for its few bytes that the processor doesn't see far enough ahead by
// itself. Nothing is read: an address behind the end does no harm.
inline void fetchAhead(const std::byte* from, const std::byte* to) {
    constexpr std::uintptr_t ahead = 2048;
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(from) + ahead));
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(to) + ahead), 1);
}

// Do four vectors lie on more than one line of cache? Then asking for every fourth would leave lines out.
inline bool takesTwoLines(std::ptrdiff_t srcStride, std::ptrdiff_t dstStride) {
    return srcStride > 16 || srcStride < -16 || dstStride > 16 || dstStride < -16;
}

// --- Two side by side --------------------------------------------------------------------------

struct TwoVectors {
    Float4 x, y, z, w;
};

// Where vectors of n lie: `aligned` are packed from a multiple of 16 bytes on.
enum class Source { any, packed, aligned };

inline Float4 loadAligned(const std::byte* from) { return loadLanes<float>(std::assume_aligned<16>(from)); }

// An element in lane 0, by itself: put together with another in a constructor it would cost two more shuffles.
inline Float4 loadFirst(const std::byte* from) { return settled(Float4{load<float>(from)}); }

inline Float4 evenTwice(Float4 v) { return __builtin_shufflevector(v, v, 0, 0, 2, 2); }
inline Float4 oddTwice(Float4 v) { return __builtin_shufflevector(v, v, 1, 1, 3, 3); }
inline Float4 endsTwice(Float4 v) { return __builtin_shufflevector(v, v, 0, 0, 3, 3); }
template <int i>
inline Float4 eachTwice(Float4 a, Float4 b) {
    return __builtin_shufflevector(a, b, i, i, i + 4, i + 4);
}

template <int n, Source source>
inline TwoVectors loadTwo(const std::byte* from, std::ptrdiff_t step) {
    TwoVectors v;
    if constexpr (n == 4) {
        const Float4 a = loadLanes<float>(from), b = loadLanes<float>(from + step);
        v.x = eachTwice<0>(a, b);
        v.y = eachTwice<1>(a, b);
        v.z = eachTwice<2>(a, b);
        v.w = eachTwice<3>(a, b);
    } else if constexpr (n == 3 && source != Source::any) {
        // Each element starts a load that ends with the same element of the second vector.
        v.x = endsTwice(loadLanes<float>(from));
        v.y = endsTwice(loadLanes<float>(from + 4));
        v.z = endsTwice(loadLanes<float>(from + 8));
    } else if constexpr (source == Source::aligned) {
        // The processor repeats elements as it loads them, if the address is a multiple of 16.
        v.x = evenTwice(loadAligned(from));
        v.y = oddTwice(loadAligned(from));
    } else if constexpr (source == Source::packed) {
        const Float4 both = loadLanes<float>(from);
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
template <bool packed>
inline FourVectors loadFour(const std::byte* from, std::ptrdiff_t step) {
    if constexpr (packed) {
        // An element of the first vector starts a load that ends with the same element of the second.
        const auto ends = [](const std::byte* first) {
            const Float4 a = loadLanes<float>(first), b = loadLanes<float>(first + 24);
            return __builtin_shufflevector(a, b, 0, 3, 4, 7);
        };
        return {ends(from), ends(from + 4), ends(from + 8)};
    } else {
        const Float4 xy01 = loadPairs(from, from + step), xy23 = loadPairs(from + 2 * step, from + 3 * step);
        return {evenOfBoth(xy01, xy23), oddOfBoth(xy01, xy23), gather<float>(from + 2 * sizeof(float), step)};
    }
}

// Those that aren't packed are stored as two pairs, (x, y) and (y, z), one over the other: a third element by itself
// takes a shuffle of its own to where single elements are stored from. One vector after the other: results may overlap.
template <bool packed>
inline void storeFour(std::byte* to, std::ptrdiff_t step, const FourVectors& v) {
    if constexpr (packed) {
        const Float4 xy = evenOfBoth(v.x, v.y), yz = oddOfBoth(v.y, v.z);
        const Float4 zx = __builtin_shufflevector(v.z, v.x, 0, 2, 5, 7);
        storeLanes(to, evenOfBoth(xy, zx));
        storeLanes(to + 16, __builtin_shufflevector(yz, xy, 0, 2, 5, 7));
        storeLanes(to + 32, oddOfBoth(zx, yz));
    } else {
        constexpr auto second = static_cast<std::ptrdiff_t>(sizeof(float));
        const Float4 xy01 = interleaveLow(v.x, v.y), yz01 = interleaveLow(v.y, v.z);
        const Float4 xy23 = interleaveHigh(v.x, v.y), yz23 = interleaveHigh(v.y, v.z);
        storeLowPair(to, xy01);
        storeLowPair(to + second, yz01);
        storeHighPair(to + step, xy01);
        storeHighPair(to + step + second, yz01);
        storeLowPair(to + 2 * step, xy23);
        storeLowPair(to + 2 * step + second, yz23);
        storeHighPair(to + 3 * step, xy23);
        storeHighPair(to + 3 * step + second, yz23);
    }
}

}  // namespace korm
