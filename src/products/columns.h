// Sums with the columns of the result in the lanes of vectors: row k of the right operand times one element of the
// left, spread over a vector. Works for every shape of sum, as partial sums are vectors of their own.
//
// The right operand is read in panels of a few vectors' width. Its panel is used where it lies if its rows are
// contiguous, else it is first copied to the stack, once for all rows of the result.
#pragma once

#include <algorithm>
#include <cstddef>

#include "kernel/known.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "products/operands.h"
#include "products/sums.h"

namespace korm::inline KORM_VARIANT::products {

#if defined(__x86_64__)
inline constexpr int vectorRegisters = 16;
inline constexpr int sumRegisters = 12;  // beside factors and a product
#else
inline constexpr int vectorRegisters = 8;
inline constexpr int sumRegisters = 6;
#endif
inline constexpr int panelVectors = 3;

// Partial sums of an element that are made in one pass over k, and rows of a tile: as many as registers hold.
constexpr int sumsAtOnce(Sum shape) {
    return shape.partials < sumRegisters / panelVectors ? shape.partials : sumRegisters / panelVectors;
}
constexpr int rowsAtOnce(Sum shape) { return sumRegisters / panelVectors / sumsAtOnce(shape); }

// A panel: vector v of row k lies at origin + k * step + v vectors, but for the last, which is at `last`. Thus a panel at
// the right edge of a matrix has its last vector end with the row.
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

    template <class V>
    [[gnu::always_inline]] void put(int i, std::ptrdiff_t offset, V value) const {
        storeLanes(origin + i * step + offset, value);
    }
};

// The same as the transpose of the result, element by element.
struct TransposedTarget {
    std::byte* origin;
    std::ptrdiff_t step;
    std::ptrdiff_t last;

    template <class V>
    [[gnu::always_inline]] void put(int i, std::ptrdiff_t offset, V value) const {
        constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(ElementOf<V>));
        unrolled<lanesOf<V>>([&](auto l) __attribute__((always_inline)) {
            store(origin + (offset / size + l) * step + i * size, value[l.value]);
        });
    }
};

template <class V, int vectors>
[[gnu::always_inline]] inline std::ptrdiff_t vectorOffset(int v, std::ptrdiff_t last) {
    return v == vectors - 1 ? last : v * static_cast<std::ptrdiff_t>(sizeof(V));
}

template <class V, int rows, int vectors>
struct TileSums {
    V of[rows][vectors];
};

