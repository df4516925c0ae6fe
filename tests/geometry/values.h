// The elements that the inputs of a call hold.
#pragma once

#include <cstdint>
#include <vector>

#include "../support/random.h"
#include "functions.h"

namespace kormtest {

enum class GeometryMood : std::uint8_t { ordinary, small, wide, mixed };

// Elements of one input of `function`.
std::vector<float> randomElements(const GeometryFunction& function, std::size_t argument, GeometryMood mood,
                                  bool clearAngles, Random& random);

GeometryMood randomMood(bool special, Random& random);

}  // namespace kormtest
