#include "ui/stored_picture.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

constexpr int kStoredDpi = 192;
// The sums of a picture's colours fit into 32 bits up to this width and height.
constexpr std::uint32_t kLongestSide = 4096;

// The header of a bitmap, whose numbers are little-endian.
constexpr std::size_t kHeaderBytes = 40, kColourBytes = 4;
constexpr std::size_t kWidthAt = 4, kHeightAt = 8, kPlanesAndBitsAt = 12, kCodingAt = 16;
constexpr std::size_t kColourCountAt = 32;
constexpr std::uint32_t kOnePlaneOfBytes = 8 << 16 | 1, kRunLengths = 1;
constexpr std::uint32_t kMostColours = 256;
constexpr Rgb kColourBits = 0xFFFFFF;
using ColourTable = std::array<Rgb, kMostColours>;

// What may follow a count of 0. Greater values count pixels that stand one by one, and the end of
// the picture has a value of its own that need not be known.
constexpr std::uint8_t kEndOfLine = 0, kEndOfPicture = 1, kJump = 2;

std::uint32_t numberAt(std::span<const std::uint8_t> bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = sizeof(number); i-- > 0;)
        number = number << 8 | bytes[at + i];
    return number;
}

int scaled(int stored, int dpi) {
    return (stored * dpi + kStoredDpi / 2) / kStoredDpi;
}

// Reads the lines of a picture from the bottom up, which is the order of its codes.
class LineReader {
public:
    explicit LineReader(std::span<const std::uint8_t> codes) noexcept : _codes(codes) {}

    // Pixels for which there is no code get the first colour.
    void read(std::span<std::uint8_t> line) noexcept {
        std::ranges::fill(line, std::uint8_t{0});
        auto rest = line;
        while (!_isEnded) {
            const std::uint8_t count = next();
            const std::uint8_t value = next();
            if (count > 0) {
                std::ranges::fill(take(rest, count), value);
            } else if (value == kEndOfLine) {
                return;
            } else if (value == kEndOfPicture || value == kJump) {
                _isEnded = true;  // the build refuses pictures with jumps
            } else {
                for (std::size_t i = 0; i < value; ++i)
                    std::ranges::fill(take(rest, 1), next());
                if (value % 2 != 0) next();  // codes begin at even places
            }
        }
    }

private:
    std::uint8_t next() noexcept {
        if (_at < _codes.size()) return _codes[_at++];
        _isEnded = true;
        return kEndOfLine;
    }
    static std::span<std::uint8_t> take(std::span<std::uint8_t>& rest, std::size_t count) noexcept {
        const auto taken = rest.first(std::min(count, rest.size()));
        rest = rest.subspan(taken.size());
        return taken;
    }

    std::span<const std::uint8_t> _codes;
    std::size_t _at = 0;
    bool _isEnded = false;
};

// A sum of colours, each of them taken a number of times.
struct ColourSum {
    std::uint32_t red = 0, green = 0, blue = 0;

    void add(Rgb colour, std::uint32_t times) noexcept {
        red += (colour >> 16 & 0xFF) * times;
        green += (colour >> 8 & 0xFF) * times;
        blue += (colour & 0xFF) * times;
    }
    void add(const ColourSum& other, std::uint32_t times) noexcept {
        red += other.red * times;
        green += other.green * times;
        blue += other.blue * times;
    }
    [[nodiscard]] Rgb mean(std::uint32_t count) const noexcept {
        const std::uint32_t half = count / 2;
        return (red + half) / count << 16 | (green + half) / count << 8 | (blue + half) / count;
    }
};

// Which old pixels lie under the new pixel `at` when `oldCount` pixels become `newCount`, and how
// much of each: an old pixel is cut into `newCount` parts, and a new one covers `oldCount` of them.
template <typename Use>
void forEachUnder(int at, int newCount, int oldCount, Use use) {
    const int first = at * oldCount, last = first + oldCount;
    for (int old = first / newCount; old * newCount < last; ++old) {
        const int parts = std::min(last, (old + 1) * newCount) - std::max(first, old * newCount);
        use(old, static_cast<std::uint32_t>(parts));
    }
}

// The lines of a picture from the bottom up, each averaged to a new width. One is decoded at a
// time: a whole picture in its stored size would be half a megabyte.
class NarrowedLines {
public:
    NarrowedLines(LineReader reader, const ColourTable& table, int width, int newWidth)
        : _reader(reader),
          _table(table),
          _line(static_cast<std::size_t>(width)),
          _sums(static_cast<std::size_t>(newWidth)) {}

