#pragma once

#include "ui/windows/gdi_handles.h"

#include <string>

// Drawing of pictures and captions. Pictures are bitmaps of `module`, copied one to one and never
// mirrored; one that is missing paints nothing. Main thread.

[[nodiscard]] Bitmap loadBitmap(HINSTANCE module, int bitmapId);

// Copies a picture to the origin of a control whose device context is `dc`.
void paintBitmap(HDC dc, HINSTANCE module, int bitmapId);

// Gives a button of `dialog` the size of a picture; its place stays.
void sizeButtonToBitmap(HWND dialog, HWND button, HINSTANCE module, int bitmapId);

// Writes `text` on one line in the middle of `control`; "&" marks its letter. `hidesMark` leaves
// the mark out, as the user's settings may ask.
void drawLabel(HDC dc, HWND control, const std::wstring& text, COLORREF colour, bool hidesMark);
