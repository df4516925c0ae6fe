// Turns the arguments of a call back into what they stand for.
#pragma once

#include <vector>

#include "../reference/address.h"
#include "../support/call.h"

namespace kormtest {

struct DecodedCall {
    std::vector<OperandValues> operands;
    Sizes sizes;
};

DecodedCall decode(const Form& form, const std::vector<CallValue>& arguments);

}  // namespace kormtest
