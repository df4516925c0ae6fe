// The rules that surprise, as worked examples: nothing here uses the references.
#include <gtest/gtest.h>
#include <korm.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace kormtest {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float untouched = 77;

// Equal, and zeros of one sign.
void expectSame(float found, float expected, const char* what) {
    EXPECT_EQ(found, expected) << what;
    EXPECT_EQ(std::signbit(found), std::signbit(expected)) << what;
}
#define EXPECT_SAME(found, expected) expectSame(found, expected, #found)

using Matrix = std::vector<float>;
const Matrix identityMatrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

Matrix diagonal(float a, float b, float c, float d) { return {a, 0, 0, 0, 0, b, 0, 0, 0, 0, c, 0, 0, 0, 0, d}; }

void expectMatrix(const Matrix& found, const Matrix& expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i], expected[i]) << "element " << i;
        EXPECT_EQ(std::signbit(found[i]), std::signbit(expected[i])) << "element " << i;
    }
}

// --- Vectors ---

TEST(GeometryVectors, LengthOverflowsBeforeTheRoot) {
    float result = 0;
    const float three[] = {3, 4}, huge[] = {3e38F, 3e38F}, tiny[] = {1e-30F, 1e-30F};
    EXPECT_EQ(kormLen_v2_32f(three, &result), korStatusOk);
    EXPECT_EQ(result, 5);
    EXPECT_EQ(kormLen_v2_32f(huge, &result), korStatusOk);
    EXPECT_EQ(result, infinity);
    EXPECT_EQ(kormLen_v2_32f(tiny, &result), korStatusOk);
    EXPECT_SAME(result, 0);
}

TEST(GeometryVectors, NormalizingNothingGivesNans) {
    const float zero[4] = {0, -0.0F, 0, 0};
    float result[4] = {1, 1, 1, untouched};
    EXPECT_EQ(kormNormalize_v3_32f(zero, result), korStatusOk);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(result[i]));
    EXPECT_EQ(result[3], untouched);
    EXPECT_EQ(kormNormalize_v2_32f(zero, result), korStatusOk);
    EXPECT_EQ(kormNormalize_v4_32f(zero, result), korStatusOk);
    EXPECT_TRUE(std::isnan(result[3]));
}

TEST(GeometryVectors, NormalizingInfinityGivesZerosAndNans) {
    const float source[] = {1, infinity, -2};
    float result[3];
    EXPECT_EQ(kormNormalize_v3_32f(source, result), korStatusOk);
    EXPECT_SAME(result[0], 0.0F);
    EXPECT_TRUE(std::isnan(result[1]));
    EXPECT_SAME(result[2], -0.0F);
}

TEST(GeometryVectors, NormalizeDividesAndWorksInPlace) {
    // 1/7 rounded, times 3, isn't 3/7 rounded.
    float v[] = {2, 3, 6};
    EXPECT_EQ(kormNormalize_v3_32f(v, v), korStatusOk);
    EXPECT_EQ(v[0], 2.0F / 7.0F);
    EXPECT_EQ(v[1], 3.0F / 7.0F);
    EXPECT_EQ(v[2], 6.0F / 7.0F);
}

TEST(GeometryVectors, ComparisonsWithNansTakeTheSecond) {
    const float a[] = {nan, 1}, b[] = {5, nan};
    float result[2];
    EXPECT_EQ(kormMin_v2_32f(a, b, result), korStatusOk);
    EXPECT_EQ(result[0], 5);
    EXPECT_TRUE(std::isnan(result[1]));
    EXPECT_EQ(kormMax_v2_32f(a, b, result), korStatusOk);
    EXPECT_EQ(result[0], 5);
    EXPECT_TRUE(std::isnan(result[1]));
}

TEST(GeometryVectors, ComparisonsOfZerosTakeTheSecond) {
    const float plus[] = {0, -0.0F, 0}, minus[] = {-0.0F, 0, 0};
    float result[3];
    kormMin_v3_32f(plus, minus, result);
    EXPECT_SAME(result[0], -0.0F);
    EXPECT_SAME(result[1], 0.0F);
    kormMax_v3_32f(plus, minus, result);
    EXPECT_SAME(result[0], -0.0F);
    EXPECT_SAME(result[1], 0.0F);
}

