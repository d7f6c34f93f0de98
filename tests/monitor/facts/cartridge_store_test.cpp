#include "monitor/facts/cartridge_store.h"

#include "platform/clock.h"
#include "tests/monitor/facts/stored_values.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

// Runs against the registry behind the seam: simulated natively, the real one in the Windows build.
namespace {

using platform::UnixSeconds;
using stored::Bytes;
using Lines = std::vector<std::string>;

constexpr UnixSeconds kHour = 3600;

const std::string kLoading = "TERNA GetCartData";
const std::string kMakingNew =
    "TERNA GetCartData -- No reg key found or bad version, Initializing Cart Data";

class CartridgeStoreTest : public testing::Test {
protected:
    void SetUp() override { stored::clear(); }
    void TearDown() override { stored::clear(); }

    // A stored record of version 4 with these cartridges, the first in entry 0.
    static void store(const std::vector<std::pair<std::uint32_t, UnixSeconds>>& cartridges) {
        CartridgeRecord record;
        std::size_t entry = 0;
        for (const auto& [serial, added] : cartridges)
            record.assign(entry++, serial, added);
        stored::writeVersion(4);
        stored::writeRecord(Bytes(record.bytes(), record.bytes() + kCartridgeRecordBytes));
    }

    static CartridgeRecord load() {
        CartridgeRecord record;
        EXPECT_TRUE(GetCartData(record));
        return record;
    }

