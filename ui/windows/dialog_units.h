#pragma once

#include <windows.h>

// Dialog units: the measure of dialog templates, a quarter of a letter's width and an eighth of its
// height. How many pixels these are depends on the dialog's font, and does not grow evenly with it.

// Of the font in every template, as LOGFONT has it.
[[nodiscard]] LONG dialogFontHeight(int dpi);

// Takes sizes and places in a dialog as the system has made it, in pixels, to what they are in the
// design. Makes no difference where the dialog was made at the design's scale. Main thread.
class DesignUnits {
public:
    explicit DesignUnits(HWND dialog);

    [[nodiscard]] SIZE operator()(SIZE size) const noexcept;
    [[nodiscard]] RECT operator()(const RECT& place) const noexcept;

private:
    // Pixels of four units across and of eight down.
    SIZE _made;
    SIZE _design;
};
