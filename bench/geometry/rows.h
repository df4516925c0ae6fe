// What the program measures, in a file for each.
#pragma once

#include "../harness/operands.h"

namespace bench {

void measureCalls();
void measureBatches();

}  // namespace bench
