// Determinants of orders 3 to 6 in the extended precision of the x87 unit: all products and sums of a minor are formed
// there, the result is rounded once, when it is stored.
#pragma once

#include <cstddef>
#include <type_traits>

#include "entry/views.h"
#include "linalg/minors.h"
#include "linalg/objects.h"

namespace korm {

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
// has room for, so they go through memory, rounded to the element's type; but in single precision those of two rows
// stay extended.
template <int n, class T>
[[gnu::always_inline]] inline T extendedDeterminant(T (&a)[n][n]) {
    using Pair = std::conditional_t<std::is_same_v<T, float>, long double, double>;
    T one[1 << n], three[1 << n], four[1 << n], five[1 << n];
    Pair two[1 << n];
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
[[gnu::always_inline]] inline T extendedDeterminantOf(const Grid<const T, Spacing::rowAdjacent>& matrix) {
    T a[n][n];
    readSquare<n>(matrix, a);
    if constexpr (n == 3) return extendedDeterminant3(a);
    else if constexpr (n == 4) return extendedDeterminant4(a);
    else return extendedDeterminant(a);
}

}  // namespace korm
