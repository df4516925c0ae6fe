// One side of a move, source or result, whatever its layout: what the functions behind all forms work with, so that there
// is one of each and not one for every pair of layouts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "entry/views.h"
#include "kernel/predicates.h"

namespace korm::inline KORM_VARIANT::move {

// Elements move as words of their size: no floating-point register sees them, so that every bit of a NaN arrives.
template <class T>
using WordOf = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;

template <class Word>
inline constexpr std::ptrdiff_t sizeOf = sizeof(Word);

struct Side {
    enum class Layout : std::uint8_t { standard, list, table };

    Layout layout;
    union {
        std::byte* base;
        std::byte* const* entries;  // of a list or table
    };
    std::ptrdiff_t objectStride;  // not of a list
    std::ptrdiff_t offset;        // of a list or table
    // From row to row and from element to element: in bytes, of a table in entries.
    std::ptrdiff_t rowStride;
    std::ptrdiff_t elementStride;

    bool isTable() const { return layout == Layout::table; }
    bool isList() const { return layout == Layout::list; }

    // Where object k begins; not of a table.
    [[gnu::always_inline]] std::byte* object(std::ptrdiff_t k) const {
        return isList() ? entries[k] + offset : base + k * objectStride;
    }
    // Of a table: element (i, j) of object k.
    [[gnu::always_inline]] std::byte* element(std::ptrdiff_t i, std::ptrdiff_t j, std::ptrdiff_t k) const {
        return entries[i * rowStride + j * elementStride] + offset + k * objectStride;
    }
    // The same side from object k on.
    Side from(std::ptrdiff_t k) const {
        Side result = *this;
        if (isTable()) result.offset += k * objectStride;
        else if (isList()) result.entries += k;
        else result.base += k * objectStride;
        return result;
    }
};

// The same storage, read as its transpose.
inline Side transposed(Side side) {
    std::swap(side.rowStride, side.elementStride);
    return side;
}

// How many there are of what moves.
struct Extent {
    std::ptrdiff_t rows;
    std::ptrdiff_t columns;
    std::ptrdiff_t objects;
};

inline Extent extent(MatrixShape shape, std::ptrdiff_t count) { return {shape.height, shape.width, count}; }
inline Extent extent(VectorShape shape, std::ptrdiff_t count) { return {1, shape.length, count}; }

// Sources are not written to; that one type serves both sides is worth a cast here.
template <class T>
inline std::byte* writable(T* pointer) {
    return reinterpret_cast<std::byte*>(const_cast<std::remove_const_t<T>*>(pointer));
}
template <class T>
inline std::byte* const* entriesOf(T* const* table) {
    return reinterpret_cast<std::byte* const*>(const_cast<std::remove_const_t<T>* const*>(table));
}

template <class T, Objects objects, Spacing spacing>
inline Side side(const GridView<T, objects, spacing>& view) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    Side result{Side::Layout::standard, {nullptr}, view.objectStride, 0, view.rowStride, view.elementStride};
    if constexpr (spacing == Spacing::rowAdjacent) result.elementStride = size;
    if constexpr (spacing == Spacing::columnAdjacent) result.rowStride = size;
    if constexpr (objects == Objects::listed) {
        result.layout = Side::Layout::list;
        result.entries = entriesOf(view.list);
        result.offset = view.objectStride;
        result.objectStride = 0;
    } else {
        result.base = writable(view.origin);
    }
    return result;
}

template <class T, Objects objects, bool transposed>
inline Side side(const ScatterView<T, objects, transposed>& view) {
    Side result{Side::Layout::table, {nullptr}, view.objectStride, view.offset, view.pitch, 1};
    if constexpr (transposed) result = {Side::Layout::table, {nullptr}, view.objectStride, view.offset, 1, view.pitch};
    result.entries = entriesOf(view.table);
    return result;
}

}  // namespace korm::inline KORM_VARIANT::move
