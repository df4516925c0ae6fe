// Operand views: where element (i, j) of object k lies.
//
// A kernel is written over views and never computes an address itself. A view is a type with two
// compile-time facts, so that a kernel can choose its path without a test at run time:
//
//   Spacing   how the elements of one object lie (adjacent in a row, any stride, one pointer each)
//   Objects   how object k is found (the same for all k, a stride, a list)
//
// `view.at(k)` gives object k as a Grid, a Scatter or a constant; of that, `address(i, j)` gives an
// element. A view of a transposed operand answers in the coordinates of the transpose, so that a
// kernel sees logical rows and columns only.
//
// at() and address() are inlined always: gcc left them as calls in large kernels, where the sum of two packed 3 by 3
// matrices took three times as long.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "entry/variant.h"

namespace korm::inline KORM_VARIANT {

enum class Spacing {
    rowAdjacent,     // elements of a logical row touch: the plain layout
    columnAdjacent,  // elements of a logical column touch: a plain operand read as its transpose
    strided,         // any row and element stride
    scattered,       // a table with one pointer for each element position
    constant,        // one value for all elements of an object
};

enum class Objects {
    single,   // one object serves all k
    stepped,  // object k lies k strides past object 0
    listed,   // object k is given by entry k of a list
    any,      // stepped or listed, as a view tells at run time: one instance of a large kernel serves both
};

struct MatrixShape {
    std::int32_t width;
    std::int32_t height;
};

struct VectorShape {
    std::int32_t length;
};

// The count of a form without an array operand: known when compiling, so that no loop over objects remains.
inline constexpr std::integral_constant<std::int32_t, 1> oneObject{};

// A vector has one row; its row stride is never used.
inline constexpr std::ptrdiff_t noRows = 0;

template <class T>
using BytePointer = std::conditional_t<std::is_const_v<T>, const std::byte*, std::byte*>;

// One object whose elements lie at fixed distances.
template <class T, Spacing spacingOf>
struct Grid {
    using Element = std::remove_const_t<T>;
    static constexpr Spacing spacing = spacingOf;

    BytePointer<T> origin;
    std::ptrdiff_t rowStride;
    std::ptrdiff_t elementStride;

    // Only bytes are promised to be there: no alignment, so elements are read by load().
    [[gnu::always_inline]] BytePointer<T> address(std::ptrdiff_t i, std::ptrdiff_t j) const {
        constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
        if constexpr (spacing == Spacing::rowAdjacent) return origin + i * rowStride + j * size;
        else if constexpr (spacing == Spacing::columnAdjacent) return origin + i * size + j * elementStride;
        else return origin + i * rowStride + j * elementStride;
    }
};

// One object of the pointer layout.
template <class T, bool transposed>
struct Scatter {
    using Element = std::remove_const_t<T>;
    static constexpr Spacing spacing = Spacing::scattered;

    T* const* table;
    std::ptrdiff_t offset;
    std::ptrdiff_t pitch;  // table entries in a stored row

    [[gnu::always_inline]] BytePointer<T> address(std::ptrdiff_t i, std::ptrdiff_t j) const {
        T* const entry = transposed ? table[j * pitch + i] : table[i * pitch + j];
        return reinterpret_cast<BytePointer<T>>(entry) + offset;
    }
};

// Objects for functions that take a single one, by layout.
template <class T>
using PlainObject = Grid<T, Spacing::rowAdjacent>;
template <class T>
using StridedObject = Grid<T, Spacing::strided>;
template <class T>
using TableObject = Scatter<T, false>;

// Standard and list layout, and single operands of either.
template <class T, Objects objectsOf, Spacing spacingOf>
struct GridView {
    using Element = std::remove_const_t<T>;
    static constexpr Objects objects = objectsOf;
    static constexpr Spacing spacing = spacingOf;

    union {
        BytePointer<T> origin;
        T* const* list;
    };
    std::ptrdiff_t objectStride;  // of a list: the offset behind every entry
    std::ptrdiff_t rowStride;
    std::ptrdiff_t elementStride;

    [[gnu::always_inline]] Grid<T, spacing> at(std::ptrdiff_t k) const {
        if constexpr (objects == Objects::single) return {origin, rowStride, elementStride};
        else if constexpr (objects == Objects::stepped) return {origin + k * objectStride, rowStride, elementStride};
        else return {reinterpret_cast<BytePointer<T>>(list[k]) + objectStride, rowStride, elementStride};
    }
};

template <class T, Spacing spacingOf>
struct GridView<T, Objects::any, spacingOf> {
    using Element = std::remove_const_t<T>;
    static constexpr Objects objects = Objects::any;
    static constexpr Spacing spacing = spacingOf;

    BytePointer<T> origin;
    T* const* list;               // null where objects are stepped
    std::ptrdiff_t objectStride;  // of a list: the offset behind every entry
    std::ptrdiff_t rowStride;
    std::ptrdiff_t elementStride;

    [[gnu::always_inline]] Grid<T, spacing> at(std::ptrdiff_t k) const {
        if (list == nullptr) return {origin + k * objectStride, rowStride, elementStride};
        return {reinterpret_cast<BytePointer<T>>(list[k]) + objectStride, rowStride, elementStride};
    }
};

// Pointer layout: a table entry is a stream over the objects of an array.
template <class T, Objects objectsOf, bool transposedOf>
struct ScatterView {
    using Element = std::remove_const_t<T>;
    static constexpr Objects objects = objectsOf;
    static constexpr Spacing spacing = Spacing::scattered;
    static constexpr bool transposed = transposedOf;

    T* const* table;
    std::ptrdiff_t offset;
    std::ptrdiff_t objectStride;
    std::ptrdiff_t pitch;

