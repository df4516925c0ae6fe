// Eigenvalues and eigenvectors of symmetric matrices, step by step as they are defined.
#pragma once

#include <vector>

#include "../address.h"

namespace kormtest {

std::int32_t referenceEigenValuesSym(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                     std::int32_t first, std::int32_t runCount);
std::int32_t referenceEigenValuesVectorsSym(const Form& form, const std::vector<OperandValues>& operands,
                                            const Sizes& sizes, std::int32_t first, std::int32_t runCount);

}  // namespace kormtest
