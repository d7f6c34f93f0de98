#pragma once

#include "printer/alert_types.h"
#include "printer/cartridge_record.h"

#include <cstdint>

inline constexpr std::int64_t kTwoWeeksInHours = 336;
inline constexpr std::int64_t kNeverInHours = 175200;  // twenty years: in effect never again

// The cartridges, snoozes and shown-once flags that this user's registry remembers. Nothing is kept
// in memory: each operation loads the record into the caller's buffer and writes it back whole.
// Failures of the registry are silent and read as an empty record; a write that fails leaves the
// registry as it was. Main thread only. Names of operations kept: see decision 0012.

// Loads the record; true when a valid one was read. Otherwise an empty record is written back.
bool GetCartData(CartridgeRecord& record);

// Makes `serial` the current cartridge and gives it an entry if it has none.
void AddCartIfNew(CartridgeRecord& record, std::uint32_t serial);

// Serial number of the cartridge in the printer, kNoCartridge when unknown.
std::uint32_t GetCurrCart();

// Snoozes an alert of `serial` for `hours` from now. False when the cartridge has no entry or the
// record could not be written.
bool SetSnooze(CartridgeRecord& record, std::uint32_t serial, std::int64_t hours, SnoozeSlot slot);

// The same for the cartridge in the printer; 0 hours end the snooze. Does nothing when that
// cartridge has no entry.
void snoozeCurrentCartridge(std::int64_t hours, SnoozeSlot slot);

// Whether the alert of `slot` is snoozed for `serial` at this moment, this second included.
bool IsSnoozing(std::uint32_t serial, SnoozeSlot slot);

// Test and set: true when the flag was set before, or the cartridge is unknown; false the first
// time, which means: show the alert.
bool IllegalCartOccured(CartridgeRecord& record, std::uint32_t serial);
bool NonQvCartOccuredBefore(CartridgeRecord& record, std::uint32_t serial);
bool ElableMemErrOccuredBefore(CartridgeRecord& record, std::uint32_t serial);

// Whether the current cartridge is still to be welcomed: it has no flag yet. Sets the welcome flag
// when it answers true.
bool takeWelcome();

// Hours of the choice at `index` of the snooze list; 0 for the prompt and for any other index.
std::int64_t snoozeHours(int index);

// The snooze slot of an alert; the low one for every alert but very low and out.
SnoozeSlot snoozeSlotOf(AlertType type);
