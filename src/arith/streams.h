// Elements that lie apart: the strided layout, and the streams of the pointer layout.
//
// Objects are walked row by row, with the pointer and the step of each operand in registers: two stores in a row mostly
// go to one line of cache, which takes them in one cycle.
//
// Over the objects of an array, an element position is a stream with one step. Where objects are small, the loops run
// with the positions outside and the objects inside: addresses are formed once per stream, a single operand's element
// stays in a register, and where objects are one element apart the stream is a run of adjacent elements. Objects are
// taken in blocks, so that what lies between the elements of one stream is still in the first-level cache for the next.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "arith/plain.h"
#include "arith/runs.h"
#include "kernel/known.h"
#include "kernel/vec.h"

namespace korm {

// Elements one step apart, of which six can be addressed from one place. Multiples of the step by 2 and 4 are part of
// an instruction for free, if the compiler does not know that it has seen this step before; three times the step has
// a register. `once`: for one object only, where an entry function would have to save such registers first.
template <class Pointer, bool once = false>
struct Moving {
    Pointer at;
    std::ptrdiff_t step;
    std::ptrdiff_t triple = 3 * step;

    template <int n>
    [[gnu::always_inline]] Pointer address() {
        if constexpr (n >= 2 && !once) step = opaque(step);
        if constexpr (n == 3 && !once) return at + triple;
        else if constexpr (n == 3 || n == 5) return opaque(at + step) + (n - 1) * step;
        else return at + n * step;
    }
    [[gnu::always_inline]] void next(int n) {
        step = opaque(step);
        at = opaque(at + n * step);
    }
};

template <class View>
using BytePointerOf = std::remove_const_t<decltype(View::origin)>;

// A source of a stream: such elements, or one held for all of it.
template <class T>
struct MovingSource : Moving<const std::byte*> {
    template <int n>
    [[gnu::always_inline]] T get() {
        return load<T>(this->template address<n>());
    }
    Adjacent<T> run() const { return {this->at}; }
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

template <class Op, class T, int count, int n = 0, class A, class B, class D>
[[gnu::always_inline]] inline void storeElements(A& a, B& b, D& to) {
    if constexpr (n < count) {
        store(to.template address<n>(), Op::apply(a.template get<n>(), b.template get<n>()));
        storeElements<Op, T, count, n + 1>(a, b, to);
    }
}

// Element by element, in ascending order; leaves all three behind the last one. The loop is bound by the number of
// instructions and of taken branches: with rounds of four, single elements for the rest, and strides on the stack a
// row of 10 takes twice the time.
template <class Op, class T, class A, class B, class D>
[[gnu::always_inline]] inline void streamApart(A& a, B& b, D& to, std::ptrdiff_t length) {
    const auto round = [&](auto count) __attribute__((always_inline)) {
        storeElements<Op, T, count>(a, b, to);
        a.next(count);
        b.next(count);
        to.next(count);
    };
    while ((length -= 8) >= 0) {
        round(Int<4>{});
        round(Int<4>{});
    }
    if (length & 4) round(Int<4>{});
    if (length & 2) round(Int<2>{});
    if (length & 1) round(Int<1>{});
}

// --- Positions outside, objects inside ------------------------------------------------------------

template <class T, class View>
[[gnu::always_inline]] inline auto overObjectsSource(const View& view, std::ptrdiff_t i, std::ptrdiff_t j,
                                                     std::ptrdiff_t first) {
    constexpr bool single = View::objects == Objects::single;
    if constexpr (View::spacing == Spacing::constant) {
        if constexpr (single) return Resting<T>{view.value};
        else return MovingSource<T>{{view.origin + first * view.objectStride, view.objectStride}};
    } else if constexpr (single) return Resting<T>{load<T>(view.at(0).address(i, j))};
    else return MovingSource<T>{{view.at(first).address(i, j), view.objectStride}};
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
                auto x = overObjectsSource<T>(a, i, j, first);
                auto y = overObjectsSource<T>(b, i, j, first);
                Moving<std::byte*> to{dst.at(first).address(i, j), dst.objectStride};
                if (adjacent && length >= laneCount<T>)
                    longRow<Op, T>(x.run(), y.run(), to.at,
                                   (length - laneCount<T>)*static_cast<std::ptrdiff_t>(sizeof(T)));
                else streamApart<Op, T>(x, y, to, length);
            }
    }
}

// --- Objects outside ----------------------------------------------------------------------------

