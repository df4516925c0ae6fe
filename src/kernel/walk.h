// Elements at a fixed distance, one after the other.
#pragma once

#include <cstddef>

#include "entry/variant.h"
#include "kernel/known.h"
#include "kernel/unroll.h"

namespace korm::inline KORM_VARIANT {

// The compiler mustn't know that it has seen the distance before: it would give each of its multiples a register and take
// those of other values.
template <class Address>
struct ElementWalk {
    Address at;
    std::ptrdiff_t step;

    template <int n>
    [[gnu::always_inline]] Address address() {
        static_assert(n <= 2, "an address without a further instruction");
        step = opaque(step);
        return at + n * step;
    }
    [[gnu::always_inline]] void moveOn(int n) {
        step = opaque(step);
        at = opaque(at + n * step);
    }
};
template <class Address>
ElementWalk(Address, std::ptrdiff_t) -> ElementWalk<Address>;

// Calls f with 1 or 2 as a type until n are done. A loop of one or two is about as long as a line of code, and takes up to 1.6
// times as long where its last jump is in the next; that of four takes its time wherever it lies. What is left of a round stands
// in the way to the loop: behind two jumps it took a tenth of the time of vectors of 5 to 15.
template <class F>
[[gnu::always_inline]] inline void inRounds(std::ptrdiff_t n, const F& f) {
    if (n & 1) [[likely]]
        f(Int<1>{});
    if (n & 2) [[likely]]
        f(Int<2>{});
    for (n &= -4; n != 0; n -= 4) {
        f(Int<2>{});
        f(Int<2>{});
    }
}

}  // namespace korm::inline KORM_VARIANT
