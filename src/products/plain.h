// One small product of any shape, by plain loops: what a larger product gains by being prepared for, a small one loses.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/known.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "korm.h"
#include "products/dots.h"
#include "products/operands.h"
#include "products/panels.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// --- Which sums ------------------------------------------------------------------------------------

// Products of an element from which on some have more than two partial sums.
template <RowSums rows>
constexpr int productsOfTwoSums() {
    int products = 64;
    for (const Sum sum : {rows.blocks, rows.lastOfOne, rows.firstOfTwo, rows.secondOfTwo, rows.lastThree})
        if (sum.partials > 2) products = std::min(products, sum.block);
    return products;
}

// --- Along rows of the result ----------------------------------------------------------------------

// Neighbours in a row of the result that are computed together: one element, a pair of floats or a vector.
template <class T, int width>
using PieceOf = std::conditional_t<width == 1, T, Vec16<T>>;

template <class T, int width>
[[gnu::always_inline]] inline PieceOf<T, width> loadPiece(const std::byte* from) {
    if constexpr (width == 2 && isFloat<T>) return loadPair(from);
    else return load<PieceOf<T, width>>(from);
}

template <class T, int width>
[[gnu::always_inline]] inline void storePiece(std::byte* to, PieceOf<T, width> value) {
    if constexpr (width == 2 && isFloat<T>) storeLowPair(to, settled(value));
    else store(to, value);
}

// Rows of the result that all have one sum or all have two. `columns` is a piece or two, of which the second ends with the row.
// With the number of products known, rows of the right operand stay in registers; what sums start from is then added at the end.
template <class T, bool isPaired, int width, int pieces, class Products>
[[gnu::always_inline]] inline void plainPieces(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                               std::ptrdiff_t bRow, std::byte* to, std::ptrdiff_t toRow,
                                               std::ptrdiff_t aStep, std::ptrdiff_t apart, std::int32_t height,
                                               Products products) {
    using V = PieceOf<T, width>;
    const auto right = [&](const std::byte* row, auto p) __attribute__((always_inline)) {
        return loadPiece<T, width>(row + p * apart);
    };
    if constexpr (isKnown<Products>) {
        static_assert(!isPaired);
        V rows[products][pieces];
        unrolled<products>([&](auto k) __attribute__((always_inline)) {
            unrolled<pieces>([&](auto p) __attribute__((always_inline)) { rows[k][p] = right(b, p); });
            b += bRow;
        });
#pragma GCC unroll 1
        for (; height > 0; --height, a += aRow, to += toRow) {
            V sum[pieces];
            unrolled<products>([&](auto k) __attribute__((always_inline)) {
                const V left = spread<V>(a + k * aStep);
                unrolled<pieces>([&](auto p) __attribute__((always_inline)) {
                    const V product = left * rows[k][p];
                    sum[p] = k == 0 ? product : sum[p] + product;
                });
            });
            unrolled<pieces>([&](auto p) __attribute__((always_inline)) {
                storePiece<T, width>(to + p * apart, zeroStarted(sum[p]));
            });
        }
    } else {
#pragma GCC unroll 1
        for (; height > 0; --height, a += aRow, to += toRow) {
            V sum[2][pieces] = {};
            const std::byte *left = a, *row = b;
            const auto addTo = [&](V(&sums)[pieces]) __attribute__((always_inline)) {
                const V factor = spread<V>(left);
                unrolled<pieces>([&](auto p) __attribute__((always_inline)) { sums[p] += factor * right(row, p); });
                left += aStep;
                row += bRow;
            };
            std::ptrdiff_t rest = products;
            if constexpr (isPaired) {
#pragma GCC unroll 1
                for (; rest > 1; rest -= 2) {
                    addTo(sum[0]);
                    addTo(sum[1]);
                }
                unrolled<pieces>([&](auto p) __attribute__((always_inline)) { sum[0][p] += sum[1][p]; });
            }
#pragma GCC unroll 1
            for (; rest > 0; --rest) addTo(sum[0]);
            unrolled<pieces>([&](auto p)
                                 __attribute__((always_inline)) { storePiece<T, width>(to + p * apart, sum[0][p]); });
        }
    }
}

