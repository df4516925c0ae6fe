// General eigenproblems: the double-shift QR iteration on a Hessenberg matrix.
//
// It runs in two ways. For eigenvalues alone only the active block is kept up to date, and a subdiagonal element is
// dropped by its magnitude alone. For vectors the whole matrix is, so that it ends quasi-triangular, the reflections are
// collected, and an element is dropped by its neighbours on the diagonal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "eigen/general_blocks.h"
#include "eigen/general_hessenberg.h"
#include "eigen/pace.h"
#include "korm.h"

namespace korm::inline KORM_VARIANT::eigen {

// --- Shifts -------------------------------------------------------------------------------------------

// x as a shift is held.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar rounded(typename P::Scalar x) {
    if constexpr (roundsShifts<P>) return roundedToFloat(x);
    else return x;
}

// x / t. Where shifts are rounded, by the reciprocal of t, or by t itself if that is too small to have one.
template <class P>
[[gnu::always_inline]] inline typename P::Scalar quotient(typename P::Scalar x, typename P::Scalar t) {
    if constexpr (roundsShifts<P>)
        return x * chosen(asBits(magnitude(t) > constant<P>(smallestDivisor)), constant<P>(1) / t, t);
    else return x / t;
}

// The active blocks, from row `first` to row `last`. A lane that has none has its first row behind its last.
template <class S>
struct Blocks {
    Place<S> first, last;
    std::ptrdiff_t lowestFirst, lowestLast, highestLast;
};

template <class S>
struct Shifts {
    S h33, h44, g;
};

// The shifts of one sweep; every tenth and twentieth takes others than the corner's.
template <class P>
[[gnu::always_inline]] inline Shifts<typename P::Scalar> chooseShifts(Columns<P> h,
                                                                      const Blocks<typename P::Scalar>& blocks,
                                                                      Place<typename P::Scalar> sweep) {
    using S = typename P::Scalar;
    const S half = constant<P>(0.5);
    // An element of the last rows and columns of each block.
    const auto atEnd = [&](std::ptrdiff_t rowsBefore, std::ptrdiff_t columnsBefore) __attribute__((always_inline)) {
        S x{};
        for (std::ptrdiff_t k = blocks.lowestLast; k <= blocks.highestLast; ++k)
            x = chosen(ownLane<S>(blocks.last == everywhere<S>(k)), h(k - rowsBefore, k - columnsBefore), x);
        return x;
    };
    S h33 = rounded<P>(atEnd(1, 1));
    const S h44 = atEnd(0, 0), below = atEnd(0, 1), beside = atEnd(1, 0);
    S g = rounded<P>(below * beside);
    S last = rounded<P>(h44);
    const S q = rounded<P>((h33 - last) * half);
    const S discriminant = rounded<P>(q * q + g);
    if (const auto real = asBits(discriminant > S{}); any(real)) {
        const S w = rounded<P>(squareRoot(discriminant)), average = rounded<P>((last + h33) * half);
        const S t = rounded<P>(chosen(asBits(average < S{}), average - w, average + w));
        const S shift = rounded<P>(chosen(asBits(magnitude(h33) > magnitude(last)), quotient<P>(last * h33 - g, t), t));
        h33 = chosen(real, shift, h33);
        last = chosen(real, shift, last);
        g = chosen(real, S{}, g);
    }
    const auto other = either(sweep == everywhere<S>(10), sweep == everywhere<S>(20));
    if (any(other)) {
        const S s = rounded<P>(magnitude(below) + magnitude(atEnd(1, 2)));
        const S shift = rounded<P>(constant<P>(0.75) * s + h44);
        h33 = chosen(other, shift, h33);
        last = chosen(other, shift, last);
        g = chosen(other, rounded<P>(constant<P>(-0.4375) * s * s), g);
    }
    return {h33, last, g};
}

// Where a sweep starts, and the first column of the shifted product there.
template <class S>
struct Start {
    Place<S> row;
    S f[3];
};

