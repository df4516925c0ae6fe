// Rows of matrices of any order: copies, pivot searches, steps of an elimination.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstring>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::linalg {

// Copies row i of one matrix to the same row of another, which may be the same matrix.
template <class T, class A, class D>
[[gnu::always_inline]] inline void copyRow(const A& src, const D& dst, std::ptrdiff_t i, std::ptrdiff_t length) {
    if constexpr (isAdjacent<A> && isAdjacent<D>)
        std::memmove(dst.address(i, 0), src.address(i, 0), static_cast<std::size_t>(length) * sizeof(T));
    else
        for (std::ptrdiff_t j = 0; j < length; ++j) store(dst.address(i, j), load<T>(src.address(i, j)));
}

// --- Elimination ------------------------------------------------------------------------------------

// Where in positions first to end - 1 the greatest magnitude is that `at` gives, and how great it is. The first of equals
// stays, and a NaN is never taken but never left either. `held` is what is kept of the greatest so far.
template <class T, class At, class Held>
[[gnu::always_inline]] inline std::ptrdiff_t greatestPosition(std::ptrdiff_t first, std::ptrdiff_t end, const At& at,
                                                              T& best, const Held& held) {
    std::ptrdiff_t position = first;
    best = held(std::fabs(at(first)));
    for (std::ptrdiff_t i = first + 1; i < end; ++i) {
        const T candidate = std::fabs(at(i));
        position = candidate > best ? i : position;
        best = candidate > best ? held(candidate) : best;
    }
    return position;
}
template <class T, class At>
[[gnu::always_inline]] inline std::ptrdiff_t greatestPosition(std::ptrdiff_t first, std::ptrdiff_t end, const At& at,
                                                              T& best) {
    return greatestPosition(first, end, at, best, [](T value) { return value; });
}

// One step of an elimination in row `to`: column k becomes the multiplier, which times the pivot row is subtracted
// behind it, a product, then a difference.
//
// Adjacent elements are counted in vectors from the end of the row, in every step the same: a vector that began one
// column later than the one stored the step before would wait until that is in the cache.
template <class T, class D>
[[gnu::always_inline]] inline void eliminateFromRow(const D& matrix, std::ptrdiff_t to, std::ptrdiff_t pivot,
                                                    T multiplier, std::ptrdiff_t k, std::ptrdiff_t n) {
    std::ptrdiff_t firstVector = n;  // columns before this one are taken one by one
    if constexpr (isAdjacent<D>) {
        constexpr std::ptrdiff_t lanes = laneCount<T>;
        std::byte* const row = matrix.address(to, 0);
        const std::byte* const pivotRow = matrix.address(pivot, 0);
        const Lanes<T> multipliers = broadcast(multiplier);
        const auto offset = [](std::ptrdiff_t j) { return j * static_cast<std::ptrdiff_t>(sizeof(T)); };
        const auto difference = [&](std::ptrdiff_t j) __attribute__((always_inline)) {
            return loadLanes<T>(row + offset(j)) - loadLanes<T>(pivotRow + offset(j)) * multipliers;
        };
        firstVector = n % lanes;
        std::ptrdiff_t j = firstVector;
        if (k >= firstVector) {
            j = k - (k - firstVector) % lanes;
            const Lanes<T> column = broadcast(static_cast<T>(k - j)), columns = laneNumbers<Lanes<T>>();
            const Lanes<T> behind = chosen(columns > column, difference(j), multipliers);
            storeLanes(row + offset(j), chosen(columns < column, loadLanes<T>(row + offset(j)), behind));
            j += lanes;
        }
        for (; j < n; j += lanes) storeLanes(row + offset(j), difference(j));
        if (k >= firstVector) return;
    }
    store(matrix.address(to, k), multiplier);
    for (std::ptrdiff_t j = k + 1; j < firstVector; ++j) {
        std::byte* const at = matrix.address(to, j);
        store(at, load<T>(at) - load<T>(matrix.address(pivot, j)) * multiplier);
    }
}

}  // namespace korm::inline KORM_VARIANT::linalg
