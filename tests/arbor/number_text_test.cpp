#include "arbor/number_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using arbor::parsedDecimal;

TEST(NumberTextTest, DecimalIsReadUpToTheFirstCharacterThatDoesNotBelong) {
    struct Row {
        const char* text;
        const wchar_t* wideText;
        std::int32_t number;
    };
    // clang-format off
    constexpr Row kRows[] = {
        {"7",           L"7",           7},
        {" \t-12 34",   L" \t-12 34",   -12},
        {"+5\r",        L"+5\r",        5},
        {"010",         L"010",         10},
        {"0x10",        L"0x10",        0},
        {"1a",          L"1a",          1},
        {"2147483647",  L"2147483647",  2147483647},
        {"2147483648",  L"2147483648",  2147483647},
        {"-2147483647", L"-2147483647", -2147483647},
        {"-2147483648", L"-2147483648", std::numeric_limits<std::int32_t>::min()},
        {"-2147483649", L"-2147483649", std::numeric_limits<std::int32_t>::min()},
        {"-99999999999999999999", L"-99999999999999999999",
                                        std::numeric_limits<std::int32_t>::min()},
    };
    // clang-format on
    for (const Row& row : kRows) {
        std::int32_t narrow = 99;
        std::int32_t wide = 99;
        EXPECT_TRUE(parsedDecimal(row.text, narrow)) << row.text;
        EXPECT_TRUE(parsedDecimal(row.wideText, wide)) << row.text;
        EXPECT_EQ(narrow, row.number) << row.text;
        EXPECT_EQ(wide, row.number) << row.text;
    }
}

TEST(NumberTextTest, TextWithoutDigitsLeavesTheValueAlone) {
    for (const char* text : {"", " ", "-", "+ 5", "abc", "--5"}) {
        std::int32_t value = 99;
        EXPECT_FALSE(parsedDecimal(text, value)) << text;
        EXPECT_EQ(value, 99) << text;
    }
}

TEST(NumberTextTest, HexadecimalDigitsMayBeOfEitherCase) {
    EXPECT_EQ(arbor::parsedNumber("0xaF"), 0xAFU);
    EXPECT_EQ(arbor::parsedNumber("0XFa"), 0xFAU);
    EXPECT_EQ(arbor::parsedNumber("0xf"), 0xFU);
    EXPECT_EQ(arbor::parsedNumber("0xF"), 0xFU);
    EXPECT_EQ(arbor::parsedNumber("0xa"), 0xAU);
    EXPECT_EQ(arbor::parsedNumber("0xA"), 0xAU);
    EXPECT_EQ(arbor::parsedNumber("0xg"), 0U);
}

TEST(NumberTextTest, TheLargestNumberHasANegativeTooAndWhatIsLargerHasNone) {
    EXPECT_EQ(arbor::parsedNumber("-4294967295"), 1U);
    EXPECT_EQ(arbor::parsedNumber("-4294967296"), 0xFFFFFFFFU);
}

TEST(NumberTextTest, ANumberEndsAtAMarkThatStandsBesideTheDigitsOrLetters) {
    for (const char* text : {"0x1{", "0x1[", "0x1`", "0x1:", "0x1@", "0x1/", "0x1g", "0x1G"})
        EXPECT_EQ(arbor::parsedNumber(text), 1U) << text;
    for (const wchar_t* text : {L"0x1{", L"0x1[", L"0x1\x00E9"})
        EXPECT_EQ(arbor::parsedNumber(text), 1U);
}
