// Determinants: closed forms at orders 3 to 6, elimination at all others.
//
// Which closed form a matrix gets follows from its layout. Where the elements of a row touch, it is evaluated in
// the extended precision of the x87 unit; but in the standard array layout of floats, orders 3 and, on aligned
// data, 4 stay in single precision. All other layouts take the closed form in the element's own type.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/lanes.h"
#include "entry/views.h"
#include "linalg/groups.h"
#include "linalg/minors.h"
#include "linalg/objects.h"
#include "linalg/rows.h"
#include "linalg/scalars.h"

namespace korm {

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

// --- Extended precision ---------------------------------------------------------------------------

// Says that these elements may have changed, so that they are loaded again instead of being kept. Widening is
// free on the way into the unit; without this gcc keeps widened elements in memory at 80 bits, at four times the cost.
template <class Elements>
[[gnu::always_inline]] inline void loadAgain(Elements& elements) {
    asm volatile("" : "+m"(elements));
}

// a * d - b * c, for a pair of columns.
template <class T, int n>
[[gnu::always_inline]] inline long double minorOfTwo(const T (&upper)[n], const T (&lower)[n], int left, int right) {
    return static_cast<long double>(upper[left]) * lower[right] - static_cast<long double>(upper[right]) * lower[left];
}

// The orders 3 of the two types are different expressions: one along the first row, one along the first column.
[[gnu::always_inline]] inline float extendedDeterminant3(const float (&m)[3][3]) {
    const long double a00 = m[0][0], a01 = m[0][1], a02 = m[0][2];
    const long double a10 = m[1][0], a11 = m[1][1], a12 = m[1][2];
    const long double a20 = m[2][0], a21 = m[2][1], a22 = m[2][2];
    return static_cast<float>((a20 * a12 - a10 * a22) * a01 + (a21 * a10 - a20 * a11) * a02 +
                              (a11 * a22 - a12 * a21) * a00);
}

[[gnu::always_inline]] inline double extendedDeterminant3(const double (&m)[3][3]) {
    const long double a00 = m[0][0], a01 = m[0][1], a02 = m[0][2];
    const long double a10 = m[1][0], a11 = m[1][1], a12 = m[1][2];
    const long double a20 = m[2][0], a21 = m[2][1], a22 = m[2][2];
    return static_cast<double>((a12 * a01 - a11 * a02) * a20 + (a11 * a22 - a12 * a21) * a00 +
                               (a21 * a02 - a01 * a22) * a10);
}

// Along the first row; minors of three rows along their first, over those of the last two rows. One of these,
// that of columns 0 and 1, doesn't fit into the unit beside the others and goes through memory.
template <class T>
[[gnu::always_inline]] inline T extendedDeterminant4(T (&m)[4][4]) {
    T m01 = static_cast<T>(minorOfTwo(m[2], m[3], 0, 1));
    const long double m02 = minorOfTwo(m[2], m[3], 0, 2), m03 = minorOfTwo(m[2], m[3], 0, 3);
    loadAgain(m);
    const long double m12 = minorOfTwo(m[2], m[3], 1, 2), m13 = minorOfTwo(m[2], m[3], 1, 3);
    const long double m23 = minorOfTwo(m[2], m[3], 2, 3);
    loadAgain(m);
    long double sum = m[0][0] * (m[1][1] * m23 - m[1][2] * m13 + m[1][3] * m12);
    loadAgain(m);
    sum = sum - m[0][1] * (m[1][0] * m23 - m[1][2] * m03 + m[1][3] * m02);
    loadAgain(m);
    sum = sum + m[0][2] * (m[1][0] * m13 - m[1][1] * m03 + static_cast<long double>(m[1][3]) * m01);
    loadAgain(m);
    sum = sum - m[0][3] * (m[1][0] * m12 - m[1][1] * m02 + static_cast<long double>(m[1][2]) * m01);
    return static_cast<T>(sum);
}

// All minors of `size` rows from those of size - 1, evaluated in the unit and rounded to what they are kept as.
template <int size, class T, class Smaller, class Larger, int n>
[[gnu::always_inline]] inline void expandAndRound(T (&row)[n], Smaller (&smaller)[1 << n], Larger (&larger)[1 << n]) {
    forEachChoice<n, size>([&](auto choice) __attribute__((always_inline)) {
        loadAgain(row);
        loadAgain(smaller);
        long double sum = 0;
        bool positive = true, started = false;
#pragma GCC unroll 6
        for (int j = 0; j < n; ++j) {
            if ((choice >> j & 1) == 0) continue;
            const long double term = static_cast<long double>(row[j]) * smaller[choice ^ 1U << j];
            sum = !started ? term : positive ? sum + term : sum - term;
            started = true;
            positive = !positive;
        }
        larger[choice] = static_cast<Larger>(sum);
    });
}

// Orders 5 and 6: along the first row, from minors of the last rows upwards. There are more of them than the unit
// has room for, so they go through memory: those of two rows as doubles, larger ones in the element's type.
template <int n, class T>
[[gnu::always_inline]] inline T extendedDeterminant(T (&a)[n][n]) {
    T one[1 << n], three[1 << n], four[1 << n], five[1 << n];
    double two[1 << n];
    startMinors(a[n - 1], one);
    expandAndRound<2>(a[n - 2], one, two);
    expandAndRound<3>(a[n - 3], two, three);
    expandAndRound<4>(a[n - 4], three, four);
    expandAndRound<5>(a[n - 5], four, five);
    if constexpr (n == 5) {
        return five[(1 << n) - 1];
    } else {
        T six[1 << n];
        expandAndRound<6>(a[0], five, six);
        return six[(1 << n) - 1];
    }
}

template <int n, class T>
[[gnu::noinline]] T extendedDeterminantOf(const Grid<const T, Spacing::rowAdjacent>& matrix) {
    T a[n][n];
    readSquare<n>(matrix, a);
    if constexpr (n == 3) return extendedDeterminant3(a);
    else if constexpr (n == 4) return extendedDeterminant4(a);
    else return extendedDeterminant(a);
}

// --- Elimination ----------------------------------------------------------------------------------

// How the greatest value of a pivot search is held: as what it is, or, in one kernel, in single precision.
enum class Search { exact, single };

// What a pivot that is too small leaves: zero, or the product so far times a zero that is made of the last element.
enum class Vanishing { zero, signedZero };

template <Search search, Vanishing vanishing, class T, class A>
[[gnu::noinline]] T eliminatedDeterminant(const A& src, T* buffer, std::int32_t order) {
    const std::ptrdiff_t n = order;
    const T tiny = tolerance<T>(order);
    const auto work = plain(buffer, n * static_cast<std::ptrdiff_t>(sizeof(T))).at(0);
    std::byte* const positions = work.address(n, 0);
    const auto row = [positions](std::ptrdiff_t k) { return load<std::int32_t>(positions + 4 * k); };
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        store(positions + 4 * i, static_cast<std::int32_t>(i));
        copyRow<T>(src, work, i, n);
    }
    const auto held = [](T value) { return search == Search::single ? static_cast<T>(static_cast<float>(value)) : value; };
    T sign = 1, product = 1;
    for (std::ptrdiff_t k = 0; k < n - 1; ++k) {
        T best = held(std::fabs(load<T>(work.address(row(k), k))));
        std::ptrdiff_t bestPosition = k;
        for (std::ptrdiff_t i = k + 1; i < n; ++i) {
            const T candidate = std::fabs(load<T>(work.address(row(i), k)));
            if (candidate > best) {
                best = held(candidate);
                bestPosition = i;
            }
        }
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
            subtractRow(work, row(i), work, pivotRow, multiplier, k + 1, n);
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
    if constexpr (View::objects != Objects::single)
        for (; k + laneCount<T> <= count; k += laneCount<T>) {
            Lanes<T> a[n][n];
            readSquares(groupAt<laneCount<T>>(src, k), a);
            storeLanes(resultOf<View>(dst, k), closedDeterminant(a));
        }
    for (; k < count; ++k) {
        T a[n][n];
        readSquare<n>(src.at(k), a);
        store(resultOf<View>(dst, k), closedDeterminant(a));
    }
}

template <int n, class View>
[[gnu::always_inline]] inline void extendedDeterminants(const View& src, std::byte* dst, std::ptrdiff_t first,
                                                        std::ptrdiff_t count) {
    for (std::ptrdiff_t k = first; k < count; ++k)
        store(resultOf<View>(dst, k), extendedDeterminantOf<n, typename View::Element>(src.at(k)));
}

template <int n, class View>
[[gnu::always_inline]] inline void sizedDeterminants(const View& src, std::byte* dst, std::ptrdiff_t count) {
    constexpr bool plainFloatArray =
        isPlain<View> && View::objects == Objects::stepped && std::is_same_v<typename View::Element, float>;
    if constexpr (!isPlain<View> || (n == 3 && plainFloatArray)) {
        closedDeterminants<n>(src, dst, count);
    } else if constexpr (n == 4 && plainFloatArray) {
        // Aligned matrices go in pairs, an odd last one is left to extended precision.
        const auto bits = reinterpret_cast<std::intptr_t>(src.origin) | src.objectStride | src.rowStride;
        const std::ptrdiff_t paired = bits % 16 == 0 ? count - count % 2 : 0;
        closedDeterminants<n>(src, dst, paired);
        extendedDeterminants<n>(src, dst, paired, count);
    } else {
        extendedDeterminants<n>(src, dst, 0, count);
    }
}

template <class View, class Count>
[[gnu::always_inline]] inline void determinant(View src, typename View::Element* results,
                                               typename View::Element* buffer, std::int32_t order, Count count) {
    using T = typename View::Element;
    auto* const dst = reinterpret_cast<std::byte*>(results);
    switch (order) {
        case 3: return sizedDeterminants<3>(src, dst, count);
        case 4: return sizedDeterminants<4>(src, dst, count);
        case 5: return sizedDeterminants<5>(src, dst, count);
        case 6: return sizedDeterminants<6>(src, dst, count);
        default: break;
    }
    // The single form of doubles alone has the odd search; all single forms have a plain zero.
    constexpr bool single = isOne<Count>;
    constexpr Search search = single && isPlain<View> ? Search::single : Search::exact;
    constexpr Vanishing vanishing = single ? Vanishing::zero : Vanishing::signedZero;
    for (std::ptrdiff_t k = 0; k < count; ++k)
        store(resultOf<View>(dst, k), eliminatedDeterminant<search, vanishing, T>(src.at(k), buffer, order));
}

}  // namespace korm
