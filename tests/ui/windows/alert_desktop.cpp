#include "tests/ui/windows/alert_desktop.h"

#include "ui/alert_factory.h"
#include "ui/alert_keys.h"
#include "ui/alert_window.h"
#include "ui/localized_text.h"

#include <string>
#include <utility>

namespace alert_desktop {

namespace {

constexpr int kPrintedFax = 26, kFaxInOrrery = 27;

struct TypeStatus {
    int type, status;
};
constexpr TypeStatus kStatuses[] = {
    {0, 41100},  {1, 41003},  {2, 41900},  {3, 40120},  {4, 10209},   {5, 40600},   {6, 10512},
    {7, 10403},  {8, 40017},  {9, 50021},  {10, 50012}, {11, 30201},  {12, 50020},  {14, 50003},
    {15, 50007}, {16, 50008}, {17, 50025}, {18, 50005}, {19, 40020},  {20, 40021},  {21, 42002},
    {22, 42000}, {23, 42001}, {24, 40608}, {25, 1},     {26, 100000}, {27, 100001}, {28, 42004},
    {29, 40010}, {30, 10219}, {31, 10300}, {32, 40625}};

BOOL CALLBACK countDialog(HWND window, LPARAM count) {
    wchar_t name[32] = {};
    ::GetClassNameW(window, name, 32);
    if (std::wstring(name) == L"#32770") ++*reinterpret_cast<int*>(count);
    return TRUE;
}

}  // namespace

void* strings() {
    static void* const library = platform::openResourceLibrary(L"QVK7400SMs.dll");
    return library;
}

std::wstring text(std::uint32_t id) {
    return localizedText(strings(), id, kHelpTextUnits);
}

int statusOf(int type) {
    for (const TypeStatus& row : kStatuses) {
        if (row.type == type) return row.status;
    }
    return 0;
}

int dialogsOfThisThread() {
    int count = 0;
    ::EnumThreadWindows(::GetCurrentThreadId(), &countDialog, reinterpret_cast<LPARAM>(&count));
    return count;
}

void describe(arbor::IPropertyHolder& description, int type, int status, tern::EventBroker* broker,
              const wchar_t* printerName) {
    description.setPointer(alert_key::kModule, ::GetModuleHandleW(nullptr));
    description.setPointer(alert_key::kStringModule, strings());
    if (broker != nullptr) description.setPointer(alert_key::kBroker, broker);
    description.setWString(alert_key::kPrinterName, printerName);
    description.setWString(alert_key::kPortName, L"USB001");
    description.setInt(alert_key::kStatus, status != 0 ? status : statusOf(type));
    description.setInt(alert_key::kSubcode, 0);
    description.setInt(alert_key::kDialogType, type);
    if (type == 1) description.setInt(alert_key::kMediaCode, statusOf(type) % 100);
}

std::unique_ptr<DefaultStatusDialog> openAlert(int type, int status, tern::EventBroker* broker,
                                               const wchar_t* printerName) {
    arbor::PropertyHolder description;
    describe(description, type, status, broker, printerName);
    std::unique_ptr<DefaultStatusDialog> alert = createAlertDialog(description);
    if (alert == nullptr || !alert->create()) return nullptr;
    if (broker == nullptr && (type == kPrintedFax || type == kFaxInOrrery)) {
        compactAlertWindow(alert->window(), type == kFaxInOrrery);
    }
    return alert;
}

void pump() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) {
        if (::GetMessageA(&message, nullptr, 0, 0) <= 0) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

void pumpFor(int milliseconds) {
    const DWORD start = ::GetTickCount();
    while (static_cast<int>(::GetTickCount() - start) < milliseconds) {
        pump();
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}

ModalPage::ModalPage(std::uint32_t title, std::function<void(HWND)> look)
    : _title(text(title)), _look(std::move(look)) {
    constexpr UINT kMilliseconds = 10;
    static ModalPage* current;
    current = this;
    const auto tick = [](HWND, UINT, UINT_PTR, DWORD) { current->visit(); };
    _timer = ::SetTimer(nullptr, 0, kMilliseconds, tick);
}

ModalPage::~ModalPage() {
    ::KillTimer(nullptr, _timer);
}

// A timer's message comes after all that were posted before.
void ModalPage::visit() {
    if (_page == nullptr) {
        const HWND page = ::FindWindowW(nullptr, _title.c_str());
        if (!::IsWindowVisible(page)) return;  // its loop shows it when it has nothing else to do
        _page = page;
        _look(page);
        _isSeen = true;
    } else if (_isSeen && ::IsWindow(_page)) {
        _isLeftOpen = true;
        ::PostMessageW(_page, WM_COMMAND, IDOK, 0);
    }
}

void doubleClick(HWND control) {
    constexpr UINT kMessages[] = {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP};
    constexpr LPARAM kInside = MAKELPARAM(5, 5);
    for (const UINT message : kMessages)
        ::SendMessageW(control, message, MK_LBUTTON, kInside);
}

}  // namespace alert_desktop
