#pragma once

#include "ui/windows/gdi_handles.h"

#include <string>

// Drawing of pictures and captions. Pictures are bitmaps of `module`, painted in their size at
// `dpi` dots per inch and never mirrored; one that is missing paints nothing. Main thread. What
// paints or makes a picture may throw std::bad_alloc.

// A bitmap for a control that paints it itself; null if the picture is missing.
[[nodiscard]] Bitmap makeBitmap(HWND dialog, HINSTANCE module, int bitmapId, int dpi);

// Paints a picture at the origin of a control of `dialog` whose device context is `dc`.
void paintBitmap(HDC dc, HWND dialog, HINSTANCE module, int bitmapId, int dpi);

// Gives a button of `dialog` the size of a picture; its place stays.
void sizeButtonToBitmap(HWND dialog, HWND button, HINSTANCE module, int bitmapId, int dpi);

// Writes `text` on one line in the middle of `control`; "&" marks its letter. `hidesMark` leaves
// the mark out, as the user's settings may ask.
void drawLabel(HDC dc, HWND control, const std::wstring& text, COLORREF colour, bool hidesMark);
