#include "ui/snooze_choice.h"

#include "printer/alert_types.h"
#include "printer/cartridge_store.h"
#include "ui/default_status_dialog.h"
#include "ui/dialog_controls.h"
#include "ui/resource_ids.h"

#include <cstdint>

namespace {

constexpr int kPromptChosen = 0;

void snooze(std::int64_t hours, SnoozeSlot slot) {
    CartridgeRecord record;  // SetSnooze loads it
    SetSnooze(record, GetCurrCart(), hours, slot);
}

}  // namespace

void snoozeFromDialog(WindowHandle window, SnoozeSlot slot) {
    if (!dialog_controls::exists(window, IDC_SNOOZE_CHOICE)) return;
    if (dialog_controls::choice(window, IDC_SNOOZE_CHOICE) == kPromptChosen) snooze(0, slot);
}

void snoozeFromChoice(const DefaultStatusDialog& dialog, WindowHandle window) {
    const int chosen = dialog_controls::choice(window, IDC_SNOOZE_CHOICE);
    const auto type = static_cast<AlertType>(dialog.dialogType());
    snooze(snoozeHours(chosen), snoozeSlotOf(type));
}
