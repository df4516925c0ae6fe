// Sums with the columns of the result in the lanes of vectors: row k of the right operand times one element of the
// left, spread over a vector. Works for every shape of sum, as partial sums are vectors of their own.
//
// The right operand is read in panels of a few vectors' width. Its panel is used where it lies if its rows are
// contiguous, else it is first copied to the stack, once for all rows of the result.
#pragma once

#include <algorithm>
#include <cstddef>

#include "kernel/known.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm {

#if defined(__x86_64__)
inline constexpr int sumRegisters = 12;  // of 16, beside a factor and a product
#else
inline constexpr int sumRegisters = 6;  // of 8
#endif
inline constexpr int panelVectors = 3;

// Partial sums of an element that are made in one pass over k, and rows of a tile: as many as registers hold.
constexpr int sumsAtOnce(Sum shape) {
    return shape.partials < sumRegisters / panelVectors ? shape.partials : sumRegisters / panelVectors;
}
constexpr int rowsAtOnce(Sum shape) { return sumRegisters / panelVectors / sumsAtOnce(shape); }

// A panel: vector v of row k lies at origin + k * step + 16 * v, but for the last, which is at `last` instead of
// 16 * v. Thus a panel at the right edge of a matrix has its last vector end with the row.
struct Panel {
    const std::byte* origin;
    std::ptrdiff_t step;
    std::ptrdiff_t last;
};

struct LeftRows {
    const std::byte* origin;
    std::ptrdiff_t rowStep;
    std::ptrdiff_t step;  // from k to k + 1
};

// Where a tile goes: as a panel.
struct TileTarget {
    std::byte* origin;
    std::ptrdiff_t step;
    std::ptrdiff_t last;
};

template <int vectors>
[[gnu::always_inline]] inline std::ptrdiff_t vectorOffset(int v, std::ptrdiff_t last) {
    return v == vectors - 1 ? last : 16 * v;
}

template <class T, int rows, int vectors>
struct TileSums {
    Lanes<T> of[rows][vectors];
};

// Adds, in each of `count` rounds, `sums` products to each element: product c to sum c. From round to round,
// k grows by `period`. A known number of rounds is all there are: the first one starts the sums.
template <class T, int sums, int rows, int vectors, class Count>
[[gnu::always_inline]] inline void accumulate(TileSums<T, rows, vectors> (&sum)[sums], LeftRows a, Panel b,
                                              std::ptrdiff_t period, Count count) {
    const std::ptrdiff_t aStep = a.step, bStep = b.step;
    const std::ptrdiff_t aRound = (period - sums + 1) * aStep, bRound = (period - sums + 1) * bStep;
    const auto round = [&](auto isFirst) __attribute__((always_inline)) {
        unrolled<sums>([&](auto c) __attribute__((always_inline)) {
            unrolled<rows>([&](auto i) __attribute__((always_inline)) {
                const Lanes<T> left = spread<T>(a.origin + i * a.rowStep);
                unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                    Lanes<T>& each = sum[c].of[i][v];
                    const Lanes<T> product = left * loadLanes<T>(b.origin + vectorOffset<vectors>(v, b.last));
                    each = isFirst ? product : each + product;
                    // Without a loop gcc would compute one element after the other, with all operands on the stack.
                    if constexpr (isKnown<Count>) asm("" : "+x"(each));
                });
                // The panel's vectors are loaded anew for each row: held in registers, they would drive sums out.
                if constexpr (vectors == 3) asm("" : "+r"(b.origin));
            });
            a.origin += c == sums - 1 ? aRound : aStep;
            b.origin += c == sums - 1 ? bRound : bStep;
        });
    };
    if constexpr (isKnown<Count>)
        unrolled<count>([&](auto r) __attribute__((always_inline)) { round(std::bool_constant<r == 0>{}); });
    else
        for (; count > 0; --count) round(std::false_type{});
}

template <class T, int sums, int rows, int vectors>
[[gnu::always_inline]] inline void clear(TileSums<T, rows, vectors> (&sum)[sums]) {
    unrolled<sums * rows * vectors>([&](auto e) __attribute__((always_inline)) {
        sum[e / (rows * vectors)].of[e / vectors % rows][e % vectors] = Lanes<T>{};
    });
}

// Sums of `rounds` products for each partial sum, joined. Partial sums are independent of each other: those for which
// there are no registers are made after the others.
template <class T, Sum shape, int rows, int vectors, class Rounds>
[[gnu::always_inline]] inline void sumBlocks(TileSums<T, rows, vectors>& result, const LeftRows& a, const Panel& b,
                                             Rounds rounds) {
    constexpr int partials = shape.partials;
    constexpr int together = sumsAtOnce(shape);
    TileSums<T, rows, vectors> partial[partials / together][together];
    unrolled<partials / together>([&](auto pass) __attribute__((always_inline)) {
        constexpr int first = pass * together;
        if constexpr (!isKnown<Rounds>) clear(partial[pass]);
        accumulate(partial[pass], {a.origin + first * a.step, a.rowStep, a.step},
                   {b.origin + first * b.step, b.step, b.last}, partials, rounds);
    });
    unrolled<rows * vectors>([&](auto e) __attribute__((always_inline)) {
        Lanes<T> all[partials];
        unrolled<partials>([&](auto c) __attribute__((always_inline)) {
            all[c] = partial[c / together][c % together].of[e / vectors][e % vectors];
        });
        const Lanes<T> sum = joined<T>(all);
        result.of[e / vectors][e % vectors] = isKnown<Rounds> ? zeroStarted(sum) : sum;
    });
}

