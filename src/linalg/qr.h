// QR decomposition by reflections, and solves with it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "korm.h"
#include "linalg/cores.h"
#include "linalg/qr_general.h"

namespace korm::inline KORM_VARIANT::linalg {

template <class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t qrDecomposition(A src, D dst, typename D::Element* buffer, MatrixShape shape,
                                                           Count count) {
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const std::int32_t status = cores::qrGeneral(src.at(k), dst.at(k), buffer, shape.width, shape.height);
        if (status != korStatusOk) return status;
    }
    return korStatusOk;
}

template <class A, class B, class D, class Count>
[[gnu::always_inline]] inline void qrSolve(A matrix, B src, D dst, typename D::Element* buffer, MatrixShape shape,
                                           Count count) {
    using T = typename D::Element;
    for (std::ptrdiff_t k = 0; k < count; ++k)
        qrSolveGeneral<T>(matrix.at(k), src.at(k), dst.at(k), buffer, shape.width, shape.height);
}

}  // namespace korm::inline KORM_VARIANT::linalg
