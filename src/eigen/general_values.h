// General eigenvalues.
#pragma once

#include <cstddef>
#include <cstdint>

#include "eigen/general_iteration.h"
#include "entry/parallel.h"
#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// Row i of the source becomes column i of the work area, which so holds the transpose.
template <class P, int step, class A>
[[gnu::always_inline]] inline void readTransposed(const A& src, Columns<P, step> h) {
    using T = typename P::Element;
    for (std::ptrdiff_t i = 0; i < h.n; ++i)
        for (std::ptrdiff_t j = 0; j < h.n; ++j) store(h.column(i).address(j), load<T>(src.address(i, j)));
}

// Up to this order a group's matrices lie on the stack.
inline constexpr std::int32_t largestTogether = 24;

// Cells of a group's matrices and vectors on the stack.
template <class P, int matrices>
struct Together {
    using T = typename P::Element;
    static constexpr int lanes = lanesOf<typename P::Scalar>;
    alignas(16) std::byte bytes[(matrices * largestTogether + 2) * largestTogether * lanes * sizeof(T)];

    Columns<P> matrix(std::ptrdiff_t n, int which) { return {Columns<P>{{bytes}, n}.column(which * n), n}; }
    Strip<P> vector(std::ptrdiff_t n, int which) { return matrix(n, matrices).column(which); }
};

// The transposes of as many objects as there are lanes become the work area of a group.
template <class P, class View>
[[gnu::always_inline]] inline void readTogether(const View& src, std::ptrdiff_t k, Columns<P> h) {
    for (int l = 0; l < lanesOf<typename P::Scalar>; ++l) readTransposed(src.at(k + l), laneOf(h, l));
}

// Eigenvalues of a matrix that a group's iteration has left quasi-triangular.
template <class P, int step>
[[gnu::always_inline]] inline void readEigenvalues(Columns<P, step> h, Strip<P> re, Strip<P> im) {
    for (std::ptrdiff_t i = 0; i < h.n; ++i) {
        typename P::Scalar imaginary = 0;
        if (i + 1 < h.n && h(i + 1, i) != 0) {
            imaginary = finishPair<P>(h, h, i + 1, nullptr);
            re.set(i, h(i, i));
            im.set(i, imaginary);
            imaginary = 0 - imaginary;
            ++i;
        }
        re.set(i, h(i, i));
        im.set(i, imaginary);
    }
}

// Of a group, or of no object of it.
template <class P>
[[gnu::noinline]] bool eigenvaluesTogether(Together<P, 1>& area, const Single<typename P::One>& single,
                                           typename P::Element* re, typename P::Element* im, std::ptrdiff_t n,
                                           LaneUse<typename P::Scalar>& use) {
    const Columns<P> h = area.matrix(n, 0);
    reduceToHessenberg(h, area.vector(n, 0), area.vector(n, 1));
    clearBelowSubdiagonal(h);
    if (!iterateTogether<P, false>(h, h, single, nullptr, nullptr, use)) return false;
    for (int l = 0; l < lanesOf<typename P::Scalar>; ++l)
        readEigenvalues(laneOf(h, l), {reinterpret_cast<std::byte*>(shiftedElements(re, l, n))},
                        {reinterpret_cast<std::byte*>(shiftedElements(im, l, n))});
    return true;
}

// The buffer: the matrix, the reflections' factors, a vector to work with. The rest of it isn't touched.
template <class P, class A, class Count>
[[gnu::noinline]] std::int32_t eigenvaluesOf(const A src, typename A::Element* re, typename A::Element* im,
                                             typename A::Element* buffer, std::int32_t order, Count count) {
    const std::ptrdiff_t n = order;
    const Columns<P> h{{reinterpret_cast<std::byte*>(buffer)}, n};
    const Strip<P> tau{h.column(n).origin}, work{tau.address(n)};
    const auto valuesAt = [n](auto* values, std::ptrdiff_t k) {
        return shiftedElements(values, static_cast<std::int32_t>(k), n);
    };
    const auto each = [&](std::ptrdiff_t k) {
        readTransposed(src.at(k), h);
        reduceToHessenberg(h, tau, work);
        clearBelowSubdiagonal(h);
        return iterate<P, false>(h, h, valuesAt(re, k), valuesAt(im, k), nullptr, atStart(n));
    };
    if constexpr (!isOneObject<Count>) {
        using G = Grouped<P>;
        using S = typename G::Scalar;
        Pace pace(leastUse<typename P::Scalar>(n));
        const auto together = [&](std::ptrdiff_t k) {
            return pace.tryGroup<S>([&](LaneUse<S>& use) {
                Together<G, 1> area;
                readTogether(src, k, area.matrix(n, 0));
                return eigenvaluesTogether(area, {h, h, tau, work}, valuesAt(re, k), valuesAt(im, k), n, use);
            });
        };
        if (n > 2 && n <= largestTogether) return inGroups<lanesOf<S>>(count, together, each);
    }
    for (std::ptrdiff_t k = 0; k < count; ++k)
        if (const std::int32_t status = each(k); status != korStatusOk) return status;
    return korStatusOk;
}

template <class A, class Count>
[[gnu::always_inline]] inline std::int32_t eigenvalues(const A& src, typename A::Element* re, typename A::Element* im,
                                                       typename A::Element* buffer, std::int32_t order, Count count) {
    return eigenvaluesOf<ElementScalars<typename A::Element>>(withAnyObjects(src), re, im, buffer, order, count);
}

}  // namespace korm::inline KORM_VARIANT::eigen
