#include "platform/simulated/world.h"
#include "tests/support/records.h"
#include "tests/support/status_channel.h"

#include <gtest/gtest.h>

#include <string>

using platform::simulated::world;
using records::number;
using records::record;
using records::text;
using records::wideText;

namespace {

struct SpoolerPreparationTest : testing::Test {
    void TearDown() override { world().reset(); }

    // Whether the generator has prepared the spooler after it has read all of `bytes`.
    bool preparedAfter(const std::string& bytes) {
        channel.play({bytes});
        EXPECT_TRUE(channel.finished);
        return world().printers.isPrepared();
    }

    test::StatusChannel<> channel;
};

TEST_F(SpoolerPreparationTest, ANarrowPrinterNamePreparesTheSpooler) {
    EXPECT_TRUE(preparedAfter(record(0, 0, text("USB001") + text("Beamline K7400"))));
}

TEST_F(SpoolerPreparationTest, AWidePrinterNamePreparesTheSpooler) {
    EXPECT_TRUE(preparedAfter(record(0, 1, wideText(u"USB001") + wideText(u"Beamline K7400"))));
}

TEST_F(SpoolerPreparationTest, OtherRecordsDoNot) {
    EXPECT_FALSE(preparedAfter(record(0, 2, number(1) + text("a.txt")) +
                               record(1, 0, text("block")) + record(2, 0, "") + record(2, 1, "") +
                               record(2, 3, number(41150))));
}

TEST_F(SpoolerPreparationTest, ThePrinterOfSomebodyElseDoesNot) {
    const std::string names = text("USB001") + text("Another printer");

    EXPECT_FALSE(preparedAfter(record(0, 0, names, records::kPrinter + 1)));
}

}  // namespace
