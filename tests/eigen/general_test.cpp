// General eigenproblems: what the results mean, worked examples, what a failure leaves, sizes of buffers, any bits.
#include <cmath>
#include <complex>
#include <limits>

#include "../linalg/linalg_test.h"

namespace kormtest {
namespace {

using Complex = std::complex<long double>;

class GeneralEigen : public LinalgForm {
protected:
    bool hasVectors() const { return form().operationWord != "EigenValues"; }
};

template <class T>
Complex eigenvalue(const DenseCall& call, std::int32_t k, std::int32_t i) {
    return {call.get<T>("dstValuesRe", k, 0, i), call.get<T>("dstValuesIm", k, 0, i)};
}

// Vector i of the operand: of a pair's second eigenvalue the conjugate of the first's.
template <class T>
std::vector<Complex> vectorOf(const DenseCall& call, const char* operand, std::int32_t k, std::int32_t i) {
    const long double imaginary = eigenvalue<T>(call, k, i).imag();
    std::vector<Complex> y;
    for (std::int32_t r = 0; r < call.sizes().order; ++r) {
        if (imaginary == 0) y.emplace_back(call.get<T>(operand, k, r, i), 0);
        else if (imaginary > 0) y.emplace_back(call.get<T>(operand, k, r, i), call.get<T>(operand, k, r, i + 1));
        else y.emplace_back(call.get<T>(operand, k, r, i - 1), -call.get<T>(operand, k, r, i));
    }
    return y;
}

// |A y - w y|, or with `fromLeft` |y^T A - w y^T|: no conjugation.
template <class T>
long double residual(const Square<T>& a, Complex w, const std::vector<Complex>& y, bool fromLeft) {
    long double worst = 0;
    for (std::int32_t i = 0; i < a.order(); ++i) {
        Complex sum = -w * y[static_cast<std::size_t>(i)];
        for (std::int32_t j = 0; j < a.order(); ++j)
            sum += static_cast<long double>(fromLeft ? a(j, i) : a(i, j)) * y[static_cast<std::size_t>(j)];
        worst = std::max(worst, std::abs(sum));
    }
    return worst;
}

template <class T>
long double normOf(const Square<T>& a) {
    long double sum = 0;
    for (std::size_t at = 0; at < a.size(); ++at) sum += static_cast<long double>(a.data()[at]) * a.data()[at];
    return std::sqrt(sum);
}

// Left vectors satisfy A y = w y and right ones y^T A = w y^T, whatever the names suggest.
TEST_P(GeneralEigen, VectorsSatisfyTheirEquation) {
    if (!hasVectors()) GTEST_SKIP();
    Random random(1);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {2, 3, 4, 5, 6, 7, 8, 9, 12, 16, 21}) {
            for (const std::int32_t spread : spreadsOf(form())) {
                DenseCall call(form(), squareSizes(n, count(3)), spread);
                std::vector<Square<T>> sources;
                for (std::int32_t k = 0; k < count(3); ++k) {
                    sources.push_back(ordinary<T>(n, random));
                    setMatrix(call, "src", k, sources.back());
                }
                ASSERT_EQ(call.call(), status::ok) << "order " << n;
                const auto holds = [&](const char* operand, bool fromLeft) {
                    for (std::int32_t k = 0; k < count(3); ++k) {
                        const Square<T>& a = sources[static_cast<std::size_t>(k)];
                        const long double allowed = 100 * std::numeric_limits<T>::epsilon() * normOf(a);
                        for (std::int32_t i = 0; i < n; ++i) {
                            const auto y = vectorOf<T>(call, operand, k, i);
                            EXPECT_LE(residual(a, eigenvalue<T>(call, k, i), y, fromLeft), allowed)
                                << operand << ", order " << n << ", eigenvalue " << i;
                            long double squares = 0;
                            Complex greatest = 0;
                            for (const Complex one : y) {
                                squares += std::norm(one);
                                if (std::norm(one) > std::norm(greatest)) greatest = one;
                            }
                            EXPECT_NEAR(static_cast<double>(squares), 1, 40 * std::numeric_limits<T>::epsilon());
                            EXPECT_LE(std::fabs(greatest.imag()), 10 * std::numeric_limits<T>::epsilon());
                        }
                    }
                };
                if (form().operationWord == "EigenValuesVectors") {
                    holds("dstRight", true);
                    holds("dstLeft", false);
                } else {
                    holds("dst", form().operationWord == "EigenValuesVectorsRight");
                }
            }
        }
    });
}

