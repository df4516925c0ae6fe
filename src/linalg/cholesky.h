// Cholesky decomposition: which order of which layout takes which path, loops over objects, and what a failure leaves.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/cholesky_factor.h"
#include "linalg/cores.h"
#include "linalg/triangles.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- One object, orders 3 to 6 ----------------------------------------------------------------------

// One function for the layouts in which elements are gathered one by one.
template <Newton newton, int n, class T>
[[gnu::noinline]] int factorOutOfLine(Triangle<T, n>& a, T threshold) {
    return factorTriangle<newton, n>(a, threshold);
}

template <int n, Newton newton, class T, class A, class D>
[[gnu::noinline]] std::int32_t choleskySized(const A& src, const D& dst, T threshold) {
    Triangle<T, n> a;
    readTriangle<n>(src, a);
    const int finished =
        isAdjacent<A> ? factorTriangle<newton, n>(a, threshold) : factorOutOfLine<newton, n>(a, threshold);
    if (finished < n) {
        writeFinishedRows(dst, a, n, finished);
        return korStatusNotPositiveDefinite;
    }
    writeTriangle<n>(dst, a);
    return korStatusOk;
}

// --- Packed arrays --------------------------------------------------------------------------------

template <int n, class T, class A, class D>
[[gnu::noinline]] std::int32_t choleskyArray(const A& src, const D& dst, std::ptrdiff_t count, T threshold) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr int bytes = n * n * static_cast<int>(sizeof(T));
    const std::ptrdiff_t fetchEnd = endOfFetching(count, 2 * bytes);
    const auto together = [&](std::ptrdiff_t k) __attribute__((always_inline)) {
        Triangle<S, n> a;
        if (k < fetchEnd) {
            fetchAhead<lanes, bytes>(src, k);
            fetchAhead<lanes, bytes>(dst, k);
        }
        readTriangles<n>(groupAt<lanes>(src, k), a);
        if (factorTriangle<Newton::halvesFirst, n>(a, all<S>(threshold)) < n) return false;
        writeTriangles<n>(groupAt<lanes>(dst, k), a);
        return true;
    };
    const auto each = [&](std::ptrdiff_t k) {
        return choleskySized<n, Newton::halvesFirst, T>(src.at(k), dst.at(k), threshold);
    };
    return inGroups<lanes>(count, together, each);
}

// Floats of orders 3 to 6 go four by four, whatever vectors are there, for a group fails together: what it has done up to
// the failing pivot is left in all four.
template <int n, class A, class D>
[[gnu::noinline]] std::int32_t choleskyFours(const A& src, const D& dst, std::ptrdiff_t count) {
    constexpr int bytes = n * n * static_cast<int>(sizeof(float));
    const std::ptrdiff_t fetchEnd = endOfFetching(count, 2 * bytes);
    std::ptrdiff_t k = 0;
    for (; k + 4 <= count; k += 4) {
        Triangle<Float4, n> a;
        if (k < fetchEnd) {
            fetchAhead<4, bytes>(src, k);
            fetchAhead<4, bytes>(dst, k);
        }
        readTriangles<n>(groupAt<4>(src, k), a);
        const int finished = factorTriangle<Newton::halvesLast, n>(a, Float4());
        if (finished < n) {
            for (int l = 0; l < 4; ++l) {
                Triangle<float, n> own;
                for (std::ptrdiff_t e = 0; e < triangleSize(n); ++e) own[e] = a[e][l];
                writeFinishedRows(dst.at(k + l), own, n, finished);
            }
            return korStatusNotPositiveDefinite;
        }
        writeTriangles<n>(groupAt<4>(dst, k), a);
    }
    for (; k < count; ++k)
        if (choleskySized<n, Newton::halvesLast>(src.at(k), dst.at(k), 0.0F) != korStatusOk)
            return korStatusNotPositiveDefinite;
    return korStatusOk;
}

// The same for callers that have pointers: strides in bytes, elements adjacent.
inline std::int32_t choleskyInFours(const float* source, std::ptrdiff_t srcObjectStride, std::ptrdiff_t srcRowStride,
                                    float* result, std::ptrdiff_t dstObjectStride, std::ptrdiff_t dstRowStride,
                                    std::int32_t order, std::ptrdiff_t count) {
    const auto src = plainArray(source, srcObjectStride, srcRowStride);
    const auto dst = plainArray(result, dstObjectStride, dstRowStride);
    return forOrder(
        order, [&](auto n) { return choleskyFours<n>(src, dst, count); },
        []() -> std::int32_t { return korStatusBadSize; });
}

