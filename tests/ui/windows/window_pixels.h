#pragma once

#include "ui/stored_picture.h"

#include <windows.h>
#include <cstddef>
#include <functional>
#include <vector>

// Pixels of windows and of drawings, to be compared one by one.
namespace window_pixels {

// Line by line from the top.
struct Pixels {
    PictureSize size;
    std::vector<Rgb> colours;
};

// What the screen shows of a control. Nothing may cover it.
[[nodiscard]] Pixels shownBy(HWND control);

// What `draw` leaves on a black device context of this size.
[[nodiscard]] Pixels drawn(PictureSize size, const std::function<void(HDC)>& draw);

// A picture of this program as it is painted at `dpi`; `face` is what lies behind it.
[[nodiscard]] Pixels picture(int bitmapId, int dpi, Rgb face = kFaceColour);
// The same on a device context.
void put(HDC dc, const Pixels& pixels);

// How many pixels of `found` are not as `expected`. Both begin at the top left; where `found` is
// smaller, the rest counts as different, and where it is larger, it is not looked at.
[[nodiscard]] std::size_t differences(const Pixels& found, const Pixels& expected);

[[nodiscard]] Rgb asRgb(COLORREF colour);

}  // namespace window_pixels
