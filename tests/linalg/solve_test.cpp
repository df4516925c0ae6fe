// Solving with a factored matrix: the sweeps, divisions against reciprocals, long sums, overlap.
#include "../reference/linalg/solve.h"

#include <korm.h>

#include "linalg_test.h"

namespace kormtest {
namespace {

class LUBackSubst : public LinalgForm {
protected:
    bool mava() const { return form().tokens == "mava"; }

    template <class T>
    void setVector(DenseCall& call, const char* operand, std::int32_t k, const std::vector<T>& x) {
        for (std::size_t j = 0; j < x.size(); ++j) call.set<T>(operand, k, 0, static_cast<std::int32_t>(j), x[j]);
    }
    void setPivots(DenseCall& call, const std::vector<std::int32_t>& pivots) {
        for (std::int32_t k = 0; k < (mava() ? call.sizes().count : 1); ++k) setVector(call, "pivots", k, pivots);
    }
    template <class T>
    void setFactored(DenseCall& call, const Square<T>& lu) {
        for (std::int32_t k = 0; k < (mava() ? call.sizes().count : 1); ++k) setMatrix(call, "src1", k, lu);
    }
};

// An element of the solution that no rounding touches: unit factors and small integers.
TEST_P(LUBackSubst, UndoesThePermutation) {
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 16, 20}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                std::vector<std::int32_t> pivots(static_cast<std::size_t>(n));
                std::iota(pivots.begin(), pivots.end(), 0);
                random.shuffle(pivots);
                const auto row = [&](std::int32_t k) { return pivots[static_cast<std::size_t>(k)]; };
                // L and U with ones on the diagonal and a few integers beside it.
                Square<T> lu(n);
                for (std::int32_t k = 0; k < n; ++k)
                    for (std::int32_t j = 0; j < n; ++j)
                        lu(row(k), j) = j == k                     ? T(1)
                                        : j + 1 == k || j == k + 2 ? static_cast<T>(random.between(-1, 1))
                                                                   : T(0);
                DenseCall call(form(), squareSizes(n, count(3)), spread);
                setFactored(call, lu);
                setPivots(call, pivots);
                std::vector<std::vector<T>> wanted;
                for (std::int32_t v = 0; v < count(3); ++v) {
                    std::vector<T> x(static_cast<std::size_t>(n)), b(x);
                    for (T& element : x) element = static_cast<T>(random.between(-9, 9));
                    // b = P^T L U x
                    for (std::int32_t k = 0; k < n; ++k) {
                        T sum = 0;
                        for (std::int32_t m = 0; m <= k; ++m) {
                            T u = 0;
                            for (std::int32_t j = m; j < n; ++j) u += lu(row(m), j) * x[static_cast<std::size_t>(j)];
                            sum += (m == k ? T(1) : lu(row(k), m)) * u;
                        }
                        b[static_cast<std::size_t>(row(k))] = sum;
                    }
                    setVector(call, "src2", v, b);
                    wanted.push_back(x);
                }
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t v = 0; v < count(3); ++v)
                    for (std::int32_t j = 0; j < n; ++j)
                        ASSERT_EQ(call.get<T>("dst", v, 0, j),
                                  wanted[static_cast<std::size_t>(v)][static_cast<std::size_t>(j)])
                            << "order " << n;
            }
        }
    });
}

// One matrix for many vectors multiplies by reciprocals at orders 3 to 6, and divides at all others.
TEST_P(LUBackSubst, DividesOrMultipliesByTheReciprocal) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        // 5 / 3 and 5 * (1 / 3) differ in the last bit in both types; so do other pairs that are looked for here.
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 10}) {
            int differing = 0;
            for (std::int32_t divisor = 3; divisor < 60; divisor += 2) {
                const T quotient = T(5) / static_cast<T>(divisor), product = T(5) * (T(1) / static_cast<T>(divisor));
                const bool reciprocal = form().tokens == "mva" && n >= 3 && n <= 6;
                if (quotient != product) ++differing;
                for (const std::int32_t spread : spreadsOf(form())) {
                    DenseCall call(form(), squareSizes(n, count(2)), spread);
                    setFactored(call, identity<T>(n, static_cast<T>(divisor)));
                    std::vector<std::int32_t> pivots(static_cast<std::size_t>(n));
                    std::iota(pivots.begin(), pivots.end(), 0);
                    setPivots(call, pivots);
                    for (std::int32_t v = 0; v < count(2); ++v)
                        setVector(call, "src2", v, std::vector<T>(static_cast<std::size_t>(n), T(5)));
                    ASSERT_EQ(call.call(), status::ok);
                    for (std::int32_t v = 0; v < count(2); ++v)
                        for (std::int32_t j = 0; j < n; ++j)
                            ASSERT_TRUE(sameBits(call.get<T>("dst", v, 0, j), reciprocal ? product : quotient)) << n;
                }
            }
            EXPECT_GT(differing, 3);
        }
    });
}

