// Square products of order 3 to 6: every sum goes from left to right and starts with its first product.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "products/objects.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm {

// S is an element, or a vector of one element of several objects.
template <int n, class S>
[[gnu::noinline]] void multiplySquare(const S* a, const S* b, S* c) {
    unrolled<n * n>([&](auto e) __attribute__((always_inline)) {
        constexpr int i = e / n, j = e % n;
        S sum = a[i * n] * b[j];
        unrolled<n - 1>([&](auto k)
                            __attribute__((always_inline)) { sum = sum + a[i * n + k + 1] * b[(k + 1) * n + j]; });
        c[e] = sum;
    });
}

// One object.
template <class T, int n, class Operand>
[[gnu::noinline]] void squareObject(const Operand& a, const Operand& b, const Operand& dst) {
    T x[n * n], y[n * n], z[n * n];
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            x[i * n + j] = load<T>(a.address(i, j));
            y[i * n + j] = load<T>(b.address(i, j));
        }
    multiplySquare<n>(x, y, z);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) store(target(dst, i, j), z[i * n + j]);
}

// Tables whose entries are runs of adjacent objects: a vector of objects is one load.
template <class T, int n, class View>
[[gnu::always_inline]] inline const std::byte* streamAt(const View& view, std::ptrdiff_t offset, int i, int j) {
    const auto* const entry = View::transposed ? view.table[j * n + i] : view.table[i * n + j];
    return reinterpret_cast<const std::byte*>(entry) + offset;
}

template <class T, int n, class A, class B, class D>
[[gnu::always_inline]] inline std::int32_t squareStreams(const A& a, const B& b, const D& dst, std::int32_t count) {
    Lanes<T> x[n * n], y[n * n];
    if constexpr (isShared<A>)
        for (int e = 0; e < n * n; ++e) x[e] = spread<T>(a.at(0).address(e / n, e % n));
    if constexpr (isShared<B>)
        for (int e = 0; e < n * n; ++e) y[e] = spread<T>(b.at(0).address(e / n, e % n));
    std::ptrdiff_t at = 0;
    std::int32_t done = 0;
    for (; done + laneCount<T> <= count; done += laneCount<T>, at += 16) {
        if constexpr (!isShared<B>)
            unrolled<n * n>([&](auto e) __attribute__((always_inline)) {
                y[e] = loadLanes<T>(streamAt<T, n>(b, b.offset + at, e / n, e % n));
            });
        unrolled<n>([&](auto i) __attribute__((always_inline)) {
            Lanes<T> row[n];
            unrolled<n>([&](auto k) __attribute__((always_inline)) {
                if constexpr (isShared<A>) row[k] = x[i * n + k];
                else row[k] = loadLanes<T>(streamAt<T, n>(a, a.offset + at, i, k));
            });
            unrolled<n>([&](auto j) __attribute__((always_inline)) {
                Lanes<T> sum = row[0] * y[j];
                unrolled<n - 1>([&](auto k) __attribute__((always_inline)) { sum += row[k + 1] * y[(k + 1) * n + j]; });
                storeLanes(const_cast<std::byte*>(streamAt<T, n>(dst, dst.offset + at, i, j)), sum);
            });
        });
    }
    return done;
}

template <class View>
[[gnu::always_inline]] inline bool objectsTouchOf(const View& view) {
    return isShared<View> || view.objectStride == sizeof(typename View::Element);
}

template <class View>
[[gnu::always_inline]] inline View behind(View view, std::int32_t objects) {
    view.offset += objects * view.objectStride;
    return view;
}

// Arrays.
template <class T, int n, class A, class B, class D>
[[gnu::noinline]] void squareObjects(const A& a, const B& b, const D& dst, std::int32_t count) {
    if constexpr (isTabled<D>)
        if (count >= laneCount<T> && objectsTouchOf(a) && objectsTouchOf(b) && objectsTouchOf(dst)) {
            const std::int32_t done = squareStreams<T, n>(A(a), B(b), D(dst), count);
            if (done < count) squareObjects<T, n>(behind(a, done), behind(b, done), behind(dst, done), count - done);
            return;
        }
    Lanes<T> x[n * n], y[n * n], z[n * n];
    int here;
    for (std::int32_t k = 0; k < count; k += here) {
        here = std::min(laneCount<T>, count - k);
        if (!isShared<A> || k == 0) gatherArray<n, n>(a, k, here, x);
        if (!isShared<B> || k == 0) gatherArray<n, n>(b, k, here, y);
        multiplySquare<n>(x, y, z);
        scatterArray<n, n>(dst, k, here, z);
    }
}

}  // namespace korm
