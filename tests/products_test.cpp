// Worked examples of products, written out without the tests' model.
#include <gtest/gtest.h>
#include <korm.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <type_traits>
#include <vector>

#include "support/numbers.h"

namespace kormtest {
namespace {

constexpr std::int32_t f32 = 4, f64 = 8;

// The products of element (i, j) of an m by k matrix times a k by n one.
template <class T>
std::vector<T> productsOf(const std::vector<T>& a, const std::vector<T>& b, std::size_t k, std::size_t n, std::size_t i,
                          std::size_t j) {
    std::vector<T> p(k);
    for (std::size_t at = 0; at < k; ++at) p[at] = a[i * k + at] * b[at * n + j];
    return p;
}

TEST(ProductExamples, FiveRowsEndInTwoPartialSums) {
    bool differs = false;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto a = numbers<float>(7 * 9, seed), b = numbers<float>(9 * 3, seed + 100);
        for (const std::int32_t rows : {5, 7}) {
            std::vector<float> c(static_cast<std::size_t>(rows) * 3);
            ASSERT_EQ(
                kormMul_mm_32f(a.data(), 9 * f32, f32, 9, rows, b.data(), 3 * f32, f32, 3, 9, c.data(), 3 * f32, f32),
                korStatusOk);
            for (std::size_t i = 0; i < static_cast<std::size_t>(rows); ++i) {
                for (std::size_t j = 0; j < 3; ++j) {
                    const auto p = productsOf(a, b, 9, 3, i, j);
                    const float oneByOne =
                        ((((((((0.0f + p[0]) + p[1]) + p[2]) + p[3]) + p[4]) + p[5]) + p[6]) + p[7]) + p[8];
                    const float inTwo =
                        (((((0.0f + p[0]) + p[2]) + p[4]) + p[6]) + ((((0.0f + p[1]) + p[3]) + p[5]) + p[7])) + p[8];
                    const bool last = rows == 5 && i == 4;
                    EXPECT_TRUE(sameBits(c[i * 3 + j], last ? inTwo : oneByOne)) << rows << " rows, row " << i;
                    differs = differs || !sameBits(oneByOne, inTwo);
                }
            }
        }
    }
    EXPECT_TRUE(differs);
}

TEST(ProductExamples, OrderFourByATransposeDependsOnTheLayout) {
    bool differs = false;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto a = numbers<float>(16, seed), b = numbers<float>(16, seed + 100);
        std::vector<float> standard(16), list(16);
        const float* const objects[] = {a.data()};
        float* const results[] = {list.data()};
        ASSERT_EQ(
            kormMul_mat_32f(a.data(), 64, 16, f32, 4, 4, b.data(), 16, f32, 4, 4, standard.data(), 64, 16, f32, 1),
            korStatusOk);
        ASSERT_EQ(kormMul_mat_32f_L(objects, 0, 16, f32, 4, 4, b.data(), 16, f32, 4, 4, results, 0, 16, f32, 1),
                  korStatusOk);
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = 0; j < 4; ++j) {
                float p[4];
                for (std::size_t k = 0; k < 4; ++k) p[k] = a[i * 4 + k] * b[j * 4 + k];
                const float crossed = ((0.0f + p[0]) + (0.0f + p[2])) + ((0.0f + p[1]) + (0.0f + p[3]));
                const float inTurn = ((p[0] + p[1]) + p[2]) + p[3];
                EXPECT_TRUE(sameBits(standard[i * 4 + j], crossed));
                EXPECT_TRUE(sameBits(list[i * 4 + j], inTurn));
                differs = differs || !sameBits(crossed, inTurn);
            }
        }
    }
    EXPECT_TRUE(differs);
}

TEST(ProductExamples, NegativeZerosStayOnlyWithoutAStart) {
    // All products are -0.
    const std::vector<float> ones(49, 1.0f), zeros(49, -0.0f);
    for (const std::int32_t n : {1, 2, 3, 4, 5, 6, 7}) {
        for (const bool transposed : {false, true}) {
            std::vector<float> c(49, 1.0f);
            const auto product = transposed ? kormMul_tm_32f : kormMul_mm_32f;
            ASSERT_EQ(
                product(ones.data(), n * f32, f32, n, n, zeros.data(), n * f32, f32, n, n, c.data(), n * f32, f32),
                korStatusOk);
            const bool square = n >= 3 && n <= (transposed ? 5 : 6);
            for (std::int32_t at = 0; at < n * n; ++at)
                EXPECT_EQ(std::signbit(c[static_cast<std::size_t>(at)]), square) << "order " << n;
        }
    }
}

