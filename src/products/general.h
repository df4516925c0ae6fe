// Products of matrices of any shape, one object.
#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "korm.h"
#include "products/columns.h"
#include "products/dots.h"
#include "products/lanes.h"
#include "products/large.h"
#include "products/operands.h"
#include "products/packed.h"
#include "products/panels.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// Calls f(first row, rows of a tile as a type, number of tiles): tiles of `most` rows, then one of what is left.
template <int most, class F>
[[gnu::always_inline]] inline void forTiles(std::ptrdiff_t first, std::ptrdiff_t rows, const F& f) {
    static_assert(most <= 4);
    if (rows >= most) f(first, std::integral_constant<int, most>{}, rows / most);
    const std::ptrdiff_t left = rows % most;
    if constexpr (most > 1)
        if (left == 1) f(first + rows - left, std::integral_constant<int, 1>{}, 1);
    if constexpr (most > 2)
        if (left == 2) f(first + rows - left, std::integral_constant<int, 2>{}, 1);
    if constexpr (most > 3)
        if (left == 3) f(first + rows - left, std::integral_constant<int, 3>{}, 1);
}

// Calls f(shape of the sums, rows of a tile, both as types, first row, number of tiles) for all rows of the result.
template <RowSums rows, class F>
[[gnu::always_inline]] inline void forRowsOfTiles(ProductShape shape, const F& f) {
    const auto ofGroup = [&](std::ptrdiff_t first, std::ptrdiff_t height, auto sum) __attribute__((always_inline)) {
        forTiles<rowsAtOnce(sum.value)>(
            first, height, [&](std::ptrdiff_t i, auto tall, std::ptrdiff_t count) __attribute__((always_inline)) {
                f(sum, tall, i, count);
            });
    };
    forRowGroups<rows>(shape.rows, shape.products, ofGroup);
}

// Elements of a tile to their places.
template <class T>
[[gnu::always_inline]] inline void scatterRows(const GridOperand& dst, std::ptrdiff_t i, std::ptrdiff_t j,
                                               std::ptrdiff_t rows, std::ptrdiff_t columns, const std::byte* from,
                                               std::ptrdiff_t fromStep) {
    std::byte* row = target(dst, i, j);
    for (; rows > 0; --rows, row += dst.rowStep, from += fromStep) {
        std::byte* to = row;
        for (std::ptrdiff_t c = 0; c < columns; ++c, to += dst.columnStep)
            store(to, load<T>(from + c * static_cast<std::ptrdiff_t>(sizeof(T))));
    }
}

template <class T>
[[gnu::always_inline]] inline void scatterRows(const TableOperand& dst, std::ptrdiff_t i, std::ptrdiff_t j,
                                               std::ptrdiff_t rows, std::ptrdiff_t columns, const std::byte* from,
                                               std::ptrdiff_t fromStep) {
    for (std::ptrdiff_t r = 0; r < rows; ++r, from += fromStep)
        for (std::ptrdiff_t c = 0; c < columns; ++c)
            store(target(dst, i + r, j + c), load<T>(from + c * static_cast<std::ptrdiff_t>(sizeof(T))));
}

template <class T, RowSums rows, class Operand>
void gatheredProduct(const Operand& a, const Operand& b, const Operand& dst, ProductShape shape) {
    for (std::ptrdiff_t j = 0; j < shape.columns; j += lanes16<T>) {
        const auto width = std::min<std::ptrdiff_t>(lanes16<T>, shape.columns - j);
        forRowsOfTiles<rows>(shape, [&](auto sum, auto tall, std::ptrdiff_t i, std::ptrdiff_t count) {
            for (; count > 0; --count, i += tall.value) {
                Vec16<T> result[tall.value];
                gatheredTile<T, sum.value>(a, i, b, j, width, shape.products, result);
                scatterRows<T>(dst, i, j, tall.value, width, reinterpret_cast<const std::byte*>(result), 16);
            }
        });
    }
}

// Rows of a table's left operand, one after the other.
template <class T>
inline void copyRows(const TableOperand& a, std::ptrdiff_t i, int rows, std::ptrdiff_t products, std::byte* to) {
    for (int r = 0; r < rows; ++r)
        for (std::ptrdiff_t k = 0; k < products; ++k, to += sizeof(T)) store(to, load<T>(a.address(i + r, k)));
}

