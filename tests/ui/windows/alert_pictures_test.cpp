// Which picture is painted where, compared pixel by pixel with what the resource holds, at the
// scale of the screen: this program runs at several. The rows have plain numbers of controls and
// pictures, so that a wrong name in the code is noticed.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tests/ui/windows/high_contrast.h"
#include "tests/ui/windows/window_pixels.h"

#include "ui/windows/scaled_pictures.h"
#include "ui/windows/window_scale.h"

#include <algorithm>
#include <string>

using namespace window_pixels;

namespace {

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

int atScreen(int pixels, int dpi) {
    return ::MulDiv(pixels, dpi, 96);
}

class AlertPicturesTest : public AlertWindowTest {
protected:
    static int screenDpi() {
        const WindowDc screen(nullptr);
        return ::GetDeviceCaps(screen.get(), LOGPIXELSY);
    }

    // Dots per inch of the screen, and of the expected pictures.
    int dpi = screenDpi();
    Rgb behind = kFaceColour;
    UINT captionFormat = DT_CENTER | DT_VCENTER | DT_SINGLELINE;

    [[nodiscard]] Pixels expected(int bitmap) const { return picture(bitmap, dpi, behind); }
    void expectPicturesOf(int type) const {
        for (const PictureRow& row : kPictures) {
            if (row.type != type) continue;
            EXPECT_EQ(differences(shown(row.control), expected(row.bitmap)), 0U)
                << "type " << row.type << ", control " << row.control;
        }
    }
    // Without the focus, whose rectangle would be painted over the face.
    [[nodiscard]] Pixels shown(int id) const {
        ::SetFocus(nullptr);
        alert_desktop::pumpFor(20);
        ::RedrawWindow(control(id), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return shownBy(control(id));
    }
    [[nodiscard]] Pixels face(const ButtonRow& row, int bitmap) const {
        const Pixels back = expected(bitmap);
        return drawn(back.size, [&](HDC dc) {
            put(dc, back);
            drawCaption(dc, row, row.colour, back.size);
        });
    }
    void drawCaption(HDC dc, const ButtonRow& row, COLORREF colour, PictureSize size) const {
        RECT area{0, 0, size.width, size.height};
        auto* font =
            reinterpret_cast<HFONT>(::SendMessageW(control(row.control), WM_GETFONT, 0, 0));
        const SelectedObject selected(dc, font);
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, colour);
        ::DrawTextW(dc, alert_desktop::text(row.caption).c_str(), -1, &area, captionFormat);
    }
};

TEST_F(AlertPicturesTest, ShowsEachPictureInItsControl) {
    for (const int type : {0, 3, 4, 7, 19, 21, 22}) {
        open(type);

        expectPicturesOf(type);
    }
}

TEST_F(AlertPicturesTest, ShowsThePicturesOfAnotherScaleWhenThatOfTheWindowChanges) {
    for (const int type : {3, 4}) {
        open(type);
        for (const int changed : {120, 96, 144}) {
            dpi = changed;
            ::SendMessageW(alert->window(), kScaleChanged, MAKEWPARAM(dpi, dpi), 0);

            expectPicturesOf(type);
        }
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
    const Pixels back = expected(163);

    const Pixels named = drawn(back.size, [&](HDC dc) {
        put(dc, back);
        RECT area{atScreen(120, dpi), atScreen(10, dpi), back.size.width, back.size.height};
        const Font font(::CreateFontW(atScreen(35, dpi), atScreen(13, dpi), 0, 0, 600, FALSE, FALSE,
                                      FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                      CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                                      DEFAULT_PITCH | FF_ROMAN, L"Times New Roman"));
        const SelectedObject selected(dc, font.get());
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, kWhite);
        ::DrawTextW(dc, alert_desktop::kPrinterName, -1, &area,
                    DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    });

    EXPECT_EQ(differences(shown(236), named), 0U);
    EXPECT_GT(differences(shown(236), back), 1000U);  // the name is there
}

TEST_F(AlertPicturesTest, DoesNotMirrorItsPicturesOnADesktopFromRightToLeft) {
    const alert_desktop::MirroredDesktop desktop;
    open(4);

    expectPicturesOf(4);
}

TEST_F(AlertPicturesTest, DoesNotMirrorTheFacesOfItsButtonsOnADesktopFromRightToLeft) {
    const alert_desktop::MirroredDesktop desktop;
    open(4);
    captionFormat |= DT_RTLREADING;

    for (const ButtonRow& row : kButtons) {
        EXPECT_EQ(differences(shown(row.control), face(row, row.normal)), 0U) << row.control;
    }
}

TEST_F(AlertPicturesTest, PaintsNothingWhereAnAlertHasNoPicture) {
    open(26);

    const Pixels found = shown(133);

    const Pixels bare{found.size, std::vector<Rgb>(found.colours.size(), kFaceColour)};
    EXPECT_EQ(differences(found, bare), 0U);
}

TEST_F(AlertPicturesTest, PutsTheFaceOfAHighContrastSchemeBehindItsPictures) {
    const HighContrast scheme;
    behind = asRgb(HighContrast::kBack);

    for (const int type : {0, 3, 4}) {
        open(type);

        expectPicturesOf(type);
    }
}

// What a button of the system looks like, with our caption and the mark of the focus.
TEST_F(AlertPicturesTest, PaintsButtonsInTheColoursOfAHighContrastScheme) {
    const HighContrast scheme;
    open(0);
    for (const bool isPressed : {false, true}) {
        for (const ButtonRow& row : kButtons) {
            ::SendMessageW(control(row.control), BM_SETSTATE, isPressed ? TRUE : FALSE, 0);
            const Pixels found = shown(row.control);

            const Pixels system = drawn(found.size, [&](HDC dc) {
                RECT area{0, 0, found.size.width, found.size.height};
                ::DrawFrameControl(dc, &area, DFC_BUTTON,
                                   DFCS_BUTTONPUSH | (isPressed ? DFCS_PUSHED : 0U));
                drawCaption(dc, row, HighContrast::kText, found.size);
            });
            EXPECT_EQ(differences(found, system), 0U) << row.control;
        }
    }
}

TEST_F(AlertPicturesTest, DrawsTheFocusOfAButtonInTheTextColourOfAHighContrastScheme) {
    const HighContrast scheme;
    open(0);
    const Pixels without = shown(131);

    ::SetFocus(control(131));
    alert_desktop::pumpFor(20);
    const Pixels with = shownBy(control(131));

    const Pixels framed = drawn(without.size, [&](HDC dc) {
        put(dc, without);
        const int margin = atScreen(4, dpi);
        RECT area{margin, margin, without.size.width - margin, without.size.height - margin};
        const Brush brush(::CreateSolidBrush(HighContrast::kText));
        ::FrameRect(dc, &area, brush.get());
    });
    EXPECT_EQ(differences(with, framed), 0U);
    EXPECT_NE(differences(with, without), 0U);
}

TEST_F(AlertPicturesTest, DrawsTheFocusOfALinkInDotsThatAHighContrastSchemeLeavesInSight) {
    constexpr int kFaxWithLink = 27, kLink = 1012;
    constexpr Rgb kOpposite = 0xFFFFFF;
    const HighContrast scheme;
    open(kFaxWithLink);
    compactAlertWindow(alert->window(), true);
    const Pixels without = shown(kLink);

    ::SetFocus(control(kLink));
    alert_desktop::pumpFor(20);
    const Pixels with = shownBy(control(kLink));

    int dots = 0;
    for (std::size_t i = 0; i < with.colours.size(); ++i) {
        if (with.colours[i] == without.colours[i]) continue;
        ++dots;
        EXPECT_EQ(with.colours[i], without.colours[i] ^ kOpposite);
    }
    EXPECT_GT(dots, 100);
}

TEST_F(AlertPicturesTest, PaintsTheBannerInTheColoursOfAHighContrastScheme) {
    const HighContrast scheme;
    open(0);

    const Pixels found = shown(236);

    EXPECT_EQ(found.colours.front(), asRgb(HighContrast::kBack));
    EXPECT_EQ(found.colours.back(), asRgb(HighContrast::kBack));
    EXPECT_NE(std::ranges::find(found.colours, asRgb(HighContrast::kText)), found.colours.end());
}

struct ColourMessage {
    UINT message;
    WPARAM wParam;
};

class PaintedAnewTest : public AlertPicturesTest {
protected:
    // Whether the dialog and these controls of it are to be painted.
    [[nodiscard]] std::vector<bool> toBePainted() const {
        std::vector<bool> result{::GetUpdateRect(alert->window(), nullptr, FALSE) != FALSE};
        for (const int id : kWatched)
            result.push_back(::GetUpdateRect(control(id), nullptr, FALSE) != FALSE);
        return result;
    }
    // What toBePainted() says after a message to a dialog that has been painted.
    [[nodiscard]] std::vector<bool> toBePaintedAfter(const ColourMessage& sent) {
        open(4);
        alert_desktop::pumpFor(50);
        for (const int id : kWatched)
            ::ValidateRect(control(id), nullptr);
        ::ValidateRect(alert->window(), nullptr);
        ::SendMessageW(alert->window(), sent.message, sent.wParam, 0);
        return toBePainted();
    }

    static constexpr int kWatched[] = {130, 133, 1004, 1008};
};

class ColourMessageTest : public PaintedAnewTest,
                          public testing::WithParamInterface<ColourMessage> {};

TEST_P(ColourMessageTest, HasEverythingPaintedAnewAfterAChangeOfColours) {
    EXPECT_EQ(toBePaintedAfter(GetParam()), std::vector<bool>(5, true));
}

TEST_F(PaintedAnewTest, LeavesEverythingAsItIsAfterAChangeOfAnotherSetting) {
    EXPECT_EQ(toBePaintedAfter({WM_SETTINGCHANGE, SPI_SETWORKAREA}), std::vector<bool>(5, false));
}

TEST_P(ColourMessageTest, ShowsItsPicturesOnTheNewFaceAfterAChangeOfColours) {
    open(4);
    {
        const HighContrast scheme;
        behind = asRgb(HighContrast::kBack);

        ::SendMessageW(alert->window(), GetParam().message, GetParam().wParam, 0);

        expectPicturesOf(4);
    }
    behind = kFaceColour;

    ::SendMessageW(alert->window(), GetParam().message, GetParam().wParam, 0);

    expectPicturesOf(4);
}

INSTANTIATE_TEST_SUITE_P(OfTheSystem, ColourMessageTest,
                         testing::Values(ColourMessage{WM_SYSCOLORCHANGE, 0},
                                         ColourMessage{WM_THEMECHANGED, 0},
                                         ColourMessage{WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST}));

WNDPROC ofTheControl = nullptr;
int colourChangesHeard = 0;

LRESULT CALLBACK listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SYSCOLORCHANGE) ++colourChangesHeard;
    return ::CallWindowProcW(ofTheControl, window, message, wParam, lParam);
}

