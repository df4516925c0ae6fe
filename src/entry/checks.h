// The argument checks that entry functions call, and the arithmetic of their estimates.
//
// Checks that give the same status are tested together and cost one branch: the small calls that this
// library lives on take about as long as their checks. A combined test may call in the exact one for
// values that no sane call has, but never the other way round.
#pragma once

#include <cfloat>
#include <cstddef>
#include <cstdint>

#include "entry/variant.h"
#include "korm.h"

static_assert(FLT_EVAL_METHOD == 0, "korm: every operation is rounded to its own type; build with SSE arithmetic");

namespace korm::inline KORM_VARIANT {

// The least of several numbers tells what one test of each would, in one branch and by conditional moves.
template <class Number>
inline Number least(Number number) {
    return number;
}

template <class Number, class... Numbers>
inline Number least(Number first, Number second, Numbers... rest) {
    return least(second < first ? second : first, rest...);
}

// In 64 bits, only null and the upper half of the address space, where no program's operands lie, have the sign set in
// the address less one. In 32 bits operands lie anywhere.
template <class... Pointers>
inline bool anyNull(Pointers... pointers) {
    if constexpr (sizeof(std::uintptr_t) == 8)
        if (((... | (reinterpret_cast<std::uintptr_t>(pointers) - 1)) >> 63) == 0) [[likely]]
            return false;
    return least(reinterpret_cast<std::uintptr_t>(pointers)...) == 0;
}

template <class... Numbers>
inline bool anyBelowOne(Numbers... numbers) {
    return least(numbers...) < 1;
}

inline constexpr std::uint32_t bitsOf(std::int32_t number) { return static_cast<std::uint32_t>(number); }

// A stride is valid if it is a positive multiple of the element size. Subtracting that size leaves the
// low bits alone and turns 0 and nearly all that is negative negative; only near the least integer it
// wraps, to above 2^30. So one mask over all differences finds every call that may be wrong, and
// strides of 1 GiB and more are looked at once again, one by one.
template <class T, class... Strides>
inline bool anyBadStride(Strides... strides) {
    constexpr std::uint32_t size = sizeof(T);
    constexpr std::uint32_t suspicious = 0xC0000000U | (size - 1);
    if (((... | (bitsOf(strides) - size)) & suspicious) == 0) [[likely]]
        return false;
    return (... || (strides < 1 || (bitsOf(strides) & (size - 1)) != 0));
}

// A valid offset is 0 or a positive multiple of the element size.
template <class T, class... Offsets>
inline bool anyBadOffset(Offsets... offsets) {
    constexpr std::uint32_t forbidden = 0x80000000U | (sizeof(T) - 1);
    return ((... | bitsOf(offsets)) & forbidden) != 0;
}

// Do the elements of every operand touch?
template <class T, class... ElementStrides>
inline bool allAdjacent(ElementStrides... elementStrides) {
    return (... && (elementStrides == std::int32_t{sizeof(T)}));
}

// A work estimate: 32-bit arithmetic that wraps and is compared as a signed number, so that an estimate
// that overflows counts as whatever it wraps to, and a negative one as small.
class Estimate {
public:
    constexpr Estimate(std::int32_t number) : bits(bitsOf(number)) {}

    friend constexpr Estimate operator+(Estimate a, Estimate b) { return Estimate(a.bits + b.bits); }
    friend constexpr Estimate operator*(Estimate a, Estimate b) { return Estimate(a.bits * b.bits); }
    friend constexpr bool operator<(Estimate a, Estimate b) { return a.number() < b.number(); }
    friend constexpr bool operator<=(Estimate a, Estimate b) { return a.number() <= b.number(); }

private:
    constexpr explicit Estimate(std::uint32_t bitsOfNumber) : bits(bitsOfNumber) {}
    constexpr std::int32_t number() const { return static_cast<std::int32_t>(bits); }

    std::uint32_t bits;
};

}  // namespace korm::inline KORM_VARIANT
