#include "ui/status_dialog.h"

#include "arbor/i_message.h"
#include "arbor/i_property_holder.h"
#include "arbor/message.h"
#include "arbor/property_text.h"
#include "platform/trace.h"
#include "tern/event_broker.h"
#include "ui/alert_actions.h"
#include "ui/alert_keys.h"
#include "ui/dialog_controls.h"
#include "ui/localized_text.h"
#include "ui/resource_ids.h"
#include "ui/text_format.h"

#include <cstddef>
#include <memory>
#include <new>

namespace {

constexpr int kFirstPosition = 100;  // pixels, until the owner sets another one
// Equally right with 2: no text has a negative id.
constexpr std::int32_t kAbsent = -1;              // the text of no medium and of no tray
constexpr wchar_t kNoMessageText[] = L"unknown";  // what a description without the text reads
constexpr char kNoPartNumber[] = "unknown";

// Commands of the plain alert that are actions of their own; every other id is its own code.
struct CommandRow {
    int control;
    std::uint32_t action;
};
constexpr CommandRow kCommandRows[] = {
    {IDC_ALERT_RETURNS_LINK, alert_action::kReturnsLink},
    {IDC_ALERT_FRAUD_LINK, alert_action::kFraudLink},
    {IDC_ALERT_SHOP_LINK, alert_action::kShopLink},
    {IDC_ALERT_CANCEL, alert_action::kCancel},
    {IDC_ALERT_OK, alert_action::kAccept},
    {IDC_ALERT_HELP, alert_action::kHelp},
};

std::uint32_t asId(std::int32_t value) {
    return static_cast<std::uint32_t>(value);
}

}  // namespace

StatusDialog::StatusDialog(const arbor::IPropertyHolder& description, bool createNow)
    : _module(description.getPointer(alert_key::kModule, nullptr)),
      _stringModule(description.getPointer(alert_key::kStringModule, _module)),
      _pictureId(description.getInt(alert_key::kPicture, 0)),
      _iconId(description.getInt(alert_key::kIcon, 0)),
      // Equally right with 1: there is no template 0 or 1.
      _templateId(description.getInt(alert_key::kTemplate, 0)),
      _x(kFirstPosition),
      _y(kFirstPosition),
      // The name itself is read as a number: "2nd floor" asks for text 2, and most names for none.
      _printerText(textOf(description, alert_key::kPrinterName)),
      _message(messageText(description)),
      _title(formatText(textOf(description, alert_key::kTitle), {_printerText}, kTextUnits)),
      _headline(textOf(description, alert_key::kHeadline)),
      _okCaption(textOf(description, alert_key::kOkCaption)),
      _shop(textOf(description, alert_key::kShop)),
      _returns(textOf(description, alert_key::kReturns)),
      _fraud(textOf(description, alert_key::kFraud)),
      _faxReceived(textOf(description, alert_key::kFaxReceived)),
      _faxReceivedOrrery(textOf(description, alert_key::kFaxReceivedOrrery)),
      _detail(textOf(description, alert_key::kDetail)),
      _snoozePrompt(textOf(description, alert_key::kSnoozePrompt)),
      _snoozeLabel(textOf(description, alert_key::kSnoozeLabel)),
      _broker(
          static_cast<tern::EventBroker*>(description.getPointer(alert_key::kBroker, nullptr))) {
    for (std::size_t i = 0; i < _snoozeChoices.size(); ++i) {
        _snoozeChoices[i] = textOf(description, alert_key::kSnoozeChoices[i]);
    }
    if (createNow) create();
}

void StatusDialog::setPosition(int x, int y) noexcept {
    _x = x;
    _y = y;
}

std::wstring StatusDialog::text(std::uint32_t id) const {
    return loadText(_stringModule, id);
}

std::wstring StatusDialog::textOf(const arbor::IPropertyHolder& description,
                                  const wchar_t* key) const {
    return text(asId(description.getInt(key, 0)));
}

