#include "symmetric.h"

#include <cmath>
#include <functional>

#include "../../support/status.h"
#include "../linalg/square.h"
#include "../linalg/view.h"

namespace kormtest {
namespace {

template <class T>
T epsilon() {
    return sizeof(T) == 4 ? T(0x1p-23) : T(0x1p-52);
}

// What the table of members says of one kernel with vectors.
struct Member {
    bool doubleScalars;
    double productLimit;
    bool testAfterSort;
};

Member memberOf(const Form& form, bool plain) {
    if (form.array) return {true, 0x1p-23, false};
    if (form.type == Type::f64) return {true, 0x1p-52, true};
    return {false, 0x1p-23, form.layout == Layout::pointer || plain};
}

// --- Order 2 ------------------------------------------------------------------------------------

// Values and, where `v` isn't null, vectors. False: singular, nothing is written.
template <class T>
bool order2(const Square<T>& source, const std::function<void(std::int32_t, T)>& value,
            const std::function<void(std::int32_t, std::int32_t, T)>* v) {
    const T eps = epsilon<T>();
    const T a = source(0, 0), b = source(0, 1), d = source(1, 1);
    if (eps >= std::fabs(d * a - b * b)) return false;
    const T t = d + a;
    const T r = std::sqrt((a - d) * (a - d) + (b + b) * (b + b));
    int g1 = 1;
    if (t > eps) {
        const T x = T(0.5) * (t + r);
        value(0, x);
        value(1, (a * d - b * b) / x);
    } else if (t < -eps) {
        const T x = T(0.5) * (t - r);
        value(0, x);
        value(1, (a * d - b * b) / x);
        g1 = -1;
    } else {
        value(0, T(0.5) * r);
        value(1, T(-0.5) * r);
    }
    if (v == nullptr) return true;

    const T df = a - d, tb = b + b;
    T cc;
    int g2 = 1;
    if (df >= eps) {
        cc = df + r;
    } else if (df < -eps) {
        cc = df - r;
        g2 = -1;
    } else {
        cc = df + r;
    }
    T cs, sn;
    if (std::fabs(cc) > std::fabs(tb)) {
        const T ct = (T(0) - tb) / cc;
        const double sine = 1 / std::sqrt(static_cast<double>(ct * ct + 1));
        cs = static_cast<T>(ct * sine);
        sn = static_cast<T>(sine);
    } else if (!(std::fabs(tb) > eps)) {
        cs = 1;
        sn = 0;
    } else {
        const T tn = (T(0) - cc) / tb;
        const double cosine = 1 / std::sqrt(static_cast<double>(tn * tn + 1));
        sn = static_cast<T>(tn * cosine);
        cs = static_cast<T>(cosine);
    }
    if (g1 == g2) {
        const T old = cs;
        cs = 0 - sn;
        sn = old;
    }
    (*v)(0, 0, cs);
    (*v)(1, 0, sn);
    (*v)(0, 1, 0 - sn);
    (*v)(1, 1, cs);
    return true;
}

// --- Order 3 and up -----------------------------------------------------------------------------

// C is the type of the scalars; what is stored is T.
template <class T, class C>
class Iteration {
public:
    Iteration(const Square<T>& source, std::vector<T>& values, Square<T>* vectors)
        : n_(source.order()), s_(source), values_(values), v_(vectors) {}

    void reduce();
    bool upward() const { return std::fabs(s_(n_ - 1, n_ - 1)) > std::fabs(s_(0, 0)); }
    // False: no convergence. `prod` is that of the values alone.
    bool downwardSweeps(T& prod);
    bool upwardSweeps();
    T d(std::int32_t i) const { return s_(i, i); }
    void sort();

private:
    static constexpr std::int32_t sweepLimit = 30;

    C wide(std::int32_t i, std::int32_t j) const { return static_cast<C>(s_(i, j)); }
    T& diagonal(std::int32_t i) { return s_(i, i); }
    T& below(std::int32_t i) { return s_(i + 1, i); }
    T& value(std::int32_t i) { return values_[static_cast<std::size_t>(i)]; }
    C u(std::int32_t i) { return static_cast<C>(value(i)); }

