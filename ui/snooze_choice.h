#pragma once

#include "printer/cartridge_record.h"
#include "ui/window_types.h"

class DefaultStatusDialog;

// What the snooze list of an alert means for the cartridge in the printer. Failures of the registry
// are silent.

// An alert that closes with no reminder time chosen ends the snooze of `slot`: it was started when
// the alert opened. Does nothing when a time is chosen or the alert has no list.
void snoozeFromDialog(WindowHandle window, SnoozeSlot slot);

// Snoozes for the chosen time, in the slot of the dialog's type.
void snoozeFromChoice(const DefaultStatusDialog& dialog, WindowHandle window);
