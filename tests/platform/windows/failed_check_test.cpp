#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(FailedCheckDeathTest, AnIndexOutOfRangeSaysWhereAndEndsTheProcess) {
    std::vector<int> numbers(2);
    volatile std::size_t index = 2;

    EXPECT_DEATH(numbers[index] = 1, "stl_vector.*: .*operator.*: .*size");
}

}  // namespace
