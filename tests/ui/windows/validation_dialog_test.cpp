#include "ui/validation_dialog.h"

#include "platform/registry.h"
#include "tests/support/trace_lines.h"
#include "tests/ui/windows/alert_desktop.h"
#include "tests/ui/windows/high_contrast.h"
#include "tests/ui/windows/window_pixels.h"
#include "ui/validation_texts.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/gdi_handles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using alert_desktop::ModalPage;

constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066;
constexpr int kSubmit = 1036, kPrivacy = 1049, kLearnMore = 1051, kDecline = 1063;
constexpr COLORREF kBannerColour = RGB(0, 0, 200);

class ValidationDialogTest : public testing::Test {
protected:
    void SetUp() override {
        showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
        check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
        ASSERT_NE(check, nullptr);
        alert_desktop::pump();
    }
    void TearDown() override {
        if (::IsWindow(check)) ::DestroyWindow(check);
    }

    HWND check = nullptr;
};

std::wstring textOf(HWND dialog, int control) {
    wchar_t text[1024] = {};
    ::GetDlgItemTextW(dialog, control, text, 1024);
    return text;
}

TEST_F(ValidationDialogTest, AsksWithEveryTextOfTheLibrary) {
    for (const ControlText& row : cartridgeCheckTexts()) {
        EXPECT_EQ(textOf(check, row.control), alert_desktop::text(row.text)) << row.control;
    }
    EXPECT_EQ(::GetWindow(check, GW_OWNER), nullptr);
    EXPECT_TRUE(::IsWindowVisible(check));
}

TEST_F(ValidationDialogTest, OpensWithTheFocusOnItsFirstButtonAndReachesItsLinkWithTab) {
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(check, kSubmit));

    for (int i = 0; i < 2; ++i) {
        ::PostMessageW(::GetFocus(), WM_KEYDOWN, VK_TAB, 1);
        alert_desktop::pump();
    }

    EXPECT_EQ(::GetFocus(), ::GetDlgItem(check, kLearnMore));
}

TEST_F(ValidationDialogTest, PaintsItsBanner) {
    alert_desktop::pumpFor(50);
    const WindowDc dc(check);

    EXPECT_EQ(::GetPixel(dc.get(), 400, 4), kBannerColour);
    EXPECT_EQ(::GetPixel(dc.get(), 2, 44), kBannerColour);
    EXPECT_NE(::GetPixel(dc.get(), 2, 48), kBannerColour);
}

