// What alerts ask of the system where Wine shows no difference, and what they do when it refuses. A
// program of its own, because it replaces functions of the system for the whole program.
#include "tests/ui/windows/alert_window_fixture.h"
#include "tests/ui/windows/high_contrast.h"

#include "ui/windows/hyperlink.h"
#include "ui/windows/picture_painting.h"
#include "ui/windows/window_place.h"
#include "ui/windows/window_scale.h"

#include <string_view>

namespace {

UINT askedFormat = 0;
bool handIsMissing = false;
bool hooksAreRefused = false;

int WINAPI recordFormat(HDC dc, LPCWSTR text, int units, LPRECT area, UINT format) {
    askedFormat = format;
    return ::DrawTextExW(dc, const_cast<LPWSTR>(text), units, area, format, nullptr);
}

struct FocusMark {
    int times;
    RECT area;
    COLORREF text, back;
} mark;

BOOL WINAPI recordFocus(HDC dc, const RECT* area) {
    mark = {mark.times + 1, *area, ::GetTextColor(dc), ::GetBkColor(dc)};
    return TRUE;
}

HCURSOR WINAPI loadCursor(HINSTANCE module, LPCWSTR name) {
    if (handIsMissing && name == IDC_HAND) return nullptr;
    return static_cast<HCURSOR>(
        ::LoadImageW(module, name, IMAGE_CURSOR, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
}

// In this program the system is an older one: its library lacks the functions for several scales.
HMODULE WINAPI moduleOfAnOlderSystem(LPCWSTR name) {
    const bool isAsked = name != nullptr && std::wstring_view(name) == L"user32.dll";
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         isAsked ? L"kernel32.dll" : name, &module);
    return module;
}

HHOOK WINAPI setHook(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    if (hooksAreRefused) return nullptr;
    static const auto real =
        reinterpret_cast<decltype(&::SetWindowsHookExW)>(reinterpret_cast<void*>(
            ::GetProcAddress(::LoadLibraryW(L"user32.dll"), "SetWindowsHookExW")));
    return real(kind, procedure, module, thread);
}

}  // namespace

// In this program every call of these functions goes through these pointers instead of those in the
// system's import library.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's names
decltype(&::DrawTextW) __imp_DrawTextW = &recordFormat;
decltype(&::DrawFocusRect) __imp_DrawFocusRect = &recordFocus;
decltype(&::LoadCursorW) __imp_LoadCursorW = &loadCursor;
decltype(&::GetModuleHandleW) __imp_GetModuleHandleW = &moduleOfAnOlderSystem;
decltype(&::SetWindowsHookExW) __imp_SetWindowsHookExW = &setHook;
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
}

namespace {

constexpr UINT kOneLineInTheMiddle = DT_CENTER | DT_VCENTER | DT_SINGLELINE;

class SystemCallsTest : public AlertWindowTest {
protected:
    // The format in which a button's caption is drawn.
    UINT captionFormat(bool hidesMark) {
        const WindowDc dc(control(1018));
        drawLabel(dc.get(), control(1018), L"s&upplies", 0, hidesMark);
        return askedFormat;
    }
};

TEST_F(SystemCallsTest, LeaveOutTheMarkOfALetterWhereTheUserWantsNone) {
    open(0);

    EXPECT_EQ(captionFormat(false), kOneLineInTheMiddle);
    EXPECT_EQ(captionFormat(true), kOneLineInTheMiddle | DT_HIDEPREFIX);
}

TEST_F(SystemCallsTest, LeaveOutTheMarkOfAButtonThatIsDrawnWithoutOne) {
    open(0);
    const WindowDc dc(control(1018));
    const auto formatFor = [&](UINT state) {
        DRAWITEMSTRUCT item{};
        item.CtlID = 1018;
        item.itemState = state;
        item.hwndItem = control(1018);
        item.hDC = dc.get();
        alert->dlgProc(alert->window(), WM_DRAWITEM, 1018, reinterpret_cast<LPARAM>(&item));
        return askedFormat;
    };

    EXPECT_EQ(formatFor(ODS_NOACCEL), kOneLineInTheMiddle | DT_HIDEPREFIX);
    EXPECT_EQ(formatFor(0), kOneLineInTheMiddle);
}

TEST_F(SystemCallsTest, ReadACaptionFromRightToLeftInAMirroredAlert) {
    const alert_desktop::MirroredDesktop desktop;
    open(0);

    EXPECT_EQ(captionFormat(false), kOneLineInTheMiddle | DT_RTLREADING);
}

TEST_F(SystemCallsTest, AreMadeAgainForAHookThatTheSystemRefusedAnEarlierAlert) {
    hooksAreRefused = true;
    const auto earlier = alert_desktop::openAlert(0, 0, &broker);
    hooksAreRefused = false;
    open(0);

    pressKey(130, VK_ESCAPE);

    EXPECT_EQ(codes, (Codes{1}));
}

TEST_F(SystemCallsTest, ShowAnArrowOverALinkWhereTheSystemHasNoHand) {
    open(0);
    SetHyperLink(control(1012));
    handIsMissing = true;
    ::SetCursor(nullptr);

    ::SendMessageW(control(1012), WM_SETCURSOR, reinterpret_cast<WPARAM>(control(1012)),
                   MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));

