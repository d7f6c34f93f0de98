#pragma once

#include "arbor/synchronized.h"
#include "arbor/thread_annotations.h"
#include "printer/alert_types.h"
#include "ui/window_types.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace arbor {
class IPropertyHolder;
}
class DefaultStatusDialog;
class StatusDialog;

// The alerts that are open, in the order of opening: one of each type, cascading over the screen.
// Owns them. Main thread. The lock is re-entrant, so a caller may hold it while it calls several of
// the operations.
class OpenAlerts : public arbor::Synchronized {
public:
    static constexpr std::uint32_t kNotFound = 0xFFFFFFFF;

    OpenAlerts();
    ~OpenAlerts();

    // Opens an alert at the next place of the cascade. An open alert of this type stays as it is
    // and the new one is dropped, as it is when its content finds no memory or its window fails.
    // May throw std::bad_alloc with nothing added or shown.
    void addAlert(arbor::IPropertyHolder& description, AlertType dialogType, bool autoClose);

    // Index of the alert of a type, kNotFound when none is open.
    std::uint32_t findAlertDialogType(AlertType dialogType);
    // The alert when it is one of ours, else null. The pointer may designate an alert that is gone.
    DefaultStatusDialog* findAlertDialog(const StatusDialog* dialog);
    // AlertType::None for an alert that is not ours.
    AlertType findAlertTypeFromDlg(const StatusDialog* dialog);
    // Destroys the alert and its window. Does nothing for one that is not ours.
    void removeAlertDialog(const StatusDialog* dialog);
    // Destroys the alerts that end with the document; returns how many stay. Takes no lock.
    std::uint32_t removeAllAutocloseDialogs(bool closeWindows);

    [[nodiscard]] bool empty() const noexcept { return _alerts.empty(); }

private:
    struct AlertRecord;

    // Not marked as guarded by the lock: the end of the document walks it without the lock. Main
    // thread only, so that walk meets nobody.
    std::vector<std::unique_ptr<AlertRecord>> _alerts;
    std::int32_t _cascadeX ARBOR_GUARDED_BY(this);
    std::int32_t _cascadeY ARBOR_GUARDED_BY(this);
};
