#include "ui/default_status_dialog.h"

#include "arbor/i_property_holder.h"
#include "arbor/property_text.h"
#include "platform/resource_text.h"
#include "platform/trace.h"
#include "printer/status_codes.h"
#include "strings/string_ids.h"
#include "ui/alert_actions.h"
#include "ui/alert_keys.h"
#include "ui/button_faces.h"
#include "ui/dialog_controls.h"
#include "ui/help_texts.h"
#include "ui/localized_text.h"
#include "ui/picture_names.h"
#include "ui/resource_ids.h"
#include "ui/snooze_choice.h"
#include "ui/text_format.h"

#include <new>

namespace {

using dialog_controls::Emphasis;

constexpr DialogResult kHandled = 1;

constexpr int kDuplexTextControls[] = {IDC_DUPLEX_STEP_1, IDC_DUPLEX_STEP_2, IDC_DUPLEX_STEP_3};
constexpr int kDuplexIconControls[] = {IDC_DUPLEX_ICON_1, IDC_DUPLEX_ICON_2, IDC_DUPLEX_ICON_3};

constexpr int kTextControls[] = {IDC_ALERT_HEADLINE,   IDC_ALERT_DETAIL,  IDC_ALERT_MESSAGE,
                                 IDC_SUPPLIES_DETAIL,  IDC_SUPPLIES_NAME, IDC_SUPPLIES_PAGES,
                                 IDC_SUPPLIES_COMMENT, IDC_DUPLEX_TITLE,  IDC_DUPLEX_STEP_1,
                                 IDC_DUPLEX_STEP_2,    IDC_DUPLEX_STEP_3};

// The prompt comes first; the hours of the others are in the cartridge store, in the same order.
constexpr std::uint32_t kSnoozeTexts[] = {IDS_SNOOZE_CHOOSE, IDS_SNOOZE_1_HOUR,  IDS_SNOOZE_4_HOURS,
                                          IDS_SNOOZE_1_DAY,  IDS_SNOOZE_2_DAYS,  IDS_SNOOZE_3_DAYS,
                                          IDS_SNOOZE_1_WEEK, IDS_SNOOZE_2_WEEKS, IDS_SNOOZE_NEVER};

// Nobody sees an empty text, but screen readers would stop at it and have nothing to say.
void hideEmptyTexts(WindowHandle window) {
    for (const int control : kTextControls) {
        if (dialog_controls::text(window, control).empty()) {
            dialog_controls::show(window, control, false);
        }
    }
}

// Only exactly 1 switches something on.
bool isSwitchedOn(const arbor::IPropertyHolder& description, const wchar_t* key) {
    return description.getInt(key, 0) == 1;
}

// The alert of an empty cartridge is snoozed by its opening alone and has no list.
bool hasSnoozeList(AlertType type) {
    return type == AlertType::TonerLow || type == AlertType::TonerVeryLow;
}

bool needsSnoozeChoice(std::int32_t status) {
    return status == status_code::kTonerLow || status == status_code::kTonerVeryLow;
}

// An accelerator sends 1, and so does every choice in the snooze list and a link that is clicked
// twice. A button sends 5 for the second click of a double click, but only a drawn one; it has sent
// its command at the first click already.
bool repeatsAnAction(int control, unsigned notice) {
    constexpr unsigned kFromAccelerator = 1;
    constexpr unsigned kDoubleClicked = 5;
    return notice == kFromAccelerator ||
           (notice == kDoubleClicked && buttonFace(control) != nullptr);
}

}  // namespace

