#pragma once
#include "entry/views.h"
#include "arith/operations.h"
#include <cstring>
namespace korm {
template <class T> T load(const std::byte* p) { T v; std::memcpy(&v, p, sizeof v); return v; }
template <class T> void store(std::byte* p, T v) { std::memcpy(p, &v, sizeof v); }

template <class T, class X> T elementOf(const X& x, std::ptrdiff_t i, std::ptrdiff_t j) {
    if constexpr (std::is_arithmetic_v<X>) return x;
    else return load<T>(x.address(i, j));
}

template <class Op, class A, class B, class D, class Shape, class Count>
void elementwise(A a, B b, D dst, Shape shape, Count count) {
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
