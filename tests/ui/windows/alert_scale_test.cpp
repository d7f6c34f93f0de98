#include "tests/ui/windows/scaled_layout.h"
#include "tests/ui/windows/window_pixels.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

TEST_F(AlertScaleTest, EveryControlStandsWhereTheDesignPutsIt) {
    for (const auto& [type, templateId] : {std::pair{2, 137}, {3, 139}, {4, 210}}) {
        const std::map<int, Place> places = design(templateId);
        open(type);

        atEveryScale(window(), [&](int scale) { expectDesign(window(), places, scale); });
    }
}

TEST_F(AlertScaleTest, EveryAlertComesBackToItsLayoutExactly) {
    for (const int type : {0, 3, 9, 25, 26, 27, 30}) {
        open(type);
        std::map<int, Layout> layouts{{dpi, layoutOf(window())}};
        for (const int scale : {120, 144, 192, 120, 96, 192, 144, 96, dpi}) {
            changeScale(window(), scale);
            const Layout layout = layoutOf(window());
            EXPECT_EQ(layouts.emplace(scale, layout).first->second, layout) << type;
        }
    }
}

TEST_F(AlertScaleTest, FontsGrowAndKeepTheirKind) {
    open(27);
    compactAlertWindow(window(), true);

    const std::map<int, int> heights{{96, -11}, {120, -13}, {144, -16}, {168, -19}, {192, -21}};
    atEveryScale(window(), [&](int scale) {
        const Layout layout = layoutOf(window());
        for (const int id : {kHeadline, kDetail, kOk})
            EXPECT_EQ(layout.at(id).fontHeight, heights.at(scale)) << id << " at " << scale;
        EXPECT_EQ(layout.at(kHeadline).fontWeight, 600) << scale;
        EXPECT_FALSE(layout.at(kHeadline).underlined) << scale;
        EXPECT_EQ(layout.at(kDetail).fontWeight, 400) << scale;
        EXPECT_TRUE(layout.at(kDetail).underlined) << scale;
    });
}

TEST_F(AlertScaleTest, FontsOfAnEarlierScaleEnd) {
    open(0);
    changeScale(window(), 144);
    auto* const earlier =
        reinterpret_cast<HFONT>(::SendMessageW(control(kHeadline), WM_GETFONT, 0, 0));
    ASSERT_EQ(::GetObjectType(earlier), static_cast<DWORD>(OBJ_FONT));

    changeScale(window(), 192);

    EXPECT_EQ(::GetObjectType(earlier), 0U);
}

TEST_F(AlertScaleTest, ControlsWithFontsOfTheSameKindShareOne) {
    open(4);

    changeScale(window(), 168);

    std::set<LRESULT> fonts;
    for (const HWND child : childrenOf(window())) {
        fonts.insert(::SendMessageW(child, WM_GETFONT, 0, 0));
    }
    fonts.erase(0);               // of pictures
    EXPECT_EQ(fonts.size(), 2U);  // plain and of the headline
}

TEST_F(AlertScaleTest, AScaleThatNoScreenHasChangesNothing) {
    open(0);
    const Layout before = layoutOf(window());
    SIZE size{};

    for (const int scale : {0, 47, 961, 0xFFFF}) {
        changeScale(window(), scale);
        ASSERT_EQ(layoutOf(window()), before) << scale;
        EXPECT_EQ(::SendMessageW(window(), kSizeAtScale, static_cast<WPARAM>(scale),
                                 reinterpret_cast<LPARAM>(&size)),
                  FALSE);
    }
}

WNDPROC procedureOfTheAlert = nullptr;
bool hasCrossed = false;

LRESULT CALLBACK crossToAnotherScreen(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_WINDOWPOSCHANGED && !hasCrossed) {
        hasCrossed = true;
        changeScale(window, 192);
    }
    return ::CallWindowProcW(procedureOfTheAlert, window, message, wParam, lParam);
}

// Its new size may bring most of a window to another screen.
TEST_F(AlertScaleTest, AnAlertThatGrowsOntoAnotherScreenTakesTheScaleOfThatOne) {
    open(0);
    changeScale(window(), 192);
    const Layout expected = layoutOf(window());
    changeScale(window(), 96);
    hasCrossed = false;
    procedureOfTheAlert = reinterpret_cast<WNDPROC>(::SetWindowLongPtrW(
        window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(crossToAnotherScreen)));

    changeScale(window(), 144);

    EXPECT_TRUE(hasCrossed);
    EXPECT_EQ(layoutOf(window()), expected);
}

TEST_F(AlertScaleTest, ABlockOfSuppliesThatIsNotShownGetsNoPicturesLater) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 4, 0);
    ASSERT_NE(createAlertDialog(description), nullptr);
    description.setInt(alert_key::kShowSupplies, 0);
    alert = std::make_unique<DefaultStatusDialog>(description, true);
    ASSERT_NE(window(), nullptr);

    changeScale(window(), 144);
    ::SendMessageW(window(), WM_THEMECHANGED, 0, 0);

    for (const int picture : {136, 137})
        EXPECT_EQ(::SendMessageW(control(picture), STM_GETIMAGE, IMAGE_BITMAP, 0), 0) << picture;
}

