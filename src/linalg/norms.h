// Traces and Frobenius norms: a number for each matrix, in a row.
//
// The order of additions depends on kernel and size, and callers rely on it; docs/numerics.md explains it to users.
// Objects are independent of each other: where a vector can take one in each lane, it does.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/results.h"
#include "kernel/scalar.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::linalg {

// Element (i, j) of object k, or of the objects from k on where these are one element apart.
template <class View>
[[gnu::always_inline]] inline auto elementsOf(const View& src, std::ptrdiff_t k) {
    return [object = src.at(k)](std::ptrdiff_t i, std::ptrdiff_t j) __attribute__((always_inline)) {
        return load<typename View::Element>(object.address(i, j));
    };
}
template <class View>
[[gnu::always_inline]] inline auto elementsOfStreams(const View& src, std::ptrdiff_t k) {
    return [object = src.at(k)](std::ptrdiff_t i, std::ptrdiff_t j) __attribute__((always_inline)) {
        return loadLanes<typename View::Element>(object.address(i, j));
    };
}

// --- Traces ---------------------------------------------------------------------------------------

// The diagonal of a matrix of order 3 to 6 is added from its first element on; in kernels of any stride orders 3 to 5
// begin with the last two.
enum class Diagonal { fromFirst, lastTwoFirst };

template <Diagonal diagonal, class S, int n>
[[gnu::always_inline]] inline S diagonalSum(const S (&d)[n]) {
    if constexpr (diagonal == Diagonal::lastTwoFirst && n == 3) return (d[1] + d[2]) + d[0];
    else if constexpr (diagonal == Diagonal::lastTwoFirst && n == 4) return ((d[2] + d[3]) + d[1]) + d[0];
    else if constexpr (diagonal == Diagonal::lastTwoFirst && n == 5) return (((d[3] + d[4]) + d[2]) + d[0]) + d[1];
    else {
        S sum = d[0];
        unrolled<n - 1>([&](auto i) __attribute__((always_inline)) { sum += d[i + 1]; });
        return sum;
    }
}

template <Diagonal diagonal, int n, class Elements>
[[gnu::always_inline]] inline auto sizedTrace(const Elements& elements) {
    decltype(elements(0, 0)) d[n];
    unrolled<n>([&](auto i) __attribute__((always_inline)) { d[i] = elements(i, i); });
    return diagonalSum<diagonal>(d);
}

// Two adjacent elements, in the first lanes. The empty statement keeps the compiler from loading them one by one.
template <class T>
[[gnu::always_inline]] inline Vec<T, 16 / sizeof(T)> loadNeighbours(const std::byte* from) {
    if constexpr (isFloat<T>) return loadPair(from);
    else {
        auto both = load<Double2>(from);
        asm("" : "+x"(both));
        return both;
    }
}

// Unrolled, for a processor that adds several objects at a time waits for their instructions more than for their sums.
template <class Elements, class Order>
[[gnu::always_inline]] inline auto anyTrace(const Elements& elements, Order order) {
    decltype(elements(0, 0)) sum{};
    std::ptrdiff_t i = 0;
    for (; i + 4 <= order; i += 4)
        unrolled<4>([&](auto n) __attribute__((always_inline)) { sum += elements(i + n, i + n); });
    for (; i < order; ++i) sum += elements(i, i);
    return sum;
}

// `sum` makes an object's result of its elements.
template <class Result, class View, class Sum, class Count>
[[gnu::always_inline]] inline void reduceMatrices(const View& src, typename View::Element* dst, Count count,
                                                  const Sum& sum) {
    const auto one = [&](std::ptrdiff_t k) __attribute__((always_inline)) { return sum(elementsOf(src, k)); };
    if constexpr (isOneObject<Count>) return storeResult(dst, 0, Result::of(one(0)));
    const auto streams = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        return sum(elementsOfStreams(src, k));
    };
    if (isStream(src)) resultsOfGroups<Result>(streams, one, dst, count);
    else resultsOfEach<Result>(one, dst, count);
}

