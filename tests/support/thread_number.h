// The tests' own ownGetNumThreads. The executable exports it, so the library's calls land here.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace kormtest {

// Sets the answers to come, in order; the last one is repeated. Each calling thread has its own
// script and its own counter, since callers of the library are independent of one another.
void scriptThreadNumbers(std::initializer_list<std::int32_t> answers);

// How often this thread asked since its script was set.
int threadNumberQuestions();

}  // namespace kormtest
