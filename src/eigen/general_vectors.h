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

// The buffer of one object: the matrix, the vectors, for both sides the others, then vectors to work with.
template <class P>
struct Buffer {
    Columns<P> h, w, x;
    Strip<P> tau, norms, realPart, imaginaryPart;

    Buffer(typename P::Element* buffer, std::ptrdiff_t n, bool hasBothSides)
        : h{{reinterpret_cast<std::byte*>(buffer)}, n},
          w{h.column(n), n},
          x{w.column(n), n},
          tau{hasBothSides ? x.column(n) : x.elements},
          norms{tau.address(n)},
          realPart{norms.address(n)},
          imaginaryPart{realPart.address(n)} {}
};

// The first half: the transpose becomes quasi-triangular, w its Schur vectors.
template <class P>
[[gnu::noinline]] std::int32_t makeTriangular(const Buffer<P>& buffer, typename P::Element* re, typename P::Element* im,
                                              Rotation<typename P::Scalar>& rotation) {
    using Q = WithoutShifts<P>;
    using R = WithoutNorms<P>;
    reduceToHessenberg(as<Q>(buffer.h), as<Q>(buffer.tau), as<Q>(buffer.norms));
    collectReflections(as<R>(buffer.h), as<R>(buffer.tau), as<R>(buffer.w));
    clearBelowSubdiagonal(buffer.h);
    return iterate<P, true>(buffer.h, buffer.w, re, im, &rotation, atStart(buffer.h.n));
}

// The second half: from Schur vectors to eigenvectors.
template <class P>
[[gnu::noinline]] Outcome findVectors(const Buffer<P>& buffer, typename P::Element* im, Sides sides) {
    using Q = WithoutNorms<P>;
    const auto& [h, w, x, tau, norms, realPart, imaginaryPart] = buffer;
    const std::ptrdiff_t n = h.n;
    if (sides == Sides::both)
        for (std::ptrdiff_t i = 0; i < n * n; ++i) x.elements.set(i, w.elements[i]);
    const Columns<Q> lefts = as<Q>(sides == Sides::both ? x : w);
    Substitution<Q> substitution{as<Q>(h), as<Q>(w), as<Q>(norms), as<Q>(realPart), as<Q>(imaginaryPart)};
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

// The first half of a group. What it leaves are the matrices, which hold the real parts of eigenvalues, and the imaginary
// parts, those of one object after those of another.
template <class P>
struct Schur : Together<P, 2> {
    using E = ElementOf<typename P::Scalar>;
    E imaginaryParts[largestTogether * lanesOf<typename P::Scalar>];

    // False if nothing is of use.
    [[gnu::noinline]] bool make(const Buffer<typename P::One>& buffer, Rotation<E>& rotation,
                                LaneUse<typename P::Scalar>& use) {
        const std::ptrdiff_t n = buffer.h.n;
        constexpr int lanes = lanesOf<typename P::Scalar>;
        constexpr E unknown = std::numeric_limits<E>::quiet_NaN();
        const Columns<P> h = this->matrix(n, 0), w = this->matrix(n, 1);
        const Strip<P> tau = this->vector(n, 0), work = this->vector(n, 1);
        using Q = Grouped<WithoutShifts<typename P::One>>;
        reduceToHessenberg(as<Q>(h), as<Q>(tau), as<Q>(work));
        collectReflections(as<Q>(h), as<Q>(tau), as<Q>(w));
        clearBelowSubdiagonal(h);
        Rotation<E> rotations[lanes];
        for (Rotation<E>& one : rotations) one = {unknown, unknown};
        const Single<typename P::One> single{buffer.h, buffer.w, buffer.norms, buffer.realPart};
        if (!iterateTogether<P, true>(h, w, single, imaginaryParts, rotations, use)) return false;
        for (const Rotation<E>& one : rotations)
            if (one.c == one.c) rotation = one;
        return true;
    }

    // Puts object l into the buffer of one object, and its eigenvalues where they belong.
    void take(int l, const Buffer<typename P::One>& buffer, typename P::Element* re, typename P::Element* im) {
        const std::ptrdiff_t n = buffer.h.n;
        copyElements(laneOf(this->matrix(n, 0), l), buffer.h);
        copyElements(laneOf(this->matrix(n, 1), l), buffer.w);
        const Strip<typename P::One> reals{reinterpret_cast<std::byte*>(re)},
            imaginaries{reinterpret_cast<std::byte*>(im)};
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            reals.set(i, buffer.h(i, i));
            imaginaries.set(i, imaginaryParts[l * n + i]);
        }
    }
};

