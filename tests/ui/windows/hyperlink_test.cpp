#include "ui/windows/hyperlink.h"

#include "tests/support/trace_lines.h"
#include "ui/windows/display_settings.h"
#include "ui/windows/gdi_handles.h"
#include "ui/windows/window_resources.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr wchar_t kOriginal[] = L"_Original_Proc_";
constexpr wchar_t kBlue[] = L"_Blue_Text_";

int commands = 0;
bool parentRestored = false;
int linksRestored = 0;

LRESULT CALLBACK parentClass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) ++commands;
    if (message == WM_NCDESTROY) {
        parentRestored =
            ::GetPropW(window, kOriginal) == nullptr &&
            ::GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(parentClass);
        WindowResources::release(window);
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

// The window procedure below the link's. It counts the links that have removed their procedure and
// their properties when their window is destroyed.
WNDPROC staticClass = nullptr;
LRESULT CALLBACK watchedStatic(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCDESTROY && ::GetPropW(window, kOriginal) == nullptr &&
        ::GetPropW(window, kBlue) == nullptr &&
        ::GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(watchedStatic)) {
        ++linksRestored;
    }
    return ::CallWindowProcW(staticClass, window, message, wParam, lParam);
}

class HyperlinkTest : public testing::Test {
protected:
    void SetUp() override {
        commands = 0;
        parentRestored = false;
        linksRestored = 0;
        WNDCLASSW description{};
        description.lpfnWndProc = parentClass;
        description.hInstance = ::GetModuleHandleW(nullptr);
        description.lpszClassName = L"HyperlinkTest";
        ::RegisterClassW(&description);
        parent = ::CreateWindowExW(0, L"HyperlinkTest", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200,
                                   nullptr, nullptr, description.hInstance, nullptr);
        first = addStatic(10);
        second = addStatic(11);
        plain = addStatic(12);
    }
    void TearDown() override {
        if (::IsWindow(parent)) ::DestroyWindow(parent);
    }

    HWND addStatic(int id) {
        const HWND control = ::CreateWindowExW(
            0, L"Static", L"Learn more", WS_CHILD | WS_VISIBLE, 0, 20 * (id - 10), 100, 20, parent,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        staticClass = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(watchedStatic)));
        return control;
    }
    [[nodiscard]] COLORREF textColourOf(HWND control) const {
        const WindowDc dc(control);
        ::SendMessageW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc.get()),
                       reinterpret_cast<LPARAM>(control));
        return ::GetTextColor(dc.get());
    }

    HWND parent = nullptr, first = nullptr, second = nullptr, plain = nullptr;
};

TEST_F(HyperlinkTest, IsBlueWhereOtherTextsAreNot) {
    const TraceLines lines;

    SetHyperLink(first);
    SetHyperLink(second);

    EXPECT_EQ(textColourOf(first), RGB(0, 0, 255));
    EXPECT_EQ(textColourOf(second), RGB(0, 0, 255));
    EXPECT_NE(textColourOf(plain), RGB(0, 0, 255));
    EXPECT_EQ(lines.all().front().find("TERNA - SetHyperLink hwndCtl=0x"), 0U);
}

TEST_F(HyperlinkTest, HasTheSystemsLinkColourUnderHighContrast) {
    ASSERT_NE(::GetSysColor(COLOR_HOTLIGHT), RGB(0, 0, 255));
    setHighContrastQuery([] { return true; });
    SetHyperLink(first);

    const COLORREF colour = textColourOf(first);

    setHighContrastQuery(nullptr);
    EXPECT_EQ(colour, ::GetSysColor(COLOR_HOTLIGHT));
}

TEST_F(HyperlinkTest, TakesOverTheParentOnceHoweverManyLinksItHas) {
    SetHyperLink(first);
    const LONG_PTR procedure = ::GetWindowLongPtrW(parent, GWLP_WNDPROC);
    const HANDLE original = ::GetPropW(parent, kOriginal);

    SetHyperLink(second);

    EXPECT_EQ(::GetWindowLongPtrW(parent, GWLP_WNDPROC), procedure);
    EXPECT_EQ(::GetPropW(parent, kOriginal), original);
    EXPECT_EQ(original, reinterpret_cast<HANDLE>(parentClass));
}

TEST_F(HyperlinkTest, ShowsAHandAndSendsACommandWhenItIsClicked) {
    SetHyperLink(first);

    EXPECT_EQ(::SendMessageW(first, WM_SETCURSOR, reinterpret_cast<WPARAM>(first), HTCLIENT), TRUE);
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_HAND));
    ::SendMessageW(first, WM_LBUTTONDOWN, 0, 0);
    ::SendMessageW(first, WM_LBUTTONUP, 0, 0);

    EXPECT_EQ(commands, 1);
}

TEST_F(HyperlinkTest, AnswersSpaceAndEnterAsItAnswersAClick) {
    constexpr LPARAM kFirstPress = 1, kHeldDown = 1 | (1 << 30);
    SetHyperLink(first);

    for (const WPARAM key : {WPARAM{VK_SPACE}, WPARAM{VK_RETURN}, WPARAM{'X'}}) {
        ::SendMessageW(first, WM_KEYDOWN, key, kFirstPress);
        ::SendMessageW(first, WM_KEYDOWN, key, kHeldDown);
    }

    EXPECT_EQ(commands, 2);
}