// No value is tested: a zero on the diagonal divides.
TEST_P(LUBackSubst, AZeroOnTheDiagonalGivesWhatDivisionGives) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 4, 7}) {
            DenseCall call(form(), squareSizes(n, count(2)));
            Square<T> lu = identity<T>(n);
            lu(n - 1, n - 1) = 0;
            setFactored(call, lu);
            std::vector<std::int32_t> pivots(static_cast<std::size_t>(n));
            std::iota(pivots.begin(), pivots.end(), 0);
            setPivots(call, pivots);
            for (std::int32_t v = 0; v < count(2); ++v)
                setVector(call, "src2", v, std::vector<T>(static_cast<std::size_t>(n), v == 0 ? T(-2) : T(0)));
            ASSERT_EQ(call.call(), status::ok);
            EXPECT_EQ(call.get<T>("dst", 0, 0, n - 1), -std::numeric_limits<T>::infinity());
            if (form().array) {
                EXPECT_TRUE(std::isnan(call.get<T>("dst", 1, 0, n - 1)));
            }
        }
    });
}

// Long sums at every place of the solution: eight partial sums from the first multiple of 16 on, where elements are
// adjacent; one sum elsewhere.
TEST_P(LUBackSubst, LongSumsFollowTheAlignmentOfTheSolution) {
    Random random(4);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        int differing = 0;
        for (std::int32_t n = 7; n <= 40; ++n) {
            for (const std::size_t shift : {0u, 4u, 8u, 12u, 2u}) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    DenseCall call(form(), squareSizes(n, count(3)), spread, shift);
                    const Square<T> lu = [&] {
                        Square<T> result = ordinary<T>(n, random);
                        for (std::int32_t i = 0; i < n; ++i) result(i, i) = static_cast<T>(4 * n);
                        return result;
                    }();
                    std::vector<std::int32_t> pivots(static_cast<std::size_t>(n));
                    std::iota(pivots.begin(), pivots.end(), 0);
                    setFactored(call, lu);
                    setPivots(call, pivots);
                    std::vector<T> b;
                    for (std::int32_t j = 0; j < n; ++j) b.push_back(static_cast<T>(random.between(-999, 999)) / 7);
                    for (std::int32_t v = 0; v < count(3); ++v) setVector(call, "src2", v, b);
                    ASSERT_EQ(call.call(), status::ok);
                    for (std::int32_t v = 0; v < count(3); ++v) {
                        SolveRules rules;
                        const std::vector<T> sequential = referenceSolve(lu, pivots, b, rules);
                        rules.longSums = form().layout != Layout::pointer && spread == 1;
                        rules.work = reinterpret_cast<std::uintptr_t>(call.address("dst", v, 0, 0));
                        const std::vector<T> expected = referenceSolve(lu, pivots, b, rules);
                        if (expected != sequential) ++differing;
                        for (std::int32_t j = 0; j < n; ++j)
                            ASSERT_TRUE(sameBits(call.get<T>("dst", v, 0, j), expected[static_cast<std::size_t>(j)]))
                                << "order " << n << ", shift " << shift << ", spread " << spread << ", element " << j;
                    }
                }
            }
        }
        EXPECT_EQ(differing > 50, form().layout != Layout::pointer);
    });
}

