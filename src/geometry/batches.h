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

// Results of two or four elements.
template <class Transform, Source source, bool resultPacked, class Two>
inline std::ptrdiff_t twoByTwo(const Two& two, const Vectors& v) {
    constexpr std::ptrdiff_t half = 2 * sizeof(float);
    const std::ptrdiff_t srcStride = source == Source::any ? v.srcStride : Transform::inputs * sizeof(float);
    const std::ptrdiff_t dstStride = resultPacked ? Transform::outputs * sizeof(float) : v.dstStride;
    const auto transformTwo = [&](const std::byte* from, std::byte* to) {
        const TwoVectors both = loadTwo<Transform::inputs, source>(from, srcStride);
        if constexpr (Transform::outputs == 4) {
            const Float4 low = two(both, 0), high = two(both, 1);
            storeLowPair(to, low);
            storeLowPair(to + half, high);
            storeHighPair(to + dstStride, low);
            storeHighPair(to + dstStride + half, high);
        } else if constexpr (resultPacked) {
            storeLanes(to, two(both));
        } else {
            const Float4 results = two(both);
            storeLowPair(to, results);
            storeHighPair(to + dstStride, results);
        }
    };
    const bool isWide = takesTwoLines(srcStride, dstStride);
    const std::byte* from = v.src;
    std::byte* to = v.dst;
    std::ptrdiff_t k = 0;
    // A line of cache, or less.
    constexpr std::ptrdiff_t round = Transform::outputs == 2 && resultPacked && source != Source::any ? 8 : 4;
    for (; k + round <= v.count; k += round, from += round * srcStride, to += round * dstStride) {
        fetchAhead(from, to);
        if (source == Source::any && isWide) fetchAhead(from + 2 * srcStride, to + 2 * dstStride);
        for (std::ptrdiff_t i = 0; i < round; i += 2) transformTwo(from + i * srcStride, to + i * dstStride);
    }
    for (; k + 2 <= v.count; k += 2, from += 2 * srcStride, to += 2 * dstStride) transformTwo(from, to);
    return k;
}

// Results of three elements, four vectors a round.
template <bool packed, class Four>
inline std::ptrdiff_t fourByFour(const Four& four, const Vectors& v) {
    const std::ptrdiff_t srcStride = packed ? 12 : v.srcStride, dstStride = packed ? 12 : v.dstStride;
    const bool isWide = takesTwoLines(srcStride, dstStride);
    const std::byte* from = v.src;
    std::byte* to = v.dst;
    std::ptrdiff_t k = 0;
    for (; k + 4 <= v.count; k += 4, from += 4 * srcStride, to += 4 * dstStride) {
        fetchAhead(from, to);
        if (!packed && isWide) fetchAhead(from + 2 * srcStride, to + 2 * dstStride);
        storeFour<packed>(to, dstStride, four(loadFour<packed>(from, srcStride)));
    }
    return k;
}

inline bool isAligned(const std::byte* address) { return reinterpret_cast<std::uintptr_t>(address) % 16 == 0; }

// Returns how many are done.
template <class Transform, class Two>
inline std::ptrdiff_t severalByTwo(const Two& two, const Vectors& v) {
    constexpr std::ptrdiff_t packedSource = Transform::inputs * sizeof(float);
    constexpr std::ptrdiff_t packedResult = Transform::outputs * sizeof(float);
    if (v.dstStride != packedResult) return twoByTwo<Transform, Source::any, false>(two, v);
    if (v.srcStride != packedSource) return twoByTwo<Transform, Source::any, true>(two, v);
    if constexpr (Transform::inputs == 2)
        if (isAligned(v.src)) return twoByTwo<Transform, Source::aligned, true>(two, v);
    return twoByTwo<Transform, Source::packed, true>(two, v);
}

template <class Transform, class... Arguments>
inline std::ptrdiff_t severalByFour(const Vectors& v, const Arguments&... arguments) {
    constexpr std::ptrdiff_t packed = 3 * sizeof(float);
    const bool allPacked = v.srcStride == packed && v.dstStride == packed;
    if constexpr (requires { typename Transform::Packed; }) {
        if (allPacked) {
            const typename Transform::Packed four(arguments...);
            const std::byte* from = v.src;
            std::byte* to = v.dst;
            std::ptrdiff_t k = 0;
            for (; k + 8 <= v.count; k += 8, from += 8 * packed, to += 8 * packed) {
                fetchAhead(from, to);
                four(from, to);
                four(from + 4 * packed, to + 4 * packed);
            }
            if (k + 4 <= v.count) {
                four(from, to);
                k += 4;
            }
            return k;
        }
    }
    const typename Transform::Four four(arguments...);
    return allPacked ? fourByFour<true>(four, v) : fourByFour<false>(four, v);
}

template <class Transform, class... Arguments>
inline void batch(const Unaligned* src, std::int32_t srcStride, Unaligned* dst, std::int32_t dstStride,
                  std::int32_t count, const Arguments&... arguments) {
    const Vectors v{bytes(src), srcStride, bytes(dst), dstStride, count};
    const typename Transform::One one(arguments...);  // now: results may be written over the matrix
    std::ptrdiff_t done = 0;
    if (mayReadAhead<Transform>(v)) {
        if constexpr (Transform::outputs == 3) done = severalByFour<Transform>(v, arguments...);
        else done = severalByTwo<Transform>(typename Transform::Two(arguments...), v);
    }
    oneByOne<Transform>(one, v, done);
}

}  // namespace korm
