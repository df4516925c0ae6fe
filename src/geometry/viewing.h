// 4 by 4 matrices of viewing and projection, for left-handed and right-handed coordinates.
//
// The viewer looks along +z in the left hand, along -z in the right. Both map depth to 0 at the near plane and
// to 1 at the far plane. Each quotient is one division in the form given: whether a hand negates the divisor or the
// dividend is part of the interface, down to the sign of a zero.
#pragma once

#include "geometry/constructors.h"
#include "geometry/vectors.h"

namespace korm::inline KORM_VARIANT::geometry {

enum class Hand { left, right };

// Vectors of three, in lanes x y y z as they are loaded.
inline Float4 rotatedLeft(Float4 v) { return __builtin_shufflevector(v, v, 1, 3, 3, 0); }  // y z z x

// Each element is that of the cross product in its order; before the last rotation of lanes the third stands first.
inline Float4 crossLanes(Float4 a, Float4 b) { return rotatedLeft(a * rotatedLeft(b) - rotatedLeft(a) * b); }

template <Hand hand>
inline void lookAt(const Unaligned* eyeAt, const Unaligned* atAt, const Unaligned* upAt, Unaligned* d) {
    const Float4 eye = loadElements<3>(eyeAt), at = loadElements<3>(atAt), up = loadElements<3>(upAt);
    const Float4 z = normalized<3>(hand == Hand::left ? at - eye : eye - at);
    const Float4 x = normalized<3>(crossLanes(up, z));
    const Float4 y = crossLanes(z, x);

    // x, y and z as columns; the fourth repeats the third until it is stored.
    const Float4 upper = interleaveLow(x, y), lower = interleaveHigh(x, y);
    const Float4 row0 = __builtin_shufflevector(upper, z, 0, 1, 4, 4);
    const Float4 row1 = __builtin_shufflevector(upper, z, 2, 3, 5, 5);
    const Float4 row2 = __builtin_shufflevector(lower, z, 2, 3, 7, 7);
    const Float4 dots = (row0 * everyLane<0>(eye) + row1 * everyLane<1>(eye)) + row2 * everyLane<3>(eye);
    const Float4 offsets = firstThree(all<Float4>(0.0F) - dots);
    storeRows(d, firstThree(row0), firstThree(row1), firstThree(row2), _mm_or_ps(offsets, unitRow(3)));
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
inline Float4 onlyLane(Float4 quotients) {
    constexpr Bits4 mask = {i == 0 ? -1 : 0, i == 1 ? -1 : 0, i == 2 ? -1 : 0, i == 3 ? -1 : 0};
    return reinterpret_cast<Float4>(reinterpret_cast<Bits4>(quotients) & mask);
}

// What stands where in the rows of a projection is all that differs between them: scales in x and y, the depth's scale
// and offset.
struct Scales {
    Float4 quotients;

    Float4 row0() const { return onlyLane<0>(quotients); }
    Float4 row1() const { return onlyLane<1>(quotients); }
    float depthScale() const { return quotients[2]; }
    float depthOffset() const { return quotients[3]; }
};

template <Hand hand>
inline void ortho(float viewWidth, float viewHeight, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const Scales s{Float4{2.0F, 2.0F, 1.0F, zNear} / Float4{viewWidth, viewHeight, depth.forScale, depth.forOffset}};
    storeRows(d, s.row0(), s.row1(), onlyLane<2>(s.quotients), Float4{0, 0, s.depthOffset(), 1});
}

// The borders of a view that need not lie about the axis. The quotients of one division: the scales in x and y, and
// the offsets of the view's middle, whose divisors some projections negate.
template <bool negatesMiddle>
inline Float4 scalesAndMiddle(float dividend, float left, float right, float bottom, float top) {
    const Float4 low = {left, bottom, left, bottom}, high = {right, top, right, top};
    const Float4 sizes = high - low, sums = low + high;
    const Float4 dividends = __builtin_shufflevector(all<Float4>(dividend), sums, 0, 0, 4, 5);
    if constexpr (!negatesMiddle) return dividends / sizes;
    return dividends / __builtin_shufflevector(sizes, all<Float4>(0.0F) - sizes, 0, 1, 4, 5);
}

// The middle's offsets, the first of the depth's quotients, and a constant.
inline Float4 middleRow(Float4 scalesAndMiddle, Float4 depths, float last) {
    return __builtin_shufflevector(scalesAndMiddle, interleaveLow(depths, all<Float4>(last)), 2, 3, 4, 5);
}

template <Hand hand>
inline void orthoOffCenter(float left, float right, float bottom, float top, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const Float4 quotients = scalesAndMiddle<true>(2.0F, left, right, bottom, top);
    const Float4 depths =
        Float4{zNear, zNear, 1.0F, 1.0F} / Float4{depth.forOffset, depth.forOffset, depth.forScale, depth.forScale};
    storeRows(d, onlyLane<0>(quotients), onlyLane<1>(quotients), onlyLane<2>(depths), middleRow(quotients, depths, 1));
}

template <Hand hand>
inline void perspective(float viewWidth, float viewHeight, float zNear, float zFar, Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const float twiceNear = zNear + zNear;
    const Scales s{Float4{twiceNear, twiceNear, zFar, zNear * zFar} /
                   Float4{viewWidth, viewHeight, depth.forScale, depth.forOffset}};
    storeRows(d, s.row0(), s.row1(), Float4{0, 0, s.depthScale(), depthToW<hand>}, Float4{0, 0, s.depthOffset(), 0});
}

// The cotangent of half the angle is a quotient of cosine and sine. The left hand's offset negates the dividend
// here, not the divisor as in the other projections.
template <Hand hand>
inline void perspectiveFov(float fovY, float aspect, float zNear, float zFar, Unaligned* d) {
    const SineAndCosine half(fovY * 0.5F);
    const float height = half.c / half.s;
    const float distance = Depth<hand>(zNear, zFar).forScale;
    const float product = zNear * zFar;
    const float offset = hand == Hand::left ? 0.0F - product : product;
    const Float4 quotients = Float4{height, height, zFar, offset} / Float4{aspect, aspect, distance, distance};
    storeRows(d, onlyLane<0>(quotients), Float4{0, height, 0, 0}, Float4{0, 0, quotients[2], depthToW<hand>},
              Float4{0, 0, quotients[3], 0});
}

template <Hand hand>
inline void perspectiveOffCenter(float left, float right, float bottom, float top, float zNear, float zFar,
                                 Unaligned* d) {
    const Depth<hand> depth(zNear, zFar);
    const Float4 quotients = scalesAndMiddle<hand == Hand::left>(zNear + zNear, left, right, bottom, top);
    const float product = zNear * zFar;
    const Float4 depths =
        Float4{zFar, zFar, product, product} / Float4{depth.forScale, depth.forScale, depth.forOffset, depth.forOffset};
    storeRows(d, onlyLane<0>(quotients), onlyLane<1>(quotients), middleRow(quotients, depths, depthToW<hand>),
              onlyLane<2>(depths));
}

}  // namespace korm::inline KORM_VARIANT::geometry
