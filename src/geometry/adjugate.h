// The inverse of a 4 by 4 matrix as its adjugate times the reciprocal of its determinant.
//
// The order of operations of every cofactor is part of the interface, and it is the same along each row of the
// adjugate, but for the rows of the matrix that take part: lane j of everything here belongs to column j of the
// result. No division: the reciprocal is the processor's 12-bit approximation, improved by one Newton step.
#pragma once

#include <xmmintrin.h>

#include <cmath>

#include "geometry/elements.h"
#include "korm.h"

namespace korm {

inline float reciprocal(float d) {
    const float start = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(d)));
    return (start + start) - d * (start * start);
}

// Below this a determinant counts as zero.
inline constexpr float leastDeterminant = 0x1p-119F;

// A column of the matrix, its elements in the four orders that are needed.
struct Column {
    Float4 ordered;    // rows 0 1 2 3
    Float4 exchanged;  // rows 1 0 3 2
    Float4 reversed;   // rows 3 2 1 0
    Float4 halves;     // rows 2 3 0 1

    // From (row 0, row 1) and (row 2, row 3) of this column, in the lanes from `i` on.
    template <int i>
    static Column from(Float4 upper, Float4 lower) {
        return {__builtin_shufflevector(upper, lower, i, i + 1, i + 4, i + 5),
                __builtin_shufflevector(upper, lower, i + 1, i, i + 5, i + 4),
                __builtin_shufflevector(lower, upper, i + 1, i, i + 5, i + 4),
                __builtin_shufflevector(lower, upper, i, i + 1, i + 4, i + 5)};
    }
};

// Products of elements of two columns, and the same with the halves of the lanes exchanged.
struct Products {
    Float4 here;
    Float4 there;

    Products(const Column& a, const Column& b) : here(a.exchanged * b.reversed) {
        there = __builtin_shufflevector(here, here, 2, 3, 0, 1);
    }
};

inline std::int32_t invertAdjugate4(const Unaligned* src, std::int32_t srcRowStride, Unaligned* det, Unaligned* dst,
                                    std::int32_t dstRowStride) {
    const auto row = [&](int r) {
        return loadLanes<float>(bytes(src) + static_cast<std::ptrdiff_t>(r) * srcRowStride);
    };
    const Float4 row0 = row(0), row1 = row(1), row2 = row(2), row3 = row(3);
    const Float4 upper01 = interleaveLow(row0, row1), lower01 = interleaveLow(row2, row3);
    const Float4 upper23 = interleaveHigh(row0, row1), lower23 = interleaveHigh(row2, row3);
    const Column x = Column::from<0>(upper01, lower01), y = Column::from<2>(upper01, lower01);
    const Column z = Column::from<0>(upper23, lower23), w = Column::from<2>(upper23, lower23);

    const Products zw(z, w), yw(y, w), zy(z, y);
    const Float4 first = z.halves * yw.here +
                         (w.halves * zy.here + (y.halves * zw.there - y.halves * zw.here) - w.halves * zy.there) -
                         z.halves * yw.there;

    const Float4 terms = x.ordered * first;
    const float d = terms[3] + terms[1] + (terms[2] + terms[0]);
    if (std::fabs(d) < leastDeterminant) {
        if (det != nullptr) *det = 0;
        return korStatusSingular;
    }
    if (det != nullptr) *det = d;
    const Float4 r = broadcast(reciprocal(d));

    const Products xw(x, w), zx(z, x), xy(x, y);
    const Float4 second = w.halves * zx.there +
                          (z.halves * xw.there + (zw.here * x.halves - x.halves * zw.there - z.halves * xw.here)) -
                          w.halves * zx.here;
    const Float4 third = y.halves * xw.here +
                         (w.halves * xy.there - (w.halves * xy.here + (yw.here * x.halves - x.halves * yw.there))) -
                         xw.there * y.halves;
    const Float4 fourth = y.halves * zx.here + (z.halves * xy.here - (zy.here * x.halves - x.halves * zy.there) -
                                                xy.there * z.halves - y.halves * zx.there);

    const auto store = [&](int i, Float4 cofactors) {
        storeLanes(bytes(dst) + static_cast<std::ptrdiff_t>(i) * dstRowStride, cofactors * r);
    };
    store(0, first);
    store(1, second);
    store(2, third);
    store(3, fourth);
    return korStatusOk;
}

}  // namespace korm