    CartridgeRecord buffer;
    TraceLines trace;
};

TEST_F(CartridgeStoreTest, TheFirstLoadWritesAnEmptyRecordOfVersion4) {
    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(stored::version(), 4U);
    EXPECT_EQ(stored::record(), Bytes(280, 0));
    EXPECT_EQ(trace.all(), (Lines{kLoading, kMakingNew}));
}

TEST_F(CartridgeStoreTest, AStoredRecordIsLoadedByteForByte) {
    Bytes noise(280);
    for (std::size_t i = 0; i < noise.size(); ++i)
        noise[i] = static_cast<unsigned char>(i * 11 + 1);
    stored::writeVersion(4);
    stored::writeRecord(noise);

    EXPECT_TRUE(GetCartData(buffer));

    EXPECT_EQ(Bytes(buffer.bytes(), buffer.bytes() + 280), noise);
    EXPECT_EQ(stored::record(), noise);
    EXPECT_EQ(trace.all(), Lines{kLoading});
}

TEST_F(CartridgeStoreTest, ARecordOfAnotherVersionIsWiped) {
    for (const std::uint32_t version : {0U, 3U, 5U, 0xFFFFFFFFU}) {
        store({{77, 5}});
        stored::writeVersion(version);
        trace.forget();

        EXPECT_FALSE(GetCartData(buffer));

        EXPECT_EQ(buffer.find(77), CartridgeRecord::npos);
        EXPECT_EQ(stored::version(), 4U);
        EXPECT_EQ(stored::record(), Bytes(280, 0));
        EXPECT_EQ(trace.all(), (Lines{kLoading,
                                      "TERNA GetCartData -- Version missmatch saved=" +
                                          std::to_string(static_cast<int>(version)) + ", current=4",
                                      kMakingNew}));
    }
}

TEST_F(CartridgeStoreTest, ARecordWithoutAVersionIsWiped) {
    stored::writeRecord(Bytes(280, 1));

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(stored::version(), 4U);
    EXPECT_EQ(stored::record(), Bytes(280, 0));
    EXPECT_EQ(trace.all(), (Lines{kLoading, kMakingNew}));
}

TEST_F(CartridgeStoreTest, AVersionWithoutARecordGetsAnEmptyOne) {
    stored::writeVersion(4);

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(stored::record(), Bytes(280, 0));
}

TEST_F(CartridgeStoreTest, AShortRecordIsReadAsFarAsItGoes) {
    for (const std::size_t bytes :
         {std::size_t{0}, std::size_t{1}, std::size_t{57}, std::size_t{279}}) {
        stored::writeVersion(4);
        stored::writeRecord(Bytes(bytes, 0xAB));
        std::memset(buffer.bytes(), 0x55, 280);

        EXPECT_TRUE(GetCartData(buffer)) << bytes;

        Bytes expected(280, 0);
        std::fill_n(expected.begin(), bytes, static_cast<unsigned char>(0xAB));
        EXPECT_EQ(Bytes(buffer.bytes(), buffer.bytes() + 280), expected) << bytes;
    }
}

TEST_F(CartridgeStoreTest, ARecordThatIsTooLongIsWiped) {
    for (const std::size_t bytes : {std::size_t{281}, std::size_t{100000}}) {
        stored::writeVersion(4);
        stored::writeRecord(Bytes(bytes, 0xAB));

        EXPECT_FALSE(GetCartData(buffer)) << bytes;

        EXPECT_EQ(Bytes(buffer.bytes(), buffer.bytes() + 280), Bytes(280, 0)) << bytes;
        EXPECT_EQ(stored::record(), Bytes(280, 0)) << bytes;
    }
}

TEST_F(CartridgeStoreTest, ARecordOfAnotherTypeIsWiped) {
    stored::writeVersion(4);
    stored::write(L"CartData", platform::ValueType::String, Bytes(280, 'A'));

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(Bytes(buffer.bytes(), buffer.bytes() + 280), Bytes(280, 0));
    EXPECT_EQ(stored::record(), Bytes(280, 0));
}

TEST_F(CartridgeStoreTest, AVersionOfAnotherTypeOrSizeCountsAsNone) {
    const std::vector<std::pair<platform::ValueType, Bytes>> absurd = {
        {platform::ValueType::Binary, {4, 0, 0, 0}},
        {platform::ValueType::String, {'4', 0, 0, 0}},
        {platform::ValueType::Dword, {4}},
        {platform::ValueType::Dword, {}},
        {platform::ValueType::Binary, Bytes(4000, 4)},
    };
    for (const auto& [type, bytes] : absurd) {
        store({{77, 5}});
        stored::write(L"CartDataVer", type, bytes);
        trace.forget();

        EXPECT_FALSE(GetCartData(buffer));

        EXPECT_EQ(stored::version(), 4U);
        EXPECT_EQ(trace.all(), (Lines{kLoading, kMakingNew}));
    }
}

TEST_F(CartridgeStoreTest, WithoutACurrentCartridgeItIsUnknown) {
    EXPECT_EQ(GetCurrCart(), 0xFFFFFFFFU);

    EXPECT_EQ(trace.all(), Lines{"TERNA GetCurrCart"});
}

TEST_F(CartridgeStoreTest, ACurrentCartridgeOfAnotherTypeOrSizeIsUnknown) {
    stored::write(L"CurrCart", platform::ValueType::Binary, {1, 2, 3, 4});
    EXPECT_EQ(GetCurrCart(), kNoCartridge);
    stored::write(L"CurrCart", platform::ValueType::String, {'5', 0, 0, 0});
    EXPECT_EQ(GetCurrCart(), kNoCartridge);
    stored::write(L"CurrCart", platform::ValueType::Binary, Bytes(70000, 1));
    EXPECT_EQ(GetCurrCart(), kNoCartridge);
}

TEST_F(CartridgeStoreTest, TheCurrentCartridgeKeepsAll32Bits) {
    for (const std::uint32_t serial : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU}) {
        stored::writeCurrent(serial);

        EXPECT_EQ(GetCurrCart(), serial);
    }
}

TEST_F(CartridgeStoreTest, ANewCartridgeBecomesCurrentAndGetsTheFirstEntry) {
    const UnixSeconds before = platform::now();
    AddCartIfNew(buffer, 4711);
    const UnixSeconds after = platform::now();

    EXPECT_EQ(stored::current(), 4711U);
    EXPECT_EQ(stored::version(), 4U);
    const CartridgeRecord record = load();
    EXPECT_EQ(record.find(4711), 0U);
    EXPECT_GE(record.added(0), before);
    EXPECT_LE(record.added(0), after);
    EXPECT_FALSE(record.anyFlag(0));
    for (const SnoozeSlot slot : {SnoozeSlot::Low, SnoozeSlot::VeryLow, SnoozeSlot::Out}) {
        EXPECT_EQ(record.snooze(0, slot), 0);
    }
}

TEST_F(CartridgeStoreTest, AddingTracesTheReadOfTheCurrentCartridgeThenTheLoad) {
    store({});
    trace.forget();

    AddCartIfNew(buffer, 4711);

    EXPECT_EQ(trace.all(), (Lines{"TERNA GetCurrCart", kLoading}));
}

