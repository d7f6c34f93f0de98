// How alert windows are opened and destroyed, and that nothing is left of them afterwards.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tools/gauges/gauges.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"

#include <functional>
#include <string>

namespace {

TEST_F(AlertWindowTest, IsNotMadeFromATemplateThatIsMissing) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 0, 0);
    ASSERT_NE(createAlertDialog(description), nullptr);
    description.setInt(alert_key::kTemplate, 4711);

    DefaultStatusDialog dialog(description, false);

    EXPECT_FALSE(dialog.create());
    EXPECT_EQ(dialog.window(), nullptr);
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

// Wine keeps a little memory of every dialog that was ever open. So an alert is compared with a
// dialog of the same template that only fills its list: it must not leave more memory behind.
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
