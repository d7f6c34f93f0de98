#include "monitor/default_lms_listener.h"

#include "arbor/i_message.h"
#include "arbor/i_property.h"
#include "arbor/property_text.h"
#include "arbor/scoped_lock.h"
#include "arbor/synchronized.h"
#include "device/ews_intf.h"
#include "device/shop_page.h"
#include "device/web_links.h"
#include "monitor/status_dispatch.h"
#include "platform/trace.h"
#include "printer/alert_types.h"
#include "printer/cartridge_record.h"
#include "printer/cartridge_store.h"
#include "printer/companion.h"
#include "printer/consumables.h"
#include "printer/media_types.h"
#include "printer/printer_identity.h"
#include "printer/status_codes.h"
#include "tern/event_broker.h"
#include "tern/i_instance_manager.h"
#include "tern/message_keys.h"
#include "tern/velo_record.h"
#include "ui/alert_actions.h"
#include "ui/alert_keys.h"
#include "ui/alert_window.h"
#include "ui/default_status_dialog.h"
#include "ui/snooze_choice.h"
#include "ui/status_dialog.h"
#include "ui/validation_dialog.h"
#include "ui/window_types.h"

#include <new>
#include <optional>
#include <string>

namespace {

constexpr arbor::Guid kClassId{
    0x2C8F6E51, 0x7D0A, 0x4B6E, {0x9A, 0x35, 0x51, 0xC4, 0x0E, 0x8B, 0x27, 0xD3}};

// The device's own names for two of its buttons.
constexpr wchar_t kCancelButton[] = L"cancel";
constexpr wchar_t kGoButton[] = L"go";

// No alert of this program sends code 0; it is taken like the closing codes 1 to 3 beside it.
constexpr std::uint32_t kClosedWithoutCode = 0;

namespace message_key = tern::message_key;

}  // namespace

DefaultLMSListener::DefaultLMSListener(tern::IInstanceManager* owner,
                                       const arbor::Guid& messageType,
                                       const arbor::Guid& secondType,
                                       platform::NativeHandle hinstance,
                                       platform::NativeHandle hSinstance)
    : _messageType(messageType),
      _secondType(secondType),
      _broker(owner->getEventBroker()),
      _hinstance(hinstance),
      _hSinstance(hSinstance) {}

const arbor::Guid* DefaultLMSListener::getClassId() const {
    return &kClassId;
}

// A try block of the whole function: without memory for what one message asks, that message is
// lost. An exception would end the main loop, and with it every open alert.
bool DefaultLMSListener::notify(arbor::IMessage* message) try {
    const arbor::IPropertyHolder& properties = *message->getProperties();
    // Every message overwrites both, clicks in an alert included. That is right because they are
    // only read while the same message is handled: the status that an alert shows is in its own
    // description by then, and a status that lacks the property must not repeat the one before it.
    // Equally right after the next: the two are independent.
    _status = properties.getInt(message_key::kStatus, 0);
    _subcode = properties.getInt(message_key::kSubcode, 0);

    platform::trace("in notify\n");

    if (*message->getType() == _messageType) return onChannelMessage(*message);
    if (*message->getType() == alert_action::kMessageType) {
        onFeedback(message->getCode(), properties);
    }
    return false;
} catch (const std::bad_alloc& error) {
    platform::trace("TERNA - error: %s", error.what());
    return false;
}

bool DefaultLMSListener::onChannelMessage(arbor::IMessage& message) {
    const arbor::IPropertyHolder& properties = *message.getProperties();
    // Before the printer is asked whether it wants alerts: the medium in the tray changes also
    // while the alerts are silent, and the next media alert names it.
    if (properties.hasProperty(message_key::kMediaType)) {
        const std::string name = properties.getString(message_key::kMediaType, "");
        setCurrentMediaType(TranslateMediaType(name.c_str()));
    }
    switch (static_cast<tern::RecordClass>(message.getCode())) {
        case tern::RecordClass::Status:
            return onStatus(properties);
        case tern::RecordClass::Job:
            onChannelControl(message);
            return false;
        case tern::RecordClass::Oem:
            return false;  // no alert reads the blocks of device messages
    }
    return false;  // a class that this program does not know
}

