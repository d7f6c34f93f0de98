#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// The records of the status channel, byte by byte: a header of 20 bytes, then a body whose layout
// the header's class and subcode select. All numbers are unsigned 32-bit, little-endian.
namespace tern {

inline constexpr std::size_t kVeloHeaderBytes = 20;
inline constexpr std::uint32_t kVeloMagic = 0x4F4C4556;  // "VELO" read little-endian

// Bytes of a body that are kept; the rest is read and dropped, so that a record with a huge length
// cannot use up the memory. Fuzzers use a small limit, which their short inputs can exceed.
#if defined(BEAMLINE_FUZZING)
inline constexpr std::uint32_t kVeloBodyLimit = 256;
#else
inline constexpr std::uint32_t kVeloBodyLimit = 1048576;
#endif

enum class RecordClass : std::uint32_t { Job = 0, Oem = 1, Status = 2 };

// Subcodes of RecordClass::Job
inline constexpr std::uint32_t kPrinterNarrow = 0;
inline constexpr std::uint32_t kPrinterWide = 1;
inline constexpr std::uint32_t kDocumentStartNarrow = 2;
inline constexpr std::uint32_t kDocumentStartWide = 3;
inline constexpr std::uint32_t kDocumentEnd = 4;
inline constexpr std::uint32_t kJobStatus = 5;

// Subcodes of RecordClass::Status
inline constexpr std::uint32_t kDeviceStatus = 3;
inline constexpr std::uint32_t kCartridgeReport = 11;
inline constexpr std::uint32_t kMediaReport = 18;

struct VeloHeader {
    std::uint32_t magic = 0;
    std::uint32_t recordClass = 0;
    std::uint32_t subcode = 0;
    std::uint32_t printerId = 0;
    std::uint32_t bodyBytes = 0;
};

using VeloHeaderBytes = std::array<unsigned char, kVeloHeaderBytes>;

// Little-endian number at `bytes`, which must have 4.
[[nodiscard]] inline std::uint32_t numberAt(const unsigned char* bytes) noexcept {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

[[nodiscard]] inline VeloHeader decodedHeader(const VeloHeaderBytes& bytes) noexcept {
    const unsigned char* at = bytes.data();
    return {numberAt(at), numberAt(at + 4), numberAt(at + 8), numberAt(at + 12), numberAt(at + 16)};
}
[[nodiscard]] VeloHeaderBytes encodedHeader(const VeloHeader& header) noexcept;

// A wide text of a body: UTF-16 units without the zero that ends them, at any address. Borrowed
// from the body.
struct VeloWideText {
    const unsigned char* bytes = nullptr;
    std::size_t units = 0;
};

// Reads fields from a body, in order, without gaps or alignment. Never reads past its end: a field
// that is not all there reads as its default and leaves the cursor where it was.
class VeloBody {
public:
    VeloBody() noexcept = default;
    // The bytes are borrowed; findValue writes into them.
    VeloBody(unsigned char* bytes, std::size_t count) noexcept
        : _cursor(bytes), _end(bytes + count) {}

    // Whether `count` more bytes lie between the cursor and the end.
    [[nodiscard]] bool hasInput(std::size_t count) const noexcept {
        return static_cast<std::size_t>(_end - _cursor) >= count;
    }
    // Text up to its NUL; an empty one when the NUL is missing. Borrowed from the body.
    [[nodiscard]] char* readText() noexcept;
    // UTF-16 text up to its zero unit; empty when that is missing.
    [[nodiscard]] VeloWideText readWText() noexcept;
    [[nodiscard]] std::uint32_t readNumber(std::uint32_t defaultValue) noexcept {
        if (!hasInput(kNumberBytes)) return defaultValue;
        const std::uint32_t value = numberAt(_cursor);
        _cursor += kNumberBytes;
        return value;
    }

private:
    static constexpr std::size_t kNumberBytes = 4;

    unsigned char* _cursor = nullptr;
    unsigned char* _end = nullptr;
};

// The value after `key` and "=" in a text of key=value lines, cut at its line feed; an empty text
// when there is none. Writes a NUL over the line feed. Borrowed from `text`.
[[nodiscard]] char* findValueIn(char* text, const char* key) noexcept;

inline constexpr std::size_t kMediaNameUnits = 80;  // of a name that is kept

// The quoted name after DISPLAY, "UNKNOWN" when it is empty. False when the text has no such name.
[[nodiscard]] bool findMediaName(const char* text, std::string& name);

}  // namespace tern
