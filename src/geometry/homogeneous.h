// Arrays of vectors through a homogeneous transform: columns on the right of a matrix with strides.
#pragma once

#include <cmath>

#include "entry/lanes.h"
#include "entry/views.h"
#include "korm.h"

namespace korm {

// A fourth element has to lie above this, the smallest normal number; with a NaN it does not.
inline constexpr float leastFourth = 1.1754944e-38F;
inline constexpr float farAway = 3.4028235e38F;

template <class A, class S, class D>
inline std::int32_t transform3DH(const A& matrix, const S& src, const D& dst, std::int32_t count) {
    float a[4][4];
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) a[r][c] = load<float>(matrix.at(0).address(r, c));

    std::int32_t status = korStatusOk;
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const auto from = src.at(k);
        const auto to = dst.at(k);
        const float x = load<float>(from.address(0, 0)), y = load<float>(from.address(0, 1)),
                    z = load<float>(from.address(0, 2));
        const float w = ((a[3][0] * x + a[3][3]) + a[3][1] * y) + a[3][2] * z;
        float result[3] = {farAway, farAway, farAway};
        if (std::fabs(w) > leastFourth) {
            const float r = 1.0F / w;
            for (int i = 0; i < 3; ++i) result[i] = (((x * a[i][0] + a[i][3]) + y * a[i][1]) + z * a[i][2]) * r;
        } else {
            status = korStatusDivideByZero;
        }
        for (int i = 0; i < 3; ++i) store(to.address(0, i), result[i]);
    }
    return status;
}

}  // namespace korm
