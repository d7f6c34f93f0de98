#pragma once

#include "printer/cartridge_record.h"

#include <cstdint>

// The cartridges, snoozes and shown-once flags that this user's registry remembers. Nothing is kept
// in memory: each operation loads the record and writes it back whole. Failures of the registry are
// silent and read as an empty record.

// Loads the record; true when a valid one was read. Otherwise an empty record is written back.
bool GetCartData(CartridgeRecord& record);

// Makes `serial` the current cartridge and gives it an entry if it has none.
void AddCartIfNew(CartridgeRecord& record, std::uint32_t serial);

// Serial number of the cartridge in the printer, kNoCartridge when unknown.
std::uint32_t GetCurrCart();

// Snoozes an alert of `serial` for `hours` from now. False when the cartridge has no entry or the
// record could not be written.
bool SetSnooze(CartridgeRecord& record, std::uint32_t serial, std::int64_t hours, SnoozeSlot slot);

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

// The snooze slot of an alert.
SnoozeSlot snoozeSlotOfDialogType(int dialogType);
