// Packed arrays of the shapes in common use, those of points, projections, Jacobians and covariances, with all sizes known when
// compiling. Rows of the result with whole vectors are such vectors, one object after the other; of smaller results each lane
// has an object, and objects that follow one another are turned in registers.
//
// Objects are so small that what other paths decide for each strip of elements takes longer than the products: 2 by 2 matrices
// of floats take 0.8 ns instead of 2.8, 3 by 4 ones times vectors 1.2 instead of 3.8, 6 by 3 times 3 by 6 7.2 instead of 12.5.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/packed_groups.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/blocks.h"
#include "products/elements.h"
#include "products/operands.h"
#include "products/rows.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// --- Sums --------------------------------------------------------------------------------------------

// Of every row of the result, named by what they come to with so many products: shapes whose sums are the same in several
// kernels share their instance.
template <int rows>
struct SumsOfRows {
    Sum of[rows];
};

template <int rows, int products, class Sums>
constexpr SumsOfRows<rows> sumsOfRows(const Sums& sums) {
    const RowGroups groups = rowGroups(sums, rows);
    SumsOfRows<rows> result{};
    int i = 0;
    for (const RowGroups::Group& group : groups.of)
        for (int r = 0; r < group.rows; ++r) result.of[i++] = sumOf(group.sum, products);
    return result;
}

// --- Where packed objects lie -----------------------------------------------------------------------

template <class T>
[[gnu::always_inline]] inline bool arePacked(const GridObjects& objects, int height, int width) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t row = width * size;
    return objects.list == nullptr && (width == 1 || objects.first.columnStep == size) &&
           (height == 1 || objects.first.rowStep == row) && (objects.step == 0 || objects.step == height * row);
}

struct PackedObjects {
    const std::byte *a, *b;
    std::byte* to;
    std::ptrdiff_t count;
};

// --- One object in each lane --------------------------------------------------------------------------

template <int length, class S>
[[gnu::always_inline]] inline void spreadElements(const std::byte* from, S (&to)[length]) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(ElementOf<S>));
    unrolled<length>([&](auto e) __attribute__((always_inline)) { to[e] = spread<S>(from + e * size); });
}

// The last group ends with the last object.
template <class S, int rows, int products, int columns, SumsOfRows<rows> sums, bool sharesA, bool sharesB>
[[gnu::noinline]] void packedInLanes(const PackedObjects& objects) {
    using T = ElementOf<S>;
    constexpr int lanes = lanesOf<S>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr std::ptrdiff_t ofA = sharesA ? 0 : rows * products * size, ofB = sharesB ? 0 : products * columns * size,
                             ofTo = rows * columns * size;
    constexpr bool turnsProducts = lanes == 4 && columns == 1 && rows * products == 4 && products > 1;
    PackedObjects at = objects;
    const auto advance = [&](std::ptrdiff_t count) __attribute__((always_inline)) {
        at.a += count * ofA;
        at.b += count * ofB;
        at.to += count * ofTo;
        at.count -= count;
    };
    S a[rows * products], b[products * columns], to[rows * columns];
    if constexpr (sharesA) spreadElements(at.a, a);
    if constexpr (sharesB) spreadElements(at.b, b);
    while (true) {
        if constexpr (turnsProducts) {
            // Where a vector is all rows of an object, products of neighbours are turned, and not both operands.
            S product[4];
            unrolled<4>([&](auto v) __attribute__((always_inline)) {
                const S left = load<S>(at.a + (sharesA ? 0 : 16 * v));
                const std::byte* const b = at.b + (sharesB ? 0 : products * size * v);
                if constexpr (products == 4) product[v] = left * load<S>(b);
                else product[v] = left * pairTwice(b);
            });
            if constexpr (products == 4) {
                transpose(product);
                store(at.to, sumOfProducts<T, sums.of[0], products>([&](auto l) __attribute__((always_inline)) {
                          return product[l];
                      }));
            } else {
                unrolled<2>([&](auto pair) __attribute__((always_inline)) {
                    const S first = product[2 * pair], second = product[2 * pair + 1];
                    store(at.to + 16 * pair, zeroStarted(__builtin_shufflevector(first, second, 0, 2, 4, 6) +
                                                         __builtin_shufflevector(first, second, 1, 3, 5, 7)));
                });
            }
        } else {
            if constexpr (!sharesA) readPacked(at.a, a);
            if constexpr (!sharesB) readPacked(at.b, b);
            unrolled<rows * columns>([&](auto e) __attribute__((always_inline)) {
                constexpr int i = e / columns, j = e % columns;
                to[e] = sumOfProducts<T, sums.of[i], products>([&](auto l) __attribute__((always_inline)) {
                    return a[i * products + l] * b[l * columns + j];
                });
            });
            writePacked(at.to, to);
        }
        advance(lanes);
        if (at.count >= lanes) continue;
        if (at.count == 0) return;
        advance(at.count - lanes);
    }
}

