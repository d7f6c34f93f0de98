#include "monitor/open_alerts.h"

#include "arbor/i_property_holder.h"
#include "arbor/scoped_lock.h"
#include "platform/trace.h"
#include "ui/alert_factory.h"
#include "ui/alert_window.h"
#include "ui/default_status_dialog.h"
#include "ui/status_dialog.h"
#include "ui/window_types.h"

#include <cstddef>
#include <utility>

namespace {

constexpr std::int32_t kFirstPosition = 100;  // pixels, both ways
constexpr std::int32_t kCascadeStep = 20;     // pixels, both ways

using Lock = arbor::ScopedLock<arbor::Synchronized>;

// The trace tells objects apart by their addresses, and "%#x" takes 32 bits: the lower half does.
unsigned shown(const void* address) {
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(address));
}

int shown(AlertType type) {
    return static_cast<int>(type);
}

}  // namespace

struct OpenAlerts::AlertRecord {
    AlertRecord(AlertType type, bool closesWithDocument)
        : dialogType(type), autoClose(closesWithDocument) {}

    std::unique_ptr<DefaultStatusDialog> dialog;
    AlertType dialogType;
    bool autoClose;
};

OpenAlerts::OpenAlerts() : _cascadeX(kFirstPosition), _cascadeY(kFirstPosition) {}

OpenAlerts::~OpenAlerts() = default;

void OpenAlerts::addAlert(arbor::IPropertyHolder& description, AlertType dialogType,
                          bool autoClose) {
    if (findAlertDialogType(dialogType) != kNotFound) return;

    const Lock lock(*this);
    // Reserve now: once the window shows, storing its record must not fail.
    _alerts.reserve(_alerts.size() + 1);
    auto record = std::make_unique<AlertRecord>(dialogType, autoClose);
    platform::trace("TERNA new alert in _alerts (%#x)", shown(record.get()));
    record->dialog = createAlertDialog(description);
    if (record->dialog == nullptr) return;
    record->dialog->setPosition(_cascadeX, _cascadeY);
    _cascadeX += kCascadeStep;
    _cascadeY += kCascadeStep;
    if (record->dialog->create()) _alerts.push_back(std::move(record));
}

std::uint32_t OpenAlerts::findAlertDialogType(AlertType dialogType) {
    const Lock lock(*this);
    platform::trace("TERNA findAlertDialogType %d", shown(dialogType));
    for (std::size_t index = 0; index < _alerts.size(); ++index) {
        const AlertType open = _alerts[index]->dialogType;
        platform::trace("TERNA findAlertDialogType %d ?= %d", shown(dialogType), shown(open));
        if (open == dialogType) return static_cast<std::uint32_t>(index);
    }
    return kNotFound;
}

DefaultStatusDialog* OpenAlerts::findAlertDialog(const StatusDialog* dialog) {
    const Lock lock(*this);
    for (const auto& record : _alerts) {
        platform::trace("TERNA findAlertDialog %#x ?= %#x", shown(dialog),
                        shown(record->dialog.get()));
        if (record->dialog.get() == dialog) return record->dialog.get();
    }
    return nullptr;
}

AlertType OpenAlerts::findAlertTypeFromDlg(const StatusDialog* dialog) {
    const Lock lock(*this);
    for (const auto& record : _alerts) {
        platform::trace("TERNA findAlertTypeFromDlg %#x ?= %#x", shown(dialog),
                        shown(record->dialog.get()));
        if (record->dialog.get() == dialog) return record->dialogType;
    }
    return AlertType::None;
}

void OpenAlerts::removeAlertDialog(const StatusDialog* dialog) {
    const Lock lock(*this);
    for (auto place = _alerts.begin(); place != _alerts.end(); ++place) {
        platform::trace("TERNA removeAlertDialog %#x ?= %#x", shown(dialog),
                        shown((*place)->dialog.get()));
        if ((*place)->dialog.get() != dialog) continue;

        platform::trace("TERNA remove dlg  = %d", static_cast<int>(place - _alerts.begin()));
        // Take the record out of the list first: destroying the window sends it messages, and what
        // they reach must not find this alert any more.
        const std::unique_ptr<AlertRecord> removed = std::move(*place);
        _alerts.erase(place);
        return;
    }
}

std::uint32_t OpenAlerts::removeAllAutocloseDialogs(bool closeWindows) {
    platform::trace("TERNA removeAllAutocloseDialogs");
    std::uint32_t left = 0;
    for (std::size_t index = 0; index < _alerts.size();) {
        if (!_alerts[index]->autoClose) {
            ++left;
            ++index;
            continue;
        }
        platform::trace("TERNA remove Dialog %d", static_cast<int>(index));
        // The index stays: the record that moves into this place is examined next.
        const std::unique_ptr<AlertRecord> removed = std::move(_alerts[index]);
        _alerts.erase(_alerts.begin() + static_cast<std::ptrdiff_t>(index));
        const WindowHandle window = removed->dialog->window();
        if (closeWindows && window != nullptr) dismissAlertWindow(window);
    }
    platform::trace("TERNA Dialogs left %d", static_cast<int>(left));
    return left;
}
