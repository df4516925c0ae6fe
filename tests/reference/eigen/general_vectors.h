// Stages 6 to 8 of a general eigenproblem: the vectors, from a quasi-triangular matrix.
#pragma once

#include "general_problem.h"

namespace kormtest {

// What a vector's search ended with, beside the status: a call may end without vectors and with status Ok.
struct VectorsEnd {
    bool delivered = true;
    std::int32_t status = status::ok;
};

template <class T, class S, class R, class N>
class GeneralVectors {
    using Problem = GeneralProblem<T, S, R, N>;
    using C = Number<S>;

public:
    explicit GeneralVectors(Problem& problem) : p_(problem), n_(problem.n), norms_(n_), re_(n_), im_(n_) {
        for (std::int32_t j = 1; j <= n_; ++j) {
            std::vector<S> above;
            for (std::int32_t i = 1; i < j; ++i) above.push_back(Problem::abs(t(i, j)));
            norms_(j) = static_cast<T>(Problem::sum(above));
        }
    }

    VectorsEnd rights(Matrix<T>& w) {
        for (std::int32_t ki = n_; ki >= 1;) {
            const bool pair = ki > 1 && coupled(ki - 1);
            const VectorsEnd end = pair ? right<C>(w, ki - 1) : right<S>(w, ki);
            if (!end.delivered) return end;
            ki -= pair ? 2 : 1;
        }
        return {};
    }

    VectorsEnd lefts(Matrix<T>& w) {
        for (std::int32_t ki = 1; ki <= n_;) {
            const bool pair = ki < n_ && coupled(ki);
            const VectorsEnd end = pair ? left<C>(w, ki) : left<S>(w, ki);
            if (!end.delivered) return end;
            ki += pair ? 2 : 1;
        }
        return {};
    }

    void normalise(Matrix<T>& w, const std::vector<T>& imaginary) {
        for (std::int32_t j = 1; j <= n_; ++j) {
            if (Problem::abs(imaginary[static_cast<std::size_t>(j - 1)]) < Problem::thr()) {
                const N ss = squares(w, j);
                if (ss > static_cast<N>(Problem::thr())) multiply(w, j, p_.oneByRoot(static_cast<S>(ss)));
                continue;
            }
            const S f1 = p_.oneByRoot(static_cast<S>(squares(w, j) + squares(w, j + 1)));
            multiply(w, j, f1);
            multiply(w, j + 1, f1);
            std::int32_t best = 1;
            S most = length2(w, 1, j);
            for (std::int32_t k = 2; k <= n_; ++k) {
                if (length2(w, k, j) > most) {
                    most = length2(w, k, j);
                    best = k;
                }
            }
            const S f = w(best, j), g = w(best, j + 1);
            const S r = std::sqrt(f * f + g * g);
            S cs = f / r, sn = g / r;
            if (Problem::abs(f) > Problem::abs(g) && cs < 0) {
                cs = -cs;
                sn = -sn;
            }
            for (std::int32_t i = 1; i <= n_; ++i) {
                const S re = w(i, j), im = w(i, j + 1);
                w(i, j) = static_cast<T>(cs * re + sn * im);
                w(i, j + 1) = static_cast<T>(cs * im - sn * re);
            }
            ++j;
        }
    }

private:
    T& t(std::int32_t i, std::int32_t j) { return p_.h(i, j); }
    bool coupled(std::int32_t i) { return Problem::abs(t(i + 1, i)) > Problem::thr(); }

    static N square(T x) { return static_cast<N>(x) * static_cast<N>(x); }
    N squares(Matrix<T>& w, std::int32_t j) {
        std::vector<N> terms;
        for (std::int32_t i = 1; i <= n_; ++i) terms.push_back(square(w(i, j)));
        return Problem::sum(terms);
    }
    void multiply(Matrix<T>& w, std::int32_t j, S factor) {
        for (std::int32_t i = 1; i <= n_; ++i) w(i, j) = static_cast<T>(S(w(i, j)) * factor);
    }
    static S length2(Matrix<T>& w, std::int32_t i, std::int32_t j) {
        const S re = w(i, j), im = w(i, j + 1);
        return re * re + im * im;
    }

    // --- Numbers, real or complex ---

    static S size(S x) { return Problem::abs(x); }
    static S size(C x) { return Problem::abs(x.re) + Problem::abs(x.im); }
    static S minus(S x, S y) { return x - y; }
    static C minus(C x, C y) { return {x.re - y.re, x.im - y.im}; }
    static S times(S x, S y) { return x * y; }
    static C times(S x, C y) { return {x * y.re, x * y.im}; }
    static C times(C x, C y) { return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re}; }
    static S over(S x, S y) { return x / y; }
    static C over(C x, C y) {
        if (Problem::abs(y.re) >= Problem::abs(y.im)) {
            const S q = y.im / y.re;
            const S d = y.re + y.im * q;
            return {(x.re + x.im * q) / d, (x.im - x.re * q) / d};
        }
        const S q = y.re / y.im;
        const S d = y.re * q + y.im;
        return {(x.re * q + x.im) / d, (x.im * q - x.re) / d};
    }
    static void make(S& x, S value) { x = value; }
    static void make(C& x, S value) { x = {value, 0}; }
    void read(std::int32_t i, S& x) { x = re_(i); }
    void read(std::int32_t i, C& x) { x = {S(re_(i)), S(im_(i))}; }
    void write(std::int32_t i, S x) { re_(i) = static_cast<T>(x); }
    void write(std::int32_t i, C x) {
        re_(i) = static_cast<T>(x.re);
        im_(i) = static_cast<T>(x.im);
    }
    template <class U>
    void scaleAll(std::int32_t from, std::int32_t to, S factor) {
        for (std::int32_t i = from; i <= to; ++i) {
            U x;
            read(i, x);
            write(i, times(factor, x));
        }
    }
    template <class U>
    static constexpr bool isPair = sizeof(U) > sizeof(S);

