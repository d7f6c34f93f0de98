#include "tests/printer/cartridge_store_fixture.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using platform::UnixSeconds;
using stored::Bytes;

class CartridgeStoreTest : public CartridgeStoreFixture {};

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
    Bytes text(280, 'A');
    text[278] = text[279] =
        0;  // a terminator, because writing a text without one may read beyond it
    stored::write(L"CartData", platform::ValueType::String, text);

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

}  // namespace
