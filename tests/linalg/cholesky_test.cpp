// Cholesky decomposition and its solves: what they mean, limits of pivots, order of sums, what a failure leaves.
#include "../reference/linalg/cholesky.h"

#include <korm.h>

#include "linalg_test.h"

namespace kormtest {
namespace {

// Positive definite; above the diagonal stands what must not be read.
template <class T>
Square<T> definite(std::int32_t n, Random& random) {
    const Square<T> g = ordinary<T>(n, random);
    Square<T> a(n);
    for (std::int32_t i = 0; i < n; ++i) {
        for (std::int32_t j = 0; j < n; ++j) {
            a(i, j) = j > i ? std::numeric_limits<T>::quiet_NaN() : T(i == j);
            for (std::int32_t k = 0; k < n && j <= i; ++k) a(i, j) += g(i, k) * g(j, k);
        }
    }
    return a;
}

// Rows before `rows` with their diagonal, and of row `rows` what is left of it.
template <class T>
void expectRows(const DenseCall& call, std::int32_t k, const Square<T>& expected, std::int32_t rows,
                const Square<T>& before) {
    for (std::int32_t i = 0; i < expected.order(); ++i) {
        for (std::int32_t j = 0; j < expected.order(); ++j) {
            const bool written = i < rows ? j <= i : i == rows && j < i;
            ASSERT_TRUE(sameBits(call.get<T>("dst", k, i, j), written ? expected(i, j) : before(i, j)))
                << "order " << expected.order() << ", object " << k << ", element " << i << ", " << j << ": "
                << call.get<T>("dst", k, i, j) << " instead of " << (written ? expected(i, j) : before(i, j));
        }
    }
}

class CholeskyDecomp : public LinalgForm {
protected:
    CholeskyRules rules(std::int32_t n, std::int32_t spread) const {
        CholeskyRules result;
        result.threshold = choleskyThreshold(form(), spread == 1, n);
        result.refinesInFours = choleskyGoesInFours(form(), spread == 1, n);
        return result;
    }
};

constexpr std::int32_t someOrders[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 16, 17, 24, 31, 32, 33, 40};

// A = L L^T within what rounding of n products and a root allows, and every bit as the definition has it.
TEST_P(CholeskyDecomp, FactorsTheLowerTriangle) {
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : someOrders) {
            for (const std::int32_t spread : spreadsOf(form())) {
                const std::int32_t objects = count(random.pick({2, 5, 9, 19}));
                DenseCall call(form(), squareSizes(n, objects), spread);
                std::vector<Square<T>> sources, before;
                for (std::int32_t k = 0; k < objects; ++k) {
                    sources.push_back(definite<T>(n, random));
                    setMatrix(call, "src", k, sources.back());
                    before.push_back(getMatrix<T>(call, "dst", k));
                }
                ASSERT_EQ(call.call(), status::ok) << n;
                for (std::int32_t k = 0; k < objects; ++k) {
                    const Square<T>& a = sources[static_cast<std::size_t>(k)];
                    Square<T> expected = a;
                    ASSERT_EQ(choleskyRows(expected, rules(n, spread), n), n);
                    ASSERT_NO_FATAL_FAILURE(expectRows(call, k, expected, n, before[static_cast<std::size_t>(k)]));
                    const Square<T> factor = getMatrix<T>(call, "dst", k);
                    const auto lower = [&](std::int32_t i, std::int32_t j) {
                        const auto element = static_cast<long double>(factor(i, j));
                        return i == j ? 1 / element : element;
                    };
                    for (std::int32_t i = 0; i < n; ++i) {
                        for (std::int32_t j = 0; j <= i; ++j) {
                            long double sum = 0, size = 0;
                            for (std::int32_t m = 0; m <= j; ++m) {
                                sum += lower(i, m) * lower(j, m);
                                size += std::fabs(lower(i, m) * lower(j, m));
                            }
                            // The approximate root is off by a few units.
                            const long double unit = static_cast<long double>(std::numeric_limits<T>::epsilon());
                            ASSERT_LE(std::fabs(sum - static_cast<long double>(a(i, j))), (n + 8) * unit * size);
                        }
                    }
                }
            }
        }
    });
}

// The limits, typed in once more.
template <class T>
T limitOf(const Form& form, std::int32_t n, std::int32_t spread) {
    if (form.layout == Layout::pointer && n == 3) return static_cast<T>(1.1920928955078125e-7);
    if (form.name == "kormCholeskyDecomp_ma_64f" && spread == 2 && (n <= 2 || n >= 6))
        return static_cast<T>(2.220446049250313e-16);
    return 0;
}

