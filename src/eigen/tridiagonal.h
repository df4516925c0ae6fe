// Eigenvalues of symmetric matrices of order 3 and up: Householder's reduction to tridiagonal form, QL sweeps with implicit
// shifts, and the sort. Every test is absolute: nothing here looks at the size of the matrix.
//
// All of it is written over a scalar S, so that one text serves one object and a group with one object in each lane. A lane
// goes its own way by masks and gets the bits that its object would get by itself.
#pragma once

#include <cstddef>
#include <cstring>
#include <limits>

#include "eigen/cells.h"
#include "eigen/pace.h"
#include "kernel/scalar.h"

namespace korm::inline KORM_VARIANT::eigen {

// The limit of every test but one (see ProductTest in symmetric.h), and how many sweeps an eigenvalue may take.
template <class T>
inline constexpr T epsilon = std::numeric_limits<T>::epsilon();
inline constexpr int sweepLimit = 30;

// Up to this order a group's matrices lie on the stack.
inline constexpr std::int32_t largestGrouped = 24;

// In the place of a matrix of eigenvectors.
struct NoVectors {};
template <class Vectors>
inline constexpr bool hasVectors = !std::is_same_v<Vectors, NoVectors>;

// Terms from `first` to `end` - 1 in two sums, of the terms at even and at odd steps; the odd one is added to the even one.
template <class S, class Term>
[[gnu::always_inline]] inline S pairedSum(std::ptrdiff_t first, std::ptrdiff_t end, const Term& term) {
    S even = all<S>(0), odd = all<S>(0);
    std::ptrdiff_t i = first;
    for (; i + 1 < end; i += 2) {
        even += term(i);
        odd += term(i + 1);
    }
    if (i < end) even += term(i);
    return even + odd;
}

// The scalar of one object in all lanes; that of a group as it is.
template <class X, class S>
[[gnu::always_inline]] inline X spread(S value) {
    if constexpr (std::is_same_v<X, S>) return value;
    else return all<X>(value);
}

// --- Reduction ----------------------------------------------------------------------------------

// A group's reflector is read again and again: where scalars are wider than cells, it is widened once.
template <class S, class T>
struct Widened {
    static constexpr bool isNeeded = lanesOf<S> > 1 && !std::is_same_v<ElementOf<S>, T>;
    using Wide = ElementOf<S>;
    S cells[isNeeded ? largestGrouped : 1];

    [[gnu::always_inline]] auto of(const CellVector<S, T>& u, std::ptrdiff_t first, std::ptrdiff_t end) {
        if constexpr (isNeeded) {
            const CellVector<S, Wide> wide{reinterpret_cast<std::byte*>(cells)};
            for (std::ptrdiff_t i = first; i < end; ++i) wide.set(i, u.get(i));
            return wide;
        } else {
            return u;
        }
    }
};

// The reflector of one step, I - beta u u', u in the places from `first` on.
template <class S, class Cells>
struct Reflector {
    Cells u;
    std::ptrdiff_t first;
    std::ptrdiff_t end;
    S beta;
    MaskOf<S> lanes;  // in which it is applied

