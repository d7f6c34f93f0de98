#include "ui/localized_text.h"

#include "platform/simulated/world.h"
#include "tests/support/clean_platform.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using platform::simulated::Call;
using platform::simulated::Fault;
using platform::simulated::world;

constexpr platform::LanguageId kEnglish = 1033, kGerman = 1031;
constexpr platform::LanguageId kBokmal = 0x0414, kNynorsk = 0x0814;
constexpr platform::LanguageId kArabic = 1025, kEgyptian = 3073, kHebrew = 1037, kPersian = 1065;
constexpr unsigned kProbe = 107;  // a text that every language has

class LocalizedTextTest : public testing::Test {
protected:
    void SetUp() override {
        cleanPlatform();
        module = world().texts.addModule(L"texts.dll");
        for (const platform::LanguageId language : {kEnglish, kGerman}) {
            world().texts.add(module, language, kProbe, L"probe");
            world().texts.add(module, language, 200, language == kGerman ? L"Hilfe" : L"Help");
        }
        // A text that only English has, in a block of texts that no other language has.
        world().texts.add(module, kEnglish, 500, L"only English");
    }
    void TearDown() override { cleanPlatform(); }

    void prefer(std::vector<std::wstring> names) {
        world().texts.setPreferredLanguages(std::move(names));
    }
    void speak(platform::LanguageId language) { world().texts.setUserInterfaceLanguage(language); }

    platform::NativeHandle module = nullptr;
};

TEST_F(LocalizedTextTest, IsInTheLanguageThatTheUserPrefers) {
    prefer({L"de-AT"});

    EXPECT_EQ(chosenLanguage(module), kGerman);
    EXPECT_EQ(localizedText(module, 200), L"Hilfe");
}

TEST_F(LocalizedTextTest, IsInTheNextPreferredLanguageWhereTheLibraryLacksTheFirst) {
    prefer({L"fa-IR", L"fr-CA", L"de-DE", L"en-US"});

    EXPECT_EQ(chosenLanguage(module), kGerman);
}

TEST_F(LocalizedTextTest, IsInEnglishWhereThatIsPreferredToALanguageOfTheLibrary) {
    prefer({L"fa-IR", L"en-GB", L"de-DE"});

    EXPECT_EQ(chosenLanguage(module), kEnglish);
}

TEST_F(LocalizedTextTest, IsInARelatedLanguageBeforeTheNextPreferredOne) {
    world().texts.add(module, kNynorsk, kProbe, L"probe");
    prefer({L"nb-NO", L"de-DE"});

    EXPECT_EQ(chosenLanguage(module), kNynorsk);
}

TEST_F(LocalizedTextTest, IsInTheLanguageItselfBeforeARelatedOne) {
    world().texts.add(module, kNynorsk, kProbe, L"probe");
    world().texts.add(module, kBokmal, kProbe, L"probe");
    prefer({L"nb-NO"});

    EXPECT_EQ(chosenLanguage(module), kBokmal);
}

TEST_F(LocalizedTextTest, IsChosenForEachLibraryOfItsOwn) {
    const platform::NativeHandle english = world().texts.addModule(L"english.dll");
    world().texts.add(english, kEnglish, kProbe, L"probe");
    prefer({L"de-DE"});

    EXPECT_EQ(chosenLanguage(module), kGerman);
    EXPECT_EQ(chosenLanguage(english), kEnglish);
}

TEST_F(LocalizedTextTest, IsEnglishWhereNoPreferredLanguageIsThere) {
    prefer({L"fr-FR", L"fa-IR"});
    world().texts.setUserLocale(L"de-DE");

    EXPECT_EQ(localizedText(module, 200), L"Help");
}

TEST_F(LocalizedTextTest, IsInTheLanguageOfDatesWhereNoneIsPreferred) {
    prefer({});
    world().texts.setUserLocale(L"de-LI");

    EXPECT_EQ(chosenLanguage(module), kGerman);
}

