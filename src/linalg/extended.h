// Determinants of orders 3 to 6 in the extended precision of the x87 unit: all products and sums of a minor are formed
// there, the result is rounded once, when it is stored.
#pragma once

#include <emmintrin.h>

#include <cstddef>

#include "entry/views.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "linalg/minors.h"

namespace korm::inline KORM_VARIANT::linalg {

// Says that what is in memory, and in a local array too, may have changed, so that it is loaded again instead of being
// kept. Widening is free on the way into the unit; without this gcc keeps widened elements in memory at 80 bits, at four
// times the cost.
[[gnu::always_inline]] inline void loadAgain() { asm volatile("" : : : "memory"); }
template <class Elements>
[[gnu::always_inline]] inline void loadAgain(Elements& elements) {
    asm volatile("" : "+m"(elements) : : "memory");
}

template <class T>
using RowsInPlace = Grid<const T, Spacing::rowAdjacent>;

template <class T>
[[gnu::always_inline]] inline long double widened(const RowsInPlace<T>& m, int i, int j) {
    return load<T>(m.address(i, j));
}

// --- Order 3 --------------------------------------------------------------------------------------

// The two types are different expressions: one along the first row, one along the first column.
[[gnu::always_inline]] inline float extendedDeterminant3(const RowsInPlace<float>& m) {
    const long double a00 = widened(m, 0, 0), a01 = widened(m, 0, 1), a02 = widened(m, 0, 2);
    const long double a10 = widened(m, 1, 0), a11 = widened(m, 1, 1), a12 = widened(m, 1, 2);
    const long double a20 = widened(m, 2, 0), a21 = widened(m, 2, 1), a22 = widened(m, 2, 2);
    return static_cast<float>((a20 * a12 - a10 * a22) * a01 + (a21 * a10 - a20 * a11) * a02 +
                              (a11 * a22 - a12 * a21) * a00);
}

[[gnu::always_inline]] inline double extendedDeterminant3(const RowsInPlace<double>& m) {
    const long double a00 = widened(m, 0, 0), a01 = widened(m, 0, 1), a02 = widened(m, 0, 2);
    const long double a10 = widened(m, 1, 0), a11 = widened(m, 1, 1), a12 = widened(m, 1, 2);
    const long double a20 = widened(m, 2, 0), a21 = widened(m, 2, 1), a22 = widened(m, 2, 2);
    return static_cast<double>((a12 * a01 - a11 * a02) * a20 + (a11 * a22 - a12 * a21) * a00 +
                               (a21 * a02 - a01 * a22) * a10);
}

// --- Minors of the last two rows --------------------------------------------------------------------

// The product of two floats is exact in a double, so the vector unit makes the products of these minors and leaves the
// x87 unit, which multiplies once in a cycle, their differences. These are made anew for each use: 80 bits to memory and
// back take nine cycles, a double two.
template <int n>
class FloatPairs {
public:
    [[gnu::always_inline]] explicit FloatPairs(const RowsInPlace<float>& m) {
        const std::byte* const upper = m.address(n - 2, 0);
        const std::byte* const lower = m.address(n - 1, 0);
        const auto two = [](Float4 x) { return reinterpret_cast<Double2>(_mm_cvtps_pd(reinterpret_cast<__m128>(x))); };
#pragma GCC unroll 6
        for (int j = 0; j < n; j += 2) {
            // An odd last column is computed twice.
            const int from = j + 2 <= n ? j : n - 2;
            const Double2 right = two(loadPair(lower + 4 * from));
#pragma GCC unroll 6
            for (int i = 0; i < n; ++i)
                storeLanes(reinterpret_cast<std::byte*>(&product_[i][from]),
                           two(all<Float4>(load<float>(upper + 4 * i))) * right);
        }
    }
    [[gnu::always_inline]] long double minor(int left, int right) {
        loadAgain(product_);
        return static_cast<long double>(product_[left][right]) - product_[right][left];
    }

private:
    double product_[n][n];
};

template <int n>
class DoublePairs {
public:
    [[gnu::always_inline]] explicit DoublePairs(const RowsInPlace<double>& m) : m_(m) {}
    [[gnu::always_inline]] long double minor(int left, int right) {
        loadAgain();
        return widened(m_, n - 2, left) * widened(m_, n - 1, right) -
               widened(m_, n - 2, right) * widened(m_, n - 1, left);
    }

private:
    RowsInPlace<double> m_;
};

// --- Order 4 ----------------------------------------------------------------------------------------

// Along the first row; minors of three rows along their first, over those of the last two rows. One of these,
// that of columns 0 and 1, goes through memory.
[[gnu::always_inline]] inline float extendedDeterminant4(const RowsInPlace<float>& m) {
    FloatPairs<4> pairs(m);
    float m01 = static_cast<float>(pairs.minor(0, 1));
    loadAgain(m01);
    long double sum = widened(m, 0, 0) * (widened(m, 1, 1) * pairs.minor(2, 3) - widened(m, 1, 2) * pairs.minor(1, 3) +
                                          widened(m, 1, 3) * pairs.minor(1, 2));
    sum = sum - widened(m, 0, 1) * (widened(m, 1, 0) * pairs.minor(2, 3) - widened(m, 1, 2) * pairs.minor(0, 3) +
                                    widened(m, 1, 3) * pairs.minor(0, 2));
    sum = sum + widened(m, 0, 2) * (widened(m, 1, 0) * pairs.minor(1, 3) - widened(m, 1, 1) * pairs.minor(0, 3) +
                                    widened(m, 1, 3) * m01);
    loadAgain(m01);
    sum = sum - widened(m, 0, 3) * (widened(m, 1, 0) * pairs.minor(1, 2) - widened(m, 1, 1) * pairs.minor(0, 2) +
                                    widened(m, 1, 2) * m01);
    return static_cast<float>(sum);
}

[[gnu::always_inline]] inline double extendedDeterminant4(const RowsInPlace<double>& m) {
    DoublePairs<4> pairs(m);
    double m01 = static_cast<double>(pairs.minor(0, 1));
    const long double m02 = pairs.minor(0, 2), m03 = pairs.minor(0, 3);
    const long double m12 = pairs.minor(1, 2), m13 = pairs.minor(1, 3), m23 = pairs.minor(2, 3);
    loadAgain(m01);
    long double sum = widened(m, 0, 0) * (widened(m, 1, 1) * m23 - widened(m, 1, 2) * m13 + widened(m, 1, 3) * m12);
    loadAgain(m01);
    sum = sum - widened(m, 0, 1) * (widened(m, 1, 0) * m23 - widened(m, 1, 2) * m03 + widened(m, 1, 3) * m02);
    loadAgain(m01);
    sum = sum + widened(m, 0, 2) * (widened(m, 1, 0) * m13 - widened(m, 1, 1) * m03 + widened(m, 1, 3) * m01);
    loadAgain(m01);
    sum = sum - widened(m, 0, 3) * (widened(m, 1, 0) * m12 - widened(m, 1, 1) * m02 + widened(m, 1, 2) * m01);
    return static_cast<double>(sum);
}

// --- Orders 5 and 6 -----------------------------------------------------------------------------------

// One minor, by expansion along row i.
template <unsigned choice, int n, class T, class Smaller>
[[gnu::always_inline]] inline T expandedOnce(const RowsInPlace<T>& m, int i, const Smaller& smaller) {
    long double sum = 0;
    bool positive = true, started = false;
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j) {
        if ((choice >> j & 1) == 0) continue;
        const long double term = widened(m, i, j) * smaller(choice ^ 1U << j);
        sum = !started ? term : positive ? sum + term : sum - term;
        started = true;
        positive = !positive;
    }
    return static_cast<T>(sum);
}

