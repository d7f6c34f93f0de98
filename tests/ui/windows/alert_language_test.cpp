// What depends on the language of the system. The program runs once for each language.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tests/ui/windows/language_of_the_run.h"
#include "tests/ui/windows/message_boxes.h"

#include "ui/dialog_controls.h"
#include "ui/localized_text.h"

#include <algorithm>

namespace {

constexpr DWORD kRightToLeft = MB_RTLREADING | MB_RIGHT;
constexpr int kTonerLow = 4, kJam = 0, kGenuineCartridge = 25;
constexpr int kOk = 130, kHelp = 131, kMessage = 132, kHeadline = 1004, kChoices = 1008;

// Arabic and Hebrew
DWORD flagsOfTheLanguage() {
    const auto language = PRIMARYLANGID(static_cast<WORD>(languageOfTheRun()));
    return language == LANG_ARABIC || language == LANG_HEBREW ? kRightToLeft : 0;
}

class AlertLanguageTest : public AlertWindowTest {
protected:
    [[nodiscard]] bool isAccepted() const {
        return std::find(codes.begin(), codes.end(), 2U) != codes.end();
    }
};

TEST_F(AlertLanguageTest, IsTestedInTheLanguageThatTheRunIsFor) {
    EXPECT_EQ(chosenLanguage(alert_desktop::strings()), languageOfTheRun());
}

TEST_F(AlertLanguageTest, TheRightBoxIsShownForTheWay) {
    const MessageBoxes boxes;

    dialog_controls::showMessage(nullptr, L"text", L"caption", false);
    dialog_controls::showMessage(nullptr, L"text", L"caption", true);

    ASSERT_EQ(boxes.all().size(), 2U);
    EXPECT_EQ(boxes.all()[0].text, L"text");
    EXPECT_EQ(boxes.all()[0].caption, L"caption");
    EXPECT_EQ(boxes.all()[0].flags, 0U);
    EXPECT_EQ(boxes.all()[1].flags, kRightToLeft);
}

TEST_F(AlertLanguageTest, AMissingChoiceIsAskedForInTheDirectionOfTheLanguage) {
    open(kTonerLow);
    const MessageBoxes boxes;

    ::SendMessageW(control(kOk), BM_CLICK, 0, 0);

    ASSERT_EQ(boxes.all().size(), 1U);
    EXPECT_EQ(boxes.all()[0].owner, alert->window());
    EXPECT_EQ(boxes.all()[0].text, alert_desktop::text(356));
    EXPECT_EQ(boxes.all()[0].caption, alert_desktop::kPrinterName);
    EXPECT_EQ(boxes.all()[0].flags, flagsOfTheLanguage());
    EXPECT_FALSE(isAccepted());
    EXPECT_TRUE(::IsWindowVisible(alert->window()));
}

TEST_F(AlertLanguageTest, AChoiceNeedsNoBox) {
    open(kTonerLow);
    const MessageBoxes boxes;
    ::SendMessageW(control(kChoices), CB_SETCURSEL, 8, 0);

    ::SendMessageW(control(kOk), BM_CLICK, 0, 0);

    EXPECT_TRUE(boxes.all().empty());
    EXPECT_TRUE(isAccepted());
}

TEST_F(AlertLanguageTest, HelpIsShownInTheDirectionOfTheLanguage) {
    const MessageBoxes boxes;
    open(kJam);
    ::SendMessageW(control(kHelp), BM_CLICK, 0, 0);
    alert.reset();
    open(kTonerLow);

    ::SendMessageW(control(kHelp), BM_CLICK, 0, 0);

    ASSERT_EQ(boxes.all().size(), 2U);
    EXPECT_EQ(boxes.all()[0].text, alert_desktop::text(265));
    EXPECT_EQ(boxes.all()[0].caption, alert_desktop::kPrinterName);
    EXPECT_EQ(boxes.all()[1].text, alert_desktop::text(281));
    EXPECT_EQ(boxes.all()[1].caption, alert_desktop::text(357));
    for (const MessageBoxes::Box& box : boxes.all())
        EXPECT_EQ(box.flags, flagsOfTheLanguage());
}

// The page behind the link is Chinese.
TEST_F(AlertLanguageTest, ANewCartridgeLeadsToItsCheckOnAChineseSystemOnly) {
    constexpr LANGID kSimplifiedChinese = 2052;
    const bool isChinese = ::GetSystemDefaultLangID() == kSimplifiedChinese;

    open(kGenuineCartridge);

    EXPECT_EQ(textOf(kHeadline), alert_desktop::text(isChinese ? 347 : 250));
    EXPECT_EQ(::IsWindowVisible(control(kMessage)) != FALSE, isChinese);
    if (!isChinese) return;
    EXPECT_NE(textOf(kMessage), L"");
    EXPECT_NE(::GetPropW(control(kMessage), L"_Blue_Text_"), nullptr);
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(control(kMessage), WM_GETFONT, 0, 0)),
                 sizeof(font), &font);
    EXPECT_TRUE(font.lfUnderline);
    alert_desktop::doubleClick(control(kMessage));
    EXPECT_EQ(codes, (Codes{102}));
}

}  // namespace
