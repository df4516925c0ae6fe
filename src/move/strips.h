// Transposition of one large matrix whose elements touch within rows, by strips of its rows.
#pragma once

#include "move/cores.h"
#include "move/rows.h"
#include "move/turn.h"

namespace korm::inline KORM_VARIANT::move {

// A tile has rows of one line of cache in the source, and of two in the result. It is turned into a buffer, so that each of
// its lines is touched once: where rows are a power of two apart, few of their lines find room in the first-level cache.
template <class Word>
struct Tile {
    static constexpr int columns = 64 / sizeof(Word), rows = 128 / sizeof(Word), edge = blockEdge<Word>;

    static void turn(const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride) {
        alignas(64) std::byte buffer[columns][rows * sizeof(Word)];
        for (int i = 0; i < rows; i += edge) {
            const std::byte* const row = from + i * fromStride;
            for (int j = 0; j < columns; j += edge)
                turnBlock<Word, edge, edge>(
                    [&](int r) __attribute__((always_inline)) { return row + r * fromStride + j * sizeOf<Word>; },
                    [&](int c) __attribute__((always_inline)) { return &buffer[j + c][i * sizeOf<Word>]; });
        }
        for (int j = 0; j < columns; ++j)
            unrolled<8>([&](auto v) __attribute__((always_inline)) {
                storeBits(to + j * toStride + v * 16, loadBits(&buffer[j][v * 16]));
            });
    }
};

// Do rows so far apart lie in the same few sets of lines of the first-level cache, which has 4096 bytes for each of its ways?
// Floats do with one element more or less, too: 1023 by 1023 of them take a third of the time through the buffer.
inline bool sharesSets(std::ptrdiff_t stride) {
    constexpr std::ptrdiff_t way = 4096, nearly = 4;
    return (stride + nearly) % (way / 2) <= 2 * nearly;
}

// Blocks of so many rows and columns of the source, of which there is one at least. What is left of a direction is done by a
// last block that repeats some of the one before, or word by word where that is less work.
template <class Word, int blockRows, int blockColumns = blockRows>
void turnBlocks(const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride,
                std::ptrdiff_t width, std::ptrdiff_t height) {
    constexpr int part = blockEdge<Word>;
    constexpr auto inBlocks = [](std::ptrdiff_t words, int edge) {
        const std::ptrdiff_t left = words % edge;
        return left <= (sizeof(Word) == 8 ? 2 : 1) ? words - left : words;
    };
    const std::ptrdiff_t columns = inBlocks(width, blockColumns), rows = inBlocks(height, blockRows);
    for (std::ptrdiff_t x = 0; x < rows; x += blockRows) {
        const std::ptrdiff_t i = std::min<std::ptrdiff_t>(x, height - blockRows);
        for (std::ptrdiff_t y = 0; y < columns; y += blockColumns) {
            const std::ptrdiff_t j = std::min<std::ptrdiff_t>(y, width - blockColumns);
            const std::byte* const source = from + i * fromStride + j * sizeOf<Word>;
            std::byte* const result = to + j * toStride + i * sizeOf<Word>;
            for (int column = 0; column < blockColumns; column += part)
                unrolled<blockRows / part>([&](auto n) __attribute__((always_inline)) {
                    constexpr int row = n * part;
                    turnBlock<Word, part, part>(
                        [&](int r) __attribute__((always_inline)) {
                            return source + (row + r) * fromStride + column * sizeOf<Word>;
                        },
                        [&](int c) __attribute__((always_inline)) {
                            return result + (column + c) * toStride + row * sizeOf<Word>;
                        });
                });
        }
    }
    for (std::ptrdiff_t j = columns; j < width; ++j)
        moveElements<Word>(to + j * toStride, sizeOf<Word>, from + j * sizeOf<Word>, fromStride, height);
    for (std::ptrdiff_t i = rows; i < height; ++i)
        moveElements<Word>(to + i * sizeOf<Word>, toStride, from + i * fromStride, sizeOf<Word>, columns);
}

// Tiles of a strip go through a buffer only where rows share sets: otherwise blocks are as quick where they lie.
template <class Word>
void turnStrip(const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride,
               std::ptrdiff_t width, std::ptrdiff_t height) {
    if (width == 0 || height == 0) return;
    const auto part = [&](std::ptrdiff_t i, std::ptrdiff_t j, std::ptrdiff_t columns, std::ptrdiff_t rows) {
        turnStrip<Word>(from + i * fromStride + j * sizeOf<Word>, fromStride, to + j * toStride + i * sizeOf<Word>,
                        toStride, columns, rows);
    };
    if (height == Tile<Word>::rows && width >= Tile<Word>::columns &&
        (sharesSets(fromStride) || sharesSets(toStride))) {
        std::ptrdiff_t j = 0;
        for (; j + Tile<Word>::columns <= width; j += Tile<Word>::columns)
            Tile<Word>::turn(from + j * sizeOf<Word>, fromStride, to + j * toStride, toStride);
        return part(0, j, width - j, height);
    }
    const std::ptrdiff_t shorter = std::min(width, height);
    // Of eight rows by eight columns of doubles there would be no registers for where their rows begin.
    constexpr int rows = 8, columns = 2 * blockEdge<Word>;
    if (shorter >= 16) {
        const std::ptrdiff_t i = height - height % rows, j = width - width % columns;
        turnBlocks<Word, rows, columns>(from, fromStride, to, toStride, j, i);
        part(0, j, width - j, height);
        return part(i, 0, j, height - i);
    }
    if (shorter >= 4) return turnBlocks<Word, 4>(from, fromStride, to, toStride, width, height);
    if (shorter >= blockEdge<Word>)
        return turnBlocks<Word, blockEdge<Word>>(from, fromStride, to, toStride, width, height);
    // A few elements are moved before a tile has begun.
    if (width * height > 32)
        return turnTile<Word>(SteppedRows{const_cast<std::byte*>(from), fromStride}, height, SteppedRows{to, toStride},
                              width);
    for (std::ptrdiff_t j = 0; j < width; ++j)
        moveElements<Word>(to + j * toStride, sizeOf<Word>, from + j * sizeOf<Word>, fromStride, height);
}

// Columns of a source that are done from top to bottom before the next: their rows in the result are each in a page of its
// own where they are long, and so many pages the processor knows at a time. Strips of doubles that share no sets are read from
// end to end all the same: a line of the result is written as a whole, so that its page is needed once.
constexpr std::ptrdiff_t panelColumns = 64;

// Strip by strip, `strip` being what does one.
template <class Word, class Strip>
void turnStrips(const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride,
                std::ptrdiff_t width, std::ptrdiff_t height, const Strip& strip) {
    const std::ptrdiff_t rows = Tile<Word>::rows;
    const std::ptrdiff_t columns =
        sizeof(Word) == 4 || sharesSets(fromStride) || sharesSets(toStride) ? panelColumns : width;
    if (width <= columns && height <= rows) return strip(from, fromStride, to, toStride, width, height);
    for (std::ptrdiff_t j = 0; j < width; j += columns)
        for (std::ptrdiff_t i = 0; i < height; i += rows)
            strip(from + i * fromStride + j * sizeOf<Word>, fromStride, to + j * toStride + i * sizeOf<Word>, toStride,
                  std::min(width - j, columns), std::min(height - i, rows));
}

// Words of four bytes have strips that profiles show by name. Whether a call is larger than the cache makes no difference:
// its result goes out by ordinary stores, since who transposes is about to read.
inline void turnMatrix(const std::byte* src, std::int32_t srcRowStride, std::byte* dst, std::int32_t dstRowStride,
                       std::int32_t width, std::int32_t height, bool /*beyondCache*/) {
    const auto strip = [](const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride,
                          std::ptrdiff_t columns, std::ptrdiff_t rows) {
        cores::turnStrip(from, static_cast<std::int32_t>(fromStride), to, static_cast<std::int32_t>(toStride),
                         static_cast<std::int32_t>(columns), static_cast<std::int32_t>(rows));
    };
    turnStrips<std::uint32_t>(src, srcRowStride, dst, dstRowStride, width, height, strip);
}

inline void turnStrip(const std::byte* src, std::int32_t srcRowStride, std::byte* dst, std::int32_t dstRowStride,
                      std::int32_t width, std::int32_t height) {
    turnStrip<std::uint32_t>(src, srcRowStride, dst, dstRowStride, width, height);
}

// The same past the caches, two columns at a time, for results that nobody reads soon. This variant has no use for it.
inline void streamStrip(const std::byte* src, std::int32_t srcRowStride, std::byte* dst, std::int32_t dstRowStride,
                        std::int32_t width, std::int32_t height) {
    const auto stream = [&](std::ptrdiff_t i, std::ptrdiff_t j) {
        _mm_stream_si32(reinterpret_cast<int*>(dst + j * dstRowStride + i * 4),
                        load<std::int32_t>(src + i * srcRowStride + j * 4));
    };
    std::ptrdiff_t j = 0;
    for (; j + 2 <= width; j += 2) {
        for (std::ptrdiff_t i = 0; i < height; ++i) {
            stream(i, j);
            stream(i, j + 1);
        }
    }
    for (std::ptrdiff_t i = 0; j < width && i < height; ++i) stream(i, j);
    _mm_sfence();
}

}  // namespace korm::inline KORM_VARIANT::move
