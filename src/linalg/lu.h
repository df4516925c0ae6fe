// LU decomposition: P A = L U, rows left in their places, pivots by position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/scalar.h"
#include "kernel/streams.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/cores.h"
#include "linalg/elimination.h"
#include "linalg/grids.h"
#include "linalg/lu_panels.h"
#include "linalg/order1.h"
#include "linalg/order2.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- Orders 1 to 6 ------------------------------------------------------------------------------

// One object, or a group in lanes. The factors come back in the order of the pivots, so each lane has rows of its own.
template <int n, class S>
[[gnu::always_inline]] inline bool factor(S (&a)[n][n], IndexOf<S> (&row)[n]) {
    using T = ElementOf<S>;
    if constexpr (n == 1) return factorOrder1(a, row, all<S>(std::numeric_limits<T>::epsilon()));
    else if constexpr (n == 2) return factorOrder2(a, row, all<S>(std::numeric_limits<T>::epsilon()));
    else return eliminate<n>(a, row, all<S>(2 * std::numeric_limits<T>::min())) == n;
}

// All is read before anything is written. In standard and list layout the rows that were finished before a
// failure are stored, in the pointer layout rows are stored when all are finished. Orders 1 and 2 leave failures to the general
// core, whose rules they share.
template <int n, class T, class A, class D>
[[gnu::noinline]] std::int32_t luSized(const A& src, const D& dst, std::byte* pivots) {
    T a[n][n];
    std::int32_t row[n];
    readMatrix(src, a);
    int finished = n;
    if constexpr (n > 2) finished = eliminate<n>(a, row, 2 * std::numeric_limits<T>::min());
    else if (!factor(a, row)) return cores::luGeneral(src, dst, pivots, n);
    for (int k = 0; k < n; ++k) store(pivots + 4 * k, row[k]);
    if (!isScattered<D> || finished == n)
        for (int k = 0; k < finished; ++k) writeRow(dst, row[k], a[k]);
    return finished == n ? korStatusOk : korStatusSingular;
}

// `index` has as many bits in a lane as the matrix's elements, memory has 32.
template <class Index, int n>
[[gnu::always_inline]] inline void writeIndices(const Places<std::byte, lanesOf<Index>>& to, const Index (&index)[n]) {
    if constexpr (sizeof(Index) > 16) {
        HalfOf<Index> low[n], high[n];
        unrolled<n>([&](auto k) __attribute__((always_inline)) {
            low[k] = lowHalf(index[k]);
            high[k] = highHalf(index[k]);
        });
        writeIndices(to.half(0), low);
        writeIndices(to.half(1), high);
    } else if constexpr (lanesOf<Index> == 4) {
        Float4 bits[n];
        unrolled<n>([&](auto k) __attribute__((always_inline)) { bits[k] = reinterpret_cast<Float4>(index[k]); });
        writeRun<n>(to, bits);
    } else {
        const auto bits = [&](int k) { return reinterpret_cast<Float4>(index[k]); };
        unrolled<n / 2>([&](auto p) __attribute__((always_inline)) {
            const Float4 pairs = __builtin_shufflevector(bits(2 * p), bits(2 * p + 1), 0, 4, 2, 6);
            storeLowPair(to.at[0] + 8 * p, pairs);
            storeHighPair(to.at[1] + 8 * p, pairs);
        });
        if constexpr (n % 2 != 0)
            unrolled<2>([&](auto l) __attribute__((always_inline)) {
                store(to.at[l] + 4 * (n - 1), static_cast<std::int32_t>(index[n - 1][l.value]));
            });
    }
}

// Order 1: an element is its own factor, unless it is too small. Returns how many objects are done: whole groups up to the first
// with such an element, and none where elements don't touch.
template <class T, class A, class D>
[[gnu::noinline]] std::ptrdiff_t luElements(const A& src, const D& dst, std::byte* pivots, std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int vectors = 4, lanes = vectors * laneCount<T>;
    const S tiny = all<S>(std::numeric_limits<T>::epsilon());
    if (!areStreams(src, dst)) return 0;
    const std::byte* from = src.at(0).address(0, 0);
    std::byte* to = dst.at(0).address(0, 0);
    std::ptrdiff_t k = 0;
    for (; k + lanes <= count; k += lanes, from += vectors * sizeof(S), to += vectors * sizeof(S)) {
        S a[vectors];
        MaskOf<S> isTiny{};
        unrolled<vectors>([&](auto v) __attribute__((always_inline)) {
            a[v] = load<S>(from + v * static_cast<int>(sizeof(S)));
            isTiny = either(isTiny, MaskOf<S>(tiny >= magnitude(a[v])));
        });
        if (any(isTiny)) break;
        unrolled<vectors>([&](auto v)
                              __attribute__((always_inline)) { store(to + v * static_cast<int>(sizeof(S)), a[v]); });
    }
    std::memset(pivots, 0, static_cast<std::size_t>(4 * k));
    return k;
}