// Packed matrices wait for loads alone. The last element of a diagonal touches the first of the next, and both are one load.
// Two matrices in turn: a loop of one is so short that it takes half as long again where it lies across two lines of code.
template <int n, class T>
[[gnu::noinline]] void packedTraces(const std::byte* src, T* dst, std::ptrdiff_t count) {
    constexpr std::ptrdiff_t size = sizeof(T), step = (n + 1) * size, last = (n - 1) * step;
    T sum = load<T>(src);
    const auto add = [&]() __attribute__((always_inline)) {
        unrolled<n - 2>([&](auto i) __attribute__((always_inline)) { sum += load<T>(src + (i + 1) * step); });
    };
    const auto traceAndFirst = [&]() __attribute__((always_inline)) {
        add();
        const auto neighbours = loadNeighbours<T>(src + last);
        storeResult(dst++, 0, sum + neighbours[0]);
        sum = neighbours[1];
        src += n * n * size;
    };
    std::ptrdiff_t left = count;
    for (; left > 2; left -= 2) unrolled<2>([&](auto) __attribute__((always_inline)) { traceAndFirst(); });
    if (left > 1) traceAndFirst();
    add();
    storeResult(dst, 0, sum + load<T>(src + last));
}

template <Diagonal diagonal, class View, class Count>
[[gnu::always_inline]] inline void trace(View src, typename View::Element* dst, std::int32_t order, Count count) {
    const auto others = [&](auto size) __attribute__((always_inline)) {
        reduceMatrices<Sums>(
            src, dst,
            count, [size](const auto& elements) __attribute__((always_inline)) { return anyTrace(elements, size); });
    };
    if (order == 2) return others(Known<2>{});
    forOrder(
        order,
        [&](auto n) __attribute__((always_inline)) {
            using T = typename View::Element;
            if constexpr (isAdjacent<View> && !isListed<View> && !isOneObject<Count>)
                if (src.rowStride == n * sizeof(T) && src.objectStride == n * n * sizeof(T))
                    return packedTraces<n>(src.origin, dst, count);
            reduceMatrices<Sums>(
                src, dst, count, [n](const auto& elements) __attribute__((always_inline)) {
                    return sizedTrace<diagonal, n>(elements);
                });
        },
        [&]() __attribute__((always_inline)) { others(std::ptrdiff_t{order}); });
}

// --- Frobenius norms: the sum of the squares --------------------------------------------------------

// Squares of a small order: four running sums take the elements in turn, row by row. In arrays order 2 has too few elements
// for more than one sum.
template <class Count, int n, class S>
[[gnu::always_inline]] inline S sizedSquares(const S (&a)[n][n]) {
    if constexpr (n == 2 && !isOneObject<Count>)
        return ((a[0][0] * a[0][0] + a[0][1] * a[0][1]) + a[1][0] * a[1][0]) + a[1][1] * a[1][1];
    S sum[4] = {};
    unrolled<n * n>([&](auto e) __attribute__((always_inline)) {
        const S element = a[e / n][e % n];
        if constexpr (e < 4) sum[e] = element * element;
        else sum[e % 4] += element * element;
    });
    return (sum[0] + sum[2]) + (sum[1] + sum[3]);
}

// Elements apart: one after the other.
template <class Elements>
[[gnu::always_inline]] inline auto squaresInTurn(const Elements& elements, MatrixShape shape) {
    decltype(elements(0, 0)) sum{};
    for (std::ptrdiff_t i = 0; i < shape.height; ++i)
        for (std::ptrdiff_t j = 0; j < shape.width; ++j) {
            const auto element = elements(i, j);
            sum += element * element;
        }
    return sum;
}

// Tables, whatever the shape: pairs of entries go to two sums in turn. A pair or an element that is left goes to the first.
template <class Elements>
[[gnu::always_inline]] inline auto squaresInPairs(const Elements& elements, MatrixShape shape) {
    const std::ptrdiff_t entries = std::ptrdiff_t{shape.width} * shape.height;
    using S = decltype(elements(0, 0));
    const auto square = [&](std::ptrdiff_t e) __attribute__((always_inline)) {
        const S element = elements(0, e);
        return element * element;
    };
    S first{}, second{};
    std::ptrdiff_t e = 0;
    for (; e + 4 <= entries; e += 4) {
        first += square(e) + square(e + 1);
        second += square(e + 2) + square(e + 3);
    }
    if (e + 2 <= entries) {
        first += square(e) + square(e + 1);
        e += 2;
    }
    if (e < entries) first += square(e);
    return first + second;
}

// Adjacent elements of several objects side by side, since each addition waits for the one before in its sum.

