// Vectors of 2, 3 or 4 elements.
//
// Every operation is rounded to float, and sums run from element 0 upwards: nothing is widened but the sum of
// squares in front of a square root, after it is complete.
#pragma once

#include <cmath>

#include "geometry/elements.h"

namespace korm::inline KORM_VARIANT::geometry {

template <int n>
inline void addVectors(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    storeLoadedElements<n>(d, loadElements<n>(a) + loadElements<n>(b));
}

template <int n>
inline void subtractVectors(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    storeLoadedElements<n>(d, loadElements<n>(a) - loadElements<n>(b));
}

// A failed comparison, as with a NaN, takes the second: that is how the processor chooses.
template <int n>
inline void minElements(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    storeLoadedElements<n>(d, _mm_min_ps(loadElements<n>(a), loadElements<n>(b)));
}

template <int n>
inline void maxElements(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    storeLoadedElements<n>(d, _mm_max_ps(loadElements<n>(a), loadElements<n>(b)));
}

template <int n>
inline void scaleVector(const Unaligned* a, float factor, Unaligned* d) {
    storeLoadedElements<n>(d, loadElements<n>(a) * all<Float4>(inRegister(factor)));
}

// Of the elements of a vector as loadElements gives it.
template <int n>
inline float sumOf(Float4 v) {
    if constexpr (n == 2) return v[0] + v[1];
    else if constexpr (n == 3) return (v[0] + v[1]) + v[3];
    else return ((v[0] + v[1]) + v[2]) + v[3];
}

template <int n>
inline float lengthOf(Float4 v) {
    return static_cast<float>(std::sqrt(static_cast<double>(sumOf<n>(v * v))));
}

template <int n>
inline void dotProduct(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    *d = sumOf<n>(loadElements<n>(a) * loadElements<n>(b));
}

template <int n>
inline void squaredLength(const Unaligned* a, Unaligned* d) {
    dotProduct<n>(a, a, d);
}

template <int n>
inline void length(const Unaligned* a, Unaligned* d) {
    *d = lengthOf<n>(loadElements<n>(a));
}

// A division for each element: a multiplication by the reciprocal would round twice.
template <int n>
inline Float4 normalized(Float4 v) {
    return v / all<Float4>(lengthOf<n>(v));
}

template <int n>
inline void normalize(const Unaligned* a, Unaligned* d) {
    storeLoadedElements<n>(d, normalized<n>(loadElements<n>(a)));
}

inline void crossProduct2(const Unaligned* a, const Unaligned* b, Unaligned* d) { *d = a[0] * b[1] - a[1] * b[0]; }

// Each element is stored before the next is computed from what is in memory then.
inline void crossProduct3(const Unaligned* a, const Unaligned* b, Unaligned* d) {
    d[0] = a[1] * b[2] - a[2] * b[1];
    d[1] = a[2] * b[0] - a[0] * b[2];
    d[2] = a[0] * b[1] - a[1] * b[0];
}

// Of three rows of four, the minors of three columns along the first row: lane j is for the minor without column j. Of
// its columns `front` is the first, `middle` the second, `back` the third.
inline Float4 minorsOf(Float4 first, Float4 second, Float4 third) {
    const auto front = [](Float4 row) { return __builtin_shufflevector(row, row, 1, 0, 0, 0); };
    const auto middle = [](Float4 row) { return __builtin_shufflevector(row, row, 2, 2, 1, 1); };
    const auto back = [](Float4 row) { return __builtin_shufflevector(row, row, 3, 3, 3, 2); };
    const Float4 behindFront = middle(second) * back(third) - back(second) * middle(third);
    const Float4 besidesMiddle = front(second) * back(third) - back(second) * front(third);
    const Float4 beforeBack = front(second) * middle(third) - middle(second) * front(third);
    return (behindFront * front(first) - besidesMiddle * middle(first)) + beforeBack * back(first);
}

// The vector orthogonal to three others. 0 - x is a subtraction, not a change of sign: it never gives -0.
inline void crossProduct4(const Unaligned* u, const Unaligned* v, const Unaligned* w, Unaligned* d) {
    const Float4 minors = minorsOf(loadRow(u, 0), loadRow(v, 0), loadRow(w, 0));
    const Float4 turned = all<Float4>(0.0F) - minors;
    storeRow(d, 0, __builtin_shufflevector(minors, turned, 0, 5, 2, 7));
}

}  // namespace korm::inline KORM_VARIANT::geometry
