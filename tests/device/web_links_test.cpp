#include "device/web_links.h"

#include "platform/simulated/world.h"
#include "tests/support/clean_platform.h"
#include "tests/support/trace_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using platform::Hive;
using platform::ValueType;
using platform::simulated::Call;
using platform::simulated::world;

constexpr wchar_t kKey[] = L"SOFTWARE\\Corvane\\QVBL7400 SM";
constexpr char kNotUsable[] = "TERNA - setting WebSite is no http address, using the default";

class WebLinksTest : public testing::Test {
protected:
    void SetUp() override { cleanPlatform(); }
    void TearDown() override {
        EXPECT_EQ(world().registry.openKeys(), 0);
        cleanPlatform();
    }

    static void configure(const std::wstring& site) {
        world().registry.setText(Hive::LocalMachine, kKey, L"WebSite", site);
    }

    TraceLines trace;
};

TEST_F(WebLinksTest, WithoutAConfigurationTheDefaultsHold) {
    EXPECT_EQ(makerSite(), L"https://www.corvane.example");
    EXPECT_EQ(validationSite(), L"https://validate.corvane.example");

    world().registry.create(Hive::LocalMachine, kKey);
    EXPECT_EQ(makerSite(), L"https://www.corvane.example");
    EXPECT_EQ(validationSite(), L"https://validate.corvane.example");
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(WebLinksTest, EachSiteIsConfiguredByItself) {
    world().registry.setText(Hive::LocalMachine, kKey, L"WebSite", L"http://www.test");
    EXPECT_EQ(makerSite(), L"http://www.test");
    EXPECT_EQ(validationSite(), L"https://validate.corvane.example");

    world().registry.setText(Hive::LocalMachine, kKey, L"ValidationSite",
                             L"https://check.test:81/x");
    EXPECT_EQ(makerSite(), L"http://www.test");
    EXPECT_EQ(validationSite(), L"https://check.test:81/x");
    EXPECT_TRUE(trace.all().empty());
}

TEST_F(WebLinksTest, TheUsersOwnRegistryIsNotAsked) {
    world().registry.setText(Hive::CurrentUser, kKey, L"WebSite", L"http://www.test");

    EXPECT_EQ(makerSite(), L"https://www.corvane.example");
}

TEST_F(WebLinksTest, ATrailingSlashIsTakenOff) {
    configure(L"https://www.test/");
    EXPECT_EQ(makerSite(), L"https://www.test");

    configure(L"https://www.test/shop//");
    EXPECT_EQ(makerSite(), L"https://www.test/shop");
}

TEST_F(WebLinksTest, TheSchemeMayBeWrittenInCapitals) {
    configure(L"HTTPS://Www.Test");
    EXPECT_EQ(makerSite(), L"HTTPS://Www.Test");

    configure(L"Http://www.test");
    EXPECT_EQ(makerSite(), L"Http://www.test");
}

TEST_F(WebLinksTest, AnAddressWithAnotherSchemeOrNoneFallsBackWithATrace) {
    for (const wchar_t* const site : {L"file:///C:/Windows/system32/calc.exe",
                                      L"C:\\Windows\\system32\\calc.exe",
                                      L"ftp://www.test",
                                      L"javascript:alert(1)",
                                      L"www.test",
                                      L"",
                                      L"http",
                                      L"http:",
                                      L"http:/www.test",
                                      L"https://",
                                      L"https:///",
                                      L"https:///path",
                                      L"http://?q",
                                      L"http://#x",
                                      L" https://www.test",
                                      L"https://www.test x",
                                      L"https://www.test\"-x",
                                      L"https://www.test\\..\\x",
                                      L"https:\\\\www.test",
                                      L"https://www.test\nx",
                                      L"httpsx://www.test",
                                      L"\x0130ttps://www.test"}) {
        configure(site);
        trace.forget();

        EXPECT_EQ(makerSite(), L"https://www.corvane.example") << site;

        EXPECT_EQ(trace.all(), std::vector<std::string>{kNotUsable}) << site;
    }
}

TEST_F(WebLinksTest, TheTraceNamesTheSetting) {
    world().registry.setText(Hive::LocalMachine, kKey, L"ValidationSite", L"mailto:somebody");

    EXPECT_EQ(validationSite(), L"https://validate.corvane.example");

    EXPECT_TRUE(
        trace.contains("TERNA - setting ValidationSite is no http address, using the default"));
}

TEST_F(WebLinksTest, AValueThatIsNoTextFallsBackWithATrace) {
    world().registry.setDword(Hive::LocalMachine, kKey, L"WebSite", 5);

    EXPECT_EQ(makerSite(), L"https://www.corvane.example");
    EXPECT_TRUE(trace.contains(kNotUsable));
}

TEST_F(WebLinksTest, AnAddressOf511UnitsIsTakenAndALongerOneIsNot) {
    const std::wstring longest = L"https://www.test/" + std::wstring(494, L'x');
    configure(longest);
    EXPECT_EQ(makerSite(), longest);

    configure(longest + L"x");
    EXPECT_EQ(makerSite(), L"https://www.corvane.example");
    EXPECT_TRUE(trace.contains(kNotUsable));
}

TEST_F(WebLinksTest, AnAddressWithoutTerminatorIsTaken) {
    const std::u16string units = u"http://a.test";
    world().registry.set(Hive::LocalMachine, kKey, L"WebSite", ValueType::String,
                         {reinterpret_cast<const char*>(units.data()), units.size() * 2});

    EXPECT_EQ(makerSite(), L"http://a.test");
}

TEST_F(WebLinksTest, AnAddressEndsAtItsFirstTerminator) {
    configure(std::wstring(L"http://a.test\0/more", 19));

    EXPECT_EQ(makerSite(), L"http://a.test");
}

TEST_F(WebLinksTest, AConfigurationThatCannotBeReadFallsBack) {
    configure(L"http://www.test");
    for (const Call call : {Call::RegistryOpen, Call::RegistryRead}) {
        world().faults.reset();
        world().faults.add({call});

        EXPECT_EQ(makerSite(), L"https://www.corvane.example");
    }
}

TEST_F(WebLinksTest, EachPageIsOpenedOnTheMakersSite) {
    configure(L"http://www.test/");

    openAnticounterfeitPage();
    openRecyclePage();
    openPrivacyPage();

    EXPECT_EQ(
        world().desktop.addresses(),
        (std::vector<std::wstring>{L"http://www.test/go/anticounterfeit",
                                   L"http://www.test/go/recycle", L"http://www.test/go/privacy"}));
}

TEST_F(WebLinksTest, AShellThatRefusesIsIgnored) {
    world().faults.add({Call::AddressOpen, 1, true});

    openPrivacyPage();

    EXPECT_TRUE(world().desktop.addresses().empty());
}

}  // namespace
