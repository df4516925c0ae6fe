// Combinations, dot products, norms and cross products of vectors, from their definitions.
#pragma once

#include <vector>

#include "address.h"
#include "sums.h"

namespace kormtest {

// The order in which the products of a dot product, or the squares of a norm, are added.
Sum reductionSum(const Form& form, bool plain, const Sizes& sizes, std::int32_t object);

// All of them do objects in ascending order and always succeed.
std::int32_t referenceCombination(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount);
std::int32_t referenceReduction(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                std::int32_t first, std::int32_t runCount);
std::int32_t referenceCrossProduct(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                   std::int32_t first, std::int32_t runCount);

}  // namespace kormtest
