#include "platform/text.h"

#include <gtest/gtest.h>

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
