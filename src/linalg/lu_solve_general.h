// Solves of any order: each sum first, then one difference. Objects of arrays go in lanes where all lanes have the
// same order of additions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "linalg/partial_sums.h"
#include "linalg/rows.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- One object -----------------------------------------------------------------------------------

// The sum of products of row `row` of the matrix and the work vector, over columns first to end - 1.
template <class T, class A, class D>
[[gnu::always_inline]] inline T sumOfProducts(const A& matrix, std::ptrdiff_t row, const D& work, std::ptrdiff_t first,
                                              std::ptrdiff_t end) {
    const auto term = [&](std::ptrdiff_t j) { return load<T>(matrix.address(row, j)) * load<T>(work.address(0, j)); };
    T sum = 0;
    std::ptrdiff_t j = first;
    if constexpr (isAdjacent<A> && isAdjacent<D>) {
        const std::ptrdiff_t aligned = blocksFrom<T>(work, first, end);
        if (aligned < end) {
            for (; j < aligned; ++j) sum = sum + term(j);
            using V = Vec<T, 16 / sizeof(T)>;
            constexpr int vectors = block / lanesOf<V>;
            V part[vectors] = {};
            part[0][0] = sum;
            for (; end - j >= block; j += block)
#pragma GCC unroll 4
                for (int v = 0; v < vectors; ++v) {
                    const std::ptrdiff_t at = j + v * lanesOf<V>;
                    part[v] = part[v] + load<V>(matrix.address(row, at)) * load<V>(work.address(0, at));
                }
            sum = folded(part);
        }
    }
    for (; j < end; ++j) sum = sum + term(j);
    return sum;
}

// dst is the work vector.
template <class T, class A, class B, class D>
[[gnu::noinline]] void luSolveGeneral(A matrix, B src, D dst, const std::byte* pivots, std::ptrdiff_t n) {
    const auto row = [pivots](std::ptrdiff_t k) { return load<std::int32_t>(pivots + 4 * k); };
    store(dst.address(0, 0), load<T>(src.address(0, row(0))));
    for (std::ptrdiff_t k = 1; k < n; ++k) {
        const T sum = sumOfProducts<T>(matrix, row(k), dst, 0, k);
        store(dst.address(0, k), load<T>(src.address(0, row(k))) - sum);
    }
    for (std::ptrdiff_t k = n - 1; k >= 0; --k) {
        T y = load<T>(dst.address(0, k));
        if (k < n - 1) y = y - sumOfProducts<T>(matrix, row(k), dst, k + 1, n);
        store(dst.address(0, k), y / load<T>(matrix.address(row(k), k)));
    }
}

// --- Objects in lanes -----------------------------------------------------------------------------

// Each sum is a chain of additions and each row ends in a division, so several vectors are in flight. Their work vectors
// lie on the stack, which bounds the order.
template <class T>
inline constexpr int mostInLanes = laneCount<T> < 8 ? 8 : laneCount<T>;
inline constexpr std::ptrdiff_t greatestInLanes = 64;

template <class S>
using RowNumbers = std::int32_t[lanesOf<S>];

// Column j of a row of each matrix in a group, or of the one matrix that serves all.
template <class S, class Matrices>
[[gnu::always_inline]] inline S elements(const Matrices& matrices, const RowNumbers<S>& row, std::ptrdiff_t j) {
    if constexpr (requires { matrices.object; })
        return readElement<S>(matrices.at([&](int l) { return row[l]; }, sameRow(j)));
    else return all<S>(load<ElementOf<S>>(matrices.address(row[0], j)));
}

// sumOfProducts, with `term` giving those of all lanes.
template <class S, class Term>
[[gnu::always_inline]] inline S sumInLanes(const Term& term, std::ptrdiff_t first, std::ptrdiff_t blocks,
                                           std::ptrdiff_t end) {
    S sum = S();
    std::ptrdiff_t j = first;
    if (blocks < end) {
        for (; j < blocks; ++j) sum = sum + term(j);
        S part[block] = {sum};
        for (; end - j >= block; j += block)
#pragma GCC unroll 8
            for (int p = 0; p < block; ++p) part[p] = part[p] + term(j + p);
        sum = folded(part);
    }
    for (; j < end; ++j) sum = sum + term(j);
    return sum;
}

