#include "ui/windows/font_set.h"

#include <new>

namespace {

LOGFONTW described(HFONT font) {
    LOGFONTW description{};
    ::GetObjectW(font, sizeof(description), &description);
    return description;
}

}  // namespace

HFONT FontSet::like(HFONT font) {
    if (font == nullptr) return nullptr;
    LOGFONTW wanted = described(font);
    wanted.lfHeight = _height;
    for (const Font& known : _fonts) {
        const LOGFONTW kind = described(known.get());
        if (kind.lfWeight == wanted.lfWeight && kind.lfUnderline == wanted.lfUnderline) {
            return known.get();
        }
    }
    Font made(::CreateFontIndirectW(&wanted));
    if (made == nullptr) throw std::bad_alloc();
    return _fonts.emplace_back(std::move(made)).get();
}
