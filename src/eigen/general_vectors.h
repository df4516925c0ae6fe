// General eigenvalues and eigenvectors.
//
// The work area holds the transpose of the matrix, and Left and Right are named by the work area: what is a right eigenvector
// there is a left one of the caller's matrix.
#pragma once

#include <cstddef>
#include <cstdint>

#include "eigen/general_iteration.h"
#include "eigen/general_substitution.h"
#include "eigen/general_values.h"
#include "entry/parallel.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// A real vector gets length 1. A complex one, too, and is turned until its greatest element has hardly an imaginary part.
template <class P>
[[gnu::noinline]] void normalise(Columns<P> w, Strip<P> imaginaryParts) {
    using S = typename P::Scalar;
    using N = typename P::Norm;
    constexpr S zero = Limits<typename P::Element>::negligible;
    const std::ptrdiff_t n = w.n;
    const auto squares = [&](Strip<P> column) {
        return adjacentSum<N>(n, [&](std::ptrdiff_t i) {
            const N x = static_cast<N>(column[i]);
            return x * x;
        });
    };
    const auto scale = [&](Strip<P> column, S factor) {
        for (std::ptrdiff_t i = 0; i < n; ++i) column.set(i, column[i] * factor);
    };
    for (std::ptrdiff_t j = 0; j < n; ++j) {
        const Strip<P> re = w.column(j);
        if (magnitude(imaginaryParts[j]) < zero) {
            const N sum = squares(re);
            if (sum > N(zero)) scale(re, reciprocalRoot<P>(static_cast<S>(sum)));
            continue;
        }
        const Strip<P> im = w.column(++j);
        const S factor = reciprocalRoot<P>(static_cast<S>(squares(re) + squares(im)));
        scale(re, factor);
        scale(im, factor);
        std::ptrdiff_t k = 0;
        S greatest = re[0] * re[0] + im[0] * im[0];
        for (std::ptrdiff_t i = 1; i < n; ++i) {
            const S size = re[i] * re[i] + im[i] * im[i];
            if (!(size > greatest)) continue;
            greatest = size;
            k = i;
        }
        const S f = re[k], g = im[k], r = squareRoot(f * f + g * g);
        const bool turned = magnitude(f) > magnitude(g) && f / r < 0;
        const S c = turned ? -(f / r) : f / r, s = turned ? -(g / r) : g / r;
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            const S x = re[i], y = im[i];
            re.set(i, c * x + s * y);
            im.set(i, c * y - s * x);
        }
    }
}

enum class Sides { right, left, both };

struct Outcome {
    std::int32_t status;
    bool delivered;
};

// One object, from its transpose in the buffer to vectors: the matrix, the vectors, for both sides the others, then reflections'
// factors or right-hand sides.
template <class P>
[[gnu::noinline]] Outcome findVectors(typename P::Element* buffer, typename P::Element* re, typename P::Element* im,
                                      std::ptrdiff_t n, Sides sides, Rotation<typename P::Scalar>& rotation) {
    const Columns<P> h{{reinterpret_cast<std::byte*>(buffer)}, n}, w{h.column(n), n}, x{w.column(n), n};
    const Strip<P> tau = sides == Sides::both ? x.column(n) : x.elements;
    const Strip<P> norms{tau.address(n)}, realPart{norms.address(n)}, imaginaryPart{realPart.address(n)};
    reduceToHessenberg(h, tau, norms);
    collectReflections(h, tau, w);
    clearBelowSubdiagonal(h);
    const std::int32_t status = iterate<P, true>(h, w, re, im, &rotation);
    if (status != korStatusOk) return {status, false};

    if (sides == Sides::both)
        for (std::ptrdiff_t i = 0; i < n * n; ++i) x.elements.set(i, w.elements[i]);
    const Columns<P> lefts = sides == Sides::both ? x : w;
    Substitution<P> substitution{h, w, norms, realPart, imaginaryPart};
    substitution.addUpColumns();
    Ending ending = Ending::done;
    if (sides != Sides::left) ending = substitution.allRight();
    if (ending == Ending::done && sides != Sides::right) {
        substitution.w = lefts;
        ending = substitution.allLeft();
    }
    switch (ending) {
        case Ending::done: break;
        case Ending::noConvergence: return {korStatusNoConvergence, false};
        case Ending::nearSingular: return {korStatusOk, false};
        case Ending::nearSingularComplex: return {korStatusNearSingularBlock, false};
    }
    const Strip<P> imaginaryParts{reinterpret_cast<std::byte*>(im)};
    normalise(w, imaginaryParts);
    if (sides == Sides::both) normalise(x, imaginaryParts);
    return {korStatusOk, true};
}

template <class P, class D>
[[gnu::always_inline]] inline void writeVectors(Columns<P> w, const D& dst) {
    using T = typename P::Element;
    for (std::ptrdiff_t i = 0; i < w.n; ++i)
        for (std::ptrdiff_t j = 0; j < w.n; ++j) store(dst.address(i, j), load<T>(w.column(j).address(i)));
}

// A rotation lives as long as a call: a block that doesn't set it turns by that of the block before. An object whose vectors
// aren't delivered ends a call, also where its status is Ok.
template <class P, Sides sides, class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t eigenvectors(const A& src, const D& first, const D& second,
                                                        typename A::Element* re, typename A::Element* im,
                                                        typename A::Element* buffer, std::int32_t order, Count count) {
    using T = typename P::Element;
    const std::ptrdiff_t n = order;
    const Columns<P> h{{reinterpret_cast<std::byte*>(buffer)}, n}, w{h.column(n), n}, x{w.column(n), n};
    Rotation<typename P::Scalar> rotation{};
    for (std::int32_t k = 0; k < count; ++k) {
        T* const realParts = shiftedElements(re, k, n);
        T* const imaginaryParts = shiftedElements(im, k, n);
        if (n == 1) {
            const auto values = plain(realParts, noRows).at(0), zeros = plain(imaginaryParts, noRows).at(0);
            store(values.address(0, 0), load<T>(src.at(k).address(0, 0)));
            store(zeros.address(0, 0), T{});
            store(first.at(k).address(0, 0), T{1});
            if (sides == Sides::both) store(second.at(k).address(0, 0), T{1});
            continue;
        }
        readTransposed(src.at(k), h);
        const Outcome outcome = findVectors<P>(buffer, realParts, imaginaryParts, n, sides, rotation);
        if (!outcome.delivered) return outcome.status;
        writeVectors(w, first.at(k));
        if (sides == Sides::both) writeVectors(x, second.at(k));
    }
    return korStatusOk;
}

// Both sets: those of the right go to the first destination.
template <class P, class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t bothEigenvectors(const A& src, const D& rights, const D& lefts,
                                                            typename A::Element* re, typename A::Element* im,
                                                            typename A::Element* buffer, std::int32_t order,
                                                            Count count) {
    return eigenvectors<P, Sides::both>(src, rights, lefts, re, im, buffer, order, count);
}

template <Sides sides, class P, class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t eigenvectorsOf(const A& src, const D& dst, typename A::Element* re,
                                                          typename A::Element* im, typename A::Element* buffer,
                                                          std::int32_t order, Count count) {
    return eigenvectors<P, sides>(src, dst, dst, re, im, buffer, order, count);
}

}  // namespace korm::inline KORM_VARIANT::eigen