// The sums of eigenvalues and of their squares are the traces of the matrix and of its square.
TEST_P(GeneralEigen, ValuesHaveTheMatrixsTraces) {
    Random random(2);
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 20}) {
            DenseCall call(form(), squareSizes(n, count(1)));
            const Square<T> a = ordinary<T>(n, random);
            setMatrix(call, "src", 0, a);
            ASSERT_EQ(call.call(), status::ok) << "order " << n;
            Complex values = 0, squares = 0;
            long double trace = 0, traceOfSquare = 0;
            for (std::int32_t i = 0; i < n; ++i) {
                const Complex w = eigenvalue<T>(call, 0, i);
                values += w;
                squares += w * w;
                trace += a(i, i);
                for (std::int32_t j = 0; j < n; ++j) traceOfSquare += static_cast<long double>(a(i, j)) * a(j, i);
                // The positive imaginary part comes first.
                if (w.imag() > 0) {
                    EXPECT_EQ(eigenvalue<T>(call, 0, i + 1), std::conj(w));
                }
            }
            const long double norm = normOf(a), eps = 100 * std::numeric_limits<T>::epsilon();
            EXPECT_LE(std::abs(values - trace), eps * norm) << "order " << n;
            EXPECT_LE(std::abs(squares - traceOfSquare), eps * norm * norm) << "order " << n;
        }
    });
}

template <class T>
void setNumbers(DenseCall& call, std::int32_t k, const std::vector<double>& numbers) {
    for (std::int32_t at = 0; at < static_cast<std::int32_t>(numbers.size()); ++at)
        call.set<T>("src", k, at / call.sizes().order, at % call.sizes().order,
                    static_cast<T>(numbers[static_cast<std::size_t>(at)]));
}

template <class T>
void expectValues(const DenseCall& call, const std::vector<std::complex<double>>& expected) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const Complex w = eigenvalue<T>(call, 0, static_cast<std::int32_t>(i));
        const double rounding = 8 * std::numeric_limits<T>::epsilon();
        EXPECT_NEAR(static_cast<double>(w.real()), expected[i].real(), rounding) << "eigenvalue " << i;
        EXPECT_NEAR(static_cast<double>(w.imag()), expected[i].imag(), rounding) << "eigenvalue " << i;
    }
}

TEST_P(GeneralEigen, WorkedExamples) {
    struct Example {
        std::int32_t order;
        std::vector<double> matrix;
        std::vector<std::complex<double>> values;
    };
    const Example examples[] = {
        {1, {-3}, {-3}},
        {2, {0, -1, 1, 0}, {{0, 1}, {0, -1}}},
        {2, {1, 2, 2, 1}, {{1, 2}, {1, -2}}},         // equal diagonal elements count as complex
        {2, {1, 0, 7, 2}, {1, 2}},                    // lower triangular: in place
        {2, {1, 7, 0, 2}, {2, 1}},                    // upper triangular: exchanged
        {2, {2, 1, -1, 0}, {1, 1}},                   // one eigenvalue, one vector
        {3, {5, 0, 0, 1, 6, 0, 2, 3, 7}, {5, 6, 7}},  // lower triangular
        {3, {0, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 0}},
        {4, {2, 0, 0, 0, 0, 3, -4, 0, 0, 4, 3, 0, 0, 0, 0, 9}, {2, {3, 4}, {3, -4}, 9}},
    };
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const Example& example : examples) {
            DenseCall call(form(), squareSizes(example.order, count(1)));
            setNumbers<T>(call, 0, example.matrix);
            // The pair that isn't one: its rotation is that of the block before, of which there is none, so that its
            // Schur vectors and the right vectors vanish.
            const bool vanishes = hasVectors() && example.values[0] == std::complex<double>(1, 2) &&
                                  form().operationWord != "EigenValuesVectorsLeft";
            ASSERT_EQ(call.call(), vanishes ? status::noConvergence : status::ok);
            expectValues<T>(call, example.values);
        }
    });
}