TEST_F(AlertPicturesTest, TellsItsControlsOfNewColours) {
    open(4);
    colourChangesHeard = 0;
    ofTheControl = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(control(1008), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&listen)));

    ::SendMessageW(alert->window(), WM_THEMECHANGED, 0, 0);
    EXPECT_EQ(colourChangesHeard, 0);
    ::SendMessageW(alert->window(), WM_SYSCOLORCHANGE, 0, 0);

    EXPECT_EQ(colourChangesHeard, 1);
}

// The second module has no such picture: what comes back was kept.
TEST(ScaledPicturesTest, AverageAPictureOnceForAScaleAndAFaceColour) {
    constexpr int kDpi = 96;
    ScaledPictures pictures;
    const HMODULE withPictures = ::GetModuleHandleW(nullptr);
    const HMODULE without = ::GetModuleHandleW(L"kernel32.dll");
    const std::vector<Rgb> first = pictures.of(withPictures, 149, kDpi).pixels();

    EXPECT_EQ(pictures.of(without, 149, kDpi).pixels(), first);
    EXPECT_TRUE(pictures.of(without, 149, 2 * kDpi).pixels().empty());
    EXPECT_EQ(pictures.of(withPictures, 149, kDpi).pixels(), first);
    const HighContrast scheme;
    EXPECT_TRUE(pictures.of(without, 149, kDpi).pixels().empty());
}

}  // namespace
