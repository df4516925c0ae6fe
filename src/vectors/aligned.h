// Sums of many products of adjacent elements, whose order depends on where the elements lie: eight partial sums begin at
// a boundary of 16 bytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kernel/groups.h"
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

// The partial sums of as many objects as a vector has lanes, joined for all of them: the sum of an object's vectors first, then
// that of its lanes, the first half and the second.
[[gnu::always_inline]] inline Float4 joinedEights(const Float4 (&l)[4][2]) {
    Float4 four[4];
    unrolled<4>([&](auto o) __attribute__((always_inline)) { four[o] = l[o][0] + l[o][1]; });
    transpose(four);
    return (four[0] + four[2]) + (four[1] + four[3]);
}
[[gnu::always_inline]] inline Double2 joinedEights(const Double2 (&l)[2][4]) {
    Double2 two[2];
    unrolled<2>([&](auto o) __attribute__((always_inline)) { two[o] = (l[o][0] + l[o][1]) + (l[o][2] + l[o][3]); });
    transpose(two);
    return two[0] + two[1];
}

[[gnu::always_inline]] inline float joinedEight(const Float4 (&l)[2]) {
    const Float4 four = l[0] + l[1];
    return (four[0] + four[2]) + (four[1] + four[3]);
}
[[gnu::always_inline]] inline double joinedEight(const Double2 (&l)[4]) {
    const Double2 two = (l[0] + l[1]) + (l[2] + l[3]);
    return two[0] + two[1];
}

// Products of what stands in the same places of two groups, to be read like a group.
template <class Places>
struct ProductPlaces {
    Places a, b;

    template <class V>
    [[gnu::always_inline]] V get(int l, std::ptrdiff_t distance) const {
        return a.template get<V>(l, distance) * b.template get<V>(l, distance);
    }
    [[gnu::always_inline]] Float4 pairs(int l, std::ptrdiff_t distance) const {
        return a.pairs(l, distance) * b.pairs(l, distance);
    }
    [[gnu::always_inline]] auto half(int which) const {
        return ProductPlaces<decltype(a.half(which))>{a.half(which), b.half(which)};
    }
};

template <class T>
inline constexpr int alignedObjects = static_cast<int>(blockAlignment / sizeof(T));

// Objects whose second vectors lie alike modulo 16 bytes, side by side: each addition waits for the one before in its partial
// sum, and several objects keep the processor busier than one. `ahead` products open the first partial sum; too few behind
// them, or elements that lie across the boundary, are added one by one.
//
// Only the first partial sums start from +0. The others start with their first product, which tells only if all of them are
// -0, and joined with those that aren't they give the same.
template <class T>
[[gnu::always_inline]] inline auto alignedSums(const std::byte* const (&x)[alignedObjects<T>],
                                               const std::byte* const (&y)[alignedObjects<T>], std::ptrdiff_t ahead,
                                               std::ptrdiff_t products) {
    constexpr int objects = alignedObjects<T>;
    using V = Vec<T, objects>;
    constexpr std::ptrdiff_t size = sizeof(T), block = partialSums * size;
    constexpr int vectors = block / blockAlignment;
    const std::ptrdiff_t end = products * size;
    std::ptrdiff_t at = 0;
    V sum{};
    const auto places = [&](const auto& vectors) __attribute__((always_inline)) {
        return withLanes<objects>([&](auto... o) __attribute__((always_inline)) {
            return Places<const std::byte, objects>{{vectors[o] + at...}};
        });
    };
    const auto addRun = [&](auto n) __attribute__((always_inline)) {
        V p[n];
        readRun<n>(ProductPlaces<Places<const std::byte, objects>>{places(x), places(y)}, p);
        unrolled<n>([&](auto j) __attribute__((always_inline)) { sum += p[j]; });
        at += n * size;
    };
    const auto addUpTo = [&](std::ptrdiff_t last) __attribute__((always_inline)) {
        while (at + 4 * size <= last) addRun(Int<4>{});
        if (at + 2 * size <= last) addRun(Int<2>{});
        if (at < last) addRun(Int<1>{});
    };
    const auto product = [&](int o, int v) __attribute__((always_inline)) {
        const std::ptrdiff_t place = at + v * blockAlignment;
        return load<V>(x[o] + place) * loadAligned<V>(y[o] + place);
    };
    if (ahead >= 0 && products >= ahead + partialSums) [[likely]] {
        addUpTo(ahead * size);
        V l[objects][vectors];
        unrolled<vectors * objects>([&](auto e) __attribute__((always_inline)) {
            l[e % objects][e / objects] = product(e % objects, e / objects);
        });
        if (ahead > 0) unrolled<objects>([&](auto o) __attribute__((always_inline)) { l[o][0] += V{sum[o.value]}; });
        else unrolled<objects>([&](auto o) __attribute__((always_inline)) { l[o][0] += V{}; });
        for (at += block; at + block <= end; at += block)
            unrolled<vectors * objects>([&](auto e) __attribute__((always_inline)) {
                l[e % objects][e / objects] += product(e % objects, e / objects);
            });
        sum = joinedEights(l);
    }
    if (at < end) addUpTo(end);
    return sum;
}

