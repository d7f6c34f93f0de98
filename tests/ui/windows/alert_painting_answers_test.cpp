// What an alert paints when it is asked to: each request of the system is sent with a device
// context in memory, so that states that a test machine cannot be put into are seen as well.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tests/ui/windows/window_pixels.h"

#include "ui/alert_factory.h"
#include "ui/alert_keys.h"

#include <algorithm>

using namespace window_pixels;

namespace {

constexpr int kDpi = 96;
constexpr int kBanner = 236, kOk = 130, kHelp = 131, kShop = 1018, kRecycle = 134;
constexpr int kOkFace = 166;
constexpr int kDetailOnly = 0, kTonerLow = 4;
constexpr COLORREF kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0);
constexpr COLORREF kFace = RGB(240, 240, 240);
class PaintingAnswersTest : public AlertWindowTest {
protected:
    [[nodiscard]] PictureSize sizeOf(int id) const {
        RECT client{};
        ::GetClientRect(control(id), &client);
        return {client.right, client.bottom};
    }
    // A button as it is drawn in a state.
    [[nodiscard]] Pixels button(int id, UINT state) const {
        alert_desktop::pump();  // it has got its size
        return drawn(sizeOf(id), [&](HDC dc) {
            DRAWITEMSTRUCT item{};
            item.CtlType = ODT_BUTTON;
            item.CtlID = static_cast<UINT>(id);
            item.itemState = state;
            item.hwndItem = control(id);
            item.hDC = dc;
            ::SendMessageW(alert->window(), WM_DRAWITEM, item.CtlID,
                           reinterpret_cast<LPARAM>(&item));
        });
    }
    [[nodiscard]] LRESULT answerFor(int id, HDC dc) const {
        return ::SendMessageW(alert->window(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                              reinterpret_cast<LPARAM>(control(id)));
    }
    [[nodiscard]] Pixels answered(int id, DWORD layout = 0) const {
        return drawn(sizeOf(id), [&](HDC dc) {
            ::SetLayout(dc, layout);
            EXPECT_EQ(answerFor(id, dc), reinterpret_cast<LRESULT>(::GetStockObject(NULL_BRUSH)));
        });
    }
    [[nodiscard]] Pixels expectedBanner(const std::wstring& name) const {
        return drawn(sizeOf(kBanner), [&](HDC dc) {
            put(dc, picture(163, kDpi));
            RECT area{120, 10, sizeOf(kBanner).width, sizeOf(kBanner).height};
            const Font font(::CreateFontW(35, 13, 0, 0, 600, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                          OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                          CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_ROMAN,
                                          L"Times New Roman"));
            const SelectedObject selected(dc, font.get());
            ::SetBkMode(dc, TRANSPARENT);
            ::SetTextColor(dc, kWhite);
            ::DrawTextW(dc, name.c_str(), -1, &area, DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
        });
    }
    void openFor(const wchar_t* printer) {
        alert = alert_desktop::openAlert(kDetailOnly, 0, &broker, printer);
        ASSERT_NE(alert, nullptr);
        alert_desktop::pump();
    }
};

TEST_F(PaintingAnswersTest, EndTheBannerWithDotsWhereThePrintersNameIsTooLong) {
    std::wstring name;
    while (name.size() < 100)
        name += L"Laser printer ";
    openFor(name.c_str());

    const Pixels found = answered(kBanner);

    EXPECT_EQ(differences(found, expectedBanner(name)), 0U);
    EXPECT_GT(differences(found, expectedBanner(name.substr(0, name.size() / 3))), 0U);
}

TEST_F(PaintingAnswersTest, KeepAnAmpersandInThePrintersName) {
    openFor(L"Research & Development");

    EXPECT_EQ(differences(answered(kBanner), expectedBanner(L"Research & Development")), 0U);
}

TEST_F(PaintingAnswersTest, GiveTheOkButtonTheCaptionThatTheAlertAsksFor) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, kDetailOnly, 0);
    ASSERT_NE(createAlertDialog(description), nullptr);
    description.setInt(alert_key::kOkCaption, 158);
    alert = std::make_unique<DefaultStatusDialog>(description, true);
    ASSERT_NE(alert->window(), nullptr);
    alert_desktop::pump();

