#include "ui/windows/input_methods.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <imm.h>

namespace {

struct Visit {
    bool keepsOut;
    bool hasInputMethod;
};

DWORD WINAPI makeWindow(void* parameter) {
    auto& visit = *static_cast<Visit*>(parameter);
    if (visit.keepsOut) keepInputMethodsOut();
    const HWND window = ::CreateWindowW(L"BUTTON", L"OK", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                        ::GetModuleHandleW(nullptr), nullptr);
    visit.hasInputMethod = ::ImmGetDefaultIMEWnd(window) != nullptr;
    const BOOL made = ::DestroyWindow(window);
    return made ? 0 : 1;
}

// Input methods belong to a thread, so each window is created on a thread of its own.
bool windowHasInputMethod(bool keepsOut) {
    Visit visit{keepsOut, !keepsOut};
    const HANDLE thread = ::CreateThread(nullptr, 0, &makeWindow, &visit, 0, nullptr);
    EXPECT_EQ(::WaitForSingleObject(thread, 60000), WAIT_OBJECT_0);
    DWORD failed = 1;
    ::GetExitCodeThread(thread, &failed);
    EXPECT_EQ(failed, 0U);
    ::CloseHandle(thread);
    return visit.hasInputMethod;
}

TEST(InputMethodsTest, AWindowHasOneUnlessItsThreadKeepsThemOut) {
    EXPECT_TRUE(windowHasInputMethod(false));
    EXPECT_FALSE(windowHasInputMethod(true));
}

}  // namespace
