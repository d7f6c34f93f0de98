#include "tests/printer/cartridge_store_fixture.h"

#include <limits>
#include <vector>

namespace {

using stored::Bytes;

class CartridgeSnoozeTest : public CartridgeStoreFixture {};

TEST_F(CartridgeSnoozeTest, SnoozingTracesSerialHoursAndSlot) {
    store({{0xFFFFFFFE, 1}});
    trace.forget();

    EXPECT_TRUE(SetSnooze(buffer, 0xFFFFFFFE, 175200, SnoozeSlot::Out));

    EXPECT_EQ(trace.all(), (Lines{"TERNA SetSnooze SN=-2, hours=175200, veryLow=2", kLoading}));
}

TEST_F(CartridgeSnoozeTest, SnoozingACartridgeWithoutAnEntryChangesNothing) {
    store({{1, 1}});
    const Bytes before = stored::record();

    EXPECT_FALSE(SetSnooze(buffer, 2, 10, SnoozeSlot::Low));

    EXPECT_EQ(stored::record(), before);
}

TEST_F(CartridgeSnoozeTest, AnUnknownSlotIsSavedWithoutAChange) {
    store({{1, 1}});
    Bytes cut(60, 0);  // a save writes 280 bytes, so the size shows whether there was a save
    cut[0] = 1;
    stored::writeRecord(cut);

    EXPECT_TRUE(SetSnooze(buffer, 1, 10, static_cast<SnoozeSlot>(3)));

    Bytes expected(280, 0);
    expected[0] = 1;
    EXPECT_EQ(stored::record(), expected);
}

TEST_F(CartridgeSnoozeTest, HoursBeyondAllTimeEndAtTheLastSecond) {
    using Limits = std::numeric_limits<std::int64_t>;
    store({{1, 1}});

    EXPECT_TRUE(SetSnooze(buffer, 1, Limits::max(), SnoozeSlot::Low));
    EXPECT_EQ(load().snooze(0, SnoozeSlot::Low), Limits::max());
    EXPECT_TRUE(IsSnoozing(1, SnoozeSlot::Low));

    EXPECT_TRUE(SetSnooze(buffer, 1, Limits::min(), SnoozeSlot::Low));
    EXPECT_LT(load().snooze(0, SnoozeSlot::Low), 0);
    EXPECT_FALSE(IsSnoozing(1, SnoozeSlot::Low));
}

TEST_F(CartridgeSnoozeTest, ACartridgeWithoutAnEntryIsNotSnoozing) {
    store({{1, 1}});
    trace.forget();

    EXPECT_FALSE(IsSnoozing(2, SnoozeSlot::Low));

    EXPECT_EQ(trace.all(), (Lines{"TERNA IsSnoozing SN=2", kLoading,
                                  "TERNA IsSnoozing?  NO (snoozeIdx == -1)"}));
}

TEST_F(CartridgeSnoozeTest, AnExpiredSnoozeIsNone) {
    store({{1, 1}});
    trace.forget();

    EXPECT_FALSE(IsSnoozing(1, SnoozeSlot::Low));

    EXPECT_EQ(trace.all(),
              (Lines{"TERNA IsSnoozing SN=1", kLoading, "TERNA IsSnoozing?  NO (difftime < 0)"}));
}

TEST_F(CartridgeSnoozeTest, ASnoozeInTheFutureHolds) {
    store({{1, 1}});
    EXPECT_TRUE(SetSnooze(buffer, 1, 1, SnoozeSlot::Low));
    trace.forget();

    EXPECT_TRUE(IsSnoozing(1, SnoozeSlot::Low));

    EXPECT_EQ(trace.all(), (Lines{"TERNA IsSnoozing SN=1", kLoading, "TERNA IsSnoozing?  YES"}));
}

TEST_F(CartridgeSnoozeTest, TheSnoozeListHasItsHoursByIndex) {
    const std::vector<std::int64_t> hours = {0, 1, 4, 24, 48, 72, 168, 336, 175200};
    for (std::size_t index = 0; index < hours.size(); ++index) {
        EXPECT_EQ(snoozeHours(static_cast<int>(index)), hours[index]) << index;
    }
    EXPECT_EQ(snoozeHours(-1), 0);
    EXPECT_EQ(snoozeHours(9), 0);
    EXPECT_EQ(snoozeHours(std::numeric_limits<int>::max()), 0);
    EXPECT_EQ(snoozeHours(std::numeric_limits<int>::min()), 0);
}

TEST_F(CartridgeSnoozeTest, TheSlotFollowsTheDialogType) {
    for (int type = -1; type <= 40; ++type) {
        const SnoozeSlot slot = snoozeSlotOf(static_cast<AlertType>(type));
        if (type == 30) {
            EXPECT_EQ(slot, SnoozeSlot::VeryLow);
        } else if (type == 31) {
            EXPECT_EQ(slot, SnoozeSlot::Out);
        } else {
            EXPECT_EQ(slot, SnoozeSlot::Low) << type;
        }
    }
}

}  // namespace
