// General eigenproblems: the double-shift QR iteration on a Hessenberg matrix.
//
// It runs in two ways. For eigenvalues alone only the active block is kept up to date, and a subdiagonal element is
// dropped by its magnitude alone. For vectors the whole matrix is, so that it ends quasi-triangular, the reflections are
// collected, and an element is dropped by its neighbours on the diagonal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "eigen/general_blocks.h"
#include "eigen/general_hessenberg.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// x / t. Where shifts are rounded, by the reciprocal of t, or by t itself if that is too small to have one.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar quotient(typename P::Scalar x, typename P::Scalar t) {
    if constexpr (roundsShifts<P>) return x * (magnitude(t) > smallestDivisor ? 1 / t : t);
    else return x / t;
}

template <class P>
struct Shifts {
    typename P::Shift h33, h44, g;
};

// The shifts of one sweep that ends at row `last`; every tenth and twentieth sweep takes others than the corner's.
template <class P>
[[gnu::always_inline]] inline Shifts<P> chooseShifts(Columns<P> h, std::ptrdiff_t last, std::ptrdiff_t sweep) {
    using S = typename P::Scalar;
    using R = typename P::Shift;
    const auto rounded = [](S x) { return static_cast<R>(x); };
    if (sweep == 10 || sweep == 20) {
        const S s = rounded(magnitude(h(last, last - 1)) + magnitude(h(last - 1, last - 2)));
        const R shift = rounded(S(0.75) * s + h(last, last));
        return {shift, shift, rounded(S(-0.4375) * s * s)};
    }
    const S h44 = rounded(h(last, last)), h33 = rounded(h(last - 1, last - 1));
    const S g = rounded(h(last, last - 1) * h(last - 1, last));
    const S q = rounded((h33 - h44) * S(0.5));
    const S discriminant = rounded(q * q + g);
    if (!(discriminant > 0)) return {rounded(h33), rounded(h44), rounded(g)};
    const S w = rounded(squareRoot(discriminant));
    const S average = rounded((h44 + h33) * S(0.5));
    const S t = rounded(average < 0 ? average - w : average + w);
    const bool isGreater = static_cast<double>(magnitude(h33)) - static_cast<double>(magnitude(h44)) > 0;
    const R shift = rounded(isGreater ? quotient<P>(h44 * h33 - g, t) : t);
    return {shift, shift, 0};
}

// Where a sweep starts, and the first column of the shifted product there.
template <class P>
struct Start {
    std::ptrdiff_t row;
    typename P::Scalar f[3];
};

template <class P>
[[gnu::always_inline]] inline Start<P> chooseStart(Columns<P> h, const Shifts<P>& shifts, std::ptrdiff_t first,
                                                   std::ptrdiff_t last) {
    using S = typename P::Scalar;
    using R = typename P::Shift;
    const auto wide = [](S x) { return static_cast<double>(magnitude(x)); };
    Start<P> start{last - 2, {}};
    auto& [m, f] = start;
    for (;; --m) {
        const S below = h(m + 1, m);
        // Such an element divides nothing: the column of the row before serves. The first has none before it.
        if (roundsShifts<P> && m < last - 2 && !(magnitude(below) > smallestDivisor)) break;
        const S corner = h(m, m);
        const S p = static_cast<R>(shifts.h44 - corner), r = static_cast<R>(shifts.h33 - corner);
        f[0] = quotient<P>(p * r - shifts.g, below) + h(m, m + 1);
        f[1] = h(m + 1, m + 1) - corner - p - r;
        f[2] = h(m + 2, m + 1);
        const S sum = static_cast<R>(wide(f[0]) + wide(f[1]) + wide(f[2]));
        for (S& one : f) one = quotient<P>(one, sum);
        if (m == first) break;
        const S neighbours = static_cast<S>(wide(corner) + wide(h(m + 1, m + 1)) + wide(h(m - 1, m - 1)));
        const double kept =
            wide(f[0]) * static_cast<double>(Limits<typename P::Element>::epsilon) * static_cast<double>(neighbours);
        if (kept >= (wide(f[1]) + wide(f[2])) * wide(h(m, m - 1))) break;
    }
    return start;
}

