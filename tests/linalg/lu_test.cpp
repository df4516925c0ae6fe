// LU decomposition: what it means, its tolerances, ties, and what a failure leaves.
#include "../reference/linalg/lu.h"
#include "linalg_test.h"

namespace kormtest {
namespace {

class LUDecomp : public LinalgForm {};

template <class T>
std::vector<std::int32_t> pivotsOf(const DenseCall& call, std::int32_t k) {
    std::vector<std::int32_t> result;
    for (std::int32_t j = 0; j < call.sizes().order; ++j) result.push_back(call.get<std::int32_t>("pivots", k, 0, j));
    return result;
}

// P A = L U, element by element, within the rounding that elimination is allowed: n u |L| |U|.
TEST_P(LUDecomp, FactorsThePermutedMatrix) {
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 16, 33}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n, count(2)), spread);
                std::vector<Square<T>> sources;
                for (std::int32_t k = 0; k < count(2); ++k) {
                    sources.push_back(ordinary<T>(n, random));
                    setMatrix(call, "src", k, sources.back());
                }
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t k = 0; k < count(2); ++k) {
                    const auto p = pivotsOf<T>(call, k);
                    std::vector<bool> seen(static_cast<std::size_t>(n));
                    for (const std::int32_t row : p) {
                        ASSERT_TRUE(row >= 0 && row < n && !seen[static_cast<std::size_t>(row)]);
                        seen[static_cast<std::size_t>(row)] = true;
                    }
                    const Square<T> lu = getMatrix<T>(call, "dst", k);
                    const auto row = [&](std::int32_t i) { return p[static_cast<std::size_t>(i)]; };
                    for (std::int32_t i = 0; i < n; ++i) {
                        for (std::int32_t j = 0; j < n; ++j) {
                            long double sum = 0, size = 0;
                            for (std::int32_t m = 0; m <= std::min(i, j); ++m) {
                                const long double l = m == i ? 1.0L : static_cast<long double>(lu(row(i), m));
                                const long double term = l * static_cast<long double>(lu(row(m), j));
                                sum += term;
                                size += std::fabs(term);
                            }
                            const long double unit = static_cast<long double>(std::numeric_limits<T>::epsilon()) / 2;
                            const long double off =
                                sum - static_cast<long double>(sources[static_cast<std::size_t>(k)](row(i), j));
                            ASSERT_LE(std::fabs(off), (n + 2) * unit * size)
                                << "order " << n << " at " << i << ", " << j;
                            if (j < i) {
                                ASSERT_LE(std::fabs(lu(row(i), j)), 1 + std::numeric_limits<T>::epsilon());
                            }
                        }
                    }
                }
            }
        }
    });
}

// The pivot at one step is the limit itself, or the number next to it on either side; of both signs.
TEST_P(LUDecomp, FailsAtTheLimitOfItsPath) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 1; n <= 9; ++n) {
            const bool sized = n >= 3 && n <= 6;
            // Orders 3 to 6 let the limit pass, the others don't.
            const T limit =
                sized ? std::ldexp(T(1), std::numeric_limits<T>::min_exponent) : std::numeric_limits<T>::epsilon();
            ASSERT_EQ(limit, sized ? (sizeof(T) == 4 ? T(0x1p-125) : T(0x1p-1021))
                                   : (sizeof(T) == 4 ? T(0x1p-23) : T(0x1p-52)));
            const T below = std::nextafter(limit, T(0)), above = std::nextafter(limit, T(1));
            for (std::int32_t step = 0; step < n; ++step) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    for (const auto& [value, passes] : {std::pair{below, false}, {limit, sized}, {above, true}}) {
                        for (const T sign : {T(1), T(-1)}) {
                            DenseCall call(form(), squareSizes(n), spread);
                            Square<T> a = identity<T>(n);
                            a(step, step) = sign * value;
                            setMatrix(call, "src", 0, a);
                            ASSERT_EQ(call.call(), passes ? status::ok : status::singular)
                                << "order " << n << ", step " << step << ", value " << value;
                        }
                    }
                }
            }
        }
    });
}

