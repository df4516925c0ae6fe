// Kernels of the strided and the pointer layout.
#pragma once

#include "arith/plain.h"
#include "arith/streams.h"
#include "entry/views.h"

namespace korm {

// Hides where a pointer comes from. Without it the compiler forms the addresses of all elements of an object
// relative to its start and keeps up to 108 of them on the stack; one step per row needs three registers.
template <class P>
[[gnu::always_inline]] inline P opaque(P pointer) {
    asm("" : "+r"(pointer));
    return pointer;
}

// --- Objects of a size known when compiling ------------------------------------------------------

// Walks an object row by row.
template <class T, class P>
struct StridedRows {
    P row;
    std::ptrdiff_t rowStride, elementStride;

    template <int j>
    [[gnu::always_inline]] P address() const {
        if constexpr (j == 5) return opaque(row + elementStride) + 4 * elementStride;
        else return row + j * elementStride;
    }
    template <int, int j>
    [[gnu::always_inline]] T get() const {
        return load<T>(address<j>());
    }
    [[gnu::always_inline]] void next() { row = opaque(row + rowStride); }
};

template <class T>
struct RestingObject {
    T value;
    template <int, int>
    [[gnu::always_inline]] T get() const {
        return value;
    }
    void next() {}
};

// A copy of a single operand: addressed by constants, it takes no registers.
template <class T, int width, int height>
struct CopiedObject {
    T value[height][width];
};

template <class T, int width, int height>
struct CopiedRef {
    const CopiedObject<T, width, height>* copy;
    template <int i, int j>
    [[gnu::always_inline]] T get() const {
        return copy->value[i][j];
    }
    void next() {}
};

template <class T, int width, int height, bool copies, class View>
[[gnu::always_inline]] inline auto sizedPrepared(const View& view) {
    if constexpr (copies && isSingle<View> && !isConstant<View>) {
        CopiedObject<T, width, height> copy;
        const auto from = view.at(0);
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) copy.value[i][j] = load<T>(from.address(i, j));
        return copy;
    } else return view;
}

template <class T, int width, int height, class Prepared>
[[gnu::always_inline]] inline auto sizedObject(const Prepared& prepared, std::ptrdiff_t k) {
    if constexpr (std::is_same_v<Prepared, CopiedObject<T, width, height>>)
        return CopiedRef<T, width, height>{&prepared};
    else if constexpr (isConstant<Prepared>) return RestingObject<T>{prepared.at(k)};
    else {
        const auto grid = prepared.at(k);
        return StridedRows<T, const std::byte*>{grid.origin, grid.rowStride, grid.elementStride};
    }
}

template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void stridedSized(const A& a, const B& b, const D& dst, Count count) {
    using T = typename D::Element;
    const auto first = sizedPrepared<T, width, height, !isOneObject<Count>>(a);
    const auto second = sizedPrepared<T, width, height, !isOneObject<Count>>(b);
    for (std::int32_t k = 0; k < count; ++k) {
        auto x = sizedObject<T, width, height>(first, k);
        auto y = sizedObject<T, width, height>(second, k);
        const auto grid = dst.at(k);
        StridedRows<T, std::byte*> z{grid.origin, grid.rowStride, grid.elementStride};
        forRows<height>([&](auto i) __attribute__((always_inline)) {
            forRows<width>([&](auto j) __attribute__((always_inline)) {
                store(z.template address<j>(), Op::apply(x.template get<i, j>(), y.template get<i, j>()));
            });
            if constexpr (i + 1 < height) {
                x.next();
                y.next();
                z.next();
            }
        });
    }
}

template <class Op, int width, int height, class A, class B, class D>
[[gnu::always_inline]] inline void scatteredSized(const A& a, const B& b, const D& dst) {
    using T = typename D::Element;
    const auto x = a.at(0);
    const auto y = b.at(0);
    const auto z = dst.at(0);
    forRows<height>([&](auto i) __attribute__((always_inline)) {
        forRows<width>([&](auto j) __attribute__((always_inline)) {
            store(z.address(i, j), Op::apply(elementOf<T>(x, i, j), elementOf<T>(y, i, j)));
        });
    });
}

template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void apartSized(const A& a, const B& b, const D& dst, Count count) {
    if constexpr (D::spacing == Spacing::scattered) {
        if constexpr (isOneObject<Count>) scatteredSized<Op, width, height>(a, b, dst);
        else scatteredAny<Op>(A(a), B(b), D(dst), width, height, count);
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
        [&]() __attribute__((always_inline)) { apartAny<Op>(a, b, dst, widthOf(shape), heightOf(shape), count); });
}

}  // namespace korm
