#include "tests/printer/cartridge_store_fixture.h"

#include <cstddef>
#include <optional>
#include <string>

namespace {

using stored::Bytes;

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

class CartridgeFlagTest : public CartridgeStoreFixture,
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

class CartridgeWelcomeTest : public CartridgeStoreFixture {};

TEST_F(CartridgeWelcomeTest, ANewCartridgeIsWelcomedOnce) {
    AddCartIfNew(buffer, 5);
    trace.forget();

    EXPECT_TRUE(takeWelcome());
    EXPECT_EQ(trace.all(), (Lines{"TERNA SetCartData", "TERNA GetCurrCart", kLoading}));
    EXPECT_EQ(stored::record()[36], 1);

    EXPECT_FALSE(takeWelcome());
}

TEST_F(CartridgeWelcomeTest, AnUnknownCartridgeIsNotWelcomed) {
    EXPECT_FALSE(takeWelcome());

    EXPECT_EQ(trace.all(), (Lines{"TERNA SetCartData", "TERNA GetCurrCart"}));
    EXPECT_EQ(stored::version(), std::nullopt);
}

TEST_F(CartridgeWelcomeTest, ACurrentCartridgeWithoutAnEntryIsAddedAndWelcomed) {
    store({{1, 1}});
    stored::writeCurrent(9);

    EXPECT_TRUE(takeWelcome());

    EXPECT_EQ(load().find(9), 1U);
    EXPECT_TRUE(load().flag(1, CartridgeFlag::WelcomeShown));
}

TEST_F(CartridgeWelcomeTest, ACartridgeWithAnyFlagIsNotWelcomed) {
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

}  // namespace