// Walks an array object by object, row by row. `walked` is the distance by which the elements of a row have moved it on
// when it goes to the next row.
template <class View, bool once = false>
struct RowsOf : Moving<BytePointerOf<View>, once> {
    using Element = typename View::Element;
    View view;
    std::ptrdiff_t toNextRow, toNextObject;

    RowsOf(const View& all, std::ptrdiff_t height, std::ptrdiff_t walked)
        : Moving<BytePointerOf<View>, once>{isListed<View> ? nullptr : all.origin, all.elementStride},
          view(all),
          toNextRow(all.rowStride - walked),
          toNextObject(all.objectStride - (height - 1) * all.rowStride - walked) {}

    template <int n>
    [[gnu::always_inline]] Element get() {
        return load<Element>(this->template address<n>());
    }
    [[gnu::always_inline]] void beginObject(std::ptrdiff_t k) {
        if constexpr (isListed<View>) this->at = view.at(k).origin;
    }
    [[gnu::always_inline]] void nextRow() { this->at = opaque(this->at + toNextRow); }
    [[gnu::always_inline]] void nextObject() {
        if constexpr (!isListed<View>) this->at = opaque(this->at + toNextObject);
    }
};

template <class T, class View>
struct ConstantRows : Resting<T> {
    View view;

    explicit ConstantRows(const View& all) : Resting<T>{}, view(all) {}
    [[gnu::always_inline]] void beginObject(std::ptrdiff_t k) { this->value = view.at(k); }
    void nextRow() {}
    void nextObject() {}
};

template <class T, class View>
[[gnu::always_inline]] inline auto walkedRowsOf(const View& view, std::ptrdiff_t width, std::ptrdiff_t height) {
    if constexpr (isConstant<View>) return ConstantRows<T, View>(view);
    else return RowsOf<View>(view, height, width * view.elementStride);
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
    auto x = walkedRowsOf<T>(a, width, height);
    auto y = walkedRowsOf<T>(b, width, height);
    auto z = walkedRowsOf<T>(dst, width, height);
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        x.beginObject(k);
        y.beginObject(k);
        z.beginObject(k);
        for (std::ptrdiff_t i = height;;) {
            streamApart<Op, T>(x, y, z, width);
            if (--i == 0) break;
            x.nextRow();
            y.nextRow();
            z.nextRow();
        }
        x.nextObject();
        y.nextObject();
        z.nextObject();
    }
}

// One vector. What it consists of is passed in registers: two for each operand, one for a constant.
template <class Pointer>
struct StreamStart {
    Pointer at;
    std::ptrdiff_t step;
};

template <class View>
[[gnu::always_inline]] inline auto streamStart(const View& view) {
    if constexpr (isConstant<View>) return Resting<typename View::Element>{view.value};
    else return StreamStart<BytePointerOf<View>>{view.origin, view.elementStride};
}

template <class T>
[[gnu::always_inline]] inline auto streamFrom(StreamStart<const std::byte*> start) {
    return MovingSource<T>{{start.at, start.step}};
}

template <class T>
[[gnu::always_inline]] inline auto streamFrom(Resting<T> constant) {
    return constant;
}

template <class Op, class T, class A, class B>
[[gnu::noinline]] void stridedVector(A a, B b, StreamStart<std::byte*> dst, std::ptrdiff_t length) {
    auto x = streamFrom<T>(a);
    auto y = streamFrom<T>(b);
    Moving<std::byte*> z{dst.at, dst.step};
    streamApart<Op, T>(x, y, z, length);
}

// Whether objects inside are worth it: rows too short for a stream of their own, or vectors over objects.
template <class A, class B, class D>
inline bool preferObjects(const A& a, const B& b, const D& dst, std::ptrdiff_t width, std::ptrdiff_t height,
                          std::ptrdiff_t count) {
    return count >= 16 &&
           (width * height <= 12 || (objectsAdjacent(a) && objectsAdjacent(b) && objectsAdjacent(dst))) &&
           elementsApart(dst, width, height, count);
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void stridedArrays(const A& a, const B& b, const D& dst, std::ptrdiff_t width, std::ptrdiff_t height,
                                     std::ptrdiff_t count) {
    if (preferObjects(a, b, dst, width, height, count)) overObjects<Op>(A(a), B(b), D(dst), width, height, count);
    else stridedNest<Op>(A(a), B(b), D(dst), width, height, count);
}

}  // namespace korm