    handIsMissing = false;
    EXPECT_EQ(::GetCursor(), loadCursor(nullptr, IDC_ARROW));
    EXPECT_NE(::GetCursor(), nullptr);
}

TEST_F(SystemCallsTest, AreThoseOfOneScaleOnASystemThatKnowsNoOther) {
    open(0);
    const RECT place = ::placeOf(alert->window());
    SIZE size{};

    ::SendMessageW(alert->window(), kSizeAtScale, 96, reinterpret_cast<LPARAM>(&size));

    EXPECT_EQ(clientSizeOf(alert->window()).cx, 747);
    EXPECT_EQ(size.cx, place.right - place.left);
    EXPECT_EQ(size.cy, place.bottom - place.top);
    EXPECT_EQ(metricAt(SM_CXICON, 192), ::GetSystemMetrics(SM_CXICON));
}

WNDPROC procedureOfTheLink = nullptr;

// Systems hide the marks of the focus from users who have not touched the keyboard yet.
LRESULT CALLBACK hideFocus(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_QUERYUISTATE) return UISF_HIDEFOCUS;
    return ::CallWindowProcW(procedureOfTheLink, window, message, wParam, lParam);
}

class LinkFocusTest : public SystemCallsTest {
protected:
    LinkFocusTest() {
        open(0);
        link = control(1012);
        SetHyperLink(link);
        ::SetFocus(link);
    }
    // The focus marks of one painting of the link with this text.
    [[nodiscard]] FocusMark markAround(const std::wstring& text) const {
        ::SetWindowTextW(link, text.c_str());
        ::ValidateRect(link, nullptr);
        mark = {};
        ::RedrawWindow(link, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return mark;
    }
    // How large a text is, in the link's font and within its width.
    [[nodiscard]] SIZE sizeOf(const std::wstring& text) const {
        const WindowDc dc(link);
        const SelectedObject font(dc.get(),
                                  reinterpret_cast<HFONT>(::SendMessageW(link, WM_GETFONT, 0, 0)));
        RECT area = room();
        ::DrawTextExW(dc.get(), const_cast<wchar_t*>(text.c_str()), -1, &area,
                      DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX, nullptr);
        return {area.right, area.bottom};
    }
    [[nodiscard]] RECT room() const {
        RECT area{};
        ::GetClientRect(link, &area);
        return area;
    }

    HWND link = nullptr;
};

TEST_F(LinkFocusTest, IsMarkedOnceAroundTheText) {
    for (const std::wstring text : {L"Open R&D", L"Open\nthe page"}) {
        const SIZE size = sizeOf(text);

        const FocusMark found = markAround(text);

        EXPECT_EQ(found.times, 1);
        EXPECT_EQ(found.area.left, 0);
        EXPECT_EQ(found.area.top, 0);
        EXPECT_EQ(found.area.right, size.cx);
        EXPECT_EQ(found.area.bottom, size.cy);
    }
}

TEST_F(LinkFocusTest, IsMarkedWithinTheControlWhereTheTextIsLarger) {
    EXPECT_EQ(markAround(std::wstring(500, L'W')).area.right, room().right);

    EXPECT_EQ(markAround(std::wstring(500, L'\n')).area.bottom, room().bottom);
}

TEST_F(LinkFocusTest, IsMarkedInTheColoursOfTextsInWindows) {
    const HighContrast scheme;

    const FocusMark found = markAround(L"Open");

    EXPECT_EQ(found.text, HighContrast::kText);
    EXPECT_EQ(found.back, HighContrast::kBack);
}

TEST_F(LinkFocusTest, IsNotMarkedWhereTheSystemHidesSuchMarks) {
    procedureOfTheLink = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(link, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(hideFocus)));

    EXPECT_EQ(markAround(L"Open").times, 0);
}

TEST_F(LinkFocusTest, IsNotMarkedWhereAnotherControlHasIt) {
    ::SetFocus(control(130));

    EXPECT_EQ(markAround(L"Open").times, 0);
}

}  // namespace
