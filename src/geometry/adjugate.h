// The inverse of a 4 by 4 matrix as its adjugate times the reciprocal of its determinant.
//
// The order of operations of every cofactor is part of the interface, and it is the same along each row of the
// adjugate, but for the rows of the matrix that take part: lane j of everything here belongs to column j of the
// result. No division: the reciprocal is the processor's 12-bit approximation, improved by one Newton step.
#pragma once

#include <xmmintrin.h>

#include <cmath>

#include "geometry/lanes.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::geometry {

inline Float4 reciprocals(Float4 d) {
    const Float4 start = _mm_rcp_ps(d);
    return (start + start) - d * (start * start);
}

// Below this a determinant counts as zero.
inline constexpr float leastDeterminant = 0x1p-119F;

// A column of the matrix, its elements in the four orders that are needed. One instruction puts each together, of a
// kind that two units execute; interleaving twice would wait for the one unit that interleaves.
struct Column {
    Float4 ordered;    // rows 0 1 2 3
    Float4 exchanged;  // rows 1 0 3 2
    Float4 reversed;   // rows 3 2 1 0
    Float4 halves;     // rows 2 3 0 1

    // From rows 0 and 1, and rows 2 and 3, whose lanes `i` and `i` + 2 belong to this column.
    template <int i>
    static Column from(Float4 upper, Float4 lower) {
        return {__builtin_shufflevector(upper, lower, i, i + 2, i + 4, i + 6),
                __builtin_shufflevector(upper, lower, i + 2, i, i + 6, i + 4),
                __builtin_shufflevector(lower, upper, i + 2, i, i + 6, i + 4),
                __builtin_shufflevector(lower, upper, i, i + 2, i + 4, i + 6)};
    }
};

// Products of elements of two columns, and the same with the halves of the lanes exchanged: by a shuffle, since a second
// multiplication made an inverse 7 % slower. The units that multiply have the most to do.
struct Products {
    Float4 here;
    Float4 there;

    Products(const Column& a, const Column& b) : here(a.exchanged * b.reversed) {
        there = __builtin_shufflevector(here, here, 2, 3, 0, 1);
    }
};

inline std::int32_t invertAdjugate4(const Unaligned* src, std::int32_t srcRowStride, Unaligned* det, Unaligned* dst,
                                    std::int32_t dstRowStride) {
    const auto row = [&](int r) { return load<Float4>(bytes(src) + static_cast<std::ptrdiff_t>(r) * srcRowStride); };
    const Float4 row0 = row(0), row1 = row(1), row2 = row(2), row3 = row(3);
    const Float4 upperXZ = evenOfBoth(row0, row1), lowerXZ = evenOfBoth(row2, row3);
    const Float4 upperYW = oddOfBoth(row0, row1), lowerYW = oddOfBoth(row2, row3);
    const Column x = Column::from<0>(upperXZ, lowerXZ), z = Column::from<1>(upperXZ, lowerXZ);
    const Column y = Column::from<0>(upperYW, lowerYW), w = Column::from<1>(upperYW, lowerYW);

    const Products zw(z, w), yw(y, w), zy(z, y);
    const Float4 first = z.halves * yw.here +
                         (w.halves * zy.here + (y.halves * zw.there - y.halves * zw.here) - w.halves * zy.there) -
                         z.halves * yw.there;
    const Products xw(x, w), zx(z, x), xy(x, y);
    const Float4 second = w.halves * zx.there +
                          (z.halves * xw.there + (zw.here * x.halves - x.halves * zw.there - z.halves * xw.here)) -
                          w.halves * zx.here;
    const Float4 third = y.halves * xw.here +
                         (w.halves * xy.there - (w.halves * xy.here + (yw.here * x.halves - x.halves * yw.there))) -
                         xw.there * y.halves;
    const Float4 fourth = y.halves * zx.here + (z.halves * xy.here - (zy.here * x.halves - x.halves * zy.there) -
                                                xy.there * z.halves - y.halves * zx.there);

    // The sum of terms 3 and 1 and that of 2 and 0, and theirs, in every lane: so the reciprocal is there at once.
    const Float4 terms = x.ordered * first;
    const Float4 sums = terms + __builtin_shufflevector(terms, terms, 2, 3, 0, 1);
    const Float4 determinant = __builtin_shufflevector(sums, sums, 1, 0, 3, 2) + sums;
    const float d = determinant[0];
    if (std::fabs(d) < leastDeterminant) {
        if (det != nullptr) *det = 0;
        return korStatusSingular;
    }
    if (det != nullptr) *det = d;

    const Float4 r = reciprocals(determinant);
    const auto storeRow = [&](int i, Float4 cofactors) {
        store(bytes(dst) + static_cast<std::ptrdiff_t>(i) * dstRowStride, cofactors * r);
    };
    storeRow(0, first);
    storeRow(1, second);
    storeRow(2, third);
    storeRow(3, fourth);
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::geometry
