// The pointer layout over arrays: a table entry is a stream over the objects.
#pragma once

#include <algorithm>
#include <cstdint>

#include "arith/plain.h"
#include "arith/streams.h"
#include "entry/views.h"

namespace korm {

template <class View>
inline constexpr bool inTableOrder = true;
template <class T, Objects objects>
inline constexpr bool inTableOrder<ScatterView<T, objects, true>> = false;

// A table whose objects are adjacent is a list: entry p leads to a row that holds element p of all objects. So
// a single operand gives a constant for each row, and an array of constants is one row for all.
template <class T, bool transposed>
inline auto acrossObjects(const ScatterView<T, Objects::stepped, transposed>& view) {
    return plainList(view.table, view.offset, noRows);
}

template <class T, bool transposed>
inline auto acrossObjects(const ScatterView<T, Objects::single, transposed>& view) {
    return constantList(view.table, view.offset);
}

template <class T>
inline auto acrossObjects(const ConstantView<T, Objects::stepped>& view) {
    return plain(reinterpret_cast<const T*>(view.origin), noRows);
}

template <class T>
inline auto acrossObjects(const ConstantView<T, Objects::single>& view) {
    return view;
}

// Elements (i, j) to (i, j + n - 1) of one object after the other.
template <class T, int n>
struct MovingGroup {
    const std::byte* at[n];
    std::ptrdiff_t step, moved = 0;

    [[gnu::always_inline]] T get(int e) const { return load<T>(at[e] + moved); }
    [[gnu::always_inline]] void next() { moved += step; }
};

template <class T, int n>
struct RestingGroup {
    T value[n];

    [[gnu::always_inline]] T get(int e) const { return value[e]; }
    void next() {}
};

// One constant for all elements of an object.
template <class Source>
struct Shared {
    Source one;

    [[gnu::always_inline]] auto get(int) { return one.template get<0>(); }
    [[gnu::always_inline]] void next() { one.next(1); }
};

template <class T, int n, class View>
[[gnu::always_inline]] inline auto groupSource(const View& view, std::ptrdiff_t i, std::ptrdiff_t j,
                                               std::ptrdiff_t first) {
    if constexpr (View::spacing == Spacing::constant) {
        const auto source = overObjectsSource<T>(view, i, j, first);
        return Shared<decltype(overObjectsSource<T>(view, i, j, first))>{source};
    } else if constexpr (View::objects == Objects::single) {
        RestingGroup<T, n> group;
        for (int e = 0; e < n; ++e) group.value[e] = load<T>(view.at(0).address(i, j + e));
        return group;
    } else {
        MovingGroup<T, n> group;
        for (int e = 0; e < n; ++e) group.at[e] = view.at(first).address(i, j + e);
        group.step = view.objectStride;
        return group;
    }
}

// Up to four streams side by side: as many pointers as there are registers. Objects that lie packed are then
// passed over in order, and two stores in a row mostly go to one line of cache, which takes them in one cycle.
template <class Op, int n, class A, class B, class D>
[[gnu::always_inline]] inline void streamGroup(const A& a, const B& b, const D& dst, std::ptrdiff_t i, std::ptrdiff_t j,
                                               std::ptrdiff_t first, std::ptrdiff_t count) {
    using T = typename D::Element;
    auto x = groupSource<T, n>(a, i, j, first);
    auto y = groupSource<T, n>(b, i, j, first);
    std::byte* to[n];
    for (int e = 0; e < n; ++e) to[e] = dst.at(first).address(i, j + e);
    std::ptrdiff_t moved = 0;
    do {
        for (int e = 0; e < n; ++e) store(to[e] + moved, Op::apply(x.get(e), y.get(e)));
        x.next();
        y.next();
        moved += dst.objectStride;
    } while (--count > 0);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void streamGroups(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                                std::ptrdiff_t height, std::ptrdiff_t count) {
    const std::ptrdiff_t block = objectsInCache(dst);
    for (std::ptrdiff_t first = 0; first < count; first += block) {
        const std::ptrdiff_t objects = std::min(block, count - first);
        for (std::ptrdiff_t i = 0; i < height; ++i) {
            std::ptrdiff_t j = 0;
            for (; j + 4 <= width; j += 4) streamGroup<Op, 4>(a, b, dst, i, j, first, objects);
            switch (width - j) {
                case 3: streamGroup<Op, 3>(a, b, dst, i, j, first, objects); break;
                case 2: streamGroup<Op, 2>(a, b, dst, i, j, first, objects); break;
                case 1: streamGroup<Op, 1>(a, b, dst, i, j, first, objects); break;
                default: break;
            }
        }
    }
}

// Whether entry after entry leads to adjacent elements. It does where a table was made for objects whose elements lie
// side by side, the fields of a structure for one.
template <class View>
inline bool entriesAdjacent(const View& view, std::ptrdiff_t entries) {
    if constexpr (!isConstant<View>) {
        constexpr std::uintptr_t size = sizeof(typename View::Element);
        const auto first = reinterpret_cast<std::uintptr_t>(view.table[0]);
        for (std::ptrdiff_t e = 1; e < entries; ++e)
            if (reinterpret_cast<std::uintptr_t>(view.table[e]) != first + static_cast<std::uintptr_t>(e) * size)
                return false;
    }
    return true;
}

// The operand of such a table in the plain layout.
template <class T, Objects objects, bool turned>
inline auto asPlain(const ScatterView<T, objects, turned>& view) {
    const auto origin = reinterpret_cast<BytePointer<T>>(view.table[0]) + view.offset;
    const auto rowStride = view.pitch * static_cast<std::ptrdiff_t>(sizeof(T));
    const GridView<T, objects, Spacing::rowAdjacent> rows{{origin}, view.objectStride, rowStride, sizeof(T)};
    if constexpr (turned) return transposed(rows);
    else return rows;
}

template <class T, Objects objects>
inline auto asPlain(const ConstantView<T, objects>& view) {
    return view;
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void scatteredAny(A a, B b, D dst, std::ptrdiff_t width, std::ptrdiff_t height,
                                    std::ptrdiff_t count) {
    constexpr std::ptrdiff_t size = sizeof(typename D::Element);
    const std::ptrdiff_t entries = width * height;
    // Below a vector an object, or blocks enough to turn, streams are quicker.
    constexpr std::ptrdiff_t worthwhile = inTableOrder<A> && inTableOrder<B> ? 16 / size : 25;
    if constexpr (inTableOrder<A> && inTableOrder<B>) {
        width = entries;
        height = 1;
    }
    if (count >= 2 && objectsAdjacent(a) && objectsAdjacent(b) && objectsAdjacent(dst)) {
        if constexpr (inTableOrder<A> && inTableOrder<B>)
            grids<Op>(acrossObjects(a), acrossObjects(b), acrossObjects(dst), count * size, 1, width);
        else overObjects<Op>(a, b, dst, width, height, count);
    } else if (count >= 4 && entries >= worthwhile && dst.objectStride >= entries * size &&
               entriesAdjacent(a, entries) && entriesAdjacent(b, entries) && entriesAdjacent(dst, entries)) {
        plainAny<Op>(asPlain(a), asPlain(b), asPlain(dst), width, height, count);
    } else {
        streamGroups<Op>(a, b, dst, width, height, count);
    }
}

}  // namespace korm
