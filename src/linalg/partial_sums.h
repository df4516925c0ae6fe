// Long sums in eight partial sums: where their blocks begin, and how they are added up.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::linalg {

// Long sums of adjacent elements run in this many partial sums, from where the work vector reaches a multiple of 16
// bytes on. Where that is decides about the rounding, so it depends on the address. Results rest on both numbers: neither
// is a matter of how wide vectors are.
inline constexpr std::ptrdiff_t block = 8;
inline constexpr std::ptrdiff_t blockAlignment = 16;

// The first column at which the work vector is so aligned; a number of its own, that of the columns from one such to the next,
// if there is none.
template <class T, class D>
[[gnu::always_inline]] inline std::ptrdiff_t placeOfBlocks(const D& work) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto address = reinterpret_cast<std::intptr_t>(work.address(0, 0));
    return address % size == 0 ? (-address & (blockAlignment - 1)) / size : blockAlignment / size;
}

// The column where the blocks of a sum begin; `end` if it has none.
template <class T>
[[gnu::always_inline]] inline std::ptrdiff_t blocksFrom(std::ptrdiff_t place, std::ptrdiff_t first,
                                                        std::ptrdiff_t end) {
    constexpr std::ptrdiff_t places = blockAlignment / static_cast<std::ptrdiff_t>(sizeof(T));
    const std::ptrdiff_t aligned = first + ((place - first) & (places - 1));
    return place < places && end - aligned >= block ? aligned : end;
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

// Terms are added to what a sum starts from, or subtracted from it.
enum class Sign { plus, minus };

template <Sign sign, class S>
[[gnu::always_inline]] inline S with(S s, S term) {
    return sign == Sign::plus ? s + term : s - term;
}

// One step of a sum whose terms are taken one by one. The compiler doesn't see through it: it would form the products
// of one object as vectors, of elements that were just stored one by one, and wait until those are in the cache.
template <Sign sign, class S>
[[gnu::always_inline]] inline S step(S s, S term) {
    s = with<sign>(s, term);
    if constexpr (lanesOf<S> == 1) asm("" : "+x"(s));
    return s;
}

// start and term(first) ... term(end - 1), in partial sums from `blocks` on unless that is `end`: the first of them goes on
// from what is there, the others start from zero.
template <Sign sign, class S, class Term>
[[gnu::always_inline]] inline S summed(S start, std::ptrdiff_t first, std::ptrdiff_t blocks, std::ptrdiff_t end,
                                       const Term& term) {
    S s = start;
    std::ptrdiff_t j = first;
    if (blocks < end) {
        for (; j < blocks; ++j) s = step<sign>(s, term(j));
        S part[block] = {s};
        for (; end - j >= block; j += block)
#pragma GCC unroll 8
            for (int p = 0; p < block; ++p) part[p] = with<sign>(part[p], term(j + p));
        s = folded(part);
    }
    for (; j < end; ++j) s = step<sign>(s, term(j));
    return s;
}

// The same for several sums of as many terms: those that are taken one by one are chains, which go side by side.
template <Sign sign, int sums, class S, class Term>
[[gnu::always_inline]] inline void sumTogether(S (&s)[sums], std::ptrdiff_t first, std::ptrdiff_t blocks,
                                               std::ptrdiff_t end, const Term& term) {
    std::ptrdiff_t j = first;
    if (blocks < end) {
        j = end - (end - blocks) % block;
#pragma GCC unroll 8
        for (int v = 0; v < sums; ++v)
            s[v] = summed<sign>(
                s[v], first, blocks, j, [&](std::ptrdiff_t i) __attribute__((always_inline)) { return term(v, i); });
    }
    for (; j < end; ++j) {
#pragma GCC unroll 8
        for (int v = 0; v < sums; ++v) s[v] = step<sign>(s[v], term(v, j));
    }
}

// The same for one object's products of two rows of adjacent elements, from the first on.
template <Sign sign, class T>
[[gnu::always_inline]] inline T summedProducts(T start, const std::byte* left, const std::byte* right,
                                               std::ptrdiff_t blocks, std::ptrdiff_t end) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(T));
    const auto term = [&](std::ptrdiff_t j) { return load<T>(left + j * size) * load<T>(right + j * size); };
    T s = start;
    std::ptrdiff_t j = 0;
    if (blocks < end) {
        for (; j < blocks; ++j) s = step<sign>(s, term(j));
        using V = Vec<T, 16 / sizeof(T)>;
        constexpr int vectors = block / lanesOf<V>;
        V part[vectors] = {};
        part[0][0] = s;
        for (; end - j >= block; j += block)
#pragma GCC unroll 8
            for (int v = 0; v < vectors; ++v) {
                const std::ptrdiff_t at = (j + v * lanesOf<V>)*size;
                part[v] = with<sign>(part[v], load<V>(left + at) * load<V>(right + at));
            }
        s = folded(part);
    }
    for (; j < end; ++j) s = step<sign>(s, term(j));
    return s;
}

// --- Objects that are alike -------------------------------------------------------------------------

// Numbers of objects whose blocks begin at the same columns, so that they can be solved in lanes.
template <int most>
struct ObjectNumbers {
    std::ptrdiff_t at[most];
    int size = 0;
};

// Solves in lanes: each sum is a chain of additions and each row ends in a division or a product, so several vectors of objects
// are in flight. What they work on lies on the stack, which bounds the order, and their number where each object has a
// matrix of its own.
template <class A>
inline constexpr int groupsInFlight = isShared<A> ? 6 : 2;
inline constexpr std::ptrdiff_t greatestInLanes = 64;

// How many groups so many objects make. Above three an even number saves kernels: the last objects are solved again where a
// group is left over.
template <bool isEven, int most>
[[gnu::always_inline]] inline int groupsFor(const ObjectNumbers<most>& numbers, int lanes) {
    const int groups = (numbers.size + lanes - 1) / lanes;
    return isEven && groups > 3 ? groups + groups % 2 : groups;
}

// Calls f with so many groups with one matrix as a type.
template <class F>
[[gnu::always_inline]] inline void forGroups(int groups, const F& f) {
    if (groups == 1) f(Int<1>{});
    else if (groups == 2) f(Int<2>{});
    else if (groups == 3) f(Int<3>{});
    else if (groups == 4) f(Int<4>{});
    else f(Int<6>{});
}

// Hands all objects of an array to `solve(numbers, place)`, `atOnce` at a time and those of a place together: blocks begin at
// column `place` at the earliest. Behind the last numbers the last is repeated, for lanes that are left over.
template <class T, int most, class View, class Solve>
[[gnu::always_inline]] inline void forAlikeObjects(const View& work, std::ptrdiff_t count, int atOnce, bool hasLongSums,
                                                   const Solve& solve) {
    constexpr int places = blockAlignment / static_cast<int>(sizeof(T));
    ObjectNumbers<most> alike[places + 1];
    const auto solveThose = [&](std::ptrdiff_t place) {
        ObjectNumbers<most>& numbers = alike[place];
        if (numbers.size == 0) return;
        for (int l = numbers.size; l < most; ++l) numbers.at[l] = numbers.at[numbers.size - 1];
        solve(numbers, place);
        numbers.size = 0;
    };
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const std::ptrdiff_t place = hasLongSums ? placeOfBlocks<T>(work.at(k)) : places;
        ObjectNumbers<most>& numbers = alike[place];
        numbers.at[numbers.size++] = k;
        if (numbers.size == atOnce) solveThose(place);
    }
    for (std::ptrdiff_t place = 0; place <= places; ++place) solveThose(place);
}

}  // namespace korm::inline KORM_VARIANT::linalg
