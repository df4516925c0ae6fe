// The two sweeps that solve with a factored matrix.
#pragma once

#include "square.h"

namespace kormtest {

struct SolveRules {
    bool oneMatrix = false;   // one matrix for many vectors: orders 3 to 6 multiply by reciprocals
    bool longSums = false;    // element strides as large as the element: sums of 8 terms and more in eight parts
    std::uintptr_t work = 0;  // where the solution lies, which decides how a long sum is parted
};

// From the first term on, in ascending order.
template <class T, class Term>
T sequentialSum(std::int32_t from, std::int32_t to, const Term& term) {
    T sum = 0;
    for (std::int32_t j = from; j < to; ++j) sum += term(j);
    return sum;
}

template <class T, class Term>
T longSum(std::int32_t from, std::int32_t to, std::uintptr_t work, const Term& term) {
    if (to - from < 8 || work % sizeof(T) != 0) return sequentialSum<T>(from, to, term);
    const auto address = [&](std::int32_t j) { return work + static_cast<std::uintptr_t>(j) * sizeof(T); };
    std::int32_t j = from;
    T p[8] = {};
    for (; address(j) % 16 != 0; ++j) p[0] += term(j);
    for (; to - j >= 8; j += 8)
        for (std::int32_t c = 0; c < 8; ++c) p[c] += term(j + c);
    T sum;
    if constexpr (sizeof(T) == 4) sum = ((p[0] + p[4]) + (p[2] + p[6])) + ((p[1] + p[5]) + (p[3] + p[7]));
    else sum = ((p[0] + p[2]) + (p[4] + p[6])) + ((p[1] + p[3]) + (p[5] + p[7]));
    for (; j < to; ++j) sum += term(j);
    return sum;
}

template <class T>
std::vector<T> solveSized(const Square<T>& lu, const std::vector<std::int32_t>& pivots, const std::vector<T>& b,
                          bool reciprocals) {
    const std::int32_t n = lu.order();
    const auto row = [&](std::int32_t k) { return pivots[static_cast<std::size_t>(k)]; };
    std::vector<T> x(b.size());
    const auto at = [&](std::int32_t k) -> T& { return x[static_cast<std::size_t>(k)]; };
    for (std::int32_t k = 0; k < n; ++k) {
        T value = b[static_cast<std::size_t>(row(k))];
        for (std::int32_t j = k - 1; j >= 0; --j) value = value - lu(row(k), j) * at(j);
        at(k) = value;
    }
    for (std::int32_t k = n - 1; k >= 0; --k) {
        T value = at(k);
        for (std::int32_t j = n - 1; j > k; --j) value = value - lu(row(k), j) * at(j);
        const T pivot = lu(row(k), k);
        at(k) = reciprocals ? value * (T(1) / pivot) : value / pivot;
    }
    return x;
}

template <class T>
std::vector<T> solveGeneral(const Square<T>& lu, const std::vector<std::int32_t>& pivots, const std::vector<T>& b,
                            const SolveRules& rules) {
    const std::int32_t n = lu.order();
    const auto row = [&](std::int32_t k) { return pivots[static_cast<std::size_t>(k)]; };
    std::vector<T> x(b.size());
    const auto at = [&](std::int32_t k) -> T& { return x[static_cast<std::size_t>(k)]; };
    const auto sum = [&](std::int32_t k, std::int32_t from, std::int32_t to) {
        const auto term = [&](std::int32_t j) { return lu(row(k), j) * at(j); };
        return rules.longSums ? longSum<T>(from, to, rules.work, term) : sequentialSum<T>(from, to, term);
    };
    at(0) = b[static_cast<std::size_t>(row(0))];
    for (std::int32_t k = 1; k < n; ++k) at(k) = b[static_cast<std::size_t>(row(k))] - sum(k, 0, k);
    at(n - 1) = at(n - 1) / lu(row(n - 1), n - 1);
    for (std::int32_t k = n - 2; k >= 0; --k) at(k) = (at(k) - sum(k, k + 1, n)) / lu(row(k), k);
    return x;
}

template <class T>
std::vector<T> referenceSolve(const Square<T>& lu, const std::vector<std::int32_t>& pivots, const std::vector<T>& b,
                              const SolveRules& rules) {
    const std::int32_t n = lu.order();
    return n >= 3 && n <= 6 ? solveSized(lu, pivots, b, rules.oneMatrix) : solveGeneral(lu, pivots, b, rules);
}

}  // namespace kormtest
