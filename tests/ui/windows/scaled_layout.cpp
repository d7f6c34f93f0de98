#include "tests/ui/windows/scaled_layout.h"

#include "tests/ui/windows/window_pixels.h"

namespace {

constexpr int kUnitsAcross = 4, kUnitsDown = 8;
constexpr SIZE kDesignUnits{6, 13};  // pixels of these units at 96 dots per inch
// Controls that have the size of their picture, and that at 96 dots per inch.
const std::map<int, SIZE> kDrawn{{130, {120, 32}},  {131, {120, 32}}, {134, {220, 32}},
                                 {1018, {220, 32}}, {136, {96, 96}},  {137, {24, 24}},
                                 {1021, {32, 32}},  {1022, {32, 32}}, {1023, {32, 32}}};

Place placeIn(HWND dialog, HWND control) {
    RECT place = rectOf(control);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return {static_cast<int>(place.left), static_cast<int>(place.top),
            static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)};
}

INT_PTR CALLBACK plain(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

bool isPlainButton(HWND dialog, int id) {
    const HWND control = ::GetDlgItem(dialog, id);
    return (::SendMessageW(control, WM_GETDLGCODE, 0, 0) &
            (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

}  // namespace

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.width << " x " << place.height << " at " << place.left << ", " << place.top;
}

void PrintTo(const ControlLook& look, std::ostream* out) {
    PrintTo(look.place, out);
    *out << ", font " << look.fontHeight << " weight " << look.fontWeight
         << (look.underlined ? " underlined" : "");
}

int at(int pixels, int dpi) {
    return ::MulDiv(pixels, dpi, 96);
}

Place at(const Place& place, int dpi) {
    return {at(place.left, dpi), at(place.top, dpi), at(place.width, dpi), at(place.height, dpi)};
}

SIZE screenSize() {
    return {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

SIZE clientOf(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    return {client.right, client.bottom};
}

RECT rectOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

LOGFONTW fontOf(HWND window) {
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0)), sizeof(font),
                 &font);
    return font;
}

SIZE iconSize(HICON icon) {
    ICONINFO info{};
    if (!::GetIconInfo(icon, &info)) return {};
    const Bitmap mask(info.hbmMask);
    const Bitmap colours(info.hbmColor);
    BITMAP description{};
    ::GetObjectW(info.hbmColor, sizeof(description), &description);
    return {description.bmWidth, description.bmHeight};
}

Place whiteBox(HWND window, int left) {
    alert_desktop::pumpFor(50);
    const window_pixels::Pixels shown = window_pixels::shownBy(window);
    int right = 0, bottom = 0, first = shown.size.width, top = shown.size.height;
    for (int y = 0; y < shown.size.height; ++y) {
        for (int x = left; x < shown.size.width; ++x) {
            if (shown.colours[static_cast<std::size_t>(y * shown.size.width + x)] != 0xFFFFFF)
                continue;
            first = std::min(first, x);
            top = std::min(top, y);
            right = std::max(right, x + 1);
            bottom = std::max(bottom, y + 1);
        }
    }
    return {first, top, right - first, bottom - top};
}

std::vector<HWND> childrenOf(HWND dialog) {
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

Layout layoutOf(HWND dialog) {
    alert_desktop::pump();  // buttons get their size when they are painted
    const SIZE client = clientOf(dialog);
    Layout layout{{0, {{0, 0, client.cx, client.cy}, 0, 0, false}}};
    for (const HWND child : childrenOf(dialog)) {
        const LOGFONTW font = fontOf(child);
        layout[::GetDlgCtrlID(child)] = {placeIn(dialog, child), font.lfHeight, font.lfWeight,
                                         font.lfUnderline != 0};
    }
    return layout;
}

int systemScale() {
    const WindowDc screen(nullptr);
    return ::GetDeviceCaps(screen.get(), LOGPIXELSX);
}

void changeScale(HWND dialog, int dpi, const RECT* suggested) {
    ::SendMessageW(dialog, kScaleChanged, MAKEWPARAM(dpi, dpi),
                   reinterpret_cast<LPARAM>(suggested));
}

std::map<int, Place> design(int templateId) {
    const HWND dialog = ::CreateDialogParamW(::GetModuleHandleW(nullptr),
                                             MAKEINTRESOURCEW(templateId), nullptr, plain, 0);
    RECT units{0, 0, kUnitsAcross, kUnitsDown};
    ::MapDialogRect(dialog, &units);
    const auto across = [&](int pixels) {
        return ::MulDiv(::MulDiv(pixels, kUnitsAcross, units.right), kDesignUnits.cx, kUnitsAcross);
    };
    const auto down = [&](int pixels) {
        return ::MulDiv(::MulDiv(pixels, kUnitsDown, units.bottom), kDesignUnits.cy, kUnitsDown);
    };
    const SIZE client = clientOf(dialog);
    std::map<int, Place> places{{0, {0, 0, across(client.cx), down(client.cy)}}};
    for (const HWND child : childrenOf(dialog)) {
        const Place made = placeIn(dialog, child);
        places[::GetDlgCtrlID(child)] = {across(made.left), down(made.top), across(made.width),
                                         down(made.height)};
    }
    ::DestroyWindow(dialog);
    return places;
}

void expectDesign(HWND dialog, const std::map<int, Place>& places, int dpi) {
    const Layout layout = layoutOf(dialog);
    ASSERT_EQ(layout.size(), places.size());
    for (const auto& [id, look] : layout) {
        Place expected = at(places.at(id), dpi);
        const auto drawn = kDrawn.find(id);
        if (drawn != kDrawn.end() && !isPlainButton(dialog, id)) {
            expected.width = at(drawn->second.cx, dpi);
            expected.height = at(drawn->second.cy, dpi);
        }
        if (id == kList) expected.height = look.place.height;  // of its font
        EXPECT_EQ(look.place, expected) << "control " << id << " at " << dpi;
    }
}
