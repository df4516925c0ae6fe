// Cholesky factors of triangles in locals, and of one matrix of any order in its destination: A = L L^T, with reciprocals on the
// diagonal of L.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "korm.h"
#include "linalg/partial_sums.h"
#include "linalg/triangles.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- The reciprocal root --------------------------------------------------------------------------

// The order of rounding in the Newton step for floats. It shows in the last bit.
enum class Newton {
    halvesFirst,  // (r * -0.5) * ((s * r) * r - 3)
    halvesLast,   // (r * (3 - (r * r) * s)) * 0.5: packed arrays of orders 3 to 6
};

// The processor's approximation, good to about 12 bits. Always by the instruction for four floats: those for more have
// other bits.
template <class S>
[[gnu::always_inline]] inline S roughReciprocalRoot(S x) {
    if constexpr (lanesOf<S> == 1) return _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(x)));
    else if constexpr (lanesOf<S> == 4) return reinterpret_cast<S>(_mm_rsqrt_ps(reinterpret_cast<__m128>(x)));
    else return joinedHalves(roughReciprocalRoot(lowHalf(x)), roughReciprocalRoot(highHalf(x)));
}

template <Newton newton, class S>
[[gnu::always_inline]] inline S reciprocalRoot(S s) {
    if constexpr (isFloat<ElementOf<S>>) {
        const S r = roughReciprocalRoot(s), half = all<S>(0.5F), three = all<S>(3);
        if constexpr (newton == Newton::halvesFirst) return (r * -half) * ((s * r) * r - three);
        else return (r * (three - (r * r) * s)) * half;
    } else {
        return all<S>(1) / squareRoot(s);
    }
}

// --- Orders known when compiling --------------------------------------------------------------------

// Row by row. Returns how many rows are finished: n, or the row in which the pivot of an object is not above `threshold`; of
// that row the elements left of the diagonal are done. A NaN passes.
template <Newton newton, int n, class S>
[[gnu::always_inline]] inline int factorTriangle(Triangle<S, n>& a, S threshold) {
#pragma GCC unroll 6
    for (int j = 0; j < n; ++j) {
        S* const row = a + triangleSize(j);
#pragma GCC unroll 6
        for (int i = 0; i <= j; ++i) {
            const S* const other = a + triangleSize(i);
            S s = row[i];
#pragma GCC unroll 6
            for (int k = 0; k < i; ++k) s = s - row[k] * other[k];
            if (i < j) {
                row[i] = s * other[i];
            } else {
                if (any(threshold >= s)) return j;
                row[j] = reciprocalRoot<newton>(s);
            }
        }
    }
    return n;
}

// --- Any order --------------------------------------------------------------------------------------

// Sums of at least a block's terms run in partial sums, wherever their elements lie.
[[gnu::always_inline]] inline std::ptrdiff_t blocksOfFactor(std::ptrdiff_t end) { return end >= block ? 0 : end; }

// One object or objects in lanes, column by column: `rows` sums of a column are as many chains of subtractions at a time. False if a pivot
// of an object is not above `threshold`.
template <int rows, class S>
[[gnu::always_inline]] inline void factorColumn(const S* pivotRow, std::ptrdiff_t i, S* row, std::ptrdiff_t j) {
    // Row j + r, of which `row` is row j.
    const auto at = [&](int r) __attribute__((always_inline)) { return row + r * j + triangleSize(r); };
    S s[rows];
#pragma GCC unroll 4
    for (int r = 0; r < rows; ++r) s[r] = at(r)[i];
    sumTogether<Sign::minus>(
        s, 0, blocksOfFactor(i),
        i, [&](int r, std::ptrdiff_t k) __attribute__((always_inline)) { return at(r)[k] * pivotRow[k]; });
#pragma GCC unroll 4
    for (int r = 0; r < rows; ++r) at(r)[i] = s[r] * pivotRow[i];
}

template <class S>
[[gnu::noinline]] bool factorInLanes(S* a, std::ptrdiff_t n, S threshold) {
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        S* const pivotRow = a + triangleSize(i);
        const auto square = [&](std::ptrdiff_t k) { return pivotRow[k] * pivotRow[k]; };
        const S s = summed<Sign::minus>(pivotRow[i], 0, blocksOfFactor(i), i, square);
        if (any(threshold >= s)) return false;
        pivotRow[i] = reciprocalRoot<Newton::halvesFirst>(s);
        std::ptrdiff_t j = i + 1;
        for (; j + 4 <= n; j += 4) factorColumn<4>(pivotRow, i, a + triangleSize(j), j);
        if (j + 2 <= n) {
            factorColumn<2>(pivotRow, i, a + triangleSize(j), j);
            j += 2;
        }
        if (j < n) factorColumn<1>(pivotRow, i, a + triangleSize(j), j);
    }
    return true;
}

// One matrix, which may be factored in its own place: an element of the source is read just before its result is written.
template <class T, class A, class D>
[[gnu::noinline]] std::int32_t factorGeneral(const A& source, const D& result, std::ptrdiff_t n, T threshold) {
    // Behind a reference a store might change them.
    const A src = source;
    const D dst = result;
    for (std::ptrdiff_t j = 0; j < n; ++j) {
        for (std::ptrdiff_t i = 0; i <= j; ++i) {
            T s = load<T>(src.address(j, i));
            if constexpr (isAdjacent<D>) {
                s = summedProducts<Sign::minus>(s, dst.address(j, 0), dst.address(i, 0), blocksOfFactor(i), i);
            } else {
                const auto term = [&](std::ptrdiff_t k) {
                    return load<T>(dst.address(j, k)) * load<T>(dst.address(i, k));
                };
                s = summed<Sign::minus>(s, 0, blocksOfFactor(i), i, term);
            }
            if (i < j) {
                store(dst.address(j, i), s * load<T>(dst.address(i, i)));
            } else {
                if (threshold >= s) return korStatusNotPositiveDefinite;
                store(dst.address(j, j), reciprocalRoot<Newton::halvesFirst>(s));
            }
        }
    }
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::linalg
