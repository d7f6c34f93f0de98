#include "ui/screen_place.h"

#include <gtest/gtest.h>

#include <ostream>

static void PrintTo(const ScreenPlace& place, std::ostream* out) {
    *out << place.left << ", " << place.top << " to " << place.right << ", " << place.bottom;
}

namespace {

// A screen to the right of the main one, with a bar of 40 pixels at its foot and one of 60 at its
// left side.
constexpr ScreenPlace kArea{1340, 0, 2560, 984};

TEST(ScreenPlaceTest, AWindowInsideStaysWhereItIs) {
    EXPECT_EQ(keptInside({1400, 100, 2153, 630}, kArea), (ScreenPlace{1400, 100, 2153, 630}));
}

TEST(ScreenPlaceTest, AWindowThatTouchesTheEdgesStaysWhereItIs) {
    EXPECT_EQ(keptInside({1340, 0, 2093, 530}, kArea), (ScreenPlace{1340, 0, 2093, 530}));
    EXPECT_EQ(keptInside({1807, 454, 2560, 984}, kArea), (ScreenPlace{1807, 454, 2560, 984}));
}

TEST(ScreenPlaceTest, AWindowBeyondOneEdgeMovesOnlyAcrossThatEdge) {
    EXPECT_EQ(keptInside({1808, 100, 2561, 630}, kArea), (ScreenPlace{1807, 100, 2560, 630}));
    EXPECT_EQ(keptInside({1400, 455, 2153, 985}, kArea), (ScreenPlace{1400, 454, 2153, 984}));
    EXPECT_EQ(keptInside({1339, 100, 2092, 630}, kArea), (ScreenPlace{1340, 100, 2093, 630}));
    EXPECT_EQ(keptInside({1400, -1, 2153, 529}, kArea), (ScreenPlace{1400, 0, 2153, 530}));
}

TEST(ScreenPlaceTest, AWindowBeyondACornerMovesBothWays) {
    EXPECT_EQ(keptInside({5000, 5000, 5753, 5530}, kArea), (ScreenPlace{1807, 454, 2560, 984}));
    EXPECT_EQ(keptInside({-300, -100, 453, 430}, kArea), (ScreenPlace{1340, 0, 2093, 530}));
}

TEST(ScreenPlaceTest, AWindowThatIsTooLargeShowsItsUpperLeftPart) {
    EXPECT_EQ(keptInside({1500, 100, 3000, 1076}, {0, 0, 1366, 728}),
              (ScreenPlace{0, 0, 1500, 976}));
    EXPECT_EQ(keptInside({1400, -50, 3000, 480}, kArea), (ScreenPlace{1340, 0, 2940, 530}));
}

}  // namespace
