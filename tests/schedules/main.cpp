// schedule_tests [--replay=CHOICES | --random=COUNT [--seed=FIRST]]: see docs/verification.md.
#include "tests/support/exploring/exploration.h"

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments) {
    exploring::readOptions(argumentCount, arguments);
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
