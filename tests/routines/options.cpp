#include <cstdlib>

#include "routines.h"

namespace kormtest {

Options Options::fromEnvironment() {
    Options options;
    if (const char* seed = std::getenv("KORM_TEST_SEED"); seed != nullptr)
        options.seed = std::strtoull(seed, nullptr, 0);
    if (const char* cases = std::getenv("KORM_TEST_CASES"); cases != nullptr) options.cases = std::atoi(cases);
    return options;
}

}  // namespace kormtest
