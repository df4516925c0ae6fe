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
#include "products/packed.h"
#include "products/squares.h"
#include "products/streams.h"
#include "products/sums.h"
#include "products/vectors.h"

namespace korm::inline KORM_VARIANT::products {

template <class SquareOrders, RowSums rows, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void product(const A& a, const B& b, const D& dst, ProductShape shape, Count count) {
    using T = typename D::Element;
    if constexpr (isScattered<D> && !isOneObject<Count>) {
        static_assert(rows == sums::zero_start);
        if (count >= laneCount<T> && areStreams(a, b, dst))
            return streamProduct<SquareOrders, false>(a, b, dst, shape, count);
    }
    const bool isSquare = shape.rows == shape.columns && shape.rows == shape.products;
    if constexpr (isOneObject<Count>) {
        if (isSquare) {
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
        generalProducts<T, rows>(objectsOf(a), objectsOf(b), objectsOf(dst), shape, count);
    } else {
        const auto as = objectsOf(a), bs = objectsOf(b), dsts = objectsOf(dst);
        const auto squares = [&](auto n) __attribute__((always_inline)) {
            if constexpr (SquareOrders::has(n)) squareProducts<T, n, A, B, D>(as, bs, dsts, count);
            return SquareOrders::has(n);
        };
        if (isSquare && forOrder(shape.rows, squares, [] { return false; })) return;
        generalProducts<T, rows>(as, bs, dsts, shape, count);
    }
}

template <class Order, ElementSums elements, class A, class X, class D, class Count>
[[gnu::always_inline]] inline void vectorProduct(const A& a, const X& x, const D& dst, VectorProductShape shape,
                                                 Count count) {
    using T = typename D::Element;
    if constexpr (isScattered<D> && !isOneObject<Count>) {
        static_assert(std::is_same_v<Order, square::left_to_right> && elements == sums::vector_zero_start);
        if (count >= laneCount<T> && areStreams(a, x, dst))
            return streamProduct<Squares<3, 4, 5, 6>, true>(a, x, dst, {shape.rows, shape.products, 1}, count);
    }
    if (shape.rows == shape.products) {
        const auto square = [&](auto n) __attribute__((always_inline)) {
            squareVectorProduct<T, n, Order>(a, x, dst, count);
            return true;
        };
        if (forOrder(shape.rows, square, [] { return false; })) return;
        if constexpr (isAdjacent<D> && !isOneObject<Count>) {
            const auto packed = [&](auto n) __attribute__((always_inline)) {
                packedSquaresTimesVectors<T, elements.general, n>(objectsOf(a), objectsOf(x), objectsOf(dst), count);
            };
            if (arePackedWithVectors<T, 8>(a, shape, count)) return packed(Int<8>{});
            if (arePackedWithVectors<T, 16>(a, shape, count)) return packed(Int<16>{});
        }
    }
    for (std::int32_t k = 0; k < count; ++k)
        generalVectorProduct<T, elements>(operand(a.at(k)), operand(x.at(k)), operand(dst.at(k)), shape);
}

}  // namespace korm::inline KORM_VARIANT::products