    [[gnu::always_inline]] Scatter<T, transposed> at(std::ptrdiff_t k) const {
        if constexpr (objects == Objects::single) return {table, offset, pitch};
        else return {table, offset + k * objectStride, pitch};
    }
};

// One constant for all objects (single), or one for each.
template <class T, Objects objectsOf>
struct ConstantView {
    using Element = T;
    static constexpr Objects objects = objectsOf;
    static constexpr Spacing spacing = Spacing::constant;

    T value;  // Objects::single only; the others read through the pointers
    union {
        const std::byte* origin;
        const T* const* list;
    };
    std::ptrdiff_t objectStride;  // of a list: the offset behind every entry

    [[gnu::always_inline]] T at(std::ptrdiff_t k) const {
        if constexpr (objects == Objects::single) return value;
        T result;
        if constexpr (objects == Objects::stepped) __builtin_memcpy(&result, origin + k * objectStride, sizeof result);
        else __builtin_memcpy(&result, reinterpret_cast<const std::byte*>(list[k]) + objectStride, sizeof result);
        return result;
    }
};

// --- One maker for each make-up of an operand descriptor ---------------------------------------

template <class T>
auto plain(T* base, std::ptrdiff_t rowStride) {
    return GridView<T, Objects::single, Spacing::rowAdjacent>{
        {reinterpret_cast<BytePointer<T>>(base)}, 0, rowStride, sizeof(T)};
}

template <class T>
auto plainArray(T* base, std::ptrdiff_t objectStride, std::ptrdiff_t rowStride) {
    return GridView<T, Objects::stepped, Spacing::rowAdjacent>{
        {reinterpret_cast<BytePointer<T>>(base)}, objectStride, rowStride, sizeof(T)};
}

template <class T>
auto plainList(T* const* list, std::ptrdiff_t offset, std::ptrdiff_t rowStride) {
    return GridView<T, Objects::listed, Spacing::rowAdjacent>{{.list = list}, offset, rowStride, sizeof(T)};
}

template <class T>
auto strided(T* base, std::ptrdiff_t rowStride, std::ptrdiff_t elementStride) {
    return GridView<T, Objects::single, Spacing::strided>{
        {reinterpret_cast<BytePointer<T>>(base)}, 0, rowStride, elementStride};
}

template <class T>
auto stridedArray(T* base, std::ptrdiff_t objectStride, std::ptrdiff_t rowStride, std::ptrdiff_t elementStride) {
    return GridView<T, Objects::stepped, Spacing::strided>{
        {reinterpret_cast<BytePointer<T>>(base)}, objectStride, rowStride, elementStride};
}

template <class T>
auto stridedList(T* const* list, std::ptrdiff_t offset, std::ptrdiff_t rowStride, std::ptrdiff_t elementStride) {
    return GridView<T, Objects::listed, Spacing::strided>{{.list = list}, offset, rowStride, elementStride};
}

template <class T>
auto scattered(T* const* table, std::ptrdiff_t offset, std::ptrdiff_t pitch) {
    return ScatterView<T, Objects::single, false>{table, offset, 0, pitch};
}

template <class T>
auto scatteredArray(T* const* table, std::ptrdiff_t offset, std::ptrdiff_t objectStride, std::ptrdiff_t pitch) {
    return ScatterView<T, Objects::stepped, false>{table, offset, objectStride, pitch};
}

template <class T>
auto constant(T value) {
    return ConstantView<T, Objects::single>{value, {nullptr}, 0};
}

template <class T>
auto constantArray(const T* values, std::ptrdiff_t objectStride) {
    return ConstantView<T, Objects::stepped>{T{}, {reinterpret_cast<const std::byte*>(values)}, objectStride};
}

template <class T>
auto constantList(const T* const* list, std::ptrdiff_t offset) {
    return ConstantView<T, Objects::listed>{T{}, {.list = list}, offset};
}

// Stepped and listed objects as one type, for kernels whose work on an object takes much longer than to ask how it is found.
// Other views stay as they are.
template <class View>
View withAnyObjects(View view) {
    return view;
}

template <class T, Objects objects, Spacing spacing>
requires(objects == Objects::stepped ||
         objects == Objects::listed) auto withAnyObjects(GridView<T, objects, spacing> view) {
    GridView<T, Objects::any, spacing> any{nullptr, nullptr, view.objectStride, view.rowStride, view.elementStride};
    if constexpr (objects == Objects::listed) any.list = view.list;
    else any.origin = view.origin;
    return any;
}

// The same for objects of a known order, or from that order on: in packed arrays of orders up to 4 the question takes up to a
// quarter of the time.
template <int order, class View>
auto withAnyObjects(View view) {
    if constexpr (View::spacing == Spacing::rowAdjacent && order < 5) return view;
    else return withAnyObjects(view);
}

// The same storage, read as its transpose. Strides swap; adjacency turns from rows to columns.
template <class T, Objects objects, Spacing spacing>
auto transposed(GridView<T, objects, spacing> view) {
    constexpr Spacing turned = spacing == Spacing::rowAdjacent ? Spacing::columnAdjacent : Spacing::strided;
    GridView<T, objects, turned> result{{}, view.objectStride, view.elementStride, view.rowStride};
    if constexpr (objects == Objects::listed) result.list = view.list;
    else result.origin = view.origin;
    return result;
}

template <class T, Objects objects>
auto transposed(ScatterView<T, objects, false> view) {
    return ScatterView<T, objects, true>{view.table, view.offset, view.objectStride, view.pitch};
}

}  // namespace korm::inline KORM_VARIANT
