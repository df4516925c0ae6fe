// The loops of the batches: vectors in ascending order, several in lanes where that gives the same results.
//
// A transform tells its numbers of inputs and outputs, and has a type for one vector (One) and a type for several (Two
// or Four), each made from the same arguments. Vectors are at any distance, zero and negative ones too.
#pragma once

#include <algorithm>

#include "geometry/elements.h"
#include "geometry/lanes.h"

namespace korm::inline KORM_VARIANT::geometry {

struct Vectors {
    const std::byte* src;
    std::ptrdiff_t srcStride;
    std::byte* dst;
    std::ptrdiff_t dstStride;
    std::ptrdiff_t count;

    const std::byte* from(std::ptrdiff_t k) const { return src + k * srcStride; }
    std::byte* to(std::ptrdiff_t k) const { return dst + k * dstStride; }
};

// The bytes from the first that `count` objects of `size` touch up to the one behind the last.
struct Span {
    std::int64_t begin;
    std::int64_t end;

    Span(const std::byte* base, std::int64_t stride, std::int64_t count, std::int64_t size) {
        const auto first = static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(base));
        const std::int64_t last = first + (count - 1) * stride;
        begin = std::min(first, last);
        end = std::max(first, last) + size;
    }
};

// May vectors be read before earlier results are stored? Yes if the operands don't overlap, or if each result lies on
// its own vector and on no other.
template <class Transform>
inline bool mayReadAhead(const Vectors& v) {
    constexpr std::int64_t read = Transform::inputs * sizeof(float), written = Transform::outputs * sizeof(float);
    const Span source(v.src, v.srcStride, v.count, read), result(v.dst, v.dstStride, v.count, written);
    if (source.end <= result.begin || result.end <= source.begin) return true;
    const std::int64_t distance = v.srcStride < 0 ? -v.srcStride : v.srcStride;
    return v.src == v.dst && v.srcStride == v.dstStride && distance >= std::max(read, written);
}

template <class Transform, class One>
inline void oneByOne(const One& one, const Vectors& v, std::ptrdiff_t first) {
    for (std::ptrdiff_t k = first; k < v.count; ++k)
        storeElements<Transform::outputs>(elementsAt(v.to(k)), one(elementsAt(v.from(k))));
}

// Calls with the distances: those that are common are known when compiling, which spares a loop its addresses. Vectors
// of three are often padded to four. Inlined always, as are the rounds: clang would leave them as calls, to which the
// matrix goes by its address, and load it again after every store.
template <class Transform, class Loop>
[[gnu::always_inline]] inline std::ptrdiff_t withSteps(const Vectors& v, const Loop& loop) {
    constexpr Packed<Transform::inputs> packedSource;
    constexpr Packed<Transform::outputs> packedResult;
    if (v.srcStride == packedSource && v.dstStride == packedResult) return loop(packedSource, packedResult);
    if constexpr (Transform::inputs == 3) {
        constexpr Known<16> padded;
        if (v.srcStride == padded && v.dstStride == padded) return loop(padded, padded);
    }
    if (v.dstStride == packedResult) return loop(v.srcStride, packedResult);
    return loop(v.srcStride, v.dstStride);
}

// Calls body(number of the first, its place, its result's place) for `several` vectors at a time; returns how many are
// done.
template <int several, int round, class SrcStep, class DstStep, class Body>
[[gnu::always_inline]] inline std::ptrdiff_t inRounds(const Vectors& v, SrcStep srcStep, DstStep dstStep,
                                                      const Body& body) {
    const bool isWide = takesTwoLines(srcStep, dstStep, round);
    const std::byte* from = v.src;
    std::byte* to = v.dst;
    std::ptrdiff_t k = 0;
    for (; k + round <= v.count; k += round, from += round * srcStep, to += round * dstStep) {
        fetchAhead(from, to);
        if (isWide) fetchAhead(from + round / 2 * srcStep, to + round / 2 * dstStep);
        for (std::ptrdiff_t i = 0; i < round; i += several) body(k + i, from + i * srcStep, to + i * dstStep);
    }
    for (; k + several <= v.count; k += several, from += several * srcStep, to += several * dstStep) body(k, from, to);
    return k;
}

// Results of two or four elements.
template <class Transform, bool isAligned, class Two, class SrcStep, class DstStep>
inline std::ptrdiff_t twoByTwo(const Two& two, const Vectors& v, SrcStep srcStep, DstStep dstStep) {
    constexpr int round = isPacked<2, SrcStep> ? 8 : 4;
    return inRounds<2, round>(v, srcStep, dstStep, [&](std::ptrdiff_t, const std::byte* from, std::byte* to) {
        const TwoVectors both = loadTwo<Transform::inputs, isAligned>(from, srcStep);
        if constexpr (Transform::outputs == 4) {
            constexpr std::ptrdiff_t half = 2 * sizeof(float);
            const Float4 low = two(both, 0), high = two(both, 1);
            storeLowPair(to, low);
            storeLowPair(to + half, high);
            storeHighPair(to + dstStep, low);
            storeHighPair(to + dstStep + half, high);
        } else if constexpr (isPacked<2, DstStep>) {
            store(to, two(both));
        } else {
            const Float4 results = two(both);
            storeLowPair(to, results);
            storeHighPair(to + dstStep, results);
        }
    });
}

inline bool isAligned(const std::byte* address) { return reinterpret_cast<std::uintptr_t>(address) % 16 == 0; }

// Returns how many are done.
template <class Transform, class Two>
inline std::ptrdiff_t severalByTwo(const Two& two, const Vectors& v) {
    return withSteps<Transform>(v, [&](auto srcStep, auto dstStep) {
        if constexpr (isPacked<2, decltype(srcStep)>)
            if (isAligned(v.src)) return twoByTwo<Transform, true>(two, v, srcStep, dstStep);
        return twoByTwo<Transform, false>(two, v, srcStep, dstStep);
    });
}

// Results of three elements.
template <class Transform, class Four>
inline std::ptrdiff_t severalByFour(const Four& four, const Vectors& v) {
    return withSteps<Transform>(v, [&](auto srcStep, auto dstStep) {
        constexpr int round = isPacked<3, decltype(srcStep)> ? 8 : 4;
        return inRounds<4, round>(v, srcStep, dstStep, [&](std::ptrdiff_t, const std::byte* from, std::byte* to) {
            storeFour(to, dstStep, four(loadFour(from, srcStep)));
        });
    });
}

template <class Transform, class... Arguments>
inline void batch(const Unaligned* src, std::int32_t srcStride, Unaligned* dst, std::int32_t dstStride,
                  std::int32_t count, const Arguments&... arguments) {
    const Vectors v{bytes(src), srcStride, bytes(dst), dstStride, count};
    const typename Transform::One one(arguments...);  // now: results may be written over the matrix
    std::ptrdiff_t done = 0;
    if (mayReadAhead<Transform>(v)) {
        if constexpr (Transform::outputs == 3)
            done = severalByFour<Transform>(typename Transform::Four(arguments...), v);
        else done = severalByTwo<Transform>(typename Transform::Two(arguments...), v);
    }
    oneByOne<Transform>(one, v, done);
}

}  // namespace korm::inline KORM_VARIANT::geometry
