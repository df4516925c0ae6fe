// Determinants: which path a call takes, limits of the elimination, the one kernel with a search of its own.
#include "../reference/linalg/determinant.h"
#include "../reference/linalg/precise.h"
#include "linalg_test.h"

namespace kormtest {
namespace {

class Det : public LinalgForm {
protected:
    template <class T>
    T one(const Square<T>& a, std::int32_t spread = 1) {
        return several(a, 1, spread).front();
    }
    template <class T>
    std::vector<T> several(const Square<T>& a, std::int32_t objects, std::int32_t spread = 1, std::size_t shift = 0) {
        DenseCall call(form(), squareSizes(a.order(), objects), spread, shift);
        for (std::int32_t k = 0; k < objects; ++k) setMatrix(call, "src", k, a);
        EXPECT_EQ(call.call(), status::ok);
        std::vector<T> result;
        for (std::int32_t k = 0; k < objects; ++k) result.push_back(call.get<T>("dst", k, 0, 0));
        return result;
    }
};

// Every product and sum of small integers is exact, whatever the order.
TEST_P(Det, OfSmallIntegersIsExact) {
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (int i = 0; i < 300; ++i) {
            const std::int32_t n = random.between(3, 6);
            const Square<T> a = integers<T>(n, 4, random);
            for (const std::int32_t spread : spreadsOf(form()))
                ASSERT_EQ(one(a, spread), static_cast<T>(preciseDeterminant(a))) << "order " << n;
        }
    });
}

// Elimination takes a pivot at the limit and refuses a last element there; closed forms have no limit.
TEST_P(Det, LimitsOfTheElimination) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 6, 7, 8, 12}) {
            const bool sized = n >= 3 && n <= 6;
            const T limit = static_cast<T>(2 * n * n * n) * std::numeric_limits<T>::min();
            for (const std::int32_t step : {0, n / 2, n - 1}) {
                for (const T value : {std::nextafter(limit, T(0)), limit, std::nextafter(limit, T(1))}) {
                    for (const T sign : {T(1), T(-1)}) {
                        Square<T> a = identity<T>(n);
                        a(step, step) = sign * value;
                        const bool last = step == n - 1;
                        const bool passes = sized || value > limit || (value == limit && !last);
                        for (const std::int32_t spread : spreadsOf(form())) {
                            ASSERT_EQ(one(a, spread), passes ? sign * value : T(0))
                                << "order " << n << ", step " << step << ", value " << value / limit << " limits";
                        }
                    }
                }
            }
        }
        // The order in the limit counts: 1e-38 and the like at order 7.
        if (sizeof(T) == 4) {
            EXPECT_EQ(one(identity<T>(7, T(1e-38))), T(0));
        }
        EXPECT_EQ(one(identity<T>(1, 2 * std::numeric_limits<T>::min())), T(0));
    });
}

// A vanishing pivot: single matrices give +0, arrays a zero with the sign of what they had so far.
TEST_P(Det, AVanishingPivotGivesAZeroWithItsSign) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {2, 7, 9}) {
            for (const T first : {T(2), T(-2)}) {
                for (const T last : {T(3), T(-3)}) {
                    Square<T> a = identity<T>(n);
                    a(0, 0) = first;
                    if (n > 2) a(1, 1) = 0;
                    else a(0, 0) = 0;
                    a(n - 1, n - 1) = last;
                    const T product = n > 2 ? first : T(1);
                    const T expected = form().array ? product * (last * T(0)) : T(0);
                    // Column 1 must be empty below its diagonal too, and order 2 fails at its first step.
                    for (const std::int32_t spread : spreadsOf(form())) {
                        const T found = one(a, spread);
                        ASSERT_TRUE(sameBits(found, expected)) << n << ": " << found << ", not " << expected;
                    }
                }
            }
        }
        // An infinite element at the last position makes that zero a NaN in arrays.
        Square<T> a = identity<T>(7);
        a(2, 2) = 0;
        a(6, 6) = std::numeric_limits<T>::infinity();
        const T found = one(a);
        EXPECT_EQ(std::isnan(found), form().array);
        // A NaN passes as a pivot, but not at the end.
        a(2, 2) = 1;
        a(6, 6) = std::numeric_limits<T>::quiet_NaN();
        EXPECT_TRUE(sameBits(one(a), T(0)));
    });
}

