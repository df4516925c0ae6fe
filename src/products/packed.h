// Packed squares of orders 8 and 16, times squares and times vectors, with all sizes and distances known when compiling: the
// same sums as those of any shape, without the instructions that find out where everything lies. Of products as small
// as these they are a third, and the number of instructions is what such products wait for.
//
// Order 8 of floats takes 36 ns instead of 52, of doubles 64 instead of 101; products of two transposes, which are turned on
// the stack, 46 instead of 64 and 71 instead of 120. Order 16 gains 10 to 20 %, and with one matrix for many vectors 30 %.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/columns.h"
#include "products/operands.h"
#include "products/rows.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

template <class T, int n>
[[gnu::always_inline]] inline bool liesInRows(const GridOperand& square) {
    return square.columnStep == sizeof(T) && square.rowStep == n * sizeof(T);
}

template <class T, int n>
[[gnu::always_inline]] inline bool liesInColumns(const GridOperand& square) {
    return square.rowStep == sizeof(T) && square.columnStep == n * sizeof(T);
}

template <class T, int n>
[[gnu::always_inline]] inline bool arePackedSquares(const GridOperand& a, const GridOperand& b, const GridOperand& dst,
                                                    ProductShape shape) {
    const auto isPacked = [](const GridOperand& square) {
        return liesInRows<T, n>(square) || liesInColumns<T, n>(square);
    };
    return shape.rows == n && shape.columns == n && shape.products == n && liesInRows<T, n>(dst) && isPacked(a) &&
           isPacked(b);
}

// The transpose of a square.
template <class T, int n>
[[gnu::always_inline]] inline void turnSquare(const std::byte* from, std::byte* to) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = lanes16<T>;
    for (int i = 0; i < n; i += lanes)
        for (int j = 0; j < n; j += lanes) {
            Vec16<T> block[lanes];
            unrolled<lanes>([&](auto r) __attribute__((always_inline)) {
                block[r] = load<Vec16<T>>(from + ((i + r) * n + j) * size);
            });
            transpose(block);
            unrolled<lanes>([&](auto r) __attribute__((always_inline)) {
                storeAligned(to + ((j + r) * n + i) * size, block[r]);
            });
        }
}

// Sums at a time, as vectors. With 12 instead of 8 order 8 would not come out even.
inline constexpr int packedSums = sumRegisters * 2 / 3;

// Vectors of a tile. With rows enough each vector of the right operand serves two of them.
template <class T, Sum shape, int n>
inline constexpr int vectorsAtOnce = std::min({n / lanes16<T>, packedSums / sumsAtOnce(shape), 2});

// A tile of floats. The left operand comes by vectors of four, of which lanes are spread.
template <int n, int tall, int vectors, class Left>
[[gnu::always_inline]] inline void floatTile(const Left& a, const std::byte* b, std::byte* to) {
    Float4 sum[tall][vectors];
    unrolled<n>([&](auto k) __attribute__((always_inline)) {
        Float4 right[vectors];
        unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
            right[v] = settled(load<Float4>(b + k * (n * 4) + v * 16));
        });
        unrolled<tall>([&](auto i) __attribute__((always_inline)) {
            const Float4 left = a.template spread<i, k>();
            unrolled<vectors>([&](auto v)
                                  __attribute__((always_inline)) { addProduct<n, k>(sum[i][v], left * right[v]); });
        });
    });
    unrolled<tall * vectors>([&](auto e) __attribute__((always_inline)) {
        constexpr int i = e / vectors, v = e % vectors;
        store(to + i * (n * 4) + v * 16, zeroStarted(sum[i][v]));
    });
}

