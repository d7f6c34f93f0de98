// Which picture is painted where, compared pixel by pixel with what the resource holds. The rows
// have plain numbers of controls and pictures, so that a wrong name in the code is noticed.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tests/ui/windows/window_pixels.h"

#include "ui/windows/scaled_pictures.h"

#include <string>

using namespace window_pixels;

namespace {

constexpr int kDpi = 96;
constexpr COLORREF kBlack = RGB(0, 0, 0), kWhite = RGB(255, 255, 255);

struct PictureRow {
    int type, control, bitmap;
};

// clang-format off
constexpr PictureRow kPictures[] = {
    { 0,  133, 198}, { 0, 1002, 149},
    { 4,  133, 205}, { 4, 1002, 150}, { 4,  136, 209}, { 4,  137, 207},
    { 7,  133, 205}, { 7, 1002, 148}, { 7,  136, 209}, { 7,  137, 208},
    {19,  133, 200}, {21,  133, 196}, {22,  133, 182},
    { 3,  230, 186}, { 3,  231, 187}, { 3,  232, 188},
};

struct ButtonRow {
    int control, normal, pressed;
    unsigned caption;
    COLORREF colour;
};

constexpr ButtonRow kButtons[] = {
    { 130, 166, 167, 156, kWhite},
    { 131, 176, 175, 247, kBlack},
    {1018, 178, 177, 248, kBlack},
    { 134, 211, 212, 218, kBlack},
};
// clang-format on

class AlertPicturesTest : public AlertWindowTest {
protected:
    // Without the focus, whose rectangle would be painted over the face.
    [[nodiscard]] Pixels shown(int id) const {
        ::SetFocus(alert->window());
        alert_desktop::pumpFor(20);
        ::RedrawWindow(control(id), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return shownBy(control(id));
    }
    [[nodiscard]] Pixels face(const ButtonRow& row, int bitmap) const {
        const Pixels back = picture(bitmap, kDpi);
        return drawn(back.size, [&](HDC dc) {
            put(dc, back);
            RECT area{0, 0, back.size.width, back.size.height};
            auto* font =
                reinterpret_cast<HFONT>(::SendMessageW(control(row.control), WM_GETFONT, 0, 0));
            const SelectedObject selected(dc, font);
            ::SetBkMode(dc, TRANSPARENT);
            ::SetTextColor(dc, row.colour);
            ::DrawTextW(dc, alert_desktop::text(row.caption).c_str(), -1, &area,
                        DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        });
    }
};

TEST_F(AlertPicturesTest, ShowsEachPictureInItsControl) {
    int openType = -1;
    for (const PictureRow& row : kPictures) {
        if (row.type != openType) open(row.type);
        openType = row.type;

        EXPECT_EQ(differences(shown(row.control), picture(row.bitmap, kDpi)), 0U)
            << "type " << row.type << ", control " << row.control;
    }
}

TEST_F(AlertPicturesTest, PaintsTheNormalFaceOfAButtonWithItsCaption) {
    open(4);

    for (const ButtonRow& row : kButtons) {
        EXPECT_EQ(differences(shown(row.control), face(row, row.normal)), 0U) << row.control;
    }
}

TEST_F(AlertPicturesTest, PaintsThePressedFaceWhileAButtonIsHeldDown) {
    open(4);

    for (const ButtonRow& row : kButtons) {
        ::SendMessageW(control(row.control), BM_SETSTATE, TRUE, 0);

        EXPECT_EQ(differences(shown(row.control), face(row, row.pressed)), 0U) << row.control;
    }
}

TEST_F(AlertPicturesTest, WritesThePrintersNameOnTheBanner) {
    open(0);
    const Pixels back = picture(163, kDpi);

    const Pixels expected = drawn(back.size, [&](HDC dc) {
        put(dc, back);
        RECT area{120, 10, back.size.width, back.size.height};
        const Font font(::CreateFontW(35, 13, 0, 0, 600, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                      OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                                      DEFAULT_PITCH | FF_ROMAN, L"Times New Roman"));
        const SelectedObject selected(dc, font.get());
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, kWhite);
        ::DrawTextW(dc, alert_desktop::kPrinterName, -1, &area,
                    DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    });

    EXPECT_EQ(differences(shown(236), expected), 0U);
    EXPECT_GT(differences(shown(236), back), 1000U);  // the name is there
}

TEST_F(AlertPicturesTest, DoesNotMirrorItsPicturesOnADesktopFromRightToLeft) {
    const alert_desktop::MirroredDesktop desktop;
    open(4);

    for (const PictureRow& row : kPictures) {
        if (row.type != 4) continue;
        EXPECT_EQ(differences(shown(row.control), picture(row.bitmap, kDpi)), 0U) << row.control;
    }
}

TEST_F(AlertPicturesTest, PaintsNothingWhereAnAlertHasNoPicture) {
    open(26);

    const Pixels found = shown(133);

    const Pixels bare{found.size, std::vector<Rgb>(found.colours.size(), kFaceColour)};
    EXPECT_EQ(differences(found, bare), 0U);
}

// The second module has no such picture: what comes back was kept.
TEST(ScaledPicturesTest, AverageAPictureOnceForAScaleAndAFaceColour) {
    ScaledPictures pictures;
    const HMODULE withPictures = ::GetModuleHandleW(nullptr);
    const HMODULE without = ::GetModuleHandleW(L"kernel32.dll");
    const std::vector<Rgb> first = pictures.of(withPictures, 149, kDpi).pixels();

    EXPECT_EQ(pictures.of(without, 149, kDpi).pixels(), first);
    EXPECT_EQ(pictures.of(without, 149, 2 * kDpi).size().width, 0);
    EXPECT_EQ(pictures.of(withPictures, 149, kDpi).pixels(), first);
}

}  // namespace