// Unit vectors in the places of the values, in every family; a rotation has a vector of norm 1 over two columns.
TEST_P(GeneralEigen, VectorsOfDiagonalsAndRotations) {
    if (!hasVectors()) GTEST_SKIP();
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        for (const Operand& operand : form().operands) {
            if (!operand.output() || operand.dense) continue;
            const char* const name = operand.name.c_str();
            DenseCall diagonal(form(), squareSizes(3, count(1)));
            setNumbers<T>(diagonal, 0, {4, 0, 0, 0, -2, 0, 0, 0, 3});
            ASSERT_EQ(diagonal.call(), status::ok);
            for (std::int32_t i = 0; i < 3; ++i)
                for (std::int32_t j = 0; j < 3; ++j)
                    EXPECT_NEAR(diagonal.get<T>(name, 0, i, j), i == j ? 1 : 0, 4 * std::numeric_limits<T>::epsilon());
            DenseCall rotation(form(), squareSizes(2, count(1)));
            setNumbers<T>(rotation, 0, {0, -1, 1, 0});
            ASSERT_EQ(rotation.call(), status::ok);
            long double squares = 0;
            for (std::int32_t i = 0; i < 2; ++i)
                for (std::int32_t j = 0; j < 2; ++j)
                    squares += std::pow(static_cast<long double>(rotation.get<T>(name, 0, i, j)), 2.0L);
            EXPECT_NEAR(static_cast<double>(squares), 1, 20 * std::numeric_limits<T>::epsilon());
        }
    });
}

// The eigenvalues below the block that doesn't converge are written, nothing else is.
TEST_P(GeneralEigen, FailureLeavesTheLastValues) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const double nan = std::numeric_limits<double>::quiet_NaN();
        DenseCall call(form(), squareSizes(4, count(2)));
        setNumbers<T>(call, 0, {1, 2, nan, 0, 4, 5, 6, 0, 7, 8, 10, 0, 0, 0, 0, 8});
        if (form().array) setNumbers<T>(call, 1, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
        const std::vector<std::byte> untouched(sizeof(T), std::byte{0xa5});
        EXPECT_EQ(call.call(), status::noConvergence);
        EXPECT_EQ(call.get<T>("dstValuesRe", 0, 0, 3), 8);
        EXPECT_EQ(call.get<T>("dstValuesIm", 0, 0, 3), 0);
        for (std::size_t index = 0; index < form().operands.size(); ++index) {
            const Operand& operand = form().operands[index];
            if (!operand.output()) continue;
            for (std::int32_t k = 0; k < count(2); ++k) {
                for (std::int32_t i = 0; i < call.sizes().of(operand.rows); ++i) {
                    for (std::int32_t j = 0; j < 4; ++j) {
                        if (operand.dense && k == 0 && j == 3) continue;
                        EXPECT_EQ(std::memcmp(call.address(operand.name.c_str(), k, i, j), untouched.data(), sizeof(T)),
                                  0)
                            << operand.name << " of object " << k << ", element " << i << ", " << j;
                    }
                }
            }
        }
    });
}

// All bytes that object k has in outputs.
template <class T>
std::vector<std::byte> resultsOf(const DenseCall& call, std::int32_t k) {
    std::vector<std::byte> bytes;
    for (const Operand& operand : call.form().operands) {
        if (!operand.output()) continue;
        for (std::int32_t i = 0; i < call.sizes().of(operand.rows); ++i)
            for (std::int32_t j = 0; j < call.sizes().order; ++j) {
                const std::byte* const at = call.address(operand.name.c_str(), k, i, j);
                bytes.insert(bytes.end(), at, at + sizeof(T));
            }
    }
    return bytes;
}

template <class T>
DenseCall callOf(const Form& form, const std::vector<Square<T>>& sources) {
    DenseCall call(form, squareSizes(sources[0].order(), static_cast<std::int32_t>(sources.size())));
    for (std::size_t k = 0; k < sources.size(); ++k) setMatrix(call, "src", static_cast<std::int32_t>(k), sources[k]);
    return call;
}

