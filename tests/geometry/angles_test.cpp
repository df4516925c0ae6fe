// Each angle is given to sinf and to cosf once, as it stands, and to nothing that gives both: results are then those of
// the C library's two functions, whichever library that is.
//
// This program stands before the C library's functions and writes down what they are asked.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <korm.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

std::vector<float> sines, cosines, both;

float ask(const char* name, float angle) { return reinterpret_cast<float (*)(float)>(dlsym(RTLD_NEXT, name))(angle); }

}  // namespace

extern "C" {
__attribute__((visibility("default"))) float sinf(float angle) noexcept {
    sines.push_back(angle);
    return ask("sinf", angle);
}
__attribute__((visibility("default"))) float cosf(float angle) noexcept {
    cosines.push_back(angle);
    return ask("cosf", angle);
}
__attribute__((visibility("default"))) void sincosf(float angle, float* sine, float* cosine) noexcept {
    both.push_back(angle);
    *sine = ask("sinf", angle);
    *cosine = ask("cosf", angle);
}
}

namespace kormtest {
namespace {

void expectAsked(std::vector<float> angles, const std::function<std::int32_t(float*)>& construct) {
    sines.clear();
    cosines.clear();
    both.clear();
    float m[16];
    EXPECT_EQ(construct(m), korStatusOk);
    std::sort(angles.begin(), angles.end());
    std::sort(sines.begin(), sines.end());
    std::sort(cosines.begin(), cosines.end());
    EXPECT_EQ(sines, angles);
    EXPECT_EQ(cosines, angles);
    EXPECT_TRUE(both.empty());
}

TEST(Angles, OfRotations) {
    const float axis[] = {1, -2, 3};
    for (const float angle : {0.0F, 0.7F, -2.5F, 1e6F}) {
        expectAsked({angle}, [&](float* m) { return kormRotationX_m4_32f(angle, m); });
        expectAsked({angle}, [&](float* m) { return kormRotationY_m4_32f(angle, m); });
        expectAsked({angle}, [&](float* m) { return kormRotationZ_m4_32f(angle, m); });
        expectAsked({angle}, [&](float* m) { return kormRotationAxis_v3m4_32f(axis, angle, m); });
        expectAsked({angle, 1.25F, -0.5F},
                    [&](float* m) { return kormRotationYawPitchRoll_m4_32f(angle, 1.25F, -0.5F, m); });
    }
}

TEST(Angles, OfFieldsOfView) {
    expectAsked({0.625F}, [](float* m) { return kormPerspectiveFovLH_m4_32f(1.25F, 2, 1, 5, m); });
    expectAsked({0.625F}, [](float* m) { return kormPerspectiveFovRH_m4_32f(1.25F, 2, 1, 5, m); });
}

}  // namespace
}  // namespace kormtest
