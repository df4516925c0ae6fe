// Curves between given points, element by element.
#pragma once

#include "geometry/elements.h"

namespace korm {

template <int n>
inline void baryCentric(const Unaligned* a, const Unaligned* b, const Unaligned* c, float f, float g, Unaligned* d) {
    const float forB = inRegister(f), forC = inRegister(g);
    Vector<n> result;
    for (int i = 0; i < n; ++i) result[i] = ((b[i] - a[i]) * forB + a[i]) + (c[i] - a[i]) * forC;
    storeVector(d, result);
}

template <int n>
inline void linear(const Unaligned* a, const Unaligned* b, float t, Unaligned* d) {
    const float part = inRegister(t);
    Vector<n> result;
    for (int i = 0; i < n; ++i) result[i] = a[i] + (b[i] - a[i]) * part;
    storeVector(d, result);
}

// The powers of t are rounded to float, their sums formed in double and rounded again. `startOverEnd` weights
// the difference of the two points: its basis functions add up to 1.
struct HermiteWeights {
    float startTangent;
    float startOverEnd;
    float endTangent;

    explicit HermiteWeights(float parameter) {
        const float square = parameter * parameter;
        const double t = parameter, t2 = square, t3 = square * parameter;
        startTangent = static_cast<float>(t - t2 - t2 + t3);
        startOverEnd = static_cast<float>(t3 - 3.0 * t2 + t3);
        endTangent = static_cast<float>(t3 - t2);
    }

    float at(float start, float tangent, float end, float endsTangent) const {
        return (start - end) * startOverEnd + ((start + tangent * startTangent) + endsTangent * endTangent);
    }
};

template <int n>
inline void hermite(const Unaligned* a, const Unaligned* b, const Unaligned* c, const Unaligned* d, float t,
                    Unaligned* to) {
    const HermiteWeights weights(t);
    Vector<n> result;
    for (int i = 0; i < n; ++i) result[i] = weights.at(a[i], b[i], c[i], d[i]);
    storeVector(to, result);
}

// Hermite from b to c. A tangent is half the way from the point before to the point behind.
template <int n>
inline void catmullRom(const Unaligned* a, const Unaligned* b, const Unaligned* c, const Unaligned* d, float t,
                       Unaligned* to) {
    const HermiteWeights weights(t);
    Vector<n> result;
    for (int i = 0; i < n; ++i) {
        const float tangent = (c[i] - a[i]) * 0.5F, endsTangent = (d[i] - b[i]) * 0.5F;
        result[i] = weights.at(b[i], tangent, c[i], endsTangent);
    }
    storeVector(to, result);
}

}  // namespace korm