template <int n, class S>
[[gnu::noinline]] bool factorGroup(S (&a)[n][n], IndexOf<S> (&row)[n]) {
    return factor(a, row);
}

template <int n, class T, class A, class D>
[[gnu::noinline]] std::int32_t luArray(const A& src, const D& dst, std::byte* pivots, std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr int bytes = n * n * static_cast<int>(sizeof(T));
    const std::ptrdiff_t fetchEnd = endOfFetching(count, 2 * bytes);
    const auto together = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        S a[n][n];
        IndexOf<S> row[n];
        if (k < fetchEnd) {
            fetchAhead<lanes, bytes>(src, k);
            fetchAhead<lanes, bytes>(dst, k);
        }
        readMatricesInTurn(groupAt<lanes>(src, k), a);
        if (!factorGroup(a, row)) return false;
        Places<std::byte, lanes> to;
        unrolled<lanes>([&](auto l) __attribute__((always_inline)) { to.at[l] = pivots + 4 * n * (k + l); });
        writeIndices(to, row);
        const auto results = groupAt<lanes>(dst, k);
        const auto writeRowOfEach = [&](int i) __attribute__((always_inline)) {
            writeRows(
                results, [&](int l) { return load<std::int32_t>(to.at[l] + 4 * i); }, a[i]);
        };
        forEachRow<n>(writeRowOfEach);
        return true;
    };
    const auto each = [&](std::ptrdiff_t k) { return luSized<n, T>(src.at(k), dst.at(k), pivots + 4 * n * k); };
    std::ptrdiff_t done = 0;
    if constexpr (n == 1) done = luElements<T>(src, dst, pivots, count);
    return inGroups<lanes>(
        count - done, [&](std::ptrdiff_t k) __attribute__((always_inline)) { return together(done + k); },
        [&](std::ptrdiff_t k) { return each(done + k); });
}

// --- Any order ----------------------------------------------------------------------------------

// Up to this order groups go in lanes, whose working copy is on the stack. Element (i, j) of each object is the vector a[i * n + j].
inline constexpr std::ptrdiff_t greatestFactored = leastInPanels - 1;

// Each object exchanges row k with one of its own.
template <class S>
[[gnu::always_inline]] inline void exchangeRows(S* a, std::ptrdiff_t k, IndexOf<S> other, std::ptrdiff_t n) {
    using T = ElementOf<S>;
    Places<std::byte, lanesOf<S>> others;
    unrolled<lanesOf<S>>([&](auto l) __attribute__((always_inline)) {
        others.at[l] = reinterpret_cast<std::byte*>(a + other[l.value] * n) + l * static_cast<int>(sizeof(T));
    });
    for (std::ptrdiff_t j = 0; j < n; ++j) {
        const auto distance = j * static_cast<std::ptrdiff_t>(sizeof(S));
        const S old = a[k * n + j];
        a[k * n + j] = readElement<S>(others, distance);
        writeElement(others, distance, old);
    }
}

// The greatest magnitude in a column so far, the first of equal ones, and its row.
template <class S>
struct Greatest {
    S magnitude;
    IndexOf<S> row;

    [[gnu::always_inline]] void begin(S element, std::ptrdiff_t i) {
        magnitude = korm::magnitude(element);
        row = allIndices<S>(static_cast<int>(i));
    }
    [[gnu::always_inline]] void add(S element, std::ptrdiff_t i) {
        const S candidate = korm::magnitude(element);
        const auto isTaken = asBits(candidate > magnitude);
        magnitude = greater(candidate, magnitude);
        row = chosen(isTaken, allIndices<S>(static_cast<int>(i)), row);
    }
};