// Adds, in each of `count` rounds, `sums` products to each element: product c to sum c. From round to round,
// k grows by `period`. A known number of rounds is all there are: the first one starts the sums.
//
// Of doubles the panel's vectors stay in registers for all rows of the tile as far as there are any: two loads start in a
// cycle, as many as multiplications, so a tile that loads both its factors for each product waits for the loads. Order 64
// takes 19.7 us instead of 21.5. Floats are spread by shuffles and wait for these: they lose 3 %.
template <class V, int sums, int rows, int vectors, class Count>
[[gnu::always_inline]] inline void accumulate(TileSums<V, rows, vectors> (&sum)[sums], LeftRows a, Panel b,
                                              std::ptrdiff_t period, Count count) {
    constexpr int unused = vectorRegisters - sums * rows * vectors - 2;
    constexpr int held = rows == 1 || isFloat<ElementOf<V>> ? 0 : std::clamp(unused, 0, vectors);
    const std::ptrdiff_t aStep = a.step, bStep = b.step;
    const std::ptrdiff_t aRound = (period - sums + 1) * aStep, bRound = (period - sums + 1) * bStep;
    const auto right = [&](int v) __attribute__((always_inline)) {
        return load<V>(b.origin + vectorOffset<V, vectors>(v, b.last));
    };
    const auto round = [&](auto isFirst) __attribute__((always_inline)) {
        unrolled<sums>([&](auto c) __attribute__((always_inline)) {
            V kept[held + 1];
            unrolled<held>([&](auto v) __attribute__((always_inline)) {
                kept[v] = right(v);
                asm("" : "+x"(kept[v]));
            });
            unrolled<rows>([&](auto i) __attribute__((always_inline)) {
                const V left = spread<V>(a.origin + i * a.rowStep);
                unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
                    V& each = sum[c].of[i][v];
                    const V product = left * (v < held ? kept[v < held ? v : 0] : right(v));
                    each = isFirst ? product : each + product;
                    // Without a loop gcc would compute one element after the other, with all operands on the stack.
                    if constexpr (isKnown<Count>) asm("" : "+x"(each));
                });
                // Else vectors that are loaded for each row would be held too and drive sums out of their registers.
                if constexpr (held < vectors && vectors >= 3) b.origin = opaque(b.origin);
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

template <class V, int sums, int rows, int vectors>
[[gnu::always_inline]] inline void clear(TileSums<V, rows, vectors> (&sum)[sums]) {
    unrolled<sums * rows * vectors>([&](auto e) __attribute__((always_inline)) {
        sum[e / (rows * vectors)].of[e / vectors % rows][e % vectors] = V{};
    });
}

// Sums of `rounds` products for each partial sum, joined. Partial sums are independent of each other: those for which
// there are no registers are made after the others.
template <class V, Sum shape, Start start, int rows, int vectors, class Rounds>
[[gnu::always_inline]] inline void sumBlocks(TileSums<V, rows, vectors>& result, const LeftRows& a, const Panel& b,
                                             Rounds rounds) {
    constexpr int partials = shape.partials;
    constexpr int together = sumsAtOnce(shape);
    TileSums<V, rows, vectors> partial[partials / together][together];
    unrolled<partials / together>([&](auto pass) __attribute__((always_inline)) {
        constexpr int first = pass * together;
        if constexpr (!isKnown<Rounds>) clear(partial[pass]);
        accumulate(partial[pass], {a.origin + first * a.step, a.rowStep, a.step},
                   {b.origin + first * b.step, b.step, b.last}, partials, rounds);
    });
    unrolled<rows * vectors>([&](auto e) __attribute__((always_inline)) {
        V all[partials];
        unrolled<partials>([&](auto c) __attribute__((always_inline)) {
            all[c] = partial[c / together][c % together].of[e / vectors][e % vectors];
        });
        const V sum = joined<ElementOf<V>>(all);
        result.of[e / vectors][e % vectors] = isKnown<Rounds> && start == Start::zero ? zeroStarted(sum) : sum;
    });
}

// A tile of all K products.
template <class V, Sum shape, int rows, int vectors, Start start = Start::zero, class Products, class Target>
[[gnu::always_inline]] inline void tile(const LeftRows& a, const Panel& b, Products products, const Target& to) {
    static_assert(start == Start::zero || isKnown<Products>);
    TileSums<V, rows, vectors> result[1];
    if constexpr (isKnown<Products>) {
        static_assert(products % shape.block == 0);
        sumBlocks<V, shape, start>(result[0], a, b, Known<products / shape.partials>{});
    } else {
        const std::ptrdiff_t inBlocks = shape == zeroStart ? 0 : products - products % shape.block;
        LeftRows aRest = a;
        Panel bRest = b;
        if (inBlocks == 0) {
            clear(result);
        } else {
            sumBlocks<V, shape, start>(result[0], a, b, inBlocks / shape.partials);
            aRest.origin += inBlocks * a.step;
            bRest.origin += inBlocks * b.step;
        }
        accumulate(result, aRest, bRest, 1, products - inBlocks);
    }
    unrolled<rows * vectors>([&](auto e) __attribute__((always_inline)) {
        constexpr int i = e / vectors, v = e % vectors;
        to.put(i, vectorOffset<V, vectors>(v, to.last), result[0].of[i][v]);
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
        tile<Vec16<T>, shape, rows, vectors>({a, aRow, aStep}, {b, bStep, bLast}, products,
                                             TileTarget{to, toStep, toLast});
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
    const std::ptrdiff_t vectors = (columns + lanes16<T> - 1) / lanes16<T>;
    return static_cast<int>(vectors == 4 ? 2 : std::min<std::ptrdiff_t>(vectors, panelVectors));
}

// The same for operands of which nothing is contiguous: elements are looked up one by one. Up to one vector of columns.
template <class T, Sum shape, int rows, class Operand>
[[gnu::noinline]] void gatheredTile(const Operand& a, std::ptrdiff_t i, const Operand& b, std::ptrdiff_t j,
                                    std::ptrdiff_t columns, std::ptrdiff_t products, Vec16<T> (&sum)[rows]) {
    const auto right = [&](std::ptrdiff_t k) {
        Vec16<T> row;
        for (int c = 0; c < lanes16<T>; ++c)
            row[c] = load<T>(b.address(k, j + std::min<std::ptrdiff_t>(c, columns - 1)));
        return row;
    };
    const auto add = [&](Vec16<T>(&to)[rows], std::ptrdiff_t k) {
        const Vec16<T> row = right(k);
        for (int r = 0; r < rows; ++r) to[r] += all<Vec16<T>>(load<T>(a.address(i + r, k))) * row;
    };
    for (Vec16<T>& each : sum) each = Vec16<T>{};
    const std::ptrdiff_t inBlocks = products - products % shape.block;
    std::ptrdiff_t k = 0;
    if (shape != zeroStart && inBlocks > 0) {
        Vec16<T> partial[shape.partials][rows] = {};
        for (; k < inBlocks; ++k) add(partial[k % shape.partials], k);
        for (int r = 0; r < rows; ++r) {
            Vec16<T> all[shape.partials];
            for (int c = 0; c < shape.partials; ++c) all[c] = partial[c][r];
            sum[r] = joined<T>(all);
        }
    }
    for (; k < products; ++k) add(sum, k);
}

}  // namespace korm::inline KORM_VARIANT::products
