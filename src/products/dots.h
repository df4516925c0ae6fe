// Sums with k along the lanes of vectors, for operands that are both contiguous along k: each lane is a partial sum.
#pragma once

#include <algorithm>
#include <cstddef>

#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

template <class T>
using DotColumns = const std::byte * [lanes16<T>];  // where the columns of a tile begin

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

// Partial sums of one element, side by side in vectors.
template <class T, int vectors>
[[gnu::always_inline]] inline T joinedLanes(const Vec16<T> (&partial)[vectors]) {
    const Vec16<T> l = joinedVectors(partial);
    if constexpr (isFloat<T>) return (l[0] + l[2]) + (l[1] + l[3]);
    else return l[0] + l[1];
}

// Partial sums of whole blocks, joined. Side by side in vectors if there are enough for that.
template <class T, int partials>
[[gnu::always_inline]] inline T sumOfBlocks(const std::byte* a, const std::byte* b, std::ptrdiff_t end) {
    constexpr int vectors = partials / lanes16<T>;
    if constexpr (vectors > 0) {
        Vec16<T> partial[vectors] = {};
        for (std::ptrdiff_t at = 0; at < end; at += 16 * vectors)
            unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                partial[v] += load<Vec16<T>>(a + at + 16 * v) * load<Vec16<T>>(b + at + 16 * v);
            });
        return joinedLanes<T>(partial);
    } else {
        constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
        T partial[partials] = {};
        for (std::ptrdiff_t at = 0; at < end; at += partials * size)
            unrolled<partials>([&](auto c) __attribute__((always_inline)) {
                partial[c] += load<T>(a + at + c * size) * load<T>(b + at + c * size);
                asm("" : "+x"(partial[c]));
            });
        return joined<T>(partial);
    }
}

// Products from `at` to `end`, added to `sum` one by one.
template <class T>
[[gnu::always_inline]] inline T sumOneByOne(T sum, const std::byte* a, const std::byte* b, std::ptrdiff_t at,
                                            std::ptrdiff_t end) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto add = [&](std::ptrdiff_t place) __attribute__((always_inline)) {
        sum += load<T>(a + place) * load<T>(b + place);
        asm("" : "+x"(sum));  // else gcc multiplies several at a time, which takes longer for so few
    };
#pragma GCC unroll 1
    for (; at < end - 3 * size; at += 4 * size)
        unrolled<4>([&](auto k) __attribute__((always_inline)) { add(at + k * size); });
#pragma GCC unroll 1
    for (; at < end; at += size) add(at);
    return sum;
}

// An element, whatever its shape of sum.
template <class T, Sum sum>
[[gnu::always_inline]] inline T dot(const std::byte* a, const std::byte* b, std::ptrdiff_t products) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t end = products * size;
    std::ptrdiff_t inBlocks = 0;
    T result{};
    if constexpr (sum.partials > 1) {
        inBlocks = end & -static_cast<std::ptrdiff_t>(sum.block * size);
        if (inBlocks > 0) result = sumOfBlocks<T, sum.partials>(a, b, inBlocks);
    }
    return sumOneByOne<T>(result, a, b, inBlocks, end);
}

