#include "platform/process.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/simulated/process_ended.h"
#endif

namespace {

// The only call whose implementations differ: the simulated one throws instead of ending the
// process, so that the test goes on.
TEST(ProcessDeathTest, TheProcessEndsWithExactlyTheCode) {
#ifdef _WIN32
    EXPECT_EXIT(platform::endProcess(7), testing::ExitedWithCode(7), "");
    EXPECT_EXIT(platform::endProcess(platform::kInvalidParameterExit),
                testing::ExitedWithCode(static_cast<int>(platform::kInvalidParameterExit)), "");
#else
    try {
        platform::endProcess(platform::kInvalidParameterExit);
        FAIL() << "endProcess returned";
    } catch (const platform::ProcessEnded& end) {
        EXPECT_EQ(end.code, platform::kInvalidParameterExit);
    }
#endif
}

}  // namespace
