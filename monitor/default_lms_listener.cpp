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
#include "tern/velo_record.h"
#include "ui/alert_actions.h"
#include "ui/alert_keys.h"
#include "ui/alert_window.h"
#include "ui/default_status_dialog.h"
#include "ui/snooze_choice.h"
#include "ui/status_dialog.h"
#include "ui/validation_dialog.h"
#include "ui/window_types.h"

#include <optional>

namespace {

constexpr arbor::Guid kClassId{
    0x2C8F6E51, 0x7D0A, 0x4B6E, {0x9A, 0x35, 0x51, 0xC4, 0x0E, 0x8B, 0x27, 0xD3}};

constexpr wchar_t kCancelButton[] = L"cancel";
constexpr wchar_t kGoButton[] = L"go";

template <typename Class>
bool is(std::uint32_t code, Class expected) {
    return code == static_cast<std::uint32_t>(expected);
}

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

bool DefaultLMSListener::notify(arbor::IMessage* message) {
    const arbor::IPropertyHolder& properties = *message->getProperties();
    _status = properties.getInt(L"status", 0);
    _subcode = properties.getInt(L"subcode", 0);
    platform::trace("in notify\n");

    const std::uint32_t code = message->getCode();
    if (*message->getType() == _messageType) {
        if (properties.hasProperty(L"mediaType")) {
            setCurrentMediaType(TranslateMediaType(properties.getString(L"mediaType", "").c_str()));
        }
        if (is(code, tern::RecordClass::Status)) return onStatus(properties);
        if (is(code, tern::RecordClass::Job)) onChannelControl(message);
    } else if (*message->getType() == alert_action::kMessageType) {
        onFeedback(code, properties);
    }
    return false;
}

// The order of the questions is the behaviour: a silent printer drops even the cartridge report.
bool DefaultLMSListener::onStatus(const arbor::IPropertyHolder& properties) {
    if (!printerWantsStatus(_printerName)) return true;

    if (is(tern::kCartridgeReport, _subcode)) {
        const arbor::IProperty* serial = properties.getProperty(L"blackSN");
        if (!serial->isNull()) {
            _cartridgeSN = static_cast<std::uint32_t>(serial->toInt());
            platform::trace("TERNA - cartridgeSN = %d", static_cast<int>(_cartridgeSN));
            CartridgeRecord record;
            AddCartIfNew(record, _cartridgeSN);
            return true;
        }
    }
    if (_subcode == status_subcode::kPressCancel) pressButton(kCancelButton);
    if (isSilenced()) return true;

    dispatchStatus(*this, _status, _subcode);
    return false;
}

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

void DefaultLMSListener::onChannelControl(arbor::IMessage* message) {
    if (is(tern::kPrinterNarrow, _subcode) || is(tern::kPrinterWide, _subcode)) {
        configurePrinter(message);
        queryCartridgeSerial(_printerName);
    } else if (is(tern::kDocumentEnd, _subcode)) {
        onEndDocument();
    }
}

void DefaultLMSListener::configurePrinter(arbor::IMessage* message) {
    const arbor::IPropertyHolder& properties = *message->getProperties();
    _printerName = arbor::wideText(properties, L"printerName", _printerName.c_str());
    _portName = arbor::wideText(properties, L"portName", _portName.c_str());
    const std::optional<AlertClasses> classes = readAlertClasses(_printerName);
    if (!classes) return;
    _showErrors = classes->errors;
    _showWarnings = classes->warnings;
    _showInformation = classes->information;
}

void DefaultLMSListener::onEndDocument() {
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
    device.push_button(_printerName.c_str(), button);  // best effort: the user has a button as well
}

void DefaultLMSListener::onFeedback(std::uint32_t action,
                                    const arbor::IPropertyHolder& properties) {
    switch (action) {
        case 0:
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
    }
}

void DefaultLMSListener::onDialogClosed(const arbor::IPropertyHolder& properties) {
    const auto* dialog =
        static_cast<const StatusDialog*>(properties.getPointer(alert_action_key::kDialog, nullptr));
    if (dialog != nullptr) closeAlert(dialog);
    if (_exitWithLastDialog && _alerts.empty()) {
        platform::trace("TERNA - No more dlgs, killing threads...");
        stopChannel();
    }
}

void DefaultLMSListener::closeAlert(const StatusDialog* dialog) {
    const arbor::ScopedLock<arbor::Synchronized> lock(_alerts);
    DefaultStatusDialog* alert = _alerts.findAlertDialog(dialog);
    if (alert == nullptr) return;

    if (alert->canResume()) pressButton(kGoButton);
    const AlertType dialogType = _alerts.findAlertTypeFromDlg(dialog);
    if (dialogType == AlertType::TonerVeryLow)
        snoozeFromDialog(alert->window(), SnoozeSlot::VeryLow);
    if (dialogType == AlertType::TonerLow) snoozeFromDialog(alert->window(), SnoozeSlot::Low);
    _alerts.removeAlertDialog(dialog);
    // A fax alert may come outside any document: its end is the end of what the monitor was started
    // for.
    if (dialogType == AlertType::FaxPrinted || dialogType == AlertType::FaxInCompanion)
        onEndDocument();
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
    if (properties.getPointer(alert_action_key::kDialog, nullptr) == nullptr) return;
    const auto window =
        static_cast<WindowHandle>(properties.getPointer(alert_action_key::kWindow, nullptr));
    compactAlertWindow(window, detailIsLink);
}
