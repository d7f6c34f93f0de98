#include "tools/printpath/windows/screen_picture.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"

#include <fstream>

namespace printpath {

namespace {

constexpr WORD kBitsPerPixel = 24;
constexpr WORD kBitmapMagic = 0x4D42;  // "BM"
constexpr int kMostTries = 25;
constexpr DWORD kBetweenTriesMs = 120;  // longer than an idle turn of the monitor's loop

int lineBytes(int width) {
    return (width * 3 + 3) / 4 * 4;
}

BITMAPINFOHEADER headerOf(int width, int height) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = kBitsPerPixel;
    header.biCompression = BI_RGB;
    return header;
}

// The system's objects of one capture. The destructor releases them in reverse order.
class Capture {
public:
    Capture(int width, int height)
        : _screen(::GetDC(nullptr)),
          _memory(::CreateCompatibleDC(_screen)),
          _bitmap(::CreateCompatibleBitmap(_screen, width, height)),
          _before(::SelectObject(_memory, _bitmap)) {}
    ~Capture() {
        ::SelectObject(_memory, _before);
        ::DeleteObject(_bitmap);
        ::DeleteDC(_memory);
        ::ReleaseDC(nullptr, _screen);
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    void copy(const RECT& area, ScreenPicture& picture) {
        ::BitBlt(_memory, 0, 0, picture.width, picture.height, _screen, area.left, area.top,
                 SRCCOPY);
        ::SelectObject(_memory, _before);  // GetDIBits must not read a bitmap that is selected
        BITMAPINFO info{};
        info.bmiHeader = headerOf(picture.width, picture.height);
        ::GetDIBits(_memory, _bitmap, 0, static_cast<UINT>(picture.height), picture.pixels.data(),
                    &info, DIB_RGB_COLORS);
    }

private:
    HDC _screen;
    HDC _memory;
    HBITMAP _bitmap;
    HGDIOBJ _before;
};

}  // namespace

ScreenPicture captureScreen(const RECT& area) {
    ScreenPicture picture;
    picture.width = area.right - area.left;
    picture.height = area.bottom - area.top;
    picture.pixels.resize(static_cast<std::size_t>(lineBytes(picture.width)) *
                          static_cast<std::size_t>(picture.height));
    Capture(picture.width, picture.height).copy(area, picture);
    return picture;
}

ScreenPicture captureWhenStill(const RECT& area) {
    ScreenPicture last = captureScreen(area);
    for (int tries = 0; tries < kMostTries; ++tries) {
        ::Sleep(kBetweenTriesMs);
        ScreenPicture next = captureScreen(area);
        if (next == last) break;
        last = std::move(next);
    }
    return last;
}

void saveBitmap(const ScreenPicture& picture, const std::filesystem::path& file) {
    const BITMAPINFOHEADER info = headerOf(picture.width, picture.height);
    BITMAPFILEHEADER header{};
    header.bfType = kBitmapMagic;
    header.bfOffBits = sizeof header + sizeof info;
    header.bfSize = header.bfOffBits + static_cast<DWORD>(picture.pixels.size());
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&header), sizeof header);
    out.write(reinterpret_cast<const char*>(&info), sizeof info);
    out.write(reinterpret_cast<const char*>(picture.pixels.data()),
              static_cast<std::streamsize>(picture.pixels.size()));
    out.close();
    if (!out)
        throw Failure(utf8FromWide(file.wstring()) + " could not be written", Outcome::Unusable);
}

}  // namespace printpath
