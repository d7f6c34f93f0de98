#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Records of the status pipe as bytes, and the pieces in which they are written.
namespace printpath {

inline constexpr std::size_t kRecordHeaderBytes = 20;

struct RecordHeader {
    std::uint32_t recordClass = 0;
    std::uint32_t subcode = 0;
    std::uint32_t printerId = 0;
};

void appendNumber(std::string& body, std::uint32_t number);        // little-endian
void appendText(std::string& body, std::string_view narrow);       // with its NUL
void appendWideText(std::string& body, std::u16string_view wide);  // UTF-16LE with its NUL

// Header and body. `statedLength` is written as the length of the body when the record lies.
std::string recordBytes(const RecordHeader& header, std::string_view body,
                        std::optional<std::uint32_t> statedLength = std::nullopt);

enum class WriteAs { OneMessage, HeaderAndBody, SingleBytes, Chunks };

// The messages that carry `record`; `chunkBytes` counts for Chunks only and is at least 1.
std::vector<std::string> splitForWriting(const std::string& record, WriteAs as,
                                         std::size_t chunkBytes);

}  // namespace printpath
