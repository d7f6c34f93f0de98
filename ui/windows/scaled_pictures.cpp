#include "ui/windows/scaled_pictures.h"

#include "ui/windows/face_colours.h"

#include <algorithm>

namespace {

Rgb asRgb(COLORREF colour) {
    return static_cast<Rgb>(GetRValue(colour)) << 16 | static_cast<Rgb>(GetGValue(colour)) << 8 |
           static_cast<Rgb>(GetBValue(colour));
}

}  // namespace

const ScaledPicture& ScaledPictures::of(HINSTANCE module, int bitmapId, int dpi) {
    const Rgb face = asRgb(faceColour());
    auto kept = std::ranges::find(_kept, bitmapId, &Kept::bitmapId);
    if (kept != _kept.end() && kept->dpi == dpi && kept->face == face) return kept->picture;
    Kept made{bitmapId, dpi, face, storedPicture(module, bitmapId).scaledFor(dpi, face)};
    if (kept == _kept.end()) return _kept.emplace_back(std::move(made)).picture;
    *kept = std::move(made);
    return kept->picture;
}

StoredPicture storedPicture(HINSTANCE module, int bitmapId) noexcept {
    const HRSRC place = ::FindResourceW(module, MAKEINTRESOURCEW(bitmapId), RT_BITMAP);
    const HGLOBAL resource = place != nullptr ? ::LoadResource(module, place) : nullptr;
    const void* bytes = resource != nullptr ? ::LockResource(resource) : nullptr;
    if (bytes == nullptr) return StoredPicture({});
    return StoredPicture(
        {static_cast<const std::uint8_t*>(bytes), ::SizeofResource(module, place)});
}
