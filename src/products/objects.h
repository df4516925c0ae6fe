// Arrays of small objects of the strided and the pointer layout with one object per lane: element (i, j) of four (two)
// objects is one vector.
//
// Every lane does what a single object would, so the order of each sum is that of the code for scalars. Spare lanes at
// the end of an array repeat the last object.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/vec.h"
#include "products/operands.h"

namespace korm {

template <class T>
using Origins = const std::byte * [laneCount<T>];

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

// --- Objects of a view ------------------------------------------------------------------------------

template <class View>
inline constexpr bool isTabled = View::spacing == Spacing::scattered;
template <class View>
inline constexpr bool isShared = View::objects == Objects::single;
template <class View>
inline constexpr bool isTurnedView = View::spacing == Spacing::columnAdjacent;

// From row to row as they are stored.
template <class View>
[[gnu::always_inline]] inline std::ptrdiff_t storedStride(const View& view) {
    return isTurnedView<View> ? view.elementStride : view.rowStride;
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
        scatterObjects<T>(origins, object.rowStep, object.columnStep, height, width, from, count);
    }
}

}  // namespace korm