// As luGeneral does one object. `rows` are the numbers of rows in the order of the pivots, those of an object together. False,
// and all undefined, if a pivot of an object is too small. A search is a chain of comparisons, so the next pivot is looked for
// while rows are eliminated.
template <class S>
[[gnu::noinline]] bool luGroup(S* a, std::int32_t* rows, std::ptrdiff_t n) {
    using T = ElementOf<S>;
    const S tiny = all<S>(std::numeric_limits<T>::epsilon());
    for (int l = 0; l < lanesOf<S>; ++l)
        for (std::ptrdiff_t i = 0; i < n; ++i) rows[l * n + i] = static_cast<std::int32_t>(i);
    Greatest<S> best;
    best.begin(a[0], 0);
    for (std::ptrdiff_t i = 1; i < n; ++i) best.add(a[i * n], i);
    for (std::ptrdiff_t k = 0; k < n - 1; ++k) {
        if (any(tiny >= best.magnitude)) return false;
        exchangeRows(a, k, best.row, n);
        for (int l = 0; l < lanesOf<S>; ++l) std::swap(rows[l * n + k], rows[l * n + best.row[l]]);
        const S* const pivot = a + k * n;
        const S scale = all<S>(1) / pivot[k];
        for (std::ptrdiff_t i = k + 1; i < n; ++i) {
            S* const row = a + i * n;
            const S multiplier = row[k] * scale;
            row[k] = multiplier;
            const S next = row[k + 1] - pivot[k + 1] * multiplier;
            row[k + 1] = next;
            if (i == k + 1) best.begin(next, i);
            else best.add(next, i);
            for (std::ptrdiff_t j = k + 2; j < n; ++j) row[j] = row[j] - pivot[j] * multiplier;
        }
    }
    return !any(tiny >= best.magnitude);
}

template <class T, class A, class D>
[[gnu::noinline]] std::int32_t luArrayGeneral(const A& src, const D& dst, std::byte* pivots, std::ptrdiff_t n,
                                              std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    const auto pivotsOf = [&](std::ptrdiff_t k) { return pivots + 4 * n * k; };
    const auto together = [&](std::ptrdiff_t k) {
        constexpr std::ptrdiff_t most = greatestFactored;
        if (n > most) return false;
        S a[most * most];
        std::int32_t rows[lanes * most];
        for (int l = 0; l < lanes; ++l) {
            fetchSquare(src, k + lanes + l, n, count);
            fetchSquare(dst, k + lanes + l, n, count);
        }
        readGroup(src, k, n, n, a);
        if (!luGroup(a, rows, n)) return false;
        const auto results = groupAt<lanes>(dst, k);
        for (std::ptrdiff_t i = 0; i < n; ++i)
            writeRowStarts(
                results, [&](int l) { return rows[l * n + i]; }, n, a + i * n, false);
        for (std::ptrdiff_t i = 0; i < lanes * n; ++i) store(pivotsOf(k) + 4 * i, rows[i]);
        return true;
    };
    return inGroups<lanes>(count, together,
                           [&](std::ptrdiff_t k) { return cores::luGeneral(src.at(k), dst.at(k), pivotsOf(k), n); });
}

// --- Choice ---------------------------------------------------------------------------------------

template <int n, class T, class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t luObjects(const A& src, const D& dst, std::byte* pivots, Count count) {
    if constexpr (isOneObject<Count>) return luSized<n, T>(src.at(0), dst.at(0), pivots);
    else return luArray<n, T>(withAnyObjects<n>(src), withAnyObjects<n>(dst), pivots, count);
}

template <class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t luDecomposition(A src, D dst, std::int32_t* pivots, std::int32_t order,
                                                           Count count) {
    using T = typename D::Element;
    auto* const bytes = reinterpret_cast<std::byte*>(pivots);
    return forOrder(
        order, [&](auto n) __attribute__((always_inline)) { return luObjects<n, T>(src, dst, bytes, count); },
        [&]() __attribute__((always_inline)) {
            if (order == 1) return luObjects<1, T>(src, dst, bytes, count);
            if (order == 2) return luObjects<2, T>(src, dst, bytes, count);
            if constexpr (isOneObject<Count>) return cores::luGeneral(src.at(0), dst.at(0), bytes, order);
            else return luArrayGeneral<T>(withAnyObjects(src), withAnyObjects(dst), bytes, order, count);
        });
}

}  // namespace korm::inline KORM_VARIANT::linalg
