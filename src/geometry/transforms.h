// Vectors through a 4 by 4 matrix: row vectors on its left, one at a time or many.
//
// A transform holds its matrix in registers and maps a vector by the expression of its form, whose order of
// operations is part of the interface. Lanes that aren't stored repeat one that is.
#pragma once

#include "geometry/elements.h"

namespace korm {

template <int i>
inline Float4 everyLane(Float4 v) {
    return __builtin_shufflevector(v, v, i, i, i, i);
}

// All four elements of the product. A v2 has z = 0, a v2 or v3 w = 1, and neither is computed with.
template <int n>
struct Affine {
    static constexpr int inputs = n, outputs = 4;
    Float4 x, y, z, w;

    explicit Affine(const Unaligned* m) : x(loadRow(m, 0)), y(loadRow(m, 1)), z(loadRow(m, 2)), w(loadRow(m, 3)) {}

    Float4 operator()(const Vector<n>& v) const {
        if constexpr (n == 2) return (w + x * broadcast(v[0])) + y * broadcast(v[1]);
        else if constexpr (n == 3) return ((w + x * broadcast(v[0])) + y * broadcast(v[1])) + z * broadcast(v[2]);
        else return (x * broadcast(v[0]) + y * broadcast(v[1])) + (z * broadcast(v[2]) + w * broadcast(v[3]));
    }
};

// Three elements divided by the fourth, each by a division of its own.
inline Float4 dividedByFourth(Float4 v) { return __builtin_shufflevector(v, v, 0, 1, 2, 2) / everyLane<3>(v); }

template <int n>
struct Coord;

template <>
struct Coord<3> {
    static constexpr int inputs = 3, outputs = 3;
    Float4 x, y, z, w;

    explicit Coord(const Unaligned* m) : x(loadRow(m, 0)), y(loadRow(m, 1)), z(loadRow(m, 2)), w(loadRow(m, 3)) {}

    Float4 product(const Vector<3>& v) const {
        return (w + z * broadcast(v[2])) + (x * broadcast(v[0]) + y * broadcast(v[1]));
    }
    Float4 operator()(const Vector<3>& v) const { return dividedByFourth(product(v)); }
};

template <>
struct Coord<2> {
    static constexpr int inputs = 2, outputs = 2;
    Float4 x, y, w;

    explicit Coord(const Unaligned* m) : x(row(m, 0)), y(row(m, 1)), w(row(m, 3)) {}
    static Float4 row(const Unaligned* m, int r) {
        const Float4 all = loadRow(m, r);
        return __builtin_shufflevector(all, all, 0, 1, 3, 3);
    }

    Float4 operator()(const Vector<2>& v) const {
        const Float4 sums = (x * broadcast(v[0]) + w) + y * broadcast(v[1]);
        return lowPairTwice(sums) / everyLane<3>(sums);
    }
};

// Without the translation.
template <int n>
struct Normal {
    static constexpr int inputs = n, outputs = n;
    Float4 x, y, z;

    explicit Normal(const Unaligned* m) : x(row(m, 0)), y(row(m, 1)), z(n == 2 ? y : row(m, 2)) {}
    static Float4 row(const Unaligned* m, int r) {
        const Float4 all = loadRow(m, r);
        return n == 2 ? lowPairTwice(all) : __builtin_shufflevector(all, all, 0, 1, 2, 2);
    }

    Float4 operator()(const Vector<n>& v) const {
        const Float4 sums = x * broadcast(v[0]) + y * broadcast(v[1]);
        if constexpr (n == 2) return sums;
        else return sums + z * broadcast(v[2]);
    }
};

template <int outputs>
inline void storeFirst(Unaligned* to, Float4 v) {
    if constexpr (outputs == 4) storeLanes(bytes(to), v);
    else storePair(bytes(to), v);
    if constexpr (outputs == 3) to[2] = v[2];
}

template <class Transform>
inline void transformOne(const Unaligned* matrix, const Unaligned* src, Unaligned* dst) {
    storeFirst<Transform::outputs>(dst, Transform(matrix)(loadVector<Transform::inputs>(src)));
}

inline const Unaligned* moved(const Unaligned* from, std::ptrdiff_t distance) {
    return reinterpret_cast<const Unaligned*>(bytes(from) + distance);
}
inline Unaligned* moved(Unaligned* to, std::ptrdiff_t distance) {
    return reinterpret_cast<Unaligned*>(bytes(to) + distance);
}

template <class Transform>
inline void batch(const Transform& transform, const Unaligned* src, std::ptrdiff_t srcStride, Unaligned* dst,
                  std::ptrdiff_t dstStride, std::int32_t count) {
    for (std::ptrdiff_t k = 0; k < count; ++k)
        storeFirst<Transform::outputs>(moved(dst, k * dstStride),
                                       transform(loadVector<Transform::inputs>(moved(src, k * srcStride))));
}

template <class Transform>
inline void transformAll(const Unaligned* matrix, const Unaligned* src, std::int32_t srcStride, Unaligned* dst,
                         std::int32_t dstStride, std::int32_t count) {
    if (count < 1) return;
    batch(Transform(matrix), src, srcStride, dst, dstStride, count);
}

}  // namespace korm
