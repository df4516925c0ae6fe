// Arrays of small objects with one object per lane: element (i, j) of four (two) objects is one vector.
//
// Every lane does what a single object would, so the order of each sum is that of the code for scalars. Spare lanes at
// the end of an array repeat the last object.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/lanes.h"
#include "products/operands.h"

namespace korm {

template <class T>
using Origins = const std::byte* [laneCount<T>];

template <class T>
[[gnu::always_inline]] inline Lanes<T> lanesAt(const Origins<T>& origins, std::ptrdiff_t offset) {
    if constexpr (laneCount<T> == 4)
        return Float4{load<T>(origins[0] + offset), load<T>(origins[1] + offset), load<T>(origins[2] + offset),
                      load<T>(origins[3] + offset)};
    else return Double2{load<T>(origins[0] + offset), load<T>(origins[1] + offset)};
}

template <class T>
[[gnu::noinline]] void gatherObjects(const Origins<T>& origins, std::ptrdiff_t rowStep, std::ptrdiff_t columnStep,
                                     int height, int width, Lanes<T>* to) {
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++to) *to = lanesAt<T>(origins, i * rowStep + j * columnStep);
}

template <class T>
[[gnu::noinline]] void scatterObjects(const Origins<T>& origins, std::ptrdiff_t rowStep, std::ptrdiff_t columnStep,
                                      int height, int width, const Lanes<T>* from, int count) {
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++from)
            for (int l = 0; l < count; ++l)
                store(const_cast<std::byte*>(origins[l]) + i * rowStep + j * columnStep, (*from)[l]);
}

// Of tables, `first` is the position of the first object behind every entry.
template <class T>
[[gnu::noinline]] void gatherStreams(TableOperand first, std::ptrdiff_t objectStride, int height, int width,
                                     Lanes<T>* to, int count) {
    const bool adjacent = objectStride == sizeof(T) && count == laneCount<T>;
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++to) {
            const std::byte* const from = first.address(i, j);
            if (adjacent) {
                *to = loadLanes<T>(from);
            } else {
                Origins<T> origins;
                for (int l = 0; l < laneCount<T>; ++l) origins[l] = from + std::min(l, count - 1) * objectStride;
                *to = lanesAt<T>(origins, 0);
            }
        }
}

template <class T>
[[gnu::noinline]] void scatterStreams(TableOperand first, std::ptrdiff_t objectStride, int height, int width,
                                      const Lanes<T>* from, int count) {
    const bool adjacent = objectStride == sizeof(T) && count == laneCount<T>;
    for (int i = 0; i < height; ++i)
        for (int j = 0; j < width; ++j, ++from) {
            std::byte* const to = target(first, i, j);
            if (adjacent) storeLanes(to, *from);
            else
                for (int l = 0; l < count; ++l) store(to + l * objectStride, (*from)[l]);
        }
}

// --- Objects whose elements touch: n elements from each origin on ---------------------------------

// Elements e to e + 3 (+ 1) of all objects by a transposition in registers, what is left in pairs and one by one.
// `put(e, lanes)` takes element e of all objects; e is a type.
template <class T, int n, class Put>
[[gnu::always_inline]] inline void gatherRun(const Origins<T>& origins, const Put& put) {
    constexpr int lanes = laneCount<T>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    unrolled<n / lanes>([&](auto v) __attribute__((always_inline)) {
        Lanes<T> block[lanes];
        unrolled<lanes>([&](auto l) __attribute__((always_inline)) { block[l] = loadLanes<T>(origins[l] + 16 * v); });
        transpose(block);
        unrolled<lanes>([&](auto l) __attribute__((always_inline)) {
            put(std::integral_constant<int, v * lanes + l>{}, block[l]);
        });
    });
    constexpr int left = n % lanes;
    constexpr int first = n - left;
    if constexpr (left >= 2) {
        const auto pairs = [&](int l) __attribute__((always_inline)) {
            return __builtin_shufflevector(loadPair(origins[l] + first * size), loadPair(origins[l + 1] + first * size),
                                           0, 1, 4, 5);
        };
        const Float4 a = pairs(0), b = pairs(2);
        put(std::integral_constant<int, first>{}, __builtin_shufflevector(a, b, 0, 2, 4, 6));
        put(std::integral_constant<int, first + 1>{}, __builtin_shufflevector(a, b, 1, 3, 5, 7));
    }
    if constexpr (left % 2 == 1) put(std::integral_constant<int, n - 1>{}, lanesAt<T>(origins, (n - 1) * size));
}

