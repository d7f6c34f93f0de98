#pragma once

#include "arbor/key.h"

// Keys of the messages that the status channel sends: what a record says, under the names that
// every listener reads. Kept: see decision 0012.
namespace tern::message_key {

inline constexpr arbor::Key kSubcode(L"subcode");          // int, in every message
inline constexpr arbor::Key kStatus(L"status");            // int
inline constexpr arbor::Key kSeverity(L"severity");        // int
inline constexpr arbor::Key kJobId(L"jobID");              // int
inline constexpr arbor::Key kDocumentName(L"docName");     // text
inline constexpr arbor::Key kPrinterName(L"printerName");  // text
inline constexpr arbor::Key kPortName(L"portName");        // text
inline constexpr arbor::Key kCartridgeSerial(L"blackSN");  // int
inline constexpr arbor::Key kMediaType(L"mediaType");      // text
inline constexpr arbor::Key kOemMessages(L"oemMessages");  // pointer, the generator's block
inline constexpr arbor::Key kOemBytes(L"oembufferSize");   // int

}  // namespace tern::message_key