// Of floats the lanes of a vector are four running sums, which go on from row to row. Rows without gaps are one.
template <int objects>
[[gnu::noinline]] void squaresOfRows(const Grid<const float, Spacing::rowAdjacent> (&src)[objects], MatrixShape shape,
                                     std::ptrdiff_t ahead, float (&sums)[objects]) {
    constexpr std::ptrdiff_t size = sizeof(float);
    std::ptrdiff_t bytes = shape.width * size, height = shape.height;
    if (src[0].rowStride == bytes) {
        bytes *= height;
        height = 1;
    }
    Float4 sum[objects];
    unrolled<objects>([&](auto o) __attribute__((always_inline)) { sum[o] = Float4{}; });
    for (std::ptrdiff_t i = 0; i < height; ++i) {
        const std::byte* row[objects];
        unrolled<objects>([&](auto o) __attribute__((always_inline)) { row[o] = src[o].address(i, 0); });
        std::ptrdiff_t at = 0;
        for (; at + 32 <= bytes; at += 32) {
            unrolled<objects>([&](auto o) __attribute__((always_inline)) { __builtin_prefetch(row[o] + at + ahead); });
            unrolled<2 * objects>([&](auto e) __attribute__((always_inline)) {
                const auto x = load<Float4>(row[e % objects] + at + e / objects * 16);
                sum[e % objects] += x * x;
            });
        }
        for (; at < bytes; at += size)
            unrolled<objects>([&](auto o) __attribute__((always_inline)) {
                const auto element = load<float>(row[o] + at);
                sum[o] += Float4{element * element};
            });
    }
    unrolled<objects>([&](auto o) __attribute__((always_inline)) {
        sums[o] = (sum[o][0] + sum[o][2]) + (sum[o][1] + sum[o][3]);
    });
}

// Of doubles, rows of 8 and more have eight sums, the first of which goes on with the sum so far. In rows of 8 to 15 only four
// additions wait for the row before; those of two objects are done side by side.
template <int objects>
[[gnu::noinline]] void squaresOfBlocks(const Grid<const double, Spacing::rowAdjacent> (&src)[objects],
                                       MatrixShape shape, std::ptrdiff_t ahead, double (&sums)[objects]) {
    constexpr std::ptrdiff_t size = sizeof(double);
    const std::ptrdiff_t bytes = shape.width * size, rowStride = src[0].rowStride;  // all have the same
    const std::byte* row[objects];
    unrolled<objects>([&](auto o) __attribute__((always_inline)) { row[o] = src[o].origin; });
    Double2 total[objects / 2] = {};
    for (std::ptrdiff_t i = 0; i < shape.height; ++i) {
        unrolled<objects / 2>([&](auto p) __attribute__((always_inline)) {
            Double2 l[2][4], last[2], odd[2];
            unrolled<2>([&](auto o) __attribute__((always_inline)) {
                const std::byte* const from = row[2 * p + o];
                __builtin_prefetch(from + ahead);
                unrolled<4>([&](auto v) __attribute__((always_inline)) {
                    const auto x = load<Double2>(from + v * 16);
                    l[o][v] = x * x;
                });
                last[o] = l[o][2] + l[o][3];
                odd[o] = (l[o][0] + l[o][1]) + last[o];
            });
            total[p] += interleaveLow(l[0][0], l[1][0]);
            total[p] += interleaveLow(l[0][1], l[1][1]);
            total[p] += interleaveLow(last[0], last[1]);
            total[p] += interleaveHigh(odd[0], odd[1]);
            for (std::ptrdiff_t at = 8 * size; at < bytes; at += size) {
                const Double2 x = {load<double>(row[2 * p] + at), load<double>(row[2 * p + 1] + at)};
                total[p] += x * x;
            }
        });
        unrolled<objects>([&](auto o) __attribute__((always_inline)) { row[o] = opaque(row[o] + rowStride); });
    }
    unrolled<objects>([&](auto o) __attribute__((always_inline)) { sums[o] = total[o / 2][o % 2]; });
}