TEST(GeometryVectors, CrossOfTwoIsOneNumber) {
    const float a[] = {1, 2}, b[] = {3, 4};
    float result[2] = {0, untouched};
    EXPECT_EQ(kormCrossProduct_v2_32f(a, b, result), korStatusOk);
    EXPECT_EQ(result[0], -2);
    EXPECT_EQ(result[1], untouched);
}

TEST(GeometryVectors, CrossOfFourSubtractsFromZero) {
    const float e0[] = {1, 0, 0, 0}, e1[] = {0, 1, 0, 0}, e2[] = {0, 0, 1, 0}, e3[] = {0, 0, 0, 1};
    const float zero[] = {0, 0, 0, 0};
    float result[4];
    kormCrossProduct_v4_32f(e0, e1, e2, result);
    EXPECT_EQ(result[0], 0);
    EXPECT_EQ(result[1], 0);
    EXPECT_EQ(result[2], 0);
    EXPECT_EQ(result[3], -1);
    kormCrossProduct_v4_32f(e1, e2, e3, result);
    EXPECT_EQ(result[0], 1);
    for (int i = 1; i < 4; ++i) EXPECT_EQ(result[i], 0);
    kormCrossProduct_v4_32f(zero, zero, zero, result);
    EXPECT_SAME(result[1], 0.0F);
    EXPECT_SAME(result[3], 0.0F);
}

TEST(GeometryVectors, SumsRunFromTheFirstElement) {
    // (1e8 + 1) - 1e8 loses the 1, any other order keeps it.
    const float a[] = {1e8F, 1, -1e8F, 0}, ones[] = {1, 1, 1, 1};
    float result;
    kormDotProduct_v3_32f(a, ones, &result);
    EXPECT_EQ(result, 0);
    const float b[] = {1e8F, -1e8F, 1, 1};
    kormDotProduct_v4_32f(b, ones, &result);
    EXPECT_EQ(result, 2);
}

// --- Constructors ---

TEST(GeometryConstructors, AngleZeroHasNoNegativeZeros) {
    Matrix m(16, untouched);
    for (const auto rotation : {kormRotationX_m4_32f, kormRotationY_m4_32f, kormRotationZ_m4_32f}) {
        EXPECT_EQ(rotation(0, m.data()), korStatusOk);
        expectMatrix(m, identityMatrix);
        // The sine of -0 is -0; 0 - (-0) is +0.
        rotation(-0.0F, m.data());
        const int negated = rotation == kormRotationX_m4_32f ? 9 : rotation == kormRotationY_m4_32f ? 2 : 4;
        EXPECT_SAME(m[static_cast<std::size_t>(negated)], 0.0F);
    }
    EXPECT_EQ(kormRotationYawPitchRoll_m4_32f(0, 0, 0, m.data()), korStatusOk);
    for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(m[i], identityMatrix[i]);
    EXPECT_SAME(m[9], 0.0F);
}

TEST(GeometryConstructors, QuarterTurnsTurnTheRightWay) {
    // Row vectors: x goes to y about z, y to z about x, z to x about y.
    const float quarter = 1.57079637F;
    const struct {
        std::int32_t (*turn)(float, float*);
        float from[3], to[3];
    } turns[] = {{kormRotationZ_m4_32f, {1, 0, 0}, {0, 1, 0}},
                 {kormRotationX_m4_32f, {0, 1, 0}, {0, 0, 1}},
                 {kormRotationY_m4_32f, {0, 0, 1}, {1, 0, 0}}};
    for (const auto& one : turns) {
        float m[16], found[3];
        one.turn(quarter, m);
        kormAffineTransformNormal_m4v3_32f(m, one.from, found);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(found[i], one.to[i], 1e-6);
    }
}

TEST(GeometryConstructors, RollThenPitchThenYaw) {
    float z[16], x[16], y[16], zx[16], zxy[16], m[16];
    kormRotationZ_m4_32f(0.3F, z);
    kormRotationX_m4_32f(-0.7F, x);
    kormRotationY_m4_32f(1.1F, y);
    kormMul_mm4x4_32f(z, x, zx);
    kormMul_mm4x4_32f(zx, y, zxy);
    kormRotationYawPitchRoll_m4_32f(1.1F, -0.7F, 0.3F, m);
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(m[i], zxy[i], 3e-7) << i;
}

