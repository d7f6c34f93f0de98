#include "ui/snooze_choice.h"

#include "printer/cartridge_store.h"
#include "ui/dialog_controls.h"
#include "ui/resource_ids.h"

void snoozeFromDialog(WindowHandle window, SnoozeSlot slot) {
    constexpr int kAtOnce = 0;  // hours
    // A missing list reads as the prompt. An alert without one has no say about a snooze.
    if (!dialog_controls::exists(window, IDC_SNOOZE_CHOICE)) return;
    if (dialog_controls::choice(window, IDC_SNOOZE_CHOICE) == kSnoozePrompt) {
        snoozeCurrentCartridge(kAtOnce, slot);
    }
}

void snoozeFromChoice(AlertType type, WindowHandle window) {
    const int chosen = dialog_controls::choice(window, IDC_SNOOZE_CHOICE);
    snoozeCurrentCartridge(snoozeHours(chosen), snoozeSlotOf(type));
}
