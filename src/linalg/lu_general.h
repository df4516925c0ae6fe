// LU decomposition of matrices of any order.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "kernel/predicates.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/lu_panels.h"
#include "linalg/rows.h"

namespace korm::inline KORM_VARIANT::linalg {

// Eliminates in the destination. The tolerance is absolute and far above that of the orders 3 to 6, on purpose. Large matrices
// go in panels of columns: elements behind a panel have all its products subtracted at once, each in its turn.
template <class T, class A, class D>
std::int32_t luGeneral(const A& source, const D& result, std::byte* pivots, std::ptrdiff_t n) {
    // Behind a reference a store might change them, and each address would be computed anew. As parameters they would be
    // copied as vectors just after they were written piece by piece, which waits for the cache.
    const A src = source;
    const D dst = result;
    constexpr T tiny = std::numeric_limits<T>::epsilon();
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        store(pivots + 4 * i, static_cast<std::int32_t>(i));
        copyRow<T>(src, dst, i, n);
    }
    const auto row = [pivots](std::ptrdiff_t position) { return load<std::int32_t>(pivots + 4 * position); };
    std::ptrdiff_t end = isAdjacent<D> && n >= leastInPanels ? panelWidth : n;  // of the panel
    for (std::ptrdiff_t first = 0, k = 0; k < n - 1; ++k) {
        T best;
        const std::ptrdiff_t bestPosition = greatestPosition(
            k, n, [&](std::ptrdiff_t i) { return load<T>(dst.address(row(i), k)); }, best);
        const bool isSingular = tiny >= best;
        if (!isSingular) {
            const std::int32_t pivotRow = row(bestPosition);
            store(pivots + 4 * bestPosition, row(k));
            store(pivots + 4 * k, pivotRow);
            const T scale = 1 / load<T>(dst.address(pivotRow, k));
            for (std::ptrdiff_t i = k + 1; i < n; ++i) {
                const T multiplier = load<T>(dst.address(row(i), k)) * scale;
                eliminateFromRow(dst, row(i), pivotRow, multiplier, k, end);
            }
        }
        if constexpr (isAdjacent<D>)
            if (end < n && (isSingular || k + 1 == end)) {
                subtractPanel<T>(dst, row, first, isSingular ? k : end, end, n);
                first = end;
                end = std::min(end + panelWidth, n);
            }
        if (isSingular) return korStatusSingular;
    }
    return tiny >= std::fabs(load<T>(dst.address(row(n - 1), n - 1))) ? korStatusSingular : korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::linalg