TEST_F(CartridgeStoreTest, ACartridgeReportedAgainChangesOnlyTheCurrentOne) {
    store({{1, 10}, {2, 20}});
    EXPECT_FALSE(NonQvCartOccuredBefore(buffer, 1));
    EXPECT_TRUE(SetSnooze(buffer, 1, 4, SnoozeSlot::Out));
    AddCartIfNew(buffer, 2);
    const Bytes before = stored::record();

    AddCartIfNew(buffer, 1);

    EXPECT_EQ(stored::current(), 1U);
    EXPECT_EQ(stored::record(), before);
}

TEST_F(CartridgeStoreTest, TheSixthCartridgeReplacesTheOldest) {
    store({{1, 50}, {2, 40}, {3, 10}, {4, 20}, {5, 30}});

    AddCartIfNew(buffer, 6);

    const CartridgeRecord record = load();
    EXPECT_EQ(record.find(6), 2U);
    EXPECT_EQ(record.find(3), CartridgeRecord::npos);
    EXPECT_EQ(record.find(1), 0U);
}

TEST_F(CartridgeStoreTest, AmongEquallyOldCartridgesEntry0IsReplaced) {
    store({{1, 50}, {2, 50}, {3, 50}, {4, 50}, {5, 50}});

    AddCartIfNew(buffer, 6);

    EXPECT_EQ(load().find(6), 0U);
}

TEST_F(CartridgeStoreTest, SixCartridgesInTurnLeaveTheLastFive) {
    for (std::uint32_t serial = 1; serial <= 6; ++serial)
        AddCartIfNew(buffer, serial);

    const CartridgeRecord record = load();
    for (std::uint32_t serial = 2; serial <= 6; ++serial) {
        EXPECT_NE(record.find(serial), CartridgeRecord::npos) << serial;
    }
    EXPECT_EQ(record.find(1), CartridgeRecord::npos);
    EXPECT_EQ(stored::current(), 6U);
}

TEST_F(CartridgeStoreTest, ReplacingACartridgeDropsItsFlagsAndSnoozesAndKeepsThePadding) {
    store({{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}});
    Bytes bytes = stored::record();
    std::fill(bytes.begin() + 4, bytes.begin() + 8, static_cast<unsigned char>(0x5A));
    std::fill(bytes.begin() + 16, bytes.begin() + 56, static_cast<unsigned char>(0x01));
    stored::writeRecord(bytes);

    AddCartIfNew(buffer, 6);

    const Bytes after = stored::record();
    EXPECT_EQ(Bytes(after.begin() + 4, after.begin() + 8), Bytes(4, 0x5A));
    EXPECT_EQ(Bytes(after.begin() + 16, after.begin() + 56), Bytes(40, 0));
    EXPECT_EQ(Bytes(after.begin() + 56, after.end()), Bytes(bytes.begin() + 56, bytes.end()));
}

TEST_F(CartridgeStoreTest, ASnoozeIsNowPlusTheHours) {
    store({{1, 1}, {2, 2}});
    for (const std::int64_t hours :
         {std::int64_t{0}, std::int64_t{1}, std::int64_t{336}, std::int64_t{175200}}) {
        const UnixSeconds before = platform::now();
        EXPECT_TRUE(SetSnooze(buffer, 2, hours, SnoozeSlot::VeryLow));
        const UnixSeconds after = platform::now();

        const UnixSeconds until = load().snooze(1, SnoozeSlot::VeryLow);
        EXPECT_GE(until, before + hours * kHour);
        EXPECT_LE(until, after + hours * kHour);
    }
}

TEST_F(CartridgeStoreTest, EachSlotIsSnoozedByItself) {
    store({{1, 1}});

    EXPECT_TRUE(SetSnooze(buffer, 1, 10, SnoozeSlot::Out));

    EXPECT_EQ(load().snooze(0, SnoozeSlot::Low), 0);
    EXPECT_EQ(load().snooze(0, SnoozeSlot::VeryLow), 0);
    EXPECT_NE(load().snooze(0, SnoozeSlot::Out), 0);
    EXPECT_TRUE(IsSnoozing(1, SnoozeSlot::Out));
    EXPECT_FALSE(IsSnoozing(1, SnoozeSlot::Low));
    EXPECT_FALSE(IsSnoozing(1, SnoozeSlot::VeryLow));
}

TEST_F(CartridgeStoreTest, SnoozingTracesSerialHoursAndSlot) {
    store({{0xFFFFFFFE, 1}});
    trace.forget();

    EXPECT_TRUE(SetSnooze(buffer, 0xFFFFFFFE, 175200, SnoozeSlot::Out));

    EXPECT_EQ(trace.all(), (Lines{"TERNA SetSnooze SN=-2, hours=175200, veryLow=2", kLoading}));
}

