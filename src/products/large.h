// Products of matrices with so many products in a sum that neither operand's part of a tile stays in a cache: cut along the
// sum too. A block of either operand is packed, and partial sums wait in memory from one block to the next, so every sum goes
// on in its order.
#pragma once

#include <algorithm>
#include <cstddef>

#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/columns.h"
#include "products/operands.h"
#include "products/panels.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

// Products that are added before the next rows and columns are taken, a multiple of all sums' blocks, and panels of the right
// operand at a time. What is packed and the sums take 260 KB of the stack.
// Half of it costs up to a tenth.
inline constexpr std::ptrdiff_t blockProducts = 192;
inline constexpr int blockPanels = 12;
inline constexpr std::ptrdiff_t sumBytes = 64 << 10;
inline constexpr int packedRows = 4;

template <class T>
inline constexpr std::ptrdiff_t panelColumns = panelVectors* lanes16<T>;

// Sums so long that a panel of the right operand isn't copied as a whole, and sums of doubles half as long whose left operand
// is read down its columns: there each product is on a line of cache of its own.
template <class T>
[[gnu::always_inline]] inline bool isLarge(const GridOperand& a, ProductShape shape) {
    const bool readsDown = !isFloat<T> && a.columnStep != static_cast<std::ptrdiff_t>(sizeof(T));
    return shape.products > (readsDown ? 256 : copiedProducts) && shape.columns >= panelColumns<T> &&
           shape.rows >= 4 * packedRows;
}

// A strip of rows: tiles of `tall` rows below each other, of one shape of sum.
template <class T, Sum shape, int tall>
class Strip {
    using V = Vec16<T>;
    using Sums = TileSums<V, tall, panelVectors>;
    static constexpr std::ptrdiff_t size = sizeof(T);
    static constexpr int together = sumsAtOnce(shape), passes = shape.partials / together;

    // So many tiles whose sums find room, whole groups of packed rows.
    static constexpr int most =
        static_cast<int>(sumBytes / (blockPanels * shape.partials * sizeof(Sums))) / packedRows * packedRows;
    static_assert(most > 0);

    Sums sums_[most][blockPanels][shape.partials];
    alignas(16) std::byte left_[most * tall * blockProducts * sizeof(T)];
    alignas(16) std::byte right_[blockPanels * panelColumns<T> * blockProducts * sizeof(T)];
    LeftRows leftRows_;
    std::ptrdiff_t groupStep_;

    // Panels of whole vectors, of which panel p begins with column column(p). Contiguous rows are read once for all panels:
    // far apart, they would push each other out of the first-level cache before the next panel needs them.
    template <int vectors, class Column>
    static void packPanels(const GridOperand& from, std::ptrdiff_t panels, const Column& column,
                           std::ptrdiff_t products, std::byte* to) {
        constexpr std::ptrdiff_t step = vectors * 16;
        if (from.columnStep == size)
            for (std::ptrdiff_t k = 0; k < products; ++k)
                for (std::ptrdiff_t p = 0; p < panels; ++p)
                    unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                        storeLanes(to + (p * blockProducts + k) * step + v * 16,
                                   load<V>(from.address(k, column(p)) + v * 16));
                    });
        else
            for (std::ptrdiff_t p = 0; p < panels; ++p)
                copyPanel<T>(from, column(p), vectors * lanes16<T>, products, to + p * blockProducts * step);
    }

    // Rows i to i + height - 1 and panels of columns, products k to k + n - 1.
    template <class Column>
    [[gnu::noinline]] void pack(const GridOperand& a, std::ptrdiff_t i, std::ptrdiff_t height, const GridOperand& b,
                                int panels, const Column& column, std::ptrdiff_t k, std::ptrdiff_t n) {
        packPanels<panelVectors>({b.address(k, 0), b.rowStep, b.columnStep}, panels, column, n, right_);
        if (height % packedRows == 0) {
            packPanels<packedRows / lanes16<T>>(
                {a.address(0, k), a.columnStep, a.rowStep}, height / packedRows,
                [=](std::ptrdiff_t p) { return i + p * packedRows; }, n, left_);
            leftRows_ = {left_, size, packedRows * size};
            groupStep_ = packedRows * blockProducts * size;
        } else {
            leftRows_ = {a.address(i, k), a.rowStep, a.columnStep};
            groupStep_ = packedRows * a.rowStep;
        }
    }

    LeftRows left(std::ptrdiff_t tile) const {
        const std::ptrdiff_t row = tile * tall;
        return {leftRows_.origin + row / packedRows * groupStep_ + row % packedRows * leftRows_.rowStep,
                leftRows_.rowStep, leftRows_.step};
    }
    Panel right(int panel) const {
        return {right_ + panel * blockProducts * panelVectors * 16, panelVectors * 16, (panelVectors - 1) * 16};
    }

    [[gnu::noinline]] void add(std::ptrdiff_t tiles, int panels, std::ptrdiff_t products) {
        for (int p = 0; p < panels; ++p) {
            const Panel b = right(p);
            for (std::ptrdiff_t t = 0; t < tiles; ++t) {
                const LeftRows a = left(t);
                unrolled<passes>([&](auto pass) __attribute__((always_inline)) {
                    constexpr int first = pass * together;
                    Sums now[together];
                    unrolled<together>([&](auto c) __attribute__((always_inline)) { now[c] = sums_[t][p][first + c]; });
                    accumulate(now, {a.origin + first * a.step, a.rowStep, a.step},
                               {b.origin + first * b.step, b.step, b.last}, shape.partials, products / shape.partials);
                    unrolled<together>([&](auto c) __attribute__((always_inline)) { sums_[t][p][first + c] = now[c]; });
                });
            }
        }
    }

    // Joins the partial sums, adds what products are left and stores.
    template <class Column>
    [[gnu::noinline]] void finish(std::ptrdiff_t i, std::ptrdiff_t tiles, int panels, const Column& column,
                                  std::ptrdiff_t products, const GridOperand& dst) {
        for (int p = 0; p < panels; ++p)
            for (std::ptrdiff_t t = 0; t < tiles; ++t) {
                Sums result[1];
                unrolled<tall * panelVectors>([&](auto e) __attribute__((always_inline)) {
                    constexpr int r = e / panelVectors, v = e % panelVectors;
                    V all[shape.partials];
                    unrolled<shape.partials>([&](auto c)
                                                 __attribute__((always_inline)) { all[c] = sums_[t][p][c].of[r][v]; });
                    result[0].of[r][v] = joined<T>(all);
                });
                if constexpr (shape.block > 1) accumulate(result, left(t), right(p), 1, products);
                for (int r = 0; r < tall; ++r) {
                    std::byte* const row = target(dst, i + t * tall + r, column(p));
                    if (dst.columnStep == size)
                        unrolled<panelVectors>([&](auto v) __attribute__((always_inline)) {
                            storeLanes(row + v * 16, result[0].of[r][v]);
                        });
                    else
                        for (std::ptrdiff_t c = 0; c < panelColumns<T>; ++c)
                            store(row + c * dst.columnStep,
                                  load<T>(reinterpret_cast<const std::byte*>(result[0].of[r]) + c * size));
                }
            }
    }

