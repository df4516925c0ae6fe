// General eigenvalues.
#pragma once

#include <cstddef>
#include <cstdint>

#include "eigen/general_iteration.h"
#include "entry/parallel.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// Row i of the source becomes column i of the work area, which so holds the transpose.
template <class P, class A>
[[gnu::always_inline]] inline void readTransposed(const A& src, Columns<P> h) {
    using T = typename P::Element;
    for (std::ptrdiff_t i = 0; i < h.n; ++i)
        for (std::ptrdiff_t j = 0; j < h.n; ++j) store(h.column(i).address(j), load<T>(src.address(i, j)));
}

// The buffer: the matrix, the reflections' factors, a vector to work with. The rest of it isn't touched.
template <class A, class Count>
[[gnu::always_inline]] inline std::int32_t eigenvalues(const A& src, typename A::Element* re, typename A::Element* im,
                                                       typename A::Element* buffer, std::int32_t order, Count count) {
    using P = ElementScalars<typename A::Element>;
    const std::ptrdiff_t n = order;
    const Columns<P> h{{reinterpret_cast<std::byte*>(buffer)}, n};
    const Strip<P> tau{h.column(n).origin}, work{tau.address(n)};
    for (std::int32_t k = 0; k < count; ++k) {
        readTransposed(src.at(k), h);
        reduceToHessenberg(h, tau, work);
        clearBelowSubdiagonal(h);
        const std::int32_t status =
            iterate<P, false>(h, Columns<P>{}, shiftedElements(re, k, n), shiftedElements(im, k, n), nullptr);
        if (status != korStatusOk) return status;
    }
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::eigen
