// Element-wise arithmetic: dst(k, i, j) = Op(a(k, i, j), b(k, i, j)) over any operand views.
//
// One IEEE operation per element, so all paths give the same bits. What differs is how elements are
// found, and so how many of them one instruction can take. The result may lie exactly on a source that is
// not transposed: every path reads an element before it writes the same place.
#pragma once

#include "arith/apart.h"
#include "arith/operations.h"
#include "arith/plain.h"
#include "arith/single.h"
#include "entry/views.h"

namespace korm {

// `shape` is MatrixShape or VectorShape, `count` a number or oneObject. Returns the status of a single object.
template <class Op, class A, class B, class D, class Shape, class Count>
[[gnu::always_inline]] inline auto elementwise(A a, B b, D dst, Shape shape, Count count) {
    if constexpr (isOneObject<Count>) return singleObject<Op>(a, b, dst, shape);
    else if constexpr (D::spacing == Spacing::rowAdjacent) plainObjects<Op>(a, b, dst, shape, count);
    else apartObjects<Op>(a, b, dst, shape, count);
}

}  // namespace korm