TEST_F(CartridgeStoreTest, SnoozingACartridgeWithoutAnEntryChangesNothing) {
    store({{1, 1}});
    const Bytes before = stored::record();

    EXPECT_FALSE(SetSnooze(buffer, 2, 10, SnoozeSlot::Low));

    EXPECT_EQ(stored::record(), before);
}

TEST_F(CartridgeStoreTest, AnUnknownSlotIsSavedWithoutAChange) {
    store({{1, 1}});
    Bytes cut(60, 0);  // saving makes it whole, which shows that it was saved
    cut[0] = 1;
    stored::writeRecord(cut);

    EXPECT_TRUE(SetSnooze(buffer, 1, 10, static_cast<SnoozeSlot>(3)));

    Bytes expected(280, 0);
    expected[0] = 1;
    EXPECT_EQ(stored::record(), expected);
}

TEST_F(CartridgeStoreTest, HoursBeyondAllTimeEndAtTheLastSecond) {
    using Limits = std::numeric_limits<std::int64_t>;
    store({{1, 1}});

    EXPECT_TRUE(SetSnooze(buffer, 1, Limits::max(), SnoozeSlot::Low));
    EXPECT_EQ(load().snooze(0, SnoozeSlot::Low), Limits::max());
    EXPECT_TRUE(IsSnoozing(1, SnoozeSlot::Low));

    EXPECT_TRUE(SetSnooze(buffer, 1, Limits::min(), SnoozeSlot::Low));
    EXPECT_LT(load().snooze(0, SnoozeSlot::Low), 0);
    EXPECT_FALSE(IsSnoozing(1, SnoozeSlot::Low));
}

TEST_F(CartridgeStoreTest, ACartridgeWithoutAnEntryIsNotSnoozing) {
    store({{1, 1}});
    trace.forget();

    EXPECT_FALSE(IsSnoozing(2, SnoozeSlot::Low));

    EXPECT_EQ(trace.all(), (Lines{"TERNA IsSnoozing SN=2", kLoading,
                                  "TERNA IsSnoozing?  NO (snoozeIdx == -1)"}));
}

TEST_F(CartridgeStoreTest, AnExpiredSnoozeIsNone) {
    store({{1, 1}});
    trace.forget();

    EXPECT_FALSE(IsSnoozing(1, SnoozeSlot::Low));

    EXPECT_EQ(trace.all(),
              (Lines{"TERNA IsSnoozing SN=1", kLoading, "TERNA IsSnoozing?  NO (difftime < 0)"}));
}

TEST_F(CartridgeStoreTest, ASnoozeInTheFutureHolds) {
    store({{1, 1}});
    EXPECT_TRUE(SetSnooze(buffer, 1, 1, SnoozeSlot::Low));
    trace.forget();

    EXPECT_TRUE(IsSnoozing(1, SnoozeSlot::Low));

    EXPECT_EQ(trace.all(), (Lines{"TERNA IsSnoozing SN=1", kLoading, "TERNA IsSnoozing?  YES"}));
}

struct FlagOperation {
    bool (*occuredBefore)(CartridgeRecord&, std::uint32_t);
    const char* line;
    std::size_t offset;
};

constexpr FlagOperation kFlagOperations[] = {
    {IllegalCartOccured, "TERNA IllegalCartOccured SN=", 24},
    {NonQvCartOccuredBefore, "TERNA NonQvCartOccuredBefore SN=", 28},
    {ElableMemErrOccuredBefore, "TERNA ElableMemErrOccuredBefore SN=", 32},
};

class CartridgeFlagTest : public CartridgeStoreTest,
                          public testing::WithParamInterface<FlagOperation> {};

TEST_P(CartridgeFlagTest, IsFalseTheFirstTimeAndTrueEverAfter) {
    store({{1, 1}, {2, 2}});

    EXPECT_FALSE(GetParam().occuredBefore(buffer, 2));
    EXPECT_TRUE(GetParam().occuredBefore(buffer, 2));
    EXPECT_TRUE(GetParam().occuredBefore(buffer, 2));

    EXPECT_FALSE(GetParam().occuredBefore(buffer, 1));
}

