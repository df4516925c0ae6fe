// Sums with k along the lanes of vectors, for operands that are both contiguous along k: each lane is a partial sum.
#pragma once

#include <algorithm>
#include <cstddef>

#include "products/operands.h"
#include "products/sums.h"

namespace korm {

template <class T>
using DotColumns = const std::byte * [laneCount<T>];  // where the columns of a tile begin

// Partial sums of `lanes` columns, a vector each, to a vector of their sums: the last two steps of joined().
[[gnu::always_inline]] inline Float4 joinedLanes(Float4 (&column)[4]) {
    transpose(column);
    return (column[0] + column[2]) + (column[1] + column[3]);
}

[[gnu::always_inline]] inline Double2 joinedLanes(Double2 (&column)[2]) {
    transpose(column);
    return column[0] + column[1];
}

// The steps of joined() before these.
template <class V, int vectors>
[[gnu::always_inline]] inline V joinedVectors(const V (&partial)[vectors]) {
    static_assert(vectors == 1 || vectors == 2 || vectors == 4);
    if constexpr (vectors == 1) return partial[0];
    else if constexpr (vectors == 2) return partial[0] + partial[1];
    else return (partial[0] + partial[1]) + (partial[2] + partial[3]);
}

// Rows of a tile: as many as registers hold.
template <class T>
constexpr int dotRowsAtOnce(Sum shape) {
    const int ofRow = shape.partials / laneCount<T> * laneCount<T>;
#if defined(__x86_64__)
    return ofRow >= 8 ? 1 : 8 / ofRow;
#else
    return ofRow >= 4 ? 1 : 4 / ofRow;
#endif
}

template <class T>
constexpr int dotGroups(Sum shape) {
#if defined(__x86_64__)
    return shape.partials >= 8 ? 1 : 8 / shape.partials;
#else
    return shape.partials >= 4 ? 1 : 4 / shape.partials;
#endif
}

template <class T>
[[gnu::always_inline]] inline void storeFirst(std::byte* to, const Lanes<T>& value, std::ptrdiff_t width) {
    if (width == laneCount<T>) return storeLanes(to, value);
    for (std::ptrdiff_t c = 0; c < width; ++c) store(to + c * static_cast<std::ptrdiff_t>(sizeof(T)), value[c]);
}

// The product of a vector with `groups` vectors of rows of a matrix.
template <class T, Sum shape, int groups>
[[gnu::noinline]] void dotVector(const std::byte* x, const std::byte* a, std::ptrdiff_t rowStep,
                                 std::ptrdiff_t products, std::byte* to) {
    constexpr int lanes = laneCount<T>;
    constexpr int vectors = shape.partials / lanes;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t inBlocks = (products - products % shape.block) * size;
    Lanes<T> sum[groups];
    unrolled<groups>([&](auto g) __attribute__((always_inline)) { sum[g] = Lanes<T>{}; });
    if (inBlocks > 0) {
        Lanes<T> partial[groups * lanes][vectors];
        unrolled<groups * lanes * vectors>([&](auto e) __attribute__((always_inline)) {
            partial[e / vectors][e % vectors] = Lanes<T>{};
        });
        for (std::ptrdiff_t at = 0; at < inBlocks; at += vectors * 16)
            unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                const Lanes<T> factor = loadLanes<T>(x + at + 16 * v);
                unrolled<groups * lanes>([&](auto r) __attribute__((always_inline)) {
                    partial[r][v] += loadLanes<T>(a + r * rowStep + at + 16 * v) * factor;
                });
            });
        unrolled<groups>([&](auto g) __attribute__((always_inline)) {
            Lanes<T> row[lanes];
            unrolled<lanes>([&](auto r)
                                __attribute__((always_inline)) { row[r] = joinedVectors(partial[g * lanes + r]); });
            sum[g] = joinedLanes(row);
        });
    }
    for (std::ptrdiff_t at = inBlocks; at < products * size; at += size)
        unrolled<groups>([&](auto g) __attribute__((always_inline)) {
            const std::byte* const from = a + g * lanes * rowStep + at;
            Lanes<T> column;
            if constexpr (lanes == 4)
                column = Float4{load<T>(from), load<T>(from + rowStep), load<T>(from + 2 * rowStep),
                                load<T>(from + 3 * rowStep)};
            else column = Double2{load<T>(from), load<T>(from + rowStep)};
            sum[g] += column * spread<T>(x + at);
        });
    unrolled<groups>([&](auto g) __attribute__((always_inline)) { storeLanes(to + 16 * g, sum[g]); });
}

