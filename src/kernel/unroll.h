// Loops and choices that are gone when the program runs.
#pragma once

#include <type_traits>
#include <utility>

#include "entry/variant.h"

namespace korm::inline KORM_VARIANT {

// A small number as a type.
template <int value>
using Int = std::integral_constant<int, value>;

// Calls f for 0 to n - 1 as types, so that what it does with them is known when compiling.
template <int n, class F>
[[gnu::always_inline]] inline void unrolled(const F& f) {
    [&]<int... i>(std::integer_sequence<int, i...>) __attribute__((always_inline)) { (f(Int<i>{}), ...); }
    (std::make_integer_sequence<int, n>{});
}

// Orders 3 to 6 have code of their own nearly everywhere: calls `sized` with the order as a type, else `any`.
template <class Sized, class Any>
[[gnu::always_inline]] inline auto forOrder(int order, const Sized& sized, const Any& any) {
    switch (order) {
        case 3: return sized(Int<3>{});
        case 4: return sized(Int<4>{});
        case 5: return sized(Int<5>{});
        case 6: return sized(Int<6>{});
        default: return any();
    }
}

}  // namespace korm::inline KORM_VARIANT