    EXPECT_EQ(textOf(kOk), alert_desktop::text(158));
    const Pixels expected = drawn(sizeOf(kOk), [&](HDC dc) {
        put(dc, picture(kOkFace, kDpi));
        RECT area{0, 0, sizeOf(kOk).width, sizeOf(kOk).height};
        const SelectedObject font(
            dc, reinterpret_cast<HFONT>(::SendMessageW(control(kOk), WM_GETFONT, 0, 0)));
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, kWhite);
        ::DrawTextW(dc, alert_desktop::text(158).c_str(), -1, &area,
                    DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    });
    EXPECT_EQ(differences(button(kOk, 0), expected), 0U);
}

// Where a drawing that has the focus differs from one that does not.
std::vector<POINT> focusPixels(const Pixels& with, const Pixels& without) {
    std::vector<POINT> found;
    for (int y = 0; y < with.size.height; ++y) {
        for (int x = 0; x < with.size.width; ++x) {
            const auto at = static_cast<std::size_t>(y * with.size.width + x);
            if (with.colours[at] != without.colours[at]) found.push_back({x, y});
        }
    }
    return found;
}

TEST_F(PaintingAnswersTest, ShowADottedRectangleInsideTheButtonThatHasTheFocus) {
    constexpr int kMargin = 4;
    open(kDetailOnly);

    for (const int id : {kOk, kHelp, kShop, kRecycle}) {
        const PictureSize size = sizeOf(id);
        const std::vector<POINT> dots = focusPixels(button(id, ODS_FOCUS), button(id, 0));

        const int right = size.width - kMargin - 1;
        const int bottom = size.height - kMargin - 1;
        const int around = 2 * (right - kMargin + bottom - kMargin);
        EXPECT_NEAR(static_cast<double>(dots.size()), around / 2.0, 4) << id;
        EXPECT_TRUE(std::all_of(dots.begin(), dots.end(), [&](const POINT& dot) {
            const bool isBeside = dot.x == kMargin || dot.x == right;
            const bool isAbove = dot.y == kMargin || dot.y == bottom;
            return (isBeside && dot.y >= kMargin && dot.y <= bottom) ||
                   (isAbove && dot.x >= kMargin && dot.x <= right);
        })) << id;
    }
}

// The dots are mixed with the colours of the device context, which may be any.
TEST_F(PaintingAnswersTest, ShowTheSameDotsWhateverColoursWereUsedBefore) {
    open(kDetailOnly);
    const PictureSize size = sizeOf(kShop);
    const auto focused = [&](COLORREF text, COLORREF back) {
        return drawn(size, [&](HDC dc) {
            ::SetTextColor(dc, text);
            ::SetBkColor(dc, back);
            DRAWITEMSTRUCT item{};
            item.CtlType = ODT_BUTTON;
            item.CtlID = kShop;
            item.itemState = ODS_FOCUS;
            item.hwndItem = control(kShop);
            item.hDC = dc;
            ::SendMessageW(alert->window(), WM_DRAWITEM, kShop, reinterpret_cast<LPARAM>(&item));
        });
    };

    EXPECT_EQ(differences(focused(kWhite, kBlack), focused(kBlack, kWhite)), 0U);
    EXPECT_EQ(differences(focused(kBlack, kBlack), focused(kBlack, kWhite)), 0U);
}

TEST_F(PaintingAnswersTest, PaintPicturesFromLeftToRightWhereverTheSystemBegins) {
    open(kDetailOnly);

    for (const int id : {kBanner, 133, 1002})
        EXPECT_EQ(differences(answered(id, LAYOUT_RTL), answered(id)), 0U) << id;
}

TEST_F(PaintingAnswersTest, TellTheSystemWhatTheyHaveHandled) {
    open(kDetailOnly);
    const auto answer = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        return alert->dlgProc(alert->window(), message, wParam, lParam);
    };
    for (const int id : {kOk, 135}) {
        static_cast<void>(drawn(sizeOf(id), [&](HDC dc) {
            DRAWITEMSTRUCT item{};
            item.CtlID = static_cast<UINT>(id);
            item.hwndItem = control(id);
            item.hDC = dc;
            EXPECT_EQ(answer(WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item)), TRUE);
        }));
    }
    EXPECT_EQ(answer(WM_COMMAND, 1012, 0), TRUE);
    EXPECT_EQ(answer(WM_CHAR, L'x', 0), TRUE);
    EXPECT_EQ(answer(WM_MENUCHAR, L'x', 0), TRUE);
    EXPECT_EQ(answer(WM_SIZE, 0, 0), FALSE);
    EXPECT_EQ(answer(WM_CTLCOLORSTATIC, 0, reinterpret_cast<LPARAM>(control(1012))), FALSE);
    EXPECT_EQ(answer(WM_CLOSE, 0, 0), TRUE);
}

