#include "ui/windows/window_resources.h"

#include "ui/windows/face_colours.h"
#include "ui/windows/window_properties.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr wchar_t kProperty[] = L"_Window_Resources_";

WindowResources* kept(HWND dialog) noexcept {
    return static_cast<WindowResources*>(::GetPropW(dialog, kProperty));
}

// Takes `bitmap` out of its control. Of a transparent bitmap the control shows a copy of its own.
void detach(HWND control, HBITMAP bitmap) noexcept {
    const LRESULT before = ::SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP, 0);
    auto* shown = reinterpret_cast<HBITMAP>(before);
    if (shown != nullptr && shown != bitmap) ::DeleteObject(shown);
}

}  // namespace

WindowResources& WindowResources::of(HWND dialog) {
    if (WindowResources* resources = kept(dialog)) return *resources;
    auto resources = std::make_unique<WindowResources>();
    setWindowProperty(dialog, kProperty, resources.get());
    return *resources.release();  // release() of the window deletes it
}

const WindowResources* WindowResources::find(HWND dialog) noexcept {
    return kept(dialog);
}

void WindowResources::detachPictures(HWND dialog) noexcept {
    WindowResources* resources = kept(dialog);
    if (resources == nullptr) return;
    for (const Picture& picture : resources->_pictures)
        detach(picture.control, picture.bitmap.get());
}

void WindowResources::release(HWND dialog) noexcept {
    const std::unique_ptr<WindowResources> resources(kept(dialog));
    ::RemovePropW(dialog, kProperty);
}

HFONT WindowResources::keep(Font font) {
    if (font == nullptr) return nullptr;
    return _fonts.emplace_back(std::move(font)).get();
}

void WindowResources::replaceFonts(std::vector<Font> fonts) noexcept {
    _fonts = std::move(fonts);
}

void WindowResources::showIcon(HWND dialog, WPARAM kind, Icon icon) {
    showIcon(dialog, WM_SETICON, kind, std::move(icon));
}

void WindowResources::showIcon(HWND control, Icon icon) {
    showIcon(control, STM_SETIMAGE, IMAGE_ICON, std::move(icon));
}

void WindowResources::showIcon(HWND window, UINT message, WPARAM kind, Icon icon) {
    if (icon == nullptr) return;
    auto shown = std::find_if(_icons.begin(), _icons.end(), [=](const ShownIcon& each) {
        return each.window == window && each.kind == kind;
    });
    if (shown == _icons.end()) shown = _icons.insert(shown, ShownIcon{window, kind, nullptr});
    ::SendMessageW(window, message, kind, reinterpret_cast<LPARAM>(icon.get()));
    shown->icon = std::move(icon);  // nothing shows the one before any more
}

HBRUSH WindowResources::faceBrush() {
    if (_faceBrush == nullptr) _faceBrush.reset(::CreateSolidBrush(kFace));
    return _faceBrush.get();
}

void WindowResources::showPicture(HWND control, Bitmap bitmap) {
    if (bitmap == nullptr) return;
    auto shown = std::find_if(_pictures.begin(), _pictures.end(),
                              [=](const Picture& each) { return each.control == control; });
    if (shown == _pictures.end()) {
        shown = _pictures.insert(shown, Picture{control, nullptr});
    } else {
        detach(control, shown->bitmap.get());
    }
    shown->bitmap = std::move(bitmap);
    ::SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP,
                   reinterpret_cast<LPARAM>(shown->bitmap.get()));
}

DialogScale& WindowResources::scale(HWND dialog) {
    if (!_scale) _scale.emplace(dialog);
    return *_scale;
}

void WindowResources::filterKeys(HWND dialog, LetterRules rules) {
    _keyboard.emplace(dialog, rules);
}
