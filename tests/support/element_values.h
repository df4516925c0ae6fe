// Bit patterns of elements: ordinary numbers, wide ones, and everything that is special.
#pragma once

#include <cstddef>
#include <cstdint>

#include "forms.h"
#include "random.h"

namespace kormtest {

enum class Mood : std::uint8_t {
    ordinary,  // around 1, so that sums keep digits of both sides
    wide,      // any finite bits
    mixed,     // ordinary, wide and special ones side by side
};

bool isNan(Type type, const std::byte* element);

// NaN is drawn only where allowed: which of two NaN payloads a sum keeps is the processor's choice by
// operand position, which a compiler may swap.
std::uint64_t randomElement(Type type, Mood mood, bool mayBeNan, Random& random);

}  // namespace kormtest
