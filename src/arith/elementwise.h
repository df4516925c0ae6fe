// Element-wise arithmetic: dst(k, i, j) = Op(a(k, i, j), b(k, i, j)) over any operand views.
//
// One IEEE operation per element, so all paths give the same bits. What differs is how elements are found.
#pragma once

#include <cstdint>

#include "arith/operations.h"
#include "arith/plain.h"
#include "entry/lanes.h"
#include "entry/views.h"

namespace korm {

template <class T, class X>
T elementOf(const X& x, std::ptrdiff_t i, std::ptrdiff_t j) {
    if constexpr (std::is_arithmetic_v<X>) return x;
    else return load<T>(x.address(i, j));
}

template <class Op, class A, class B, class D, class Shape, class Count>
[[gnu::always_inline]] inline void elementwise(A a, B b, D dst, Shape shape, Count count) {
    if constexpr (D::spacing == Spacing::rowAdjacent) {
        plainObjects<Op>(a, b, dst, shape, count);
        return;
    }
    using T = typename D::Element;
    std::int32_t width, height = 1;
    if constexpr (std::is_same_v<Shape, MatrixShape>) { width = shape.width; height = shape.height; }
    else width = shape.length;
    for (std::int32_t k = 0; k < count; ++k) {
        const auto x = a.at(k);
        const auto y = b.at(k);
        const auto z = dst.at(k);
        for (std::int32_t i = 0; i < height; ++i)
            for (std::int32_t j = 0; j < width; ++j)
                store(z.address(i, j), Op::apply(elementOf<T>(x, i, j), elementOf<T>(y, i, j)));
    }
}
}  // namespace korm