// All minors of `size` rows from those of size - 1, evaluated in the unit and rounded to the element's type.
template <int size, int n, class T>
[[gnu::always_inline]] inline void expandAndRound(const RowsInPlace<T>& m, T (&smaller)[1 << n], T (&larger)[1 << n]) {
    forEachChoice<n, size>([&](auto choice) __attribute__((always_inline)) {
        loadAgain(smaller);
        larger[choice] = expandedOnce<choice, n>(m, n - size, [&](unsigned rest) { return smaller[rest]; });
    });
}

// Minors of three rows: those of two rows stay extended in single precision, and are rounded in double.
template <int n>
[[gnu::always_inline]] inline void minorsOfThree(const RowsInPlace<float>& m, float (&three)[1 << n]) {
    FloatPairs<n> pairs(m);
    forEachChoice<n, 3>([&](auto choice) __attribute__((always_inline)) {
        three[choice] =
            expandedOnce<choice, n>(m, n - 3, [&](unsigned rest) { return pairs.minor(firstOf(rest), lastOf(rest)); });
    });
}

template <int n>
[[gnu::always_inline]] inline void minorsOfThree(const RowsInPlace<double>& m, double (&three)[1 << n]) {
    DoublePairs<n> pairs(m);
    double two[1 << n];
    forEachChoice<n, 2>([&](auto choice) __attribute__((always_inline)) {
        two[choice] = static_cast<double>(pairs.minor(firstOf(choice), lastOf(choice)));
    });
    expandAndRound<3, n>(m, two, three);
}

// Along the first row, from minors of the last rows upwards. There are more of them than the unit has room for, so they
// go through memory, rounded to the element's type.
template <int n, class T>
[[gnu::always_inline]] inline T extendedDeterminantByMinors(const RowsInPlace<T>& m) {
    T three[1 << n], four[1 << n], five[1 << n];
    minorsOfThree<n>(m, three);
    expandAndRound<4, n>(m, three, four);
    expandAndRound<5, n>(m, four, five);
    if constexpr (n == 5) {
        return five[(1 << n) - 1];
    } else {
        T six[1 << n];
        expandAndRound<6, n>(m, five, six);
        return six[(1 << n) - 1];
    }
}

template <int n, class T>
[[gnu::always_inline]] inline void extendedDeterminant(const T* src, std::ptrdiff_t rowStride, T* dst) {
    const RowsInPlace<T> matrix = plain(src, rowStride).at(0);
    auto* const result = reinterpret_cast<std::byte*>(dst);
    if constexpr (n == 3) store(result, extendedDeterminant3(matrix));
    else if constexpr (n == 4) store(result, extendedDeterminant4(matrix));
    else store(result, extendedDeterminantByMinors<n>(matrix));
}

}  // namespace korm::inline KORM_VARIANT::linalg