    // To cells that `get` and `set` reach by one index, X is one of them or several neighbours.
    template <class X, class Get, class Set>
    [[gnu::always_inline]] void apply(const Get& get, const Set& set) const {
        const X x =
            spread<X>(beta) * pairedSum<X>(first, end, [&](std::ptrdiff_t i) { return get(i) * spread<X>(u.get(i)); });
        const auto change = [&](const auto& kept) __attribute__((always_inline)) {
            for (std::ptrdiff_t i = first; i < end; ++i) {
                const X old = get(i);
                set(i, kept(old - spread<X>(u.get(i)) * x, old));
            }
        };
        if constexpr (lanesOf<S> == 1) change([](X changed, X) { return changed; });
        else if (areAll(lanes)) change([](X changed, X) { return changed; });
        else change([this](X changed, X old) { return chosen(lanes, changed, old); });
    }
    // To columns `from` to the last.
    template <class Matrix>
    [[gnu::always_inline]] void applyToColumns(const Matrix& a, std::ptrdiff_t from) const {
        if constexpr (lanesOf<S> == 1)
            inRuns<S>(
                from, end, [&]<class X>(std::ptrdiff_t j) __attribute__((always_inline)) {
                    apply<X>([&](std::ptrdiff_t i) { return a.row(i).template getRun<X>(j); },
                             [&](std::ptrdiff_t i, X values) { a.row(i).setRun(j, values); });
                });
        else
            for (std::ptrdiff_t j = from; j < end; ++j)
                apply<S>([&](std::ptrdiff_t i) { return a.get(i, j); },
                         [&](std::ptrdiff_t i, S value) { a.set(i, j, value); });
    }
    template <class Matrix>
    [[gnu::always_inline]] void applyToRow(const Matrix& a, std::ptrdiff_t r) const {
        if constexpr (std::is_same_v<S, double> && hasRowsInOnePiece<Matrix>) {
            const auto row = a.row(r);
            Double2 sums = all<Double2>(0);  // of the even and of the odd steps
            std::ptrdiff_t j = first;
            for (; j + 1 < end; j += 2) sums += row.template getRun<Double2>(j) * u.template getRun<Double2>(j);
            double even = sums[0];
            if (j < end) even += row.get(j) * u.get(j);
            const double x = beta * (even + sums[1]);
            for (j = first; j + 1 < end; j += 2)
                row.setRun(j, row.template getRun<Double2>(j) - u.template getRun<Double2>(j) * all<Double2>(x));
            if (j < end) row.set(j, row.get(j) - u.get(j) * x);
        } else {
            apply<S>([&](std::ptrdiff_t j) { return a.get(r, j); },
                     [&](std::ptrdiff_t j, S value) { a.set(r, j, value); });
        }
    }
};

// The first reflector, as a matrix in the place of the identity.
template <class S, class Cells, class Vectors>
[[gnu::always_inline]] inline void writeReflector(const Reflector<S, Cells>& reflector, const Vectors& v) {
    const auto put = [&](std::ptrdiff_t i, std::ptrdiff_t j, S value) {
        v.set(i, j, lanesOf<S> == 1 ? value : chosen(reflector.lanes, value, v.get(i, j)));
    };
    const S beta = reflector.beta, opposite = all<S>(0) - beta;
    for (std::ptrdiff_t i = reflector.first; i < reflector.end; ++i) {
        const S ui = reflector.u.get(i);
        put(i, i, all<S>(1) - (beta * ui) * ui);
        for (std::ptrdiff_t j = i + 1; j < reflector.end; ++j) {
            const S value = (opposite * ui) * reflector.u.get(j);
            put(i, j, value);
            put(j, i, value);
        }
    }
}

// The whole matrix is transformed, not a triangle of it: it need not be symmetric. `u` holds a reflector at a time, and keeps
// what later ones don't write over.
template <class S, class T, class Vectors>
[[gnu::always_inline]] inline void reduce(const CellMatrix<S, T>& a, const CellVector<S, T>& u, const Vectors& v,
                                          std::ptrdiff_t n) {
    const S eps = all<S>(epsilon<T>);
    for (std::ptrdiff_t k = 0; k + 2 < n; ++k) {
        const S squares = pairedSum<S>(k + 1, n, [&](std::ptrdiff_t i) { return a.get(i, k) * a.get(i, k); });
        const S norm = squareRoot(squares);
        for (std::ptrdiff_t i = k + 2; i < n; ++i) u.set(i, a.get(i, k));
        const S alpha = a.get(k + 1, k);
        MaskOf<S> lanes = everyLane<S>();
        if constexpr (hasVectors<Vectors>) {
            lanes = butNot(lanes, eps >= magnitude(all<S>(0) - (alpha - norm)));
            if (!any(lanes)) continue;
        }
        const MaskOf<S> positive = alpha > eps, tiny = eps >= magnitude(alpha);
        u.set(k + 1, chosen(positive, alpha + norm, chosen(tiny, norm, alpha - norm)));
        const S product = alpha * norm;
        const S half = chosen(positive, squares + product, chosen(tiny, squares, squares - product));
        const S whole = half + half;
        lanes = butNot(lanes, eps >= whole);
        if (!any(lanes)) continue;
        Widened<S, T> widened;
        const auto wide = widened.of(u, k + 1, n);
        const Reflector<S, decltype(wide)> reflector{wide, k + 1, n, all<S>(2) / chosen(lanes, whole, all<S>(1)),
                                                     lanes};
        reflector.applyToColumns(a, k);
        for (std::ptrdiff_t r = k; r < n; ++r) reflector.applyToRow(a, r);
        if constexpr (hasVectors<Vectors>) {
            if (k == 0) writeReflector(reflector, v);
            else if constexpr (hasColumnsInOnePiece<Vectors>) reflector.applyToColumns(v.stored, 1);
            else
                for (std::ptrdiff_t r = 1; r < n; ++r) reflector.applyToRow(v, r);
        }
    }
}

// --- Iteration ----------------------------------------------------------------------------------

// A tridiagonal matrix: element i of `below` stands below element i of `diagonal`.
template <class S, class T>
struct Tridiagonal {
    CellVector<S, T> diagonal, below;
    std::ptrdiff_t order;
    // Where the last element is larger than the first, the sweeps run upward. That is the same as downward in the matrix
    // that begins with the last row and column; only the tests at the end of a sweep and the product differ.
    MaskOf<S> upward;
};

template <class S, class T>
[[gnu::always_inline]] inline void reverse(const CellVector<S, T>& cells, std::ptrdiff_t length, MaskOf<S> lanes) {
    for (std::ptrdiff_t i = 0, j = length - 1; i < j; ++i, --j) {
        S a = cells.get(i), b = cells.get(j);
        exchangeIf(lanes, a, b);
        cells.set(i, a);
        cells.set(j, b);
    }
}

template <class S, class T, class Vectors>
[[gnu::always_inline]] inline void exchangeColumns(const Vectors& v, std::ptrdiff_t n, std::ptrdiff_t i,
                                                   std::ptrdiff_t j, MaskOf<S> lanes) {
    for (std::ptrdiff_t r = 0; r < n; ++r) {
        S a = v.get(r, i), b = v.get(r, j);
        exchangeIf(lanes, a, b);
        v.set(r, i, a);
        v.set(r, j, b);
    }
}

template <class S, class T, class Vectors>
[[gnu::always_inline]] inline void reverseColumns(const Vectors& v, std::ptrdiff_t n, MaskOf<S> lanes) {
    if constexpr (hasVectors<Vectors>)
        if (any(lanes))
            for (std::ptrdiff_t i = 0, j = n - 1; i < j; ++i, --j) exchangeColumns<S, T>(v, n, i, j, lanes);
}

// Gathers the tridiagonal part in the first two rows of the matrix, whose other cells are no longer needed.
template <class S, class T>
[[gnu::always_inline]] inline Tridiagonal<S, T> gathered(const CellMatrix<S, T>& a, std::ptrdiff_t n) {
    const MaskOf<S> upward = magnitude(a.get(n - 1, n - 1)) > magnitude(a.get(0, 0));
    for (std::ptrdiff_t i = 1; i < n; ++i) a.set(0, i, a.get(i, i));
    for (std::ptrdiff_t i = 1; i < n - 1; ++i) a.set(1, i, a.get(i + 1, i));
    const Tridiagonal<S, T> t{a.cells, {a.cells.origin + n * a.cells.size}, n, upward};
    if (any(upward)) {
        reverse(t.diagonal, n, upward);
        reverse(t.below, n - 1, upward);
    }
    return t;
}

// Two columns of a group's eigenvectors, in those of its lanes that V has. Where a lane takes no part, a product becomes +0;
// to subtract that leaves each bit.
template <class V, class T>
[[gnu::always_inline]] inline void rotateLanes(std::byte* left, std::ptrdiff_t width, std::ptrdiff_t n, V c, V s,
                                               MaskOf<V> lanes) {
    if (!any(lanes)) return;
    const V cosine = chosen(lanes, c, all<V>(1)), opposite = -s;
    for (std::ptrdiff_t r = 0; r < n; ++r, left += n * width) {
        std::byte* const right = left + width;
        const V a = readCell<V, T>(left), b = readCell<V, T>(right);
        writeCell<V, T>(left, cosine * a - onlyIn<V>(lanes, b * opposite));
        writeCell<V, T>(right, b * cosine - onlyIn<V>(lanes, a * s));
    }
}

// Columns i and i + 1 of the eigenvectors so far.
template <class S, class Vectors>
[[gnu::always_inline]] inline void rotate(const Vectors& v, std::ptrdiff_t n, std::ptrdiff_t i, S c, S s,
                                          MaskOf<S> lanes) {
    if constexpr (isTwin<S>) {
        using T = typename Vectors::Element;
        constexpr std::ptrdiff_t width = CellVector<S, T>::size;
        std::byte* const left = v.cells.origin + i * width;
        rotateLanes<TwinOf<S>, T>(left, width, n, c.first, s.first, lanes.first);
        rotateLanes<TwinOf<S>, T>(left + width / 2, width, n, c.second, s.second, lanes.second);
    } else if constexpr (hasColumnsInOnePiece<Vectors>) {
        const auto lefts = v.stored.row(i), rights = v.stored.row(i + 1);
        inRuns<S>(
            0, n, [&]<class X>(std::ptrdiff_t r) __attribute__((always_inline)) {
                const X left = lefts.template getRun<X>(r), right = rights.template getRun<X>(r);
                const X cosine = spread<X>(c), sine = spread<X>(s);
                lefts.setRun(r, cosine * left + right * sine);
                rights.setRun(r, right * cosine - left * sine);
            });
    } else {
        for (std::ptrdiff_t r = 0; r < n; ++r) {
            const S left = v.get(r, i), right = v.get(r, i + 1);
            v.set(r, i, c * left + right * s);
            v.set(r, i + 1, right * c - left * s);
        }
    }
}

// What becomes of eigenvalues that are found while the iteration runs: `found(i, value, lanes)`.
template <class S>
struct NothingFound {
    [[gnu::always_inline]] void operator()(std::ptrdiff_t, S, MaskOf<S>) const {}
};

// Diagonalises. False: an eigenvalue took too many sweeps.
template <class S, class T, class Vectors, class Found>
[[gnu::always_inline]] inline bool iterate(const Tridiagonal<S, T>& t, const Vectors& v, const Found& found,
                                           LaneUse<S>* use) {
    using Mask = MaskOf<S>;
    const S eps = all<S>(epsilon<T>), zero = all<S>(0), one = all<S>(1);
    const std::ptrdiff_t n = t.order;
    const CellVector<S, T>&d = t.diagonal, &e = t.below;
    for (std::ptrdiff_t l = n - 1; l > 0; --l) {
        Mask pending = everyLane<S>();
        for (int sweeps = 0;; ++sweeps) {
            // The block that ends at l begins at m, the first row of which nothing above is coupled to.
            S m = all<S>(static_cast<ElementOf<S>>(l)), dm = d.get(l);
            Mask coupled = pending;
            std::ptrdiff_t first = l;
            for (;;) {
                const Mask split = both(coupled, eps >= magnitude(e.get(first - 1) * all<S>(ElementOf<S>(0.5))));
                found(first, d.get(first), split);
                coupled = butNot(coupled, split);
                if (first == l) pending = coupled;
                if (!any(coupled)) break;
                --first;
                m = chosen(coupled, all<S>(static_cast<ElementOf<S>>(first)), m);
                dm = chosen(coupled, d.get(first), dm);
                if (first == 0) break;
            }
            if (!any(pending)) break;
            if (sweeps == sweepLimit) return false;
            if constexpr (lanesOf < S >> 1) use->add(pending, l - first);

            const S dl = d.get(l), el = chosen(pending, e.get(l - 1), one);
            const S q = (d.get(l - 1) - dl) / (all<S>(2) * el);
            S last = squareRoot(q * q + one);
            S g = (dm - dl) + el / chosen(q > eps, q + last, q - last);
            S p = zero, s = one, c = one;
            Mask running = pending;
            for (std::ptrdiff_t i = first; i < l; ++i) {
                const S step = all<S>(static_cast<ElementOf<S>>(i));
                Mask lanes = both(running, m <= step);
                const S ei = e.get(i), f = s * ei, b = c * ei;
                const S r = squareRoot(f * f + g * g);
                if (i > first) e.set(i - 1, chosen(both(lanes, m < step), r, e.get(i - 1)));
                const Mask quits = both(lanes, eps >= magnitude(r));
                if (any(quits)) {
                    d.set(i, chosen(quits, d.get(i) - p, d.get(i)));
                    for (std::ptrdiff_t j = first; j <= i; ++j)
                        e.set(j, chosen(both(quits, m == all<S>(static_cast<ElementOf<S>>(j))), zero, e.get(j)));
                    running = butNot(running, quits);
                    if (!any(running)) break;
                    lanes = butNot(lanes, quits);
                }
                const S divisor = chosen(lanes, r, one);
                s = chosen(lanes, f / divisor, s);
                c = chosen(lanes, g / divisor, c);
                const S di = d.get(i), shifted = di - p;
                const S x = (d.get(i + 1) - shifted) * s + (c + c) * b;
                const S change = x * s;
                d.set(i, chosen(lanes, shifted + change, di));
                g = chosen(lanes, x * c - b, g);
                p = chosen(lanes, change, p);
                last = chosen(lanes, x, last);
                if constexpr (hasVectors<Vectors>) rotate(v, n, i, c, s, lanes);
            }
            // A sweep that was left early ends here all the same where it ran upward.
            Mask ends = both(magnitude(last) > eps, either(running, both(pending, t.upward)));
            if (l == n - 1) ends = either(ends, both(running, t.upward));
            d.set(l, chosen(ends, d.get(l) - p, d.get(l)));
            e.set(l - 1, chosen(ends, g, e.get(l - 1)));
        }
    }
    return true;
}

// --- Sort -----------------------------------------------------------------------------------------

// Descending, by selection: of equal values the first is taken, and a NaN is neither taken nor moved.
template <class S, class T, class Vectors>
[[gnu::always_inline]] inline void sortDescending(const CellVector<S, T>& values, const Vectors& v, std::ptrdiff_t n) {
    for (std::ptrdiff_t i = 0; i < n - 1; ++i) {
        S best = values.get(i), at = all<S>(static_cast<ElementOf<S>>(i));
        for (std::ptrdiff_t j = i + 1; j < n; ++j) {
            const S value = values.get(j);
            const MaskOf<S> greater = value > best;
            best = chosen(greater, value, best);
            at = chosen(greater, all<S>(static_cast<ElementOf<S>>(j)), at);
        }
        for (std::ptrdiff_t j = i + 1; j < n; ++j) {
            const MaskOf<S> lanes = at == all<S>(static_cast<ElementOf<S>>(j));
            if (!any(lanes)) continue;
            values.set(j, chosen(lanes, values.get(i), values.get(j)));
            if constexpr (hasVectors<Vectors>) exchangeColumns<S, T>(v, n, i, j, lanes);
        }
        values.set(i, best);
    }
}

}  // namespace korm::inline KORM_VARIANT::eigen