TEST_F(HyperlinkTest, IsATabStopThatKeepsEnterFromTheDefaultButton) {
    MSG enter{};
    enter.message = WM_KEYDOWN;
    enter.wParam = VK_RETURN;
    MSG tab = enter;
    tab.wParam = VK_TAB;

    SetHyperLink(first);

    EXPECT_NE(::GetWindowLongPtrW(first, GWL_STYLE) & WS_TABSTOP, 0);
    EXPECT_EQ(::SendMessageW(first, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)),
              DLGC_WANTMESSAGE);
    EXPECT_EQ(::SendMessageW(first, WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&tab)), 0);
    EXPECT_EQ(::SendMessageW(first, WM_GETDLGCODE, 0, 0), 0);
}

TEST_F(HyperlinkTest, ShowsAFocusRectangleWhileItHasTheFocus) {
    SetHyperLink(first);
    ::ShowWindow(parent, SW_SHOW);
    ::SetForegroundWindow(parent);
    const auto topLine = [this] {
        ::UpdateWindow(first);
        const WindowDc dc(first);
        std::vector<COLORREF> pixels;
        for (int x = 0; x < 40; ++x)
            pixels.push_back(::GetPixel(dc.get(), x, 0));
        return pixels;
    };
    ::SetFocus(parent);
    const std::vector<COLORREF> without = topLine();

    ::SetFocus(first);
    const std::vector<COLORREF> with = topLine();
    ::SetFocus(parent);

    EXPECT_NE(with, without);
    EXPECT_EQ(topLine(), without);
}

TEST_F(HyperlinkTest, TakesTheFocusWhenItIsClicked) {
    SetHyperLink(first);
    ::ShowWindow(parent, SW_SHOW);
    ::SetFocus(parent);

    ::SendMessageW(first, WM_LBUTTONDOWN, 0, 0);

    EXPECT_EQ(::GetFocus(), first);
}

TEST_F(HyperlinkTest, StaysAsItIsWhenItIsMadeALinkAgain) {
    SetHyperLink(first);

    SetHyperLink(first);

    EXPECT_EQ(::GetPropW(first, kOriginal), reinterpret_cast<HANDLE>(watchedStatic));
}

TEST_F(HyperlinkTest, MayBeAWindowOfItsOwn) {
    const HWND alone = ::CreateWindowExW(0, L"Static", L"Learn more", WS_POPUP, 0, 0, 100, 20,
                                         nullptr, nullptr, nullptr, nullptr);

    SetHyperLink(alone);

    EXPECT_TRUE(isHyperLink(alone));
    ::DestroyWindow(alone);
}

TEST_F(HyperlinkTest, SaysThatItIsBlueWithAPropertyThatIsOne) {
    EXPECT_FALSE(isHyperLink(first));

    SetHyperLink(first);

    EXPECT_TRUE(isHyperLink(first));
    EXPECT_EQ(::GetPropW(first, kBlue), reinterpret_cast<HANDLE>(INT_PTR{1}));
}

class FirstFocusTest : public HyperlinkTest {
protected:
    void SetUp() override {
        HyperlinkTest::SetUp();
        ::ShowWindow(parent, SW_SHOW);
        ::SetFocus(parent);
    }
    HWND addButton() {
        return ::CreateWindowExW(0, L"Button", L"OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 80, 50,
                                 20, parent, nullptr, nullptr, nullptr);
    }
};

TEST_F(FirstFocusTest, GoesToTheFirstControlAfterTheLinks) {
    SetHyperLink(first);
    SetHyperLink(second);
    const HWND button = addButton();
    addButton();

    EXPECT_TRUE(focusPastLinks(parent));
    EXPECT_EQ(::GetFocus(), button);
}

TEST_F(FirstFocusTest, IsLeftToTheSystemWhereNoLinkComesFirst) {
    const HWND button = addButton();
    SetHyperLink(plain);
    ::SetWindowPos(button, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);

    EXPECT_FALSE(focusPastLinks(parent));
    EXPECT_EQ(::GetFocus(), parent);
}

TEST_F(FirstFocusTest, IsLeftToTheSystemWhereThereAreOnlyLinks) {
    SetHyperLink(first);
    SetHyperLink(second);

    EXPECT_FALSE(focusPastLinks(parent));
    EXPECT_EQ(::GetFocus(), parent);
}

TEST_F(FirstFocusTest, IsLeftToTheSystemWhereNothingTakesIt) {
    EXPECT_FALSE(focusPastLinks(parent));
    EXPECT_EQ(::GetFocus(), parent);
}

TEST_F(HyperlinkTest, GivesProceduresAndPropertiesBackWhenTheDialogIsDestroyed) {
    SetHyperLink(first);
    SetHyperLink(second);

    ::DestroyWindow(parent);

    EXPECT_TRUE(parentRestored);
    EXPECT_EQ(linksRestored, 2 + 1);  // two links, and a plain text that has nothing to restore
}

}  // namespace
