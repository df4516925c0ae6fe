// Arrays of vectors through a homogeneous transform: columns on the right of a matrix with strides.
//
// The sums are those of the row vectors' transform with the matrix transposed: rows 0 to 2 give the elements, row 3
// the divisor. There is one division; the elements are multiplied by what it gives.
#pragma once

#include <cfloat>
#include <cmath>

#include "entry/views.h"
#include "geometry/transforms.h"
#include "kernel/predicates.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::geometry {

// The divisor has to lie above the smallest normal number; a NaN does not.
inline bool isDegenerate(float divisor) { return !(std::fabs(divisor) > FLT_MIN); }

struct Homogeneous {
    static constexpr int inputs = 3, outputs = 3;

    Affine<3>::One one;
    std::int32_t status = korStatusOk;

    explicit Homogeneous(const Affine<3>::One& transposed) : one(transposed) {}

    // The elements in lanes 0 to 2.
    Float4 transform(float x, float y, float z) {
        const Repeated v{all<Float4>(x), all<Float4>(y), all<Float4>(z), {}};
        const Float4 sums = Affine<3>::sum(one.x, one.y, one.z, one.w, v);
        const float divisor = sums[3];
        if (isDegenerate(divisor)) {
            status = korStatusDivideByZero;
            return all<Float4>(FLT_MAX);
        }
        return sums * all<Float4>(1.0F / divisor);
    }
};

// The same for four vectors in lanes: element by element, of which the fourth is the divisor.
struct FourHomogeneous {
    Float4 x[4], y[4], z[4], w[4];

    explicit FourHomogeneous(const Affine<3>::One& one) {
        const auto spread = [](Float4 row, Float4(&elements)[4]) {
            elements[0] = everyLane<0>(row);
            elements[1] = everyLane<1>(row);
            elements[2] = everyLane<2>(row);
            elements[3] = everyLane<3>(row);
        };
        spread(one.x, x);
        spread(one.y, y);
        spread(one.z, z);
        spread(one.w, w);
    }
    Float4 sum(int element, const FourVectors& v) const {
        return Affine<3>::sum(x[element], y[element], z[element], w[element], v);
    }
};

template <class From, class To>
[[gnu::noinline]] void transformObject(Homogeneous& matrix, const From& from, const To& to) {
    const Float4 result = matrix.transform(load<float>(from.address(0, 0)), load<float>(from.address(0, 1)),
                                           load<float>(from.address(0, 2)));
    for (int i = 0; i < 3; ++i) store(to.address(0, i), result[i]);
}

// Four vectors a round, whose elements touch; four with a degenerate one among them go one by one. A round is inlined
// always: with the matrix behind an address, as clang would have it, it takes a quarter longer.
template <class From, class To>
inline std::ptrdiff_t transformFours(Homogeneous& matrix, const From& src, const To& dst, const Vectors& vectors) {
    const FourHomogeneous four(matrix.one);
    const Float4 least = all<Float4>(FLT_MIN), one = all<Float4>(1.0F), sign = all<Float4>(-0.0F);
    const auto loop = [&](auto srcStep, auto dstStep) {
        const auto body = [&](std::ptrdiff_t k, const std::byte* from, std::byte* to) __attribute__((always_inline)) {
            const FourVectors v = loadFour(from, srcStep);
            const Float4 divisors = four.sum(3, v);
            if (_mm_movemask_ps(_mm_cmpgt_ps(_mm_andnot_ps(sign, divisors), least)) == 0xf) [[likely]] {
                const Float4 r = one / divisors;
                storeFour(to, dstStep, {four.sum(0, v) * r, four.sum(1, v) * r, four.sum(2, v) * r});
            } else {
                for (std::ptrdiff_t i = k; i < k + 4; ++i) transformObject(matrix, src.at(i), dst.at(i));
            }
        };
        return inRounds<4, 4>(vectors, srcStep, dstStep, body);
    };
    return withSteps<Homogeneous>(vectors, loop);
}

template <class From, class To>
inline std::int32_t transformObjects(Homogeneous& matrix, const From& src, const To& dst, std::ptrdiff_t count) {
    std::ptrdiff_t k = 0;
    if constexpr (isAdjacent<From>) {
        const Vectors vectors{src.at(0).address(0, 0), src.objectStride, dst.at(0).address(0, 0), dst.objectStride,
                              count};
        if (count >= 4 && mayReadAhead<Homogeneous>(vectors))  // fewer get no further than the last loop
            k = transformFours(matrix, src, dst, vectors);
    }
    for (; k < count; ++k) transformObject(matrix, src.at(k), dst.at(k));
    return matrix.status;
}

template <class Matrix, class From, class To>
inline std::int32_t transform3DH(const Matrix& matrix, const From& src, const To& dst, std::int32_t count) {
    // In registers: rows put together in memory would have to wait for their elements' stores.
    const auto column = [grid = matrix.at(0)](std::ptrdiff_t c) {
        return gatherFour(grid.address(0, c), grid.address(1, c) - grid.address(0, c));
    };
    Homogeneous held(Affine<3>::One(column(0), column(1), column(2), column(3)));
    if constexpr (From::spacing == Spacing::strided)
        if (src.elementStride == sizeof(float) && dst.elementStride == sizeof(float)) {
            // The matrix alone has elements that don't touch: it is stored by columns, say.
            const auto asAdjacent = [](auto* origin, std::ptrdiff_t stride) {
                return plainArray(origin, stride, noRows);
            };
            return transformObjects(held, asAdjacent(reinterpret_cast<const float*>(src.origin), src.objectStride),
                                    asAdjacent(reinterpret_cast<float*>(dst.origin), dst.objectStride), count);
        }
    return transformObjects(held, src, dst, count);
}

}  // namespace korm::inline KORM_VARIANT::geometry
