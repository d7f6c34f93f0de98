#include "ui/validation_dialog.h"

#include "tests/ui/windows/alert_desktop.h"
#include "ui/validation_texts.h"
#include "ui/windows/gdi_handles.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066;
constexpr int kSubmit = 1036, kLearnMore = 1051, kDecline = 1063;
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

TEST_F(ValidationDialogTest, PaintsItsBanner) {
    alert_desktop::pumpFor(50);
    const WindowDc dc(check);

    EXPECT_EQ(::GetPixel(dc.get(), 400, 4), kBannerColour);
    EXPECT_EQ(::GetPixel(dc.get(), 2, 44), kBannerColour);
    EXPECT_NE(::GetPixel(dc.get(), 2, 48), kBannerColour);
}

TEST_F(ValidationDialogTest, EndsWhenTheUserDeclines) {
    ::SendDlgItemMessageW(check, kDecline, BM_CLICK, 0, 0);

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

TEST_F(ValidationDialogTest, IgnoresEveryOtherCommand) {
    ::SendMessageW(check, WM_COMMAND, 4711, 0);

    EXPECT_TRUE(::IsWindow(check));
    EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(check, kSubmit)));
}

// What the modal details looked like while their own loop ran.
struct Details {
    bool ownerEnabled = true;
    HWND owner = nullptr;
    std::wstring privacy;
    bool privacyIsLink = false;
} details;

void CALLBACK lookAndEnd(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    const HWND window = ::FindWindowW(nullptr, alert_desktop::text(kDetailsTitle).c_str());
    details.owner = ::GetWindow(window, GW_OWNER);
    details.ownerEnabled = ::IsWindowEnabled(details.owner) != FALSE;
    details.privacy = textOf(window, 1049);
    details.privacyIsLink = ::GetPropW(::GetDlgItem(window, 1049), L"_Blue_Text_") != nullptr;
    ::PostMessageW(window, WM_COMMAND, 1, 0);
}

TEST_F(ValidationDialogTest, ExplainsInAModalWindowWhatIsSent) {
    ::SetTimer(nullptr, 0, 50, lookAndEnd);
    ::SendDlgItemMessageW(check, kLearnMore, WM_LBUTTONDOWN, 0, 0);
    ::SendDlgItemMessageW(check, kLearnMore, WM_LBUTTONUP, 0, 0);
    alert_desktop::pump();

    EXPECT_EQ(details.owner, check);
    EXPECT_FALSE(details.ownerEnabled);
    EXPECT_EQ(details.privacy, alert_desktop::text(1049));
    EXPECT_TRUE(details.privacyIsLink);
    EXPECT_TRUE(::IsWindowEnabled(check));
}

TEST(ValidationDialog, IsNotShownWhereItsTemplateIsMissing) {
    showValidationDialog(::GetModuleHandleW(L"kernel32.dll"), alert_desktop::strings(), L"Hall");

    EXPECT_EQ(::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str()), nullptr);
}

}  // namespace
