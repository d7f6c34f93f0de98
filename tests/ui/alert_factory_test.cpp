#include "ui/alert_factory.h"

#include "platform/simulated/world.h"
#include "printer/media_types.h"
#include "tests/ui/alert_fixture.h"
#include "ui/supplies_info.h"

#include <string>
#include <utility>
#include <vector>

using platform::simulated::world;

namespace {

class AlertFactoryTest : public AlertFixture {
protected:
    std::wstring shown(int id) {
        const auto& controls = frame().controls;
        const auto found = controls.find(id);
        return found != controls.end() ? found->second.text : std::wstring();
    }
    int picture(int id) {
        const auto& controls = frame().controls;
        const auto found = controls.find(id);
        return found != controls.end() ? found->second.picture : 0;
    }
};

TEST_F(AlertFactoryTest, PutsThePrintersNameInTheTitle) {
    open(0, 41100);

    EXPECT_EQ(frame().title, L"Laser in the hall \u2013 Printer alert");
}

TEST_F(AlertFactoryTest, NamesTheMediaInUseAndTheMediaNeeded) {
    setCurrentMediaType(314);
    describe(1, 41011);
    description.setInt(L"mediaCode", 11);

    openDescribed();

    EXPECT_EQ(shown(1004), text(160));
    EXPECT_EQ(picture(133), 198);
    EXPECT_NE(shown(1012).find(L"in use: Envelopes"), std::wstring::npos);
    EXPECT_NE(shown(1012).find(L"needed: Transparency film"), std::wstring::npos);
}

TEST_F(AlertFactoryTest, ShowsTheSecondMediaAlertWithoutAPlaceholder) {
    open(2, 41900);

    EXPECT_EQ(shown(1012).find(L'%'), std::wstring::npos);
    EXPECT_NE(shown(1012).find(L"needed: Plain paper"), std::wstring::npos);
    EXPECT_EQ(picture(133), 205);
}

TEST_F(AlertFactoryTest, ShowsTheThreeStepsOfManualDuplex) {
    open(3, 40120);

    EXPECT_EQ(frame().title, text(181));
    EXPECT_EQ(shown(1014), text(176));
    EXPECT_EQ(shown(1015), text(177));
    EXPECT_EQ(shown(1016), text(178));
    EXPECT_EQ(shown(1017), text(180));
    EXPECT_EQ(picture(230), 186);
    EXPECT_EQ(picture(231), 187);
    EXPECT_EQ(picture(232), 188);
}

TEST_F(AlertFactoryTest, ShowsTheStepsAtAPrinterOfTheFamilyInTheirOddOrder) {
    useFamilyPrinter();

    open(3, 40121);

    EXPECT_EQ(picture(230), 203);
    EXPECT_EQ(picture(231), 204);
    EXPECT_EQ(picture(232), 202);
}

TEST_F(AlertFactoryTest, OffersToCheckANewCartridgeOnChineseSystems) {
    world().texts.setSystemLanguage(2052);

    open(25, 1);

    EXPECT_EQ(shown(1004), text(347));
    EXPECT_EQ(shown(132), text(360));
    EXPECT_TRUE(control(132).isLink);
    EXPECT_TRUE(control(132).isUnderlined);
    EXPECT_TRUE(control(132).visible);
}

TEST_F(AlertFactoryTest, OnlyGreetsANewCartridgeElsewhere) {
    open(25, 1);

    EXPECT_EQ(shown(1004), text(250));
    EXPECT_FALSE(description.hasProperty(L"ids1"));
    EXPECT_FALSE(control(132).visible);
    EXPECT_FALSE(control(131).visible);
}

TEST_F(AlertFactoryTest, AnnouncesAPrintedFaxOnceAndWithoutPictureAndShop) {
    open(26, 100000);

    EXPECT_EQ(codes(), (std::vector<std::uint32_t>{90001, 90003}));
    EXPECT_FALSE(description.hasProperty(L"idbPrinter"));
    EXPECT_FALSE(description.hasProperty(L"idsShop"));
    EXPECT_FALSE(control(131).visible);
}

TEST_F(AlertFactoryTest, AnnouncesAFaxForTheCompanionWithOneMarkerOnly) {
    open(27, 100001);

    EXPECT_EQ(codes(), (std::vector<std::uint32_t>{90002, 90003}));
}

TEST_F(AlertFactoryTest, ShowsTheTextOfTheStatusInAGenericAlert) {
    for (const auto& [status, message] :
         {std::pair{10511, text(179)}, {42003, text(133)}, {42100, text(234)}, {4711, L""}}) {
        open(28, status);
        EXPECT_EQ(shown(132), message) << status;
        alert.reset();
        description.removeProperty(L"ids1");
    }
}

TEST_F(AlertFactoryTest, SaysInTheUsersLanguageThatTheDeviceDoesNotKnow) {
    world().device.reset();
    world().texts.setPreferredLanguages({L"de-DE"});

    open(4, 10209);

    EXPECT_NE(shown(1059).find(text(364, 1031)), std::wstring::npos);
    EXPECT_EQ(shown(1059).find(L"Not Known"), std::wstring::npos);
    EXPECT_NE(shown(1061).find(text(364, 1031)), std::wstring::npos);
}

TEST_F(AlertFactoryTest, KeepsLettersThatTheCodePageHasNot) {
    world().texts.setPreferredLanguages({L"zh-CN"});

    open(4, 10209);

    EXPECT_EQ(shown(1060), text(281, 2052));
    EXPECT_EQ(shown(1062), text(142, 2052));
}

TEST_F(AlertFactoryTest, CutsADescribingTextAtItsBuffer) {
    replaceText(281, std::wstring(3000, L'x'));
    replaceText(154, std::wstring(505, L'y') + L"%s%s");

    open(4, 10209);
    EXPECT_EQ(shown(1060).size(), 511U);
    alert.reset();
    open(2, 41900);

    EXPECT_EQ(shown(1012).size(), 511U);
}

TEST_F(AlertFactoryTest, UsesTheProgramsOwnTextsWhereNoStringsLibraryIsNamed) {
    describe(4, 10209);
    description.setPointer(L"hinstance", strings);
    description.removeProperty(L"hSinstance");

    openDescribed();

    EXPECT_EQ(shown(1004), text(284));
    EXPECT_EQ(shown(1060), text(281));
}

TEST_F(AlertFactoryTest, OpensAnAlertWithoutTextsWhenTheStringsLibraryIsMissing) {
    describe(0, 41100);
    description.setPointer(L"hSinstance", nullptr);

    openDescribed();

    EXPECT_EQ(shown(1004), L"");
    EXPECT_TRUE(frame().visible);
}

}  // namespace
