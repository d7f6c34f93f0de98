#include "tests/ui/windows/alert_desktop.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"
#include "ui/alert_window.h"
#include "ui/localized_text.h"
#include "ui/text_format.h"
#include "ui/validation_dialog.h"
#include "ui/windows/gdi_handles.h"
#include "ui/windows/window_scale.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

// Opens every alert in the language of the environment with the longest texts that it can show.
// Nothing may be cut off or overlap. The program runs once for each language.

namespace {

constexpr int kTypes = 33;
constexpr unsigned long kEnglish = 0x0409;
constexpr int kNameUnits = 220, kPartNumberUnits = 31;
constexpr int kFaceMargin = 6;  // pixels between a caption and each side of its button
constexpr unsigned kFirstMedia = 301, kLastMedia = 321;
constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066, kLearnMore = 1051;

struct Shown {
    HWND window;
    int id;
    RECT place;  // position in the dialog
    std::wstring text;
    bool isButton, isText, isList;
};

RECT placeIn(HWND dialog, HWND control) {
    RECT place{};
    ::GetWindowRect(control, &place);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    const int units = ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(units));
    return text;
}

std::vector<Shown> visibleControls(HWND dialog) {
    std::vector<Shown> all;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (!::IsWindowVisible(child)) continue;
        wchar_t name[32] = {};
        ::GetClassNameW(child, name, 32);
        const std::wstring kind(name);
        const LONG_PTR style = ::GetWindowLongPtrW(child, GWL_STYLE);
        Shown shown{
            child, ::GetDlgCtrlID(child), placeIn(dialog, child), textOf(child), kind == L"Button",
            false, kind == L"ComboBox"};
        shown.isText = kind == L"Static" && (style & SS_TYPEMASK) == SS_LEFT && !shown.text.empty();
        all.push_back(shown);
    }
    return all;
}

SIZE needed(const Shown& shown, UINT format, LONG width) {
    const WindowDc dc(shown.window);
    auto* font = reinterpret_cast<HFONT>(::SendMessageW(shown.window, WM_GETFONT, 0, 0));
    const SelectedObject selected(dc.get(), font);
    RECT area{0, 0, width, 0};
    ::DrawTextW(dc.get(), shown.text.c_str(), static_cast<int>(shown.text.size()), &area,
                format | DT_CALCRECT);
    return {area.right, area.bottom};
}

std::string nameOf(const Shown& shown) {
    return "control " + std::to_string(shown.id);
}

void expectInside(HWND dialog, const Shown& shown) {
    RECT client{};
    ::GetClientRect(dialog, &client);
    EXPECT_GE(shown.place.left, 0) << nameOf(shown);
    EXPECT_GE(shown.place.top, 0) << nameOf(shown);
    EXPECT_LE(shown.place.right, client.right) << nameOf(shown);
    EXPECT_LE(shown.place.bottom, client.bottom) << nameOf(shown);
}

void expectTextFits(const Shown& shown) {
    RECT room{};
    ::GetClientRect(shown.window, &room);
    if (shown.isText) {
        const SIZE size = needed(shown, DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS, room.right);
        EXPECT_LE(size.cx, room.right) << nameOf(shown);
        EXPECT_LE(size.cy, room.bottom) << nameOf(shown);
    } else if (shown.isButton) {
        const SIZE size = needed(shown, DT_SINGLELINE, 0);
        EXPECT_LE(size.cx, room.right - 2 * kFaceMargin) << nameOf(shown);
        EXPECT_LE(size.cy, room.bottom) << nameOf(shown);
    }
}

void expectChoicesFit(const Shown& list) {
    const auto count = static_cast<int>(::SendMessageW(list.window, CB_GETCOUNT, 0, 0));
    const int room = list.place.right - list.place.left - ::GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(count, 9);
    for (int i = 0; i < count; ++i) {
        Shown choice = list;
        wchar_t text[kTextUnits] = {};
        ::SendMessageW(list.window, CB_GETLBTEXT, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(text));
        choice.text = text;
        EXPECT_LE(needed(choice, DT_SINGLELINE | DT_NOPREFIX, 0).cx, room - 2 * kFaceMargin) << i;
    }
}

