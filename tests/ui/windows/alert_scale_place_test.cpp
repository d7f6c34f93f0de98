#include "tests/ui/windows/scaled_layout.h"

namespace {

TEST_F(AlertScaleTest, TheSystemsSuggestionPlacesTheAlertAndTheDesignSizesIt) {
    open(0);
    const RECT suggested{120, 90, 400, 300};

    changeScale(window(), 120, &suggested);

    EXPECT_EQ(rectOf(window()).left, 120);
    EXPECT_EQ(rectOf(window()).top, 90);
    EXPECT_EQ(clientOf(window()).cx, at(747, 120));
}

TEST_F(AlertScaleTest, WithoutASuggestionTheAlertStaysWhereItIs) {
    open(0);
    const RECT before = rectOf(window());

    changeScale(window(), 120);

    EXPECT_EQ(rectOf(window()).left, before.left);
    EXPECT_EQ(rectOf(window()).top, before.top);
}

TEST_F(AlertScaleTest, AnAlertThatGrowsBeyondItsScreenMovesIn) {
    open(0);
    const SIZE screen = screenSize();
    changeScale(window(), 96);
    const RECT small = rectOf(window());
    const RECT corner{screen.cx - (small.right - small.left),
                      screen.cy - (small.bottom - small.top), screen.cx, screen.cy};

    changeScale(window(), 120, &corner);

    EXPECT_EQ(rectOf(window()).right, screen.cx);
    EXPECT_EQ(rectOf(window()).bottom, screen.cy);
    EXPECT_EQ(clientOf(window()).cx, at(747, 120));
}

const RECT kBeyondTheEdge{-50, 40, 0, 0};
RECT placeWhileMoved{};

void CALLBACK changeScaleWhileMoved(HWND dialog, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(dialog, timer);
    changeScale(dialog, 144, &kBeyondTheEdge);
    placeWhileMoved = rectOf(dialog);
    ::PostMessageW(dialog, WM_LBUTTONUP, 0, 0);
}

TEST_F(AlertScaleTest, AnAlertThatTheUserMovesIsNotMovedIn) {
    open(0);
    ::SetTimer(window(), 1, 50, changeScaleWhileMoved);

    ::SendMessageW(window(), WM_SYSCOMMAND, SC_MOVE | HTCAPTION, 0);

    EXPECT_EQ(placeWhileMoved.left, kBeyondTheEdge.left);
    EXPECT_EQ(placeWhileMoved.top, kBeyondTheEdge.top);
}

TEST_F(AlertScaleTest, TheSystemLearnsTheSizeAtAnotherScaleBeforehand) {
    open(27);
    compactAlertWindow(window(), false);
    const RECT place = rectOf(window());
    SIZE size{};

    EXPECT_EQ(::SendMessageW(window(), kSizeAtScale, static_cast<WPARAM>(dpi),
                             reinterpret_cast<LPARAM>(&size)),
              TRUE);
    EXPECT_EQ(size.cx, place.right - place.left);
    EXPECT_EQ(size.cy, place.bottom - place.top);
    ::SendMessageW(window(), kSizeAtScale, 3 * 96, reinterpret_cast<LPARAM>(&size));
    EXPECT_NEAR(size.cx, 3 * 747, 3 * 10);
    EXPECT_NEAR(size.cy, 3 * (205 + 22), 3 * 10);
}

TEST_F(AlertScaleTest, AnAlertOpensAtItsPlaceInTheCascade) {
    openAt(0, 140, 160);

    EXPECT_EQ(rectOf(window()).left, at(140, dpi));
    EXPECT_EQ(rectOf(window()).top, at(160, dpi));
}

TEST_F(AlertScaleTest, AnAlertBeyondTheScreenMovesInByTheLeast) {
    openAt(0, 160, 740);

    EXPECT_EQ(rectOf(window()).left, at(160, dpi));
    EXPECT_EQ(rectOf(window()).bottom, screenSize().cy);
}

TEST_F(AlertScaleTest, ACompactAlertStandsInTheCascadeWhereItsLowerFormHasRoom) {
    openAt(27, 160, 740);

    compactAlertWindow(window(), true);

    EXPECT_EQ(rectOf(window()).left, at(160, dpi));
    EXPECT_EQ(rectOf(window()).top, at(740, dpi));
}

TEST_F(AlertScaleTest, ACompactAlertThatWasMovedStaysThere) {
    openAt(27, 160, 740);
    ::SetWindowPos(window(), nullptr, 30, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);

    compactAlertWindow(window(), true);

    EXPECT_EQ(rectOf(window()).left, 30);
    EXPECT_EQ(rectOf(window()).top, 50);
}

}  // namespace