// The right operand in rows. The result has rows in blocks of four only, so all sums have one shape.
template <class T, Sum shape, int n, bool turnA>
[[gnu::always_inline]] inline void multiplyPacked(const std::byte* a, const std::byte* b, std::byte* to) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr std::ptrdiff_t row = n * size;
    constexpr std::ptrdiff_t aRow = turnA ? size : row, aStep = turnA ? row : size;
    // Else the right operand is loaded once for all rows, as vectors that wait on the stack.
    const auto readAnew = [&b]() __attribute__((always_inline)) { b = opaque(b); };
    if constexpr (isFloat<T> && shape == zeroStart) {
        // What is read as its transpose gives factors to four rows at once.
        constexpr int vectors = turnA ? packedSums / 4 : std::min(n / 4, packedSums / 2), tall = packedSums / vectors;
        for (std::ptrdiff_t j = 0; j < row; j += vectors * 16)
            for (int i = 0; i < n; i += tall) {
                readAnew();
                floatTile<n, tall, vectors>(LeftInPlace<T, n, turnA>{a + i * aRow, row}, b + j, to + i * row + j);
            }
    } else {
        constexpr int vectors = vectorsAtOnce<T, shape, n>;
        constexpr int tall = packedSums / sumsAtOnce(shape) / vectors;
        constexpr std::ptrdiff_t wide = 16 * vectors;
        for (std::ptrdiff_t j = 0; j < row; j += wide)
            for (int i = 0; i < n; i += tall) {
                readAnew();
                tile<Vec16<T>, shape, tall, vectors>({a + i * aRow, aRow, aStep}, {b + j, row, wide - 16}, Known<n>{},
                                                     TileTarget{to + i * row + j, row, wide - 16});
            }
    }
}

template <class T, Sum shape, int n, bool turnA>
[[gnu::noinline]] void packedSquares(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                     std::int32_t count) {
    const bool turnB = liesInColumns<T, n>(bs.first);
    alignas(16) std::byte turned[n * n * sizeof(T)];
    for (std::int32_t k = 0; k < count; ++k) {
        const std::byte* b = bs.at(k).origin;
        if (turnB) {
            if (k == 0 || !bs.isShared()) turnSquare<T, n>(b, turned);
            b = turned;
        }
        multiplyPacked<T, shape, n, turnA>(as.at(k).origin, b, target(dsts.at(k), 0, 0));
    }
}

template <class T, Sum shape, int n>
[[gnu::always_inline]] inline void packedSquares(const GridObjects& a, const GridObjects& b, const GridObjects& dst,
                                                 std::int32_t count) {
    if (liesInRows<T, n>(a.first)) packedSquares<T, shape, n, false>(a, b, dst, count);
    else packedSquares<T, shape, n, true>(a, b, dst, count);
}

// One product, the right operand in rows.
template <class T, Sum shape, int n, bool turnA>
[[gnu::noinline]] void packedSquare(const std::byte* a, const std::byte* b, std::byte* to) {
    multiplyPacked<T, shape, n, turnA>(a, b, to);
}

// --- Times vectors ---------------------------------------------------------------------------------

// Plain operands, so the vectors' elements touch. A matrix that lies in rows is worth being turned if it serves many vectors.
template <class T, int n, class A>
[[gnu::always_inline]] inline bool arePackedWithVectors(const A& a, VectorProductShape shape, std::int32_t count) {
    return shape.rows == n && shape.products == n && storedStride(a) == n * sizeof(T) &&
           (isTransposed<A> || (isShared<A> && count >= 4));
}

template <class T, Sum shape, int n>
[[gnu::noinline]] void packedSquaresTimesVectors(const GridObjects& as, const GridObjects& xs, const GridObjects& dsts,
                                                 std::int32_t count) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr std::ptrdiff_t row = n * size;
    constexpr int vectors = std::min(n / lanes16<T>, packedSums / sumsAtOnce(shape));
    constexpr std::ptrdiff_t wide = 16 * vectors;
    const bool turns = liesInRows<T, n>(as.first);
    alignas(16) std::byte turned[n * row];
    if (turns) turnSquare<T, n>(as.first.origin, turned);
    for (std::int32_t k = 0; k < count; ++k) {
        const std::byte* const a = turns ? turned : as.at(k).origin;
        const std::byte* const x = xs.at(k).origin;
        std::byte* const to = target(dsts.at(k), 0, 0);
        for (std::ptrdiff_t i = 0; i < row; i += wide)
            tile<Vec16<T>, shape, 1, vectors>({x, 0, size}, {a + i, row, wide - 16}, Known<n>{},
                                              TileTarget{to + i, 0, wide - 16});
    }
}

}  // namespace korm::inline KORM_VARIANT::products
