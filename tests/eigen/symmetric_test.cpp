// Eigenvalues and eigenvectors of symmetric matrices: what they are, what is refused, and where the kernels differ.
#include <algorithm>
#include <array>

#include "../linalg/linalg_test.h"

namespace kormtest {
namespace {

class EigenValuesSym : public LinalgForm {};
class EigenValuesVectorsSym : public LinalgForm {};
class Symmetric : public LinalgForm {};

template <class T>
Square<T> rows(std::int32_t n, std::initializer_list<double> elements) {
    Square<T> a(n);
    std::transform(elements.begin(), elements.end(), a.data(), [](double x) { return static_cast<T>(x); });
    return a;
}

template <class T>
Square<T> diagonal(std::initializer_list<double> elements) {
    const auto n = static_cast<std::int32_t>(elements.size());
    Square<T> a(n);
    for (std::int32_t i = 0; i < n; ++i) a(i, i) = static_cast<T>(elements.begin()[i]);
    return a;
}

// Numbers up to 1 in size and a diagonal that keeps the eigenvalues apart from each other and from zero; of both signs where
// `indefinite`. Close ones may end a sweep early.
template <class T>
Square<T> regular(std::int32_t n, bool indefinite, Random& random) {
    Square<T> a(n);
    for (std::int32_t i = 0; i < n; ++i)
        for (std::int32_t j = 0; j <= i; ++j) a(i, j) = a(j, i) = static_cast<T>(random.between(-1024, 1024)) / 1024;
    for (std::int32_t i = 0; i < n; ++i) a(i, i) += static_cast<T>(indefinite && i % 2 != 0 ? -2 * i - 3 : 2 * i + 3);
    return a;
}

template <class T>
std::vector<T> valuesOf(const DenseCall& call, std::int32_t k = 0) {
    std::vector<T> values;
    for (std::int32_t i = 0; i < call.sizes().order; ++i) values.push_back(call.get<T>("dstValues", k, 0, i));
    return values;
}

// Calls a form with one matrix, in every placing that its layout knows.
template <class T, class Check>
void eachCall(const Form& form, const Square<T>& a, const Check& check) {
    for (const std::int32_t spread : spreadsOf(form)) {
        DenseCall call(form, squareSizes(a.order()), spread);
        setMatrix(call, "src", 0, a);
        const std::int32_t result = call.call();
        check(call, result, spread == 1);
    }
}

template <class T>
void expectValues(const Form& form, const Square<T>& a, std::int32_t status, std::initializer_list<double> expected) {
    eachCall(form, a, [&](const DenseCall& call, std::int32_t result, bool) {
        EXPECT_EQ(result, status);
        const std::vector<T> values = valuesOf<T>(call);
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(values[i], static_cast<T>(expected.begin()[i])) << "value " << i;
    });
}

// --- Both families ------------------------------------------------------------------------------

TEST_P(Symmetric, Order1IsTheElementWhateverItIs) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const T element :
             {T(0), T(-0.0), T(-3), std::numeric_limits<T>::denorm_min(), std::numeric_limits<T>::infinity()})
            expectValues(form(), rows<T>(1, {static_cast<double>(element)}), status::ok,
                         {static_cast<double>(element)});
    });
}

TEST_P(Symmetric, Order2IsNotSorted) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        expectValues(form(), diagonal<T>({3, 1}), status::ok, {3, 1});
        expectValues(form(), diagonal<T>({-1, -2}), status::ok, {-2, -1});
        expectValues(form(), diagonal<T>({1, -1}), status::ok, {1, -1});
        // Of the elements beside the diagonal, the one below isn't looked at.
        expectValues(form(), rows<T>(2, {2, 1, 77, 2}), status::ok, {3, 1});
    });
}

TEST_P(Symmetric, Order2IsRefusedUntouched) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const T eps = std::numeric_limits<T>::epsilon();
        for (const Square<T>& a : {Square<T>(2), rows<T>(2, {1, 2, 2, 4}), diagonal<T>({1, static_cast<double>(eps)})})
            eachCall(form(), a, [&](const DenseCall& call, std::int32_t result, bool) {
                EXPECT_EQ(result, status::singular);
                const DenseCall untouched(form(), squareSizes(2));
                EXPECT_TRUE(sameBits(call.get<T>("dstValues", 0, 0, 0), untouched.get<T>("dstValues", 0, 0, 0)));
                EXPECT_TRUE(sameBits(call.get<T>("dstValues", 0, 0, 1), untouched.get<T>("dstValues", 0, 0, 1)));
            });
        expectValues(form(), diagonal<T>({1, 2 * static_cast<double>(eps)}), status::ok, {1});
    });
}

