#include "ui/windows/picture_painting.h"

namespace {

SIZE sizeOf(HBITMAP bitmap) {
    BITMAP description{};
    ::GetObjectW(bitmap, sizeof(description), &description);
    return {description.bmWidth, description.bmHeight};
}

}  // namespace

Bitmap loadBitmap(HINSTANCE module, int bitmapId) {
    if (bitmapId == 0) return nullptr;
    return Bitmap(static_cast<HBITMAP>(
        ::LoadImageW(module, MAKEINTRESOURCEW(bitmapId), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR)));
}

void paintBitmap(HDC dc, HINSTANCE module, int bitmapId) {
    const Bitmap bitmap = loadBitmap(module, bitmapId);
    if (bitmap == nullptr) return;
    const MemoryDc memory(::CreateCompatibleDC(dc));
    const SelectedObject selected(memory.get(), bitmap.get());
    const SavedDc saved(dc);
    ::SetLayout(dc, 0);  // in a mirrored dialog the picture would be mirrored as well
    const SIZE size = sizeOf(bitmap.get());
    ::BitBlt(dc, 0, 0, size.cx, size.cy, memory.get(), 0, 0, SRCCOPY);
}

void sizeButtonToBitmap(HWND dialog, HWND button, HINSTANCE module, int bitmapId) {
    const Bitmap bitmap = loadBitmap(module, bitmapId);
    if (bitmap == nullptr || button == nullptr) return;
    const SIZE size = sizeOf(bitmap.get());
    RECT place{};
    ::GetWindowRect(button, &place);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    if (place.right - place.left == size.cx && place.bottom - place.top == size.cy) return;
    ::MoveWindow(button, place.left, place.top, size.cx, size.cy, TRUE);
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