// Takes (x0, x1, x2) to (x0, x1, x2) - tau (v . x) v, v = (1, v1, v2), in three places, or two where size is 2.
template <int size, class S>
struct SmallReflection {
    S v1, v2, t1, t2, t3;

    template <class Get, class Set>
    [[gnu::always_inline]] void apply(const Get& get, const Set& set) const {
        S x = v1 * get(1) + get(0);
        if constexpr (size == 3) x = x + v2 * get(2);
        set(0, get(0) - t1 * x);
        set(1, get(1) - t2 * x);
        if constexpr (size == 3) set(2, get(2) - x * t3);
    }
};

// The rows and columns that a sweep keeps up to date.
struct Reach {
    std::ptrdiff_t firstRow, endColumn;
};

// Applies a reflection of rows and columns k to k + size - 1 of h, and of these columns of w.
template <int size, class P, bool withVectors>
[[gnu::always_inline]] inline void applyReflection(const SmallReflection<size, typename P::Scalar>& reflection,
                                                   Columns<P> h, Columns<P> w, std::ptrdiff_t k, std::ptrdiff_t last,
                                                   Reach reach) {
    using S = typename P::Scalar;
    const auto ofColumns = [&](Columns<P> a, std::ptrdiff_t i) __attribute__((always_inline)) {
        reflection.apply([&](int l) { return a(i, k + l); }, [&](int l, S value) { a.set(i, k + l, value); });
    };
    for (std::ptrdiff_t j = k; j < reach.endColumn; ++j)
        reflection.apply([&](int l) { return h(k + l, j); }, [&](int l, S value) { h.set(k + l, j, value); });
    const std::ptrdiff_t end = std::min(k + 3, last) + 1;
    for (std::ptrdiff_t i = reach.firstRow; i < end; ++i) ofColumns(h, i);
    if constexpr (withVectors)
        for (std::ptrdiff_t i = 0; i < w.n; ++i) ofColumns(w, i);
}

template <class P, bool withVectors>
[[gnu::always_inline]] inline void sweep(Columns<P> h, Columns<P> w, const Start<P>& start, std::ptrdiff_t first,
                                         std::ptrdiff_t last) {
    using S = typename P::Scalar;
    using N = typename P::Norm;
    const Reach reach = withVectors ? Reach{0, h.n} : Reach{first, last + 1};
    for (std::ptrdiff_t k = start.row; k < last; ++k) {
        const bool three = k + 1 < last;
        S v0 = start.f[0], v1 = start.f[1], v2 = start.f[2];
        if (k > start.row) {
            v0 = h(k, k - 1);
            v1 = h(k + 1, k - 1);
            v2 = three ? h(k + 2, k - 1) : S{};
        }
        N squares = static_cast<N>(v1) * static_cast<N>(v1);
        if (three) squares += static_cast<N>(v2) * static_cast<N>(v2);
        const S tau = makeReflection<P>(v0, squares, [&](S scale) {
            v1 *= scale;
            v2 *= scale;
        });
        if (k > start.row) {
            h.set(k, k - 1, v0);
            h.set(k + 1, k - 1, 0);
            if (three) h.set(k + 2, k - 1, 0);
        } else if (k > first) {
            h.set(k, k - 1, 0 - h(k, k - 1));
        }
        if (three) applyReflection<3, P, withVectors>({v1, v2, tau, tau * v1, tau * v2}, h, w, k, last, reach);
        else applyReflection<2, P, withVectors>({v1, v2, tau, tau * v1, 0}, h, w, k, last, reach);
    }
}

