// A matrix times a vector, plus a vector: dst = A x + y. One matrix serves all objects.
//
// Each sum of products is complete before the element of y is added to it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::products {

// --- Squares of order 3 to 6, plain ---------------------------------------------------------------

// The rows of a square in vectors of 16 bytes: the last one ends with the last row and may repeat some of the one before.
// Three floats fill four lanes as rows 0, 1, 1, 2.
template <class T, int n>
struct RowsInVectors {
    static constexpr int lanes = 16 / static_cast<int>(sizeof(T));
    static constexpr int count = (n + lanes - 1) / lanes;
    using V = Vec<T, lanes>;

    static constexpr int row(int vector, int lane) {
        if (n < lanes) return lane - lane / 2;
        return std::min(vector * lanes, n - lanes) + lane;
    }
    [[gnu::always_inline]] static V loadVector(const std::byte* from, int vector) {
        constexpr std::ptrdiff_t size = sizeof(T);
        if constexpr (n < lanes) return loadPairs(from, from + size);
        else return load<V>(from + row(vector, 0) * size);
    }
    [[gnu::always_inline]] static void storeVector(std::byte* to, int vector, V value) {
        constexpr std::ptrdiff_t size = sizeof(T);
        if constexpr (n < lanes) {
            value = settled(value);
            storeLowPair(to, value);
            storeHighPair(to + size, value);
        } else store(to + row(vector, 0) * size, value);
    }
};

// Every sum from left to right. The columns of the matrix are held, each is added times an element of x.
template <class T, int n, class A, class X, class Y, class D>
[[gnu::noinline]] void squareGaxpy(const A& matrix, const X& factors, const Y& addends, const D& results,
                                   std::ptrdiff_t count) {
    const A a = matrix;
    const X x = factors;
    const Y y = addends;
    const D dst = results;
    using Rows = RowsInVectors<T, n>;
    using V = typename Rows::V;
    V column[Rows::count][n];
    unrolled<Rows::count>([&](auto v) __attribute__((always_inline)) {
        const auto rows = [v](int l) __attribute__((always_inline)) { return Rows::row(v, l); };
        readRows(groupAt<Rows::lanes>(a, 0), rows, column[v]);
    });
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const std::byte* const from = x.at(k).origin;
        V sum[Rows::count];
        unrolled<n>([&](auto j) __attribute__((always_inline)) {
            const V factor = all<V>(load<T>(from + j * sizeof(T)));
            unrolled<Rows::count>([&](auto v) __attribute__((always_inline)) {
                if constexpr (j == 0) sum[v] = column[v][j] * factor;
                else sum[v] += column[v][j] * factor;
            });
        });
        const std::byte* const added = y.at(k).origin;
        std::byte* const to = dst.at(k).origin;
        unrolled<Rows::count>([&](auto v) __attribute__((always_inline)) { sum[v] += Rows::loadVector(added, v); });
        unrolled<Rows::count>([&](auto v) __attribute__((always_inline)) { Rows::storeVector(to, v, sum[v]); });
    }
}

// --- Any shape -----------------------------------------------------------------------------------

// Rows of adjacent elements: the lanes of a vector are partial sums, which take as many products in turn as there are whole
// vectors of. Eight or four rows go side by side; turned in registers, their partial sums are joined for all rows at once.
template <class T>
struct PartialSums {
    static constexpr int lanes = 16 / static_cast<int>(sizeof(T));
    using V = Vec<T, lanes>;

    // As many rows as a vector has lanes.
    [[gnu::always_inline]] static V joined(V* rows) {
        if constexpr (isFloat<T>) {
            Float4 l[4] = {rows[0], rows[1], rows[2], rows[3]};
            transpose(l);
            return (l[0] + l[2]) + (l[1] + l[3]);
        } else {
            Double2 l[2] = {rows[0], rows[1]};
            transpose(l);
            return l[0] + l[1];
        }
    }
    [[gnu::always_inline]] static T joined(V l) {
        if constexpr (isFloat<T>) return (l[0] + l[2]) + (l[1] + l[3]);
        else return l[0] + l[1];
    }
};

template <class T, class A>
[[gnu::always_inline]] inline void plainGaxpyObject(const A& a, const std::byte* x, const std::byte* y, std::byte* to,
                                                    MatrixShape shape) {
    using Partial = PartialSums<T>;
    using V = typename Partial::V;
    constexpr std::ptrdiff_t size = sizeof(T);
    const std::ptrdiff_t bytes = shape.width * size, whole = bytes - bytes % 16;
    std::ptrdiff_t i = 0;
    const auto rowsSideBySide = [&](auto rows) __attribute__((always_inline)) {
        const std::byte* row[rows];
        V l[rows];
        unrolled<rows>([&](auto r) __attribute__((always_inline)) {
            row[r] = a.address(i + r, 0);
            l[r] = V{};
        });
        for (std::ptrdiff_t at = 0; at < whole; at += 16) {
            const V factor = load<V>(x + at);
            unrolled<rows>([&](auto r) __attribute__((always_inline)) { l[r] += load<V>(row[r] + at) * factor; });
        }
        unrolled<rows / Partial::lanes>([&](auto g) __attribute__((always_inline)) {
            constexpr int first = g * Partial::lanes;
            V sum = Partial::joined(l + first);
            for (std::ptrdiff_t at = whole; at < bytes; at += size) {
                const V column = fromLanes<V>([&](int r) { return load<T>(row[first + r] + at); });
                sum += column * all<V>(load<T>(x + at));
            }
            const std::ptrdiff_t place = (i + first) * size;
            store(to + place, sum + load<V>(y + place));
        });
        i += rows;
    };
    // Each addition waits for the one before in its row: eight rows fill that time where registers hold them.
    if constexpr (sizeof(void*) == 8)
        while (i + 8 <= shape.height) rowsSideBySide(Int<8>{});
    while (i + 4 <= shape.height) rowsSideBySide(Int<4>{});
    for (; i < shape.height; ++i) {
        const std::byte* const row = a.address(i, 0);
        V l{};
        std::ptrdiff_t at = 0;
        for (; at < whole; at += 16) l += load<V>(row + at) * load<V>(x + at);
        T sum = Partial::joined(l);
        for (; at < bytes; at += size) sum += load<T>(row + at) * load<T>(x + at);
        store(to + i * size, sum + load<T>(y + i * size));
    }
}