TEST_P(CholeskyDecomp, FailsAtTheLimitOfItsPath) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 1; n <= 9; ++n) {
            for (std::int32_t step = 0; step < n; ++step) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    const T limit = limitOf<T>(form(), n, spread);
                    for (const auto& [value, passes] : {std::pair{limit, false},
                                                        {std::nextafter(limit, T(-1)), false},
                                                        {-T(1), false},
                                                        {-T(0), false},
                                                        {limit == 0 ? T(1e-17) : std::nextafter(limit, T(1)), true},
                                                        {std::numeric_limits<T>::quiet_NaN(), true},
                                                        {limit == 0 ? T(1e-30) : 2 * limit, true}}) {
                        // Alone in its run, the first of a group, behind one.
                        for (const std::int32_t objects : {1, 4, 6}) {
                            if (!form().array && objects > 1) continue;
                            DenseCall call(form(), squareSizes(n, objects), spread);
                            for (std::int32_t k = 0; k < objects; ++k) setMatrix(call, "src", k, identity<T>(n));
                            call.set<T>("src", objects - 1, step, step, value);
                            ASSERT_EQ(call.call(), passes ? status::ok : status::notPositiveDefinite)
                                << "order " << n << ", step " << step << ", pivot " << value << ", spread " << spread;
                            if (value != value) {
                                const T found = call.get<T>("dst", objects - 1, step, step);
                                ASSERT_TRUE(found != found);
                            }
                        }
                    }
                }
            }
        }
    });
}

// Objects before the failing one are complete, that one up to its pivot, later ones untouched; the four of a group are
// left alike.
TEST_P(CholeskyDecomp, LeavesWhatWasDoneBeforeTheFailingPivot) {
    Random random(3);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 9, 20}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                for (std::int32_t failing = 0; failing < count(11); ++failing) {
                    const std::int32_t step = random.between(0, n - 1), objects = count(11);
                    DenseCall call(form(), squareSizes(n, objects), spread);
                    std::vector<Square<T>> expected, before;
                    for (std::int32_t k = 0; k < objects; ++k) {
                        Square<T> a = definite<T>(n, random);
                        if (k == failing) a(step, step) = -1;
                        setMatrix(call, "src", k, a);
                        choleskyRows(a, rules(n, spread), n);
                        expected.push_back(a);
                        before.push_back(getMatrix<T>(call, "dst", k));
                    }
                    ASSERT_EQ(call.call(), status::notPositiveDefinite);
                    const bool together = rules(n, spread).refinesInFours && failing < objects / 4 * 4;
                    const std::int32_t first = together ? failing / 4 * 4 : failing;
                    const std::int32_t end = together ? first + 4 : failing + 1;
                    for (std::int32_t k = 0; k < objects; ++k) {
                        const auto at = static_cast<std::size_t>(k);
                        const std::int32_t rows = k < first ? n : k < end ? step : -1;
                        ASSERT_NO_FATAL_FAILURE(expectRows(call, k, expected[at], rows, before[at]));
                    }
                }
            }
        }
    });
}

// The two orders of rounding in the Newton step differ in the last bit of some roots.
TEST_P(CholeskyDecomp, RoundsTheReciprocalRootInTheOrderOfItsPath) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        int differing = 0;
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                for (std::int32_t number = 3; number < 200; number += 7) {
                    const std::int32_t objects = count(5);
                    DenseCall call(form(), squareSizes(n, objects), spread);
                    for (std::int32_t k = 0; k < objects; ++k)
                        setMatrix(call, "src", k, identity<T>(n, static_cast<T>(number)));
                    ASSERT_EQ(call.call(), status::ok);
                    const auto s = static_cast<T>(number);
                    T expected;
                    if constexpr (sizeof(T) == 4) {
                        const float r = approximateReciprocalRoot(s);
                        const float first = (r * -0.5F) * ((s * r) * r - 3), last = (r * (3 - (r * r) * s)) * 0.5F;
                        differing += first != last;
                        const bool inFours =
                            form().name == "kormCholeskyDecomp_ma_32f" && spread == 1 && n > 2 && n < 7;
                        expected = inFours ? last : first;
                    } else {
                        expected = 1 / std::sqrt(s);
                    }
                    for (std::int32_t k = 0; k < objects; ++k)
                        for (std::int32_t i = 0; i < n; ++i)
                            ASSERT_TRUE(sameBits(call.get<T>("dst", k, i, i), expected)) << n << ": " << number;
                }
            }
        }
        EXPECT_EQ(differing > 3, sizeof(T) == 4);
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, CholeskyDecomp, testing::ValuesIn(formsOf("CholeskyDecomp")), formName);