// Rows of a tile: as many as registers hold.
template <class T>
constexpr int dotRowsAtOnce(Sum shape) {
    const int ofRow = shape.partials / lanes16<T> * lanes16<T>;
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
[[gnu::always_inline]] inline void storeFirst(std::byte* to, const Vec16<T>& value, std::ptrdiff_t width) {
    if (width == lanes16<T>) return storeLanes(to, value);
    for (std::ptrdiff_t c = 0; c < width; ++c) store(to + c * static_cast<std::ptrdiff_t>(sizeof(T)), value[c]);
}

// The product of a vector with `groups` vectors of rows of a matrix.
template <class T, Sum shape, int groups>
[[gnu::noinline]] void dotVector(const std::byte* x, const std::byte* a, std::ptrdiff_t rowStep,
                                 std::ptrdiff_t products, std::byte* to) {
    constexpr int lanes = lanes16<T>;
    constexpr int vectors = shape.partials / lanes;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t inBlocks = (products - products % shape.block) * size;
    Vec16<T> sum[groups];
    unrolled<groups>([&](auto g) __attribute__((always_inline)) { sum[g] = Vec16<T>{}; });
    if (inBlocks > 0) {
        Vec16<T> partial[groups * lanes][vectors];
        unrolled<groups * lanes * vectors>([&](auto e) __attribute__((always_inline)) {
            partial[e / vectors][e % vectors] = Vec16<T>{};
        });
        for (std::ptrdiff_t at = 0; at < inBlocks; at += vectors * 16)
            unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                const Vec16<T> factor = load<Vec16<T>>(x + at + 16 * v);
                unrolled<groups * lanes>([&](auto r) __attribute__((always_inline)) {
                    partial[r][v] += load<Vec16<T>>(a + r * rowStep + at + 16 * v) * factor;
                });
            });
        unrolled<groups>([&](auto g) __attribute__((always_inline)) {
            Vec16<T> row[lanes];
            unrolled<lanes>([&](auto r)
                                __attribute__((always_inline)) { row[r] = joinedVectors(partial[g * lanes + r]); });
            sum[g] = joinedLanes(row);
        });
    }
    for (std::ptrdiff_t at = inBlocks; at < products * size; at += size)
        unrolled<groups>([&](auto g) __attribute__((always_inline)) {
            const std::byte* const from = a + g * lanes * rowStep + at;
            const auto column = fromLanes<Vec16<T>>([&](int l) { return load<T>(from + l * rowStep); });
            sum[g] += column * spread<Vec16<T>>(x + at);
        });
    unrolled<groups>([&](auto g) __attribute__((always_inline)) { storeLanes(to + 16 * g, sum[g]); });
}

// Tiles below each other, each a few rows by a vector of columns, of which the first `width` are stored.
template <class T, Sum shape, int rows>
[[gnu::noinline]] void dotTiles(const std::byte* a, std::ptrdiff_t aStep, const DotColumns<T>& b,
                                std::ptrdiff_t products, std::byte* to, std::ptrdiff_t step, std::ptrdiff_t width,
                                std::ptrdiff_t count) {
    constexpr int lanes = lanes16<T>;
    constexpr int vectors = shape.partials / lanes;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t inBlocks = (products - products % shape.block) * size;
    for (; count > 0; --count) {
        Vec16<T> sum[rows];
        unrolled<rows>([&](auto r) __attribute__((always_inline)) { sum[r] = Vec16<T>{}; });
        if (inBlocks > 0) {
            Vec16<T> partial[rows][lanes][vectors];
            unrolled<rows * lanes * vectors>([&](auto e) __attribute__((always_inline)) {
                partial[e / (lanes * vectors)][e / vectors % lanes][e % vectors] = Vec16<T>{};
            });
            for (std::ptrdiff_t at = 0; at < inBlocks; at += vectors * 16)
                unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                    Vec16<T> left[rows];
                    unrolled<rows>([&](auto r) __attribute__((always_inline)) {
                        left[r] = load<Vec16<T>>(a + r * aStep + at + 16 * v);
                    });
                    unrolled<lanes>([&](auto c) __attribute__((always_inline)) {
                        const Vec16<T> right = load<Vec16<T>>(b[c] + at + 16 * v);
                        unrolled<rows>([&](auto r)
                                           __attribute__((always_inline)) { partial[r][c][v] += left[r] * right; });
                    });
                });
            unrolled<rows>([&](auto r) __attribute__((always_inline)) {
                Vec16<T> column[lanes];
                unrolled<lanes>([&](auto c)
                                    __attribute__((always_inline)) { column[c] = joinedVectors(partial[r][c]); });
                sum[r] = joinedLanes(column);
            });
        }
        for (std::ptrdiff_t at = inBlocks; at < products * size; at += size) {
            const auto right = fromLanes<Vec16<T>>([&](int l) { return load<T>(b[l] + at); });
            unrolled<rows>([&](auto r) __attribute__((always_inline)) {
                sum[r] += spread<Vec16<T>>(a + r * aStep + at) * right;
            });
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
    for (int c = 0; c < lanes16<T>; ++c)
        columns[c] = b.origin + (j + std::min<std::ptrdiff_t>(c, width - 1)) * b.columnStep;
}

}  // namespace korm::inline KORM_VARIANT::products
