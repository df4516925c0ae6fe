// Panels of an operand, copied to where their rows touch, and rows of a result by the shape of their sums.
#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// Room for a panel and for four rows on the stack. Operands with more products that would need a copy are read
// where they lie.
inline constexpr std::ptrdiff_t copiedProducts = 768;

// Columns j to j + width - 1 as contiguous rows of whole vectors. As in a panel that isn't copied, the last vector ends
// with the last column; fewer columns than lanes are followed by repetitions of the last one.
template <class T, class Operand>
void copyElements(const Operand& b, std::ptrdiff_t j, std::ptrdiff_t width, std::ptrdiff_t products, std::byte* to) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = lanes16<T>;
    const std::ptrdiff_t padded = (width + lanes - 1) / lanes * lanes;
    for (std::ptrdiff_t c = 0; c < padded; ++c) {
        std::ptrdiff_t column = j + c;
        if (j + width < lanes) column = std::min(column, j + width - 1);
        else if (c >= padded - lanes) column -= padded - width;
        for (std::ptrdiff_t k = 0; k < products; ++k)
            store(to + (k * padded + c) * size, load<T>(b.address(k, column)));
    }
}

template <class T>
void copyPanel(const TableOperand& b, std::ptrdiff_t j, std::ptrdiff_t width, std::ptrdiff_t products, std::byte* to) {
    copyElements<T>(b, j, width, products, to);
}

// Whole vectors, turned in registers where columns are contiguous.
template <class T>
[[gnu::noinline]] void copyPanel(const GridOperand& b, std::ptrdiff_t j, std::ptrdiff_t width, std::ptrdiff_t products,
                                 std::byte* to) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    constexpr int lanes = lanes16<T>;
    const bool turned = b.rowStep == size;
    if (j + width < lanes || !(turned || b.columnStep == size)) return copyElements<T>(b, j, width, products, to);
    const std::ptrdiff_t step = (width + lanes - 1) / lanes * 16;
    for (std::ptrdiff_t v = 0; v < step; v += 16, to += 16) {
        const std::ptrdiff_t column = v + 16 < step ? j + v / size : j + width - lanes;
        const std::byte* from = b.address(0, column);
        std::byte* at = to;
        std::ptrdiff_t k = 0;
        if (turned)
            for (; k + lanes <= products; k += lanes, from += 16, at += lanes * step) {
                Vec16<T> block[lanes];
                unrolled<lanes>([&](auto c) __attribute__((always_inline)) {
                    block[c] = load<Vec16<T>>(from + c * b.columnStep);
                });
                transpose(block);
                unrolled<lanes>([&](auto r) __attribute__((always_inline)) { storeLanes(at + r * step, block[r]); });
            }
        for (; k < products; ++k, from += b.rowStep, at += step)
            if (b.columnStep == size) storeLanes(at, load<Vec16<T>>(from));
            else
                for (int c = 0; c < lanes; ++c) store(at + c * size, load<T>(from + c * b.columnStep));
    }
}

// Calls f(first row, their number, shape of their sums as a type) for rows of one shape. Rows with fewer products
// than their blocks have are all the same.
template <RowSums rows, class F>
[[gnu::always_inline]] inline void forRowGroups(std::ptrdiff_t height, std::ptrdiff_t products, const F& f) {
    if constexpr (rows.uniform()) {
        f(0, height, std::integral_constant<Sum, rows.blocks>{});
    } else {
        const std::ptrdiff_t left = height % 4;
        const std::ptrdiff_t i = height - left;
        if (i > 0) f(0, i, std::integral_constant<Sum, rows.blocks>{});
        if constexpr (rows.lastThree.block == 8)
            if (products < 8) {
                if (left > 0) f(i, left, std::integral_constant<Sum, zeroStart>{});
                return;
            }
        if (left == 3) f(i, 3, std::integral_constant<Sum, rows.lastThree>{});
        else if (left == 1) f(i, 1, std::integral_constant<Sum, rows.lastOfOne>{});
        else if (left == 2) {
            f(i, rows.firstOfTwo == rows.secondOfTwo ? 2 : 1, std::integral_constant<Sum, rows.firstOfTwo>{});
            if constexpr (!(rows.firstOfTwo == rows.secondOfTwo))
                f(i + 1, 1, std::integral_constant<Sum, rows.secondOfTwo>{});
        }
    }
}

template <ElementSums elements, class F>
[[gnu::always_inline]] inline void forRowGroups(std::ptrdiff_t height, std::ptrdiff_t /*products*/, const F& f) {
    const std::ptrdiff_t left = (height & 7) <= 2 ? height & 7 : 0;
    if (left < height) f(0, height - left, std::integral_constant<Sum, elements.general>{});
    if (left == 1) f(height - 1, 1, std::integral_constant<Sum, elements.lastOfOne>{});
    if (left == 2) {
        f(height - 2, 1, std::integral_constant<Sum, elements.firstOfTwo>{});
        f(height - 1, 1, std::integral_constant<Sum, elements.secondOfTwo>{});
    }
}

}  // namespace korm::inline KORM_VARIANT::products
