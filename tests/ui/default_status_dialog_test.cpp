#include "ui/default_status_dialog.h"

#include "arbor/guid.h"
#include "monitor/facts/cartridge_store.h"
#include "platform/simulated/world.h"
#include "tests/support/slot_of.h"
#include "tests/support/trace_lines.h"
#include "tests/ui/alert_test.h"
#include "ui/alert_window.h"
#include "ui/snooze_choice.h"

#include <iterator>

using platform::simulated::world;

namespace {

using Codes = std::vector<std::uint32_t>;

constexpr std::int64_t kHour = 3600;
constexpr std::uint32_t kSerial = 4711;
constexpr unsigned kFromAccelerator = 1U << 16U;

class DefaultStatusDialogTest : public AlertTest {
protected:
    void openQuietly(int type, int status) {
        open(type, status);
        told.clear();
    }

    void openWithCaption(int status, const std::wstring& caption) {
        constexpr unsigned kFreeId = 2000;
        replaceText(kFreeId, caption);
        describe(10, status);
        description.setInt(L"buttonMessage", kFreeId);
        openDescribed();
        told.clear();
    }

    static std::int64_t snoozedFor(SnoozeSlot slot) {
        CartridgeRecord record;
        GetCartData(record);
        const std::size_t entry = record.find(kSerial);
        return record.snooze(entry, slot) - platform::simulated::World::kStartTime;
    }
};

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
}