// Rows of any length.
template <int objects>
[[gnu::noinline]] void squaresOfRows(const Grid<const double, Spacing::rowAdjacent> (&src)[objects], MatrixShape shape,
                                     std::ptrdiff_t ahead, double (&sums)[objects]) {
    constexpr std::ptrdiff_t size = sizeof(double), block = 8 * size;
    const std::ptrdiff_t bytes = shape.width * size, inBlocks = bytes - bytes % block;
    if constexpr (objects % 2 == 0)
        if (inBlocks == block) return squaresOfBlocks(src, shape, ahead, sums);
    double total[objects] = {};
    for (std::ptrdiff_t i = 0; i < shape.height; ++i) {
        const std::byte* row[objects];
        unrolled<objects>([&](auto o) __attribute__((always_inline)) { row[o] = src[o].address(i, 0); });
        if (inBlocks != 0)
            unrolled<objects>([&](auto o) __attribute__((always_inline)) {
                const auto square = [&](std::ptrdiff_t at) __attribute__((always_inline)) {
                    const auto x = load<Double2>(row[o] + at);
                    return x * x;
                };
                __builtin_prefetch(row[o] + ahead);
                Double2 sum[4] = {square(0), square(16), square(32), square(48)};
                sum[0] += Double2{total[o]};
                for (std::ptrdiff_t at = block; at < inBlocks; at += block) {
                    __builtin_prefetch(row[o] + at + ahead);
                    unrolled<4>([&](auto v) __attribute__((always_inline)) { sum[v] += square(at + v * 16); });
                }
                const Double2 joined = (sum[0] + sum[1]) + (sum[2] + sum[3]);
                total[o] = joined[0] + joined[1];
            });
        for (std::ptrdiff_t at = inBlocks; at < bytes; at += size)
            unrolled<objects>([&](auto o) __attribute__((always_inline)) {
                const auto element = load<double>(row[o] + at);
                total[o] += element * element;
            });
    }
    unrolled<objects>([&](auto o) __attribute__((always_inline)) { sums[o] = total[o]; });
}

// Objects side by side, and their roots.
template <class View>
[[gnu::always_inline]] inline void adjacentNorms(const View& src, typename View::Element* dst, MatrixShape shape,
                                                 std::ptrdiff_t count) {
    using T = typename View::Element;
    constexpr int objects = 4;
    // The processor doesn't see ahead where several objects are read in turn, so it is told what comes: the next of them.
    std::ptrdiff_t ahead = 0, k = 0;
    if constexpr (!isListed<View>) ahead = std::max<std::ptrdiff_t>(4096, objects * src.objectStride);
    for (; k + objects <= count; k += objects) {
        T sums[objects];
        squaresOfRows(groupAt<objects>(src, k).object, shape, ahead, sums);
        unrolled<objects / laneCount<T>>([&](auto v) __attribute__((always_inline)) {
            storeResult(dst, k + v * laneCount<T>,
                        squareRoot(loadLanes<T>(reinterpret_cast<std::byte*>(sums + v * laneCount<T>))));
        });
    }
    for (; k < count; ++k) {
        T sum[1];
        squaresOfRows<1>({src.at(k)}, shape, ahead, sum);
        storeResult(dst, k, squareRoot(sum[0]));
    }
}

// The four running sums of an object of n by n adjacent elements: vectors along it. An element that is left belongs to the
// first sum.
template <int n>
[[gnu::always_inline]] inline void runningSums(const std::byte* from, Float4 (&sums)[1]) {
    unrolled<n * n / 4>([&](auto v) __attribute__((always_inline)) {
        const auto x = load<Float4>(from + 16 * v);
        if constexpr (v == 0) sums[0] = x * x;
        else sums[0] += x * x;
    });
    if constexpr (n % 2 != 0) {
        const Float4 x = {load<float>(from + (n * n - 1) * sizeof(float))};
        sums[0] += x * x;
    }
}
template <int n>
[[gnu::always_inline]] inline void runningSums(const std::byte* from, Double2 (&sums)[2]) {
    unrolled<n * n / 2>([&](auto v) __attribute__((always_inline)) {
        const auto x = load<Double2>(from + 16 * v);
        if constexpr (v < 2) sums[v] = x * x;
        else sums[v % 2] += x * x;
    });
    if constexpr (n % 2 != 0) {
        const Double2 x = {load<double>(from + (n * n - 1) * sizeof(double))};
        sums[0] += x * x;
    }
}

// Those of one object joined.
[[gnu::always_inline]] inline float joined(const Float4 (&sums)[1]) {
    return (sums[0][0] + sums[0][2]) + (sums[0][1] + sums[0][3]);
}
[[gnu::always_inline]] inline double joined(const Double2 (&sums)[2]) {
    const Double2 two = sums[0] + sums[1];
    return two[0] + two[1];
}

