#include "tools/printpath/scenario_words.h"

#include <gtest/gtest.h>

namespace printpath {
namespace {

TEST(ScenarioWords, BlanksAndTabsPartWords) {
    const LineWords line = splitWords("  status\t41100  ");

    ASSERT_EQ(line.words.size(), 2U);
    EXPECT_EQ(line.words[0].text, "status");
    EXPECT_EQ(line.words[1].text, "41100");
}

TEST(ScenarioWords, ANumberSignAtTheBeginningOfAWordStartsAComment) {
    EXPECT_TRUE(splitWords("# all of it").words.empty());
    EXPECT_EQ(splitWords("a#b #c").words.size(), 1U);
    EXPECT_EQ(splitWords("a#b").words[0].text, "a#b");
    EXPECT_EQ(splitWords("\"#x\"").words[0].text, "#x");
}

TEST(ScenarioWords, EscapesStandForWhatCannotBeTyped) {
    EXPECT_EQ(splitWords("\"a\\\"b\\\\c\\nd\\te\\x41\"").words[0].text, "a\"b\\c\nd\teA");
}

TEST(ScenarioWords, AnEqualsSignNamesAnOption) {
    const LineWords line = splitWords("within=5 caption=\"two words\" \"a=b\"");

    ASSERT_EQ(line.words.size(), 3U);
    EXPECT_EQ(line.words[0].name, "within");
    EXPECT_EQ(line.words[0].text, "5");
    EXPECT_EQ(line.words[1].name, "caption");
    EXPECT_EQ(line.words[1].text, "two words");
    EXPECT_EQ(line.words[2].name, "");
    EXPECT_EQ(line.words[2].text, "a=b");
}

TEST(ScenarioWords, WrongQuotesAndEscapesAreErrors) {
    for (const char* wrong : {"\"open", "\"a\"b", "a\"b\"", "\"\\q\"", "\"\\x4\"", "\"\\", "x=\"y"})
        EXPECT_FALSE(splitWords(wrong).error.empty()) << wrong;
}

TEST(ScenarioWords, Utf8IsToldFromOtherBytes) {
    EXPECT_TRUE(
        isUtf8("Gr\xC3\xBC\xC3\x9F"
               "e \xE2\x82\xAC \xF0\x9F\x96\xA8"));
    for (const char* wrong : {"\x80", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
                              "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\xC3\x41"})
        EXPECT_FALSE(isUtf8(wrong));
}

}  // namespace
}  // namespace printpath
