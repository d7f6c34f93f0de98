#pragma once

#include "platform/clock.h"

#include <array>
#include <cstddef>
#include <cstdint>

// The remembered cartridges as they are stored: five entries of 56 bytes, little-endian, no header.
// Bytes that no field covers are kept as they were read.
inline constexpr std::size_t kCartridgeEntries = 5;
inline constexpr std::size_t kCartridgeEntryBytes = 56;
inline constexpr std::size_t kCartridgeRecordBytes = kCartridgeEntries * kCartridgeEntryBytes;
inline constexpr std::uint32_t kCartridgeRecordVersion = 4;
inline constexpr std::uint32_t kNoCartridge = 0xFFFFFFFF;  // serial: unknown

enum class SnoozeSlot : int { Low = 0, VeryLow = 1, Out = 2 };

// What was shown once for a cartridge; the value is the flag's offset in the entry.
enum class CartridgeFlag : std::size_t {
    IllegalCartOccured = 24,
    NonQvCartOccured = 28,
    ElableMemErrOccured = 32,
    WelcomeShown = 36
};

class CartridgeRecord {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    // All entries free.
    void clear() noexcept { _bytes.fill(0); }

    // Index of the entry with this serial number, npos when there is none. 0 finds a free entry.
    [[nodiscard]] std::size_t find(std::uint32_t serial) const noexcept;
    // The entry for a new cartridge: the first free one, else the one added longest ago; among
    // equal times the lowest index.
    [[nodiscard]] std::size_t entryToReplace() const noexcept;
    // Gives an entry to a cartridge: no flags, no snoozes. The padding stays.
    void assign(std::size_t entry, std::uint32_t serial, platform::UnixSeconds added) noexcept;

    [[nodiscard]] std::uint32_t serialNumber(std::size_t entry) const noexcept;
    [[nodiscard]] platform::UnixSeconds added(std::size_t entry) const noexcept;
    [[nodiscard]] bool flag(std::size_t entry, CartridgeFlag flag) const noexcept;
    [[nodiscard]] bool anyFlag(std::size_t entry) const noexcept;
    void setFlag(std::size_t entry, CartridgeFlag flag) noexcept;
    // Time until which the alert of a slot is snoozed.
    [[nodiscard]] platform::UnixSeconds snooze(std::size_t entry, SnoozeSlot slot) const noexcept;
    // Any slot but the three stores nothing.
    void setSnooze(std::size_t entry, SnoozeSlot slot, platform::UnixSeconds until) noexcept;

    [[nodiscard]] unsigned char* bytes() noexcept { return _bytes.data(); }
    [[nodiscard]] const unsigned char* bytes() const noexcept { return _bytes.data(); }

private:
    std::array<unsigned char, kCartridgeRecordBytes> _bytes{};
};