TEST_F(PaintingAnswersTest, ShowNoFocusWhereTheUserWorksWithTheMouse) {
    open(kDetailOnly);

    EXPECT_EQ(differences(button(kShop, ODS_FOCUS | ODS_NOFOCUSRECT), button(kShop, 0)), 0U);
}

TEST_F(PaintingAnswersTest, DrawNoButtonThatTheyDoNotKnow) {
    open(kDetailOnly);
    const PictureSize size = sizeOf(135);

    const Pixels found = button(135, 0);

    const Pixels black{size, std::vector<Rgb>(found.colours.size(), 0)};
    EXPECT_EQ(differences(found, black), 0U);
}

// What the system's own painting finds changed in the device context would change what it paints.
TEST_F(PaintingAnswersTest, LeaveTheDeviceContextAsItWas) {
    open(kTonerLow);
    const auto expectUnchangedBy = [&](const std::function<void(HDC)>& paint) {
        static_cast<void>(drawn({300, 60}, [&](HDC dc) {
            const COLORREF text = ::SetTextColor(dc, RGB(1, 2, 3));
            const HGDIOBJ font = ::GetCurrentObject(dc, OBJ_FONT);
            const int mode = ::GetBkMode(dc);
            const COLORREF back = ::GetBkColor(dc);

            ::SetLayout(dc, LAYOUT_RTL);
            paint(dc);

            EXPECT_EQ(::SetTextColor(dc, text), RGB(1, 2, 3));
            EXPECT_EQ(::GetCurrentObject(dc, OBJ_FONT), font);
            EXPECT_EQ(::GetBkMode(dc), mode);
            EXPECT_EQ(::GetBkColor(dc), back);
            EXPECT_EQ(::GetLayout(dc), static_cast<DWORD>(LAYOUT_RTL));
        }));
    };

    for (const int id : {kBanner, 133, 1002})
        expectUnchangedBy([&](HDC dc) { static_cast<void>(answerFor(id, dc)); });
    for (const UINT state : {0U, static_cast<UINT>(ODS_FOCUS)}) {
        expectUnchangedBy([&](HDC dc) {
            DRAWITEMSTRUCT item{};
            item.CtlType = ODT_BUTTON;
            item.CtlID = kOk;
            item.itemState = state;
            item.hwndItem = control(kOk);
            item.hDC = dc;
            ::SendMessageW(alert->window(), WM_DRAWITEM, kOk, reinterpret_cast<LPARAM>(&item));
        });
    }
}

TEST_F(PaintingAnswersTest, PutTextsInBlackOnTheFaceOfTheAlert) {
    open(kDetailOnly);
    for (const int id : {1004, 1012, 132}) {
        const WindowDc dc(control(id));
        ::SetTextColor(dc.get(), kWhite);
        ::SetBkColor(dc.get(), kBlack);

        auto* brush = reinterpret_cast<HBRUSH>(answerFor(id, dc.get()));

        LOGBRUSH description{};
        ASSERT_NE(::GetObjectW(brush, sizeof(description), &description), 0) << id;
        EXPECT_EQ(description.lbColor, kFace) << id;
        EXPECT_EQ(::GetTextColor(dc.get()), kBlack) << id;
        EXPECT_EQ(::GetBkColor(dc.get()), kFace) << id;
    }
}

TEST_F(PaintingAnswersTest, LeaveTextsToTheSystemUnderHighContrast) {
    open(kDetailOnly);
    setHighContrastQuery([] { return true; });
    const WindowDc dc(control(1012));

    auto* brush = reinterpret_cast<HBRUSH>(answerFor(1012, dc.get()));

    LOGBRUSH description{};
    ::GetObjectW(brush, sizeof(description), &description);
    EXPECT_EQ(description.lbColor, ::GetSysColor(COLOR_3DFACE));
    EXPECT_EQ(::GetTextColor(dc.get()), ::GetSysColor(COLOR_WINDOWTEXT));
}

}  // namespace
