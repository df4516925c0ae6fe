// Functions that several forms share. They are called, not inlined, and show in profiles under these names.
#pragma once

#include <cstdint>

extern "C" {

// The inverse by the adjugate. Row strides in bytes; `det` may be null. korStatusSingular leaves `dst` alone.
[[gnu::noinline]] std::int32_t v8_own3dkormInvert_m_32f_4x4(const float* src, std::int32_t srcRowStride, float* det,
                                                            float* dst, std::int32_t dstRowStride);

// a * b of contiguous 4 by 4 matrices; `dst` may be one of them.
[[gnu::noinline]] void v8_ownMulMat_32f(const float* a, const float* b, float* dst);

// 16 doubles, each rounded to float.
[[gnu::noinline]] void v8_own3dConvert64f32f_16(const double* src, float* dst);
}