// What a call for these objects alone gives the last of them.
template <class T>
std::vector<std::byte> lastResultsOf(const Form& form, const std::vector<Square<T>>& sources) {
    DenseCall call = callOf(form, sources);
    EXPECT_EQ(call.call(), status::ok);
    return resultsOf<T>(call, call.sizes().count - 1);
}

// Matrices whose sweeps are few or many, that split early or not at all, with zeros of both signs.
template <class T>
Square<T> ofKind(std::int32_t kind, std::int32_t n, Random& random) {
    Square<T> a = ordinary<T>(n, random);
    const auto keep = [&](const auto& isKept, T other) {
        for (std::int32_t i = 0; i < n; ++i)
            for (std::int32_t j = 0; j < n; ++j)
                if (!isKept(i, j)) a(i, j) = other;
    };
    switch (kind) {
        case 0: keep([](std::int32_t i, std::int32_t j) { return i >= j; }, T(0)); break;
        case 1: keep([](std::int32_t i, std::int32_t j) { return i <= j; }, -T(0)); break;
        case 2: keep([](std::int32_t i, std::int32_t j) { return i == j; }, T(0)); break;
        case 3: keep([n](std::int32_t i, std::int32_t j) { return (i + 1) % n == j; }, T(0)); break;
        case 4: keep([](std::int32_t i, std::int32_t j) { return i / 3 == j / 3; }, -T(0)); break;
        case 5: keep([&](std::int32_t i, std::int32_t j) { return i == j || random.chance(40); }, -T(0)); break;
        default: break;
    }
    return a;
}

// Objects that are solved together end as each of them would by itself.
TEST_P(GeneralEigen, ObjectsOfArraysAreThoseOfCallsForOne) {
    if (!form().array) GTEST_SKIP();
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(mixSeed(11, GetParam()));
        for (const std::int32_t n : {3, 4, 5, 6, 7, 9, 12, 17, 24, 25}) {
            for (const bool mixed : {false, true}) {
                std::vector<Square<T>> sources;
                for (std::int32_t k = 0; k < 19; ++k)
                    sources.push_back(ofKind<T>(mixed ? random.between(0, 9) : 9, n, random));
                DenseCall call = callOf(form(), sources);
                ASSERT_EQ(call.call(), status::ok) << "order " << n;
                for (std::int32_t k = 0; k < 19; ++k)
                    EXPECT_TRUE(resultsOf<T>(call, k) ==
                                lastResultsOf(form(), std::vector{sources[static_cast<std::size_t>(k)]}))
                        << "order " << n << ", object " << k << ", mixed " << mixed;
            }
        }
    });
}

// Where most objects are diagonal, groups give way to single objects, and come back.
TEST_P(GeneralEigen, AnArrayOfUnlikeMatricesHasTheBitsOfEachAlone) {
    if (!form().array) GTEST_SKIP();
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(mixSeed(12, GetParam()));
        constexpr std::int32_t n = 9, count = 300;
        constexpr int diagonalKind = 2, denseKind = 9;
        std::vector<Square<T>> sources;
        for (std::int32_t k = 0; k < count; ++k)
            sources.push_back(ofKind<T>(k < count / 2 && k % 8 != 3 ? diagonalKind : denseKind, n, random));
        DenseCall call = callOf(form(), sources);
        ASSERT_EQ(call.call(), status::ok);
        for (std::int32_t k = 0; k < count; ++k)
            ASSERT_TRUE(resultsOf<T>(call, k) ==
                        lastResultsOf(form(), std::vector{sources[static_cast<std::size_t>(k)]}))
                << "object " << k;
    });
}

