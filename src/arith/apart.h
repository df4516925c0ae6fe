// Kernels of the strided and the pointer layout.
#pragma once

#include "arith/plain.h"
#include "arith/streams.h"
#include "arith/tables.h"
#include "entry/views.h"

namespace korm {

// --- Objects of a size known when compiling ------------------------------------------------------

// A copy of a single operand: addressed by constants, it takes no registers.
template <class T, int width, int height>
struct CopiedRows {
    T value[height][width];
    int row = 0;

    template <class View>
    explicit CopiedRows(const View& view) {
        const auto from = view.at(0);
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) value[i][j] = load<T>(from.address(i, j));
    }
    template <int n>
    [[gnu::always_inline]] T get() const {
        return value[row][n];
    }
    [[gnu::always_inline]] void beginObject(std::ptrdiff_t) { row = 0; }
    [[gnu::always_inline]] void nextRow() { ++row; }
    void nextObject() {}
};

template <class T, int width, int height, bool once, class View>
[[gnu::always_inline]] inline auto sizedRowsOf(const View& view) {
    if constexpr (isConstant<View>) return ConstantRows<T, View>(view);
    else if constexpr (!once && isSingle<View>) return CopiedRows<T, width, height>(view);
    else return RowsOf<View, once>(view, height, 0);
}

template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void stridedSized(const A& a, const B& b, const D& dst, Count count) {
    using T = typename D::Element;
    constexpr bool once = isOneObject<Count>;
    auto x = sizedRowsOf<T, width, height, once>(a);
    auto y = sizedRowsOf<T, width, height, once>(b);
    RowsOf<D, once> z(dst, height, 0);
    for (std::int32_t k = 0; k < count; ++k) {
        x.beginObject(k);
        y.beginObject(k);
        z.beginObject(k);
        forRows<height>([&](auto i) __attribute__((always_inline)) {
            storeElements<Op, T, width>(x, y, z);
            if constexpr (i + 1 < height) {
                x.nextRow();
                y.nextRow();
                z.nextRow();
            }
        });
        x.nextObject();
        y.nextObject();
        z.nextObject();
    }
}

template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void apartSized(const A& a, const B& b, const D& dst, Count count) {
    if constexpr (D::spacing == Spacing::scattered) {
        scatteredAny<Op>(A(a), B(b), D(dst), width, height, count);
    } else {
        if constexpr (D::objects == Objects::stepped)
            if (objectsAdjacent(dst)) {
                stridedArrays<Op>(A(a), B(b), D(dst), width, height, count);
                return;
            }
        stridedSized<Op, width, height>(a, b, dst, count);
    }
}

// --- By shape ------------------------------------------------------------------------------------

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void apartAny(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                            std::ptrdiff_t height, std::ptrdiff_t count) {
    if constexpr (D::spacing == Spacing::scattered) scatteredAny<Op>(A(a), B(b), D(dst), width, height, count);
    else if constexpr (D::objects == Objects::stepped) stridedArrays<Op>(A(a), B(b), D(dst), width, height, count);
    else stridedNest<Op>(A(a), B(b), D(dst), width, height, count);
}

template <class Op, class A, class B, class D, class Shape, class Count>
[[gnu::always_inline]] inline void apartObjects(const A& a, const B& b, const D& dst, Shape shape, Count count) {
    bySize(
        shape,
        [&](auto width, auto height)
            __attribute__((always_inline)) { apartSized<Op, width, height>(a, b, dst, count); },
        [&]() __attribute__((always_inline)) {
            if constexpr (isOneObject<Count> && std::is_same_v<Shape, VectorShape>)
                stridedVector<Op, typename D::Element>(streamStart(a), streamStart(b), streamStart(dst), shape.length);
            else apartAny<Op>(a, b, dst, widthOf(shape), heightOf(shape), count);
        });
}

}  // namespace korm
