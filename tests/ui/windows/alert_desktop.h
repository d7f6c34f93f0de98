#pragma once

#include "arbor/property_holder.h"
#include "tern/event_broker.h"
#include "tools/printpath/windows/mirrored_desktop.h"
#include "ui/default_status_dialog.h"

#include <windows.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

// Helpers for tests with real alert windows. The resources are in the test program, the texts come
// from the strings library in its folder.
namespace alert_desktop {

inline constexpr wchar_t kPrinterName[] = L"Beamline K7400";
// The types of alerts are the numbers below this one.
inline constexpr int kTypes = 33;

[[nodiscard]] void* strings();
[[nodiscard]] std::wstring text(std::uint32_t id);

// A status code that shows an alert of this type.
[[nodiscard]] int statusOf(int type);

// Fills the description as the listener does. `broker` may be null.
void describe(arbor::IPropertyHolder& description, int type, int status,
              tern::EventBroker* broker = nullptr, const wchar_t* printerName = kPrinterName);

// Opens an alert; `status` 0 means any status of this type. Returns null when the alert cannot be
// created. Without a broker this makes the two fax types compact, as the listener would do.
[[nodiscard]] std::unique_ptr<DefaultStatusDialog> openAlert(
    int type, int status, tern::EventBroker* broker = nullptr,
    const wchar_t* printerName = kPrinterName);

// Hidden dialogs count, too.
[[nodiscard]] int dialogsOfThisThread();

// The desktop runs from right to left as long as such an object exists.
using printpath::MirroredDesktop;

// Dispatches the waiting messages, as the program's loop does.
void pump();
void pumpFor(int milliseconds);

// Visits a modal page while its own message loop runs: calls `look` as soon as the page with this
// title is shown. A page that `look` and what it has posted leave open is ended with OK. One page
// at a time.
class ModalPage {
public:
    ModalPage(std::uint32_t title, std::function<void(HWND)> look);
    ~ModalPage();
    ModalPage(const ModalPage&) = delete;
    ModalPage& operator=(const ModalPage&) = delete;

    [[nodiscard]] bool wasShown() const { return _page != nullptr; }
    [[nodiscard]] bool wasLeftOpen() const { return _isLeftOpen; }

private:
    void visit();

    std::wstring _title;
    std::function<void(HWND)> _look;
    UINT_PTR _timer;
    HWND _page = nullptr;
    bool _isSeen = false, _isLeftOpen = false;
};

// Sends the messages that the system sends for a double click on a control.
void doubleClick(HWND control);

}  // namespace alert_desktop
