// Combinations of vectors: each element of the result is made of one element of either source and of constants.
//
// Elements are independent of each other, so all paths give the same bits. What differs is along what a vector of the
// processor goes: along a row of adjacent elements, which is an object, a packed array of objects or, where objects are
// one element apart, the same element of all of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "kernel/walk.h"

namespace korm::inline KORM_VARIANT::vectors {

// What is done with elements, or with vectors of elements.
template <class T>
struct ScaledSum {
    T factor;

    template <class S>
    [[gnu::always_inline]] S operator()(S x, S y) const {
        return x * all<S>(factor) + y;
    }
};

template <class T>
struct LinearCombination {
    T firstFactor;
    T secondFactor;

    template <class S>
    [[gnu::always_inline]] S operator()(S x, S y) const {
        return x * all<S>(firstFactor) + y * all<S>(secondFactor);
    }
};

// --- Rows -----------------------------------------------------------------------------------------

// The last vector of a row ends with it and may overlap the one before. It is computed first, so that elements which it
// shares are still as they were when the row is done in place.
template <class T, class Op, class X, class Y>
[[gnu::always_inline]] inline void combineRow(const Op& op, const X& x, const Y& y, std::byte* to,
                                              std::ptrdiff_t elements) {
    constexpr std::ptrdiff_t size = sizeof(T), bytes = sizeof(Lanes<T>);
    if (elements < laneCount<T>) {
        for (std::ptrdiff_t at = 0; at < elements * size; at += size)
            store(to + at, op(x.template get<T>(at), y.template get<T>(at)));
        return;
    }
    const auto vector = [&](std::ptrdiff_t at) __attribute__((always_inline)) {
        return op(x.template get<Lanes<T>>(at), y.template get<Lanes<T>>(at));
    };
    const std::ptrdiff_t last = elements * size - bytes;
    const Lanes<T> end = vector(last);
    std::ptrdiff_t at = 0;
    for (; at + 4 * bytes <= last; at += 4 * bytes)
        unrolled<4>([&](auto v)
                        __attribute__((always_inline)) { storeLanes(to + at + v * bytes, vector(at + v * bytes)); });
    for (; at < last; at += bytes) storeLanes(to + at, vector(at));
    storeLanes(to + last, end);
}

template <class T, class Op>
[[gnu::noinline]] void combineRun(Op op, const std::byte* x, const std::byte* y, std::byte* to,
                                  std::ptrdiff_t elements) {
    combineRow<T>(op, AdjacentRow{x}, AdjacentRow{y}, to, elements);
}

// Strictly one after the other, for a result that begins inside a source. The empty statement keeps the compiler from
// making vectors of it.
template <class T, class Op>
[[gnu::noinline]] void combineInTurn(Op op, const std::byte* x, const std::byte* y, std::byte* to,
                                     std::ptrdiff_t elements) {
    constexpr std::ptrdiff_t size = sizeof(T);
    for (std::ptrdiff_t at = 0; at < elements * size; at += size) {
        store(to + at, op(load<T>(x + at), load<T>(y + at)));
        asm volatile("");
    }
}

// A row of two to six elements. Three floats fill four lanes as x y y z.
template <class T, int n, class Op>
[[gnu::always_inline]] inline void combineShortRow(const Op& op, const std::byte* x, const std::byte* y,
                                                   std::byte* to) {
    constexpr int lanes = 16 / static_cast<int>(sizeof(T));
    constexpr std::ptrdiff_t size = sizeof(T);
    if constexpr (n == 2 && isFloat<T>) {
        storePair(to, op(loadPair(x), loadPair(y)));
    } else if constexpr (n < lanes) {
        static_assert(n == 3);
        const Float4 row = settled(op(loadPairs(x, x + size), loadPairs(y, y + size)));
        storeLowPair(to, row);
        storeHighPair(to + size, row);
    } else {
        using V = Vec<T, lanes>;
        constexpr int vectors = (n + lanes - 1) / lanes;
        V row[vectors];
        // Where vector v begins: the last one ends with the row.
        const auto begin = [](int v) { return std::min(v * lanes, n - lanes) * size; };
        unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
            row[v] = op(load<V>(x + begin(v)), load<V>(y + begin(v)));
        });
        unrolled<vectors>([&](auto v) __attribute__((always_inline)) { store(to + begin(v), row[v]); });
    }
}