// The second vector is one of another array, one for all objects, or the first vector itself.
enum class Second { ofArray, shared, first };

// Groups of objects of arrays, `xStep` and `yStep` bytes from one to the next, and their results as many numbers. All second
// vectors lie alike; where they lie at a boundary, nothing is ahead. A known number of blocks holds all products.
template <class Result, class T, Second which, bool atBoundary, int blocks = 0>
[[gnu::noinline]] void sumGroups(const std::byte* x, std::ptrdiff_t xStep, const std::byte* y, std::ptrdiff_t yStep,
                                 std::ptrdiff_t length, T* dst, std::ptrdiff_t step, std::ptrdiff_t groups) {
    constexpr int objects = alignedObjects<T>;
    const std::ptrdiff_t products = blocks > 0 ? blocks * partialSums : length;
    const std::ptrdiff_t ahead = atBoundary ? 0 : elementsAhead<T>(y);
    for (; groups > 0; --groups) {
        const std::byte *first[objects], *second[objects];
        unrolled<objects>([&](auto o) __attribute__((always_inline)) {
            first[o] = x;
            second[o] = which == Second::first ? x : y;
            x += xStep;
            if constexpr (which == Second::ofArray) y += yStep;
        });
        const auto sums = Result::of(alignedSums<T>(first, second, ahead, products));
        if (step == 1) [[likely]]
            store(reinterpret_cast<std::byte*>(dst), sums);
        else
            unrolled<objects>([&](auto o) __attribute__((always_inline)) {
                store(reinterpret_cast<std::byte*>(dst + o * step), sums[o.value]);
            });
        dst += objects * step;
    }
}

// One object.
template <class T>
[[gnu::noinline]] T alignedSum(const std::byte* x, const std::byte* y, std::ptrdiff_t products) {
    using V = Vec<T, alignedObjects<T>>;
    constexpr std::ptrdiff_t size = sizeof(T), block = partialSums * size;
    constexpr int vectors = block / blockAlignment;
    const std::ptrdiff_t ahead = elementsAhead<T>(y), end = products * size;
    std::ptrdiff_t at = 0;
    T sum{};
    const auto addUpTo = [&](std::ptrdiff_t last) __attribute__((always_inline)) {
        for (; at < last; at += size) sum += load<T>(x + at) * load<T>(y + at);
    };
    if (ahead >= 0 && products >= ahead + partialSums) {
        addUpTo(ahead * size);
        V l[vectors];
        unrolled<vectors>([&](auto v) __attribute__((always_inline)) { l[v] = v == 0 ? V{sum} : V{}; });
        for (; at + block <= end; at += block)
            unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                l[v] += load<V>(x + at + v * blockAlignment) * loadAligned<V>(y + at + v * blockAlignment);
            });
        sum = joinedEight(l);
    }
    addUpTo(end);
    return sum;
}

}  // namespace korm::inline KORM_VARIANT::vectors
