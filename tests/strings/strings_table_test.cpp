#include "tests/support/strings_table.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "strings/string_ids.h"

namespace {

constexpr unsigned short kEnglish = 1033;
constexpr unsigned short kGerman = 1031;
constexpr unsigned short kChinese = 2052;
constexpr unsigned short kArabic = 1025;
constexpr unsigned short kHebrew = 1037;
constexpr std::size_t kTextsInEachLanguage = 145;

std::wstring_view textOf(unsigned id, unsigned short language) {
    for (unsigned index = 0; index < kStringRowCount; ++index) {
        const StringRow& row = kStringRows[index];
        if (row.id == id && row.language == language) return row.text;
    }
    return {};
}

TEST(StringsTableTest, EveryLanguageHasEveryText) {
    std::map<unsigned short, std::set<unsigned>> idsOf;
    for (unsigned index = 0; index < kStringRowCount; ++index) {
        idsOf[kStringRows[index].language].insert(kStringRows[index].id);
    }

    EXPECT_EQ(idsOf[kEnglish].size(), kTextsInEachLanguage);
    for (const auto& [language, ids] : idsOf)
        EXPECT_EQ(ids, idsOf[kEnglish]) << language;
}

TEST(StringsTableTest, TheFirstFiveLanguagesAreThere) {
    for (const unsigned short language : {kEnglish, kGerman, kChinese, kArabic, kHebrew}) {
        EXPECT_FALSE(textOf(IDS_TITLE, language).empty()) << language;
    }
}

TEST(StringsTableTest, RowsAreOrderedByLanguageThenById) {
    for (unsigned index = 1; index < kStringRowCount; ++index) {
        const StringRow& before = kStringRows[index - 1];
        const StringRow& row = kStringRows[index];
        EXPECT_LT(std::tie(before.language, before.id), std::tie(row.language, row.id)) << index;
    }
}

TEST(StringsTableTest, NoTextIsEmpty) {
    for (unsigned index = 0; index < kStringRowCount; ++index) {
        EXPECT_FALSE(std::wstring_view(kStringRows[index].text).empty()) << kStringRows[index].id;
    }
}

TEST(StringsTableTest, EnglishTextsReadToTheLetter) {
    EXPECT_EQ(textOf(IDS_TITLE, kEnglish), L"%s \u2013 Printer alert");
    EXPECT_EQ(textOf(IDS_OK, kEnglish), L"&OK");
    EXPECT_EQ(textOf(IDS_SHOP_FOR_SUPPLIES, kEnglish), L"Shop for s&upplies");
    EXPECT_EQ(
        textOf(IDS_LOAD_MEDIA_DETAIL, kEnglish),
        L"Printing continues when the paper is loaded. If it does not, press the Go button on "
        L"the printer.\nPaper type in use: %s\nPaper type needed: %s");
    EXPECT_EQ(textOf(IDS_INTERNAL_PROBLEM, kEnglish), L"The printer has an internal problem.");
}

TEST(StringsTableTest, LettersOfEveryScriptSurvive) {
    EXPECT_EQ(textOf(IDS_CARTRIDGE_EMPTY_CAPTION, kGerman), L"Tonerkartusche leer");
    EXPECT_EQ(textOf(IDS_FAX_OPEN_LINK, kGerman), L"Fax in Orrery \u00F6ffnen");
    EXPECT_EQ(textOf(IDS_OK, kChinese), L"\u786E\u5B9A(&O)");
    EXPECT_EQ(textOf(IDS_OK, kArabic), L"\u0645\u0648\u0627\u0641\u0642 (&O)");
    EXPECT_EQ(textOf(IDS_HELP, kHebrew), L"\u05E2\u05D6\u05E8\u05D4 (&H)");
}

TEST(StringsTableTest, QuotesInsideATextAreSingle) {
    const std::wstring_view text = textOf(IDS_SNOOZE_NOTHING_CHOSEN, kHebrew);

    EXPECT_TRUE(text.ends_with(L" \"\u05D0\u05D9\u05E9\u05D5\u05E8\"."));
}

TEST(StringsTableTest, MediaTextsStandAtThreeHundredPlusTheirCode) {
    EXPECT_EQ(textOf(300 + 1, kEnglish), L"Plain paper");
    EXPECT_EQ(textOf(300 + 14, kEnglish), L"Envelopes");
    EXPECT_EQ(textOf(300 + 21, kEnglish), L"Vellum paper");
}

}  // namespace
