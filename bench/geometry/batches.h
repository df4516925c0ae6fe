// Functions that take many vectors at once, and loops over them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace bench {

struct Batch {
    const float* matrix;  // for projections: that of world * view * projection
    const float* projection;
    const float* view;
    const float* world;
    const float* source;
    float* result;
    std::int32_t sourceStride;  // in bytes
    std::int32_t resultStride;
    std::int32_t count;
    float viewport[4];  // width, height, nearest and farthest depth
};

enum class Kind3D { affine, coord, normal, project, unproject };

// Elements of a vector, and floats from one vector to the next in source and result.
struct BatchForm {
    const char* name;
    Kind3D kind;
    int inputs, from, to;

    constexpr int outputs() const { return kind == Kind3D::affine ? 4 : inputs; }
};
inline constexpr BatchForm batchForms[] = {
    {"AffineTransform_m4v2a", Kind3D::affine, 2, 2, 4},
    {"AffineTransform_m4v3a", Kind3D::affine, 3, 3, 4},
    {"AffineTransform_m4v3a", Kind3D::affine, 3, 4, 4},
    {"AffineTransform_m4v4a", Kind3D::affine, 4, 4, 4},
    {"AffineTransformCoord_m4v2a", Kind3D::coord, 2, 2, 2},
    {"AffineTransformCoord_m4v3a", Kind3D::coord, 3, 3, 3},
    {"AffineTransformCoord_m4v3a", Kind3D::coord, 3, 4, 4},
    {"AffineTransformCoord_m4v3a", Kind3D::coord, 3, 8, 3},
    {"AffineTransformNormal_m4v2a", Kind3D::normal, 2, 2, 2},
    {"AffineTransformNormal_m4v3a", Kind3D::normal, 3, 3, 3},
    {"AffineTransformNormal_m4v3a", Kind3D::normal, 3, 4, 4},
    {"AffineTransformNormal_m4v3a", Kind3D::normal, 3, 8, 8},
    {"Project_m4v3a", Kind3D::project, 3, 3, 3},
    {"Unproject_m4v3a", Kind3D::unproject, 3, 3, 3},
    {"AffineTransform3DH_mva", Kind3D::coord, 3, 3, 3},
    {"AffineTransform3DH_mva", Kind3D::coord, 3, 4, 4},
};

using BatchLoop = void (*)(const Batch&);
using BatchLoops = std::array<BatchLoop, std::size(batchForms)>;

// The loop of each form: `loop` has an operator () with the form's index as its template argument.
template <class Loop>
BatchLoops loopsOf(Loop loop) {
    return [&]<std::size_t... i>(std::index_sequence<i...>) { return BatchLoops{loop.template operator()<i>()...}; }
    (std::make_index_sequence<std::size(batchForms)>());
}

BatchLoops glmBatches();
BatchLoops glmSimdBatches();
BatchLoops cglmBatches();

}  // namespace bench
