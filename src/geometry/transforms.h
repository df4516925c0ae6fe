// Vectors through a 4 by 4 matrix: row vectors on its left, one at a time or many.
//
// A transform holds its matrix and maps one vector, two or four at a time by the expression of its form, whose
// order of operations is part of the interface. Lanes that aren't stored repeat one that is.
#pragma once

#include "geometry/batches.h"
#include "geometry/elements.h"
#include "geometry/lanes.h"

namespace korm::inline KORM_VARIANT::geometry {

// Elements 0 and 1 of a row, twice; and its elements 2 and 3.
inline Float4 lowTwice(const Unaligned* m, int r) { return lowPairTwice(loadRow(m, r)); }
inline Float4 highTwice(const Unaligned* m, int r) { return highPairTwice(loadRow(m, r)); }

// All four elements of the product. A v2 has z = 0, a v2 or v3 w = 1, and neither is computed with.
template <int n>
struct Affine {
    static constexpr int inputs = n, outputs = 4;

    template <class V>
    static Float4 sum(Float4 x, Float4 y, Float4 z, Float4 w, const V& v) {
        if constexpr (n == 2) return (w + x * v.x) + y * v.y;
        else if constexpr (n == 3) return ((w + x * v.x) + y * v.y) + z * v.z;
        else return (x * v.x + y * v.y) + (z * v.z + w * v.w);
    }

    struct One {
        Float4 x, y, z, w;

        explicit One(const Unaligned* m) : One(loadRow(m, 0), loadRow(m, 1), loadRow(m, 2), loadRow(m, 3)) {}
        One(Float4 row0, Float4 row1, Float4 row2, Float4 row3) : x(row0), y(row1), z(row2), w(row3) {}
        Float4 operator()(const Unaligned* v) const { return sum(x, y, z, w, repeated<n>(v)); }
    };

    // Two vectors give the first halves of both results, and the second halves.
    struct Two {
        Float4 x[2], y[2], z[2], w[2];

        explicit Two(const Unaligned* m)
            : x{lowTwice(m, 0), highTwice(m, 0)},
              y{lowTwice(m, 1), highTwice(m, 1)},
              z{lowTwice(m, 2), highTwice(m, 2)},
              w{lowTwice(m, 3), highTwice(m, 3)} {}
        Float4 operator()(const TwoVectors& v, int half) const { return sum(x[half], y[half], z[half], w[half], v); }
    };
};

// Three elements divided by the fourth, each by a division of its own.
inline Float4 dividedByFourth(Float4 v) { return __builtin_shufflevector(v, v, 0, 1, 2, 2) / everyLane<3>(v); }

template <int n>
struct Coord;

template <>
struct Coord<3> {
    static constexpr int inputs = 3, outputs = 3;

    template <class V>
    static Float4 sum(Float4 x, Float4 y, Float4 z, Float4 w, const V& v) {
        return (w + z * v.z) + (x * v.x + y * v.y);
    }

    struct One {
        Float4 x, y, z, w;

        explicit One(const Unaligned* m) : x(loadRow(m, 0)), y(loadRow(m, 1)), z(loadRow(m, 2)), w(loadRow(m, 3)) {}
        Float4 product(const Unaligned* v) const { return sum(x, y, z, w, repeated<3>(v)); }
        Float4 operator()(const Unaligned* v) const { return dividedByFourth(product(v)); }
    };

    struct Four {
        Float4 m[16];

        explicit Four(const Unaligned* from) {
            for (int i = 0; i < 16; ++i) m[i] = all<Float4>(from[i]);
        }
        FourVectors operator()(const FourVectors& v) const {
            const Float4 fourth = sum(m[3], m[7], m[11], m[15], v);
            return {sum(m[0], m[4], m[8], m[12], v) / fourth, sum(m[1], m[5], m[9], m[13], v) / fourth,
                    sum(m[2], m[6], m[10], m[14], v) / fourth};
        }
    };
};

template <>
struct Coord<2> {
    static constexpr int inputs = 2, outputs = 2;

    template <class V>
    static Float4 sum(Float4 x, Float4 y, Float4 w, const V& v) {
        return (x * v.x + w) + y * v.y;
    }

    // Both elements, the second of two vectors as well, over the fourth.
    struct Two {
        Float4 x, y, w, xFourth, yFourth, wFourth;

        explicit Two(const Unaligned* m)
            : x(lowTwice(m, 0)),
              y(lowTwice(m, 1)),
              w(lowTwice(m, 3)),
              xFourth(all<Float4>(m[3])),
              yFourth(all<Float4>(m[7])),
              wFourth(all<Float4>(m[15])) {}
        template <class V>
        Float4 of(const V& v) const {
            return sum(x, y, w, v) / sum(xFourth, yFourth, wFourth, v);
        }
        Float4 operator()(const TwoVectors& v) const { return of(v); }
    };

    struct One : Two {
        using Two::Two;
        Float4 operator()(const Unaligned* v) const { return Two::of(repeated<2>(v)); }
    };
};

// Without the translation.
template <int n>
struct Normal;

template <>
struct Normal<2> {
    static constexpr int inputs = 2, outputs = 2;

    struct Two {
        Float4 x, y;

        explicit Two(const Unaligned* m) : x(lowTwice(m, 0)), y(lowTwice(m, 1)) {}
        template <class V>
        Float4 of(const V& v) const {
            return x * v.x + y * v.y;
        }
        Float4 operator()(const TwoVectors& v) const { return of(v); }
    };

    struct One : Two {
        using Two::Two;
        Float4 operator()(const Unaligned* v) const { return Two::of(repeated<2>(v)); }
    };
};

template <>
struct Normal<3> {
    static constexpr int inputs = 3, outputs = 3;

    template <class V>
    static Float4 sum(Float4 x, Float4 y, Float4 z, const V& v) {
        return (x * v.x + y * v.y) + z * v.z;
    }

    struct One {
        Float4 x, y, z;

        explicit One(const Unaligned* m) : x(row(m, 0)), y(row(m, 1)), z(row(m, 2)) {}
        static Float4 row(const Unaligned* m, int r) {
            const Float4 all = loadRow(m, r);
            return __builtin_shufflevector(all, all, 0, 1, 2, 2);
        }
        Float4 operator()(const Unaligned* v) const { return sum(x, y, z, repeated<3>(v)); }
    };

    struct Four {
        Float4 m[3][3];

        explicit Four(const Unaligned* from) {
            for (int r = 0; r < 3; ++r)
                for (int c = 0; c < 3; ++c) m[r][c] = all<Float4>(from[4 * r + c]);
        }
        FourVectors operator()(const FourVectors& v) const {
            return {sum(m[0][0], m[1][0], m[2][0], v), sum(m[0][1], m[1][1], m[2][1], v),
                    sum(m[0][2], m[1][2], m[2][2], v)};
        }
    };
};

template <class Transform>
inline void transformOne(const Unaligned* matrix, const Unaligned* src, Unaligned* dst) {
    storeElements<Transform::outputs>(dst, typename Transform::One(matrix)(src));
}

template <class Transform>
inline void transformAll(const Unaligned* matrix, const Unaligned* src, std::int32_t srcStride, Unaligned* dst,
                         std::int32_t dstStride, std::int32_t count) {
    if (count < 1) return;
    batch<Transform>(src, srcStride, dst, dstStride, count, matrix);
}

}  // namespace korm::inline KORM_VARIANT::geometry
