// How alerts look on the screen.
#include "tests/ui/windows/alert_window_fixture.h"

#include "tests/ui/windows/window_order.h"
#include "ui/alert_keys.h"

#include <utility>

namespace {

constexpr COLORREF kOkBlue = RGB(26, 95, 168);

TEST_F(AlertWindowTest, IsShownInFrontWithItsTextsAndIcons) {
    open(10);

    EXPECT_TRUE(::IsWindowVisible(alert->window()));
    EXPECT_EQ(textOf(1004), alert_desktop::text(1008));
    EXPECT_EQ(textOf(1012), alert_desktop::text(125));
    EXPECT_NE(::SendMessageW(alert->window(), WM_GETICON, ICON_BIG, 0), 0);
    EXPECT_NE(::SendMessageW(alert->window(), WM_GETICON, ICON_SMALL, 0), 0);
}

TEST_F(AlertWindowTest, LeavesTheTextsOfItsTemplateWhereItHasNone) {
    constexpr wchar_t kOfTheTemplate[] = L"of the template";
    arbor::PropertyHolder description;
    description.setInt(alert_key::kTemplate, 9003);
    description.setPointer(alert_key::kModule, ::GetModuleHandleW(nullptr));

    alert = std::make_unique<DefaultStatusDialog>(description, true);

    ASSERT_NE(alert->window(), nullptr);
    EXPECT_EQ(textOf(1004), kOfTheTemplate);
    EXPECT_EQ(textOf(1012), kOfTheTemplate);
    EXPECT_EQ(textOf(132), kOfTheTemplate);
}

HWND otherProgram = nullptr;

// Another program comes to the front while the alert opens, and keeps the user's attention.
BOOL WINAPI refuseTheForeground(HWND) {
    ::SetWindowPos(otherProgram, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return FALSE;
}

TEST_F(AlertWindowTest, IsPutOnTopWhereTheSystemRefusesTheForeground) {
    otherProgram = ::CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                     nullptr, nullptr, nullptr, nullptr);
    setForegroundFunction(&refuseTheForeground);

    open(0);

    EXPECT_TRUE(::IsWindowVisible(alert->window()));
    EXPECT_EQ(::GetWindowLongPtrW(alert->window(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_TRUE(isAbove(alert->window(), otherProgram));
    ::DestroyWindow(otherProgram);
}

TEST_F(AlertWindowTest, PaintsInSystemColoursUnderHighContrast) {
    setHighContrastQuery([] { return true; });

    open(0);

    EXPECT_EQ(pixel(600, 4), ::GetSysColor(COLOR_WINDOW));
    EXPECT_NE(pixel(630, 470), kOkBlue);
    EXPECT_EQ(pixel(400, 300), ::GetSysColor(COLOR_3DFACE));
}

TEST_F(AlertWindowTest, SizesItsButtonsToTheirPictures) {
    open(0);
    alert_desktop::pumpFor(50);

    for (const auto& [id, width] : {std::pair{130, 120}, {131, 120}, {1018, 220}, {134, 220}}) {
        RECT size{};
        ::GetClientRect(control(id), &size);
        EXPECT_EQ(size.right, width) << id;
        EXPECT_EQ(size.bottom, 32) << id;
    }
}

TEST_F(AlertWindowTest, BecomesCompact) {
    open(27);
    const RECT before = placeOf(130);

    compactAlertWindow(alert->window(), true);

    RECT client{};
    ::GetClientRect(alert->window(), &client);
    EXPECT_EQ(client.bottom, 205);
    EXPECT_EQ(placeOf(130).left, before.left);
    EXPECT_EQ(placeOf(130).top, before.top - 330);
    EXPECT_FALSE(::IsWindowVisible(control(1018)));
    EXPECT_FALSE(::IsWindowVisible(control(134)));
    EXPECT_TRUE(::IsWindowVisible(alert->window()));
}

}  // namespace