template <class T>
[[gnu::always_inline]] inline bool contiguousRows(const GridOperand& operand) {
    return operand.columnStep == sizeof(T);
}
template <class T>
[[gnu::always_inline]] inline bool contiguousRows(const TableOperand&) {
    return false;
}

// Tiles of a panel whose results don't lie in whole vectors. Of tables, rows of the left operand are copied.
template <class T, RowSums rows, class Operand>
[[gnu::noinline]] void scatteredPanel(const Operand& a, const Operand& result, std::ptrdiff_t j, std::ptrdiff_t width,
                                      int vectors, const std::byte* panel, const TileSteps& steps, ProductShape shape) {
    constexpr bool isTable = std::is_same_v<Operand, TableOperand>;
    const Operand dst = result;  // of which a compiler sees that stores into the result don't change it
    alignas(16) std::byte copies[isTable ? copiedProducts * 4 * sizeof(T) : 1];
    forRowsOfTiles<rows>(
        shape, [&](auto sum, auto tall, std::ptrdiff_t i, std::ptrdiff_t count) __attribute__((always_inline)) {
            alignas(16) std::byte results[16 + tall.value * panelVectors * 16];  // `toLast` may be below 0
            for (; count > 0; --count, i += tall.value) {
                const std::byte* left = copies;
                if constexpr (isTable) copyRows<T>(a, i, tall.value, shape.products, copies);
                else left = a.origin + i * a.rowStep;
                tilesOf<T, sum.value, tall.value>(vectors, left, panel, results + 16, steps, 1);
                scatterRows<T>(dst, i, j, tall.value, width, results + 16, steps.to);
            }
        });
}

template <class T, RowSums rows, class Objects>
void columnProducts(const Objects& as, const Objects& bs, const Objects& dsts, ProductShape shape, std::int32_t count) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = lanes16<T>;
    constexpr bool isTable = std::is_same_v<Objects, TableObjects>;
    const std::ptrdiff_t products = shape.products;
    if constexpr (!isTable)
        if (isLarge<T>(as.first, shape)) {
            for (std::int32_t k = 0; k < count; ++k) largeProduct<T, rows>(as.at(k), bs.at(k), dsts.at(k), shape);
            return;
        }
    // A contiguous panel is copied too where many rows of the result read many rows of it: far apart, these would push
    // each other out of the first-level cache and its table of pages.
    const bool needsCopy = !contiguousRows<T>(bs.first) || shape.columns < lanes;
    const bool copied = needsCopy || (shape.rows >= 32 && products >= 64 && products <= copiedProducts);
    const bool direct = contiguousRows<T>(dsts.first) && shape.columns >= lanes;
    if ((needsCopy || isTable) && products > copiedProducts) {
        for (std::int32_t k = 0; k < count; ++k) gatheredProduct<T, rows>(as.at(k), bs.at(k), dsts.at(k), shape);
        return;
    }
    TileSteps steps;
    steps.products = products;
    if constexpr (isTable) {
        steps.aRow = products * size;
        steps.a = size;
        steps.to = panelVectors * 16;
    } else {
        steps.aRow = as.first.rowStep;
        steps.a = as.first.columnStep;
        steps.to = direct ? dsts.first.rowStep : panelVectors * 16;
    }
    alignas(16) std::byte copies[copiedProducts * panelVectors * 16];
    for (std::int32_t k = 0; k < count; ++k) {
        const auto a = as.at(k), b = bs.at(k), dst = dsts.at(k);
        std::ptrdiff_t width;
        for (std::ptrdiff_t j = 0; j < shape.columns; j += width) {
            const int vectors = nextPanel<T>(shape.columns - j);
            width = std::min<std::ptrdiff_t>(vectors * lanes, shape.columns - j);
            // A panel at the right edge of a matrix has its last vector end with the row.
            steps.toLast = shape.columns < lanes ? 0 : (width - lanes) * size;
            const std::byte* panel = copies;
            steps.b = vectors * 16;
            steps.bLast = (vectors - 1) * 16;
            if (copied) {
                copyPanel<T>(b, j, width, products, copies);
            } else if constexpr (!isTable) {
                panel = b.origin + j * size;
                steps.b = b.rowStep;
                steps.bLast = steps.toLast;
            }
            if constexpr (!isTable)
                if (direct) {
                    forRowsOfTiles<rows>(
                        shape, [&](auto sum, auto tall, std::ptrdiff_t i, std::ptrdiff_t tileCount)
                                   __attribute__((always_inline)) {
                                       tilesOf<T, sum.value, tall.value>(vectors, a.origin + i * a.rowStep, panel,
                                                                         target(dst, i, j), steps, tileCount);
                                   });
                    continue;
                }
            scatteredPanel<T, rows>(a, dst, j, width, vectors, panel, steps, shape);
        }
    }
}

