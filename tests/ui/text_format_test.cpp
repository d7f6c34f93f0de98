#include "ui/text_format.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kUnits = 64;

TEST(TextFormat, PutsWideTextNarrowTextAndNumbersInTheirPlaces) {
    EXPECT_EQ(formatText(L"%s has %d of %S.", {L"Tray", 12, std::string("QV")}, kUnits),
              L"Tray has 12 of QV.");
}

TEST(TextFormat, WritesNegativeAndExtremeNumbers) {
    EXPECT_EQ(formatText(L"%d %d", {-5, INT32_MIN}, kUnits), L"-5 -2147483648");
}

TEST(TextFormat, InsertsNothingForAPlaceholderWithoutArgument) {
    EXPECT_EQ(formatText(L"[%s][%s]", {L"one"}, kUnits), L"[one][]");
}

TEST(TextFormat, IgnoresSurplusArguments) {
    EXPECT_EQ(formatText(L"%s", {L"one", L"two"}, kUnits), L"one");
}

TEST(TextFormat, InsertsNothingForAnArgumentOfAnotherKind) {
    EXPECT_EQ(formatText(L"[%d][%S][%s]", {L"wide", L"wide", L"wide"}, kUnits), L"[][][wide]");
}

TEST(TextFormat, KeepsAPerCentSignThatIsNoPlaceholder) {
    EXPECT_EQ(formatText(L"100 % n%x%% %", {L"unused"}, kUnits), L"100 % n%x% %");
}

TEST(TextFormat, ReadsNothingBehindTheEndOfItsFormat) {
    const std::wstring_view percentAlone = std::wstring_view(L"50%s").substr(0, 3);

    EXPECT_EQ(formatText(percentAlone, {L"unused"}, kUnits), L"50%");
}

TEST(TextFormat, DoesNotReadPlaceholdersInWhatItInserts) {
    EXPECT_EQ(formatText(L"%s %s", {L"%s%d", L"end"}, kUnits), L"%s%d end");
}

TEST(TextFormat, CutsTheTextAtTheBufferItIsFor) {
    EXPECT_EQ(formatText(L"abc%s", {L"defgh"}, 6), L"abcde");
    EXPECT_EQ(formatText(L"abc%s", {L"de"}, 6), L"abcde");
    EXPECT_EQ(formatText(L"abcdef%s", {L"g"}, 6), L"abcde");
    EXPECT_EQ(formatText(L"abc", {}, 2), L"a");
    EXPECT_EQ(formatText(L"abc", {}, 1), L"");
    EXPECT_EQ(formatText(L"abc", {}, 0), L"");
}

TEST(TextFormat, SurvivesATranslationOfFiveThousandPlaceholders) {
    std::wstring format;
    for (int i = 0; i < 5000; ++i)
        format += L"%s";

    EXPECT_EQ(formatText(format, {L"only"}, 1024), L"only");
}

}  // namespace
