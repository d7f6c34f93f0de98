#pragma once

#include "arbor/guid.h"

#include <cstdint>

// What an alert tells the listener: the codes of its action messages, all of one type. A command
// that no rule of the alert takes is sent with its own control id. The numbers are kept: see
// decision 0012.
namespace alert_action {

inline constexpr arbor::Guid kMessageType{
    0xAC228C61, 0xC246, 0x411B, {0xB2, 0x34, 0x7F, 0x59, 0x23, 0x4B, 0x70, 0xF2}};

inline constexpr std::uint32_t kCancel = 1;
inline constexpr std::uint32_t kAccept = 2;
inline constexpr std::uint32_t kContinue = 3;  // key C on an alert with a caption of its own
inline constexpr std::uint32_t kHelp = 4;      // of the plain dialog only
inline constexpr std::uint32_t kClosed = 5;    // the window was closed
inline constexpr std::uint32_t kShopLink = 6;  // these three: links of the plain dialog
inline constexpr std::uint32_t kReturnsLink = 7;
inline constexpr std::uint32_t kFraudLink = 8;
inline constexpr std::uint32_t kAnticounterfeit = 100;
inline constexpr std::uint32_t kRecycle = 101;
inline constexpr std::uint32_t kCheckCartridge = 102;
inline constexpr std::uint32_t kShop = 104;
inline constexpr std::uint32_t kOpenFax = 1012;  // the detail text as a link
inline constexpr std::uint32_t kCompact = 90001;
inline constexpr std::uint32_t kCompactWithLink = 90002;
inline constexpr std::uint32_t kHasDetail = 90003;
inline constexpr std::uint32_t kHasSnoozePrompt = 90004;
inline constexpr std::uint32_t kHasSnoozeLabel = 90005;

}  // namespace alert_action

// What such a message carries.
namespace alert_action_key {

inline constexpr wchar_t kDialog[] = L"statusdialog";      // pointer: the alert's object
inline constexpr wchar_t kWindow[] = L"statusdialoghwnd";  // pointer: its window, null for most
inline constexpr wchar_t kWord[] = L"wparam";
inline constexpr wchar_t kLong[] = L"lparam";

}  // namespace alert_action_key
