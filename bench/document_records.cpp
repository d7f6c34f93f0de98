#include "bench/document_records.h"

#include "tern/velo_record.h"

#include <string_view>

namespace bench {

namespace {

constexpr std::uint32_t kJob = 0, kOem = 1, kStatus = 2;

std::string number(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
    return bytes;
}

std::string text(std::string_view letters) {
    return std::string(letters) + '\0';
}

std::string wideText(std::string_view letters) {
    std::string bytes;
    for (const char letter : letters) {
        bytes += letter;
        bytes += '\0';
    }
    return bytes + '\0' + '\0';
}

std::string record(std::uint32_t recordClass, std::uint32_t subcode, const std::string& body) {
    const auto header = tern::encodedHeader({tern::kVeloMagic, recordClass, subcode, kPrinterId,
                                             static_cast<std::uint32_t>(body.size())});
    return std::string(header.begin(), header.end()) + body;
}

}  // namespace

std::string documentRecords() {
    return record(kJob, tern::kPrinterNarrow, text("USB001") + text("Beamline K7400")) +
           record(kJob, tern::kPrinterWide, wideText("USB001") + wideText("Beamline K7400")) +
           record(kJob, tern::kDocumentStartWide, number(17) + wideText("Quarterly report.pdf")) +
           record(kStatus, tern::kMediaReport, text("@PJL INFO MEDIA\r\nDISPLAY = \"A4\"\r\n")) +
           record(kStatus, tern::kCartridgeReport,
                  text("Color=Black\nSerialNumber=20611943\nGenuine=1\n")) +
           record(kJob, tern::kJobStatus, number(0) + number(10001)) +
           record(kJob, tern::kJobStatus, number(3) + number(41150)) +
           record(kStatus, tern::kDeviceStatus, number(10001)) +
           record(kOem, 0, std::string(64, 'x')) + record(kJob, tern::kDocumentEnd, number(17));
}

}  // namespace bench
