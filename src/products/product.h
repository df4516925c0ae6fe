// Products of matrices, and of matrices and vectors. Which path a call takes decides the order of its sums; the tables
// are in forms.py and sums.h.
#pragma once

#include <cstdint>
#include <type_traits>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "products/general.h"
#include "products/lanes.h"
#include "products/packed.h"
#include "products/plain.h"
#include "products/squares.h"
#include "products/streams.h"
#include "products/sums.h"
#include "products/vectors.h"

namespace korm::inline KORM_VARIANT::products {

// --- Arrays with any strides, and tables ----------------------------------------------------------

// One function for all operands and layouts, since strides tell all that differs.
template <class T, class SquareOrders, RowSums rows>
[[gnu::noinline]] void productsOfGrids(const GridObjects& a, const GridObjects& b, const GridObjects& dst,
                                       ProductShape shape, std::int32_t count) {
    // By columns a product is that of the transposes by rows, and all elements have the same sum.
    static_assert(rows.uniform());
    if (dst.first.rowStep == sizeof(T) && dst.first.columnStep != sizeof(T)) {
        const ProductShape turned{shape.columns, shape.products, shape.rows};
        return productsOfGrids<T, SquareOrders, rows>(transposesOf(b), transposesOf(a), transposesOf(dst), turned,
                                                      count);
    }
    const auto square = [&](auto n) __attribute__((always_inline)) {
        if constexpr (SquareOrders::has(n)) squaresOfAnyStride<T, n>(a, b, dst, count);
        return SquareOrders::has(n);
    };
    if (shape.isSquare() && forOrder(shape.rows, square, [] { return false; })) return;
    if (multiplySmall<T>(a, b, dst, shape, rows, count)) return;
    generalProducts<T, rows>(a, b, dst, shape, count);
}

// Tables that lead to elements at fixed distances are read as what they lead to.
template <class T, class SquareOrders, RowSums rows>
[[gnu::noinline]] void productsOfTables(const TableObjects& a, const TableObjects& b, const TableObjects& dst,
                                        ProductShape shape, std::int32_t count) {
    GridObjects left{}, right{}, result{};
    if (count >= laneCount<T> && isGrid<T>(a, shape.rows, shape.products, left) &&
        isGrid<T>(b, shape.products, shape.columns, right) && isGrid<T>(dst, shape.rows, shape.columns, result))
        return productsOfGrids<T, SquareOrders, rows>(left, right, result, shape, count);
    if (shape.isSquare() && SquareOrders::has(shape.rows))
        return squaresInLanes<Lanes<T>>(a, b, dst, shape.rows, count);
    generalProducts<T, rows>(a, b, dst, shape, count);
}

template <class T, class Order, ElementSums elements>
[[gnu::noinline]] void vectorProductsOfGrids(const GridObjects& a, const GridObjects& x, const GridObjects& dst,
                                             VectorProductShape shape, std::int32_t count) {
    if (shape.isSquare() && shape.rows >= 3 && shape.rows <= 6)
        return squareVectorsInLanes<Lanes<T>, Order>(a, x, dst, shape.rows, count);
    if (multiplySmall<T>(a, x, dst, shape, elements, count)) return;
    for (std::int32_t k = 0; k < count; ++k) generalVectorProduct<T, elements>(a.at(k), x.at(k), dst.at(k), shape);
}

template <class T, class Order, ElementSums elements>
[[gnu::noinline]] void vectorProductsOfTables(const TableObjects& a, const TableObjects& x, const TableObjects& dst,
                                              VectorProductShape shape, std::int32_t count) {
    if (shape.isSquare() && shape.rows >= 3 && shape.rows <= 6)
        return squareVectorsInLanes<Lanes<T>, Order>(a, x, dst, shape.rows, count);
    GridObjects left{}, right{}, result{};
    if (count >= laneCount<T> && isGrid<T>(a, shape.rows, shape.products, left) &&
        isGrid<T>(x, 1, shape.products, right) && isGrid<T>(dst, 1, shape.rows, result) &&
        multiplySmall<T>(left, right, result, shape, elements, count))
        return;
    for (std::int32_t k = 0; k < count; ++k) generalVectorProduct<T, elements>(a.at(k), x.at(k), dst.at(k), shape);
}

// --- Any of these ----------------------------------------------------------------------------------

template <class SquareOrders, RowSums rows, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void product(const A& a, const B& b, const D& dst, ProductShape shape, Count count) {
    using T = typename D::Element;
    if constexpr (isOneObject<Count>) {
        if (shape.isSquare()) {
            const auto square = [&](auto n) __attribute__((always_inline)) {
                if constexpr (SquareOrders::has(n)) squareProduct<T, n>(a, b, dst);
                return SquareOrders::has(n);
            };
            if (forOrder(shape.rows, square, [] { return false; })) return;
            if constexpr (isAdjacent<A> && isAdjacent<B> && isAdjacent<D>) {
                constexpr std::ptrdiff_t row = 8 * sizeof(T);
                if (shape.rows == 8 && a.rowStride == row && b.rowStride == row && dst.rowStride == row)
                    return packedSquare<T, rows.blocks, 8>(a.origin, b.origin, dst.origin);
            }
        }
        // One column whose elements touch is as good as a row.
        if constexpr (isAdjacent<D> && !isTransposed<A> && (isTransposed<B> || !isFloat<T>))
            if (areFewDots<T>(shape) && (isTransposed<B> || (shape.columns == 1 && b.rowStride == sizeof(T))))
                return plainDots<T, rows>(a.origin, a.rowStride, b.origin, storedStride(b), dst.origin, dst.rowStride,
                                          shape);
        if constexpr (!isScattered<D>)
            if (isPlain<T, rows>(shape, isAdjacent<B> && isAdjacent<D>)) {
                const GridOperand x = operand(a.at(0)), y = operand(b.at(0)), z = operand(dst.at(0));
                return plainProduct<T, rows>(x.origin, x.rowStep, x.columnStep, y.origin, y.rowStep, y.columnStep,
                                             target(z, 0, 0), z.rowStep, z.columnStep, shape);
            }
        generalProducts<T, rows>(objectsOf(a), objectsOf(b), objectsOf(dst), shape, count);
    } else if constexpr (isScattered<D>) {
        static_assert(rows == sums::zero_start);
        if (count >= laneCount<T> && areStreams(a, b, dst))
            return streamProduct<SquareOrders, false>(a, b, dst, shape, count);
        productsOfTables<T, SquareOrders, rows>(objectsOf(a), objectsOf(b), objectsOf(dst), shape, count);
    } else if constexpr (!isAdjacent<D>) {
        productsOfGrids<T, SquareOrders, rows>(objectsOf(a), objectsOf(b), objectsOf(dst), shape, count);
    } else {
        const auto as = objectsOf(a), bs = objectsOf(b), dsts = objectsOf(dst);
        const auto square = [&](auto n) __attribute__((always_inline)) {
            if constexpr (SquareOrders::has(n)) squareProducts<T, n, A, B, D>(as, bs, dsts, count);
            return SquareOrders::has(n);
        };
        if (shape.isSquare() && forOrder(shape.rows, square, [] { return false; })) return;
        if (multiplySmall<T>(as, bs, dsts, shape, rows, count)) return;
        generalProducts<T, rows>(as, bs, dsts, shape, count);
    }
}

template <class Order, ElementSums elements, class A, class X, class D, class Count>
[[gnu::always_inline]] inline void vectorProduct(const A& a, const X& x, const D& dst, VectorProductShape shape,
                                                 Count count) {
    using T = typename D::Element;
    if constexpr (!isOneObject<Count> && isScattered<D>) {
        static_assert(std::is_same_v<Order, square::left_to_right> && elements == sums::vector_zero_start);
        if (count >= laneCount<T> && areStreams(a, x, dst))
            return streamProduct<Squares<3, 4, 5, 6>, true>(a, x, dst, {shape.rows, shape.products, 1}, count);
        vectorProductsOfTables<T, Order, elements>(objectsOf(a), objectsOf(x), objectsOf(dst), shape, count);
    } else if constexpr (!isOneObject<Count> && !isAdjacent<D>) {
        vectorProductsOfGrids<T, Order, elements>(objectsOf(a), objectsOf(x), objectsOf(dst), shape, count);
    } else {
        if (shape.isSquare()) {
            const auto square = [&](auto n) __attribute__((always_inline)) {
                squareVectorProduct<T, n, Order>(a, x, dst, count);
                return true;
            };
            if (forOrder(shape.rows, square, [] { return false; })) return;
            if constexpr (!isOneObject<Count>) {
                const auto packed = [&](auto n) __attribute__((always_inline)) {
                    packedSquaresTimesVectors<T, elements.general, n>(objectsOf(a), objectsOf(x), objectsOf(dst),
                                                                      count);
                };
                if (arePackedWithVectors<T, 8>(a, shape, count)) return packed(Int<8>{});
                if (arePackedWithVectors<T, 16>(a, shape, count)) return packed(Int<16>{});
            }
        }
        if constexpr (!isOneObject<Count>)
            if (multiplySmall<T>(objectsOf(a), objectsOf(x), objectsOf(dst), shape, elements, count)) return;
        if constexpr (isOneObject<Count> && isAdjacent<D> && !isTransposed<A>)
            if (shape.rows <= 3)
                return plainDots<T, elements>(a.origin, a.rowStride, x.origin, 0, dst.origin, sizeof(T),
                                              {shape.rows, shape.products, 1});
        for (std::int32_t k = 0; k < count; ++k)
            generalVectorProduct<T, elements>(operand(a.at(k)), operand(x.at(k)), operand(dst.at(k)), shape);
    }
}

}  // namespace korm::inline KORM_VARIANT::products
