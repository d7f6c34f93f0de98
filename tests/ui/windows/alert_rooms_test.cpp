#include "tests/ui/windows/alert_desktop.h"
#include "tests/ui/windows/shown_controls.h"
#include "ui/localized_text.h"
#include "ui/validation_dialog.h"

#include <gtest/gtest.h>

// A translation may be twice as long as the English text. The program runs in English.

namespace {

constexpr unsigned kEnglish = 0x0409;
constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066, kLearnMore = 1051;

TEST(AlertRoomsTest, AreMeasuredInEnglish) {
    EXPECT_EQ(chosenLanguage(alert_desktop::strings()), kEnglish);
}

TEST(AlertRoomsTest, OfEveryAlertHoldTextsTwiceAsLong) {
    for (int type = 0; type < alert_desktop::kTypes; ++type) {
        SCOPED_TRACE(type);
        const auto alert = alert_desktop::openAlert(type, 0);
        ASSERT_NE(alert, nullptr);
        alert_desktop::pump();

        expectRoomForTwice(alert->window());
    }
}

TEST(AlertRoomsTest, OfTheCartridgeCheckAndItsDetailsHoldTextsTwiceAsLong) {
    showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Hall");
    const HWND check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
    ASSERT_NE(check, nullptr);
    alert_desktop::pump();

    expectRoomForTwice(check);
    const alert_desktop::ModalPage details(kDetailsTitle, expectRoomForTwice);
    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);

    EXPECT_TRUE(details.wasShown());
    ::SendMessageW(check, WM_COMMAND, IDCANCEL, 0);
}

}  // namespace
