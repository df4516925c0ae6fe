// Inverses: limits, reciprocals, replaced cofactors, pairs, residues.
#include <algorithm>

#include "../reference/linalg/inverse.h"
#include "../reference/linalg/precise.h"
#include "linalg_test.h"

namespace kormtest {
namespace {

class Invert : public LinalgForm {
protected:
    bool plain(std::int32_t spread) const { return spread == 1; }
    InvertPath path(std::int32_t n, std::int32_t spread) const { return invertPath(form(), plain(spread), n); }
};

// A diagonal matrix has a determinant without rounding; closed forms let the limit pass, the others don't.
TEST_P(Invert, LimitsOfEachPath) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 1; n <= 8; ++n) {
            for (const std::int32_t spread : spreadsOf(form())) {
                const InvertPath way = path(n, spread);
                const bool closed = way == InvertPath::adjugate || way == InvertPath::block;
                // 2 n^3 times the smallest normal number; twice that in the plain kernels of double precision at
                // orders 3 and 4.
                T factor = static_cast<T>(2 * n * n * n);
                if (sizeof(T) == 8 && plain(spread) && form().layout != Layout::pointer && (n == 3 || n == 4))
                    factor *= 2;
                const T limit = factor * std::numeric_limits<T>::min();
                for (std::int32_t step = 0; step < n; ++step) {
                    for (const T value : {std::nextafter(limit, T(0)), limit, std::nextafter(limit, T(1))}) {
                        for (const T sign : {T(1), T(-1)}) {
                            DenseCall call(form(), squareSizes(n), spread);
                            Square<T> a = identity<T>(n);
                            a(step, step) = sign * value;
                            setMatrix(call, "src", 0, a);
                            const std::vector<std::byte> before = call.memory("dst");
                            const bool passes = value > limit || (value == limit && closed);
                            ASSERT_EQ(call.call(), passes ? status::ok : status::singular)
                                << "order " << n << ", step " << step << ", " << value / limit << " limits";
                            if (!passes && way != InvertPath::block) {
                                ASSERT_TRUE(call.memory("dst") == before);
                            }
                        }
                    }
                }
            }
        }
    });
}

// Small integers leave nothing to round but the reciprocal and one product for each element.
TEST_P(Invert, OfSmallIntegersDividesOrApproximatesAsItsPathSays) {
    Random random(2);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (int i = 0; i < 400; ++i) {
            const std::int32_t n = random.between(3, 6);
            Square<T> a = integers<T>(n, 4, random);
            const T det = static_cast<T>(preciseDeterminant(a));
            for (const std::int32_t spread : spreadsOf(form())) {
                if (path(n, spread) == InvertPath::block) continue;
                DenseCall call(form(), squareSizes(n, count(2)), spread);
                for (std::int32_t k = 0; k < count(2); ++k) setMatrix(call, "src", k, a);
                const std::vector<std::byte> before = call.memory("dst");
                const std::int32_t found = call.call();
                ASSERT_EQ(found, det == 0 ? status::singular : status::ok) << "order " << n;
                if (found != status::ok) {
                    ASSERT_TRUE(call.memory("dst") == before);
                    continue;
                }
                Reciprocal way = Reciprocal::division;
                if (invertApproximates(form(), plain(spread), n))
                    way = n == 3 ? Reciprocal::newtonOrder3 : Reciprocal::newton;
                const T r = reciprocal(det, way);
                for (std::int32_t k = 0; k < count(2); ++k) {
                    const Square<T> inverse = getMatrix<T>(call, "dst", k);
                    for (std::int32_t row = 0; row < n; ++row) {
                        for (std::int32_t column = 0; column < n; ++column) {
                            T cofactor = static_cast<T>(preciseDeterminant(a.minor(row, column)));
                            if ((row + column) % 2 != 0) cofactor = -cofactor;
                            ASSERT_EQ(inverse(column, row), cofactor * r)
                                << "order " << n << ", element " << column << ", " << row;
                        }
                    }
                }
            }
        }
    });
}