DefaultStatusDialog::DefaultStatusDialog(const arbor::IPropertyHolder& description, bool createNow)
    : StatusDialog(description, false),
      _dialogType(static_cast<AlertType>(description.getInt(alert_key::kDialogType, 0))),
      // Equally right with 1: both have the general help.
      _status(description.getInt(alert_key::kStatus, 0)),
      _genuineCartridge(description.getInt(alert_key::kGenuineCartridge, 0) > 0),
      _helpHidden(isSwitchedOn(description, alert_key::kHideHelp)),
      _suppliesShown(isSwitchedOn(description, alert_key::kShowSupplies)),
      _recycleHidden(isSwitchedOn(description, alert_key::kHideForRecycle)),
      _suppliesPicture(description.getInt(alert_key::kSuppliesPicture, 0)),
      _conditionPicture(description.getInt(alert_key::kConditionPicture, 0)),
      _duplexTitle(textOf(description, alert_key::kDuplexTitle)),
      _caption(textOf(description, alert_key::kCaption)),
      _printerName(arbor::wideText(description, alert_key::kPrinterName)),
      _alertDetail(arbor::wideText(description, alert_key::kAlertDetail)),
      _suppliesName(arbor::wideText(description, alert_key::kSuppliesName)),
      _suppliesPages(arbor::wideText(description, alert_key::kSuppliesPages)),
      _suppliesComment(arbor::wideText(description, alert_key::kSuppliesComment)) {
    const std::wstring detail =
        arbor::wideText(description, alert_key::kDetailText, alert_key::kNotExist);
    if (detail != alert_key::kNotExist) _detail = detail;
    for (std::size_t step = 0; step < kDuplexSteps; ++step) {
        // Equally right after the next: a step's picture does not depend on its text.
        _duplexTexts[step] = textOf(description, alert_key::kDuplexTexts[step]);
        _duplexPictures[step] = description.getInt(alert_key::kDuplexPictures[step], 0);
    }
    _title = formatText(textOf(description, alert_key::kTitle), {_printerName}, kTextUnits);
    // The first message replaces all others that the base has put together, and its placeholder
    // stands for the base's printer text, not for the printer's name.
    if (description.getInt(alert_key::kMessage, 0) != 0) {
        _message = formatText(textOf(description, alert_key::kMessage), {_printerText}, kTextUnits);
    }
    if (createNow) create();
}

DialogResult DefaultStatusDialog::onInitDialog(WindowHandle window, MessageWord, MessageLong) {
    // Equally right after the next: the icons are the window's, the steps have controls.
    dialog_controls::setIcons(window, _module, IDI_PROGRAM);
    showDuplexSteps(window);  // Equally right after the next: no control belongs to both.
    showGenuineLink(window);
    if (_helpHidden) dialog_controls::show(window, IDC_ALERT_HELP, false);
    if (_suppliesShown) showSuppliesBlock(window);
    // The window and not the button, because an alert about recycling has nothing else to say.
    if (_recycleHidden && dialog_controls::exists(window, IDC_ALERT_RECYCLE)) {
        dialog_controls::hideWindow(window);
    }
    initialize(window);
    if (!_caption.empty()) dialog_controls::setTitle(window, _caption);
    nameControls(window);
    if (hasSnoozeList(_dialogType)) showSnoozeList(window);
    dialog_controls::setTextIfAny(window, IDC_ALERT_DETAIL, _detail);
    hideEmptyTexts(window);
    if (_detail.empty()) {
        // Where the headline says all, the picture stands below it in place of the texts.
        dialog_controls::placeAt(window, _message.empty() ? IDC_ALERT_PICTURE : IDC_ALERT_MESSAGE,
                                 IDC_ALERT_DETAIL);
    }
    dialog_controls::setDefaultButton(window, IDC_ALERT_OK);
    return kHandled;
}

void DefaultStatusDialog::showDuplexSteps(WindowHandle window) const {
    for (std::size_t step = 0; step < kDuplexSteps; ++step) {
        if (_duplexPictures[step] == 0) {
            dialog_controls::show(window, kDuplexPictureControls[step], false);
        }
        dialog_controls::setTextIfAny(window, kDuplexTextControls[step], _duplexTexts[step]);
    }
    dialog_controls::setTextIfAny(window, IDC_DUPLEX_TITLE, _duplexTitle);
    dialog_controls::setFont(window, IDC_DUPLEX_TITLE, Emphasis::Headline);
}

