// The functions that take many vectors at once.
#include <korm.h>

#include "work.h"

namespace bench {
namespace {

template <auto function>
void transform(const Batch& work) {
    function(work.matrix, work.source, work.sourceStride, work.result, work.resultStride, work.count);
}

template <auto function>
void viewport(const Batch& work) {
    function(work.projection, work.view, work.world, work.source, work.sourceStride, work.viewport[0], work.viewport[1],
             work.viewport[2], work.viewport[3], work.result, work.resultStride, work.count);
}

void homogeneous(const Batch& work) {
    // Vectors are columns there: element and row strides exchanged.
    kormAffineTransform3DH_mva_32f(work.matrix, 4, 16, work.source, work.sourceStride, 4, work.result,
                                   work.resultStride, 4, work.count);
}

}  // namespace

// The function, the floats from one vector to the next in source and result, and how many are results.
std::vector<BatchRow> batchRows() {
    constexpr auto affine2 = transform<kormAffineTransform_m4v2a_32f>;
    constexpr auto affine3 = transform<kormAffineTransform_m4v3a_32f>;
    constexpr auto affine4 = transform<kormAffineTransform_m4v4a_32f>;
    constexpr auto coord2 = transform<kormAffineTransformCoord_m4v2a_32f>;
    constexpr auto coord3 = transform<kormAffineTransformCoord_m4v3a_32f>;
    constexpr auto normal2 = transform<kormAffineTransformNormal_m4v2a_32f>;
    constexpr auto normal3 = transform<kormAffineTransformNormal_m4v3a_32f>;
    constexpr auto project = viewport<kormProject_m4v3a_32f>;
    constexpr auto unproject = viewport<kormUnproject_m4v3a_32f>;
    return {
        {"AffineTransform_m4v2a/8-16", 4, 2, 4, {{"korm", affine2}}},
        {"AffineTransform_m4v3a/12-16", 4, 3, 4, {{"korm", affine3}}},
        {"AffineTransform_m4v3a/16-16", 4, 4, 4, {{"korm", affine3}}},
        {"AffineTransform_m4v4a/16-16", 4, 4, 4, {{"korm", affine4}}},
        {"AffineTransformCoord_m4v2a/8-8", 2, 2, 2, {{"korm", coord2}}},
        {"AffineTransformCoord_m4v3a/12-12", 3, 3, 3, {{"korm", coord3}}},
        {"AffineTransformCoord_m4v3a/16-16", 3, 4, 4, {{"korm", coord3}}},
        {"AffineTransformCoord_m4v3a/32-12", 3, 8, 3, {{"korm", coord3}}},
        {"AffineTransformNormal_m4v2a/8-8", 2, 2, 2, {{"korm", normal2}}},
        {"AffineTransformNormal_m4v3a/12-12", 3, 3, 3, {{"korm", normal3}}},
        {"AffineTransformNormal_m4v3a/16-16", 3, 4, 4, {{"korm", normal3}}},
        {"AffineTransformNormal_m4v3a/32-32", 3, 8, 8, {{"korm", normal3}}},
        {"Project_m4v3a/12-12", 3, 3, 3, {{"korm", project}}},
        {"Unproject_m4v3a/12-12", 3, 3, 3, {{"korm", unproject}}},
        {"AffineTransform3DH_mva/12-12", 3, 3, 3, {{"korm", homogeneous}}},
        {"AffineTransform3DH_mva/16-16", 3, 4, 4, {{"korm", homogeneous}}},
    };
}

}  // namespace bench
