// Products of matrices, and of matrices with vectors: sums of products in the order that each element gets.
#pragma once

#include <vector>

#include "address.h"
#include "sums.h"

namespace kormtest {

class Random;

// Which sum row i of the result gets, from the tables of the definition.
Sum productSum(const Form& form, bool plain, const Sizes& sizes, std::int32_t i);

// Always succeeds.
std::int32_t referenceProducts(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount);

// Values that tell orders apart: magnitudes that lose digits of each other, sums that cancel, zeros of either
// sign. `special` adds infinities, NaN and numbers at both ends of the range.
void fillSums(const Form& form, std::vector<OperandValues>& operands, const Sizes& sizes, bool special, Random& values);

}  // namespace kormtest
