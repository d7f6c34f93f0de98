#include "printer/cartridge_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes entryBytes(const CartridgeRecord& record, std::size_t entry) {
    const unsigned char* const first = record.bytes() + entry * 56;
    return {first, first + 56};
}

// Fills the record so that neighbouring bytes differ. A field that is read at a wrong offset then
// has a wrong value.
void fillWithNoise(CartridgeRecord& record) {
    for (std::size_t i = 0; i < 280; ++i)
        record.bytes()[i] = static_cast<unsigned char>(i * 7 + 3);
}

void addFiveCartridges(CartridgeRecord& record, std::array<platform::UnixSeconds, 5> added) {
    for (std::size_t entry = 0; entry < added.size(); ++entry) {
        record.assign(entry, static_cast<std::uint32_t>(100 + entry), added[entry]);
    }
}

TEST(CartridgeRecordTest, IsFiveEntriesOf56Bytes) {
    EXPECT_EQ(kCartridgeRecordBytes, 280U);
    EXPECT_EQ(kCartridgeEntries, 5U);
    EXPECT_EQ(kCartridgeEntryBytes, 56U);
}

TEST(CartridgeRecordTest, StartsAsZeroBytes) {
    const CartridgeRecord record;

    EXPECT_TRUE(std::all_of(record.bytes(), record.bytes() + 280, [](auto b) { return b == 0; }));
}

TEST(CartridgeRecordTest, WritesEachFieldLittleEndianAtItsPlace) {
    CartridgeRecord record;

    record.assign(0, 0xA1B2C3D4, 0x0102030405060708);
    record.setSnooze(0, SnoozeSlot::Low, 0x1112131415161718);
    record.setFlag(0, CartridgeFlag::IllegalCartOccured);
    record.setFlag(0, CartridgeFlag::NonQvCartOccured);
    record.setFlag(0, CartridgeFlag::ElableMemErrOccured);
    record.setFlag(0, CartridgeFlag::WelcomeShown);
    record.setSnooze(0, SnoozeSlot::VeryLow, 0x2122232425262728);
    record.setSnooze(0, SnoozeSlot::Out, -2);

    // clang-format off
    const Bytes expected = {
        0xD4, 0xC3, 0xB2, 0xA1,                          // serial number
        0x00, 0x00, 0x00, 0x00,                          // padding
        0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  // added
        0x18, 0x17, 0x16, 0x15, 0x14, 0x13, 0x12, 0x11,  // snoozed, low
        0x01, 0x00, 0x00, 0x00,                          // illegal cartridge
        0x01, 0x00, 0x00, 0x00,                          // non-maker cartridge
        0x01, 0x00, 0x00, 0x00,                          // memory error
        0x01, 0x00, 0x00, 0x00,                          // welcome
        0x28, 0x27, 0x26, 0x25, 0x24, 0x23, 0x22, 0x21,  // snoozed, very low
        0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,  // snoozed, out
    };
    // clang-format on
    EXPECT_EQ(entryBytes(record, 0), expected);
    EXPECT_EQ(entryBytes(record, 1), Bytes(56, 0));
}

TEST(CartridgeRecordTest, EachFlagHasItsOwnFourBytes) {
    const std::array<std::pair<CartridgeFlag, std::size_t>, 4> flags{{
        {CartridgeFlag::IllegalCartOccured, 24},
        {CartridgeFlag::NonQvCartOccured, 28},
        {CartridgeFlag::ElableMemErrOccured, 32},
        {CartridgeFlag::WelcomeShown, 36},
    }};
    for (const auto& [flag, offset] : flags) {
        CartridgeRecord record;

        record.setFlag(2, flag);

        Bytes expected(56, 0);
        expected[offset] = 1;
        EXPECT_EQ(entryBytes(record, 2), expected) << offset;
        EXPECT_TRUE(record.flag(2, flag));
        EXPECT_TRUE(record.anyFlag(2));
        EXPECT_FALSE(record.anyFlag(1));
    }
}

TEST(CartridgeRecordTest, AnyBitOfAFlagCounts) {
    CartridgeRecord record;

    record.bytes()[4 * 56 + 35] = 0x80;

    EXPECT_TRUE(record.flag(4, CartridgeFlag::ElableMemErrOccured));
    EXPECT_FALSE(record.flag(4, CartridgeFlag::NonQvCartOccured));
}

TEST(CartridgeRecordTest, ReadsTheLastEntryUpToItsLastByte) {
    CartridgeRecord record;
    fillWithNoise(record);

    std::uint64_t expected = 0;
    for (std::size_t i = 280; i-- > 272;)
        expected = (expected << 8) | record.bytes()[i];

    EXPECT_EQ(record.snooze(4, SnoozeSlot::Out), static_cast<platform::UnixSeconds>(expected));
}

