#include "ui/alert_factory.h"

#include "platform/simulated/world.h"
#include "printer/media_types.h"
#include "tests/ui/alert_fixture.h"
#include "ui/supplies_info.h"

#include <iterator>

using platform::simulated::world;

namespace {

// What each type of alert shows. The rows have plain numbers and no names from the code, so that a
// wrong name in the code is noticed. A 0 means that nothing is shown.
struct Expected {
    int type, status, templateId, icon;
    unsigned headline, detail, familyDetail, message;
    int picture, familyPicture;
    unsigned suppliesDetail;
    const wchar_t* pages;  // null: no pages line
    int condition;
};

// clang-format off
constexpr Expected kExpected[] = {
    { 0, 41100, 137, 149, 149,  351, 150, 0,   198, 199, 0,   nullptr, 0},
    { 3, 40120, 139, 0,   0,    0,   0,   0,   0,   0,   0,   nullptr, 0},
    { 4, 10209, 210, 150, 284,  0,   0,   0,   205, 206, 281, L"1200", 207},
    { 5, 40600, 210, 149, 213,  0,   0,   0,   205, 206, 0,   nullptr, 0},
    { 6, 10512, 210, 149, 212,  0,   0,   0,   205, 206, 0,   L"?",    207},
    { 7, 10403, 210, 148, 352,  0,   0,   0,   205, 206, 0,   L"1200", 208},
    { 8, 40017, 210, 150, 363,  0,   0,   0,   205, 206, 210, L"?",    207},
    { 9, 50021, 137, 149, 1009, 0,   0,   165, 205, 206, 0,   nullptr, 0},
    {10, 50012, 137, 149, 1008, 125, 125, 0,   205, 206, 0,   nullptr, 0},
    {11, 30201, 137, 149, 166,  0,   0,   165, 205, 206, 0,   nullptr, 0},
    {12, 50020, 137, 149, 175,  0,   0,   165, 205, 206, 0,   nullptr, 0},
    {13, 0,     137, 149, 0,    0,   0,   0,   205, 206, 0,   nullptr, 0},
    {14, 50003, 137, 149, 167,  0,   0,   165, 205, 206, 0,   nullptr, 0},
    {15, 50007, 137, 149, 168,  0,   0,   165, 205, 206, 0,   nullptr, 0},
    {16, 50008, 137, 149, 169,  0,   0,   165, 205, 206, 0,   nullptr, 0},
    {17, 50025, 137, 149, 170,  0,   0,   165, 205, 206, 0,   nullptr, 0},
    {18, 50005, 137, 149, 173,  0,   0,   165, 205, 206, 0,   nullptr, 0},
    {19, 40020, 137, 149, 231,  0,   0,   0,   200, 201, 0,   nullptr, 0},
    {20, 40021, 137, 149, 220,  0,   0,   0,   200, 201, 0,   nullptr, 0},
    {21, 42002, 137, 149, 232,  0,   0,   0,   196, 197, 0,   nullptr, 0},
    {22, 42000, 137, 149, 234,  0,   0,   0,   182, 182, 0,   nullptr, 0},
    {23, 42001, 137, 149, 233,  0,   0,   0,   205, 206, 0,   nullptr, 0},
    {24, 40608, 210, 148, 353,  0,   0,   0,   205, 206, 0,   L"?",    207},
    {25, 1,     137, 0,   250,  0,   0,   0,   205, 206, 0,   nullptr, 0},
    {26, 100000,137, 148, 350,  348, 348, 0,   0,   0,   0,   nullptr, 0},
    {27, 100001,137, 148, 350,  349, 349, 0,   0,   0,   0,   nullptr, 0},
    {28, 10500, 137, 149, 0,    0,   0,   172, 205, 206, 0,   nullptr, 0},
    {28, 10511, 137, 149, 0,    0,   0,   179, 205, 206, 0,   nullptr, 0},
    {28, 42003, 137, 149, 0,    0,   0,   133, 205, 206, 0,   nullptr, 0},
    {28, 42100, 137, 149, 0,    0,   0,   234, 205, 206, 0,   nullptr, 0},
    {28, 50006, 137, 149, 0,    0,   0,   119, 205, 206, 0,   nullptr, 0},
    {28, 4711,  137, 149, 0,    0,   0,   0,   205, 206, 0,   nullptr, 0},
    {29, 40010, 210, 150, 222,  0,   0,   0,   205, 206, 210, L"?",    207},
    {30, 10219, 210, 150, 285,  0,   0,   0,   205, 206, 268, L"--",   207},
    {31, 10300, 210, 150, 355,  0,   0,   0,   205, 206, 354, L"--",   207},
    {32, 40625, 210, 149, 212,  0,   0,   0,   205, 206, 0,   L"?",    207},
    {33, 1,     137, 149, 0,    0,   0,   0,   205, 206, 0,   nullptr, 0},
    {-1, 1,     137, 149, 0,    0,   0,   0,   205, 206, 0,   nullptr, 0},
};
// clang-format on

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
    static std::wstring textOrNothing(unsigned id) { return id != 0 ? text(id) : std::wstring(); }

