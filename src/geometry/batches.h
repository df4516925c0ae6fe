// The loops of the batches: vectors in ascending order, several in lanes where nobody can tell.
//
// A transform names its numbers of inputs and outputs and brings a type for one vector (One) and one for several,
// Two or Four, each made from the same arguments. Vectors are at any distance, zero and negative ones too.
#pragma once

#include <algorithm>

#include "geometry/elements.h"
#include "geometry/lanes.h"

namespace korm {

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

// Does the order of reading ahead make no difference? Not if the operands lie apart, nor if each result lies on
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

// Results of two or four elements, two vectors a round.
template <class Transform, std::ptrdiff_t srcDistance, std::ptrdiff_t dstDistance, class Two>
inline std::ptrdiff_t twoByTwo(const Two& two, const Vectors& v) {
    const std::ptrdiff_t srcStride = srcDistance == anyDistance ? v.srcStride : srcDistance;
    const std::ptrdiff_t dstStride = dstDistance == anyDistance ? v.dstStride : dstDistance;
    const std::byte* from = v.src;
    std::byte* to = v.dst;
    std::ptrdiff_t k = 0;
    for (; k + 2 <= v.count; k += 2, from += 2 * srcStride, to += 2 * dstStride) {
        const TwoVectors both = loadTwo<Transform::inputs, srcDistance>(from, srcStride);
        if constexpr (Transform::outputs == 4) {
            const Float4 low = two(both, 0), high = two(both, 1);
            storeLowPair(to, low);
            storeLowPair(to + 8, high);
            storeHighPair(to + dstStride, low);
            storeHighPair(to + dstStride + 8, high);
        } else {
            const Float4 results = two(both);
            if constexpr (dstDistance == 8) {
                storeLanes(to, results);
            } else {
                storeLowPair(to, results);
                storeHighPair(to + dstStride, results);
            }
        }
    }
    return k;
}

// Results of three elements, four vectors a round.
template <bool srcPacked, bool dstPacked, class Four>
inline std::ptrdiff_t fourByFour(const Four& four, const Vectors& v) {
    const std::ptrdiff_t srcStride = srcPacked ? 12 : v.srcStride, dstStride = dstPacked ? 12 : v.dstStride;
    const std::byte* from = v.src;
    std::byte* to = v.dst;
    std::ptrdiff_t k = 0;
    for (; k + 4 <= v.count; k += 4, from += 4 * srcStride, to += 4 * dstStride)
        storeFour<dstPacked>(to, dstStride, four(loadFour<srcPacked>(from, srcStride)));
    return k;
}

template <class Transform, class... Arguments>
inline void batch(const Unaligned* src, std::int32_t srcStride, Unaligned* dst, std::int32_t dstStride,
                  std::int32_t count, const Arguments&... arguments) {
    constexpr std::ptrdiff_t packedSource = Transform::inputs * sizeof(float);
    constexpr std::ptrdiff_t packedResult = Transform::outputs * sizeof(float);
    const Vectors v{bytes(src), srcStride, bytes(dst), dstStride, count};
    std::ptrdiff_t done = 0;
    if (mayReadAhead<Transform>(v)) {
        const bool packedFrom = srcStride == packedSource, packedTo = dstStride == packedResult;
        if constexpr (Transform::outputs == 3) {
            const typename Transform::Four four(arguments...);
            if (packedFrom && packedTo) done = fourByFour<true, true>(four, v);
            else done = fourByFour<false, false>(four, v);
        } else {
            const typename Transform::Two two(arguments...);
            if (packedFrom && packedTo) done = twoByTwo<Transform, packedSource, packedResult>(two, v);
            else done = twoByTwo<Transform, anyDistance, anyDistance>(two, v);
        }
    }
    oneByOne<Transform>(typename Transform::One(arguments...), v, done);
}

}  // namespace korm
