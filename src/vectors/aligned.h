// Sums of many products of adjacent elements, whose order depends on where the elements lie: eight partial sums begin at
// a boundary of 16 bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::vectors {

inline constexpr std::ptrdiff_t partialSums = 8;
inline constexpr std::ptrdiff_t blockAlignment = 16;

// How many elements stand before the first boundary; -1 where elements lie across it, which no step reaches.
template <class T>
[[gnu::always_inline]] inline std::ptrdiff_t elementsAhead(const std::byte* first) {
    const auto bytes = static_cast<std::ptrdiff_t>(-reinterpret_cast<std::uintptr_t>(first) & (blockAlignment - 1));
    constexpr std::ptrdiff_t size = sizeof(T);
    return bytes % size == 0 ? bytes / size : -1;
}

// The vectors of eight partial sums joined: their sum first, then that of its lanes, the first half and the second.
[[gnu::always_inline]] inline float joinedEight(const Float4 (&l)[2]) {
    const Float4 four = l[0] + l[1];
    return (four[0] + four[2]) + (four[1] + four[3]);
}
[[gnu::always_inline]] inline double joinedEight(const Double2 (&l)[4]) {
    const Double2 two = (l[0] + l[1]) + (l[2] + l[3]);
    return two[0] + two[1];
}

// Objects whose second vectors lie alike modulo 16 bytes, side by side: each addition waits for the one before in its partial
// sum, and two objects keep the processor busier than one. `ahead` products open the first partial sum; too few behind them, or
// elements that lie across the boundary, are added one by one.
template <class T, int objects>
[[gnu::always_inline]] inline void alignedSums(const std::byte* const (&x)[objects],
                                               const std::byte* const (&y)[objects], std::ptrdiff_t ahead,
                                               std::ptrdiff_t products, T (&sum)[objects]) {
    using V = Vec<T, blockAlignment / sizeof(T)>;
    constexpr std::ptrdiff_t size = sizeof(T), block = partialSums * size;
    constexpr int vectors = block / blockAlignment;
    const std::ptrdiff_t end = products * size;
    std::ptrdiff_t at = 0;
    const auto addOne = [&]() __attribute__((always_inline)) {
        unrolled<objects>([&](auto o)
                              __attribute__((always_inline)) { sum[o] += load<T>(x[o] + at) * load<T>(y[o] + at); });
        at += size;
    };
    unrolled<objects>([&](auto o) __attribute__((always_inline)) { sum[o] = 0; });
    if (ahead >= 0 && products >= ahead + partialSums) {
        while (at < ahead * size) addOne();
        V l[objects][vectors];
        unrolled<vectors * objects>([&](auto e) __attribute__((always_inline)) { l[e % objects][e / objects] = V{}; });
        unrolled<objects>([&](auto o) __attribute__((always_inline)) { l[o][0] = V{sum[o]}; });
        do {
            unrolled<vectors * objects>([&](auto e) __attribute__((always_inline)) {
                constexpr int o = e % objects, v = e / objects;
                l[o][v] += load<V>(x[o] + at + v * blockAlignment) * loadAligned<V>(y[o] + at + v * blockAlignment);
            });
            at += block;
        } while (at + block <= end);
        unrolled<objects>([&](auto o) __attribute__((always_inline)) { sum[o] = joinedEight(l[o]); });
    }
    while (at < end) addOne();
}

}  // namespace korm::inline KORM_VARIANT::vectors
