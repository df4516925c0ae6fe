// One small product of any shape, by plain loops: what a larger product gains by being prepared for, a small one loses.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// The shape of sum of a row.
template <RowSums rows>
[[gnu::always_inline]] inline Sum sumOfRow(std::ptrdiff_t i, std::ptrdiff_t height) {
    const std::ptrdiff_t left = height % 4;
    if (rows.uniform() || i < height - left) return rows.blocks;
    if (left == 3) return rows.lastThree;
    if (left == 1) return rows.lastOfOne;
    return i == height - 2 ? rows.firstOfTwo : rows.secondOfTwo;
}

// Steps along the products.
struct Steps {
    std::ptrdiff_t a, b;
};

// An element of the result, or a vector of neighbours, in up to two partial sums.
template <class V>
[[gnu::always_inline]] inline V sumOfProducts(Sum shape, const std::byte* a, const std::byte* b, Steps step,
                                              std::ptrdiff_t products) {
    std::ptrdiff_t k = 0;
    const auto product = [&](std::ptrdiff_t at) __attribute__((always_inline)) {
        return spread<V>(a + at * step.a) * load<V>(b + at * step.b);
    };
    V sum{};
    // Two sums of one or two products each are the same as one.
    if (shape.partials == 2 && products >= 4) {
        V partial[2] = {};
        for (; k < products - products % shape.block; k += 2) {
            partial[0] += product(k);
            partial[1] += product(k + 1);
        }
        sum = joined<ElementOf<V>>(partial);
    }
    for (; k < products; ++k) sum += product(k);
    return sum;
}

// Products of an element from which on some have more than two partial sums.
template <RowSums rows>
constexpr int productsOfTwoSums() {
    int products = 64;
    for (const Sum sum : {rows.blocks, rows.lastOfOne, rows.firstOfTwo, rows.secondOfTwo, rows.lastThree})
        if (sum.partials > 2) products = std::min(products, sum.block);
    return products;
}

// Few products, or so few columns that there are no vectors of them.
template <class T, RowSums rows>
[[gnu::always_inline]] inline bool isPlain(ProductShape shape, bool isAdjacent) {
    const std::int64_t products = std::int64_t{shape.rows} * shape.products * shape.columns;
    return shape.products < productsOfTwoSums<rows>() && std::max(shape.rows, shape.columns) <= 64 &&
           products <= (isAdjacent && shape.columns >= lanes16<T> ? 48 : 96);
}

template <class T, RowSums rows>
[[gnu::noinline]] void plainProduct(const std::byte* a, std::ptrdiff_t aRow, std::ptrdiff_t aStep, const std::byte* b,
                                    std::ptrdiff_t bStep, std::ptrdiff_t bColumn, std::byte* to, std::ptrdiff_t toRow,
                                    std::ptrdiff_t toColumn, ProductShape shape) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const Steps step{aStep, bStep};
    const bool inVectors = shape.columns >= lanes16<T> && bColumn == size && toColumn == size;
    // The last vector ends with the row.
    const std::ptrdiff_t last = (shape.columns - lanes16<T>)*size;
    for (std::ptrdiff_t i = 0; i < shape.rows; ++i, a += aRow, to += toRow) {
        Sum sum = sumOfRow<rows>(i, shape.rows);
        if (shape.products < sum.block) sum = zeroStart;
        if (inVectors) {
            for (std::ptrdiff_t j = 0;; j = std::min<std::ptrdiff_t>(j + 16, last)) {
                storeLanes(to + j, sumOfProducts<Vec16<T>>(sum, a, b + j, step, shape.products));
                if (j == last) break;
            }
        } else {
            const std::byte* column = b;
            std::byte* element = to;
            for (std::ptrdiff_t j = shape.columns; j > 0; --j, column += bColumn, element += toColumn)
                store(element, sumOfProducts<T>(sum, a, column, step, shape.products));
        }
    }
}

}  // namespace korm::inline KORM_VARIANT::products