// Calls f with a number of products, as a type if it is 3 or less, as those of two sums are not.
template <bool isPaired, class F>
[[gnu::always_inline]] inline void forProducts(std::int32_t products, const F& f) {
    if constexpr (!isPaired) {
        if (products == 1) return f(Known<1>{});
        if (products == 2) return f(Known<2>{});
        if (products == 3) return f(Known<3>{});
    }
    f(static_cast<std::ptrdiff_t>(products));
}

// Rows of the right operand and of the result touch, and have two elements at least.
template <class T, bool isPaired>
[[gnu::noinline]] std::int32_t plainRows(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                         std::ptrdiff_t bRow, std::byte* to, std::ptrdiff_t toRow, std::ptrdiff_t aStep,
                                         std::int32_t height, std::int32_t products, std::int32_t columns) {
    constexpr int size = sizeof(T);
    const auto pieces = [&](auto width) __attribute__((always_inline)) {
        // Two pieces at a time; the last ones end with the row.
        for (;;) {
            const std::ptrdiff_t apart = std::min(columns - width, width.value) * size;
            forProducts<isPaired>(
                products, [&](auto known) __attribute__((always_inline)) {
                    if (apart == 0)
                        plainPieces<T, isPaired, width, 1>(a, aRow, b, bRow, to, toRow, aStep, apart, height, known);
                    else plainPieces<T, isPaired, width, 2>(a, aRow, b, bRow, to, toRow, aStep, apart, height, known);
                });
            if (columns <= 2 * width) break;
            const int done = std::min(columns - 2 * width, 2 * width);
            columns -= done;
            b += done * size;
            to += done * size;
        }
    };
    if constexpr (isFloat<T>) {
        if (columns < 4) pieces(Int<2>{});
        else pieces(Int<4>{});
    } else {
        pieces(Int<2>{});
    }
    return korStatusOk;
}

// Few products, or so few columns that there are no vectors of them.
template <class T, auto rows>
[[gnu::always_inline]] inline bool isPlain(ProductShape shape, bool isAdjacent) {
    if ((shape.rows | shape.products | shape.columns) >= 64 || shape.products >= productsOfTwoSums<rows>())
        return false;
    const std::int32_t products = shape.rows * shape.products * shape.columns;
    return isAdjacent ? shape.columns < lanes16<T> || products <= 48 : products <= 96;
}

// Rows from `first` to `end` have two sums. Two sums of one or two products each are the same as one.
template <RowSums rows>
[[gnu::always_inline]] inline auto pairedRows(std::int32_t height, std::int32_t products) {
    struct Paired {
        std::int32_t first, end;
    };
    constexpr Sum pair{2, 2};
    const std::int32_t left = height & 3;
    if (products >= 4) {
        if (rows.blocks == pair && height > left) return Paired{0, height - left};
        if ((left == 1 && rows.lastOfOne == pair) || (left == 2 && rows.firstOfTwo == pair))
            return Paired{height - left, height};
    }
    return Paired{height, height};
}

// Element by element.
template <class T, RowSums rows>
[[gnu::noinline]] std::int32_t plainElements(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                             std::ptrdiff_t bRow, std::byte* to, std::ptrdiff_t toRow,
                                             std::ptrdiff_t aStep, std::ptrdiff_t bColumn, std::ptrdiff_t toColumn,
                                             std::int32_t height, std::int32_t products, std::int32_t columns) {
    const auto paired = pairedRows<rows>(height, products);
#pragma GCC unroll 1
    for (std::int32_t i = 0; i < height; ++i, a += aRow, to += toRow) {
        const bool isPaired = i >= paired.first && i < paired.end;
        const std::byte* column = b;
        std::byte* element = to;
#pragma GCC unroll 1
        for (std::int32_t j = columns; j > 0; --j, column += bColumn, element += toColumn) {
            if (isPaired)
                plainPieces<T, true, 1, 1>(a, 0, column, bRow, element, 0, aStep, 0, 1, std::ptrdiff_t{products});
            else plainPieces<T, false, 1, 1>(a, 0, column, bRow, element, 0, aStep, 0, 1, std::ptrdiff_t{products});
        }
    }
    return korStatusOk;
}

