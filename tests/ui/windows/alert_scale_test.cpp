// How dialogs follow the scale of their screen. The program runs on screens of 96, 120, 144 and 192
// dots per inch: what a dialog has there from the beginning is what it must come to anywhere else.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tests/ui/windows/window_pixels.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"
#include "ui/validation_dialog.h"

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr int kScales[] = {120, 144, 192, 96, 168, 96};
constexpr UINT kScaleChanged = 0x02E0, kSizeAtScale = 0x02E4;
constexpr int kUnitsAcross = 4, kUnitsDown = 8;
constexpr SIZE kDesignUnits{6, 13};  // pixels of these units at 96 dots per inch
constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066, kLearnMore = 1051;
constexpr int kBanner = 236, kPicture = 133, kHeadline = 1004, kDetail = 1012, kList = 1008,
              kOk = 130;
// Controls that have the size of their picture, and that at 96 dots per inch.
const std::map<int, SIZE> kDrawn{{130, {120, 32}},  {131, {120, 32}}, {134, {220, 32}},
                                 {1018, {220, 32}}, {136, {96, 96}},  {137, {24, 24}},
                                 {1021, {32, 32}},  {1022, {32, 32}}, {1023, {32, 32}}};

// Place and size in the dialog's client area.
struct Place {
    int left, top, width, height;
    bool operator==(const Place&) const = default;
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.width << " x " << place.height << " at " << place.left << ", " << place.top;
}

struct Shown {
    Place place;
    LONG fontHeight, fontWeight;
    bool underlined;
    bool operator==(const Shown&) const = default;
};

void PrintTo(const Shown& look, std::ostream* out) {
    PrintTo(look.place, out);
    *out << ", font " << look.fontHeight << " weight " << look.fontWeight
         << (look.underlined ? " underlined" : "");
}

using Layout = std::map<int, Shown>;  // by control; 0 is the client area

int at(int pixels, int dpi) {
    return ::MulDiv(pixels, dpi, 96);
}

Place at(const Place& place, int dpi) {
    return {at(place.left, dpi), at(place.top, dpi), at(place.width, dpi), at(place.height, dpi)};
}

SIZE clientOf(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    return {client.right, client.bottom};
}

RECT rectOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

Place placeIn(HWND dialog, HWND control) {
    RECT place = rectOf(control);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return {static_cast<int>(place.left), static_cast<int>(place.top),
            static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)};
}

LOGFONTW fontOf(HWND window) {
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0)), sizeof(font),
                 &font);
    return font;
}

