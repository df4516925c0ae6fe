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

// Arrays.
template <class T, int n, class A, class B, class D>
[[gnu::noinline]] void squareObjects(const A& a, const B& b, const D& dst, std::int32_t count) {
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
