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

// Rounds a minor as a passage through memory does.
template <class T>
[[gnu::always_inline]] inline long double rounded(long double x) {
    return static_cast<T>(x);
}

// The orders 3 of the two types are different expressions: one along the first row, one along the first column.
inline float extendedDeterminant3(const float (&m)[3][3]) {
    const long double a00 = m[0][0], a01 = m[0][1], a02 = m[0][2];
    const long double a10 = m[1][0], a11 = m[1][1], a12 = m[1][2];
    const long double a20 = m[2][0], a21 = m[2][1], a22 = m[2][2];
    return static_cast<float>((a20 * a12 - a10 * a22) * a01 + (a21 * a10 - a20 * a11) * a02 +
                              (a11 * a22 - a12 * a21) * a00);
}

inline double extendedDeterminant3(const double (&m)[3][3]) {
    const long double a00 = m[0][0], a01 = m[0][1], a02 = m[0][2];
    const long double a10 = m[1][0], a11 = m[1][1], a12 = m[1][2];
    const long double a20 = m[2][0], a21 = m[2][1], a22 = m[2][2];
    return static_cast<double>((a12 * a01 - a11 * a02) * a20 + (a11 * a22 - a12 * a21) * a00 +
                               (a21 * a02 - a01 * a22) * a10);
}

// Along the first row; minors of three rows along their first, over those of the last two rows. One of these,
// that of columns 0 and 1, doesn't fit into the unit beside the others and goes through memory.
template <class T>
inline T extendedDeterminant4(const T (&m)[4][4]) {
    const long double a10 = m[1][0], a11 = m[1][1], a12 = m[1][2], a13 = m[1][3];
    const long double a20 = m[2][0], a21 = m[2][1], a22 = m[2][2], a23 = m[2][3];
    const long double a30 = m[3][0], a31 = m[3][1], a32 = m[3][2], a33 = m[3][3];
    const long double m01 = rounded<T>(a20 * a31 - a21 * a30);
    const long double m02 = a20 * a32 - a22 * a30, m03 = a20 * a33 - a23 * a30;
    const long double m12 = a21 * a32 - a22 * a31, m13 = a21 * a33 - a23 * a31, m23 = a22 * a33 - a23 * a32;
    const long double without0 = a11 * m23 - a12 * m13 + a13 * m12;
    const long double without1 = a10 * m23 - a12 * m03 + a13 * m02;
    const long double without2 = a10 * m13 - a11 * m03 + a13 * m01;
    const long double without3 = a10 * m12 - a11 * m02 + a12 * m01;
    return static_cast<T>(m[0][0] * without0 - m[0][1] * without1 + m[0][2] * without2 - m[0][3] * without3);
}

template <class T, int n>
[[gnu::always_inline]] inline void widened(const T (&row)[n], long double (&wide)[n]) {
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j) wide[j] = row[j];
}

// Minors of `size` rows, each rounded when it is stored: more than eight don't fit into the unit.
template <int size, class T, int n>
[[gnu::always_inline]] inline void expandAndRound(const T (&row)[n], const T (&smaller)[1 << n], T (&larger)[1 << n]) {
    forEachChoice<n, size>([&](auto choice) __attribute__((always_inline)) {
        long double wide[n], minors[1 << n];
        widened(row, wide);
#pragma GCC unroll 64
        for (int i = 0; i < 1 << n; ++i) minors[i] = smaller[i];
        larger[choice] = static_cast<T>(expanded<Line::first, choice>(wide, minors));
    });
}

