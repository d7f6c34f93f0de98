#include "tools/printpath/windows/scenario_run.h"

#include "tools/printpath/windows/cartridge_memory.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/text_file.h"
#include "tools/printpath/windows/wide_text.h"

#include <algorithm>

namespace printpath {

namespace {

constexpr DWORD kPollMs = 20;
constexpr int kMsPerSecond = 1000;
constexpr DWORD kQuietMs = 300;  // without a trace line for so long, the monitor has nothing to do
constexpr int kSettleTries = 20;
constexpr wchar_t kStringsLibrary[] = L"QVK7400SMs.dll";
constexpr wchar_t kTraceVariable[] = L"QVSM_TRACE";
constexpr wchar_t kTraceName[] = L"trace.txt";
constexpr DWORD kPathUnits = 32768;

std::filesystem::path newWorkFolder() {
    const std::wstring name = L"printpath-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                              std::to_wstring(::GetTickCount64());
    std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder);
    return folder;
}

// The trace file that the user has named in the environment; empty if there is none.
std::filesystem::path traceFileOfTheUser() {
    std::wstring name(kPathUnits, L'\0');
    name.resize(::GetEnvironmentVariableW(kTraceVariable, name.data(), kPathUnits));
    return name.empty() ? std::filesystem::path() : std::filesystem::absolute(name);
}

std::string describeDialog(HWND dialog) {
    return (isMessageBox(dialog) ? "message box " : "dialog ") + shown(textOf(dialog)) + ": " +
           shown(headlineOf(dialog));
}

void copyFile(const std::filesystem::path& from, const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::copy_file(from, folder / from.filename(),
                               std::filesystem::copy_options::overwrite_existing, error);
    if (error) throw Failure(pathText(from) + " could not be copied", Outcome::Unusable);
}

}  // namespace

ScenarioRun::ScenarioRun(const Options& options, Timeline& timeline)
    : _options(options),
      _timeline(timeline),
      _work(newWorkFolder()),
      _traceFile(traceFileOfTheUser()) {
    if (_traceFile.empty()) _traceFile = workFile(kTraceName);
    _tracedBefore = readWholeFile(_traceFile).size();
    preparation.environment[kTraceVariable] = _traceFile.wstring();
    if (options.clean) forgetCartridges();
}

ScenarioRun::~ScenarioRun() {
    _monitor.reset();
    pipe.reset();
    std::error_code ignored;
    std::filesystem::remove_all(_work, ignored);
}

std::string ScenarioRun::readBesideScenario(const std::string& name) const {
    const std::filesystem::path file = _options.scenario.parent_path() / wideFromUtf8(name);
    std::string bytes;
    if (!readWholeFile(file, bytes))
        throw Failure(pathText(file) + " could not be read", Outcome::Unusable);
    return bytes;
}

std::filesystem::path ScenarioRun::monitorToStart() const {
    if (!simulatedDevice && preparation.withStrings) return _options.monitor;
    const std::filesystem::path folder = workFile(L"monitor");
    std::filesystem::create_directories(folder);
    copyFile(_options.monitor, folder);
    const std::filesystem::path strings = _options.monitor.parent_path() / kStringsLibrary;
    std::error_code ignored;
    if (!preparation.withStrings)
        std::filesystem::remove(folder / kStringsLibrary, ignored);
    else if (std::filesystem::exists(strings))
        copyFile(strings, folder);
    if (simulatedDevice) copyFile(simulatedDevice->libraryFile(), folder);
    return folder / _options.monitor.filename();
}

void ScenarioRun::startMonitor() {
    const std::wstring name =
        L"printpath-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++_runs);
    pipe.reset();
    if (preparation.withPipe) pipe = std::make_unique<PipeServer>(name, preparation.byteMode);
    writing = {};
    dialog = nullptr;
    if (simulatedDevice)
        preparation.environment[L"QVSM_DEVICE_FOLDER"] = simulatedDevice->folder().wstring();
    if (linkRecorder)
        preparation.environment[LinkRecorder::kVariable] = linkRecorder->file().wstring();

    const std::uint32_t id = preparation.monitorPrinterId.value_or(preparation.printerId);
    const std::wstring arguments =
        L"inputPipe=" + name + L" printerid=" + std::to_wstring(id) + preparation.arguments;
    _monitor =
        std::make_unique<MonitorProcess>(monitorToStart(), arguments, preparation.environment);
    _timeline.note("process " + std::to_string(_monitor->id()) + " with " + shown(arguments));
}

MonitorProcess& ScenarioRun::monitor() {
    if (!_monitor) throw Failure("no monitor runs");
    if (_monitor->running()) return *_monitor;
    const DWORD code = _monitor->exitCode();
    throw Failure(
        "the monitor has ended, which nobody expected, with exit code " + describeExitCode(code),
        isCrash(code) ? Outcome::Crashed : Outcome::NotAsExpected);
}

