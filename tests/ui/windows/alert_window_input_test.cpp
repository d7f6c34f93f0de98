// Keys and clicks that reach alerts from the system.
#include "tests/ui/windows/alert_window_fixture.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

TEST_F(AlertWindowTest, TellsItsActionsFromClicks) {
    open(0);

    for (const int button : {1018, 134, 130}) {
        ::PostMessageW(control(button), BM_CLICK, 0, 0);
        alert_desktop::pump();
    }

    EXPECT_EQ(codes, (Codes{104, 101, 2}));
}

TEST_F(AlertWindowTest, PressesTheButtonThatHasTheFocusWithEnter) {
    open(0);

    for (const int button : {1018, 134, 130})
        pressKey(button, VK_RETURN);

    EXPECT_EQ(codes, (Codes{104, 101, 2}));
}

TEST_F(AlertWindowTest, TakesEnterForOkWhereNoButtonHasTheFocus) {
    open(4);
    ::SendMessageW(control(1008), CB_SETCURSEL, 2, 0);

    pressKey(1008, VK_RETURN);

    EXPECT_EQ(codes, (Codes{2}));
}

TEST_F(AlertWindowTest, PressesAButtonOnceWhileEnterIsHeldDown) {
    constexpr LPARAM kWasDownBefore = 1 << 30;
    open(0);
    ::SetFocus(control(1018));

    for (const LPARAM keyFlags : {LPARAM{1}, LPARAM{1 | kWasDownBefore}}) {
        ::PostMessageW(control(1018), WM_KEYDOWN, VK_RETURN, keyFlags);
        alert_desktop::pump();
    }

    EXPECT_EQ(codes, (Codes{104}));
}

TEST_F(AlertWindowTest, PressesNoButtonThatIsDisabledWithEnter) {
    open(0);
    ::SetFocus(control(1018));
    ::EnableWindow(control(1018), FALSE);

    ::PostMessageW(control(1018), WM_KEYDOWN, VK_RETURN, 1);
    alert_desktop::pump();

    EXPECT_EQ(codes.end(), std::find(codes.begin(), codes.end(), 104U));
}

constexpr UINT kMillisecondsBetweenPresses = 100;
constexpr int kEnoughPresses = 10;
HWND windowOfMenu = nullptr;
int presses = 0;

bool isInMode(DWORD flag) {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    return ::GetGUIThreadInfo(::GetCurrentThreadId(), &info) && (info.flags & flag) != 0;
}

// Presses Esc as long as the menu is open. The first press closes the list; under Wine a second
// press is needed to leave the menu.
void CALLBACK pressEscInMenu(HWND, UINT, UINT_PTR, DWORD) {
    if (!isInMode(GUI_INMENUMODE)) return;
    if (++presses <= kEnoughPresses) {
        ::PostMessageW(windowOfMenu, WM_KEYDOWN, VK_ESCAPE, 1);
    } else {
        ::EndMenu();
    }
}

// The menu of this test is the system menu of the window, which Alt+Space opens.
TEST_F(AlertWindowTest, ClosesOnlyItsMenuWithEscWhileThatIsOpen) {
    open(0);
    ::SetForegroundWindow(alert->window());
    windowOfMenu = alert->window();
    presses = 0;
    const UINT_PTR user = ::SetTimer(nullptr, 0, kMillisecondsBetweenPresses, pressEscInMenu);

    ::SendMessageW(alert->window(), WM_SYSCOMMAND, SC_KEYMENU, L' ');
    alert_desktop::pump();

    ::KillTimer(nullptr, user);
    EXPECT_GT(presses, 0);
    EXPECT_LE(presses, kEnoughPresses);
    EXPECT_TRUE(codes.empty());
    EXPECT_TRUE(::IsWindowVisible(alert->window()));
}

void CALLBACK pressEnterInMove(HWND, UINT, UINT_PTR, DWORD) {
    if (!isInMode(GUI_INMOVESIZE)) return;
    const bool isEnough = ++presses > kEnoughPresses;
    ::PostMessageW(windowOfMenu, isEnough ? WM_LBUTTONUP : WM_KEYDOWN, isEnough ? 0 : VK_RETURN, 1);
}

