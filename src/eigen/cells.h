// What the eigenvalue iterations work on: matrices and vectors of cells. A cell is an element in memory, or the same element
// of each object of a group; in registers it is a scalar S of kernel/scalar.h, which may be wider than what is stored.
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "eigen/twins.h"
#include "kernel/predicates.h"
#include "kernel/scalar.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT::eigen {

template <class S, class T>
[[gnu::always_inline]] inline S readCell(const std::byte* from) {
    if constexpr (isTwin<S>)
        return {readCell<TwinOf<S>, T>(from), readCell<TwinOf<S>, T>(from + lanesOf<S> / 2 * sizeof(T))};
    else if constexpr (std::is_same_v<ElementOf<S>, T>) return load<S>(from);
    else if constexpr (lanesOf<S> == 1) return static_cast<S>(load<T>(from));
    else
        return reinterpret_cast<S>(
            _mm_cvtps_pd(_mm_castsi128_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)))));
}

// Rounds to the element type where S is wider.
template <class S, class T>
[[gnu::always_inline]] inline void writeCell(std::byte* to, S value) {
    if constexpr (isTwin<S>) {
        writeCell<TwinOf<S>, T>(to, value.first);
        writeCell<TwinOf<S>, T>(to + lanesOf<S> / 2 * sizeof(T), value.second);
    } else if constexpr (std::is_same_v<ElementOf<S>, T>) {
        store(to, value);
    } else if constexpr (lanesOf<S> == 1) {
        store(to, static_cast<T>(value));
    } else {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to),
                         _mm_castps_si128(_mm_cvtpd_ps(reinterpret_cast<__m128d>(value))));
    }
}

template <class S, class T>
struct CellVector {
    using Scalar = S;
    static constexpr std::ptrdiff_t size = lanesOf<S> * static_cast<std::ptrdiff_t>(sizeof(T));
    std::byte* origin;

    [[gnu::always_inline]] S get(std::ptrdiff_t i) const { return readCell<S, T>(origin + i * size); }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, S value) const { writeCell<S, T>(origin + i * size, value); }
    // Of one object: the neighbours from i on, as many as X has lanes.
    template <class X>
    [[gnu::always_inline]] X getRun(std::ptrdiff_t i) const {
        return readCell<X, T>(origin + i * size);
    }
    template <class X>
    [[gnu::always_inline]] void setRun(std::ptrdiff_t i, X values) const {
        writeCell<X, T>(origin + i * size, values);
    }
};

// Hands the elements from `first` to `end` - 1 of one object to `each` in runs: each.operator()<X>(i).
template <class S, class Each>
[[gnu::always_inline]] inline void inRuns(std::ptrdiff_t first, std::ptrdiff_t end, const Each& each) {
    using V = Vec<S, 16 / sizeof(S)>;
    std::ptrdiff_t i = first;
    for (; i + 2 * lanesOf<V> <= end; i += 2 * lanesOf<V>) each.template operator()<Twin<V>>(i);
    if (i + lanesOf<V> <= end) {
        each.template operator()<V>(i);
        i += lanesOf<V>;
    }
    for (; i < end; ++i) each.template operator()<S>(i);
}

// Rows follow each other without gaps.
template <class S, class T>
struct CellMatrix {
    using Element = T;
    CellVector<S, T> cells;
    std::ptrdiff_t order;

    [[gnu::always_inline]] CellVector<S, T> row(std::ptrdiff_t i) const {
        return {cells.origin + i * order * cells.size};
    }
    [[gnu::always_inline]] S get(std::ptrdiff_t i, std::ptrdiff_t j) const { return cells.get(i * order + j); }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, std::ptrdiff_t j, S value) const {
        cells.set(i * order + j, value);
    }
};

// The caller's matrix, through a view of one object.
template <class S, class Object>
struct ObjectMatrix {
    using T = typename Object::Element;
    Object object;

    [[gnu::always_inline]] CellVector<S, T> row(std::ptrdiff_t i) const requires isAdjacent<Object> {
        return {object.address(i, 0)};
    }

    [[gnu::always_inline]] S get(std::ptrdiff_t i, std::ptrdiff_t j) const {
        return readCell<S, T>(object.address(i, j));
    }
    [[gnu::always_inline]] void set(std::ptrdiff_t i, std::ptrdiff_t j, S value) const {
        writeCell<S, T>(object.address(i, j), value);
    }
};

// The transpose of a matrix whose rows lie in one piece: there its columns do.
template <class Stored>
struct TransposedMatrix {
    Stored stored;

    [[gnu::always_inline]] auto get(std::ptrdiff_t i, std::ptrdiff_t j) const { return stored.get(j, i); }
    template <class S>
    [[gnu::always_inline]] void set(std::ptrdiff_t i, std::ptrdiff_t j, S value) const {
        stored.set(j, i, value);
    }
};
template <class Matrix>
inline constexpr bool hasColumnsInOnePiece = false;
template <class Stored>
inline constexpr bool hasColumnsInOnePiece<TransposedMatrix<Stored>> = true;

template <class Matrix>
inline constexpr bool hasRowsInOnePiece = requires(Matrix a) {
    a.row(0);
};

// --- Masks --------------------------------------------------------------------------------------

template <class S>
[[gnu::always_inline]] inline MaskOf<S> everyLane() {
    return all<S>(0) == all<S>(0);
}

// x in the lanes of the mask, +0 in others. What +0 is subtracted from keeps every bit.
template <class S>
[[gnu::always_inline]] inline S onlyIn(MaskOf<S> lanes, S x) {
    if constexpr (lanesOf<S> == 1) return lanes ? x : S{};
    else if constexpr (isTwin<S>) return {onlyIn(lanes.first, x.first), onlyIn(lanes.second, x.second)};
    else return reinterpret_cast<S>(lanes & reinterpret_cast<MaskOf<S>>(x));
}

template <class M>
[[gnu::always_inline]] inline bool areAll(M mask) {
    if constexpr (std::is_same_v<M, bool>) return mask;
    else return !any(~mask);
}

}  // namespace korm::inline KORM_VARIANT::eigen
