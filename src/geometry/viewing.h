// 4 by 4 matrices of viewing and projection, for left-handed and right-handed coordinates.
//
// The viewer looks along +z in the left hand, along -z in the right. Both map depth to 0 at the near plane and
// to 1 at the far plane. Each quotient is one division in the form given: where a hand negates the divisor and
// where the dividend is part of the interface, down to the sign of a zero.
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

template <Hand hand>
inline void ortho(float viewWidth, float viewHeight, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    storeRows(d, Float4{2.0F / viewWidth, 0, 0, 0}, Float4{0, 2.0F / viewHeight, 0, 0},
              Float4{0, 0, 1.0F / depth.forScale, 0}, Float4{0, 0, zNear / depth.forOffset, 1});
}

template <Hand hand>
inline void orthoOffCenter(float left, float right, float bottom, float top, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const float width = right - left, height = top - bottom;
    storeRows(d, Float4{2.0F / width, 0, 0, 0}, Float4{0, 2.0F / height, 0, 0}, Float4{0, 0, 1.0F / depth.forScale, 0},
              Float4{(left + right) / (0.0F - width), (bottom + top) / (0.0F - height), zNear / depth.forOffset, 1});
}

template <Hand hand>
inline void perspective(float viewWidth, float viewHeight, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const float twice = zNear + zNear;
    storeRows(d, Float4{twice / viewWidth, 0, 0, 0}, Float4{0, twice / viewHeight, 0, 0},
              Float4{0, 0, zFar / depth.forScale, depthToW<hand>}, Float4{0, 0, zNear * zFar / depth.forOffset, 0});
}

// The cotangent of half the angle is a quotient of cosine and sine. The left hand's offset negates the dividend
// here, not the divisor as in the other projections.
template <Hand hand>
inline void perspectiveFov(float fovY, float aspect, float zNear, float zFar, Unaligned* d) {
    const Turn half(fovY * 0.5F);
    const float height = half.c / half.s;
    const float distance = Depth<hand>(zNear, zFar).forScale;
    const float product = zNear * zFar;
    storeRows(d, Float4{height / aspect, 0, 0, 0}, Float4{0, height, 0, 0},
              Float4{0, 0, zFar / distance, depthToW<hand>},
              Float4{0, 0, (hand == Hand::left ? 0.0F - product : product) / distance, 0});
}

template <Hand hand>
inline void perspectiveOffCenter(float left, float right, float bottom, float top, float zNear, float zFar,
                                 Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const float twice = zNear + zNear;
    const float width = right - left, height = top - bottom;
    const float forX = hand == Hand::left ? 0.0F - width : width;
    const float forY = hand == Hand::left ? 0.0F - height : height;
    storeRows(d, Float4{twice / width, 0, 0, 0}, Float4{0, twice / height, 0, 0},
              Float4{(left + right) / forX, (bottom + top) / forY, zFar / depth.forScale, depthToW<hand>},
              Float4{0, 0, zNear * zFar / depth.forOffset, 0});
}

}  // namespace korm
