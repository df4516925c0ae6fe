#include <gtest/gtest.h>

#include <cstdlib>

#include "support/fault.h"

int main(int argc, char** argv) {
    // Teams larger than the machine must not spin while they wait for one another.
    setenv("KMP_BLOCKTIME", "0", 0);
    setenv("OMP_WAIT_POLICY", "passive", 0);
    testing::InitGoogleTest(&argc, argv);
    kormtest::installFaultHandlers();
    return RUN_ALL_TESTS();
}