// Each message that the description names replaces the one before it, also where the strings
// library lacks the text: a message about something else would mislead more than none.
std::wstring StatusDialog::messageText(const arbor::IPropertyHolder& description) const {
    std::wstring message =
        formatText(textOf(description, alert_key::kMessage), {_printerText}, kTextUnits);
    if (description.getInt(alert_key::kMediaMessage, 0) != 0) {
        const std::wstring format = textOf(description, alert_key::kMediaMessage);
        const auto textOfCode = [this, &description](const wchar_t* key) {
            return text(asId(description.getInt(key, kAbsent)));
        };
        message = formatText(
            format, {message, textOfCode(alert_key::kMediaCode), textOfCode(alert_key::kTrayCode)},
            kTextUnits);
    }
    if (const std::wstring literal =
            arbor::wideText(description, alert_key::kMessageText, kNoMessageText);
        literal != kNoMessageText) {
        message = literal;
    }
    if (description.getInt(alert_key::kPartNumberMessage, 0) != 0) {
        const std::string number = description.getString(alert_key::kPartNumber, kNoPartNumber);
        message =
            formatText(textOf(description, alert_key::kPartNumberMessage), {number}, kTextUnits);
    }
    return message;
}

void StatusDialog::notify(std::uint32_t code) {
    notify(code, 0, 0, nullptr);
}

void StatusDialog::notify(std::uint32_t code, MessageWord wParam, MessageLong lParam,
                          WindowHandle window) {
    publish(actionMessage(code, wParam, lParam, window));
}

std::shared_ptr<arbor::IMessage> StatusDialog::actionMessage(std::uint32_t code, MessageWord wParam,
                                                             MessageLong lParam,
                                                             WindowHandle window) {
    if (_broker == nullptr) return nullptr;
    const auto shownWindow = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(window));
    const auto word = static_cast<std::int32_t>(wParam);
    const auto longWord = static_cast<std::int32_t>(lParam);
    platform::trace("TERNA  notify statusdialoghwnd=%#x, wparam=%d, lparam=%d", shownWindow, word,
                    longWord);
    auto message = std::make_shared<arbor::Message>(&alert_action::kMessageType, code, 0U, nullptr);
    arbor::IPropertyHolder& properties = *message->getProperties();
    // An action is matched to its alert by these properties. Without one of them it would be
    // ignored, and the user would see a button that does nothing.
    const bool whole = properties.setPointer(alert_action_key::kDialog, this) &&
                       properties.setPointer(alert_action_key::kWindow, window) &&
                       properties.setInt(alert_action_key::kWord, word) &&
                       properties.setInt(alert_action_key::kLong, longWord);
    if (!whole) throw std::bad_alloc();
    return message;
}

void StatusDialog::publish(const std::shared_ptr<arbor::IMessage>& action) {
    if (action != nullptr) _broker->publish(action.get());  // then this object may be gone
}

void StatusDialog::initialize(WindowHandle window) {
    dialog_controls::moveWindow(window, _x, _y);
    if (!_title.empty()) dialog_controls::setTitle(window, _title);
    dialog_controls::setTextIfAny(window, IDC_ALERT_MESSAGE, _message);
    const auto showLink = [window](int control, const std::wstring& text) {
        if (text.empty()) return;
        dialog_controls::setText(window, control, text);
        dialog_controls::setFont(window, control, dialog_controls::Emphasis::Link);
        dialog_controls::makeLink(window, control);
    };
    showLink(IDC_ALERT_SHOP_LINK, _shop);        // Equally right after the next: other controls.
    showLink(IDC_ALERT_RETURNS_LINK, _returns);  // Equally right after the next: other controls.
    showLink(IDC_ALERT_FRAUD_LINK, _fraud);      // Equally right after the next: other controls.
    dialog_controls::setTextIfAny(window, IDC_ALERT_HEADLINE, _headline);
    dialog_controls::setFont(window, IDC_ALERT_HEADLINE, dialog_controls::Emphasis::Headline);
    // These messages cannot end the alert, because its owner does not have it in the list of open
    // alerts yet.
    announceExtras(window);
    dialog_controls::setTextIfAny(window, IDC_ALERT_OK, _okCaption);
}

void StatusDialog::announceExtras(WindowHandle window) {
    const auto announce = [this, window](const std::wstring& text, std::uint32_t code) {
        if (!text.empty()) notify(code, 0, 0, window);
    };
    announce(_faxReceived, alert_action::kCompact);
    announce(_faxReceivedOrrery, alert_action::kCompactWithLink);
    announce(_detail, alert_action::kHasDetail);
    announce(_snoozePrompt, alert_action::kHasSnoozePrompt);
    announce(_snoozeLabel, alert_action::kHasSnoozeLabel);
}

void StatusDialog::command(WindowHandle window, MessageWord wParam, MessageLong lParam) {
    const int control = commandControl(wParam);
    for (const CommandRow& row : kCommandRows) {
        if (row.control == control) return notify(row.action);
    }
    notify(static_cast<std::uint32_t>(control), wParam, lParam, window);
}
