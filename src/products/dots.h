// Sums with k along the lanes of vectors, for operands that are both contiguous along k: each lane is a partial sum.
#pragma once

#include <algorithm>
#include <cstddef>

#include "products/operands.h"
#include "products/sums.h"

namespace korm {

template <class T>
using DotColumns = const std::byte* [laneCount<T>];  // where the columns of a tile begin

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

// A few rows by a vector of columns.
template <class T, Sum shape, int rows>
[[gnu::noinline]] void dotTile(const std::byte* a, std::ptrdiff_t aStep, const DotColumns<T>& b,
                               std::ptrdiff_t products, Lanes<T> (&sum)[rows]) {
    constexpr int lanes = laneCount<T>;
    constexpr int vectors = shape.partials / lanes;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t inBlocks = products - products % shape.block;
    for (Lanes<T>& each : sum) each = Lanes<T>{};
    if (inBlocks > 0) {
        Lanes<T> partial[rows][lanes][vectors] = {};
        for (std::ptrdiff_t at = 0; at < inBlocks * size; at += vectors * 16)
            for (int v = 0; v < vectors; ++v) {
                Lanes<T> left[rows];
                for (int r = 0; r < rows; ++r) left[r] = loadLanes<T>(a + r * aStep + at + 16 * v);
                for (int c = 0; c < lanes; ++c) {
                    const Lanes<T> right = loadLanes<T>(b[c] + at + 16 * v);
                    for (int r = 0; r < rows; ++r) partial[r][c][v] += left[r] * right;
                }
            }
        for (int r = 0; r < rows; ++r) {
            Lanes<T> column[lanes];
            for (int c = 0; c < lanes; ++c) column[c] = joinedVectors(partial[r][c]);
            sum[r] = joinedLanes(column);
        }
    }
    for (std::ptrdiff_t at = inBlocks * size; at < products * size; at += size) {
        Lanes<T> right;
        for (int c = 0; c < lanes; ++c) right[c] = load<T>(b[c] + at);
        for (int r = 0; r < rows; ++r) sum[r] += broadcast(load<T>(a + r * aStep + at)) * right;
    }
}

// One row by columns: `sum` takes the places of `width` results, which touch. Missing columns repeat the last one.
template <class T>
[[gnu::always_inline]] inline void dotColumns(const GridOperand& b, std::ptrdiff_t j, std::ptrdiff_t width,
                                              DotColumns<T>& columns) {
    for (int c = 0; c < laneCount<T>; ++c)
        columns[c] = b.origin + (j + std::min<std::ptrdiff_t>(c, width - 1)) * b.columnStep;
}

template <class T>
[[gnu::always_inline]] inline void storeFirst(std::byte* to, const Lanes<T>& value, std::ptrdiff_t width) {
    if (width == laneCount<T>) return storeLanes(to, value);
    for (std::ptrdiff_t c = 0; c < width; ++c) store(to + c * static_cast<std::ptrdiff_t>(sizeof(T)), value[c]);
}

}  // namespace korm
