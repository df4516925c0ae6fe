// Built in the place of the GLM rows where GLM isn't installed.
#include <cstdio>

#include "work.h"

void bench::addGlmCalls(std::vector<CallRow>&) { std::printf("GLM is left out: not found (Debian: libglm-dev)\n"); }
void bench::addGlmBatches(std::vector<BatchRow>&) {}
void bench::addGlmSimdBatches(std::vector<BatchRow>&) {}
