// Solves with a Cholesky factor at any order: one object in its destination, or objects in lanes.
#pragma once

#include <cstddef>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "linalg/partial_sums.h"
#include "linalg/triangles.h"

namespace korm::inline KORM_VARIANT::linalg {

// z - term(first) - ..., of adjacent elements those of even and of odd place apart while there are pairs.
template <bool inPairs, class S, class Term>
[[gnu::always_inline]] inline S reducedInPairs(const Term& term, S z, std::ptrdiff_t first, std::ptrdiff_t end) {
    std::ptrdiff_t j = first;
    S s = z;
    if (inPairs && end - j >= 2) {
        S odd = S();
        for (; end - j >= 2; j += 2) {
            s = step<Sign::minus>(s, term(j));
            odd = step<Sign::minus>(odd, term(j + 1));
        }
        s = s + odd;
    }
    for (; j < end; ++j) s = step<Sign::minus>(s, term(j));
    return s;
}

// --- One object -----------------------------------------------------------------------------------

// Solves in the work vector, which holds the right-hand side: downwards by the rows of the factor, upwards by its columns.
// Blocks of long sums begin at column `place` at the earliest.
template <class T, class A, class Work>
[[gnu::always_inline]] inline void sweepObject(const A& factor, const Work& work, std::ptrdiff_t n,
                                               std::ptrdiff_t place) {
    const auto element = [&](std::ptrdiff_t j) { return load<T>(work.address(0, j)); };
    for (std::ptrdiff_t k = 0; k < n; ++k) {
        T z = element(k);
        if constexpr (isAdjacent<A>)
            z = summedProducts<Sign::minus>(z, factor.address(k, 0), work.address(0, 0), blocksFrom<T>(place, 0, k), k);
        else
            z = summed<Sign::minus>(z, 0, k, k,
                                    [&](std::ptrdiff_t j) { return load<T>(factor.address(k, j)) * element(j); });
        store(work.address(0, k), z * load<T>(factor.address(k, k)));
    }
    for (std::ptrdiff_t k = n - 1; k >= 0; --k) {
        const auto term = [&](std::ptrdiff_t j) { return load<T>(factor.address(j, k)) * element(j); };
        const T x = reducedInPairs<isAdjacent<A>>(term, element(k), k + 1, n);
        store(work.address(0, k), x * load<T>(factor.address(k, k)));
    }
}

// dst may be src, and is the work vector itself where it is too long for the stack.
inline constexpr std::ptrdiff_t greatestLocalVector = 256;

template <class T, class A, class B, class D>
[[gnu::noinline]] void sweepGeneral(const A& factors, const B& sides, const D& solutions, std::ptrdiff_t n) {
    // Behind a reference a store might change them.
    const A factor = factors;
    const B src = sides;
    const D dst = solutions;
    const std::ptrdiff_t place = placeOfBlocks<T>(dst);
    const auto copy = [n](const auto& from, const auto& to) {
        for (std::ptrdiff_t j = 0; j < n; ++j) store(to.address(0, j), load<T>(from.address(0, j)));
    };
    if (n > greatestLocalVector) {
        copy(src, dst);
        sweepObject<T>(factor, dst, n, place);
    } else {
        T x[greatestLocalVector];
        const PlainObject<T> local{reinterpret_cast<std::byte*>(x), noRows, sizeof(T)};
        copy(src, local);
        sweepObject<T>(factor, local, n, place);
        copy(local, dst);
    }
}

// --- Objects in lanes -----------------------------------------------------------------------------

// Both sweeps over `groups` vectors at a time, so that as many chains of subtractions are on their way: element k of vector v
// is x[v * pitch + k]. `factor(v, e)` is element e of the triangle that belongs to vector v. Adjacent elements have their
// sums parted: from the blocks' place on in the forward sweep, and in pairs in the backward one.
template <int groups, std::ptrdiff_t pitch, bool isParted, class S, class Factor>
[[gnu::always_inline]] inline void sweepInLanes(const Factor& factor, S* x, std::ptrdiff_t n, std::ptrdiff_t place) {
    std::ptrdiff_t row = 0;
    for (std::ptrdiff_t k = 0; k < n; row += ++k) {
        S z[groups];
#pragma GCC unroll 8
        for (int v = 0; v < groups; ++v) z[v] = x[v * pitch + k];
        sumTogether<Sign::minus>(
            z, 0, isParted ? blocksFrom<ElementOf<S>>(place, 0, k) : k,
            k, [&](int v, std::ptrdiff_t j) __attribute__((always_inline)) {
                return factor(v, row + j) * x[v * pitch + j];
            });
#pragma GCC unroll 8
        for (int v = 0; v < groups; ++v) x[v * pitch + k] = z[v] * factor(v, row + k);
    }
    for (std::ptrdiff_t k = n - 1; k >= 0; --k) {
        S z[groups], odd[groups];
#pragma GCC unroll 8
        for (int v = 0; v < groups; ++v) z[v] = x[v * pitch + k];
        const std::ptrdiff_t diagonal = triangleSize(k) + k;
        std::ptrdiff_t j = k + 1, e = diagonal + j;
        if (isParted && n - j >= 2) {
#pragma GCC unroll 8
            for (int v = 0; v < groups; ++v) odd[v] = S();
            for (; n - j >= 2; j += 2) {
                const std::ptrdiff_t next = e + j + 1;
#pragma GCC unroll 8
                for (int v = 0; v < groups; ++v) {
                    z[v] = z[v] - factor(v, e) * x[v * pitch + j];
                    odd[v] = odd[v] - factor(v, next) * x[v * pitch + j + 1];
                }
                e = next + j + 2;
            }
#pragma GCC unroll 8
            for (int v = 0; v < groups; ++v) z[v] = z[v] + odd[v];
        }
        for (; j < n; e += ++j) {
#pragma GCC unroll 8
            for (int v = 0; v < groups; ++v) z[v] = z[v] - factor(v, e) * x[v * pitch + j];
        }
#pragma GCC unroll 8
        for (int v = 0; v < groups; ++v) x[v * pitch + k] = z[v] * factor(v, diagonal);
    }
}

}  // namespace korm::inline KORM_VARIANT::linalg