// How many pixels of the banner are not as its text on this background makes them.
std::size_t differencesOfTheBanner(HWND check, COLORREF back, COLORREF colour) {
    constexpr int kHeight = 46, kMargin = 18, kFontHeight = 24;
    constexpr unsigned kText = 1065;
    const bool isMirrored = (::GetWindowLongPtrW(check, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    const window_pixels::Pixels found = window_pixels::shownBy(check);
    const auto draw = [&](HDC dc) {
        RECT area{0, 0, found.size.width, kHeight};
        const Brush brush(::CreateSolidBrush(back));
        ::FillRect(dc, &area, brush.get());
        (isMirrored ? area.right : area.left) += isMirrored ? -kMargin : kMargin;
        const Font font(::CreateFontW(kFontHeight, 0, 0, 0, FW_SEMIBOLD, FALSE, FALSE, FALSE,
                                      DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                      CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE,
                                      L"MS Shell Dlg 2"));
        const SelectedObject selected(dc, font.get());
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, colour);
        ::DrawTextW(dc, alert_desktop::text(kText).c_str(), -1, &area,
                    DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX |
                        (isMirrored ? DT_RIGHT | DT_RTLREADING : 0U));
    };
    return window_pixels::differences(found,
                                      window_pixels::drawn({found.size.width, kHeight}, draw));
}

TEST_F(ValidationDialogTest, SaysWhatItIsInWhiteOnItsBanner) {
    alert_desktop::pumpFor(50);

    EXPECT_EQ(differencesOfTheBanner(check, kBannerColour, RGB(255, 255, 255)), 0U);
}

TEST_F(ValidationDialogTest, HasItsBannerTextOnTheRightWhereOneReadsFromThere) {
    ::DestroyWindow(check);
    const alert_desktop::MirroredDesktop desktop;
    SetUp();
    alert_desktop::pumpFor(50);

    EXPECT_EQ(differencesOfTheBanner(check, kBannerColour, RGB(255, 255, 255)), 0U);
}

TEST_F(ValidationDialogTest, HasABannerInTheColoursOfAHighContrastScheme) {
    const HighContrast scheme;
    ::SendMessageW(check, WM_SYSCOLORCHANGE, 0, 0);
    alert_desktop::pumpFor(50);

    EXPECT_EQ(differencesOfTheBanner(check, HighContrast::kBack, HighContrast::kText), 0U);
}

TEST_F(ValidationDialogTest, FollowsAHighContrastSchemeThatBegins) {
    alert_desktop::pumpFor(50);
    const HighContrast scheme;

    ::SendMessageW(check, WM_SYSCOLORCHANGE, 0, 0);
    alert_desktop::pumpFor(50);

    const WindowDc dc(check);
    EXPECT_EQ(::GetPixel(dc.get(), 400, 4), HighContrast::kBack);
    EXPECT_EQ(::GetPixel(dc.get(), 2, 60), HighContrast::kBack);
}

COLORREF faceOf(HWND window) {
    const WindowDc dc(window);
    return ::GetPixel(dc.get(), 2, 60);
}

TEST_F(ValidationDialogTest, FollowsASchemeThatBeginsWhileItsDetailsAreOpen) {
    // Apart, so that each shows its own pixels.
    ::SetWindowPos(check, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    const ModalPage details(kDetailsTitle, [this](HWND page) {
        const HighContrast scheme;
        for (const HWND window : {check, page})
            ::SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
        alert_desktop::pumpFor(50);
        for (const HWND window : {check, page})
            EXPECT_EQ(faceOf(window), HighContrast::kBack);
    });

    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_TRUE(details.wasShown());
}

TEST_F(ValidationDialogTest, EndsWhenTheUserDeclines) {
    ::SendDlgItemMessageW(check, kDecline, BM_CLICK, 0, 0);

    EXPECT_FALSE(::IsWindow(check));
}

// Only the decline button is tested, because the submit button would end this process. Both letters
// are handled by the same code.
TEST_F(ValidationDialogTest, EndsWithTheLetterOfItsDeclineButton) {
    const HWND submit = ::GetDlgItem(check, kSubmit);
    ::SetFocus(submit);
    ::PostMessageW(submit, WM_CHAR, L'x', 1);
    alert_desktop::pump();
    ASSERT_TRUE(::IsWindow(check));

    ::PostMessageW(submit, WM_CHAR, L'd', 1);
    alert_desktop::pump();

    EXPECT_FALSE(::IsWindow(check));
}

TEST_F(ValidationDialogTest, EndsWithAltAndTheLetterOfItsDeclineButton) {
    constexpr LPARAM kAltIsDown = 1 << 29;
    const HWND submit = ::GetDlgItem(check, kSubmit);
    ::SetFocus(submit);

    ::PostMessageW(submit, WM_SYSCHAR, L'd', kAltIsDown);
    alert_desktop::pump();

    EXPECT_FALSE(::IsWindow(check));
}

TEST_F(ValidationDialogTest, EndsWithEscAndWithItsCloseBox) {
    ::SetFocus(::GetDlgItem(check, kDecline));
    ::PostMessageW(::GetDlgItem(check, kDecline), WM_KEYDOWN, VK_ESCAPE, 1);
    alert_desktop::pump();
    EXPECT_FALSE(::IsWindow(check));

    SetUp();
    ::SendMessageW(check, WM_CLOSE, 0, 0);
    alert_desktop::pump();  // the system posts the Cancel command

    EXPECT_FALSE(::IsWindow(check));
}

int checksWithThisTitle = 0;
HWND broughtToFront = nullptr;

BOOL CALLBACK countChecks(HWND window, LPARAM title) {
    wchar_t text[512] = {};
    ::GetWindowTextW(window, text, 512);
    if (*reinterpret_cast<const std::wstring*>(title) == text) ++checksWithThisTitle;
    return TRUE;
}

BOOL WINAPI recordForeground(HWND window) {
    broughtToFront = window;
    return TRUE;
}

TEST_F(ValidationDialogTest, ComesToTheFrontWhenItIsAskedForWhileItIsOpen) {
    setForegroundFunction(&recordForeground);
    checksWithThisTitle = 0;
    const std::wstring title = alert_desktop::text(kCheckTitle);

    showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");

    setForegroundFunction(nullptr);
    ::EnumThreadWindows(::GetCurrentThreadId(), &countChecks, reinterpret_cast<LPARAM>(&title));
    EXPECT_EQ(checksWithThisTitle, 1);
    EXPECT_EQ(broughtToFront, check);
}

TEST_F(ValidationDialogTest, OpensAgainAfterItWasClosed) {
    ::SendDlgItemMessageW(check, kDecline, BM_CLICK, 0, 0);

    SetUp();

    EXPECT_TRUE(::IsWindowVisible(check));
}

TEST_F(ValidationDialogTest, IgnoresEveryOtherCommand) {
    ::SendMessageW(check, WM_COMMAND, 4711, 0);

    EXPECT_TRUE(::IsWindow(check));
    EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(check, kSubmit)));
}

