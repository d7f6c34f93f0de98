#pragma once

#include "ui/windows/gdi_handles.h"

#include <vector>

// The fonts of a dialog at one height, each kind (plain, heavier, underlined) once. Main thread.
class FontSet {
public:
    explicit FontSet(LONG height) noexcept : _height(height) {}

    // The font of this kind; null for null. std::bad_alloc where it cannot be made, never for a
    // kind that was asked for before.
    HFONT like(HFONT font);
    // Hands the fonts over. Nothing may be asked for afterwards.
    [[nodiscard]] std::vector<Font> take() noexcept { return std::move(_fonts); }

private:
    LONG _height;
    std::vector<Font> _fonts;
};
