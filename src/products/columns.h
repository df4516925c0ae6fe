// Sums with the columns of the result in the lanes of vectors: row k of the right operand times one element of the
// left, spread over a vector. Works for every shape of sum, as partial sums are vectors of their own.
//
// The right operand is read in panels of a few vectors' width. Its panel is used where it lies if its rows are
// contiguous, else it is first copied to the stack, once for all rows of the result.
#pragma once

#include <algorithm>
#include <cstddef>

#include "products/operands.h"
#include "products/sums.h"

namespace korm {

#if defined(__x86_64__)
inline constexpr int tileRows = 4;
inline constexpr int panelVectors = 2;
#else
inline constexpr int tileRows = 2;  // eight vector registers
inline constexpr int panelVectors = 2;
#endif

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

template <int vectors>
[[gnu::always_inline]] inline std::ptrdiff_t vectorOffset(int v, std::ptrdiff_t last) {
    return v == vectors - 1 ? last : 16 * v;
}

// sum += the products k of `count` steps.
template <class T, int rows, int vectors>
[[gnu::always_inline]] inline void accumulate(Lanes<T> (&sum)[rows][vectors], LeftRows a, Panel b,
                                              std::ptrdiff_t count) {
    for (; count > 0; --count) {
        for (int i = 0; i < rows; ++i) {
            const Lanes<T> left = broadcast(load<T>(a.origin + i * a.rowStep));
            for (int v = 0; v < vectors; ++v)
                sum[i][v] += left * loadLanes<T>(b.origin + vectorOffset<vectors>(v, b.last));
        }
        a.origin += a.step;
        b.origin += b.step;
    }
}

// The sums of a tile of the result, of all K products. Partial sums are independent of each other, so they are
// made one after the other, and all registers serve one.
template <class T, Sum shape, int rows, int vectors>
[[gnu::noinline]] void tile(LeftRows a, Panel b, std::ptrdiff_t products, std::byte* to, std::ptrdiff_t toStep,
                            std::ptrdiff_t toLast) {
    Lanes<T> sum[rows][vectors] = {};
    std::ptrdiff_t done = 0;
    if (shape == zeroStart || products < shape.block) {
        accumulate<T, rows, vectors>(sum, a, b, products);
        done = products;
    } else {
        constexpr int partials = shape.partials;
        done = products - products % shape.block;
        Lanes<T> partial[partials][rows][vectors];
        for (int c = 0; c < partials; ++c) {
            Lanes<T> one[rows][vectors] = {};
            accumulate<T, rows, vectors>(one, {a.origin + c * a.step, a.rowStep, partials * a.step},
                                         {b.origin + c * b.step, partials * b.step, b.last}, done / partials);
            for (int i = 0; i < rows; ++i)
                for (int v = 0; v < vectors; ++v) partial[c][i][v] = one[i][v];
        }
        for (int i = 0; i < rows; ++i)
            for (int v = 0; v < vectors; ++v) {
                Lanes<T> all[partials];
                for (int c = 0; c < partials; ++c) all[c] = partial[c][i][v];
                sum[i][v] = joined<T>(all);
            }
        accumulate<T, rows, vectors>(sum, {a.origin + done * a.step, a.rowStep, a.step},
                                     {b.origin + done * b.step, b.step, b.last}, products - done);
    }
    for (int i = 0; i < rows; ++i)
        for (int v = 0; v < vectors; ++v)
            storeLanes(to + i * toStep + vectorOffset<vectors>(v, toLast), sum[i][v]);
}

template <class T, Sum shape, int rows>
[[gnu::always_inline]] inline void tileOf(int vectors, const LeftRows& a, const Panel& b, std::ptrdiff_t products,
                                          std::byte* to, std::ptrdiff_t toStep, std::ptrdiff_t toLast) {
    static_assert(panelVectors == 2);
    if (vectors == 1) tile<T, shape, rows, 1>(a, b, products, to, toStep, toLast);
    else tile<T, shape, rows, 2>(a, b, products, to, toStep, toLast);
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