TEST(GeometryConstructors, AxisOfAnyLength) {
    const float one[] = {0, 0, 1}, two[] = {0, 0, 2}, zero[] = {0, 0, 0};
    float a[16], b[16], z[16];
    kormRotationAxis_v3m4_32f(one, 0.5F, a);
    kormRotationAxis_v3m4_32f(two, 0.5F, b);
    kormRotationZ_m4_32f(0.5F, z);
    for (int i = 0; i < 16; ++i) {
        EXPECT_NEAR(a[i], b[i], 1e-7) << i;
        EXPECT_NEAR(a[i], z[i], 1e-7) << i;
    }
    EXPECT_EQ(kormRotationAxis_v3m4_32f(zero, 0.5F, a), korStatusOk);
    for (const int i : {0, 1, 2, 4, 5, 6, 8, 9, 10}) EXPECT_TRUE(std::isnan(a[i])) << i;
    for (const int i : {3, 7, 11, 12, 13, 14}) EXPECT_SAME(a[i], 0.0F);
    EXPECT_EQ(a[15], 1);
}

TEST(GeometryConstructors, TheViewerSeesForward) {
    const float eye[] = {1, 2, 3}, at[] = {1, 2, 10}, up[] = {0, 1, 0};
    float m[16], found[4];
    EXPECT_EQ(kormLookAtLH_m4_32f(eye, at, up, m), korStatusOk);
    kormAffineTransform_m4v3_32f(m, at, found);
    // Left-handed: what is looked at lies ahead, at positive z; x runs to the right.
    EXPECT_EQ(found[0], 0);
    EXPECT_EQ(found[1], 0);
    EXPECT_EQ(found[2], 7);
    EXPECT_EQ(found[3], 1);
    const float right[] = {2, 2, 10};
    kormAffineTransform_m4v3_32f(m, right, found);
    EXPECT_EQ(found[0], 1);
    EXPECT_EQ(kormLookAtRH_m4_32f(eye, at, up, m), korStatusOk);
    kormAffineTransform_m4v3_32f(m, at, found);
    EXPECT_EQ(found[2], -7);
    kormAffineTransform_m4v3_32f(m, right, found);
    EXPECT_EQ(found[0], -1);
}

TEST(GeometryConstructors, NoViewGivesNans) {
    const float eye[] = {1, 2, 3}, above[] = {1, 5, 3}, up[] = {0, 1, 0};
    float m[16];
    EXPECT_EQ(kormLookAtLH_m4_32f(eye, eye, up, m), korStatusOk);
    for (const int i : {0, 1, 2, 12, 13, 14}) EXPECT_TRUE(std::isnan(m[i])) << i;
    EXPECT_EQ(kormLookAtRH_m4_32f(eye, above, up, m), korStatusOk);
    EXPECT_TRUE(std::isnan(m[0]));
    EXPECT_EQ(m[6], -1);
    EXPECT_EQ(m[15], 1);
}

TEST(GeometryConstructors, DepthRunsFromZeroToOne) {
    const float n = 0.5F, f = 8;
    float m[16], found[4];
    const auto depth = [&](float z) {
        const float point[] = {0, 0, z};
        kormAffineTransform_m4v3_32f(m, point, found);
        return found[2] / found[3];
    };
    for (int form = 0; form < 3; ++form) {
        if (form == 0) kormPerspectiveLH_m4_32f(2, 1, n, f, m);
        if (form == 1) kormPerspectiveFovLH_m4_32f(1, 2, n, f, m);
        if (form == 2) kormPerspectiveOffCenterLH_m4_32f(-1, 3, -2, 1, n, f, m);
        EXPECT_NEAR(depth(n), 0, 1e-6) << form;
        EXPECT_NEAR(depth(f), 1, 1e-6) << form;
        EXPECT_EQ(found[3], f);
        if (form == 0) kormPerspectiveRH_m4_32f(2, 1, n, f, m);
        if (form == 1) kormPerspectiveFovRH_m4_32f(1, 2, n, f, m);
        if (form == 2) kormPerspectiveOffCenterRH_m4_32f(-1, 3, -2, 1, n, f, m);
        EXPECT_NEAR(depth(-n), 0, 1e-6) << form;
        EXPECT_EQ(found[3], n);
        EXPECT_NEAR(depth(-f), 1, 1e-6) << form;
    }
    kormOrthoLH_m4_32f(2, 1, n, f, m);
    EXPECT_NEAR(depth(n), 0, 1e-6);
    EXPECT_NEAR(depth(f), 1, 1e-6);
    EXPECT_EQ(found[3], 1);
    kormOrthoRH_m4_32f(2, 1, n, f, m);
    EXPECT_NEAR(depth(-n), 0, 1e-6);
    EXPECT_NEAR(depth(-f), 1, 1e-6);
}

