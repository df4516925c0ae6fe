// Worked examples of combinations and reductions, written out without the tests' model.
#include <gtest/gtest.h>
#include <korm.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "support/numbers.h"

namespace kormtest {
namespace {

constexpr std::int32_t f32 = 4, f64 = 8;

// Eight partial sums behind `ahead` products that open the first of them.
float alignedDot(const std::vector<float>& a, const std::vector<float>& b, std::size_t ahead) {
    float l[8] = {};
    std::size_t k = 0;
    for (; k < ahead; ++k) l[0] += a[k] * b[k];
    for (; k + 8 <= a.size(); k += 8)
        for (std::size_t c = 0; c < 8; ++c) l[c] += a[k + c] * b[k + c];
    float sum = ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
    for (; k < a.size(); ++k) sum += a[k] * b[k];
    return sum;
}

TEST(VectorExamples, TheAddressOfTheSecondVectorDecidesOverTheSum) {
    bool differs = false;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto a = numbers<float>(100, seed), b = numbers<float>(100, seed + 100);
        alignas(16) std::byte room[100 * 4 + 32];
        for (std::size_t shift = 0; shift < 16; ++shift) {
            std::memcpy(room + shift, b.data(), 400);
            float result = 0, expected = 0;
            ASSERT_EQ(
                kormDotProduct_vv_32f(a.data(), f32, reinterpret_cast<const float*>(room + shift), f32, &result, 100),
                korStatusOk);
            if (shift % 4 != 0)
                for (std::size_t k = 0; k < 100; ++k) expected += a[k] * b[k];
            else expected = alignedDot(a, b, (16 - shift) % 16 / 4);
            EXPECT_TRUE(sameBits(result, expected)) << "address modulo 16: " << shift;
            differs = differs || !sameBits(expected, alignedDot(a, b, 0));
        }
    }
    EXPECT_TRUE(differs);
}

TEST(VectorExamples, FourElementsAddInFourOrders) {
    int different = 0;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto a = numbers<double>(8, seed), b = numbers<double>(8, seed + 100);
        double p[4], plain = 0, strided = 0, table = 0;
        const double *x[4], *y[4];
        for (std::size_t k = 0; k < 4; ++k) {
            p[k] = a[2 * k] * b[2 * k];
            x[k] = &a[2 * k];
            y[k] = &b[2 * k];
        }
        std::vector<double> packedA, packedB;
        for (std::size_t k = 0; k < 4; ++k) {
            packedA.push_back(a[2 * k]);
            packedB.push_back(b[2 * k]);
        }
        ASSERT_EQ(kormDotProduct_vv_64f(packedA.data(), f64, packedB.data(), f64, &plain, 4), korStatusOk);
        ASSERT_EQ(kormDotProduct_vv_64f(a.data(), 2 * f64, b.data(), 2 * f64, &strided, 4), korStatusOk);
        ASSERT_EQ(kormDotProduct_vv_64f_P(x, 0, y, 0, &table, 4), korStatusOk);
        EXPECT_TRUE(sameBits(plain, (p[0] + p[2]) + (p[1] + p[3])));
        EXPECT_TRUE(sameBits(strided, ((p[1] + p[3]) + p[2]) + p[0]));
        EXPECT_TRUE(sameBits(table, ((p[0] + p[1]) + p[2]) + p[3]));
        different += sameBits(plain, strided) || sameBits(strided, table) || sameBits(plain, table) ? 0 : 1;
    }
    EXPECT_GT(different, 0);
}

TEST(VectorExamples, NormsAreRootsOfSquaresInPairs) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto a = numbers<float>(5, seed);
        float result = 0, q[5];
        for (std::size_t k = 0; k < 5; ++k) q[k] = a[k] * a[k];
        ASSERT_EQ(kormL2Norm_v_32f(a.data(), f32, &result, 5), korStatusOk);
        EXPECT_TRUE(sameBits(result, std::sqrt(((q[0] + q[1]) + (q[2] + q[3])) + q[4])));
    }
    const std::vector<float> huge(4, 1e30F);
    float result = 0;
    ASSERT_EQ(kormL2Norm_v_32f(huge.data(), f32, &result, 4), korStatusOk);
    EXPECT_EQ(result, std::numeric_limits<float>::infinity());
}

