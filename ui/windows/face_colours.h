#pragma once

#include "ui/stored_picture.h"

#include <windows.h>

// The face of our dialogs: one light grey on every system, because the pictures have no
// transparency and bring it along. Under a high-contrast scheme the system's colours stay.
// Main thread only.

inline constexpr COLORREF kFace =
    RGB(kFaceColour >> 16 & 0xFF, kFaceColour >> 8 & 0xFF, kFaceColour & 0xFF);

// What is behind the controls and the pictures.
[[nodiscard]] COLORREF faceColour();

[[nodiscard]] bool isColourRequest(UINT message);

// Answers a colour request of `dialog` with the brush of the face; FALSE: let the system paint.
INT_PTR paintFace(HWND dialog, UINT message, WPARAM wParam);

// Whether the user may have chosen other colours: a scheme began, ended or changed.
[[nodiscard]] bool isColourChange(UINT message, WPARAM wParam);

// Has the dialog and its controls painted in the new colours, with the next WM_PAINT. Until then a
// control that shows a bitmap needs one with the new face.
void followColourChange(HWND dialog, UINT message);
