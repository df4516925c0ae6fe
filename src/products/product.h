// Arrays of products of matrices, and of matrices and vectors. Which path a call takes decides the order of its sums; the tables
// are in forms.py and sums.h.
#pragma once

#include <cstdint>
#include <type_traits>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "products/common_shapes.h"
#include "products/gathered_rows.h"
#include "products/general.h"
#include "products/lanes.h"
#include "products/packed.h"
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
    const bool turns =
        dst.first.columnStep != sizeof(T) || (shape.rows == 1 && shape.columns > 1 && b.first.columnStep != sizeof(T));
    if (turns && dst.first.rowStep == sizeof(T)) {
        const ProductShape turned{shape.columns, shape.products, shape.rows};
        return productsOfGrids<T, SquareOrders, rows>(transposesOf(b), transposesOf(a), transposesOf(dst), turned,
                                                      count);
    }
    // One column or one row is a vector. Of doubles with few products strips are quicker.
    const auto areApart = [&](const GridOperand& matrix) {
        return matrix.rowStep != sizeof(T) && matrix.columnStep != sizeof(T) && (isFloat<T> || shape.products >= 4);
    };
    if (shape.columns == 1 && areApart(a.first))
        return gatheredRowsTimesVectors<T, rows.blocks>(a, transposesOf(b), transposesOf(dst),
                                                        {shape.rows, shape.products}, Start::zero, count);
    if (shape.rows == 1 && areApart(b.first))
        return gatheredRowsTimesVectors<T, rows.blocks>(transposesOf(b), a, dst, {shape.columns, shape.products},
                                                        Start::zero, count);
    const auto square = [&](auto n) __attribute__((always_inline)) {
        if constexpr (SquareOrders::has(n)) {
            squaresOfAnyStride<T, n>(a, b, dst, count);
            return true;
        } else if constexpr (isFloat<T> && n == 6 && rows == sums::zero_start) {
            const bool isPlain = havePlainRows<T>(a, b, dst);
            if (isPlain) plainSquares<T, n, false, false, Start::zero>(a, b, dst, count);
            return isPlain;
        } else {
            return false;
        }
    };
    if (shape.isSquare() && forOrder(shape.rows, square, [] { return false; })) return;
    if (multiplyCommonShape<T, sums::zero_start>(a, b, dst, shape, count)) return;
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
    static_assert(std::is_same_v<Order, square::left_to_right> && elements.uniform());
    const bool isSquare = shape.isSquare() && shape.rows >= 3 && shape.rows <= 6;
    if constexpr (isFloat<T>) {
        // Where rows or columns of a matrix touch, four elements come by one load, and are turned where they need to be.
        if (a.first.columnStep == sizeof(T) || a.first.rowStep == sizeof(T)) {
            if (isSquare) return squareVectorsInLanes<Lanes<T>, Order>(a, x, dst, shape.rows, count);
            if (multiplySmall<T>(a, x, dst, shape, elements, count)) return;
            for (std::int32_t k = 0; k < count; ++k)
                generalVectorProduct<T, elements>(a.at(k), x.at(k), dst.at(k), shape);
            return;
        }
    }
    gatheredRowsTimesVectors<T, elements.general>(a, x, dst, shape, isSquare ? Start::firstProduct : Start::zero,
                                                  count);
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

// --- One row times a transpose ---------------------------------------------------------------------

// It is the matrix times the row as a vector, which goes by products of neighbours. By a map of all shapes up to 20 products and
// 24 columns that takes 0.5 to 0.9 of the time that strips of elements take.
template <class T, Sum sum>
[[gnu::noinline]] bool multiplyRow(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                   ProductShape shape, std::int32_t count) {
    const bool isWorthIt = isFloat<T> ? shape.columns <= 8 : shape.columns == 1 || shape.products >= 6;
    return isWorthIt &&
           multiplyDots<T>(transposesOf(bs), as, dsts, {shape.columns, shape.products}, {sum, sum, sum, sum}, count);
}

// --- Any of these ----------------------------------------------------------------------------------

template <class SquareOrders, RowSums rows, class A, class B, class D>
[[gnu::always_inline]] inline void product(const A& a, const B& b, const D& dst, ProductShape shape,
                                           std::int32_t count) {
    using T = typename D::Element;
    if constexpr (isScattered<D>) {
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
        if constexpr (!isTransposed<A> && !isTransposed<B>)
            if (multiplyCommonShape<T, rows>(as, bs, dsts, shape, count)) return;
        if constexpr (isTransposed<B>)
            if (shape.rows == 1 && multiplyRow<T, rows.lastOfOne>(as, bs, dsts, shape, count)) return;
        if (multiplySmall<T>(as, bs, dsts, shape, rows, count)) return;
        generalProducts<T, rows>(as, bs, dsts, shape, count);
    }
}

template <class Order, ElementSums elements, class A, class X, class D>
[[gnu::always_inline]] inline void vectorProduct(const A& a, const X& x, const D& dst, VectorProductShape shape,
                                                 std::int32_t count) {
    using T = typename D::Element;
    const auto as = objectsOf(a), xs = objectsOf(x), dsts = objectsOf(dst);
    if constexpr (isScattered<D>) {
        static_assert(std::is_same_v<Order, square::left_to_right> && elements == sums::vector_zero_start);
        if (count >= laneCount<T> && areStreams(a, x, dst))
            return streamProduct<Squares<3, 4, 5, 6>, true>(a, x, dst, {shape.rows, shape.products, 1}, count);
        vectorProductsOfTables<T, Order, elements>(as, xs, dsts, shape, count);
    } else if constexpr (!isAdjacent<D>) {
        vectorProductsOfGrids<T, Order, elements>(as, xs, dsts, shape, count);
    } else {
        if (shape.isSquare()) {
            const auto square = [&](auto n) __attribute__((always_inline)) {
                squareVectorProduct<T, n, Order>(a, x, dst, count);
                return true;
            };
            if (forOrder(shape.rows, square, [] { return false; })) return;
            const auto packed = [&](auto n) __attribute__((always_inline)) {
                packedSquaresTimesVectors<T, elements.general, n>(as, xs, dsts, count);
            };
            if (arePackedWithVectors<T, 8>(a, shape, count)) return packed(Int<8>{});
            if (arePackedWithVectors<T, 16>(a, shape, count)) return packed(Int<16>{});
        }
        if constexpr (!isTransposed<A>)
            if (multiplyCommonShape<T, elements>(as, xs, dsts, shape, count)) return;
        if (multiplySmall<T>(as, xs, dsts, shape, elements, count)) return;
        for (std::int32_t k = 0; k < count; ++k) {
            const auto matrix = as.at(k), vector = xs.at(k), result = dsts.at(k);
            if constexpr (isTransposed<A>) generalVectorProduct<T, elements>(matrix, vector, result, shape);
            else
                rowsTimesVector<T, elements>(matrix.origin, matrix.rowStep, vector.origin, target(result, 0, 0),
                                             shape.rows, shape.products);
        }
    }
}

}  // namespace korm::inline KORM_VARIANT::products
