// Products of matrices of any shape, one object.
#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "products/columns.h"
#include "products/dots.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm {

// Room for a panel and for four rows on the stack. Operands with more products that would need a copy are read
// where they lie.
inline constexpr std::ptrdiff_t copiedProducts = 768;

template <class T>
inline constexpr std::ptrdiff_t panelWidth = panelVectors* laneCount<T>;

// Columns j to j + width - 1 as contiguous rows of whole vectors. Spare lanes repeat the last column.
template <class T, class Operand>
void copyPanel(const Operand& b, std::ptrdiff_t j, std::ptrdiff_t width, std::ptrdiff_t products, std::byte* to) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t padded = (width + laneCount<T> - 1) / laneCount<T> * laneCount<T>;
    for (std::ptrdiff_t c = 0; c < padded; ++c) {
        const std::ptrdiff_t column = j + std::min(c, width - 1);
        for (std::ptrdiff_t k = 0; k < products; ++k)
            store(to + (k * padded + c) * size, load<T>(b.address(k, column)));
    }
}

// Calls f(first row, rows as a type, shape of their sums as a type) for all rows.
template <RowSums rows, int atOnce, class F>
[[gnu::always_inline]] inline void forRowGroups(std::ptrdiff_t height, const F& f) {
    const auto group = [&](std::ptrdiff_t i, auto count, auto shape) __attribute__((always_inline)) {
        constexpr int n = decltype(count)::value;
        for (int r = 0; r + atOnce <= n; r += atOnce) f(i + r, std::integral_constant<int, atOnce>{}, shape);
        if constexpr (n % atOnce != 0) f(i + n / atOnce * atOnce, std::integral_constant<int, n % atOnce>{}, shape);
    };
    constexpr auto one = std::integral_constant<int, 1>{};
    constexpr auto two = std::integral_constant<int, 2>{};
    constexpr auto three = std::integral_constant<int, 3>{};
    constexpr auto four = std::integral_constant<int, 4>{};
    std::ptrdiff_t i = 0;
    for (; i + 4 <= height; i += 4) group(i, four, std::integral_constant<Sum, rows.blocks>{});
    const std::ptrdiff_t left = height - i;
    if (left == 3) group(i, three, std::integral_constant<Sum, rows.lastThree>{});
    else if (left == 1) group(i, one, std::integral_constant<Sum, rows.lastOfOne>{});
    else if (left == 2) {
        if constexpr (rows.firstOfTwo == rows.secondOfTwo) {
            group(i, two, std::integral_constant<Sum, rows.firstOfTwo>{});
        } else {
            group(i, one, std::integral_constant<Sum, rows.firstOfTwo>{});
            group(i + 1, one, std::integral_constant<Sum, rows.secondOfTwo>{});
        }
    }
}

// Elements of a tile to their places.
template <class T, class Operand>
[[gnu::always_inline]] inline void scatterRows(const Operand& dst, std::ptrdiff_t i, std::ptrdiff_t j,
                                               std::ptrdiff_t rows, std::ptrdiff_t columns, const std::byte* from,
                                               std::ptrdiff_t fromStep) {
    for (std::ptrdiff_t r = 0; r < rows; ++r)
        for (std::ptrdiff_t c = 0; c < columns; ++c)
            store(target(dst, i + r, j + c), load<T>(from + r * fromStep + c * static_cast<std::ptrdiff_t>(sizeof(T))));
}

template <class T, RowSums rows, class Operand>
void gatheredProduct(const Operand& a, const Operand& b, const Operand& dst, ProductShape shape) {
    for (std::ptrdiff_t j = 0; j < shape.columns; j += laneCount<T>) {
        const auto width = std::min<std::ptrdiff_t>(laneCount<T>, shape.columns - j);
        forRowGroups<rows, 4>(shape.rows, [&](std::ptrdiff_t i, auto height, auto sum) {
            Lanes<T> result[height.value];
            gatheredTile<T, sum.value>(a, i, b, j, width, shape.products, result);
            scatterRows<T>(dst, i, j, height.value, width, reinterpret_cast<const std::byte*>(result), 16);
        });
    }
}

