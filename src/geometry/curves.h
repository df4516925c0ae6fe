// Curves between given points, element by element.
#pragma once

#include <emmintrin.h>

#include "geometry/elements.h"

namespace korm::inline KORM_VARIANT::geometry {

template <int n>
inline void baryCentric(const Unaligned* a, const Unaligned* b, const Unaligned* c, float f, float g, Unaligned* d) {
    const Float4 forB = all<Float4>(inRegister(f)), forC = all<Float4>(inRegister(g));
    const Float4 first = loadElements<n>(a), second = loadElements<n>(b), third = loadElements<n>(c);
    storeLoadedElements<n>(d, ((second - first) * forB + first) + (third - first) * forC);
}

template <int n>
inline void linear(const Unaligned* a, const Unaligned* b, float t, Unaligned* d) {
    const Float4 part = all<Float4>(inRegister(t)), first = loadElements<n>(a), second = loadElements<n>(b);
    storeLoadedElements<n>(d, first + (second - first) * part);
}

// The powers of t are rounded to float, their sums formed in double and rounded again. `startOverEnd` weights
// the difference of the two points: its basis functions add up to 1. Both sums in double are formed side by side, and
// every weight is in all lanes.
struct HermiteWeights {
    Float4 startTangent;  // t - t2 - t2 + t3
    Float4 startOverEnd;  // t3 - 3 * t2 + t3
    Float4 endTangent;    // t3 - t2, which rounds to float alike from float and from double

    explicit HermiteWeights(float parameter) {
        const Float4 t = settled(all<Float4>(inRegister(parameter))), square = t * t, cube = square * t;
        const Double2 first = _mm_cvtps_pd(interleaveLow(t, cube)), squares = _mm_cvtps_pd(square);
        const Double2 differences = first - squares * Double2{1.0, 3.0};
        const Float4 sums = _mm_cvtpd_ps(_mm_sub_sd(differences, squares) + interleaveHigh(first, first));
        startTangent = everyLane<0>(sums);
        startOverEnd = everyLane<1>(sums);
        endTangent = cube - square;
    }

    Float4 at(Float4 start, Float4 tangent, Float4 end, Float4 endsTangent) const {
        return (start - end) * startOverEnd + ((start + tangent * startTangent) + endsTangent * endTangent);
    }
};

template <int n>
inline void hermite(const Unaligned* a, const Unaligned* b, const Unaligned* c, const Unaligned* d, float t,
                    Unaligned* to) {
    const HermiteWeights weights(t);
    storeLoadedElements<n>(to,
                           weights.at(loadElements<n>(a), loadElements<n>(b), loadElements<n>(c), loadElements<n>(d)));
}

// Hermite from b to c. A tangent is half the way from the point before to the point behind.
template <int n>
inline void catmullRom(const Unaligned* a, const Unaligned* b, const Unaligned* c, const Unaligned* d, float t,
                       Unaligned* to) {
    const HermiteWeights weights(t);
    const Float4 half = all<Float4>(0.5F), start = loadElements<n>(b), end = loadElements<n>(c);
    const Float4 tangent = (end - loadElements<n>(a)) * half, endsTangent = (loadElements<n>(d) - start) * half;
    storeLoadedElements<n>(to, weights.at(start, tangent, end, endsTangent));
}

}  // namespace korm::inline KORM_VARIANT::geometry