TEST_F(AlertScaleTest, IconsHaveTheSizeOfTheScale) {
    open(3);

    atEveryScale(window(), [&](int scale) {
        for (const auto& [kind, size] : {std::pair{ICON_BIG, 32}, {ICON_SMALL, 16}}) {
            const auto icon = ::SendMessageW(window(), WM_GETICON, static_cast<WPARAM>(kind), 0);
            EXPECT_EQ(iconSize(reinterpret_cast<HICON>(icon)).cx, at(size, scale)) << scale;
        }
        for (const int step : {1021, 1022, 1023}) {
            const auto icon = ::SendMessageW(control(step), STM_GETIMAGE, IMAGE_ICON, 0);
            EXPECT_EQ(iconSize(reinterpret_cast<HICON>(icon)).cy, at(32, scale)) << scale;
        }
    });
}

TEST_F(AlertScaleTest, AnIconOfAnEarlierScaleEnds) {
    open(0);
    changeScale(window(), 144);
    auto* const earlier =
        reinterpret_cast<HICON>(::SendMessageW(window(), WM_GETICON, ICON_BIG, 0));
    ASSERT_EQ(iconSize(earlier).cx, 48);

    changeScale(window(), 192);

    EXPECT_EQ(iconSize(earlier).cx, 0);
}

TEST_F(AlertScaleTest, ThePrintersNameGrowsWithTheBanner) {
    open(0);
    changeScale(window(), 96);
    const Place small = whiteBox(control(kBanner), 118);

    changeScale(window(), 192);

    const Place large = whiteBox(control(kBanner), 2 * 118);
    EXPECT_NEAR(large.left, 2 * small.left, 3);
    EXPECT_NEAR(large.top, 2 * small.top, 3);
    EXPECT_NEAR(large.width, 2 * small.width, 8);
    EXPECT_NEAR(large.height, 2 * small.height, 3);
}

TEST_F(AlertScaleTest, TheFocusRectangleKeepsItsShareOfTheButton) {
    open(0);
    ::SetFocus(control(kOk));

    for (const int scale : {96, 192}) {
        changeScale(window(), scale);
        alert_desktop::pumpFor(50);
        const window_pixels::Pixels shown = window_pixels::shownBy(control(kOk));
        // Every second pixel of the rectangle is drawn.
        const auto coloursInColumn = [&](int x) {
            std::set<Rgb> colours;
            for (int y = shown.size.height / 2 - 2; y < shown.size.height / 2 + 2; ++y)
                colours.insert(shown.colours[static_cast<std::size_t>(y * shown.size.width + x)]);
            return colours.size();
        };
        EXPECT_EQ(coloursInColumn(at(4, scale) - 1), 1U) << scale;
        EXPECT_EQ(coloursInColumn(at(4, scale)), 2U) << scale;
        EXPECT_EQ(coloursInColumn(at(4, scale) + 1), 1U) << scale;
    }
}

TEST_F(AlertScaleTest, TheCompactFormIsTheSameFromAnyScale) {
    for (const int scale : {dpi, 96, 192}) {
        open(27);
        if (scale != dpi) changeScale(window(), scale);
        compactAlertWindow(window(), true);
        const Layout atOnce = layoutOf(window());
        EXPECT_EQ(clientOf(window()).cy, at(205, scale));
        EXPECT_EQ(atOnce.at(130).place.top, at(design(137).at(130).top - 330, scale));

        changeScale(window(), 144);
        changeScale(window(), scale);

        EXPECT_EQ(layoutOf(window()), atOnce) << scale;
    }
}

TEST_F(AlertScaleTest, AMirroredAlertIsLaidOutFromTheRight) {
    const alert_desktop::MirroredDesktop desktop;
    const std::map<int, Place> places = design(210);
    open(4);

    for (const int scale : {192, 96}) {
        changeScale(window(), scale);

        expectDesign(window(), places, scale);
        const RECT right = rectOf(control(1002));
        POINT edge{0, 0};
        ::ClientToScreen(window(), &edge);
        EXPECT_EQ(edge.x - right.right, at(places.at(1002).left, scale)) << scale;
    }
}

TEST_F(AlertScaleTest, EveryChoiceOfTheListIsSeenAtOnce) {
    open(4);
    atEveryScale(window(), [&](int scale) {
        ::SendMessageW(control(kList), CB_SHOWDROPDOWN, TRUE, 0);

        COMBOBOXINFO list{};
        list.cbSize = sizeof(list);
        ::GetComboBoxInfo(control(kList), &list);
        const auto height = ::SendMessageW(list.hwndList, LB_GETITEMHEIGHT, 0, 0);
        EXPECT_GE(clientOf(list.hwndList).cy, 9 * height) << scale;
        EXPECT_GE(height, at(10, scale)) << scale;
        ::SendMessageW(control(kList), CB_SHOWDROPDOWN, FALSE, 0);
    });
}

TEST_F(AlertScaleTest, TheManifestSaysThatEveryScreenHasItsOwnScale) {
    const HRSRC found = ::FindResourceW(nullptr, MAKEINTRESOURCEW(1), RT_MANIFEST);
    ASSERT_NE(found, nullptr);
    const std::string manifest(
        static_cast<const char*>(::LockResource(::LoadResource(nullptr, found))),
        ::SizeofResource(nullptr, found));

    EXPECT_NE(manifest.find("SMI/2016/WindowsSettings\">PerMonitorV2, PerMonitor</dpiAwareness>"),
              std::string::npos);
    EXPECT_NE(manifest.find("SMI/2005/WindowsSettings\">true/pm</dpiAware>"), std::string::npos);
    EXPECT_EQ(manifest.find("gdiScaling"), std::string::npos);
}

}  // namespace