template <class P>
[[gnu::always_inline]] inline Start<typename P::Scalar> chooseStart(Columns<P> h,
                                                                    const Shifts<typename P::Scalar>& shifts,
                                                                    const Blocks<typename P::Scalar>& blocks) {
    using S = typename P::Scalar;
    constexpr bool alone = lanesOf<S> == 1;
    const auto sumOf3 = [](auto a, auto b, auto c) __attribute__((always_inline)) { return a + b + c; };
    // Of a group, lanes without a block start behind all others.
    Start<S> start{everywhere<S>(alone ? blocks.highestLast - 2 : h.n), {}};
    auto& [row, f] = start;
    MaskOf<S> searching = blocks.first <= blocks.last;
    for (std::ptrdiff_t m = blocks.highestLast - 2;; --m) {
        MaskOf<S> here = ownLane<S>(both(searching, everywhere<S>(m + 2) <= blocks.last));
        const S below = h(m + 1, m);
        // Such an element divides nothing: the column of the row before serves. The first has none before it.
        if constexpr (roundsShifts<P>) {
            const auto tiny =
                butNot(everywhere<S>(m + 2) < blocks.last, magnitude(below) > constant<P>(smallestDivisor));
            row = chosen(both(searching, tiny), everywhere<S>(m), row);
            searching = butNot(searching, tiny);
            here = asBits(butNot(here, tiny));
            if (!any(searching)) break;
        }
        const S corner = h(m, m), next = h(m + 1, m + 1);
        const S p = rounded<P>(shifts.h44 - corner), r = rounded<P>(shifts.h33 - corner);
        S f0 = quotient<P>(p * r - shifts.g, below) + h(m, m + 1), f1 = next - corner - p - r, f2 = h(m + 2, m + 1);
        const S sum = rounded<P>(inDoubles(sumOf3, magnitude(f0), magnitude(f1), magnitude(f2)));
        f0 = quotient<P>(f0, sum);
        f1 = quotient<P>(f1, sum);
        f2 = quotient<P>(f2, sum);
        f[0] = chosen(here, f0, f[0]);
        f[1] = chosen(here, f1, f[1]);
        f[2] = chosen(here, f2, f[2]);
        row = chosen(here, everywhere<S>(m), row);
        if (m == blocks.lowestFirst) break;
        const S neighbours = inDoubles(sumOf3, magnitude(corner), magnitude(next), magnitude(h(m - 1, m - 1)));
        const auto small = inDoubles(
            [](auto f0, auto f1, auto f2, auto around, auto element) __attribute__((always_inline)) {
                const auto epsilon = all<decltype(f0)>(static_cast<double>(Limits<typename P::Element>::epsilon));
                return f0 * epsilon * around >= (f1 + f2) * element;
            },
            magnitude(f0), magnitude(f1), magnitude(f2), neighbours, magnitude(h(m, m - 1)));
        searching = asBits(butNot(searching, both(here, either(small, blocks.first == everywhere<S>(m)))));
        if (!any(searching)) break;
    }
    return start;
}

// --- Sweeps -------------------------------------------------------------------------------------------

// Takes (x0, x1, x2) to (x0, x1, x2) - tau (v . x) v, v = (1, v1, v2), in three places, or in two. Outside of its lanes,
// and for the third place of lanes that have two, the products are made +0, which leaves every bit where it is subtracted.
enum class Width { two, three, mixed };

template <Width width, class S>
struct SmallReflection {
    S v1, v2, t1, t2, t3;
    MaskOf<S> threes;

    template <class Get, class Set>
    [[gnu::always_inline]] void apply(MaskOf<S> lanes, const Get& get, const Set& set) const {
        const S x0 = get(0), x1 = get(1);
        S x = v1 * x1 + x0;
        if constexpr (width == Width::two) {
            x = onlyIn(lanes, x);
        } else {
            const auto inThird = [&](S y) __attribute__((always_inline)) {
                return width == Width::mixed ? onlyIn(threes, y) : y;
            };
            const S x2 = get(2);
            x = onlyIn(lanes, x + v2 * inThird(x2));
            set(2, x2 - inThird(x) * t3);
        }
        set(0, x0 - t1 * x);
        set(1, x1 - t2 * x);
    }
};

