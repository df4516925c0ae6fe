#define KORM_BENCH_SIMD
#include "glm_batches.h"

void bench::addGlmSimdBatches(std::vector<BatchRow>& rows) { addLoopsOf(rows, "glmSimd"); }
