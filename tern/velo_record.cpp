#include "tern/velo_record.h"

#include <cstring>

namespace tern {

namespace {

constexpr std::size_t kNumberBytes = 4;
constexpr std::size_t kWideUnitBytes = 2;
// Characters from the D of DISPLAY to the quote: the word, a blank, an equals sign and a blank.
constexpr std::size_t kQuoteReach = 10;
constexpr char kQuote = '"';

// The value of a missing text. findValueIn never writes into it, because it has no line feed.
char* emptyText() noexcept {
    static char empty[1] = {};  // Equally right with 2: one byte of room more.
    return empty;
}

void putNumber(unsigned char* bytes, std::uint32_t value) noexcept {
    for (std::size_t index = 0; index < kNumberBytes; ++index) {
        bytes[index] = static_cast<unsigned char>(value >> (8 * index));
    }
}

}  // namespace

VeloHeaderBytes encodedHeader(const VeloHeader& header) noexcept {
    VeloHeaderBytes bytes;
    unsigned char* at = bytes.data();
    for (const std::uint32_t number :
         {header.magic, header.recordClass, header.subcode, header.printerId, header.bodyBytes}) {
        putNumber(at, number);
        at += kNumberBytes;
    }
    return bytes;
}

char* VeloBody::readText() noexcept {
    if (!hasInput(1)) return emptyText();
    auto* nul = static_cast<unsigned char*>(
        std::memchr(_cursor, 0, static_cast<std::size_t>(_end - _cursor)));
    if (nul == nullptr) return emptyText();
    auto* text = reinterpret_cast<char*>(_cursor);
    _cursor = nul + 1;
    return text;
}

VeloWideText VeloBody::readWText() noexcept {
    // Unit by unit from bytes: texts in a body are not aligned.
    const auto isZero = [this](std::size_t unit) {
        const unsigned char* at = _cursor + unit * kWideUnitBytes;
        return (at[0] | at[1] << 8) == 0;
    };
    const std::size_t most = static_cast<std::size_t>(_end - _cursor) / kWideUnitBytes;
    std::size_t units = 0;
    while (units < most && !isZero(units))
        ++units;
    if (units == most) return {};

    const unsigned char* text = _cursor;
    _cursor += (units + 1) * kWideUnitBytes;
    return {text, units};
}

char* findValueIn(char* text, const char* key) noexcept {
    char* place = std::strstr(text, key);
    if (place == nullptr) return emptyText();
    char* equals = std::strchr(place, '=');
    if (equals == nullptr) return emptyText();
    char* value = equals + 1;
    char* lineFeed = std::strchr(value, '\n');
    if (lineFeed != nullptr) *lineFeed = '\0';
    return value;
}

bool findMediaName(const char* text, std::string& name) {
    const char* display = std::strstr(text, "DISPLAY");
    if (display == nullptr) return false;
    const char* quote = std::strchr(display, kQuote);
    if (quote == nullptr || static_cast<std::size_t>(quote - display) > kQuoteReach) return false;

    name.clear();
    for (const char* at = quote + 1; *at != '\0' && *at != kQuote; ++at) {
        if (name.size() == kMediaNameUnits) break;
        name += *at;
    }
    if (name.empty()) name = "UNKNOWN";
    return true;
}

}  // namespace tern
