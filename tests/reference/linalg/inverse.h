// Inverses whose every operation is fixed: order 1, and the cofactor core of orders 2, 7 and up. The closed forms
// leave the grouping open; precise.h bounds them.
#pragma once

#include <xmmintrin.h>

#include "../../support/status.h"
#include "square.h"

namespace kormtest {

template <class T>
struct Inverted {
    std::int32_t status = status::ok;
    Square<T> matrix;
    bool failedAtPivot = false;  // the scratch buffer then begins with a zero
};

template <class T>
Inverted<T> invertOne(const Square<T>& source) {
    Square<T> result(1);
    const T a = source(0, 0);
    if (!(std::fabs(a) > singularScale<T>(1))) return {status::singular, result};
    result(0, 0) = T(1) / a;
    return {status::ok, result};
}

// Elimination up to the last but one pivot. What it leaves: the product of pivots, the sign of the permutation, the
// element at the last position; false if a pivot was below t.
template <class T>
struct Elimination {
    bool complete = true;
    T product = 1, sign = 1, last = 0;
};

template <class T>
Elimination<T> eliminate(Square<T> a, T t) {
    const std::int32_t n = a.order();
    Positions p(n);
    Elimination<T> result;
    for (std::int32_t k = 0; k + 1 < n && result.complete; ++k) {
        const std::int32_t best = pivotPosition(a, p, k);
        if (best != k) {
            p.exchange(k, best);
            result.sign = -result.sign;
        }
        const T pivot = a(p[k], k);
        if (t > std::fabs(pivot)) {
            result.complete = false;
            break;
        }
        const T r = T(1) / pivot;
        for (std::int32_t i = k + 1; i < n; ++i) {
            const T m = a(p[i], k) * r;
            for (std::int32_t j = k + 1; j < n; ++j) a(p[i], j) = a(p[i], j) - m * a(p[k], j);
        }
        result.product *= pivot;
    }
    result.last = a(p[n - 1], n - 1);
    return result;
}

// Each element from an elimination of its own; a cofactor that is too small counts as t.
template <class T>
Inverted<T> invertGeneral(const Square<T>& source) {
    const std::int32_t n = source.order();
    const T t = singularScale<T>(n);
    Square<T> result(n);
    const Elimination<T> whole = eliminate(source, t);
    if (!whole.complete) return {status::singular, result, true};
    const T det = whole.sign * whole.last * whole.product;
    if (t >= std::fabs(det)) return {status::singular, result};
    const T r = T(1) / det;
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = 0; j < n; ++j) {
            const Elimination<T> part = eliminate(source.minor(i, j), t);
            const T product = part.complete ? part.product : t;
            const T v = std::fabs(part.last) > t ? part.last * part.sign * product : t;
            const T s = (i + j) % 2 == 0 ? T(1) : T(-1);
            result(j, i) = v * r * s;
        }
    }
    return {status::ok, result};
}

// --- The scale of the adjugate: how each path comes by 1 / det ---

enum class Reciprocal : std::uint8_t {
    division,
    newton,        // approximate reciprocal, then (r + r) - d * (r * r)
    newtonOrder3,  // approximate reciprocal, then (r + r) - (d * r) * r
};

// The processor's own approximation: implementations differ in its last bits.
inline float approximateReciprocal(float value) { return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(value))); }

template <class T>
T reciprocal(T det, Reciprocal way) {
    if constexpr (sizeof(T) == 4) {
        const float r = approximateReciprocal(det);
        if (way == Reciprocal::newton) return (r + r) - det * (r * r);
        if (way == Reciprocal::newtonOrder3) return (r + r) - (det * r) * r;
    }
    return T(1) / det;
}

}  // namespace kormtest
