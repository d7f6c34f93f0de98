// The handlers of the alerts: which of them are due, and how they open.
#include "arbor/i_property_holder.h"
#include "arbor/property_holder.h"
#include "monitor/default_lms_listener.h"
#include "printer/alert_types.h"
#include "printer/cartridge_record.h"
#include "printer/cartridge_store.h"
#include "ui/alert_keys.h"

#include <cstdint>

namespace {

// The last two digits of a media status are the code of the medium that the printer wants.
constexpr std::int32_t kMediaCodes = 100;

// The alerts that stay when the document ends: they are about the cartridge, not about the job.
constexpr AlertType kStayingAlerts[] = {AlertType::TonerLow,
                                        AlertType::NoCartridge,
                                        AlertType::IllegalCartridge,
                                        AlertType::NonQvCartridge,
                                        AlertType::CartridgeMemoryError,
                                        AlertType::Welcome,
                                        AlertType::CartridgeNotRecognized,
                                        AlertType::TonerVeryLow,
                                        AlertType::TonerOut,
                                        AlertType::CartridgeNotAccepted};

bool closesWithDocument(AlertType dialogType) {
    for (const AlertType staying : kStayingAlerts) {
        if (staying == dialogType) return false;
    }
    return true;
}

// Starts the snooze of a toner alert for the current cartridge; true when it was not snoozing,
// which means: show the alert. The snooze starts with the alert itself, so that the printer's next
// report of the same status is silent whatever becomes of the alert; the user's choice in it comes
// later and replaces that snooze. An unknown cartridge has no snooze and shows nothing.
bool startSnoozeIfDue(SnoozeSlot slot, std::int64_t snoozeHours) {
    const std::uint32_t serial = GetCurrCart();
    if (serial == kNoCartridge || IsSnoozing(serial, slot)) return false;
    CartridgeRecord record;  // a buffer: the operation loads the record itself
    // The result is ignored: an alert that comes again is better than one that never comes.
    SetSnooze(record, serial, snoozeHours, slot);
    return true;
}

// Sets the flag of an alert that comes once in the life of a cartridge, for the current one; true
// when it was not set before, which means: show the alert.
bool setFlagForTheFirstTime(bool (*occuredBefore)(CartridgeRecord&, std::uint32_t)) {
    CartridgeRecord record;
    return !occuredBefore(record, GetCurrCart());
}

}  // namespace

bool fillDialogDescription(const DefaultLMSListener& listener,
                           arbor::IPropertyHolder& description) {
    return description.setPointer(alert_key::kModule, listener._hinstance) &&
           description.setPointer(alert_key::kStringModule, listener._hSinstance) &&
           description.setPointer(alert_key::kBroker, listener._broker) &&
           description.setWString(alert_key::kPrinterName, listener._printerName.c_str()) &&
           description.setWString(alert_key::kPortName, listener._portName.c_str()) &&
           description.setInt(alert_key::kStatus, listener._status) &&
           description.setInt(alert_key::kSubcode, listener._subcode);
}

void DefaultLMSListener::showAlert(AlertType dialogType) {
    arbor::PropertyHolder description;
    describeAndOpen(description, dialogType);
}

void DefaultLMSListener::describeAndOpen(arbor::IPropertyHolder& description,
                                         AlertType dialogType) {
    const bool isMedia = dialogType == AlertType::LoadMedia;
    const bool whole =
        fillDialogDescription(*this, description) &&
        description.setInt(alert_key::kDialogType, static_cast<std::int32_t>(dialogType)) &&
        (!isMedia || description.setInt(alert_key::kMediaCode, _status % kMediaCodes));
    // An entry that could not be stored would read as 0: the alert would be one of another type, or
    // without a broker its buttons would do nothing. Better no alert, since the status comes again.
    if (whole) _alerts.addAlert(description, dialogType, closesWithDocument(dialogType));
}

void DefaultLMSListener::showMediaAlert(int) {
    showAlert(AlertType::LoadMedia);
}