TEST(ProductExamples, MatrixTimesVectorOfOrderFour) {
    bool differs = false;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto a = numbers<double>(16, seed), x = numbers<double>(4, seed + 100);
        double straight[4], turned[4];
        std::array<const double*, 16> table;
        for (std::size_t at = 0; at < 16; ++at) table[at] = &a[at];
        std::array<const double*, 4> vector{&x[0], &x[1], &x[2], &x[3]};
        std::array<double*, 4> result{&turned[0], &turned[1], &turned[2], &turned[3]};
        ASSERT_EQ(kormMul_mv_64f(a.data(), 4 * f64, f64, 4, 4, x.data(), f64, 4, straight, f64), korStatusOk);
        ASSERT_EQ(kormMul_tv_64f_P(table.data(), 0, 4, 4, vector.data(), 0, 4, result.data(), 0), korStatusOk);
        for (std::size_t i = 0; i < 4; ++i) {
            double p[4], q[4];
            for (std::size_t k = 0; k < 4; ++k) {
                p[k] = a[i * 4 + k] * x[k];
                q[k] = a[k * 4 + i] * x[k];
            }
            EXPECT_TRUE(sameBits(straight[i], (p[0] + p[1]) + (p[2] + p[3])));
            EXPECT_TRUE(sameBits(turned[i], ((q[0] + q[1]) + q[2]) + q[3]));
            differs = differs || !sameBits((p[0] + p[1]) + (p[2] + p[3]), ((p[0] + p[1]) + p[2]) + p[3]);
        }
    }
    EXPECT_TRUE(differs);
}

TEST(ProductExamples, OneRowOfNineHasEightPartialSums) {
    const auto a = numbers<float>(9, 3), x = numbers<float>(9, 4);
    float p[9], y = 0;
    for (std::size_t k = 0; k < 9; ++k) p[k] = 0.0f + a[k] * x[k];
    ASSERT_EQ(kormMul_mv_32f(a.data(), 9 * f32, f32, 9, 1, x.data(), f32, 9, &y, f32), korStatusOk);
    const float sum = (((p[0] + p[4]) + (p[2] + p[6])) + ((p[1] + p[5]) + (p[3] + p[7]))) + a[8] * x[8];
    EXPECT_TRUE(sameBits(y, sum));
}

TEST(ProductExamples, MismatchComesBeforeStrides) {
    const std::vector<float> a(64, 1.0f), b(64, 1.0f);
    std::vector<float> c(64, 7.0f);
    // Equal widths are no match for two untransposed operands.
    EXPECT_EQ(kormMul_mm_32f(a.data(), 3, f32, 3, 2, b.data(), 12, f32, 3, 2, c.data(), 12, f32),
              korStatusSizeMismatch);
    EXPECT_EQ(kormMul_mt_32f(a.data(), 3, f32, 3, 2, b.data(), 12, f32, 3, 2, c.data(), 12, f32), korStatusBadStride);
    EXPECT_EQ(kormMul_tm_32f(a.data(), 12, f32, 3, 2, b.data(), 12, f32, 3, 2, c.data(), 12, f32), korStatusOk);
    EXPECT_EQ(kormMul_tt_32f(a.data(), 12, f32, 3, 2, b.data(), 12, f32, 3, 2, c.data(), 12, f32),
              korStatusSizeMismatch);
    EXPECT_EQ(kormMul_mv_32f(a.data(), 12, f32, 3, 2, b.data(), 0, 2, c.data(), f32), korStatusSizeMismatch);
    EXPECT_EQ(kormMul_tv_32f(a.data(), 12, f32, 3, 2, b.data(), 0, 2, c.data(), f32), korStatusBadStride);
}

