#include "ui/alert_window.h"

#include "tests/support/gauges.h"
#include "tests/support/test_components.h"
#include "tests/ui/windows/alert_desktop.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/gdi_handles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

// The windows of the alerts as the system sees them: keys, clicks, painting, and what is left when
// they are gone.

namespace {

using Codes = std::vector<std::uint32_t>;

constexpr COLORREF kBannerBlue = RGB(18, 57, 91);
constexpr COLORREF kOkBlue = RGB(26, 95, 168);

class AlertWindowTest : public testing::Test {
protected:
    AlertWindowTest() : broker(nullptr) {
        broker.addComponent(new test::ListenerComponent([this](arbor::IMessage& message) {
            codes.push_back(message.getCode());
            const std::function<void()> action = onTold;
            if (action) action();
            return true;
        }));
    }
    ~AlertWindowTest() override {
        setForegroundFunction(nullptr);
        setHighContrastQuery(nullptr);
    }

    void open(int type, int status = 0) {
        alert = alert_desktop::openAlert(type, status, &broker);
        ASSERT_NE(alert, nullptr);
        codes.clear();
        alert_desktop::pump();
    }
    // What the listener does: window first, then object.
    void endWithTheNextAction() {
        onTold = [this] {
            destroyAlertWindow(alert->window());
            alert.reset();
        };
    }

    [[nodiscard]] HWND control(int id) const { return ::GetDlgItem(alert->window(), id); }
    [[nodiscard]] std::wstring textOf(int id) const {
        wchar_t text[512] = {};
        ::GetWindowTextW(control(id), text, 512);
        return text;
    }
    // A key that the user presses with the focus on a control.
    void pressKey(int id, WPARAM key) {
        ::SetFocus(control(id));
        ::PostMessageW(control(id), WM_KEYDOWN, key, 1);
        alert_desktop::pump();
    }
    void typeLetter(HWND target, wchar_t letter) {
        ::PostMessageW(target, WM_CHAR, letter, 1);
        alert_desktop::pump();
    }
    [[nodiscard]] int focused() const { return ::GetDlgCtrlID(::GetFocus()); }
    // A pixel of the window's client area on the screen.
    [[nodiscard]] COLORREF pixel(int x, int y) const {
        alert_desktop::pumpFor(50);
        const WindowDc dc(alert->window());
        return ::GetPixel(dc.get(), x, y);
    }

    tern::EventBroker broker;
    Codes codes;
    std::function<void()> onTold;
    std::unique_ptr<DefaultStatusDialog> alert;
};

TEST_F(AlertWindowTest, IsShownInFrontWithItsTextsAndIcons) {
    open(10);

    EXPECT_TRUE(::IsWindowVisible(alert->window()));
    EXPECT_EQ(textOf(1004), alert_desktop::text(1008));
    EXPECT_EQ(textOf(1012), alert_desktop::text(125));
    EXPECT_NE(::SendMessageW(alert->window(), WM_GETICON, ICON_BIG, 0), 0);
    EXPECT_NE(::SendMessageW(alert->window(), WM_GETICON, ICON_SMALL, 0), 0);
}

TEST_F(AlertWindowTest, OpensAtItsPosition) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 0, 0);
    alert = createAlertDialog(description);
    alert->setPosition(140, 160);

    ASSERT_TRUE(alert->create());

    RECT place{};
    ::GetWindowRect(alert->window(), &place);
    EXPECT_EQ(place.left, 140);
    EXPECT_EQ(place.top, 160);
}

TEST_F(AlertWindowTest, IsNotMadeFromATemplateThatIsMissing) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 0, 0);
    ASSERT_NE(createAlertDialog(description), nullptr);
    description.setInt(alert_key::kTemplate, 4711);

    DefaultStatusDialog dialog(description, false);

    EXPECT_FALSE(dialog.create());
    EXPECT_EQ(dialog.window(), nullptr);
}

BOOL WINAPI refuseTheForeground(HWND) {
    return FALSE;
}