// Both sweeps of the objects from t on, as many as fill `vectors`, where dst's are alike in where their blocks begin.
// The order may be a constant.
template <class T, class A, class B, class D, class Order>
[[gnu::noinline]] void luSolveGroup(A matrix, B src, D dst, const std::byte* pivots, std::ptrdiff_t t, int vectors,
                                    Order n) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr bool oneMatrix = isShared<A>;
    S work[mostInLanes<T> / lanes][greatestInLanes];
    const auto blocksOf = [&](std::ptrdiff_t first, std::ptrdiff_t end) {
        if constexpr (isAdjacent<A>) return blocksFrom<T>(dst.at(t), first, end);
        else return end;
    };
    const auto matricesOf = [&](int v) __attribute__((always_inline)) {
        if constexpr (oneMatrix) return matrix.at(0);
        else return groupAt<lanes>(matrix, t + v * lanes);
    };
    const auto readRowNumbers = [&](int v, std::ptrdiff_t k, RowNumbers<S>& row) __attribute__((always_inline)) {
#pragma GCC unroll 4
        for (int l = 0; l < lanes; ++l)
            row[l] = load<std::int32_t>(pivots + 4 * (oneMatrix ? k : (t + v * lanes + l) * n + k));
    };
    for (std::ptrdiff_t k = 0; k < n; ++k) {
        const std::ptrdiff_t blocks = blocksOf(0, k);
        for (int v = 0; v < vectors; ++v) {
            RowNumbers<S> row;
            readRowNumbers(v, k, row);
            const auto matrices = matricesOf(v);
            const auto term = [&](std::ptrdiff_t j) { return elements<S>(matrices, row, j) * work[v][j]; };
            const S y =
                readElement<S>(groupAt<lanes>(src, t + v * lanes).at(sameRow(0), [&](int l) { return row[l]; }));
            work[v][k] = k == 0 ? y : y - sumInLanes<S>(term, 0, blocks, k);
        }
    }
    for (std::ptrdiff_t k = n - 1; k >= 0; --k) {
        const std::ptrdiff_t blocks = blocksOf(k + 1, n);
        for (int v = 0; v < vectors; ++v) {
            RowNumbers<S> row;
            readRowNumbers(v, k, row);
            const auto matrices = matricesOf(v);
            const auto term = [&](std::ptrdiff_t j) { return elements<S>(matrices, row, j) * work[v][j]; };
            S y = work[v][k];
            if (k < n - 1) y = y - sumInLanes<S>(term, k + 1, blocks, n);
            work[v][k] = y / elements<S>(matrices, row, k);
        }
    }
    for (int v = 0; v < vectors; ++v) {
        const auto results = groupAt<lanes>(dst, t + v * lanes);
        std::ptrdiff_t k = 0;
        if constexpr (isAdjacent<A>)
            for (; k + lanes <= n; k += lanes) writeRun<lanes>(results.at(0, k), work[v] + k);
        for (; k < n; ++k) writeElement(results.at(0, k), 0, work[v][k]);
    }
}

// Sums of fewer terms than a block are the same wherever the vectors lie.
template <class A, class D>
[[gnu::always_inline]] inline bool haveSameSums(const A&, const D& dst, std::ptrdiff_t t, std::ptrdiff_t objects,
                                                std::ptrdiff_t n) {
    if (!isAdjacent<A> || n <= block) return true;
    std::intptr_t differences = 0;
    const auto place = [&](std::ptrdiff_t k) { return reinterpret_cast<std::intptr_t>(dst.at(k).address(0, 0)); };
    for (std::ptrdiff_t k = t + 1; k < t + objects; ++k) differences |= place(k) ^ place(t);
    return differences % blockAlignment == 0;
}

template <class T, class A, class B, class D, class Order>
[[gnu::noinline]] void luSolveManyGeneral(const A& matrix, const B& src, const D& dst, const std::byte* pivots, Order n,
                                          std::ptrdiff_t count) {
    constexpr int lanes = laneCount<T>;
    const std::ptrdiff_t pivotsApart = isShared<A> ? 0 : 4 * n;
    for (std::ptrdiff_t t = 0; t < count;) {
        const std::ptrdiff_t left = count - t;
        const int vectors = static_cast<int>(std::min<std::ptrdiff_t>(left, mostInLanes<T>)) / lanes;
        if (vectors > 0 && n <= greatestInLanes && haveSameSums(matrix, dst, t, vectors * lanes, n)) {
            luSolveGroup<T>(matrix, src, dst, pivots, t, vectors, n);
            t += vectors * lanes;
        } else {
            luSolveGeneral<T>(matrix.at(t), src.at(t), dst.at(t), pivots + pivotsApart * t, n);
            ++t;
        }
    }
}

}  // namespace korm::inline KORM_VARIANT::linalg
