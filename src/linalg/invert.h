// Inverses: which order of which layout takes which path.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/adjugate.h"
#include "linalg/block.h"
#include "linalg/cores.h"
#include "linalg/order2.h"
#include "linalg/tolerance.h"

namespace korm::inline KORM_VARIANT::linalg {

// What the closed forms of orders 3 to 6 do differently.
struct InversePath {
    bool blocks;
    Reciprocal reciprocal;
    Minus minus;
    int threshold;  // times the smallest normal number
};

template <int n, class A>
constexpr InversePath inversePath() {
    using T = typename A::Element;
    constexpr int tol = 2 * n * n * n;
    if (!isAdjacent<A>) return {false, Reciprocal::divided, Minus::subtracted, tol};
    if (std::is_same_v<T, double>)
        return {false, Reciprocal::divided, n == 4 ? Minus::flipped : Minus::subtracted, n < 5 ? 2 * tol : tol};
    if (n > 4) return {true, Reciprocal::newton4, Minus::subtracted, tol};
    if (n == 4) return {false, Reciprocal::newton4, Minus::subtracted, tol};
    // The standard array form divides at order 3, the single form and the list form don't.
    return {false, A::objects == Objects::stepped ? Reciprocal::divided : Reciprocal::newton3, Minus::subtracted, tol};
}

template <class T>
inline T smallest(int times) {
    return static_cast<T>(times) * std::numeric_limits<T>::min();
}

// False if an object is singular; then `a` may be used up and `inverse` holds nothing.
template <InversePath path, int n, class S>
[[gnu::always_inline]] inline bool invertInline(S (&a)[n][n], S (&inverse)[n][n]) {
    const S threshold = all<S>(smallest<ElementOf<S>>(path.threshold));
    S determinant;
    if constexpr (path.blocks) return invertByBlocks(a, threshold, inverse);
    else return invertByAdjugate<n, path.reciprocal, path.minus>(a, threshold, inverse, determinant);
}

// One function for the layouts in which elements are gathered one by one.
template <InversePath path, int n, class S>
[[gnu::noinline]] bool invertOutOfLine(S (&a)[n][n], S (&inverse)[n][n]) {
    return invertInline<path>(a, inverse);
}

template <InversePath path, bool isInline, int n, class S>
[[gnu::always_inline]] inline bool invertSized(S (&a)[n][n], S (&inverse)[n][n]) {
    if constexpr (isInline) return invertInline<path>(a, inverse);
    else return invertOutOfLine<path>(a, inverse);
}

// What stands out of line serves groups; a single object, in all lanes, takes no longer than by numbers.
template <int n, InversePath path, class T, class A, class D>
[[gnu::noinline]] std::int32_t invertObject(const A& src, const D& dst) {
    std::conditional_t<isAdjacent<A>, T, Lanes<T>> a[n][n], inverse[n][n];
    readMatrix(src, a);
    if (invertSized<path, isAdjacent<A>>(a, inverse)) {
        writeMatrix(dst, inverse);
        return korStatusOk;
    }
    // The block form has the destination's first rows as its working rows.
    if constexpr (path.blocks)
        for (int i = 0; i < n - 4; ++i) {
            readRow(src, i, a[i]);
            writeRow(dst, i, a[i]);
        }
    return korStatusSingular;
}

// Packed and aligned floats of order 4 are tested two at a time: neither of a pair is written if one is singular.
template <class A, class D>
[[gnu::always_inline]] inline bool invertsInPairs(const A& src, const D& dst) {
    if constexpr (isAdjacent<A> && A::objects == Objects::stepped && isFloat<typename A::Element>) {
        const auto bits = reinterpret_cast<std::intptr_t>(src.origin) | reinterpret_cast<std::intptr_t>(dst.origin) |
                          src.objectStride | dst.objectStride;
        return bits % 16 == 0 && src.rowStride == 16 && dst.rowStride == 16;
    } else {
        return false;
    }
}

// Two packed matrices of order 4, `objectStride`s in bytes: both are inverted before one is written.
inline std::int32_t invertPair(const float* sources, std::ptrdiff_t srcObjectStride, float* results,
                               std::ptrdiff_t dstObjectStride) {
    const auto src = plainArray(sources, srcObjectStride, 4 * sizeof(float));
    const auto dst = plainArray(results, dstObjectStride, 4 * sizeof(float));
    constexpr InversePath path = inversePath<4, decltype(src)>();
    float a[4][4], first[4][4], second[4][4];
    readMatrix(src.at(0), a);
    bool regular = invertInline<path>(a, first);
    readMatrix(src.at(1), a);
    regular = invertInline<path>(a, second) && regular;
    if (!regular) return korStatusSingular;
    writeMatrix(dst.at(0), first);
    writeMatrix(dst.at(1), second);
    return korStatusOk;
}

// One matrix for callers that have no form: row strides in bytes, elements adjacent, dst may be src. `det` may be null,
// else it receives the determinant, or 0, not what rounding left of it, if the matrix is singular: dst is then untouched.
inline std::int32_t invertOrder4(const double* source, std::int32_t srcRowStride, double* det, double* result,
                                 std::int32_t dstRowStride) {
    const auto src = plain(source, srcRowStride);
    constexpr InversePath path = inversePath<4, decltype(src)>();
    double a[4][4], inverse[4][4], determinant;
    readMatrix(src.at(0), a);
    const bool regular =
        invertByAdjugate<4, path.reciprocal, path.minus>(a, smallest<double>(path.threshold), inverse, determinant);
    if (det != nullptr) *det = regular ? determinant : 0;
    if (!regular) return korStatusSingular;
    writeMatrix(plain(result, dstRowStride).at(0), inverse);
    return korStatusOk;
}

// Groups of objects in lanes. Of a group that has a singular object the pairs or objects before it are done.
template <InversePath path, int n, class A, class D>
[[gnu::always_inline]] inline std::int32_t invertGroups(const A& src, const D& dst, std::ptrdiff_t count,
                                                        [[maybe_unused]] bool inPairs) {
    using T = typename D::Element;
    constexpr int lanes = laneCount<T>;
    constexpr int bytes = n * n * static_cast<int>(sizeof(T));
    const std::ptrdiff_t fetchEnd = endOfFetching(count, 2 * bytes);
    const auto group = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        Lanes<T> a[n][n], inverse[n][n];
        if (k < fetchEnd) {
            fetchAhead<lanes, bytes>(src, k);
            fetchAhead<lanes, bytes>(dst, k);
        }
        readMatricesInTurn(groupAt<lanes>(src, k), a);
        if (!invertSized<path, isAdjacent<A>>(a, inverse)) return false;
        writeMatricesInTurn(groupAt<lanes>(dst, k), inverse);
        return true;
    };
    const auto each = [&](std::ptrdiff_t k) { return invertObject<n, path, T>(src.at(k), dst.at(k)); };
    if constexpr (n == 4 && isAdjacent<A> && isFloat<T>) {
        const auto pair = [&](std::ptrdiff_t k) {
            return cores::invertPair(reinterpret_cast<const float*>(src.at(k).origin), src.objectStride,
                                     reinterpret_cast<float*>(dst.at(k).origin), dst.objectStride);
        };
        if (inPairs) {
            std::ptrdiff_t k = 0;
            for (; k + 2 <= count; k += 2) {
                if (k + lanes <= count && group(k)) k += lanes - 2;
                else if (pair(k) != korStatusOk) return korStatusSingular;
            }
            return k < count ? each(k) : korStatusOk;
        }
    }
    return inGroups<lanes>(count, group, each);
}

