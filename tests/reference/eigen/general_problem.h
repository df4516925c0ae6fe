// One general eigenproblem, step by step from its definition, with matrices of its own and indices from 1.
//
//   T   elements: what is kept in matrices and vectors
//   S   all other numbers
//   R   shifts and what is derived from them
//   N   sums of squares and their roots
#pragma once

#include <xmmintrin.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "../../support/status.h"

namespace kormtest {

// Results are compared to the bit: no wider intermediate results.
static_assert(FLT_EVAL_METHOD == 0);

// Indices from 1.
template <class T>
class Matrix {
public:
    explicit Matrix(std::int32_t n) : n_(n), elements_(static_cast<std::size_t>(n) * static_cast<std::size_t>(n)) {}
    T& operator()(std::int32_t i, std::int32_t j) {
        return elements_.at(static_cast<std::size_t>(i - 1) * static_cast<std::size_t>(n_) +
                            static_cast<std::size_t>(j - 1));
    }
    std::int32_t order() const { return n_; }

private:
    std::int32_t n_;
    std::vector<T> elements_;
};

template <class T>
class Vector {
public:
    explicit Vector(std::int32_t n) : elements_(static_cast<std::size_t>(n)) {}
    T& operator()(std::int32_t i) { return elements_.at(static_cast<std::size_t>(i - 1)); }

private:
    std::vector<T> elements_;
};

template <class S>
struct Turn {
    S cs = 0, sn = 0;
};

template <class S>
struct Number {  // complex
    S re = 0, im = 0;
};

template <class T, class S, class R, class N>
class GeneralProblem {
public:
    GeneralProblem(std::int32_t order, bool roughRoot) : n(order), h(order), w(order), tau(order), rough(roughRoot) {}

    // --- Numbers ---

    static constexpr bool single = sizeof(T) == 4;
    static constexpr bool roundsShifts = sizeof(R) < sizeof(S);
    static S ulp() { return static_cast<S>(std::ldexp(1.0, single ? -23 : -52)); }
    static S eps4() { return static_cast<S>(std::ldexp(1.0, single ? -21 : -50)); }
    static S thr() { return static_cast<S>(std::ldexp(1.0, single ? -125 : -1021)); }
    static S repl() { return static_cast<S>(std::ldexp(1.0, single ? -124 : -1020)); }
    static S solverBig() { return static_cast<S>(std::ldexp(1.0, single ? 124 : 1020)); }
    S smlnum() const { return thr() * (static_cast<S>(n) / ulp()); }
    S bignum() const { return (S(1) - ulp()) / smlnum(); }

    static S abs(S x) { return std::fabs(x); }
    static double wide(S x) { return static_cast<double>(x); }

    // Eight partial sums where there are eight elements, which join as 04 26 15 37.
    template <class A>
    static A sum(const std::vector<A>& terms) {
        A total = 0;
        std::size_t at = 0;
        if (terms.size() >= 8) {
            A part[8] = {0, 0, 0, 0, 0, 0, 0, 0};
            while (at + 8 <= terms.size()) {
                for (A& one : part) one += terms[at++];
            }
            const A even = (part[0] + part[4]) + (part[2] + part[6]), odd = (part[1] + part[5]) + (part[3] + part[7]);
            total = even + odd;
        }
        while (at < terms.size()) total += terms[at++];
        return total;
    }

    static S hypot(S x, S y) {
        S hi = x, lo = y;
        if (y > x) std::swap(hi, lo);
        if (lo < thr()) return hi;
        const S q = lo * lo / (hi * hi);
        return hi * static_cast<S>(std::sqrt(1.0 + wide(q)));
    }