// --- Arrays of any order and layout -----------------------------------------------------------------

// Triangles lie on the stack, which bounds the order.
inline constexpr std::ptrdiff_t greatestFactoredInLocals = 64;

// Of a matrix that fails, the general way finds out where and leaves what was done.
template <class T, class A, class D>
[[gnu::noinline]] std::int32_t choleskyObject(const A& src, const D& dst, std::ptrdiff_t n, T threshold) {
    if (n <= greatestFactoredInLocals) {
        Triangle<T, greatestFactoredInLocals> a;
        readTriangle(src, n, a);
        if (factorInLanes(a, n, threshold)) {
            writeFinishedRows(dst, a, n, n);
            return korStatusOk;
        }
    }
    return factorGeneral<T>(src, dst, n, threshold);
}

// Two objects and more are worth a group: lanes without an object of their own repeat the last.
template <class T, class A, class D>
[[gnu::noinline]] std::int32_t choleskyGroups(const A& src, const D& dst, std::ptrdiff_t n, std::ptrdiff_t count,
                                              T threshold) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    const auto together = [&](std::ptrdiff_t k, std::ptrdiff_t objects) __attribute__((always_inline)) {
        Triangle<S, greatestFactoredInLocals> a;
        std::ptrdiff_t numbers[lanes];
        for (int l = 0; l < lanes; ++l) numbers[l] = k + std::min<std::ptrdiff_t>(l, objects - 1);
        readTriangles(groupOf<lanes>(src, numbers), n, a, objects == lanes && lanesTouch(src));
        if (!factorInLanes(a, n, all<S>(threshold))) return false;
        writeTriangles(groupOf<lanes>(dst, numbers), n, a, objects == lanes && lanesTouch(dst));
        return true;
    };
    for (std::ptrdiff_t k = 0; k < count;) {
        std::ptrdiff_t objects = std::min<std::ptrdiff_t>(count - k, lanes);
        if (objects > 1 && n <= greatestFactoredInLocals && together(k, objects)) {
            k += objects;
            continue;
        }
        for (; objects > 0; --objects, ++k)
            if (choleskyObject(src.at(k), dst.at(k), n, threshold) != korStatusOk) return korStatusNotPositiveDefinite;
    }
    return korStatusOk;
}

// --- Choice ---------------------------------------------------------------------------------------

// A pivot must be above it. Zero is the rule; the exceptions are old, and results rest on them.
template <class A>
[[gnu::always_inline]] inline typename A::Element pivotThreshold(std::int32_t order) {
    using T = typename A::Element;
    if (isScattered<A>) return order == 3 ? T(0x1p-23) : T(0);
    const bool stridedDoubles = !isAdjacent<A> && A::objects == Objects::stepped && !isFloat<T>;
    return stridedDoubles && (order < 3 || order > 5) ? T(0x1p-52) : T(0);
}

template <class A, class D, class Count>
[[gnu::always_inline]] inline std::int32_t choleskyDecomposition(A src, D dst, std::int32_t order, Count count) {
    using T = typename D::Element;
    const T threshold = pivotThreshold<A>(order);
    // A triangle is half the work of a square, so that order 5 counts as small.
    const auto factor = [&](auto n) __attribute__((always_inline)) {
        if constexpr (isOneObject<Count>) return choleskySized<n, Newton::halvesFirst>(src.at(0), dst.at(0), threshold);
        else return choleskyArray<n>(withAnyObjects<n - 1>(src), withAnyObjects<n - 1>(dst), count, threshold);
    };
    const auto factorAny = [&]() __attribute__((always_inline)) {
        if constexpr (isOneObject<Count>) return factorGeneral<T>(src.at(0), dst.at(0), order, threshold);
        else return choleskyGroups(withAnyObjects(src), withAnyObjects(dst), order, count, threshold);
    };
    if (order == 1) return factor(Int<1>());
    if (order == 2) return factor(Int<2>());
    if constexpr (!isOneObject<Count> && isAdjacent<A> && isFloat<T> && A::objects == Objects::stepped)
        if (order >= 3 && order <= 6)
            return cores::choleskyInFours(reinterpret_cast<const float*>(src.origin), src.objectStride, src.rowStride,
                                          reinterpret_cast<float*>(dst.origin), dst.objectStride, dst.rowStride, order,
                                          count);
    if constexpr (isOneObject<Count> || isAdjacent<A>) return forOrder(order, factor, factorAny);
    else return factorAny();
}

}  // namespace korm::inline KORM_VARIANT::linalg