TEST_P(Det, AnExchangeOfRowsTurnsTheSign) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {2, 3, 4, 5, 6, 7, 8}) {
            Square<T> a = identity<T>(n);
            a(0, 0) = a(1, 1) = 0;
            a(0, 1) = 3;
            a(1, 0) = 5;
            for (const std::int32_t spread : spreadsOf(form())) ASSERT_EQ(one(a, spread), T(-15)) << n;
        }
    });
}

// No forced zero: the closed forms go down to denormals.
TEST_P(Det, ClosedFormsKeepTinyValues) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const T tiny = std::numeric_limits<T>::denorm_min() * 1024;
        for (const std::int32_t n : {3, 4, 5, 6}) {
            Square<T> a = identity<T>(n);
            a(0, 0) = tiny;
            for (const std::int32_t spread : spreadsOf(form())) ASSERT_EQ(one(a, spread), tiny) << n;
            ASSERT_EQ(one(Square<T>(n)), T(0));
        }
    });
}

// Adjacent elements in extended precision where cancellation leaves no digit in the element type.
TEST_P(Det, ExtendedPrecisionKeepsWhatCancels) {
    Random random(5);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const T eps = std::numeric_limits<T>::epsilon();
        for (int i = 0; i < 100; ++i) {
            // (1 + a eps)(1 + b eps) - (1 + c eps)(1 + d eps) keeps eps^2 terms only in a wider format.
            Square<T> a = identity<T>(3);
            for (const auto& [r, c] : {std::pair{0, 0}, {0, 1}, {1, 0}, {1, 1}})
                a(r, c) = 1 + static_cast<T>(random.between(0, 7)) * eps;
            const T exact = static_cast<T>(preciseDeterminant(a));
            const T found = one(a);
            const DenseCall call(form(), squareSizes(3));
            const bool extended = detPath(form(), call.values(), call.sizes(), 0, 0, 1) == DetPath::extended;
            if (extended) {
                // The products fit the extended format in single precision, and lose their last bits in double.
                ASSERT_LE(std::fabs(found - exact), sizeof(T) == 4 ? T(0) : T(0x1p-62));
            } else {
                ASSERT_TRUE(sameBits(found, closedDeterminant3(a)));
            }
        }
    });
}

