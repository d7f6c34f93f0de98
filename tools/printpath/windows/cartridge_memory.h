#pragma once

#include <cstdint>
#include <optional>
#include <string>

// What the monitor remembers of cartridges in the registry of the current user. Reads and writes
// the layout on its own, so that a scenario does not believe the monitor's own code.
namespace printpath {

inline constexpr std::uint32_t kUnknownCartridge = 0xFFFFFFFF;

// Times in seconds since 1970; 0 snoozes nothing.
struct RememberedCartridge {
    std::uint32_t serial = 0;
    std::int64_t added = 0;
    std::int64_t snoozeLow = 0;
    std::int64_t snoozeVeryLow = 0;
    std::int64_t snoozeOut = 0;
    unsigned int flags = 0;  // bit 0 illegal, 1 foreign, 2 memory, 3 welcome
};

// Removes everything that the monitor remembers for this user.
void forgetCartridges();

// Nothing when no entry has the serial number or the record is not whole.
std::optional<RememberedCartridge> findCartridge(std::uint32_t serial);
// Puts the entry in place of one with its serial number, else into the first free one. Throws
// Failure when all five are taken.
void rememberCartridge(const RememberedCartridge& cartridge);

void setCurrentCartridge(std::uint32_t serial);
std::uint32_t currentCartridge();  // kUnknownCartridge when there is none
void setCartridgeVersion(std::uint32_t version);

std::int64_t secondsSince1970();
// "serial 7, snooze-low in 336.0 h, flags welcome": for messages.
std::string describe(const RememberedCartridge& cartridge);

}  // namespace printpath
