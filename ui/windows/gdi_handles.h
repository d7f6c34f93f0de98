#pragma once

#include <windows.h>
#include <memory>
#include <type_traits>

// Owners of what drawing borrows from the system. Each gives it back in its destructor.

struct DeleteGdiObject {
    template <typename T>
    void operator()(T* object) const noexcept {
        ::DeleteObject(object);
    }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteGdiObject>;
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
using Brush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, DeleteGdiObject>;

struct DeleteIcon {
    void operator()(HICON icon) const noexcept { ::DestroyIcon(icon); }
};
using Icon = std::unique_ptr<std::remove_pointer_t<HICON>, DeleteIcon>;

// The device context of a window for the time of a scope.
class WindowDc {
public:
    explicit WindowDc(HWND window) noexcept : _window(window), _dc(::GetDC(window)) {}
    ~WindowDc() {
        if (_dc != nullptr) ::ReleaseDC(_window, _dc);
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    [[nodiscard]] HDC get() const noexcept { return _dc; }

private:
    HWND _window;
    HDC _dc;
};

// Puts an object into a device context and the old one back.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) noexcept
        : _dc(dc), _before(object != nullptr ? ::SelectObject(dc, object) : nullptr) {}
    ~SelectedObject() {
        if (_before != nullptr) ::SelectObject(_dc, _before);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC _dc;
    HGDIOBJ _before;
};

// Keeps every setting of a device context: colours, background, layout.
class SavedDc {
public:
    explicit SavedDc(HDC dc) noexcept : _dc(dc), _state(::SaveDC(dc)) {}
    ~SavedDc() {
        if (_state != 0) ::RestoreDC(_dc, _state);
    }
    SavedDc(const SavedDc&) = delete;
    SavedDc& operator=(const SavedDc&) = delete;

private:
    HDC _dc;
    int _state;
};
