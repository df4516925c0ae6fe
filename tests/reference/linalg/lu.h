// LU decomposition from its definition: partial pivoting, rows never move.
#pragma once

#include "../../support/status.h"
#include "square.h"

namespace kormtest {

template <class T>
struct Factored {
    std::int32_t status = status::ok;
    Square<T> matrix;               // what the destination holds in the rows that were written
    std::vector<bool> rowsWritten;  // all other rows of the destination keep what they held
    std::vector<std::int32_t> pivots;
};

// Orders 1, 2 and 7 up: the destination is the work area, so a failure leaves a half-done matrix.
template <class T>
Factored<T> factorGeneral(const Square<T>& source) {
    const std::int32_t n = source.order();
    const T eps = std::numeric_limits<T>::epsilon();
    Square<T> a = source;
    Positions p(n);
    const auto outcome = [&](std::int32_t status) {
        return Factored<T>{status, a, std::vector<bool>(static_cast<std::size_t>(n), true), p.rows()};
    };
    for (std::int32_t k = 0; k + 1 < n; ++k) {
        const std::int32_t best = pivotPosition(a, p, k);
        if (eps >= std::fabs(a(p[best], k))) return outcome(status::singular);
        p.exchange(k, best);
        const T r = T(1) / a(p[k], k);
        for (std::int32_t i = k + 1; i < n; ++i) a(p[i], k) *= r;
        for (std::int32_t i = k + 1; i < n; ++i)
            for (std::int32_t j = k + 1; j < n; ++j) a(p[i], j) = a(p[i], j) - a(p[k], j) * a(p[i], k);
    }
    return outcome(std::fabs(a(p[n - 1], n - 1)) <= eps ? status::singular : status::ok);
}

// Orders 3 to 6: in a copy of the matrix; rows are written when they are finished, or all at the end.
template <class T>
Factored<T> factorSized(const Square<T>& source, bool writesAtEnd) {
    const std::int32_t n = source.order();
    const T tiny = 2 * std::numeric_limits<T>::min();
    Square<T> a = source;
    Positions p(n);
    std::vector<bool> written(static_cast<std::size_t>(n), false);
    const auto outcome = [&](std::int32_t status) {
        if (writesAtEnd) written.assign(static_cast<std::size_t>(n), status == status::ok);
        return Factored<T>{status, a, written, p.rows()};
    };
    for (std::int32_t k = 0; k + 1 < n; ++k) {
        p.exchange(k, pivotPosition(a, p, k));
        const T pivot = a(p[k], k);
        if (tiny > std::fabs(pivot)) return outcome(status::singular);
        written[static_cast<std::size_t>(p[k])] = true;
        if (k < n - 2) {
            const T r = T(1) / pivot;
            for (std::int32_t i = k + 1; i < n; ++i) a(p[i], k) *= r;
        } else {
            a(p[n - 1], k) /= pivot;
        }
        for (std::int32_t i = k + 1; i < n; ++i)
            for (std::int32_t j = k + 1; j < n; ++j) a(p[i], j) = a(p[i], j) - a(p[k], j) * a(p[i], k);
    }
    if (tiny > std::fabs(a(p[n - 1], n - 1))) return outcome(status::singular);
    written[static_cast<std::size_t>(p[n - 1])] = true;
    return outcome(status::ok);
}

template <class T>
Factored<T> referenceFactor(const Square<T>& source, bool pointerLayout) {
    const std::int32_t n = source.order();
    return n >= 3 && n <= 6 ? factorSized(source, pointerLayout) : factorGeneral(source);
}

}  // namespace kormtest
