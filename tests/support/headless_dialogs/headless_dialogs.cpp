#include "tests/support/headless_dialogs/headless_dialogs.h"

#include "tests/support/headless_dialogs/headless_messages.h"
#include "ui/resource_ids.h"
#include "ui/status_dialog.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

namespace headless {

namespace {

struct Desktop {
    std::vector<std::pair<WindowHandle, std::unique_ptr<Window>>> windows;
    std::vector<Message> messages;
    std::vector<CartridgeCheck> checks;
    std::function<void()> whileMessageIsOpen;
    std::wstring templateText;
    std::function<void()> whenAWindowGoes;
    bool creationFails = false;
    std::uintptr_t lastHandle = 0;
    int opened = 0;
    int dismissed = 0;
    WindowHandle lastDismissed = nullptr;
};

Desktop& desktop() {
    static Desktop instance;
    return instance;
}

constexpr int kFrame[] = {IDC_ALERT_BANNER,  IDC_ALERT_ICON,    IDC_ALERT_HEADLINE,
                          IDC_ALERT_MESSAGE, IDC_ALERT_PICTURE, IDC_SNOOZE_LABEL,
                          IDC_SNOOZE_CHOICE, IDC_ALERT_OK,      IDC_ALERT_HELP,
                          IDC_ALERT_SHOP,    IDC_ALERT_RECYCLE, IDC_ALERT_SETTINGS};
constexpr int kSupplies[] = {IDC_SUPPLIES_DETAIL,    IDC_SUPPLIES_PICTURE, IDC_SUPPLIES_NAME,
                             IDC_SUPPLIES_CONDITION, IDC_SUPPLIES_PAGES,   IDC_SUPPLIES_COMMENT};
constexpr int kDuplex[] = {IDC_DUPLEX_TITLE,     IDC_DUPLEX_PICTURE_1, IDC_DUPLEX_PICTURE_2,
                           IDC_DUPLEX_PICTURE_3, IDC_DUPLEX_ICON_1,    IDC_DUPLEX_ICON_2,
                           IDC_DUPLEX_ICON_3,    IDC_DUPLEX_STEP_1,    IDC_DUPLEX_STEP_2,
                           IDC_DUPLEX_STEP_3,    IDC_ALERT_OK};
constexpr int kFeed[] = {IDC_ALERT_PICTURE, IDC_ALERT_MESSAGE, IDC_ALERT_OK};

template <typename Ids>
void addControls(Window& window, const Ids& ids) {
    for (const int id : ids)
        window.controls[id] = {};
}

bool addTemplate(Window& window) {
    switch (window.templateId) {
        case IDD_ALERT:
            addControls(window, kFrame);
            window.controls[IDC_ALERT_DETAIL] = {};
            break;
        case IDD_SUPPLIES_ALERT:
            addControls(window, kFrame);
            addControls(window, kSupplies);
            break;
        case IDD_MANUAL_DUPLEX:
            addControls(window, kDuplex);
            break;
        case IDD_MANUAL_FEED:
            addControls(window, kFeed);
            break;
        case kLinksTemplate:
            addControls(window, kFrame);
            addControls(window, kLinkControls);
            break;
        default:
            return false;
    }
    for (const int hidden : {IDC_SNOOZE_LABEL, IDC_SNOOZE_CHOICE, IDC_ALERT_SETTINGS}) {
        const auto found = window.controls.find(hidden);
        if (found != window.controls.end()) found->second.visible = false;
    }
    for (auto& entry : window.controls)
        entry.second.text = desktop().templateText;
    const auto settings = window.controls.find(IDC_ALERT_SETTINGS);
    if (settings != window.controls.end()) settings->second.enabled = false;
    return true;
}

}  // namespace

void reset() {
    desktop() = {};
}

std::vector<WindowHandle> windows() {
    std::vector<WindowHandle> handles;
    for (const auto& entry : desktop().windows)
        handles.push_back(entry.first);
    return handles;
}

int openedWindows() {
    return desktop().opened;
}
int dismissedWindows() {
    return desktop().dismissed;
}
WindowHandle lastDismissed() {
    return desktop().lastDismissed;
}

Window* find(WindowHandle window) {
    for (const auto& entry : desktop().windows) {
        if (entry.first == window) return entry.second.get();
    }
    return nullptr;
}

Control& control(WindowHandle window, int id) {
    Window* found = find(window);
    if (found == nullptr) throw std::logic_error("the window is gone");
    return found->controls.at(id);
}

const std::vector<Message>& messages() {
    return desktop().messages;
}
const std::vector<CartridgeCheck>& cartridgeChecks() {
    return desktop().checks;
}

WindowHandle openWindow(int templateId) {
    auto window = std::make_unique<Window>();
    window->templateId = templateId;
    if (desktop().creationFails || !addTemplate(*window)) return nullptr;
    const auto handle = reinterpret_cast<WindowHandle>(++desktop().lastHandle);
    desktop().windows.emplace_back(handle, std::move(window));
    return handle;
}

void eraseWindow(WindowHandle window) {
    const std::function<void()> action = desktop().whenAWindowGoes;
    if (action) action();
    auto& all = desktop().windows;
    const auto found =
        std::find_if(all.begin(), all.end(), [window](const auto& e) { return e.first == window; });
    if (found != all.end()) all.erase(found);
}

void countOpened() {
    ++desktop().opened;
}

void countDismissed(WindowHandle window) {
    ++desktop().dismissed;
    desktop().lastDismissed = window;
}

void addMessage(Message message) {
    desktop().messages.push_back(std::move(message));
    const std::function<void()> action = desktop().whileMessageIsOpen;
    if (action) action();
}

void addCheck(CartridgeCheck check) {
    desktop().checks.push_back(std::move(check));
}

void deliver(WindowHandle window, WindowMessage message, MessageWord wParam, MessageLong lParam) {
    const Window* found = find(window);
    if (found == nullptr || found->receiver == nullptr) return;
    try {
        found->receiver->dlgProc(window, message, wParam, lParam);
    } catch (const std::bad_alloc&) {  // the real dialog procedure catches it too
    }
}

bool press(WindowHandle window, int control) {
    const Window* found = find(window);
    if (found == nullptr || !found->visible || !dialog_controls::usable(window, control)) {
        return false;
    }
    sendCommand(window, static_cast<MessageWord>(control));
    return true;
}

bool choose(WindowHandle window, int index) {
    if (!dialog_controls::usable(window, IDC_SNOOZE_CHOICE)) return false;
    constexpr MessageWord kSelectionChanged = 1U << 16U;
    control(window, IDC_SNOOZE_CHOICE).chosen = index;
    sendCommand(window, IDC_SNOOZE_CHOICE | kSelectionChanged);
    return true;
}

void typeKey(WindowHandle window, wchar_t letter) {
    deliver(window, kChar, static_cast<MessageWord>(letter), 0);
}

void typeWithAlt(WindowHandle window, wchar_t letter) {
    deliver(window, kMenuChar, static_cast<MessageWord>(letter), 0);
}

void pressEscape(WindowHandle window) {
    sendCommand(window, IDC_ALERT_CANCEL);
}

void closeBox(WindowHandle window) {
    deliver(window, kClose, 0, 0);
}

void sendCommand(WindowHandle window, MessageWord wParam, MessageLong lParam) {
    deliver(window, kCommand, wParam, lParam);
}

void setTemplateText(std::wstring text) {
    desktop().templateText = std::move(text);
}

void setCreationFails(bool fails) {
    desktop().creationFails = fails;
}

void setWhileMessageIsOpen(std::function<void()> action) {
    desktop().whileMessageIsOpen = std::move(action);
}

void setWhenAWindowGoes(std::function<void()> action) {
    desktop().whenAWindowGoes = std::move(action);
}

}  // namespace headless
