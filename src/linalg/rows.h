// Rows of matrices of any order.
#pragma once

#include <cstddef>
#include <cstring>

#include "entry/lanes.h"
#include "entry/views.h"

namespace korm {

template <class Object>
inline constexpr bool hasAdjacentElements = false;
template <class T>
inline constexpr bool hasAdjacentElements<Grid<T, Spacing::rowAdjacent>> = true;

// Copies row i of one matrix to the same row of another, which may be the same matrix.
template <class T, class A, class D>
[[gnu::always_inline]] inline void copyRow(const A& src, const D& dst, std::ptrdiff_t i, std::ptrdiff_t length) {
    if constexpr (hasAdjacentElements<A> && hasAdjacentElements<D>)
        std::memmove(dst.address(i, 0), src.address(i, 0), static_cast<std::size_t>(length) * sizeof(T));
    else
        for (std::ptrdiff_t j = 0; j < length; ++j) store(dst.address(i, j), load<T>(src.address(i, j)));
}

// Subtracts `factor` times one row from another, from column `first` on: a product, then a difference.
template <class T, class A, class D>
[[gnu::always_inline]] inline void subtractRow(const D& dst, std::ptrdiff_t to, const A& src, std::ptrdiff_t from,
                                               T factor, std::ptrdiff_t first, std::ptrdiff_t end) {
    std::ptrdiff_t j = first;
    if constexpr (hasAdjacentElements<A> && hasAdjacentElements<D>) {
        const Lanes<T> factors = broadcast(factor);
        for (; j + laneCount<T> <= end; j += laneCount<T>) {
            std::byte* const at = dst.address(to, j);
            storeLanes(at, loadLanes<T>(at) - loadLanes<T>(src.address(from, j)) * factors);
        }
    }
    for (; j < end; ++j) {
        std::byte* const at = dst.address(to, j);
        store(at, load<T>(at) - load<T>(src.address(from, j)) * factor);
    }
}

}  // namespace korm
