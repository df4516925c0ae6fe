// Cross products of vectors of three elements.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "kernel/streams.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::vectors {

template <class S>
[[gnu::always_inline]] inline void cross(const S (&a)[3], const S (&b)[3], S (&d)[3]) {
    d[0] = a[1] * b[2] - a[2] * b[1];
    d[1] = a[2] * b[0] - b[2] * a[0];
    d[2] = a[0] * b[1] - a[1] * b[0];
}

// All is read before anything is written, so that the result may take the place of a source.
template <class A, class B, class D>
[[gnu::always_inline]] inline void crossOne(const A& a, const B& b, const D& dst, std::ptrdiff_t k) {
    typename D::Element x[3], y[3], z[3];
    readRow(a.at(k), 0, x);
    readRow(b.at(k), 0, y);
    cross(x, y, z);
    writeRow(dst.at(k), 0, z);
}

// Objects that are one element apart, a vector of them at a time.
template <class A, class B, class D>
[[gnu::always_inline]] inline std::ptrdiff_t crossStreams(const A& a, const B& b, const D& dst, std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr std::ptrdiff_t size = sizeof(T);
    const auto rows = [&](const auto& view) __attribute__((always_inline)) {
        return [ x = streamOf(view, 0, 0), y = streamOf(view, 0, 1), z = streamOf(view, 0, 2) ](
            std::ptrdiff_t at, Lanes<T>(&to)[3]) __attribute__((always_inline)) {
            to[0] = x.template get<Lanes<T>>(at);
            to[1] = y.template get<Lanes<T>>(at);
            to[2] = z.template get<Lanes<T>>(at);
        };
    };
    const auto first = rows(a);
    const auto second = rows(b);
    std::byte* const to[3] = {dst.at(0).address(0, 0), dst.at(0).address(0, 1), dst.at(0).address(0, 2)};
    std::ptrdiff_t k = 0;
    for (; k + laneCount<T> <= count; k += laneCount<T>) {
        Lanes<T> x[3], y[3], z[3];
        first(k * size, x);
        second(k * size, y);
        cross(x, y, z);
        unrolled<3>([&](auto j) __attribute__((always_inline)) { storeLanes(to[j] + k * size, z[j]); });
    }
    return k;
}

// Packed objects, as many as fill three vectors at a time.
template <class T>
[[gnu::always_inline]] inline std::ptrdiff_t crossPacked(const std::byte* a, const std::byte* b, std::byte* to,
                                                         std::ptrdiff_t count) {
    std::ptrdiff_t k = 0;
    for (; k + laneCount<T> <= count; k += laneCount<T>) {
        Lanes<T> x[3], y[3], z[3];
        unrolled<3>([&](auto v) __attribute__((always_inline)) {
            x[v] = loadLanes<T>(a + 16 * v);
            y[v] = loadLanes<T>(b + 16 * v);
        });
        splitThrees(x);
        splitThrees(y);
        cross(x, y, z);
        joinThrees(z);
        unrolled<3>([&](auto v) __attribute__((always_inline)) { storeLanes(to + 16 * v, z[v]); });
        a += 48;
        b += 48;
        to += 48;
    }
    return k;
}

template <class A, class B, class D, class Count>
[[gnu::always_inline]] inline void crossProduct(A a, B b, D dst, Count count) {
    using T = typename D::Element;
    std::ptrdiff_t k = 0;
    if constexpr (!isOneObject<Count>) {
        if constexpr (isAdjacent<D> && !isListed<D> && !isShared<A> && !isShared<B> && sizeof(Lanes<T>) == 16)
            if (a.objectStride == 3 * sizeof(T) && b.objectStride == 3 * sizeof(T) && dst.objectStride == 3 * sizeof(T))
                k = crossPacked<T>(a.origin, b.origin, dst.origin, count);
        if constexpr (isAdjacent<D>)
            for (; k + laneCount<T> <= count; k += laneCount<T>) {
                Lanes<T> x[3], y[3], z[3];
                readRows(groupAt<laneCount<T>>(a, k), sameRow(0), x);
                readRows(groupAt<laneCount<T>>(b, k), sameRow(0), y);
                cross(x, y, z);
                writeRows(groupAt<laneCount<T>>(dst, k), sameRow(0), z);
            }
        else if (areStreams(a, b, dst)) k = crossStreams(a, b, dst, count);
    }
    for (; k < count; ++k) crossOne(a, b, dst, k);
}

}  // namespace korm::inline KORM_VARIANT::vectors
