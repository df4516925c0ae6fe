// Elements that lie apart: the strided and the pointer layout.
//
// Over the objects of an array, an element position is a stream with one step. So the loops run with
// the positions outside and the objects inside: addresses are formed and tables read once per stream, a
// single operand's element stays in a register, and where objects are one element apart the stream is a
// run of adjacent elements. Objects are taken in blocks, so that what lies between the elements of one
// stream is still in the first-level cache for the next.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "arith/runs.h"
#include "entry/lanes.h"

namespace korm {

// A source of a stream: elements one step apart, or one element held for all of it.
template <class T>
struct Moving {
    const std::byte* at;
    std::ptrdiff_t step;

    template <int n>
    [[gnu::always_inline]] T get() const {
        if constexpr (n == 3) return load<T>(at + 2 * step + step);
        else return load<T>(at + n * step);
    }
    [[gnu::always_inline]] void next(int n) { at += n * step; }
    Adjacent<T> run() const { return {at}; }
};

template <class T>
struct Resting {
    T value;

    template <int>
    [[gnu::always_inline]] T get() const {
        return value;
    }
    void next(int) {}
    Same<T> run() const { return {broadcast(value)}; }
};

// Element by element, in ascending order.
template <class Op, class T, class A, class B>
[[gnu::always_inline]] inline void streamApart(A a, B b, std::byte* to, std::ptrdiff_t step, std::ptrdiff_t length) {
    const std::ptrdiff_t triple = 3 * step;
    for (; length >= 4; length -= 4) {
        store(to, Op::apply(a.template get<0>(), b.template get<0>()));
        store(to + step, Op::apply(a.template get<1>(), b.template get<1>()));
        store(to + 2 * step, Op::apply(a.template get<2>(), b.template get<2>()));
        store(to + triple, Op::apply(a.template get<3>(), b.template get<3>()));
        a.next(4);
        b.next(4);
        to += 4 * step;
    }
    for (; length > 0; --length) {
        store(to, Op::apply(a.template get<0>(), b.template get<0>()));
        a.next(1);
        b.next(1);
        to += step;
    }
}

// --- Positions outside, objects inside ------------------------------------------------------------

template <class T, class View>
[[gnu::always_inline]] inline auto overObjectsSource(const View& view, std::ptrdiff_t i, std::ptrdiff_t j,
                                                     std::ptrdiff_t first) {
    constexpr bool single = View::objects == Objects::single;
    if constexpr (View::spacing == Spacing::constant) {
        if constexpr (single) return Resting<T>{view.value};
        else return Moving<T>{view.origin + first * view.objectStride, view.objectStride};
    } else if constexpr (single) return Resting<T>{load<T>(view.at(0).address(i, j))};
    else return Moving<T>{view.at(first).address(i, j), view.objectStride};
}

template <class View>
inline bool objectsAdjacent(const View& view) {
    if constexpr (View::objects == Objects::single) return true;
    else return view.objectStride == sizeof(typename View::Element);
}

// How many objects make a block: what they touch, about 8 KB an operand, stays in the first-level cache.
template <class View>
inline std::ptrdiff_t objectsInCache(const View& view) {
    return std::max<std::ptrdiff_t>(16, 8192 / view.objectStride);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void overObjects(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                               std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    const bool adjacent = objectsAdjacent(a) && objectsAdjacent(b) && objectsAdjacent(dst) && count >= laneCount<T>;
    const std::ptrdiff_t block = objectsInCache(dst);
    std::ptrdiff_t length;
    for (std::ptrdiff_t first = 0; first < count; first += length) {
        length = std::min(block, count - first);
        for (std::ptrdiff_t i = 0; i < height; ++i)
            for (std::ptrdiff_t j = 0; j < width; ++j) {
                const auto x = overObjectsSource<T>(a, i, j, first);
                const auto y = overObjectsSource<T>(b, i, j, first);
                std::byte* const to = dst.at(first).address(i, j);
                if (adjacent && length >= laneCount<T>)
                    longRow<Op, T>(x.run(), y.run(), to,
                                   (length - laneCount<T>)*static_cast<std::ptrdiff_t>(sizeof(T)));
                else streamApart<Op, T>(x, y, to, dst.objectStride, length);
            }
    }
}

// --- Objects outside ----------------------------------------------------------------------------

template <class T, class G>
[[gnu::always_inline]] inline auto alongRow(const G& object, std::ptrdiff_t i) {
    if constexpr (std::is_same_v<G, T>) return Resting<T>{object};
    else return Moving<T>{object.address(i, 0), object.elementStride};
}

template <class View>
inline void swapAxes(View& view) {
    if constexpr (View::spacing == Spacing::strided) std::swap(view.rowStride, view.elementStride);
}

// Whether no two elements of a result share bytes: by rising size, each stride passes over all that the
// smaller ones span. Only then may elements be done in another order than objects, rows, columns.
template <class D>
inline bool elementsApart(const D& d, std::ptrdiff_t width, std::ptrdiff_t height, std::ptrdiff_t count) {
    struct Axis {
        std::ptrdiff_t stride, length;
    };
    Axis x{d.elementStride, width}, y{d.rowStride, height}, z{d.objectStride, count};
    if (x.stride > y.stride) std::swap(x, y);
    if (y.stride > z.stride) std::swap(y, z);
    if (x.stride > y.stride) std::swap(x, y);
    std::ptrdiff_t span = sizeof(typename D::Element);
    for (const Axis& axis : {x, y, z}) {
        if (axis.length > 1 && axis.stride < span) return false;
        span += (axis.length - 1) * axis.stride;
    }
    return true;
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void stridedNest(A a, B b, D dst, std::ptrdiff_t width, std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    if (height > width && elementsApart(dst, width, height, 1)) {
        std::swap(width, height);
        swapAxes(a);
        swapAxes(b);
        swapAxes(dst);
    }
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const auto x = a.at(k);
        const auto y = b.at(k);
        const auto z = dst.at(k);
        for (std::ptrdiff_t i = 0; i < height; ++i)
            streamApart<Op, T>(alongRow<T>(x, i), alongRow<T>(y, i), z.address(i, 0), z.elementStride, width);
    }
}

// Whether objects inside are worth it: rows too short for a stream of their own, or vectors over objects.
template <class A, class B, class D>
inline bool preferObjects(const A& a, const B& b, const D& dst, std::ptrdiff_t width, std::ptrdiff_t height,
                          std::ptrdiff_t count) {
    return count >= 16 &&
           (width * height <= 36 || (objectsAdjacent(a) && objectsAdjacent(b) && objectsAdjacent(dst))) &&
           elementsApart(dst, width, height, count);
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void stridedArrays(const A& a, const B& b, const D& dst, std::ptrdiff_t width, std::ptrdiff_t height,
                                     std::ptrdiff_t count) {
    if (preferObjects(a, b, dst, width, height, count)) overObjects<Op>(A(a), B(b), D(dst), width, height, count);
    else stridedNest<Op>(A(a), B(b), D(dst), width, height, count);
}

// --- Tables ---------------------------------------------------------------------------------------

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

    [[gnu::always_inline]] auto get(int) const { return one.template get<0>(); }
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

template <class Op, class A, class B, class D>
[[gnu::noinline]] void scatteredAny(A a, B b, D dst, std::ptrdiff_t width, std::ptrdiff_t height,
                                    std::ptrdiff_t count) {
    if constexpr (inTableOrder<A> && inTableOrder<B>) {
        width *= height;
        height = 1;
    }
    if (count >= 2 && objectsAdjacent(a) && objectsAdjacent(b) && objectsAdjacent(dst)) {
        if constexpr (inTableOrder<A> && inTableOrder<B>) {
            const auto bytes = count * static_cast<std::ptrdiff_t>(sizeof(typename D::Element));
            grids<Op>(acrossObjects(a), acrossObjects(b), acrossObjects(dst), bytes, 1, width);
        } else overObjects<Op>(a, b, dst, width, height, count);
    } else streamGroups<Op>(a, b, dst, width, height, count);
}

}  // namespace korm