std::vector<HWND> childrenOf(HWND dialog) {
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

Layout layoutOf(HWND dialog) {
    alert_desktop::pump();  // buttons get their size when they are painted
    const SIZE client = clientOf(dialog);
    Layout layout{{0, {{0, 0, client.cx, client.cy}, 0, 0, false}}};
    for (const HWND child : childrenOf(dialog)) {
        const LOGFONTW font = fontOf(child);
        layout[::GetDlgCtrlID(child)] = {placeIn(dialog, child), font.lfHeight, font.lfWeight,
                                         font.lfUnderline != 0};
    }
    return layout;
}

int systemScale() {
    const WindowDc screen(nullptr);
    return ::GetDeviceCaps(screen.get(), LOGPIXELSX);
}

void changeScale(HWND dialog, int dpi, const RECT* suggested = nullptr) {
    ::SendMessageW(dialog, kScaleChanged, MAKEWPARAM(dpi, dpi),
                   reinterpret_cast<LPARAM>(suggested));
}

// Looks at the dialog as it was opened and then at every other scale.
template <typename Look>
void atEveryScale(HWND dialog, Look look) {
    look(systemScale());
    for (const int scale : kScales) {
        changeScale(dialog, scale);
        look(scale);
    }
}

INT_PTR CALLBACK plain(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

// The places of a template as the system itself makes them at 96 dots per inch.
std::map<int, Place> design(int templateId) {
    const HWND dialog = ::CreateDialogParamW(::GetModuleHandleW(nullptr),
                                             MAKEINTRESOURCEW(templateId), nullptr, plain, 0);
    RECT units{0, 0, kUnitsAcross, kUnitsDown};
    ::MapDialogRect(dialog, &units);
    const auto across = [&](int pixels) {
        return ::MulDiv(::MulDiv(pixels, kUnitsAcross, units.right), kDesignUnits.cx, kUnitsAcross);
    };
    const auto down = [&](int pixels) {
        return ::MulDiv(::MulDiv(pixels, kUnitsDown, units.bottom), kDesignUnits.cy, kUnitsDown);
    };
    const SIZE client = clientOf(dialog);
    std::map<int, Place> places{{0, {0, 0, across(client.cx), down(client.cy)}}};
    for (const HWND child : childrenOf(dialog)) {
        const Place made = placeIn(dialog, child);
        places[::GetDlgCtrlID(child)] = {across(made.left), down(made.top), across(made.width),
                                         down(made.height)};
    }
    ::DestroyWindow(dialog);
    return places;
}

bool isPlainButton(HWND dialog, int id) {
    const HWND control = ::GetDlgItem(dialog, id);
    return (::SendMessageW(control, WM_GETDLGCODE, 0, 0) &
            (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

void expectDesign(HWND dialog, const std::map<int, Place>& places, int dpi) {
    const Layout layout = layoutOf(dialog);
    ASSERT_EQ(layout.size(), places.size());
    for (const auto& [id, look] : layout) {
        Place expected = at(places.at(id), dpi);
        const auto drawn = kDrawn.find(id);
        if (drawn != kDrawn.end() && !isPlainButton(dialog, id)) {
            expected.width = at(drawn->second.cx, dpi);
            expected.height = at(drawn->second.cy, dpi);
        }
        if (id == kList) expected.height = look.place.height;  // of its font
        EXPECT_EQ(look.place, expected) << "control " << id << " at " << dpi;
    }
}

class AlertScaleTest : public AlertWindowTest {
protected:
    [[nodiscard]] HWND window() const { return alert->window(); }
    void showCheck() {
        showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
        check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
        ASSERT_NE(check, nullptr);
        alert_desktop::pump();
    }
    ~AlertScaleTest() override {
        if (check != nullptr) ::DestroyWindow(check);
    }

    const int dpi = systemScale();
    HWND check = nullptr;
};

TEST_F(AlertScaleTest, TheClientAreaIsThatOfTheDesign) {
    open(0);

    EXPECT_EQ(clientOf(window()).cx, at(747, dpi));
    EXPECT_EQ(clientOf(window()).cy, at(505, dpi));
}

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

SIZE iconSize(HICON icon) {
    ICONINFO info{};
    if (!::GetIconInfo(icon, &info)) return {};
    const Bitmap mask(info.hbmMask);
    const Bitmap colours(info.hbmColor);
    BITMAP description{};
    ::GetObjectW(info.hbmColor, sizeof(description), &description);
    return {description.bmWidth, description.bmHeight};
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

TEST_F(AlertScaleTest, PicturesAreThoseOfTheScale) {
    constexpr struct {
        int type, control, bitmap;
    } kShown[] = {{4, 133, 205}, {4, 136, 209}, {4, 137, 207}, {4, 1002, 150},
                  {3, 230, 186}, {3, 231, 187}, {3, 232, 188}};
    int type = 0;
    for (const auto& shown : kShown) {
        if (shown.type != type) open(type = shown.type);
        for (const int scale : {144, 96}) {
            changeScale(window(), scale);
            alert_desktop::pumpFor(50);

            const auto expected = window_pixels::picture(shown.bitmap, scale);
            EXPECT_EQ(differences(window_pixels::shownBy(control(shown.control)), expected), 0U)
                << shown.control << " at " << scale;
        }
    }
}

// The box around what is white in a window, from `left` on.
Place whiteBox(HWND window, int left) {
    alert_desktop::pumpFor(50);
    const window_pixels::Pixels shown = window_pixels::shownBy(window);
    int right = 0, bottom = 0, first = shown.size.width, top = shown.size.height;
    for (int y = 0; y < shown.size.height; ++y) {
        for (int x = left; x < shown.size.width; ++x) {
            if (shown.colours[static_cast<std::size_t>(y * shown.size.width + x)] != 0xFFFFFF)
                continue;
            first = std::min(first, x);
            top = std::min(top, y);
            right = std::max(right, x + 1);
            bottom = std::max(bottom, y + 1);
        }
    }
    return {first, top, right - first, bottom - top};
}

TEST_F(AlertScaleTest, ThePrintersNameGrowsWithTheBanner) {
    open(0);
    changeScale(window(), 96);
    const Place small = whiteBox(control(kBanner), 118);

    changeScale(window(), 192);

    const Place large = whiteBox(control(kBanner), 2 * 118);
    EXPECT_NEAR(large.left, 2 * small.left, 3);
    EXPECT_NEAR(large.top, 2 * small.top, 3);
    EXPECT_NEAR(large.width, 2 * small.width, 6);
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

TEST_F(AlertScaleTest, TheSystemsSuggestionPlacesTheAlertAndTheDesignSizesIt) {
    open(0);
    const RECT suggested{120, 90, 400, 300};

    changeScale(window(), 120, &suggested);

    EXPECT_EQ(rectOf(window()).left, 120);
    EXPECT_EQ(rectOf(window()).top, 90);
    EXPECT_EQ(clientOf(window()).cx, at(747, 120));
}

TEST_F(AlertScaleTest, WithoutASuggestionTheAlertStaysWhereItIs) {
    open(0);
    const RECT before = rectOf(window());

    changeScale(window(), 120);

    EXPECT_EQ(rectOf(window()).left, before.left);
    EXPECT_EQ(rectOf(window()).top, before.top);
}

SIZE screenSize() {
    return {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

TEST_F(AlertScaleTest, AnAlertThatGrowsBeyondItsScreenMovesIn) {
    open(0);
    const SIZE screen = screenSize();
    changeScale(window(), 96);
    const RECT small = rectOf(window());
    const RECT corner{screen.cx - (small.right - small.left),
                      screen.cy - (small.bottom - small.top), screen.cx, screen.cy};

    changeScale(window(), 120, &corner);

    EXPECT_EQ(rectOf(window()).right, screen.cx);
    EXPECT_EQ(rectOf(window()).bottom, screen.cy);
    EXPECT_EQ(clientOf(window()).cx, at(747, 120));
}

const RECT kBeyondTheEdge{-50, 40, 0, 0};
RECT placeWhileMoved{};

void CALLBACK changeScaleWhileMoved(HWND dialog, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(dialog, timer);
    changeScale(dialog, 144, &kBeyondTheEdge);
    placeWhileMoved = rectOf(dialog);
    ::PostMessageW(dialog, WM_LBUTTONUP, 0, 0);
}

TEST_F(AlertScaleTest, AnAlertThatTheUserMovesIsNotMovedIn) {
    open(0);
    ::SetTimer(window(), 1, 50, changeScaleWhileMoved);

    ::SendMessageW(window(), WM_SYSCOMMAND, SC_MOVE | HTCAPTION, 0);

    EXPECT_EQ(placeWhileMoved.left, kBeyondTheEdge.left);
    EXPECT_EQ(placeWhileMoved.top, kBeyondTheEdge.top);
}

TEST_F(AlertScaleTest, TheSystemLearnsTheSizeAtAnotherScaleBeforehand) {
    open(27);
    compactAlertWindow(window(), false);
    const RECT place = rectOf(window());
    SIZE size{};

    EXPECT_EQ(::SendMessageW(window(), kSizeAtScale, static_cast<WPARAM>(dpi),
                             reinterpret_cast<LPARAM>(&size)),
              TRUE);
    EXPECT_EQ(size.cx, place.right - place.left);
    EXPECT_EQ(size.cy, place.bottom - place.top);
    ::SendMessageW(window(), kSizeAtScale, 3 * 96, reinterpret_cast<LPARAM>(&size));
    EXPECT_NEAR(size.cx, 3 * 747, 3 * 10);
    EXPECT_NEAR(size.cy, 3 * (205 + 22), 3 * 10);
}

TEST_F(AlertScaleTest, AnAlertOpensAtItsPlaceInTheCascade) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 0, 0);
    alert = createAlertDialog(description);
    alert->setPosition(140, 160);

    ASSERT_TRUE(alert->create());

    EXPECT_EQ(rectOf(window()).left, at(140, dpi));
    EXPECT_EQ(rectOf(window()).top, at(160, dpi));
}

TEST_F(AlertScaleTest, AnAlertBeyondTheScreenMovesInByTheLeast) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 0, 0);
    alert = createAlertDialog(description);
    alert->setPosition(160, 740);

    ASSERT_TRUE(alert->create());

    EXPECT_EQ(rectOf(window()).left, at(160, dpi));
    EXPECT_EQ(rectOf(window()).bottom, screenSize().cy);
}

TEST_F(AlertScaleTest, ACompactAlertStandsInTheCascadeWhereItsLowerFormHasRoom) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 27, 0);
    alert = createAlertDialog(description);
    alert->setPosition(160, 740);
    ASSERT_TRUE(alert->create());

    compactAlertWindow(window(), true);

    EXPECT_EQ(rectOf(window()).left, at(160, dpi));
    EXPECT_EQ(rectOf(window()).top, at(740, dpi));
}

TEST_F(AlertScaleTest, ACompactAlertThatWasMovedStaysThere) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 27, 0);
    alert = createAlertDialog(description);
    alert->setPosition(160, 740);
    ASSERT_TRUE(alert->create());
    ::SetWindowPos(window(), nullptr, 30, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);

    compactAlertWindow(window(), true);

    EXPECT_EQ(rectOf(window()).left, 30);
    EXPECT_EQ(rectOf(window()).top, 50);
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

TEST_F(AlertScaleTest, TheCartridgeCheckOpensInTheMiddleOfTheScreen) {
    showCheck();

    const RECT place = rectOf(check);
    EXPECT_NEAR(place.left + place.right, screenSize().cx, 2);
    EXPECT_NEAR(place.top + place.bottom, screenSize().cy, 2);
}

TEST_F(AlertScaleTest, TheCartridgeCheckFollowsTheScale) {
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

TEST_F(AlertScaleTest, AChangeOfScaleBeforeTheCheckHasControlsLeavesNoneBehind) {
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

TEST_F(AlertScaleTest, TheBannerOfTheCartridgeCheckFollowsTheScale) {
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

RECT detailsPlace{};
std::map<int, Place> detailsDesign;

void CALLBACK checkDetails(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    const HWND details = ::FindWindowW(nullptr, alert_desktop::text(kDetailsTitle).c_str());
    expectDesign(details, detailsDesign, systemScale());
    detailsPlace = rectOf(details);
    changeScale(details, 144);
    expectDesign(details, detailsDesign, 144);
    ::PostMessageW(details, WM_COMMAND, IDOK, 0);
}

TEST_F(AlertScaleTest, TheDetailsOfTheCheckFollowTheScaleAndStayOnTheScreen) {
    detailsDesign = design(154);
    showCheck();
    const SIZE screen = screenSize();
    ::SetWindowPos(check, nullptr, screen.cx - 100, screen.cy - 100, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);

    ::SetTimer(nullptr, 0, 50, checkDetails);
    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_LE(detailsPlace.right, screen.cx);
    EXPECT_LE(detailsPlace.bottom, screen.cy);
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