// The order of the questions is part of the behaviour. A silent printer drops even the cartridge
// report, and a cancelled job presses the button also where all alerts are switched off.
bool DefaultLMSListener::onStatus(const arbor::IPropertyHolder& properties) {
    if (!printerWantsStatus(_printerName)) return true;

    if (subcodeIs(tern::kCartridgeReport)) {
        const arbor::IProperty* serial = properties.getProperty(message_key::kCartridgeSerial);
        // Without a serial number the report is a status like any other.
        if (!serial->isNull()) {
            _cartridgeSN = static_cast<std::uint32_t>(serial->toInt());
            platform::trace("TERNA - cartridgeSN = %d", static_cast<int>(_cartridgeSN));
            CartridgeRecord record;  // a buffer: the operation loads the record itself
            AddCartIfNew(record, _cartridgeSN);
            return true;
        }
    }
    if (_subcode == status_subcode::kPressCancel) pressButton(kCancelButton);
    if (isSilenced()) return true;

    dispatchStatus(*this, _status, _subcode);
    return false;
}

// The user switches classes of alerts off in the printer's settings. Only two of the classes can be
// told from a status: toner out counts as information, and errors begin at one code. Everything
// else is shown while any class is on. The trace texts are kept: see decision 0012.
bool DefaultLMSListener::isSilenced() const {
    if (!_showErrors && !_showWarnings && !_showInformation) {
        platform::trace("TERNA user chose to disable all messages");
        return true;
    }
    if (!_showInformation && _status == status_code::kTonerOutBlack) {
        platform::trace("TERNA ! _showInformation && status == TONER_OUT_BLACK");
        return true;
    }
    if (!_showErrors && _status >= status_code::kFirstError) {
        platform::trace("TERNA status >= 10403  PJL error starting point???");
        return true;
    }
    return false;
}

void DefaultLMSListener::onChannelControl(arbor::IMessage& message) {
    if (subcodeIs(tern::kPrinterNarrow) || subcodeIs(tern::kPrinterWide)) {
        configurePrinter(&message);
        // After the name is known: the device is opened by it.
        queryCartridgeSerial(_printerName);
    } else if (subcodeIs(tern::kDocumentEnd)) {
        onEndDocument();
    }
}

bool DefaultLMSListener::subcodeIs(std::uint32_t subcode) const {
    return static_cast<std::uint32_t>(_subcode) == subcode;
}

void DefaultLMSListener::configurePrinter(arbor::IMessage* message) {
    const arbor::IPropertyHolder& properties = *message->getProperties();
    // A record that leaves a name out keeps the one before it.
    // Equally right after the next: the two are independent.
    _printerName = arbor::wideText(properties, message_key::kPrinterName, _printerName.c_str());
    _portName = arbor::wideText(properties, message_key::kPortName, _portName.c_str());
    const std::optional<AlertClasses> classes = readAlertClasses(_printerName);
    if (!classes) return;  // the printer does not open: the switches keep their values
    _showErrors = classes->errors;
    _showWarnings = classes->warnings;
    _showInformation = classes->information;
}

void DefaultLMSListener::onEndDocument() {
    // From now on the last alert that the user closes ends the monitor: it was started for this
    // document, and the next one starts it again.
    _exitWithLastDialog = true;
    const std::uint32_t left = _alerts.removeAllAutocloseDialogs(true);
    if (left != 0) {
        platform::trace("TERNA - VELO_MSG_ENDDOC %d dlgs left", static_cast<int>(left));
        return;
    }
    stopChannel();
}

void DefaultLMSListener::stopChannel() {
    _broker->stop(&_messageType, 0);
    _broker->stop(&_secondType, 0);
}