// A cofactor of zero comes out as +0, but for the kernels that turn signs by bits: plain, double, order 4.
TEST_P(Invert, OfTheIdentityHasPositiveZeros) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {3, 4, 5, 6}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                if (path(n, spread) == InvertPath::block) continue;
                const bool either = sizeof(T) == 8 && n == 4 && form().layout != Layout::pointer && plain(spread);
                DenseCall call(form(), squareSizes(n), spread);
                setMatrix(call, "src", 0, identity<T>(n));
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t i = 0; i < n; ++i) {
                    for (std::int32_t j = 0; j < n; ++j) {
                        const T element = call.get<T>("dst", 0, i, j);
                        if (i != j) {
                            ASSERT_EQ(element, T(0));
                            ASSERT_TRUE(either || !std::signbit(element)) << n;
                        }
                    }
                }
            }
        }
    });
}

// The cofactor core puts its limit where a cofactor vanishes, never a zero.
TEST_P(Invert, VanishingCofactorsCountAsTheLimit) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {2, 7, 8}) {
            const T t = static_cast<T>(2 * n * n * n) * std::numeric_limits<T>::min();
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n), spread);
                setMatrix(call, "src", 0, identity<T>(n));
                ASSERT_EQ(call.call(), status::ok);
                for (std::int32_t i = 0; i < n; ++i)
                    for (std::int32_t j = 0; j < n; ++j)
                        ASSERT_EQ(std::fabs(call.get<T>("dst", 0, i, j)), i == j ? T(1) : t) << n;
                // A minor of one element has no sign but that of its place.
                if (n == 2) {
                    ASSERT_EQ(call.get<T>("dst", 0, 0, 1), -t);
                    ASSERT_EQ(call.get<T>("dst", 0, 1, 0), -t);
                }
            }
        }
    });
}

TEST_P(Invert, AFailedPivotClearsTheFirstElementOfTheBuffer) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {2, 7, 9}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n), spread);
                Square<T> a = identity<T>(n, T(3));
                for (std::int32_t i = 0; i < n; ++i) a(i, n - 2) = 0;
                setMatrix(call, "src", 0, a);
                ASSERT_EQ(call.call(), status::singular);
                ASSERT_TRUE(sameBits(call.get<T>("buffer", 0, 0, 0), T(0))) << n;
            }
        }
    });
}

TEST_P(Invert, LeavesTheBufferOfAClosedFormAlone) {
    Random random(6);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 3, 4, 5, 6}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n, count(5)), spread);
                for (std::int32_t k = 0; k < count(5); ++k) setMatrix(call, "src", k, ordinary<T>(n, random));
                const std::vector<std::byte> before = call.memory("buffer");
                ASSERT_EQ(call.call(), status::ok);
                ASSERT_TRUE(call.memory("buffer") == before) << n;
            }
        }
    });
}

// A NaN determinant is no reason to fail, except at order 1, where the test is the other way round.
TEST_P(Invert, ANanPassesButAtOrder1) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const T nan = std::numeric_limits<T>::quiet_NaN();
        for (std::int32_t n = 1; n <= 8; ++n) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n), spread);
                Square<T> a = identity<T>(n);
                a(n - 1, n - 1) = nan;
                setMatrix(call, "src", 0, a);
                ASSERT_EQ(call.call(), n == 1 ? status::singular : status::ok) << n;
                if (n >= 3 && n <= 6) {
                    for (std::int32_t i = 0; i < n; ++i)
                        for (std::int32_t j = 0; j < n; ++j) ASSERT_TRUE(std::isnan(call.get<T>("dst", 0, i, j))) << n;
                }
            }
        }
    });
}

// In a serial call objects before the failing one are done, later ones untouched; pairs fail together.
TEST_P(Invert, ASerialCallStopsAtTheFirstFailure) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 1; n <= 8; ++n) {
            for (std::int32_t failing = 0; failing < 7; ++failing) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    for (const std::size_t shift : {0, 8}) {
                        DenseCall call(form(), squareSizes(n, 7), spread, shift);
                        for (std::int32_t k = 0; k < 7; ++k)
                            setMatrix(call, "src", k, k == failing ? Square<T>(n) : identity<T>(n, T(0.5)));
                        const T untouched = call.get<T>("dst", 0, n - 1, n - 1);
                        ASSERT_EQ(call.call(), status::singular);
                        const bool pairs = form().name == "kormInvert_ma_32f" && n == 4 && spread == 1 && shift == 0;
                        // The seventh is alone.
                        const std::int32_t done = pairs ? failing / 2 * 2 : failing;
                        for (std::int32_t k = 0; k < 7; ++k) {
                            const T last = call.get<T>("dst", k, n - 1, n - 1);
                            ASSERT_TRUE(k < done ? std::fabs(last - 2) < T(1e-5) : sameBits(last, untouched))
                                << "order " << n << ", failing " << failing << ", object " << k;
                        }
                    }
                }
            }
        }
    });
}

