#include "move/transpose.h"

#include "entry/checks.h"
#include "korcore.h"
#include "move/cores.h"
#include "move/objects.h"
#include "move/strips.h"

namespace korm::inline KORM_VARIANT::move {
namespace {

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
    unrolled<pieces>([&](auto x) __attribute__((always_inline)) {
        unrolled<pieces>([&](auto y) __attribute__((always_inline)) {
            Bits block[edge];
            unrolled<edge>([&](auto i) __attribute__((always_inline)) { block[i] = rows[x * edge + i][y]; });
            transpose(block);
            unrolled<std::min(order - y * edge, edge)>([&](auto j) __attribute__((always_inline)) {
                storeFirst<bytesOf(x)>(to + (y * edge + j) * toStride + x * 16, block[j]);
            });
        });
    });
}

// Of a packed square of order 3 all but the last element stays in whole vectors.
[[gnu::always_inline]] inline void turnPacked3(std::byte* to, const std::byte* from, std::uint32_t last) {
    using Vector = Vec<std::uint32_t, 4>;
    const auto a = load<Vector>(from), b = load<Vector>(from + 16);
    store(to, __builtin_shufflevector(a, __builtin_shufflevector(b, a, 2, 2, 5, 5), 0, 3, 4, 6));
    store(to + 16, __builtin_shufflevector(b, __builtin_shufflevector(a, b, 2, 2, 5, 5), 0, 3, 4, 6));
    store(to + 32, last);
}

[[gnu::always_inline]] inline void turnPacked3(std::byte* to, const std::byte* from, std::uint64_t last) {
    using Vector = Vec<std::uint64_t, 2>;
    const auto a = load<Vector>(from), b = load<Vector>(from + 16), c = load<Vector>(from + 32),
               d = load<Vector>(from + 48);
    store(to, __builtin_shufflevector(a, b, 0, 3));
    store(to + 16, __builtin_shufflevector(d, a, 0, 3));
    store(to + 32, __builtin_shufflevector(c, d, 0, 3));
    store(to + 48, __builtin_shufflevector(b, c, 0, 3));
    store(to + 64, last);
}

template <class Word, int order>
void turnSquares(const Side& from, const Side& to, std::ptrdiff_t count) {
    constexpr std::ptrdiff_t row = order * sizeOf<Word>;
    if (from.rowStride == row && to.rowStride == row) {
        return forObjects(
            from, to, count, [](std::byte * result, const std::byte* source) __attribute__((always_inline)) {
                if constexpr (order == 3) turnPacked3(result, source, load<Word>(source + 8 * sizeOf<Word>));
                else turnSquare<Word, order>(result, row, source, row);
            });
    }
    forObjects(
        from, to, count, [&](std::byte * result, const std::byte* source) __attribute__((always_inline)) {
            turnSquare<Word, order>(result, to.rowStride, source, from.rowStride);
        });
}

}  // namespace

template <class Word>
void transposeAdjacent(const Side& from, const Side& to, MatrixShape shape, std::ptrdiff_t count, bool beyondCache) {
    if (isSized(shape.width, shape.height)) {
        return forOrder(
            shape.width, [&](auto order) { turnSquares<Word, order>(from, to, count); }, [] {});
    }
    forObjects(from, to, count, [&](std::byte* result, const std::byte* source) {
        if constexpr (sizeof(Word) == 4)
            cores::turnMatrix(source, static_cast<std::int32_t>(from.rowStride), result,
                              static_cast<std::int32_t>(to.rowStride), shape.width, shape.height, beyondCache);
        else turnStrips<Word>(source, from.rowStride, result, to.rowStride, shape.width, shape.height, turnStrip<Word>);
    });
}

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
