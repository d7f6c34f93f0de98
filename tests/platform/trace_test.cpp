#include "platform/trace.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::vector<std::string>& lines() {
    static std::vector<std::string> all;
    return all;
}

class TraceTest : public testing::Test {
protected:
    void SetUp() override {
        lines().clear();
        platform::setTraceSink([](const char* line) { lines().emplace_back(line); });
    }
    void TearDown() override { platform::setTraceSink(nullptr); }
};

using Lines = std::vector<std::string>;

TEST_F(TraceTest, ALineIsFormattedLikePrintf) {
    platform::trace("TERNA - %s %d 0x%08x", "status", -3, 0xBEEFU);

    EXPECT_EQ(lines(), Lines{"TERNA - status -3 0x0000beef"});
}

TEST_F(TraceTest, ALineFeedAtTheEndIsNotDoubled) {
    platform::trace("one\n");
    platform::trace("two\n\n");
    platform::trace("\n");

    EXPECT_EQ(lines(), (Lines{"one", "two\n", ""}));
}

TEST_F(TraceTest, ALongLineIsCut) {
    const std::string text(3 * platform::kTraceLimit, 'x');

    platform::trace("%s", text.c_str());

    EXPECT_EQ(lines(), Lines{std::string(platform::kTraceLimit, 'x')});
}

TEST_F(TraceTest, AnEmptyTextIsALineToo) {
    platform::trace("%s", "");

    EXPECT_EQ(lines(), Lines{""});
}

TEST_F(TraceTest, WithoutASinkNobodyHearsALine) {
    platform::setTraceSink(nullptr);

    platform::trace("lost");

    EXPECT_TRUE(lines().empty());
}

}  // namespace
