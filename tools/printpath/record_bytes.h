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

// The header and the body of a record. `statedLength` is written as the length of the body instead
// of the true one, for records that are wrong on purpose.
std::string recordBytes(const RecordHeader& header, std::string_view body,
                        std::optional<std::uint32_t> statedLength = std::nullopt);

enum class WriteAs { OneMessage, HeaderAndBody, SingleBytes, Chunks };

// The messages in which `record` is written. `chunkBytes` is the size of the pieces for Chunks, and
// must not be zero.
std::vector<std::string> splitForWriting(const std::string& record, WriteAs as,
                                         std::size_t chunkBytes);

}  // namespace printpath
