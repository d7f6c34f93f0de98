#include "platform/resource_text.h"

#include "system.h"

#include <gtest/gtest.h>

namespace {

constexpr platform::LanguageId kEnglish = 0x0409;
constexpr platform::LanguageId kGerman = 0x0407;
constexpr platform::LanguageId kBritish = 0x0809;

class ResourceTextTest : public testing::Test {
protected:
    void SetUp() override {
        contract::provideTexts();
        _library = platform::openResourceLibrary(contract::kTextLibrary);
        ASSERT_NE(_library, nullptr);
    }
    [[nodiscard]] std::wstring text(std::uint32_t id, platform::LanguageId language) const {
        std::wstring found = L"before";
        const bool isThere = platform::resourceText(_library, id, language, found);
        EXPECT_EQ(isThere, !found.empty());
        return found;
    }

    platform::NativeHandle _library = nullptr;
};

TEST_F(ResourceTextTest, ATextIsFoundByItsIdAndLanguage) {
    EXPECT_EQ(text(300, kEnglish), L"Ready");
    EXPECT_EQ(text(301, kEnglish), L"Toner low");
    EXPECT_EQ(text(300, kGerman), L"Gr\u00f6\u00dfe 4");
}

TEST_F(ResourceTextTest, BlocksOfSixteenTextsDoNotMix) {
    EXPECT_EQ(text(302, kEnglish), L"");
    EXPECT_EQ(text(303, kEnglish), L"Last of its block");
    EXPECT_EQ(text(304, kEnglish), L"First of the next");
    EXPECT_EQ(text(305, kEnglish), L"");
    EXPECT_EQ(text(319, kEnglish), L"");
}

TEST_F(ResourceTextTest, AMissingTextIsNotTakenFromAnotherLanguage) {
    EXPECT_EQ(text(301, kGerman), L"");
    EXPECT_EQ(text(300, kBritish), L"");
}

TEST_F(ResourceTextTest, NoLanguageIsNotAnInvitationToChooseOne) {
    EXPECT_EQ(text(300, 0), L"");
    EXPECT_EQ(text(300, 0x0400), L"");
}

TEST_F(ResourceTextTest, AModuleThatIsNotThereHasNoTexts) {
    std::wstring found = L"before";

    EXPECT_FALSE(platform::resourceText(nullptr, 300, kEnglish, found));
    EXPECT_EQ(found, L"");
    EXPECT_FALSE(platform::hasTexts(nullptr, 300, kEnglish));
}

TEST_F(ResourceTextTest, ABlockIsThereWhenOneOfItsTextsIs) {
    EXPECT_TRUE(platform::hasTexts(_library, 302, kEnglish));
    EXPECT_TRUE(platform::hasTexts(_library, 300, kGerman));
    EXPECT_FALSE(platform::hasTexts(_library, 316, kGerman));
    EXPECT_FALSE(platform::hasTexts(_library, 300, kBritish));
    EXPECT_FALSE(platform::hasTexts(_library, 5000, kEnglish));
}

TEST_F(ResourceTextTest, AnIdBeyondTheSixteenBitsOfAResourceIsMissing) {
    EXPECT_EQ(text(300 + 0x100000, kEnglish), L"");
    EXPECT_FALSE(platform::hasTexts(_library, 300 + 0x100000, kEnglish));
}

TEST(ResourceLibraryTest, AMissingLibraryIsNull) {
    EXPECT_EQ(platform::openResourceLibrary(L"contract-never-made.dll"), nullptr);
}

TEST(LanguageTest, TheUserPrefersLanguagesWithNames) {
    const std::vector<std::wstring> names = platform::preferredLanguages();

    ASSERT_FALSE(names.empty());
    for (const std::wstring& name : names) {
        EXPECT_GE(name.size(), 2U);
        EXPECT_EQ(name.find(L'\0'), std::wstring::npos);
    }
}

TEST(LanguageTest, TheSystemHasLanguagesAndAVersion) {
    EXPECT_NE(platform::userInterfaceLanguage(), 0);
    EXPECT_NE(platform::systemDefaultLanguage(), 0);
    EXPECT_TRUE(platform::systemVersionKnown());
}

}  // namespace