// The first elements of three walks, each written before the next is read.
template <class T, int number, class Op, class X, class Y, class To>
[[gnu::always_inline]] inline void combineFirst(const Op& op, X& x, Y& y, To& to) {
    unrolled<number>([&](auto i) __attribute__((always_inline)) {
        store(to.template address<i>(), op(load<T>(x.template address<i>()), load<T>(y.template address<i>())));
    });
}

// The next n elements.
template <class T, class Op, class X, class Y, class To>
[[gnu::always_inline]] inline void combineSteps(const Op& op, X& x, Y& y, To& to, std::ptrdiff_t n) {
    inRounds(
        n, [&](auto number) __attribute__((always_inline)) {
            combineFirst<T, number>(op, x, y, to);
            x.moveOn(number);
            y.moveOn(number);
            to.moveOn(number);
        });
}

// --- Objects ---------------------------------------------------------------------------------------

// The elements of one object after the other: `enter` each before its elements, `leave` it behind them. Objects are counted
// from the end, so that their number needs no register.
template <class View>
struct ObjectWalk : ElementWalk<decltype(View::origin)> {
    View end;
    std::ptrdiff_t toNextObject;

    // `walked`: by how many elements the walk is moved on within an object.
    [[gnu::always_inline]] ObjectWalk(const View& objects, std::ptrdiff_t walked, std::ptrdiff_t count)
        : ElementWalk<decltype(View::origin)>{nullptr, objects.elementStride},
          end(objects),
          toNextObject((isShared<View> ? 0 : objects.objectStride) - walked * objects.elementStride) {
        if constexpr (isListed<View>) end.list = opaque(end.list + count);
        else this->at = objects.origin;
    }
    [[gnu::always_inline]] void enter(std::ptrdiff_t k) {
        if constexpr (isListed<View>) this->at = end.at(k).origin;
    }
    [[gnu::always_inline]] void leave() {
        if constexpr (!isListed<View>) this->at += toNextObject;
    }
};

// Object after object, each element written before the next is read.
template <class Op, class A, class B, class D, class Length>
[[gnu::noinline]] void combineObjects(Op op, const A& first, const B& second, const D& result, Length length,
                                      std::ptrdiff_t count) {
    using T = typename D::Element;
    const std::ptrdiff_t walked = isKnown<Length> ? 0 : length;
    ObjectWalk<A> x(first, walked, count);
    ObjectWalk<B> y(second, walked, count);
    ObjectWalk<D> to(result, walked, count);
    for (std::ptrdiff_t k = -count; k != 0; ++k) {
        k = opaque(k);
        x.enter(k);
        y.enter(k);
        to.enter(k);
        // Tests of its bits ahead of the loop would take two of the registers, of which lists need all.
        if constexpr (!isKnown<Length> && isListed<D>) length = opaque(length);
        if constexpr (isKnown<Length>) combineFirst<T, length>(op, x, y, to);
        else combineSteps<T>(op, x, y, to, length);
        x.leave();
        y.leave();
        to.leave();
    }
}

// --- Adjacent elements ----------------------------------------------------------------------------

template <class View>
[[gnu::always_inline]] inline bool isPacked(const View& view, std::ptrdiff_t objectBytes) {
    return isShared<View> || view.objectStride == objectBytes;
}

