#pragma once

#include <cstdint>

// The kinds of alert: what the printer may have to tell its user. The number is what the
// description of an alert carries as its "dialog type"; 13 was never given to an alert. The numbers
// are kept: see decision 0012.
enum class AlertType : std::uint32_t {
    PaperOut = 0,
    LoadMedia = 1,
    ManualFeed = 2,
    ManualDuplex = 3,
    TonerLow = 4,
    NoCartridge = 5,
    IllegalCartridge = 6,
    NonQvCartridge = 7,
    CartridgeMemoryError = 8,
    InternalError = 9,
    LaserBeam = 10,
    PageNotFinished = 11,
    PaperFeed = 12,
    Fuser = 14,
    Communication = 15,
    FuserNotWarm = 16,
    PrintEngine = 17,
    LaserScanner = 18,
    DoorOpen = 19,
    CartridgeDoorOpen = 20,
    RearJam = 21,
    JamInside = 22,
    TrayJam = 23,
    UsedCartridge = 24,
    Welcome = 25,  // a new cartridge
    FaxPrinted = 26,
    FaxInCompanion = 27,  // with a link that opens the fax in the companion application
    GenericStatus = 28,   // a status with a text and no alert of its own
    CartridgeNotRecognized = 29,
    TonerVeryLow = 30,
    TonerOut = 31,
    CartridgeNotAccepted = 32,

    None = 0xFFFFFFFF  // what a lookup tells when there is no such alert
};
