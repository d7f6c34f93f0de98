#include "ui/windows/picture_painting.h"

#include "ui/windows/window_place.h"
#include "ui/windows/window_resources.h"

namespace {

// A picture with 32 bits for each pixel, as the system takes it.
struct PaintedPicture {
    explicit PaintedPicture(const ScaledPicture& picture)
        : size(picture.size()), pixels(picture.pixels()) {
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = size.width;
        info.bmiHeader.biHeight = -size.height;  // the first line is the upper one
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 8 * sizeof(Rgb);
    }
    PictureSize size;
    std::vector<Rgb> pixels;
    BITMAPINFO info{};
};

PaintedPicture paintedPicture(HWND dialog, HINSTANCE module, int bitmapId, int dpi) {
    return PaintedPicture(WindowResources::of(dialog).pictures().of(module, bitmapId, dpi));
}

}  // namespace

// Made for the screen and not as a section: with 32 bits of its own a section could count as a
// picture with transparency, of which the control makes a copy.
Bitmap makeBitmap(HWND dialog, HINSTANCE module, int bitmapId, int dpi) {
    const PaintedPicture picture = paintedPicture(dialog, module, bitmapId, dpi);
    if (picture.pixels.empty()) return nullptr;
    const WindowDc screen(nullptr);
    return Bitmap(::CreateDIBitmap(screen.get(), &picture.info.bmiHeader, CBM_INIT,
                                   picture.pixels.data(), &picture.info, DIB_RGB_COLORS));
}

void paintBitmap(HDC dc, HWND dialog, HINSTANCE module, int bitmapId, int dpi) {
    const PaintedPicture picture = paintedPicture(dialog, module, bitmapId, dpi);
    const SavedDc saved(dc);
    // In a mirrored dialog Windows would mirror the picture as well; Wine does not.
    ::SetLayout(dc, 0);
    const auto width = static_cast<DWORD>(picture.size.width);
    const auto height = static_cast<DWORD>(picture.size.height);
    ::SetDIBitsToDevice(dc, 0, 0, width, height, 0, 0, 0, height, picture.pixels.data(),
                        &picture.info, DIB_RGB_COLORS);
}

void sizeButtonToBitmap(HWND dialog, HWND button, HINSTANCE module, int bitmapId, int dpi) {
    const PictureSize size = storedPicture(module, bitmapId).sizeAt(dpi);
    if (size.width == 0 || button == nullptr) return;
    const RECT place = placeIn(dialog, button);
    if (place.right - place.left == size.width && place.bottom - place.top == size.height) return;
    ::MoveWindow(button, place.left, place.top, size.width, size.height, TRUE);
}

void drawLabel(HDC dc, HWND control, const std::wstring& text, COLORREF colour, bool hidesMark) {
    const SavedDc saved(dc);
    RECT area{};
    ::GetClientRect(control, &area);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, colour);
    auto* font = reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0));
    const SelectedObject selected(dc, font);
    const bool mirrored = (::GetWindowLongPtrW(control, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE;
    if (hidesMark) format |= DT_HIDEPREFIX;
    if (mirrored) {
        ::SetLayout(dc, 0);
        format |= DT_RTLREADING;
    }
    ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area, format);
}
