#include "printer/status_texts.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <vector>

namespace {

// Each text with the codes that show it, written independently of the table in the code.
std::map<std::int32_t, std::uint32_t> expectedTexts() {
    const std::map<std::uint32_t, std::vector<std::int32_t>> codesByText = {
        {119, {50006}},
        {125, {50012}},
        {133, {42003, 42004}},
        {141, {40600}},
        {145, {40020}},
        {146, {40021}},
        {147, {40010}},
        {153, {30119}},
        {159, {10209, 10219}},
        {163, {10300}},
        {165, {50003, 50007, 50008, 50020, 50021, 50023, 50024, 50025}},
        {171, {10403, 10407}},
        {172, {10500}},
        {179, {10511, 10512}},
        {210, {30017, 40017}},
        {232, {42002}},
        {233, {42001}},
        {234, {42000, 42100, 42300}},
        {353, {40608, 40610, 40612, 40614}},
    };
    std::map<std::int32_t, std::uint32_t> texts;
    for (const auto& [text, codes] : codesByText) {
        for (const std::int32_t code : codes)
            texts[code] = text;
    }
    return texts;
}

TEST(StatusTextsTest, EveryKnownStatusHasItsText) {
    ASSERT_EQ(expectedTexts().size(), 36U);
    for (const auto& [status, text] : expectedTexts()) {
        EXPECT_TRUE(isKnownStatus(status)) << status;
        EXPECT_EQ(statusResource(status), text) << status;
    }
}

TEST(StatusTextsTest, NoOtherStatusIsKnown) {
    const auto texts = expectedTexts();
    for (std::int32_t status = -10; status < 120000; ++status) {
        if (texts.count(status) != 0) continue;
        EXPECT_FALSE(isKnownStatus(status)) << status;
        EXPECT_EQ(statusResource(status), 0xFFFFFFFFU) << status;
    }
}

TEST(StatusTextsTest, TheExtremesAreUnknown) {
    EXPECT_FALSE(isKnownStatus(std::numeric_limits<std::int32_t>::min()));
    EXPECT_FALSE(isKnownStatus(std::numeric_limits<std::int32_t>::max()));
    EXPECT_EQ(statusResource(std::numeric_limits<std::int32_t>::min()), kNoStatusResource);
    EXPECT_EQ(statusResource(std::numeric_limits<std::int32_t>::max()), kNoStatusResource);
}

}  // namespace