// The first of equal absolute values keeps its place, in the order of positions and not of row numbers.
TEST_P(LUDecomp, TheLowestPositionKeepsATie) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 2; n <= 9; ++n) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n), spread);
                Square<T> a = identity<T>(n);
                for (std::int32_t i = 0; i < n; ++i) a(i, 0) = i % 2 == 0 ? T(-1) : T(1);
                setMatrix(call, "src", 0, a);
                ASSERT_EQ(call.call(), status::ok);
                const auto p = pivotsOf<T>(call, 0);
                for (std::int32_t i = 0; i < n; ++i) EXPECT_EQ(p[static_cast<std::size_t>(i)], i);
                if (n < 4) continue;
                // Column 0 brings row 3 to position 0 and row 0 to position 3; column 1 ties between rows 0 and 1:
                // row 1 is met first.
                a = identity<T>(n);
                a(0, 0) = 0;
                a(3, 0) = 2;
                a(0, 1) = 1;
                a(0, 3) = 1;
                setMatrix(call, "src", 0, a);
                ASSERT_EQ(call.call(), status::ok);
                const auto q = pivotsOf<T>(call, 0);
                EXPECT_EQ(q[0], 3);
                EXPECT_EQ(q[1], 1);
                EXPECT_EQ(q[2], 2);
                EXPECT_EQ(q[3], 0);
            }
        }
    });
}

// Objects that are factored together have the bits that each has by itself: with ties, with NaN that stays where it is met
// first, and with one that fails among others.
TEST_P(LUDecomp, AnArrayHasTheBitsOfEachAlone) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(21);
        for (const std::int32_t n : {1, 2, 3, 6, 7, 8, 11, 16, 24, 33, 63, 64}) {
            constexpr std::int32_t count = 23, failing = 21;
            DenseCall call(form(), squareSizes(n, count));
            std::vector<Square<T>> sources;
            for (std::int32_t k = 0; k < count; ++k) {
                Square<T> a = ordinary<T>(n, random);
                if (k % 3 == 1)
                    for (std::int32_t i = 0; i < n * n; ++i) a(i / n, i % n) = T(random.between(-2, 2));
                for (std::int32_t i = 0; i < n; ++i) a(i, i) += T(k % 3 == 1 ? 3 : 0);
                if (k % 5 == 4)
                    a(random.between(0, n - 1), random.between(0, n - 1)) = std::numeric_limits<T>::quiet_NaN();
                sources.push_back(k == failing ? Square<T>(n) : a);
                setMatrix(call, "src", k, sources.back());
            }
            const std::int32_t status = call.call();
            for (std::int32_t k = 0; k < count; ++k) {
                DenseCall one(form(), squareSizes(n));
                setMatrix(one, "src", 0, sources[static_cast<std::size_t>(k)]);
                if (const std::int32_t own = one.call(); own != status::ok) {
                    ASSERT_EQ(status, own);
                    break;
                }
                ASSERT_EQ(pivotsOf<T>(one, 0), pivotsOf<T>(call, k)) << "order " << n << ", object " << k;
                for (std::int32_t e = 0; e < n * n; ++e)
                    ASSERT_TRUE(sameBits(one.get<T>("dst", 0, e / n, e % n), call.get<T>("dst", k, e / n, e % n)))
                        << "order " << n << ", object " << k << ", element " << e;
            }
        }
    });
}

