// 4 by 4 matrices of placement: identity, translation, scaling, rotations.
//
// Row vectors stand on the left, so a translation is the last row. Every element is rounded to float, each
// operation in the order written. 0 - s is a subtraction: it gives +0 for an s of zero, which -s would not.
#pragma once

#include <emmintrin.h>

#include <cmath>

#include "geometry/elements.h"
#include "geometry/vectors.h"

namespace korm::inline KORM_VARIANT::geometry {

// Rows are stored whole, constants too: a caller who reads a row back at once would have to wait for one that was
// put together in memory.
inline void storeRows(Unaligned* d, Float4 row0, Float4 row1, Float4 row2, Float4 row3) {
    storeRow(d, 0, settled(row0));
    storeRow(d, 1, settled(row1));
    storeRow(d, 2, settled(row2));
    storeRow(d, 3, settled(row3));
}

// Rows of the identity, made in registers: a constant in memory may share the low bits of its address with a store
// that is still on its way, and would wait for it.
inline Float4 unitRow(int column) {
    const __m128i one = reinterpret_cast<__m128i>(settled(_mm_castsi128_ps(_mm_cvtsi32_si128(0x3f800000))));
    switch (column) {
        case 0: return _mm_castsi128_ps(one);
        case 1: return _mm_castsi128_ps(_mm_slli_si128(one, 4));
        case 2: return _mm_castsi128_ps(_mm_slli_si128(one, 8));
        default: return _mm_castsi128_ps(_mm_slli_si128(one, 12));
    }
}

using Bits4 = Vec<std::int32_t, 4>;

// Lanes 0 to 2, and zero in the fourth.
inline Float4 firstThree(Float4 row) {
    constexpr Bits4 three = {-1, -1, -1, 0};
    return reinterpret_cast<Float4>(reinterpret_cast<Bits4>(row) & three);
}

inline void identity(Unaligned* d) { storeRows(d, unitRow(0), unitRow(1), unitRow(2), unitRow(3)); }

// These two are kept within a line of code, 64 bytes: by the one that is there already, and by the arguments where they
// are. A second line takes a cycle of eight.
inline void translation(float x, float y, float z, Unaligned* d) {
    const Float4 one = unitRow(0);
    storeRows(d, one, unitRow(1), unitRow(2), Float4{x, y, z, one[0]});
}

inline void scaling(float x, float y, float z, Unaligned* d) {
    storeRows(d, Float4{inRegister(x), 0, 0, 0}, Float4{0, inRegister(y), 0, 0}, Float4{0, 0, inRegister(z), 0},
              unitRow(3));
}

// Sine and cosine by two calls. Compilers like to make one call of them, to a function that promises less; so they are
// kept from seeing that both angles are the same.
struct SineAndCosine {
    float s;
    float c;

    explicit SineAndCosine(float angle) : s(std::sin(angle)), c(std::cos(inRegister(angle))) {}
};

inline void rotationX(float angle, Unaligned* d) {
    const SineAndCosine turn(angle);
    storeRows(d, unitRow(0), Float4{0, turn.c, turn.s, 0}, Float4{0, 0.0F - turn.s, turn.c, 0}, unitRow(3));
}

inline void rotationY(float angle, Unaligned* d) {
    const SineAndCosine turn(angle);
    storeRows(d, Float4{turn.c, 0, 0.0F - turn.s, 0}, unitRow(1), Float4{turn.s, 0, turn.c, 0}, unitRow(3));
}

inline void rotationZ(float angle, Unaligned* d) {
    const SineAndCosine turn(angle);
    storeRows(d, Float4{turn.c, turn.s, 0, 0}, Float4{0.0F - turn.s, turn.c, 0, 0}, unitRow(2), unitRow(3));
}

inline void rotationYawPitchRoll(float yaw, float pitch, float roll, Unaligned* d) {
    const SineAndCosine y(yaw), p(pitch), r(roll);
    const float t = y.s * p.s, u = p.s * y.c;
    storeRows(d, Float4{r.s * t + y.c * r.c, r.s * p.c, r.s * u - y.s * r.c, 0},
              Float4{t * r.c - y.c * r.s, r.c * p.c, y.s * r.s + r.c * u, 0},
              Float4{y.s * p.c, 0.0F - p.s, y.c * p.c, 0}, unitRow(3));
}

// The axis is divided by its length, a root in single precision unlike that of a normalised vector. With u the unit
// axis, s and c the sine and cosine, row i is (1 - c)*u * u[i] plus c in the diagonal and plus or minus an element of
// s*u elsewhere. x - y is x + (-y) to the bit, so a row is one product and one sum.
inline void rotationAxis(const Unaligned* axis, float angle, Unaligned* d) {
    const Float4 along = loadElements<3>(axis);
    const Float4 unit = along / all<Float4>(std::sqrt(sumOf<3>(along * along)));  // x y y z
    const SineAndCosine turn(angle);
    const Float4 cosine = all<Float4>(turn.c), turned = all<Float4>(turn.s) * unit;
    const Float4 across = (all<Float4>(1.0F) - cosine) * __builtin_shufflevector(unit, unit, 0, 1, 3, 3);
    const Float4 turnedAndCosine = interleaveHigh(turned, cosine);  // y c z c

    constexpr int negative = INT32_MIN;
    const auto row = [&](Float4 element, Float4 beside, Bits4 signs) {
        const Float4 signedBeside = reinterpret_cast<Float4>(reinterpret_cast<Bits4>(beside) ^ signs);
        return firstThree(across * element + signedBeside);
    };
    storeRows(
        d,
        row(everyLane<0>(unit), __builtin_shufflevector(turnedAndCosine, turnedAndCosine, 1, 2, 0, 0),
            Bits4{0, 0, negative, negative}),
        row(everyLane<1>(unit), __builtin_shufflevector(turnedAndCosine, turned, 2, 1, 4, 4), Bits4{negative, 0, 0, 0}),
        row(everyLane<3>(unit), __builtin_shufflevector(turned, turnedAndCosine, 1, 0, 5, 5), Bits4{0, negative, 0, 0}),
        unitRow(3));
}

}  // namespace korm::inline KORM_VARIANT::geometry