// --- Rows as vectors ------------------------------------------------------------------------------------

// What is left over of a row shares its vector with other rows, as in rows.h. The right operand may be read as its transpose.
template <class T, int rows, int products, int columns, SumsOfRows<rows> sums, bool sharesA, bool sharesB, bool turnB>
[[gnu::noinline]] void packedByRows(const PackedObjects& objects) {
    using V = Vec16<T>;
    using Parts = RowParts<T, columns>;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr std::ptrdiff_t aRow = products * size, row = columns * size;
    constexpr bool hasRest = Parts::rest > 0;
    const PackedObjects at = objects;
    // A single row uses the right operand once.
    constexpr bool holds = sharesB || rows > 1;
    const auto rightPart = [](const std::byte* from, auto l, auto v) __attribute__((always_inline)) {
        constexpr std::ptrdiff_t stride = turnB ? products * size : row;
        constexpr int count = v < Parts::whole ? lanes16<T> : Parts::rest;
        return rowPart<T, count, turnB>(from, stride, l, v * lanes16<T>);
    };
    V heldA[rows * products], heldB[products][Parts::whole + hasRest];
    const auto holdRight = [&](const std::byte* from) __attribute__((always_inline)) {
        unrolled<products>([&](auto l) __attribute__((always_inline)) {
            unrolled<Parts::whole + hasRest>([&](auto v) __attribute__((always_inline)) {
                heldB[l][v] = rightPart(from, l, v);
            });
        });
    };
    if constexpr (sharesA) spreadElements(at.a, heldA);
    if constexpr (sharesB) holdRight(at.b);
    for (std::ptrdiff_t k = 0; k < at.count; ++k) {
        const std::byte* const a = sharesA ? at.a : at.a + k * (rows * aRow);
        std::byte* const to = at.to + k * (rows * row);
        const std::byte* const b = sharesB ? at.b : at.b + k * (products * row);
        if constexpr (holds && !sharesB) holdRight(b);
        const auto right = [&](auto l, auto v) __attribute__((always_inline)) {
            if constexpr (holds) return heldB[l][v];
            else return rightPart(b, l, v);
        };
        const LeftInPlace<T, products, false> left{a, aRow};
        const auto factor = [&](auto i, auto l) __attribute__((always_inline)) {
            if constexpr (sharesA) return heldA[i * products + l];
            else return left.template spread<i, l>();
        };
        unrolled<rows>([&](auto i) __attribute__((always_inline)) {
            unrolled<Parts::whole>([&](auto v) __attribute__((always_inline)) {
                store(to + i * row + v * 16, sumOfProducts<T, sums.of[i], products>([&](auto l) __attribute__((
                                                 always_inline)) { return factor(i, l) * right(l, v); }));
            });
            if constexpr (hasRest)
                if constexpr (i % Parts::together == 0) {
                    constexpr int count = std::min(rows - i, Parts::together);
                    static_assert(sums.of[i] == sums.of[i + count - 1]);
                    const V sum = sumOfProducts<T, sums.of[i], products>([&](auto l) __attribute__((always_inline)) {
                        return left.template rest<i, count, l>() * right(l, Int<Parts::whole>{});
                    });
                    unrolled<count>([&](auto r) __attribute__((always_inline)) {
                        storeRest<T, Parts::rest>(to + (i + r) * row + Parts::whole * 16, sum, r * Parts::rest);
                    });
                }
        });
    }
}

// --- The choice -------------------------------------------------------------------------------------------

template <int rowsOfResult, int productsOfSum, int columnsOfResult>
struct KnownShape {
    static constexpr int rows = rowsOfResult, products = productsOfSum, columns = columnsOfResult;
};

