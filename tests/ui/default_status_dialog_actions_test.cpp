// The action messages that an alert publishes for clicks, and what listeners may do to the alert
// during a message.
#include "ui/default_status_dialog.h"

#include "tests/support/trace_lines.h"
#include "tests/ui/default_status_dialog_fixture.h"
#include "ui/alert_window.h"

#include <cstdint>
#include <functional>
#include <iterator>

namespace {

constexpr unsigned kFromAccelerator = 1U << 16U;

TEST_F(DefaultStatusDialogTest, TellsTheActionOfEachControl) {
    struct Case {
        unsigned control;
        std::uint32_t code;
    };
    constexpr Case kCases[] = {{134, 101}, {1006, 101}, {1007, 100}, {1018, 104},  {2, 1},
                               {132, 102}, {130, 2},    {1005, 6},   {1012, 1012}, {135, 135}};
    openQuietly(0, 41100);
    for (const Case& expected : kCases) {
        headless::sendCommand(window(), expected.control);
        EXPECT_EQ(told.back().code, expected.code) << expected.control;
        EXPECT_EQ(told.back().dialog, static_cast<void*>(alert.get()));
    }
    EXPECT_EQ(told.size(), std::size(kCases));
    EXPECT_TRUE(headless::messages().empty());
}

TEST_F(DefaultStatusDialogTest, SaysThatItsMessagesNeedNothingMore) {
    openQuietly(0, 41100);

    EXPECT_EQ(alert->onInitDialog(window(), 0, 0), 1);
    EXPECT_EQ(alert->onCommand(window(), 130, 0), 1);
    EXPECT_EQ(alert->onCommand(window(), 130 | kFromAccelerator, 0), 1);
    EXPECT_EQ(alert->onChar(window(), L'x', 0), 1);
}

TEST_F(DefaultStatusDialogTest, TellsItsWindowOnlyWithActionsThatHaveNoRule) {
    openQuietly(0, 41100);

    headless::sendCommand(window(), 130, 5);
    headless::sendCommand(window(), 1012, 5);

    EXPECT_EQ(told[0].window, nullptr);
    EXPECT_EQ(told[0].wParam, 0);
    EXPECT_EQ(told[0].lParam, 0);
    EXPECT_EQ(told[1].window, static_cast<void*>(window()));
    EXPECT_EQ(told[1].wParam, 1012);
    EXPECT_EQ(told[1].lParam, 5);
}

TEST_F(DefaultStatusDialogTest, IgnoresACommandFromAnAccelerator) {
    openQuietly(0, 41100);

    for (const unsigned control : {130U, 131U, 134U, 2U, 77U}) {
        headless::sendCommand(window(), control | kFromAccelerator);
    }

    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(headless::messages().empty());
}

// A drawn button that is clicked twice quickly sends a click and then a double click.
TEST_F(DefaultStatusDialogTest, TellsOneActionForADoubleClickOnADrawnButton) {
    constexpr unsigned kDoubleClick = 5U << 16U;
    openQuietly(0, 41100);

    for (const unsigned control : {1018U, 134U, 131U, 130U}) {
        headless::sendCommand(window(), control);
        headless::sendCommand(window(), control | kDoubleClick);
    }

    EXPECT_EQ(codes(), (Codes{104, 101, 2}));
    EXPECT_EQ(headless::messages().size(), 1U);
}

TEST_F(DefaultStatusDialogTest, TellsEveryNoticeOfAControlThatIsNotDrawn) {
    constexpr unsigned kNotice5 = 5U << 16U;
    openQuietly(0, 41100);

    headless::sendCommand(window(), 1008U | kNotice5);

    EXPECT_EQ(codes(), (Codes{1008}));
}

TEST_F(DefaultStatusDialogTest, TellsThatItWasClosedAndHidesItsWindow) {
    openQuietly(0, 41100);

    headless::closeBox(window());

    EXPECT_EQ(codes(), (Codes{5}));
    EXPECT_FALSE(frame().visible);
    headless::press(window(), 130);
    EXPECT_EQ(codes(), (Codes{5}));
}

TEST_F(DefaultStatusDialogTest, TracesWhatItTells) {
    openQuietly(0, 41100);
    const TraceLines lines;

    headless::press(window(), 130);

    EXPECT_TRUE(lines.contains("TERNA  notify statusdialoghwnd=0, wparam=0, lparam=0"));
}

// The listener destroys the alert while the alert is still publishing its message.
TEST_F(DefaultStatusDialogTest, MayBeDestroyedByWhoeverHearsOfItsActions) {
    const std::function<void()> endings[] = {
        [this] { headless::press(window(), 130); },
        [this] { headless::pressEscape(window()); },
        [this] { headless::closeBox(window()); },
        [this] { headless::typeKey(window(), L'O'); },
        [this] { headless::typeWithAlt(window(), L'r'); },
        [this] { headless::typeWithAlt(window(), L'u'); },
        [this] { headless::sendCommand(window(), 1012); },
    };
    for (const auto& end : endings) {
        openQuietly(0, 41100);
        onTold = [this](const Told&) {
            destroyAlertWindow(alert->window());
            alert.reset();
        };
        end();
        EXPECT_EQ(alert, nullptr);
        EXPECT_TRUE(headless::windows().empty());
        onTold = nullptr;
    }
}

TEST_F(DefaultStatusDialogTest, AsksThePrinterToGoOnAfterManualDuplexOnly) {
    for (const int status : {40119, 40120, 40121, 40122}) {
        open(3, status);
        EXPECT_EQ(alert->canResume(), status == 40120 || status == 40121) << status;
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, AsksThePrinterToGoOnWhenItsButtonSaysContinue) {
    openWithCaption(50012, text(158));
    EXPECT_TRUE(alert->canResume());
    alert.reset();
    openWithCaption(50012, L"&continue");
    EXPECT_FALSE(alert->canResume());
    alert.reset();

    openWithCaption(50012, text(158) + L" ");

    EXPECT_FALSE(alert->canResume());
}

// Without a strings library the caption of the button and the text that means "continue" are both
// empty, and so they are equal.
TEST_F(DefaultStatusDialogTest, AsksThePrinterToGoOnWhereThereIsNoStringsLibrary) {
    describe(0, 41100);
    description.setPointer(L"hSinstance", nullptr);
    openDescribed();

    EXPECT_TRUE(alert->canResume());
}

}  // namespace
