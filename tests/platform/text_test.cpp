#include "platform/text.h"

#include <gtest/gtest.h>
#include <cstdint>
#include <string>

namespace {

using platform::narrowed;
using platform::widened;

TEST(TextTest, AsciiPassesInBothDirections) {
    EXPECT_EQ(widened("Toner low"), L"Toner low");
    EXPECT_EQ(narrowed(L"Toner low"), "Toner low");
}

TEST(TextTest, NothingStaysNothing) {
    EXPECT_EQ(widened(""), L"");
    EXPECT_EQ(narrowed(L""), "");
}

TEST(TextTest, LettersOfTheCodePageAreOneByte) {
    EXPECT_EQ(widened("gr\xF6\xDF"), L"gr\u00f6\u00df");
    EXPECT_EQ(narrowed(L"gr\u00f6\u00df"), "gr\xF6\xDF");
}

TEST(TextTest, ACharacterOutsideTheCodePageBecomesAQuestionMark) {
    EXPECT_EQ(narrowed(L"a\u4e2d"
                       L"b"),
              "a?b");
}

TEST(TextTest, BytesBeyondLatin1FollowTheCodePage) {
    EXPECT_EQ(widened("\x80\x85\x99"), L"\u20ac\u2026\u2122");
    EXPECT_EQ(narrowed(L"\u20ac\u2026\u2122"), "\x80\x85\x99");
}

TEST(TextTest, ACharacterOutsideTheCodePageMayBecomeOneThatLooksLikeIt) {
    EXPECT_EQ(narrowed(L"\u221e\u0100\u2264"), "8A=");
    EXPECT_EQ(narrowed(L"\uff02\uff21\uff5e"), "\"A~");
}

TEST(TextTest, ACharacterOfTwoUnitsBecomesTwoQuestionMarks) {
    EXPECT_EQ(narrowed(L"a\U0001F5A8z"), "a??z");
}

// Converts every character of one UTF-16 unit. The expected count and checksum come from Windows'
// own conversion, so they prove that both implementations convert every character alike.
TEST(TextTest, EveryCharacterBecomesWhatTheSystemMakesOfIt) {
    constexpr unsigned kFirstSurrogate = 0xD800;
    constexpr unsigned kPastSurrogates = 0xE000;
    constexpr unsigned kPrime = 16777619;
    int known = 0;
    std::uint32_t sum = 0;
    for (unsigned character = 1; character <= 0xFFFF; ++character) {
        if (character >= kFirstSurrogate && character < kPastSurrogates) continue;
        const std::string narrow = narrowed(std::wstring(1, static_cast<wchar_t>(character)));
        ASSERT_EQ(narrow.size(), 1U) << character;
        if (narrow != "?") ++known;
        sum = (sum ^ static_cast<unsigned char>(narrow[0])) * kPrime;
    }

    EXPECT_EQ(known, 695);
    EXPECT_EQ(sum, 2392013584U);
}

TEST(TextTest, ANulInsideATextIsATextCharacter) {
    EXPECT_EQ(widened(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(narrowed(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(TextTest, AnUnterminatedViewIsConvertedToItsEndAndNoFurther) {
    EXPECT_EQ(widened(std::string_view("status;more").substr(0, 6)), L"status");
    EXPECT_EQ(narrowed(std::wstring_view(L"status;more").substr(0, 6)), "status");
}

TEST(TextTest, ATextOfAnyLengthIsConvertedWhole) {
    const std::string narrow(100'000, '\xE9');

    const std::wstring wide = widened(narrow);

    EXPECT_EQ(wide, std::wstring(100'000, L'\u00e9'));
    EXPECT_EQ(narrowed(wide), narrow);
}

}  // namespace