TEST(GeometryConstructors, BothFormsOfTheDepthTermDifferInAZero) {
    // zNear * zFar / (0 - (zFar - zNear)) against (0 - zNear * zFar) / (zFar - zNear), with a near plane of 0.
    float straight[16], fov[16];
    kormPerspectiveLH_m4_32f(2, 1, 0, 8, straight);
    kormPerspectiveFovLH_m4_32f(1, 2, 0, 8, fov);
    EXPECT_SAME(straight[14], -0.0F);
    EXPECT_SAME(fov[14], 0.0F);
    kormPerspectiveLH_m4_32f(2, 1, -0.0F, 8, straight);
    kormPerspectiveFovLH_m4_32f(1, 2, -0.0F, 8, fov);
    EXPECT_SAME(straight[14], 0.0F);
    EXPECT_SAME(fov[14], 0.0F);
    kormPerspectiveLH_m4_32f(2, 1, 1, 3, straight);
    kormPerspectiveFovLH_m4_32f(1, 2, 1, 3, fov);
    EXPECT_EQ(straight[14], -1.5F);
    EXPECT_EQ(fov[14], -1.5F);
}

TEST(GeometryConstructors, OffCenterShiftsWithTheHandedness) {
    float lh[16], rh[16];
    kormPerspectiveOffCenterLH_m4_32f(1, 3, 2, 6, 1, 2, lh);
    kormPerspectiveOffCenterRH_m4_32f(1, 3, 2, 6, 1, 2, rh);
    EXPECT_EQ(lh[8], -2);
    EXPECT_EQ(rh[8], 2);
    EXPECT_EQ(lh[9], -2);
    EXPECT_EQ(rh[9], 2);
    EXPECT_EQ(lh[11], 1);
    EXPECT_EQ(rh[11], -1);
    kormOrthoOffCenterLH_m4_32f(1, 3, 2, 6, 1, 2, lh);
    kormOrthoOffCenterRH_m4_32f(1, 3, 2, 6, 1, 2, rh);
    EXPECT_EQ(lh[12], -2);
    EXPECT_EQ(rh[12], -2);
    EXPECT_EQ(lh[14], -1);
    EXPECT_EQ(rh[14], -1);
    // A centred view: 0 / (0 - 2) is -0, 0 / 2 is +0.
    kormOrthoOffCenterLH_m4_32f(-1, 1, -1, 1, 1, 2, lh);
    EXPECT_SAME(lh[12], -0.0F);
    kormPerspectiveOffCenterRH_m4_32f(-1, 1, -1, 1, 1, 2, rh);
    EXPECT_SAME(rh[8], 0.0F);
}

TEST(GeometryConstructors, BadArgumentsGiveWhatTheDivisionGives) {
    Matrix m(16, untouched);
    EXPECT_EQ(kormOrthoLH_m4_32f(2, 1, 3, 3, m.data()), korStatusOk);
    EXPECT_EQ(m[10], infinity);
    for (const float element : m) EXPECT_NE(element, untouched);
    EXPECT_EQ(kormPerspectiveFovLH_m4_32f(0, 1, 1, 2, m.data()), korStatusOk);
    EXPECT_EQ(m[0], infinity);
    EXPECT_EQ(m[5], infinity);
    EXPECT_EQ(kormPerspectiveRH_m4_32f(0, 1, 1, 2, m.data()), korStatusOk);
    EXPECT_EQ(m[0], infinity);
}

