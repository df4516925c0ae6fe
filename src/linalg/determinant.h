// Determinants: closed forms at orders 3 to 6, elimination at all others.
//
// Which closed form a matrix gets follows from its layout. Where the elements of a row touch, it is evaluated in
// the extended precision of the x87 unit; but in the standard array layout of floats, orders 3 and, on aligned
// data, 4 stay in single precision. All other layouts take the closed form in the element's own type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "linalg/cores.h"
#include "linalg/minors.h"
#include "linalg/order2.h"
#include "linalg/rows.h"
#include "linalg/tolerance.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- Closed form in the element's type ------------------------------------------------------------

// Expansion along the last row, from shared minors of the upper rows.
template <int n, class S>
[[gnu::always_inline]] inline S closedDeterminant(const S (&a)[n][n]) {
    S minors[n][1 << n];
    startMinors(a[0], minors[0]);
    expandAll<Line::last, 2>(a[1], minors[0], minors[1]);
    expandAll<Line::last, 3>(a[2], minors[1], minors[2]);
    if constexpr (n > 3) expandAll<Line::last, 4>(a[3], minors[2], minors[3]);
    if constexpr (n > 4) expandAll<Line::last, 5>(a[4], minors[3], minors[4]);
    if constexpr (n > 5) expandAll<Line::last, 6>(a[5], minors[4], minors[5]);
    return minors[n - 1][(1 << n) - 1];
}

// --- Elimination ----------------------------------------------------------------------------------

// How the greatest value of a pivot search is held: as what it is, or, in one kernel, in single precision.
enum class Search { exact, single };

// What a pivot that is too small leaves: zero, or the product so far times a zero that is made of the last element.
enum class Vanishing { zero, signedZero };

template <Search search, Vanishing vanishing, class T, class A>
[[gnu::noinline]] T eliminatedDeterminant(A src, T* buffer, std::int32_t order) {
    const std::ptrdiff_t n = order;
    const T tiny = tolerance<T>(order);
    const auto work = plain(buffer, n * static_cast<std::ptrdiff_t>(sizeof(T))).at(0);
    std::byte* const positions = work.address(n, 0);
    const auto row = [positions](std::ptrdiff_t k) { return load<std::int32_t>(positions + 4 * k); };
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        store(positions + 4 * i, static_cast<std::int32_t>(i));
        copyRow<T>(src, work, i, n);
    }
    const auto held = [](T value) {
        return search == Search::single ? static_cast<T>(static_cast<float>(value)) : value;
    };
    T sign = 1, product = 1;
    for (std::ptrdiff_t k = 0; k < n - 1; ++k) {
        T best;
        const std::ptrdiff_t bestPosition = greatestPosition(
            k, n, [&](std::ptrdiff_t i) { return load<T>(work.address(row(i), k)); }, best, held);
        const std::int32_t pivotRow = row(bestPosition);
        if (bestPosition != k) {
            store(positions + 4 * bestPosition, row(k));
            store(positions + 4 * k, pivotRow);
            sign = -sign;
        }
        const T pivot = load<T>(work.address(pivotRow, k));
        if (tiny > std::fabs(pivot)) {
            if (vanishing == Vanishing::zero) return 0;
            return product * (load<T>(work.address(row(n - 1), n - 1)) * 0);
        }
        for (std::ptrdiff_t i = k + 1; i < n; ++i) {
            const T multiplier = load<T>(work.address(row(i), k)) / pivot;
            eliminateFromRow(work, row(i), pivotRow, multiplier, k, n);
        }
        product = product * pivot;
    }
    const T last = load<T>(work.address(row(n - 1), n - 1));
    // Not the opposite comparison: a NaN gives 0 too.
    if (!(std::fabs(last) > tiny)) return 0;
    return (last * sign) * product;
}

// --- Choice ---------------------------------------------------------------------------------------

// Results stand in a row in every layout.
template <class View>
[[gnu::always_inline]] inline std::byte* resultOf(std::byte* dst, std::ptrdiff_t k) {
    return dst + k * static_cast<std::ptrdiff_t>(sizeof(typename View::Element));
}