TEST_P(CartridgeFlagTest, StoresAOneAtItsPlaceAndNothingElse) {
    store({{1, 1}, {2, 2}});
    Bytes expected = stored::record();
    expected[56 + GetParam().offset] = 1;

    EXPECT_FALSE(GetParam().occuredBefore(buffer, 2));

    EXPECT_EQ(stored::record(), expected);
    EXPECT_EQ(stored::version(), 4U);
}

TEST_P(CartridgeFlagTest, TracesItsOwnLineFirst) {
    store({{1, 1}});
    trace.forget();

    EXPECT_FALSE(GetParam().occuredBefore(buffer, 1));

    EXPECT_EQ(trace.all(), (Lines{GetParam().line + std::string("1"), kLoading}));
}

TEST_P(CartridgeFlagTest, AddsACartridgeThatHasNoEntryYetAndSetsItsFlagInTheSecondRound) {
    store({{1, 1}});
    trace.forget();

    EXPECT_FALSE(GetParam().occuredBefore(buffer, 7));

    EXPECT_EQ(stored::current(), 7U);
    EXPECT_EQ(stored::record()[56 + GetParam().offset], 1);
    EXPECT_EQ(trace.all(), (Lines{GetParam().line + std::string("7"), kLoading, "TERNA GetCurrCart",
                                  kLoading, kLoading}));
    EXPECT_TRUE(GetParam().occuredBefore(buffer, 7));
}

TEST_P(CartridgeFlagTest, AnUnknownCartridgeCountsAsShownAndTouchesNothing) {
    EXPECT_TRUE(GetParam().occuredBefore(buffer, 0xFFFFFFFF));

    EXPECT_EQ(stored::version(), std::nullopt);
    EXPECT_EQ(trace.all(), Lines{GetParam().line + std::string("-1")});
}

INSTANTIATE_TEST_SUITE_P(EveryFlag, CartridgeFlagTest, testing::ValuesIn(kFlagOperations));

TEST_F(CartridgeStoreTest, ANewCartridgeIsWelcomedOnce) {
    AddCartIfNew(buffer, 5);
    trace.forget();

    EXPECT_TRUE(takeWelcome());
    EXPECT_EQ(trace.all(), (Lines{"TERNA SetCartData", "TERNA GetCurrCart", kLoading}));
    EXPECT_EQ(stored::record()[36], 1);

    EXPECT_FALSE(takeWelcome());
}

TEST_F(CartridgeStoreTest, AnUnknownCartridgeIsNotWelcomed) {
    EXPECT_FALSE(takeWelcome());

    EXPECT_EQ(trace.all(), (Lines{"TERNA SetCartData", "TERNA GetCurrCart"}));
    EXPECT_EQ(stored::version(), std::nullopt);
}

TEST_F(CartridgeStoreTest, ACurrentCartridgeWithoutAnEntryIsAddedAndWelcomed) {
    store({{1, 1}});
    stored::writeCurrent(9);

    EXPECT_TRUE(takeWelcome());

    EXPECT_EQ(load().find(9), 1U);
    EXPECT_TRUE(load().flag(1, CartridgeFlag::WelcomeShown));
}

TEST_F(CartridgeStoreTest, ACartridgeWithAnyFlagIsNotWelcomed) {
    for (const std::size_t offset : {24U, 28U, 32U, 36U}) {
        store({{1, 1}});
        stored::writeCurrent(1);
        Bytes bytes = stored::record();
        bytes[offset] = 1;
        stored::writeRecord(bytes);

        EXPECT_FALSE(takeWelcome()) << offset;

        EXPECT_EQ(stored::record(), bytes) << offset;
    }
}

TEST_F(CartridgeStoreTest, TheSnoozeListHasItsHoursByIndex) {
    const std::vector<std::int64_t> hours = {0, 1, 4, 24, 48, 72, 168, 336, 175200};
    for (std::size_t index = 0; index < hours.size(); ++index) {
        EXPECT_EQ(snoozeHours(static_cast<int>(index)), hours[index]) << index;
    }
    EXPECT_EQ(snoozeHours(-1), 0);
    EXPECT_EQ(snoozeHours(9), 0);
    EXPECT_EQ(snoozeHours(std::numeric_limits<int>::max()), 0);
    EXPECT_EQ(snoozeHours(std::numeric_limits<int>::min()), 0);
}

TEST_F(CartridgeStoreTest, TheSlotFollowsTheDialogType) {
    for (int type = -1; type <= 40; ++type) {
        const SnoozeSlot slot = snoozeSlotOfDialogType(type);
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
