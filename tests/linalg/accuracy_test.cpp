// Accuracy beyond bits: residuals against wider formats on matrices of many kinds, for every kernel.
//
// Ratios are those usual for tests of linear algebra: the residual over what rounding once for each element would give,
// so that a sound method stays below a few and 30 means that something is wrong.
#include "../reference/linalg/precise.h"
#include "linalg_test.h"

namespace kormtest {
namespace {

constexpr long double soundRatio = 30;

struct Condition {
    const char* name;
    int kappa;  // binary digits between the largest and the smallest diagonal element
    bool graded;
};

template <class T>
Square<T> conditioned(std::int32_t n, const Condition& condition, Random& random) {
    if (condition.graded) {
        Square<T> a = ordinary<T>(n, random);
        for (std::int32_t i = 0; i < n; ++i)
            for (std::int32_t j = 0; j < n; ++j) a(i, j) = std::ldexp(a(i, j), -condition.kappa * (i + j) / (2 * n));
        return a;
    }
    // L D U with unit triangles, D falling off.
    Square<long double> l(n), u(n);
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = 0; j < n; ++j) {
            l(i, j) = i == j ? 1 : i > j ? static_cast<long double>(random.between(-99, 99)) / 100 : 0;
            u(i, j) = i == j ? 1 : i < j ? static_cast<long double>(random.between(-99, 99)) / 100 : 0;
        }
    }
    Square<T> a(n);
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = 0; j < n; ++j) {
            long double sum = 0;
            for (std::int32_t k = 0; k < n; ++k)
                sum += l(i, k) * std::ldexp(u(k, j), n == 1 ? 0 : -condition.kappa * k / (n - 1));
            a(i, j) = static_cast<T>(sum);
        }
    }
    return a;
}

std::vector<Condition> conditions(bool single) {
    return {{"well conditioned", 2, false},
            {"ill conditioned", single ? 8 : 24, false},
            {"graded", single ? 10 : 30, true}};
}

long double norm(const auto& a) {
    long double largest = 0;
    for (std::int32_t i = 0; i < a.order(); ++i) {
        long double sum = 0;
        for (std::int32_t j = 0; j < a.order(); ++j) sum += absolute(static_cast<long double>(a(i, j)));
        largest = std::max(largest, sum);
    }
    return largest;
}

class Accuracy : public LinalgForm {
protected:
    static constexpr std::int32_t orders[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 13, 16};
};

const Form& sameKind(const Form& form, const char* operation, const char* tokens) {
    std::string name = std::string("korm") + operation + "_" + tokens + (form.type == Type::f32 ? "_32f" : "_64f");
    if (form.layout == Layout::list) name += "_L";
    if (form.layout == Layout::pointer) name += "_P";
    return formNamed(name);
}

// Decomposition and solve together: |A x - b| over |A| |x| n u.
TEST_P(Accuracy, OfSolving) {
    if (form().operationWord != "LUBackSubst") return;
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const std::string decomposed = form().tokens == "mava" ? "ma" : "m";
        Form lookup = form();
        if (decomposed == "m" && form().layout == Layout::list) lookup.layout = Layout::standard;
        const Form& decomposition = sameKind(lookup, "LUDecomp", decomposed.c_str());
        long double worst = 0;
        for (const std::int32_t n : orders) {
            for (const Condition& condition : conditions(sizeof(T) == 4)) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    for (int repeat = 0; repeat < 6; ++repeat) {
                        const Square<T> a = conditioned<T>(n, condition, random);
                        scriptThreadNumbers({1});
                        DenseCall factors(decomposition, squareSizes(n));
                        setMatrix(factors, "src", 0, a);
                        ASSERT_EQ(factors.call(), status::ok) << condition.name << ", order " << n;
                        const std::int32_t vectors = count(2);
                        DenseCall call(form(), squareSizes(n, vectors), spread);
                        std::vector<T> b;
                        for (std::int32_t j = 0; j < n; ++j) b.push_back(ordinary<T>(1, random)(0, 0));
                        for (std::int32_t k = 0; k < (decomposed == "ma" ? vectors : 1); ++k) {
                            setMatrix(call, "src1", k, getMatrix<T>(factors, "dst", 0));
                            for (std::int32_t j = 0; j < n; ++j)
                                call.set("pivots", k, 0, j, factors.get<std::int32_t>("pivots", 0, 0, j));
                        }
                        for (std::int32_t v = 0; v < vectors; ++v)
                            for (std::int32_t j = 0; j < n; ++j)
                                call.set("src2", v, 0, j, b[static_cast<std::size_t>(j)]);
                        ASSERT_EQ(call.call(), status::ok);
                        for (std::int32_t v = 0; v < vectors; ++v) {
                            long double residual = 0, size = 0;
                            for (std::int32_t i = 0; i < n; ++i) {
                                long double sum = -static_cast<long double>(b[static_cast<std::size_t>(i)]);
                                for (std::int32_t j = 0; j < n; ++j)
                                    sum += static_cast<long double>(a(i, j)) *
                                           static_cast<long double>(call.get<T>("dst", v, 0, j));
                                residual = std::max(residual, absolute(sum));
                                size = std::max(size, absolute(static_cast<long double>(call.get<T>("dst", v, 0, i))));
                            }
                            const long double ratio =
                                residual / (norm(a) * size * static_cast<long double>(n) * 2 * unit<T>());
                            worst = std::max(worst, ratio);
                            ASSERT_LT(ratio, soundRatio) << condition.name << ", order " << n;
                        }
                    }
                }
            }
        }
        RecordProperty("worstRatio", std::to_string(static_cast<double>(worst)));
    });
}