public:
    [[gnu::noinline]] static void multiply(const GridOperand& a, std::ptrdiff_t i, std::ptrdiff_t tiles,
                                           const GridOperand& b, const GridOperand& dst, ProductShape shapeOfAll) {
        Strip strip;
        const std::ptrdiff_t products = shapeOfAll.products, inBlocks = products - products % shape.block;
        // The last panel ends with the last column; it may repeat some of those before.
        const std::ptrdiff_t lastColumn = shapeOfAll.columns - panelColumns<T>;
        for (std::ptrdiff_t j = 0; j < shapeOfAll.columns; j += blockPanels * panelColumns<T>) {
            const auto panels = static_cast<int>(std::min<std::ptrdiff_t>(
                (shapeOfAll.columns - j + panelColumns<T> - 1) / panelColumns<T>, blockPanels));
            const auto column = [=](std::ptrdiff_t p) { return std::min(j + p * panelColumns<T>, lastColumn); };
            for (std::ptrdiff_t first = 0; first < tiles; first += most) {
                const std::ptrdiff_t here = std::min<std::ptrdiff_t>(tiles - first, most), row = i + first * tall;
                for (std::ptrdiff_t t = 0; t < here; ++t)
                    for (int p = 0; p < panels; ++p) clear(strip.sums_[t][p]);
                for (std::ptrdiff_t k = 0; k < inBlocks; k += blockProducts) {
                    const std::ptrdiff_t n = std::min(inBlocks - k, blockProducts);
                    strip.pack(a, row, here * tall, b, panels, column, k, n);
                    strip.add(here, panels, n);
                }
                if (shape.block > 1) strip.pack(a, row, here * tall, b, panels, column, inBlocks, products - inBlocks);
                strip.finish(row, here, panels, column, products - inBlocks, dst);
            }
        }
    }
};

template <class T, RowSums rows>
[[gnu::noinline]] void largeProduct(const GridOperand& a, const GridOperand& b, const GridOperand& dst,
                                    ProductShape shape) {
    forRowGroups<rows>(shape.rows, shape.products, [&](std::ptrdiff_t first, std::ptrdiff_t height, auto sum) {
        constexpr int tall = rowsAtOnce(sum.value);
        const std::ptrdiff_t whole = height - height % packedRows;
        if (whole > 0) Strip<T, sum.value, tall>::multiply(a, first, whole / tall, b, dst, shape);
        if (whole < height) Strip<T, sum.value, 1>::multiply(a, first + whole, height - whole, b, dst, shape);
    });
}

}  // namespace korm::inline KORM_VARIANT::products