    S oneByRoot(S x) const {
        if (!rough) return S(1) / std::sqrt(x);
        const float y = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(static_cast<float>(x))));
        const float newton = y * -0.5F * (static_cast<float>(x) * y * y - 3.0F);
        return static_cast<S>(newton);
    }

    // tau, beta and the vector x changed in place.
    static S generate(S& alpha, std::vector<S>& x) {
        std::vector<N> squares;
        for (const S one : x) squares.push_back(static_cast<N>(one) * static_cast<N>(one));
        const S xnorm = static_cast<S>(std::sqrt(sum(squares)));
        if (xnorm < thr()) return 0;
        S r = hypot(abs(alpha), xnorm);
        if (r < thr()) r = repl();
        const S s = alpha < 0 ? -r : r;
        const S beta = S(0) - s;
        const S result = (beta - alpha) / beta;
        const S f = S(1) / (S(0) - (beta - alpha));
        for (S& one : x) one = one * f;
        alpha = beta;
        return result;
    }

    // --- Stages 1 and 2: h is the transpose of what the caller sees ---

    void reduce() {
        for (std::int32_t k = 1; k < n; ++k) {
            S alpha = h(k + 1, k);
            std::vector<S> x;
            for (std::int32_t i = k + 2; i <= n; ++i) x.push_back(h(i, k));
            S t = 0;
            if (!x.empty()) t = generate(alpha, x);
            tau(k) = static_cast<T>(t);
            for (std::int32_t i = k + 2; i <= n; ++i) h(i, k) = static_cast<T>(x[static_cast<std::size_t>(i - k - 2)]);
            h(k + 1, k) = 1;
            if (abs(t) > thr()) {
                Vector<T> work(n);
                for (std::int32_t i = 1; i <= n; ++i) {
                    S total = 0;
                    for (std::int32_t c = k + 1; c <= n; ++c) total += S(h(c, k)) * S(h(i, c));
                    work(i) = static_cast<T>(total);
                }
                for (std::int32_t c = k + 1; c <= n; ++c)
                    for (std::int32_t i = 1; i <= n; ++i)
                        h(i, c) = static_cast<T>(S(h(i, c)) - (t * S(h(c, k))) * S(work(i)));
                for (std::int32_t r = k + 1; r <= n; ++r) {
                    std::vector<S> products;
                    for (std::int32_t c = k + 1; c <= n; ++c) products.push_back(S(h(c, r)) * S(h(c, k)));
                    const S factor = t * sum(products);
                    for (std::int32_t c = k + 1; c <= n; ++c)
                        h(c, r) = static_cast<T>(S(h(c, r)) - factor * S(h(c, k)));
                }
            }
            h(k + 1, k) = static_cast<T>(alpha);
        }
    }

    void collect() {
        for (std::int32_t i = 1; i <= n; ++i)
            for (std::int32_t j = 1; j <= n; ++j) w(i, j) = i == j ? T(1) : T(0);
        for (std::int32_t k = n - 2; k >= 1; --k) {
            const S t = tau(k);
            if (!(abs(t) > thr())) continue;
            for (std::int32_t j = k + 1; j <= n; ++j) {
                std::vector<S> products;
                for (std::int32_t i = k + 2; i <= n; ++i) products.push_back(S(w(i, j)) * S(h(i, k)));
                const S factor = t * (S(w(k + 1, j)) + sum(products));
                w(k + 1, j) = static_cast<T>(S(w(k + 1, j)) - factor);
                for (std::int32_t i = k + 2; i <= n; ++i) w(i, j) = static_cast<T>(S(w(i, j)) - factor * S(h(i, k)));
            }
        }
    }

    void clearTails() {
        for (std::int32_t j = 1; j <= n; ++j)
            for (std::int32_t i = j + 2; i <= n; ++i) h(i, j) = 0;
    }

    // --- Stage 3 ---

    static R cut(S x) { return static_cast<R>(x); }
    static R cutWide(double x) { return static_cast<R>(x); }
    static S thr32() { return static_cast<S>(std::ldexp(1.0, -125)); }

    static S divided(S x, S t) {
        if (!roundsShifts) return x / t;
        if (abs(t) > thr32()) return x * (S(1) / t);
        return x * t;
    }

    bool splits(std::int32_t k, std::int32_t low, std::int32_t high, bool relative) {
        const S element = abs(h(k, k - 1));
        if (!relative) return ulp() >= element;
        S tst = abs(h(k - 1, k - 1)) + abs(h(k, k));
        if (thr() >= tst) {
            tst = 0;
            for (std::int32_t j = low; j <= high; ++j) {
                std::vector<S> magnitudes;
                for (std::int32_t i = low; i <= std::min(j + 1, high); ++i) magnitudes.push_back(abs(h(i, j)));
                const S column = sum(magnitudes);
                if (column > tst) tst = column;
            }
        }
        S limit = smlnum();
        if (ulp() * tst > limit) limit = ulp() * tst;
        return limit >= element;
    }

    void shifts(std::int32_t high, std::int32_t its, R& h33, R& h44, R& g) {
        const std::int32_t i = high;
        if (its == 10 || its == 20) {
            const R s = cut(abs(h(i, i - 1)) + abs(h(i - 1, i - 2)));
            h44 = cut(S(0.75) * S(s) + S(h(i, i)));
            h33 = h44;
            g = cut((S(-0.4375) * S(s)) * S(s));
            return;
        }
        h44 = cut(h(i, i));
        h33 = cut(h(i - 1, i - 1));
        g = cut(S(h(i, i - 1)) * S(h(i - 1, i)));
        const R q = cut((S(h33) - S(h44)) * S(0.5));
        const R disc = cut(S(q) * S(q) + S(g));
        if (!(disc > 0)) return;
        const R root = cut(std::sqrt(S(disc)));
        const R ave = cut((S(h44) + S(h33)) * S(0.5));
        const R t = ave < 0 ? cut(S(ave) - S(root)) : cut(S(ave) + S(root));
        if (std::fabs(static_cast<double>(h33)) - std::fabs(static_cast<double>(h44)) > 0)
            h44 = cut(divided(S(h44) * S(h33) - S(g), S(t)));
        else h44 = t;
        h33 = h44;
        g = 0;
    }

    // The row at which the sweep starts.
    std::int32_t startRow(std::int32_t low, std::int32_t high, R h33, R h44, R g, S& f1, S& f2, S& f3) {
        std::int32_t m = high - 2;
        while (true) {
            const S under = h(m + 1, m);
            if (roundsShifts && m != high - 2 && !(abs(under) > thr32())) return m;
            const S h11 = h(m, m);
            const R p = cut(S(h44) - h11), r = cut(S(h33) - h11);
            f1 = divided(S(p) * S(r) - S(g), under) + S(h(m, m + 1));
            f2 = S(h(m + 1, m + 1)) - h11 - S(p) - S(r);
            f3 = h(m + 2, m + 1);
            const R s = cutWide(std::fabs(wide(f1)) + std::fabs(wide(f2)) + std::fabs(wide(f3)));
            f1 = divided(f1, S(s));
            f2 = divided(f2, S(s));
            f3 = divided(f3, S(s));
            if (m == low) return m;
            const S around = static_cast<S>(std::fabs(wide(h(m, m))) + std::fabs(wide(h(m + 1, m + 1))) +
                                            std::fabs(wide(h(m - 1, m - 1))));
            const double left = std::fabs(wide(f1)) * wide(ulp()) * wide(around);
            const double right = (std::fabs(wide(f2)) + std::fabs(wide(f3))) * std::fabs(wide(h(m, m - 1)));
            if (left >= right) return m;
            --m;
        }
    }

    // Columns k to k + 2 of row i, or k and k + 1.
    void reflectRow(Matrix<T>& a, std::int32_t i, std::int32_t k, const S (&v)[4], const S (&t)[4], int nr) {
        S x = v[2] * S(a(i, k + 1)) + S(a(i, k));
        if (nr == 3) x = x + v[3] * S(a(i, k + 2));
        a(i, k) = static_cast<T>(S(a(i, k)) - t[1] * x);
        a(i, k + 1) = static_cast<T>(S(a(i, k + 1)) - t[2] * x);
        if (nr == 3) a(i, k + 2) = static_cast<T>(S(a(i, k + 2)) - x * t[3]);
    }
    void reflectColumn(Matrix<T>& a, std::int32_t j, std::int32_t k, const S (&v)[4], const S (&t)[4], int nr) {
        S x = v[2] * S(a(k + 1, j)) + S(a(k, j));
        if (nr == 3) x = x + v[3] * S(a(k + 2, j));
        a(k, j) = static_cast<T>(S(a(k, j)) - t[1] * x);
        a(k + 1, j) = static_cast<T>(S(a(k + 1, j)) - t[2] * x);
        if (nr == 3) a(k + 2, j) = static_cast<T>(S(a(k + 2, j)) - x * t[3]);
    }

    void sweepOnce(std::int32_t m, std::int32_t low, std::int32_t high, S f1, S f2, S f3, bool whole) {
        for (std::int32_t k = m; k <= high - 1; ++k) {
            const int nr = std::min(3, high - k + 1);
            S alpha = f1;
            std::vector<S> x{f2, f3};
            if (k > m) {
                alpha = h(k, k - 1);
                x = {S(h(k + 1, k - 1))};
                if (nr == 3) x.push_back(h(k + 2, k - 1));
            }
            const S t1 = generate(alpha, x);
            if (k > m) {
                h(k, k - 1) = static_cast<T>(alpha);
                h(k + 1, k - 1) = 0;
                if (k < high - 1) h(k + 2, k - 1) = 0;
            } else if (m > low) {
                h(k, k - 1) = T(0) - h(k, k - 1);
            }
            const S v[4] = {0, 1, x[0], nr == 3 ? x[1] : S(0)};
            const S t[4] = {0, t1, t1 * v[2], t1 * v[3]};
            for (std::int32_t j = k; j <= (whole ? n : high); ++j) reflectColumn(h, j, k, v, t, nr);
            for (std::int32_t i = whole ? 1 : low; i <= std::min(k + 3, high); ++i) reflectRow(h, i, k, v, t, nr);
            if (whole)
                for (std::int32_t i = 1; i <= n; ++i) reflectRow(w, i, k, v, t, nr);
        }
    }

    // --- Stage 4 ---

    static bool negative(S x) { return x < 0; }

    // The imaginary part; with `turn` the rotation too.
    S standardise(S& a, S& b, S& c, S& d, Turn<S>* turn) {
        const auto setTurn = [turn](S cs, S sn) {
            if (turn != nullptr) *turn = {cs, sn};
        };
        if (thr() >= abs(c)) {
            setTurn(1, 0);
            return 0;
        }
        if (thr() >= abs(b)) {
            setTurn(0, 1);
            std::swap(a, d);
            b = S(0) - c;
            c = 0;
            return 0;
        }
        const auto sixth = [&] { return static_cast<S>(std::sqrt(wide(abs(b))) * std::sqrt(wide(abs(c)))); };
        const S t = a - d;
        if (thr() >= abs(t)) {
            if (negative(b) != negative(c)) setTurn(1, 0);
            return sixth();
        }
        const S p = S(0.5) * t;
        S bcmax = abs(b), bcmin = abs(c);
        if (bcmin > bcmax) std::swap(bcmax, bcmin);
        const S bcmis = negative(b) == negative(c) ? bcmin : -bcmin;
        const S scale = bcmax > abs(p) ? bcmax : abs(p);
        const S z = (p / scale) * p + (bcmax / scale) * bcmis;
        if (z >= eps4()) {
            const S y = static_cast<S>(std::sqrt(wide(scale)) * std::sqrt(wide(z)));
            const S zz = p > 0 ? p + y : p - y;
            S length = hypot(abs(c), abs(zz));
            if (length < thr()) length = repl();
            setTurn(zz / length, c / length);
            a = d + zz;
            d = d - bcmis * (bcmax / zz);
            b = b - c;
            c = 0;
            return 0;
        }
        const S sigma = b + c;
        S length = hypot(abs(sigma), abs(t));
        if (length < thr()) length = repl();
        const S quotient = abs(sigma) / length;
        const S cs = static_cast<S>(std::sqrt((wide(quotient) + 1.0) * 0.5));
        S sn = (S(0) - p) / (length * cs);
        if (negative(sigma)) sn = -sn;
        setTurn(cs, sn);
        const S aa = a * cs + b * sn, bb = b * cs - a * sn, cc = c * cs + d * sn, dd = d * cs - c * sn;
        const S b2 = bb * cs + dd * sn, c2 = cc * cs - aa * sn;
        const S e = ((aa + dd) * cs + (cc - bb) * sn) * S(0.5);
        a = d = e;
        if (!(abs(c2) > thr()) || !(abs(b2) > thr())) {
            b = S(0) - c2;
            c = 0;
            return 0;
        }
        if (negative(b2) != negative(c2)) {
            b = b2;
            c = c2;
            return sixth();
        }
        const S sab = std::sqrt(abs(b2)), sac = std::sqrt(abs(c2)), r = oneByRoot(abs(b2 + c2));
        const S cs1 = sab * r, sn1 = sac * r;
        setTurn(cs * cs1 - sn * sn1, cs * sn1 + sn * cs1);
        a = negative(b2) ? e - p : e + p;
        d = negative(b2) ? e + p : e - p;
        b = b2 - c2;
        c = 0;
        return 0;
    }

    static void turnPair(T& x, T& y, const Turn<S>& turn) {
        const S first = turn.cs * S(x) + turn.sn * S(y), second = turn.cs * S(y) - turn.sn * S(x);
        x = static_cast<T>(first);
        y = static_cast<T>(second);
    }

    // Writes eigenvalue i by put(i, re, im).
    template <class Put>
    std::int32_t iterate(Turn<S>* turn, const Put& put) {
        const bool whole = turn != nullptr;
        std::int32_t budget = 30 * n;
        for (std::int32_t high = n; high > 0;) {
            std::int32_t low = 1, used = 0;
            for (std::int32_t its = 0; its < budget; ++its) {
                std::int32_t k = high;
                for (; k > low; --k)
                    if (splits(k, low, high, whole)) break;
                low = k;
                if (low > 1) h(low, low - 1) = 0;
                if (low >= high - 1) break;
                R h33, h44, g;
                shifts(high, its, h33, h44, g);
                S f1 = 0, f2 = 0, f3 = 0;
                const std::int32_t m = startRow(low, high, h33, h44, g, f1, f2, f3);
                sweepOnce(m, low, high, f1, f2, f3, whole);
                ++used;
            }
            if (low < high - 1) return status::noConvergence;
            if (low == high) {
                put(high, h(high, high), T(0));
            } else {
                const std::int32_t top = high - 1;
                S a = h(top, top), b = h(top, high), c = h(high, top), d = h(high, high);
                const S imaginary = standardise(a, b, c, d, turn);
                h(top, top) = static_cast<T>(a);
                h(top, high) = static_cast<T>(b);
                h(high, top) = static_cast<T>(c);
                h(high, high) = static_cast<T>(d);
                put(top, static_cast<T>(a), static_cast<T>(imaginary));
                put(high, static_cast<T>(d), static_cast<T>(S(0) - imaginary));
                if (whole) {
                    for (std::int32_t j = high + 1; j <= n; ++j) turnPair(h(top, j), h(high, j), *turn);
                    for (std::int32_t i = 1; i < top; ++i) turnPair(h(i, top), h(i, high), *turn);
                    for (std::int32_t i = 1; i <= n; ++i) turnPair(w(i, top), w(i, high), *turn);
                }
            }
            budget -= used;
            high = low - 1;
        }
        return status::ok;
    }

    std::int32_t n;
    Matrix<T> h, w;
    Vector<T> tau;

private:
    bool rough;
};

}  // namespace kormtest
