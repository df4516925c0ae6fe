// Objects whose size is known when compiling, cut into pieces.
//
// A row is cut into whole vectors, then a pair of floats, then one element: the fewest loads and stores that touch nothing beyond
// the row. A row of 3 floats is a pair and one element, a row of 5 a vector and one element. Where rows touch, an object is one row
// of width * height elements: 9 floats are 3 pieces, not 6.
//
// A source gives the piece of n elements at (i, j); all three are known when compiling.
#pragma once

#include <cstddef>

#include "arith/operands.h"
#include "arith/rows.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::arith {

template <class T, int n>
struct Piece {
    static_assert(n == lanes<T>, "a piece is a whole vector, a pair of floats or one element");
    using Value = Vector<T>;
    static Value load(const std::byte* from) { return korm::load<Vector<T>>(from); }
    static void store(std::byte* to, Value value) { korm::store(to, value); }
};

template <>
struct Piece<float, 2> {
    using Value = Float4;
    static Value load(const std::byte* from) { return loadPair(from); }
    static void store(std::byte* to, Value value) { storePair(to, value); }
};

template <class T>
struct Piece<T, 1> {
    using Value = T;
    static Value load(const std::byte* from) { return korm::load<T>(from); }
    static void store(std::byte* to, Value value) { korm::store(to, value); }
};

template <class T>
constexpr int pieceAt(int left) {
    if (left >= lanes<T>) return lanes<T>;
    return left >= 2 ? 2 : 1;
}

// Calls f(start, size) for the pieces of a row of `width` elements, both as types.
template <class T, int width, int start = 0, class F>
[[gnu::always_inline]] inline void forPieces(const F& f) {
    if constexpr (start < width) {
        constexpr int size = pieceAt<T>(width - start);
        f(Int<start>{}, Int<size>{});
        forPieces<T, width, start + size>(f);
    }
}

// --- Sources -----------------------------------------------------------------------------------

// The stride of an object's rows: of five and more as if each object had its own. gcc would else form the distance of every piece
// ahead of the loop over objects, more than there are registers for, which takes half as long again.
template <int height>
[[gnu::always_inline]] inline std::ptrdiff_t strideOf(const std::byte* object, std::ptrdiff_t stride) {
    if (height > 4 && !__builtin_constant_p(stride)) asm("" : "+r"(stride) : "r"(object));
    return stride;
}

// Memory.
template <class T>
struct Rows {
    const std::byte* origin;
    std::ptrdiff_t rowStride;

    template <int i, int j, int n>
    [[gnu::always_inline]] typename Piece<T, n>::Value get() const {
        return Piece<T, n>::load(origin + i * rowStride + j * static_cast<std::ptrdiff_t>(sizeof(T)));
    }
};

// Locals: a shared operand, loaded once for all objects.
template <class T, int width, int height>
struct Held {
    static constexpr int vectors = width / lanes<T>;
    Vector<T> whole[height][vectors == 0 ? 1 : vectors];
    Vector<T> pair[height];
    T one[height];

    template <int i, int j, int n>
    [[gnu::always_inline]] typename Piece<T, n>::Value get() const {
        constexpr int rest = j - vectors * lanes<T>;  // where in what follows the whole vectors
        if constexpr (n == lanes<T>) return whole[i][j / n];
        else if constexpr (n == 2) return pair[i];
        else if constexpr (rest < 0) return whole[i][j / lanes<T>][j % lanes<T>];
        else if constexpr (width % lanes<T> >= 2 && rest < 2) return pair[i][rest];
        else return one[i];
    }

    template <int i, int j, int n>
    [[gnu::always_inline]] void set(typename Piece<T, n>::Value value) {
        if constexpr (n == lanes<T>) whole[i][j / n] = value;
        else if constexpr (n == 2) pair[i] = value;
        else one[i] = value;
    }
};

template <class T, int width, int height, class Source>
[[gnu::always_inline]] inline Held<T, width, height> hold(const Source& source) {
    Held<T, width, height> held;
    unrolled<height>([&](auto i) __attribute__((always_inline)) {
        forPieces<T, width>([&](auto j, auto n) __attribute__((always_inline)) {
            held.template set<i, j, n>(source.template get<i, j, n>());
        });
    });
    return held;
}

// The results of an operation on two sources, which it refers to.
template <class Op, class T, class A, class B>
struct Combined {
    const A& a;
    const B& b;

    template <int i, int j, int n>
    [[gnu::always_inline]] typename Piece<T, n>::Value get() const {
        const auto result = Op::apply(a.template get<i, j, n>(), b.template get<i, j, n>());
        if constexpr (n == 2 && isFloat<T>) return settled(result);
        else return result;
    }
};

template <class Op, class T, class A, class B>
[[gnu::always_inline]] inline Combined<Op, T, A, B> combined(const A& a, const B& b) {
    return {a, b};
}

template <class T, int width, int height, class Source>
[[gnu::always_inline]] inline void storeObject(const Source& source, std::byte* to, std::ptrdiff_t stride) {
    const std::ptrdiff_t rowStride = strideOf<height>(to, stride);
    unrolled<height>([&](auto i) __attribute__((always_inline)) {
        forPieces<T, width>([&](auto j, auto n) __attribute__((always_inline)) {
            Piece<T, n>::store(to + i * rowStride + j * static_cast<std::ptrdiff_t>(sizeof(T)),
                               source.template get<i, j, n>());
        });
    });
}

}  // namespace korm::inline KORM_VARIANT::arith
