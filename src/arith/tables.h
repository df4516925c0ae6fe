// The pointer layout over arrays.
#pragma once

#include <cstdint>

#include "arith/plain.h"
#include "arith/streams.h"
#include "entry/views.h"

namespace korm::inline KORM_VARIANT::arith {

template <class T, Objects objects, bool transposed>
[[gnu::always_inline]] inline auto asTable(const ScatterView<T, objects, transposed>& view) {
    return Table<T, objects>{view.table, view.offset, view.objectStride, transposed ? 1 : view.pitch,
                             transposed ? view.pitch : 1};
}
template <class T, Objects objects>
[[gnu::always_inline]] inline auto asTable(const ConstantView<T, objects>& view) {
    return operand(view);
}

// The same operand in the plain layout, if entry after entry leads to adjacent elements.
template <class T, Objects objects, bool turned>
[[gnu::always_inline]] inline auto asPlain(const ScatterView<T, objects, turned>& view) {
    const auto origin = reinterpret_cast<BytePointer<T>>(view.table[0]) + view.offset;
    const auto rowStride = view.pitch * static_cast<std::ptrdiff_t>(sizeof(T));
    const GridView<T, objects, Spacing::rowAdjacent> rows{{origin}, view.objectStride, rowStride, sizeof(T)};
    if constexpr (turned) return operand(transposed(rows));
    else return operand(rows);
}
template <class T, Objects objects>
[[gnu::always_inline]] inline auto asPlain(const ConstantView<T, objects>& view) {
    return operand(view);
}

// They do where a table was made for objects whose elements lie side by side, the fields of a structure for one.
template <class T>
[[gnu::noinline]] inline bool entriesAdjacent(T* const* table, std::ptrdiff_t entries) {
    const auto first = reinterpret_cast<std::uintptr_t>(table[0]);
    for (std::ptrdiff_t e = 1; e < entries; ++e)
        if (reinterpret_cast<std::uintptr_t>(table[e]) != first + static_cast<std::uintptr_t>(e) * sizeof(T))
            return false;
    return true;
}
template <class View>
[[gnu::always_inline]] inline bool entriesAdjacent(const View& view, std::ptrdiff_t entries) {
    if constexpr (isConstant<View>) return true;
    else return entriesAdjacent(view.table, entries);
}

// Is it read in another order than that of its entries?
template <class View>
inline constexpr bool isTurned = requires {
    requires View::transposed;
};

// A table whose objects are adjacent is a list of streams (see acrossObjects in streams.h).
template <class T, Objects objects>
[[gnu::always_inline]] inline auto listOfStreams(const ScatterView<T, objects, false>& view) {
    if constexpr (objects == Objects::single) return operand(constantList(view.table, view.offset));
    else return operand(plainList(view.table, view.offset, noRows));
}
template <class T, Objects objects>
[[gnu::always_inline]] inline auto listOfStreams(const ConstantView<T, objects>& view) {
    return acrossObjects(operand(view), 0);
}

// The same for tables that are read in another order than their own.
template <class T, class View>
[[gnu::always_inline]] inline auto streamAsRow(const View& view, std::ptrdiff_t i, std::ptrdiff_t j) {
    if constexpr (isConstant<View>) return Same<T>{repeated(view.value)};
    else {
        const std::byte* at[1];
        positions(at, view, i, j);
        at[0] += distanceOf(view, 0);
        if constexpr (isShared<View>) return Same<T>{repeated(load<T>(at[0]))};
        else return Adjacent<T>{at[0]};
    }
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void adjacentStreams(const A& first, const B& second, const D& result, std::ptrdiff_t width,
                                       std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    const A a = first;
    const B b = second;
    const D dst = result;
    for (std::ptrdiff_t i = 0; i < height; ++i)
        for (std::ptrdiff_t j = 0; j < width; ++j) {
            std::byte* to[1];
            positions(to, dst, i, j);
            longRow<Op, T>(streamAsRow<T>(a, i, j), streamAsRow<T>(b, i, j), to[0] + dst.offset,
                           (count - lanes<T>)*static_cast<std::ptrdiff_t>(sizeof(T)));
        }
}

template <class Op, class A, class B, class D, class Shape>
[[gnu::always_inline]] inline void tables(const A& a, const B& b, const D& dst, Shape shape, std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr std::ptrdiff_t size = sizeof(T);
    constexpr bool inOrder = !isTurned<A> && !isTurned<B>;
    const std::ptrdiff_t width = widthOf(shape), height = heightOf(shape), entries = width * height;
    // Below a vector an object, or blocks enough to transpose, streams are quicker.
    constexpr std::ptrdiff_t worthwhile = inOrder ? 16 / size : 25;
    if (count >= 4 && entries >= worthwhile && dst.objectStride >= entries * size && entriesAdjacent(a, entries) &&
        entriesAdjacent(b, entries) && entriesAdjacent(dst, entries)) {
        plainArrays<Op>(asPlain(a), asPlain(b), asPlain(dst), shape, count);
        return;
    }
    const bool adjacent = count >= (inOrder ? 2 : lanes<T>)&&areStreams(a, b, dst);
    if constexpr (inOrder) {
        if (adjacent) rows<Op>(listOfStreams(a), listOfStreams(b), listOfStreams(dst), count * size, entries);
        else streams<Op>(asTable(a), asTable(b), asTable(dst), entries, 1, count);
    } else {
        if (adjacent) adjacentStreams<Op>(asTable(a), asTable(b), asTable(dst), width, height, count);
        else streams<Op>(asTable(a), asTable(b), asTable(dst), width, height, count);
    }
}

}  // namespace korm::inline KORM_VARIANT::arith