    void expectRow(const Expected& row, bool isFamilyPrinter) {
        SCOPED_TRACE("type " + std::to_string(row.type));
        EXPECT_EQ(frame().templateId, row.templateId);
        EXPECT_EQ(frame().icon, 107);
        EXPECT_EQ(picture(1002), row.icon);
        EXPECT_EQ(picture(133), isFamilyPrinter ? row.familyPicture : row.picture);
        EXPECT_EQ(shown(1004), textOrNothing(row.headline));
        EXPECT_EQ(shown(1012), textOrNothing(isFamilyPrinter ? row.familyDetail : row.detail));
        EXPECT_EQ(shown(132), textOrNothing(row.message));
        expectSupplies(row);
    }

    void expectSupplies(const Expected& row) {
        const bool hasBlock = row.templateId == 210;
        EXPECT_EQ(shown(1060), textOrNothing(row.suppliesDetail));
        EXPECT_EQ(shown(1059), hasBlock ? L"Toner cartridge, part number: QV-7400A" : L"");
        EXPECT_EQ(picture(136), hasBlock ? 209 : 0);
        EXPECT_EQ(picture(137), row.condition);
        const bool hasPages = row.pages != nullptr;
        EXPECT_EQ(shown(1061), hasPages ? std::wstring(L"Estimated pages remaining: ") + row.pages
                                        : std::wstring());
        EXPECT_EQ(shown(1062), hasPages ? text(142) : std::wstring());
    }
};

TEST_F(AlertFactoryTest, GivesEveryTypeItsTextsAndPictures) {
    for (const Expected& row : kExpected) {
        open(row.type, row.status);
        expectRow(row, false);
        alert.reset();
        for (const wchar_t* key :
             {L"ids1", L"idsSubTitle", L"idsSubTitle1", L"alertDetail", L"showSupplies",
              L"suppliesAPR", L"suppliesAPRComment", L"suppliesName", L"suppliesIconConditionID",
              L"idsFaxReceived", L"idsFaxReceivedTB", L"idsDialogCaption", L"suppliesIconID"}) {
            description.removeProperty(key);
        }
    }
}

TEST_F(AlertFactoryTest, ShowsPrintersOfTheFamilyTheirOwnPictures) {
    useFamilyPrinter();
    for (const Expected& row : kExpected) {
        if (row.type == 28) continue;
        open(row.type, row.status);
        SCOPED_TRACE("type " + std::to_string(row.type));
        EXPECT_EQ(picture(133), row.familyPicture);
        alert.reset();
    }
}

TEST_F(AlertFactoryTest, TellsPrintersOfTheFamilyWhichTrayToLoad) {
    useFamilyPrinter();

    open(0, 41100);

    EXPECT_EQ(shown(1012), text(150));
}

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

TEST_F(AlertFactoryTest, OffersReturnsForUsedUpAndFaultyCartridgesOnly) {
    for (const Expected& row : kExpected) {
        describe(row.type, row.status);
        description.removeProperty(L"idsReturns");
        openDescribed();
        const bool offers = row.type == 4 || row.type == 7 || row.type == 8 || row.type == 29 ||
                            row.type == 30 || row.type == 31;
        EXPECT_EQ(description.getInt(L"idsReturns", 0), offers ? 218 : 0) << row.type;
        alert.reset();
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