// Of an array, objects before the one that fails are complete and those behind it untouched, wherever it stands.
TEST_P(GeneralEigen, FailureAnywhereStopsThere) {
    if (!form().array) GTEST_SKIP();
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(12);
        std::vector<Square<T>> sources;
        for (std::int32_t k = 0; k < 19; ++k) sources.push_back(ordinary<T>(5, random));
        const std::vector<std::byte> untouched = resultsOf<T>(callOf(form(), sources), 0);
        for (const std::int32_t failing : {0, 2, 3, 7, 8, 9, 17, 18}) {
            std::vector<Square<T>> changed = sources;
            changed[static_cast<std::size_t>(failing)](3, 1) = std::numeric_limits<T>::quiet_NaN();
            DenseCall call = callOf(form(), changed);
            EXPECT_EQ(call.call(), status::noConvergence);
            for (std::int32_t k = 0; k < 19; ++k) {
                if (k == failing) continue;
                EXPECT_EQ(
                    resultsOf<T>(call, k),
                    k > failing ? untouched : lastResultsOf(form(), std::vector{sources[static_cast<std::size_t>(k)]}))
                    << "object " << k << ", failing " << failing;
            }
        }
    });
}

// A block with equal diagonal elements and elements of one sign is turned by the rotation of the block before it, also where
// that was of another object.
TEST_P(GeneralEigen, RotationsAreLeftToTheNextObject) {
    if (!form().array || !hasVectors()) GTEST_SKIP();
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Square<T> rotated(4), symmetric(4);
        for (std::int32_t i = 0; i < 4; ++i)
            for (std::int32_t j = 0; j < 4; ++j) {
                const bool inside = i / 2 == j / 2;
                symmetric(i, j) = static_cast<T>(!inside ? 0 : i == j ? 1 + i / 2 : 2);
                rotated(i, j) = static_cast<T>(!inside ? 0 : i == j ? 3 * i : i < j ? 5 + i : -7);
            }
        Random random(13);
        std::vector<Square<T>> sources;
        for (std::int32_t k = 0; k < 19; ++k) sources.push_back(ordinary<T>(4, random));
        const std::vector<Square<T>> usual = sources;
        for (const std::size_t place : {1U, 4U, 6U, 7U, 8U, 18U}) {
            sources = usual;
            sources[place - 1] = rotated;
            sources[place] = symmetric;
            DenseCall call = callOf(form(), sources);
            ASSERT_EQ(call.call(), status::ok);
            EXPECT_TRUE(resultsOf<T>(call, static_cast<std::int32_t>(place)) ==
                        lastResultsOf(form(), std::vector{rotated, symmetric}))
                << "object " << place;
        }
    });
}

// Order 1 doesn't iterate: a NaN runs through.
TEST_P(GeneralEigen, NanOfOrderOne) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        DenseCall call(form(), squareSizes(1, count(1)));
        call.set<T>("src", 0, 0, 0, std::numeric_limits<T>::quiet_NaN());
        EXPECT_EQ(call.call(), status::ok);
        EXPECT_TRUE(std::isnan(call.get<T>("dstValuesRe", 0, 0, 0)));
        EXPECT_EQ(call.get<T>("dstValuesIm", 0, 0, 0), 0);
    });
}

// Two pairs with one real part, one of them so large that its size overflows: a system is taken for singular. The
// eigenvalues are written, vectors aren't. Arrays of floats compute in double and don't overflow.
TEST_P(GeneralEigen, NearSingularBlockDeliversNoVectors) {
    if (!hasVectors() || (form().array && form().type == Type::f32)) GTEST_SKIP();
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        const double large = static_cast<double>(std::numeric_limits<T>::max()) / 8;
        const double a = 3 * large, b = 6 * large, c = 2 * large;
        for (const bool largeFirst : {false, true}) {
            DenseCall call(form(), squareSizes(4, count(2)));
            const double first = largeFirst ? b : c, second = largeFirst ? c : b;
            for (std::int32_t k = 0; k < count(2); ++k)
                setNumbers<T>(call, k, {a, first, 0, 0, -first, a, 0, 0, 0, 0, a, second, 0, 0, -second, a});
            const std::int32_t status = call.call();
            // The right set starts from the last block, the left set from the first; both take the right one first.
            const bool lefts = form().operationWord == "EigenValuesVectorsLeft";
            const bool both = form().operationWord == "EigenValuesVectors";
            if (!both && lefts != largeFirst) {
                // Held shifts don't matter: nothing is iterated.
                EXPECT_EQ(status, status::ok);
                continue;
            }
            EXPECT_EQ(status, status::nearSingularBlock) << largeFirst;
            EXPECT_EQ(call.get<T>("dstValuesRe", 0, 0, 0), static_cast<T>(a));
            EXPECT_GT(call.get<T>("dstValuesIm", 0, 0, 0), 0);
            std::uint32_t pattern = 0;
            std::memcpy(&pattern, call.address(both ? "dstRight" : "dst", 0, 0, 0), sizeof pattern);
            EXPECT_EQ(pattern, 0xa5a5a5a5u);
            if (form().array) {
                std::memcpy(&pattern, call.address("dstValuesRe", 1, 0, 0), sizeof pattern);
                EXPECT_EQ(pattern, 0xa5a5a5a5u);
            }
        }
    });
}