void DefaultStatusDialog::showGenuineLink(WindowHandle window) const {
    if (!_genuineCartridge) return;
    if (platform::systemDefaultLanguage() == kSimplifiedChinese) {
        dialog_controls::setFont(window, IDC_ALERT_MESSAGE, Emphasis::Link);
        dialog_controls::makeLink(window, IDC_ALERT_MESSAGE);
    } else {
        dialog_controls::show(window, IDC_ALERT_MESSAGE, false);
    }
}

void DefaultStatusDialog::showSuppliesBlock(WindowHandle window) const {
    dialog_controls::setTextIfAny(window, IDC_SUPPLIES_DETAIL, _alertDetail);
    dialog_controls::setPicture(window, IDC_SUPPLIES_PICTURE, _module, _suppliesPicture);
    dialog_controls::setTextIfAny(window, IDC_SUPPLIES_NAME, _suppliesName);
    dialog_controls::setPicture(window, IDC_SUPPLIES_CONDITION, _module, _conditionPicture);
    dialog_controls::setTextIfAny(window, IDC_SUPPLIES_PAGES, _suppliesPages);
    dialog_controls::setTextIfAny(window, IDC_SUPPLIES_COMMENT, _suppliesComment);
}

void DefaultStatusDialog::showSnoozeList(WindowHandle window) const {
    dialog_controls::show(window, IDC_SNOOZE_CHOICE, true);
    for (const std::uint32_t id : kSnoozeTexts) {
        dialog_controls::addChoice(window, IDC_SNOOZE_CHOICE, text(id));
    }
    dialog_controls::choose(window, IDC_SNOOZE_CHOICE, kSnoozePrompt);
    dialog_controls::show(window, IDC_SNOOZE_LABEL, true);
    dialog_controls::setTextIfAny(window, IDC_SNOOZE_LABEL, text(IDS_SNOOZE_LABEL));
}

// Screen readers speak the texts of windows and not what is painted on them. A picture control
// without a picture is hidden, so that they do not stop at it.
void DefaultStatusDialog::nameControls(WindowHandle window) const {
    for (const ButtonFace& face : buttonFaces()) {
        dialog_controls::setTextIfAny(window, face.control, buttonCaption(face));
    }
    const struct {
        int control;
        int bitmap;
    } pictures[] = {{IDC_ALERT_ICON, _iconId},
                    {IDC_ALERT_PICTURE, _pictureId},
                    {IDC_SUPPLIES_PICTURE, _suppliesPicture},
                    {IDC_SUPPLIES_CONDITION, _conditionPicture}};
    for (const auto& picture : pictures) {
        if (picture.bitmap == 0) dialog_controls::show(window, picture.control, false);
        const std::uint32_t name = pictureName(picture.control, picture.bitmap);
        // Equally right with 1: the text of id 0 is empty, and so is no name.
        if (name != 0) dialog_controls::setName(window, picture.control, text(name));
    }
    dialog_controls::setName(window, IDC_ALERT_BANNER,
                             _printerName.empty() ? text(IDS_NAME_PRINTER_PICTURE) : _printerName);
    for (std::size_t step = 0; step < kDuplexSteps; ++step) {
        const auto named = [this, step](std::uint32_t name) {
            // Steps have one digit. std::to_wstring would bring the library's wide printf, 8 KiB.
            const std::wstring number(1, static_cast<wchar_t>(L'1' + step));
            return formatText(text(name), {number}, kTextUnits);
        };
        dialog_controls::setName(window, kDuplexIconControls[step], named(IDS_NAME_STEP));
        dialog_controls::setName(window, kDuplexPictureControls[step],
                                 named(IDS_NAME_STEP_PICTURE));
    }
    dialog_controls::describe(window, text(IDS_NAME_LINK_ACTION));
}

std::wstring DefaultStatusDialog::buttonCaption(const ButtonFace& face) const {
    if (face.control == IDC_ALERT_OK && !_okCaption.empty()) return _okCaption;
    return localizedText(_stringModule, face.caption);
}

