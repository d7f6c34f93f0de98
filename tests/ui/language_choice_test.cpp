#include "ui/language_choice.h"

#include "tests/support/strings_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using platform::LanguageId;
using Languages = std::vector<LanguageId>;

constexpr LanguageId kEnglish = 0x0409;
constexpr std::size_t kNamesOfTheTable = 913;

struct Served {
    std::string name;
    Languages tables;
};

// The rows of served_languages.tsv: numbers, a tab, and the names that they hold for.
std::vector<Served> servedLanguages() {
    std::vector<Served> served;
    std::ifstream file(BEAMLINE_SOURCES "/tests/ui/served_languages.tsv");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        const std::size_t tab = line.find('\t');
        std::istringstream numbers(line.substr(0, tab));
        Languages tables;
        for (unsigned number = 0; numbers >> std::hex >> number;) {
            tables.push_back(static_cast<LanguageId>(number));
        }
        std::istringstream names(line.substr(tab + 1));
        for (std::string name; names >> name;)
            served.push_back({name, tables});
    }
    return served;
}

Languages tablesFor(const std::string& name) {
    const auto tables = languagesFor(std::wstring(name.begin(), name.end()));
    return {tables.begin(), tables.end()};
}

TEST(LanguageChoice, ServesEveryLanguageOfTheSystemAsTheTableSays) {
    const std::vector<Served> served = servedLanguages();
    EXPECT_EQ(served.size(), kNamesOfTheTable);

    for (const Served& row : served) {
        Languages tables = tablesFor(row.name);
        if (tables.empty() || tables.back() != kEnglish) tables.push_back(kEnglish);
        EXPECT_EQ(tables, row.tables) << row.name;
    }
}

TEST(LanguageChoice, CanChooseEveryLanguageThatHasTexts) {
    std::set<LanguageId> first;
    for (const Served& row : servedLanguages()) {
        const Languages tables = tablesFor(row.name);
        if (!tables.empty()) first.insert(tables.front());
    }

    for (unsigned index = 0; index < kStringRowCount; ++index) {
        EXPECT_EQ(first.count(kStringRows[index].language), 1U) << kStringRows[index].language;
    }
}

TEST(LanguageChoice, CountsEnglishAsALanguageLikeTheOthers) {
    EXPECT_EQ(tablesFor("en-GB"), Languages{kEnglish});
    EXPECT_EQ(tablesFor("fa-IR"), Languages{});
}

TEST(LanguageChoice, TakesNoLanguageForOneThatBeginsLikeIt) {
    EXPECT_EQ(tablesFor("de"), Languages{0x0407});
    EXPECT_EQ(tablesFor("deu"), Languages{});
    EXPECT_EQ(tablesFor("d"), Languages{});
    EXPECT_EQ(tablesFor(""), Languages{});
    EXPECT_EQ(tablesFor("-DE"), Languages{});
}

TEST(LanguageChoice, ReadsANameThatEndsWithAHyphenAsOneWithoutIt) {
    EXPECT_EQ(tablesFor("pt-"), tablesFor("pt"));
    EXPECT_EQ(tablesFor("zh-Hant-"), tablesFor("zh-Hant"));
}

}  // namespace