template <class T, class Shape, auto kernelSums, bool sharesA, bool sharesB>
[[gnu::always_inline]] inline void multiplyPackedShape(const PackedObjects& objects) {
    constexpr int rows = Shape::rows, products = Shape::products, columns = Shape::columns;
    constexpr auto sums = sumsOfRows<rows, products>(kernelSums);
    // One matrix of doubles for many vectors: its columns are held, and the result is a row.
    constexpr bool turns = !isFloat<T> && sharesA && columns == 1 && rows % 2 == 0;
    constexpr bool hasVectors = columns >= lanes16<T> && (rows > 1 || columns % lanes16<T> == 0);
    if constexpr (turns) {
        static_assert(sums.of[0] == sums.of[rows - 1]);
        packedByRows<T, 1, products, rows, SumsOfRows<1>{{sums.of[0]}}, false, true, true>(
            {objects.b, objects.a, objects.to, objects.count});
    } else if constexpr (hasVectors) {
        packedByRows<T, rows, products, columns, sums, sharesA, sharesB, false>(objects);
    } else {
        packedInLanes<Lanes<T>, rows, products, columns, sums, sharesA, sharesB>(objects);
    }
}

template <class... KnownShapes>
struct ShapeList {
    // Where the objects are packed and their shape is one of these.
    template <class T, auto kernelSums>
    [[gnu::noinline]] static bool multiply(const GridObjects& as, const GridObjects& bs, const GridObjects& dsts,
                                           ProductShape shape, std::ptrdiff_t count) {
        if (count < laneCount<T> || !arePacked<T>(dsts, shape.rows, shape.columns) ||
            !arePacked<T>(as, shape.rows, shape.products) || !arePacked<T>(bs, shape.products, shape.columns))
            return false;
        const PackedObjects objects{as.first.origin, bs.first.origin, target(dsts.first, 0, 0), count};
        const auto tries = [&]<class Shape>(Shape) __attribute__((always_inline)) {
            if (shape.rows != Shape::rows || shape.products != Shape::products || shape.columns != Shape::columns)
                return false;
            if (as.isShared()) multiplyPackedShape<T, Shape, kernelSums, true, false>(objects);
            else if (bs.isShared()) multiplyPackedShape<T, Shape, kernelSums, false, true>(objects);
            else multiplyPackedShape<T, Shape, kernelSums, false, false>(objects);
            return true;
        };
        return (tries(KnownShapes{}) || ...);
    }
};

using CommonShapes =
    ShapeList<KnownShape<2, 2, 2>, KnownShape<2, 3, 2>, KnownShape<3, 2, 3>, KnownShape<2, 3, 3>, KnownShape<3, 3, 2>,
              KnownShape<3, 4, 3>, KnownShape<4, 3, 4>, KnownShape<3, 4, 4>, KnownShape<4, 4, 3>, KnownShape<6, 3, 6>,
              KnownShape<3, 6, 3>, KnownShape<3, 3, 6>, KnownShape<6, 3, 3>, KnownShape<1, 3, 3>, KnownShape<1, 4, 4>,
              KnownShape<3, 3, 1>, KnownShape<4, 4, 1>, KnownShape<1, 3, 1>, KnownShape<1, 4, 1>>;

using CommonVectorShapes =
    ShapeList<KnownShape<2, 2, 1>, KnownShape<2, 3, 1>, KnownShape<3, 2, 1>, KnownShape<3, 4, 1>, KnownShape<4, 3, 1>,
              KnownShape<6, 3, 1>, KnownShape<3, 6, 1>, KnownShape<1, 3, 1>, KnownShape<1, 4, 1>>;

template <class T, RowSums rows>
[[gnu::always_inline]] inline bool multiplyCommonShape(const GridObjects& as, const GridObjects& bs,
                                                       const GridObjects& dsts, ProductShape shape,
                                                       std::int32_t count) {
    return CommonShapes::multiply<T, rows>(as, bs, dsts, shape, count);
}

template <class T, ElementSums elements>
[[gnu::always_inline]] inline bool multiplyCommonShape(const GridObjects& as, const GridObjects& xs,
                                                       const GridObjects& dsts, VectorProductShape shape,
                                                       std::int32_t count) {
    return CommonVectorShapes::multiply<T, elements>(as, asColumns(xs), asColumns(dsts),
                                                     {shape.rows, shape.products, 1}, count);
}

}  // namespace korm::inline KORM_VARIANT::products