// Whatever the bits, a call ends with one of its statuses.
TEST_P(GeneralEigen, AnyBitsEnd) {
    byType(form(), [&](auto zero) {
        using T = decltype(zero);
        Random random(mixSeed(7, GetParam()));
        for (int number = 0; number < 1500; ++number) {
            const std::int32_t n = random.between(1, number % 50 == 0 ? 14 : 7);
            DenseCall call(form(), squareSizes(n, count(2)));
            const auto mood = random.pick({Mood::ordinary, Mood::wide, Mood::mixed});
            const std::int32_t zeros = random.between(0, 80);
            for (std::int32_t k = 0; k < count(2); ++k) {
                for (std::int32_t at = 0; at < n * n; ++at) {
                    const std::uint64_t bits =
                        random.chance(30) ? random.next() : randomElement(form().type, mood, true, random);
                    T value;
                    std::memcpy(&value, &bits, sizeof value);
                    if (random.chance(zeros)) value = 0;
                    call.set<T>("src", k, at / n, at % n, value);
                }
            }
            const std::int32_t status = call.call();
            const bool known = status == status::ok || status == status::noConvergence ||
                               (status == status::nearSingularBlock && hasVectors());
            EXPECT_TRUE(known) << status;
        }
    });
}

std::vector<std::size_t> generalForms() {
    std::vector<std::size_t> result;
    for (const char* operation :
         {"EigenValues", "EigenValuesVectors", "EigenValuesVectorsLeft", "EigenValuesVectorsRight"})
        for (const std::size_t index : formsOf(operation)) result.push_back(index);
    return result;
}

INSTANTIATE_TEST_SUITE_P(Forms, GeneralEigen, testing::ValuesIn(generalForms()), formName);

// --- Sizes of buffers ---

using SizeQuery = std::int32_t (*)(std::int32_t, std::uint32_t*);

SizeQuery sizeQuery(const char* name) { return reinterpret_cast<SizeQuery>(Library::linked().find(name)); }

TEST(EigenBufferSizes, AreBytes) {
    for (const std::int32_t n : {1, 2, 7, 100, 20000, 0x7fffffff}) {
        // In full width, then cut.
        const auto u = static_cast<std::uint64_t>(n);
        const auto expect = [&](const char* name, std::uint64_t bytes) {
            std::uint32_t size = 1;
            EXPECT_EQ(sizeQuery(name)(n, &size), status::ok);
            EXPECT_EQ(size, static_cast<std::uint32_t>(bytes)) << name << ", order " << n;
        };
        expect("kormEigenValuesGetBufSize_32f", u * 4 * (u + 5));
        expect("kormEigenValuesGetBufSize_64f", u * 8 * (u + 5));
        expect("kormEigenValuesVectorsGetBufSize_32f", u * 4 * (3 * u + 5));
        expect("kormEigenValuesVectorsGetBufSize_64f", u * 8 * (3 * u + 5));
    }
}

TEST(EigenBufferSizes, CheckTheirArguments) {
    for (const std::string& name : sizeQueryNames()) {
        const SizeQuery query = sizeQuery(name.c_str());
        std::uint32_t size = 77;
        EXPECT_EQ(query(0, nullptr), status::nullPointer) << name;
        EXPECT_EQ(query(3, nullptr), status::nullPointer) << name;
        for (const std::int32_t order : {0, -1, -0x7fffffff - 1})
            EXPECT_EQ(query(order, &size), status::badSize) << name;
        EXPECT_EQ(size, 77u) << name;
    }
}

}  // namespace
}  // namespace kormtest
