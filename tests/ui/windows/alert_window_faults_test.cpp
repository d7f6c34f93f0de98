// An allocation or a call of the system fails while an alert window opens. This program has an
// `operator new` that fails on demand.
#include "tests/support/allocation_faults.h"
#include "tests/ui/windows/accessible_reading.h"
#include "tests/ui/windows/alert_desktop.h"
#include "ui/alert_factory.h"
#include "ui/validation_dialog.h"
#include "ui/windows/window_properties.h"
#include "ui/windows/window_scale.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace {

using fault_injection::Mode;

constexpr unsigned kCheckTitle = 1064;
constexpr int kTonerLowType = 4, kNewCartridgeType = 25;

using Texts = std::map<int, std::wstring>;

BOOL CALLBACK collectText(HWND control, LPARAM texts) {
    wchar_t text[512] = {};
    ::SendMessageW(control, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
    auto& found = (*reinterpret_cast<Texts*>(texts))[::GetDlgCtrlID(control)];
    found = text;
    found += ::IsWindowVisible(control) ? L"" : L" (hidden)";
    found += ::GetPropW(control, L"_Blue_Text_") != nullptr ? L" (link)" : L"";
    return TRUE;
}

// The texts of all controls of a dialog.
Texts textsOf(HWND dialog) {
    Texts texts;
    ::EnumChildWindows(dialog, &collectText, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

std::unique_ptr<DefaultStatusDialog> newAlert(int type) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, type, 0);
    return createAlertDialog(description);
}

class AlertWindowFaultsTest : public testing::TestWithParam<Mode> {};

INSTANTIATE_TEST_SUITE_P(OnceAndForGood, AlertWindowFaultsTest,
                         testing::Values(Mode::Once, Mode::FromThenOn));

TEST_P(AlertWindowFaultsTest, AnAlertForWhichMemoryRunsOutOpensWholeOrNotAtAll) {
    for (const int type : {kTonerLowType, kNewCartridgeType}) {
        std::unique_ptr<DefaultStatusDialog> alert;
        bool opened = false;
        Texts whole;
        const auto scene = [&] {
            alert = newAlert(type);
            return [&] { opened = alert->create(); };
        };
        const auto check = [&](long failed) {
            if (failed == 0) {
                ASSERT_TRUE(opened);
                whole = textsOf(alert->window());
            }
            EXPECT_EQ(alert_desktop::dialogsOfThisThread(), opened ? 1 : 0) << failed;
            EXPECT_EQ(alert->window() != nullptr, opened) << failed;
            if (opened) {
                EXPECT_EQ(textsOf(alert->window()), whole) << failed;
            }
            alert.reset();
            alert_desktop::pump();
            EXPECT_EQ(alert_desktop::dialogsOfThisThread(), 0) << failed;
        };

        const fault_injection::Outcome outcome =
            fault_injection::everyAllocation(GetParam(), scene, check);

        EXPECT_GE(outcome.points, 5);
    }
}

TEST_P(AlertWindowFaultsTest, ACartridgeCheckForWhichMemoryRunsOutOpensWholeOrNotAtAll) {
    const std::wstring title = alert_desktop::text(kCheckTitle);
    const std::wstring printer = L"Laser printer of the whole first floor";
    Texts whole;
    const auto scene = [&] {
        return [&] {
            showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), printer);
        };
    };
    const auto check = [&](long failed) {
        const HWND window = ::FindWindowW(nullptr, title.c_str());
        if (failed == 0) whole = textsOf(window);
        EXPECT_EQ(alert_desktop::dialogsOfThisThread(), window != nullptr ? 1 : 0) << failed;
        if (window != nullptr) {
            EXPECT_EQ(textsOf(window), whole) << failed;
            ::DestroyWindow(window);
        }
        alert_desktop::pump();
    };

    const fault_injection::Outcome outcome =
        fault_injection::everyAllocation(GetParam(), scene, check);

    EXPECT_GT(outcome.points, 10);
    EXPECT_FALSE(whole.empty());
}

// Every control, with its place and the height of its font; a font that has ended has none.
std::map<HWND, std::pair<std::wstring, LONG>> layoutOf(HWND dialog) {
    std::map<HWND, std::pair<std::wstring, LONG>> layout;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        RECT place{};
        ::GetWindowRect(child, &place);
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        LOGFONTW font{};
        ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(child, WM_GETFONT, 0, 0)), sizeof(font),
                     &font);
        layout[child] = {std::to_wstring(place.left) + L"," + std::to_wstring(place.top) + L"," +
                             std::to_wstring(place.right) + L"," + std::to_wstring(place.bottom),
                         font.lfHeight};
    }
    return layout;
}

