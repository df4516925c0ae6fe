// From a viewport back to where points came from.
//
// The product of the matrices is formed in float, inverted in double and rounded to float again.
#pragma once

#include "geometry/cores.h"
#include "geometry/transforms.h"
#include "korm.h"
#include "linalg/cores.h"

namespace korm::inline KORM_VARIANT::geometry {

// From the viewport to normalised coordinates: one division for each element, not a factor formed beforehand.
struct FromViewport {
    float width, height, minZ, depth;

    FromViewport(float viewportWidth, float viewportHeight, float nearest, float farthest)
        : width(viewportWidth), height(viewportHeight), minZ(nearest), depth(farthest - nearest) {}

    Vector<3> operator()(const Unaligned* v) const {
        return {{2.0F * v[0] / width - 1.0F, -2.0F * v[1] / height + 1.0F, (v[2] - minZ) / depth}};
    }
};

struct Unproject {
    static constexpr int inputs = 3, outputs = 3;

    struct One {
        Coord<3>::One transform;
        FromViewport normalise;

        One(const Unaligned* matrix, const FromViewport& from) : transform(matrix), normalise(from) {}
        Float4 operator()(const Unaligned* v) const { return transform(normalise(v).e); }
    };

    struct Four {
        Coord<3>::Four transform;
        Float4 width, height, minZ, depth;

        Four(const Unaligned* matrix, const FromViewport& from)
            : transform(matrix),
              width(all<Float4>(from.width)),
              height(all<Float4>(from.height)),
              minZ(all<Float4>(from.minZ)),
              depth(all<Float4>(from.depth)) {}
        FourVectors operator()(const FourVectors& v) const {
            const Float4 one = all<Float4>(1.0F), x = all<Float4>(2.0F) * v.x / width,
                         y = all<Float4>(-2.0F) * v.y / height;
            return transform({x - one, y + one, (v.z - minZ) / depth});
        }
    };
};

inline void roundToFloats(const double* src, float* dst) {
    for (int i = 0; i < 16; ++i) dst[i] = static_cast<float>(src[i]);
}

// The inverse of world * view * projection.
inline std::int32_t inverseOfAll(const float* projection, const float* view, const float* world, float* inverse) {
    float all[16];
    cores::multiply4(world, view, all);
    cores::multiply4(all, projection, all);
    double wide[16];
    for (int i = 0; i < 16; ++i) wide[i] = all[i];
    constexpr std::int32_t packed = 4 * sizeof(double);
    const std::int32_t status = linalg::cores::invertOrder4(wide, packed, nullptr, wide, packed);
    if (status == korStatusOk) cores::roundToFloats(wide, inverse);
    return status;
}

// The normalised point stands in dst from the start, and stays there if the matrices can't be inverted.
inline std::int32_t unprojectOne(const float* projection, const float* view, const float* world, const Unaligned* src,
                                 float viewportWidth, float viewportHeight, float minZ, float maxZ, Unaligned* dst) {
    storeVector(dst, FromViewport(viewportWidth, viewportHeight, minZ, maxZ)(src));
    float inverse[16];
    const std::int32_t status = inverseOfAll(projection, view, world, inverse);
    if (status == korStatusOk) transformOne<Coord<3>>(inverse, dst, dst);
    return status;
}

// Here matrices that can't be inverted leave dst untouched.
inline std::int32_t unprojectAll(const float* projection, const float* view, const float* world, const Unaligned* src,
                                 std::int32_t srcStride, float viewportWidth, float viewportHeight, float minZ,
                                 float maxZ, Unaligned* dst, std::int32_t dstStride, std::int32_t count) {
    if (count < 1) return korStatusOk;
    float inverse[16];
    const std::int32_t status = inverseOfAll(projection, view, world, inverse);
    if (status != korStatusOk) return status;
    const Unaligned* const matrix = inverse;
    batch<Unproject>(src, srcStride, dst, dstStride, count, matrix,
                     FromViewport(viewportWidth, viewportHeight, minZ, maxZ));
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::geometry