// The same with rows of one sum and of two.
template <class T, RowSums rows>
[[gnu::noinline]] std::int32_t plainProduct(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                            std::ptrdiff_t bRow, std::byte* to, std::ptrdiff_t toRow,
                                            std::ptrdiff_t aStep, std::int32_t height, std::int32_t products,
                                            std::int32_t columns) {
    const auto paired = pairedRows<rows>(height, products);
    if (paired.first > 0) plainRows<T, false>(a, aRow, b, bRow, to, toRow, aStep, paired.first, products, columns);
    if (paired.end > paired.first)
        plainRows<T, true>(a + paired.first * aRow, aRow, b, bRow, to + paired.first * toRow, toRow, aStep,
                           paired.end - paired.first, products, columns);
    if (paired.end < height)
        plainRows<T, false>(a + paired.end * aRow, aRow, b, bRow, to + paired.end * toRow, toRow, aStep,
                            height - paired.end, products, columns);
    return korStatusOk;
}

// --- Along the products ----------------------------------------------------------------------------

// More results are faster a vector at a time.
template <class T>
[[gnu::always_inline]] inline bool areFewDots(ProductShape shape) {
    return std::int64_t{shape.rows} * shape.columns <= (isFloat<T> ? 20 : 12);
}

// Rows of the left and columns of the right operand touch.
template <class T, auto rows>
[[gnu::noinline]] std::int32_t plainDots(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                         std::ptrdiff_t bColumn, std::byte* to, std::ptrdiff_t toRow,
                                         std::int32_t height, std::int32_t products, std::int32_t columns) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    forRowGroups<rows>(
        height, products, [&](std::ptrdiff_t, std::ptrdiff_t count, auto sum) __attribute__((always_inline)) {
            for (; count > 0; --count, a += aRow, to += toRow)
                for (std::ptrdiff_t j = 0; j < columns; ++j)
                    store(to + j * size, dot<T, sum.value>(a, b + j * bColumn, products));
        });
    return korStatusOk;
}

// One column whose sums all go from left to right. One product at a time: what more needs to be prepared would be half of the
// instructions of a small one.
template <class T>
[[gnu::noinline]] std::int32_t plainSums(const std::byte* a, std::ptrdiff_t aRow, const std::byte* x, std::byte* to,
                                         std::ptrdiff_t toRow, std::int32_t height, std::int32_t products) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
#pragma GCC unroll 1
    for (; height > 0; --height, a += aRow, to += toRow) {
        T sum{};
#pragma GCC unroll 1
        for (std::ptrdiff_t at = 0; at < products * size; at += size) {
            sum += load<T>(a + at) * load<T>(x + at);
            asm("" : "+x"(sum));  // else gcc multiplies several at a time
        }
        store(to, sum);
    }
    return korStatusOk;
}

// One column.
template <class T, auto rows>
[[gnu::noinline]] std::int32_t plainColumn(const std::byte* a, std::ptrdiff_t aRow, const std::byte* x, std::byte* to,
                                           std::ptrdiff_t toRow, std::int32_t height, std::int32_t products) {
    forRowGroups<rows>(
        height, products, [&](std::ptrdiff_t, std::ptrdiff_t count, auto sum) __attribute__((always_inline)) {
            for (; count > 0; --count, a += aRow, to += toRow) store(to, dot<T, sum.value>(a, x, products));
        });
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::products