template <class T, RowSums rows, class Operand>
void columnProduct(const Operand& a, const Operand& b, const Operand& dst, ProductShape shape) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = laneCount<T>;
    constexpr bool isTable = std::is_same_v<Operand, TableOperand>;
    const std::ptrdiff_t products = shape.products;
    const auto contiguous = [](const Operand& operand) {
        if constexpr (isTable) return false;
        else return operand.columnStep == size;
    };
    const bool copied = !contiguous(b) || shape.columns < lanes;
    const bool direct = contiguous(dst) && shape.columns >= lanes;
    if ((copied || isTable) && products > copiedProducts) return gatheredProduct<T, rows>(a, b, dst, shape);

    alignas(16) std::byte copies[copiedProducts * panelWidth<T> * size];
    alignas(16) std::byte rowCopies[isTable ? copiedProducts * tileRows * size : 1];
    std::ptrdiff_t width;
    for (std::ptrdiff_t j = 0; j < shape.columns; j += width) {
        width = std::min(panelWidth<T>, shape.columns - j);
        const int vectors = static_cast<int>((width + lanes - 1) / lanes);
        Panel panel{copies, vectors * 16, (vectors - 1) * 16};
        std::ptrdiff_t last = (width - lanes) * size;  // of a result's row; below 0 where it ends in the panel before
        if (copied) copyPanel<T>(b, j, width, products, copies);
        else if constexpr (!isTable) panel = {b.origin + j * size, b.rowStep, last};
        forRowGroups<rows, tileRows>(shape.rows, [&](std::ptrdiff_t i, auto height, auto sum) {
            LeftRows left;
            if constexpr (isTable) {
                for (int r = 0; r < height.value; ++r)
                    for (std::ptrdiff_t k = 0; k < products; ++k)
                        store(rowCopies + (r * products + k) * size, load<T>(a.address(i + r, k)));
                left = {rowCopies, products * size, size};
            } else {
                left = {a.origin + i * a.rowStep, a.rowStep, a.columnStep};
            }
            if constexpr (!isTable) {
                if (direct && (!copied || width % lanes == 0)) {
                    tileOf<T, sum.value, height.value>(vectors, left, panel, products, target(dst, i, j), dst.rowStep,
                                                       last);
                    return;
                }
            }
            constexpr std::ptrdiff_t step = panelVectors * 16;
            alignas(16) std::byte results[16 + height.value * step];  // `last` may be below 0
            tileOf<T, sum.value, height.value>(vectors, left, panel, products, results + 16, step, panel.last);
            scatterRows<T>(dst, i, j, height.value, width, results + 16, step);
        });
    }
}

// Operands that are contiguous along k.
template <class T, RowSums rows>
void dotProduct(const GridOperand& a, const GridOperand& b, const GridOperand& dst, ProductShape shape) {
    for (std::ptrdiff_t j = 0; j < shape.columns; j += laneCount<T>) {
        const auto width = std::min<std::ptrdiff_t>(laneCount<T>, shape.columns - j);
        DotColumns<T> columns;
        dotColumns<T>(b, j, width, columns);
        forRowGroups<rows, 2>(shape.rows, [&](std::ptrdiff_t i, auto height, auto sum) {
            Lanes<T> result[height.value];
            dotTile<T, sum.value>(a.origin + i * a.rowStep, a.rowStep, columns, shape.products, result);
            for (int r = 0; r < height.value; ++r) storeFirst<T>(target(dst, i + r, j), result[r], width);
        });
    }
}

// Sums of which every partial sum has a lane of its own when k is read along vectors.
template <class T>
constexpr bool alongProducts(Sum shape) {
    return shape.partials % laneCount<T> == 0;
}

template <class T, RowSums rows, class Operand>
[[gnu::noinline]] void generalProduct(Operand a, Operand b, Operand dst, ProductShape shape) {
    if constexpr (std::is_same_v<Operand, GridOperand> && alongProducts<T>(rows.blocks)) {
        constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
        constexpr bool always = laneCount<T> == 4;  // only one kernel has such sums, and it reads k along rows
        if (always || (a.columnStep == size && b.rowStep == size && dst.columnStep == size))
            return dotProduct<T, rows>(a, b, dst, shape);
    }
    if constexpr (!(alongProducts<T>(rows.blocks) && laneCount<T> == 4)) columnProduct<T, rows>(a, b, dst, shape);
}

}  // namespace korm