TEST_F(ValidationDialogTest, EndsItsDetailsWithTheLetterOfTheirButton) {
    const ModalPage details(kDetailsTitle, [](HWND page) {
        ::PostMessageW(::GetDlgItem(page, IDOK), WM_CHAR, L'd', 1);
    });

    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_TRUE(details.wasShown());
    EXPECT_FALSE(details.wasLeftOpen());
    EXPECT_TRUE(::IsWindow(check));
}

TEST_F(ValidationDialogTest, ExplainsInAModalWindowWhatIsSent) {
    const ModalPage details(kDetailsTitle, [this](HWND page) {
        EXPECT_EQ(::GetWindow(page, GW_OWNER), check);
        EXPECT_FALSE(::IsWindowEnabled(check));
        EXPECT_EQ(textOf(page, kPrivacy), alert_desktop::text(kPrivacy));
        EXPECT_NE(::GetPropW(::GetDlgItem(page, kPrivacy), L"_Blue_Text_"), nullptr);
    });

    ::SendDlgItemMessageW(check, kLearnMore, WM_LBUTTONDOWN, 0, 0);
    ::SendDlgItemMessageW(check, kLearnMore, WM_LBUTTONUP, 0, 0);

    EXPECT_TRUE(details.wasShown());
    EXPECT_TRUE(::IsWindowEnabled(check));
}

// The validation dialog is disabled while its details are open. If the details were behind another
// window, the user could not go on.
TEST_F(ValidationDialogTest, BringsItsDetailsToTheFrontWhileTheyAreOpen) {
    setForegroundFunction(&recordForeground);
    const ModalPage details(kDetailsTitle, [](HWND page) {
        showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
        EXPECT_EQ(broughtToFront, page);
    });

    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    setForegroundFunction(nullptr);
    EXPECT_TRUE(details.wasShown());
}

TEST_F(ValidationDialogTest, IsPaintedAnewWhenItsDetailsEnd) {
    ::SetWindowPos(check, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    const ModalPage details(kDetailsTitle, [this](HWND) { ::UpdateWindow(check); });

    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    RECT area{}, client{};
    ::GetUpdateRect(check, &area, FALSE);
    ::GetClientRect(check, &client);
    EXPECT_TRUE(::EqualRect(&area, &client));
}

// This trace line shows how often the maker's page was opened: each time, the program traces once
// that the configured address cannot be used.
constexpr char kOpened[] = "TERNA - setting WebSite is no http address, using the default";

void setMachineText(const wchar_t* path, const wchar_t* name, const std::wstring& text) {
    platform::RegistryKey key;
    ASSERT_EQ(key.createForWriting(platform::Hive::LocalMachine, path), 0U);
    ASSERT_EQ(key.write(name, platform::ValueType::String, text.c_str(),
                        static_cast<std::uint32_t>((text.size() + 1) * sizeof(wchar_t))),
              0U);
}

TEST_F(ValidationDialogTest, OpensThePrivacyPageOnceForADoubleClick) {
    setMachineText(L"Software\\Classes\\https\\shell\\open\\command", L"",
                   L"C:\\windows\\system32\\cmd.exe /c exit");
    setMachineText(L"SOFTWARE\\Corvane\\QVBL7400 SM", L"WebSite", L"no address");
    const TraceLines lines;
    const ModalPage details(
        kDetailsTitle, [](HWND page) { alert_desktop::doubleClick(::GetDlgItem(page, kPrivacy)); });

    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_EQ(lines.count(kOpened), 1U);
}

TEST(ValidationDialog, IsNotShownWhereItsTemplateIsMissing) {
    showValidationDialog(::GetModuleHandleW(L"kernel32.dll"), alert_desktop::strings(), L"Hall");

    EXPECT_EQ(::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str()), nullptr);
}

}  // namespace
