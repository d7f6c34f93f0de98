// The texts of an alert on its window: where each of them is, and how it looks.
#include "tests/ui/windows/alert_window_fixture.h"

#include "ui/alert_keys.h"

#include <utility>

namespace {

constexpr int kDetailOnly = 0, kManualDuplex = 3, kTonerLow = 4, kTonerEmpty = 31;
constexpr int kFaxInOrrery = 27;
constexpr int kTemplateWithLinks = 9004;
constexpr int kHeadline = 1004, kDetail = 1012, kChoices = 1008, kLabel = 1009;
constexpr COLORREF kBlue = RGB(0, 0, 255);

LOGFONTW fontOf(HWND control) {
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0)), sizeof(font),
                 &font);
    return font;
}

void expectSameFontBut(const LOGFONTW& font, LOGFONTW expected, LONG weight, bool underlined) {
    expected.lfWeight = weight;
    expected.lfUnderline = underlined ? TRUE : FALSE;
    EXPECT_EQ(font.lfHeight, expected.lfHeight);
    EXPECT_EQ(font.lfWidth, expected.lfWidth);
    EXPECT_EQ(font.lfWeight, expected.lfWeight);
    EXPECT_EQ(font.lfUnderline, expected.lfUnderline);
    EXPECT_EQ(font.lfItalic, expected.lfItalic);
    EXPECT_EQ(font.lfCharSet, expected.lfCharSet);
    EXPECT_EQ(std::wstring(font.lfFaceName), std::wstring(expected.lfFaceName));
}

class AlertTextsTest : public AlertWindowTest {
protected:
    // What the template gives every text.
    [[nodiscard]] LOGFONTW dialogFont() const { return fontOf(control(kChoices)); }
    [[nodiscard]] bool isShown(int id) const { return ::IsWindowVisible(control(id)) != FALSE; }
    [[nodiscard]] bool showsColour(int id, COLORREF colour) const {
        alert_desktop::pumpFor(20);
        const WindowDc dc(control(id));
        RECT area{};
        ::GetClientRect(control(id), &area);
        for (int y = 0; y < area.bottom; ++y) {
            for (int x = 0; x < area.right; ++x) {
                if (::GetPixel(dc.get(), x, y) == colour) return true;
            }
        }
        return false;
    }
    // With the links that the program's own templates do not have.
    void openWithLinks() {
        arbor::PropertyHolder description;
        alert_desktop::describe(description, kDetailOnly, 0, &broker);
        description.setInt(alert_key::kTemplate, kTemplateWithLinks);
        description.setInt(alert_key::kShop, 217);
        description.setInt(alert_key::kReturns, 218);
        description.setInt(alert_key::kFraud, 248);
        alert = std::make_unique<DefaultStatusDialog>(description, true);
        ASSERT_NE(alert->window(), nullptr);
        codes.clear();
        alert_desktop::pump();
    }
};

TEST_F(AlertTextsTest, HaveABolderHeadlineInTheFontOfTheDialog) {
    for (const int type : {kDetailOnly, kTonerLow}) {
        open(type);

        expectSameFontBut(fontOf(control(kHeadline)), dialogFont(), 600, false);
        alert.reset();
    }
}

TEST_F(AlertTextsTest, AreAsThickAndPlainAsTheTemplateSaysBelowTheHeadline) {
    open(kDetailOnly);

    const LOGFONTW templateFont = dialogFont();

    EXPECT_EQ(templateFont.lfWeight, FW_NORMAL);
    for (const int id : {kDetail, 132, kLabel})
        expectSameFontBut(fontOf(control(id)), templateFont, FW_NORMAL, false);
}

TEST_F(AlertTextsTest, AreAHeadingAndThreeStepsWhereTheUserPrintsOnBothSides) {
    open(kManualDuplex);

    wchar_t title[512] = {};
    ::GetWindowTextW(alert->window(), title, 512);
    EXPECT_EQ(title, alert_desktop::text(181));
    EXPECT_EQ(textOf(1014), alert_desktop::text(176));
    EXPECT_EQ(textOf(1015), alert_desktop::text(177));
    EXPECT_EQ(textOf(1016), alert_desktop::text(178));
    EXPECT_EQ(textOf(1017), alert_desktop::text(180));
    expectSameFontBut(fontOf(control(1014)), fontOf(control(1015)), 600, false);
}

