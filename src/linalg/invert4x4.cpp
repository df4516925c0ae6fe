#include "linalg/invert4x4.h"

#include "linalg/invert.h"

using namespace korm;
using namespace korm::linalg;

// On a singular matrix `det` gets 0, not what rounding left of the determinant.
std::int32_t v8_ownkormInvert_m_64f_4x4(const double* src, std::int32_t srcRowStride, double* det, double* dst,
                                        std::int32_t dstRowStride) {
    constexpr InversePath path = inversePath<4, decltype(plain(src, srcRowStride))>();
    double a[4][4], inverse[4][4], determinant;
    readMatrix(plain(src, srcRowStride).at(0), a);
    const bool regular =
        invertByAdjugate<4, path.reciprocal, path.minus>(a, smallest<double>(path.threshold), inverse, determinant);
    if (det != nullptr) *det = regular ? determinant : 0;
    if (!regular) return korStatusSingular;
    writeMatrix(plain(dst, dstRowStride).at(0), inverse);
    return korStatusOk;
}
