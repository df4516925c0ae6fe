// Sums, differences and products element by element, from the definition.
#pragma once

#include <vector>

#include "address.h"

namespace kormtest {

// Objects, rows and columns in ascending order; always succeeds.
std::int32_t referenceElementwise(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount);

}  // namespace kormtest
