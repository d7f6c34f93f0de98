// alert_gallery FOLDER: opens one alert of each template on the real desktop as under a
// high-contrast scheme, whose colours the desktop must have, and writes a picture of each to
// FOLDER. The strings library must be in the program's folder. The pictures are for people; the
// tests in this folder check the alerts.

#include "tests/ui/windows/alert_desktop.h"
#include "tools/printpath/windows/screen_picture.h"
#include "ui/alert_factory.h"
#include "ui/alert_keys.h"
#include "ui/validation_dialog.h"
#include "ui/windows/display_settings.h"

#include <cstdlib>
#include <string>

namespace {

constexpr int kOfEachTemplate[] = {0, 4, 3};  // the first three; the others have no type
constexpr int kManualFeedTemplate = 138, kLoadPaperText = 265;
constexpr int kMillisecondsToPaint = 150;
constexpr unsigned kCheckTitle = 1064, kDetailsTitle = 1066, kLearnMore = 1051;

void save(const std::wstring& folder, const std::wstring& name, HWND window) {
    alert_desktop::pumpFor(kMillisecondsToPaint);
    RECT place{};
    ::GetWindowRect(window, &place);
    printpath::saveBitmap(printpath::captureScreen(place), folder + L"/" + name + L".bmp");
}

void showType(const std::wstring& folder, int type) {
    auto alert = alert_desktop::openAlert(type, 0);
    if (alert == nullptr) return;
    save(folder, std::to_wstring(type), alert->window());
}

// Nothing in the monitor opens this one; it is for a listener that asks for it.
void showManualFeed(const std::wstring& folder) {
    arbor::PropertyHolder description;
    alert_desktop::describe(description, 2, 0);
    if (createAlertDialog(description) == nullptr) return;
    description.setInt(alert_key::kTemplate, kManualFeedTemplate);
    description.setInt(alert_key::kMessage, kLoadPaperText);
    const DefaultStatusDialog alert(description, true);
    save(folder, L"manual-feed", alert.window());
}

void showCheck(const std::wstring& folder) {
    showValidationDialog(::GetModuleHandleW(nullptr), alert_desktop::strings(), L"Beamline K7400");
    const HWND check = ::FindWindowW(nullptr, alert_desktop::text(kCheckTitle).c_str());
    save(folder, L"check", check);
    const alert_desktop::ModalPage details(kDetailsTitle,
                                           [&](HWND page) { save(folder, L"details", page); });
    ::SendMessageW(check, WM_COMMAND, kLearnMore, 0);
    ::DestroyWindow(check);
}

}  // namespace

int wmain(int argumentCount, wchar_t** arguments) {
    if (argumentCount != 2) return EXIT_FAILURE;
    const std::wstring folder = arguments[1];
    setHighContrastQuery([] { return true; });
    for (const int type : kOfEachTemplate)
        showType(folder, type);
    showManualFeed(folder);
    showCheck(folder);
    return EXIT_SUCCESS;
}
