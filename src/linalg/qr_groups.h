// QR decomposition and solve of objects in lanes, each lane as the general kernel does one object, and of small single ones.
#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/views.h"
#include "kernel/groups.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "korm.h"
#include "linalg/cores.h"
#include "linalg/grids.h"
#include "linalg/order1.h"
#include "linalg/qr_general.h"
#include "linalg/qr_reflect.h"
#include "linalg/rows.h"

namespace korm::inline KORM_VARIANT::linalg {

// A group's working copy is on the stack: matrices of at most so many elements, 16 KB, half of a first-level cache.
inline constexpr std::ptrdiff_t greatestGroup = 1024, greatestHeight = 128;

[[gnu::always_inline]] inline bool fitsGroup(std::ptrdiff_t width, std::ptrdiff_t height) {
    return height <= greatestHeight && width * height <= greatestGroup;
}

// Short sums are chains of additions: so many columns go side by side.
inline constexpr int columnsTogether = 4;

// Reflects columns c to c + columns - 1 of rows j and below, which begin at `a`, `width` apart.
template <int columns, class S>
[[gnu::always_inline]] inline void reflectTogether(S* a, const S* v, S beta, std::ptrdiff_t c, std::ptrdiff_t j,
                                                   std::ptrdiff_t width, std::ptrdiff_t height) {
    S t[columns];
    const auto element = [&](std::ptrdiff_t i, int q) __attribute__((always_inline))->S& {
        return a[i * width + c + q];
    };
    unrolled<columns>([&](auto q) __attribute__((always_inline)) { t[q] = element(j, q); });
    for (std::ptrdiff_t i = j + 1; i < height; ++i)
        unrolled<columns>([&](auto q) __attribute__((always_inline)) { t[q] = t[q] + element(i, q) * v[i]; });
    unrolled<columns>([&](auto q) __attribute__((always_inline)) {
        t[q] = t[q] * beta;
        element(j, q) = element(j, q) + t[q];
    });
    for (std::ptrdiff_t i = j + 1; i < height; ++i)
        unrolled<columns>([&](auto q) __attribute__((always_inline)) { element(i, q) = element(i, q) + v[i] * t[q]; });
}

// Decomposes `a`; false, and `a` undefined, if a column of an object is too short.
template <bool inEights, class S>
[[gnu::always_inline]] inline bool qrGroup(S* a, std::ptrdiff_t width, std::ptrdiff_t height) {
    S v[greatestHeight];
    const auto reflector = [&](std::ptrdiff_t i) { return v[i]; };
    const auto columnAt = [&](std::ptrdiff_t c) {
        return [a, c, width](std::ptrdiff_t i) { return a[i * width + c]; };
    };
    for (std::ptrdiff_t j = 0; j < reflectionsOf(width, height); ++j) {
        const auto storeReflector = [&](std::ptrdiff_t i, S value) { v[i] = value; };
        if (!makeReflector<inEights, S>(columnAt(j), storeReflector, j, height)) return false;
        const S beta = reflectorScale<inEights, S>(reflector, j, height);
        a[j * width + j] = a[j * width + j] + reflection<inEights>(columnAt(j), reflector, beta, j, height);
        for (std::ptrdiff_t i = j + 1; i < height; ++i) a[i * width + j] = v[i];
        std::ptrdiff_t c = j + 1;
        if (inEights && height - j > block)
            for (; c < width; ++c) {
                const S t = reflection<inEights>(columnAt(c), reflector, beta, j, height);
                a[j * width + c] = a[j * width + c] + t;
                for (std::ptrdiff_t i = j + 1; i < height; ++i) a[i * width + c] = a[i * width + c] + v[i] * t;
            }
        for (; c + columnsTogether <= width; c += columnsTogether)
            reflectTogether<columnsTogether>(a, v, beta, c, j, width, height);
        for (; c < width; ++c) reflectTogether<1>(a, v, beta, c, j, width, height);
    }
    return true;
}

template <bool inEights, class S>
[[gnu::noinline]] bool qrAny(S* a, std::ptrdiff_t width, std::ptrdiff_t height) {
    return qrGroup<inEights>(a, width, height);
}
template <class S, int width, int height>
[[gnu::noinline]] bool qrSized(S* a, std::ptrdiff_t, std::ptrdiff_t) {
    return qrGroup<false>(a, width, height);
}

// What decomposes groups. Of the smallest, loops would take longer than their elements: their sizes are known when compiling.
template <bool inEights, class S>
auto qrOf(std::ptrdiff_t width, std::ptrdiff_t height) {
    auto decompose = qrAny<inEights, S>;
    if (width == 1) unrolled<6>([&](auto i) { decompose = height == 2 + i ? qrSized<S, 1, 2 + i> : decompose; });
    if (width == 2) unrolled<3>([&](auto i) { decompose = height == 2 + i ? qrSized<S, 2, 2 + i> : decompose; });
    return decompose;
}

// The arrays of one call; a group that fails is done again one by one.
template <class T, class A, class D>
[[gnu::noinline]] std::int32_t qrArray(const A& src, const D& dst, T* buffer, std::ptrdiff_t width,
                                       std::ptrdiff_t height, std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    if (height == 1) {  // nothing to reflect
        for (std::ptrdiff_t k = 0; k < count; ++k) copyRow<T>(src.at(k), dst.at(k), 0, 1);
        return korStatusOk;
    }
    S a[greatestGroup];
    const bool fits = fitsGroup(width, height);
    const auto decompose = qrOf<isAdjacent<D>, S>(width, height);
    const auto together = [&](std::ptrdiff_t k) {
        if (!fits) return false;
        readGroup(src, k, height, width, a);
        if (!decompose(a, width, height)) return false;
        writeGroup(dst, k, height, width, a);
        return true;
    };
    const auto each = [&](std::ptrdiff_t k) { return cores::qrGeneral(src.at(k), dst.at(k), buffer, width, height); };
    return inGroups<lanes>(count, together, each);
}

// One object. Small ones are decomposed in a copy, whose elements lie at known places; one that fails is done again.
template <class T, class A, class D>
[[gnu::noinline]] std::int32_t qrOne(const A& src, const D& dst, T* buffer, std::ptrdiff_t width,
                                     std::ptrdiff_t height) {
    if (width < block && height < block) {
        T a[block * block];
        for (std::ptrdiff_t i = 0; i < height; ++i)
            for (std::ptrdiff_t j = 0; j < width; ++j) a[i * width + j] = load<T>(src.address(i, j));
        if (height == 1 || qrOf<false, T>(width, height)(a, width, height)) {
            for (std::ptrdiff_t i = 0; i < height; ++i)
                for (std::ptrdiff_t j = 0; j < width; ++j) store(dst.address(i, j), a[i * width + j]);
            return korStatusOk;
        }
    }
    return cores::qrGeneral(src, dst, buffer, width, height);
}

// --- Solve --------------------------------------------------------------------------------------

// Solves for the vectors of several groups at once, one behind the other in `b`, and leaves the solutions at their
// beginnings. `element(i, j)` is of the matrix, `scale(j)` its reflectors' own.
template <bool inEights, int groups, class S, class Element, class Scale>
[[gnu::always_inline]] inline void solveTogether(const Element& element, const Scale& scale, S* b, std::ptrdiff_t width,
                                                 std::ptrdiff_t height) {
    const auto each = [](const auto& f) __attribute__((always_inline)) { unrolled<groups>(f); };
    const auto at = [ b, height ](std::ptrdiff_t i, int g) __attribute__((always_inline))->S& {
        return b[g * height + i];
    };
    // sum[g] and the terms of row or column `i` to end - 1; `of` gives the factor that all groups share.
    const auto sumsOnto = [&](S(&sum)[groups], std::ptrdiff_t i, std::ptrdiff_t end, const auto& of)
        __attribute__((always_inline)) {
        sumTogether<Sign::plus>(
            sum, i, blocksOfReflection<inEights>(i, end),
            end, [&](int g, std::ptrdiff_t l) __attribute__((always_inline)) { return of(l) * at(l, g); });
    };
    for (std::ptrdiff_t j = 0; j < reflectionsOf(width, height); ++j) {
        S t[groups];
        each([&](auto g) __attribute__((always_inline)) { t[g] = at(j, g); });
        sumsOnto(t, j + 1, height, [&](std::ptrdiff_t i) { return element(i, j); });
        each([&](auto g) __attribute__((always_inline)) {
            t[g] = scale(j) * t[g];
            at(j, g) = at(j, g) + t[g];
        });
        for (std::ptrdiff_t i = j + 1; i < height; ++i) {
            const S v = element(i, j);
            each([&](auto g) __attribute__((always_inline)) { at(i, g) = at(i, g) + v * t[g]; });
        }
    }
    for (std::ptrdiff_t k = width - 1; k >= 0; --k) {
        S sum[groups] = {};
        sumsOnto(sum, k + 1, width, [&](std::ptrdiff_t j) { return element(k, j); });
        const S diagonal = element(k, k);
        each([&](auto g) __attribute__((always_inline)) {
            at(k, g) = (k < width - 1 ? at(k, g) - sum[g] : at(k, g)) / diagonal;
        });
    }
}

// Matrices and vectors of one element need no reflection. Returns how many are solved.
template <class T, class A, class B, class D>
[[gnu::always_inline]] inline std::ptrdiff_t qrSolveElements(const A& matrix, const B& src, const D& dst,
                                                             std::ptrdiff_t height, std::ptrdiff_t count) {
    if (height > 1) return 0;
    return computeElements<T>(
        count, [](Lanes<T> right, Lanes<T> diagonal) { return right / diagonal; }, dst, src, matrix);
}

// A matrix for each vector: those of a group are turned into lanes first.
template <bool inEights, class S>
[[gnu::noinline]] void qrSolveGroup(const S* a, S* b, std::ptrdiff_t width, std::ptrdiff_t height) {
    const auto element = [&](std::ptrdiff_t i, std::ptrdiff_t j) { return a[i * width + j]; };
    const auto scale = [&](std::ptrdiff_t j) {
        return reflectorScale<inEights, S>([&](std::ptrdiff_t i) { return element(i, j); }, j, height);
    };
    solveTogether<inEights, 1>(element, scale, b, width, height);
}

template <class T, class A, class B, class D>
[[gnu::noinline]] void qrSolveArray(const A& matrix, const B& src, const D& dst, T* buffer, std::ptrdiff_t width,
                                    std::ptrdiff_t height, std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    S a[greatestGroup], b[greatestHeight];
    std::ptrdiff_t k = qrSolveElements<T>(matrix, src, dst, height, count);
    if (fitsGroup(width, height))
        for (; k + lanes <= count; k += lanes) {
            readGroup(matrix, k, height, width, a);
            readGroup(src, k, 1, height, b);
            qrSolveGroup<isAdjacent<A>>(a, b, width, height);
            writeGroup(dst, k, 1, width, b);
        }
    for (; k < count; ++k) cores::qrSolveGeneral(matrix.at(k), src.at(k), dst.at(k), buffer, width, height);
}

// One matrix for all vectors: so many groups go at once, since a sum is a chain of additions.
inline constexpr int groupsTogether = 4;

template <class T, int groups, class Matrix>
[[gnu::noinline]] void qrSolveGroups(const Matrix& matrix, T* scales, Lanes<T>* b, std::ptrdiff_t width,
                                     std::ptrdiff_t height) {
    using S = Lanes<T>;
    solveTogether<isAdjacent<Matrix>, groups>(
        [&](std::ptrdiff_t i, std::ptrdiff_t j) { return all<S>(load<T>(matrix.address(i, j))); },
        [&](std::ptrdiff_t j) { return all<S>(load<T>(scratchAt(scales, j))); }, b, width, height);
}

// `buffer` has the reflectors' scales.
template <class T, class A, class B, class D>
[[gnu::noinline]] void qrSolveVectors(const A& matrix, const B& src, const D& dst, T* buffer, std::ptrdiff_t width,
                                      std::ptrdiff_t height, std::ptrdiff_t count) {
    using S = Lanes<T>;
    constexpr int lanes = laneCount<T>;
    const auto one = matrix.at(0);
    S b[groupsTogether * greatestHeight];
    std::ptrdiff_t k = qrSolveElements<T>(matrix, src, dst, height, count);
    if (count - k >= lanes && height <= greatestHeight) {
        for (std::ptrdiff_t j = 0; j < reflectionsOf(width, height); ++j)
            store(scratchAt(buffer, j), reflectorScale<isAdjacent<A>, T>(
                                            [&](std::ptrdiff_t i) { return load<T>(one.address(i, j)); }, j, height));
        const auto solve = [&](auto groups) {
            for (; k + groups * lanes <= count; k += groups * lanes) {
                for (int g = 0; g < groups; ++g) readGroup(src, k + g * lanes, 1, height, b + g * height);
                qrSolveGroups<T, groups>(one, buffer, b, width, height);
                for (int g = 0; g < groups; ++g) writeGroup(dst, k + g * lanes, 1, width, b + g * height);
            }
        };
        solve(Int<groupsTogether>());
        solve(Int<1>());
    }
    for (; k < count; ++k) cores::qrSolveGeneral(one, src.at(k), dst.at(k), buffer, width, height);
}

}  // namespace korm::inline KORM_VARIANT::linalg
