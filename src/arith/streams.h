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

// The touched part of a block of objects, about 8 KB an operand, stays in the first-level cache.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void overObjects(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                               std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    const bool adjacent = objectsAdjacent(a) && objectsAdjacent(b) && objectsAdjacent(dst) && count >= laneCount<T>;
    const std::ptrdiff_t block = std::max<std::ptrdiff_t>(16, 8192 / dst.objectStride);
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

template <class T, class X>
[[gnu::always_inline]] inline T elementOf(const X& object, std::ptrdiff_t i, std::ptrdiff_t j) {
    if constexpr (std::is_same_v<X, T>) return object;
    else return load<T>(object.address(i, j));
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void scatteredAny(const A& a, const B& b, const D& dst, std::ptrdiff_t width, std::ptrdiff_t height,
                                    std::ptrdiff_t count) {
    using T = typename D::Element;
    if constexpr (D::objects != Objects::single)
        if (count >= 16) return overObjects<Op>(A(a), B(b), D(dst), width, height, count);
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const auto x = a.at(k);
        const auto y = b.at(k);
        const auto z = dst.at(k);
        for (std::ptrdiff_t i = 0; i < height; ++i)
            for (std::ptrdiff_t j = 0; j < width; ++j)
                store(z.address(i, j), Op::apply(elementOf<T>(x, i, j), elementOf<T>(y, i, j)));
    }
}

}  // namespace korm