// Tiles below each other, each a few rows by a vector of columns, of which the first `width` are stored.
template <class T, Sum shape, int rows>
[[gnu::noinline]] void dotTiles(const std::byte* a, std::ptrdiff_t aStep, const DotColumns<T>& b,
                                std::ptrdiff_t products, std::byte* to, std::ptrdiff_t step, std::ptrdiff_t width,
                                std::ptrdiff_t count) {
    constexpr int lanes = laneCount<T>;
    constexpr int vectors = shape.partials / lanes;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t inBlocks = (products - products % shape.block) * size;
    for (; count > 0; --count) {
        Lanes<T> sum[rows];
        unrolled<rows>([&](auto r) __attribute__((always_inline)) { sum[r] = Lanes<T>{}; });
        if (inBlocks > 0) {
            Lanes<T> partial[rows][lanes][vectors];
            unrolled<rows * lanes * vectors>([&](auto e) __attribute__((always_inline)) {
                partial[e / (lanes * vectors)][e / vectors % lanes][e % vectors] = Lanes<T>{};
            });
            for (std::ptrdiff_t at = 0; at < inBlocks; at += vectors * 16)
                unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                    Lanes<T> left[rows];
                    unrolled<rows>([&](auto r) __attribute__((always_inline)) {
                        left[r] = loadLanes<T>(a + r * aStep + at + 16 * v);
                    });
                    unrolled<lanes>([&](auto c) __attribute__((always_inline)) {
                        const Lanes<T> right = loadLanes<T>(b[c] + at + 16 * v);
                        unrolled<rows>([&](auto r)
                                           __attribute__((always_inline)) { partial[r][c][v] += left[r] * right; });
                    });
                });
            unrolled<rows>([&](auto r) __attribute__((always_inline)) {
                Lanes<T> column[lanes];
                unrolled<lanes>([&](auto c)
                                    __attribute__((always_inline)) { column[c] = joinedVectors(partial[r][c]); });
                sum[r] = joinedLanes(column);
            });
        }
        for (std::ptrdiff_t at = inBlocks; at < products * size; at += size) {
            Lanes<T> right;
            if constexpr (lanes == 4)
                right = Float4{load<T>(b[0] + at), load<T>(b[1] + at), load<T>(b[2] + at), load<T>(b[3] + at)};
            else right = Double2{load<T>(b[0] + at), load<T>(b[1] + at)};
            unrolled<rows>([&](auto r)
                               __attribute__((always_inline)) { sum[r] += spread<T>(a + r * aStep + at) * right; });
        }
        unrolled<rows>([&](auto r) __attribute__((always_inline)) { storeFirst<T>(to + r * step, sum[r], width); });
        a += rows * aStep;
        to += rows * step;
    }
}

// One row by columns: `sum` takes the places of `width` results, which touch. Missing columns repeat the last one.
template <class T>
[[gnu::always_inline]] inline void dotColumns(const GridOperand& b, std::ptrdiff_t j, std::ptrdiff_t width,
                                              DotColumns<T>& columns) {
    for (int c = 0; c < laneCount<T>; ++c)
        columns[c] = b.origin + (j + std::min<std::ptrdiff_t>(c, width - 1)) * b.columnStep;
}

}  // namespace korm
