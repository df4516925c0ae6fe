// Several vectors in lanes: how they come from memory at any distance, and how they go back.
//
// Two side by side, an element of each repeated (x0 x0 x1 x1), where a result has two or four elements: they come
// out in an order in which halves can be stored. Four at once, a lane each (x0 x1 x2 x3), where it has three.
// Packed vectors are read whole; others by pairs and single elements, so that no gap is touched.
#pragma once

#include "geometry/elements.h"

namespace korm {

// Two pairs of adjacent floats.
inline Float4 loadPairs(const std::byte* first, const std::byte* second) {
    using Bits2 = long long __attribute__((vector_size(16)));
    const Bits2 pairs = {load<long long>(first), load<long long>(second)};
    return reinterpret_cast<Float4>(pairs);
}

inline void storeLowPair(std::byte* to, Float4 v) { store(to, reinterpret_cast<Double2>(v)[0]); }
inline void storeHighPair(std::byte* to, Float4 v) { store(to, reinterpret_cast<Double2>(v)[1]); }

// --- Two side by side --------------------------------------------------------------------------

struct TwoVectors {
    Float4 x, y, z, w;
};

inline constexpr std::ptrdiff_t anyDistance = 0;

// `distance` is `step` where the compiler shall know it.
template <int n, std::ptrdiff_t distance>
inline TwoVectors loadTwo(const std::byte* from, std::ptrdiff_t step) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(float));
    TwoVectors v;
    if constexpr (n == 4) {
        const Float4 a = loadLanes<float>(from), b = loadLanes<float>(from + step);
        v.x = __builtin_shufflevector(a, b, 0, 0, 4, 4);
        v.y = __builtin_shufflevector(a, b, 1, 1, 5, 5);
        v.z = __builtin_shufflevector(a, b, 2, 2, 6, 6);
        v.w = __builtin_shufflevector(a, b, 3, 3, 7, 7);
    } else if constexpr (n == 3 && distance == 3 * size) {
        // Each element starts a load that ends with the same element of the second vector.
        const Float4 x = loadLanes<float>(from), y = loadLanes<float>(from + size),
                     z = loadLanes<float>(from + 2 * size);
        v.x = __builtin_shufflevector(x, x, 0, 0, 3, 3);
        v.y = __builtin_shufflevector(y, y, 0, 0, 3, 3);
        v.z = __builtin_shufflevector(z, z, 0, 0, 3, 3);
    } else {
        const Float4 xy = distance == 2 * size ? loadLanes<float>(from) : loadPairs(from, from + step);
        v.x = __builtin_shufflevector(xy, xy, 0, 0, 2, 2);
        v.y = __builtin_shufflevector(xy, xy, 1, 1, 3, 3);
        if constexpr (n == 3) {
            const float first = load<float>(from + 2 * size), second = load<float>(from + step + 2 * size);
            v.z = Float4{first, first, second, second};
        }
    }
    return v;
}

// --- Four at once ------------------------------------------------------------------------------

struct FourVectors {
    Float4 x, y, z;
};

// Vectors of three.
template <bool packed>
inline FourVectors loadFour(const std::byte* from, std::ptrdiff_t step) {
    if constexpr (packed) {
        const Float4 a = loadLanes<float>(from), b = loadLanes<float>(from + 16), c = loadLanes<float>(from + 32);
        const Float4 xy23 = __builtin_shufflevector(b, c, 2, 3, 5, 6);
        const Float4 yz01 = __builtin_shufflevector(a, b, 1, 2, 4, 5);
        return {__builtin_shufflevector(a, xy23, 0, 3, 4, 6), __builtin_shufflevector(yz01, xy23, 0, 2, 5, 7),
                __builtin_shufflevector(yz01, c, 1, 3, 4, 7)};
    } else {
        const Float4 xy01 = loadPairs(from, from + step), xy23 = loadPairs(from + 2 * step, from + 3 * step);
        return {__builtin_shufflevector(xy01, xy23, 0, 2, 4, 6), __builtin_shufflevector(xy01, xy23, 1, 3, 5, 7),
                gather<float>(from + 2 * sizeof(float), step)};
    }
}

template <bool packed>
inline void storeFour(std::byte* to, std::ptrdiff_t step, const FourVectors& v) {
    if constexpr (packed) {
        const Float4 xy = __builtin_shufflevector(v.x, v.y, 0, 2, 4, 6);
        const Float4 yz = __builtin_shufflevector(v.y, v.z, 1, 3, 5, 7);
        const Float4 zx = __builtin_shufflevector(v.z, v.x, 0, 2, 5, 7);
        storeLanes(to, __builtin_shufflevector(xy, zx, 0, 2, 4, 6));
        storeLanes(to + 16, __builtin_shufflevector(yz, xy, 0, 2, 5, 7));
        storeLanes(to + 32, __builtin_shufflevector(zx, yz, 1, 3, 5, 7));
    } else {
        const Float4 xy01 = interleaveLow(v.x, v.y), xy23 = interleaveHigh(v.x, v.y);
        constexpr auto third = static_cast<std::ptrdiff_t>(2 * sizeof(float));
        storeLowPair(to, xy01);
        store(to + third, v.z[0]);
        storeHighPair(to + step, xy01);
        store(to + step + third, v.z[1]);
        storeLowPair(to + 2 * step, xy23);
        store(to + 2 * step + third, v.z[2]);
        storeHighPair(to + 3 * step, xy23);
        store(to + 3 * step + third, v.z[3]);
    }
}

}  // namespace korm
