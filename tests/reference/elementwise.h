// Sums, differences and products element by element, from the definition.
#pragma once

#include <vector>

#include "address.h"

namespace kormtest {

// Does what the form should do on real memory: objects, rows and columns in ascending order.
void referenceElementwise(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes);

}  // namespace kormtest
