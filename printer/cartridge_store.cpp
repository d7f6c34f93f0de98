#include "printer/cartridge_store.h"

#include "platform/clock.h"
#include "platform/native_handle.h"
#include "platform/registry.h"
#include "platform/trace.h"
#include "printer/registry_keys.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

using platform::Hive;
using platform::RegistryKey;
using platform::UnixSeconds;
using platform::ValueType;

namespace {

// Names of registry values. Kept: see decision 0012.
constexpr wchar_t kCurrentValue[] = L"CurrCart";
constexpr wchar_t kVersionValue[] = L"CartDataVer";
constexpr wchar_t kRecordValue[] = L"CartData";

// A cartridge without an entry is added in the first round and found in the second. There is no
// third: when the registry does not keep the entry, trying again would not help.
constexpr int kRounds = 2;

constexpr std::int64_t kSecondsPerHour = 3600;

// By the index in the snooze list of an alert. Line 0 of the list is the prompt.
struct SnoozeChoice {
    int index;
    std::int64_t hours;
};
constexpr SnoozeChoice kSnoozeChoices[] = {
    {1, 1}, {2, 4}, {3, 24}, {4, 48}, {5, 72}, {6, 168}, {7, kTwoWeeksInHours}, {8, kNeverInHours}};

struct TypeSlot {
    AlertType type;
    SnoozeSlot slot;
};
constexpr TypeSlot kTypeSlots[] = {{AlertType::TonerVeryLow, SnoozeSlot::VeryLow},
                                   {AlertType::TonerOut, SnoozeSlot::Out}};

// The trace formats take signed numbers (kept: see decision 0012); serial numbers are unsigned.
int shown(std::uint32_t number) {
    return static_cast<int>(number);
}

bool readDword(const RegistryKey& key, const wchar_t* name, std::uint32_t& value) {
    std::uint32_t read = 0;  // Equally right with 1: it is used only after a read has filled it.
    std::uint32_t bytes = sizeof read;
    ValueType type = ValueType::None;
    if (key.read(name, type, &read, bytes) != platform::kSuccess) return false;
    if (type != ValueType::Dword || bytes != sizeof read) return false;
    value = read;
    return true;
}

bool writeDword(RegistryKey& key, const wchar_t* name, std::uint32_t value) {
    return key.write(name, ValueType::Dword, &value, sizeof value) == platform::kSuccess;
}

// True when a record of our version was read: all of it, or as much as there is.
bool readRecord(CartridgeRecord& record) {
    RegistryKey key;
    if (key.openForReading(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess) {
        return false;
    }
    std::uint32_t version = 0;
    if (!readDword(key, kVersionValue, version)) return false;
    if (version != kCartridgeRecordVersion) {
        platform::trace("TERNA GetCartData -- Version missmatch saved=%d, current=%d",
                        shown(version), shown(kCartridgeRecordVersion));
        return false;
    }
    ValueType type = ValueType::None;
    auto bytes = static_cast<std::uint32_t>(kCartridgeRecordBytes);
    return key.read(kRecordValue, type, record.bytes(), bytes) == platform::kSuccess &&
           type == ValueType::Binary;
}

// A registry value, of any type, as it stood before a write. It is put back when what belongs to
// the same change could not be written.
class FormerValue {
public:
    FormerValue(const RegistryKey& key, const wchar_t* name)
        : _name(name), _error(key.read(name, _type, _content.data(), _bytes)) {}

    // An absent value becomes absent again. One that could not be read is left alone: nobody knows
    // what to put back. Best effort, because there is nothing more to do when this fails too.
    void putBack(RegistryKey& key) const {
        if (_error == platform::kSuccess) {
            static_cast<void>(key.write(_name, _type, _content.data(), _bytes));
        } else if (_error == platform::kFileNotFound) {
            static_cast<void>(key.remove(_name));
        }
    }

private:
    const wchar_t* _name;
    std::array<unsigned char, 64> _content{};
    std::uint32_t _bytes = sizeof _content;
    ValueType _type = ValueType::None;
    std::uint32_t _error;  // declared last: reading it fills the members above
};

// Writes the version first, then the record. When the record cannot follow, the version is put
// back: otherwise a record of another version would pass for one of ours at the next start.
bool saveRecord(const CartridgeRecord& record) {
    RegistryKey key;
    if (key.createForWriting(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess) {
        return false;
    }
    const FormerValue versionBefore(key, kVersionValue);
    if (!writeDword(key, kVersionValue, kCartridgeRecordVersion)) return false;
    if (key.write(kRecordValue, ValueType::Binary, record.bytes(),
                  static_cast<std::uint32_t>(kCartridgeRecordBytes)) == platform::kSuccess) {
        return true;
    }
    versionBefore.putBack(key);
    return false;
}

void makeCurrent(std::uint32_t serial) {
    RegistryKey key;
    if (key.createForWriting(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess) {
        return;
    }
    writeDword(key, kCurrentValue, serial);
}

// `hours` after `now`. A result that does not fit becomes the first or the last time that can be
// stored: signed overflow is undefined, and a snooze for ever must not end in the past.
UnixSeconds after(UnixSeconds now, std::int64_t hours) {
    constexpr UnixSeconds kEpoch = 0;
    constexpr UnixSeconds kFirst = std::numeric_limits<UnixSeconds>::min();
    constexpr UnixSeconds kLast = std::numeric_limits<UnixSeconds>::max();
    const std::int64_t seconds =
        std::clamp(hours, kFirst / kSecondsPerHour, kLast / kSecondsPerHour) * kSecondsPerHour;
    return now + std::clamp(seconds, kFirst - std::min(now, kEpoch), kLast - std::max(now, kEpoch));
}

// Loads the record and finds the cartridge's entry. Makes one when there is none; npos when the
// registry does not keep it.
std::size_t entryOf(CartridgeRecord& record, std::uint32_t serial) {
    for (int round = 0; round < kRounds; ++round) {
        GetCartData(record);
        const std::size_t entry = record.find(serial);
        if (entry != CartridgeRecord::npos) return entry;
        AddCartIfNew(record, serial);
    }
    return CartridgeRecord::npos;
}

bool testAndSet(CartridgeRecord& record, std::uint32_t serial, CartridgeFlag flag) {
    if (serial == kNoCartridge) return true;
    const std::size_t entry = entryOf(record, serial);
    if (entry == CartridgeRecord::npos) return false;
    if (record.flag(entry, flag)) return true;
    record.setFlag(entry, flag);
    // The result is ignored: a flag that was not saved lets the alert come once more than it
    // should, which is better than never.
    saveRecord(record);
    return false;
}

}  // namespace

bool GetCartData(CartridgeRecord& record) {
    platform::trace("TERNA GetCartData");
    record.clear();
    if (readRecord(record)) return true;

    platform::trace("TERNA GetCartData -- No reg key found or bad version, Initializing Cart Data");
    record.clear();
    saveRecord(record);
    return false;
}

std::uint32_t GetCurrCart() {
    platform::trace("TERNA GetCurrCart");
    RegistryKey key;
    if (key.openForReading(Hive::CurrentUser, registry_key::kMonitor) != platform::kSuccess) {
        return kNoCartridge;
    }
    std::uint32_t serial = kNoCartridge;
    readDword(key, kCurrentValue, serial);
    return serial;
}

void AddCartIfNew(CartridgeRecord& record, std::uint32_t serial) {
    // Equally right after the next: only its trace counts.
    GetCurrCart();  // for its trace: what it held does not matter
    makeCurrent(serial);
    GetCartData(record);
    if (record.find(serial) != CartridgeRecord::npos) return;
    record.assign(record.entryToReplace(), serial, platform::now());
    saveRecord(record);
}

bool SetSnooze(CartridgeRecord& record, std::uint32_t serial, std::int64_t hours, SnoozeSlot slot) {
    platform::trace("TERNA SetSnooze SN=%d, hours=%d, veryLow=%d", shown(serial),
                    static_cast<int>(hours), static_cast<int>(slot));
    const UnixSeconds until = after(platform::now(), hours);
    GetCartData(record);
    const std::size_t entry = record.find(serial);
    if (entry == CartridgeRecord::npos) return false;
    record.setSnooze(entry, slot, until);
    return saveRecord(record);
}

void snoozeCurrentCartridge(std::int64_t hours, SnoozeSlot slot) {
    CartridgeRecord record;  // SetSnooze loads it
    SetSnooze(record, GetCurrCart(), hours, slot);
}

bool IsSnoozing(std::uint32_t serial, SnoozeSlot slot) {
    platform::trace("TERNA IsSnoozing SN=%d", shown(serial));
    CartridgeRecord record;
    GetCartData(record);
    const std::size_t entry = record.find(serial);
    if (entry == CartridgeRecord::npos) {
        platform::trace("TERNA IsSnoozing?  NO (snoozeIdx == -1)");
        return false;
    }
    if (record.snooze(entry, slot) < platform::now()) {
        platform::trace("TERNA IsSnoozing?  NO (difftime < 0)");
        return false;
    }
    platform::trace("TERNA IsSnoozing?  YES");
    return true;
}

bool IllegalCartOccured(CartridgeRecord& record, std::uint32_t serial) {
    platform::trace("TERNA IllegalCartOccured SN=%d", shown(serial));
    return testAndSet(record, serial, CartridgeFlag::IllegalCartOccured);
}

bool NonQvCartOccuredBefore(CartridgeRecord& record, std::uint32_t serial) {
    platform::trace("TERNA NonQvCartOccuredBefore SN=%d", shown(serial));
    return testAndSet(record, serial, CartridgeFlag::NonQvCartOccured);
}

bool ElableMemErrOccuredBefore(CartridgeRecord& record, std::uint32_t serial) {
    platform::trace("TERNA ElableMemErrOccuredBefore SN=%d", shown(serial));
    return testAndSet(record, serial, CartridgeFlag::ElableMemErrOccured);
}

bool takeWelcome() {
    platform::trace("TERNA SetCartData");
    const std::uint32_t serial = GetCurrCart();
    if (serial == kNoCartridge) return false;
    CartridgeRecord record;
    const std::size_t entry = entryOf(record, serial);
    if (entry == CartridgeRecord::npos || record.anyFlag(entry)) return false;
    record.setFlag(entry, CartridgeFlag::WelcomeShown);
    saveRecord(record);
    return true;
}

std::int64_t snoozeHours(int index) {
    for (const SnoozeChoice& row : kSnoozeChoices) {
        if (row.index == index) return row.hours;
    }
    return 0;
}

SnoozeSlot snoozeSlotOf(AlertType type) {
    for (const TypeSlot& row : kTypeSlots) {
        if (row.type == type) return row.slot;
    }
    return SnoozeSlot::Low;
}
