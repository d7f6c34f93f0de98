#pragma once

#include "printer/alert_types.h"
#include "printer/cartridge_record.h"
#include "ui/window_types.h"

// What the snooze list of an alert means for the cartridge in the printer. Failures of the registry
// are silent. Main thread.

inline constexpr int kSnoozePrompt = 0;  // the line of the list that is no time but asks for one

// An alert that closes with no reminder time chosen ends the snooze of `slot`: it was started when
// the alert opened. Does nothing when a time is chosen or the alert has no list.
void snoozeFromDialog(WindowHandle window, SnoozeSlot slot);

// Snoozes for the chosen time, in the slot of the alert's type.
void snoozeFromChoice(AlertType type, WindowHandle window);