TEST_P(Symmetric, ValuesDescend) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        expectValues(form(), identity<T>(3), status::ok, {1, 1, 1});
        expectValues(form(), diagonal<T>({1, 5, -2, 3}), status::ok, {5, 3, 1, -2});
        expectValues(form(), diagonal<T>({5, 1, -2, 3, 9, 9, 1, 0.5, -7}), status::ok, {9, 9, 5, 3, 1, 1, 0.5, -2, -7});
    });
}

// The product of the eigenvalues is tested, not its size beside the matrix.
TEST_P(Symmetric, SmallMatricesAreRefused) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const bool refused = sizeof(T) == 4 || (form().operationWord == "EigenValuesVectorsSym" && form().array);
        expectValues(form(), identity<T>(4, T(0.01)), refused ? status::singular : status::ok, {T(0.01)});
    });
}

TEST_P(Symmetric, ASingularMatrixLeavesItsValues) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        eachCall(form(), rows<T>(3, {1, 1, 1, 1, 1, 1, 1, 1, 1}),
                 [&](const DenseCall& call, std::int32_t result, bool) {
                     EXPECT_EQ(result, status::singular);
                     std::vector<T> values = valuesOf<T>(call);
                     std::sort(values.begin(), values.end());
                     EXPECT_NEAR(static_cast<double>(values[2]), 3, 1e-6);
                     EXPECT_NEAR(static_cast<double>(values[0]), 0, 1e-6);
                 });
    });
}

TEST_P(Symmetric, ANanDoesNotConverge) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (std::int32_t n = 3; n <= 9; ++n) {
            Random random(5);
            Square<T> a = regular<T>(n, true, random);
            a(n - 1, 0) = std::numeric_limits<T>::quiet_NaN();
            eachCall(form(), a, [&](const DenseCall&, std::int32_t result, bool) {
                EXPECT_EQ(result, status::noConvergence) << "order " << n;
            });
        }
    });
}

// The first failure ends the call: what is before it is done, what is behind it untouched. Groups don't show.
TEST_P(Symmetric, ASerialCallStopsAtTheFirstFailure) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {2, 3, 4, 5, 6, 7, 9}) {
            for (std::int32_t failing = 0; failing < 9; ++failing) {
                for (const std::int32_t spread : spreadsOf(form())) {
                    DenseCall call(form(), squareSizes(n, 9), spread);
                    for (std::int32_t k = 0; k < 9; ++k)
                        setMatrix(call, "src", k, k == failing ? Square<T>(n) : identity<T>(n, T(k + 1)));
                    const T untouched = call.get<T>("dstValues", 8, 0, 0);
                    ASSERT_EQ(call.call(), status::singular);
                    for (std::int32_t k = 0; k < 9; ++k) {
                        const T value = call.get<T>("dstValues", k, 0, 0);
                        ASSERT_EQ(value == T(k + 1), k < failing) << "order " << n << ", failing " << failing;
                        ASSERT_TRUE(k <= failing || sameBits(value, untouched)) << "order " << n;
                    }
                }
            }
        }
    });
}

// Where most objects need no sweep and few need many, groups give way to single objects, and come back.
TEST_P(Symmetric, AnArrayOfUnlikeMatricesHasTheBitsOfEachAlone) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(8);
        constexpr std::int32_t n = 5, count = 400;
        const bool hasVectors = form().operationWord == "EigenValuesVectorsSym";
        DenseCall call(form(), squareSizes(n, count));
        std::vector<Square<T>> sources;
        for (std::int32_t k = 0; k < count; ++k) {
            sources.push_back(k < count / 2 && k % 8 != 3 ? identity<T>(n, T(k + 1)) : regular<T>(n, true, random));
            setMatrix(call, "src", k, sources.back());
        }
        ASSERT_EQ(call.call(), status::ok);
        for (std::int32_t k = 0; k < count; ++k) {
            DenseCall one(form(), squareSizes(n));
            setMatrix(one, "src", 0, sources[static_cast<std::size_t>(k)]);
            ASSERT_EQ(one.call(), status::ok);
            ASSERT_EQ(valuesOf<T>(one), valuesOf<T>(call, k)) << "object " << k;
            for (std::int32_t e = 0; hasVectors && e < n * n; ++e)
                ASSERT_TRUE(
                    sameBits(one.get<T>("dstVectors", 0, e / n, e % n), call.get<T>("dstVectors", k, e / n, e % n)))
                    << "object " << k << ", element " << e;
        }
    });
}

