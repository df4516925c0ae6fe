#include "move/transpose.h"

#include <type_traits>

#include "entry/checks.h"
#include "korcore.h"
#include "move/cores.h"
#include "move/objects.h"
#include "move/strips.h"

namespace korm::inline KORM_VARIANT::move {
namespace {

// Keeps the compiler from exchanging stores: those to one line of cache leave the processor two at a time only one behind the
// other.
[[gnu::always_inline]] inline void inThisOrder() { asm volatile("" ::: "memory"); }

// A square, as whole blocks and what is left of them at the right and at the bottom. All of it is loaded before anything is
// stored: a load behind a store waits for it where the low bits of their addresses are the same.
template <class Word, int order>
[[gnu::always_inline]] inline void turnSquare(std::byte* to, std::ptrdiff_t toStride, const std::byte* from,
                                              std::ptrdiff_t fromStride) {
    constexpr int edge = blockEdge<Word>, pieces = (order + edge - 1) / edge;
    constexpr auto bytesOf = [](int piece) {
        return piece + 1 < pieces ? 16 : (order - piece * edge) * static_cast<int>(sizeof(Word));
    };
    Bits rows[pieces * edge][pieces] = {};
    unrolled<order>([&](auto i) __attribute__((always_inline)) {
        unrolled<pieces>([&](auto y) __attribute__((always_inline)) {
            rows[i][y] = loadFirst<bytesOf(y)>(from + i * fromStride + y * 16);
        });
    });
    unrolled<pieces>([&](auto y) __attribute__((always_inline)) {
        Bits blocks[pieces][edge];
        unrolled<pieces>([&](auto x) __attribute__((always_inline)) {
            unrolled<edge>([&](auto i) __attribute__((always_inline)) { blocks[x][i] = rows[x * edge + i][y]; });
            transpose(blocks[x]);
        });
        unrolled<std::min(order - y * edge, edge)>([&](auto j) __attribute__((always_inline)) {
            unrolled<pieces>([&](auto x) __attribute__((always_inline)) {
                storeFirst<bytesOf(x)>(to + (y * edge + j) * toStride + x * 16, blocks[x][j]);
                if constexpr (sizeof(Word) == 8) inThisOrder();
            });
        });
    });
}

// Of a packed square of order 3 all but the last element stays in whole vectors.
[[gnu::always_inline]] inline void turnPacked3(std::byte* to, const std::byte* from, std::uint32_t last) {
    using Vector = Vec<std::uint32_t, 4>;
    const auto a = load<Vector>(from), b = load<Vector>(from + 16);
    store(to, __builtin_shufflevector(a, __builtin_shufflevector(b, a, 2, 2, 5, 5), 0, 3, 4, 6));
    inThisOrder();
    store(to + 16, __builtin_shufflevector(b, __builtin_shufflevector(a, b, 2, 2, 5, 5), 0, 3, 4, 6));
    inThisOrder();
    store(to + 32, last);
}

// Packed squares of order 3, two at a time: a loop of one is as long as a line of code, and takes twice as long where it
// doesn't begin with one.
[[gnu::noinline]] std::ptrdiff_t turnPackedPairs3(std::byte* to, const std::byte* from, std::ptrdiff_t count) {
    constexpr std::ptrdiff_t square = 36;
    for (std::ptrdiff_t k = 0; k + 2 <= count; k += 2, to += 2 * square, from += 2 * square)
        unrolled<2>([&](auto o) __attribute__((always_inline)) {
            turnPacked3(to + o * square, from + o * square, load<std::uint32_t>(from + o * square + 32));
        });
    return count & -2;
}

// Packed squares of an odd order, one behind the other, as whole vectors; of one the last element stays where it is. The two of
// order 3 are nine vectors.
template <int order>
[[gnu::noinline]] std::ptrdiff_t turnPackedDoubles(std::byte* to, const std::byte* from, std::ptrdiff_t count) {
    using Vector = Vec<std::uint64_t, 2>;
    constexpr int square = order * order, squares = order == 3 ? 2 : 1, vectors = square * squares / 2;
    constexpr auto source = [](int e) { return e - e % square + e % square % order * order + e % square / order; };
    constexpr std::ptrdiff_t bytes = 8 * square * squares;
    std::ptrdiff_t k = 0;
    for (; k + squares <= count; k += squares, to += bytes, from += bytes) {
        Vector v[vectors];
        unrolled<vectors>([&](auto i) __attribute__((always_inline)) { v[i] = load<Vector>(from + 16 * i); });
        const auto last = load<std::uint64_t>(from + bytes - 8);
        unrolled<vectors>([&](auto i) __attribute__((always_inline)) {
            constexpr int a = source(2 * i), b = source(2 * i + 1);
            store(to + 16 * i, __builtin_shufflevector(v[a / 2], v[b / 2], a % 2, 2 + b % 2));
            inThisOrder();
        });
        if constexpr (squares == 1) store(to + bytes - 8, last);
    }
    return k;
}

// An array without lists.
template <class Word, int order>
[[gnu::noinline]] void turnArray(const std::byte* from, std::byte* to, const Steps& fromSteps, const Steps& toSteps,
                                 std::ptrdiff_t count) {
    constexpr std::ptrdiff_t row = order * sizeOf<Word>, square = order * row;
    const Steps source = fromSteps, result = toSteps;
    const auto eachBy = [&](const auto& turn) __attribute__((always_inline)) {
        for (; count > 0; --count, from += source.object, to += result.object) turn();
    };
    if (source.row != row || result.row != row)
        return eachBy([&]() __attribute__((always_inline)) {
            turnSquare<Word, order>(to, result.row, from, source.row);
        });
    if constexpr (order == 3 || (sizeof(Word) == 8 && order % 2 != 0))
        if (source.object == square && result.object == square) {
            std::ptrdiff_t done;
            if constexpr (sizeof(Word) == 4) done = turnPackedPairs3(to, from, count);
            else done = turnPackedDoubles<order>(to, from, count);
            count -= done;
            from += done * square;
            to += done * square;
        }
    eachBy([&]() __attribute__((always_inline)) {
        if constexpr (order == 3 && sizeof(Word) == 4) turnPacked3(to, from, load<Word>(from + 8 * sizeOf<Word>));
        else turnSquare<Word, order>(to, row, from, row);
    });
}

// Squares of which source, result or both are lists.
template <class Word, int order>
[[gnu::noinline]] void turnListed(const Side& from, const Side& to, std::ptrdiff_t count) {
    forObjects(
        from, to, count, [&](std::byte * result, const std::byte* source) __attribute__((always_inline)) {
            turnSquare<Word, order>(result, to.rowStride, source, from.rowStride);
        });
}

// Matrices so small that the functions that large ones go through would take longer than the matrices do: word by word with
// the inner loop along the shorter side, in groups of rows, or in blocks, whichever was measured to be the quickest.
template <class Word>
void turnSmall(const Side& from, const Side& to, MatrixShape shape, std::ptrdiff_t count) {
    const auto [shorter, longer] = std::minmax(shape.width, shape.height);
    constexpr bool isWide = sizeof(Word) == 8;
    constexpr int edge = blockEdge<Word>;
    // Two rows, or three whose columns touch in the result, or four rows or columns of floats: by as many columns, or rows, as
    // a vector has elements. The last may repeat some of those before.
    const std::ptrdiff_t fromStride = from.rowStride, toStride = to.rowStride;
    const auto along = [&](std::ptrdiff_t length, std::ptrdiff_t resultStep, std::ptrdiff_t sourceStep,
                           const auto& turn) {
        forObjects(from, to, count, [=](std::byte* result, const std::byte* source) {
#pragma GCC unroll 2
            for (std::ptrdiff_t k = 0; k < length; k += edge) {
                const std::ptrdiff_t first = std::min<std::ptrdiff_t>(k, length - edge);
                turn(result + first * resultStep, source + first * sourceStep);
            }
        });
    };
    const auto block = [&](auto rows) {
        return [=](std::byte* result, const std::byte* source) {
            turnBlock<Word, decltype(rows)::value, edge>([=](int i) { return source + i * fromStride; },
                                                         [=](int j) { return result + j * toStride; });
        };
    };
    if (shape.width >= 4) {
        if (shape.height == 2) return along(shape.width, toStride, sizeOf<Word>, block(Int<2>{}));
        if (shape.height == 3 && toStride == 3 * sizeOf<Word>)
            return along(shape.width, toStride, sizeOf<Word>, [=](std::byte* result, const std::byte* source) {
                using Vector = std::conditional_t<isWide, Double2, Float4>;
                Vector rows[3];
                for (int i = 0; i < 3; ++i) rows[i] = load<Vector>(source + i * fromStride);
                joinThrees(rows);
                for (int v = 0; v < 3; ++v) store(result + 16 * v, rows[v]);
            });
        if constexpr (!isWide) {
            if (shape.height == 4) return along(shape.width, toStride, sizeOf<Word>, block(Int<4>{}));
            if (shape.width == 4 && shape.height > 4)
                return along(shape.height, sizeOf<Word>, fromStride, block(Int<4>{}));
        }
    }
    if (longer >= 8 && (shorter == 3 || (isWide && shorter == 4)))
        return forObjects(from, to, count, [&](std::byte* result, const std::byte* source) {
            turnTile<Word>(SteppedRows{const_cast<std::byte*>(source), from.rowStride}, shape.height,
                           SteppedRows{result, to.rowStride}, shape.width);
        });
    if (shorter >= (isWide ? 7 : 4))
        return forObjects(from, to, count, [&](std::byte* result, const std::byte* source) {
            turnBlocks<Word, 4>(source, from.rowStride, result, to.rowStride, shape.width, shape.height);
        });
    if (shape.height <= shape.width)
        return moveGrids<Word>(transposed(from), to, {shape.width, shape.height, count}, Order::any);
    moveGrids<Word>(from, transposed(to), {shape.height, shape.width, count}, Order::any);
}

template <class Word>
void turnAny(const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride,
             MatrixShape shape, bool beyondCache) {
    if constexpr (sizeof(Word) == 4)
        cores::turnMatrix(from, static_cast<std::int32_t>(fromStride), to, static_cast<std::int32_t>(toStride),
                          shape.width, shape.height, beyondCache);
    else turnStrips<Word>(from, fromStride, to, toStride, shape.width, shape.height, turnStrip<Word>);
}

}  // namespace

template <class Word>
void transposeOne(const std::byte* from, std::ptrdiff_t fromStride, std::byte* to, std::ptrdiff_t toStride,
                  MatrixShape shape) {
    if (isSized(shape.width, shape.height))
        return forOrder(
            shape.width, [&](auto order) { turnSquare<Word, order>(to, toStride, from, fromStride); }, [] {});
    turnAny<Word>(from, fromStride, to, toStride, shape, false);
}

template <class Word>
void transposeSquares(const std::byte* from, std::byte* to, const Steps& fromSteps, const Steps& toSteps,
                      std::int32_t size, std::ptrdiff_t count) {
    forOrder(
        size, [&](auto order) { turnArray<Word, order>(from, to, fromSteps, toSteps, count); }, [] {});
}

template <class Word>
void transposeAdjacent(const Side& from, const Side& to, MatrixShape shape, std::ptrdiff_t count, bool beyondCache) {
    if (isSized(shape.width, shape.height)) {
        if (!from.isList() && !to.isList())
            return transposeSquares<Word>(from.base, to.base, {from.objectStride, from.rowStride},
                                          {to.objectStride, to.rowStride}, shape.width, count);
        return forOrder(
            shape.width, [&](auto order) { turnListed<Word, order>(from, to, count); }, [] {});
    }
    if (std::max(shape.width, shape.height) <= 16) return turnSmall<Word>(from, to, shape, count);
    forObjects(from, to, count, [&](std::byte* result, const std::byte* source) {
        turnAny<Word>(source, from.rowStride, result, to.rowStride, shape, beyondCache);
    });
}

template void transposeOne<std::uint32_t>(const std::byte*, std::ptrdiff_t, std::byte*, std::ptrdiff_t, MatrixShape);
template void transposeOne<std::uint64_t>(const std::byte*, std::ptrdiff_t, std::byte*, std::ptrdiff_t, MatrixShape);
template void transposeSquares<std::uint32_t>(const std::byte*, std::byte*, const Steps&, const Steps&, std::int32_t,
                                              std::ptrdiff_t);
template void transposeSquares<std::uint64_t>(const std::byte*, std::byte*, const Steps&, const Steps&, std::int32_t,
                                              std::ptrdiff_t);
template void transposeAdjacent<std::uint32_t>(const Side&, const Side&, MatrixShape, std::ptrdiff_t, bool);
template void transposeAdjacent<std::uint64_t>(const Side&, const Side&, MatrixShape, std::ptrdiff_t, bool);

bool isBeyondCache(MatrixShape shape, std::int32_t count) {
    constexpr std::int32_t surelyWithin = 131072;
    const Estimate traffic = Estimate(shape.width) * 8 * Estimate(shape.height) * Estimate(count);
    if (traffic <= surelyWithin) return false;
    std::int32_t cache = 0;
    korGetMaxCacheSizeB(&cache);
    return cache != 0 && Estimate(cache - cache / 4) < traffic;
}

}  // namespace korm::inline KORM_VARIANT::move