// --- Solves ---------------------------------------------------------------------------------------

class CholeskyBackSubst : public LinalgForm {
protected:
    template <class T>
    void setFactors(DenseCall& call, const std::vector<Square<T>>& factors) {
        for (std::int32_t k = 0; k < (form().tokens == "mava" ? call.sizes().count : 1); ++k)
            setMatrix(call, "src1", k, factors[static_cast<std::size_t>(k)]);
    }
};

// A factor whose products are exact: ones on the diagonal and a few integers below it.
TEST_P(CholeskyBackSubst, SolvesWithBothTriangles) {
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : someOrders) {
            for (const std::int32_t spread : spreadsOf(form())) {
                Square<T> factor = identity<T>(n);
                for (std::int32_t i = 0; i < n; ++i)
                    for (std::int32_t j = 0; j < n; ++j)
                        if (j > i) factor(i, j) = std::numeric_limits<T>::quiet_NaN();
                        else if (j + 1 == i || j + 3 == i) factor(i, j) = static_cast<T>(random.between(-1, 1));
                DenseCall call(form(), squareSizes(n, count(3)), spread);
                setFactors(call, std::vector<Square<T>>(3, factor));
                std::vector<T> x;
                for (std::int32_t j = 0; j < n; ++j) x.push_back(static_cast<T>(random.between(-9, 9)));
                for (std::int32_t i = 0; i < n; ++i) {
                    T b = 0;
                    for (std::int32_t m = 0; m <= i; ++m)
                        for (std::int32_t j = m; j < n; ++j)
                            b += factor(i, m) * factor(j, m) * x[static_cast<std::size_t>(j)];
                    for (std::int32_t v = 0; v < count(3); ++v) call.set<T>("src2", v, 0, i, b);
                }
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t v = 0; v < count(3); ++v)
                    for (std::int32_t j = 0; j < n; ++j)
                        ASSERT_EQ(call.get<T>("dst", v, 0, j), x[static_cast<std::size_t>(j)]) << "order " << n;
            }
        }
    });
}

// Every bit, wherever the solution lies and however many vectors there are; in the place of the right-hand side, too.
TEST_P(CholeskyBackSubst, AddsUpInTheOrderThatTheSolutionsPlaceGives) {
    Random random(2);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        int differing = 0;
        for (const std::int32_t n :
             {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15, 16, 17, 23, 32, 33, 41, 65, 66, 257}) {
            for (const std::size_t shift : {0u, 4u, 8u, 12u, 2u}) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    const std::int32_t objects = count(n > 100 ? 2 : random.pick({1, 2, 4, 5, 9, 18, 35, 71}));
                    DenseCall call(form(), squareSizes(n, objects), spread, shift);
                    const bool inPlace = random.chance(30);
                    if (inPlace) call.alias("src2");
                    std::vector<Square<T>> factors;
                    for (std::int32_t k = 0; k < objects; ++k) {
                        if (k > 0 && form().tokens != "mava") {
                            factors.push_back(factors[0]);
                            continue;
                        }
                        factors.push_back(ordinary<T>(n, random));
                        for (std::int32_t i = 0; i < n; ++i) factors.back()(i, i) = T(1) / static_cast<T>(3 * n + i);
                    }
                    setFactors(call, factors);
                    std::vector<std::vector<T>> b(static_cast<std::size_t>(objects));
                    for (std::int32_t v = 0; v < objects; ++v) {
                        for (std::int32_t j = 0; j < n; ++j) {
                            const T value = static_cast<T>(random.between(-999, 999)) / 7;
                            b[static_cast<std::size_t>(v)].push_back(value);
                            call.set<T>(inPlace ? "dst" : "src2", v, 0, j, value);
                        }
                    }
                    ASSERT_EQ(call.call(), status::ok);
                    for (std::int32_t v = 0; v < objects; ++v) {
                        const auto at = static_cast<std::size_t>(v);
                        CholeskySolveRules rules;
                        const std::vector<T> sequential = referenceCholeskySolve(factors[at], b[at], rules);
                        rules.partialSums = form().layout != Layout::pointer && spread == 1;
                        rules.work = reinterpret_cast<std::uintptr_t>(call.address("dst", v, 0, 0));
                        const std::vector<T> expected = referenceCholeskySolve(factors[at], b[at], rules);
                        differing += expected != sequential;
                        for (std::int32_t j = 0; j < n; ++j)
                            ASSERT_TRUE(sameBits(call.get<T>("dst", v, 0, j), expected[static_cast<std::size_t>(j)]))
                                << "order " << n << ", shift " << shift << ", spread " << spread << ", object " << v
                                << " of " << objects << ", element " << j;
                    }
                }
            }
        }
        EXPECT_EQ(differing > 20, form().layout != Layout::pointer);
    });
}

