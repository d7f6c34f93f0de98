// What alerts ask of the system where Wine shows no difference, and what they do when it refuses. A
// program of its own, because it replaces functions of the system for the whole program.
#include "tests/ui/windows/alert_window_fixture.h"

#include "ui/windows/hyperlink.h"
#include "ui/windows/picture_painting.h"

namespace {

UINT askedFormat = 0;
bool handIsMissing = false;
bool hooksAreRefused = false;

int WINAPI recordFormat(HDC dc, LPCWSTR text, int units, LPRECT area, UINT format) {
    askedFormat = format;
    return ::DrawTextExW(dc, const_cast<LPWSTR>(text), units, area, format, nullptr);
}

HCURSOR WINAPI loadCursor(HINSTANCE module, LPCWSTR name) {
    if (handIsMissing && name == IDC_HAND) return nullptr;
    return static_cast<HCURSOR>(
        ::LoadImageW(module, name, IMAGE_CURSOR, 0, 0, LR_DEFAULTSIZE | LR_SHARED));
}

HHOOK WINAPI setHook(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
    if (hooksAreRefused) return nullptr;
    static const auto real =
        reinterpret_cast<decltype(&::SetWindowsHookExW)>(reinterpret_cast<void*>(
            ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "SetWindowsHookExW")));
    return real(kind, procedure, module, thread);
}

}  // namespace

// In this program every call of these functions goes through these pointers instead of those in the
// system's import library.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's names
decltype(&::DrawTextW) __imp_DrawTextW = &recordFormat;
decltype(&::LoadCursorW) __imp_LoadCursorW = &loadCursor;
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

}  // namespace
