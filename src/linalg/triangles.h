// Lower triangles of square matrices, row behind row without gaps: of one object, or of a group with one object in each lane.
// What stands above the diagonal is never touched: callers may keep anything there, of tables even pointers to nothing.
#pragma once

#include <cstddef>

#include "kernel/groups.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "linalg/grids.h"

namespace korm::inline KORM_VARIANT::linalg {

// The elements of a triangle of n rows, which is also where row n begins.
constexpr std::ptrdiff_t triangleSize(std::ptrdiff_t n) { return n * (n + 1) / 2; }

template <class S, int n>
using Triangle = S[triangleSize(n)];

// --- Orders known when compiling --------------------------------------------------------------------

// Of one object, the same in all lanes.
template <int n, class S, class Object>
[[gnu::always_inline]] inline void readTriangle(const Object& from, Triangle<S, n>& a) {
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        unrolled<i + 1>([&](auto j) __attribute__((always_inline)) {
            a[triangleSize(i) + j] = all<S>(load<ElementOf<S>>(from.address(i, j)));
        });
    });
}

template <int n, class S, class Object>
[[gnu::always_inline]] inline void readTriangles(const Group<Object, lanesOf<S>>& from, Triangle<S, n>& a) {
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        if constexpr (isAdjacent<Object>) readRun<i + 1>(from.at(i, 0), a + triangleSize(i));
        else
            unrolled<i + 1>([&](auto j) __attribute__((always_inline)) {
                a[triangleSize(i) + j] = readElement<S>(from.at(i, j));
            });
    });
}

template <int n, class S, class Object>
[[gnu::always_inline]] inline void writeTriangles(const Group<Object, lanesOf<S>>& to, const Triangle<S, n>& a) {
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        if constexpr (isAdjacent<Object>) writeRun<i + 1>(to.at(i, 0), a + triangleSize(i));
        else
            unrolled<i + 1>([&](auto j) __attribute__((always_inline)) {
                writeElement(to.at(i, j), 0, a[triangleSize(i) + j]);
            });
    });
}

template <int n, class T, class Object>
[[gnu::always_inline]] inline void writeTriangle(const Object& to, const Triangle<T, n>& a) {
    unrolled<n>([&](auto i) __attribute__((always_inline)) {
        unrolled<i + 1>([&](auto j)
                            __attribute__((always_inline)) { store(to.address(i, j), a[triangleSize(i) + j]); });
    });
}

// --- Any order --------------------------------------------------------------------------------------

template <class T, class Object>
[[gnu::always_inline]] inline void readTriangle(const Object& from, std::ptrdiff_t n, T* a) {
    for (std::ptrdiff_t i = 0; i < n; ++i)
        for (std::ptrdiff_t j = 0; j <= i; ++j) *a++ = load<T>(from.address(i, j));
}

// Of the row behind the finished ones, those elements that are left of the diagonal.
template <class T, class Object>
[[gnu::always_inline]] inline void writeFinishedRows(const Object& to, const T* a, std::ptrdiff_t n,
                                                     std::ptrdiff_t finished) {
    for (std::ptrdiff_t i = 0; i < n && i <= finished; a += ++i)
        for (std::ptrdiff_t j = 0; j < (i < finished ? i + 1 : i); ++j) store(to.address(i, j), a[j]);
}

template <class S, class Object>
[[gnu::always_inline]] inline void readTriangles(const Group<Object, lanesOf<S>>& from, std::ptrdiff_t n, S* a,
                                                 bool touch) {
    for (std::ptrdiff_t i = 0; i < n; a += ++i) readRowStarts(from, sameRow(i), i + 1, a, touch);
}

template <class S, class Object>
[[gnu::always_inline]] inline void writeTriangles(const Group<Object, lanesOf<S>>& to, std::ptrdiff_t n, const S* a,
                                                  bool touch) {
    for (std::ptrdiff_t i = 0; i < n; a += ++i) writeRowStarts(to, sameRow(i), i + 1, a, touch);
}

}  // namespace korm::inline KORM_VARIANT::linalg