// No promise to callers, but what square kernels are known for: the right operand is read before anything is written,
// and a row of the left one before that row of the result.
TEST(ProductExamples, SmallSquaresOverTheirOperands) {
    for (const std::int32_t n : {3, 4}) {
        const auto elements = static_cast<std::size_t>(n) * static_cast<std::size_t>(n);
        const auto a = numbers<float>(elements, 7), b = numbers<float>(elements, 8);
        const auto multiply = [n](const float* left, const float* right, float* to) {
            return kormMul_mm_32f(left, n * f32, f32, n, n, right, n * f32, f32, n, n, to, n * f32, f32);
        };
        std::vector<float> apart(elements), overLeft = a, overRight = b;
        ASSERT_EQ(multiply(a.data(), b.data(), apart.data()), korStatusOk);
        ASSERT_EQ(multiply(overLeft.data(), b.data(), overLeft.data()), korStatusOk);
        ASSERT_EQ(multiply(a.data(), overRight.data(), overRight.data()), korStatusOk);
        EXPECT_EQ(std::memcmp(overLeft.data(), apart.data(), elements * sizeof(float)), 0) << n;
        EXPECT_EQ(std::memcmp(overRight.data(), apart.data(), elements * sizeof(float)), 0) << n;
    }
}

template <class T, class OfFloats, class OfDoubles>
auto ofType(OfFloats* ofFloats, OfDoubles* ofDoubles) {
    if constexpr (std::is_same_v<T, float>) return ofFloats;
    else return ofDoubles;
}

template <class T>
std::array<T*, 3> three(T* first, std::ptrdiff_t step) {
    return {first, first + step, first + 2 * step};
}

// The plain square paths read a vector whole before its result is written, so the result may lie over it.
template <class T>
void expectVectorsReadWhole(std::int32_t n) {
    constexpr std::int32_t count = 3, size = sizeof(T);
    constexpr std::ptrdiff_t margin = 2;
    const std::ptrdiff_t apart = 2 * n;  // elements from vector to vector and from result to result
    const std::int32_t row = n * size, matrix = n * row, object = 2 * row;
    const auto a = numbers<T>(static_cast<std::size_t>(count * n * n), 7);
    const auto numbersOfVectors = numbers<T>(static_cast<std::size_t>(count * apart + 2 * margin), 8);

    struct Form {
        const char* name;
        std::int32_t results;
        std::function<std::int32_t(const T*, T*)> multiply;
    };
    const auto one = [&](const char* name, auto* f) {
        return Form{name, 1, [=, &a](const T* x, T* y) { return f(a.data(), row, size, n, n, x, size, n, y, size); }};
    };
    const auto byVectors = [&](const char* name, auto* f) {
        return Form{name, count, [=, &a](const T* x, T* y) {
                        return f(a.data(), row, size, n, n, x, object, size, n, y, object, size, count);
                    }};
    };
    const auto byVectorsOfLists = [&](const char* name, auto* f) {
        return Form{name, count, [=, &a](const T* x, T* y) {
                        const auto vectors = three(x, apart);
                        const auto results = three(y, apart);
                        return f(a.data(), row, size, n, n, vectors.data(), 0, size, n, results.data(), 0, size, count);
                    }};
    };
    // One vector for all: it lies where the first result goes, and all others are made of it too.
    const auto manyByOne = [&](const char* name, auto* f) {
        return Form{name, count, [=, &a](const T* x, T* y) {
                        return f(a.data(), matrix, row, size, n, n, x, size, n, y, object, size, count);
                    }};
    };
    const auto manyByOneOfLists = [&](const char* name, auto* f) {
        return Form{name, count, [=, &a](const T* x, T* y) {
                        const auto matrices = three(a.data(), n * n);
                        const auto results = three(y, apart);
                        return f(matrices.data(), 0, row, size, n, n, x, size, n, results.data(), 0, size, count);
                    }};
    };
    const auto manyByVectors = [&](const char* name, auto* f) {
        return Form{name, count, [=, &a](const T* x, T* y) {
                        return f(a.data(), matrix, row, size, n, n, x, object, size, n, y, object, size, count);
                    }};
    };
    const auto manyByVectorsOfLists = [&](const char* name, auto* f) {
        return Form{name, count, [=, &a](const T* x, T* y) {
                        const auto matrices = three(a.data(), n * n);
                        const auto vectors = three(x, apart);
                        const auto results = three(y, apart);
                        return f(matrices.data(), 0, row, size, n, n, vectors.data(), 0, size, n, results.data(), 0,
                                 size, count);
                    }};
    };
    const Form forms[] = {
        one("mv", ofType<T>(kormMul_mv_32f, kormMul_mv_64f)),
        one("tv", ofType<T>(kormMul_tv_32f, kormMul_tv_64f)),
        byVectors("mva", ofType<T>(kormMul_mva_32f, kormMul_mva_64f)),
        byVectors("tva", ofType<T>(kormMul_tva_32f, kormMul_tva_64f)),
        byVectorsOfLists("mva_L", ofType<T>(kormMul_mva_32f_L, kormMul_mva_64f_L)),
        byVectorsOfLists("tva_L", ofType<T>(kormMul_tva_32f_L, kormMul_tva_64f_L)),
        manyByOne("mav", ofType<T>(kormMul_mav_32f, kormMul_mav_64f)),
        manyByOne("tav", ofType<T>(kormMul_tav_32f, kormMul_tav_64f)),
        manyByOneOfLists("mav_L", ofType<T>(kormMul_mav_32f_L, kormMul_mav_64f_L)),
        manyByOneOfLists("tav_L", ofType<T>(kormMul_tav_32f_L, kormMul_tav_64f_L)),
        manyByVectors("mava", ofType<T>(kormMul_mava_32f, kormMul_mava_64f)),
        manyByVectors("tava", ofType<T>(kormMul_tava_32f, kormMul_tava_64f)),
        manyByVectorsOfLists("mava_L", ofType<T>(kormMul_mava_32f_L, kormMul_mava_64f_L)),
        manyByVectorsOfLists("tava_L", ofType<T>(kormMul_tava_32f_L, kormMul_tava_64f_L)),
    };
    for (const Form& form : forms) {
        std::vector<T> elsewhere(numbersOfVectors.size());
        ASSERT_EQ(form.multiply(numbersOfVectors.data() + margin, elsewhere.data() + margin), korStatusOk);
        for (std::ptrdiff_t shift = -margin; shift <= margin; ++shift) {
            auto memory = numbersOfVectors;
            T* const x = memory.data() + margin;
            ASSERT_EQ(form.multiply(x, x + shift), korStatusOk);
            for (std::int32_t k = 0; k < form.results; ++k)
                EXPECT_EQ(std::memcmp(x + shift + k * apart, elsewhere.data() + margin + k * apart,
                                      static_cast<std::size_t>(row)),
                          0)
                    << form.name << ", " << 8 * size << " bits, order " << n << ", result " << k << ", " << shift
                    << " elements behind its vector";
        }
    }
}