// A tile of all K products.
template <class T, Sum shape, int rows, int vectors, class Products>
[[gnu::always_inline]] inline void tile(const LeftRows& a, const Panel& b, Products products, const TileTarget& to) {
    TileSums<T, rows, vectors> result[1];
    if constexpr (isKnown<Products>) {
        static_assert(products % shape.block == 0);
        sumBlocks<T, shape>(result[0], a, b, Known<products / shape.partials>{});
    } else {
        const std::ptrdiff_t inBlocks = shape == zeroStart ? 0 : products - products % shape.block;
        LeftRows aRest = a;
        Panel bRest = b;
        if (inBlocks == 0) {
            clear(result);
        } else {
            sumBlocks<T, shape>(result[0], a, b, inBlocks / shape.partials);
            aRest.origin += inBlocks * a.step;
            bRest.origin += inBlocks * b.step;
        }
        accumulate(result, aRest, bRest, 1, products - inBlocks);
    }
    unrolled<rows * vectors>([&](auto e) __attribute__((always_inline)) {
        constexpr int i = e / vectors, v = e % vectors;
        storeLanes(to.origin + i * to.step + vectorOffset<vectors>(v, to.last), result[0].of[i][v]);
    });
}

// What tiles of one panel have in common.
struct TileSteps {
    std::ptrdiff_t aRow, a;
    std::ptrdiff_t b, bLast;
    std::ptrdiff_t to, toLast;
    std::ptrdiff_t products;
};

// Tiles below each other.
template <class T, Sum shape, int rows, int vectors>
[[gnu::noinline]] void tiles(const std::byte* a, const std::byte* b, std::byte* to, const TileSteps& steps,
                             std::ptrdiff_t count) {
    const std::ptrdiff_t aRow = steps.aRow, aStep = steps.a, bStep = steps.b, bLast = steps.bLast, toStep = steps.to,
                         toLast = steps.toLast, products = steps.products;
    for (; count > 0; --count) {
        tile<T, shape, rows, vectors>({a, aRow, aStep}, {b, bStep, bLast}, products, {to, toStep, toLast});
        a += rows * aRow;
        to += rows * toStep;
    }
}

template <class T, Sum shape, int rows>
[[gnu::always_inline]] inline void tilesOf(int vectors, const std::byte* a, const std::byte* b, std::byte* to,
                                           const TileSteps& steps, std::ptrdiff_t count) {
    static_assert(panelVectors == 3);
    if (vectors == 1) tiles<T, shape, rows, 1>(a, b, to, steps, count);
    else if (vectors == 2) tiles<T, shape, rows, 2>(a, b, to, steps, count);
    else tiles<T, shape, rows, 3>(a, b, to, steps, count);
}

// The next panel's vectors: four are two and two rather than three and one.
template <class T>
[[gnu::always_inline]] inline int nextPanel(std::ptrdiff_t columns) {
    const std::ptrdiff_t vectors = (columns + laneCount<T> - 1) / laneCount<T>;
    return static_cast<int>(vectors == 4 ? 2 : std::min<std::ptrdiff_t>(vectors, panelVectors));
}

// The same for operands of which nothing is contiguous: elements are looked up one by one. Up to one vector of columns.
template <class T, Sum shape, int rows, class Operand>
[[gnu::noinline]] void gatheredTile(const Operand& a, std::ptrdiff_t i, const Operand& b, std::ptrdiff_t j,
                                    std::ptrdiff_t columns, std::ptrdiff_t products, Lanes<T> (&sum)[rows]) {
    const auto right = [&](std::ptrdiff_t k) {
        Lanes<T> row;
        for (int c = 0; c < laneCount<T>; ++c)
            row[c] = load<T>(b.address(k, j + std::min<std::ptrdiff_t>(c, columns - 1)));
        return row;
    };
    const auto add = [&](Lanes<T>(&to)[rows], std::ptrdiff_t k) {
        const Lanes<T> row = right(k);
        for (int r = 0; r < rows; ++r) to[r] += broadcast(load<T>(a.address(i + r, k))) * row;
    };
    for (Lanes<T>& each : sum) each = Lanes<T>{};
    const std::ptrdiff_t inBlocks = products - products % shape.block;
    std::ptrdiff_t k = 0;
    if (shape != zeroStart && inBlocks > 0) {
        Lanes<T> partial[shape.partials][rows] = {};
        for (; k < inBlocks; ++k) add(partial[k % shape.partials], k);
        for (int r = 0; r < rows; ++r) {
            Lanes<T> all[shape.partials];
            for (int c = 0; c < shape.partials; ++c) all[c] = partial[c][r];
            sum[r] = joined<T>(all);
        }
    }
    for (; k < products; ++k) add(sum, k);
}

}  // namespace korm
