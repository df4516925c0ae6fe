#include <gtest/gtest.h>

#include "support/process.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    kormtest::prepareProcess();
    return RUN_ALL_TESTS();
}