template <int n, class View>
[[gnu::noinline]] void closedDeterminants(const View& src, std::byte* dst, std::ptrdiff_t count) {
    using T = typename View::Element;
    std::ptrdiff_t k = 0;
    if constexpr (!isShared<View>)
        for (; k + laneCount<T> <= count; k += laneCount<T>) {
            Lanes<T> a[n][n];
            readMatrices(groupAt<laneCount<T>>(src, k), a);
            storeLanes(resultOf<View>(dst, k), closedDeterminant(a));
        }
    for (; k < count; ++k) {
        T a[n][n];
        readMatrix(src.at(k), a);
        store(resultOf<View>(dst, k), closedDeterminant(a));
    }
}

template <int n, class View>
[[gnu::always_inline]] inline void extendedDeterminants(const View& src, std::byte* dst, std::ptrdiff_t first,
                                                        std::ptrdiff_t count) {
    for (std::ptrdiff_t k = first; k < count; ++k)
        cores::extendedDeterminant<n>(reinterpret_cast<const typename View::Element*>(src.at(k).origin), src.rowStride,
                                      reinterpret_cast<typename View::Element*>(resultOf<View>(dst, k)));
}

template <int n, class View>
[[gnu::always_inline]] inline void sizedDeterminants(const View& src, std::byte* dst, std::ptrdiff_t count) {
    constexpr bool plainFloatArray =
        isAdjacent<View> && View::objects == Objects::stepped && std::is_same_v<typename View::Element, float>;
    if constexpr (!isAdjacent<View> || (n == 3 && plainFloatArray)) {
        closedDeterminants<n>(withAnyObjects<n>(src), dst, count);
    } else if constexpr (n == 4 && plainFloatArray) {
        // Aligned matrices go in pairs, an odd last one is left to extended precision.
        const auto bits = reinterpret_cast<std::intptr_t>(src.origin) | src.objectStride | src.rowStride;
        const std::ptrdiff_t paired = bits % 16 == 0 ? count - count % 2 : 0;
        closedDeterminants<n>(withAnyObjects<n>(src), dst, paired);
        extendedDeterminants<n>(src, dst, paired, count);
    } else {
        extendedDeterminants<n>(src, dst, 0, count);
    }
}

template <class View>
[[gnu::noinline]] void determinantsOrder2(const View& src, std::byte* dst, typename View::Element* buffer,
                                          std::ptrdiff_t count) {
    using T = typename View::Element;
    const Lanes<T> tiny = broadcast(tolerance<T>(2));
    const auto together = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        Lanes<T> a[2][2], determinants;
        readMatrices(groupAt<laneCount<T>>(src, k), a);
        if (!determinantOrder2(a, tiny, determinants)) return false;
        storeLanes(resultOf<View>(dst, k), determinants);
        return true;
    };
    const auto each = [&](std::ptrdiff_t k) {
        store(resultOf<View>(dst, k),
              eliminatedDeterminant<Search::exact, Vanishing::signedZero, T>(src.at(k), buffer, 2));
        return korStatusOk;
    };
    inGroups<laneCount<T>>(count, together, each);
}

template <class View, class Count>
[[gnu::always_inline]] inline void determinant(View src, typename View::Element* results,
                                               typename View::Element* buffer, std::int32_t order, Count count) {
    using T = typename View::Element;
    auto* const dst = reinterpret_cast<std::byte*>(results);
    if constexpr (!isOneObject<Count>)
        if (order == 2) return determinantsOrder2(withAnyObjects<2>(src), dst, buffer, count);
    // The single form of doubles alone has the odd search; all single forms have a plain zero.
    constexpr bool single = isOneObject<Count>;
    constexpr Search search = single && isAdjacent<View> ? Search::single : Search::exact;
    constexpr Vanishing vanishing = single ? Vanishing::zero : Vanishing::signedZero;
    forOrder(
        order, [&](auto n) __attribute__((always_inline)) { sizedDeterminants<n>(src, dst, count); },
        [&]() __attribute__((always_inline)) {
            for (std::ptrdiff_t k = 0; k < count; ++k)
                store(resultOf<View>(dst, k), eliminatedDeterminant<search, vanishing, T>(src.at(k), buffer, order));
        });
}

}  // namespace korm::inline KORM_VARIANT::linalg