// Applies a reflection of rows and columns from k on to h, and of these columns to w. Without vectors only the active block
// is kept up to date; of a group, whose blocks differ, what lies right of and above a block may change.
template <Width width, class P, bool withVectors>
[[gnu::always_inline]] inline void applyReflection(typename P::Scalar tau, typename P::Scalar v1, typename P::Scalar v2,
                                                   Columns<P> h, Columns<P> w, std::ptrdiff_t k,
                                                   const Blocks<typename P::Scalar>& blocks,
                                                   MaskOf<typename P::Scalar> lanes,
                                                   MaskOf<typename P::Scalar> threes) {
    using S = typename P::Scalar;
    // What is added to a sum of two terms is -0.
    if constexpr (width == Width::mixed) v2 = chosen(threes, v2, constant<P>(-0.0));
    const SmallReflection<width, S> reflection{
        v1,    v2, onlyIn(lanes, tau), onlyIn(lanes, tau * v1), width == Width::two ? S{} : onlyIn(threes, tau * v2),
        threes};
    const auto ofColumns = [&](Columns<P> a, std::ptrdiff_t i) __attribute__((always_inline)) {
        reflection.apply(
            lanes, [&](int l) { return a(i, k + l); }, [&](int l, S value) { a.set(i, k + l, value); });
    };
    const std::ptrdiff_t endColumn = withVectors ? h.n : blocks.highestLast + 1;
    for (std::ptrdiff_t j = k; j < endColumn; ++j)
        reflection.apply(
            lanes, [&](int l) { return h(k + l, j); }, [&](int l, S value) { h.set(k + l, j, value); });
    // Below a lane's block these columns are zero, and stay so.
    const std::ptrdiff_t endRow = std::min(k + 3, blocks.highestLast) + 1;
    for (std::ptrdiff_t i = withVectors ? 0 : blocks.lowestFirst; i < endRow; ++i) ofColumns(h, i);
    if constexpr (withVectors)
        for (std::ptrdiff_t i = 0; i < w.n; ++i) ofColumns(w, i);
}

template <class P, bool withVectors>
[[gnu::always_inline]] inline void sweep(Columns<P> h, Columns<P> w, const Start<typename P::Scalar>& start,
                                         const Blocks<typename P::Scalar>& blocks) {
    using S = typename P::Scalar;
    using N = typename P::Norm;
    const std::ptrdiff_t begin = lowest<S>(start.row);
    for (std::ptrdiff_t k = begin; k < blocks.highestLast; ++k) {
        const bool three = k + 1 < blocks.highestLast;
        const auto active = ownLane<S>(both(start.row <= everywhere<S>(k), everywhere<S>(k) < blocks.last));
        const auto threes = asBits(both(active, everywhere<S>(k + 1) < blocks.last));
        const auto begins = asBits(start.row == everywhere<S>(k)), goesOn = butNot(active, begins);
        S v0{}, v1{}, v2{};
        if (k > begin) {
            v0 = h(k, k - 1);
            v1 = h(k + 1, k - 1);
            if (three) v2 = h(k + 2, k - 1);
        }
        if (any(begins)) {
            v0 = chosen(begins, start.f[0], v0);
            v1 = chosen(begins, start.f[1], v1);
            v2 = chosen(begins, start.f[2], v2);
            if (const auto inside = asBits(both(begins, everywhere<S>(k) > blocks.first)); any(inside))
                h.set(k, k - 1, S{} - h(k, k - 1), inside);
        }
        v2 = onlyIn(threes, v2);
        N squares = static_cast<N>(v1) * static_cast<N>(v1);
        if (three) squares = squares + static_cast<N>(v2) * static_cast<N>(v2);
        const S tau = makeReflection<P>(
            v0, squares, active, [&](S scale) __attribute__((always_inline)) {
                v1 = v1 * scale;
                v2 = v2 * scale;
            });
        if (k > begin) {
            h.set(k, k - 1, v0, goesOn);
            h.set(k + 1, k - 1, S{}, goesOn);
            if (three) h.set(k + 2, k - 1, S{}, both(goesOn, threes));
        }
        if (!three) applyReflection<Width::two, P, withVectors>(tau, v1, v2, h, w, k, blocks, active, threes);
        else if (lanesOf<S> == 1 || !any(butNot(active, threes)))
            applyReflection<Width::three, P, withVectors>(tau, v1, v2, h, w, k, blocks, active, threes);
        else applyReflection<Width::mixed, P, withVectors>(tau, v1, v2, h, w, k, blocks, active, threes);
    }
}