// A = 4 has r = 0.5, so b = 8 gives 8 * r * r. No value is tested.
TEST_P(CholeskyBackSubst, MultipliesTwiceByTheReciprocal) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 6, 7}) {
            DenseCall call(form(), squareSizes(n, count(5)));
            setFactors(call, std::vector<Square<T>>(5, identity<T>(n, T(0.5))));
            for (std::int32_t v = 0; v < count(5); ++v)
                for (std::int32_t j = 0; j < n; ++j) call.set<T>("src2", v, 0, j, T(8));
            ASSERT_EQ(call.call(), status::ok);
            for (std::int32_t v = 0; v < count(5); ++v)
                for (std::int32_t j = 0; j < n; ++j) ASSERT_EQ(call.get<T>("dst", v, 0, j), T(2));
            call.set<T>("src1", 0, n - 1, n - 1, std::numeric_limits<T>::infinity());
            ASSERT_EQ(call.call(), status::ok);
            EXPECT_EQ(call.get<T>("dst", 0, 0, n - 1), std::numeric_limits<T>::infinity());
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, CholeskyBackSubst, testing::ValuesIn(formsOf("CholeskyBackSubst")), formName);

// --- Tables -----------------------------------------------------------------------------------------

// Entries above the diagonal lead nowhere: who follows one crashes.
TEST(CholeskyTables, NeedNoEntriesAboveTheDiagonal) {
    scriptThreadNumbers({1});
    for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 9, 33}) {
        for (const std::int32_t objects : {1, 3, 9}) {
            for (const std::size_t apart : {std::size_t{1}, std::size_t{3}}) {
                const auto size = static_cast<std::size_t>(n);
                const std::size_t stream = apart * static_cast<std::size_t>(objects);
                const auto step = static_cast<std::int32_t>(apart * sizeof(double));
                std::vector<double> elements(size * size * stream), vectors(size * stream, 1.0);
                std::vector<double*> table(size * size), columns(size);
                for (std::size_t i = 0; i < size; ++i) {
                    columns[i] = &vectors[i * stream];
                    for (std::size_t j = 0; j <= i; ++j) {
                        table[i * size + j] = &elements[(i * size + j) * stream];
                        for (std::size_t k = 0; k < stream; ++k) table[i * size + j][k] = i == j ? 4 : 0;
                    }
                }
                ASSERT_EQ(kormCholeskyDecomp_ma_64f_P(table.data(), 0, step, table.data(), 0, step, n, objects),
                          korStatusOk);
                ASSERT_EQ(kormCholeskyBackSubst_mava_64f_P(table.data(), 0, step, columns.data(), 0, step,
                                                           columns.data(), 0, step, n, objects),
                          korStatusOk);
                ASSERT_EQ(kormCholeskyBackSubst_mva_64f_P(table.data(), 0, columns.data(), 0, step, columns.data(), 0,
                                                          step, n, objects),
                          korStatusOk);
                for (std::size_t i = 0; i < size; ++i)
                    for (std::int32_t k = 0; k < objects; ++k)
                        ASSERT_EQ(columns[i][static_cast<std::size_t>(k) * apart], 1.0 / 16);
                ASSERT_EQ(kormCholeskyDecomp_m_64f_P(table.data(), 0, table.data(), 0, n), korStatusOk);
                ASSERT_EQ(kormCholeskyBackSubst_mv_64f_P(table.data(), 0, columns.data(), 0, columns.data(), 0, n),
                          korStatusOk);
            }
        }
    }
}

}  // namespace
}  // namespace kormtest