// Packed arrays of objects of n elements beside an operand that serves all of them: as many objects as a vector has lanes
// are n whole vectors, beside which the same n vectors of the shared operand stand every time. Returns how many are done.
template <class T, int n, class Op, class A, class B>
[[gnu::noinline, gnu::aligned(64)]] std::ptrdiff_t combineTiles(Op op, const A& a, const B& b, std::byte* to,
                                                                std::ptrdiff_t count) {
    constexpr std::ptrdiff_t bytes = sizeof(Lanes<T>);
    T repeated[n * laneCount<T>];
    const std::byte* const shared = isShared<A> ? a.origin : b.origin;
    unrolled<n * laneCount<T>>([&](auto e) __attribute__((always_inline)) {
        repeated[e] = load<T>(shared + e % n * sizeof(T));
    });
    Lanes<T> held[n];
    unrolled<n>([&](auto v) __attribute__((always_inline)) {
        held[v] = loadLanes<T>(reinterpret_cast<const std::byte*>(repeated) + v * bytes);
    });
    const std::byte* from = isShared<A> ? b.origin : a.origin;
    std::ptrdiff_t k = 0;
    for (; k + laneCount<T> <= count; k += laneCount<T>) {
        unrolled<n>([&](auto v) __attribute__((always_inline)) {
            const Lanes<T> row = loadLanes<T>(from + v * bytes);
            storeLanes(to + v * bytes, isShared<A> ? op(held[v], row) : op(row, held[v]));
        });
        from += n * bytes;
        to += n * bytes;
    }
    return k;
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void combineRows(Op op, A a, B b, D dst, std::ptrdiff_t length, std::ptrdiff_t k,
                                   std::ptrdiff_t count) {
    for (; k < count; ++k)
        combineRow<typename D::Element>(op, AdjacentRow{a.at(k).origin}, AdjacentRow{b.at(k).origin}, dst.at(k).origin,
                                        length);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void combineAdjacentArrays(const Op& op, const A& a, const B& b, const D& dst,
                                                         std::int32_t length, std::ptrdiff_t count) {
    using T = typename D::Element;
    const std::ptrdiff_t bytes = length * static_cast<std::ptrdiff_t>(sizeof(T));
    const bool packed = !isListed<D> && isPacked(a, bytes) && isPacked(b, bytes) && isPacked(dst, bytes);
    if constexpr (!isListed<D> && !isShared<A> && !isShared<B>)
        if (packed) return combineRun<T>(op, a.origin, b.origin, dst.origin, std::ptrdiff_t{length} * count);
    const auto shortRows = [&](auto n) __attribute__((always_inline)) {
        std::ptrdiff_t k = 0;
        if constexpr (!isListed<D> && (isShared<A> || isShared<B>))
            if (packed) k = combineTiles<T, n>(op, a, b, dst.origin, count);
        for (; k < count; ++k) combineShortRow<T, n>(op, a.at(k).origin, b.at(k).origin, dst.at(k).origin);
    };
    const auto otherRows = [&](std::ptrdiff_t first) __attribute__((always_inline)) {
        combineRows(op, a, b, dst, length, first, count);
    };
    if constexpr (!isListed<D> && (isShared<A> || isShared<B>))
        if (packed && length == 1) return otherRows(combineTiles<T, 1>(op, a, b, dst.origin, count));
    if (length == 1) return combineObjects(op, a, b, dst, Known<1>{}, count);
    if (length == 2) return shortRows(Int<2>{});
    forOrder(length, shortRows, [&] { otherRows(0); });
}

// A single object. Where the result begins inside a source, each element waits for those before it. A result that ends
// inside a source overwrites only what has been read.
template <class T, class Op>
[[gnu::noinline]] void combineLongRow(Op op, const std::byte* x, const std::byte* y, std::byte* to,
                                      std::ptrdiff_t length) {
    const auto bytes = static_cast<std::uintptr_t>(length) * sizeof(T);
    const auto beginsInside = [&](const std::byte* from) {
        const auto distance = reinterpret_cast<std::uintptr_t>(to) - reinterpret_cast<std::uintptr_t>(from);
        return distance != 0 && distance < bytes;
    };
    if (beginsInside(x) || beginsInside(y)) combineInTurn<T>(op, x, y, to, length);
    else combineRun<T>(op, x, y, to, length);
}

// --- Elements apart -------------------------------------------------------------------------------

// Vectors along the objects: element j of all of them is a row.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void combineStreams(Op op, const A& first, const B& second, const D& result, std::ptrdiff_t length,
                                      std::ptrdiff_t count) {
    const A a = first;
    const B b = second;
    const D dst = result;
    for (std::ptrdiff_t j = 0; j < length; ++j)
        combineRow<typename D::Element>(op, streamOf(a, 0, j), streamOf(b, 0, j), dst.at(0).address(0, j), count);
}

// Of tables: entry after entry, each for a few objects, which then stay in the first cache for the next entry.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void combineTables(Op op, const A& first, const B& second, const D& result, std::ptrdiff_t length,
                                     std::ptrdiff_t count) {
    const A a = first;
    const B b = second;
    const D dst = result;
    using T = typename D::Element;
    constexpr std::ptrdiff_t objects = 64;
    for (std::ptrdiff_t k = 0; k < count; k += objects) {
        const std::ptrdiff_t end = std::min(k + objects, count);
        for (std::ptrdiff_t j = 0; j < length; ++j) {
            ElementWalk x{a.at(k).address(0, j), a.objectStride};
            ElementWalk y{b.at(k).address(0, j), b.objectStride};
            ElementWalk to{dst.at(k).address(0, j), dst.objectStride};
            combineSteps<T>(op, x, y, to, end - k);
        }
    }
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void combineTable(Op op, const A& first, const B& second, const D& result, std::ptrdiff_t length) {
    const A a = first;
    const B b = second;
    const D dst = result;
    using T = typename D::Element;
    for (std::ptrdiff_t j = 0; j < length; ++j)
        store(dst.at(0).address(0, j), op(load<T>(a.at(0).address(0, j)), load<T>(b.at(0).address(0, j))));
}

// For a few elements a loop would cost as much as they do.
template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void combineElements(const Op& op, const A& a, const B& b, const D& dst,
                                                   std::ptrdiff_t length, std::ptrdiff_t count) {
    if (length == 1) combineObjects(op, a, b, dst, Known<1>{}, count);
    else if (length == 2) combineObjects(op, a, b, dst, Known<2>{}, count);
    else if (length == 3) combineObjects(op, a, b, dst, Known<3>{}, count);
    else combineObjects(op, a, b, dst, length, count);
}

// --- Choice ---------------------------------------------------------------------------------------

template <class Op, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void combine(const Op& op, const A& a, const B& b, const D& dst, std::int32_t length,
                                           Count count) {
    using T = typename D::Element;
    if constexpr (isAdjacent<D> && isOneObject<Count>) {
        forOrder(
            length,
            [&](auto n) __attribute__((always_inline)) { combineShortRow<T, n>(op, a.origin, b.origin, dst.origin); },
            [&] { combineLongRow<T>(op, a.origin, b.origin, dst.origin, length); });
    } else if constexpr (isAdjacent<D>) {
        combineAdjacentArrays(op, a, b, dst, length, count);
    } else if constexpr (isOneObject<Count>) {
        if constexpr (isScattered<D>) combineTable(op, a, b, dst, length);
        else combineElements(op, a, b, dst, length, count);
    } else {
        if (areStreams(a, b, dst)) return combineStreams(op, a, b, dst, length, count);
        if constexpr (isScattered<D>) combineTables(op, a, b, dst, length, count);
        else combineElements(op, a, b, dst, length, count);
    }
}

template <class A, class B, class D, class T, class Count>
[[gnu::always_inline]] inline void scaledSum(A a, B b, D dst, T factor, VectorShape shape, Count count) {
    combine(ScaledSum<T>{factor}, a, b, dst, shape.length, count);
}

template <class A, class B, class D, class T, class Count>
[[gnu::always_inline]] inline void linearCombination(A a, B b, D dst, T first, T second, VectorShape shape,
                                                     Count count) {
    combine(LinearCombination<T>{first, second}, a, b, dst, shape.length, count);
}

}  // namespace korm::inline KORM_VARIANT::vectors
