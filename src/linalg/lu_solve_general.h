// Solves of any order: each sum first, then one difference. Objects of arrays go in lanes where all lanes have the
// same order of additions.
#pragma once

#include <array>
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

// Matrices where they lie: each element is needed once, and to bring it together costs less than to store a copy and to load it.
// Of four floats that touch a copy costs less, since four rows are turned at once. Row k of vector v is rows[v * greatestInLanes + k].
template <class A>
inline constexpr bool staysInPlace = !isShared<A> && !(isAdjacent<A> && isFloat<typename A::Element>);
template <class A>
inline constexpr int luGroupsInFlight = staysInPlace<A> ? 4 : groupsInFlight<A>;

// Rows of tables: an element lies where its entry leads to.
template <int lanes>
struct TableRows {
    const std::byte* entries[lanes];
    std::ptrdiff_t offset[lanes];

    template <class V>
    [[gnu::always_inline]] V get(int l, std::ptrdiff_t distance) const {
        return load<V>(load<const std::byte*>(entries[l] + distance) + offset[l]);
    }
};

// Where a row of each lane's matrix begins, and how far its elements are apart there.
template <class Object, int lanes, class Row>
[[gnu::always_inline]] inline auto rowsInPlace(const Group<Object, lanes>& matrices, const Row& row) {
    if constexpr (isScattered<Object>)
        return withLanes<lanes>([&](auto... l) __attribute__((always_inline)) {
            const auto entry = [](const Object& object, std::ptrdiff_t i) {
                return reinterpret_cast<const std::byte*>(object.table + i * object.pitch);
            };
            return TableRows<lanes>{{entry(matrices.object[l], row(l))...}, {matrices.object[l].offset...}};
        });
    else return matrices.at(row, sameRow(0));
}
template <class View>
[[gnu::always_inline]] inline std::ptrdiff_t stepInPlace(const View& view) {
    if constexpr (isScattered<View>) return sizeof(void*);
    else if constexpr (isAdjacent<View>) return sizeof(typename View::Element);
    else return view.elementStride;
}

template <int groups, bool isParted, class S, class Rows>
[[gnu::noinline]] void luSweepsInPlace(Rows* rows, std::ptrdiff_t stride, S* x, std::ptrdiff_t n,
                                       std::ptrdiff_t place) {
    // As a constant, all of a block's elements have the same registers for their addresses.
    const std::ptrdiff_t step = isParted ? std::ptrdiff_t{sizeof(ElementOf<S>)} : stride;
    luSweeps<groups, isParted>(
        [&](int v, std::ptrdiff_t k, std::ptrdiff_t j)
            __attribute__((always_inline)) { return readElement<S>(rows[v * greatestInLanes + k], j * step); },
        x, n, place);
}

// The objects of some numbers, alike in where the blocks of their sums begin.
template <class T, class A, class B, class D, int objects>
[[gnu::noinline]] void luSolveAlike(const A& matrix, const B& src, const D& dst, const T* shared,
                                    const std::byte* pivots, const ObjectNumbers<objects>& numbers, std::ptrdiff_t n,
                                    std::ptrdiff_t place) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr bool isParted = isAdjacent<A>;
    constexpr int most = luGroupsInFlight<A>;
    const int groups = groupsFor<isShared<A>>(numbers, lanes);
    S x[most * greatestInLanes];
    [[maybe_unused]] S a[isShared<A> || staysInPlace<A> ? 1 : greatestInLanes * greatestInLanes];
    using Rows = decltype(rowsInPlace(groupOf<lanes>(matrix, numbers.at), sameRow(0)));
    [[maybe_unused]] Rows rows[staysInPlace<A> ? most * greatestInLanes : 1];
    for (int v = 0; v < groups; ++v) {
        const std::ptrdiff_t* const own = numbers.at + v * lanes;
        const auto vectors = groupOf<lanes>(src, own);
        const auto matrices = groupOf<lanes>(matrix, own);
        for (std::ptrdiff_t k = 0; k < n; ++k) {
            const auto pivoted = withLanes<lanes>([&](auto... l) {
                return std::array{load<std::int32_t>(pivots + 4 * (isShared<A> ? k : own[l] * n + k))...};
            });
            const auto row = [&](int l) { return pivoted[static_cast<std::size_t>(l)]; };
            x[v * greatestInLanes + k] = readElement<S>(vectors.at(sameRow(0), row));
            if constexpr (staysInPlace<A>) rows[v * greatestInLanes + k] = rowsInPlace(matrices, row);
            else if constexpr (!isShared<A>) readRowStarts(matrices, row, n, a + (v * n + k) * n, false);
        }
    }
    if constexpr (isShared<A>) {
        forGroups(groups, [&](auto some) { luSweepsWithShared<some, isParted>(shared, x, n, place); });
    } else if constexpr (staysInPlace<A>) {
        int v = 0;
        const auto next = [&](auto some) __attribute__((always_inline)) {
            const std::ptrdiff_t at = v * greatestInLanes;
            luSweepsInPlace<some, isParted>(rows + at, stepInPlace(matrix), x + at, n, place);
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
    const auto solveOne = [&](std::ptrdiff_t k) {
        luSolveGeneral<T>(matrix.at(k), src.at(k), dst.at(k), isShared<A> ? pivots : pivots + 4 * n * k, n);
    };
    if (n > greatestInLanes || count == 1) {
        for (std::ptrdiff_t k = 0; k < count; ++k) solveOne(k);
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
    constexpr int lanes = laneCount<T>, most = luGroupsInFlight<A> * lanes;
    // Of matrices in place four groups where the first cache holds all, or all in flight beside those to come: order 8, 4 KB a turn,
    // takes 1.6 times as long in memory.
    const std::ptrdiff_t bytes = n * n * static_cast<std::ptrdiff_t>(sizeof(T));
    const bool fourFit = staysInPlace<A> && (count * bytes <= firstCache || (n <= 12 && n != 8));
    const bool twoFit = isShared<A> || groupsInFlight<A> * n * n <= greatestInLanes * greatestInLanes;
    const int groups = fourFit ? 4 : twoFit ? groupsInFlight<A> : 1;
    const int atOnce = groups * lanes;
    forAlikeObjects<T, most>(dst, count, atOnce, isAdjacent<A> && n > block,
                             [&](const ObjectNumbers<most>& numbers, std::ptrdiff_t place) {
                                 if (numbers.size == 1) return solveOne(numbers.at[0]);
                                 for (int l = 0; l < numbers.size; ++l)
                                     fetchSquare(matrix, numbers.at[l] + atOnce, n, count);
                                 luSolveAlike<T>(matrix, src, dst, shared, pivots, numbers, n, place);
                             });
}

}  // namespace korm::inline KORM_VARIANT::linalg
