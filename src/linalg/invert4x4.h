// The inverse of one 4 by 4 matrix of doubles: the plain path of order 4, as a function of its own for
// callers inside the library that have a matrix and no form.
#pragma once

#include <cstdint>

extern "C" {

// Row strides in bytes, elements adjacent. `det` may be null; else it receives the determinant, or 0 if the
// matrix is singular. Then the status is korStatusSingular and dst is untouched. dst may be src.
int32_t v8_ownkormInvert_m_64f_4x4(const double* src, int32_t srcRowStride, double* det, double* dst,
                                   int32_t dstRowStride);
}
