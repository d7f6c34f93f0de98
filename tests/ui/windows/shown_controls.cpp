#include "tests/ui/windows/shown_controls.h"

#include "tests/ui/windows/alert_desktop.h"
#include "ui/localized_text.h"
#include "ui/resource_ids.h"
#include "ui/windows/gdi_handles.h"
#include "ui/windows/window_place.h"
#include "ui/windows/window_scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int kFaceMargin = 6;  // pixels between a caption and each side of its button
constexpr int kLeafMargin = 30, kLeafButton = 220;  // the same beside the leaf, and the width there
constexpr int kLink = 1051, kRestOfItsLine = 1031;

struct Shown {
    HWND window;
    int id;
    RECT place;  // position in the dialog
    std::wstring text;
    bool isButton, isText, isList, isPicture;
};

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    const int units = ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(units));
    return text;
}

std::vector<Shown> visibleControls(HWND dialog) {
    std::vector<Shown> all;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (!::IsWindowVisible(child)) continue;
        wchar_t name[32] = {};
        ::GetClassNameW(child, name, 32);
        const std::wstring kind(name);
        const LONG_PTR style = ::GetWindowLongPtrW(child, GWL_STYLE);
        Shown shown{child,
                    ::GetDlgCtrlID(child),
                    placeIn(dialog, child),
                    textOf(child),
                    kind == L"Button",
                    false,
                    kind == L"ComboBox",
                    false};
        const LONG_PTR type = style & SS_TYPEMASK;
        shown.isText = kind == L"Static" && type == SS_LEFT && !shown.text.empty();
        shown.isPicture = kind == L"Static" && (type == SS_BITMAP || type == SS_ICON);
        all.push_back(shown);
    }
    return all;
}

SIZE needed(const Shown& shown, UINT format, LONG width) {
    const WindowDc dc(shown.window);
    auto* font = reinterpret_cast<HFONT>(::SendMessageW(shown.window, WM_GETFONT, 0, 0));
    const SelectedObject selected(dc.get(), font);
    RECT area{0, 0, width, 0};
    ::DrawTextW(dc.get(), shown.text.c_str(), static_cast<int>(shown.text.size()), &area,
                format | DT_CALCRECT);
    return {area.right, area.bottom};
}

std::string nameOf(const Shown& shown) {
    return "control " + std::to_string(shown.id);
}

void expectInside(HWND dialog, const Shown& shown) {
    RECT client{};
    ::GetClientRect(dialog, &client);
    EXPECT_GE(shown.place.left, 0) << nameOf(shown);
    EXPECT_GE(shown.place.top, 0) << nameOf(shown);
    EXPECT_LE(shown.place.right, client.right) << nameOf(shown);
    EXPECT_LE(shown.place.bottom, client.bottom) << nameOf(shown);
}

bool isEastAsian(wchar_t letter) {
    return letter >= 0x2E80;
}

// In the font of a control. Wine 10 does not, and leaves some Chinese sentences in one line as
// well.
bool systemBreaksBehindChinese(Shown control) {
    control.text = L"部件号：WWWW";
    const LONG line = needed(control, DT_SINGLELINE, 0).cx;
    return needed(control, DT_WORDBREAK | DT_NOPREFIX, line - 1).cx < line;
}

void expectTextFits(const Shown& shown) {
    RECT room{};
    ::GetClientRect(shown.window, &room);
    if (shown.isText) {
        if (std::ranges::any_of(shown.text, isEastAsian) && !systemBreaksBehindChinese(shown))
            return;
        const SIZE size = needed(shown, DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS, room.right);
        EXPECT_LE(size.cx, room.right) << nameOf(shown);
        EXPECT_LE(size.cy, room.bottom) << nameOf(shown);
    } else if (shown.isButton) {
        const SIZE size = needed(shown, DT_SINGLELINE, 0);
        const bool hasLeaf = shown.id == IDC_ALERT_RECYCLE;
        const int margin = hasLeaf ? room.right * kLeafMargin / kLeafButton : kFaceMargin;
        EXPECT_LE(size.cx, room.right - 2 * margin) << nameOf(shown);
        EXPECT_LE(size.cy, room.bottom) << nameOf(shown);
    }
}

// Letters of Chinese, Japanese and Korean come through a link to another font. Names of pictures
// are not seen.
void expectLettersOfTheFont(const Shown& shown) {
    if (!shown.isText && !shown.isButton) return;
    const WindowDc dc(shown.window);
    auto* font = reinterpret_cast<HFONT>(::SendMessageW(shown.window, WM_GETFONT, 0, 0));
    const SelectedObject selected(dc.get(), font);
    for (const wchar_t letter : shown.text) {
        WORD glyph = 0;
        ::GetGlyphIndicesW(dc.get(), &letter, 1, &glyph, GGI_MARK_NONEXISTING_GLYPHS);
        EXPECT_TRUE(letter < L' ' || isEastAsian(letter) || glyph != 0xFFFF)
            << nameOf(shown) << ", U+" << std::hex << static_cast<unsigned>(letter) << std::dec;
    }
}

