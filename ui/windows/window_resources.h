#pragma once

#include "ui/windows/gdi_handles.h"
#include "ui/windows/keyboard_filter.h"
#include "ui/windows/scaled_pictures.h"

#include <optional>
#include <vector>

// What a dialog window needs for as long as it lives: fonts of its controls, pictures, icons, and
// its place in the keyboard filter. Kept with the window itself, so that it ends with the window
// whoever destroys that. What keeps something may throw std::bad_alloc. Main thread.
class WindowResources {
public:
    // Of this dialog, made at first use. The dialog's procedure calls detachPictures() at
    // WM_DESTROY and release() at WM_NCDESTROY.
    static WindowResources& of(HWND dialog);
    static void detachPictures(HWND dialog) noexcept;
    static void release(HWND dialog) noexcept;

    // Null is not kept. The handles stay valid as long as the window.
    HFONT keep(Font font);
    HICON keep(Icon icon);
    // A brush of this one colour, the same at every call.
    HBRUSH solidBrush(COLORREF colour);
    [[nodiscard]] ScaledPictures& pictures() noexcept { return _scaled; }
    void showPicture(HWND control, Bitmap bitmap);
    void filterKeys(HWND dialog, LetterRules rules);

private:
    struct Picture {
        HWND control;
        Bitmap bitmap;
    };

    std::vector<Font> _fonts;
    std::vector<Icon> _icons;
    std::vector<Picture> _pictures;
    ScaledPictures _scaled;
    Brush _brush;
    std::optional<KeyboardFilter> _keyboard;
};