// Whatever bits a matrix is made of, the call ends with a status.
TEST_P(Symmetric, AnyBitsEndWithAStatus) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(20261122);
        for (const std::int32_t n : {2, 3, 4, 5, 6, 8, 11}) {
            const int rounds = std::max(1, (form().array ? 6000 : 24000) / (n * n * n));
            for (int round = 0; round < rounds; ++round) {
                DenseCall call(form(), squareSizes(n, count(5)));
                const Mood mood = random.pick({Mood::ordinary, Mood::wide, Mood::mixed, Mood::mixed});
                for (std::int32_t k = 0; k < count(5); ++k)
                    for (std::int32_t i = 0; i < n; ++i)
                        for (std::int32_t j = 0; j <= i; ++j) {
                            const std::uint64_t bits = randomElement(form().type, mood, true, random);
                            T value;
                            std::memcpy(&value, &bits, sizeof value);
                            call.set("src", k, i, j, value);
                            call.set("src", k, j, i, value);
                        }
                const std::int32_t result = call.call();
                ASSERT_TRUE(result == status::ok || result == status::singular || result == status::noConvergence)
                    << result;
            }
        }
    });
}

// --- Values alone -------------------------------------------------------------------------------

// Downward sweeps multiply the first value of the current block into the product once a sweep, where it isn't the matrix's
// first: a regular matrix is refused, and the same one upside down isn't.
TEST_P(EigenValuesSym, TheProductOfDownwardSweepsHasExtraFactors) {
    if (form().type == Type::f64) return;
    const auto s = 0.02;
    const Square<float> falls = rows<float>(4, {8, 0, 0, 0, 0, 2 * s, s, 0, 0, s, s, s, 0, 0, s, 3 * s});
    Square<float> rises(4);
    for (std::int32_t i = 0; i < 4; ++i)
        for (std::int32_t j = 0; j < 4; ++j) rises(i, j) = falls(3 - i, 3 - j);
    eachCall(form(), falls, [&](const DenseCall&, std::int32_t result, bool) { EXPECT_EQ(result, status::singular); });
    eachCall(form(), rises, [&](const DenseCall& call, std::int32_t result, bool) {
        EXPECT_EQ(result, status::ok);
        EXPECT_EQ(call.get<float>("dstValues", 0, 0, 0), 8);
    });
}

TEST_P(EigenValuesSym, AnArrayHasTheBitsOfSingleMatrices) {
    if (!form().array) return;
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(6);
        const Form& single = formNamed(sizeof(T) == 4 ? "kormEigenValuesSym_m_32f" : "kormEigenValuesSym_m_64f");
        for (std::int32_t n = 3; n <= 26; ++n) {
            DenseCall call(form(), squareSizes(n, 9));
            std::vector<Square<T>> sources;
            for (std::int32_t k = 0; k < 9; ++k) {
                // Some of the lanes of a group have nothing to do.
                sources.push_back(k % 3 == 1 ? identity<T>(n, T(k)) : regular<T>(n, k % 2 != 0, random));
                setMatrix(call, "src", k, sources.back());
            }
            ASSERT_EQ(call.call(), status::ok) << "order " << n;
            for (std::int32_t k = 0; k < 9; ++k) {
                DenseCall one(single, squareSizes(n));
                setMatrix(one, "src", 0, sources[static_cast<std::size_t>(k)]);
                ASSERT_EQ(one.call(), status::ok);
                ASSERT_EQ(valuesOf<T>(one), valuesOf<T>(call, k)) << "order " << n << ", object " << k;
            }
        }
    });
}

// --- With vectors -------------------------------------------------------------------------------

template <class T>
void expectVectors2(const Form& form, const Square<T>& a, std::array<double, 4> v) {
    eachCall(form, a, [&](const DenseCall& call, std::int32_t result, bool) {
        EXPECT_EQ(result, status::ok);
        const Square<T> found = getMatrix<T>(call, "dstVectors", 0);
        for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(found.data()[i], static_cast<T>(v[i])) << "element " << i;
    });
}

TEST_P(EigenValuesVectorsSym, SignsAreAsTheyCome) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        expectVectors2(form(), diagonal<T>({3, 1}), {-1, 0, 0, -1});
        expectVectors2(form(), diagonal<T>({1, 1}), {0, -1, 1, 0});
        eachCall(form(), rows<T>(1, {-4}), [&](const DenseCall& call, std::int32_t result, bool) {
            EXPECT_EQ(result, status::ok);
            EXPECT_EQ(call.get<T>("dstVectors", 0, 0, 0), T(1));
        });
    });
}

