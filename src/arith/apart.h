// Kernels of the strided and the pointer layout.
#pragma once

#include "arith/plain.h"
#include "arith/streams.h"
#include "entry/views.h"

namespace korm {

// Hides where a pointer or stride comes from. Without it the compiler forms the addresses of all elements of an object
// relative to its start and keeps up to 108 of them on the stack; one step per row needs three registers.
template <class P>
[[gnu::always_inline]] inline P opaque(P value) {
    asm("" : "+r"(value));
    return value;
}

// --- Objects of a size known when compiling ------------------------------------------------------

// Walks object after object, row by row. Addresses in matrices are made of a row and one, two or four times the
// element stride, which instructions have for free. Each end hides that stride too, or the compiler would keep its
// multiples from object to object, for which there are no registers (a sum of order 4 takes 5.2 ns instead of 6.7).
// With vectors there are, and the multiples save a tenth.
template <class T, int height, class View>
struct StridedRows {
    static constexpr bool isMatrix = height > 1;

    View view;
    decltype(View::origin) row;
    std::ptrdiff_t toNextObject;

    explicit StridedRows(const View& all)
        : view(all),
          row(isListed<View> ? nullptr : all.origin),
          toNextObject(all.objectStride - (height - 1) * all.rowStride) {}

    template <int j>
    [[gnu::always_inline]] auto address() const {
        if constexpr (j == 5 || (j == 3 && isMatrix))
            return opaque(row + view.elementStride) + (j - 1) * view.elementStride;
        else return row + j * view.elementStride;
    }
    template <int, int j>
    [[gnu::always_inline]] T get() const {
        return load<T>(address<j>());
    }
    [[gnu::always_inline]] void next() { row = opaque(row + view.rowStride); }
    [[gnu::always_inline]] void begin(std::ptrdiff_t k) {
        if constexpr (isListed<View>) row = view.at(k).origin;
    }
    [[gnu::always_inline]] void end() {
        if constexpr (!isListed<View>) row += toNextObject;
        if constexpr (isMatrix) view.elementStride = opaque(view.elementStride);
    }
};

template <class T, class View>
struct RestingObject {
    View view;
    T value;

    explicit RestingObject(const View& all) : view(all) {}
    template <int, int>
    [[gnu::always_inline]] T get() const {
        return value;
    }
    void next() {}
    [[gnu::always_inline]] void begin(std::ptrdiff_t k) { value = view.at(k); }
    void end() {}
};

// A copy of a single operand: addressed by constants, it takes no registers.
template <class T, int width, int height>
struct CopiedObject {
    T value[height][width];

    template <class View>
    explicit CopiedObject(const View& view) {
        const auto from = view.at(0);
        for (int i = 0; i < height; ++i)
            for (int j = 0; j < width; ++j) value[i][j] = load<T>(from.address(i, j));
    }
    template <int i, int j>
    [[gnu::always_inline]] T get() const {
        return value[i][j];
    }
    void next() {}
    void begin(std::ptrdiff_t) {}
    void end() {}
};

template <class T, int width, int height, bool copies, class View>
[[gnu::always_inline]] inline auto sizedSource(const View& view) {
    if constexpr (isConstant<View>) return RestingObject<T, View>(view);
    else if constexpr (copies && isSingle<View>) return CopiedObject<T, width, height>(view);
    else return StridedRows<T, height, View>(view);
}

template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void stridedSized(const A& a, const B& b, const D& dst, Count count) {
    using T = typename D::Element;
    auto x = sizedSource<T, width, height, !isOneObject<Count>>(a);
    auto y = sizedSource<T, width, height, !isOneObject<Count>>(b);
    StridedRows<T, height, D> z(dst);
    for (std::int32_t k = 0; k < count; ++k) {
        x.begin(k);
        y.begin(k);
        z.begin(k);
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
        x.end();
        y.end();
        z.end();
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
        [&]() __attribute__((always_inline)) { apartAny<Op>(a, b, dst, widthOf(shape), heightOf(shape), count); });
}

}  // namespace korm
