#include "ui/windows/display_settings.h"

#include "tests/ui/windows/alert_desktop.h"
#include "tests/ui/windows/window_order.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT kStays = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;

BOOL WINAPI refuse(HWND) {
    return FALSE;
}
BOOL WINAPI accept(HWND) {
    return TRUE;
}

// Two windows, of which the second covers the first.
class BringToFrontTest : public testing::Test {
protected:
    BringToFrontTest() : below(makeWindow()), above(makeWindow()) {
        ::SetWindowPos(above, HWND_TOP, 0, 0, 0, 0, kStays);
    }
    ~BringToFrontTest() override {
        setForegroundFunction(nullptr);
        ::DestroyWindow(below);
        ::DestroyWindow(above);
    }
    static HWND makeWindow() {
        return ::CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                 nullptr, nullptr, nullptr);
    }
    HWND below, above;
};

TEST_F(BringToFrontTest, RaisesAWindowThatMayNotHaveTheForeground) {
    setForegroundFunction(&refuse);
    ASSERT_TRUE(isAbove(above, below));
    RECT before{};
    ::GetWindowRect(below, &before);

    bringToFront(below);

    RECT after{};
    ::GetWindowRect(below, &after);
    EXPECT_TRUE(isAbove(below, above));
    EXPECT_TRUE(::EqualRect(&before, &after));
}

TEST_F(BringToFrontTest, DoesNotKeepTheWindowAboveAllOthers) {
    setForegroundFunction(&refuse);

    bringToFront(below);

    EXPECT_EQ(::GetWindowLongPtrW(below, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    ::SetWindowPos(above, HWND_TOP, 0, 0, 0, 0, kStays);
    EXPECT_TRUE(isAbove(above, below));
}

TEST_F(BringToFrontTest, ChangesNoOrderWhereTheSystemHasGivenTheForeground) {
    setForegroundFunction(&accept);

    bringToFront(below);

    EXPECT_TRUE(isAbove(above, below));
}

TEST_F(BringToFrontTest, AsksTheSystemByItself) {
    bringToFront(below);

    EXPECT_EQ(::GetForegroundWindow(), below);
}

TEST(MirroredDesktopTest, IsOneThatReadsFromRightToLeft) {
    EXPECT_FALSE(desktopIsMirrored());
    const alert_desktop::MirroredDesktop desktop;
    EXPECT_TRUE(desktopIsMirrored());

    const HWND window = ::FindWindowW(L"Progman", nullptr);
    ::SetWindowLongPtrW(window, GWL_EXSTYLE, WS_EX_TOOLWINDOW);

    EXPECT_FALSE(desktopIsMirrored());
}

}  // namespace
