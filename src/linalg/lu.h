// LU decomposition: P A = L U, rows left in their places, pivots by position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "entry/lanes.h"
#include "entry/views.h"
#include "korm.h"
#include "linalg/elimination.h"
#include "linalg/objects.h"
#include "linalg/rows.h"

namespace korm {

// --- Orders 3 to 6 ------------------------------------------------------------------------------

// All is read before anything is written. In standard and list layout the rows that were finished before a
// failure are stored, in the pointer layout rows are stored when all are finished.
template <int n, class T, class A, class D>
[[gnu::noinline]] std::int32_t luSized(const A& src, const D& dst, std::byte* pivots) {
    T a[n][n];
    std::int32_t row[n];
    readSquare<n>(src, a);
    const int finished = eliminate<n>(a, row, 2 * std::numeric_limits<T>::min());
    for (int k = 0; k < n; ++k) store(pivots + 4 * k, row[k]);
    if (!isScattered<D> || finished == n)
        for (int k = 0; k < finished; ++k) writeRow<n>(dst, row[k], a[k]);
    return finished == n ? korStatusOk : korStatusSingular;
}

// --- All other orders ---------------------------------------------------------------------------

// Eliminates in the destination. The tolerance is absolute and far above that of the orders 3 to 6, on purpose.
template <class T, class A, class D>
[[gnu::noinline]] std::int32_t luGeneral(const A& src, const D& dst, std::byte* pivots, std::ptrdiff_t n) {
    constexpr T tiny = std::numeric_limits<T>::epsilon();
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        store(pivots + 4 * i, static_cast<std::int32_t>(i));
        copyRow<T>(src, dst, i, n);
    }
    const auto row = [pivots](std::ptrdiff_t position) { return load<std::int32_t>(pivots + 4 * position); };
    for (std::ptrdiff_t k = 0; k < n - 1; ++k) {
        T best = std::fabs(load<T>(dst.address(row(k), k)));
        std::ptrdiff_t bestPosition = k;
        for (std::ptrdiff_t i = k + 1; i < n; ++i) {
            const T candidate = std::fabs(load<T>(dst.address(row(i), k)));
            if (candidate > best) {
                best = candidate;
                bestPosition = i;
            }
        }
        if (tiny >= best) return korStatusSingular;
        const std::int32_t pivotRow = row(bestPosition);
        store(pivots + 4 * bestPosition, row(k));
        store(pivots + 4 * k, pivotRow);
        const T scale = 1 / load<T>(dst.address(pivotRow, k));
        for (std::ptrdiff_t i = k + 1; i < n; ++i) {
            const T multiplier = load<T>(dst.address(row(i), k)) * scale;
            store(dst.address(row(i), k), multiplier);
            subtractRow(dst, row(i), dst, pivotRow, multiplier, k + 1, n);
        }
    }
    return tiny >= std::fabs(load<T>(dst.address(row(n - 1), n - 1))) ? korStatusSingular : korStatusOk;
}

template <class T, class A, class D>
[[gnu::always_inline]] inline std::int32_t luObject(const A& src, const D& dst, std::byte* pivots,
                                                    std::int32_t order) {
    switch (order) {
        case 3: return luSized<3, T>(src, dst, pivots);
        case 4: return luSized<4, T>(src, dst, pivots);
        case 5: return luSized<5, T>(src, dst, pivots);
        case 6: return luSized<6, T>(src, dst, pivots);
        default: return luGeneral<T>(src, dst, pivots, order);
    }
}

template <class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t luDecomposition(A src, D dst, std::int32_t* pivots, std::int32_t order,
                                                           Count count) {
    using T = typename D::Element;
    auto* const bytes = reinterpret_cast<std::byte*>(pivots);
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const std::int32_t status = luObject<T>(src.at(k), dst.at(k), bytes + 4 * k * order, order);
        if (status != korStatusOk) return status;
    }
    return korStatusOk;
}

}  // namespace korm