void expectNeatAsItIs(HWND dialog) {
    const std::vector<Shown> all = visibleControls(dialog);
    for (std::size_t i = 0; i < all.size(); ++i) {
        expectInside(dialog, all[i]);
        expectTextFits(all[i]);
        if (all[i].isList) expectChoicesFit(all[i]);
        for (std::size_t j = i + 1; j < all.size(); ++j) {
            const bool matters = (all[i].isText || all[i].isButton || all[i].isList) &&
                                 (all[j].isText || all[j].isButton || all[j].isList);
            RECT both{};
            EXPECT_FALSE(matters && ::IntersectRect(&both, &all[i].place, &all[j].place))
                << nameOf(all[i]) << " and " << nameOf(all[j]);
        }
    }
}

// As the dialog was opened and at the scales to which its screen may change.
void expectNeat(HWND dialog) {
    alert_desktop::pump();
    expectNeatAsItIs(dialog);
    for (const int dpi : {120, 144, 168, 192}) {
        const testing::ScopedTrace scale(__FILE__, __LINE__, std::to_string(dpi) + " per inch");
        ::SendMessageW(dialog, kScaleChanged, MAKEWPARAM(dpi, dpi), 0);
        alert_desktop::pump();  // buttons get their size when they are painted
        expectNeatAsItIs(dialog);
    }
}

std::wstring longestMedia() {
    std::wstring longest;
    for (unsigned id = kFirstMedia; id <= kLastMedia; ++id) {
        const std::wstring name = alert_desktop::text(id);
        if (name.size() > longest.size()) longest = name;
    }
    return longest;
}

class AlertLayoutTest : public testing::TestWithParam<int> {
protected:
    AlertLayoutTest() {
        if (isRightToLeftUI()) _mirrored.emplace();
    }

    // Opens an alert with the longest part number, page count and media name.
    static std::unique_ptr<DefaultStatusDialog> openFullest(int type) {
        std::wstring printer;
        while (printer.size() < kNameUnits)
            printer += L"Laser printer ";
        arbor::PropertyHolder description;
        alert_desktop::describe(description, type, 0, nullptr,
                                printer.substr(0, kNameUnits).c_str());
        if (createAlertDialog(description) == nullptr) return nullptr;
        const auto set = [&description](const wchar_t* key, const std::wstring& text) {
            if (description.hasProperty(key)) description.setWString(key, text.c_str());
        };
        const std::wstring part(kPartNumberUnits, L'W');
        set(alert_key::kSuppliesName, formatText(alert_desktop::text(223), {part}, kTextUnits));
        if (description.hasProperty(alert_key::kDetailText)) {
            const std::wstring media = longestMedia();
            set(alert_key::kDetailText,
                formatText(alert_desktop::text(154), {media, media}, kTextUnits));
        }
        auto alert = std::make_unique<DefaultStatusDialog>(description, true);
        if (alert->window() == nullptr) return nullptr;
        return alert;
    }

private:
    std::optional<alert_desktop::MirroredDesktop> _mirrored;
};

// Without its texts, or in a locale that the system does not know, a language would be tested in
// English.
TEST_F(AlertLayoutTest, IsTestedInTheLanguageThatTheRunIsFor) {
    const char* const language = std::getenv("BEAMLINE_LANGUAGE");

    const unsigned long expected =
        language != nullptr ? std::strtoul(language, nullptr, 16) : kEnglish;

    EXPECT_EQ(chosenLanguage(alert_desktop::strings()), expected);
}

TEST_P(AlertLayoutTest, ShowsEverythingWholeAndApart) {
    const auto alert = openFullest(GetParam());
    ASSERT_NE(alert, nullptr);

    expectNeat(alert->window());
}

INSTANTIATE_TEST_SUITE_P(OfEveryType, AlertLayoutTest, testing::Range(0, kTypes));

TEST_F(AlertLayoutTest, ShowsTheCompactFormWholeAndApart) {
    for (const int type : {26, 27}) {
        const auto alert = openFullest(type);
        ASSERT_NE(alert, nullptr);
        compactAlertWindow(alert->window(), type == 27);

        expectNeat(alert->window());
    }
}

bool detailsWereNeat = false;

void CALLBACK checkDetails(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    const HWND details = ::FindWindowW(nullptr, alert_desktop::text(kDetailsTitle).c_str());
    if (details != nullptr) {
        expectNeat(details);
        detailsWereNeat = true;
    }
    ::PostMessageW(details, WM_COMMAND, IDOK, 0);
}

TEST_F(AlertLayoutTest, ShowsTheCartridgeCheckAndItsDetailsWholeAndApart) {
    showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
    const HWND check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
    ASSERT_NE(check, nullptr);

    expectNeat(check);
    ::SetTimer(nullptr, 0, 50, checkDetails);
    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_TRUE(detailsWereNeat);
    ::SendMessageW(check, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(::IsWindow(check));
}

}  // namespace
