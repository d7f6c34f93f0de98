#pragma once

#include <cstdint>
#include <string>

// What the print path of the soak writes: records of whole documents, in an order that depends on
// counters only, so that every run writes the same.
namespace soak {

inline constexpr std::uint32_t kPrinterId = 7;
inline constexpr char kPrinterName[] = "Beamline Soak";

std::string printerRecord();
std::string documentStart(std::uint32_t job);
std::string documentEnd(std::uint32_t job);
std::string statusRecord(std::uint32_t status);
std::string cartridgeRecord(std::uint32_t serial);

// A record that opens nothing: quiet states, blocks of every size, media, records for another
// printer, of unknown kinds and with short bodies.
std::string quietRecord(std::uint64_t number);

struct Alert {
    std::uint32_t status;
    int type;  // one alert of a type is open at a time
};

inline constexpr std::uint64_t kAlertsOfDocuments = 26;
// An alert that goes with its document.
Alert alertOfDocument(std::uint64_t number);
// The same, of those that end nothing when the user closes them: closing a fax ends the document.
Alert alertForTheUser(std::uint64_t number);
inline constexpr std::uint64_t kLastingAlerts = 9;
// Two of them do not open for a cartridge that had one of the others.
inline constexpr std::uint64_t kLastingAtOnce = 7;
// An alert about the cartridge or what is wrong with it, which stays until the user closes it. Each
// opens once for a new cartridge.
std::uint32_t lastingAlert(std::uint64_t number);
// Stays open and holds the monitor while documents end. Of a type that no other alert here has.
inline constexpr std::uint32_t kAnchor = 40600;

}  // namespace soak
