// QR decomposition by reflections, and solves with it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/predicates.h"
#include "linalg/cores.h"
#include "linalg/qr_groups.h"

namespace korm::inline KORM_VARIANT::linalg {

template <class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t qrDecomposition(A src, D dst, typename D::Element* buffer, MatrixShape shape,
                                                           Count count) {
    if constexpr (isOneObject<Count>) return qrOne(src.at(0), dst.at(0), buffer, shape.width, shape.height);
    else return qrArray(withAnyObjects<1>(src), withAnyObjects<1>(dst), buffer, shape.width, shape.height, count);
}

// One matrix for all vectors or one for each.
template <class A, class B, class D, class Count>
[[gnu::always_inline]] inline void qrSolve(A matrix, B src, D dst, typename D::Element* buffer, MatrixShape shape,
                                           Count count) {
    // Square matrices of orders 3 to 6 leave the caller's scratch alone.
    typename D::Element locals[6];
    if (shape.width == shape.height && shape.width >= 3 && shape.width <= 6) buffer = locals;
    if constexpr (isOneObject<Count>)
        cores::qrSolveGeneral(matrix.at(0), src.at(0), dst.at(0), buffer, shape.width, shape.height);
    else if constexpr (isShared<A>)
        qrSolveVectors(matrix, withAnyObjects<1>(src), withAnyObjects<1>(dst), buffer, shape.width, shape.height,
                       count);
    else
        qrSolveArray(withAnyObjects<1>(matrix), withAnyObjects<1>(src), withAnyObjects<1>(dst), buffer, shape.width,
                     shape.height, count);
}

}  // namespace korm::inline KORM_VARIANT::linalg
