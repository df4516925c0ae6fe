// Element-wise arithmetic: dst(k, i, j) = Op(a(k, i, j), b(k, i, j)) over any operand views.
//
// One IEEE operation per element, so all paths give the same bits. What differs is how elements are
// found, and so how many of them one instruction can take. The result may lie exactly on a source that is
// not transposed: every path reads an element before it writes the same place.
#pragma once

#include "arith/operands.h"
#include "arith/plain.h"
#include "arith/single.h"
#include "arith/strided.h"
#include "arith/tables.h"
#include "entry/views.h"
#include "kernel/predicates.h"

namespace korm::inline KORM_VARIANT::arith {

// The operations. One text serves a single element and a vector of lanes.
struct Plus {
    static constexpr bool commutes = true;
    template <class S>
    static S apply(S a, S b) {
        return a + b;
    }
};

struct Minus {
    static constexpr bool commutes = false;
    template <class S>
    static S apply(S a, S b) {
        return a - b;
    }
};

struct Times {
    static constexpr bool commutes = true;
    template <class S>
    static S apply(S a, S b) {
        return a * b;
    }
};

// `shape` is MatrixShape or VectorShape, `count` a number or oneObject. Returns the status of a single object.
template <class Op, class A, class B, class D, class Shape, class Count>
[[gnu::always_inline]] inline auto elementwise(const A& a, const B& b, const D& dst, Shape shape, Count count) {
    if constexpr (isOneObject<Count>) return singleObject<Op>(a, b, dst, shape);
    else if (count < 1) return;  // of a team that is larger than the array
    else if constexpr (isScattered<D>) tables<Op>(a, b, dst, shape, count);
    else if constexpr (isAdjacent<D>) plainArrays<Op>(operand(a), operand(b), operand(dst), shape, count);
    else stridedObjects<Op>(operand(a), operand(b), operand(dst), shape, count);
}

}  // namespace korm::inline KORM_VARIANT::arith
