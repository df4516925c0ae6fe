// Cholesky decomposition and its solves from their definition: rows of the factor from the first to the last, reciprocals
// on the diagonal, and two sweeps.
#pragma once

#include <xmmintrin.h>

#include "../../support/status.h"
#include "../address.h"
#include "square.h"

namespace kormtest {

// --- Sums ---

// start - term(first) - ... - term(end - 1), one by one.
template <class T, class Term>
T reduced(T start, std::int32_t first, std::int32_t end, const Term& term) {
    T s = start;
    for (std::int32_t k = first; k < end; ++k) s = s - term(k);
    return s;
}

// Terms `prologue` to end - 1 in blocks of eight, each place of a block with a partial sum of its own; those before and
// behind them one by one. Without a whole block there are no partial sums.
template <class T, class Term>
T reducedInBlocks(T start, std::int32_t prologue, std::int32_t end, const Term& term) {
    if (end - prologue < 8) return reduced(start, 0, end, term);
    T p[8] = {};
    p[0] = reduced(start, 0, prologue, term);
    std::int32_t k = prologue;
    for (; end - k >= 8; k += 8)
        for (std::int32_t c = 0; c < 8; ++c) p[c] = p[c] - term(k + c);
    T s;
    if constexpr (sizeof(T) == 4) s = ((p[0] + p[4]) + (p[2] + p[6])) + ((p[1] + p[5]) + (p[3] + p[7]));
    else s = ((p[0] + p[2]) + (p[4] + p[6])) + ((p[1] + p[3]) + (p[5] + p[7]));
    return reduced(s, k, end, term);
}

// --- Decomposition ---

struct CholeskyRules {
    bool refinesInFours = false;  // the order of rounding in which groups of four refine an approximate root
    long double threshold = 0;    // a pivot that is not above it fails
};

// The processor's own approximation: implementations differ in its last bits.
inline float approximateReciprocalRoot(float value) { return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(value))); }

inline float referenceReciprocalRoot(float s, const CholeskyRules& rules) {
    const float r = approximateReciprocalRoot(s);
    if (rules.refinesInFours) return (r * (3.0F - (r * r) * s)) * 0.5F;
    return (r * -0.5F) * ((s * r) * r - 3.0F);
}
inline double referenceReciprocalRoot(double s, const CholeskyRules&) { return 1.0 / std::sqrt(s); }

// `factor` holds the lower triangle of the matrix and becomes that of the factor, row by row. Returns the number of rows
// that are finished: if it is not the order, the row behind them has its elements left of the diagonal.
template <class T>
std::int32_t choleskyRows(Square<T>& factor, const CholeskyRules& rules, std::int32_t rows) {
    const std::int32_t n = factor.order();
    const bool sized = n >= 3 && n <= 6;
    for (std::int32_t j = 0; j < rows; ++j) {
        for (std::int32_t i = 0; i <= j; ++i) {
            const auto term = [&](std::int32_t k) { return factor(j, k) * factor(i, k); };
            const T s = sized ? reduced(factor(j, i), 0, i, term) : reducedInBlocks(factor(j, i), 0, i, term);
            if (i < j) {
                factor(j, i) = s * factor(i, i);
                continue;
            }
            if (static_cast<T>(rules.threshold) >= s) return j;
            factor(j, j) = referenceReciprocalRoot(s, rules);
        }
    }
    return rows;
}

// --- Solve ---

struct CholeskySolveRules {
    bool partialSums = false;  // adjacent elements at orders other than 3 to 6
    std::uintptr_t work = 0;   // where the solution lies, which decides how a long sum is parted
};

// How many single terms there are before the solution reaches a multiple of 16 bytes; all if it never does.
template <class T>
std::int32_t singleTerms(std::uintptr_t work, std::int32_t end) {
    std::int32_t j = 0;
    while (j < end && (work + static_cast<std::uintptr_t>(j) * sizeof(T)) % 16 != 0) ++j;
    return j;
}

template <class T>
std::vector<T> referenceCholeskySolve(const Square<T>& factor, const std::vector<T>& b,
                                      const CholeskySolveRules& rules) {
    const std::int32_t n = factor.order();
    const bool partial = rules.partialSums && (n < 3 || n > 6);
    std::vector<T> x = b;
    const auto at = [&](std::int32_t k) -> T& { return x[static_cast<std::size_t>(k)]; };
    for (std::int32_t k = 0; k < n; ++k) {
        const auto term = [&](std::int32_t j) { return factor(k, j) * at(j); };
        const T s =
            partial ? reducedInBlocks(at(k), singleTerms<T>(rules.work, k), k, term) : reduced(at(k), 0, k, term);
        at(k) = s * factor(k, k);
    }
    for (std::int32_t k = n - 1; k >= 0; --k) {
        const auto term = [&](std::int32_t j) { return factor(j, k) * at(j); };
        T s = at(k);
        std::int32_t j = k + 1;
        if (partial && n - j >= 2) {
            T odd = 0;
            for (; n - j >= 2; j += 2) {
                s = s - term(j);
                odd = odd - term(j + 1);
            }
            s = s + odd;
        }
        at(k) = reduced(s, j, n, term) * factor(k, k);
    }
    return x;
}

// --- Whole forms ---

std::int32_t referenceCholeskyDecomp(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                     std::int32_t first, std::int32_t runCount);
std::int32_t referenceCholeskyBackSubst(const Form& form, const std::vector<OperandValues>& operands,
                                        const Sizes& sizes, std::int32_t first, std::int32_t runCount);

// Objects go four by four, and a group fails together.
bool choleskyGoesInFours(const Form& form, bool plain, std::int32_t order);
long double choleskyThreshold(const Form& form, bool plain, std::int32_t order);

}  // namespace kormtest
