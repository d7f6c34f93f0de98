// schedule_tests [--replay=CHOICES | --random=COUNT [--seed=FIRST]]: see docs/verification.md.
#include "tests/support/exploring/exploration.h"

#include <gtest/gtest.h>

#include <cstdio>

int main(int argumentCount, char** arguments) {
    exploring::readOptions(argumentCount, arguments);
    testing::InitGoogleTest(&argumentCount, arguments);
    const int result = RUN_ALL_TESTS();
    std::printf("orders of threads played: %ld\n", exploring::schedulesPlayed());
    return result;
}