// --- Algebra ---

TEST(GeometryAlgebra, IdentityTestLooksForOneColumn) {
    const auto test = [](const Matrix& m) {
        std::int32_t result[2] = {-5, -6};
        EXPECT_EQ(kormIsIdentity_m4_32f(m.data(), result), korStatusOk);
        EXPECT_EQ(result[1], -6);
        return result[0];
    };
    EXPECT_EQ(test(identityMatrix), 1);
    // A scale in y and z; any elements beside the first column; the first element alone decides first.
    EXPECT_EQ(test(diagonal(1, 2, 3, 1)), 1);
    EXPECT_EQ(test({1, 5, 6, 7, 0, 8, 9, 1, 0, 2, 3, 4, 0, 5, 6, 7}), 1);
    EXPECT_EQ(test(diagonal(2, 1, 1, 1)), 0);
    EXPECT_EQ(test(diagonal(nan, 1, 1, 1)), 0);
    // Column 3 alone is right.
    EXPECT_EQ(test({1, 5, 6, 0, 7, 8, 9, 0, 1, 2, 3, 0, 4, 5, 6, 1}), 1);
    EXPECT_EQ(test({1, 5, 6, 0, 7, 8, 9, 0, 1, 2, 3, 0, 4, 5, 6, 2}), 0);
    // Each column is wrong in one place, though each row is right in another.
    EXPECT_EQ(test({1, 0, 0, 9, 9, 1, 0, 0, 0, 9, 1, 0, 0, 0, 9, 1}), 0);
    // -0 equals 0; the next number to 1 doesn't equal 1.
    EXPECT_EQ(test({1, 9, 9, 9, -0.0F, 9, 9, 9, -0.0F, 9, 9, 9, -0.0F, 9, 9, 9}), 1);
    EXPECT_EQ(test({1, 9, 9, 9, FLT_TRUE_MIN, 9, 9, 9, 0, 9, 9, 9, 0, 9, 9, 9}), 0);
    EXPECT_EQ(test({1.00000012F, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}), 0);
}

TEST(GeometryAlgebra, InverseOfASmallDeterminantIsRefused) {
    Matrix inverse(16, untouched);
    float det = untouched;
    const float tiny = std::ldexp(1.0F, -60);
    EXPECT_EQ(kormInvert_m4_32f(diagonal(1e-37F, 1, 1, 1).data(), &det, inverse.data()), korStatusSingular);
    EXPECT_SAME(det, 0.0F);
    for (const float element : inverse) EXPECT_EQ(element, untouched);
    EXPECT_EQ(kormInvert_m4_32f(diagonal(-tiny, tiny, 1, 1).data(), nullptr, inverse.data()), korStatusSingular);
    for (const float element : inverse) EXPECT_EQ(element, untouched);
    // The limit itself, 2^-119, passes, of either sign; the next number below doesn't.
    EXPECT_EQ(kormInvert_m4_32f(diagonal(2 * tiny, tiny, 1, 1).data(), &det, inverse.data()), korStatusOk);
    EXPECT_EQ(det, 2 * tiny * tiny);
    EXPECT_EQ(kormInvert_m4_32f(diagonal(-2 * tiny, tiny, 1, 1).data(), &det, inverse.data()), korStatusOk);
    EXPECT_EQ(det, -2 * tiny * tiny);
    const float below = std::nextafter(2 * tiny, 0.0F);
    EXPECT_EQ(kormInvert_m4_32f(diagonal(below, tiny, 1, 1).data(), &det, inverse.data()), korStatusSingular);
    EXPECT_SAME(det, 0.0F);
    EXPECT_EQ(kormInvert_m4_32f(diagonal(0, 1, 1, 1).data(), &det, inverse.data()), korStatusSingular);
}

TEST(GeometryAlgebra, ANanDeterminantPasses) {
    Matrix inverse(16, untouched);
    float det = 0;
    EXPECT_EQ(kormInvert_m4_32f(diagonal(nan, 1, 1, 1).data(), &det, inverse.data()), korStatusOk);
    EXPECT_TRUE(std::isnan(det));
    EXPECT_TRUE(std::isnan(inverse[0]));
}

