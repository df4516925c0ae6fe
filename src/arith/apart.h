// Kernels of the strided and the pointer layout.
#pragma once

#include "arith/plain.h"
#include "arith/streams.h"
#include "entry/views.h"

namespace korm {

template <class T, class X>
[[gnu::always_inline]] inline T elementOf(const X& object, std::ptrdiff_t i, std::ptrdiff_t j) {
    if constexpr (std::is_same_v<X, T>) return object;
    else return load<T>(object.address(i, j));
}

// Objects of a size known when compiling, one by one.
template <class Op, int width, int height, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void eachApart(const A& a, const B& b, const D& dst, Count count) {
    using T = typename D::Element;
    for (std::int32_t k = 0; k < count; ++k) {
        const auto x = a.at(k);
        const auto y = b.at(k);
        const auto z = dst.at(k);
        forRows<height>([&](auto i) __attribute__((always_inline)) {
            forRows<width>([&](auto j) __attribute__((always_inline)) {
                store(z.address(i, j), Op::apply(elementOf<T>(x, i, j), elementOf<T>(y, i, j)));
            });
        });
    }
}

template <class T, class View>
[[gnu::always_inline]] inline auto apartOperand(const View& view, const T* constantHere) {
    if constexpr (isConstant<View> && isSingle<View>)
        return ConstantOperand<T>{reinterpret_cast<const std::byte*>(constantHere), 0};
    else if constexpr (isConstant<View>) return ConstantOperand<T>{view.origin, view.objectStride};
    else if constexpr (View::spacing == Spacing::scattered) {
        if constexpr (View::transposed)
            return ScatteredOperand<T>{view.table, view.offset, view.objectStride, 1, view.pitch};
        else return ScatteredOperand<T>{view.table, view.offset, view.objectStride, view.pitch, 1};
    } else return StridedOperand<T>{view.origin, view.objectStride, view.rowStride, view.elementStride};
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void apartSome(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                             std::ptrdiff_t height, std::ptrdiff_t count) {
    using T = typename D::Element;
    [[maybe_unused]] T first{};
    [[maybe_unused]] T second{};
    if constexpr (isConstant<A> && isSingle<A>) first = a.value;
    if constexpr (isConstant<B> && isSingle<B>) second = b.value;
    const auto x = apartOperand<T>(a, &first);
    const auto y = apartOperand<T>(b, &second);
    if constexpr (D::spacing == Spacing::scattered)
        scatteredNest<Op, T>(x, y, ScatteredResult<T>{dst.table, dst.offset, dst.objectStride, dst.pitch}, width,
                             height, count);
    else
        stridedNest<Op, T>(x, y, StridedResult{dst.origin, dst.objectStride, dst.rowStride, dst.elementStride},
                           width, height, count);
}

template <class Op, class A, class B, class D>
[[gnu::always_inline]] inline void apartAny(const A& a, const B& b, const D& dst, std::ptrdiff_t width,
                                            std::ptrdiff_t height, std::ptrdiff_t count) {
    if constexpr (isListed<D>) {
        for (std::ptrdiff_t k = 0; k < count; ++k)
            apartSome<Op>(alone(a, k), alone(b, k), alone(dst, k), width, height, 1);
    } else {
        apartSome<Op>(a, b, dst, width, height, count);
    }
}

template <class D, class Count>
inline constexpr bool sizedApart = isOneObject<Count> || isListed<D>;

template <class Op, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void apartObjects(const A& a, const B& b, const D& dst, MatrixShape shape, Count count) {
    if constexpr (sizedApart<D, Count>)
        if (shape.width == shape.height) {
            if (shape.width == 3) return eachApart<Op, 3, 3>(a, b, dst, count);
            if (shape.width == 4) return eachApart<Op, 4, 4>(a, b, dst, count);
            if (shape.width == 5) return eachApart<Op, 5, 5>(a, b, dst, count);
            if (shape.width == 6) return eachApart<Op, 6, 6>(a, b, dst, count);
        }
    apartAny<Op>(a, b, dst, shape.width, shape.height, count);
}

template <class Op, class A, class B, class D, class Count>
[[gnu::always_inline]] inline void apartObjects(const A& a, const B& b, const D& dst, VectorShape shape, Count count) {
    if constexpr (sizedApart<D, Count>) {
        if (shape.length == 3) return eachApart<Op, 3, 1>(a, b, dst, count);
        if (shape.length == 4) return eachApart<Op, 4, 1>(a, b, dst, count);
        if (shape.length == 5) return eachApart<Op, 5, 1>(a, b, dst, count);
        if (shape.length == 6) return eachApart<Op, 6, 1>(a, b, dst, count);
    }
    apartAny<Op>(a, b, dst, shape.length, 1, count);
}

}  // namespace korm
