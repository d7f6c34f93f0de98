#include "printer/cartridge_store.h"

#include "platform/simulated/world.h"
#include "tests/printer/stored_values.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// These tests need a clock that can be set and a registry that fails on demand.
namespace {

using platform::UnixSeconds;
using platform::simulated::Call;
using platform::simulated::world;
using stored::Bytes;
using Lines = std::vector<std::string>;

constexpr UnixSeconds kNow = 1'700'000'000;
constexpr std::uint32_t kSerial = 4711;
constexpr Call kRegistryCalls[] = {Call::RegistryOpen, Call::RegistryCreate, Call::RegistryRead,
                                   Call::RegistryWrite, Call::RegistryRemove};

class CartridgeStoreFaultsTest : public testing::Test {
protected:
    void SetUp() override {
        stored::clear();
        world().time = kNow;
    }
    void TearDown() override {
        EXPECT_EQ(world().registry.openKeys(), 0);
        stored::clear();
    }

    static void failOnce(Call call, long nth = 1) {
        world().faults.reset();
        world().faults.add({call, nth});
    }
    static void failForEver(Call call, long nth = 1) {
        world().faults.reset();
        world().faults.add({call, nth, true});
    }

    static void storeOldVersion() {
        stored::writeVersion(3);
        stored::writeRecord(Bytes(280, 0x77));
    }

