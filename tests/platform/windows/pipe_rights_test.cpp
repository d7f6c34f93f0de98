#include "platform/pipe.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

DWORD askedAttributes;

HANDLE WINAPI recordAttributes(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD,
                               DWORD attributes, HANDLE) {
    askedAttributes = attributes;
    return INVALID_HANDLE_VALUE;
}

}  // namespace

// In this program every call of CreateFileW goes through this pointer instead of the one in the
// system's import library. The test must look at the arguments of the call, because under Wine the
// server of a pipe cannot find out what the client has allowed it.
extern "C" {
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's name
decltype(&::CreateFileW) __imp_CreateFileW = &recordAttributes;
}

namespace {

constexpr DWORD kOnlyIdentify = SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION;

TEST(PipeRightsTest, AServerMayIdentifyTheUserButNotActAsTheUser) {
    static_cast<void>(platform::openPipeForReading(L"\\\\.\\pipe\\any"));
    EXPECT_EQ(askedAttributes, kOnlyIdentify);

    askedAttributes = 0;
    static_cast<void>(platform::openPipeForWriting(L"\\\\.\\pipe\\any"));
    EXPECT_EQ(askedAttributes, kOnlyIdentify);
}

}  // namespace