// Worked examples of what is left behind.
TEST_P(LUDecomp, LeavesWhatItsPathSays) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t spread : spreadsOf(form())) {
            // An empty matrix fails at once: order 4 leaves the destination alone, order 2 copies first.
            for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7}) {
                DenseCall call(form(), squareSizes(n), spread);
                setMatrix(call, "src", 0, Square<T>(n));
                const std::vector<std::byte> before = call.memory("dst");
                ASSERT_EQ(call.call(), status::singular);
                for (std::int32_t i = 0; i < n; ++i) EXPECT_EQ(call.get<std::int32_t>("pivots", 0, 0, i), i);
                if (n >= 3 && n <= 6) {
                    EXPECT_TRUE(call.memory("dst") == before) << n;
                } else {
                    EXPECT_EQ(call.get<T>("dst", 0, n - 1, n - 1), T(0)) << n;
                }
            }
            // Order 3, the last pivot one binary order below the limit: the third row is missing, or in the pointer
            // layout all rows are.
            DenseCall call(form(), squareSizes(3), spread);
            Square<T> a = identity<T>(3);
            a(2, 2) = std::numeric_limits<T>::min();
            setMatrix(call, "src", 0, a);
            const T untouched = call.get<T>("dst", 0, 2, 2);
            ASSERT_EQ(call.call(), status::singular);
            const bool rowsOut = form().layout != Layout::pointer;
            EXPECT_TRUE(sameBits(call.get<T>("dst", 0, 0, 0), rowsOut ? T(1) : untouched));
            EXPECT_TRUE(sameBits(call.get<T>("dst", 0, 1, 1), rowsOut ? T(1) : untouched));
            EXPECT_TRUE(sameBits(call.get<T>("dst", 0, 2, 2), untouched));
        }
    });
}

TEST_P(LUDecomp, ASerialCallStopsAtTheFirstFailure) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 16}) {
            for (std::int32_t failing = 0; failing < 9; ++failing) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    DenseCall call(form(), squareSizes(n, 9), spread);
                    for (std::int32_t k = 0; k < 9; ++k)
                        setMatrix(call, "src", k, k == failing ? Square<T>(n) : identity<T>(n, T(k + 1)));
                    const std::int32_t pattern = call.get<std::int32_t>("pivots", 0, 0, 0);
                    ASSERT_EQ(call.call(), status::singular);
                    for (std::int32_t k = 0; k < 9; ++k) {
                        const T last = call.get<T>("dst", k, n - 1, n - 1);
                        ASSERT_EQ(last == T(k + 1), k < failing) << "order " << n << ", failing " << failing;
                        ASSERT_EQ(call.get<std::int32_t>("pivots", k, 0, 0) == pattern, k > failing);
                    }
                }
            }
        }
    });
}

// Columns go in panels there, and a failure within one leaves the columns behind it as far as all others.
TEST_P(LUDecomp, LargeMatricesAreFactoredElementByElement) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(mixSeed(22, GetParam()));
        for (const std::int32_t n : {63, 64, 65, 100, 131}) {
            for (const std::int32_t empty : {-1, 0, 31, 32, 45, n - 1}) {
                DenseCall call(form(), squareSizes(n), random.pick(spreadsOf(form())));
                Square<T> a = ordinary<T>(n, random);
                const bool hasTies = random.chance(30);
                for (std::int32_t i = 0; hasTies && i < n * n; ++i) a(i / n, i % n) = T(random.between(-3, 3));
                for (std::int32_t i = 0; empty >= 0 && i < n; ++i) a(i, empty) = 0;
                if (random.chance(20)) a(n / 2, n - 2) = std::numeric_limits<T>::quiet_NaN();
                setMatrix(call, "src", 0, a);
                const Factored<T> expected = factorGeneral(a);
                ASSERT_EQ(call.call(), expected.status) << "order " << n << ", empty column " << empty;
                ASSERT_EQ(pivotsOf<T>(call, 0), expected.pivots) << "order " << n << ", empty column " << empty;
                for (std::int32_t e = 0; e < n * n; ++e)
                    ASSERT_TRUE(sameBits(call.get<T>("dst", 0, e / n, e % n), expected.matrix(e / n, e % n)))
                        << "order " << n << ", empty column " << empty << ", element " << e;
            }
        }
    });
}

// Singular in the first, the last or a middle column, and of rank one.
TEST_P(LUDecomp, FindsAnEmptyColumnWhereverItIs) {
    Random random(3);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 1; n <= 10; ++n) {
            for (std::int32_t column = 0; column < n; ++column) {
                Square<T> a = ordinary<T>(n, random);
                for (std::int32_t i = 0; i < n; ++i) a(i, column) = 0;
                DenseCall call(form(), squareSizes(n));
                setMatrix(call, "src", 0, a);
                ASSERT_EQ(call.call(), status::singular) << n << ", " << column;
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, LUDecomp, testing::ValuesIn(formsOf("LUDecomp")), formName);

}  // namespace
}  // namespace kormtest
