// Copy, Extract, LoadIdentity and Transpose: element by element, in the order that fixes what overlapping operands get.
#pragma once

#include <vector>

#include "address.h"

namespace kormtest {

// Each always succeeds.
using MovementReference = std::int32_t(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                       std::int32_t first, std::int32_t runCount);

MovementReference referenceCopy;
MovementReference referenceExtract;
MovementReference referenceLoadIdentity;
MovementReference referenceTranspose;

}  // namespace kormtest