TEST(VectorExamples, ScaledSumsInPlaceAndOverlapping) {
    for (const std::int32_t length : {3, 7, 50}) {
        const auto count = static_cast<std::size_t>(length);
        const auto x = numbers<float>(count, 1);
        auto y = numbers<float>(count, 2);
        const auto before = y;
        ASSERT_EQ(kormSaxpy_vv_32f(x.data(), f32, 0.75F, y.data(), f32, y.data(), f32, length), korStatusOk);
        for (std::size_t k = 0; k < count; ++k) {
            const float product = x[k] * 0.75F;
            EXPECT_TRUE(sameBits(y[k], product + before[k]));
        }
    }
    // Each element is made of the one before: powers of two.
    std::vector<float> chain(60, 1.0F);
    ASSERT_EQ(kormLComb_vv_32f(chain.data(), f32, 1.0F, chain.data(), f32, 1.0F, chain.data() + 1, f32, 59),
              korStatusOk);
    for (std::size_t k = 0; k < chain.size(); ++k) EXPECT_EQ(chain[k], std::ldexp(1.0F, static_cast<int>(k)));
}

TEST(VectorExamples, CrossProductsOfTheAxes) {
    const float axes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (std::size_t i = 0; i < 3; ++i) {
        float result[3];
        ASSERT_EQ(kormCrossProduct_vv_32f(axes[i], f32, axes[(i + 1) % 3], f32, result, f32), korStatusOk);
        for (std::size_t j = 0; j < 3; ++j) EXPECT_EQ(result[j], axes[(i + 2) % 3][j]);
    }
    // No length to check; a stride of 0 comes before a count of 0 with one single second vector, and after it otherwise.
    float result[3];
    EXPECT_EQ(kormCrossProduct_vv_32f(axes[0], 0, axes[1], f32, result, f32), korStatusBadStride);
    EXPECT_EQ(kormCrossProduct_vav_32f(axes[0], 12, 0, axes[1], f32, result, 12, f32, 0), korStatusBadStride);
    EXPECT_EQ(kormCrossProduct_vva_32f(axes[0], 0, axes[1], 12, f32, result, 12, f32, 0), korStatusBadCount);
}

TEST(NormExamples, TracesByStride) {
    int different = 0;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        const auto d = numbers<float>(4, seed);
        std::vector<float> packed(16), wide(32);
        for (std::size_t i = 0; i < 4; ++i) packed[5 * i] = wide[10 * i] = d[i];
        float plain = 0, strided = 0;
        ASSERT_EQ(kormTrace_m_32f(packed.data(), 4 * f32, f32, 4, &plain), korStatusOk);
        ASSERT_EQ(kormTrace_m_32f(wide.data(), 8 * f32, 2 * f32, 4, &strided), korStatusOk);
        EXPECT_TRUE(sameBits(plain, ((d[0] + d[1]) + d[2]) + d[3]));
        EXPECT_TRUE(sameBits(strided, ((d[2] + d[3]) + d[1]) + d[0]));
        different += sameBits(plain, strided) ? 0 : 1;
    }
    EXPECT_GT(different, 0);
}

TEST(NormExamples, RowsThatTouchAreOneRow) {
    // 2 by 6: one run of 12, of which four are left behind a block of eight, or two rows without any block.
    bool differs = false;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        const auto a = numbers<float>(12, seed);
        float gaps[14], touching = 0, apart = 0, q[12];
        std::memcpy(gaps, a.data(), 24);
        std::memcpy(gaps + 7, a.data() + 6, 24);
        for (std::size_t e = 0; e < 12; ++e) q[e] = a[e] * a[e];
        ASSERT_EQ(kormFrobNorm_m_32f(a.data(), 6 * f32, f32, 6, 2, &touching), korStatusOk);
        ASSERT_EQ(kormFrobNorm_m_32f(gaps, 7 * f32, f32, 6, 2, &apart), korStatusOk);
        const float s0 = (((q[0] + q[4]) + q[8]) + q[9]) + q[10] + q[11];
        EXPECT_TRUE(sameBits(touching, std::sqrt((s0 + (q[2] + q[6])) + ((q[1] + q[5]) + (q[3] + q[7])))));
        float sum = 0;
        for (const float square : q) sum += square;
        EXPECT_TRUE(sameBits(apart, std::sqrt(sum)));
        differs = differs || !sameBits(touching, apart);
    }
    EXPECT_TRUE(differs);
}

TEST(NormExamples, StridesHideOffsets) {
    const float a[4] = {1, 2, 3, 4};
    const float* list[1] = {a};
    float result = 7;
    EXPECT_EQ(kormFrobNorm_ma_32f_L(list, 2, 3, f32, 2, 2, &result, 1), korStatusBadStride);
    EXPECT_EQ(kormFrobNorm_ma_32f_L(list, 2, 2 * f32, f32, 2, 2, &result, 1), korStatusBadOffset);
    EXPECT_EQ(result, 7.0F);
}

}  // namespace
}  // namespace kormtest
