// Reflections of a QR decomposition, over any scalar: of one object, of objects in lanes, of columns in lanes.
//
// H = I + beta v v' clears column j below its diagonal. v[j] is 1 and nothing stands above it; v is kept where the zeros
// would be, while beta = -2 / (v' v) is computed anew by whoever needs it.
#pragma once

#include <cstddef>
#include <limits>

#include "kernel/scalar.h"
#include "linalg/partial_sums.h"

namespace korm::inline KORM_VARIANT::linalg {

// A square matrix needs no reflection for its last column.
[[gnu::always_inline]] inline std::ptrdiff_t reflectionsOf(std::ptrdiff_t width, std::ptrdiff_t height) {
    return width < height ? width : width - 1;
}

// `start` and the terms from `i` to end - 1. Of adjacent elements long sums run in eight partial sums from their first term
// on, whatever the alignment: scratch lies elsewhere on each thread, and a result should not.
template <bool inEights>
[[gnu::always_inline]] inline std::ptrdiff_t blocksOfReflection(std::ptrdiff_t i, std::ptrdiff_t end) {
    return inEights && end - i >= block ? i : end;
}

template <bool inEights, class S, class Term>
[[gnu::always_inline]] inline S sumOnto(S start, std::ptrdiff_t i, std::ptrdiff_t end, const Term& term) {
    return summed<Sign::plus>(start, i, blocksOfReflection<inEights>(i, end), end, term);
}

// Makes v of rows j + 1 to end - 1 of a column; false if the column of an object is too short to be divided by.
template <bool inEights, class S, class Column, class Store>
[[gnu::always_inline]] inline bool makeReflector(const Column& column, const Store& store, std::ptrdiff_t j,
                                                 std::ptrdiff_t end) {
    using T = ElementOf<S>;
    const S square = sumOnto<inEights>(S(), j, end, [&](std::ptrdiff_t i) { return column(i) * column(i); });
    if (any(asBits(all<S>(std::numeric_limits<T>::epsilon()) > magnitude(square)))) return false;
    const S norm = squareRoot(square), alpha = column(j);
    const S scale = all<S>(1) / chosen(asBits(alpha > S()), alpha + norm, alpha - norm);
    for (std::ptrdiff_t i = j + 1; i < end; ++i) store(i, column(i) * scale);
    return true;
}

template <bool inEights, class S, class Reflector>
[[gnu::always_inline]] inline S reflectorScale(const Reflector& v, std::ptrdiff_t j, std::ptrdiff_t end) {
    return all<S>(-2) / sumOnto<inEights>(all<S>(1), j + 1, end, [&](std::ptrdiff_t i) { return v(i) * v(i); });
}

// What is added to element j of a column; v(i) times it is added to those below.
template <bool inEights, class S, class Column, class Reflector>
[[gnu::always_inline]] inline S reflection(const Column& column, const Reflector& v, S beta, std::ptrdiff_t j,
                                           std::ptrdiff_t end) {
    return sumOnto<inEights>(column(j), j + 1, end, [&](std::ptrdiff_t i) { return column(i) * v(i); }) * beta;
}

}  // namespace korm::inline KORM_VARIANT::linalg
