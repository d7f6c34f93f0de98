#include "ui/default_status_dialog.h"
#include "ui/localized_text.h"
#include "ui/text_format.h"

#include "tests/support/slot_of.h"
#include "tests/ui/default_status_dialog_fixture.h"

#include <memory>
#include <utility>
#include <vector>

namespace {

TEST_F(DefaultStatusDialogTest, ShowsTheSuppliesForExactlyOneOnly) {
    open(4, 10209);
    alert.reset();
    description.setInt(L"showSupplies", 2);
    alert = std::make_unique<DefaultStatusDialog>(description, true);

    EXPECT_EQ(control(1059).text, L"");
}

TEST_F(DefaultStatusDialogTest, HidesTheWholeWindowUnderTheRecycleRule) {
    describe(10, 50012);
    description.setInt(L"disalbeRecycleBtn", 1);
    openDescribed();
    ASSERT_TRUE(frame().visible);

    alert->onInitDialog(window(), 0, 0);

    EXPECT_FALSE(frame().visible);
    EXPECT_TRUE(control(134).visible);
}

TEST_F(DefaultStatusDialogTest, FollowsTheRecycleRuleForExactlyOneAndWithAReturnButtonOnly) {
    for (const auto& [type, flag] : {std::pair{10, 2}, std::pair{3, 1}}) {
        describe(type, 50012);
        description.setInt(L"disalbeRecycleBtn", flag);
        openDescribed();

        alert->onInitDialog(window(), 0, 0);

        EXPECT_TRUE(frame().visible);
        alert.reset();
    }
}

TEST_F(DefaultStatusDialogTest, NamesButtonsAndPicturesForScreenReaders) {
    open(7, 10403);

    EXPECT_EQ(control(130).text, text(156));
    EXPECT_EQ(control(131).text, text(247));
    EXPECT_EQ(control(1018).text, text(248));
    EXPECT_EQ(control(134).text, text(218));
    EXPECT_EQ(control(1002).name, text(366));
    EXPECT_EQ(control(133).name, text(369));
    EXPECT_EQ(control(136).name, text(370));
    EXPECT_EQ(control(137).name, text(372));
    EXPECT_EQ(control(236).name, kPrinter);
}

TEST_F(DefaultStatusDialogTest, NamesTheStepsOfTwoSidedPrintingForScreenReaders) {
    open(3, 40120);

    for (int step = 0; step < 3; ++step) {
        const std::wstring number = std::to_wstring(step + 1);
        EXPECT_EQ(control(1021 + step).name, formatText(text(373), {number}, kTextUnits));
        EXPECT_EQ(control(230 + step).name, formatText(text(374), {number}, kTextUnits));
    }
}

TEST_F(DefaultStatusDialogTest, NamesItsBannerLikeAPictureWhereThePrinterHasNoName) {
    describe(7, 10403);
    description.setWString(L"idsPrinter", L"");
    openDescribed();

    EXPECT_EQ(control(236).name, text(369));
}

TEST_F(DefaultStatusDialogTest, TellsScreenReadersWhatALinkDoes) {
    open(26, 100000);

    EXPECT_EQ(frame().linkAction, text(375));
}

TEST_F(DefaultStatusDialogTest, HidesTextsThatAreEmpty) {
    open(5, 40600);
    for (const int empty : {132, 1060, 1061, 1062})
        EXPECT_FALSE(control(empty).visible) << empty;
    EXPECT_TRUE(control(1004).visible);
    EXPECT_TRUE(control(1059).visible);
    alert.reset();

    open(3, 40120);
    alert.reset();
    for (const wchar_t* const key :
         {L"idsManual1", L"idsManual2", L"idsManual3", L"idsManualTitle"})
        description.setInt(key, 0);
    alert = std::make_unique<DefaultStatusDialog>(description, true);

    for (const int empty : {1014, 1015, 1016, 1017})
        EXPECT_FALSE(control(empty).visible) << empty;
}

TEST_F(DefaultStatusDialogTest, HidesPicturesThatItDoesNotHave) {
    open(26, 100000);
    EXPECT_FALSE(control(133).visible);
    alert.reset();

    open(25, 1);

    EXPECT_FALSE(control(1002).visible);
}

TEST_F(DefaultStatusDialogTest, HidesPicturesThatItsDescriptionDoesNotName) {
    for (const auto& [templateId, pictures] :
         {std::pair{137, std::vector{133, 1002}}, std::pair{139, std::vector{230, 231, 232}},
          std::pair{210, std::vector{133, 136, 137, 1002}}}) {
        arbor::PropertyHolder bare;
        bare.setInt(L"dialogID", templateId);

        const DefaultStatusDialog dialog(bare, true);

        for (const int picture : pictures) {
            EXPECT_FALSE(headless::control(dialog.window(), picture).visible) << picture;
        }
    }
}

TEST_F(DefaultStatusDialogTest, HidesTheMessageOfANewCartridgeOutsideChineseSystems) {
    describe(25, 1);
    description.setInt(L"ids1", 360);

    openDescribed();

    EXPECT_EQ(control(132).text, text(360));
    EXPECT_FALSE(control(132).visible);
    EXPECT_FALSE(control(132).isLink);
}

TEST_F(DefaultStatusDialogTest, HidesAMessageThatItDoesNotHave) {
    open(0, 41100);
    EXPECT_FALSE(control(132).visible);
    alert.reset();

    open(9, 50021);

    EXPECT_TRUE(control(132).visible);
}

TEST_F(DefaultStatusDialogTest, PrintsTheTitleOfManualDuplexLikeAHeadline) {
    open(3, 40120);

    EXPECT_TRUE(control(1014).isHeadline);
    EXPECT_FALSE(control(1015).isHeadline);
}

TEST_F(DefaultStatusDialogTest, HidesDuplexStepsWithoutAPicture) {
    open(3, 40120);
    alert.reset();
    description.setInt(L"idbDuplex2", 0);

    alert = std::make_unique<DefaultStatusDialog>(description, true);

    EXPECT_TRUE(control(230).visible);
    EXPECT_FALSE(control(231).visible);
    EXPECT_TRUE(control(232).visible);
}

TEST_F(DefaultStatusDialogTest, PutsTheMessageInThePlaceOfADetailThatIsEmpty) {
    open(9, 50021);
    EXPECT_EQ(control(132).placedAt, 1012);
    EXPECT_FALSE(control(1012).visible);
    alert.reset();

    open(10, 50012);

    EXPECT_EQ(control(132).placedAt, 0);
    EXPECT_TRUE(control(1012).visible);
}

TEST_F(DefaultStatusDialogTest, PutsThePictureInThePlaceOfTextsThatAreEmpty) {
    open(20, 40021);
    EXPECT_EQ(control(133).placedAt, 1012);
    EXPECT_EQ(control(132).placedAt, 0);
    alert.reset();

    open(9, 50021);

    EXPECT_EQ(control(133).placedAt, 0);
}

TEST_F(DefaultStatusDialogTest, LoadsIconsAndPicturesFromTheModuleOfThePictures) {
    open(4, 10209);

    EXPECT_EQ(frame().iconModule, this);
    EXPECT_EQ(control(136).pictureModule, this);
    EXPECT_EQ(control(137).pictureModule, this);
}

TEST_F(DefaultStatusDialogTest, LetsEnterStandForOk) {
    open(0, 41100);

    EXPECT_EQ(frame().defaultButton, 130);
}

TEST_F(DefaultStatusDialogTest, OperationsStandInTheirSlots) {
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::dlgProc), 0U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onInitDialog), 1U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onChar), 2U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onCommand), 3U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onDrawItem), 4U);
    EXPECT_EQ(test::slotOf(&DefaultStatusDialog::onCtlColorStatic), 5U);
}

}  // namespace
