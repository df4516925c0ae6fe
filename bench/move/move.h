#pragma once

#include "../harness/operands.h"

namespace bench {

// Transposition of one matrix.
void measureMatrices();

}  // namespace bench
