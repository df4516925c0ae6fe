// Traces and Frobenius norms of matrices, from their definitions.
#pragma once

#include <vector>

#include "address.h"
#include "sums.h"

namespace kormtest {

// The order in which the diagonal is added.
Sum traceSum(const Form& form, bool plain, const Sizes& sizes, std::int32_t object);

// Both do objects in ascending order and always succeed.
std::int32_t referenceTrace(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                            std::int32_t first, std::int32_t runCount);
std::int32_t referenceFrobNorm(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount);

}  // namespace kormtest
