// Transposed operands of plain layout: blocks of pieces are turned in registers.
//
// A block is p logical rows of q columns. It comes from q stored rows, each a piece of p elements, and
// leaves as p pieces of q elements.
#pragma once

#include "arith/pieces.h"
#include "arith/runs.h"

namespace korm {

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
[[gnu::always_inline]] inline Block<T, p, q> turnBlock(const Stored& stored) {
    constexpr int lanes = laneCount<T>;
    Block<T, p, q> block;
    if constexpr (q == 1) {
        // Single elements: a load for each is cheaper than taking a vector apart.
        forRows<p>([&](auto r) __attribute__((always_inline)) { block.row[r] = stored.template get<j, i + r, 1>(); });
    } else if constexpr (p == 1) {
        if constexpr (lanes == 2)
            block.row[0] = Double2{stored.template get<j, i, 1>(), stored.template get<j + 1, i, 1>()};
        else if constexpr (q == 2) {
            const float x = stored.template get<j, i, 1>();
            const float y = stored.template get<j + 1, i, 1>();
            block.row[0] = Float4{x, y, x, y};
        } else
            block.row[0] = Float4{stored.template get<j, i, 1>(), stored.template get<j + 1, i, 1>(),
                                  stored.template get<j + 2, i, 1>(), stored.template get<j + 3, i, 1>()};
    } else if constexpr (lanes == 2 && inMemory<Stored>) {
        // Doubles straight from memory: two half loads a vector, and no shuffle.
        forRows<p>([&](auto r) __attribute__((always_inline)) {
            block.row[r] = Double2{stored.template get<j, i + r, 1>(), stored.template get<j + 1, i + r, 1>()};
        });
    } else if constexpr (p == lanes && q == lanes) {
        forRows<q>([&](auto c) __attribute__((always_inline)) { block.row[c] = stored.template get<j + c, i, p>(); });
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
[[gnu::always_inline]] inline Held<T, width, height> holdTurned(const Stored& stored) {
    Held<T, width, height> held;
    forBlocks<T, width, height>([&](auto i, auto j, auto p, auto q) __attribute__((always_inline)) {
        const auto block = turnBlock<T, p, q, i, j>(stored);
        forRows<p>([&](auto r) __attribute__((always_inline)) { held.template set<i + r, j, q>(block.row[r]); });
    });
    return held;
}

// A 3 by 3 matrix whose rows touch, as one run of 9: four shuffles for 8 of its elements, where blocks of
// 2 by 2 would need seven and twice the loads and stores.
[[gnu::always_inline]] inline Held<float, 9, 1> turnThree(const Held<float, 9, 1>& m) {
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

// The first of one vector beside the second of another: all that a turn of order 3 needs of doubles.
inline Double2 firstSecond(Double2 x, Double2 y) { return __builtin_shufflevector(x, y, 0, 3); }

[[gnu::always_inline]] inline Held<double, 9, 1> turnThree(const Held<double, 9, 1>& m) {
    const auto& v = m.whole[0];
    Held<double, 9, 1> result;
    result.whole[0][0] = firstSecond(v[0], v[1]);
    result.whole[0][1] = firstSecond(v[3], v[0]);
    result.whole[0][2] = firstSecond(v[2], v[3]);
    result.whole[0][3] = firstSecond(v[1], v[2]);
    result.one[0] = m.one[0];
    return result;
}

// Two matrices, one behind the other: 9 vectors, where one by one they would be 8 and two single elements.
[[gnu::always_inline]] inline Held<double, 18, 1> turnThree(const Held<double, 18, 1>& m) {
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

// Whether a constant goes before the turn (one operation on what was loaded whole) or after it.
template <class T>
inline constexpr bool constantFirst = laneCount<T> == 4;

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
    const auto block = turnBlock<T, p, q, i, j>(stored);
    forRows<p>([&](auto r) __attribute__((always_inline)) {
        Piece<T, q>::store(to + (i + r) * rowStride + j * static_cast<std::ptrdiff_t>(sizeof(T)),
                           last.template apply<T, i + r, j, q>(block.row[r]));
    });
}

template <class T, int width, int height, class Stored, class Last>
[[gnu::always_inline]] inline void storeTurned(const Stored& stored, const Last& last, std::byte* to,
                                               std::ptrdiff_t rowStride) {
    forBlocks<T, width, height>([&](auto i, auto j, auto p, auto q) __attribute__((always_inline)) {
        storeBlock<T, p, q, i, j>(stored, last, to, rowStride);
    });
}

// --- Objects of any shape ----------------------------------------------------------------------

// The block at logical (i, j) of an object, whose rows are stored ones.
template <class T, class G>
[[gnu::always_inline]] inline auto blockSource(const G& object, std::ptrdiff_t i, std::ptrdiff_t j) {
    if constexpr (std::is_same_v<G, Grid<const T, Spacing::columnAdjacent>>)
        return Rows<T>{object.address(i, j), object.elementStride};
    else if constexpr (std::is_same_v<G, Grid<const T, Spacing::rowAdjacent>>)
        return Rows<T>{object.address(i, j), object.rowStride};
    else return Repeated<T>{object};
}

// Turned sources are combined before they are turned, where both are (or the other is a constant).
template <class Op, class T, int p, int q, class A, class B, class D>
[[gnu::always_inline]] inline void blockAt(const A& a, const B& b, const D& d, std::ptrdiff_t i, std::ptrdiff_t j) {
    constexpr bool plainA = std::is_same_v<A, Grid<const T, Spacing::rowAdjacent>>;
    constexpr bool plainB = std::is_same_v<B, Grid<const T, Spacing::rowAdjacent>>;
    const auto x = blockSource<T>(a, i, j);
    const auto y = blockSource<T>(b, i, j);
    std::byte* const to = d.address(i, j);
    constexpr bool afterB = plainB || (!constantFirst<T> && std::is_same_v<decltype(y), const Repeated<T>>);
    if constexpr (plainA) storeBlock<T, p, q, 0, 0>(y, WithFirst<Op, Rows<T>>{x}, to, d.rowStride);
    else if constexpr (afterB)
        storeBlock<T, p, q, 0, 0>(x, WithSecond<Op, std::remove_const_t<decltype(y)>>{y}, to, d.rowStride);
    else storeBlock<T, p, q, 0, 0>(Combined<Op, T, decltype(x), decltype(y)>{x, y}, AsIs{}, to, d.rowStride);
}

template <class Op, class T, int p, class A, class B, class D>
[[gnu::always_inline]] inline void blocksAt(const A& a, const B& b, const D& d, std::ptrdiff_t i,
                                            std::ptrdiff_t width) {
    std::ptrdiff_t j = 0;
    for (; j + laneCount<T> <= width; j += laneCount<T>) blockAt<Op, T, p, laneCount<T>>(a, b, d, i, j);
    if constexpr (laneCount<T> == 4)
        if (width & 2) {
            blockAt<Op, T, p, 2>(a, b, d, i, j);
            j += 2;
        }
    if (width & 1) blockAt<Op, T, p, 1>(a, b, d, i, j);
}

// The transpose itself, for a single operand that many objects meet.
template <class T, int p>
[[gnu::always_inline]] inline void copyBlocksAt(const Grid<const T, Spacing::columnAdjacent>& from,
                                                const Grid<T, Spacing::rowAdjacent>& to, std::ptrdiff_t i,
                                                std::ptrdiff_t width) {
    const auto copy = [&](std::ptrdiff_t j, auto q) __attribute__((always_inline)) {
        storeBlock<T, p, q, 0, 0>(blockSource<T>(from, i, j), AsIs{}, to.address(i, j), to.rowStride);
    };
    std::ptrdiff_t j = 0;
    for (; j + laneCount<T> <= width; j += laneCount<T>) copy(j, Int<laneCount<T>>{});
    if constexpr (laneCount<T> == 4)
        if (width & 2) {
            copy(j, Int<2>{});
            j += 2;
        }
    if (width & 1) copy(j, Int<1>{});
}

template <class T>
[[gnu::noinline]] void copyTurned(Grid<const T, Spacing::columnAdjacent> from, std::byte* to, std::ptrdiff_t width,
                                  std::ptrdiff_t height) {
    const Grid<T, Spacing::rowAdjacent> rows{to, width * static_cast<std::ptrdiff_t>(sizeof(T)), sizeof(T)};
    std::ptrdiff_t i = 0;
    for (; i + laneCount<T> <= height; i += laneCount<T>) copyBlocksAt<T, laneCount<T>>(from, rows, i, width);
    if constexpr (laneCount<T> == 4)
        if (height & 2) {
            copyBlocksAt<T, 2>(from, rows, i, width);
            i += 2;
        }
    if (height & 1) copyBlocksAt<T, 1>(from, rows, i, width);
}

template <class Op, class A, class B, class D>
[[gnu::noinline]] void turnedGrids(const A& a, const B& b, const D& dst, std::ptrdiff_t width, std::ptrdiff_t height,
                                   std::ptrdiff_t count) {
    using T = typename D::Element;
    for (std::ptrdiff_t k = 0; k < count; ++k) {
        const auto x = objectSource<T>(a, k);
        const auto y = objectSource<T>(b, k);
        const auto z = dst.at(k);
        std::ptrdiff_t i = 0;
        for (; i + laneCount<T> <= height; i += laneCount<T>) blocksAt<Op, T, laneCount<T>>(x, y, z, i, width);
        if constexpr (laneCount<T> == 4)
            if (height & 2) {
                blocksAt<Op, T, 2>(x, y, z, i, width);
                i += 2;
            }
        if (height & 1) blocksAt<Op, T, 1>(x, y, z, i, width);
    }
}

}  // namespace korm
