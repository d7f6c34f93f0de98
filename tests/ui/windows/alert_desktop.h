#pragma once

#include "arbor/property_holder.h"
#include "tern/event_broker.h"
#include "ui/default_status_dialog.h"

#include <windows.h>
#include <memory>
#include <string>

// What tests with real alert windows share. The resources are those of the test program, the texts
// those of the strings library beside it.
namespace alert_desktop {

inline constexpr wchar_t kPrinterName[] = L"Beamline K7400";

[[nodiscard]] void* strings();
[[nodiscard]] std::wstring text(std::uint32_t id);

// A status code that shows an alert of this type.
[[nodiscard]] int statusOf(int type);

// The description as the listener fills it. `broker` may be null.
void describe(arbor::IPropertyHolder& description, int type, int status,
              tern::EventBroker* broker = nullptr, const wchar_t* printerName = kPrinterName);

// Opens an alert; `status` 0 stands for one of its type. Null when it cannot be made. Without a
// broker the two fax types are made compact as the listener does.
[[nodiscard]] std::unique_ptr<DefaultStatusDialog> openAlert(
    int type, int status, tern::EventBroker* broker = nullptr,
    const wchar_t* printerName = kPrinterName);

// A desktop that runs from right to left, as long as this lives.
class MirroredDesktop {
public:
    MirroredDesktop();
    ~MirroredDesktop();
    MirroredDesktop(const MirroredDesktop&) = delete;
    MirroredDesktop& operator=(const MirroredDesktop&) = delete;

private:
    HWND _desktop;
};

// Serves the messages that are waiting, as the program's loop does.
void pump();
void pumpFor(int milliseconds);

// The messages of a double click on a control, as the system sends them.
void doubleClick(HWND control);

// Writes what the screen shows of a window to a bitmap file.
void savePicture(HWND window, const std::wstring& path);

}  // namespace alert_desktop
