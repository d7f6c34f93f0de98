#include "platform/text.h"

#include "platform/trace.h"
#include "platform/xml_query.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <string>

#include <objbase.h>

namespace {

TEST(CodePageTest, ACharacterOutsideLatin1FollowsTheSystemsCodePage) {
    if (::GetACP() != 1252) FAIL() << "the tests run with code page 1252";

    EXPECT_EQ(platform::widened("\x80"), L"\u20ac");
    EXPECT_EQ(platform::narrowed(L"\u20ac"), "\x80");
}

std::string debuggerText;

LONG CALLBACK onDebuggerText(EXCEPTION_POINTERS* event) {
    constexpr DWORD kPrinted = 0x40010006;  // the exception that OutputDebugStringA raises
    const EXCEPTION_RECORD& record = *event->ExceptionRecord;
    if (record.ExceptionCode != kPrinted) return EXCEPTION_CONTINUE_SEARCH;
    debuggerText = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(DebugOutputTest, TheDebuggerGetsTheTextAsItIs) {
    void* const handler = ::AddVectoredExceptionHandler(1, &onDebuggerText);

    platform::debugOutput("EWSIntf::get_page: text\n");

    ::RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(debuggerText, "EWSIntf::get_page: text\n");
}

TEST(XmlApartmentTest, AThreadWithAnotherComModeMayAskAndKeepsItsMode) {
    const HMODULE ole = ::LoadLibraryW(L"ole32.dll");
    const auto initialize = reinterpret_cast<decltype(&::CoInitializeEx)>(
        reinterpret_cast<void*>(::GetProcAddress(ole, "CoInitializeEx")));
    const auto uninitialize = reinterpret_cast<decltype(&::CoUninitialize)>(
        reinterpret_cast<void*>(::GetProcAddress(ole, "CoUninitialize")));
    ASSERT_EQ(initialize(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    std::string out;

    EXPECT_TRUE(platform::queryXml("<a>1</a>", "//a", out));

    EXPECT_EQ(out, "1");
    EXPECT_EQ(initialize(nullptr, COINIT_APARTMENTTHREADED), S_FALSE) << "still initialised, once";
    uninitialize();
    uninitialize();
}

}  // namespace
