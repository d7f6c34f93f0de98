#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

namespace {

TEST(LastResortDeathTest, AnIndexOutOfRangeSaysWhereAndEndsTheProcess) {
    std::vector<int> numbers(2);
    volatile std::size_t index = 2;

    EXPECT_DEATH(numbers[index] = 1, "stl_vector.*: .*operator.*: .*size");
}

TEST(LastResortDeathTest, AnExceptionWithoutHandlerSaysSoAndEndsTheProcess) {
    const std::function<void()> fail = [] { throw std::runtime_error("nobody waits for this"); };
    const auto letItOut = [&]() noexcept { fail(); };

    EXPECT_DEATH(letItOut(), "an exception found no handler");
}

}  // namespace