TEST_P(AlertWindowFaultsTest,
       AnAlertForWhichMemoryRunsOutKeepsAllItsFontsAndCanChangeItsScaleLater) {
    constexpr int kTypeWithSteps = 3;
    const auto changeScale = [](HWND dialog, int dpi) {
        ::SendMessageW(dialog, kScaleChanged, MAKEWPARAM(dpi, dpi), 0);
    };
    for (const int type : {kTonerLowType, kTypeWithSteps}) {
        const std::unique_ptr<DefaultStatusDialog> alert = newAlert(type);
        ASSERT_TRUE(alert->create());
        changeScale(alert->window(), 96);
        const auto small = layoutOf(alert->window());
        changeScale(alert->window(), 192);
        const auto large = layoutOf(alert->window());
        const auto scene = [&] {
            changeScale(alert->window(), 96);
            return [&] { changeScale(alert->window(), 192); };
        };
        const auto check = [&](long failed) {
            for (const auto& [control, look] : layoutOf(alert->window())) {
                const LONG font = look.second;
                EXPECT_TRUE(font == small.at(control).second || font == large.at(control).second)
                    << failed;
            }
            changeScale(alert->window(), 192);
            EXPECT_TRUE(layoutOf(alert->window()) == large) << failed;
        };

        const fault_injection::Outcome outcome =
            fault_injection::everyAllocation(GetParam(), scene, check);

        EXPECT_GE(outcome.points, 2);
    }
}

TEST_P(AlertWindowFaultsTest, AnAlertForWhichMemoryRunsOutIsPaintedInNewColoursAllTheSame) {
    const std::unique_ptr<DefaultStatusDialog> alert = newAlert(kTonerLowType);
    ASSERT_TRUE(alert->create());
    const auto mustBePaintedAgain = [&] {
        return ::GetUpdateRect(alert->window(), nullptr, FALSE) != FALSE;
    };
    const auto scene = [&] {
        alert_desktop::pump();
        EXPECT_FALSE(mustBePaintedAgain());
        return [&] { ::SendMessageW(alert->window(), WM_SYSCOLORCHANGE, 0, 0); };
    };
    const auto check = [&](long failed) { EXPECT_TRUE(mustBePaintedAgain()) << failed; };

    const fault_injection::Outcome outcome =
        fault_injection::everyAllocation(GetParam(), scene, check);

    EXPECT_GE(outcome.points, 2);
}

TEST_P(AlertWindowFaultsTest, AReaderForWhomMemoryRunsOutGetsTheSystemsAnswer) {
    constexpr int kPicture = 133;
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const std::unique_ptr<DefaultStatusDialog> alert = newAlert(kTonerLowType);
    ASSERT_TRUE(alert->create());
    const HWND picture = ::GetDlgItem(alert->window(), kPicture);
    LONG role = 0;
    const auto scene = [&] { return [&] { role = accessible::Object(picture).role(); }; };
    const auto check = [&](long failed) {
        EXPECT_EQ(role == ROLE_SYSTEM_GRAPHIC, failed == 0) << failed;
        EXPECT_GT(role, 0) << failed;
    };

    const fault_injection::Outcome outcome =
        fault_injection::everyAllocation(GetParam(), scene, check);

    EXPECT_EQ(outcome.points, 1);
    ::CoUninitialize();
}

int propertiesUntilFailure = 0;

BOOL WINAPI failOnce(HWND window, LPCWSTR name, HANDLE value) {
    return --propertiesUntilFailure == 0 ? FALSE : ::SetPropW(window, name, value);
}

TEST(AlertWindowFaults, AnAlertWhoseWindowTakesNoPropertyIsNotOpened) {
    setPropertyFunction(&failOnce);
    int failures = 0;
    for (int nth = 1; failures < nth; ++nth) {
        propertiesUntilFailure = nth;
        std::unique_ptr<DefaultStatusDialog> alert = newAlert(kTonerLowType);

        const bool opened = alert->create();

        if (propertiesUntilFailure > 0) break;  // every call has failed once
        ++failures;
        EXPECT_FALSE(opened) << nth;
        EXPECT_EQ(alert->window(), nullptr) << nth;
        alert.reset();
        EXPECT_EQ(alert_desktop::dialogsOfThisThread(), 0) << nth;
    }
    setPropertyFunction(nullptr);
    EXPECT_GE(failures, 3);
}

}  // namespace