// Objects that go together have matrices, pivots and places of their own, in arrays that fill groups and in what is left over.
// Pivots need not be a permutation.
TEST_P(LUBackSubst, EachObjectGetsWhatItGetsAlone) {
    Random random(5);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 6, 7, 8, 9, 11, 12, 13, 17, 33, 46, 64, 65}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                const std::int32_t objects = count(random.pick({2, 3, 4, 5, 9, 18, 35}));
                DenseCall call(form(), squareSizes(n, objects), spread,
                               static_cast<std::size_t>(random.pick({0, 4, 8, 12, 2})));
                std::vector<Square<T>> matrices;
                std::vector<std::vector<std::int32_t>> pivots;
                for (std::int32_t k = 0; k < (mava() ? objects : 1); ++k) {
                    matrices.push_back(ordinary<T>(n, random));
                    for (std::size_t at = 0; at < matrices.back().size(); ++at) matrices.back().data()[at] += T(3);
                    pivots.emplace_back();
                    for (std::int32_t j = 0; j < n; ++j) pivots.back().push_back(random.between(0, n - 1));
                    setMatrix(call, "src1", k, matrices.back());
                    setVector(call, "pivots", k, pivots.back());
                }
                std::vector<std::vector<T>> b(static_cast<std::size_t>(objects));
                for (std::int32_t v = 0; v < objects; ++v) {
                    for (std::int32_t j = 0; j < n; ++j)
                        b[static_cast<std::size_t>(v)].push_back(static_cast<T>(random.between(-999, 999)) / 7);
                    setVector(call, "src2", v, b[static_cast<std::size_t>(v)]);
                }
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t v = 0; v < objects; ++v) {
                    SolveRules rules;
                    rules.oneMatrix = form().tokens == "mva";
                    rules.longSums = form().layout != Layout::pointer && spread == 1;
                    rules.work = reinterpret_cast<std::uintptr_t>(call.address("dst", v, 0, 0));
                    const auto own = static_cast<std::size_t>(mava() ? v : 0);
                    const std::vector<T> expected =
                        referenceSolve(matrices[own], pivots[own], b[static_cast<std::size_t>(v)], rules);
                    for (std::int32_t j = 0; j < n; ++j) {
                        const T found = call.get<T>("dst", v, 0, j), wanted = expected[static_cast<std::size_t>(j)];
                        ASSERT_TRUE(sameBits(found, wanted) || (found != found && wanted != wanted))
                            << "order " << n << ", spread " << spread << ", object " << v << " of " << objects
                            << ", element " << j;
                    }
                }
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, LUBackSubst, testing::ValuesIn(formsOf("LUBackSubst")), formName);

// Rows that a matrix has beyond its order, which pivots of small orders may name as well as those of others.
TEST(LUBackSubstOfOrders1And2, FollowsPivotsBeyondTheOrder) {
    scriptThreadNumbers({1});
    constexpr std::int32_t objects = 9;
    for (const std::int32_t n : {1, 2}) {
        // Three rows of which `n` are the matrix's, and as many elements of a right-hand side.
        std::vector<float> matrices, sides, solutions(objects * 2, -1);
        std::vector<std::int32_t> pivots;
        for (std::int32_t k = 0; k < objects; ++k) {
            for (std::int32_t e = 0; e < 6; ++e) matrices.push_back(static_cast<float>(k + e + 1));
            for (std::int32_t e = 0; e < 3; ++e) sides.push_back(static_cast<float>(100 * k + e + 1));
            for (std::int32_t j = 0; j < n; ++j) pivots.push_back(k == 5 && j == 0 ? 2 : j);
        }
        ASSERT_EQ(kormLUBackSubst_mava_32f(matrices.data(), 24, 8, 4, pivots.data(), sides.data(), 12, 4,
                                           solutions.data(), 8, 4, n, objects),
                  status::ok);
        for (std::int32_t k = 0; k < objects; ++k) {
            const auto a = [&](std::int32_t i, std::int32_t j) {
                return matrices[static_cast<std::size_t>(6 * k + 2 * pivots[static_cast<std::size_t>(n * k + i)] + j)];
            };
            const auto b = [&](std::int32_t i) {
                return sides[static_cast<std::size_t>(3 * k + pivots[static_cast<std::size_t>(n * k + i)])];
            };
            const float last = n == 1 ? b(0) / a(0, 0) : (b(1) - a(1, 0) * b(0)) / a(1, 1);
            EXPECT_EQ(solutions[static_cast<std::size_t>(2 * k + n - 1)], last) << "order " << n << ", object " << k;
            if (n == 2) {
                EXPECT_EQ(solutions[static_cast<std::size_t>(2 * k)], (b(0) - a(0, 1) * last) / a(0, 0))
                    << "object " << k;
            }
        }
    }
}

}  // namespace
}  // namespace kormtest
