// Solves of any order: each sum first, then one difference. Objects of arrays go in lanes where all lanes have the
// same order of additions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/known.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "linalg/grids.h"
#include "linalg/partial_sums.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- One object -----------------------------------------------------------------------------------

// dst is the work vector. The order may be a constant.
template <class T, class A, class B, class D, class Order>
[[gnu::noinline]] void luSolveGeneral(const A& factors, const B& sides, const D& solutions, const std::byte* pivots,
                                      Order n) {
    // Behind a reference a store might change them.
    const A matrix = factors;
    const B src = sides;
    const D dst = solutions;
    const auto row = [pivots](std::ptrdiff_t k) { return load<std::int32_t>(pivots + 4 * k); };
    const std::ptrdiff_t place = placeOfBlocks<T>(dst);
    // Of products of row k, over columns first to end - 1.
    const auto sumOfProducts = [&](std::ptrdiff_t k, std::ptrdiff_t first, std::ptrdiff_t end) {
        const std::ptrdiff_t i = row(k);
        if constexpr (isAdjacent<A>)
            return summedProducts<Sign::plus>(T(), matrix.address(i, first), dst.address(0, first),
                                              blocksFrom<T>(place, first, end) - first, end - first);
        else
            return summed<Sign::plus>(T(), first, end, end, [&](std::ptrdiff_t j) {
                return load<T>(matrix.address(i, j)) * load<T>(dst.address(0, j));
            });
    };
    store(dst.address(0, 0), load<T>(src.address(0, row(0))));
    for (std::ptrdiff_t k = 1; k < n; ++k)
        store(dst.address(0, k), load<T>(src.address(0, row(k))) - sumOfProducts(k, 0, k));
    for (std::ptrdiff_t k = n - 1; k >= 0; --k) {
        T y = load<T>(dst.address(0, k));
        if (k < n - 1) y = y - sumOfProducts(k, k + 1, n);
        store(dst.address(0, k), y / load<T>(matrix.address(row(k), k)));
    }
}

// --- Objects in lanes -----------------------------------------------------------------------------

// Both sweeps over `groups` vectors: element k of vector v is x[v * greatestInLanes + k]. `element(v, k, j)` is that of the
// matrix that belongs to it, whose rows are in the order of the pivots. Adjacent elements have their long sums parted.
template <int groups, bool isParted, class S, class Element>
[[gnu::always_inline]] inline void luSweeps(const Element& element, S* x, std::ptrdiff_t n, std::ptrdiff_t place) {
    const auto at = [x](int v, std::ptrdiff_t k) __attribute__((always_inline))->S& {
        return x[v * greatestInLanes + k];
    };
    const auto subtractSums = [&](std::ptrdiff_t k, std::ptrdiff_t first, std::ptrdiff_t end)
        __attribute__((always_inline)) {
        S sum[groups] = {};
        sumTogether<Sign::plus>(
            sum, first, isParted ? blocksFrom<ElementOf<S>>(place, first, end) : end,
            end, [&](int v, std::ptrdiff_t j) __attribute__((always_inline)) { return element(v, k, j) * at(v, j); });
#pragma GCC unroll 8
        for (int v = 0; v < groups; ++v) at(v, k) = at(v, k) - sum[v];
    };
    for (std::ptrdiff_t k = 1; k < n; ++k) subtractSums(k, 0, k);
    for (std::ptrdiff_t k = n - 1; k >= 0; --k) {
        if (k < n - 1) subtractSums(k, k + 1, n);
#pragma GCC unroll 8
        for (int v = 0; v < groups; ++v) at(v, k) = at(v, k) / element(v, k, k);
    }
}

// Over locals, which all layouts share: with one matrix for all vectors, and with one for each.
template <int groups, bool isParted, class S>
[[gnu::noinline]] void luSweepsWithShared(const ElementOf<S>* shared, S* x, std::ptrdiff_t n, std::ptrdiff_t place) {
    luSweeps<groups, isParted>(
        [&](int, std::ptrdiff_t k, std::ptrdiff_t j)
            __attribute__((always_inline)) { return all<S>(shared[k * n + j]); },
        x, n, place);
}

template <int groups, bool isParted, class S>
[[gnu::noinline]] void luSweepsWithOwn(S* a, S* x, std::ptrdiff_t n, std::ptrdiff_t place) {
    luSweeps<groups, isParted>(
        [&](int v, std::ptrdiff_t k, std::ptrdiff_t j)
            __attribute__((always_inline)) { return a[(v * n + k) * n + j]; },
        x, n, place);
}

// Matrices where they lie: row k of vector v begins at rows[v * greatestInLanes + k]. Each element is needed once, and to bring
// two lanes together costs less than to store a copy and to load it. Larger matrices of adjacent elements had better be read
// once, in order: in memory, copies of order 16 take 0.7 of the time.
template <class A, class S>
inline constexpr bool mayStayInPlace = !isShared<A> && !isScattered<A> && lanesOf<S> == 2;
inline constexpr std::ptrdiff_t greatestInPlace = 12;
template <class A, class S>
inline constexpr int luGroupsInFlight = mayStayInPlace<A, S> ? 4 : groupsInFlight<A>;

template <int groups, bool isParted, class S>
[[gnu::noinline]] void luSweepsInPlace(Places<const std::byte, lanesOf<S>>* rows, std::ptrdiff_t stride, S* x,
                                       std::ptrdiff_t n, std::ptrdiff_t place) {
    luSweeps<groups, isParted>(
        [&](int v, std::ptrdiff_t k, std::ptrdiff_t j) __attribute__((always_inline)) {
            return readElement<S>(behind(rows[v * greatestInLanes + k], j * stride));
        },
        x, n, place);
}