// --- Where a matrix splits ----------------------------------------------------------------------------

// The greatest sum of magnitudes of a column of the active block.
template <class P, int step>
[[gnu::noinline]] typename P::Scalar greatestColumnSum(Columns<P, step> h, std::ptrdiff_t first, std::ptrdiff_t last) {
    using S = typename P::Scalar;
    S greatest = 0;
    for (std::ptrdiff_t j = first; j <= last; ++j) {
        const Strip<P, step> column{h.column(j).address(first)};
        const S sum =
            adjacentSum<S>(std::min(j + 1, last) - first + 1, [&](std::ptrdiff_t i) { return magnitude(column[i]); });
        if (sum > greatest) greatest = sum;
    }
    return greatest;
}

// Is the subdiagonal element left of (k, k) zero to working precision?
template <class P, bool withVectors>
[[gnu::always_inline]] inline MaskOf<typename P::Scalar> isNegligible(Columns<P> h, std::ptrdiff_t k,
                                                                      Place<typename P::Scalar> first,
                                                                      Place<typename P::Scalar> last) {
    using S = typename P::Scalar;
    using L = Limits<typename P::Element>;
    const S element = magnitude(h(k, k - 1));
    if constexpr (!withVectors) {
        return constant<P>(L::epsilon) >= element;
    } else {
        S around = magnitude(h(k - 1, k - 1)) + magnitude(h(k, k));
        if (const auto tiny = constant<P>(L::negligible) >= around; any(tiny)) {
            if constexpr (lanesOf<S> == 1) around = greatestColumnSum(h, first, last);
            else {
                S sums{};
                eachLane<S>(both(tiny, first <= last), [&](int l) {
                    setLane(sums, l, greatestColumnSum(laneOf(h, l), placeIn<S>(first, l), placeIn<S>(last, l)));
                });
                around = chosen(tiny, sums, around);
            }
        }
        const S relative = constant<P>(L::epsilon) * around, smallest = smallestNumber<P>(h.n);
        return greaterOf(smallest, relative) >= element;
    }
}

// Standardises the block of order 2 whose last row is given; with vectors, the rest of h and w turn with it. Gives the
// imaginary part of its eigenvalues.
template <class P, int step>
[[gnu::always_inline]] inline typename P::Scalar finishPair(Columns<P, step> h, Columns<P, step> w, std::ptrdiff_t last,
                                                            Rotation<typename P::Scalar>* rotation) {
    using S = typename P::Scalar;
    Block<S> block{h(last - 1, last - 1), h(last - 1, last), h(last, last - 1), h(last, last)};
    const S imaginary = standardise<P>(block, rotation);
    h.set(last - 1, last - 1, block.a);
    h.set(last - 1, last, block.b);
    h.set(last, last - 1, block.c);
    h.set(last, last, block.d);
    if (rotation == nullptr) return imaginary;
    const S c = rotation->c, s = rotation->s;
    const auto turnColumns = [&](Columns<P, step> a, std::ptrdiff_t rows) __attribute__((always_inline)) {
        for (std::ptrdiff_t i = 0; i < rows; ++i) {
            const S x = a(i, last - 1), y = a(i, last);
            a.set(i, last - 1, c * x + s * y);
            a.set(i, last, c * y - s * x);
        }
    };
    for (std::ptrdiff_t j = last + 1; j < h.n; ++j) {
        const S x = h(last - 1, j), y = h(last, j);
        h.set(last - 1, j, c * x + s * y);
        h.set(last, j, c * y - s * x);
    }
    turnColumns(h, last - 1);
    turnColumns(w, h.n);
    return imaginary;
}

