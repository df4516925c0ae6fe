// Determinants and inverses in a wider format, and how far a result may be off whose order of evaluation is open.
//
// A Laplace expansion in any order is a sum of n! products of n elements. Each product takes part in at most n - 1
// multiplications and n (n - 1) / 2 additions, each of which changes it by a factor of 1 + u at worst. So the error is
// bounded by that many u times the permanent of the absolute values, whatever the cancellation.
#pragma once

#include "square.h"

namespace kormtest {

// So wide that its own rounding doesn't count against the bounds. clang 14 computes wrongly in 128 bits on ia32; the
// 64 bits of the extended format are 11 more than a double has, which the bounds have room for.
#if defined(__clang__) && defined(__i386__)
using Quad = long double;
#else
__extension__ typedef __float128 Quad;
#endif

template <class T>
struct WideOf {
    using type = long double;
};
template <>
struct WideOf<double> {
    using type = Quad;
};
template <class T>
using Wide = typename WideOf<T>::type;

// Does `long double` have its 64 bits? Memory checkers compute the x87 unit's results in double.
inline bool extendedFormatWorks() {
    volatile long double one = 1;
    return one + 0x1p-60L != one;
}

template <class W>
W absolute(W value) {
    return value < 0 ? -value : value;
}

// Sums over permutations by subsets of columns, rows from the last to the first: signed it is the determinant, of absolute
// values the permanent. Entry `columns` of the table belongs to the last |columns| rows.
template <class W, class T>
class Expansion {
public:
    Expansion(const Square<T>& a, bool permanent) : table_(std::size_t{1} << a.order()) {
        const std::int32_t n = a.order();
        table_[0] = 1;
        for (std::uint32_t columns = 1; columns < table_.size(); ++columns) {
            const std::int32_t row = n - __builtin_popcount(columns);
            W sum = 0;
            W sign = 1;
            for (std::int32_t j = 0; j < n; ++j) {
                if ((columns >> j & 1u) == 0) continue;
                const W element = static_cast<W>(a(row, j));
                const W rest = table_[columns & ~(1u << j)];
                if (permanent) {
                    sum += absolute(element) * rest;
                } else {
                    sum += sign * element * rest;
                    sign = -sign;
                }
            }
            table_[columns] = sum;
        }
    }
    W whole() const { return table_.back(); }
    W of(std::uint32_t columns) const { return table_[columns]; }

private:
    std::vector<W> table_;
};

template <class T>
Wide<T> preciseDeterminant(const Square<T>& a) {
    return Expansion<Wide<T>, T>(a, false).whole();
}

template <class T>
long double absolutePermanent(const Square<T>& a) {
    return Expansion<long double, T>(a, true).whole();
}

inline long double expansionSteps(std::int32_t n) { return static_cast<long double>(n - 1 + n * (n - 1) / 2); }

// Half a unit in the last place, relative.
template <class T>
constexpr long double unit() {
    return static_cast<long double>(std::numeric_limits<T>::epsilon()) / 2;
}

// The bound of a closed form that works in the element type throughout.
template <class T>
long double determinantBound(const Square<T>& a) {
    return 1.01L * expansionSteps(a.order()) * unit<T>() * absolutePermanent(a);
}

// --- The kernels in extended precision, orders 4 to 6 ---

inline constexpr long double extendedUnit = 0x1p-64L;

template <class T>
struct Interval {
    Wide<T> middle;
    long double radius;
};

// Order 4: one minor is rounded to the element type on its way through memory, all else is extended.
template <class T>
Interval<T> extendedDeterminant4(const Square<T>& source) {
    const auto a = [&](std::int32_t i, std::int32_t j) { return static_cast<long double>(source(i, j)); };
    const auto w = [&](std::int32_t i, std::int32_t j) { return static_cast<Wide<T>>(source(i, j)); };
    const T stored = static_cast<T>(a(2, 0) * a(3, 1) - a(2, 1) * a(3, 0));
    const Wide<T> exact = w(2, 0) * w(3, 1) - w(2, 1) * w(3, 0);
    const Wide<T> change = static_cast<Wide<T>>(stored) - exact;
    const Wide<T> middle = preciseDeterminant(source) + change * (w(0, 2) * w(1, 3) - w(0, 3) * w(1, 2));
    const long double inside = 1.01L * expansionSteps(4) * extendedUnit * absolutePermanent(source);
    return {middle, 1.01L * unit<T>() * absolute(static_cast<long double>(middle)) + inside};
}

// Orders 5 and 6: minors of the last rows may be rounded to the element type when they are finished, but within a
// minor all is extended. In single precision those of two rows aren't rounded.
template <class T>
Interval<T> extendedDeterminant56(const Square<T>& a) {
    const std::int32_t n = a.order();
    const Expansion<Wide<T>, T> minors(a, false);
    // What roundings of the minors of `rows` rows and more contribute, by columns.
    std::vector<long double> error(std::size_t{1} << n, 0);
    const std::int32_t firstRounded = sizeof(T) == 4 ? 3 : 2;
    for (std::uint32_t columns = 1; columns < error.size(); ++columns) {
        const std::int32_t rows = __builtin_popcount(columns);
        long double sum = 0;
        for (std::int32_t j = 0; j < n; ++j) {
            if ((columns >> j & 1u) != 0)
                sum += absolute(static_cast<long double>(a(n - rows, j))) * error[columns & ~(1u << j)];
        }
        if (rows >= firstRounded) sum += unit<T>() * (absolute(static_cast<long double>(minors.of(columns))) + sum);
        error[columns] = sum;
    }
    const long double inside = 1.01L * expansionSteps(n) * extendedUnit * absolutePermanent(a);
    return {minors.whole(), 1.01L * (error.back() + inside)};
}

// --- Inverses ---

template <class T>
struct BoundedInverse {
    Square<long double> matrix;
    Square<long double> bound;
    long double det = 0;
    long double detBound = 0;
};

// An adjugate in the element type times a reciprocal, which may come from an approximation and one Newton step.
template <class T>
BoundedInverse<T> boundedInverse(const Square<T>& a, bool approximate) {
    const std::int32_t n = a.order();
    const auto precise = [](const Square<T>& m) { return Expansion<long double, T>(m, false).whole(); };
    BoundedInverse<T> result{Square<long double>(n), Square<long double>(n), precise(a), determinantBound(a)};
    const long double det = absolute(result.det);
    const long double detError = result.detBound / det;
    // The step squares the 1.5 * 2^-12 of the approximation and rounds three times.
    const long double reciprocalError = approximate ? 0x2.4p-24L + 4 * unit<T>() : unit<T>();
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = 0; j < n; ++j) {
            const Square<T> minor = a.minor(i, j);
            const long double value = precise(minor) / result.det;
            result.matrix(j, i) = (i + j) % 2 != 0 ? -value : value;
            const long double cofactorError = determinantBound(minor) / det;
            const long double relative = detError + reciprocalError + 2 * unit<T>();
            // Of first order in small errors, hence a bound only while the determinant keeps its first digits.
            result.bound(j, i) = (cofactorError + absolute(value) * relative) * (1.001L + 2 * detError);
        }
    }
    return result;
}

}  // namespace kormtest
