// General eigenvalues and eigenvectors as whole forms.
#pragma once

#include <vector>

#include "../address.h"

namespace kormtest {

std::int32_t referenceEigenValues(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount);
std::int32_t referenceEigenVectors(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                   std::int32_t first, std::int32_t runCount);

}  // namespace kormtest
