// The inverse of a 4 by 4 matrix as its adjugate times the reciprocal of its determinant.
//
// The order of operations of every cofactor is part of the interface. No division: the reciprocal is the
// processor's 12-bit approximation, improved by one Newton step.
#pragma once

#include <xmmintrin.h>

#include <cmath>

#include "geometry/elements.h"
#include "korm.h"

namespace korm {

inline float reciprocal(float d) {
    const float start = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(d)));
    return (start + start) - d * (start * start);
}

// Below this a determinant counts as zero.
inline constexpr float leastDeterminant = 0x1p-119F;

inline std::int32_t invertAdjugate4(const Unaligned* src, std::int32_t srcRowStride, Unaligned* det, Unaligned* dst,
                                     std::int32_t dstRowStride) {
    float m[16];
    for (int r = 0; r < 4; ++r)
        storeLanes(reinterpret_cast<std::byte*>(m + 4 * r),
                   loadLanes<float>(bytes(src) + static_cast<std::ptrdiff_t>(r) * srcRowStride));

    const float p1 = m[6] * m[15], p2 = m[2] * m[11], p3 = m[10] * m[3], p4 = m[14] * m[7];
    const float p5 = m[13] * m[6], p6 = m[9] * m[2], p7 = m[1] * m[10], p8 = m[5] * m[14];
    const float p9 = m[5] * m[15], p10 = m[1] * m[11], p11 = m[13] * m[7], p12 = m[9] * m[3];

    const float c00 = m[10] * p9 + (m[11] * p5 + (m[9] * p4 - m[9] * p1) - m[11] * p8) - m[10] * p11;
    const float c01 = m[14] * p10 + (m[15] * p6 + (m[13] * p3 - m[13] * p2) - m[15] * p7) - m[14] * p12;
    const float c02 = m[2] * p11 + (m[3] * p8 + (m[1] * p1 - m[1] * p4) - m[3] * p5) - m[2] * p9;
    const float c03 = m[6] * p12 + (m[7] * p7 + (m[5] * p2 - m[5] * p3) - m[7] * p6) - m[6] * p10;

    const float d = m[12] * c03 + m[4] * c01 + (m[8] * c02 + m[0] * c00);
    if (std::fabs(d) < leastDeterminant) {
        if (det != nullptr) *det = 0;
        return korStatusSingular;
    }
    if (det != nullptr) *det = d;
    const float r = reciprocal(d);

    const float q1 = m[4] * m[13], q2 = m[0] * m[9], q3 = m[8] * m[1], q4 = m[12] * m[5];
    const float q5 = m[4] * m[15], q6 = m[0] * m[11], q7 = m[8] * m[3], q8 = m[12] * m[7];
    const float q9 = m[2] * m[8], q10 = m[6] * m[12], q11 = m[14] * m[4], q12 = m[10] * m[0];

    const float c10 = m[11] * q11 + (m[10] * q8 + (p1 * m[8] - m[8] * p4 - m[10] * q5)) - m[11] * q10;
    const float c11 = m[15] * q12 + (m[14] * q7 + (p2 * m[12] - m[12] * p3 - m[14] * q6)) - m[15] * q9;
    const float c12 = m[3] * q10 + (m[2] * q5 + (p4 * m[0] - m[0] * p1 - m[2] * q8)) - m[3] * q11;
    const float c13 = m[7] * q9 + (m[6] * q6 + (p3 * m[4] - m[4] * p2 - m[6] * q7)) - m[7] * q12;
    const float c20 = m[9] * q5 + (m[11] * q4 - (m[11] * q1 + (p9 * m[8] - m[8] * p11))) - q8 * m[9];
    const float c21 = m[13] * q6 + (m[15] * q3 - (m[15] * q2 + (p10 * m[12] - m[12] * p12))) - q7 * m[13];
    const float c22 = m[1] * q8 + (m[3] * q1 - (m[3] * q4 + (p11 * m[0] - m[0] * p9))) - q5 * m[1];
    const float c23 = m[5] * q7 + (m[7] * q2 - (m[7] * q3 + (p12 * m[4] - m[4] * p10))) - q6 * m[5];
    const float c30 = m[9] * q10 + (m[10] * q1 - (p5 * m[8] - m[8] * p8) - q4 * m[10] - m[9] * q11);
    const float c31 = m[13] * q9 + (m[14] * q2 - (p6 * m[12] - m[12] * p7) - q3 * m[14] - m[13] * q12);
    const float c32 = m[1] * q11 + (m[2] * q4 - (p8 * m[0] - m[0] * p5) - q1 * m[2] - m[1] * q10);
    const float c33 = m[5] * q12 + (m[6] * q3 - (p7 * m[4] - m[4] * p6) - q2 * m[6] - m[5] * q9);

    const Float4 rows[4] = {{c00, c01, c02, c03}, {c10, c11, c12, c13}, {c20, c21, c22, c23}, {c30, c31, c32, c33}};
    for (int i = 0; i < 4; ++i)
        storeLanes(bytes(dst) + static_cast<std::ptrdiff_t>(i) * dstRowStride, rows[i] * broadcast(r));
    return korStatusOk;
}

}  // namespace korm