    CartridgeRecord buffer;
};

class SnoozeTimeTest : public CartridgeStoreFaultsTest,
                       public testing::WithParamInterface<SnoozeSlot> {};

TEST_P(SnoozeTimeTest, ASnoozeHoldsToItsLastSecondAndNoLonger) {
    AddCartIfNew(buffer, kSerial);
    ASSERT_TRUE(SetSnooze(buffer, kSerial, 1, GetParam()));

    world().time = kNow + 3599;
    EXPECT_TRUE(IsSnoozing(kSerial, GetParam()));
    world().time = kNow + 3600;
    EXPECT_TRUE(IsSnoozing(kSerial, GetParam()));
    world().time = kNow + 3601;
    EXPECT_FALSE(IsSnoozing(kSerial, GetParam()));
}

TEST_P(SnoozeTimeTest, ASnoozeOfNoHoursEndsWithThisSecond) {
    AddCartIfNew(buffer, kSerial);
    ASSERT_TRUE(SetSnooze(buffer, kSerial, 175200, GetParam()));
    ASSERT_TRUE(SetSnooze(buffer, kSerial, 0, GetParam()));

    EXPECT_TRUE(IsSnoozing(kSerial, GetParam()));
    world().time = kNow + 1;
    EXPECT_FALSE(IsSnoozing(kSerial, GetParam()));
}

TEST_P(SnoozeTimeTest, TheOtherSlotsAreNotSnoozed) {
    AddCartIfNew(buffer, kSerial);
    ASSERT_TRUE(SetSnooze(buffer, kSerial, 336, GetParam()));

    for (const SnoozeSlot slot : {SnoozeSlot::Low, SnoozeSlot::VeryLow, SnoozeSlot::Out}) {
        EXPECT_EQ(IsSnoozing(kSerial, slot), slot == GetParam());
    }
}

TEST_P(SnoozeTimeTest, NeverIsTwentyYears) {
    AddCartIfNew(buffer, kSerial);
    ASSERT_TRUE(SetSnooze(buffer, kSerial, snoozeHours(8), GetParam()));

    ASSERT_TRUE(GetCartData(buffer));
    EXPECT_EQ(buffer.snooze(0, GetParam()), kNow + 175200LL * 3600);
}

TEST_P(SnoozeTimeTest, ASnoozeOfFewerThanNoHoursIsOverForThatLong) {
    AddCartIfNew(buffer, kSerial);

    ASSERT_TRUE(SetSnooze(buffer, kSerial, -2, GetParam()));

    GetCartData(buffer);
    EXPECT_EQ(buffer.snooze(0, GetParam()), kNow - 7200);
    EXPECT_FALSE(IsSnoozing(kSerial, GetParam()));
}

TEST_P(SnoozeTimeTest, NoClockAndNoStoredTimeOverflows) {
    AddCartIfNew(buffer, kSerial);
    constexpr auto kFirst = std::numeric_limits<UnixSeconds>::min();
    constexpr auto kLast = std::numeric_limits<UnixSeconds>::max();
    for (const UnixSeconds now : {kFirst, kFirst + 1, UnixSeconds{-1}, UnixSeconds{0}, kLast}) {
        world().time = now;
        for (const std::int64_t hours :
             {kFirst, std::int64_t{-1}, std::int64_t{0}, std::int64_t{1}, kLast}) {
            ASSERT_TRUE(SetSnooze(buffer, kSerial, hours, GetParam()));

            const bool saturatedBelow = hours < 0 && now == kFirst;
            EXPECT_EQ(IsSnoozing(kSerial, GetParam()), hours >= 0 || saturatedBelow)
                << now << " " << hours;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EverySlot, SnoozeTimeTest,
                         testing::Values(SnoozeSlot::Low, SnoozeSlot::VeryLow, SnoozeSlot::Out));

TEST_F(CartridgeStoreFaultsTest, LoadingAVersionThatCannotBeReadStartsAnewWithoutAMismatch) {
    AddCartIfNew(buffer, kSerial);
    const TraceLines trace;
    failOnce(Call::RegistryRead);

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(
        trace.all(),
        (Lines{"TERNA GetCartData",
               "TERNA GetCartData -- No reg key found or bad version, Initializing Cart Data"}));
    EXPECT_EQ(stored::record(), Bytes(280, 0));
}

TEST_F(CartridgeStoreFaultsTest, ARecordThatCannotBeReadIsReplacedByAnEmptyOne) {
    AddCartIfNew(buffer, kSerial);
    failOnce(Call::RegistryRead, 2);

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(buffer.find(kSerial), CartridgeRecord::npos);
    EXPECT_EQ(stored::record(), Bytes(280, 0));
}

TEST_F(CartridgeStoreFaultsTest, AKeyThatCannotBeMadeLeavesEverythingAsItWas) {
    storeOldVersion();
    failForEver(Call::RegistryCreate);

    EXPECT_FALSE(GetCartData(buffer));
    AddCartIfNew(buffer, kSerial);
    EXPECT_FALSE(SetSnooze(buffer, kSerial, 1, SnoozeSlot::Low));

    world().faults.reset();
    EXPECT_EQ(stored::version(), 3U);
    EXPECT_EQ(stored::record(), Bytes(280, 0x77));
    EXPECT_EQ(stored::current(), std::nullopt);
}

TEST_F(CartridgeStoreFaultsTest, AVersionThatCannotBeWrittenLeavesTheRecordAlone) {
    storeOldVersion();
    failOnce(Call::RegistryWrite, 1);

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(stored::version(), 3U);
    EXPECT_EQ(stored::record(), Bytes(280, 0x77));
}

TEST_F(CartridgeStoreFaultsTest, ARecordThatCannotBeWrittenGivesTheOldVersionBack) {
    storeOldVersion();
    failOnce(Call::RegistryWrite, 2);

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(stored::version(), 3U);
    EXPECT_EQ(stored::record(), Bytes(280, 0x77));
}

TEST_F(CartridgeStoreFaultsTest, AnAbsentVersionStaysAbsentWhenTheRecordCannotBeWritten) {
    stored::writeRecord(Bytes(280, 0x77));
    failForEver(Call::RegistryWrite, 2);

    EXPECT_FALSE(GetCartData(buffer));

    world().faults.reset();
    EXPECT_FALSE(stored::exists(L"CartDataVer"));
    EXPECT_EQ(stored::record(), Bytes(280, 0x77));
}

TEST_F(CartridgeStoreFaultsTest, AVersionOfAnotherTypeComesBackWhenTheRecordCannotBeWritten) {
    const Bytes text = {'4', 0, 0, 0};
    stored::write(L"CartDataVer", platform::ValueType::String, text);
    failOnce(Call::RegistryWrite, 2);

    EXPECT_FALSE(GetCartData(buffer));

    EXPECT_EQ(stored::read(L"CartDataVer", platform::ValueType::String), text);
}

// Neither the load nor the save can read the version. The save must then not put back a version, so
// that a good record is still accepted at the next start.
TEST_F(CartridgeStoreFaultsTest, AVersionThatCannotBeReadIsLeftAloneWhenTheRecordCannotBeWritten) {
    AddCartIfNew(buffer, kSerial);
    const Bytes before = stored::record();
    failForEver(Call::RegistryRead);
    world().faults.add({Call::RegistryWrite, 2});

    EXPECT_FALSE(GetCartData(buffer));

    world().faults.reset();
    EXPECT_EQ(stored::version(), 4U);
    EXPECT_EQ(stored::record(), before);
    EXPECT_TRUE(GetCartData(buffer));
    EXPECT_NE(buffer.find(kSerial), CartridgeRecord::npos);
}

TEST_F(CartridgeStoreFaultsTest, ALaterOperationDoesNotPassAnOldRecordForOursEither) {
    storeOldVersion();
    // Write 1 is the current cartridge. The first save writes the version (2), fails at the record
    // (3) and puts the version back (4). The second save writes the version (5) and fails (6).
    failOnce(Call::RegistryWrite, 3);
    world().faults.add({Call::RegistryWrite, 6});

    AddCartIfNew(buffer, kSerial);

    world().faults.reset();
    EXPECT_EQ(stored::version(), 3U);
    EXPECT_EQ(stored::record(), Bytes(280, 0x77));
}

TEST_F(CartridgeStoreFaultsTest, ASnoozeThatCannotBeSavedAnswersFalse) {
    AddCartIfNew(buffer, kSerial);
    const Bytes before = stored::record();
    for (const long nth : {1L, 2L}) {
        failOnce(Call::RegistryWrite, nth);

        EXPECT_FALSE(SetSnooze(buffer, kSerial, 1, SnoozeSlot::Low));

        EXPECT_EQ(stored::record(), before);
        EXPECT_EQ(stored::version(), 4U);
    }
    failOnce(Call::RegistryCreate);
    EXPECT_FALSE(SetSnooze(buffer, kSerial, 1, SnoozeSlot::Low));
    EXPECT_EQ(stored::record(), before);
}

TEST_F(CartridgeStoreFaultsTest, AFlagThatCannotBeSavedStillShowsTheAlert) {
    AddCartIfNew(buffer, kSerial);
    failForEver(Call::RegistryWrite);

    EXPECT_FALSE(IllegalCartOccured(buffer, kSerial));
    EXPECT_FALSE(IllegalCartOccured(buffer, kSerial));
    EXPECT_TRUE(takeWelcome());
}

TEST_F(CartridgeStoreFaultsTest, ACartridgeThatCannotBeAddedIsGivenUpAfterTwoRounds) {
    failForEver(Call::RegistryCreate);
    const TraceLines trace;

    EXPECT_FALSE(ElableMemErrOccuredBefore(buffer, kSerial));

    EXPECT_EQ(trace.count("TERNA GetCurrCart"), 2U);
    EXPECT_EQ(trace.count("TERNA GetCartData"), 4U);
}

TEST_F(CartridgeStoreFaultsTest, AWelcomeThatCannotFindItsEntryIsGivenUpSilently) {
    stored::writeCurrent(kSerial);
    failForEver(Call::RegistryCreate);
    const TraceLines trace;

    EXPECT_FALSE(takeWelcome());

    EXPECT_EQ(trace.count("TERNA GetCartData"), 4U);
}

TEST_F(CartridgeStoreFaultsTest, WithoutAReadableCurrentCartridgeItIsUnknown) {
    stored::writeCurrent(kSerial);
    failOnce(Call::RegistryOpen);
    EXPECT_EQ(GetCurrCart(), kNoCartridge);
    failOnce(Call::RegistryRead);
    EXPECT_EQ(GetCurrCart(), kNoCartridge);
}

TEST_F(CartridgeStoreFaultsTest, AddingReadsCurrentThenWritesItThenLoadsThenSaves) {
    AddCartIfNew(buffer, 1);
    world().faults.reset();

    AddCartIfNew(buffer, 2);

    EXPECT_EQ(world().faults.calls(Call::RegistryOpen), 2);    // current, record
    EXPECT_EQ(world().faults.calls(Call::RegistryRead), 4);    // and the version before the save
    EXPECT_EQ(world().faults.calls(Call::RegistryCreate), 2);  // current, save
    EXPECT_EQ(world().faults.calls(Call::RegistryWrite), 3);   // current, version, record
}

TEST_F(CartridgeStoreFaultsTest, AKnownCartridgeIsNotSavedAgain) {
    AddCartIfNew(buffer, 1);
    world().faults.reset();

    AddCartIfNew(buffer, 1);

    EXPECT_EQ(world().faults.calls(Call::RegistryWrite), 1);  // current
}

// Uses the cartridge memory as the messages of a printer do: adds cartridges, snoozes and asks. The
// registry may fail at any call.
void liveThroughIt() {
    CartridgeRecord record;
    for (std::uint32_t serial = 1; serial <= 6; ++serial)
        AddCartIfNew(record, serial);
    static_cast<void>(SetSnooze(record, 6, 336, SnoozeSlot::Low));
    static_cast<void>(IsSnoozing(6, SnoozeSlot::Low));
    static_cast<void>(NonQvCartOccuredBefore(record, 6));
    static_cast<void>(IllegalCartOccured(record, 99));
    static_cast<void>(takeWelcome());
}

// The record must be complete or absent, and the memory must work as soon as the registry does.
void expectWholeRecord() {
    const Bytes record = stored::record();
    EXPECT_TRUE(record.empty() || record.size() == 280U);
    EXPECT_EQ(world().registry.openKeys(), 0);

    CartridgeRecord buffer;
    AddCartIfNew(buffer, 1234);
    EXPECT_EQ(GetCurrCart(), 1234U);
    EXPECT_TRUE(GetCartData(buffer));
    EXPECT_NE(buffer.find(1234), CartridgeRecord::npos);
    EXPECT_EQ(stored::version(), 4U);
    EXPECT_EQ(stored::record().size(), 280U);
}

TEST_F(CartridgeStoreFaultsTest, EveryFailureOfTheRegistryLeavesAWholeRecord) {
    for (const Call call : kRegistryCalls) {
        for (const bool forEver : {false, true}) {
            for (long nth = 1;; ++nth) {
                stored::clear();
                world().faults.add({call, nth, forEver});

                liveThroughIt();

                const bool struck = world().faults.struck() > 0;
                world().faults.reset();
                expectWholeRecord();
                if (!struck) break;
            }
        }
    }
}

TEST_F(CartridgeStoreFaultsTest, NoSingleFailureMakesAnOldRecordPassForOurs) {
    for (const Call call : kRegistryCalls) {
        for (long nth = 1;; ++nth) {
            stored::clear();
            storeOldVersion();
            world().faults.reset();
            world().faults.add({call, nth});

            static_cast<void>(GetCartData(buffer));

            const bool struck = world().faults.struck() > 0;
            world().faults.reset();
            EXPECT_FALSE(stored::version() == 4U && stored::record() == Bytes(280, 0x77)) << nth;
            if (!struck) break;
        }
    }
}

}  // namespace