// No promise to callers either, as above.
TEST(ProductExamples, SmallSquaresTimesVectorsUnderTheirResults) {
    for (const std::int32_t n : {3, 4, 5, 6}) {
        expectVectorsReadWhole<float>(n);
        expectVectorsReadWhole<double>(n);
    }
}

TEST(ProductExamples, InnerLengthOfOne) {
    const std::vector<double> a{2, -3, 0.5}, b{-0.0, 4};
    std::vector<double> c(6, 9);
    ASSERT_EQ(kormMul_mm_64f(a.data(), f64, f64, 1, 3, b.data(), 2 * f64, f64, 2, 1, c.data(), 2 * f64, f64),
              korStatusOk);
    const double expected[] = {0, 8, 0, -12, 0, 2};
    for (std::size_t at = 0; at < 6; ++at) {
        EXPECT_EQ(c[at], expected[at]);
        // 0 + -0 is +0.
        if (at % 2 == 0) {
            EXPECT_FALSE(std::signbit(c[at]));
        }
    }
}

// --- Arrays of small shapes -----------------------------------------------------------------------

template <class T>
constexpr std::int32_t sizeOf = static_cast<std::int32_t>(sizeof(T));

template <class T, class F32, class F64>
auto pick(F32 f32Form, F64 f64Form) {
    if constexpr (sizeof(T) == 4) return f32Form;
    else return f64Form;
}

template <class T>
struct SmallShape {
    std::int32_t m, k, n, count;
    std::vector<T> a = numbers<T>(static_cast<std::size_t>(m * k * count), 7);
    std::vector<T> b = numbers<T>(static_cast<std::size_t>(k * n * count), 8);
    std::vector<T> c = std::vector<T>(static_cast<std::size_t>(m * n * count));

