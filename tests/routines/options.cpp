#include <cstdlib>

#include "routines.h"

namespace kormtest {

Options Options::fromEnvironment() {
    Options options;
    if (const char* seed = std::getenv("KORM_TEST_SEED"); seed != nullptr)
        options.seed = std::strtoull(seed, nullptr, 0);
    if (const char* percent = std::getenv("KORM_TEST_PERCENT"); percent != nullptr)
        options.percent = std::atoi(percent);
    return options;
}

}  // namespace kormtest