// Adjugates have a bound of their own (precise.h), whatever the cancellation. A block elimination is held to a multiple of
// it, and the cofactor core, whose minors are eliminated with pivots, to |A X - I| over |A| |X| n u times the condition.
TEST_P(Accuracy, OfInverting) {
    if (form().operationWord != "Invert") return;
    Random random(2);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        int judged = 0;
        long double worstBlock = 0;
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 10, 16}) {
            for (const Condition& condition : conditions(sizeof(T) == 4)) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    for (int repeat = 0; repeat < (n > 8 ? 1 : 8); ++repeat) {
                        const Square<T> a = conditioned<T>(n, condition, random);
                        scriptThreadNumbers({1});
                        DenseCall call(form(), squareSizes(n, count(3)), spread);
                        for (std::int32_t k = 0; k < count(3); ++k) setMatrix(call, "src", k, a);
                        ASSERT_EQ(call.call(), status::ok) << condition.name << ", order " << n;
                        const Square<T> x = getMatrix<T>(call, "dst", count(3) - 1);
                        const InvertPath path = invertPath(form(), spread == 1, n);
                        if (path == InvertPath::adjugate || path == InvertPath::block) {
                            const BoundedInverse<T> exact =
                                boundedInverse(a, invertApproximates(form(), spread == 1, n));
                            if (exact.detBound > absolute(exact.det) / 64) continue;
                            ++judged;
                            for (std::int32_t i = 0; i < n; ++i) {
                                for (std::int32_t j = 0; j < n; ++j) {
                                    const long double off =
                                        absolute(static_cast<long double>(x(i, j)) - exact.matrix(i, j));
                                    const long double ratio = off / exact.bound(i, j);
                                    // A pivot is the largest of its row, so each of the n - 4 steps doubles elements
                                    // at most, and with them 16-fold the minors of the 4 by 4 complement.
                                    ASSERT_LE(ratio, path == InvertPath::block ? std::ldexp(1, 4 * (n - 4)) : 1)
                                        << condition.name << ", order " << n << ", element " << i << ", " << j;
                                    if (path == InvertPath::block) worstBlock = std::max(worstBlock, ratio);
                                }
                            }
                            continue;
                        }
                        Square<long double> residual(n);
                        for (std::int32_t i = 0; i < n; ++i) {
                            for (std::int32_t j = 0; j < n; ++j) {
                                residual(i, j) = i == j ? -1 : 0;
                                for (std::int32_t k = 0; k < n; ++k)
                                    residual(i, j) +=
                                        static_cast<long double>(a(i, k)) * static_cast<long double>(x(k, j));
                            }
                        }
                        const long double kappa = norm(a) * norm(x);
                        const long double allowed = kappa * kappa * static_cast<long double>(n) * 2 * unit<T>();
                        ASSERT_LT(norm(residual), soundRatio * allowed) << condition.name << ", order " << n;
                    }
                }
            }
        }
        EXPECT_GT(judged, 30);
        RecordProperty("worstBlockRatio", std::to_string(static_cast<double>(worstBlock)));
    });
}

// What a change of each element by n units of the largest one's last place does to the determinant: elimination
// gives the exact one of a matrix as close as that.
template <class T>
long double eliminationBound(const Square<T>& a) {
    const std::int32_t n = a.order();
    long double largest = 0, cofactors = 0;
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = 0; j < n; ++j) {
            largest = std::max(largest, absolute(static_cast<long double>(a(i, j))));
            cofactors += absolute(Expansion<long double, T>(a.minor(i, j), false).whole());
        }
    }
    return 4 * static_cast<long double>(n) * unit<T>() * largest * cofactors;
}

TEST_P(Accuracy, OfDeterminants) {
    if (form().operationWord != "Det") return;
    if (form().type == Type::f64 && sizeof(Quad) < 16) GTEST_SKIP() << "needs a format of 128 bits to compare with";
    Random random(3);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9}) {
            for (const Condition& condition : conditions(sizeof(T) == 4)) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    for (int repeat = 0; repeat < (n < 7 ? 20 : 3); ++repeat) {
                        const Square<T> a = conditioned<T>(n, condition, random);
                        scriptThreadNumbers({1});
                        DenseCall call(form(), squareSizes(n, count(3)), spread);
                        for (std::int32_t k = 0; k < count(3); ++k) setMatrix(call, "src", k, a);
                        ASSERT_EQ(call.call(), status::ok);
                        const auto exact = static_cast<long double>(preciseDeterminant(a));
                        const bool closed = n >= 3 && n <= 6;
                        const long double allowed = closed ? determinantBound(a) : eliminationBound(a);
                        for (std::int32_t k = 0; k < count(3); ++k) {
                            const long double off =
                                absolute(static_cast<long double>(call.get<T>("dst", k, 0, 0)) - exact);
                            ASSERT_LE(off, allowed + unit<T>() * absolute(exact))
                                << condition.name << ", order " << n << ", object " << k;
                        }
                    }
                }
            }
        }
    });
}

std::vector<std::size_t> allLinalg() {
    std::vector<std::size_t> result;
    for (const char* const operation : {"LUBackSubst", "Invert", "Det"})
        for (const std::size_t form : formsOf(operation)) result.push_back(form);
    return result;
}

INSTANTIATE_TEST_SUITE_P(Forms, Accuracy, testing::ValuesIn(allLinalg()), formName);

}  // namespace
}  // namespace kormtest