template <class P, class D>
[[gnu::always_inline]] inline void writeVectors(Columns<P> w, const D& dst) {
    using T = typename P::Element;
    for (std::ptrdiff_t i = 0; i < w.n; ++i)
        for (std::ptrdiff_t j = 0; j < w.n; ++j) store(dst.address(i, j), load<T>(w.column(j).address(i)));
}

// A rotation lives as long as a call: a block that doesn't set it turns by that of the block before. An object whose vectors
// aren't delivered ends a call, also where its status is Ok. For one side, both destinations are the same.
template <class P, class A, class D, class Count>
[[gnu::noinline]] std::int32_t eigenvectors(const A src, const D first, const D second, typename P::Element* re,
                                            typename P::Element* im, typename P::Element* scratch, std::int32_t order,
                                            Count count, Sides sides) {
    using T = typename P::Element;
    const std::ptrdiff_t n = order;
    const auto valuesAt = [n](T* values, std::ptrdiff_t k) {
        return shiftedElements(values, static_cast<std::int32_t>(k), n);
    };
    if (n == 1) {
        for (std::ptrdiff_t k = 0; k < count; ++k) {
            const auto value = plain(valuesAt(re, k), noRows).at(0), zero = plain(valuesAt(im, k), noRows).at(0);
            store(value.address(0, 0), load<T>(src.at(k).address(0, 0)));
            store(zero.address(0, 0), T{});
            store(first.at(k).address(0, 0), T{1});
            store(second.at(k).address(0, 0), T{1});
        }
        return korStatusOk;
    }
    const Buffer<P> buffer(scratch, n, sides == Sides::both);
    Rotation<typename P::Scalar> rotation{};
    const auto deliver = [&](std::ptrdiff_t k) {
        const Outcome outcome = findVectors<P>(buffer, valuesAt(im, k), sides);
        if (!outcome.delivered) return outcome;
        writeVectors(buffer.w, first.at(k));
        if (sides == Sides::both) writeVectors(buffer.x, second.at(k));
        return outcome;
    };
    Pace pace(leastUse<typename P::Scalar>(n));
    std::ptrdiff_t k = 0;
    while (k < count) {
        std::ptrdiff_t singles = count - k;
        if constexpr (!isOneObject<Count>) {
            using G = Grouped<P>;
            constexpr int lanes = lanesOf<typename G::Scalar>;
            if (n > 2 && n <= largestTogether && singles >= lanes) {
                singles = lanes;
                Schur<G> group;
                const bool isMade = pace.tryGroup<typename G::Scalar>([&](LaneUse<typename G::Scalar>& use) {
                    readTogether(src, k, group.matrix(n, 0));
                    return group.make(buffer, rotation, use);
                });
                if (isMade) {
                    for (int l = 0; l < lanes; ++l, ++k) {
                        group.take(l, buffer, valuesAt(re, k), valuesAt(im, k));
                        const Outcome outcome = deliver(k);
                        if (!outcome.delivered) return outcome.status;
                    }
                    continue;
                }
            }
        }
        for (; singles > 0; --singles, ++k) {
            readTransposed(src.at(k), buffer.h);
            const std::int32_t status = makeTriangular<P>(buffer, valuesAt(re, k), valuesAt(im, k), rotation);
            if (status != korStatusOk) return status;
            const Outcome outcome = deliver(k);
            if (!outcome.delivered) return outcome.status;
        }
    }
    return korStatusOk;
}

// Both sets: those of the right go to the first destination.
template <class P, class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t bothEigenvectors(const A& src, const D& rights, const D& lefts,
                                                            typename A::Element* re, typename A::Element* im,
                                                            typename A::Element* buffer, std::int32_t order,
                                                            Count count) {
    return eigenvectors<P>(withAnyObjects(src), withAnyObjects(rights), withAnyObjects(lefts), re, im, buffer, order,
                           count, Sides::both);
}

template <Sides sides, class P, class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t eigenvectorsOf(const A& src, const D& dst, typename A::Element* re,
                                                          typename A::Element* im, typename A::Element* buffer,
                                                          std::int32_t order, Count count) {
    const auto vectors = withAnyObjects(dst);
    return eigenvectors<P>(withAnyObjects(src), vectors, vectors, re, im, buffer, order, count, sides);
}

}  // namespace korm::inline KORM_VARIANT::eigen
