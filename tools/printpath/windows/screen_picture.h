#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <vector>

namespace printpath {

// A part of the screen in the layout of a bitmap file: 24 bits for each pixel with blue first, the
// lowest line first, each line padded to a multiple of four bytes.
struct ScreenPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    bool operator==(const ScreenPicture&) const = default;
};

ScreenPicture captureScreen(const RECT& area);

// Captures until two pictures in a row are equal, so that the picture shows no half-painted window.
ScreenPicture captureWhenStill(const RECT& area);

// Throws Failure when the file cannot be written.
void saveBitmap(const ScreenPicture& picture, const std::filesystem::path& file);

}  // namespace printpath
