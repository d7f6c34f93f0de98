#pragma once

#include <cstdint>
#include <optional>
#include <string>

// What the monitor remembers of cartridges in the registry of the current user. The layout is read
// and written here without the monitor's code, so that a scenario finds errors in that code.
namespace printpath {

inline constexpr std::uint32_t kUnknownCartridge = 0xFFFFFFFF;

// Times are seconds since 1970. The time 0 means that nothing is snoozed.
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

// Returns nothing when no entry has this serial number or the record is not complete.
std::optional<RememberedCartridge> findCartridge(std::uint32_t serial);
// Replaces the entry with the same serial number, or uses the first free entry. Throws Failure when
// all five entries belong to other cartridges.
void rememberCartridge(const RememberedCartridge& cartridge);

void setCurrentCartridge(std::uint32_t serial);
std::uint32_t currentCartridge();  // kUnknownCartridge when there is none
void setCartridgeVersion(std::uint32_t version);

// For messages: "serial 7, snooze-low in 336.0 h, flags welcome".
std::string describe(const RememberedCartridge& cartridge);

}  // namespace printpath