// Order 1 needs no kernel, so it never asks for threads, however many objects there are.
TEST_P(Invert, Order1NeverAsksForThreads) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        DenseCall call(form(), squareSizes(1, 5000));
        for (std::int32_t k = 0; k < 5000; ++k) call.set<T>("src", k, 0, 0, static_cast<T>(k + 1));
        scriptThreadNumbers({4});
        ASSERT_EQ(call.call(), status::ok);
        EXPECT_EQ(threadNumberQuestions(), 0);
        for (std::int32_t k = 0; k < 5000; ++k)
            ASSERT_TRUE(sameBits(call.get<T>("dst", k, 0, 0), T(1) / static_cast<T>(k + 1)));
    });
}

INSTANTIATE_TEST_SUITE_P(Forms, Invert, testing::ValuesIn(formsOf("Invert")), formName);

// --- Orders 5 and 6 in single precision with adjacent elements: a block elimination ---

class InvertBlock : public LinalgForm {
protected:
    std::int32_t invert(const Square<float>& a, Square<float>& x) {
        DenseCall call(form(), squareSizes(a.order()));
        setMatrix(call, "src", 0, a);
        const std::int32_t found = call.call();
        x = getMatrix<float>(call, "dst", 0);
        return found;
    }

    static bool finite(const Square<float>& x) {
        return std::all_of(x.data(), x.data() + x.size(), [](float element) { return std::isfinite(element); });
    }

    // Row `searched` has its largest absolute value at columns p and q. The row below the searched ones is so large at
    // `heavy` that elimination with this column as the pivot's overflows, and with the other one doesn't.
    static Square<float> tied(std::int32_t n, std::int32_t searched, std::int32_t p, std::int32_t q, std::int32_t heavy,
                              Random& random) {
        constexpr float most = std::numeric_limits<float>::max();
        Square<float> a(n);
        for (std::int32_t i = 0; i < n; ++i)
            for (std::int32_t j = 0; j < n; ++j) a(i, j) = std::ldexp(static_cast<float>(random.between(1, 999)), -50);
        const std::int32_t large = n - 4;
        std::int32_t other = 1, last = 1;  // columns that are no candidates
        while (other == p || other == q) ++other;
        while (last == p || last == q || last == other) ++last;
        for (std::int32_t i = 0; i < large; ++i)
            for (std::int32_t j = 0; j < n; ++j) a(i, j) = 0;
        a(searched, p) = 1;
        a(searched, q) = -1;
        a(searched, other) = 0.5F;
        // At order 6 the row that isn't searched has a pivot of its own, which touches nothing.
        if (n == 6) a(1 - searched, searched == 0 ? last : 0) = 1;
        for (std::int32_t j = 0; j < n; ++j) a(large, j) = 1;
        a(large, heavy) = heavy == q ? -0.9F * most : 0.9F * most;
        a(large, other) = -0.8F * most;
        if (n == 6) {
            for (std::int32_t i = 2; i < 6; ++i) a(i, searched == 0 ? last : 0) = 0;
        }
        return a;
    }

    void expectWinner(std::int32_t n, std::int32_t searched, std::int32_t winner, std::int32_t loser) {
        Random random(5);
        Square<float> x(n);
        const std::int32_t p = std::min(winner, loser), q = std::max(winner, loser);
        EXPECT_EQ(invert(tied(n, searched, p, q, loser, random), x), status::ok);
        EXPECT_TRUE(finite(x)) << "order " << n << ", row " << searched << ": " << winner << " against " << loser;
        invert(tied(n, searched, p, q, winner, random), x);
        EXPECT_FALSE(finite(x)) << "order " << n << ", row " << searched << ": " << winner << " against " << loser;
    }
};