    // Even steps, odd steps, and the two added.
    template <class Term>
    C sum(std::int32_t from, const Term& term) const {
        C part[2] = {0, 0};
        for (std::int32_t i = from; i < n_; ++i) part[(i - from) % 2] += term(i);
        return part[0] + part[1];
    }
    bool offDiagonalIsSmall(T e) const {
        if (v_ == nullptr && sizeof(T) == 4) return 0x1p-23 >= std::fabs(static_cast<double>(e) * 0.5);
        return epsilon<T>() >= std::fabs(e * T(0.5));
    }

    std::int32_t n_;
    Square<T> s_;
    std::vector<T>& values_;
    Square<T>* v_;
};

template <class T, class C>
void Iteration<T, C>::reduce() {
    const C eps = epsilon<T>();
    for (std::int32_t k = 0; k <= n_ - 3; ++k) {
        const C ss = sum(k + 1, [&](std::int32_t i) { return wide(i, k) * wide(i, k); });
        const C nrm = std::sqrt(ss);
        for (std::int32_t i = k + 2; i < n_; ++i) value(i) = s_(i, k);
        const C alpha = wide(k + 1, k);
        if (v_ != nullptr && eps >= std::fabs(0 - (alpha - nrm))) continue;
        C hh;
        if (alpha > eps) {
            value(k + 1) = static_cast<T>(alpha + nrm);
            hh = (ss + alpha * nrm) * 2;
        } else if (eps >= std::fabs(alpha)) {
            value(k + 1) = static_cast<T>(nrm);
            hh = ss + ss;
        } else {
            value(k + 1) = static_cast<T>(alpha - nrm);
            hh = (ss - alpha * nrm) * 2;
        }
        if (eps >= hh) continue;
        const C beta = 2 / hh;
        for (std::int32_t j = k; j < n_; ++j) {
            const C x = beta * sum(k + 1, [&](std::int32_t i) { return wide(i, j) * u(i); });
            for (std::int32_t i = k + 1; i < n_; ++i) s_(i, j) = static_cast<T>(wide(i, j) - u(i) * x);
        }
        for (std::int32_t r = k; r < n_; ++r) {
            const C x = beta * sum(k + 1, [&](std::int32_t j) { return wide(r, j) * u(j); });
            for (std::int32_t j = k + 1; j < n_; ++j) s_(r, j) = static_cast<T>(wide(r, j) - u(j) * x);
        }
        if (v_ == nullptr) continue;
        Square<T>& v = *v_;
        if (k == 0) {
            for (std::int32_t i = 1; i < n_; ++i) {
                v(i, i) = static_cast<T>(1 - (beta * u(i)) * u(i));
                for (std::int32_t j = i + 1; j < n_; ++j)
                    v(i, j) = v(j, i) = static_cast<T>(((0 - beta) * u(i)) * u(j));
            }
        } else {
            for (std::int32_t r = 1; r < n_; ++r) {
                const C x = beta * sum(k + 1, [&](std::int32_t j) { return u(j) * static_cast<C>(v(r, j)); });
                for (std::int32_t j = k + 1; j < n_; ++j) v(r, j) = static_cast<T>(static_cast<C>(v(r, j)) - u(j) * x);
            }
        }
    }
}

template <class T, class C>
bool Iteration<T, C>::downwardSweeps(T& prod) {
    const C eps = epsilon<T>();
    prod = 1;
    for (std::int32_t l = n_ - 1; l >= 1; --l) {
        for (std::int32_t sweeps = 0;; ++sweeps) {
            std::int32_t m = l;
            while (m > 0) {
                if (offDiagonalIsSmall(below(m - 1))) {
                    if (v_ == nullptr) {
                        value(m) = d(m);
                        prod *= d(m);
                    }
                    break;
                }
                --m;
            }
            if (m == l) break;
            if (sweeps == sweepLimit) return false;
            const C q = (C(d(l - 1)) - C(d(l))) / (2 * C(below(l - 1)));
            const C root = static_cast<C>(std::sqrt(static_cast<double>(q * q + 1)));
            C g = (C(d(m)) - C(d(l))) + C(below(l - 1)) / (q > eps ? q + root : q - root);
            C p = 0, s = 1, c = 1, x = 0;
            bool left = false;
            for (std::int32_t i = m; i < l; ++i) {
                const C f = s * C(below(i)), b = c * C(below(i));
                const C r = std::sqrt(f * f + g * g);
                if (i != m) below(i - 1) = static_cast<T>(r);
                if (eps >= std::fabs(r)) {
                    diagonal(i) = static_cast<T>(C(d(i)) - p);
                    below(m) = 0;
                    left = true;
                    break;
                }
                s = f / r;
                c = g / r;
                if (v_ != nullptr) {
                    for (std::int32_t row = 0; row < n_; ++row) {
                        const C t = (*v_)(row, i), w = (*v_)(row, i + 1);
                        (*v_)(row, i) = static_cast<T>(c * t + w * s);
                        (*v_)(row, i + 1) = static_cast<T>(w * c - t * s);
                    }
                }
                g = C(d(i)) - p;
                x = (C(d(i + 1)) - g) * s + (c + c) * b;
                p = x * s;
                diagonal(i) = static_cast<T>(g + p);
                g = x * c - b;
            }
            if (!left && std::fabs(x) > eps) {
                diagonal(l) = static_cast<T>(C(d(l)) - p);
                below(l - 1) = static_cast<T>(g);
            }
        }
    }
    if (v_ == nullptr) {
        value(0) = d(0);
        prod *= d(0);
    }
    return true;
}

template <class T, class C>
bool Iteration<T, C>::upwardSweeps() {
    const C eps = epsilon<T>();
    for (std::int32_t l = 0; l <= n_ - 1; ++l) {
        for (std::int32_t sweeps = 0;; ++sweeps) {
            std::int32_t m = l;
            while (m < n_ - 1 && !offDiagonalIsSmall(below(m))) ++m;
            if (m == l) break;
            if (sweeps == sweepLimit) return false;
            const C q = (C(d(l + 1)) - C(d(l))) / (2 * C(below(l)));
            C v = static_cast<C>(std::sqrt(static_cast<double>(q * q + 1)));
            C g = (C(d(m)) - C(d(l))) + C(below(l)) / (q > eps ? q + v : q - v);
            C p = 0, s = 1, c = 1;
            std::int32_t i = m - 1;
            for (; i >= l; --i) {
                const C f = s * C(below(i)), b = c * C(below(i));
                const C r = std::sqrt(f * f + g * g);
                if (i != m - 1) below(i + 1) = static_cast<T>(r);
                if (eps >= std::fabs(r)) {
                    diagonal(i + 1) = static_cast<T>(C(d(i + 1)) - p);
                    s_(m, m - 1) = 0;
                    break;
                }
                s = f / r;
                c = g / r;
                if (v_ != nullptr) {
                    for (std::int32_t row = 0; row < n_; ++row) {
                        const C t = (*v_)(row, i), w = (*v_)(row, i + 1);
                        (*v_)(row, i) = static_cast<T>(c * t - w * s);
                        (*v_)(row, i + 1) = static_cast<T>(t * s + w * c);
                    }
                }
                g = C(d(i + 1)) - p;
                v = (C(d(i)) - g) * s + (c + c) * b;
                p = v * s;
                diagonal(i + 1) = static_cast<T>(g + p);
                g = v * c - b;
            }
            if (std::fabs(v) > eps || i == -1) {
                diagonal(l) = static_cast<T>(C(d(l)) - p);
                below(l) = static_cast<T>(g);
            }
        }
    }
    return true;
}

template <class T, class C>
void Iteration<T, C>::sort() {
    for (std::int32_t i = 0; i < n_ - 1; ++i) {
        std::int32_t largest = i;
        for (std::int32_t j = i + 1; j < n_; ++j)
            if (value(j) > value(largest)) largest = j;
        if (largest == i) continue;
        std::swap(value(i), value(largest));
        if (v_ == nullptr) continue;
        for (std::int32_t r = 0; r < n_; ++r) std::swap((*v_)(r, i), (*v_)(r, largest));
    }
}

// --- Forms ----------------------------------------------------------------------------------------

template <class T>
std::int32_t valuesOf(const Square<T>& source, std::vector<T>& values) {
    const std::int32_t n = source.order();
    Iteration<T, T> iteration(source, values, nullptr);
    iteration.reduce();
    T prod = 1;
    if (iteration.upward()) {
        if (!iteration.upwardSweeps()) return status::noConvergence;
        for (std::int32_t i = 0; i < n; ++i) {
            values[static_cast<std::size_t>(i)] = iteration.d(i);
            prod *= iteration.d(i);
        }
    } else if (!iteration.downwardSweeps(prod)) {
        return status::noConvergence;
    }
    if (epsilon<T>() >= std::fabs(prod)) return status::singular;
    iteration.sort();
    return status::ok;
}

template <class T, class C>
std::int32_t vectorsOf(const Square<T>& source, std::vector<T>& values, Square<T>& v, const Member& member) {
    const std::int32_t n = source.order();
    for (std::int32_t i = 0; i < n; ++i)
        for (std::int32_t j = 0; j < n; ++j) v(i, j) = i == j ? T(1) : T(0);
    Iteration<T, C> iteration(source, values, &v);
    iteration.reduce();
    T unused;
    if (!(iteration.upward() ? iteration.upwardSweeps() : iteration.downwardSweeps(unused)))
        return status::noConvergence;
    C prod = 1;
    for (std::int32_t i = 0; i < n; ++i) {
        values[static_cast<std::size_t>(i)] = iteration.d(i);
        prod *= C(iteration.d(i));
    }
    const bool singular = member.productLimit >= static_cast<double>(std::fabs(prod));
    if (singular && !member.testAfterSort) return status::singular;
    iteration.sort();
    return singular ? status::singular : status::ok;
}

template <class T>
std::int32_t valuesForm(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                        std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src"), dst(form, operands, sizes, "dstValues");
    for (std::int32_t k = first; k < first + runCount; ++k) {
        const Square<T> source = src.square(k);
        if (sizes.order == 1) {
            dst.write(k, 0, 0, source(0, 0));
            continue;
        }
        std::int32_t result = status::ok;
        if (sizes.order == 2) {
            const bool done = order2<T>(
                source, [&](std::int32_t i, T x) { dst.write(k, 0, i, x); }, nullptr);
            result = done ? status::ok : status::singular;
        } else {
            std::vector<T> values = dst.vector(k);
            result = valuesOf(source, values);
            dst.writeVector(k, values);
        }
        if (result != status::ok) return result;
    }
    return status::ok;
}

template <class T>
std::int32_t vectorsForm(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                         std::int32_t first, std::int32_t runCount) {
    const View<T> src(form, operands, sizes, "src"), dst(form, operands, sizes, "dstValues");
    const View<T> vectors(form, operands, sizes, "dstVectors");
    const Member member = memberOf(form, plainStrides(form, operands));
    for (std::int32_t k = first; k < first + runCount; ++k) {
        const Square<T> source = src.square(k);
        if (sizes.order == 1) {
            vectors.write(k, 0, 0, T(1));
            dst.write(k, 0, 0, source(0, 0));
            continue;
        }
        std::int32_t result = status::ok;
        if (sizes.order == 2) {
            const std::function<void(std::int32_t, std::int32_t, T)> put = [&](std::int32_t i, std::int32_t j, T x) {
                vectors.write(k, i, j, x);
            };
            const bool done = order2<T>(
                source, [&](std::int32_t i, T x) { dst.write(k, 0, i, x); }, &put);
            result = done ? status::ok : status::singular;
        } else {
            std::vector<T> values = dst.vector(k);
            Square<T> v(sizes.order);
            result = member.doubleScalars ? vectorsOf<T, double>(source, values, v, member)
                                          : vectorsOf<T, T>(source, values, v, member);
            dst.writeVector(k, values);
            vectors.writeSquare(k, v);
        }
        if (result != status::ok) return result;
    }
    return status::ok;
}

}  // namespace

std::int32_t referenceEigenValuesSym(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                     std::int32_t first, std::int32_t runCount) {
    return form.type == Type::f32 ? valuesForm<float>(form, operands, sizes, first, runCount)
                                  : valuesForm<double>(form, operands, sizes, first, runCount);
}

std::int32_t referenceEigenValuesVectorsSym(const Form& form, const std::vector<OperandValues>& operands,
                                            const Sizes& sizes, std::int32_t first, std::int32_t runCount) {
    return form.type == Type::f32 ? vectorsForm<float>(form, operands, sizes, first, runCount)
                                  : vectorsForm<double>(form, operands, sizes, first, runCount);
}

}  // namespace kormtest