TEST_F(AlertTextsTest, OfferEightTimesBehindAPrompt) {
    constexpr unsigned kLines[] = {114, 116, 117, 122, 123, 124, 126, 127, 128};
    open(kTonerLow);

    EXPECT_TRUE(isShown(kChoices));
    EXPECT_TRUE(isShown(kLabel));
    EXPECT_EQ(textOf(kLabel), alert_desktop::text(115));
    EXPECT_EQ(::SendMessageW(control(kChoices), CB_GETCURSEL, 0, 0), 0);
    ASSERT_EQ(::SendMessageW(control(kChoices), CB_GETCOUNT, 0, 0),
              static_cast<LRESULT>(std::size(kLines)));
    for (std::size_t i = 0; i < std::size(kLines); ++i) {
        wchar_t line[256] = {};
        ::SendMessageW(control(kChoices), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(line));
        EXPECT_EQ(line, alert_desktop::text(kLines[i])) << i;
    }
}

TEST_F(AlertTextsTest, OfferNoTimesWhereTheAlertCannotWait) {
    for (const int type : {kDetailOnly, kTonerEmpty}) {
        open(type);

        EXPECT_FALSE(isShown(kChoices)) << type;
        EXPECT_FALSE(isShown(kLabel)) << type;
        alert.reset();
    }
}

TEST_F(AlertTextsTest, AreUnderlinedAndBlueWhereTheyAreLinks) {
    openWithLinks();

    const std::pair<int, unsigned> links[] = {{1005, 217}, {1006, 218}, {1007, 248}};
    for (const auto& [id, text] : links) {
        EXPECT_EQ(textOf(id), alert_desktop::text(text)) << id;
        expectSameFontBut(fontOf(control(id)), dialogFont(), FW_NORMAL, true);
        EXPECT_TRUE(showsColour(id, kBlue)) << id;
    }
    EXPECT_FALSE(showsColour(kDetail, kBlue));
}

TEST_F(AlertTextsTest, TellOneActionForEachLink) {
    openWithLinks();

    for (const int id : {1005, 1006, 1007})
        alert_desktop::doubleClick(control(id));

    EXPECT_EQ(codes, (Codes{6, 101, 100}));
}

TEST_F(AlertTextsTest, AreALinkInTheDetailOfACompactAlertThatWasAskedForOne) {
    open(kFaxInOrrery);
    EXPECT_FALSE(showsColour(kDetail, kBlue));

    compactAlertWindow(alert->window(), true);

    expectSameFontBut(fontOf(control(kDetail)), dialogFont(), FW_NORMAL, true);
    EXPECT_TRUE(showsColour(kDetail, kBlue));
}

TEST_F(AlertTextsTest, StayPlainInACompactAlertThatWasAskedForNoLink) {
    open(kFaxInOrrery);

    compactAlertWindow(alert->window(), false);

    expectSameFontBut(fontOf(control(kDetail)), dialogFont(), FW_NORMAL, false);
    EXPECT_FALSE(showsColour(kDetail, kBlue));
}

// The cursor is set as the system does it when the mouse moves: it asks the window below the mouse,
// and that asks its parent first.
class AlertCursorTest : public AlertTextsTest {
protected:
    [[nodiscard]] static HCURSOR cursorOver(HWND window) {
        ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
        ::SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window),
                       MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        return ::GetCursor();
    }
    const HCURSOR arrow = ::LoadCursorW(nullptr, IDC_ARROW);
    const HCURSOR hand = ::LoadCursorW(nullptr, IDC_HAND);
};

TEST_F(AlertCursorTest, IsAnArrowOverAnAlertAndItsControls) {
    open(kDetailOnly);

    EXPECT_EQ(cursorOver(alert->window()), arrow);
    for (const int id : {130, 132, 236, kDetail})
        EXPECT_EQ(cursorOver(control(id)), arrow) << id;
}

// The frame has arrows of its own, which show that it can be moved: the system sets them after the
// alert has set its arrow.
TEST_F(AlertCursorTest, IsLeftToTheSystemOverTheFrame) {
    open(kDetailOnly);
    ::SetCursor(hand);

    EXPECT_EQ(alert->dlgProc(alert->window(), WM_SETCURSOR, 0, 0), 0);

    EXPECT_EQ(::GetCursor(), arrow);
}

TEST_F(AlertCursorTest, IsAHandOverLinksAlone) {
    openWithLinks();

    for (const int id : {1005, 1006, 1007})
        EXPECT_EQ(cursorOver(control(id)), hand) << id;
    EXPECT_EQ(cursorOver(control(kDetail)), arrow);
}

}  // namespace