// Is the subdiagonal element left of (k, k) zero to working precision?
template <class P, bool withVectors>
[[gnu::always_inline]] inline bool isNegligible(Columns<P> h, std::ptrdiff_t k, std::ptrdiff_t first,
                                                std::ptrdiff_t last) {
    using S = typename P::Scalar;
    using L = Limits<typename P::Element>;
    const S element = magnitude(h(k, k - 1));
    if constexpr (!withVectors) return S(L::epsilon) >= element;
    S around = magnitude(h(k - 1, k - 1)) + magnitude(h(k, k));
    if (S(L::negligible) >= around) {
        around = 0;
        for (std::ptrdiff_t j = first; j <= last; ++j) {
            const Strip<P> column{h.column(j).address(first)};
            const S sum = adjacentSum<S>(std::min(j + 1, last) - first + 1,
                                         [&](std::ptrdiff_t i) { return magnitude(column[i]); });
            if (sum > around) around = sum;
        }
    }
    const S relative = S(L::epsilon) * around, smallest = smallestNumber<P>(h.n);
    return (relative > smallest ? relative : smallest) >= element;
}

// Standardises the block of order 2 whose last row is given; with vectors, the rest of h and w turn with it. Gives the
// imaginary part of its eigenvalues.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar finishPair(Columns<P> h, Columns<P> w, std::ptrdiff_t last,
                                                            Rotation<typename P::Scalar>* rotation) {
    using S = typename P::Scalar;
    Block<S> block{h(last - 1, last - 1), h(last - 1, last), h(last, last - 1), h(last, last)};
    const S imaginary = standardise<P>(block, rotation);
    h.set(last - 1, last - 1, block.a);
    h.set(last - 1, last, block.b);
    h.set(last, last - 1, block.c);
    h.set(last, last, block.d);
    if (rotation == nullptr) return imaginary;
    const S c = rotation->c, s = rotation->s;
    const auto turnColumns = [&](Columns<P> a, std::ptrdiff_t rows) __attribute__((always_inline)) {
        for (std::ptrdiff_t i = 0; i < rows; ++i) {
            const S x = a(i, last - 1), y = a(i, last);
            a.set(i, last - 1, c * x + s * y);
            a.set(i, last, c * y - s * x);
        }
    };
    for (std::ptrdiff_t j = last + 1; j < h.n; ++j) {
        const S x = h(last - 1, j), y = h(last, j);
        h.set(last - 1, j, c * x + s * y);
        h.set(last, j, c * y - s * x);
    }
    turnColumns(h, last - 1);
    turnColumns(w, h.n);
    return imaginary;
}

// Finds the eigenvalues of a Hessenberg matrix from the last to the first. The budget of sweeps is one for the whole matrix.
// `rotation` is null where no vectors are wanted; it outlives a matrix.
template <class P, bool withVectors>
[[gnu::noinline]] std::int32_t iterate(Columns<P> h, Columns<P> w, typename P::Element* re, typename P::Element* im,
                                       Rotation<typename P::Scalar>* rotation) {
    const Strip<P> realParts{reinterpret_cast<std::byte*>(re)}, imaginaryParts{reinterpret_cast<std::byte*>(im)};
    std::ptrdiff_t budget = 30 * h.n, last = h.n - 1;
    while (last >= 0) {
        std::ptrdiff_t first = 0, used = 0;
        for (; used < budget; ++used) {
            std::ptrdiff_t k = last;
            while (k > first && !isNegligible<P, withVectors>(h, k, first, last)) --k;
            first = k;
            if (first > 0) h.set(first, first - 1, 0);
            if (first >= last - 1) break;
            const Start<P> start = chooseStart(h, chooseShifts(h, last, used), first, last);
            sweep<P, withVectors>(h, w, start, first, last);
        }
        if (first < last - 1) return korStatusNoConvergence;
        if (first == last) {
            realParts.set(last, h(last, last));
            imaginaryParts.set(last, 0);
        } else {
            const auto imaginary = finishPair<P>(h, w, last, rotation);
            realParts.set(last - 1, h(last - 1, last - 1));
            realParts.set(last, h(last, last));
            imaginaryParts.set(last - 1, imaginary);
            imaginaryParts.set(last, 0 - imaginary);
        }
        budget -= used;
        last = first - 1;
    }
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::eigen
