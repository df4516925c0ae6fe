// Built in the place of the cglm rows where cglm isn't installed for the target.
#include <cstdio>

#include "work.h"

void bench::addCglmCalls(std::vector<CallRow>&) { std::printf("cglm is left out: not found (Debian: libcglm-dev)\n"); }
void bench::addCglmBatches(std::vector<BatchRow>&) {}