// How far an iteration is: the active block, the sweeps that it has taken, and how many it may take. The budget of sweeps
// is one for the whole matrix.
struct Progress {
    std::ptrdiff_t first, last, used, budget;
};
[[gnu::always_inline]] inline Progress atStart(std::ptrdiff_t n) { return {0, n - 1, 0, 30 * n}; }

// Finds the eigenvalues of a Hessenberg matrix from the last to the first. `rotation` is null where no vectors are wanted; it
// outlives a matrix.
template <class P, bool withVectors>
[[gnu::noinline]] std::int32_t iterate(Columns<P> h, Columns<P> w, typename P::Element* re, typename P::Element* im,
                                       Rotation<typename P::Scalar>* rotation, Progress progress) {
    const Strip<P> realParts{reinterpret_cast<std::byte*>(re)}, imaginaryParts{reinterpret_cast<std::byte*>(im)};
    auto [first, last, used, budget] = progress;
    while (last >= 0) {
        for (; used < budget; ++used) {
            std::ptrdiff_t k = last;
            while (k > first && !isNegligible<P, withVectors>(h, k, first, last)) --k;
            first = k;
            if (first > 0) h.set(first, first - 1, 0);
            if (first >= last - 1) break;
            const Blocks<typename P::Scalar> blocks{first, last, first, last, last};
            const auto start = chooseStart(h, chooseShifts(h, blocks, used), blocks);
            sweep<P, withVectors>(h, w, start, blocks);
        }
        if (first < last - 1) return korStatusNoConvergence;
        if (first == last) {
            realParts.set(last, h(last, last));
            imaginaryParts.set(last, 0);
        } else {
            const auto imaginary = finishPair<P>(h, w, last, rotation);
            realParts.set(last - 1, h(last - 1, last - 1));
            realParts.set(last, h(last, last));
            imaginaryParts.set(last - 1, imaginary);
            imaginaryParts.set(last, 0 - imaginary);
        }
        budget -= used;
        last = first - 1;
        first = used = 0;
    }
    return korStatusOk;
}

// --- Groups -------------------------------------------------------------------------------------------

// Copies a matrix of one object, which may be in a group.
template <class P, int from, int to>
[[gnu::always_inline]] inline void copyElements(Columns<P, from> source, Columns<P, to> result) {
    for (std::ptrdiff_t i = 0; i < source.n * source.n; ++i)
        store(result.elements.address(i), load<typename P::Element>(source.elements.address(i)));
}

// Memory for one object: the matrix, its vectors, the two parts of its eigenvalues.
template <class P>
struct Single {
    Columns<P> h, w;
    Strip<P> re, im;
};

// Object l of a group goes on by itself. With vectors, the imaginary parts of its eigenvalues are told.
template <class P, bool withVectors>
[[gnu::noinline]] bool iterateAlone(Columns<P> h, Columns<P> w, int l, const Single<typename P::One>& single,
                                    ElementOf<typename P::Scalar>* imaginaryParts,
                                    Rotation<ElementOf<typename P::Scalar>>* rotation, Progress progress) {
    using One = typename P::One;
    using T = typename P::Element;
    copyElements(laneOf(h, l), single.h);
    if constexpr (withVectors) copyElements(laneOf(w, l), single.w);
    if (iterate<One, withVectors>(single.h, single.w, reinterpret_cast<T*>(single.re.origin),
                                  reinterpret_cast<T*>(single.im.origin), withVectors ? rotation : nullptr,
                                  progress) != korStatusOk)
        return false;
    copyElements(single.h, laneOf(h, l));
    if constexpr (withVectors) {
        copyElements(single.w, laneOf(w, l));
        for (std::ptrdiff_t i = 0; i <= progress.last; ++i) imaginaryParts[i] = single.im[i];
        // A rotation that isn't known has left no number.
        for (std::ptrdiff_t i = 0; i < h.n * h.n; ++i)
            if (single.w.elements[i] != single.w.elements[i]) return false;
    }
    return true;
}

