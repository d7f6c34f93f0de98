#include "ui/windows/window_resources.h"

#include "ui/windows/window_properties.h"

#include <memory>
#include <utility>

namespace {

constexpr wchar_t kProperty[] = L"_Window_Resources_";

WindowResources* kept(HWND dialog) noexcept {
    return static_cast<WindowResources*>(::GetPropW(dialog, kProperty));
}

}  // namespace

WindowResources& WindowResources::of(HWND dialog) {
    if (WindowResources* resources = kept(dialog)) return *resources;
    auto resources = std::make_unique<WindowResources>();
    setWindowProperty(dialog, kProperty, resources.get());
    return *resources.release();  // release() of the window deletes it
}

void WindowResources::detachPictures(HWND dialog) noexcept {
    WindowResources* resources = kept(dialog);
    if (resources == nullptr) return;
    for (const Picture& picture : resources->_pictures) {
        const LRESULT shown = ::SendMessageW(picture.control, STM_SETIMAGE, IMAGE_BITMAP, 0);
        // The control shows a copy of its own when the bitmap has transparency.
        auto* bitmap = reinterpret_cast<HBITMAP>(shown);
        if (bitmap != nullptr && bitmap != picture.bitmap.get()) ::DeleteObject(bitmap);
    }
}

void WindowResources::release(HWND dialog) noexcept {
    const std::unique_ptr<WindowResources> resources(kept(dialog));
    ::RemovePropW(dialog, kProperty);
}

HFONT WindowResources::keep(Font font) {
    if (font == nullptr) return nullptr;
    return _fonts.emplace_back(std::move(font)).get();
}

HICON WindowResources::keep(Icon icon) {
    if (icon == nullptr) return nullptr;
    return _icons.emplace_back(std::move(icon)).get();
}

HBRUSH WindowResources::solidBrush(COLORREF colour) {
    if (_brush == nullptr) _brush.reset(::CreateSolidBrush(colour));
    return _brush.get();
}

void WindowResources::showPicture(HWND control, Bitmap bitmap) {
    if (bitmap == nullptr) return;
    const Picture& picture = _pictures.emplace_back(Picture{control, std::move(bitmap)});
    ::SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP,
                   reinterpret_cast<LPARAM>(picture.bitmap.get()));
}

void WindowResources::filterKeys(HWND dialog, LetterRules rules) {
    _keyboard.emplace(dialog, rules);
}
