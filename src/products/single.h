// One product of two matrices, or of a matrix and a vector. A small one takes as long as the checks of its call, so paths are
// functions of single numbers which end the call: an entry function jumps to them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/unroll.h"
#include "korm.h"
#include "products/columns.h"
#include "products/general.h"
#include "products/operands.h"
#include "products/packed.h"
#include "products/plain.h"
#include "products/squares.h"
#include "products/sums.h"
#include "products/vectors.h"

namespace korm::inline KORM_VARIANT::products {

// --- Two matrices ----------------------------------------------------------------------------------

template <class T, RowSums rows>
[[gnu::noinline]] std::int32_t generalProduct(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                              std::ptrdiff_t bRow, std::byte* to, std::ptrdiff_t toRow,
                                              std::ptrdiff_t aStep, std::ptrdiff_t bStep, std::ptrdiff_t toStep,
                                              std::int32_t height, std::int32_t products, std::int32_t columns) {
    const auto object = [](const std::byte* origin, std::ptrdiff_t row, std::ptrdiff_t step) {
        return GridObjects{{origin, row, step}, nullptr, 0};
    };
    generalProducts<T, rows>(object(a, aRow, aStep), object(b, bRow, bStep), object(to, toRow, toStep),
                             {height, products, columns}, 1);
    return korStatusOk;
}

template <class T, RowSums rows>
[[gnu::noinline]] std::int32_t generalProduct(const TableOperand& a, const TableOperand& b, const TableOperand& dst,
                                              ProductShape shape) {
    generalProducts<T, rows>(TableObjects{a, 0}, TableObjects{b, 0}, TableObjects{dst, 0}, shape, 1);
    return korStatusOk;
}

// Fewer than four rows of eight products, which have up to eight partial sums; two columns at least.
template <class T, RowSums rows>
[[gnu::noinline]] std::int32_t rowsOfEight(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                           std::ptrdiff_t bRow, std::byte* to, std::ptrdiff_t toRow,
                                           std::ptrdiff_t aStep, std::int32_t height, std::int32_t columns) {
    constexpr int size = sizeof(T), lanes = lanes16<T>;
    const auto row = [&](auto sum) __attribute__((always_inline)) {
        const std::byte* right = b;
        std::byte* result = to;
        for (std::int32_t left = columns;;) {
            tile<Vec16<T>, sum.value, 1, 1>({a, aRow, aStep}, {right, bRow, 0}, Known<8>{},
                                            TileTarget{result, toRow, 0});
            if (left <= lanes) break;
            const int step = std::min(left - lanes, lanes);  // the last vector ends with the row
            left -= step;
            right += step * size;
            result += step * size;
        }
        a += aRow;
        to += toRow;
    };
    forRowGroups<rows>(
        height, 8, [&](std::ptrdiff_t, std::ptrdiff_t count, auto sum) __attribute__((always_inline)) {
            if constexpr (sum.value.block == 8)
                for (; count > 0; --count) row(sum);
        });
    return korStatusOk;
}

template <class SquareOrders, RowSums rows, class A, class B, class D>
[[gnu::always_inline]] inline std::int32_t singleProduct(const A& a, const B& b, const D& dst, ProductShape shape,
                                                         decltype(oneObject)) {
    using T = typename D::Element;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto [height, products, columns] = shape;
    if (shape.isSquare()) {
        const auto square = [&](auto n) __attribute__((always_inline)) {
            if constexpr (SquareOrders::has(n)) squareProduct<T, n>(a, b, dst);
            return SquareOrders::has(n);
        };
        if (forOrder(height, square, [] { return false; })) return korStatusOk;
        if constexpr ((isAdjacent<A> || isTransposed<A>)&&isAdjacent<B> && isAdjacent<D>) {
            constexpr std::ptrdiff_t row = 8 * size;
            if (height == 8 && storedStride(a) == row && b.rowStride == row && dst.rowStride == row) {
                packedSquare<T, rows.blocks, 8, isTransposed<A>>(a.origin, b.origin, dst.origin);
                return korStatusOk;
            }
        }
    }
    const auto x = operand(a.at(0)), y = operand(b.at(0)), z = operand(dst.at(0));
    if constexpr (isScattered<D>) {
        return generalProduct<T, rows>(x, y, z, shape);
    } else {
        std::byte* const to = target(z, 0, 0);
        // One column whose elements touch is as good as a row.
        if constexpr (isAdjacent<D> && !isTransposed<A>)
            if (isTransposed<B> || y.rowStep == size) {
                if (columns == 1 && height <= (isFloat<T> ? 20 : 12)) {
                    if (products < 4 ||
                        (products < productsOfTwoSums<rows>() && pairedRows<rows>(height, products).first == height))
                        return plainSums<T>(x.origin, x.rowStep, y.origin, to, z.rowStep, height, products);
                    return plainColumn<T, rows>(x.origin, x.rowStep, y.origin, to, z.rowStep, height, products);
                }
                if (isTransposed<B> && areFewDots<T>(shape))
                    return plainDots<T, rows>(x.origin, x.rowStep, y.origin, storedStride(b), to, z.rowStep, height,
                                              products, columns);
            }
        constexpr bool alongRows = isAdjacent<B> && isAdjacent<D>;
        if (isPlain<T, rows>(shape, alongRows)) {
            if constexpr (alongRows) {
                if (columns == 1)
                    return plainElements<T, rows>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                                  size, size, height, products, columns);
                const auto paired = pairedRows<rows>(height, products);
                if (paired.first == height)
                    return plainRows<T, false>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                               height, products, columns);
                if (paired.end - paired.first == height)
                    return plainRows<T, true>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                              height, products, columns);
                return plainProduct<T, rows>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                             height, products, columns);
            } else {
                return plainElements<T, rows>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                              y.columnStep, z.columnStep, height, products, columns);
            }
        }
        if constexpr (alongRows && rows.lastOfOne.block == 8)
            if (products == 8 && height < 4 && columns >= lanes16<T>)
                return rowsOfEight<T, rows>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                            height, columns);
        if constexpr (alongRows)
            if (areFewTiles<T>(shape))
                return tiledProduct<T, rows>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                             height, products, columns);
        return generalProduct<T, rows>(x.origin, x.rowStep, y.origin, y.rowStep, to, z.rowStep, x.columnStep,
                                       y.columnStep, z.columnStep, height, products, columns);
    }
}

