// The Help button of an alert.
#include "ui/default_status_dialog.h"

#include "platform/simulated/world.h"
#include "tests/ui/default_status_dialog_fixture.h"

using platform::simulated::world;

namespace {

// Another alert can end the document while this one's help is open.
TEST_F(DefaultStatusDialogTest, MayBeDestroyedWhileItsHelpIsOpen) {
    openQuietly(0, 41100);
    headless::setWhileMessageIsOpen([this] { alert.reset(); });

    headless::press(window(), 131);

    EXPECT_EQ(alert, nullptr);
}

TEST_F(DefaultStatusDialogTest, ShowsItsHelpUnderThePrintersName) {
    openQuietly(0, 41100);

    headless::press(window(), 131);

    ASSERT_EQ(headless::messages().size(), 1U);
    EXPECT_EQ(headless::messages()[0].text, text(265));
    EXPECT_EQ(headless::messages()[0].caption, kPrinter);
    EXPECT_FALSE(headless::messages()[0].rightToLeft);
    EXPECT_TRUE(told.empty());
}

TEST_F(DefaultStatusDialogTest, ShowsTheHelpOfTonerUnderItsOwnCaption) {
    openQuietly(31, 10300);

    headless::press(window(), 131);

    EXPECT_EQ(headless::messages()[0].text, text(354));
    EXPECT_EQ(headless::messages()[0].caption, text(359));
}

TEST_F(DefaultStatusDialogTest, ShowsItsHelpFromRightToLeftWhereTheUserReadsSo) {
    world().texts.setUserInterfaceLanguage(1037);
    world().texts.setPreferredLanguages({L"he-IL"});
    openQuietly(0, 41100);

    headless::press(window(), 131);

    EXPECT_TRUE(headless::messages()[0].rightToLeft);
    EXPECT_EQ(headless::messages()[0].text, text(265, 1037));
}

TEST_F(DefaultStatusDialogTest, HidesHelpForExactlyOneOnly) {
    describe(0, 41100);
    description.setInt(L"disalbeHelpBtn", 2);
    openDescribed();
    EXPECT_TRUE(control(131).visible);
    alert.reset();

    description.setInt(L"disalbeHelpBtn", 1);
    openDescribed();

    EXPECT_FALSE(control(131).visible);
}

}  // namespace