    // --- Solves ---

    static S guard(S bSize, S divisor) {
        return divisor < 1 && bSize > 1 && bSize > Problem::solverBig() * divisor ? S(1) / bSize : S(1);
    }

    // False where the block is near-singular.
    template <class U>
    bool solveBlock(std::int32_t i, bool pair, bool transposed, U lambda, S smin, U& x1, U& x2, S& scale) {
        const auto entry = [&](std::int32_t r, std::int32_t c) {
            U element;
            make(element, transposed ? t(i + c, i + r) : t(i + r, i + c));
            return r == c ? minus(element, lambda) : element;
        };
        U b1;
        read(i, b1);
        if (!pair) {
            U d = entry(0, 0);
            if (size(d) < smin) make(d, smin);
            scale = guard(size(b1), size(d));
            x1 = over(times(scale, b1), d);
            return true;
        }
        U b2;
        read(i + 1, b2);
        const U c[4] = {entry(0, 0), entry(1, 0), entry(0, 1), entry(1, 1)};
        static const int places[4][4] = {{0, 1, 2, 3}, {1, 0, 3, 2}, {2, 3, 0, 1}, {3, 2, 1, 0}};
        int p = 0;
        S most = 0;
        for (int e = 0; e < 4; ++e) {
            if (size(c[e]) > most) {
                most = size(c[e]);
                p = e;
            }
        }
        if (most < smin) return false;
        const U u11 = c[places[p][0]], l21 = over(c[places[p][1]], u11), u12 = c[places[p][2]];
        U u22 = minus(c[places[p][3]], times(u12, l21));
        if (size(u22) < smin) make(u22, smin);
        if (p == 1 || p == 3) std::swap(b1, b2);
        b2 = minus(b2, times(l21, b1));
        const S estimate = size(b1) * (size(u22) / size(u11));
        scale = guard(size(b2) > estimate ? size(b2) : estimate, size(u22));
        x2 = over(times(scale, b2), u22);
        x1 = over(minus(times(scale, b1), times(u12, x2)), u11);
        if (p == 2 || p == 3) std::swap(x1, x2);
        return true;
    }

    template <class U>
    VectorsEnd nearSingular() {
        return {false, isPair<U> ? status::nearSingularBlock : status::ok};
    }

    void lambdaOf(std::int32_t i, S& lambda) { lambda = t(i, i); }
    void lambdaOf(std::int32_t i, C& lambda) {
        lambda.re = t(i + 1, i + 1);
        lambda.im = std::sqrt(Problem::abs(t(i + 1, i))) * std::sqrt(Problem::abs(t(i, i + 1)));
    }
    template <class U>
    S sminOf(U lambda) {
        const S smin = Problem::ulp() * size(lambda);
        return smin > p_.smlnum() ? smin : p_.smlnum();
    }
    bool tooLarge(S norm, std::int32_t j, bool pair) {
        S bound = norms_(j);
        if (pair && norms_(j + 1) > norms_(j)) bound = norms_(j + 1);
        return norm > 1 && bound > p_.bignum() / norm;
    }

    // The block begins in row i, in both directions.
    template <class U>
    VectorsEnd right(Matrix<T>& w, std::int32_t i) {
        U lambda;
        lambdaOf(i, lambda);
        const S smin = sminOf(lambda);
        std::int32_t ki = i;
        if constexpr (isPair<U>) {
            ki = i + 1;
            const S up = t(i, ki), down = t(ki, i);
            re_(ki) = 0;
            im_(i) = 0;
            const bool upper = Problem::abs(up) >= Problem::abs(down);
            re_(i) = upper ? T(1) : static_cast<T>(-lambda.im / down);
            im_(ki) = upper ? static_cast<T>(lambda.im / up) : T(1);
            for (std::int32_t k = 1; k < i; ++k) {
                re_(k) = static_cast<T>(-S(re_(i)) * S(t(k, i)));
                im_(k) = static_cast<T>(-S(im_(ki)) * S(t(k, ki)));
            }
        } else {
            re_(ki) = 1;
            for (std::int32_t k = 1; k < i; ++k) re_(k) = -t(k, ki);
        }
        for (std::int32_t j = i - 1; j >= 1; --j) {
            const bool pair = j > 1 && coupled(j - 1);
            if (pair) --j;
            U x1, x2;
            make(x2, 0);
            S scale = 1;
            if (!solveBlock(j, pair, false, lambda, smin, x1, x2, scale)) return nearSingular<U>();
            const S norm = pair && size(x2) > size(x1) ? size(x2) : size(x1);
            if (tooLarge(norm, j, pair)) {
                const S less = S(1) / norm;
                x1 = times(less, x1);
                x2 = times(less, x2);
                scale = scale * less;
            }
            if (scale != 1) scaleAll<U>(1, ki, scale);
            write(j, x1);
            if (pair) write(j + 1, x2);
            for (std::int32_t k = 1; k < j; ++k) {
                U rest;
                read(k, rest);
                rest = minus(rest, times(S(t(k, j)), x1));
                if (pair) rest = minus(rest, times(S(t(k, j + 1)), x2));
                write(k, rest);
            }
        }
        return transformBack<U>(w, i, 1, i - 1, true);
    }

