// Transposed operands of plain layout: blocks of pieces are transposed in registers.
//
// A block is p logical rows of q columns. It comes from q stored rows, each a piece of p elements, and
// leaves as p pieces of q elements.
#pragma once

#include "arith/operands.h"
#include "arith/pieces.h"

namespace korm::inline KORM_VARIANT::arith {

template <class T, int p, int q>
struct Block {
    typename Piece<T, q>::Value row[p];
};

// Rows that lie in memory, where single elements are loaded as easily as vectors.
template <class Source>
// clang-format off
inline constexpr bool inMemory = requires { &Source::rowStride; };
// clang-format on

// Logical rows i ..., columns j ... of the source read as its transpose.
template <class T, int p, int q, int i, int j, class Stored>
[[gnu::always_inline]] inline Block<T, p, q> transposedBlock(const Stored& stored) {
    Block<T, p, q> block;
    if constexpr (q == 1) {
        // Single elements: a load for each is cheaper than extracting from a vector.
        unrolled<p>([&](auto r) __attribute__((always_inline)) { block.row[r] = stored.template get<j, i + r, 1>(); });
    } else if constexpr (p == 1) {
        if constexpr (!isFloat<T>)
            block.row[0] = Double2{stored.template get<j, i, 1>(), stored.template get<j + 1, i, 1>()};
        else if constexpr (q == 2) {
            const float x = stored.template get<j, i, 1>();
            const float y = stored.template get<j + 1, i, 1>();
            block.row[0] = Float4{x, y, x, y};
        } else
            block.row[0] = Float4{stored.template get<j, i, 1>(), stored.template get<j + 1, i, 1>(),
                                  stored.template get<j + 2, i, 1>(), stored.template get<j + 3, i, 1>()};
    } else if constexpr (!isFloat<T> && inMemory<Stored>) {
        // Doubles straight from memory: two half loads a vector, and no shuffle.
        unrolled<p>([&](auto r) __attribute__((always_inline)) {
            block.row[r] = Double2{stored.template get<j, i + r, 1>(), stored.template get<j + 1, i + r, 1>()};
        });
    } else if constexpr (p == lanes<T> && q == lanes<T>) {
        unrolled<q>([&](auto c) __attribute__((always_inline)) { block.row[c] = stored.template get<j + c, i, p>(); });
        transpose(block.row);
    } else if constexpr (q == 2) {
        const Float4 x = stored.template get<j, i, p>();
        const Float4 y = stored.template get<j + 1, i, p>();
        const Float4 low = interleaveLow(x, y);
        block.row[0] = lowPairTwice(low);
        block.row[1] = highPairTwice(low);
        if constexpr (p == 4) {
            const Float4 high = interleaveHigh(x, y);
            block.row[2] = lowPairTwice(high);
            block.row[3] = highPairTwice(high);
        }
    } else {
        static_assert(p == 2 && q == 4);
        const Float4 left = interleaveLow(stored.template get<j, i, p>(), stored.template get<j + 1, i, p>());
        const Float4 right = interleaveLow(stored.template get<j + 2, i, p>(), stored.template get<j + 3, i, p>());
        block.row[0] = __builtin_shufflevector(left, right, 0, 1, 4, 5);
        block.row[1] = __builtin_shufflevector(left, right, 2, 3, 6, 7);
    }
    return block;
}

// Calls f(i, j, p, q) for the blocks of a transpose of `width` columns and `height` rows.
template <class T, int width, int height, class F>
[[gnu::always_inline]] inline void forBlocks(const F& f) {
    forPieces<T, height>([&](auto i, auto p) __attribute__((always_inline)) {
        forPieces<T, width>([&](auto j, auto q) __attribute__((always_inline)) { f(i, j, p, q); });
    });
}

// A 3 by 3 matrix whose rows touch, as one run of 9: four shuffles for 8 of its elements, where blocks of
// 2 by 2 would need seven and twice the loads and stores.
[[gnu::always_inline]] inline Held<float, 9, 1> transposedThree(const Held<float, 9, 1>& m) {
    const Float4 low = m.whole[0][0];
    const Float4 high = m.whole[0][1];
    const Float4 sixOne = __builtin_shufflevector(high, low, 2, 2, 5, 5);
    const Float4 twoFive = __builtin_shufflevector(low, high, 2, 2, 5, 5);
    Held<float, 9, 1> result;
    result.whole[0][0] = __builtin_shufflevector(low, sixOne, 0, 3, 4, 6);
    result.whole[0][1] = __builtin_shufflevector(high, twoFive, 0, 3, 4, 6);
    result.one[0] = m.one[0];
    return result;
}

// Of doubles one matrix, or two of them one behind the other: a shuffle for each vector.
template <int elements>
[[gnu::always_inline]] inline Held<double, elements, 1> transposedThree(const Held<double, elements, 1>& m) {
    constexpr auto from = [](int e) { return e / 9 * 9 + e % 3 * 3 + e % 9 / 3; };
    Held<double, elements, 1> result;
    unrolled<elements / 2>([&](auto v) __attribute__((always_inline)) {
        constexpr int x = from(2 * v), y = from(2 * v + 1);
        result.whole[0][v] = __builtin_shufflevector(m.whole[0][x / 2], m.whole[0][y / 2], x % 2, 2 + y % 2);
    });
    if constexpr (elements % 2 == 1) result.one[0] = m.one[0];
    return result;
}

// Does a constant go before the transposition (one operation on what was loaded whole) or after it?
template <class T>
inline constexpr bool constantFirst = isFloat<T>;

// What becomes of the piece of n elements at (i, j) of a transposed block before it is stored: nothing, or it is combined with
// the same piece of the other source.
constexpr auto asIs = [](auto piece, auto, auto, auto) __attribute__((always_inline)) { return piece; };

template <class Op, class B>
[[gnu::always_inline]] inline auto withSecond(const B& b) {
    return [&](auto piece, auto i, auto j, auto n) __attribute__((always_inline)) {
        return Op::apply(piece, b.template get<i, j, n>());
    };
}

template <class Op, class A>
[[gnu::always_inline]] inline auto withFirst(const A& a) {
    return [&](auto piece, auto i, auto j, auto n) __attribute__((always_inline)) {
        return Op::apply(a.template get<i, j, n>(), piece);
    };
}

template <class T, int p, int q, int i, int j, class Stored, class Last>
[[gnu::always_inline]] inline void storeBlock(const Stored& stored, const Last& last, std::byte* to,
                                              std::ptrdiff_t rowStride) {
    const auto block = transposedBlock<T, p, q, i, j>(stored);
    unrolled<p>([&](auto r) __attribute__((always_inline)) {
        Piece<T, q>::store(to + (i + r) * rowStride + j * static_cast<std::ptrdiff_t>(sizeof(T)),
                           last(block.row[r], Int<i + r>{}, Int<j>{}, Int<q>{}));
    });
}

template <class T, int width, int height, class Stored, class Last>
[[gnu::always_inline]] inline void storeTransposed(const Stored& stored, const Last& last, std::byte* to,
                                                   std::ptrdiff_t rowStride) {
    forBlocks<T, width, height>([&](auto i, auto j, auto p, auto q) __attribute__((always_inline)) {
        storeBlock<T, p, q, i, j>(stored, last, to, rowStride);
    });
}

// --- Objects of any shape ----------------------------------------------------------------------

// The block at (i, j) of the object at hand, as it is stored.
template <class T, class View>
[[gnu::always_inline]] inline auto blockSource(const View& view, std::ptrdiff_t i, std::ptrdiff_t j) {
    constexpr std::ptrdiff_t size = sizeof(T);
    if constexpr (std::is_same_v<View, Same<T>>) return view;
    else if constexpr (isTransposed<View>)
        return Rows<T>{view.origin + i * size + j * view.elementStride, view.elementStride};
    else return Rows<T>{view.origin + i * view.rowStride + j * size, view.rowStride};
}

// Transposed sources are combined before they are transposed, where both are (or the other is a constant).
template <class Op, class T, int p, int q, class A, class B, class X, class Y>
[[gnu::always_inline]] inline void storeBlockAt(const X& a, const Y& b, std::byte* to, std::ptrdiff_t rowStride,
                                                std::ptrdiff_t i, std::ptrdiff_t j) {
    const auto x = blockSource<T>(a, i, j);
    const auto y = blockSource<T>(b, i, j);
    constexpr bool lastB = isAdjacent<B> || (isConstant<B> && !constantFirst<T>);
    if constexpr (isAdjacent<A>) storeBlock<T, p, q, 0, 0>(y, withFirst<Op>(x), to, rowStride);
    else if constexpr (lastB) storeBlock<T, p, q, 0, 0>(x, withSecond<Op>(y), to, rowStride);
    else storeBlock<T, p, q, 0, 0>(combined<Op, T>(x, y), asIs, to, rowStride);
}

// Calls f(i, j, p, q) for the blocks of an object; p and q are types.
template <class T, class F>
[[gnu::always_inline]] inline void eachBlock(std::ptrdiff_t width, std::ptrdiff_t height, const F& f) {
    const auto pieces = [](std::ptrdiff_t length, const auto& piece) __attribute__((always_inline)) {
        std::ptrdiff_t at = 0;
        for (; at + lanes<T> <= length; at += lanes<T>) piece(at, Int<lanes<T>>{});
        if constexpr (isFloat<T>)
            if (length & 2) {
                piece(at, Int<2>{});
                at += 2;
            }
        if (length & 1) piece(at, Int<1>{});
    };
    pieces(
        height, [&](std::ptrdiff_t i, auto p) __attribute__((always_inline)) {
            pieces(
                width, [&](std::ptrdiff_t j, auto q) __attribute__((always_inline)) { f(i, j, p, q); });
        });
}

// The transpose itself, packed, of a shared operand that many objects meet.
template <class T, class View>
[[gnu::noinline]] void copyTransposed(const View& from, std::byte* to, std::ptrdiff_t width, std::ptrdiff_t height) {
    constexpr std::ptrdiff_t size = sizeof(T);
    const auto known = [&](auto order) __attribute__((always_inline)) {
        storeTransposed<T, order, order>(Rows<T>{from.origin, from.elementStride}, asIs, to, order * size);
    };
    const auto any = [&]() __attribute__((always_inline)) {
        eachBlock<T>(
            width, height, [&](std::ptrdiff_t i, std::ptrdiff_t j, auto p, auto q) __attribute__((always_inline)) {
                storeBlock<T, p, q, 0, 0>(blockSource<T>(from, i, j), asIs, to + (i * width + j) * size, width * size);
            });
    };
    forOrder(width == height ? static_cast<int>(width) : 0, known, any);
}

// All operands are arrays: blocks are so much work that one that is shared by all objects may be loaded anew.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void transposedObjects(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                         std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    eachOfArrays(
        a, b, dst, count, [&](const A& objectA, const B& objectB, const D& z) __attribute__((always_inline)) {
            const auto& x = atHand<T>(objectA);
            const auto& y = atHand<T>(objectB);
            eachBlock<T>(
                width, height, [&](std::ptrdiff_t i, std::ptrdiff_t j, auto p, auto q) __attribute__((always_inline)) {
                    std::byte* const to = z.origin + i * z.rowStride + j * static_cast<std::ptrdiff_t>(sizeof(T));
                    storeBlockAt<Op, T, p, q, A, B>(x, y, to, z.rowStride, i, j);
                });
        });
}

}  // namespace korm::inline KORM_VARIANT::arith
