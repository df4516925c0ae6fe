// The tests' own korGetMaxCacheSizeB. The executable exports it, so the library's calls land here.
#pragma once

#include <cstdint>

namespace kormtest {

// Sets the answer and the status that comes with it, of the calling thread.
void scriptCacheSize(std::int32_t bytes, std::int32_t status = 0);

// How often this thread was asked since its answer was set.
int cacheSizeQuestions();

}  // namespace kormtest