bool DefaultLMSListener::launchCompanion() {
    return startCompanion();
}

void DefaultLMSListener::pressButton(const wchar_t* button) const {
    EWSIntf device;
    // The result is ignored: the user can press the same button on the device.
    device.push_button(_printerName.c_str(), button);
}

void DefaultLMSListener::onFeedback(std::uint32_t action,
                                    const arbor::IPropertyHolder& properties) {
    switch (action) {
        case kClosedWithoutCode:
        case alert_action::kCancel:
        case alert_action::kAccept:
        case alert_action::kContinue:
        case alert_action::kClosed:
            onDialogClosed(properties);
            break;
        case alert_action::kOpenFax:
            onFaxLink(properties);
            break;
        case alert_action::kCompact:
            onCompact(properties, false);
            break;
        case alert_action::kCompactWithLink:
            onCompact(properties, true);
            break;
        case alert_action::kAnticounterfeit:
            openAnticounterfeitPage();
            break;
        case alert_action::kRecycle:
            openRecyclePage();
            break;
        case alert_action::kCheckCartridge:
            showValidationDialog(_hinstance, _hSinstance, _printerName);
            break;
        case alert_action::kShop:
            openShopPage(_printerName);
            break;
        default:
            break;  // commands of controls that need no answer, the snooze list for one
    }
}

void DefaultLMSListener::onDialogClosed(const arbor::IPropertyHolder& properties) {
    const auto* dialog =
        static_cast<const StatusDialog*>(properties.getPointer(alert_action_key::kDialog, nullptr));
    if (dialog != nullptr) closeAlert(dialog);
    // Also for a dialog that is not in the list. A closed fax alert has stopped the channel already
    // when it was the last one; stopping twice does no harm.
    if (_exitWithLastDialog && _alerts.empty()) {
        platform::trace("TERNA - No more dlgs, killing threads...");
        stopChannel();
    }
}

void DefaultLMSListener::closeAlert(const StatusDialog* dialog) {
    // Held to the end, so that the alert that was found is the alert that is removed.
    const arbor::ScopedLock<arbor::Synchronized> lock(_alerts);
    DefaultStatusDialog* alert = _alerts.findAlertDialog(dialog);
    if (alert == nullptr) return;

    // These ask the alert and its window, so they come before it is destroyed.
    if (alert->canResume()) pressButton(kGoButton);
    const AlertType dialogType = _alerts.findAlertTypeFromDlg(dialog);
    // Toner out has no snooze list to ask: its snooze stays as the alert set it.
    if (dialogType == AlertType::TonerVeryLow) {
        snoozeFromDialog(alert->window(), SnoozeSlot::VeryLow);
    }
    if (dialogType == AlertType::TonerLow) snoozeFromDialog(alert->window(), SnoozeSlot::Low);
    _alerts.removeAlertDialog(dialog);
    // A fax arrives outside any document, so no record of a document's end will follow.
    if (dialogType == AlertType::FaxPrinted || dialogType == AlertType::FaxInCompanion) {
        onEndDocument();
    }
}

void DefaultLMSListener::onFaxLink(const arbor::IPropertyHolder& properties) {
    const auto hasText = [&properties](const wchar_t* key) {
        return arbor::wideText(properties, key, alert_key::kNotExist) != alert_key::kNotExist;
    };
    if (!hasText(alert_key::kFaxReceived) || !hasText(alert_key::kFaxReceivedOrrery)) {
        launchCompanion();
    }
}

void DefaultLMSListener::onCompact(const arbor::IPropertyHolder& properties, bool detailIsLink) {
    // A message that names no dialog is not from one of our alerts, and its window may
    // be that of any program.
    if (properties.getPointer(alert_action_key::kDialog, nullptr) == nullptr) return;
    const auto window =
        static_cast<WindowHandle>(properties.getPointer(alert_action_key::kWindow, nullptr));
    compactAlertWindow(window, detailIsLink);
}
