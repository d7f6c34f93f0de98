#include "tools/printpath/record_bytes.h"

namespace printpath {

void appendNumber(std::string& body, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8)
        body += static_cast<char>((number >> shift) & 0xFF);
}

void appendText(std::string& body, std::string_view narrow) {
    body += narrow;
    body += '\0';
}

void appendWideText(std::string& body, std::u16string_view wide) {
    for (const char16_t unit : wide) {
        body += static_cast<char>(unit & 0xFF);
        body += static_cast<char>(unit >> 8);
    }
    body.append(2, '\0');
}

std::string recordBytes(const RecordHeader& header, std::string_view body,
                        std::optional<std::uint32_t> statedLength) {
    std::string record = "VELO";
    appendNumber(record, header.recordClass);
    appendNumber(record, header.subcode);
    appendNumber(record, header.printerId);
    appendNumber(record, statedLength.value_or(static_cast<std::uint32_t>(body.size())));
    record += body;
    return record;
}

std::vector<std::string> splitForWriting(const std::string& record, WriteAs as,
                                         std::size_t chunkBytes) {
    if (as == WriteAs::OneMessage || record.empty()) return {record};
    std::size_t pieceBytes = as == WriteAs::SingleBytes ? 1 : chunkBytes;
    std::vector<std::string> pieces;
    std::size_t at = 0;
    if (as == WriteAs::HeaderAndBody) {
        pieces.push_back(record.substr(0, kRecordHeaderBytes));
        at = pieces.back().size();
        pieceBytes = record.size();
    }
    for (; at < record.size(); at += pieceBytes)
        pieces.push_back(record.substr(at, pieceBytes));
    return pieces;
}

}  // namespace printpath