    template <class U>
    VectorsEnd left(Matrix<T>& w, std::int32_t i) {
        U lambda;
        lambdaOf(i, lambda);
        const S smin = sminOf(lambda);
        std::int32_t ki = i;
        if constexpr (isPair<U>) {
            // As for right vectors, with the block transposed.
            ki = i + 1;
            const S up = t(ki, i), down = t(i, ki);
            re_(ki) = 0;
            im_(i) = 0;
            const bool upper = Problem::abs(up) >= Problem::abs(down);
            re_(i) = upper ? T(1) : static_cast<T>(-lambda.im / down);
            im_(ki) = upper ? static_cast<T>(lambda.im / up) : T(1);
            for (std::int32_t k = ki + 1; k <= n_; ++k) {
                re_(k) = static_cast<T>(-S(re_(i)) * S(t(i, k)));
                im_(k) = static_cast<T>(-S(im_(ki)) * S(t(ki, k)));
            }
        } else {
            re_(ki) = 1;
            for (std::int32_t k = ki + 1; k <= n_; ++k) re_(k) = -t(ki, k);
        }
        S most = 1;
        for (std::int32_t j = ki + 1; j <= n_;) {
            const bool pair = j < n_ && coupled(j);
            if (tooLarge(most, j, pair)) {
                scaleAll<U>(i, n_, S(1) / most);
                most = 1;
            }
            for (std::int32_t c = j; c <= (pair ? j + 1 : j); ++c) {
                std::vector<S> reals, imaginaries;
                for (std::int32_t k = ki + 1; k < j; ++k) {
                    reals.push_back(S(t(k, c)) * S(re_(k)));
                    imaginaries.push_back(S(t(k, c)) * S(im_(k)));
                }
                re_(c) = static_cast<T>(S(re_(c)) - Problem::sum(reals));
                if (isPair<U>) im_(c) = static_cast<T>(S(im_(c)) - Problem::sum(imaginaries));
            }
            U x1, x2;
            make(x2, 0);
            S scale = 1;
            if (!solveBlock(j, pair, true, lambda, smin, x1, x2, scale)) return nearSingular<U>();
            if (scale != 1) scaleAll<U>(i, n_, scale);
            write(j, x1);
            if (size(x1) > most) most = size(x1);
            if (pair) {
                write(j + 1, x2);
                if (size(x2) > most) most = size(x2);
            }
            j += pair ? 2 : 1;
        }
        return transformBack<U>(w, i, ki + 1, n_, false);
    }

    template <class U>
    VectorsEnd transformBack(Matrix<T>& w, std::int32_t i, std::int32_t from, std::int32_t to, bool mayVanish) {
        std::vector<T> re, im;
        for (std::int32_t r = 1; r <= n_; ++r) {
            S first = S(re_(i)) * S(w(r, i)), second = 0;
            if constexpr (isPair<U>) second = S(im_(i + 1)) * S(w(r, i + 1));
            for (std::int32_t k = from; k <= to; ++k) {
                first += S(re_(k)) * S(w(r, k));
                if constexpr (isPair<U>) second += S(im_(k)) * S(w(r, k));
            }
            re.push_back(static_cast<T>(first));
            im.push_back(static_cast<T>(second));
        }
        S emax = 0;
        for (std::size_t r = 0; r < re.size(); ++r) {
            S one = Problem::abs(re[r]);
            if (isPair<U>) one += Problem::abs(im[r]);
            if (one > emax) emax = one;
        }
        for (std::int32_t r = 1; r <= n_; ++r) {
            w(r, i) = re[static_cast<std::size_t>(r - 1)];
            if (isPair<U>) w(r, i + 1) = im[static_cast<std::size_t>(r - 1)];
        }
        if (mayVanish && Problem::ulp() >= emax) return {false, status::noConvergence};
        const S factor = S(1) / emax;
        multiply(w, i, factor);
        if (isPair<U>) multiply(w, i + 1, factor);
        return {};
    }

    Problem& p_;
    std::int32_t n_;
    Vector<T> norms_, re_, im_;
};

}  // namespace kormtest