template <InversePath path, int n, class A, class D>
[[gnu::noinline]] std::int32_t invertArray(A src, D dst, std::ptrdiff_t count, bool inPairs) {
    // Packed matrices of order 3 have a loop of their own, in which the distance of rows is known: where one loop
    // serves all, gcc takes results apart before it asks how to write them, which costs a seventh of the time. At order
    // 5 that doesn't show, and even orders are written by rows in any case.
    if constexpr (n == 3 && isAdjacent<A>) {
        constexpr std::ptrdiff_t packed = n * sizeof(typename D::Element);
        if (src.rowStride == packed && dst.rowStride == packed) {
            src.rowStride = dst.rowStride = packed;
            return invertGroups<path, n>(src, dst, count, inPairs);
        }
    }
    return invertGroups<path, n>(src, dst, count, inPairs);
}

template <class A, class D>
[[gnu::noinline]] std::int32_t invertArrayOrder2(const A& src, const D& dst, typename D::Element* buffer,
                                                 std::ptrdiff_t count) {
    using T = typename D::Element;
    constexpr int lanes = laneCount<T>;
    const Lanes<T> tiny = broadcast(tolerance<T>(2));
    const auto together = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        Lanes<T> a[2][2], inverse[2][2];
        readMatrices(groupAt<lanes>(src, k), a);
        if (!invertOrder2(a, tiny, inverse)) return false;
        writeMatrices(groupAt<lanes>(dst, k), inverse);
        return true;
    };
    return inGroups<lanes>(count, together,
                           [&](std::ptrdiff_t k) { return cores::invertByCofactors(src.at(k), dst.at(k), buffer, 2); });
}

template <int n, class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t invertObjects(const A& src, const D& dst, Count count) {
    using T = typename D::Element;
    if constexpr (isOneObject<Count>) return invertObject<n, inversePath<n, A>(), T>(src.at(0), dst.at(0));
    else {
        const bool inPairs = n == 4 && invertsInPairs(src, dst);
        return invertArray<inversePath<n, A>(), n>(withAnyObjects<n>(src), withAnyObjects<n>(dst), count, inPairs);
    }
}

template <class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t inverse(A src, D dst, typename D::Element* buffer, std::int32_t order,
                                                   Count count) {
    if constexpr (!isOneObject<Count>)
        if (order == 2) return invertArrayOrder2(withAnyObjects<2>(src), withAnyObjects<2>(dst), buffer, count);
    return forOrder(
        order, [&](auto n) __attribute__((always_inline)) { return invertObjects<n>(src, dst, count); },
        [&]() __attribute__((always_inline)) {
            for (std::ptrdiff_t k = 0; k < count; ++k)
                if (cores::invertByCofactors(src.at(k), dst.at(k), buffer, order) != korStatusOk)
                    return std::int32_t{korStatusSingular};
            return std::int32_t{korStatusOk};
        });
}

// Order 1. A NaN is singular here, unlike in the closed forms.
template <class A, class D, class Count>
[[gnu::noinline]] std::int32_t reciprocals(A src, D dst, typename D::Element*, std::int32_t order, Count count) {
    using T = typename D::Element;
    const T tiny = tolerance<T>(order);
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const T value = load<T>(src.at(k).address(0, 0));
        if (!(std::fabs(value) > tiny)) return korStatusSingular;
        store(dst.at(k).address(0, 0), 1 / value);
    }
    return korStatusOk;
}

}  // namespace korm::inline KORM_VARIANT::linalg