// One product where no panel needs a copy: rows of the right operand and of the result touch.
template <class T, RowSums rows>
[[gnu::noinline]] std::int32_t tiledProduct(const std::byte* a, std::ptrdiff_t aRow, const std::byte* b,
                                            std::ptrdiff_t bRow, std::byte* to, std::ptrdiff_t toRow,
                                            std::ptrdiff_t aStep, std::int32_t height, std::int32_t products,
                                            std::int32_t columns) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    TileSteps steps{aRow, aStep, bRow, 0, toRow, 0, products};
    std::ptrdiff_t width;
    for (std::ptrdiff_t j = 0; j < columns; j += width) {
        const int vectors = nextPanel<T>(columns - j);
        width = std::min<std::ptrdiff_t>(vectors * lanes16<T>, columns - j);
        steps.toLast = steps.bLast = (width - lanes16<T>)*size;
        forRowsOfTiles<rows>(
            {height, products, columns}, [&](auto sum, auto tall, std::ptrdiff_t i,
                                             std::ptrdiff_t count) __attribute__((always_inline)) {
                tilesOf<T, sum.value, tall.value>(vectors, a + i * aRow, b + j * size, to + i * toRow + j * size, steps,
                                                  count);
            });
    }
    return korStatusOk;
}

template <class T>
[[gnu::always_inline]] inline bool areFewTiles(ProductShape shape) {
    return std::max({shape.rows, shape.products, shape.columns}) < 16 && shape.columns >= lanes16<T>;
}

// Operands that are contiguous along k.
template <class T, RowSums rows>
void dotProduct(const GridOperand& a, const GridOperand& b, const GridOperand& dst, ProductShape shape) {
    for (std::ptrdiff_t j = 0; j < shape.columns; j += lanes16<T>) {
        const auto width = std::min<std::ptrdiff_t>(lanes16<T>, shape.columns - j);
        DotColumns<T> columns;
        dotColumns<T>(b, j, width, columns);
        forRowGroups<rows>(shape.rows, shape.products, [&](std::ptrdiff_t first, std::ptrdiff_t height, auto sum) {
            // Too few products for a block come to the same with any block.
            constexpr Sum dots = sum.value == zeroStart ? Sum{lanes16<T>, 8} : sum.value;
            forTiles<dotRowsAtOnce<T>(dots)>(first, height, [&](std::ptrdiff_t i, auto tall, std::ptrdiff_t count) {
                dotTiles<T, dots, tall.value>(a.origin + i * a.rowStep, a.rowStep, columns, shape.products,
                                              target(dst, i, j), dst.rowStep, width, count);
            });
        });
    }
}

// Sums of which every partial sum has a lane of its own when k is read along vectors.
template <class T>
constexpr bool alongProducts(Sum shape) {
    return shape.partials % lanes16<T> == 0;
}

template <class T, RowSums rows, class Objects>
[[gnu::noinline]] void generalProducts(const Objects& a, const Objects& b, const Objects& dst, ProductShape shape,
                                       std::int32_t count) {
    if constexpr (std::is_same_v<Objects, GridObjects>) {
        if (arePackedSquares<T, 8>(a.first, b.first, dst.first, shape))
            return packedSquares<T, rows.blocks, 8>(a, b, dst, count);
        if (arePackedSquares<T, 16>(a.first, b.first, dst.first, shape))
            return packedSquares<T, rows.blocks, 16>(a, b, dst, count);
    }
    if constexpr (std::is_same_v<Objects, GridObjects> && alongProducts<T>(rows.blocks)) {
        constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
        constexpr bool always = isFloat<T>;  // only one kernel has such sums, and it reads k along rows
        if (always || (a.first.columnStep == size && b.first.rowStep == size && dst.first.columnStep == size)) {
            for (std::int32_t k = 0; k < count; ++k) dotProduct<T, rows>(a.at(k), b.at(k), dst.at(k), shape);
            return;
        }
    }
    if constexpr (!(alongProducts<T>(rows.blocks) && isFloat<T>)) columnProducts<T, rows>(a, b, dst, shape, count);
}

}  // namespace korm::inline KORM_VARIANT::products
