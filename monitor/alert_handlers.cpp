// The handlers of the alerts: which of them are due, and how they open.
#include "arbor/i_property_holder.h"
#include "arbor/property_holder.h"
#include "monitor/default_lms_listener.h"
#include "monitor/status_codes.h"
#include "printer/cartridge_record.h"
#include "printer/cartridge_store.h"

#include <cstdint>

namespace {

constexpr std::int64_t kTwoWeeks = 336;          // hours
constexpr std::int64_t kInEffectNever = 175200;  // hours: twenty years
constexpr std::int32_t kMediaCodes = 100;        // the media code is the status in this ring

// The alerts that stay when the document ends: they are about the cartridge, not about the job.
constexpr std::uint32_t kStayingAlerts[] = {
    kTonerLowAlert, 5, 6, 7, 8, kWelcomeAlert, 29, kTonerVeryLowAlert, kTonerOutAlert, 32};

bool closesWithDocument(std::uint32_t dialogType) {
    for (const std::uint32_t staying : kStayingAlerts) {
        if (staying == dialogType) return false;
    }
    return true;
}

// Whether a toner alert is due for the current cartridge. A due alert starts its own snooze; the
// choice that the user makes in it comes later and replaces that.
bool tonerAlertIsDue(SnoozeSlot slot, std::int64_t snoozeHours) {
    const std::uint32_t serial = GetCurrCart();
    if (serial == kNoCartridge || IsSnoozing(serial, slot)) return false;
    CartridgeRecord record;
    SetSnooze(record, serial, snoozeHours, slot);
    return true;
}

// Whether an alert that comes once in the life of a cartridge was not shown yet for this one.
bool isFirstTime(bool (*occuredBefore)(CartridgeRecord&, std::uint32_t)) {
    CartridgeRecord record;
    return !occuredBefore(record, GetCurrCart());
}

}  // namespace

bool fillDialogDescription(const DefaultLMSListener& listener,
                           arbor::IPropertyHolder& description) {
    return description.setPointer(L"hinstance", listener._hinstance) &&
           description.setPointer(L"hSinstance", listener._hSinstance) &&
           description.setPointer(L"eventBroker", listener._broker) &&
           description.setWString(L"idsPrinter", listener._printerName.c_str()) &&
           description.setWString(L"idsPort", listener._portName.c_str()) &&
           description.setInt(L"status", listener._status) &&
           description.setInt(L"subcode", listener._subcode);
}

void DefaultLMSListener::showAlert(std::uint32_t dialogType) {
    arbor::PropertyHolder description;
    describeAndOpen(description, dialogType);
}

void DefaultLMSListener::describeAndOpen(arbor::IPropertyHolder& description,
                                         std::uint32_t dialogType) {
    const bool isMedia = dialogType == kMediaAlert;
    const bool whole = fillDialogDescription(*this, description) &&
                       description.setInt(L"dialog type", static_cast<std::int32_t>(dialogType)) &&
                       (!isMedia || description.setInt(L"mediaCode", _status % kMediaCodes));
    // What is missing would read as 0: an alert of another type, or one that answers to nobody.
    if (whole) _alerts.addAlert(description, dialogType, closesWithDocument(dialogType));
}

void DefaultLMSListener::showMediaAlert(int) {
    showAlert(kMediaAlert);
}

void DefaultLMSListener::showTonerLow(int veryLow) {
    const SnoozeSlot slot = veryLow == 0 ? SnoozeSlot::Low : SnoozeSlot::VeryLow;
    if (tonerAlertIsDue(slot, kTwoWeeks)) {
        showAlert(veryLow == 0 ? kTonerLowAlert : kTonerVeryLowAlert);
    }
}

void DefaultLMSListener::showTonerOut() {
    if (tonerAlertIsDue(SnoozeSlot::Out, kInEffectNever)) showAlert(kTonerOutAlert);
}

void DefaultLMSListener::showDialogType6() {
    if (isFirstTime(&IllegalCartOccured)) showAlert(6);
}

void DefaultLMSListener::showDialogType7() {
    if (isFirstTime(&NonQvCartOccuredBefore)) showAlert(7);
}

// Types 8 and 29 share a flag: whichever comes first for a cartridge is the only one shown.
void DefaultLMSListener::showDialogType8() {
    if (isFirstTime(&ElableMemErrOccuredBefore)) showAlert(8);
}
void DefaultLMSListener::showDialogType29() {
    if (isFirstTime(&ElableMemErrOccuredBefore)) showAlert(29);
}

void DefaultLMSListener::setCartData() {
    if (takeWelcome()) showAlert(kWelcomeAlert);
}

// No rule but their own status.
void DefaultLMSListener::showDialogType0() {
    showAlert(0);
}
void DefaultLMSListener::showDialogType2() {
    showAlert(2);
}
void DefaultLMSListener::showDialogType3() {
    showAlert(3);
}
void DefaultLMSListener::showDialogType5() {
    showAlert(5);
}
void DefaultLMSListener::showDialogType9() {
    showAlert(9);
}
void DefaultLMSListener::showDialogType10() {
    showAlert(10);
}
void DefaultLMSListener::showDialogType11() {
    showAlert(11);
}
void DefaultLMSListener::showDialogType12() {
    showAlert(12);
}
void DefaultLMSListener::showDialogType14() {
    showAlert(14);
}
void DefaultLMSListener::showDialogType15() {
    showAlert(15);
}
void DefaultLMSListener::showDialogType16() {
    showAlert(16);
}
void DefaultLMSListener::showDialogType17() {
    showAlert(17);
}
void DefaultLMSListener::showDialogType18() {
    showAlert(18);
}
void DefaultLMSListener::showDialogType19() {
    showAlert(19);
}
void DefaultLMSListener::showDialogType20() {
    showAlert(20);
}
void DefaultLMSListener::showDialogType21() {
    showAlert(21);
}
void DefaultLMSListener::showDialogType22() {
    showAlert(22);
}
void DefaultLMSListener::showDialogType23() {
    showAlert(23);
}
void DefaultLMSListener::showDialogType24() {
    showAlert(24);
}
void DefaultLMSListener::showDialogType26() {
    showAlert(kFaxAlert);
}
void DefaultLMSListener::showDialogType27() {
    showAlert(kFaxLinkAlert);
}
void DefaultLMSListener::showDialogType32() {
    showAlert(32);
}
void DefaultLMSListener::showGenericStatus(std::int32_t) {
    showAlert(28);
}
