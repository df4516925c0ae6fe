// Operands as the kernels of products take them: one type for all grids and one for all tables, with the steps at run
// time, so that one instance of a general path serves every layout and every transposition.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::products {

// Vectors of 16 bytes, whatever the processor has: four floats or two doubles. Kernels that are laid out for these use them.
template <class T>
inline constexpr int lanes16 = 16 / sizeof(T);
template <class T>
using Vec16 = Vec<T, lanes16<T>>;

// An element in all lanes. For doubles by the load unit alone: left to itself, a compiler that sees the element used
// twice loads it once and spends a shuffle, which takes a port from additions.
template <class V>
[[gnu::always_inline]] inline V spread(const std::byte* from) {
    if constexpr (std::is_same_v<V, Double2>) {
        struct [[gnu::may_alias, gnu::packed]] Unaligned {
            double value;
        };
        Double2 result;
        const auto& element = *reinterpret_cast<const Unaligned*>(from);
#ifdef __AVX__
        asm("vmovddup %1, %0" : "=x"(result) : "m"(element));
#else
        asm("movddup %1, %0" : "=x"(result) : "m"(element));
#endif
        return result;
    } else {
        return all<V>(load<ElementOf<V>>(from));
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

// From row to row as they are stored.
template <class View>
[[gnu::always_inline]] inline std::ptrdiff_t storedStride(const View& view) {
    return isTransposed<View> ? view.elementStride : view.rowStride;
}

// All objects of an operand, as general paths take them: again one type for each kind of operand, so that an array is one
// call in which all is decided once that doesn't depend on the object. That made 45 ns of 52 at order 8 of floats.
struct GridObjects {
    using Operand = GridOperand;
    Operand first;            // of a list no object, but its steps are those of all
    const void* const* list;  // of others null
    std::ptrdiff_t step;      // from object to object; of a list the offset behind every entry

    [[gnu::always_inline]] bool isShared() const { return list == nullptr && step == 0; }

    [[gnu::always_inline]] Operand at(std::ptrdiff_t k) const {
        return {list == nullptr ? first.origin + k * step : static_cast<const std::byte*>(list[k]) + step,
                first.rowStep, first.columnStep};
    }
};

struct TableObjects {
    using Operand = TableOperand;
    Operand first;
    std::ptrdiff_t step;

    [[gnu::always_inline]] bool isShared() const { return step == 0; }

    [[gnu::always_inline]] Operand at(std::ptrdiff_t k) const {
        return {first.table, first.offset + k * step, first.rowPitch, first.columnPitch};
    }
};

template <class T, Objects objects, Spacing spacing>
[[gnu::always_inline]] inline GridObjects objectsOf(const GridView<T, objects, spacing>& view) {
    if constexpr (objects == Objects::listed) {
        const Grid<T, spacing> grid{nullptr, view.rowStride, view.elementStride};
        return {operand(grid), reinterpret_cast<const void* const*>(view.list), view.objectStride};
    } else {
        return {operand(view.at(0)), nullptr, objects == Objects::single ? 0 : view.objectStride};
    }
}

template <class T, Objects objects, bool transposed>
[[gnu::always_inline]] inline TableObjects objectsOf(const ScatterView<T, objects, transposed>& view) {
    return {operand(view.at(0)), objects == Objects::single ? 0 : view.objectStride};
}

// A vector is read as the only column of a matrix.
[[gnu::always_inline]] inline TableOperand asColumn(TableOperand vector) {
    std::swap(vector.rowPitch, vector.columnPitch);
    return vector;
}
[[gnu::always_inline]] inline TableObjects asColumns(const TableObjects& vectors) {
    return {asColumn(vectors.first), vectors.step};
}
[[gnu::always_inline]] inline GridObjects asColumns(GridObjects vectors) {
    std::swap(vectors.first.rowStep, vectors.first.columnStep);
    return vectors;
}

[[gnu::always_inline]] inline GridObjects transposesOf(GridObjects objects) { return asColumns(objects); }

// Does a table lead to elements at fixed distances, as those of a packed object do? Then `grid` is where.
template <class T>
[[gnu::noinline]] inline bool isGrid(const TableObjects& objects, std::ptrdiff_t height, std::ptrdiff_t width,
                                     GridObjects& grid) {
    const auto place = [&](std::ptrdiff_t i, std::ptrdiff_t j) {
        return reinterpret_cast<std::uintptr_t>(objects.first.address(i, j));
    };
    const std::uintptr_t origin = place(0, 0);
    const std::uintptr_t rowStep = height > 1 ? place(1, 0) - origin : sizeof(T);
    const std::uintptr_t columnStep = width > 1 ? place(0, 1) - origin : sizeof(T);
    for (std::ptrdiff_t i = 0; i < height; ++i)
        for (std::ptrdiff_t j = 0; j < width; ++j)
            if (place(i, j) !=
                origin + static_cast<std::uintptr_t>(i) * rowStep + static_cast<std::uintptr_t>(j) * columnStep)
                return false;
    grid = {
        {objects.first.address(0, 0), static_cast<std::ptrdiff_t>(rowStep), static_cast<std::ptrdiff_t>(columnStep)},
        nullptr,
        objects.step};
    return true;
}

// Where a result goes. The same types, but writable: views of results have been const-stripped by operand().
template <class Operand>
[[gnu::always_inline]] inline std::byte* target(const Operand& result, std::ptrdiff_t i, std::ptrdiff_t j) {
    return const_cast<std::byte*>(result.address(i, j));
}

// Calls f with where the objects of an array are. Kept in registers: results could change what is reached by reference, as
// far as a compiler can tell. Where `together` isn't 0, arrays without a list have a loop of their own, in which so many objects
// go at a time: to ask each time how an object is found takes up to a tenth of products of orders 3 and 4.
template <int together, class F>
[[gnu::always_inline]] inline void forObjects(const GridObjects& a, const GridObjects& b, const GridObjects& dst,
                                              std::int32_t count, const F& f) {
    const GridObjects left = a, right = b, result = dst;
    if (together > 0 && left.list == nullptr && right.list == nullptr && result.list == nullptr) {
        const auto one = [&](std::int32_t k) __attribute__((always_inline)) {
            f(k, left.first.origin + k * left.step, right.first.origin + k * right.step,
              const_cast<std::byte*>(result.first.origin) + k * result.step);
        };
        std::int32_t k = 0;
        for (; k + together <= count; k += together)
            unrolled<together>([&](auto i) __attribute__((always_inline)) { one(k + i); });
        if (k < count) one(k);
        return;
    }
    for (std::int32_t k = 0; k < count; ++k) f(k, left.at(k).origin, right.at(k).origin, target(result.at(k), 0, 0));
}

}  // namespace korm::inline KORM_VARIANT::products
