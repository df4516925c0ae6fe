// Arrays whose objects are one element apart: the same element of all objects is a row of adjacent elements, so a vector
// of objects is one load. Beside them, an operand that serves all objects is one value for a row.
#pragma once

#include <cstddef>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT {

// Sources of a row: what stands `at` bytes behind its start, as an element or as a vector of elements.
struct AdjacentRow {
    const std::byte* origin;

    template <class S>
    [[gnu::always_inline]] S get(std::ptrdiff_t at) const {
        return load<S>(origin + at);
    }
};

template <class T>
struct ConstantRow {
    T value;

    template <class S>
    [[gnu::always_inline]] S get(std::ptrdiff_t) const {
        return all<S>(value);
    }
};

template <class View>
[[gnu::always_inline]] inline bool isStream(const View& view) {
    if constexpr (View::objects == Objects::any)
        if (view.list != nullptr) return false;
    return isShared<View> || (!isListed<View> && view.objectStride == sizeof(typename View::Element));
}

template <class... Views>
[[gnu::always_inline]] inline bool areStreams(const Views&... views) {
    return (isStream(views) && ...);
}

// Element (i, j) of all objects.
template <class View>
[[gnu::always_inline]] inline auto streamOf(const View& view, std::ptrdiff_t i, std::ptrdiff_t j) {
    const std::byte* const first = view.at(0).address(i, j);
    if constexpr (isShared<View>) return ConstantRow<typename View::Element>{load<typename View::Element>(first)};
    else return AdjacentRow{first};
}

}  // namespace korm::inline KORM_VARIANT
