// Products of matrices, and of matrices and vectors. Which path a call takes decides the order of its sums; the tables
// are in forms.py and sums.h.
#pragma once

#include <cstdint>
#include <type_traits>

#include "entry/views.h"
#include "products/general.h"
#include "products/packed.h"
#include "products/rows.h"
#include "products/squares.h"
#include "products/streams.h"
#include "products/sums.h"
#include "products/vectors.h"

namespace korm {

template <class Count>
inline constexpr bool isSingleProduct = !std::is_same_v<Count, std::int32_t>;

template <class T, int n, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void squareProduct(const A& a, const B& b, const D& dst, Count count) {
    if constexpr (D::spacing == Spacing::rowAdjacent) squaresByRows<T, n>(a, b, dst, count);
    else if constexpr (isSingleProduct<Count>)
        squareObject<T, n>(operand(a.at(0)), operand(b.at(0)), operand(dst.at(0)));
    else squareObjects<T, n>(a, b, dst, count);
}

template <class SquareOrders, RowSums rows, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void product(const A& a, const B& b, const D& dst, ProductShape shape, Count count) {
    using T = typename D::Element;
    if constexpr (isTabled<D> && !isSingleProduct<Count>) {
        static_assert(rows == sums::zero_start);
        if (areStreams(a, b, dst, count)) return streamProduct<SquareOrders, false>(a, b, dst, shape, count);
    }
    if (shape.rows == shape.columns && shape.rows == shape.products) {
        if constexpr (SquareOrders::has(3))
            if (shape.rows == 3) return squareProduct<T, 3>(a, b, dst, count);
        if constexpr (SquareOrders::has(4))
            if (shape.rows == 4) return squareProduct<T, 4>(a, b, dst, count);
        if constexpr (SquareOrders::has(5))
            if (shape.rows == 5) return squareProduct<T, 5>(a, b, dst, count);
        if constexpr (SquareOrders::has(6))
            if (shape.rows == 6) return squareProduct<T, 6>(a, b, dst, count);
    }
    generalProducts<T, rows>(objectsOf(a), objectsOf(b), objectsOf(dst), shape, count);
}

template <class T, int n, class Order, class A, class X, class D, class Count>
[[gnu::always_inline]] inline void squareVectorProduct(const A& a, const X& x, const D& dst, Count count) {
    if constexpr (D::spacing == Spacing::rowAdjacent) squareVectors<T, n, Order>(a, x, dst, count);
    else if constexpr (isSingleProduct<Count>)
        squareVectorObject<T, n, Order>(operand(a.at(0)), operand(x.at(0)), operand(dst.at(0)));
    else squareVectorObjects<T, n, Order>(a, x, dst, count);
}

template <class Order, ElementSums elements, class A, class X, class D, class Count>
[[gnu::always_inline]] inline void vectorProduct(const A& a, const X& x, const D& dst, VectorProductShape shape,
                                                 Count count) {
    using T = typename D::Element;
    if constexpr (isTabled<D> && !isSingleProduct<Count>) {
        static_assert(std::is_same_v<Order, square::left_to_right> && elements == sums::vector_zero_start);
        if (areStreams(a, x, dst, count))
            return streamProduct<Squares<3, 4, 5, 6>, true>(a, x, dst, {shape.rows, shape.products, 1}, count);
    }
    if (shape.rows == shape.products) {
        if (shape.rows == 3) return squareVectorProduct<T, 3, Order>(a, x, dst, count);
        if (shape.rows == 4) return squareVectorProduct<T, 4, Order>(a, x, dst, count);
        if (shape.rows == 5) return squareVectorProduct<T, 5, Order>(a, x, dst, count);
        if (shape.rows == 6) return squareVectorProduct<T, 6, Order>(a, x, dst, count);
        if constexpr (D::spacing == Spacing::rowAdjacent && !isSingleProduct<Count>) {
            if (arePackedWithVectors<T, 8>(a, shape, count))
                return packedSquaresTimesVectors<T, elements.general, 8>(objectsOf(a), objectsOf(x), objectsOf(dst),
                                                                         count);
            if (arePackedWithVectors<T, 16>(a, shape, count))
                return packedSquaresTimesVectors<T, elements.general, 16>(objectsOf(a), objectsOf(x), objectsOf(dst),
                                                                          count);
        }
    }
    for (std::int32_t k = 0; k < count; ++k)
        generalVectorProduct<T, elements>(operand(a.at(k)), operand(x.at(k)), operand(dst.at(k)), shape);
}

}  // namespace korm
