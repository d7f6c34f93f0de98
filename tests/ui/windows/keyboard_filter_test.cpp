#include "ui/windows/keyboard_filter.h"

#include "tests/ui/windows/alert_desktop.h"

#include <gtest/gtest.h>

#include <vector>

// The rules of the filter on a small dialog whose button marks the space bar as its letter. No
// alert has such a button, but only there the system's dialog rules and the window's menu want one
// key.

namespace {

constexpr int kButton = 20;
constexpr LPARAM kWithAlt = 1 << 29 | 1;

class KeyboardFilterTest : public testing::Test {
protected:
    KeyboardFilterTest() {
        struct {
            DLGTEMPLATE dialog;
            WORD menu, kind, title;
        } description{
            {WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU, 0, 0, 0, 0, 90, 40}, 0, 0, 0};
        dialog = ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr), &description.dialog,
                                              nullptr, answer, reinterpret_cast<LPARAM>(this));
        button = ::CreateWindowExW(0, L"Button", L"& bar", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0,
                                   60, 20, dialog, reinterpret_cast<HMENU>(kButton),
                                   ::GetModuleHandleW(nullptr), nullptr);
    }
    ~KeyboardFilterTest() override { ::DestroyWindow(dialog); }

    void post(UINT message, WPARAM key, LPARAM flags) const {
        ::SetFocus(button);
        ::PostMessageW(button, message, key, flags);
        alert_desktop::pump();
    }

    HWND dialog = nullptr;
    HWND button = nullptr;
    int clicks = 0;
    int menus = 0;  // how often the window's menu was asked for

private:
    static INT_PTR CALLBACK answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) ::SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
        auto* test =
            reinterpret_cast<KeyboardFilterTest*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_COMMAND && wParam == MAKEWPARAM(kButton, BN_CLICKED)) ++test->clicks;
        if (message != WM_SYSCOMMAND || wParam != SC_KEYMENU) return FALSE;
        ++test->menus;
        return TRUE;  // the menu itself would wait for keys
    }
};

TEST_F(KeyboardFilterTest, LeavesAltAndTheSpaceBarToTheMenuOfTheWindow) {
    const KeyboardFilter filter(dialog, LetterRules::OfTheCaptions);

    post(WM_SYSCHAR, L' ', kWithAlt);

    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(menus, 1);
}

TEST_F(KeyboardFilterTest, GivesTheSpaceBarAloneToTheCaptionThatMarksIt) {
    const KeyboardFilter filter(dialog, LetterRules::OfTheCaptions);

    post(WM_CHAR, L' ', 1);

    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(menus, 0);
}

TEST_F(KeyboardFilterTest, LeavesTheSpaceBarToTheDialogWhoseLettersAreItsOwn) {
    const KeyboardFilter filter(dialog, LetterRules::OfTheDialog);

    post(WM_CHAR, L' ', 1);

    EXPECT_EQ(clicks, 0);
}

}  // namespace
