#include "device/shop_page.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

const std::string kField = "document.stockline.XML_string.value";

TEST(FilledShopPageTest, APageOfSeveralLinesComesOutAsOneLine) {
    EXPECT_EQ(filledShopPage("<html>\n<body>\n\n</body>\n</html>\n", ""),
              "<html><body></body></html>");
}

TEST(FilledShopPageTest, ACarriageReturnDirectlyBeforeALineFeedGoesWithIt) {
    EXPECT_EQ(filledShopPage("one\r\ntwo\r\r\nthree\rfour\r", ""), "onetwo\rthree\rfour\r");
}

TEST(FilledShopPageTest, TheLastLineNeedsNoLineFeed) {
    EXPECT_EQ(filledShopPage("one\ntwo", ""), "onetwo");
    EXPECT_EQ(filledShopPage("", "<a>"), "");
    EXPECT_EQ(filledShopPage("\n", "<a>"), "");
    EXPECT_EQ(filledShopPage("\r\n", "<a>"), "");
}

TEST(FilledShopPageTest, TheFieldBecomesTheQuotedDocumentWithoutItsDeclaration) {
    const std::string filled =
        filledShopPage("form = " + kField + ";", "<?xml version=\"1.0\"?><order>it's</order>");

    EXPECT_EQ(filled, "form = '<order>it's</order>';");
}

TEST(FilledShopPageTest, ADocumentWithoutADeclarationLosesItsFirstTag) {
    EXPECT_EQ(filledShopPage("x " + kField, "<order>1</order>"), "x '1</order>'");
}

TEST(FilledShopPageTest, ADocumentWithoutAnyMarkupIsTakenWhole) {
    EXPECT_EQ(filledShopPage("x " + kField, "plain"), "x 'plain'");
    EXPECT_EQ(filledShopPage("x " + kField, ""), "x ''");
    EXPECT_EQ(filledShopPage("x " + kField, "only>"), "x ''");
}

TEST(FilledShopPageTest, LineBreaksOfTheDocumentStay) {
    EXPECT_EQ(filledShopPage("x " + kField, "<?x?>\r\n<a>\n</a>"), "x '\r\n<a>\n</a>'");
}

TEST(FilledShopPageTest, OnlyTheFirstFieldIsReplaced) {
    EXPECT_EQ(filledShopPage(kField + "+" + kField, "<d>1"), "'1'+" + kField);
}

TEST(FilledShopPageTest, AFieldInTheDocumentIsNotReplacedAgain) {
    EXPECT_EQ(filledShopPage(" " + kField, "<d>" + kField), " '" + kField + "'");
}

TEST(FilledShopPageTest, AFieldThatALineBreakSplitsIsFound) {
    EXPECT_EQ(filledShopPage("document.stockline.\r\nXML_string.value;", "<d>1"), "'1';");
}

TEST(FilledShopPageTest, APageOf35CharactersStaysAndOneOf36IsFilled) {
    ASSERT_EQ(kField.size(), 35U);

    EXPECT_EQ(filledShopPage(kField, "<d>1"), kField);
    EXPECT_EQ(filledShopPage(kField + "\r\n", "<d>1"), kField);
    EXPECT_EQ(filledShopPage(kField + ";", "<d>1"), "'1';");
}

TEST(FilledShopPageTest, APageWithoutTheFieldIsOnlyFlattened) {
    EXPECT_EQ(filledShopPage("document.Stockline.XML_string.value and\nmore text", "<d>1"),
              "document.Stockline.XML_string.value andmore text");
}

TEST(FilledShopPageTest, EveryOtherByteOfPageAndDocumentPasses) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) {
        if (value != '\n' && value != '>') bytes += static_cast<char>(value);
    }

    EXPECT_EQ(filledShopPage(bytes + kField + bytes, "<d>" + bytes),
              bytes + "'" + bytes + "'" + bytes);
}

TEST(FilledShopPageTest, APageOfTenMegabytesIsFilled) {
    const std::string half(5 * 1024 * 1024, 'x');

    const std::string filled = filledShopPage(half + "\n" + kField + "\r\n" + half, "<d>1");

    EXPECT_EQ(filled.size(), 2 * half.size() + 3);
    EXPECT_EQ(filled.substr(half.size(), 3), "'1'");
}

}  // namespace
