// Vectors of elements as bits, and their way to and from memory: a whole vector, or its first few elements.
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

#include "kernel/unroll.h"
#include "kernel/vec.h"
#include "move/side.h"

namespace korm::inline KORM_VARIANT::move {

// Blocks are turned in vectors of 16 bytes: four words by four, or two by two.
using Bits = __m128i;

template <class Word>
inline constexpr int blockEdge = 16 / static_cast<int>(sizeof(Word));

[[gnu::always_inline]] inline Bits loadBits(const std::byte* from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}
[[gnu::always_inline]] inline void storeBits(std::byte* to, Bits bits) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bits);
}

// The first `bytes` of a vector, 4, 8, 12 or 16; nothing beyond them is touched.
template <int bytes>
[[gnu::always_inline]] inline Bits loadFirst(const std::byte* from) {
    static_assert(bytes == 4 || bytes == 8 || bytes == 12 || bytes == 16);
    if constexpr (bytes == 16) return loadBits(from);
    else if constexpr (bytes == 4) return _mm_cvtsi32_si128(load<std::int32_t>(from));
    else if constexpr (bytes == 8) return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    else return _mm_unpacklo_epi64(loadFirst<8>(from), loadFirst<4>(from + 8));
}

template <int bytes>
[[gnu::always_inline]] inline void storeFirst(std::byte* to, Bits bits) {
    static_assert(bytes == 4 || bytes == 8 || bytes == 12 || bytes == 16);
    if constexpr (bytes == 16) storeBits(to, bits);
    if constexpr (bytes == 4) store(to, _mm_cvtsi128_si32(bits));
    if constexpr (bytes == 8 || bytes == 12) _mm_storel_epi64(reinterpret_cast<__m128i*>(to), bits);
    if constexpr (bytes == 12) storeFirst<4>(to + 8, _mm_unpackhi_epi64(bits, bits));
}

[[gnu::always_inline]] inline void transpose(Bits (&rows)[4]) {
    const Bits low0 = _mm_unpacklo_epi32(rows[0], rows[1]), high0 = _mm_unpackhi_epi32(rows[0], rows[1]);
    const Bits low1 = _mm_unpacklo_epi32(rows[2], rows[3]), high1 = _mm_unpackhi_epi32(rows[2], rows[3]);
    rows[0] = _mm_unpacklo_epi64(low0, low1);
    rows[1] = _mm_unpackhi_epi64(low0, low1);
    rows[2] = _mm_unpacklo_epi64(high0, high1);
    rows[3] = _mm_unpackhi_epi64(high0, high1);
}

[[gnu::always_inline]] inline void transpose(Bits (&rows)[2]) {
    const Bits first = _mm_unpacklo_epi64(rows[0], rows[1]);
    rows[1] = _mm_unpackhi_epi64(rows[0], rows[1]);
    rows[0] = first;
}

// A block in registers: `rows` rows of `columns` words, row i at from(i), become as many columns, row j of the result at
// to(j), in ascending order. Wide loads read whole vectors, wide stores write them: only words of four bytes know them.
template <class Word, int rows, int columns, bool wideLoads = false, bool wideStores = false, class From, class To>
[[gnu::always_inline]] inline void turnBlock(const From& from, const To& to) {
    if constexpr (sizeof(Word) == 8) {
        unrolled<(columns + 1) / 2>([&](auto pair) __attribute__((always_inline)) {
            constexpr int j = 2 * pair, bytes = columns - j == 1 ? 8 : 16;
            if constexpr (rows == 1) {
                static_assert(columns == 1);
                store(to(0), load<Word>(from(0)));
            } else {
                const Bits first = loadFirst<bytes>(from(0) + j * 8), second = loadFirst<bytes>(from(1) + j * 8);
                storeBits(to(j), _mm_unpacklo_epi64(first, second));
                if constexpr (bytes == 16) storeBits(to(j + 1), _mm_unpackhi_epi64(first, second));
            }
        });
    } else {
        Bits block[4];
        unrolled<4>([&](auto i) __attribute__((always_inline)) {
            if constexpr (i < rows) block[i] = loadFirst < wideLoads ? 16 : columns * 4 > (from(i));
            else block[i] = _mm_setzero_si128();
        });
        transpose(block);
        unrolled<columns>([&](auto j) __attribute__((always_inline)) {
            storeFirst<wideStores ? 16 : rows * 4>(to(j), block[j]);
        });
    }
}

}  // namespace korm::inline KORM_VARIANT::move
