// 4 by 4 matrices of placement: identity, translation, scaling, rotations.
//
// Row vectors stand on the left, so a translation is the last row. Every element is rounded to float, each
// operation in the order written. 0 - s is a subtraction: it gives +0 for an s of zero, which -s would not.
#pragma once

#include <cmath>

#include "geometry/elements.h"

namespace korm {

inline void storeRows(Unaligned* d, Float4 row0, Float4 row1, Float4 row2, Float4 row3) {
    storeRow(d, 0, row0);
    storeRow(d, 1, row1);
    storeRow(d, 2, row2);
    storeRow(d, 3, row3);
}

inline constexpr Float4 unitX = {1, 0, 0, 0}, unitY = {0, 1, 0, 0}, unitZ = {0, 0, 1, 0}, unitW = {0, 0, 0, 1};

inline void identity(Unaligned* d) { storeRows(d, unitX, unitY, unitZ, unitW); }

inline void translation(float x, float y, float z, Unaligned* d) {
    storeRows(d, unitX, unitY, unitZ, Float4{x, y, z, 1});
}

inline void scaling(float x, float y, float z, Unaligned* d) {
    storeRows(d, Float4{x, 0, 0, 0}, Float4{0, y, 0, 0}, Float4{0, 0, z, 0}, unitW);
}

// Sine and cosine by two calls. Compilers like to make one of them, of a function that promises less; the
// second angle is therefore one that they can't know to be the first.
struct Turn {
    float s;
    float c;

    explicit Turn(float angle) : s(std::sin(angle)) {
        asm("" : "+x"(angle));
        c = std::cos(angle);
    }
};

inline void rotationX(float angle, Unaligned* d) {
    const Turn turn(angle);
    storeRows(d, unitX, Float4{0, turn.c, turn.s, 0}, Float4{0, 0.0F - turn.s, turn.c, 0}, unitW);
}

inline void rotationY(float angle, Unaligned* d) {
    const Turn turn(angle);
    storeRows(d, Float4{turn.c, 0, 0.0F - turn.s, 0}, unitY, Float4{turn.s, 0, turn.c, 0}, unitW);
}

inline void rotationZ(float angle, Unaligned* d) {
    const Turn turn(angle);
    storeRows(d, Float4{turn.c, turn.s, 0, 0}, Float4{0.0F - turn.s, turn.c, 0, 0}, unitZ, unitW);
}

inline void rotationYawPitchRoll(float yaw, float pitch, float roll, Unaligned* d) {
    const Turn y(yaw), p(pitch), r(roll);
    const float t = y.s * p.s, u = p.s * y.c;
    storeRows(d, Float4{r.s * t + y.c * r.c, r.s * p.c, r.s * u - y.s * r.c, 0},
              Float4{t * r.c - y.c * r.s, r.c * p.c, y.s * r.s + r.c * u, 0},
              Float4{y.s * p.c, 0.0F - p.s, y.c * p.c, 0}, unitW);
}

// The axis is divided by its length, a root in single precision unlike that of a normalised vector.
inline void rotationAxis(const Unaligned* axis, float angle, Unaligned* d) {
    const float x = axis[0], y = axis[1], z = axis[2];
    const float length = std::sqrt(x * x + y * y + z * z);
    const float ux = x / length, uy = y / length, uz = z / length;
    const Turn turn(angle);
    const float w = 1.0F - turn.c, c = turn.c;
    const float a = w * ux, b = w * uy, e = w * uz;
    const float sx = turn.s * ux, sy = turn.s * uy, sz = turn.s * uz;
    storeRows(d, Float4{a * ux + c, b * ux + sz, e * ux - sy, 0},  //
              Float4{a * uy - sz, b * uy + c, uy * e + sx, 0},     //
              Float4{sy + a * uz, b * uz - sx, c + uz * e, 0}, unitW);
}

}  // namespace korm
