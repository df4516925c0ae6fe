// One small product of any shape, by plain loops: what a larger product gains by being prepared for, a small one loses.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/dots.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// --- Which sums ------------------------------------------------------------------------------------

// The shape of sum of row `i` of `height`.
template <RowSums rows>
[[gnu::always_inline]] inline Sum sumOfRow(std::ptrdiff_t i, std::ptrdiff_t height) {
    const std::ptrdiff_t left = height & 3;
    if (rows.uniform() || i < height - left) return rows.blocks;
    if (left == 3) return rows.lastThree;
    if (left == 1) return rows.lastOfOne;
    return i == height - 2 ? rows.firstOfTwo : rows.secondOfTwo;
}

template <ElementSums elements>
[[gnu::always_inline]] inline Sum sumOfRow(std::ptrdiff_t i, std::ptrdiff_t height) {
    const std::ptrdiff_t left = (height & 7) <= 2 ? height & 7 : 0;
    if (i < height - left) return elements.general;
    if (left == 1) return elements.lastOfOne;
    return i == height - 2 ? elements.firstOfTwo : elements.secondOfTwo;
}

// Products of an element from which on some have more than two partial sums.
template <RowSums rows>
constexpr int productsOfTwoSums() {
    int products = 64;
    for (const Sum sum : {rows.blocks, rows.lastOfOne, rows.firstOfTwo, rows.secondOfTwo, rows.lastThree})
        if (sum.partials > 2) products = std::min(products, sum.block);
    return products;
}

template <ElementSums elements>
constexpr int productsOfTwoSums() {
    int products = 64;
    for (const Sum sum : {elements.general, elements.lastOfOne, elements.firstOfTwo, elements.secondOfTwo})
        if (sum.partials > 2) products = std::min(products, sum.block);
    return products;
}

// --- Along rows of the result ----------------------------------------------------------------------

// An element of the result, or a vector of neighbours.
template <class V>
[[gnu::always_inline]] inline V sumOfProducts(bool isPaired, const std::byte* a, std::ptrdiff_t aStep,
                                              const std::byte* b, std::ptrdiff_t bStep, std::ptrdiff_t products) {
    V sum{};
    const auto addTo = [&](V & to) __attribute__((always_inline)) {
        to += spread<V>(a) * load<V>(b);
        a += aStep;
        b += bStep;
    };
    if (isPaired) {
        V odd{};
        for (; products > 1; products -= 2) {
            addTo(sum);
            addTo(odd);
        }
        sum += odd;
    }
    for (; products > 0; --products) addTo(sum);
    return sum;
}

// Few products, or so few columns that there are no vectors of them.
template <class T, auto rows>
[[gnu::always_inline]] inline bool isPlain(ProductShape shape, bool isAdjacent) {
    const std::int64_t products = std::int64_t{shape.rows} * shape.products * shape.columns;
    return shape.products < productsOfTwoSums<rows>() && std::max(shape.rows, shape.columns) <= 64 &&
           products <= (isAdjacent && shape.columns >= lanes16<T> ? 48 : 96);
}

template <class T, auto rows>
[[gnu::noinline]] void plainProduct(const std::byte* a, std::ptrdiff_t aRow, std::ptrdiff_t aStep, const std::byte* b,
                                    std::ptrdiff_t bStep, std::ptrdiff_t bColumn, std::byte* to, std::ptrdiff_t toRow,
                                    std::ptrdiff_t toColumn, ProductShape shape) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t height = shape.rows, products = shape.products;
    const bool inVectors = shape.columns >= lanes16<T> && bColumn == size && toColumn == size;
    // The last vector ends with the row.
    const std::ptrdiff_t last = (shape.columns - lanes16<T>)*size;
    for (std::ptrdiff_t i = 0; i < height; ++i, a += aRow, to += toRow) {
        // Two sums of one or two products each are the same as one.
        const bool isPaired = sumOfRow<rows>(i, height) == Sum{2, 2} && products >= 4;
        if (inVectors) {
            for (std::ptrdiff_t j = 0;; j = std::min<std::ptrdiff_t>(j + 16, last)) {
                storeLanes(to + j, sumOfProducts<Vec16<T>>(isPaired, a, aStep, b + j, bStep, products));
                if (j == last) break;
            }
        } else {
            const std::byte* column = b;
            std::byte* element = to;
            for (std::ptrdiff_t j = shape.columns; j > 0; --j, column += bColumn, element += toColumn)
                store(element, sumOfProducts<T>(isPaired, a, aStep, column, bStep, products));
        }
    }
}

// --- Along the products ----------------------------------------------------------------------------

// Sums of which every partial sum has a lane of its own when k is read along vectors.
template <class T, int vectors>
[[gnu::always_inline]] inline T sumOfBlocks(const std::byte* a, const std::byte* b, std::ptrdiff_t end) {
    Vec16<T> partial[vectors] = {};
    for (std::ptrdiff_t at = 0; at < end; at += 16 * vectors)
        unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
            partial[v] += load<Vec16<T>>(a + at + 16 * v) * load<Vec16<T>>(b + at + 16 * v);
        });
    const Vec16<T> l = joinedVectors(partial);
    if constexpr (isFloat<T>) return (l[0] + l[2]) + (l[1] + l[3]);
    else return l[0] + l[1];
}

// More results are faster a vector at a time.
template <class T>
[[gnu::always_inline]] inline bool areFewDots(ProductShape shape) {
    return std::int64_t{shape.rows} * shape.columns <= (isFloat<T> ? 20 : 12);
}

// Rows of the left and columns of the right operand touch.
template <class T, auto rows>
[[gnu::noinline]] void plainDots(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b, std::ptrdiff_t bColumn,
                                 std::byte* to, std::ptrdiff_t toRow, ProductShape shape) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t height = shape.rows, end = shape.products * size;
    for (std::ptrdiff_t i = 0; i < height; ++i, a += aRow, to += toRow) {
        const Sum shapeOfSum = sumOfRow<rows>(i, height);
        const int vectors = shapeOfSum.partials / lanes16<T>;
        const std::ptrdiff_t inBlocks = end & -static_cast<std::ptrdiff_t>(shapeOfSum.block * size);
        const std::byte* column = b;
        std::byte* element = to;
        for (std::ptrdiff_t j = shape.columns; j > 0; --j, column += bColumn, element += size) {
            std::ptrdiff_t at = 0;
            T sum{};
            if (vectors > 0 && inBlocks > 0) {
                if (vectors == 1) sum = sumOfBlocks<T, 1>(a, column, inBlocks);
                else if (vectors == 2) sum = sumOfBlocks<T, 2>(a, column, inBlocks);
                else sum = sumOfBlocks<T, 4>(a, column, inBlocks);
                at = inBlocks;
            }
            for (; at < end; at += size) {
                sum += load<T>(a + at) * load<T>(column + at);
                asm("" : "+x"(sum));  // else gcc multiplies two at a time, which takes longer for so few
            }
            store(element, sum);
        }
    }
}

}  // namespace korm::inline KORM_VARIANT::products
