// Long sums in eight partial sums: where their blocks begin, and how they are added up.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::linalg {

// Long sums of adjacent elements run in this many partial sums, from where the work vector reaches a multiple of 16
// bytes on. Where that is decides about the rounding, so it depends on the address. Results rest on both numbers: neither
// is a matter of how wide vectors are.
inline constexpr std::ptrdiff_t block = 8;
inline constexpr std::ptrdiff_t blockAlignment = 16;

// The column where blocks begin; `end` if the sum has none.
template <class T, class D>
[[gnu::always_inline]] inline std::ptrdiff_t blocksFrom(const D& work, std::ptrdiff_t first, std::ptrdiff_t end) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto address = reinterpret_cast<std::intptr_t>(work.address(0, first));
    const std::ptrdiff_t aligned = first + (-address & (blockAlignment - 1)) / size;
    return address % size == 0 && end - aligned >= block ? aligned : end;
}

// The sum of eight partial sums, for one object from vectors of 16 bytes of them, or for objects in lanes.
[[gnu::always_inline]] inline float folded(const Float4 (&part)[2]) {
    const Float4 v = part[0] + part[1];
    const Float4 w = v + highPairTwice(v);
    return w[0] + w[1];
}

[[gnu::always_inline]] inline double folded(const Double2 (&part)[4]) {
    const Double2 w = (part[0] + part[1]) + (part[2] + part[3]);
    return w[0] + w[1];
}

template <class S>
[[gnu::always_inline]] inline S folded(const S (&p)[block]) {
    if constexpr (isFloat<ElementOf<S>>) return ((p[0] + p[4]) + (p[2] + p[6])) + ((p[1] + p[5]) + (p[3] + p[7]));
    else return ((p[0] + p[2]) + (p[4] + p[6])) + ((p[1] + p[3]) + (p[5] + p[7]));
}

// One step of a sum whose terms are subtracted one by one. The compiler doesn't see through it: it would form the products
// of one object as vectors, of elements that were just stored one by one, and wait until those are in the cache.
template <class S>
[[gnu::always_inline]] inline S difference(S s, S term) {
    s = s - term;
    if constexpr (lanesOf<S> == 1) asm("" : "+x"(s));
    return s;
}

// start - term(first) - ... - term(end - 1), in partial sums from `blocks` on unless that is `end`: the first of them goes on
// from what is there, the others start from zero.
template <class S, class Term>
[[gnu::always_inline]] inline S reducedBy(const Term& term, S start, std::ptrdiff_t first, std::ptrdiff_t blocks,
                                          std::ptrdiff_t end) {
    S s = start;
    std::ptrdiff_t j = first;
    if (blocks < end) {
        for (; j < blocks; ++j) s = difference(s, term(j));
        S part[block] = {s};
        for (; end - j >= block; j += block)
#pragma GCC unroll 8
            for (int p = 0; p < block; ++p) part[p] = part[p] - term(j + p);
        s = folded(part);
    }
    for (; j < end; ++j) s = difference(s, term(j));
    return s;
}

// The same for two rows of adjacent elements, from the first on.
template <class T>
[[gnu::always_inline]] inline T reducedByProducts(const std::byte* left, const std::byte* right, T start,
                                                  std::ptrdiff_t blocks, std::ptrdiff_t end) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto term = [&](std::ptrdiff_t j) { return load<T>(left + j * size) * load<T>(right + j * size); };
    T s = start;
    std::ptrdiff_t j = 0;
    if (blocks < end) {
        for (; j < blocks; ++j) s = difference(s, term(j));
        using V = Vec<T, 16 / sizeof(T)>;
        constexpr int vectors = block / lanesOf<V>;
        V part[vectors] = {};
        part[0][0] = s;
        for (; end - j >= block; j += block)
#pragma GCC unroll 4
            for (int v = 0; v < vectors; ++v) {
                const std::ptrdiff_t at = (j + v * lanesOf<V>)*size;
                part[v] = part[v] - load<V>(left + at) * load<V>(right + at);
            }
        s = folded(part);
    }
    for (; j < end; ++j) s = difference(s, term(j));
    return s;
}

}  // namespace korm::inline KORM_VARIANT::linalg