    // One after the other, each by the kernel for one product.
    std::vector<T> oneByOne() const {
        const auto product = pick<T>(kormMul_mm_32f, kormMul_mm_64f);
        std::vector<T> result(c.size());
        for (std::int32_t at = 0; at < count; ++at)
            EXPECT_EQ(product(&a[static_cast<std::size_t>(at * m * k)], k * sizeOf<T>, sizeOf<T>, k, m,
                              &b[static_cast<std::size_t>(at * k * n)], n * sizeOf<T>, sizeOf<T>, n, k,
                              &result[static_cast<std::size_t>(at * m * n)], n * sizeOf<T>, sizeOf<T>),
                      korStatusOk);
        return result;
    }
    // In order of k, as tables and other strides have it. No product is a zero, so that it is all one where sums start.
    std::vector<T> inTurn() const {
        std::vector<T> result(c.size());
        for (std::int32_t at = 0; at < count; ++at)
            for (std::int32_t i = 0; i < m; ++i)
                for (std::int32_t j = 0; j < n; ++j) {
                    const auto product = [&](std::int32_t l) {
                        return a[static_cast<std::size_t>((at * m + i) * k + l)] *
                               b[static_cast<std::size_t>((at * k + l) * n + j)];
                    };
                    T sum = product(0);
                    for (std::int32_t l = 1; l < k; ++l) sum += product(l);
                    result[static_cast<std::size_t>((at * m + i) * n + j)] = sum;
                }
        return result;
    }
};

template <class T>
void expectBits(const std::vector<T>& found, const std::vector<T>& expected, const SmallShape<T>& shape,
                const char* what) {
    EXPECT_EQ(std::memcmp(found.data(), expected.data(), found.size() * sizeof(T)), 0)
        << what << ": " << shape.count << " of " << shape.m << " by " << shape.k << " by " << shape.n;
}

// Calls f with the shapes up to 9 cubed, in arrays that end within a group of objects and that are several groups.
template <class T, class F>
void forSmallShapes(const F& f) {
    for (std::int32_t m = 1; m <= 9; ++m)
        for (std::int32_t k = 1; k <= 9; ++k)
            for (std::int32_t n = 1; n <= 9; ++n)
                for (const std::int32_t count : {1, 3, 6, 67}) f(SmallShape<T>{m, k, n, count});
}

template <class T>
void expectArraysLikeSingles() {
    forSmallShapes<T>([](SmallShape<T> shape) {
        const auto& [m, k, n, count, a, b, c] = shape;
        ASSERT_EQ(
            (pick<T>(kormMul_mama_32f, kormMul_mama_64f)(
                a.data(), m * k * sizeOf<T>, k * sizeOf<T>, sizeOf<T>, k, m, b.data(), k * n * sizeOf<T>, n * sizeOf<T>,
                sizeOf<T>, n, k, shape.c.data(), m * n * sizeOf<T>, n * sizeOf<T>, sizeOf<T>, count)),
            korStatusOk);
        expectBits(shape.c, shape.oneByOne(), shape, "packed");
    });
}

TEST(ProductArrays, OfSmallShapesHaveTheBitsOfSingleProducts) {
    expectArraysLikeSingles<float>();
    expectArraysLikeSingles<double>();
}

// One operand for all objects gives what copies of it give, each with its object. Nothing is written around the result.
template <class T>
void expectSharedLikeCopies() {
    forSmallShapes<T>([](SmallShape<T> shape) {
        const std::int32_t m = shape.m, k = shape.k, n = shape.n, count = shape.count;
        const std::vector<T>&a = shape.a, &b = shape.b, &c = shape.c;
        constexpr std::size_t margin = 8;
        const auto within = [&](const std::vector<T>& expected, const char* what, auto call) {
            const std::vector<T> around = numbers<T>(c.size() + 2 * margin, 10);
            std::vector<T> found = around, all = around;
            ASSERT_EQ(call(found.data() + margin), korStatusOk);
            std::copy(expected.begin(), expected.end(), all.begin() + margin);
            expectBits(found, all, shape, what);
        };
        SmallShape<T> copies{m, k, n, count};
        for (std::size_t at = 0; at < b.size(); ++at) copies.b[at] = b[at % static_cast<std::size_t>(k * n)];
        within(copies.oneByOne(), "one right operand", [&](T* result) {
            return pick<T>(kormMul_mam_32f, kormMul_mam_64f)(a.data(), m * k * sizeOf<T>, k * sizeOf<T>, sizeOf<T>, k,
                                                             m, b.data(), n * sizeOf<T>, sizeOf<T>, n, k, result,
                                                             m * n * sizeOf<T>, n * sizeOf<T>, sizeOf<T>, count);
        });
        copies.b = b;
        for (std::size_t at = 0; at < a.size(); ++at) copies.a[at] = a[at % static_cast<std::size_t>(m * k)];
        within(copies.oneByOne(), "one left operand", [&](T* result) {
            return pick<T>(kormMul_mma_32f, kormMul_mma_64f)(a.data(), k * sizeOf<T>, sizeOf<T>, k, m, b.data(),
                                                             k * n * sizeOf<T>, n * sizeOf<T>, sizeOf<T>, n, k, result,
                                                             m * n * sizeOf<T>, n * sizeOf<T>, sizeOf<T>, count);
        });
    });
}

