// Products of a matrix and a vector.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "products/columns.h"
#include "products/dots.h"
#include "products/objects.h"
#include "products/operands.h"
#include "products/rows.h"
#include "products/sums.h"

namespace korm {

// --- Square matrices of order 3 to 6 -------------------------------------------------------------

template <int n, class Order, class S>
[[gnu::noinline]] void multiplySquareVector(const S* a, const S* x, S* y) {
    for (int i = 0; i < n; ++i) {
        S p[n];
        for (int k = 0; k < n; ++k) p[k] = a[i * n + k] * x[k];
        y[i] = square::sum<Order, n>(p, i);
    }
}

template <class T, int n, class Order, class Operand>
[[gnu::noinline]] void squareVectorObject(const Operand& a, const Operand& x, const Operand& dst) {
    T matrix[n * n], vector[n], result[n];
    for (int i = 0; i < n; ++i) {
        vector[i] = load<T>(x.address(0, i));
        for (int j = 0; j < n; ++j) matrix[i * n + j] = load<T>(a.address(i, j));
    }
    multiplySquareVector<n, Order>(matrix, vector, result);
    for (int i = 0; i < n; ++i) store(target(dst, 0, i), result[i]);
}

template <class T, int n, class Order, class A, class X, class D>
[[gnu::noinline]] void squareVectorObjects(const A& a, const X& x, const D& dst, std::int32_t count) {
    Lanes<T> matrix[n * n], vector[n], result[n];
    int here;
    for (std::int32_t k = 0; k < count; k += here) {
        here = std::min(laneCount<T>, count - k);
        if (!isShared<A> || k == 0) gatherArray<n, n>(a, k, here, matrix);
        if (!isShared<X> || k == 0) gatherArray<1, n>(x, k, here, vector);
        multiplySquareVector<n, Order>(matrix, vector, result);
        scatterArray<1, n>(dst, k, here, result);
    }
}

// Elements of the result as vectors: column k of the matrix times element k of the vector gives product k of all.
template <class T, int n, class Order>
[[gnu::always_inline]] inline void multiplyColumns(const RightRows<T, n>& columns, const std::byte* x, std::byte* to) {
    using Parts = RowParts<T, n>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    Lanes<T> factor[n];
    unrolled<n>([&](auto k) __attribute__((always_inline)) { factor[k] = spread<T>(x + k * size); });
    unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
        Lanes<T> product[n];
        unrolled<n>([&](auto k) __attribute__((always_inline)) { product[k] = columns.whole[k][v] * factor[k]; });
        storeLanes(to + 16 * v, square::sum<Order, n>(product, v * laneCount<T>));
    });
    if constexpr (Parts::rest > 0) {
        Lanes<T> product[n];
        unrolled<n>([&](auto k) __attribute__((always_inline)) { product[k] = columns.rest[k] * factor[k]; });
        constexpr int first = Parts::whole * laneCount<T>;
        storeRest<T, Parts::rest>(to + first * size, square::sum<Order, n>(product, first), 0);
    }
}

// Plain operands.
template <class T, int n, class Order, class A, class X, class D, class Count>
[[gnu::always_inline]] inline void squareVectorsByColumns(const A& a, const X& x, const D& dst, Count count) {
    const std::ptrdiff_t stride = storedStride(a);
    const auto columns = [&](std::int32_t k) __attribute__((always_inline)) {
        return rightRows<T, n, !isTurnedView<A>>(a.at(k).origin, stride);
    };
    if constexpr (isShared<A>) {
        const auto held = columns(0);
        for (std::int32_t k = 0; k < count; ++k) multiplyColumns<T, n, Order>(held, x.at(k).origin, dst.at(k).origin);
    } else {
        for (std::int32_t k = 0; k < count; ++k)
            multiplyColumns<T, n, Order>(columns(k), x.at(k).origin, dst.at(k).origin);
    }
}

// --- Any shape -----------------------------------------------------------------------------------

