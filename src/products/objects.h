// Small objects in lanes: element (i, j) of a group of objects is one vector. For operands whose elements needn't touch.
//
// Every lane does what a single object would, so the order of each sum is that of the code for scalars. Spare lanes at
// the end of an array repeat the last object.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/groups.h"
#include "kernel/scalar.h"
#include "products/operands.h"

namespace korm::inline KORM_VARIANT::products {

// Where objects `first` to `first` + `count` - 1 begin.
template <int lanes>
[[gnu::always_inline]] inline auto placesOf(const GridObjects& objects, std::ptrdiff_t first, int count) {
    return withLanes<lanes>([&](auto... l) __attribute__((always_inline)) {
        return Places<const std::byte, lanes>{{objects.at(first + std::min<int>(l, count - 1)).origin...}};
    });
}

template <class S>
[[gnu::noinline]] void readObjects(const GridObjects& objects, std::ptrdiff_t first, int count, int height, int width,
                                   S* to) {
    if (objects.isShared()) {
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) to[i * width + j] = spread<S>(objects.first.address(i, j));
    } else {
        readGrids(placesOf<lanesOf<S>>(objects, first, count), objects.first.rowStep, objects.first.columnStep, height,
                  width, to);
    }
}

template <class S>
[[gnu::noinline]] void readObjects(const TableObjects& objects, std::ptrdiff_t first, int count, int height, int width,
                                   S* to) {
    if (objects.isShared()) {
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) to[i * width + j] = spread<S>(objects.first.address(i, j));
    } else {
        readStreams(objects.at(first), objects.step, height, width, to, count);
    }
}

template <class S>
[[gnu::always_inline]] inline void writeObjects(const GridObjects& objects, std::ptrdiff_t first, int count, int height,
                                                int width, const S* from) {
    const auto places = placesOf<lanesOf<S>>(objects, first, count);
    const auto to = withLanes<lanesOf<S>>([&](auto... l) __attribute__((always_inline)) {
        return Places<std::byte, lanesOf<S>>{{const_cast<std::byte*>(places.at[l])...}};
    });
    writeGrids(to, objects.first.rowStep, objects.first.columnStep, height, width, from, count);
}

template <class S>
[[gnu::always_inline]] inline void writeObjects(const TableObjects& objects, std::ptrdiff_t first, int count,
                                                int height, int width, const S* from) {
    writeStreams(objects.at(first), objects.step, height, width, from, count);
}

}  // namespace korm::inline KORM_VARIANT::products
