// Groups of objects of a size known at run time between memory and locals: element (i, j) of each object is a vector at
// i * width + j.
#pragma once

#include <cstddef>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::linalg {

// The places `distance` bytes behind these.
template <class Byte, int lanes>
[[gnu::always_inline]] inline Places<Byte, lanes> behind(const Places<Byte, lanes>& places, std::ptrdiff_t distance) {
    return withLanes<lanes>([&](auto... l) __attribute__((always_inline)) {
        return Places<Byte, lanes>{{places.at[l] + distance...}};
    });
}

// Calls `run(distance, first, length)` for runs of adjacent elements that make up the objects: of as many as fill 16 bytes,
// then of pairs, then of one. Rows that touch are one row.
template <class T, class Run>
[[gnu::always_inline]] inline void forEachRunOf(std::ptrdiff_t rowStride, std::ptrdiff_t height, std::ptrdiff_t width,
                                                const Run& run) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    if (rowStride == width * size) {
        width *= height;
        height = 1;
    }
    std::ptrdiff_t at = 0;
    for (std::ptrdiff_t i = 0; i < height; ++i) {
        std::ptrdiff_t j = 0;
        const auto next = [&](auto length) __attribute__((always_inline)) {
            run(i * rowStride + j * size, at + j, length);
            j += length;
        };
        while (j + 16 / size <= width) next(Int<16 / size>());
        if constexpr (isFloat<T>)
            if (j + 2 <= width) next(Int<2>());
        if (j < width) next(Int<1>());
        at += width;
    }
}

template <class S>
[[gnu::noinline]] void readPlainGrids(const Places<const std::byte, lanesOf<S>>& from, std::ptrdiff_t rowStride,
                                      std::ptrdiff_t height, std::ptrdiff_t width, S* to) {
    forEachRunOf<ElementOf<S>>(
        rowStride, height,
        width, [&](std::ptrdiff_t distance, std::ptrdiff_t first, auto length) __attribute__((always_inline)) {
            readRun<length>(behind(from, distance), to + first);
        });
}

template <class S>
[[gnu::noinline]] void writePlainGrids(const Places<std::byte, lanesOf<S>>& to, std::ptrdiff_t rowStride,
                                       std::ptrdiff_t height, std::ptrdiff_t width, const S* from) {
    forEachRunOf<ElementOf<S>>(
        rowStride, height,
        width, [&](std::ptrdiff_t distance, std::ptrdiff_t first, auto length) __attribute__((always_inline)) {
            writeRun<length>(behind(to, distance), from + first);
        });
}

// The objects from k on.
template <class S, class View>
[[gnu::always_inline]] inline void readGroup(const View& view, std::ptrdiff_t k, std::ptrdiff_t height,
                                             std::ptrdiff_t width, S* to) {
    const int rows = static_cast<int>(height), columns = static_cast<int>(width);
    if constexpr (isScattered<View>) {
        readStreams(view.at(k), view.objectStride, rows, columns, to, lanesOf<S>);
    } else {
        const auto from = groupAt<lanesOf<S>>(view, k).at(0, 0);
        if constexpr (isAdjacent<View>) readPlainGrids(from, view.rowStride, height, width, to);
        else readGrids(from, view.rowStride, view.elementStride, rows, columns, to);
    }
}

template <class S, class View>
[[gnu::always_inline]] inline void writeGroup(const View& view, std::ptrdiff_t k, std::ptrdiff_t height,
                                              std::ptrdiff_t width, const S* from) {
    const int rows = static_cast<int>(height), columns = static_cast<int>(width);
    if constexpr (isScattered<View>) {
        writeStreams(view.at(k), view.objectStride, rows, columns, from, lanesOf<S>);
    } else {
        const auto to = groupAt<lanesOf<S>>(view, k).at(0, 0);
        if constexpr (isAdjacent<View>) writePlainGrids(to, view.rowStride, height, width, from);
        else writeGrids(to, view.rowStride, view.elementStride, rows, columns, from, lanesOf<S>);
    }
}

// --- Objects by their numbers -----------------------------------------------------------------------

// They need not follow each other.
template <int lanes, class View>
[[gnu::always_inline]] inline auto groupOf(const View& view, const std::ptrdiff_t* numbers) {
    return withLanes<lanes>([&](auto... l) __attribute__((always_inline)) {
        return Group<decltype(view.at(0)), lanes>{{view.at(numbers[l])...}};
    });
}

// Tells the processor of a square matrix whose turn comes: it comes late to look for many objects at once where they lie beyond
// its first cache. A hint, for those of adjacent elements.
template <class View>
[[gnu::always_inline]] inline void fetchSquare(const View& view, std::ptrdiff_t k, std::ptrdiff_t n,
                                               std::ptrdiff_t count) {
    constexpr auto bytes = static_cast<std::ptrdiff_t>(sizeof(typename View::Element));
    constexpr std::ptrdiff_t line = 64;
    if constexpr (isAdjacent<View> && !isShared<View>) {
        if (k >= count || count * n * n * bytes <= firstCache) return;
        for (std::ptrdiff_t i = 0; i < n; ++i)
            for (std::ptrdiff_t at = 0; at < n * bytes; at += line) __builtin_prefetch(view.at(k).address(i, 0) + at);
    }
}

// Element (i, j) of all objects is one vector in memory: in tables whose objects are one element apart.
template <class View>
[[gnu::always_inline]] inline bool lanesTouch(const View& view) {
    if constexpr (isScattered<View>) return view.objectStride == sizeof(typename View::Element);
    else return false;
}

// The first elements of a row, of which each lane may have its own. Where all are the same, `touch` is lanesTouch of the view
// that the group is of.
template <class S, class Object, class Row>
[[gnu::always_inline]] inline void readRowStarts(const Group<Object, lanesOf<S>>& from, const Row& row,
                                                 std::ptrdiff_t length, S* to, [[maybe_unused]] bool touch) {
    std::ptrdiff_t j = 0;
    if constexpr (isAdjacent<Object>) {
        for (; j + 4 <= length; j += 4) readRun<4>(from.at(row, sameRow(j)), to + j);
        if (j + 2 <= length) {
            readRun<2>(from.at(row, sameRow(j)), to + j);
            j += 2;
        }
    }
    if constexpr (isScattered<Object>)
        if (touch)
            for (; j < length; ++j) to[j] = load<S>(from.object[0].address(row(0), j));
    for (; j < length; ++j) to[j] = readElement<S>(from.at(row, sameRow(j)));
}

template <class S, class Object, class Row>
[[gnu::always_inline]] inline void writeRowStarts(const Group<Object, lanesOf<S>>& to, const Row& row,
                                                  std::ptrdiff_t length, const S* from, [[maybe_unused]] bool touch) {
    std::ptrdiff_t j = 0;
    if constexpr (isAdjacent<Object>) {
        for (; j + 4 <= length; j += 4) writeRun<4>(to.at(row, sameRow(j)), from + j);
        if (j + 2 <= length) {
            writeRun<2>(to.at(row, sameRow(j)), from + j);
            j += 2;
        }
    }
    if constexpr (isScattered<Object>)
        if (touch)
            for (; j < length; ++j) store(to.object[0].address(row(0), j), from[j]);
    for (; j < length; ++j) writeElement(to.at(row, sameRow(j)), 0, from[j]);
}

}  // namespace korm::inline KORM_VARIANT::linalg
