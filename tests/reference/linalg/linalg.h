// LU decomposition, solve, inverse and determinant as whole forms: which path a call takes, and what it leaves.
#pragma once

#include <vector>

#include "../address.h"

namespace kormtest {

std::int32_t referenceDet(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                          std::int32_t first, std::int32_t runCount);
std::int32_t referenceLUDecomp(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                               std::int32_t first, std::int32_t runCount);
std::int32_t referenceLUBackSubst(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                                  std::int32_t first, std::int32_t runCount);
std::int32_t referenceInvert(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes,
                             std::int32_t first, std::int32_t runCount);

// --- The paths, by form and order ---

enum class DetPath : std::uint8_t { elimination, closed, extended };
DetPath detPath(const Form& form, const std::vector<OperandValues>& operands, const Sizes& sizes, std::int32_t object,
                std::int32_t first, std::int32_t runCount);

enum class InvertPath : std::uint8_t { one, general, adjugate, block };
InvertPath invertPath(const Form& form, bool plain, std::int32_t order);
// Through the processor's approximate reciprocal, whose bits differ between processors.
bool invertApproximates(const Form& form, bool plain, std::int32_t order);
// A determinant below it counts as singular; of the closed forms only.
long double invertThreshold(const Form& form, bool plain, std::int32_t order);

}  // namespace kormtest