// Those of four objects joined, or of two.
template <int n, class View>
[[gnu::always_inline]] inline Float4 joinedSums(const View& src, std::ptrdiff_t k, Float4) {
    Float4 rows[4];
    unrolled<4>([&](auto o) __attribute__((always_inline)) {
        Float4 sums[1];
        runningSums<n>(src.at(k + o).origin, sums);
        rows[o] = sums[0];
    });
    transpose(rows);
    return (rows[0] + rows[2]) + (rows[1] + rows[3]);
}
template <int n, class View>
[[gnu::always_inline]] inline Double2 joinedSums(const View& src, std::ptrdiff_t k, Double2) {
    Double2 rows[2];
    unrolled<2>([&](auto o) __attribute__((always_inline)) {
        Double2 sums[2];
        runningSums<n>(src.at(k + o).origin, sums);
        rows[o] = sums[0] + sums[1];
    });
    transpose(rows);
    return rows[0] + rows[1];
}

template <int n, class View, class Count>
[[gnu::noinline, gnu::aligned(64)]] void sizedNorms(const View& source, typename View::Element* dst, Count count) {
    const View src = source;
    using T = typename View::Element;
    const auto one = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        T a[n][n];
        readMatrix(src.at(k), a);
        return sizedSquares<Count>(a);
    };
    if constexpr (isOneObject<Count>) return storeResult(dst, 0, Roots::of(one(0)));
    const auto group = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        Lanes<T> a[n][n];
        readMatrices(groupAt<laneCount<T>>(src, k), a);
        return sizedSquares<Count>(a);
    };
    const auto streams = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        const auto elements = elementsOfStreams(src, k);
        Lanes<T> a[n][n];
        unrolled<n * n>([&](auto e) __attribute__((always_inline)) { a[e / n][e % n] = elements(e / n, e % n); });
        return sizedSquares<Count>(a);
    };
    if constexpr (n > 2 && isAdjacent<View> && sizeof(Lanes<T>) == 16) {
        const auto runs = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
            return joinedSums<n>(src, k, Lanes<T>{});
        };
        const auto run = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
            Lanes<T> sums[sizeof(T) / 4];
            runningSums<n>(src.at(k).origin, sums);
            return joined(sums);
        };
        if (src.rowStride == n * sizeof(T)) return resultsOfGroups<Roots>(runs, run, dst, count);
    }
    if (!isAdjacent<View> && isStream(src)) resultsOfGroups<Roots>(streams, one, dst, count);
    else resultsOfGroups<Roots>(group, one, dst, count);
}

template <class View, class Count>
[[gnu::noinline]] void anyNorms(const View& source, typename View::Element* dst, MatrixShape shape, Count count) {
    const View src = source;
    if constexpr (isAdjacent<View>) adjacentNorms(src, dst, shape, count);
    else
        reduceMatrices<Roots>(
            src, dst, count, [shape](const auto& elements) __attribute__((always_inline)) {
                if constexpr (isScattered<View>) return squaresInPairs(elements, shape);
                else return squaresInTurn(elements, shape);
            });
}

// Is this an order that is added as sizedSquares() does? Those of single matrices of floats are 2 to 5, of arrays 2 to 6,
// of arrays of tables 3 and 4.
template <class View, class Count>
constexpr bool isSizedNorm(int n) {
    if (isOneObject<Count>) return isFloat<typename View::Element> && !isScattered<View> && n >= 2 && n <= 5;
    return isScattered<View> ? n == 3 || n == 4 : n >= 2 && n <= 6;
}

template <class View, class Count>
[[gnu::always_inline]] inline void frobeniusNorm(View src, typename View::Element* dst, MatrixShape shape,
                                                 Count count) {
    using T = typename View::Element;
    if constexpr (isOneObject<Count> && View::spacing == Spacing::strided)
        if (src.elementStride == sizeof(T))
            return frobeniusNorm(plain(reinterpret_cast<const T*>(src.origin), src.rowStride), dst, shape, count);
    const auto sized = [&](auto n) __attribute__((always_inline)) {
        if constexpr (isSizedNorm<View, Count>(n)) sizedNorms<n>(src, dst, count);
        else anyNorms(src, dst, shape, count);
    };
    if (shape.width != shape.height) return anyNorms(src, dst, shape, count);
    if (shape.width == 2) return sized(Int<2>{});
    forOrder(
        shape.width, sized, [&]() __attribute__((always_inline)) { anyNorms(src, dst, shape, count); });
}

}  // namespace korm::inline KORM_VARIANT::linalg
