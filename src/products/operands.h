// Operands as the kernels of products take them: one type for all grids and one for all tables, with the steps at run
// time, so that one instance of a general path serves every layout and every transposition.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "entry/lanes.h"
#include "entry/views.h"

namespace korm {

// Calls f for 0 to n - 1 as types, so that what it does with them is known when compiling.
template <int n, class F>
[[gnu::always_inline]] inline void unrolled(const F& f) {
    [&]<int... i>(std::integer_sequence<int, i...>) __attribute__((always_inline)) {
        (f(std::integral_constant<int, i>{}), ...);
    }
    (std::make_integer_sequence<int, n>{});
}

// An element in all lanes. For doubles by the load unit alone: left to itself, a compiler that sees the element used
// twice loads it once and spends a shuffle, which takes a port from additions.
template <class T>
[[gnu::always_inline]] inline Lanes<T> spread(const std::byte* from) {
    if constexpr (laneCount<T> == 4) return broadcast(load<T>(from));
    else {
        struct [[gnu::may_alias, gnu::packed]] Unaligned {
            T value;
        };
        Lanes<T> result;
        asm("movddup %1, %0" : "=x"(result) : "m"(*reinterpret_cast<const Unaligned*>(from)));
        return result;
    }
}

// Element (i, j) lies at fixed distances.
struct GridOperand {
    const std::byte* origin;
    std::ptrdiff_t rowStep;
    std::ptrdiff_t columnStep;

    const std::byte* address(std::ptrdiff_t i, std::ptrdiff_t j) const { return origin + i * rowStep + j * columnStep; }
};

// Element (i, j) lies behind an entry of a table.
struct TableOperand {
    const void* const* table;
    std::ptrdiff_t offset;
    std::ptrdiff_t rowPitch;
    std::ptrdiff_t columnPitch;

    const std::byte* address(std::ptrdiff_t i, std::ptrdiff_t j) const {
        return static_cast<const std::byte*>(table[i * rowPitch + j * columnPitch]) + offset;
    }
};

template <class T, Spacing spacing>
[[gnu::always_inline]] inline GridOperand operand(const Grid<T, spacing>& grid) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    return {reinterpret_cast<const std::byte*>(grid.origin), spacing == Spacing::columnAdjacent ? size : grid.rowStride,
            spacing == Spacing::rowAdjacent ? size : grid.elementStride};
}

template <class T, bool transposed>
[[gnu::always_inline]] inline TableOperand operand(const Scatter<T, transposed>& scatter) {
    const auto* const table = reinterpret_cast<const void* const*>(scatter.table);
    if (transposed) return {table, scatter.offset, 1, scatter.pitch};
    return {table, scatter.offset, scatter.pitch, 1};
}

// Where a result goes. The same types, but writable: views of results have been const-stripped by operand().
template <class Operand>
[[gnu::always_inline]] inline std::byte* target(const Operand& result, std::ptrdiff_t i, std::ptrdiff_t j) {
    return const_cast<std::byte*>(result.address(i, j));
}

}  // namespace korm
