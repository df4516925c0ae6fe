// Arrays of small packed objects beside a shared operand or one constant for each object.
//
// Such an array is one run in which a tile of several objects, as many as fill whole vectors, repeats itself: four objects
// of 9 floats are nine vectors. The shared operand is laid out once for a tile; the constants of a tile are one vector whose
// lanes are spread over the tile.
#pragma once

#include <numeric>

#include "arith/operands.h"
#include "arith/rows.h"
#include "kernel/unroll.h"

namespace korm::inline KORM_VARIANT::arith {

// `perVector`: constants are spread from one full vector of them, so a tile has one object per lane.
template <class T, int elements, bool perVector>
struct Tile {
    // At least four vectors, or the loop itself would cost as much as its work.
    static constexpr int least = lanes<T> / std::gcd(elements, lanes<T>);
    static constexpr int whole = elements * least / lanes<T>;
    static constexpr int objects = perVector ? lanes<T> : least * (whole >= 4 ? 1 : whole >= 2 ? 2 : 4);
    static constexpr int vectors = elements * objects / lanes<T>;
    static constexpr std::ptrdiff_t bytes = vectors * 16;
};

// One constant for each object, as a source of vectors of the tile.
template <class T, int elements>
struct SpreadConstants {
    Vector<T> constants;

    template <int at>
    [[gnu::always_inline]] Vector<T> vector(Int<at>) const {
        constexpr int first = at / static_cast<int>(sizeof(T));
        return withLanes<lanes<T>>([&](auto... l) __attribute__((always_inline)) {
            return __builtin_shufflevector(constants, constants, ((first + l) / elements)...);
        });
    }
};

template <class T, int elements, class View, class Kept>
[[gnu::always_inline]] inline decltype(auto) tileSource(const View& view, const Kept& kept) {
    if constexpr (isShared<View>) return (kept);
    else if constexpr (!isConstant<View>) return Adjacent<T>{view.origin};
    else if (view.objectStride == sizeof(T)) return SpreadConstants<T, elements>{load<Vector<T>>(view.origin)};
    else
        return SpreadConstants<T, elements>{
            fromLanes<Vector<T>>([&](int l) { return load<T>(view.origin + l * view.objectStride); })};
}

// Arrays of elements are packed, those of constants may have any stride.
template <class Layout, class View>
[[gnu::always_inline]] inline void nextTile(View& view) {
    if constexpr (isConstant<View> && !isShared<View>) view.origin += Layout::objects * view.objectStride;
    else if constexpr (!isShared<View>) view.origin += Layout::bytes;
}

// Does the whole tiles and returns how many objects these were; a shared operand is given as a tile. A function of its own:
// inlined into kernels, which have many loops, gcc kept a pointer of this one in memory, for a third more time. It begins with
// a line of code, and small tiles go by twos: a loop of one takes up to a third longer where it lies across two lines.
template <class Op, class T, int elements, bool perVector, class A, class B>
[[gnu::noinline, gnu::aligned(64)]] std::ptrdiff_t storeTiles(const A& first, const B& second, std::byte* to,
                                                              std::ptrdiff_t count) {
    using Layout = Tile<T, elements, perVector>;
    A a = first;
    B b = second;
    const auto keptA = keptRow<T, Layout::vectors - 1>(a, Layout::bytes - 16);
    const auto keptB = keptRow<T, Layout::vectors - 1>(b, Layout::bytes - 16);
    const std::ptrdiff_t tiles = count / Layout::objects;
    const auto storeTile = [&]() __attribute__((always_inline)) {
        const auto& x = tileSource<T, elements>(a, keptA);
        const auto& y = tileSource<T, elements>(b, keptB);
        unrolled<Layout::vectors>([&](auto v) __attribute__((always_inline)) {
            store(to + 16 * v, Op::apply(x.vector(Int<16 * v>{}), y.vector(Int<16 * v>{})));
        });
        nextTile<Layout>(a);
        nextTile<Layout>(b);
        to += Layout::bytes;
    };
    std::ptrdiff_t left = tiles;
    if constexpr (Layout::vectors <= 4)
        for (; left >= 2; left -= 2) {
            storeTile();
            storeTile();
        }
    for (; left > 0; --left) storeTile();
    return tiles * Layout::objects;
}

}  // namespace korm::inline KORM_VARIANT::arith
