#include "ui/windows/picture_painting.h"

#include "tests/ui/windows/alert_window_fixture.h"

namespace {

constexpr int kDpi = 96;
constexpr int kShop = 1018, kFace = 178, kMissing = 4711;
constexpr LONG kFaceWidth = 220, kFaceHeight = 32;

class ButtonSizeTest : public AlertWindowTest {
protected:
    ButtonSizeTest() { open(0); }
    void giveSizeOf(int bitmap) const {
        sizeButtonToBitmap(alert->window(), control(kShop), ::GetModuleHandleW(nullptr), bitmap,
                           kDpi);
    }
    void setSize(int width, int height) const {
        ::SetWindowPos(control(kShop), nullptr, 0, 0, width, height,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        alert_desktop::pump();
        ::ValidateRect(control(kShop), nullptr);
    }
    void expectSize(LONG width, LONG height) const {
        EXPECT_EQ(placeOf(kShop).right - placeOf(kShop).left, width);
        EXPECT_EQ(placeOf(kShop).bottom - placeOf(kShop).top, height);
    }
    [[nodiscard]] bool mustBePainted() const {
        return ::GetUpdateRect(control(kShop), nullptr, FALSE) != FALSE;
    }
};

// The system sends a request to draw while the alert's own painting would size the button, so each
// size is set and looked at without a turn of the message loop between.
TEST_F(ButtonSizeTest, IsThatOfThePictureAtThePlaceOfTheButton) {
    for (const auto& [width, height] : {std::pair{50, 32}, {220, 10}, {50, 10}}) {
        const RECT before = placeOf(kShop);
        ::SetWindowPos(control(kShop), nullptr, 0, 0, width, height,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);

        giveSizeOf(kFace);

        expectSize(kFaceWidth, kFaceHeight);
        EXPECT_EQ(placeOf(kShop).left, before.left);
        EXPECT_EQ(placeOf(kShop).top, before.top);
        EXPECT_TRUE(mustBePainted());
    }
}

// A button that was painted again each time it is painted would never come to rest.
TEST_F(ButtonSizeTest, IsSetOnce) {
    setSize(kFaceWidth, kFaceHeight);
    ASSERT_FALSE(mustBePainted());

    giveSizeOf(kFace);

    EXPECT_FALSE(mustBePainted());
}

TEST_F(ButtonSizeTest, StaysWhereThereIsNoPicture) {
    giveSizeOf(kMissing);

    expectSize(kFaceWidth, kFaceHeight);
}

TEST_F(ButtonSizeTest, IsOfNoMatterWhereThereIsNoButton) {
    sizeButtonToBitmap(alert->window(), nullptr, ::GetModuleHandleW(nullptr), kFace, kDpi);

    expectSize(kFaceWidth, kFaceHeight);
}

TEST_F(AlertWindowTest, MakesNoBitmapOfAPictureThatIsMissing) {
    open(0);

    EXPECT_EQ(makeBitmap(alert->window(), ::GetModuleHandleW(nullptr), kMissing, kDpi), nullptr);
    EXPECT_NE(makeBitmap(alert->window(), ::GetModuleHandleW(nullptr), kFace, kDpi), nullptr);
}

}  // namespace