TEST(ProductArrays, OfOneOperandForAllHaveTheBitsOfCopies) {
    expectSharedLikeCopies<float>();
    expectSharedLikeCopies<double>();
}

// Arrays of vectors, in sizes whose sums are those of single products.
template <class T>
void expectVectorsLikeSingles() {
    const auto single = pick<T>(kormMul_mv_32f, kormMul_mv_64f);
    for (std::int32_t m = 1; m <= 13; ++m)
        for (std::int32_t k = 1; k <= 13; ++k)
            for (const std::int32_t count : {1, 3, 6, 67}) {
                if (m == k && m >= 4 && m <= 6) continue;
                const SmallShape<T> shape{m, k, 1, count};
                const std::int32_t row = k * sizeOf<T>;
                for (const bool manyMatrices : {true, false})
                    for (const bool manyVectors : {true, false}) {
                        if (!manyMatrices && !manyVectors) continue;
                        std::vector<T> expected(shape.c.size()), found(shape.c.size());
                        for (std::int32_t at = 0; at < count; ++at) {
                            const T* const a = shape.a.data() + (manyMatrices ? at * m * k : 0);
                            const T* const x = shape.b.data() + (manyVectors ? at * k : 0);
                            ASSERT_EQ(
                                single(a, row, sizeOf<T>, k, m, x, sizeOf<T>, k, expected.data() + at * m, sizeOf<T>),
                                korStatusOk);
                        }
                        const T *const a = shape.a.data(), *const x = shape.b.data();
                        T* const y = found.data();
                        ASSERT_EQ(!manyMatrices ? pick<T>(kormMul_mva_32f, kormMul_mva_64f)(
                                                      a, row, sizeOf<T>, k, m, x, row, sizeOf<T>, k, y, m * sizeOf<T>,
                                                      sizeOf<T>, count)
                                  : !manyVectors ? pick<T>(kormMul_mav_32f, kormMul_mav_64f)(
                                                       a, m * row, row, sizeOf<T>, k, m, x, sizeOf<T>, k, y,
                                                       m * sizeOf<T>, sizeOf<T>, count)
                                                 : pick<T>(kormMul_mava_32f, kormMul_mava_64f)(
                                                       a, m * row, row, sizeOf<T>, k, m, x, row, sizeOf<T>, k, y,
                                                       m * sizeOf<T>, sizeOf<T>, count),
                                  korStatusOk);
                        expectBits(found, expected, shape, manyMatrices && manyVectors ? "mava" : "mav or mva");
                    }
            }
}

TEST(ProductArrays, OfVectorsHaveTheBitsOfSingleProducts) {
    expectVectorsLikeSingles<float>();
    expectVectorsLikeSingles<double>();
}

// Objects by columns: each operand is packed as its transpose.
template <class T>
std::vector<T> byColumns(const std::vector<T>& rows, std::int32_t height, std::int32_t width) {
    std::vector<T> result(rows.size());
    const auto size = static_cast<std::size_t>(height * width);
    for (std::size_t at = 0; at < rows.size(); ++at) {
        const std::size_t object = at / size, i = at % size / static_cast<std::size_t>(width),
                          j = at % static_cast<std::size_t>(width);
        result[object * size + j * static_cast<std::size_t>(height) + i] = rows[at];
    }
    return result;
}

template <class T>
void expectColumnsLikeRows() {
    forSmallShapes<T>([](SmallShape<T> shape) {
        const auto& [m, k, n, count, a, b, c] = shape;
        const auto left = byColumns(a, m, k), right = byColumns(b, k, n);
        ASSERT_EQ(
            (pick<T>(kormMul_mama_32f, kormMul_mama_64f)(
                left.data(), m * k * sizeOf<T>, sizeOf<T>, m * sizeOf<T>, k, m, right.data(), k * n * sizeOf<T>,
                sizeOf<T>, k * sizeOf<T>, n, k, shape.c.data(), m * n * sizeOf<T>, sizeOf<T>, m * sizeOf<T>, count)),
            korStatusOk);
        expectBits(shape.c, byColumns(shape.inTurn(), m, n), shape, "by columns");
    });
}

