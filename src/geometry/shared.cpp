#include "geometry/shared.h"

#include <emmintrin.h>

#include "geometry/adjugate.h"
#include "geometry/matrices.h"
#include "korm.h"

using namespace korm;

std::int32_t v8_own3dkormInvert_m_32f_4x4(const float* src, std::int32_t srcRowStride, float* det, float* dst,
                                          std::int32_t dstRowStride) {
    return invertAdjugate4(src, srcRowStride, det, dst, dstRowStride);
}

void v8_ownMulMat_32f(const float* a, const float* b, float* dst) { multiply4(a, b, dst); }

void v8_own3dConvert64f32f_16(const double* src, float* dst) {
    for (int i = 0; i < 16; ++i) dst[i] = static_cast<float>(src[i]);
}
