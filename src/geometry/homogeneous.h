// Arrays of vectors through a homogeneous transform: columns on the right of a matrix with strides.
#pragma once

#include <cfloat>
#include <cmath>

#include "entry/views.h"
#include "geometry/lanes.h"
#include "korm.h"

namespace korm {

// The rows of the matrix, in one lane (float) or in four at once.
template <class S>
struct Homogeneous {
    S a[4][4];

    S fourth(S x, S y, S z) const { return ((a[3][0] * x + a[3][3]) + a[3][1] * y) + a[3][2] * z; }

    // One division; the elements are multiplied by what it gives.
    S element(int i, S x, S y, S z, S reciprocal) const {
        return (((x * a[i][0] + a[i][3]) + y * a[i][1]) + z * a[i][2]) * reciprocal;
    }
};

// The fourth element has to lie above the smallest normal number; a NaN does not.
inline bool isDegenerate(float fourth) { return !(std::fabs(fourth) > FLT_MIN); }

// Returns whether the vector was degenerate.
template <class Source, class Result>
inline bool transformVector(const Homogeneous<float>& matrix, const Source& from, const Result& to) {
    const float x = load<float>(from.address(0, 0)), y = load<float>(from.address(0, 1)),
                z = load<float>(from.address(0, 2));
    const float fourth = matrix.fourth(x, y, z);
    float result[3] = {FLT_MAX, FLT_MAX, FLT_MAX};
    const bool degenerate = isDegenerate(fourth);
    if (!degenerate) {
        const float reciprocal = 1.0F / fourth;
        for (int i = 0; i < 3; ++i) result[i] = matrix.element(i, x, y, z, reciprocal);
    }
    for (int i = 0; i < 3; ++i) store(to.address(0, i), result[i]);
    return degenerate;
}

// Element j of four vectors from object k on.
template <class View>
inline Float4 loadElement(const View& view, std::ptrdiff_t k, int j) {
    return gather<float>(view.at(k).address(0, j), view.objectStride);
}

template <bool packed, class Source>
inline FourVectors loadObjects(const Source& src, std::ptrdiff_t k) {
    if constexpr (Source::spacing == Spacing::rowAdjacent)
        return loadFour<packed>(src.at(k).address(0, 0), src.objectStride);
    else return {loadElement(src, k, 0), loadElement(src, k, 1), loadElement(src, k, 2)};
}

template <bool packed, class Result>
inline void storeObjects(const Result& dst, std::ptrdiff_t k, const FourVectors& v) {
    if constexpr (Result::spacing == Spacing::rowAdjacent) {
        storeFour<packed>(dst.at(k).address(0, 0), dst.objectStride, v);
    } else {
        for (int i = 0; i < 4; ++i) {
            const auto to = dst.at(k + i);
            store(to.address(0, 0), v.x[i]);
            store(to.address(0, 1), v.y[i]);
            store(to.address(0, 2), v.z[i]);
        }
    }
}

// Four vectors a round; four with a degenerate one among them go one by one.
template <bool packed, class Source, class Result>
inline std::int32_t transformObjects(const Homogeneous<float>& matrix, const Source& src, const Result& dst,
                                     std::ptrdiff_t count) {
    Homogeneous<Float4> lanes;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) lanes.a[r][c] = broadcast(matrix.a[r][c]);
    const Float4 least = broadcast(FLT_MIN);

    bool anyDegenerate = false;
    std::ptrdiff_t k = 0;
    for (; k + 4 <= count; k += 4) {
        const FourVectors v = loadObjects<packed>(src, k);
        const Float4 fourth = lanes.fourth(v.x, v.y, v.z);
        const Float4 magnitude = _mm_andnot_ps(broadcast(-0.0F), fourth);
        if (_mm_movemask_ps(_mm_cmpgt_ps(magnitude, least)) == 0xf) [[likely]] {
            const Float4 reciprocal = broadcast(1.0F) / fourth;
            storeObjects<packed>(
                dst, k,
                {lanes.element(0, v.x, v.y, v.z, reciprocal), lanes.element(1, v.x, v.y, v.z, reciprocal),
                 lanes.element(2, v.x, v.y, v.z, reciprocal)});
        } else {
            for (std::ptrdiff_t i = k; i < k + 4; ++i) anyDegenerate |= transformVector(matrix, src.at(i), dst.at(i));
        }
    }
    for (; k < count; ++k) anyDegenerate |= transformVector(matrix, src.at(k), dst.at(k));
    return anyDegenerate ? korStatusDivideByZero : korStatusOk;
}

template <class Matrix, class Source, class Result>
inline std::int32_t transform3DH(const Matrix& matrix, const Source& src, const Result& dst, std::int32_t count) {
    Homogeneous<float> held;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) held.a[r][c] = load<float>(matrix.at(0).address(r, c));
    constexpr std::ptrdiff_t packed = 3 * sizeof(float);
    if constexpr (Source::spacing == Spacing::rowAdjacent) {
        if (src.objectStride == packed && dst.objectStride == packed)
            return transformObjects<true>(held, src, dst, count);
    } else if (src.elementStride == sizeof(float) && dst.elementStride == sizeof(float)) {
        // It was the matrix alone whose elements lie apart: one stored by columns.
        const auto touching = [](const auto& view, auto* origin) {
            return plainArray(origin, view.objectStride, noRows);
        };
        return transform3DH(matrix, touching(src, reinterpret_cast<const float*>(src.origin)),
                            touching(dst, reinterpret_cast<float*>(dst.origin)), count);
    }
    return transformObjects<false>(held, src, dst, count);
}

}  // namespace korm