// One element, whatever its shape of sum.
template <class T, Sum shape, class Operand>
T elementSum(const Operand& a, std::ptrdiff_t i, const Operand& x, std::ptrdiff_t products) {
    const auto product = [&](std::ptrdiff_t k) { return load<T>(a.address(i, k)) * load<T>(x.address(0, k)); };
    const std::ptrdiff_t inBlocks = products - products % shape.block;
    std::ptrdiff_t k = 0;
    T sum{};
    if (inBlocks > 0) {
        T partial[shape.partials] = {};
        for (; k < inBlocks; k += shape.partials)
            for (int c = 0; c < shape.partials; ++c) partial[c] += product(k + c);
        sum = joined<T>(partial);
    }
    for (; k < products; ++k) sum += product(k);
    return sum;
}

// Elements of the result from `first` up to `end`, all of one shape.
template <class T, Sum shape, class Operand>
void elementSums(const Operand& a, const Operand& x, const Operand& dst, std::ptrdiff_t first, std::ptrdiff_t end,
                 std::ptrdiff_t products) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = laneCount<T>;
    if constexpr (std::is_same_v<Operand, GridOperand>) {
        const bool adjacent = dst.columnStep == size && end - first >= lanes;
        // k along vectors: rows of the matrix and the vector are contiguous.
        if constexpr (shape.partials % lanes == 0) {
            if (adjacent && a.columnStep == size && x.columnStep == size) {
                constexpr int groups = dotGroups<T>(shape);
                std::ptrdiff_t i = first;
                for (; i + groups * lanes <= end; i += groups * lanes)
                    dotVector<T, shape, groups>(x.origin, a.origin + i * a.rowStep, a.rowStep, products,
                                                target(dst, 0, i));
                for (; i < end; i += lanes) {
                    const std::ptrdiff_t at = std::min(i, end - lanes);
                    dotVector<T, shape, 1>(x.origin, a.origin + at * a.rowStep, a.rowStep, products,
                                           target(dst, 0, at));
                }
                return;
            }
        }
        // Elements of the result along vectors: columns of the matrix are contiguous.
        if (adjacent && a.rowStep == size) {
            const LeftRows left{x.origin, 0, x.columnStep};
            constexpr int wide = 8 / sumsAtOnce(shape);
            std::ptrdiff_t i = first;
            for (; i + wide * lanes <= end; i += wide * lanes)
                tiles<T, shape, 1, wide>(left, {a.origin + i * size, a.columnStep, (wide - 1) * 16}, products,
                                         {target(dst, 0, i), 0, (wide - 1) * 16}, 1);
            std::ptrdiff_t width;
            for (; i < end; i += width) {
                const int vectors = nextPanel<T>(end - i);
                width = std::min<std::ptrdiff_t>(vectors * lanes, end - i);
                const std::ptrdiff_t last = (width - lanes) * size;
                tilesOf<T, shape, 1>(vectors, left, {a.origin + i * size, a.columnStep, last}, products,
                                     {target(dst, 0, i), 0, last}, 1);
            }
            return;
        }
    }
    for (std::ptrdiff_t i = first; i < end; ++i) store(target(dst, 0, i), elementSum<T, shape>(a, i, x, products));
}

template <class T, ElementSums elements, class Operand>
[[gnu::noinline]] void generalVectorProduct(const Operand& a, const Operand& x, const Operand& dst,
                                            VectorProductShape shape) {
    const std::ptrdiff_t rows = shape.rows;
    const std::ptrdiff_t products = shape.products;
    const std::ptrdiff_t left = rows % 8 <= 2 ? rows % 8 : 0;
    if (left < rows) elementSums<T, elements.general>(a, x, dst, 0, rows - left, products);
    if (left == 1) elementSums<T, elements.lastOfOne>(a, x, dst, rows - 1, rows, products);
    if (left == 2) {
        elementSums<T, elements.firstOfTwo>(a, x, dst, rows - 2, rows - 1, products);
        elementSums<T, elements.secondOfTwo>(a, x, dst, rows - 1, rows, products);
    }
}

}  // namespace korm
