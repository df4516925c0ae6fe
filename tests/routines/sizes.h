// Sizes of calls: random ones, mostly where kernels have paths of their own, and ones at a limit.
#pragma once

#include <vector>

#include "../support/forms.h"
#include "../support/random.h"

namespace kormtest {

// Small objects and small counts.
Sizes randomSizes(const Form& form, Random& random);

// Sizes with an estimate just above the larger of the form's limits, the count at least `count`.
Sizes sizesBeyondLimit(const Form& form, std::int32_t count, Random& random);

// About what a kernel has to do for such a call.
std::int64_t workOf(const Form& form, const Sizes& sizes);

// Does the estimate depend on the number of an object's elements and not on their shape?
bool estimatesByArea(const Form& form);

// Objects that can be brought close to an estimate by their number, the same list at each call.
std::vector<Sizes> shapesUpTo(const Form& form, std::int32_t estimate);

// The largest count whose estimate stays at or below the limit, 0 if there is none.
std::int32_t lastSerialCount(const Form& form, Sizes sizes, std::int32_t limit);

// Is there a call, not too long, with just this estimate?
bool estimateOccurs(const Form& form, std::int32_t estimate);

// Longer calls show nothing at a limit that shorter ones don't.
inline constexpr std::int64_t longestWork = 100000;

}  // namespace kormtest
