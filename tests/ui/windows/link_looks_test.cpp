// What a link does to the font and to the colour of its control.
#include "tests/support/trace_lines.h"
#include "ui/windows/gdi_handles.h"
#include "ui/windows/hyperlink.h"
#include "ui/windows/window_resources.h"

#include <gtest/gtest.h>

#include <string>

namespace {

LRESULT CALLBACK parentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCDESTROY) WindowResources::release(window);
    return ::DefWindowProcW(window, message, wParam, lParam);
}

class LinkLooksTest : public testing::Test {
protected:
    void SetUp() override {
        WNDCLASSW description{};
        description.lpfnWndProc = parentProcedure;
        description.hInstance = ::GetModuleHandleW(nullptr);
        description.lpszClassName = L"LinkLooksTest";
        ::RegisterClassW(&description);
        parent = ::CreateWindowExW(0, L"LinkLooksTest", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200,
                                   nullptr, nullptr, description.hInstance, nullptr);
        link = ::CreateWindowExW(0, L"Static", L"Learn more", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20,
                                 parent, nullptr, nullptr, nullptr);
    }
    void TearDown() override { ::DestroyWindow(parent); }

    // Gives the link a font of the dialog's kind.
    void setFont(BOOL underlined) {
        LOGFONTW description{};
        ::GetObjectW(::GetStockObject(DEFAULT_GUI_FONT), sizeof(description), &description);
        description.lfUnderline = underlined ? 1 : 0;
        description.lfWeight = FW_BOLD;
        own.reset(::CreateFontIndirectW(&description));
        ::SendMessageW(link, WM_SETFONT, reinterpret_cast<WPARAM>(own.get()), FALSE);
    }
    [[nodiscard]] HFONT font() const {
        return reinterpret_cast<HFONT>(::SendMessageW(link, WM_GETFONT, 0, 0));
    }
    [[nodiscard]] LOGFONTW fontDescription() const {
        LOGFONTW description{};
        ::GetObjectW(font(), sizeof(description), &description);
        return description;
    }
    [[nodiscard]] bool mustBePaintedAgain() const { return ::GetUpdateRect(link, nullptr, FALSE); }

    HWND parent = nullptr, link = nullptr;
    Font own;
};

TEST_F(LinkLooksTest, HasAFontOfItsOwnWithoutALineWhereNoneIsAskedFor) {
    setFont(FALSE);

    setLinkFont(link, false);

    EXPECT_NE(font(), own.get());
    EXPECT_FALSE(fontDescription().lfUnderline);
    EXPECT_EQ(fontDescription().lfWeight, FW_BOLD);
}

TEST_F(LinkLooksTest, KeepsTheLineThatItHasWhereNoneIsAskedFor) {
    setFont(TRUE);

    setLinkFont(link, false);

    EXPECT_TRUE(fontDescription().lfUnderline);
}

TEST_F(LinkLooksTest, IsPaintedAgainWithItsNewFont) {
    setFont(FALSE);
    ::ShowWindow(parent, SW_SHOW);
    ::UpdateWindow(parent);
    ::ValidateRect(link, nullptr);
    ASSERT_FALSE(mustBePaintedAgain());

    setLinkFont(link, true);

    EXPECT_TRUE(mustBePaintedAgain());
}

TEST_F(LinkLooksTest, KeepsTheSystemsFontWhereItHasNoneThatCouldBeCopied) {
    setLinkFont(link, true);

    EXPECT_EQ(font(), nullptr);
}

TEST_F(LinkLooksTest, TracesThatItCouldNotBeMadeBlue) {
    const TraceLines lines;
    SetHyperLink(link);

    ::SendMessageW(parent, WM_CTLCOLORSTATIC, 0, reinterpret_cast<LPARAM>(link));

    EXPECT_EQ(lines.count("TERNA - failed SetTextColor"), 1U);
}

TEST_F(LinkLooksTest, TracesWhatWasMadeBlue) {
    const TraceLines lines;
    SetHyperLink(link);
    const WindowDc dc(link);

    ::SendMessageW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc.get()),
                   reinterpret_cast<LPARAM>(link));

    char expected[128] = {};
    std::snprintf(expected, sizeof(expected), "TERNA - SetTextColor to blue hwnd=%#x,hdc=%#x",
                  static_cast<unsigned>(reinterpret_cast<UINT_PTR>(link)),
                  static_cast<unsigned>(reinterpret_cast<UINT_PTR>(dc.get())));
    EXPECT_EQ(lines.count(expected), 1U);
    EXPECT_EQ(lines.count("TERNA - failed SetTextColor"), 0U);
}

}  // namespace
