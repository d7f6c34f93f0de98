// Each commits on purpose what the sanitizers of the Winelib build must stop, where our code does
// its work: in a dialog procedure, on the stack of a thread, on the heap.
#include "platform/lock.h"
#include "platform/thread.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <cstdio>
#include <limits>
#include <memory>

namespace {

// What the compiler must not see through.
volatile int opaqueNumber = 0;
volatile int* volatile opaqueNumbers = nullptr;

void sayThatItSurvived() {
    std::puts("the planted fault was not found");
}

INT_PTR CALLBACK overrunningProcedure(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return FALSE;
    constexpr int kCount = 4;
    const std::unique_ptr<volatile int[]> numbers(new volatile int[kCount]);
    opaqueNumbers = numbers.get();
    opaqueNumbers[kCount] = 1;
    sayThatItSurvived();
    ::EndDialog(dialog, 1);
    return TRUE;
}

TEST(Canary, OverrunInADialogProcedure) {
    struct {
        DLGTEMPLATE dialog;
        WORD menu, windowClass, title;
    } description = {};
    description.dialog.style = WS_POPUP | WS_CAPTION;

    EXPECT_EQ(
        ::DialogBoxIndirectParamW(nullptr, &description.dialog, nullptr, &overrunningProcedure, 0),
        1);
}

TEST(Canary, UseAfterFree) {
    auto number = std::make_unique<volatile int>(1);
    volatile int* const gone = number.get();
    number.reset();

    *gone = 2;

    sayThatItSurvived();
    SUCCEED();
}

std::uint32_t overrunningThread(void*) {
    constexpr int kCount = 4;
    volatile int numbers[kCount] = {};
    opaqueNumbers = numbers;
    opaqueNumbers[kCount] = 1;
    sayThatItSurvived();
    return 0;
}

TEST(Canary, OverrunOnTheStackOfAThread) {
    std::uint32_t id = 0;
    const platform::NativeHandle thread = platform::startThread(&overrunningThread, nullptr, id);

    EXPECT_EQ(platform::waitForThread(thread, platform::kNoTimeout), 0U);
    platform::closeThread(thread);
}

TEST(Canary, SignedOverflow) {
    opaqueNumber = std::numeric_limits<int>::max();

    opaqueNumber = opaqueNumber + 1;

    sayThatItSurvived();
    SUCCEED();
}

}  // namespace