TEST(GeometryAlgebra, InverseOfAScale) {
    Matrix inverse(16);
    float det = 0;
    EXPECT_EQ(kormInvert_m4_32f(diagonal(2, 4, 8, 1).data(), &det, inverse.data()), korStatusOk);
    EXPECT_EQ(det, 64);
    // The reciprocal is approximate, twelve bits refined once.
    EXPECT_NEAR(inverse[0], 0.5, 1e-6);
    EXPECT_NEAR(inverse[5], 0.25, 1e-6);
    EXPECT_NEAR(inverse[10], 0.125, 1e-6);
    EXPECT_NEAR(inverse[15], 1, 1e-6);
}

TEST(GeometryAlgebra, ProductsInPlace) {
    const Matrix a{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const Matrix square{90, 100, 110, 120, 202, 228, 254, 280, 314, 356, 398, 440, 426, 484, 542, 600};
    Matrix m = a;
    EXPECT_EQ(kormMul_mm4x4_32f(m.data(), m.data(), m.data()), korStatusOk);
    expectMatrix(m, square);
    m = a;
    EXPECT_EQ(kormMulTranspose_m4_32f(m.data(), m.data(), m.data()), korStatusOk);
    for (std::size_t r = 0; r < 4; ++r)
        for (std::size_t c = 0; c < 4; ++c) EXPECT_EQ(m[4 * c + r], square[4 * r + c]);
    m = a;
    EXPECT_EQ(kormTranspose_m4_32f(m.data(), m.data()), korStatusOk);
    for (std::size_t r = 0; r < 4; ++r)
        for (std::size_t c = 0; c < 4; ++c) EXPECT_EQ(m[4 * c + r], a[4 * r + c]);
}

TEST(GeometryAlgebra, DeterminantGroupsItsLastLine) {
    // A last row of ones on the diagonal leaves c0*m0 - c1*m1 and c2*m2 - c3*m3.
    const Matrix m{1e8F, -1, 1, 1e8F, 1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 1, 1};
    // c0 = 1, c1 = 1, c2 = 1, c3 = 1: (1e8 + 1) + (1 - 1e8), each difference rounded to +-1e8.
    float det = untouched;
    EXPECT_EQ(kormDet_m4_32f(m.data(), &det), korStatusOk);
    EXPECT_EQ(det, 0);
}

// --- Transforms ---

TEST(GeometryTransforms, TwoElementsInFourOut) {
    const Matrix m{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const float v[] = {1, 10};
    float found[5] = {0, 0, 0, 0, untouched};
    EXPECT_EQ(kormAffineTransform_m4v2_32f(m.data(), v, found), korStatusOk);
    const float expected[] = {64, 76, 88, 100};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(found[i], expected[i]);
    EXPECT_EQ(found[4], untouched);
}

TEST(GeometryTransforms, OverlappingResultsAreWrittenInOrder) {
    // 4 elements each, 3 apart: the last element of one is overwritten by the first of the next.
    const Matrix m{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 9};
    std::vector<float> source, found(3 * 20 + 1, untouched);
    for (int i = 0; i < 60; ++i) source.push_back(static_cast<float>(i + 1));
    EXPECT_EQ(kormAffineTransform_m4v3a_32f(m.data(), source.data(), 12, found.data(), 12, 20), korStatusOk);
    for (std::size_t i = 0; i < 60; ++i) EXPECT_EQ(found[i], source[i]);
    EXPECT_EQ(found[60], 9);
}

TEST(GeometryTransforms, TheMatrixIsReadBeforeResultsLieOverIt) {
    struct Batch {
        decltype(&kormAffineTransform_m4v3a_32f) transform;
        std::int32_t inputs, outputs;
    };
    const Batch batches[] = {
        {kormAffineTransform_m4v2a_32f, 2, 4},       {kormAffineTransform_m4v3a_32f, 3, 4},
        {kormAffineTransform_m4v4a_32f, 4, 4},       {kormAffineTransformCoord_m4v2a_32f, 2, 2},
        {kormAffineTransformCoord_m4v3a_32f, 3, 3},  {kormAffineTransformNormal_m4v2a_32f, 2, 2},
        {kormAffineTransformNormal_m4v3a_32f, 3, 3},
    };
    const Matrix matrix{0.5F, 0.25F, -1, 0.125F, 2, 1, 0.75F, 0.5F, -0.5F, 3, 1, 0.25F, 1, -2, 0.5F, 2};
    // Enough for every path's rounds, and all numbers of vectors left over by them.
    constexpr std::size_t most = 19, room = 16 + 8 * most;
    std::vector<float> source;
    for (std::size_t i = 0; i < 4 * most; ++i) source.push_back(0.125F * static_cast<float>(i % 29) + 1);
    for (const Batch& batch : batches)
        for (const std::int32_t gap : {0, 4})
            for (const std::ptrdiff_t first : {0, 1, 5, 12})
                for (std::int32_t count = 1; count <= static_cast<std::int32_t>(most); ++count) {
                    const std::int32_t srcStride = 4 * batch.inputs, dstStride = 4 * batch.outputs + gap;
                    std::vector<float> found = matrix, expected = matrix;
                    found.resize(room, untouched);
                    expected.resize(room, untouched);
                    batch.transform(matrix.data(), source.data(), srcStride, expected.data() + first, dstStride, count);
                    batch.transform(found.data(), source.data(), srcStride, found.data() + first, dstStride, count);
                    EXPECT_EQ(found, expected) << "batch " << &batch - batches << ", gap " << gap << ", from element "
                                               << first << ", " << count << " vectors";
                }
}

TEST(GeometryTransforms, DivisionByZeroIsNoFailure) {
    Matrix m = identityMatrix;
    m[15] = 0;
    const float v[] = {1, -2, 0};
    float found[3];
    EXPECT_EQ(kormAffineTransformCoord_m4v3_32f(m.data(), v, found), korStatusOk);
    EXPECT_EQ(found[0], infinity);
    EXPECT_EQ(found[1], -infinity);
    EXPECT_TRUE(std::isnan(found[2]));
}

TEST(GeometryTransforms, ViewportRunsDownwards) {
    const float points[] = {-1, 1, 0, 1, -1, 1, 0, 0, 0.5F};
    const float expected[] = {0, 0, 0.25F, 640, 480, 0.75F, 320, 240, 0.5F};
    float found[9], one[3];
    const float* const e = identityMatrix.data();
    EXPECT_EQ(kormProject_m4v3a_32f(e, e, e, points, 12, 640, 480, 0.25F, 0.75F, found, 12, 3), korStatusOk);
    for (int i = 0; i < 9; ++i) EXPECT_EQ(found[i], expected[i]) << i;
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(kormProject_m4v3_32f(e, e, e, points + 3 * k, 640, 480, 0.25F, 0.75F, one), korStatusOk);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(one[i], expected[3 * k + i]);
        EXPECT_EQ(kormUnproject_m4v3_32f(e, e, e, one, 640, 480, 0.25F, 0.75F, one), korStatusOk);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(one[i], points[3 * k + i], 1e-6);
    }
}

TEST(GeometryTransforms, OnePointIsRoundedOtherwiseThanABatch) {
    // The single form goes from matrix to matrix, the batch multiplies the matrices first.
    const float eye[] = {3, 1, -4}, at[] = {0.1F, 0.2F, 0.3F}, up[] = {0, 1, 0};
    float world[16], view[16], projection[16];
    kormRotationYawPitchRoll_m4_32f(0.4F, 1.3F, -0.2F, world);
    kormLookAtLH_m4_32f(eye, at, up, view);
    kormPerspectiveFovLH_m4_32f(0.9F, 1.3F, 0.1F, 30, projection);
    int different = 0;
    for (int i = 0; i < 200; ++i) {
        const float point[] = {0.011F * static_cast<float>(i), 0.37F, -0.007F * static_cast<float>(i)};
        float one[3], batch[3];
        kormProject_m4v3_32f(projection, view, world, point, 800, 600, 0, 1, one);
        kormProject_m4v3a_32f(projection, view, world, point, 12, 800, 600, 0, 1, batch, 12, 1);
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(one[k], batch[k], 1e-3);
            if (one[k] != batch[k]) ++different;
        }
    }
    EXPECT_GT(different, 20);
}

