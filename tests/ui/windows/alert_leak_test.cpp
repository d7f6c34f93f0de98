// That nothing is left of alerts that are gone. A program of its own, because it takes minutes.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tools/gauges/gauges.h"
#include "ui/validation_dialog.h"

#include <functional>

namespace {

using AlertLeakTest = AlertWindowTest;

TEST_F(AlertLeakTest, LeavesNothingBehindAfterFiveHundredAlerts) {
    constexpr int kWarmUp = alert_desktop::kTypes, kAlerts = 500;
    const auto openAndEnd = [this](int i) {
        open(i % alert_desktop::kTypes);
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
    EXPECT_EQ(alert_desktop::dialogsOfThisThread(), 0);
}

TEST_F(AlertLeakTest, LeavesNothingBehindAfterFiftyCartridgeChecks) {
    constexpr int kWarmUp = 5, kChecks = 50, kScaleChanged = 0x02E0;
    constexpr unsigned kTitle = 1064;
    const auto openAndEnd = [] {
        showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
        const HWND check = ::FindWindowW(nullptr, alert_desktop::text(kTitle).c_str());
        for (const int dpi : {144, 96}) {
            ::SendMessageW(check, kScaleChanged, MAKEWPARAM(dpi, dpi), 0);
            ::InvalidateRect(check, nullptr, TRUE);
            ::UpdateWindow(check);
        }
        ::DestroyWindow(check);
        alert_desktop::pump();
    };
    for (int i = 0; i < kWarmUp; ++i)
        openAndEnd();
    const Gauges before = readGauges();

    for (int i = 0; i < kChecks; ++i)
        openAndEnd();

    const Gauges after = readGauges();
    EXPECT_LE(after.gdiObjects, before.gdiObjects + 3);
    EXPECT_LE(after.handles, before.handles + 2);
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

TEST_F(AlertLeakTest, KeepsNoMemoryBeyondThatOfABareDialog) {
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