TEST(ProductArrays, OfObjectsByColumnsAddInTurn) {
    expectColumnsLikeRows<float>();
    expectColumnsLikeRows<double>();
}

// Tables that lead to packed objects, and the same but for one entry that leads elsewhere.
template <class T>
void expectTablesInTurn(bool packed) {
    forSmallShapes<T>([packed](SmallShape<T> shape) {
        const auto& [m, k, n, count, a, b, c] = shape;
        auto moved = numbers<T>(static_cast<std::size_t>(m * k * count), 9);
        const auto entries = [](auto* origin, std::int32_t number) {
            std::vector<decltype(origin)> table;
            for (std::int32_t at = 0; at < number; ++at) table.push_back(origin + at);
            return table;
        };
        auto left = entries(a.data(), m * k);
        const auto right = entries(b.data(), k * n);
        const auto result = entries(shape.c.data(), m * n);
        if (!packed) {
            const std::int32_t last = m * k - 1;
            for (std::int32_t at = 0; at < count; ++at)
                moved[static_cast<std::size_t>(at * m * k)] = a[static_cast<std::size_t>(at * m * k + last)];
            left.back() = moved.data();
        }
        ASSERT_EQ((pick<T>(kormMul_mama_32f_P, kormMul_mama_64f_P)(left.data(), 0, m * k * sizeOf<T>, k, m,
                                                                   right.data(), 0, k * n * sizeOf<T>, n, k,
                                                                   result.data(), 0, m * n * sizeOf<T>, count)),
                  korStatusOk);
        expectBits(shape.c, shape.inTurn(), shape, packed ? "table of packed objects" : "table");
    });
}

// Elements in streams: the same element of the next object follows. One array holds all streams, or gaps of any width lie
// between them.
template <class T>
void expectStreamsInTurn(bool apart) {
    forSmallShapes<T>([apart](SmallShape<T> shape) {
        const auto& [m, k, n, count, a, b, c] = shape;
        const auto streams = [&, objects = count](const std::vector<T>& packed, std::int32_t elements) {
            std::vector<T> result(static_cast<std::size_t>(objects * elements + elements * elements));
            for (std::int32_t e = 0; e < elements; ++e)
                for (std::int32_t at = 0; at < objects; ++at)
                    result[static_cast<std::size_t>(e * objects + (apart ? e * (e - 1) / 2 : 0) + at)] =
                        packed[static_cast<std::size_t>(at * elements + e)];
            return result;
        };
        const auto entries = [&, objects = count](auto* origin, std::int32_t elements) {
            std::vector<decltype(origin)> table;
            for (std::int32_t e = 0; e < elements; ++e)
                table.push_back(origin + e * objects + (apart ? e * (e - 1) / 2 : 0));
            return table;
        };
        const std::vector<T> left = streams(a, m * k), right = streams(b, k * n);
        std::vector<T> result = streams(shape.c, m * n);
        ASSERT_EQ((pick<T>(kormMul_mama_32f_P, kormMul_mama_64f_P)(
                      entries(left.data(), m * k).data(), 0, sizeOf<T>, k, m, entries(right.data(), k * n).data(), 0,
                      sizeOf<T>, n, k, entries(result.data(), m * n).data(), 0, sizeOf<T>, count)),
                  korStatusOk);
        shape.c = shape.inTurn();
        EXPECT_EQ(std::memcmp(result.data(), streams(shape.c, m * n).data(), result.size() * sizeof(T)), 0)
            << "streams: " << count << " of " << m << " by " << k << " by " << n;
    });
}

TEST(ProductArrays, OfStreamsAddInTurn) {
    for (const bool apart : {true, false}) {
        expectStreamsInTurn<float>(apart);
        expectStreamsInTurn<double>(apart);
    }
}

TEST(ProductArrays, OfTablesAddInTurn) {
    for (const bool packed : {true, false}) {
        expectTablesInTurn<float>(packed);
        expectTablesInTurn<double>(packed);
    }
}

}  // namespace
}  // namespace kormtest
