// Objects that follow one another without gaps, as many as a vector has lanes: between memory and locals that have one object in
// each lane. Small ones come as whole vectors, whatever their size.
#pragma once

#include <cstddef>

#include "kernel/groups.h"
#include "kernel/unroll.h"
#include "kernel/vec.h"

namespace korm::inline KORM_VARIANT {

// The objects that begin at `from`, of `length` elements each.
template <int length, class S>
[[gnu::always_inline]] inline void readPacked(const std::byte* from, S (&to)[length]) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(S));
    // Each is read once: a compiler would take what two shuffles need from memory twice.
    const auto vector = [&](int v) __attribute__((always_inline)) {
        S value = load<S>(from + v * size);
        asm("" : "+x"(value));
        return value;
    };
    if constexpr (length == 1) {
        to[0] = vector(0);
    } else if constexpr (length == 2 && lanesOf<S> == 4) {
        const S first = vector(0), second = vector(1);
        to[0] = __builtin_shufflevector(first, second, 0, 2, 4, 6);
        to[1] = __builtin_shufflevector(first, second, 1, 3, 5, 7);
    } else if constexpr (length == 3 && sizeof(S) == 16) {
        unrolled<3>([&](auto v) __attribute__((always_inline)) { to[v] = vector(v); });
        splitThrees(to);
    } else if constexpr (length == 4 && lanesOf<S> == 4) {
        unrolled<4>([&](auto v) __attribute__((always_inline)) { to[v] = vector(v); });
        transpose(to);
    } else {
        constexpr std::ptrdiff_t object = length * size / lanesOf<S>;
        readRun<length>(withLanes<lanesOf<S>>([&](auto... l) __attribute__((always_inline)) {
                            return Places<const std::byte, lanesOf<S>>{{from + l * object...}};
                        }),
                        to);
    }
}

template <int length, class S>
[[gnu::always_inline]] inline void writePacked(std::byte* to, S (&from)[length]) {
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(S));
    constexpr std::ptrdiff_t object = length * size / lanesOf<S>;
    if constexpr (length == 1) {
        store(to, from[0]);
    } else if constexpr (length == 2 && sizeof(S) == 16) {
        store(to, zipLow(from[0], from[1]));
        store(to + size, zipHigh(from[0], from[1]));
    } else if constexpr (length == 3 && sizeof(S) == 16) {
        joinThrees(from);
        unrolled<3>([&](auto v) __attribute__((always_inline)) { store(to + v * size, from[v]); });
    } else if constexpr (length % 4 == 0 && lanesOf<S> == 4) {
        unrolled<length / 4>([&](auto q) __attribute__((always_inline)) {
            S block[4] = {from[4 * q], from[4 * q + 1], from[4 * q + 2], from[4 * q + 3]};
            transpose(block);
            unrolled<4>([&](auto l) __attribute__((always_inline)) { store(to + l * object + q * size, block[l]); });
        });
    } else {
        writeRun<length>(withLanes<lanesOf<S>>([&](auto... l) __attribute__((always_inline)) {
                             return Places<std::byte, lanesOf<S>>{{to + l * object...}};
                         }),
                         from);
    }
}

}  // namespace korm::inline KORM_VARIANT
