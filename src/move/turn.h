// Turning: rows of a source become columns of a result, by blocks in registers. Used between arrays of structures and
// structures of arrays, where an object is a row of the one and a column of the other, and for transposition.
//
// Source and result lie apart, and so do the result's elements.
#pragma once

#include <algorithm>

#include "kernel/known.h"
#include "move/words.h"

namespace korm::inline KORM_VARIANT::move {

// Rows of adjacent elements: at a fixed distance from each other, or one behind each entry of a list or table.
struct SteppedRows {
    std::byte* first;
    std::ptrdiff_t step;

    [[gnu::always_inline]] std::byte* at(std::ptrdiff_t row) const { return first + row * step; }
    SteppedRows shifted(std::ptrdiff_t row, std::ptrdiff_t bytes) const { return {at(row) + bytes, step}; }
    bool touch(std::ptrdiff_t bytes) const { return step == bytes; }
};

struct ListedRows {
    std::byte* const* entries;
    std::ptrdiff_t offset;

    [[gnu::always_inline]] std::byte* at(std::ptrdiff_t row) const { return entries[row] + offset; }
    ListedRows shifted(std::ptrdiff_t row, std::ptrdiff_t bytes) const { return {entries + row, offset + bytes}; }
    static bool touch(std::ptrdiff_t) { return false; }
};

// Columns of a source, or rows, that are turned together: of four words a vector, of larger ones two.
inline constexpr int group = 4;

// The first `columns` of n source rows become as many rows of the result, n elements each. Where source rows touch, all
// but the last ones may be loaded as whole vectors: what is behind a row is the next.
template <class Word, int columns, bool touching, class Source>
void columnsToRows(Source source, std::ptrdiff_t n, std::byte* const* results) {
    constexpr int edge = blockEdge<Word>;
    std::byte* to[columns];
    // One by one: vectors of pointers that have just been written by halves would wait for these to reach the cache.
    unrolled<columns>([&](auto j) __attribute__((always_inline)) { to[j] = opaque(results[j]); });
    const auto block = [&](std::ptrdiff_t x, auto rows, auto wide) __attribute__((always_inline)) {
        turnBlock<Word, rows, columns, wide>(
            [&](int i) __attribute__((always_inline)) { return source.at(x + i); },
            [&](int j) __attribute__((always_inline)) { return to[j] + x * sizeOf<Word>; });
    };
    if (n < edge) {
        // Of words of eight bytes that is one row, which has one column: rows are no fewer than columns.
        if constexpr (sizeof(Word) == 4 || columns == 1)
            for (std::ptrdiff_t x = 0; x < n; ++x) block(x, Int<1>{}, std::false_type{});
        return;
    }
    std::ptrdiff_t x = 0;
    for (; x < n - 2 * edge; x += 2 * edge) {
        block(x, Int<edge>{}, std::bool_constant<touching>{});
        block(x + edge, Int<edge>{}, std::bool_constant<touching>{});
    }
    if (x < n - edge) block(x, Int<edge>{}, std::bool_constant<touching>{});
    block(n - edge, Int<edge>{}, std::false_type{});
}

// `rows` source rows become the first columns of n rows of the result, one after the other. Where those touch, whole
// vectors may be stored: what is too much is written over by the next.
template <class Word, int rows, bool touching, class Result>
void rowsToColumns(const std::byte* const* sources, std::ptrdiff_t n, Result result) {
    constexpr int edge = blockEdge<Word>;
    const std::byte* from[rows];
    unrolled<rows>([&](auto i) __attribute__((always_inline)) { from[i] = opaque(sources[i]); });
    const auto block = [&](std::ptrdiff_t y, auto columns, auto wide) __attribute__((always_inline)) {
        if constexpr (sizeof(Word) == 8) {
            // Both words of a pair of rows, and then the next: each result row is done before the one behind it.
            Bits pairs[2][2];
            unrolled<(rows + 1) / 2>([&](auto p) __attribute__((always_inline)) {
                constexpr int second = std::min(2 * p + 1, rows - 1);
                const Bits a = loadFirst<columns * 8>(from[2 * p] + y * 8),
                           b = loadFirst<columns * 8>(from[second] + y * 8);
                pairs[p][0] = _mm_unpacklo_epi64(a, b);
                pairs[p][1] = _mm_unpackhi_epi64(a, b);
            });
            unrolled<columns>([&](auto j) __attribute__((always_inline)) {
                std::byte* const to = result.at(y + j);
                unrolled<(rows + 1) / 2>([&](auto p) __attribute__((always_inline)) {
                    storeFirst<std::min(rows - 2 * p, 2) * 8>(to + 16 * p, pairs[p][j]);
                });
            });
        } else {
            turnBlock<Word, rows, columns, false, wide>(
                [&](int i) __attribute__((always_inline)) { return from[i] + y * 4; },
                [&](int j) __attribute__((always_inline)) { return result.at(y + j); });
        }
    };
    if (n < edge) {
        for (std::ptrdiff_t y = 0; y < n; ++y) block(y, Int<1>{}, std::false_type{});
        return;
    }
    std::ptrdiff_t y = 0;
    for (; y < n - 2 * edge; y += 2 * edge) {
        block(y, Int<edge>{}, std::bool_constant<touching>{});
        block(y + edge, Int<edge>{}, std::bool_constant<touching>{});
    }
    if (y < n - edge) block(y, Int<edge>{}, std::bool_constant<touching>{});
    block(n - edge, Int<edge>{}, std::false_type{});
}

// Calls f with 1, 2, ... or `most` as a type.
template <int most, class F>
[[gnu::always_inline]] inline void forFew(std::ptrdiff_t number, const F& f) {
    if constexpr (most > 1)
        if (number < most) return forFew<most - 1>(number, f);
    f(Int<most>{});
}

// Source row x, `columns` elements long, becomes column x of the result. The inner loop runs along the longer side.
template <class Word, class Source, class Result>
void turnTile(const Source& source, std::ptrdiff_t rows, const Result& result, std::ptrdiff_t columns) {
    if (rows >= columns) {
        // Rows of one element are so short that a vector would reach beyond the next.
        const bool touching = columns > 1 && source.touch(columns * sizeOf<Word>);
        for (std::ptrdiff_t y = 0; y < columns; y += group) {
            forFew<group>(
                std::min<std::ptrdiff_t>(columns - y, group), [&](auto known) __attribute__((always_inline)) {
                    std::byte* to[known];
                    for (int j = 0; j < known; ++j) to[j] = result.at(y + j);
                    const Source from = source.shifted(0, y * sizeOf<Word>);
                    constexpr bool wide = sizeof(Word) == 4 && known < group;
                    if (wide && touching) columnsToRows<Word, known, wide>(from, rows, to);
                    else columnsToRows<Word, known, false>(from, rows, to);
                });
        }
    } else {
        const bool touching = rows > 1 && result.touch(rows * sizeOf<Word>);
        for (std::ptrdiff_t x = 0; x < rows; x += group) {
            forFew<group>(
                std::min<std::ptrdiff_t>(rows - x, group), [&](auto known) __attribute__((always_inline)) {
                    const std::byte* from[known];
                    for (int i = 0; i < known; ++i) from[i] = source.at(x + i);
                    const Result to = result.shifted(0, x * sizeOf<Word>);
                    // What is stored too much belongs to the next row's beginning, which must not be there yet.
                    constexpr bool wide = sizeof(Word) == 4 && known < group;
                    if (wide && touching && rows < group) rowsToColumns<Word, known, wide>(from, columns, to);
                    else rowsToColumns<Word, known, false>(from, columns, to);
                });
        }
    }
}

// Any number of rows and columns, in tiles that stay in the first-level cache from one of their bands to the next.
template <class Word, class Source, class Result>
void turn(const Source& source, std::ptrdiff_t rows, const Result& result, std::ptrdiff_t columns) {
    constexpr std::ptrdiff_t tileElements = 8192 / sizeOf<Word>;
    if (rows * columns <= tileElements) return turnTile<Word>(source, rows, result, columns);
    const std::ptrdiff_t tileRows = std::max<std::ptrdiff_t>(tileElements / std::min<std::ptrdiff_t>(columns, 32), 32);
    const std::ptrdiff_t tileColumns = std::max<std::ptrdiff_t>(tileElements / std::min<std::ptrdiff_t>(rows, 32), 32);
    for (std::ptrdiff_t x = 0; x < rows; x += tileRows) {
        const std::ptrdiff_t here = std::min(rows - x, tileRows);
        for (std::ptrdiff_t y = 0; y < columns; y += tileColumns)
            turnTile<Word>(source.shifted(x, y * sizeOf<Word>), here, result.shifted(y, x * sizeOf<Word>),
                           std::min(columns - y, tileColumns));
    }
}

}  // namespace korm::inline KORM_VARIANT::move