void DefaultLMSListener::showTonerLow(int veryLow) {
    const SnoozeSlot slot = veryLow == 0 ? SnoozeSlot::Low : SnoozeSlot::VeryLow;
    if (startSnoozeIfDue(slot, kTwoWeeksInHours)) {
        showAlert(veryLow == 0 ? AlertType::TonerLow : AlertType::TonerVeryLow);
    }
}

void DefaultLMSListener::showTonerOut() {
    if (startSnoozeIfDue(SnoozeSlot::Out, kNeverInHours)) showAlert(AlertType::TonerOut);
}

void DefaultLMSListener::showDialogType6() {
    if (setFlagForTheFirstTime(&IllegalCartOccured)) showAlert(AlertType::IllegalCartridge);
}

void DefaultLMSListener::showDialogType7() {
    if (setFlagForTheFirstTime(&NonQvCartOccuredBefore)) showAlert(AlertType::NonQvCartridge);
}

// Types 8 and 29 share a flag: whichever comes first for a cartridge is the only one shown.
void DefaultLMSListener::showDialogType8() {
    if (setFlagForTheFirstTime(&ElableMemErrOccuredBefore))
        showAlert(AlertType::CartridgeMemoryError);
}
void DefaultLMSListener::showDialogType29() {
    if (setFlagForTheFirstTime(&ElableMemErrOccuredBefore))
        showAlert(AlertType::CartridgeNotRecognized);
}

void DefaultLMSListener::setCartData() {
    if (takeWelcome()) showAlert(AlertType::Welcome);
}

// These alerts have no rule but their status.
// clang-format off
void DefaultLMSListener::showDialogType0()  { showAlert(AlertType::PaperOut); }
void DefaultLMSListener::showDialogType2()  { showAlert(AlertType::ManualFeed); }
void DefaultLMSListener::showDialogType3()  { showAlert(AlertType::ManualDuplex); }
void DefaultLMSListener::showDialogType5()  { showAlert(AlertType::NoCartridge); }
void DefaultLMSListener::showDialogType9()  { showAlert(AlertType::InternalError); }
void DefaultLMSListener::showDialogType10() { showAlert(AlertType::LaserBeam); }
void DefaultLMSListener::showDialogType11() { showAlert(AlertType::PageNotFinished); }
void DefaultLMSListener::showDialogType12() { showAlert(AlertType::PaperFeed); }
void DefaultLMSListener::showDialogType14() { showAlert(AlertType::Fuser); }
void DefaultLMSListener::showDialogType15() { showAlert(AlertType::Communication); }
void DefaultLMSListener::showDialogType16() { showAlert(AlertType::FuserNotWarm); }
void DefaultLMSListener::showDialogType17() { showAlert(AlertType::PrintEngine); }
void DefaultLMSListener::showDialogType18() { showAlert(AlertType::LaserScanner); }
void DefaultLMSListener::showDialogType19() { showAlert(AlertType::DoorOpen); }
void DefaultLMSListener::showDialogType20() { showAlert(AlertType::CartridgeDoorOpen); }
void DefaultLMSListener::showDialogType21() { showAlert(AlertType::RearJam); }
void DefaultLMSListener::showDialogType22() { showAlert(AlertType::JamInside); }
void DefaultLMSListener::showDialogType23() { showAlert(AlertType::TrayJam); }
void DefaultLMSListener::showDialogType24() { showAlert(AlertType::UsedCartridge); }
void DefaultLMSListener::showDialogType26() { showAlert(AlertType::FaxPrinted); }
void DefaultLMSListener::showDialogType27() { showAlert(AlertType::FaxInCompanion); }
void DefaultLMSListener::showDialogType32() { showAlert(AlertType::CartridgeNotAccepted); }
void DefaultLMSListener::showGenericStatus(std::int32_t) { showAlert(AlertType::GenericStatus); }
// clang-format on