DialogResult DefaultStatusDialog::onCommand(WindowHandle window, MessageWord wParam,
                                            MessageLong lParam) {
    const int control = commandControl(wParam);
    if (repeatsAnAction(control, commandNotice(wParam))) return kHandled;
    // After each of these the alert may be gone.
    switch (control) {
        case IDC_ALERT_RECYCLE:
        case IDC_ALERT_RETURNS_LINK:
            notify(alert_action::kRecycle);
            break;
        case IDC_ALERT_FRAUD_LINK:
            notify(alert_action::kAnticounterfeit);
            break;
        case IDC_ALERT_SHOP:
            notify(alert_action::kShop);
            break;
        case IDC_ALERT_CANCEL:
            notify(alert_action::kCancel);
            break;
        case IDC_ALERT_MESSAGE:
            notify(alert_action::kCheckCartridge);
            break;
        case IDC_ALERT_HELP:
            showHelp(window);
            break;
        case IDC_ALERT_OK:
            acceptOk(window);
            break;
        default:
            command(window, wParam, lParam);
            break;
    }
    return kHandled;
}

// The keys are the same in every language; the captions mark exactly these letters.
DialogResult DefaultStatusDialog::onChar(WindowHandle window, MessageWord wParam,
                                         MessageLong lParam) {
    platform::trace("dlgProc(msg==WM_CHAR): wparam=%d, lparam=0x%x", static_cast<int>(wParam),
                    static_cast<unsigned>(lParam));
    const auto usable = [window](int control) { return dialog_controls::usable(window, control); };
    switch (wParam) {
        case L'H':
        case L'h':
            if (!usable(IDC_ALERT_HELP)) break;
            platform::trace("WM_CHAR help");
            showHelp(window);
            break;
        case L'U':
            if (!usable(IDC_ALERT_SHOP)) break;
            platform::trace("WM_CHAR supplies");
            notify(alert_action::kShop);
            break;
        case L'R':
            if (usable(IDC_ALERT_RECYCLE)) notify(alert_action::kRecycle);
            break;
        case L'C':
            if (!usable(IDC_ALERT_OK)) break;
            if (dialog_controls::text(window, IDC_ALERT_OK) != _okCaption) break;
            platform::trace("WM_CHAR continue or ok");
            notify(alert_action::kContinue);
            break;
        case L'O':
            if (!usable(IDC_ALERT_OK)) break;
            if (!_okCaption.empty() && dialog_controls::text(window, IDC_ALERT_OK) != _okCaption) {
                break;
            }
            platform::trace("WM_CHAR Return");
            acceptOk(window);
            break;
        default:
            break;
    }
    return kHandled;
}

void DefaultStatusDialog::acceptOk(WindowHandle window) {
    if (needsSnoozeChoice(_status)) {
        if (dialog_controls::choice(window, IDC_SNOOZE_CHOICE) == kSnoozePrompt) {
            dialog_controls::showMessage(window, text(IDS_SNOOZE_NOTHING_CHOSEN), _printerName,
                                         isRightToLeftUI());
            return;
        }
        snoozeFromChoice(_dialogType, window);
    }
    notify(alert_action::kAccept);
}

void DefaultStatusDialog::showHelp(WindowHandle window) const {
    const HelpText help = helpText(_status);
    const std::wstring caption =
        help.caption != 0 ? localizedText(_stringModule, help.caption) : _printerName;
    const std::wstring explanation = localizedText(_stringModule, help.text, kHelpTextUnits);
    dialog_controls::showMessage(window, explanation, caption, isRightToLeftUI());
}

bool DefaultStatusDialog::canResume() const {
    if (_status == status_code::kManualDuplex40120 || _status == status_code::kManualDuplex40121) {
        return true;
    }
    try {
        // Without a strings library both are empty, and equal.
        return text(IDS_CONTINUE) == _okCaption;
    } catch (const std::bad_alloc&) {
        // Closing an alert must not fail. The answer for nearly every alert is no, and a yes would
        // press the printer's button.
        return false;
    }
}
