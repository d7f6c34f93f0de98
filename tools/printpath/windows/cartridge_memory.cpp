#include "tools/printpath/windows/cartridge_memory.h"

#include "platform/clock.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/registry_values.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace printpath {

namespace {

constexpr wchar_t kKey[] = L"Software\\Corvane\\QVBL7400 SM";
constexpr wchar_t kRecord[] = L"CartData";
constexpr wchar_t kVersion[] = L"CartDataVer";
constexpr wchar_t kCurrent[] = L"CurrCart";
constexpr std::uint32_t kRecordVersion = 4;
constexpr double kSecondsPerHour = 3600.0;

// Offsets within one entry, in bytes.
constexpr std::size_t kEntries = 5;
constexpr std::size_t kEntryBytes = 56;
constexpr std::size_t kSerialAt = 0;
constexpr std::size_t kAddedAt = 8;
constexpr std::size_t kSnoozeLowAt = 16;
constexpr std::size_t kFlagsAt = 24;
constexpr std::size_t kFlags = 4;
constexpr std::size_t kSnoozeVeryLowAt = 40;
constexpr std::size_t kSnoozeOutAt = 48;

template <typename Number>
Number numberAt(const std::vector<std::uint8_t>& record, std::size_t at) {
    Number number{};
    std::memcpy(&number, record.data() + at, sizeof number);
    return number;
}

template <typename Number>
void putNumber(std::vector<std::uint8_t>& record, std::size_t at, Number number) {
    std::memcpy(record.data() + at, &number, sizeof number);
}

std::optional<std::vector<std::uint8_t>> wholeRecord() {
    auto record = readBytes(HKEY_CURRENT_USER, kKey, kRecord);
    if (!record || record->size() != kEntries * kEntryBytes) return std::nullopt;
    return record;
}

std::optional<std::size_t> entryOf(const std::vector<std::uint8_t>& record, std::uint32_t serial) {
    for (std::size_t at = 0; at < record.size(); at += kEntryBytes)
        if (numberAt<std::uint32_t>(record, at + kSerialAt) == serial) return at;
    return std::nullopt;
}

std::string hoursText(const char* name, std::int64_t until) {
    if (until == 0) return {};
    char text[64];
    std::snprintf(text, sizeof text, ", %s in %.1f h", name,
                  static_cast<double>(until - platform::now()) / kSecondsPerHour);
    return text;
}

}  // namespace

void forgetCartridges() {
    removeKey(HKEY_CURRENT_USER, kKey);
}

std::optional<RememberedCartridge> findCartridge(std::uint32_t serial) {
    const auto record = wholeRecord();
    const auto at = record ? entryOf(*record, serial) : std::nullopt;
    if (!at) return std::nullopt;
    RememberedCartridge cartridge;
    cartridge.serial = serial;
    cartridge.added = numberAt<std::int64_t>(*record, *at + kAddedAt);
    cartridge.snoozeLow = numberAt<std::int64_t>(*record, *at + kSnoozeLowAt);
    cartridge.snoozeVeryLow = numberAt<std::int64_t>(*record, *at + kSnoozeVeryLowAt);
    cartridge.snoozeOut = numberAt<std::int64_t>(*record, *at + kSnoozeOutAt);
    for (std::size_t flag = 0; flag < kFlags; ++flag)
        if (numberAt<std::uint32_t>(*record, *at + kFlagsAt + 4 * flag) != 0)
            cartridge.flags |= 1U << flag;
    return cartridge;
}

void rememberCartridge(const RememberedCartridge& cartridge) {
    std::vector<std::uint8_t> record =
        wholeRecord().value_or(std::vector<std::uint8_t>(kEntries * kEntryBytes));
    auto at = entryOf(record, cartridge.serial);
    if (!at) at = entryOf(record, 0);
    if (!at) throw Failure("five cartridges are remembered already", Outcome::Unusable);
    putNumber(record, *at + kSerialAt, cartridge.serial);
    putNumber(record, *at + kAddedAt, cartridge.added);
    putNumber(record, *at + kSnoozeLowAt, cartridge.snoozeLow);
    putNumber(record, *at + kSnoozeVeryLowAt, cartridge.snoozeVeryLow);
    putNumber(record, *at + kSnoozeOutAt, cartridge.snoozeOut);
    for (std::size_t flag = 0; flag < kFlags; ++flag)
        putNumber<std::uint32_t>(record, *at + kFlagsAt + 4 * flag, (cartridge.flags >> flag) & 1U);
    writeNumber(HKEY_CURRENT_USER, kKey, kVersion, kRecordVersion);
    writeBytes(HKEY_CURRENT_USER, kKey, kRecord, record);
}

void setCurrentCartridge(std::uint32_t serial) {
    writeNumber(HKEY_CURRENT_USER, kKey, kCurrent, serial);
}

std::uint32_t currentCartridge() {
    return readNumber(HKEY_CURRENT_USER, kKey, kCurrent).value_or(kUnknownCartridge);
}

void setCartridgeVersion(std::uint32_t version) {
    writeNumber(HKEY_CURRENT_USER, kKey, kVersion, version);
}

std::string describe(const RememberedCartridge& cartridge) {
    constexpr const char* kFlagNames[kFlags] = {"illegal", "foreign", "memory", "welcome"};
    std::string text = "serial " + std::to_string(cartridge.serial);
    text += hoursText("snooze-low", cartridge.snoozeLow);
    text += hoursText("snooze-very-low", cartridge.snoozeVeryLow);
    text += hoursText("snooze-out", cartridge.snoozeOut);
    std::string flags;
    for (std::size_t flag = 0; flag < kFlags; ++flag)
        if ((cartridge.flags >> flag) & 1U)
            flags += (flags.empty() ? "" : ",") + std::string(kFlagNames[flag]);
    return text + ", flags " + (flags.empty() ? "none" : flags);
}

}  // namespace printpath
