#include "platform/library_search.h"

#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

bool isRefused = false;

BOOL WINAPI answer(DWORD) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return isRefused ? FALSE : TRUE;
}

}  // namespace

// In this program every call of SetDefaultDllDirectories goes through this pointer instead of the
// one in the system's import library.
extern "C" {
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's name
decltype(&::SetDefaultDllDirectories) __imp_SetDefaultDllDirectories = &answer;
}

namespace {

TEST(RefusedLibrarySearchTest, ARefusalOfTheSystemIsTracedWithItsNumber) {
    isRefused = true;
    const TraceLines traced;

    platform::keepLibrarySearchToOwnAndSystemFolder();

    EXPECT_TRUE(traced.contains("TERNA - libraries of other folders are not kept out, error 87"));
}

TEST(RefusedLibrarySearchTest, NothingIsTracedWhenTheSystemAgrees) {
    isRefused = false;
    const TraceLines traced;

    platform::keepLibrarySearchToOwnAndSystemFolder();

    EXPECT_TRUE(traced.all().empty());
}

}  // namespace
