// Solves with a Cholesky factor: which order of which layout takes which path, and loops over objects.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "kernel/vec.h"
#include "linalg/cholesky_sweeps.h"
#include "linalg/cores.h"
#include "linalg/order1.h"
#include "linalg/partial_sums.h"
#include "linalg/triangles.h"

namespace korm::inline KORM_VARIANT::linalg {

// --- Orders known when compiling --------------------------------------------------------------------

template <int n, class S>
[[gnu::always_inline]] inline void sweepSized(const Triangle<S, n>& a, S (&x)[n]) {
#pragma GCC unroll 6
    for (int k = 0; k < n; ++k) {
#pragma GCC unroll 6
        for (int j = 0; j < k; ++j) x[k] = x[k] - a[triangleSize(k) + j] * x[j];
        x[k] = x[k] * a[triangleSize(k) + k];
    }
#pragma GCC unroll 6
    for (int k = n - 1; k >= 0; --k) {
#pragma GCC unroll 6
        for (int j = k + 1; j < n; ++j) x[k] = x[k] - a[triangleSize(j) + k] * x[j];
        x[k] = x[k] * a[triangleSize(k) + k];
    }
}

template <class S>
[[gnu::always_inline]] inline S solveOrder1(S reciprocal, S side) {
    return side * reciprocal * reciprocal;
}

// One function for the layouts in which elements are gathered one by one.
template <int n, class T>
[[gnu::noinline]] void sweepOutOfLine(const Triangle<T, n>& a, T (&x)[n]) {
    sweepSized<n>(a, x);
}

template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void choleskySolveSized(const A& factor, const B& src, const D& dst) {
    Triangle<T, n> a;
    T x[n];
    readTriangle<n>(factor, a);
    readRow(src, 0, x);
    if constexpr (isAdjacent<A>) sweepSized<n>(a, x);
    else sweepOutOfLine<n>(a, x);
    writeRow(dst, 0, x);
}

// Objects in lanes: each has a factor of its own.
template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void choleskySolveArray(const A& factor, const B& src, const D& dst, std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr int bytes = n * n * static_cast<int>(sizeof(T));
    const std::ptrdiff_t fetchEnd = endOfFetching(count, bytes);
    std::ptrdiff_t k = 0;
    if constexpr (n == 1) k = computeElements<T>(count, solveOrder1<S>, dst, factor, src);
    for (; k + lanes <= count; k += lanes) {
        if (k < fetchEnd) fetchAhead<lanes, bytes>(factor, k);
        Triangle<S, n> a;
        S x[n];
        readTriangles<n>(groupAt<lanes>(factor, k), a);
        readRows(groupAt<lanes>(src, k), sameRow(0), x);
        sweepSized<n>(a, x);
        writeRows(groupAt<lanes>(dst, k), sameRow(0), x);
    }
    for (; k < count; ++k) choleskySolveSized<n, T>(factor.at(k), src.at(k), dst.at(k));
}

// One factor for all: its elements are brought into all lanes once.
template <int n, class T, class A, class B, class D>
[[gnu::noinline]] void choleskySolveVectors(const A& factor, const B& src, const D& dst, std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    Triangle<S, n> a;
    readTriangle<n>(factor.at(0), a);
    std::ptrdiff_t k = 0;
    if constexpr (n == 1) k = computeElements<T>(count, solveOrder1<S>, dst, factor, src);
    for (; k + lanes <= count; k += lanes) {
        S x[n];
        readRows(groupAt<lanes>(src, k), sameRow(0), x);
        sweepSized<n>(a, x);
        writeRows(groupAt<lanes>(dst, k), sameRow(0), x);
    }
    for (; k < count; ++k) {
        S x[n];
        readRow(src.at(k), 0, x);
        sweepSized<n>(a, x);
        writeRow(dst.at(k), 0, x);
    }
}

// The same for callers that have pointers: strides in bytes, orders 3 to 6.
inline void choleskySolvePlain(const float* matrix, std::ptrdiff_t src1RowStride, const float* source,
                               std::ptrdiff_t src2ObjectStride, float* result, std::ptrdiff_t dstObjectStride,
                               std::int32_t order, std::ptrdiff_t count) {
    forOrder(
        order,
        [&](auto n) {
            choleskySolveVectors<n, float>(plain(matrix, src1RowStride),
                                           withAnyObjects<n - 1>(plainArray(source, src2ObjectStride, noRows)),
                                           withAnyObjects<n - 1>(plainArray(result, dstObjectStride, noRows)), count);
        },
        []() {});
}

inline void choleskySolveStrided(const float* matrix, std::ptrdiff_t src1RowStride, std::ptrdiff_t src1ElementStride,
                                 const float* source, std::ptrdiff_t src2ObjectStride, std::ptrdiff_t src2ElementStride,
                                 float* result, std::ptrdiff_t dstObjectStride, std::ptrdiff_t dstElementStride,
                                 std::int32_t order, std::ptrdiff_t count) {
    forOrder(
        order,
        [&](auto n) {
            choleskySolveVectors<n, float>(strided(matrix, src1RowStride, src1ElementStride),
                                           stridedArray(source, src2ObjectStride, noRows, src2ElementStride),
                                           stridedArray(result, dstObjectStride, noRows, dstElementStride), count);
        },
        []() {});
}

// --- Any order --------------------------------------------------------------------------------------

// Sweeps over locals, which all layouts share: with one factor for all vectors, and with one for each.
template <int groups, bool isParted, class S>
[[gnu::noinline]] void sweepWithShared(const ElementOf<S>* shared, S* x, std::ptrdiff_t n, std::ptrdiff_t place) {
    const auto element = [&](int, std::ptrdiff_t e) __attribute__((always_inline)) { return all<S>(shared[e]); };
    sweepInLanes<groups, greatestInLanes, isParted>(element, x, n, place);
}

template <int groups, bool isParted, class S>
[[gnu::noinline]] void sweepWithOwn(S* a, S* x, std::ptrdiff_t n, std::ptrdiff_t place) {
    const auto element = [&](int v, std::ptrdiff_t e) __attribute__((always_inline)) {
        return a[v * triangleSize(greatestInLanes) + e];
    };
    sweepInLanes<groups, greatestInLanes, isParted>(element, x, n, place);
}

// Objects whose solutions are alike in where the blocks of their sums begin. Objects of tables follow each other.
template <class T, class A, class B, class D, int most>
[[gnu::noinline]] void choleskySolveAlike(const A& factor, const B& src, const D& dst, const T* shared,
                                          const ObjectNumbers<most>& numbers, std::ptrdiff_t n, std::ptrdiff_t place) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    constexpr bool isParted = isAdjacent<A>;
    const int size = numbers.size, groups = groupsFor<isShared<A>>(numbers, lanes);
    if (size == 1) {
        const std::ptrdiff_t k = numbers.at[0];
        sweepGeneral<T>(factor.at(k), src.at(k), dst.at(k), n);
        return;
    }
    S x[groupsInFlight<A> * greatestInLanes];
    const auto isWhole = [&](int v) { return (v + 1) * lanes <= size; };
    for (int v = 0; v < groups; ++v)
        readRowStarts(groupOf<lanes>(src, numbers.at + v * lanes), sameRow(0), n, x + v * greatestInLanes,
                      isWhole(v) && lanesTouch(src));
    if constexpr (isShared<A>) {
        forGroups(groups, [&](auto some) { sweepWithShared<some, isParted>(shared, x, n, place); });
    } else {
        constexpr std::ptrdiff_t pitch = triangleSize(greatestInLanes);
        S a[groupsInFlight<A> * pitch];
        for (int v = 0; v < groups; ++v)
            readTriangles(groupOf<lanes>(factor, numbers.at + v * lanes), n, a + v * pitch,
                          isWhole(v) && lanesTouch(factor));
        if (groups == 1) sweepWithOwn<1, isParted>(a, x, n, place);
        else sweepWithOwn<2, isParted>(a, x, n, place);
    }
    for (int v = 0; v < groups; ++v)
        writeRowStarts(groupOf<lanes>(dst, numbers.at + v * lanes), sameRow(0), n, x + v * greatestInLanes,
                       isWhole(v) && lanesTouch(dst));
}

