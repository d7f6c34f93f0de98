#include "ui/windows/dialog_units.h"

#include "ui/windows/gdi_handles.h"
#include "ui/windows/window_scale.h"

namespace {

constexpr int kPoints = 8, kPointsPerInch = 72;
constexpr int kUnitsAcross = 4, kUnitsDown = 8;

SIZE unitsOfDialog(HWND dialog) {
    RECT units{0, 0, kUnitsAcross, kUnitsDown};
    ::MapDialogRect(dialog, &units);
    return {units.right, units.bottom};
}

// As the system reckons it.
SIZE unitsOfFont(HWND dialog, HFONT font) {
    constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr int kCount = 52;
    const WindowDc dc(dialog);
    const SelectedObject selected(dc.get(), font);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.get(), &metrics);
    SIZE alphabet{};
    ::GetTextExtentPoint32W(dc.get(), kLetters, kCount, &alphabet);
    return {(alphabet.cx / (kCount / 2) + 1) / 2, metrics.tmHeight};
}

LONG converted(LONG pixels, int units, LONG from, LONG to) noexcept {
    return ::MulDiv(::MulDiv(pixels, units, from), to, units);
}

}  // namespace

LONG dialogFontHeight(int dpi) {
    return -::MulDiv(kPoints, dpi, kPointsPerInch);
}

DesignUnits::DesignUnits(HWND dialog) : _made(unitsOfDialog(dialog)), _design(_made) {
    LOGFONTW font{};
    auto* current = reinterpret_cast<HFONT>(::SendMessageW(dialog, WM_GETFONT, 0, 0));
    if (::GetObjectW(current, sizeof(font), &font) == 0) return;
    if (font.lfHeight == dialogFontHeight(kDesignDpi)) return;
    font.lfHeight = dialogFontHeight(kDesignDpi);
    const Font designFont(::CreateFontIndirectW(&font));
    _design = unitsOfFont(dialog, designFont.get());
}

SIZE DesignUnits::operator()(SIZE size) const noexcept {
    return {converted(size.cx, kUnitsAcross, _made.cx, _design.cx),
            converted(size.cy, kUnitsDown, _made.cy, _design.cy)};
}

// The system reckons the width of a control and not its right edge.
RECT DesignUnits::operator()(const RECT& place) const noexcept {
    const SIZE corner = (*this)(SIZE{place.left, place.top});
    const SIZE size = (*this)(SIZE{place.right - place.left, place.bottom - place.top});
    return {corner.cx, corner.cy, corner.cx + size.cx, corner.cy + size.cy};
}
