// Points to a viewport.
//
// A batch multiplies its matrices once and so rounds in another order than the single form, which takes its
// point through the three matrices one after the other.
#pragma once

#include "geometry/cores.h"
#include "geometry/transforms.h"

namespace korm::inline KORM_VARIANT::geometry {

// From the square of normalised coordinates to the viewport, with y downwards.
struct Viewport {
    float scale[3];
    float offset[3];

    Viewport(float width, float height, float minZ, float maxZ)
        : scale{width * 0.5F, 0.0F - height * 0.5F, maxZ - minZ}, offset{width * 0.5F, height * 0.5F, minZ} {}
};

struct Project {
    static constexpr int inputs = 3, outputs = 3;

    struct One {
        Coord<3>::One transform;
        Float4 scale, offset;

        One(const Unaligned* matrix, const Viewport& v)
            : transform(matrix), scale(lanes(v.scale)), offset(lanes(v.offset)) {}
        static Float4 lanes(const float (&v)[3]) { return Float4{v[0], v[1], v[2], v[2]}; }
        Float4 stretched(Float4 point) const { return offset + scale * point; }
        Float4 operator()(const Unaligned* v) const { return stretched(transform(v)); }
    };

    struct Four {
        Coord<3>::Four transform;
        Float4 scale[3], offset[3];

        Four(const Unaligned* matrix, const Viewport& v) : transform(matrix) {
            for (int i = 0; i < 3; ++i) scale[i] = all<Float4>(v.scale[i]), offset[i] = all<Float4>(v.offset[i]);
        }
        FourVectors operator()(const FourVectors& v) const {
            const FourVectors point = transform(v);
            return {offset[0] + scale[0] * point.x, offset[1] + scale[1] * point.y, offset[2] + scale[2] * point.z};
        }
    };
};

inline void projectOne(const Unaligned* projection, const Unaligned* view, const Unaligned* world, const Unaligned* src,
                       float viewportWidth, float viewportHeight, float minZ, float maxZ, Unaligned* dst) {
    const auto through = [](const Unaligned* m, Float4 v) {
        const Repeated elements{everyLane<0>(v), everyLane<1>(v), everyLane<2>(v), everyLane<3>(v)};
        return Affine<4>::sum(loadRow(m, 0), loadRow(m, 1), loadRow(m, 2), loadRow(m, 3), elements);
    };
    const Float4 clip = through(projection, through(view, Coord<3>::One(world).product(src)));
    const Project::One project(projection, Viewport(viewportWidth, viewportHeight, minZ, maxZ));
    storeElements<3>(dst, project.stretched(dividedByFourth(clip)));
}

inline void projectAll(const Unaligned* projection, const Unaligned* view, const Unaligned* world, const Unaligned* src,
                       std::int32_t srcStride, float viewportWidth, float viewportHeight, float minZ, float maxZ,
                       Unaligned* dst, std::int32_t dstStride, std::int32_t count) {
    if (count < 1) return;
    float all[16];
    cores::multiply4(forCore(view), forCore(projection), all);
    cores::multiply4(forCore(world), all, all);
    const Unaligned* const matrix = all;
    batch<Project>(src, srcStride, dst, dstStride, count, matrix, Viewport(viewportWidth, viewportHeight, minZ, maxZ));
}

}  // namespace korm::inline KORM_VARIANT::geometry
