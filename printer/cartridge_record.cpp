#include "printer/cartridge_record.h"

#include <optional>
#include <type_traits>

namespace {

// Offsets of the fields in an entry. Kept: see decision 0012. Bytes 4 to 7 belong to no field: they
// align the times that follow.
constexpr std::size_t kSerialNumber = 0;  // 4 bytes, 0: free entry
constexpr std::size_t kAdded = 8;         // 8 bytes, like every time
constexpr std::size_t kSnoozeLow = 16;
constexpr std::size_t kSnoozeVeryLow = 40;
constexpr std::size_t kSnoozeOut = 48;
constexpr std::size_t kFirstClearedByAssign = kSnoozeLow;  // to the end of the entry
static_assert(kSnoozeOut + sizeof(platform::UnixSeconds) == kCartridgeEntryBytes);

constexpr std::uint32_t kFreeEntry = 0;
constexpr std::uint32_t kFlagSet = 1;
constexpr unsigned kBitsPerByte = 8;
constexpr unsigned kByteMask = 0xFF;

constexpr CartridgeFlag kFlags[] = {
    CartridgeFlag::IllegalCartOccured, CartridgeFlag::NonQvCartOccured,
    CartridgeFlag::ElableMemErrOccured, CartridgeFlag::WelcomeShown};

// Byte by byte, because the record is little-endian and its fields need not be aligned in memory.
template <typename Number>
Number readNumber(const unsigned char* from) noexcept {
    // Equally right with 1: the bytes that follow push every bit of it out.
    std::make_unsigned_t<Number> value = 0;
    for (std::size_t i = sizeof value; i-- > 0;) {
        value = static_cast<std::make_unsigned_t<Number>>((value << kBitsPerByte) | from[i]);
    }
    return static_cast<Number>(value);
}

template <typename Number>
void writeNumber(unsigned char* to, Number number) noexcept {
    auto value = static_cast<std::make_unsigned_t<Number>>(number);
    for (std::size_t i = 0; i < sizeof value; ++i) {
        to[i] = static_cast<unsigned char>(value & kByteMask);
        value >>= kBitsPerByte;
    }
}

constexpr std::size_t offsetOf(std::size_t entry, std::size_t field) noexcept {
    return entry * kCartridgeEntryBytes + field;
}

// Nothing for a value that is no slot. A caller may have made the slot from any number, and a write
// at a wrong offset would damage another field.
std::optional<std::size_t> fieldOf(SnoozeSlot slot) noexcept {
    switch (slot) {
        case SnoozeSlot::Low:
            return kSnoozeLow;
        case SnoozeSlot::VeryLow:
            return kSnoozeVeryLow;
        case SnoozeSlot::Out:
            return kSnoozeOut;
    }
    return std::nullopt;
}

}  // namespace

std::size_t CartridgeRecord::find(std::uint32_t serial) const noexcept {
    for (std::size_t entry = 0; entry < kCartridgeEntries; ++entry) {
        if (serialNumber(entry) == serial) return entry;
    }
    return npos;
}

std::size_t CartridgeRecord::entryToReplace() const noexcept {
    std::size_t oldest = 0;
    for (std::size_t entry = 0; entry < kCartridgeEntries; ++entry) {
        if (serialNumber(entry) == kFreeEntry) return entry;
        if (added(entry) < added(oldest)) oldest = entry;
    }
    return oldest;
}

void CartridgeRecord::assign(std::size_t entry, std::uint32_t serial,
                             platform::UnixSeconds added) noexcept {
    writeNumber(&_bytes[offsetOf(entry, kSerialNumber)], serial);
    writeNumber(&_bytes[offsetOf(entry, kAdded)], added);
    for (std::size_t at = kFirstClearedByAssign; at < kCartridgeEntryBytes; ++at) {
        _bytes[offsetOf(entry, at)] = 0;
    }
}

std::uint32_t CartridgeRecord::serialNumber(std::size_t entry) const noexcept {
    return readNumber<std::uint32_t>(&_bytes[offsetOf(entry, kSerialNumber)]);
}

platform::UnixSeconds CartridgeRecord::added(std::size_t entry) const noexcept {
    return readNumber<platform::UnixSeconds>(&_bytes[offsetOf(entry, kAdded)]);
}

bool CartridgeRecord::flag(std::size_t entry, CartridgeFlag flag) const noexcept {
    return readNumber<std::uint32_t>(&_bytes[offsetOf(entry, static_cast<std::size_t>(flag))]) != 0;
}

bool CartridgeRecord::anyFlag(std::size_t entry) const noexcept {
    for (const CartridgeFlag one : kFlags) {
        if (flag(entry, one)) return true;
    }
    return false;
}

void CartridgeRecord::setFlag(std::size_t entry, CartridgeFlag flag) noexcept {
    writeNumber(&_bytes[offsetOf(entry, static_cast<std::size_t>(flag))], kFlagSet);
}

platform::UnixSeconds CartridgeRecord::snooze(std::size_t entry, SnoozeSlot slot) const noexcept {
    const std::optional<std::size_t> field = fieldOf(slot);
    return field ? readNumber<platform::UnixSeconds>(&_bytes[offsetOf(entry, *field)]) : 0;
}

void CartridgeRecord::setSnooze(std::size_t entry, SnoozeSlot slot,
                                platform::UnixSeconds until) noexcept {
    const std::optional<std::size_t> field = fieldOf(slot);
    if (field) writeNumber(&_bytes[offsetOf(entry, *field)], until);
}
