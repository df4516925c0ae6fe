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

template <class T, int width, int height, class Stored>
[[gnu::always_inline]] inline Held<T, width, height> holdTransposed(const Stored& stored) {
    Held<T, width, height> held;
    forBlocks<T, width, height>([&](auto i, auto j, auto p, auto q) __attribute__((always_inline)) {
        const auto block = transposedBlock<T, p, q, i, j>(stored);
        unrolled<p>([&](auto r) __attribute__((always_inline)) { held.template set<i + r, j, q>(block.row[r]); });
    });
    return held;
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

// The first of one vector beside the second of another: all that a transposition of order 3 needs of doubles.
inline Double2 firstSecond(Double2 x, Double2 y) { return __builtin_shufflevector(x, y, 0, 3); }

[[gnu::always_inline]] inline Held<double, 9, 1> transposedThree(const Held<double, 9, 1>& m) {
    const auto& v = m.whole[0];
    Held<double, 9, 1> result;
    result.whole[0][0] = firstSecond(v[0], v[1]);
    result.whole[0][1] = firstSecond(v[3], v[0]);
    result.whole[0][2] = firstSecond(v[2], v[3]);
    result.whole[0][3] = firstSecond(v[1], v[2]);
    result.one[0] = m.one[0];
    return result;
}

// Two matrices, one behind the other.
[[gnu::always_inline]] inline Held<double, 18, 1> transposedThree(const Held<double, 18, 1>& m) {
    const auto& v = m.whole[0];
    Held<double, 18, 1> result;
    result.whole[0][0] = firstSecond(v[0], v[1]);
    result.whole[0][1] = firstSecond(v[3], v[0]);
    result.whole[0][2] = firstSecond(v[2], v[3]);
    result.whole[0][3] = firstSecond(v[1], v[2]);
    result.whole[0][4] = v[4];
    result.whole[0][5] = firstSecond(v[6], v[7]);
    result.whole[0][6] = firstSecond(v[5], v[6]);
    result.whole[0][7] = firstSecond(v[8], v[5]);
    result.whole[0][8] = firstSecond(v[7], v[8]);
    return result;
}

// Does a constant go before the transposition (one operation on what was loaded whole) or after it?
template <class T>
inline constexpr bool constantFirst = isFloat<T>;

// What becomes of a block before it is stored.
struct AsIs {
    template <class T, int i, int j, int n, class V>
    [[gnu::always_inline]] V apply(V value) const {
        return value;
    }
};

template <class Op, class B>
struct WithSecond {
    const B& b;
    template <class T, int i, int j, int n, class V>
    [[gnu::always_inline]] V apply(V value) const {
        return Op::apply(value, b.template get<i, j, n>());
    }
};

template <class Op, class A>
struct WithFirst {
    const A& a;
    template <class T, int i, int j, int n, class V>
    [[gnu::always_inline]] V apply(V value) const {
        return Op::apply(a.template get<i, j, n>(), value);
    }
};

template <class T, int p, int q, int i, int j, class Stored, class Last>
[[gnu::always_inline]] inline void storeBlock(const Stored& stored, const Last& last, std::byte* to,
                                              std::ptrdiff_t rowStride) {
    const auto block = transposedBlock<T, p, q, i, j>(stored);
    unrolled<p>([&](auto r) __attribute__((always_inline)) {
        Piece<T, q>::store(to + (i + r) * rowStride + j * static_cast<std::ptrdiff_t>(sizeof(T)),
                           last.template apply<T, i + r, j, q>(block.row[r]));
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
    if constexpr (isTransposed<View>)
        return Rows<T>{view.origin + i * size + j * view.elementStride, view.elementStride};
    else return Rows<T>{view.origin + i * view.rowStride + j * size, view.rowStride};
}

template <class T>
[[gnu::always_inline]] inline Repeated<T> blockSource(Repeated<T> constant, std::ptrdiff_t, std::ptrdiff_t) {
    return constant;
}

// Transposed sources are combined before they are transposed, where both are (or the other is a constant).
template <class Op, class T, int p, int q, class A, class B, class X, class Y>
[[gnu::always_inline]] inline void storeBlockAt(const X& a, const Y& b, std::byte* to, std::ptrdiff_t rowStride,
                                                std::ptrdiff_t i, std::ptrdiff_t j) {
    const auto x = blockSource<T>(a, i, j);
    const auto y = blockSource<T>(b, i, j);
    constexpr bool lastB = isAdjacent<B> || (isConstant<B> && !constantFirst<T>);
    if constexpr (isAdjacent<A>) storeBlock<T, p, q, 0, 0>(y, WithFirst<Op, decltype(x)>{x}, to, rowStride);
    else if constexpr (lastB) storeBlock<T, p, q, 0, 0>(x, WithSecond<Op, decltype(y)>{y}, to, rowStride);
    else storeBlock<T, p, q, 0, 0>(combined<Op, T>(x, y), AsIs{}, to, rowStride);
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
        storeTransposed<T, order, order>(Rows<T>{from.origin, from.elementStride}, AsIs{}, to, order * size);
    };
    const auto any = [&]() __attribute__((always_inline)) {
        eachBlock<T>(
            width, height, [&](std::ptrdiff_t i, std::ptrdiff_t j, auto p, auto q) __attribute__((always_inline)) {
                storeBlock<T, p, q, 0, 0>(blockSource<T>(from, i, j), AsIs{}, to + (i * width + j) * size,
                                          width * size);
            });
    };
    forOrder(width == height ? static_cast<int>(width) : 0, known, any);
}

// All operands are arrays here: blocks are so much work that an operand shared by all objects may be loaded anew.
template <class Op, class A, class B, class D>
[[gnu::noinline]] void transposedObjects(const A& first, const B& second, const D& result, std::ptrdiff_t width,
                                         std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    A a = first;
    B b = second;
    D dst = result;
    const auto atHand = [](const auto& view) __attribute__((always_inline))->decltype(auto) {
        if constexpr (isConstant<std::remove_cvref_t<decltype(view)>>) return Repeated<T>{repeated(constantOf(view))};
        else return (view);
    };
    const auto next = [](auto& array) __attribute__((always_inline)) {
        if (array.list != nullptr) array.nextOfList();
        else array.nextByStride();
    };
    for (;;) {
        const auto& x = atHand(a);
        const auto& y = atHand(b);
        eachBlock<T>(
            width, height, [&](std::ptrdiff_t i, std::ptrdiff_t j, auto p, auto q) __attribute__((always_inline)) {
                std::byte* const to = dst.origin + i * dst.rowStride + j * static_cast<std::ptrdiff_t>(sizeof(T));
                storeBlockAt<Op, T, p, q, A, B>(x, y, to, dst.rowStride, i, j);
            });
        if (--count == 0) return;
        next(a);
        next(b);
        next(dst);
    }
}

}  // namespace korm::inline KORM_VARIANT::arith