DWORD ScenarioRun::awaitExit(const Step& step) {
    if (!_monitor) throw Failure("no monitor runs");
    const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(timeoutMs(step));
    const std::string what = "the end of the monitor";
    WaitProgress progress(_timeline, what, timeoutMs(step));
    while (_monitor->running() && ::GetTickCount64() < end) {
        progress.show();
        noticeDialogs();
        ::Sleep(kPollMs);
    }
    if (_monitor->running())
        throw Failure("the monitor did not end in " + std::to_string(timeoutMs(step)) + " ms; " +
                          describeOpenDialogs(),
                      Outcome::Hung);
    const DWORD code = _monitor->exitCode();
    noticeDialogs();
    _monitor.reset();
    pipe.reset();
    dialog = nullptr;
    return code;
}

int ScenarioRun::timeoutMs(const Step& step) const {
    for (std::size_t i = 0; i < step.values.size(); ++i)
        if (step.keyword->parameters[i].name == "within" && step.values[i].given)
            return static_cast<int>(step.values[i].number) * kMsPerSecond;
    return _options.timeoutSeconds * kMsPerSecond;
}

void ScenarioRun::waitUntil(const Step& step, const std::string& what,
                            const std::function<bool()>& condition,
                            const std::function<std::string()>& found) {
    const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(timeoutMs(step));
    WaitProgress progress(_timeline, what, timeoutMs(step));
    for (;;) {
        // Ask this before the condition: the last thing that the monitor did before its end may
        // fulfil the condition.
        const bool alive = !_monitor || _monitor->running();
        if (condition()) return;
        if (!alive) monitor();
        if (::GetTickCount64() >= end) break;
        progress.show();
        noticeDialogs();
        ::Sleep(kPollMs);
    }
    throw Failure("waited " + std::to_string(timeoutMs(step)) + " ms for " + what + "; " +
                  describeOpenDialogs() + (found ? "; " + found() : ""));
}

void ScenarioRun::settle() {
    monitor();
    const DWORD timeout = static_cast<DWORD>(_options.timeoutSeconds) * kMsPerSecond;
    if (pipe && pipe->connected() && !pipe->drain(timeout)) {
        monitor();
        throw Failure("the monitor does not read its pipe; " + describeOpenDialogs(),
                      Outcome::Hung);
    }
    awaitQuiet();
    noticeDialogs();
}

void ScenarioRun::awaitQuiet() {
    const ULONGLONG end =
        ::GetTickCount64() + static_cast<ULONGLONG>(_options.timeoutSeconds * kMsPerSecond);
    std::size_t bytes = trace().size();
    for (ULONGLONG since = ::GetTickCount64();
         ::GetTickCount64() - since < kQuietMs && ::GetTickCount64() < end;) {
        ::Sleep(kPollMs);
        const std::size_t now = trace().size();
        if (now != bytes) since = ::GetTickCount64();
        bytes = now;
    }
}

std::vector<HWND> ScenarioRun::dialogs() const {
    return _monitor ? dialogWindows(_monitor->id()) : std::vector<HWND>();
}

std::vector<HWND> ScenarioRun::alerts() {
    std::vector<HWND> found = dialogs();
    std::erase_if(found, isMessageBox);
    return found;
}

HWND ScenarioRun::messageBox() {
    const std::vector<HWND> open = dialogs();
    const auto box = std::find_if(open.begin(), open.end(), isMessageBox);
    return box == open.end() ? nullptr : *box;
}

Gauges ScenarioRun::settledGauges() {
    Gauges gauges = readGaugesOf(monitor().id());
    for (int tries = 0; tries < kSettleTries; ++tries) {
        ::Sleep(kQuietMs);
        const Gauges before = gauges;
        gauges = readGaugesOf(monitor().id());
        // A handle that the monitor holds for a moment only must not look like one that it keeps.
        if (gauges.windows == before.windows && gauges.handles == before.handles) break;
    }
    return gauges;
}

void ScenarioRun::noticeDialogs() {
    if (_timeline.isQuiet()) return;  // asking every dialog for its texts takes long
    std::map<HWND, std::string> now;
    for (const HWND window : dialogs()) {
        // Keep the description from the first sight of the dialog: a closing one has no texts.
        const auto known = _noticed.find(window);
        now[window] = known != _noticed.end() ? known->second : describeDialog(window);
        if (known == _noticed.end()) _timeline.note("opened: " + now[window]);
    }
    for (const auto& [window, text] : _noticed)
        if (!now.contains(window)) _timeline.note("closed: " + text);
    _noticed = std::move(now);
}

std::string ScenarioRun::describeOpenDialogs() {
    std::string text;
    for (const HWND window : dialogs()) {
        text += (text.empty() ? "" : ", ") + describeDialog(window);
        if (!answers(window)) text += " (does not answer)";
    }
    return text.empty() ? "no dialog is open" : "open: " + text;
}

std::string ScenarioRun::trace() const {
    const std::string all = readWholeFile(_traceFile);
    // A file that is shorter than before has been replaced by a new one, so all of it is new.
    return all.size() < _tracedBefore ? all : all.substr(_tracedBefore);
}

SimulatedDevice& ScenarioRun::device() {
    if (!simulatedDevice) throw Failure("the scenario has no device; \"device\" must come first");
    return *simulatedDevice;
}

LinkRecorder& ScenarioRun::recorder() {
    if (!linkRecorder) throw Failure("nothing is recorded; \"record-links\" must come first");
    return *linkRecorder;
}

}  // namespace printpath
