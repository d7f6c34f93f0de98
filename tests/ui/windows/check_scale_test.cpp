#include "tests/ui/windows/scaled_layout.h"
#include "tests/ui/windows/window_pixels.h"
#include "ui/validation_dialog.h"

#include <map>
#include <string>

namespace {

constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066, kLearnMore = 1051;

class CheckScaleTest : public AlertScaleTest {
protected:
    void showCheck() {
        showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
        check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
        ASSERT_NE(check, nullptr);
        alert_desktop::pump();
    }
    ~CheckScaleTest() override {
        if (check != nullptr) ::DestroyWindow(check);
    }

    HWND check = nullptr;
};

TEST_F(CheckScaleTest, TheCartridgeCheckOpensInTheMiddleOfTheScreen) {
    showCheck();

    const RECT place = rectOf(check);
    EXPECT_NEAR(place.left + place.right, screenSize().cx, 2);
    EXPECT_NEAR(place.top + place.bottom, screenSize().cy, 2);
}

TEST_F(CheckScaleTest, TheCartridgeCheckFollowsTheScale) {
    const std::map<int, Place> places = design(153);
    showCheck();

    atEveryScale(check, [&](int scale) {
        const Layout layout = layoutOf(check);
        for (const int id : {0, 1028, 1029, 1036, 1063}) {
            EXPECT_EQ(layout.at(id).place, at(places.at(id), scale)) << id << " at " << scale;
        }
        EXPECT_EQ(layout.at(1028).fontHeight, -::MulDiv(8, scale, 72));
        // The two halves of the learn-more line touch, whatever the width of the first one is.
        const Place link = layout.at(kLearnMore).place;
        const Place rest = layout.at(1031).place;
        EXPECT_EQ(rest.left, link.left + link.width + at(4, scale)) << scale;
        EXPECT_EQ(rest.left + rest.width,
                  at(places.at(1031).left, scale) + at(places.at(1031).width, scale));
        EXPECT_LT(link.width, at(100, scale));
        const auto icon = ::SendMessageW(check, WM_GETICON, ICON_BIG, 0);
        EXPECT_EQ(iconSize(reinterpret_cast<HICON>(icon)).cx, at(32, scale)) << scale;
    });
}

bool hasChangedEarly = false;

LRESULT CALLBACK changeScaleBeforeTheFirstControl(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND && !hasChangedEarly) {
        const CREATESTRUCTW& made = *reinterpret_cast<const CBT_CREATEWNDW*>(lParam)->lpcs;
        if ((made.style & WS_CHILD) != 0) {
            hasChangedEarly = true;
            changeScale(made.hwndParent, 144);
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(CheckScaleTest, AChangeOfScaleBeforeTheCheckHasControlsLeavesNoneBehind) {
    const std::map<int, Place> places = design(153);
    hasChangedEarly = false;
    const HHOOK hook = ::SetWindowsHookExW(WH_CBT, changeScaleBeforeTheFirstControl, nullptr,
                                           ::GetCurrentThreadId());
    showCheck();
    ::UnhookWindowsHookEx(hook);

    EXPECT_TRUE(hasChangedEarly);
    atEveryScale(check, [&](int scale) {
        const Layout layout = layoutOf(check);
        for (const int id : {0, 1028, 1029, 1036, 1063})
            EXPECT_EQ(layout.at(id).place, at(places.at(id), scale)) << id << " at " << scale;
    });
}

TEST_F(CheckScaleTest, TheBannerOfTheCartridgeCheckFollowsTheScale) {
    constexpr Rgb kBannerBlue = 0x0000C8;
    showCheck();

    for (const int scale : {96, 192}) {
        changeScale(check, scale);
        alert_desktop::pumpFor(50);
        const window_pixels::Pixels shown = window_pixels::shownBy(check);
        int blue = 0;  // at the left edge
        for (int y = 0; y < shown.size.height; ++y)
            blue += shown.colours[static_cast<std::size_t>(y * shown.size.width)] == kBannerBlue;

        EXPECT_EQ(blue, at(46, scale));
        EXPECT_EQ(whiteBox(check, at(10, scale)).left, at(19, scale)) << scale;
    }
}

TEST_F(CheckScaleTest, TheDetailsOfTheCheckFollowTheScaleAndStayOnTheScreen) {
    const std::map<int, Place> places = design(154);
    showCheck();
    const SIZE screen = screenSize();
    ::SetWindowPos(check, nullptr, screen.cx - 100, screen.cy - 100, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);
    const alert_desktop::ModalPage details(kDetailsTitle, [&](HWND page) {
        expectDesign(page, places, systemScale());
        EXPECT_LE(rectOf(page).right, screen.cx);
        EXPECT_LE(rectOf(page).bottom, screen.cy);
        changeScale(page, 144);
        expectDesign(page, places, 144);
    });

    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_TRUE(details.wasShown());
}

}  // namespace
