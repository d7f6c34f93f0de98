// The reminder times of the toner alerts.
#include "ui/default_status_dialog.h"

#include "platform/simulated/world.h"
#include "printer/cartridge_store.h"
#include "tests/ui/default_status_dialog_fixture.h"
#include "ui/snooze_choice.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

constexpr std::int64_t kHour = 3600;
constexpr std::uint32_t kSerial = 4711;

class DefaultStatusDialogSnoozeTest : public DefaultStatusDialogTest {
protected:
    static std::int64_t snoozedFor(SnoozeSlot slot) {
        CartridgeRecord record;
        GetCartData(record);
        const std::size_t entry = record.find(kSerial);
        return record.snooze(entry, slot) - platform::simulated::World::kStartTime;
    }
};

TEST_F(DefaultStatusDialogSnoozeTest, MayBeDestroyedWhileItAsksForAReminderTime) {
    openQuietly(4, 10209);
    headless::setWhileMessageIsOpen([this] { alert.reset(); });

    headless::press(window(), 130);

    EXPECT_EQ(alert, nullptr);
}

TEST_F(DefaultStatusDialogSnoozeTest, ListsTheReminderTimesInOrder) {
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

TEST_F(DefaultStatusDialogSnoozeTest, HasNoReminderTimesForAnEmptyCartridge) {
    open(31, 10300);

    EXPECT_FALSE(control(1008).visible);
    EXPECT_TRUE(control(1008).choices.empty());
}

TEST_F(DefaultStatusDialogSnoozeTest, AsksForAReminderTimeBeforeItAcceptsOk) {
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

TEST_F(DefaultStatusDialogSnoozeTest, AsksForAReminderTimeAlsoWhereTheListIsMissing) {
    openQuietly(3, 10209);

    headless::press(window(), 130);

    EXPECT_EQ(headless::messages().size(), 1U);
    EXPECT_TRUE(told.empty());
}

TEST_F(DefaultStatusDialogSnoozeTest, StoresEveryReminderTimeInTheSlotOfItsAlert) {
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

TEST_F(DefaultStatusDialogSnoozeTest, StoresTheReminderTimeOfAnEmptyCartridgeInItsSlot) {
    snoozedCartridge(kSerial);
    open(31, 10300);
    headless::control(window(), 1008).chosen = 2;

    snoozeFromChoice(alert->dialogType(), window());

    EXPECT_EQ(snoozedFor(SnoozeSlot::Out), 4 * kHour);
}

TEST_F(DefaultStatusDialogSnoozeTest, EndsTheSnoozeWhenItClosesWithoutAReminderTime) {
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

TEST_F(DefaultStatusDialogSnoozeTest, LeavesTheSnoozeAloneWhereThereIsNoList) {
    snoozedCartridge(kSerial);
    CartridgeRecord record;
    SetSnooze(record, kSerial, 5, SnoozeSlot::Low);
    open(3, 40120);

    snoozeFromDialog(window(), SnoozeSlot::Low);
    snoozeFromDialog(nullptr, SnoozeSlot::Low);

    EXPECT_EQ(snoozedFor(SnoozeSlot::Low), 5 * kHour);
}

}  // namespace
