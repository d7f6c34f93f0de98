#include "tests/ui/windows/window_pixels.h"

#include "ui/windows/gdi_handles.h"
#include "ui/windows/scaled_pictures.h"

#include <cstring>
#include <memory>
#include <type_traits>

namespace window_pixels {

namespace {

struct DeleteMemoryDc {
    void operator()(HDC dc) const noexcept { ::DeleteDC(dc); }
};
// A device context that draws into a bitmap.
using MemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteMemoryDc>;

BITMAPINFO descriptionOf(PictureSize size) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

std::size_t countOf(PictureSize size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

}  // namespace

Pixels drawn(PictureSize size, const std::function<void(HDC)>& draw) {
    constexpr Rgb kColourBits = 0xFFFFFF;
    Pixels pixels{size, std::vector<Rgb>(countOf(size))};
    const WindowDc screen(nullptr);
    const MemoryDc memory(::CreateCompatibleDC(screen.get()));
    const BITMAPINFO info = descriptionOf(size);
    void* bits = nullptr;
    const Bitmap bitmap(::CreateDIBSection(screen.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap == nullptr) return {};
    {
        const SelectedObject selected(memory.get(), bitmap.get());
        draw(memory.get());
        ::GdiFlush();
    }
    std::memcpy(pixels.colours.data(), bits, pixels.colours.size() * sizeof(Rgb));
    for (Rgb& colour : pixels.colours)
        colour &= kColourBits;
    return pixels;
}

Pixels shownBy(HWND control) {
    RECT client{};
    ::GetClientRect(control, &client);
    const WindowDc dc(control);
    ::SetLayout(dc.get(), 0);
    return drawn({client.right, client.bottom}, [&](HDC memory) {
        ::BitBlt(memory, 0, 0, client.right, client.bottom, dc.get(), 0, 0, SRCCOPY);
    });
}

Pixels picture(int bitmapId, int dpi, Rgb face) {
    const ScaledPicture scaled =
        storedPicture(::GetModuleHandleW(nullptr), bitmapId).scaledFor(dpi, face);
    return {scaled.size(), scaled.pixels()};
}

void put(HDC dc, const Pixels& pixels) {
    const BITMAPINFO info = descriptionOf(pixels.size);
    ::SetDIBitsToDevice(
        dc, 0, 0, static_cast<DWORD>(pixels.size.width), static_cast<DWORD>(pixels.size.height), 0,
        0, 0, static_cast<UINT>(pixels.size.height), pixels.colours.data(), &info, DIB_RGB_COLORS);
}

std::size_t differences(const Pixels& found, const Pixels& expected) {
    std::size_t count = 0;
    for (int y = 0; y < expected.size.height; ++y) {
        for (int x = 0; x < expected.size.width; ++x) {
            const auto at = [x, y](const Pixels& pixels) {
                return pixels
                    .colours[countOf({pixels.size.width, y}) + static_cast<std::size_t>(x)];
            };
            const bool isThere = x < found.size.width && y < found.size.height;
            if (!isThere || at(found) != at(expected)) ++count;
        }
    }
    return count;
}

Rgb asRgb(COLORREF colour) {
    return static_cast<Rgb>(GetRValue(colour)) << 16 | static_cast<Rgb>(GetGValue(colour)) << 8 |
           static_cast<Rgb>(GetBValue(colour));
}

}  // namespace window_pixels
