// Determinants whose every operation is fixed: elimination, and order 3. The other closed forms leave the grouping
// open; precise.h bounds them.
#pragma once

#include "square.h"

namespace kormtest {

struct EliminationRules {
    bool array = false;         // a vanishing pivot gives a zero by multiplication instead of +0
    bool singleSearch = false;  // the running maximum of the pivot search is held in single precision
};

template <class T>
std::int32_t singlePrecisionPivot(const Square<T>& a, const Positions& p, std::int32_t k) {
    std::int32_t bestPosition = k;
    T best = static_cast<T>(static_cast<float>(std::fabs(a(p[k], k))));
    for (std::int32_t i = k + 1; i < a.order(); ++i) {
        const T candidate = std::fabs(a(p[i], k));
        if (candidate > best) {
            best = static_cast<T>(static_cast<float>(candidate));
            bestPosition = i;
        }
    }
    return bestPosition;
}

// Orders 1, 2 and 7 up.
template <class T>
T eliminatedDeterminant(const Square<T>& source, const EliminationRules& rules) {
    const std::int32_t n = source.order();
    const T t = singularScale<T>(n);
    Square<T> a = source;
    Positions p(n);
    T result = 1, sign = 1;
    for (std::int32_t k = 0; k + 1 < n; ++k) {
        const std::int32_t best = rules.singleSearch ? singlePrecisionPivot(a, p, k) : pivotPosition(a, p, k);
        if (best != k) {
            p.exchange(k, best);
            sign = -sign;
        }
        const T pivot = a(p[k], k);
        if (t > std::fabs(pivot)) return rules.array ? result * (a(p[n - 1], n - 1) * T(0)) : T(0);
        for (std::int32_t i = k + 1; i < n; ++i) {
            const T m = a(p[i], k) / pivot;
            for (std::int32_t j = k + 1; j < n; ++j) a(p[i], j) = a(p[i], j) - m * a(p[k], j);
        }
        result *= pivot;
    }
    const T last = a(p[n - 1], n - 1);
    if (!(std::fabs(last) > t)) return 0;
    return result * (last * sign);
}

// In the element type, along the last row.
template <class T>
T closedDeterminant3(const Square<T>& a) {
    return (a(0, 0) * a(1, 1) - a(0, 1) * a(1, 0)) * a(2, 2) - (a(0, 0) * a(1, 2) - a(1, 0) * a(0, 2)) * a(2, 1) +
           (a(0, 1) * a(1, 2) - a(1, 1) * a(0, 2)) * a(2, 0);
}

// In the 80-bit extended format; the two types expand along different lines.
inline float extendedDeterminant3(const Square<float>& source) {
    const auto a = [&](std::int32_t i, std::int32_t j) { return static_cast<long double>(source(i, j)); };
    return static_cast<float>((a(2, 0) * a(1, 2) - a(1, 0) * a(2, 2)) * a(0, 1) +
                              (a(2, 1) * a(1, 0) - a(2, 0) * a(1, 1)) * a(0, 2) +
                              (a(1, 1) * a(2, 2) - a(1, 2) * a(2, 1)) * a(0, 0));
}

inline double extendedDeterminant3(const Square<double>& source) {
    const auto a = [&](std::int32_t i, std::int32_t j) { return static_cast<long double>(source(i, j)); };
    return static_cast<double>((a(1, 2) * a(0, 1) - a(1, 1) * a(0, 2)) * a(2, 0) +
                               (a(1, 1) * a(2, 2) - a(1, 2) * a(2, 1)) * a(0, 0) +
                               (a(2, 1) * a(0, 2) - a(0, 1) * a(2, 2)) * a(1, 0));
}

}  // namespace kormtest
