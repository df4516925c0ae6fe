// Arrays of small objects that lie packed, one after the other, beside a single operand or one constant
// for each object.
//
// Such an array is one run in which a tile of a few objects, as many as fill whole vectors, repeats
// itself: four objects of 9 floats are nine vectors. The single operand is laid out once for a tile;
// the constants of a tile are one vector whose lanes are spread over the tile.
#pragma once

#include <type_traits>

#include "arith/pieces.h"

namespace korm {

constexpr int greatestCommonDivisor(int a, int b) { return b == 0 ? a : greatestCommonDivisor(b, a % b); }

// `perVector`: constants are spread from one full vector of them, so a tile has one object per lane.
template <class T, int elements, bool perVector>
struct Tile {
    static constexpr int lanes = laneCount<T>;
    // At least four vectors, or the loop itself would cost as much as its work.
    static constexpr int fewest = lanes / greatestCommonDivisor(elements, lanes);
    static constexpr int repeated = elements * fewest / lanes;
    static constexpr int objects = perVector ? lanes : fewest * (repeated >= 4 ? 1 : repeated >= 2 ? 2 : 4);
    static constexpr int vectors = elements * objects / lanes;
    static constexpr std::ptrdiff_t bytes = vectors * 16;
};

// --- What a tile reads: vector v of it -----------------------------------------------------------

struct TileOfArray {
    const std::byte* at;

    template <class T, int>
    struct Here {
        const std::byte* at;
        template <int v>
        [[gnu::always_inline]] Lanes<T> get() const {
            return loadLanes<T>(at + 16 * v);
        }
    };
    template <class T, int elements>
    [[gnu::always_inline]] Here<T, elements> here() const {
        return {at};
    }
    [[gnu::always_inline]] void next(std::ptrdiff_t bytes, int) { at += bytes; }
};

template <class T, int vectors>
struct TileHeld {
    Lanes<T> vector[vectors];

    template <int v>
    [[gnu::always_inline]] Lanes<T> get() const {
        return vector[v];
    }
    template <class, int>
    [[gnu::always_inline]] const TileHeld& here() const {
        return *this;
    }
    [[gnu::always_inline]] void next(std::ptrdiff_t, int) {}
};

// A tile of the single operand, still in memory.
struct TileOfOne {
    const std::byte* at;
};

template <class T, int elements>
struct TileConstants {
    const std::byte* at;
    std::ptrdiff_t step;

    struct Here {
        Lanes<T> constants;
        template <int v>
        [[gnu::always_inline]] Lanes<T> get() const {
            constexpr int first = v * laneCount<T>;
            if constexpr (laneCount<T> == 4)
                return __builtin_shufflevector(constants, constants, first / elements, (first + 1) / elements,
                                               (first + 2) / elements, (first + 3) / elements);
            else return __builtin_shufflevector(constants, constants, first / elements, (first + 1) / elements);
        }
    };
    template <class, int>
    [[gnu::always_inline]] Here here() const {
        if (step == sizeof(T)) return {loadLanes<T>(at)};
        return {gather<T>(at, step)};
    }
    [[gnu::always_inline]] void next(std::ptrdiff_t, int objects) { at += objects * step; }
};

template <class Op, class T, int elements, int vectors, int v = 0, class A, class B>
[[gnu::always_inline]] inline void storeTile(const A& a, const B& b, std::byte* to) {
    if constexpr (v < vectors) {
        storeLanes(to + 16 * v, Op::apply(a.template get<v>(), b.template get<v>()));
        storeTile<Op, T, elements, vectors, v + 1>(a, b, to);
    }
}

template <class T, int vectors, class Source>
[[gnu::always_inline]] inline auto inRegisters(const Source& source) {
    if constexpr (!std::is_same_v<Source, TileOfOne>) return source;
    else {
        TileHeld<T, vectors> held;
        for (int v = 0; v < vectors; ++v) held.vector[v] = loadLanes<T>(source.at + 16 * v);
        return held;
    }
}

// Does the whole tiles and returns how many objects these were. A function of its own, shared by all forms: inlined
// into kernels, which have many loops, gcc kept a pointer of this one in memory, for a third more time.
template <class Op, class T, int elements, bool perVector, class A, class B>
[[gnu::noinline]] std::int32_t storeTiles(A first, B second, std::byte* to, std::int32_t count) {
    using Shape = Tile<T, elements, perVector>;
    auto a = inRegisters<T, Shape::vectors>(first);
    auto b = inRegisters<T, Shape::vectors>(second);
    std::int32_t done = 0;
    for (; done + Shape::objects <= count; done += Shape::objects) {
        storeTile<Op, T, elements, Shape::vectors>(a.template here<T, elements>(), b.template here<T, elements>(), to);
        a.next(Shape::bytes, Shape::objects);
        b.next(Shape::bytes, Shape::objects);
        to += Shape::bytes;
    }
    return done;
}

}  // namespace korm
