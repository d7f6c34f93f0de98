#include "tests/ui/windows/alert_window_fixture.h"

// Where the parts of an alert stand, so that the eye finds them on few lines.

namespace {

constexpr int kIcon = 1002, kHeadline = 1004, kDetail = 1012, kMessage = 132;
constexpr int kPicture = 133, kLabel = 1009, kChoices = 1008;
constexpr int kSuppliesPicture = 136, kSuppliesDetail = 1060;
constexpr int kButtons[] = {1018, 134, 131, 130};
constexpr int kTextOnly = 9, kDetailOnly = 0, kHeadlineOnly = 20, kSnoozed = 4, kSupplies = 7;

using AlertWindowPlacesTest = AlertWindowTest;

int lineHeightOf(HWND text) {
    const WindowDc dc(text);
    const SelectedObject font(dc.get(),
                              reinterpret_cast<HFONT>(::SendMessageW(text, WM_GETFONT, 0, 0)));
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.get(), &metrics);
    return metrics.tmHeight;
}

TEST_F(AlertWindowPlacesTest, BeginsEveryTextBelowTheHeadline) {
    open(kDetailOnly);
    EXPECT_EQ(placeOf(kDetail).left, placeOf(kHeadline).left);
    alert.reset();

    open(kSnoozed);

    for (const int part : {kSuppliesPicture, kSuppliesDetail, kMessage, kLabel, kChoices})
        EXPECT_EQ(placeOf(part).left, placeOf(kHeadline).left) << part;
}

TEST_F(AlertWindowPlacesTest, CentresTheIconOnTheFirstLineOfTheHeadline) {
    open(kDetailOnly);

    const int line = lineHeightOf(control(kHeadline));

    // Pictures are 32 pixels high; the control of the icon is a little larger in dialog units.
    EXPECT_NEAR(placeOf(kIcon).top + 16, placeOf(kHeadline).top + line / 2, 1);
}

TEST_F(AlertWindowPlacesTest, PutsTheMessageInPlaceOfADetailThatIsMissing) {
    open(kTextOnly);

    EXPECT_EQ(placeOf(kMessage).left, placeOf(kDetail).left);
    EXPECT_EQ(placeOf(kMessage).top, placeOf(kDetail).top);
}

TEST_F(AlertWindowPlacesTest, PutsThePictureBelowAHeadlineThatSaysAll) {
    open(kHeadlineOnly);

    EXPECT_EQ(placeOf(kPicture).left, placeOf(kHeadline).left);
    EXPECT_EQ(placeOf(kPicture).top, placeOf(kDetail).top);
}

TEST_F(AlertWindowPlacesTest, PutsThePictureAtTheEndOfTheLinesWhereThereIsText) {
    for (const int type : {kTextOnly, kDetailOnly, kSupplies}) {
        open(type);

        const int text = type == kSupplies   ? kSuppliesDetail
                         : type == kTextOnly ? kMessage
                                             : kDetail;
        EXPECT_GE(placeOf(kPicture).left, placeOf(text).right) << type;
        alert.reset();
    }
}

TEST_F(AlertWindowPlacesTest, PutsTheLabelRightAboveTheListOfTimes) {
    open(kSnoozed);

    const int gap = placeOf(kChoices).top - placeOf(kLabel).bottom;

    EXPECT_GE(gap, 0);
    EXPECT_LE(gap, 4);
}

TEST_F(AlertWindowPlacesTest, HasTheLabelDirectlyBeforeTheListInEveryTemplate) {
    for (const int type : {kDetailOnly, kSnoozed}) {
        open(type);

        EXPECT_EQ(::GetWindow(control(kChoices), GW_HWNDPREV), control(kLabel)) << type;
        alert.reset();
    }
}

TEST_F(AlertWindowPlacesTest, HasItsButtonsInOneRow) {
    open(kDetailOnly);

    for (std::size_t i = 1; i < std::size(kButtons); ++i) {
        EXPECT_EQ(placeOf(kButtons[i]).top, placeOf(kButtons[0]).top);
        EXPECT_GT(placeOf(kButtons[i]).left, placeOf(kButtons[i - 1]).right);
    }
}

TEST_F(AlertWindowPlacesTest, LeavesNoHoleBetweenTheHeadlineAndTheSupplies) {
    open(kSupplies);

    EXPECT_LE(placeOf(kSuppliesPicture).top - placeOf(kHeadline).bottom, 16);
}

}  // namespace
