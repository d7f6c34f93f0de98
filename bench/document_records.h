#pragma once

#include <string>

namespace bench {

// What the print path writes for one document: the printer, the document, its status until the
// paper is out, cartridge and media reports, a block of the device, the end. Ten records.
[[nodiscard]] std::string documentRecords();

inline constexpr std::uint32_t kPrinterId = 7400;

}  // namespace bench