// The objects of some numbers, alike in where the blocks of their sums begin.
template <bool isInPlace, class T, class A, class B, class D, int objects>
[[gnu::noinline]] void luSolveAlike(const A& matrix, const B& src, const D& dst, const T* shared,
                                    const std::byte* pivots, const ObjectNumbers<objects>& numbers, std::ptrdiff_t n,
                                    std::ptrdiff_t place) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr bool isParted = isAdjacent<A>;
    constexpr int most = luGroupsInFlight<A, S>;
    const int groups = groupsFor<isShared<A>>(numbers, lanes);
    S x[most * greatestInLanes];
    [[maybe_unused]] S a[isShared<A> || isInPlace ? 1 : greatestInLanes * greatestInLanes];
    [[maybe_unused]] Places<const std::byte, lanes> rows[isInPlace ? most * greatestInLanes : 1];
    for (int v = 0; v < groups; ++v) {
        const std::ptrdiff_t* const own = numbers.at + v * lanes;
        const auto vectors = groupOf<lanes>(src, own);
        const auto matrices = groupOf<lanes>(matrix, own);
        for (std::ptrdiff_t k = 0; k < n; ++k) {
            const auto row = [&](int l) { return load<std::int32_t>(pivots + 4 * (isShared<A> ? k : own[l] * n + k)); };
            x[v * greatestInLanes + k] = readElement<S>(vectors.at(sameRow(0), row));
            if constexpr (isInPlace) rows[v * greatestInLanes + k] = matrices.at(row, sameRow(0));
            else if constexpr (!isShared<A>) readRowStarts(matrices, row, n, a + (v * n + k) * n, false);
        }
    }
    if constexpr (isShared<A>) {
        if (groups == 2) luSweepsWithShared<2, isParted>(shared, x, n, place);
        else if (groups == 4) luSweepsWithShared<4, isParted>(shared, x, n, place);
        else luSweepsWithShared<6, isParted>(shared, x, n, place);
    } else if constexpr (isInPlace) {
        int v = 0;
        const auto next = [&](auto some) __attribute__((always_inline)) {
            const std::ptrdiff_t at = v * greatestInLanes;
            luSweepsInPlace<some, isParted>(rows + at, matrix.elementStride, x + at, n, place);
            v += some;
        };
        if (groups == 4) next(Int<4>());
        if (groups - v >= 2) next(Int<2>());
        if (groups - v == 1) next(Int<1>());
    } else {
        if (groups == 1) luSweepsWithOwn<1, isParted>(a, x, n, place);
        else luSweepsWithOwn<2, isParted>(a, x, n, place);
    }
    for (int v = 0; v < groups; ++v) {
        const std::ptrdiff_t* const own = numbers.at + v * lanes;
        writeRowStarts(groupOf<lanes>(dst, own), sameRow(0), n, x + v * greatestInLanes,
                       (v + 1) * lanes <= numbers.size && lanesTouch(dst));
    }
}

template <class T, class A, class B, class D>
[[gnu::noinline]] void luSolveManyGeneral(const A& matrix, const B& src, const D& dst, const std::byte* pivots,
                                          std::ptrdiff_t n, std::ptrdiff_t count) {
    const std::ptrdiff_t pivotsApart = isShared<A> ? 0 : 4 * n;
    if (n > greatestInLanes || count == 1) {
        for (std::ptrdiff_t k = 0; k < count; ++k)
            luSolveGeneral<T>(matrix.at(k), src.at(k), dst.at(k), pivots + pivotsApart * k, n);
        return;
    }
    T shared[isShared<A> ? greatestInLanes * greatestInLanes : 1];
    if constexpr (isShared<A>) {
        for (std::ptrdiff_t k = 0; k < n; ++k)
            for (std::ptrdiff_t j = 0; j < n; ++j)
                shared[k * n + j] = load<T>(matrix.at(0).address(load<std::int32_t>(pivots + 4 * k), j));
    } else {
        shared[0] = T();
    }
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>, most = luGroupsInFlight<A, S> * lanes;
    const bool fits = isShared<A> || groupsInFlight<A> * n * n <= greatestInLanes * greatestInLanes;
    // Four groups where the first cache holds them beside those to come; order 8, 4 KB a turn, is 1.6 times slower in memory.
    const bool fourFit = mayStayInPlace<A, S> && n <= greatestInPlace && n != 8;
    const int groups = fourFit ? luGroupsInFlight<A, S> : fits ? groupsInFlight<A> : 1;
    const int atOnce = groups * lanes;
    forAlikeObjects<T, most>(dst, count, atOnce, isAdjacent<A> && n > block,
                             [&](const ObjectNumbers<most>& numbers, std::ptrdiff_t place) {
                                 for (int l = 0; l < numbers.size; ++l)
                                     fetchSquare(matrix, numbers.at[l] + atOnce, n, count);
                                 const auto solve = [&](auto inPlace) __attribute__((always_inline)) {
                                     luSolveAlike<inPlace, T>(matrix, src, dst, shared, pivots, numbers, n, place);
                                 };
                                 if constexpr (mayStayInPlace<A, S>)
                                     if (!isAdjacent<A> || n <= greatestInPlace) return solve(std::true_type{});
                                 if constexpr (!mayStayInPlace<A, S> || isAdjacent<A>) solve(std::false_type{});
                             });
}

}  // namespace korm::inline KORM_VARIANT::linalg
