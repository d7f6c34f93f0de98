#pragma once

#include "ui/windows/dialog_scale.h"
#include "ui/windows/gdi_handles.h"
#include "ui/windows/keyboard_filter.h"
#include "ui/windows/scaled_pictures.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

// What a dialog window needs for as long as it lives: fonts of its controls, pictures, icons, and
// its place in the keyboard filter. Kept with the window itself, so that it ends with the window
// whoever destroys that. What keeps something may throw std::bad_alloc. Main thread.
class WindowResources {
public:
    // Of this dialog, made at first use. The dialog's procedure calls detachPictures() at
    // WM_DESTROY and release() at WM_NCDESTROY.
    static WindowResources& of(HWND dialog);
    // Null where nothing has been kept yet.
    [[nodiscard]] static const WindowResources* find(HWND dialog) noexcept;
    static void detachPictures(HWND dialog) noexcept;
    static void release(HWND dialog) noexcept;

    // Null is not kept. The handle stays valid until replaceFonts(), at the latest with the window.
    HFONT keep(Font font);
    // Ends all fonts that are kept, once no control uses them any more.
    void replaceFonts(std::vector<Font> fonts) noexcept;
    // Gives the dialog an icon (ICON_BIG, ICON_SMALL) instead of the one it has; null leaves that.
    void showIcon(HWND dialog, WPARAM kind, Icon icon);
    // The same for a control that shows an icon.
    void showIcon(HWND control, Icon icon);
    // Of kFace, the same at every call.
    HBRUSH faceBrush();
    [[nodiscard]] ScaledPictures& pictures() noexcept { return _scaled; }
    // Instead of the picture that the control shows; null leaves that.
    void showPicture(HWND control, Bitmap bitmap);
    void filterKeys(HWND dialog, LetterRules rules);
    // See DialogScale::of().
    DialogScale& scale(HWND dialog);
    [[nodiscard]] bool hasScale() const noexcept { return _scale.has_value(); }
    // The verb that screen readers speak for what a link of the dialog does.
    void setLinkAction(std::wstring verb) { _linkAction = std::move(verb); }
    [[nodiscard]] const std::wstring& linkAction() const { return _linkAction; }

private:
    struct Picture {
        HWND control;
        Bitmap bitmap;
    };
    struct ShownIcon {
        HWND window;
        WPARAM kind;
        Icon icon;
    };
    void showIcon(HWND window, UINT message, WPARAM kind, Icon icon);

    std::vector<Font> _fonts;
    std::vector<ShownIcon> _icons;
    std::vector<Picture> _pictures;
    ScaledPictures _scaled;
    Brush _faceBrush;
    std::optional<KeyboardFilter> _keyboard;
    std::optional<DialogScale> _scale;
    std::wstring _linkAction;
};