TEST(CartridgeRecordTest, TimesKeepTheirExtremes) {
    using Limits = std::numeric_limits<platform::UnixSeconds>;
    for (const platform::UnixSeconds time :
         {Limits::min(), Limits::max(), platform::UnixSeconds{-1}, platform::UnixSeconds{0}}) {
        CartridgeRecord record;

        record.assign(3, 7, time);
        record.setSnooze(3, SnoozeSlot::VeryLow, time);

        EXPECT_EQ(record.added(3), time);
        EXPECT_EQ(record.snooze(3, SnoozeSlot::VeryLow), time);
    }
}

TEST(CartridgeRecordTest, AssigningKeepsThePaddingAndClearsFlagsAndSnoozes) {
    CartridgeRecord record;
    fillWithNoise(record);
    const Bytes before = entryBytes(record, 1);

    record.assign(1, 9, 10);

    Bytes expected(56, 0);
    expected[0] = 9;
    expected[8] = 10;
    std::copy_n(before.begin() + 4, 4, expected.begin() + 4);
    EXPECT_EQ(entryBytes(record, 1), expected);
}

TEST(CartridgeRecordTest, AssigningTouchesNoOtherEntry) {
    CartridgeRecord record;
    fillWithNoise(record);
    const Bytes before = entryBytes(record, 1);
    const Bytes after = entryBytes(record, 3);

    record.assign(2, 9, 10);

    EXPECT_EQ(entryBytes(record, 1), before);
    EXPECT_EQ(entryBytes(record, 3), after);
}

TEST(CartridgeRecordTest, ASlotThatIsNoneStoresNothingAndReadsAsZero) {
    CartridgeRecord record;

    for (const int slot : {-1, 3, 77, std::numeric_limits<int>::max()}) {
        record.setSnooze(0, static_cast<SnoozeSlot>(slot), 5);
        EXPECT_EQ(record.snooze(0, static_cast<SnoozeSlot>(slot)), 0);
    }

    EXPECT_EQ(entryBytes(record, 0), Bytes(56, 0));
}

TEST(CartridgeRecordTest, FindsTheFirstEntryWithASerialNumber) {
    CartridgeRecord record;
    record.assign(1, 42, 0);
    record.assign(3, 42, 0);

    EXPECT_EQ(record.find(42), 1U);
    EXPECT_EQ(record.find(0), 0U);
    EXPECT_EQ(record.find(43), CartridgeRecord::npos);
}

TEST(CartridgeRecordTest, AFreeEntryIsUsedBeforeAnyOldOne) {
    CartridgeRecord record;
    addFiveCartridges(record, {5, 1, 3, 4, 2});
    record.assign(3, 0, 99);

    EXPECT_EQ(record.entryToReplace(), 3U);
}

TEST(CartridgeRecordTest, TheOldestEntryIsReplaced) {
    CartridgeRecord record;
    addFiveCartridges(record, {5, 4, 3, 1, 2});

    EXPECT_EQ(record.entryToReplace(), 3U);
}

TEST(CartridgeRecordTest, AmongEqualTimesTheLowestEntryIsReplaced) {
    CartridgeRecord record;
    addFiveCartridges(record, {7, 7, 7, 7, 7});
    EXPECT_EQ(record.entryToReplace(), 0U);

    addFiveCartridges(record, {7, 6, 6, 7, 6});
    EXPECT_EQ(record.entryToReplace(), 1U);
}

TEST(CartridgeRecordTest, TimesFarApartAreStillCompared) {
    using Limits = std::numeric_limits<platform::UnixSeconds>;
    CartridgeRecord record;
    addFiveCartridges(record,
                      {Limits::max(), Limits::max() - 1, 0, Limits::min(), Limits::min() + 1});

    EXPECT_EQ(record.entryToReplace(), 3U);
}

TEST(CartridgeRecordTest, WhatLiesBehindTheRecordIsNoEntry) {
    struct {
        CartridgeRecord record;
        std::array<unsigned char, 56>
            behind{};  // read by mistake, these zeros look like a free entry
    } memory;
    addFiveCartridges(memory.record, {50, 40, 30, 20, 10});

    EXPECT_EQ(memory.record.entryToReplace(), 4U);
    EXPECT_EQ(memory.record.find(0), CartridgeRecord::npos);
    EXPECT_EQ(memory.behind, (std::array<unsigned char, 56>{}));
}

TEST(CartridgeRecordTest, ClearingFreesEveryEntry) {
    CartridgeRecord record;
    fillWithNoise(record);

    record.clear();

    EXPECT_TRUE(std::all_of(record.bytes(), record.bytes() + 280, [](auto b) { return b == 0; }));
}

}  // namespace