// --- A matrix and a vector -------------------------------------------------------------------------

template <class T, ElementSums elements>
[[gnu::noinline]] std::int32_t generalVectorProduct(const std::byte* a, std::ptrdiff_t aRow, const std::byte* x,
                                                    std::ptrdiff_t xStep, std::byte* to, std::ptrdiff_t toStep,
                                                    std::ptrdiff_t aStep, std::int32_t rows, std::int32_t products) {
    generalVectorProduct<T, elements>(GridOperand{a, aRow, aStep}, GridOperand{x, 0, xStep}, GridOperand{to, 0, toStep},
                                      {rows, products});
    return korStatusOk;
}

template <class Order, ElementSums elements, class A, class X, class D>
[[gnu::always_inline]] inline std::int32_t singleVectorProduct(const A& a, const X& x, const D& dst,
                                                               VectorProductShape shape, decltype(oneObject)) {
    using T = typename D::Element;
    if (shape.isSquare()) {
        const auto square = [&](auto n) __attribute__((always_inline)) {
            squareVectorProduct<T, n, Order>(a, x, dst, oneObject);
            return true;
        };
        if (forOrder(shape.rows, square, [] { return false; })) return korStatusOk;
    }
    if constexpr (isAdjacent<D> && !isTransposed<A>) {
        // Fewer products than a block has, or than two sums take, are added from left to right. Eight rows are faster
        // side by side.
        static_assert(elements.lastOfOne.block == 8 && elements.firstOfTwo.block == 8 &&
                      elements.secondOfTwo.block == 8);
        if (shape.rows < 8 && shape.products < (shape.rows <= 2 ? 8 : 4))
            return plainSums<T>(a.origin, a.rowStride, x.origin, dst.origin, sizeof(T), shape.rows, shape.products);
        return rowsTimesVector<T, elements>(a.origin, a.rowStride, x.origin, dst.origin, shape.rows, shape.products);
    }
    const auto matrix = operand(a.at(0)), vector = operand(x.at(0)), result = operand(dst.at(0));
    if constexpr (isScattered<D>) {
        generalVectorProduct<T, elements>(matrix, vector, result, shape);
        return korStatusOk;
    } else {
        return generalVectorProduct<T, elements>(matrix.origin, matrix.rowStep, vector.origin, vector.columnStep,
                                                 target(result, 0, 0), result.columnStep, matrix.columnStep, shape.rows,
                                                 shape.products);
    }
}

}  // namespace korm::inline KORM_VARIANT::products
