// One case made of bytes: which function, good arguments or bad ones, sizes, layouts, strides, places and values.
#pragma once

#include <cstdint>
#include <span>

#include "../support/verdict.h"

namespace kormtest {

// Calls the library and the reference and compares them. Any bytes are a case; where they end, the choices that remain
// follow from the first two. The message of a failure begins with the name of the function.
Verdict runFuzzCase(std::span<const std::uint8_t> bytes);

}  // namespace kormtest