TEST_F(AlertWindowTest, IsPutOnTopWhereTheSystemRefusesTheForeground) {
    setForegroundFunction(&refuseTheForeground);

    open(0);

    EXPECT_TRUE(::IsWindowVisible(alert->window()));
    EXPECT_EQ(::GetWindowLongPtrW(alert->window(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_EQ(::GetTopWindow(nullptr) == alert->window() ||
                  ::GetWindow(alert->window(), GW_HWNDPREV) != nullptr,
              true);
}

TEST_F(AlertWindowTest, TellsItsActionsFromClicks) {
    open(0);

    for (const int button : {1018, 134, 130}) {
        ::PostMessageW(control(button), BM_CLICK, 0, 0);
        alert_desktop::pump();
    }

    EXPECT_EQ(codes, (Codes{104, 101, 2}));
}

TEST_F(AlertWindowTest, TakesEnterForOkWhereverTheFocusIs) {
    open(0);

    pressKey(131, VK_RETURN);

    EXPECT_EQ(codes, (Codes{2}));
}

TEST_F(AlertWindowTest, TakesEscForCancel) {
    open(0);

    pressKey(1018, VK_ESCAPE);

    EXPECT_EQ(codes, (Codes{1}));
}

TEST_F(AlertWindowTest, MovesTheFocusWithTabInTheOrderOfItsButtons) {
    open(4);
    ::SetFocus(control(1008));
    std::vector<int> order;
    for (int i = 0; i < 5; ++i) {
        order.push_back(focused());
        pressKey(focused(), VK_TAB);
    }

    EXPECT_EQ(order, (std::vector<int>{1008, 130, 131, 1018, 134}));
    EXPECT_EQ(focused(), 1008);
}

TEST_F(AlertWindowTest, StartsWithTheFocusOnOkOrOnTheListOfTimes) {
    open(0);
    EXPECT_EQ(focused(), 130);
    alert.reset();

    open(4);

    EXPECT_EQ(focused(), 1008);
}

TEST_F(AlertWindowTest, ChoosesInTheListWithArrows) {
    open(4);

    pressKey(1008, VK_DOWN);
    pressKey(1008, VK_DOWN);

    EXPECT_EQ(::SendMessageW(control(1008), CB_GETCURSEL, 0, 0), 2);
    EXPECT_EQ(focused(), 1008);
}

TEST_F(AlertWindowTest, HearsItsKeysWhileAButtonHasTheFocus) {
    open(0);

    typeLetter(control(130), L'U');
    typeLetter(control(131), L'R');
    typeLetter(control(1018), L'u');

    EXPECT_EQ(codes, (Codes{104, 101}));
}

TEST_F(AlertWindowTest, LeavesLettersToTheListThatWantsThem) {
    open(4);

    typeLetter(control(1008), L'U');

    EXPECT_EQ(codes.end(), std::find(codes.begin(), codes.end(), 104U));
}

TEST_F(AlertWindowTest, HearsAltAndASmallLetter) {
    open(0);

    ::SendMessageW(alert->window(), WM_MENUCHAR, MAKEWPARAM('u', MF_SYSMENU), 0);

    EXPECT_EQ(codes, (Codes{104}));
}

TEST_F(AlertWindowTest, LeavesTheKeyboardOfOtherWindowsAlone) {
    open(0);
    const HWND other = ::CreateWindowExW(0, L"Button", L"other", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                         0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);

    ::PostMessageW(other, WM_KEYDOWN, VK_ESCAPE, 1);
    ::PostMessageW(other, WM_CHAR, L'U', 1);
    alert_desktop::pump();

    EXPECT_TRUE(codes.empty());
    ::DestroyWindow(other);
}

TEST_F(AlertWindowTest, MayBeDestroyedWhileItsProcedureRuns) {
    const std::function<void()> endings[] = {
        [this] { ::SendMessageW(control(130), BM_CLICK, 0, 0); },
        [this] { ::SendMessageW(alert->window(), WM_CLOSE, 0, 0); },
        [this] { pressKey(130, VK_ESCAPE); },
        [this] { pressKey(130, VK_RETURN); },
        [this] { typeLetter(control(130), L'O'); },
        [this] { ::SendMessageW(alert->window(), WM_MENUCHAR, MAKEWPARAM('o', MF_SYSMENU), 0); },
        [this] { ::SendMessageW(alert->window(), WM_COMMAND, 1012, 0); }};
    for (const auto& end : endings) {
        onTold = nullptr;
        open(0);
        const HWND window = alert->window();
        endWithTheNextAction();
        end();
        alert_desktop::pump();
        EXPECT_EQ(alert, nullptr);
        EXPECT_FALSE(::IsWindow(window));
        onTold = nullptr;
    }
}

TEST_F(AlertWindowTest, IsHiddenButThereWhenItsUserClosesIt) {
    open(0);

    ::SendMessageW(alert->window(), WM_CLOSE, 0, 0);

    EXPECT_EQ(codes, (Codes{5}));
    EXPECT_TRUE(::IsWindow(alert->window()));
    EXPECT_FALSE(::IsWindowVisible(alert->window()));
    EXPECT_EQ(::GetWindowLongPtrW(alert->window(), GWLP_USERDATA), 0);
}

TEST_F(AlertWindowTest, IsGoneWithItsObjectAlsoAfterItWasClosed) {
    open(0);
    const HWND window = alert->window();
    ::SendMessageW(window, WM_CLOSE, 0, 0);

    alert.reset();

    EXPECT_FALSE(::IsWindow(window));
}

TEST_F(AlertWindowTest, IsGoneWhenItIsDismissed) {
    open(0);
    const HWND window = alert->window();

    dismissAlertWindow(window);

    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(alert->window(), nullptr);
    EXPECT_TRUE(codes.empty());
    dismissAlertWindow(window);
    destroyAlertWindow(nullptr);
}

TEST_F(AlertWindowTest, NamesItsPicturesForScreenReaders) {
    open(7);

    EXPECT_EQ(textOf(1002), alert_desktop::text(366));
    EXPECT_EQ(textOf(133), alert_desktop::text(369));
    EXPECT_EQ(textOf(136), alert_desktop::text(370));
    EXPECT_EQ(textOf(137), alert_desktop::text(372));
    EXPECT_EQ(textOf(236), alert_desktop::kPrinterName);
    EXPECT_EQ(textOf(130), alert_desktop::text(156));
}

TEST_F(AlertWindowTest, PaintsBannerAndButtons) {
    open(0);

    EXPECT_EQ(pixel(600, 4), kBannerBlue);
    EXPECT_EQ(pixel(630, 470), kOkBlue);
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

    compactAlertWindow(alert->window(), true);

    RECT client{};
    ::GetClientRect(alert->window(), &client);
    EXPECT_EQ(client.bottom, 205);
    RECT ok{};
    ::GetWindowRect(control(130), &ok);
    ::MapWindowPoints(nullptr, alert->window(), reinterpret_cast<POINT*>(&ok), 2);
    EXPECT_EQ(ok.left, 618);
    EXPECT_NEAR(ok.top, 131, 1);
    EXPECT_FALSE(::IsWindowVisible(control(1018)));
    EXPECT_FALSE(::IsWindowVisible(control(134)));
    EXPECT_TRUE(::IsWindowVisible(alert->window()));
}

TEST_F(AlertWindowTest, MakesALinkOfTheDetailOfACompactAlert) {
    open(27);
    compactAlertWindow(alert->window(), true);
    codes.clear();

    ::SendMessageW(control(1012), WM_LBUTTONDOWN, 0, 0);
    ::SendMessageW(control(1012), WM_LBUTTONUP, 0, 0);
    alert_desktop::pump();

    EXPECT_EQ(codes, (Codes{1012}));
}

std::wstring boxText;
std::wstring boxCaption;

void CALLBACK readAndCloseBox(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    const HWND box = ::GetLastActivePopup(::FindWindowW(L"#32770", boxCaption.c_str()));
    wchar_t text[2048] = {};
    ::GetDlgItemTextW(box, 65535, text, 2048);
    boxText = text;
    ::PostMessageW(box, WM_CLOSE, 0, 0);
}

TEST_F(AlertWindowTest, ShowsItsHelpInABox) {
    open(0);
    boxCaption = alert_desktop::kPrinterName;
    ::SetTimer(nullptr, 0, 50, readAndCloseBox);

    ::SendMessageW(control(131), BM_CLICK, 0, 0);

    EXPECT_EQ(boxText, alert_desktop::text(265));
    EXPECT_TRUE(codes.empty());
}

TEST_F(AlertWindowTest, IsMirroredWithUnmirroredPicturesOnADesktopFromRightToLeft) {
    const alert_desktop::MirroredDesktop desktop;

    open(4);

    const LONG_PTR style = ::GetWindowLongPtrW(alert->window(), GWL_EXSTYLE);
    EXPECT_NE(style & WS_EX_LAYOUTRTL, 0);
    EXPECT_NE(style & WS_EX_RTLREADING, 0);
    for (const int picture : {133, 136, 137, 236, 1002}) {
        EXPECT_EQ(::GetWindowLongPtrW(control(picture), GWL_EXSTYLE) & WS_EX_LAYOUTRTL, 0);
    }
    RECT window{};
    RECT icon{};
    ::GetWindowRect(alert->window(), &window);
    ::GetWindowRect(control(1002), &icon);
    EXPECT_GT(icon.left, (window.left + window.right) / 2);
}

BOOL CALLBACK countDialog(HWND window, LPARAM count) {
    wchar_t name[32] = {};
    ::GetClassNameW(window, name, 32);
    if (std::wstring(name) == L"#32770") ++*reinterpret_cast<int*>(count);
    return TRUE;
}

TEST_F(AlertWindowTest, LeavesNothingBehindAfterFiveHundredAlerts) {
    constexpr int kWarmUp = 33, kAlerts = 500, kTypes = 33;
    const auto openAndEnd = [this](int i) {
        open(i % kTypes);
        compactAlertWindow(alert->window(), true);
        alert_desktop::pump();
        alert.reset();
        alert_desktop::pump();
    };
    for (int i = 0; i < kWarmUp; ++i)
        openAndEnd(i);
    const Gauges before = readGauges();

    for (int i = 0; i < kAlerts; ++i)
        openAndEnd(i);

    const Gauges after = readGauges();
    EXPECT_LE(after.gdiObjects, before.gdiObjects + 3);
    EXPECT_LE(after.handles, before.handles + 2);
    EXPECT_EQ(after.threads, before.threads);
    int windows = 0;
    ::EnumThreadWindows(::GetCurrentThreadId(), &countDialog, reinterpret_cast<LPARAM>(&windows));
    EXPECT_EQ(windows, 0);
}

// The system keeps a little memory for every dialog under Wine; an alert may not cost more of it
// than a dialog of the same template that does nothing but fill its list.
INT_PTR CALLBACK bareProcedure(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return FALSE;
    ::ShowWindow(::GetDlgItem(dialog, 1008), SW_SHOW);
    for (int i = 0; i < 9; ++i) {
        ::SendDlgItemMessageW(dialog, 1008, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"In 1 day"));
    }
    return TRUE;
}

TEST_F(AlertWindowTest, KeepsNoMemoryBeyondThatOfABareDialog) {
    constexpr int kDialogs = 100, kSlack = 20;
    const auto grownBy = [](const std::function<void()>& openAndEnd) {
        for (int i = 0; i < kDialogs / 4; ++i)
            openAndEnd();
        const long before = readGauges().heapBlocks;
        for (int i = 0; i < kDialogs; ++i)
            openAndEnd();
        return readGauges().heapBlocks - before;
    };
    const long bare = grownBy([] {
        const HWND dialog = ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(210),
                                                 nullptr, bareProcedure, 0);
        ::ShowWindow(dialog, SW_SHOW);
        alert_desktop::pump();
        ::DestroyWindow(dialog);
        alert_desktop::pump();
    });

    const long ours = grownBy([this] {
        open(4);
        alert.reset();
        alert_desktop::pump();
    });

    EXPECT_LE(ours, bare + kSlack);
}

}  // namespace
