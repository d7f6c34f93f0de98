#include "tests/ui/windows/alert_desktop.h"
#include "tests/ui/windows/language_of_the_run.h"
#include "tests/ui/windows/shown_controls.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"
#include "ui/alert_window.h"
#include "ui/localized_text.h"
#include "ui/text_format.h"
#include "ui/validation_dialog.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

// Opens every alert in the language of the environment with the longest texts that it can show.
// Nothing may be cut off or overlap, and controls follow each other as one reads. The program runs
// once for each language.

namespace {

constexpr int kManualFeed = 138;  // a template that no type chooses
constexpr int kNameUnits = 220, kPartNumberUnits = 31;
constexpr unsigned kFirstMedia = 301, kLastMedia = 321;
constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066, kLearnMore = 1051;

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
        set(alert_key::kSuppliesPages,
            formatText(alert_desktop::text(130), {L"999999"}, kTextUnits));
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

TEST_F(AlertLayoutTest, IsTestedInTheLanguageThatTheRunIsFor) {
    EXPECT_EQ(chosenLanguage(alert_desktop::strings()), languageOfTheRun());
}

TEST_P(AlertLayoutTest, ShowsEverythingWholeAndApart) {
    const auto alert = openFullest(GetParam());
    ASSERT_NE(alert, nullptr);

    expectNeat(alert->window());
}

INSTANTIATE_TEST_SUITE_P(OfEveryType, AlertLayoutTest, testing::Range(0, alert_desktop::kTypes));

TEST_P(AlertLayoutTest, GoesFromControlToControlAsOneReads) {
    const auto alert = openFullest(GetParam());
    ASSERT_NE(alert, nullptr);
    alert_desktop::pump();

    expectInReadingOrder(alert->window());
}

TEST_F(AlertLayoutTest, IsMirroredWhereOneReadsFromTheRight) {
    const auto alert = openFullest(0);
    ASSERT_NE(alert, nullptr);

    const LONG_PTR style = ::GetWindowLongPtrW(alert->window(), GWL_EXSTYLE);

    EXPECT_EQ((style & WS_EX_LAYOUTRTL) != 0, isRightToLeftUI());
}

TEST_F(AlertLayoutTest, ShowsManualFeedingWholeAndInTheOrderOfReading) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 9, 0);
    ASSERT_NE(createAlertDialog(description), nullptr);
    description.setInt(alert_key::kTemplate, kManualFeed);
    const DefaultStatusDialog alert(description, true);
    ASSERT_NE(alert.window(), nullptr);
    alert_desktop::pump();

    expectInReadingOrder(alert.window());
    expectNeat(alert.window());
}

TEST_F(AlertLayoutTest, ShowsTheCompactFormWholeAndApart) {
    for (const int type : {26, 27}) {
        const auto alert = openFullest(type);
        ASSERT_NE(alert, nullptr);
        compactAlertWindow(alert->window(), type == 27);

        expectInReadingOrder(alert->window());
        expectNeat(alert->window());
    }
}

TEST_F(AlertLayoutTest, ShowsTheCartridgeCheckAndItsDetailsWholeAndApart) {
    showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
    const HWND check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
    ASSERT_NE(check, nullptr);

    expectInReadingOrder(check);
    expectNeat(check);
    const alert_desktop::ModalPage details(kDetailsTitle, [](HWND page) {
        expectInReadingOrder(page);
        expectNeat(page);
    });
    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_TRUE(details.wasShown());
    ::SendMessageW(check, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(::IsWindow(check));
}

}  // namespace
