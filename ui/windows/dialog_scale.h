#pragma once

#include <windows.h>
#include <vector>

// Lays a dialog out for the scale of its screen, again whenever that changes. It knows the place of
// every control in the design, in pixels of 96 dots per inch, and every layout starts from there,
// so that no rounding adds up. Kept by the dialog's WindowResources, which release it. Making it
// and what changes the scale may throw std::bad_alloc. Main thread.
class DialogScale {
public:
    // Of this dialog. The first call records the places of the controls: it comes while these are
    // still where the template puts them.
    static DialogScale& of(HWND dialog);
    explicit DialogScale(HWND dialog);

    // Dots per inch of the layout.
    [[nodiscard]] int dpi() const noexcept { return _dpi; }

    // Lays the dialog out for the screen on which the system has made it.
    void begin();
    // Answers kScaleChanged, after which the dialog renews its pictures and icons, and
    // kSizeAtScale. False: it is another message, the dialog is not laid out yet, or no screen has
    // this scale.
    static bool answer(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    // In pixels of the design.
    // Opens the dialog at a place of the screen, or as near as shows all of it.
    void standAt(POINT place);
    // Puts a control at the upper left corner of another one.
    void putAt(HWND control, HWND where);
    void raise(HWND control, int pixels);
    // Makes the window lower.
    void shrink(int pixels);

private:
    struct Control {
        HWND window;
        RECT design;
    };

    [[nodiscard]] SIZE clientAt(int dpi) const;
    [[nodiscard]] Control* find(HWND control);
    void place(const Control& control) const;
    void onScaleChanged(int dpi, const RECT* suggested);
    void changeTo(int dpi, POINT corner);
    void setFonts(LONG height);
    void setSize(POINT corner) const;

    HWND _dialog;
    int _dpi;
    LONG _fontHeight;
    SIZE _client{};   // of the design
    POINT _opened{};  // where it wants to stand; of the design
    POINT _corner{};  // where it came to stand, in pixels of the screen
    std::vector<Control> _controls;
};