TEST_F(LocalizedTextTest, IsEnglishOnlyAsLongAsTheSystemTellsNoLanguage) {
    prefer({L"de-DE"});
    world().texts.setUserLocale(L"");
    world().faults.add(Fault{Call::PreferredLanguages});

    EXPECT_EQ(localizedText(module, 200), L"Help");
    EXPECT_EQ(localizedText(module, 200), L"Hilfe");
}

TEST_F(LocalizedTextTest, IsEnglishOnlyAsLongAsALanguageCannotBeFound) {
    prefer({L"de-DE"});
    world().faults.add(Fault{Call::TextProbe});

    EXPECT_EQ(localizedText(module, 200), L"Help");
    EXPECT_EQ(localizedText(module, 200), L"Hilfe");
}

TEST_F(LocalizedTextTest, NeverMixesLanguages) {
    prefer({L"de-DE"});

    EXPECT_EQ(localizedText(module, 500), L"");
}

TEST_F(LocalizedTextTest, IsEmptyForIdZeroAMissingTextAndIdsThatNoResourceHas) {
    world().texts.add(module, kEnglish, 0, L"id of no text");
    world().texts.add(module, kEnglish, 0x10000 + 200, L"id of no resource");

    EXPECT_EQ(localizedText(module, 0), L"");
    EXPECT_EQ(localizedText(module, 201), L"");
    EXPECT_EQ(localizedText(module, 0x10000 + 200), L"");
    EXPECT_EQ(localizedText(module, 0xFFFFFFFF), L"");
}

TEST_F(LocalizedTextTest, MayHaveAnyIdOfAResource) {
    world().texts.add(module, kEnglish, 1, L"first");
    world().texts.add(module, kEnglish, 0xFFFF, L"last");

    EXPECT_EQ(localizedText(module, 1), L"first");
    EXPECT_EQ(localizedText(module, 0xFFFF), L"last");
}

TEST_F(LocalizedTextTest, IsEmptyWithoutALibrary) {
    EXPECT_STREQ(loadText(nullptr, 200), L"");
}

TEST_F(LocalizedTextTest, IsCutAtTheBuffer) {
    world().texts.add(module, kEnglish, 201, std::wstring(5000, L'x'));

    EXPECT_EQ(std::wstring(loadText(module, 201)).size(), 1023U);
    EXPECT_EQ(localizedText(module, 201, 512).size(), 511U);
    EXPECT_EQ(localizedText(module, 201, 0), L"");
}

TEST_F(LocalizedTextTest, IsWholeWhereItFitsItsBufferExactly) {
    EXPECT_EQ(localizedText(module, 200, 6), L"Help");
    EXPECT_EQ(localizedText(module, 200, 5), L"Help");
    EXPECT_EQ(localizedText(module, 200, 4), L"Hel");
    EXPECT_EQ(localizedText(module, 200, 1), L"");
}

TEST_F(LocalizedTextTest, LoadsIntoFourBuffersInTurn) {
    const wchar_t* first = loadText(module, 200);
    const wchar_t* second = loadText(module, 500);
    const wchar_t* third = loadText(module, kProbe);
    const wchar_t* fourth = loadText(module, 0);

    EXPECT_STREQ(first, L"Help");
    EXPECT_STREQ(second, L"only English");
    EXPECT_STREQ(third, L"probe");
    EXPECT_STREQ(fourth, L"");
    EXPECT_EQ(loadText(module, 500), first);
    EXPECT_STREQ(first, L"only English");
}

TEST_F(LocalizedTextTest, ReadsFromRightToLeftInArabicAndHebrewOfAnyCountry) {
    for (const platform::LanguageId language : {kArabic, kEgyptian, kHebrew}) {
        speak(language);
        EXPECT_TRUE(isRightToLeftUI()) << language;
    }
    for (const platform::LanguageId language : {kEnglish, kGerman, kPersian}) {
        speak(language);
        EXPECT_FALSE(isRightToLeftUI()) << language;
    }
}

TEST_F(LocalizedTextTest, ReadsFromLeftToRightWhereTheSystemHasNoVersion) {
    speak(kHebrew);
    world().faults.add(Fault{Call::SystemVersion});

    EXPECT_FALSE(isRightToLeftUI());
}

}  // namespace