template <class T, class A, class B, class D>
[[gnu::noinline]] void choleskySolveGroups(const A& factor, const B& src, const D& dst, std::ptrdiff_t n,
                                           std::ptrdiff_t count) {
    if (n > greatestInLanes || count == 1) {
        for (std::ptrdiff_t k = 0; k < count; ++k) sweepGeneral<T>(factor.at(k), src.at(k), dst.at(k), n);
        return;
    }
    T shared[isShared<A> ? triangleSize(greatestInLanes) : 1];
    if constexpr (isShared<A>) readTriangle(factor.at(0), n, shared);
    else shared[0] = T();
    constexpr int most = groupsInFlight<A> * laneCount<T>;
    forAlikeObjects<T, most>(dst, count, most, isAdjacent<A> && n > block,
                             [&](const ObjectNumbers<most>& numbers, std::ptrdiff_t place) {
                                 for (int l = 0; l < numbers.size; ++l)
                                     fetchSquare(factor, numbers.at[l] + most, n, count);
                                 choleskySolveAlike<T>(factor, src, dst, shared, numbers, n, place);
                             });
}

// --- Choice ---------------------------------------------------------------------------------------

// Floats at orders 3 to 6 in the standard layout, one factor for all vectors.
template <class A, class B>
inline constexpr bool hasVectorCore =
    isShared<A> && !isScattered<A> && B::objects == Objects::stepped && isFloat<typename B::Element>;

