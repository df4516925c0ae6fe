// What the compiler knows of a number: its value already, or not even where it came from.
#pragma once

#include <cstddef>
#include <type_traits>

#include "entry/variant.h"

namespace korm::inline KORM_VARIANT {

// A size or distance that is known when compiling, where others are std::ptrdiff_t.
template <std::ptrdiff_t value>
using Known = std::integral_constant<std::ptrdiff_t, value>;

template <class Number>
inline constexpr bool isKnown = !std::is_same_v<Number, std::ptrdiff_t>;

// Hides where a pointer or number comes from. Without it the compiler forms the addresses of many elements ahead, one
// from the other, and keeps on the stack what there are no registers for.
template <class P>
[[gnu::always_inline]] inline P opaque(P value) {
    asm("" : "+r"(value));
    return value;
}

}  // namespace korm::inline KORM_VARIANT