// The same for a group, each lane at its own eigenvalue, without real parts, which are left on the diagonal. The last lane goes
// on alone. False if it doesn't go the way that one object goes by itself to the end: where the budget
// runs out, or a rotation is needed that a matrix before it would have left.
template <class P, bool withVectors>
[[gnu::noinline]] bool iterateTogether(Columns<P> h, Columns<P> w, const Single<typename P::One>& single,
                                       ElementOf<typename P::Scalar>* imaginaryParts,
                                       Rotation<ElementOf<typename P::Scalar>>* rotations,
                                       LaneUse<typename P::Scalar>& use) {
    using S = typename P::Scalar;
    using One = typename P::One;
    const S n = everywhere<S>(h.n), one = constant<P>(1);
    S first{}, last = n - one, used{}, budget = n * constant<P>(30);
    std::ptrdiff_t highestLast = h.n - 1;
    for (;;) {
        if (any(both(first <= last, used >= budget))) return false;
        const S before = first;
        for (std::ptrdiff_t k = 1; k <= highestLast; ++k) {
            const auto inside = both(before < everywhere<S>(k), everywhere<S>(k) <= last);
            first =
                chosen(asBits(both(inside, isNegligible<P, withVectors>(h, k, before, last))), everywhere<S>(k), first);
        }
        if (any(first > before))
            for (std::ptrdiff_t k = 1; k <= highestLast; ++k) h.set(k, k - 1, S{}, asBits(first == everywhere<S>(k)));
        const auto splits = asBits(both(first <= last, first >= last - one));
        if (any(splits)) {
            bool known = true;
            if constexpr (withVectors)
                eachLane<S>(splits, [&](int l) {
                    const std::ptrdiff_t end = placeIn<S>(last, l);
                    auto* const imaginary = imaginaryParts + l * h.n + end;
                    imaginary[0] = 0;
                    if (placeIn<S>(first, l) == end) return;
                    imaginary[-1] = finishPair<One>(laneOf(h, l), laneOf(w, l), end, &rotations[l]);
                    imaginary[0] = 0 - imaginary[-1];
                    known = known && rotations[l].c == rotations[l].c;
                });
            if (!known) return false;
            budget = budget - onlyIn(splits, used);
            used = chosen(splits, S{}, used);
            last = chosen(splits, first - one, last);
            first = chosen(splits, S{}, first);
            highestLast = highest<S>(last);
            int left = 0;
            eachLane<S>(last >= S{}, [&](int) { ++left; });
            if (left > 1) continue;
            use.add(last >= S{}, highestLast + 1);  // as if an eigenvalue took a step
            bool succeeds = true;
            eachLane<S>(last >= S{}, [&](int l) {
                const Progress progress{placeIn<S>(first, l), placeIn<S>(last, l), placeIn<S>(used, l),
                                        placeIn<S>(budget, l)};
                const int own = withVectors ? l : 0;
                succeeds = succeeds && iterateAlone<P, withVectors>(h, w, l, single, imaginaryParts + own * h.n,
                                                                    rotations + own, progress);
            });
            return succeeds;
        }
        const auto done = asBits(last < S{});
        const Blocks<S> blocks{first, last, lowest<S>(chosen(done, n, first)), lowest<S>(chosen(done, n, last)),
                               highestLast};
        const auto start = chooseStart(h, chooseShifts(h, blocks, used), blocks);
        sweep<P, withVectors>(h, w, start, blocks);
        used = used + one;
        use.add(last >= S{}, 1);
    }
}

// The least use of groups' steps: below it objects go one by one. Small ones never lose by groups. S is one object's scalar.
template <class S>
float leastUse(std::ptrdiff_t order) {
    return order <= 8 ? 0 : 1.0F / laneCount<S>;
}

}  // namespace korm::inline KORM_VARIANT::eigen
