// The same element position of all objects of an array is a stream with one step. Positions outside and objects inside:
// addresses are formed once for a stream, a shared operand's element stays in a register, and where objects are one element
// apart a stream is a row of adjacent elements.
#pragma once

#include <algorithm>
#include <cstdint>

#include "arith/operands.h"
#include "arith/rows.h"
#include "entry/views.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::arith {

// An operand of the pointer layout. Entries of a column are `rowPitch` entries of the table apart, so that a table that is
// read as its transpose has the same type.
template <class T, Objects objectsOf>
struct Table {
    using Element = std::remove_const_t<T>;
    static constexpr Objects objects = objectsOf;
    static constexpr Spacing spacing = Spacing::scattered;

    T* const* entries;
    std::ptrdiff_t offset, objectStride;
    std::ptrdiff_t rowPitch, columnPitch;
};

// Where the elements (i, j) to (i, j + n - 1) lie, each at the same distance from the address in `at`.
template <class Byte, int n, class T, Objects objects>
[[gnu::always_inline]] inline void positions(Byte* (&at)[n], const Table<T, objects>& table, std::ptrdiff_t i,
                                             std::ptrdiff_t j) {
    T* const* entry = table.entries + (i * table.rowPitch + j * table.columnPitch);
    for (int e = 0; e < n; ++e, entry += table.columnPitch) at[e] = reinterpret_cast<Byte*>(*entry);
}

// That distance for object k.
template <class T, Objects objects>
[[gnu::always_inline]] inline std::ptrdiff_t distanceOf(const Table<T, objects>& table, std::ptrdiff_t k) {
    return table.offset + k * table.objectStride;
}

// Where objects are adjacent, a stream is a row: those of elements (i, 0), (i, 1), ... are objects of one row each. A shared
// operand has a constant for each of them, and an array of constants is one row for all.
template <class T>
[[gnu::always_inline]] inline auto acrossObjects(const Array<T, Spacing::strided>& array, std::ptrdiff_t i) {
    return Array<T, Spacing::rowAdjacent>{array.origin + i * array.rowStride, nullptr, array.elementStride, 0,
                                          sizeof(T)};
}
template <class T>
[[gnu::always_inline]] inline auto acrossObjects(const GridView<T, Objects::single, Spacing::strided>& view,
                                                 std::ptrdiff_t i) {
    return Array<T, Spacing::constant>{view.origin + i * view.rowStride, nullptr, view.elementStride, 0, 0};
}
template <class T>
[[gnu::always_inline]] inline auto acrossObjects(const Array<T, Spacing::constant>& constants, std::ptrdiff_t) {
    return GridView<T, Objects::single, Spacing::rowAdjacent>{{constants.origin}, 0, 0, sizeof(T)};
}
template <class T>
[[gnu::always_inline]] inline const auto& acrossObjects(const ConstantView<T, Objects::single>& view, std::ptrdiff_t) {
    return view;
}

// Streams side by side: those of elements (i, j) to (i, j + n - 1) from object `first` on, the same elements of a shared
// operand, one constant for each object.
template <class T, int n>
struct MovingStreams {
    const std::byte* at[n];
    std::ptrdiff_t distance, step;

    [[gnu::always_inline]] T get(int e) const { return load<T>(at[e] + distance); }
    [[gnu::always_inline]] void next() { distance += step; }
};

template <class T, int n>
struct SharedElements {
    T value[n];

    [[gnu::always_inline]] T get(int e) const { return value[e]; }
    void next() {}
};

template <class T>
struct ConstantStream {
    const std::byte* at;
    std::ptrdiff_t step;

    [[gnu::always_inline]] T get(int) const { return load<T>(at); }
    [[gnu::always_inline]] void next() { at += step; }
};

template <class T, int n, class View>
[[gnu::always_inline]] inline auto streamsOf(const View& view, std::ptrdiff_t i, std::ptrdiff_t j,
                                             std::ptrdiff_t first) {
    if constexpr (isConstant<View> && !isShared<View>)
        return ConstantStream<T>{view.origin + first * view.objectStride, view.objectStride};
    else if constexpr (isConstant<View>) {
        SharedElements<T, n> elements;
        for (int e = 0; e < n; ++e) elements.value[e] = view.value;
        return elements;
    } else {
        MovingStreams<T, n> streams;
        positions(streams.at, view, i, j);
        streams.distance = distanceOf(view, first);
        streams.step = view.objectStride;
        if constexpr (!isShared<View>) return streams;
        else {
            SharedElements<T, n> elements;
            for (int e = 0; e < n; ++e) elements.value[e] = streams.get(e);
            return elements;
        }
    }
}

// Up to four streams at a time, as many pointers as there are registers. Objects that lie packed are then passed over in
// order, and two stores in a row mostly go to one line of cache, which takes them in one cycle.
template <class Op, int n, class A, class B, class D>
[[gnu::always_inline]] inline void storeStreams(const A& a, const B& b, const D& dst, std::ptrdiff_t i,
                                                std::ptrdiff_t j, std::ptrdiff_t first, std::ptrdiff_t count) {
    using T = typename D::Element;
    auto x = streamsOf<T, n>(a, i, j, first);
    auto y = streamsOf<T, n>(b, i, j, first);
    std::byte* to[n];
    positions(to, dst, i, j);
    std::ptrdiff_t distance = distanceOf(dst, first);
    do {
        for (int e = 0; e < n; ++e) store(to[e] + distance, Op::apply(x.get(e), y.get(e)));
        x.next();
        y.next();
        distance += dst.objectStride;
    } while (--count > 0);
}

// Objects are taken in blocks, so that what lies between the elements of one stream, about 8 KB an operand, is still in the
// first-level cache for the next.
template <class View>
inline std::ptrdiff_t objectsOfBlock(const View& dst, std::ptrdiff_t count) {
    constexpr std::ptrdiff_t least = 16;
    return count <= least ? least : std::max(least, 8192 / dst.objectStride);
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void streams(const A& first, const B& second, const D& result, std::ptrdiff_t width,
                               std::ptrdiff_t height, std::ptrdiff_t count) {
    const A a = first;
    const B b = second;
    const D dst = result;
    const std::ptrdiff_t block = objectsOfBlock(dst, count);
    for (std::ptrdiff_t begin = 0; begin < count; begin += block) {
        const std::ptrdiff_t objects = std::min(block, count - begin);
        for (std::ptrdiff_t i = 0; i < height; ++i) {
            std::ptrdiff_t j = 0;
            for (; j + 4 <= width; j += 4) storeStreams<Op, 4>(a, b, dst, i, j, begin, objects);
            switch (width - j) {
                case 3: storeStreams<Op, 3>(a, b, dst, i, j, begin, objects); break;
                case 2: storeStreams<Op, 2>(a, b, dst, i, j, begin, objects); break;
                case 1: storeStreams<Op, 1>(a, b, dst, i, j, begin, objects); break;
                default: break;
            }
        }
    }
}

}  // namespace korm::inline KORM_VARIANT::arith
