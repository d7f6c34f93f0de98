#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Records of the status channel, built byte by byte and independently of the code that reads them.
namespace records {

inline std::string number(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
    return bytes;
}

// The text with its terminating NUL.
inline std::string text(std::string_view characters) {
    return std::string(characters) + '\0';
}

inline std::string wideText(std::u16string_view units) {
    std::string bytes;
    for (const char16_t unit : units) {
        bytes += static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
        bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8));
    }
    return bytes + '\0' + '\0';
}

inline constexpr std::uint32_t kPrinter = 7;

inline std::string header(std::uint32_t recordClass, std::uint32_t subcode, std::uint32_t bodyBytes,
                          std::uint32_t printer = kPrinter) {
    return "VELO" + number(recordClass) + number(subcode) + number(printer) + number(bodyBytes);
}

inline std::string record(std::uint32_t recordClass, std::uint32_t subcode, std::string_view body,
                          std::uint32_t printer = kPrinter) {
    return header(recordClass, subcode, static_cast<std::uint32_t>(body.size()), printer)
        .append(body);
}

}  // namespace records