TEST(GeometryTransforms, SingularUnprojectLeavesTheNormalisedPoint) {
    const Matrix flat = diagonal(1, 1, 0, 1);
    const float* const e = identityMatrix.data();
    const float point[] = {480, 120, 0.5F};
    float found[4] = {1, 1, 1, untouched};
    EXPECT_EQ(kormUnproject_m4v3_32f(e, flat.data(), e, point, 640, 480, 0, 2, found), korStatusSingular);
    EXPECT_EQ(found[0], 0.5F);
    EXPECT_EQ(found[1], 0.5F);
    EXPECT_EQ(found[2], 0.25F);
    EXPECT_EQ(found[3], untouched);
    // A batch finds out before it touches anything, and only if there is anything to do.
    float batch[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(kormUnproject_m4v3a_32f(e, flat.data(), e, point, 0, 640, 480, 0, 2, batch, 12, 2), korStatusSingular);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(batch[i], static_cast<float>(i + 1));
    EXPECT_EQ(kormUnproject_m4v3a_32f(e, flat.data(), e, point, 0, 640, 480, 0, 2, batch, 12, 0), korStatusOk);
    EXPECT_EQ(kormUnproject_m4v3a_32f(e, flat.data(), e, nullptr, 0, 640, 480, 0, 2, nullptr, 12, -3), korStatusOk);
}

// --- Curves ---

TEST(GeometryCurves, EndsOfALine) {
    const float a[] = {1, 2}, b[] = {3, 1e9F};
    float found[2];
    kormInterpolationLinear_v2_32f(a, b, 0, found);
    EXPECT_EQ(found[0], 1);
    EXPECT_EQ(found[1], 2);
    const float far[] = {-1e9F, 5}, near[] = {1, 5};
    kormInterpolationLinear_v2_32f(far, near, 1, found);
    // (1 + 1e9) - 1e9: not the end point.
    EXPECT_EQ(found[0], 0);
    EXPECT_EQ(found[1], 5);
    EXPECT_EQ(kormInterpolationLinear_v2_32f(a, a, -7, found), korStatusOk);
}

TEST(GeometryCurves, HermiteMeetsItsPointsAndTangents) {
    const float start[] = {1, 2, 3}, out[] = {8, 0, -4}, end[] = {5, 6, 7}, in[] = {0, 16, 4};
    float found[3];
    kormHermite_v3_32f(start, out, end, in, 0, found);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(found[i], start[i]);
    kormHermite_v3_32f(start, out, end, in, 1, found);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(found[i], end[i]);
    kormHermite_v3_32f(start, out, end, in, 0.5F, found);
    // (start + end) / 2 + (out - in) / 8
    for (int i = 0; i < 3; ++i) EXPECT_EQ(found[i], (start[i] + end[i]) / 2 + (out[i] - in[i]) / 8);
}

TEST(GeometryCurves, CatmullRomRunsFromTheSecondToTheThird) {
    const float a[] = {0, 0}, b[] = {2, 4}, c[] = {6, 4}, d[] = {8, 0};
    float found[2];
    kormInterpolationCatmullRom_v2_32f(a, b, c, d, 0, found);
    EXPECT_EQ(found[0], 2);
    EXPECT_EQ(found[1], 4);
    kormInterpolationCatmullRom_v2_32f(a, b, c, d, 1, found);
    EXPECT_EQ(found[0], 6);
    EXPECT_EQ(found[1], 4);
    kormInterpolationCatmullRom_v2_32f(a, b, c, d, 0.5F, found);
    EXPECT_EQ(found[0], 4);
    EXPECT_EQ(found[1], 4.5F);
}

TEST(GeometryCurves, BaryCentricCorners) {
    const float a[] = {1, 2, 3, 4}, b[] = {5, 6, 7, 8}, c[] = {9, 8, 7, 6};
    float found[4];
    kormBaryCentric_v4_32f(a, b, c, 0, 0, found);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(found[i], a[i]);
    kormBaryCentric_v4_32f(a, b, c, 1, 0, found);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(found[i], b[i]);
    kormBaryCentric_v4_32f(a, b, c, 0, 1, found);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(found[i], c[i]);
}

}  // namespace
}  // namespace kormtest
