#include "tests/soak/monitor_session.h"

#include "tests/soak/soak_records.h"
#include "tools/printpath/windows/alert_input.h"
#include "tools/printpath/windows/alert_windows.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/handle.h"
#include "ui/resource_ids.h"

#include <tlhelp32.h>

#include <functional>

namespace soak {

namespace {

using printpath::Failure;
using printpath::Outcome;

constexpr wchar_t kMonitor[] = L"QVK7400SM.exe";
constexpr wchar_t kStrings[] = L"QVK7400SMs.dll";
constexpr wchar_t kDeviceLibraries[] = L"simulated-device";
constexpr DWORD kPatienceMs = 60000;
constexpr DWORD kPollMs = 5;
constexpr DWORD kSettleMs = 300;  // several turns of the monitor's loop
constexpr int kSettleTries = 20;

std::filesystem::path newFolder() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                         (L"soak-" + std::to_wstring(::GetCurrentProcessId()));
    std::filesystem::create_directories(folder);
    return folder;
}

std::wstring newPipeName() {
    static int runs = 0;
    return L"soak-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++runs);
}

bool eventually(const std::function<bool()>& condition) {
    const ULONGLONG end = ::GetTickCount64() + kPatienceMs;
    while (!condition()) {
        if (::GetTickCount64() >= end) return false;
        ::Sleep(kPollMs);
    }
    return true;
}

bool canBePressed(HWND dialog, int id) {
    const HWND control = ::GetDlgItem(dialog, id);
    return control != nullptr && ::IsWindowVisible(control) && ::IsWindowEnabled(control);
}

}  // namespace

Workplace::Workplace(const std::filesystem::path& programs) : _folder(newFolder()) {
    _device =
        std::make_unique<printpath::DeviceStage>(programs / kDeviceLibraries, _folder / L"device");
    std::filesystem::copy(programs / kMonitor, _folder);
    std::filesystem::copy(programs / kStrings, _folder);
    std::filesystem::copy(_device->libraryFile(), _folder);
}

Workplace::~Workplace() {
    std::error_code ignored;
    std::filesystem::remove_all(_folder, ignored);
}

std::filesystem::path Workplace::monitor() const {
    return _folder / kMonitor;
}

std::filesystem::path Workplace::deviceFolder() const {
    return _device->folder();
}

MonitorSession::MonitorSession(const Workplace& workplace, bool byteMode) {
    const std::wstring name = newPipeName();
    _pipe = std::make_unique<printpath::PipeServer>(name, byteMode);
    _process = std::make_unique<printpath::MonitorProcess>(
        workplace.monitor(), L"inputPipe=" + name + L" printerid=" + std::to_wstring(kPrinterId),
        std::map<std::wstring, std::wstring>{
            {L"QVSM_DEVICE_FOLDER", workplace.deviceFolder().wstring()}});
    if (!eventually([this] { return _pipe->connected() || !_process->running(); }))
        throw Failure("the monitor does not open its pipe", Outcome::Hung);
}

void MonitorSession::write(const std::string& bytes) {
    _pipe->write(bytes, kPatienceMs);
}

void MonitorSession::hangUp() {
    _pipe->drain(kPatienceMs);
    _pipe.reset();
}

std::vector<HWND> MonitorSession::alerts() const {
    return printpath::dialogWindows(processId());
}

std::vector<HWND> MonitorSession::awaitAlerts(std::size_t count) const {
    std::vector<HWND> open;
    const bool came = eventually([this, count, &open] {
        open = alerts();
        return open.size() == count || !_process->running();
    });
    if (!_process->running())
        throw Failure("the monitor has ended with exit code " +
                      printpath::describeExitCode(_process->exitCode()));
    if (!came)
        throw Failure(std::to_string(open.size()) + " alerts are open instead of " +
                      std::to_string(count));
    return open;
}

void MonitorSession::answer(HWND dialog, int choice) const {
    // It may still be busy with opening alerts.
    if (!eventually([dialog] { return printpath::answers(dialog); }))
        throw Failure("an alert does not answer", Outcome::Hung);
    if (canBePressed(dialog, IDC_SNOOZE_CHOICE))
        printpath::chooseEntry(dialog, IDC_SNOOZE_CHOICE, choice);
    if (canBePressed(dialog, IDC_ALERT_OK))
        printpath::pressControl(dialog, IDC_ALERT_OK);
    else
        ::PostMessageW(dialog, WM_CLOSE, 0, 0);
}

Gauges MonitorSession::settledGauges() const {
    Gauges gauges = readGaugesOf(processId());
    for (int tries = 0; tries < kSettleTries; ++tries) {
        ::Sleep(kSettleMs);
        const long before = gauges.windows;
        gauges = readGaugesOf(processId());
        if (gauges.windows == before) break;
    }
    return gauges;
}

DWORD MonitorSession::awaitEnd() const {
    if (!eventually([this] { return !_process->running(); }))
        throw Failure("the monitor does not end; open alerts: " + std::to_string(alerts().size()),
                      Outcome::Hung);
    return _process->exitCode();
}

int runningMonitors() {
    const printpath::Handle processes =
        printpath::fileHandle(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = ::Process32FirstW(processes.get(), &entry); more;
         more = ::Process32NextW(processes.get(), &entry))
        if (::lstrcmpiW(entry.szExeFile, kMonitor) == 0) ++count;
    return count;
}

}  // namespace soak