    // The sums of the line `index`, which is the one of the last call or the next.
    const std::vector<ColourSum>& at(int index) {
        if (index < _linesRead) return _sums;
        _reader.read(_line);
        ++_linesRead;
        const auto width = static_cast<int>(_line.size());
        const auto newWidth = static_cast<int>(_sums.size());
        for (int x = 0; x < newWidth; ++x) {
            ColourSum& sum = _sums[static_cast<std::size_t>(x)] = {};
            forEachUnder(x, newWidth, width, [&](int old, std::uint32_t parts) {
                sum.add(_table[_line[static_cast<std::size_t>(old)]], parts);
            });
        }
        return _sums;
    }

private:
    LineReader _reader;
    const ColourTable& _table;
    std::vector<std::uint8_t> _line;
    std::vector<ColourSum> _sums;
    int _linesRead = 0;
};

ColourTable tableOf(std::span<const std::uint8_t> colours, Rgb face) {
    ColourTable table{};
    for (std::size_t i = 0; i * kColourBytes < colours.size(); ++i) {
        const Rgb colour = numberAt(colours, i * kColourBytes) & kColourBits;
        table[i] = colour == kFaceColour ? face : colour;
    }
    return table;
}

}  // namespace

void ScaledPicture::addLine(std::span<const Rgb> line) {
    for (auto at = line.begin(); at != line.end();) {
        const Rgb colour = *at;
        const auto end = std::find_if(at, line.end(), [=](Rgb other) { return other != colour; });
        _runs.push_back({colour, static_cast<std::uint32_t>(end - at)});
        at = end;
    }
}

std::vector<Rgb> ScaledPicture::pixels() const {
    const auto width = static_cast<std::size_t>(_size.width);
    std::vector<Rgb> pixels(width * static_cast<std::size_t>(_size.height));
    auto run = _runs.begin();
    for (std::size_t line = pixels.size(); line > 0; line -= width) {
        for (std::size_t x = line - width; x < line; x += run++->length)
            std::fill_n(pixels.begin() + static_cast<std::ptrdiff_t>(x), run->length, run->colour);
    }
    return pixels;
}

StoredPicture::StoredPicture(std::span<const std::uint8_t> bitmap) noexcept {
    if (bitmap.size() < kHeaderBytes || numberAt(bitmap, 0) != kHeaderBytes ||
        numberAt(bitmap, kPlanesAndBitsAt) != kOnePlaneOfBytes ||
        numberAt(bitmap, kCodingAt) != kRunLengths) {
        return;
    }
    const std::uint32_t width = numberAt(bitmap, kWidthAt), height = numberAt(bitmap, kHeightAt);
    if (width > kLongestSide || height > kLongestSide) return;
    const std::uint32_t counted = numberAt(bitmap, kColourCountAt);
    const std::size_t colours = counted == 0 ? kMostColours : counted;
    const auto rest = bitmap.subspan(kHeaderBytes);
    if (colours > kMostColours || colours * kColourBytes > rest.size()) return;
    _colours = rest.first(colours * kColourBytes);
    _codes = rest.subspan(_colours.size());
    _stored = {static_cast<int>(width), static_cast<int>(height)};
}

PictureSize StoredPicture::sizeAt(int dpi) const noexcept {
    return {scaled(_stored.width, dpi), scaled(_stored.height, dpi)};
}

ScaledPicture StoredPicture::scaledFor(int dpi, Rgb face) const {
    const PictureSize size = sizeAt(dpi);
    const auto width = static_cast<std::size_t>(size.width);
    const auto storedPixels = static_cast<std::uint32_t>(_stored.width * _stored.height);
    const ColourTable table = tableOf(_colours, face);
    NarrowedLines lines(LineReader(_codes), table, _stored.width, size.width);
    std::vector<ColourSum> sums(width);
    std::vector<Rgb> line(width);
    ScaledPicture result(size);
    for (int y = 0; y < size.height; ++y) {  // from the bottom
        std::ranges::fill(sums, ColourSum{});
        forEachUnder(y, size.height, _stored.height, [&](int old, std::uint32_t parts) {
            const std::vector<ColourSum>& narrowed = lines.at(old);
            for (std::size_t x = 0; x < width; ++x)
                sums[x].add(narrowed[x], parts);
        });
        std::ranges::transform(sums, line.begin(),
                               [&](const ColourSum& sum) { return sum.mean(storedPixels); });
        result.addLine(line);
    }
    return result;
}
