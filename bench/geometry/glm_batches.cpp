#include "glm_batches.h"

void bench::addGlmBatches(std::vector<BatchRow>& rows) { addLoopsOf(rows, "glm"); }
