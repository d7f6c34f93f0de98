#pragma once

#include <cstdint>

// The printer's status codes, each named for what the user is told about it. Where several codes
// mean the same to the user, the name ends with the number. Kept: see decision 0012.
namespace status_code {

inline constexpr std::int32_t kNewCartridge = 1;
inline constexpr std::int32_t kControlPanelMessage = 277;

inline constexpr std::int32_t kTonerLow = 10209;
inline constexpr std::int32_t kTonerVeryLow = 10219;
inline constexpr std::int32_t kTonerOutBlack = 10300;
inline constexpr std::int32_t kNonQvCartridge10403 = 10403;
inline constexpr std::int32_t kNonQvCartridge10407 = 10407;
inline constexpr std::int32_t kReseatCartridge = 10500;
inline constexpr std::int32_t kInstallQvCartridge = 10511;
inline constexpr std::int32_t kIllegalCartridge = 10512;
// A printer whose settings switch errors off is silent from this code on.
inline constexpr std::int32_t kFirstError = kNonQvCartridge10403;

inline constexpr std::int32_t kCartridgeNotRecognized30017 = 30017;
inline constexpr std::int32_t kManualFeed30119 = 30119;
inline constexpr std::int32_t kPageNotFinished = 30201;

inline constexpr std::int32_t kCartridgeNotRecognized40010 = 40010;
inline constexpr std::int32_t kCartridgeMemoryError = 40017;
inline constexpr std::int32_t kDoorOpen = 40020;
inline constexpr std::int32_t kCartridgeDoorOpen = 40021;
inline constexpr std::int32_t kManualDuplex40120 = 40120;
inline constexpr std::int32_t kManualDuplex40121 = 40121;
inline constexpr std::int32_t kNoCartridge = 40600;
inline constexpr std::int32_t kUsedCartridge40608 = 40608;
inline constexpr std::int32_t kUsedCartridge40610 = 40610;
inline constexpr std::int32_t kUsedCartridge40612 = 40612;
inline constexpr std::int32_t kUsedCartridge40614 = 40614;
inline constexpr std::int32_t kCartridgeNotAccepted = 40625;

// Three ranges of codes ask for media and one reports empty trays. 41200 and 41300 are in none.
inline constexpr std::int32_t kFirstLoadMedia = 41000;
inline constexpr std::int32_t kLastLoadMedia = 41099;
inline constexpr std::int32_t kFirstPaperOut = 41100;
inline constexpr std::int32_t kLastPaperOut = 41199;
inline constexpr std::int32_t kFirstLoadMedia412 = 41201;
inline constexpr std::int32_t kLastLoadMedia412 = 41299;
inline constexpr std::int32_t kFirstLoadMedia413 = 41301;
inline constexpr std::int32_t kLastLoadMedia413 = 41399;
inline constexpr std::int32_t kManualFeed41900 = 41900;

inline constexpr std::int32_t kJamInside42000 = 42000;
inline constexpr std::int32_t kTrayJam = 42001;
inline constexpr std::int32_t kRearJam = 42002;
inline constexpr std::int32_t kDuplexJam42003 = 42003;
inline constexpr std::int32_t kDuplexJam42004 = 42004;
inline constexpr std::int32_t kJamInside42100 = 42100;
inline constexpr std::int32_t kJamInside42300 = 42300;

inline constexpr std::int32_t kFuser = 50003;
inline constexpr std::int32_t kLaserScanner = 50005;
inline constexpr std::int32_t kFan = 50006;
inline constexpr std::int32_t kCommunication = 50007;
inline constexpr std::int32_t kFuserNotWarm = 50008;
inline constexpr std::int32_t kLaserBeam = 50012;
inline constexpr std::int32_t kPaperFeed = 50020;
inline constexpr std::int32_t kInternalError50021 = 50021;
inline constexpr std::int32_t kInternalError50023 = 50023;
inline constexpr std::int32_t kInternalError50024 = 50024;
inline constexpr std::int32_t kPrintEngine = 50025;

inline constexpr std::int32_t kFaxPrinted = 100000;
inline constexpr std::int32_t kFaxInCompanion = 100001;

}  // namespace status_code

// Subcodes of a status record that ask for something else than the alert of their status. The third
// one, the cartridge report, has a body of its own and stands with the record format.
namespace status_subcode {

inline constexpr std::int32_t kNewCartridge = 1;
inline constexpr std::int32_t kPressCancel = 19;  // press the button "cancel" of the device

}  // namespace status_subcode