TEST_P(Det, LeavesTheBufferOfAClosedFormAlone) {
    Random random(6);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {3, 4, 5, 6}) {
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

INSTANTIATE_TEST_SUITE_P(Forms, Det, testing::ValuesIn(formsOf("Det")), formName);

template <class T>
T detOf(const char* name, const Square<T>& a, std::int32_t spread = 1) {
    scriptThreadNumbers({1});
    DenseCall call(formNamed(name), squareSizes(a.order()), spread);
    setMatrix(call, "src", 0, a);
    EXPECT_EQ(call.call(), status::ok);
    return call.get<T>("dst", 0, 0, 0);
}

// Where source, row and object strides are multiples of 16, matrices of order 4 go in pairs in single precision, and
// the last of an odd number in extended precision.
TEST(DetPairs, GoByAlignmentAndPlace) {
    Random random(7);
    const Form& form = formNamed("kormDet_ma_32f");
    int differing = 0;
    for (const std::size_t shift : {0u, 4u, 8u, 12u, 16u}) {
        for (std::int32_t count = 1; count <= 9; ++count) {
            scriptThreadNumbers({1});
            DenseCall call(form, squareSizes(4, count), 1, shift);
            std::vector<Square<float>> sources;
            for (std::int32_t k = 0; k < count; ++k) {
                sources.push_back(ordinary<float>(4, random));
                setMatrix(call, "src", k, sources.back());
            }
            ASSERT_EQ(call.call(), status::ok);
            for (std::int32_t k = 0; k < count; ++k) {
                const Square<float>& a = sources[static_cast<std::size_t>(k)];
                const float single = detOf("kormDet_m_32f", a, 2), extended = detOf("kormDet_m_32f", a);
                if (!sameBits(single, extended)) ++differing;
                const bool paired = shift % 16 == 0 && k < count / 2 * 2;
                ASSERT_TRUE(sameBits(call.get<float>("dst", k, 0, 0), paired ? single : extended))
                    << "object " << k << " of " << count << ", shift " << shift;
            }
        }
    }
    EXPECT_GT(differing, 20);
}

// The two formats of order 3: the array form of single precision stays in the element type.
TEST(DetOrder3, OfTheArrayFormInSinglePrecision) {
    Random random(8);
    int differing = 0;
    for (int i = 0; i < 100; ++i) {
        const Square<float> a = ordinary<float>(3, random);
        const float array = detOf("kormDet_ma_32f", a), single = detOf("kormDet_m_32f", a);
        ASSERT_TRUE(sameBits(array, closedDeterminant3(a)));
        ASSERT_TRUE(sameBits(single, extendedDeterminant3(a)));
        ASSERT_TRUE(sameBits(detOf("kormDet_ma_32f_L", a), single));
        ASSERT_TRUE(sameBits(detOf("kormDet_m_32f", a, 2), array));
        if (!sameBits(array, single)) ++differing;
    }
    EXPECT_GT(differing, 20);
}

// In one kernel the running maximum of the pivot search is held in single precision.
TEST(DetSearch, InSinglePrecisionOfOneKernelOnly) {
    // 1 + 2^-30 rounds down to 1, so 1 + 2^-40 after it is larger than what was kept.
    Square<double> a = identity<double>(2);
    a(0, 0) = 1 + 0x1p-30;
    a(1, 0) = 1 + 0x1p-40;
    Random random(9);
    EliminationRules rules;
    double plain = 0, odd = 0;
    // Which row is the pivot shows only in the last bits.
    while (sameBits(plain, odd)) {
        a(0, 1) = random.between(1, 1000000) / 3.0;
        a(1, 1) = random.between(1, 1000000) / 7.0;
        rules.singleSearch = false;
        plain = eliminatedDeterminant(a, rules);
        rules.singleSearch = true;
        odd = eliminatedDeterminant(a, rules);
    }
    EXPECT_TRUE(sameBits(detOf("kormDet_m_64f", a), odd));
    EXPECT_TRUE(sameBits(detOf("kormDet_m_64f", a, 2), plain));
    EXPECT_TRUE(sameBits(detOf("kormDet_m_64f_P", a), plain));
    EXPECT_TRUE(sameBits(detOf("kormDet_ma_64f", a), plain));
    EXPECT_TRUE(sameBits(detOf("kormDet_ma_64f_L", a), plain));

    // 1e39 is infinite in single precision, so nothing beats it any more.
    a(0, 0) = 1e39;
    a(1, 0) = 1e300;
    double large = 0, infinite = 0;
    while (sameBits(large, infinite)) {
        a(0, 1) = random.between(1, 1000000) / 3.0;
        a(1, 1) = random.between(1, 1000000) / 7.0;
        rules.singleSearch = false;
        large = eliminatedDeterminant(a, rules);
        rules.singleSearch = true;
        infinite = eliminatedDeterminant(a, rules);
    }
    EXPECT_TRUE(sameBits(detOf("kormDet_m_64f", a), infinite));
    EXPECT_TRUE(sameBits(detOf("kormDet_ma_64f", a), large));
}

}  // namespace
}  // namespace kormtest