TEST_F(DefaultStatusDialogTest, TellsItsWindowOnlyWithActionsThatHaveNoRule) {
    openQuietly(0, 41100);

    headless::sendCommand(window(), 130, 5);
    headless::sendCommand(window(), 1012, 5);

    EXPECT_EQ(told[0].window, nullptr);
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

// The listener destroys the alert while the alert is still telling it what happened.
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

// Another alert can end the document while this one's help is open.
TEST_F(DefaultStatusDialogTest, MayBeDestroyedWhileItsHelpIsOpen) {
    openQuietly(0, 41100);
    headless::setWhileMessageIsOpen([this] { alert.reset(); });

    headless::press(window(), 131);

    EXPECT_EQ(alert, nullptr);
}

TEST_F(DefaultStatusDialogTest, MayBeDestroyedWhileItAsksForAReminderTime) {
    openQuietly(4, 10209);
    headless::setWhileMessageIsOpen([this] { alert.reset(); });

    headless::press(window(), 130);

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

TEST_F(DefaultStatusDialogTest, ShowsTheSuppliesForExactlyOneOnly) {
    open(4, 10209);
    alert.reset();
    description.setInt(L"showSupplies", 2);
    alert = std::make_unique<DefaultStatusDialog>(description, true);

    EXPECT_EQ(control(1059).text, L"");
}

TEST_F(DefaultStatusDialogTest, HidesTheWholeWindowUnderTheRecycleRule) {
    describe(10, 50012);
    description.setInt(L"disalbeRecycleBtn", 1);
    openDescribed();
    ASSERT_TRUE(frame().visible);

    alert->onInitDialog(window(), 0, 0);

    EXPECT_FALSE(frame().visible);
    EXPECT_TRUE(control(134).visible);
}

TEST_F(DefaultStatusDialogTest, FollowsTheRecycleRuleForExactlyOneAndWithAReturnButtonOnly) {
    for (const auto& [type, flag] : {std::pair{10, 2}, std::pair{3, 1}}) {
        describe(type, 50012);
        description.setInt(L"disalbeRecycleBtn", flag);
        openDescribed();

        alert->onInitDialog(window(), 0, 0);

        EXPECT_TRUE(frame().visible);
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, ListsTheReminderTimesInOrder) {
    for (const auto& [type, status] : {std::pair{4, 10209}, std::pair{30, 10219}}) {
        open(type, status);
        std::vector<std::wstring> expected;
        for (const unsigned id : {114U, 116U, 117U, 122U, 123U, 124U, 126U, 127U, 128U}) {
            expected.push_back(text(id));
        }
        EXPECT_EQ(control(1008).choices, expected);
        EXPECT_EQ(control(1008).chosen, 0);
        EXPECT_TRUE(control(1008).visible);
        EXPECT_EQ(control(1009).text, text(115));
        EXPECT_TRUE(control(1009).visible);
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, HasNoReminderTimesForAnEmptyCartridge) {
    open(31, 10300);

    EXPECT_FALSE(control(1008).visible);
    EXPECT_TRUE(control(1008).choices.empty());
}

TEST_F(DefaultStatusDialogTest, AsksForAReminderTimeBeforeItAcceptsOk) {
    for (const auto& [type, status] : {std::pair{4, 10209}, std::pair{30, 10219}}) {
        openQuietly(type, status);
        const std::size_t asked = headless::messages().size();

        headless::press(window(), 130);

        ASSERT_EQ(headless::messages().size(), asked + 1);
        EXPECT_EQ(headless::messages().back().text, text(356));
        EXPECT_EQ(headless::messages().back().caption, kPrinter);
        EXPECT_TRUE(told.empty());
        EXPECT_TRUE(frame().visible);
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, AsksForAReminderTimeAlsoWhereTheListIsMissing) {
    openQuietly(3, 10209);

    headless::press(window(), 130);

    EXPECT_EQ(headless::messages().size(), 1U);
    EXPECT_TRUE(told.empty());
}

TEST_F(DefaultStatusDialogTest, StoresEveryReminderTimeInTheSlotOfItsAlert) {
    constexpr std::int64_t kHours[] = {1, 4, 24, 48, 72, 168, 336, 175200};
    snoozedCartridge(kSerial);
    for (int choice = 1; choice <= 8; ++choice) {
        for (const auto& [type, status, slot] :
             {std::tuple{4, 10209, SnoozeSlot::Low}, std::tuple{30, 10219, SnoozeSlot::VeryLow}}) {
            openQuietly(type, status);
            ASSERT_TRUE(headless::choose(window(), choice));
            EXPECT_TRUE(told.empty());

            headless::press(window(), 130);

            EXPECT_EQ(codes(), (Codes{2}));
            EXPECT_EQ(snoozedFor(slot), kHours[choice - 1] * kHour);
            alert.reset();
        }
    }
}

TEST_F(DefaultStatusDialogTest, StoresTheReminderTimeOfAnEmptyCartridgeInItsSlot) {
    snoozedCartridge(kSerial);
    open(31, 10300);
    headless::control(window(), 1008).chosen = 2;

    snoozeFromChoice(*alert, window());

    EXPECT_EQ(snoozedFor(SnoozeSlot::Out), 4 * kHour);
}

TEST_F(DefaultStatusDialogTest, EndsTheSnoozeWhenItClosesWithoutAReminderTime) {
    snoozedCartridge(kSerial);
    open(4, 10209);
    headless::choose(window(), 3);
    headless::press(window(), 130);

    snoozeFromDialog(window(), SnoozeSlot::Low);
    EXPECT_EQ(snoozedFor(SnoozeSlot::Low), 24 * kHour);
    headless::choose(window(), 0);
    snoozeFromDialog(window(), SnoozeSlot::Low);

    EXPECT_EQ(snoozedFor(SnoozeSlot::Low), 0);
}

TEST_F(DefaultStatusDialogTest, LeavesTheSnoozeAloneWhereThereIsNoList) {
    snoozedCartridge(kSerial);
    CartridgeRecord record;
    SetSnooze(record, kSerial, 5, SnoozeSlot::Low);
    open(3, 40120);

    snoozeFromDialog(window(), SnoozeSlot::Low);
    snoozeFromDialog(nullptr, SnoozeSlot::Low);

    EXPECT_EQ(snoozedFor(SnoozeSlot::Low), 5 * kHour);
}

TEST_F(DefaultStatusDialogTest, AnswersItsKeys) {
    struct Case {
        wchar_t key;
        Codes codes;
        std::size_t helps;
        const char* trace;
    };
    const Case cases[] = {{L'U', {104}, 0, "WM_CHAR supplies"},
                          {L'R', {101}, 0, nullptr},
                          {L'O', {2}, 0, "WM_CHAR Return"},
                          {L'H', {}, 1, "WM_CHAR help"},
                          {L'h', {}, 1, "WM_CHAR help"},
                          {L'C', {}, 0, nullptr},
                          {L'u', {}, 0, nullptr},
                          {L'r', {}, 0, nullptr},
                          {L'o', {}, 0, nullptr},
                          {L'c', {}, 0, nullptr},
                          {L'x', {}, 0, nullptr}};
    for (const Case& expected : cases) {
        openQuietly(0, 41100);
        const std::size_t helps = headless::messages().size();
        const TraceLines lines;

        headless::typeKey(window(), expected.key);

        EXPECT_EQ(codes(), expected.codes) << static_cast<char>(expected.key);
        EXPECT_EQ(headless::messages().size(), helps + expected.helps);
        const auto number = std::to_string(static_cast<int>(expected.key));
        EXPECT_TRUE(lines.contains("dlgProc(msg==WM_CHAR): wparam=" + number + ", lparam=0x0"));
        if (expected.trace != nullptr) {
            EXPECT_TRUE(lines.contains(expected.trace));
        }
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, AnswersSmallLettersWithAlt) {
    openQuietly(0, 41100);

    for (const wchar_t letter : std::wstring(L"urohx"))
        headless::typeWithAlt(window(), letter);

    EXPECT_EQ(codes(), (Codes{104, 101, 2}));
    EXPECT_EQ(headless::messages().size(), 1U);
}

TEST_F(DefaultStatusDialogTest, IgnoresTheKeysOfButtonsThatCannotBePressed) {
    openQuietly(0, 41100);
    for (const int button : {130, 131, 134, 1018})
        control(button).enabled = false;
    for (const wchar_t letter : std::wstring(L"HhURCO"))
        headless::typeKey(window(), letter);
    for (const int button : {130, 131, 134, 1018}) {
        control(button).enabled = true;
        control(button).visible = false;
    }
    for (const wchar_t letter : std::wstring(L"HhURCO"))
        headless::typeKey(window(), letter);
    for (const int button : {130, 131, 134, 1018})
        frame().controls.erase(button);
    for (const wchar_t letter : std::wstring(L"HhURCO"))
        headless::typeKey(window(), letter);

    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(headless::messages().empty());
}

TEST_F(DefaultStatusDialogTest, ContinuesByKeyWhileTheOkButtonShowsTheCaptionOfTheAlert) {
    openWithCaption(50012, L"&Continue");
    const TraceLines lines;

    headless::typeKey(window(), L'C');
    EXPECT_EQ(codes(), (Codes{3}));
    EXPECT_TRUE(lines.contains("WM_CHAR continue or ok"));
    control(130).text = L"something else";
    headless::typeKey(window(), L'C');
    headless::typeKey(window(), L'O');

    EXPECT_EQ(codes(), (Codes{3}));
}

TEST_F(DefaultStatusDialogTest, AcceptsOkByKeyWhileTheButtonShowsTheCaptionOfTheAlert) {
    openWithCaption(50012, L"&Continue");

    headless::typeKey(window(), L'O');

    EXPECT_EQ(codes(), (Codes{2}));
}

TEST_F(DefaultStatusDialogTest, AsksForAReminderTimeByKeyToo) {
    openQuietly(4, 10209);

    headless::typeKey(window(), L'O');

    EXPECT_EQ(headless::messages().size(), 1U);
    EXPECT_TRUE(told.empty());
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

// Both texts are empty then, and equal.
TEST_F(DefaultStatusDialogTest, AsksThePrinterToGoOnWhereThereIsNoStringsLibrary) {
    describe(0, 41100);
    description.setPointer(L"hSinstance", nullptr);
    openDescribed();

    EXPECT_TRUE(alert->canResume());
}

TEST_F(DefaultStatusDialogTest, NamesButtonsAndPicturesForScreenReaders) {
    open(7, 10403);

    EXPECT_EQ(control(130).text, text(156));
    EXPECT_EQ(control(131).text, text(247));
    EXPECT_EQ(control(1018).text, text(248));
    EXPECT_EQ(control(134).text, text(218));
    EXPECT_EQ(control(1002).name, text(366));
    EXPECT_EQ(control(133).name, text(369));
    EXPECT_EQ(control(136).name, text(370));
    EXPECT_EQ(control(137).name, text(372));
    EXPECT_EQ(control(236).name, kPrinter);
}

TEST_F(DefaultStatusDialogTest, HidesPicturesThatItDoesNotHave) {
    open(26, 100000);
    EXPECT_FALSE(control(133).visible);
    alert.reset();
    arbor::PropertyHolder fresh;

    open(25, 1);

    EXPECT_FALSE(control(1002).visible);
}

TEST_F(DefaultStatusDialogTest, HidesDuplexStepsWithoutAPicture) {
    open(3, 40120);
    alert.reset();
    description.setInt(L"idbDuplex2", 0);

    alert = std::make_unique<DefaultStatusDialog>(description, true);

    EXPECT_TRUE(control(230).visible);
    EXPECT_FALSE(control(231).visible);
    EXPECT_TRUE(control(232).visible);
}

TEST_F(DefaultStatusDialogTest, PutsTheMessageInThePlaceOfADetailThatIsEmpty) {
    open(9, 50021);
    EXPECT_EQ(control(132).placedAt, 1012);
    EXPECT_FALSE(control(1012).visible);
    alert.reset();
    arbor::PropertyHolder fresh;

    open(10, 50012);

    EXPECT_EQ(control(132).placedAt, 0);
    EXPECT_TRUE(control(1012).visible);
}

TEST_F(DefaultStatusDialogTest, LetsEnterStandForOk) {
    open(0, 41100);

    EXPECT_EQ(frame().defaultButton, 130);
}

TEST_F(DefaultStatusDialogTest, KeepsItsOperationsInOrder) {
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::dlgProc), 0U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onInitDialog), 1U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onChar), 2U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onCommand), 3U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onDrawItem), 4U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onCtlColorStatic), 5U);
}

}  // namespace
