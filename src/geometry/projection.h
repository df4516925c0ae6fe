// Points to a viewport and back.
//
// A batch multiplies its matrices once and so rounds in another order than the single form, which takes its
// point through the three matrices one after the other.
#pragma once

#include "geometry/matrices.h"
#include "geometry/shared.h"
#include "geometry/transforms.h"
#include "korm.h"

namespace korm {

// From the square of normalised coordinates to the viewport, with y downwards.
struct Viewport {
    Float4 scale;
    Float4 offset;

    Viewport(float width, float height, float minZ, float maxZ) {
        const float halfWidth = width * 0.5F, halfHeight = height * 0.5F, depth = maxZ - minZ;
        scale = Float4{halfWidth, 0.0F - halfHeight, depth, depth};
        offset = Float4{halfWidth, halfHeight, minZ, minZ};
    }

    Float4 operator()(Float4 point) const { return offset + scale * point; }
};

inline void projectOne(const Unaligned* projection, const Unaligned* view, const Unaligned* world, const Unaligned* src,
                       float viewportWidth, float viewportHeight, float minZ, float maxZ, Unaligned* dst) {
    const Coord<3> toWorld(world);
    const Vector<3> v = loadVector<3>(src);
    const Affine<4> toView(view), toClip(projection);
    const Float4 placed = toWorld.product(v);
    const Float4 seen = toView({{placed[0], placed[1], placed[2], placed[3]}});
    const Float4 clip = toClip({{seen[0], seen[1], seen[2], seen[3]}});
    storeFirst<3>(dst, Viewport(viewportWidth, viewportHeight, minZ, maxZ)(dividedByFourth(clip)));
}

struct Project {
    static constexpr int inputs = 3, outputs = 3;
    Coord<3> transform;
    Viewport viewport;

    Float4 operator()(const Vector<3>& v) const { return viewport(transform(v)); }
};

inline void projectAll(const Unaligned* projection, const Unaligned* view, const Unaligned* world, const Unaligned* src,
                       std::int32_t srcStride, float viewportWidth, float viewportHeight, float minZ, float maxZ,
                       Unaligned* dst, std::int32_t dstStride, std::int32_t count) {
    if (count < 1) return;
    float all[16];
    v8_ownMulMat_32f(view, projection, all);
    v8_ownMulMat_32f(world, all, all);
    const Project project{Coord<3>(all), Viewport(viewportWidth, viewportHeight, minZ, maxZ)};
    batch(project, src, srcStride, dst, dstStride, count);
}

}  // namespace korm