template <int n, class A, class B, class D>
[[gnu::always_inline]] inline void choleskySolveObjects(const A& factor, const B& src, const D& dst,
                                                        std::ptrdiff_t count) {
    using T = typename D::Element;
    if constexpr (isShared<A>) choleskySolveVectors<n, T>(factor, src, dst, count);
    else choleskySolveArray<n, T>(factor, src, dst, count);
}

template <class A, class B, class D>
[[gnu::always_inline]] inline void choleskySolveMany(const A& factor, const B& src, const D& dst, std::int32_t order,
                                                     std::ptrdiff_t count) {
    using T = typename D::Element;
    if constexpr (hasVectorCore<A, B>) {
        if (order >= 3 && order <= 6) {
            const auto* const matrix = reinterpret_cast<const float*>(factor.origin);
            const auto* const source = reinterpret_cast<const float*>(src.origin);
            auto* const result = reinterpret_cast<float*>(dst.origin);
            if constexpr (isAdjacent<A>)
                return cores::choleskySolvePlain(matrix, factor.rowStride, source, src.objectStride, result,
                                                 dst.objectStride, order, count);
            else
                return cores::choleskySolveStrided(matrix, factor.rowStride, factor.elementStride, source,
                                                   src.objectStride, src.elementStride, result, dst.objectStride,
                                                   dst.elementStride, order, count);
        }
    }
    // A solve is so short that order 5 counts as small.
    const auto solve = [&](auto n) __attribute__((always_inline)) {
        choleskySolveObjects<n>(withAnyObjects<n - 1>(factor), withAnyObjects<n - 1>(src), withAnyObjects<n - 1>(dst),
                                count);
    };
    const auto solveAny = [&]() __attribute__((always_inline)) {
        choleskySolveGroups<T>(withAnyObjects(factor), withAnyObjects(src), withAnyObjects(dst), order, count);
    };
    if (order == 1) return solve(Int<1>());
    if (order == 2) return solve(Int<2>());
    if constexpr (isAdjacent<A> && !hasVectorCore<A, B>) return forOrder(order, solve, solveAny);
    else solveAny();
}

// One factor for all vectors or one for each.
template <class A, class B, class D, class Count>
[[gnu::always_inline]] inline void choleskySolve(A factor, B src, D dst, std::int32_t order, Count count) {
    using T = typename D::Element;
    if constexpr (isOneObject<Count>) {
        const auto solve = [&](auto n) __attribute__((always_inline)) {
            choleskySolveSized<n, T>(factor.at(0), src.at(0), dst.at(0));
        };
        if (order == 1) return solve(Int<1>());
        if (order == 2) return solve(Int<2>());
        forOrder(
            order, solve, [&]() __attribute__((always_inline)) {
                sweepGeneral<T>(factor.at(0), src.at(0), dst.at(0), order);
            });
    } else {
        choleskySolveMany(factor, src, dst, order, count);
    }
}

}  // namespace korm::inline KORM_VARIANT::linalg