void expectChoicesFit(const Shown& list, int times) {
    const auto count = static_cast<int>(::SendMessageW(list.window, CB_GETCOUNT, 0, 0));
    const int room = list.place.right - list.place.left - ::GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(count, 9);
    for (int i = 0; i < count; ++i) {
        Shown choice = list;
        wchar_t text[kTextUnits] = {};
        ::SendMessageW(list.window, CB_GETLBTEXT, static_cast<WPARAM>(i),
                       reinterpret_cast<LPARAM>(text));
        choice.text = text;
        EXPECT_LE(times * needed(choice, DT_SINGLELINE | DT_NOPREFIX, 0).cx, room - 2 * kFaceMargin)
            << i;
    }
}

// On the screen, where the numbers grow in the direction of reading.
RECT placeAsRead(HWND control) {
    RECT place{};
    ::GetWindowRect(control, &place);
    const LONG_PTR style = ::GetWindowLongPtrW(::GetParent(control), GWL_EXSTYLE);
    if ((style & WS_EX_LAYOUTRTL) == 0) return place;
    return {-place.right, place.top, -place.left, place.bottom};
}

void expectOrder(const std::vector<HWND>& controls) {
    for (std::size_t i = 1; i < controls.size(); ++i) {
        const RECT before = placeAsRead(controls[i - 1]);
        const RECT after = placeAsRead(controls[i]);
        const bool isBelow = after.top >= before.bottom;
        const bool isBeside = after.bottom > before.top && after.left >= before.right;
        EXPECT_TRUE(isBelow || isBeside)
            << ::GetDlgCtrlID(controls[i - 1]) << " before " << ::GetDlgCtrlID(controls[i]);
    }
}

void expectNeatAsItIs(HWND dialog) {
    const std::vector<Shown> all = visibleControls(dialog);
    for (std::size_t i = 0; i < all.size(); ++i) {
        expectInside(dialog, all[i]);
        expectTextFits(all[i]);
        expectLettersOfTheFont(all[i]);
        if (all[i].isList) expectChoicesFit(all[i], 1);
        for (std::size_t j = i + 1; j < all.size(); ++j) {
            const auto isSeen = [](const Shown& shown) {
                return shown.isText || shown.isButton || shown.isList || shown.isPicture;
            };
            const bool matters = isSeen(all[i]) && isSeen(all[j]);
            RECT both{};
            EXPECT_FALSE(matters && ::IntersectRect(&both, &all[i].place, &all[j].place))
                << nameOf(all[i]) << " and " << nameOf(all[j]);
        }
    }
}

}  // namespace

void expectNeat(HWND dialog) {
    alert_desktop::pump();
    expectNeatAsItIs(dialog);
    for (const int dpi : {120, 144, 168, 192}) {
        const testing::ScopedTrace scale(__FILE__, __LINE__, std::to_string(dpi) + " per inch");
        ::SendMessageW(dialog, kScaleChanged, MAKEWPARAM(dpi, dpi), 0);
        alert_desktop::pump();  // buttons get their size when they are painted
        expectNeatAsItIs(dialog);
    }
}

void expectRoomForTwice(HWND dialog) {
    int lineUsed = 0;
    for (Shown& shown : visibleControls(dialog)) {
        if (shown.isList) expectChoicesFit(shown, 2);
        // The leaf takes a part of its button. No language needs half as much again as English
        // there.
        const bool hasLeaf = shown.id == IDC_ALERT_RECYCLE;
        const std::size_t units = shown.text.size();
        shown.text += L' ' + shown.text.substr(0, hasLeaf ? units / 2 : units);
        if (shown.id == kLink || shown.id == kRestOfItsLine) {
            lineUsed += needed(shown, DT_SINGLELINE | DT_NOPREFIX, 0).cx;
        } else {
            expectTextFits(shown);
        }
    }
    RECT client{};
    ::GetClientRect(dialog, &client);
    EXPECT_LE(lineUsed, client.right - 2 * kFaceMargin);
}

void expectInReadingOrder(HWND dialog) {
    std::vector<HWND> all;
    for (const Shown& shown : visibleControls(dialog)) {
        if (shown.isText || shown.isButton || shown.isList) all.push_back(shown.window);
    }
    expectOrder(all);

    std::vector<HWND> stops;
    const HWND first = ::GetNextDlgTabItem(dialog, nullptr, FALSE);
    for (HWND stop = first; stop != nullptr;) {
        stops.push_back(stop);
        stop = ::GetNextDlgTabItem(dialog, stop, FALSE);
        if (stop == first) break;
    }
    EXPECT_FALSE(stops.empty());
    expectOrder(stops);
}