template <class T, class A, class X, class Y, class D>
[[gnu::noinline]] void plainGaxpy(const A& matrix, const X& factors, const Y& addends, const D& results,
                                  MatrixShape shape, std::ptrdiff_t count) {
    const A a = matrix;
    const X x = factors;
    const Y y = addends;
    const D dst = results;
    for (std::ptrdiff_t k = 0; k < count; ++k)
        plainGaxpyObject<T>(a.at(0), x.at(k).origin, y.at(k).origin, dst.at(k).origin, shape);
}

// Elements apart: every sum from +0, one product after the other. Four rows go side by side, since each addition waits for
// the one before.
template <class S, class T, class A, class Factor>
[[gnu::always_inline]] inline void rowSums(const A& a, const Factor& factor, std::ptrdiff_t i, std::ptrdiff_t products,
                                           auto rows, S* sum) {
    unrolled<rows>([&](auto r) __attribute__((always_inline)) { sum[r] = S{}; });
    for (std::ptrdiff_t j = 0; j < products; ++j) {
        const S x = factor(j);
        unrolled<rows>([&](auto r)
                           __attribute__((always_inline)) { sum[r] += all<S>(load<T>(a.address(i + r, j))) * x; });
    }
}

// `x(j)` and `y(i)` are elements of the vectors, `result(i, s)` takes one.
template <class S, class T, class A, class X, class Y, class Result>
[[gnu::always_inline]] inline void eachRowSum(const A& a, const X& x, const Y& y, MatrixShape shape,
                                              const Result& result) {
    const auto rowsFrom = [&](std::ptrdiff_t i, auto rows) __attribute__((always_inline)) {
        S sum[rows];
        rowSums<S, T>(a, x, i, shape.width, rows, sum);
        unrolled<rows>([&](auto r) __attribute__((always_inline)) { result(i + r, sum[r] + y(i + r)); });
    };
    std::ptrdiff_t i = 0;
    for (; i + 4 <= shape.height; i += 4) rowsFrom(i, Int<4>{});
    for (; i < shape.height; ++i) rowsFrom(i, Int<1>{});
}

template <class T, class A, class X, class Y, class D, class Count>
[[gnu::noinline]] void apartGaxpy(A a, X x, Y y, D dst, MatrixShape shape, Count count) {
    std::ptrdiff_t k = 0;
    const auto matrix = a.at(0);
    if constexpr (!isOneObject<Count>)
        if (areStreams(x, y, dst))
            for (; k + laneCount<T> <= count; k += laneCount<T>) {
                const std::ptrdiff_t at = k * static_cast<std::ptrdiff_t>(sizeof(T));
                eachRowSum<Lanes<T>, T>(
                    matrix,
                    [&](std::ptrdiff_t j)
                        __attribute__((always_inline)) { return streamOf(x, 0, j).template get<Lanes<T>>(at); },
                    [&](std::ptrdiff_t i)
                        __attribute__((always_inline)) { return streamOf(y, 0, i).template get<Lanes<T>>(at); },
                    shape,
                    [&](std::ptrdiff_t i, Lanes<T> s)
                        __attribute__((always_inline)) { storeLanes(dst.at(0).address(0, i) + at, s); });
            }
    for (; k < count; ++k) {
        const auto from = x.at(k);
        const auto added = y.at(k);
        const auto to = dst.at(k);
        eachRowSum<T, T>(
            matrix, [&](std::ptrdiff_t j) __attribute__((always_inline)) { return load<T>(from.address(0, j)); },
            [&](std::ptrdiff_t i) __attribute__((always_inline)) { return load<T>(added.address(0, i)); },
            shape, [&](std::ptrdiff_t i, T s) __attribute__((always_inline)) { store(to.address(0, i), s); });
    }
}

template <class A, class X, class Y, class D, class Count>
[[gnu::always_inline]] inline void gaxpy(A a, X x, Y y, D dst, MatrixShape shape, Count count) {
    using T = typename D::Element;
    if constexpr (isAdjacent<D>) {
        const auto any = [&]() __attribute__((always_inline)) { plainGaxpy<T>(a, x, y, dst, shape, count); };
        if (shape.width != shape.height) return any();
        forOrder(
            shape.width, [&](auto n) __attribute__((always_inline)) { squareGaxpy<T, n>(a, x, y, dst, count); }, any);
    } else {
        apartGaxpy<T>(a, x, y, dst, shape, count);
    }
}

}  // namespace korm::inline KORM_VARIANT::products