// "Move" in the system menu moves the window by the arrow keys until Enter. What is in the queue
// afterwards is left there: Wine 10 leaves the Enter itself.
TEST_F(AlertWindowTest, EndsOnlyAMoveByKeysWithEnter) {
    open(0);
    ::SetForegroundWindow(alert->window());
    windowOfMenu = alert->window();
    presses = 0;
    const UINT_PTR user = ::SetTimer(nullptr, 0, kMillisecondsBetweenPresses, pressEnterInMove);

    ::SendMessageW(alert->window(), WM_SYSCOMMAND, SC_MOVE, 0);

    ::KillTimer(nullptr, user);
    EXPECT_GT(presses, 0);
    EXPECT_LE(presses, kEnoughPresses);
    EXPECT_TRUE(codes.empty());
    EXPECT_TRUE(::IsWindowVisible(alert->window()));
}

TEST_F(AlertWindowTest, TakesEscForCancel) {
    open(0);

    pressKey(1018, VK_ESCAPE);

    EXPECT_EQ(codes, (Codes{1}));
}

TEST_F(AlertWindowTest, MovesTheFocusWithTabInTheOrderOfReading) {
    open(4);
    ::SetFocus(control(1008));
    std::vector<int> order;
    for (int i = 0; i < 5; ++i) {
        order.push_back(focused());
        pressKey(focused(), VK_TAB);
    }

    EXPECT_EQ(order, (std::vector<int>{1008, 1018, 134, 131, 130}));
    EXPECT_EQ(focused(), 1008);
}

TEST_F(AlertWindowTest, StartsWithTheFocusOnOkOrOnTheListOfTimes) {
    for (int type = 0; type < alert_desktop::kTypes; ++type) {
        open(type);

        EXPECT_EQ(focused(), type == 4 || type == 30 ? 1008 : 130) << type;
        alert.reset();
    }
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

    const LRESULT answer =
        ::SendMessageW(alert->window(), WM_MENUCHAR, MAKEWPARAM('u', MF_SYSMENU), 0);

    EXPECT_EQ(codes, (Codes{104}));
    EXPECT_EQ(answer, MAKELRESULT(0, MNC_CLOSE));  // the system does not beep
}

TEST_F(AlertWindowTest, TellsOneActionForADoubleClick) {
    open(0);

    for (const int button : {1018, 134})
        alert_desktop::doubleClick(control(button));

    EXPECT_EQ(codes, (Codes{104, 101}));
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

TEST_F(AlertWindowTest, ReachesItsLinkWithTabAndOpensItWithSpaceAndEnter) {
    open(27);
    compactAlertWindow(alert->window(), true);
    ASSERT_EQ(focused(), 130);
    codes.clear();

    for (int i = 0; i < 4 && focused() != 1012; ++i)
        pressKey(focused(), VK_TAB);
    ASSERT_EQ(focused(), 1012);
    pressKey(1012, VK_SPACE);
    pressKey(1012, VK_RETURN);

    EXPECT_EQ(codes, (Codes{1012, 1012}));
}

std::wstring boxText;
std::wstring boxCaption;

void CALLBACK readAndCloseBox(HWND, UINT, UINT_PTR timer, DWORD) {
    constexpr int kTextOfABox = 65535;
    const HWND box = ::GetLastActivePopup(::FindWindowW(L"#32770", boxCaption.c_str()));
    if (!::IsWindowVisible(::GetDlgItem(box, kTextOfABox))) return;  // it is shown a little later
    ::KillTimer(nullptr, timer);
    wchar_t text[2048] = {};
    ::GetDlgItemTextW(box, kTextOfABox, text, 2048);
    boxText = text;
    ::PostMessageW(box, WM_CLOSE, 0, 0);
}

// The low bytes of these characters are the letters O, H, H, U and R.
TEST_F(AlertWindowTest, DoesNotTakeALetterOfAnotherAlphabetForAKeyOfItsOwn) {
    open(0);
    boxCaption = alert_desktop::kPrinterName;
    boxText = L"";

    for (const wchar_t letter : std::wstring(L"\u044F\u0448\u0648\u0155\u0152")) {
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 50, readAndCloseBox);
        ::SendMessageW(alert->window(), WM_MENUCHAR, MAKEWPARAM(letter, MF_SYSMENU), 0);
        ::KillTimer(nullptr, timer);
    }

    EXPECT_TRUE(codes.empty());
    EXPECT_EQ(boxText, L"");
}

TEST_F(AlertWindowTest, ShowsItsHelpInABox) {
    open(0);
    boxCaption = alert_desktop::kPrinterName;
    ::SetTimer(nullptr, 0, 50, readAndCloseBox);

    ::SendMessageW(control(131), BM_CLICK, 0, 0);

    EXPECT_EQ(boxText, alert_desktop::text(265));
    EXPECT_TRUE(codes.empty());
}

}  // namespace