template <class T, int n>
[[gnu::always_inline]] inline void scatterRun(const Origins<T>& origins, const Lanes<T>* from) {
    constexpr int lanes = laneCount<T>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto at = [&](int l, int e) __attribute__((always_inline)) { return const_cast<std::byte*>(origins[l]) + e * size; };
    unrolled<n / lanes>([&](auto v) __attribute__((always_inline)) {
        Lanes<T> block[lanes];
        unrolled<lanes>([&](auto l) __attribute__((always_inline)) { block[l] = from[v * lanes + l]; });
        transpose(block);
        unrolled<lanes>([&](auto l) __attribute__((always_inline)) { storeLanes(at(l, v * lanes), block[l]); });
    });
    constexpr int left = n % lanes;
    constexpr int first = n - left;
    if constexpr (left >= 2) {
        const Float4 low = interleaveLow(from[first], from[first + 1]);
        const Float4 high = interleaveHigh(from[first], from[first + 1]);
        storePair(at(0, first), low);
        storePair(at(1, first), highPairTwice(low));
        storePair(at(2, first), high);
        storePair(at(3, first), highPairTwice(high));
    }
    if constexpr (left % 2 == 1)
        unrolled<lanes>([&](auto l) __attribute__((always_inline)) { store(at(l, n - 1), T{from[n - 1][l.value]}); });
}

// --- Objects of a view ------------------------------------------------------------------------------

template <class View>
inline constexpr bool isTabled = View::spacing == Spacing::scattered;
template <class View>
inline constexpr bool isShared = View::objects == Objects::single;
template <class View>
inline constexpr bool isTurnedView = View::spacing == Spacing::columnAdjacent;
template <class View>
inline constexpr bool isPlainView = View::spacing == Spacing::rowAdjacent || isTurnedView<View>;

// From row to row as they are stored.
template <class View>
[[gnu::always_inline]] inline std::ptrdiff_t storedStride(const View& view) {
    return isTurnedView<View> ? view.elementStride : view.rowStride;
}

// Whether the elements of an object of height rows and width columns touch.
template <int height, int width, class View>
[[gnu::always_inline]] inline bool touches(const View& view) {
    constexpr std::ptrdiff_t length = isTurnedView<View> ? height : width;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(typename View::Element));
    return length == height * width || storedStride(view) == length * size;
}

// Objects `first` to `first` + `count` - 1.
template <class T, class View>
[[gnu::always_inline]] inline void originsOf(const View& view, std::ptrdiff_t first, int count, Origins<T>& origins) {
    unrolled<laneCount<T>>([&](auto l) __attribute__((always_inline)) {
        origins[l] = view.at(first + std::min<int>(l, count - 1)).origin;
    });
}

template <int height, int width, class View>
[[gnu::always_inline]] inline void gatherArray(const View& view, std::ptrdiff_t first, int count,
                                               Lanes<typename View::Element>* to) {
    using T = typename View::Element;
    const auto object = operand(view.at(first));
    if constexpr (isShared<View>) {
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) to[i * width + j] = spread<T>(object.address(i, j));
    } else if constexpr (isTabled<View>) {
        gatherStreams<T>(object, view.objectStride, height, width, to, count);
    } else {
        Origins<T> origins;
        originsOf<T>(view, first, count, origins);
        if constexpr (isPlainView<View>)
            if (touches<height, width>(view)) {
                gatherRun<T, height * width>(origins, [&](auto e, Lanes<T> value) __attribute__((always_inline)) {
                    if constexpr (isTurnedView<View>) to[e % height * width + e / height] = value;
                    else to[e] = value;
                });
                return;
            }
        gatherObjects<T>(origins, object.rowStep, object.columnStep, height, width, to);
    }
}

template <int height, int width, class View>
[[gnu::always_inline]] inline void scatterArray(const View& view, std::ptrdiff_t first, int count,
                                                const Lanes<typename View::Element>* from) {
    using T = typename View::Element;
    const auto object = operand(view.at(first));
    if constexpr (isTabled<View>) {
        scatterStreams<T>(object, view.objectStride, height, width, from, count);
    } else {
        Origins<T> origins;
        originsOf<T>(view, first, count, origins);
        if constexpr (isPlainView<View>)
            if (count == laneCount<T> && touches<height, width>(view)) {
                scatterRun<T, height * width>(origins, from);
                return;
            }
        scatterObjects<T>(origins, object.rowStep, object.columnStep, height, width, from, count);
    }
}

}  // namespace korm
