#pragma once

// Keys of the messages that the status channel sends: what a record says, under the names that
// every listener reads. Kept: see decision 0012.
namespace tern::message_key {

inline constexpr wchar_t kSubcode[] = L"subcode";          // int, in every message
inline constexpr wchar_t kStatus[] = L"status";            // int
inline constexpr wchar_t kSeverity[] = L"severity";        // int
inline constexpr wchar_t kJobId[] = L"jobID";              // int
inline constexpr wchar_t kDocumentName[] = L"docName";     // text
inline constexpr wchar_t kPrinterName[] = L"printerName";  // text
inline constexpr wchar_t kPortName[] = L"portName";        // text
inline constexpr wchar_t kCartridgeSerial[] = L"blackSN";  // int
inline constexpr wchar_t kMediaType[] = L"mediaType";      // text
inline constexpr wchar_t kOemMessages[] = L"oemMessages";  // pointer, the generator's block
inline constexpr wchar_t kOemBytes[] = L"oembufferSize";   // int

}  // namespace tern::message_key