// Orders 5 and 6: along the first row, from minors of the last rows upwards. The extended format holds within
// the evaluation of a minor of three rows or more, those of two rows stay in it.
template <int n, class T>
inline T extendedDeterminant(const T (&a)[n][n]) {
    long double lowest[n], above[n], next[n], one[1 << n], two[1 << n];
    T three[1 << n], four[1 << n] = {}, five[1 << n] = {}, all[1 << n] = {};
    widened(a[n - 1], lowest);
    widened(a[n - 2], above);
    widened(a[n - 3], next);
    startMinors(lowest, one);
    expandAll<Line::first, 2>(above, one, two);
    forEachChoice<n, 3>([&](auto choice) __attribute__((always_inline)) {
        three[choice] = static_cast<T>(expanded<Line::first, choice>(next, two));
    });
    expandAndRound<4>(a[n - 4], three, four);
    if constexpr (n == 5) {
        expandAndRound<5>(a[0], four, all);
    } else {
        expandAndRound<5>(a[1], four, five);
        expandAndRound<6>(a[0], five, all);
    }
    return all[(1 << n) - 1];
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

template <class View>
inline constexpr bool isPlainFloatArray =
    isPlain<View> && View::objects == Objects::stepped && std::is_same_v<typename View::Element, float>;

template <int n, class T, class A>
[[gnu::noinline]] T closedDeterminantOf(const A& matrix) {
    T a[n][n];
    readSquare<n>(matrix, a);
    return closedDeterminant(a);
}

// Results stand in a row in every layout.
template <class View>
[[gnu::always_inline]] inline std::byte* resultOf(std::byte* dst, std::ptrdiff_t k) {
    return dst + k * static_cast<std::ptrdiff_t>(sizeof(typename View::Element));
}

template <class View, int n>
[[gnu::always_inline]] inline auto sizedDeterminant(const View& src, std::ptrdiff_t k) {
    using T = typename View::Element;
    if constexpr (isPlain<View> && !(n == 3 && isPlainFloatArray<View>)) return extendedDeterminantOf<n, T>(src.at(k));
    else return closedDeterminantOf<n, T>(src.at(k));
}

template <int n, class View, class Count>
[[gnu::always_inline]] inline void sizedDeterminants(const View& src, std::byte* dst, Count count) {
    for (std::ptrdiff_t k = 0; k < count; ++k) store(resultOf<View>(dst, k), sizedDeterminant<View, n>(src, k));
}

// Aligned floats of order 4 go in pairs in single precision; an odd last one is left to extended precision.
template <class View>
[[gnu::always_inline]] inline std::ptrdiff_t determinantPairs(const View& src, std::byte* dst, std::ptrdiff_t count) {
    const auto bits = reinterpret_cast<std::intptr_t>(src.origin) | src.objectStride | src.rowStride;
    if (bits % 16 != 0) return 0;
    const std::ptrdiff_t paired = count - count % 2;
    for (std::ptrdiff_t k = 0; k < paired; ++k)
        store(resultOf<View>(dst, k), closedDeterminantOf<4, float>(src.at(k)));
    return paired;
}

template <class View, class Count>
[[gnu::always_inline]] inline void determinant(View src, typename View::Element* results,
                                               typename View::Element* buffer, std::int32_t order, Count count) {
    using T = typename View::Element;
    auto* const dst = reinterpret_cast<std::byte*>(results);
    switch (order) {
        case 3: return sizedDeterminants<3>(src, dst, count);
        case 4: {
            std::ptrdiff_t first = 0;
            if constexpr (isPlainFloatArray<View>) first = determinantPairs(src, dst, count);
            for (std::ptrdiff_t k = first; k < count; ++k) store(resultOf<View>(dst, k), sizedDeterminant<View, 4>(src, k));
            return;
        }
        case 5: return sizedDeterminants<5>(src, dst, count);
        case 6: return sizedDeterminants<6>(src, dst, count);
        default: break;
    }
    constexpr bool single = isOne<Count>;
    constexpr Search search = single && isPlain<View> ? Search::single : Search::exact;
    constexpr Vanishing vanishing = single ? Vanishing::zero : Vanishing::signedZero;
    for (std::ptrdiff_t k = 0; k < count; ++k)
        store(resultOf<View>(dst, k), eliminatedDeterminant<search, vanishing, T>(src.at(k), buffer, order));
}

}  // namespace korm