// A V = V diag(values), and columns of length 1 that are orthogonal, to a few units of the matrix's size.
TEST_P(EigenValuesVectorsSym, VectorsBelongToTheirValues) {
    Random random(7);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 16, 24, 25, 33}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n, count(6)), spread);
                std::vector<Square<T>> sources;
                for (std::int32_t k = 0; k < count(6); ++k) {
                    sources.push_back(regular<T>(n, k % 2 != 0, random));
                    setMatrix(call, "src", k, sources.back());
                }
                ASSERT_EQ(call.call(), status::ok) << "order " << n;
                for (std::int32_t k = 0; k < count(6); ++k) {
                    const Square<T>& a = sources[static_cast<std::size_t>(k)];
                    const Square<T> v = getMatrix<T>(call, "dstVectors", k);
                    const std::vector<T> values = valuesOf<T>(call, k);
                    const double bound = 8.0 * n * static_cast<double>(std::numeric_limits<T>::epsilon());
                    for (std::int32_t j = 0; j < n; ++j) {
                        for (std::int32_t i = 0; i < n; ++i) {
                            double product = 0, inner = 0;
                            for (std::int32_t m = 0; m < n; ++m) {
                                product += static_cast<double>(a(i, m)) * static_cast<double>(v(m, j));
                                inner += static_cast<double>(v(m, i)) * static_cast<double>(v(m, j));
                            }
                            const double value = static_cast<double>(values[static_cast<std::size_t>(j)]);
                            ASSERT_NEAR(product, value * static_cast<double>(v(i, j)), bound * (n + 2))
                                << "order " << n << ", object " << k << " at " << i << ", " << j;
                            ASSERT_NEAR(inner, i == j ? 1 : 0, bound) << "order " << n << " at " << i << ", " << j;
                        }
                        if (n > 2 && j > 0) {
                            ASSERT_GE(values[static_cast<std::size_t>(j) - 1], values[static_cast<std::size_t>(j)]);
                        }
                    }
                }
            }
        }
    });
}

// Nothing is to be rotated, so the vectors are the identity, and only the sort moves anything.
TEST_P(EigenValuesVectorsSym, ASingularMatrixIsSortedBySomeKernels) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        eachCall(form(), diagonal<T>({0, 1, 2}), [&](const DenseCall& call, std::int32_t result, bool plain) {
            EXPECT_EQ(result, status::singular);
            const bool pointer = form().layout == Layout::pointer;
            const bool sorted = !form().array && (form().type == Type::f64 || pointer || plain);
            const std::vector<T> expected = sorted ? std::vector<T>{2, 1, 0} : std::vector<T>{0, 1, 2};
            EXPECT_EQ(valuesOf<T>(call), expected);
            const Square<T> v = getMatrix<T>(call, "dstVectors", 0);
            for (std::int32_t i = 0; i < 3; ++i)
                for (std::int32_t j = 0; j < 3; ++j) EXPECT_EQ(v(i, j), T(sorted ? i == 2 - j : i == j));
        });
    });
}

TEST_P(EigenValuesVectorsSym, TheLimitOfTheProductIsThatOfTheKernel) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const double limit = sizeof(T) == 4 || form().array ? 0x1p-23 : 0x1p-52;
        const auto with = [&](T last) { return diagonal<T>({1, 1, static_cast<double>(last)}); };
        const T at = static_cast<T>(limit);
        for (const T sign : {T(1), T(-1)}) {
            expectValues(form(), with(sign * std::nextafter(at, T(1))), status::ok, {1, 1});
            eachCall(form(), with(sign * at),
                     [&](const DenseCall&, std::int32_t result, bool) { EXPECT_EQ(result, status::singular); });
        }
    });
}

std::vector<std::size_t> bothFamilies() {
    std::vector<std::size_t> forms = formsOf("EigenValuesSym");
    for (const std::size_t form : formsOf("EigenValuesVectorsSym")) forms.push_back(form);
    return forms;
}

INSTANTIATE_TEST_SUITE_P(Forms, Symmetric, testing::ValuesIn(bothFamilies()), formName);
INSTANTIATE_TEST_SUITE_P(Forms, EigenValuesSym, testing::ValuesIn(formsOf("EigenValuesSym")), formName);
INSTANTIATE_TEST_SUITE_P(Forms, EigenValuesVectorsSym, testing::ValuesIn(formsOf("EigenValuesVectorsSym")), formName);

}  // namespace
}  // namespace kormtest
