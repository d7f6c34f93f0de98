#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// A colour as 0x00RRGGBB.
using Rgb = std::uint32_t;

// The light grey behind the pictures, which have no transparency, and of the dialogs they are in.
inline constexpr Rgb kFaceColour = 0xF0F0F0;

// In pixels.
struct PictureSize {
    int width = 0, height = 0;
};

// A picture in the size in which it is painted, kept as runs of one colour: our drawings are flat,
// and plain pixels would take ten times the memory. May be used on any thread.
class ScaledPicture {
public:
    explicit ScaledPicture(PictureSize size) noexcept : _size(size) {}

    // Lines are added from the bottom up, each as long as the picture is wide. This and the next
    // one may throw std::bad_alloc.
    void addLine(std::span<const Rgb> line);
    // The colours line by line from the top.
    [[nodiscard]] std::vector<Rgb> pixels() const;
    [[nodiscard]] PictureSize size() const noexcept { return _size; }

private:
    struct Run {
        Rgb colour;
        std::uint32_t length;
    };
    PictureSize _size;
    std::vector<Run> _runs;  // of the lines in the order in which they were added
};

// A picture of the program as its resource holds it: twice as large as it is painted at 96 dots per
// inch, with a table of colours and run-length coded bytes. It is averaged down to the size that a
// screen needs, in whole numbers, so that every system paints the same colours. Any thread.
class StoredPicture {
public:
    // `bitmap` is the content of a bitmap resource and is not copied. Content that is no picture of
    // the kind above makes a picture of the size 0 x 0.
    explicit StoredPicture(std::span<const std::uint8_t> bitmap) noexcept;

    // The size on a screen with this many dots per inch.
    [[nodiscard]] PictureSize sizeAt(int dpi) const noexcept;
    // `face` takes the place of kFaceColour before the colours are averaged, so that an edge is
    // mixed with the colour that is really behind it. Throws std::bad_alloc.
    [[nodiscard]] ScaledPicture scaledFor(int dpi, Rgb face) const;

private:
    std::span<const std::uint8_t> _colours, _codes;
    PictureSize _stored;
};
