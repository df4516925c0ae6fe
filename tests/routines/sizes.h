// Random sizes, mostly where kernels have paths of their own.
#pragma once

#include "../support/forms.h"
#include "../support/random.h"

namespace kormtest {

// Small objects and small counts.
Sizes randomSizes(const Form& form, Random& random);

// Sizes with an estimate just above the larger of the form's limits, the count at least `count`.
Sizes sizesBeyondLimit(const Form& form, std::int32_t count, Random& random);

// The kernel loop works through at most this many elements.
std::int64_t elementsOf(const Form& form, const Sizes& sizes);

}  // namespace kormtest
