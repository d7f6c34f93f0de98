// Commits on purpose the faults that the checks of the Windows build must stop. Otherwise a check
// that lost its compiler flag or its object file would look like a program without faults.
#include <gtest/gtest.h>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

namespace {

constexpr int kCrashed = 99;                     // exit codes of the crash reporter
[[maybe_unused]] constexpr int kUndefined = 88;  // the undefined-behaviour runtime
[[maybe_unused]] constexpr int kHeap = 77;       // and the guard heap

// Volatile, so that the compiler cannot see the faults and remove them.
volatile int opaqueNumber = 0;
volatile char* volatile opaqueBytes = nullptr;

TEST(CrashReportDeathTest, NamesTheAddressesOfACrashAndFails) {
    constexpr std::intptr_t kUnmappedAddress = 16;
    opaqueBytes = reinterpret_cast<volatile char*>(kUnmappedAddress);
    EXPECT_EXIT(*opaqueBytes = 1, testing::ExitedWithCode(kCrashed), "crash c0000005, addresses: ");
}

#if defined(BEAMLINE_WINDOWS_UBSAN)
int grown(int number) {
    return number + opaqueNumber;
}

TEST(UndefinedBehaviourDeathTest, SignedOverflowIsStopped) {
    opaqueNumber = std::numeric_limits<int>::max();
    EXPECT_EXIT(std::exit(grown(1)), testing::ExitedWithCode(kUndefined), "add_overflow");
}

TEST(UndefinedBehaviourDeathTest, ShiftPastTheWidthIsStopped) {
    opaqueNumber = 40;
    EXPECT_EXIT(std::exit(1 << opaqueNumber), testing::ExitedWithCode(kUndefined),
                "shift_out_of_bounds");
}

TEST(UndefinedBehaviourDeathTest, IndexPastAnArrayIsStopped) {
    static int numbers[4] = {};
    opaqueNumber = 4;
    EXPECT_EXIT(std::exit(numbers[opaqueNumber]), testing::ExitedWithCode(kUndefined),
                "out_of_bounds");
}
#endif

#if defined(BEAMLINE_GUARD_HEAP)
TEST(GuardHeapDeathTest, OverrunStopsAtTheInstruction) {
    EXPECT_EXIT(
        {
            const std::unique_ptr<char[]> block(new char[16]);
            opaqueBytes = block.get();
            opaqueBytes[16] = 1;
        },
        testing::ExitedWithCode(kCrashed), "crash c0000005");
}

TEST(GuardHeapDeathTest, OverrunIntoTheSlackIsFoundAtTheDelete) {
    EXPECT_EXIT(
        {
            const std::unique_ptr<char[]> block(new char[15]);
            opaqueBytes = block.get();
            opaqueBytes[15] = 1;
        },
        testing::ExitedWithCode(kHeap), "written past the end");
}

TEST(GuardHeapDeathTest, UseAfterFreeStopsAtTheInstruction) {
    EXPECT_EXIT(
        {
            opaqueBytes = new char[8];
            delete[] const_cast<char*>(opaqueBytes);
            opaqueBytes[0] = 1;
        },
        testing::ExitedWithCode(kCrashed), "crash c0000005");
}

TEST(GuardHeapDeathTest, DoubleDeleteIsFound) {
    EXPECT_EXIT(
        {
            opaqueBytes = new char[8];
            delete[] const_cast<char*>(opaqueBytes);
            delete[] const_cast<char*>(opaqueBytes);
        },
        testing::ExitedWithCode(kHeap), "deleted twice");
}
#endif

}  // namespace
