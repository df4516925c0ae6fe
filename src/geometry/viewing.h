// 4 by 4 matrices of viewing and projection, for left-handed and right-handed coordinates.
//
// The viewer looks along +z in the left hand, along -z in the right. Both map depth to 0 at the near plane and
// to 1 at the far plane. Each quotient is one division in the form given: whether a hand negates the divisor or the
// dividend is part of the interface, down to the sign of a zero.
#pragma once

#include "geometry/constructors.h"
#include "geometry/vectors.h"

namespace korm {

enum class Hand { left, right };

template <Hand hand>
inline void lookAt(const Unaligned* eyeAt, const Unaligned* atAt, const Unaligned* upAt, Unaligned* d) {
    const Vector<3> eye = loadVector<3>(eyeAt), at = loadVector<3>(atAt), up = loadVector<3>(upAt);
    const Vector<3>& to = hand == Hand::left ? at : eye;
    const Vector<3>& from = hand == Hand::left ? eye : at;
    const Vector<3> z = normalized<3>({{to[0] - from[0], to[1] - from[1], to[2] - from[2]}});
    const Vector<3> x = normalized(cross(up, z));
    const Vector<3> y = cross(z, x);
    storeRows(d, Float4{x[0], y[0], z[0], 0}, Float4{x[1], y[1], z[1], 0}, Float4{x[2], y[2], z[2], 0},
              Float4{0.0F - dot(x, eye), 0.0F - dot(y, eye), 0.0F - dot(z, eye), 1});
}

// The distance of the planes as the divisor of a depth's scale, and of its offset.
template <Hand hand>
struct Depth {
    float forScale;
    float forOffset;

    Depth(float zNear, float zFar)
        : forScale(hand == Hand::left ? zFar - zNear : zNear - zFar),
          forOffset(hand == Hand::left ? 0.0F - forScale : forScale) {}
};

template <Hand hand>
inline constexpr float depthToW = hand == Hand::left ? 1.0F : -1.0F;

// Quotients are formed four at a time, which takes as long as one, and then go to their rows: lane i of `quotients`
// alone, all others zero.
template <int i>
inline Float4 only(Float4 quotients) {
    using Bits4 = int __attribute__((vector_size(16)));
    constexpr Bits4 mask = {i == 0 ? -1 : 0, i == 1 ? -1 : 0, i == 2 ? -1 : 0, i == 3 ? -1 : 0};
    return reinterpret_cast<Float4>(reinterpret_cast<Bits4>(quotients) & mask);
}

// What stands where in the rows of a projection is all that differs between them: scales in x and y, the depth's scale
// and offset.
struct Scales {
    Float4 quotients;

    Float4 row0() const { return only<0>(quotients); }
    Float4 row1() const { return only<1>(quotients); }
    float depthScale() const { return quotients[2]; }
    float depthOffset() const { return quotients[3]; }
};

template <Hand hand>
inline void ortho(float viewWidth, float viewHeight, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const Scales s{Float4{2.0F, 2.0F, 1.0F, zNear} / Float4{viewWidth, viewHeight, depth.forScale, depth.forOffset}};
    storeRows(d, s.row0(), s.row1(), only<2>(s.quotients), Float4{0, 0, s.depthOffset(), 1});
}

template <Hand hand>
inline void orthoOffCenter(float left, float right, float bottom, float top, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const float width = right - left, height = top - bottom;
    const Scales s{Float4{2.0F, 2.0F, 1.0F, zNear} / Float4{width, height, depth.forScale, depth.forOffset}};
    const float sumX = left + right, sumY = bottom + top, forX = 0.0F - width, forY = 0.0F - height;
    const Float4 center = Float4{sumX, sumY, sumX, sumY} / Float4{forX, forY, forX, forY};
    storeRows(d, s.row0(), s.row1(), only<2>(s.quotients), Float4{center[0], center[1], s.depthOffset(), 1});
}

template <Hand hand>
inline void perspective(float viewWidth, float viewHeight, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const float twice = zNear + zNear;
    const Scales s{Float4{twice, twice, zFar, zNear * zFar} /
                   Float4{viewWidth, viewHeight, depth.forScale, depth.forOffset}};
    storeRows(d, s.row0(), s.row1(), Float4{0, 0, s.depthScale(), depthToW<hand>}, Float4{0, 0, s.depthOffset(), 0});
}

// The cotangent of half the angle is a quotient of cosine and sine. The left hand's offset negates the dividend
// here, not the divisor as in the other projections.
template <Hand hand>
inline void perspectiveFov(float fovY, float aspect, float zNear, float zFar, Unaligned* d) {
    const Turn half(fovY * 0.5F);
    const float height = half.c / half.s;
    const float distance = Depth<hand>(zNear, zFar).forScale;
    const float product = zNear * zFar;
    const float offset = hand == Hand::left ? 0.0F - product : product;
    const Float4 quotients = Float4{height, height, zFar, offset} / Float4{aspect, aspect, distance, distance};
    storeRows(d, only<0>(quotients), Float4{0, height, 0, 0}, Float4{0, 0, quotients[2], depthToW<hand>},
              Float4{0, 0, quotients[3], 0});
}

template <Hand hand>
inline void perspectiveOffCenter(float left, float right, float bottom, float top, float zNear, float zFar,
                                 Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const float twice = zNear + zNear;
    const float width = right - left, height = top - bottom;
    const Scales s{Float4{twice, twice, zFar, zNear * zFar} / Float4{width, height, depth.forScale, depth.forOffset}};
    const float sumX = left + right, sumY = bottom + top;
    const float forX = hand == Hand::left ? 0.0F - width : width;
    const float forY = hand == Hand::left ? 0.0F - height : height;
    const Float4 center = Float4{sumX, sumY, sumX, sumY} / Float4{forX, forY, forX, forY};
    storeRows(d, s.row0(), s.row1(), Float4{center[0], center[1], s.depthScale(), depthToW<hand>},
              Float4{0, 0, s.depthOffset(), 0});
}

}  // namespace korm