// Unlike the decomposition's: of equal absolute values the highest column wins, but at order 5 the last one only
// if no other has the same.
TEST_P(InvertBlock, TheHighestColumnWinsATie) {
    for (std::int32_t p = 0; p < 6; ++p) {
        for (std::int32_t q = p + 1; q < 6; ++q) {
            if (q < 4) expectWinner(5, 0, q, p);
            if (q == 4) expectWinner(5, 0, p, q);
            expectWinner(6, 0, q, p);
            // Row 1 is searched beside the first pivot, which stands in column 0 here.
            if (p > 0) expectWinner(6, 1, q, p);
        }
    }
}

// Its reciprocals are approximate ones with one step: of each pivot, and of the determinant of what is left.
TEST_P(InvertBlock, TakesApproximateReciprocals) {
    int differing = 0;
    for (const std::int32_t n : {5, 6}) {
        for (std::int32_t number = 2; number < 100; ++number) {
            const auto value = static_cast<float>(number);
            const float step = reciprocal(value, Reciprocal::newton);
            if (!sameBits(step, 1 / value)) ++differing;
            for (std::int32_t at = 0; at < n; ++at) {
                Square<float> a = identity<float>(n), x(n);
                a(at, at) = value;
                ASSERT_EQ(invert(a, x), status::ok);
                ASSERT_TRUE(sameBits(x(at, at), step)) << "order " << n << ", " << number << " at " << at;
            }
        }
    }
    EXPECT_GT(differing, 20);
}

// A failure may leave anything in the first rows, and nothing in the others.
TEST_P(InvertBlock, AFailureTouchesTheWorkingRowsOnly) {
    for (const std::int32_t n : {5, 6}) {
        for (std::int32_t empty = 0; empty < n; ++empty) {
            DenseCall call(form(), squareSizes(n));
            Square<float> a = identity<float>(n, 3);
            a(empty, empty) = 0;
            setMatrix(call, "src", 0, a);
            const float untouched = call.get<float>("dst", 0, n - 1, n - 1);
            ASSERT_EQ(call.call(), status::singular);
            for (std::int32_t i = n - 4; i < n; ++i)
                for (std::int32_t j = 0; j < n; ++j) ASSERT_TRUE(sameBits(call.get<float>("dst", 0, i, j), untouched));
        }
    }
}

std::vector<std::size_t> blockForms() {
    return {formNamed("kormInvert_m_32f").index, formNamed("kormInvert_ma_32f").index,
            formNamed("kormInvert_ma_32f_L").index};
}

INSTANTIATE_TEST_SUITE_P(Forms, InvertBlock, testing::ValuesIn(blockForms()), formName);

// At order 3 the standard array form divides, the list form and the single one approximate.
TEST(InvertOrder3, DividesInTheStandardArrayForm) {
    int differing = 0;
    for (std::int32_t number = 2; number < 200; ++number) {
        Square<float> a = identity<float>(3);
        a(1, 1) = static_cast<float>(number);
        const float quotient = 1 / static_cast<float>(number);
        const float step = reciprocal(static_cast<float>(number), Reciprocal::newtonOrder3);
        if (!sameBits(quotient, step)) ++differing;
        for (const auto& [name, expected] : {std::pair{"kormInvert_ma_32f", quotient},
                                             {"kormInvert_ma_32f_L", step},
                                             {"kormInvert_m_32f", step},
                                             {"kormInvert_m_32f_P", quotient}}) {
            scriptThreadNumbers({1});
            DenseCall call(formNamed(name), squareSizes(3));
            setMatrix(call, "src", 0, a);
            ASSERT_EQ(call.call(), status::ok);
            ASSERT_TRUE(sameBits(call.get<float>("dst", 0, 0, 0), static_cast<float>(number) * expected))
                << name << ", " << number;
            ASSERT_TRUE(sameBits(call.get<float>("dst", 0, 1, 1), expected)) << name << ", " << number;
        }
    }
    EXPECT_GT(differing, 20);
}

}  // namespace
}  // namespace kormtest
