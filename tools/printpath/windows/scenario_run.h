#pragma once

#include "tools/printpath/gauge_log.h"
#include "tools/printpath/record_bytes.h"
#include "tools/printpath/scenario.h"
#include "tools/printpath/windows/alert_windows.h"
#include "tools/printpath/windows/handle.h"
#include "tools/printpath/windows/link_recorder.h"
#include "tools/printpath/windows/mirrored_desktop.h"
#include "tools/printpath/windows/monitor_process.h"
#include "tools/printpath/windows/options.h"
#include "tools/printpath/windows/pipe_server.h"
#include "tools/printpath/windows/registry_restorer.h"
#include "tools/printpath/windows/simulated_device.h"
#include "tools/printpath/windows/spooler_printer.h"
#include "tools/printpath/windows/timeline.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace printpath {

// What the steps before the start of the monitor have chosen.
struct Preparation {
    std::uint32_t printerId = 1;
    std::optional<std::uint32_t> monitorPrinterId;  // set if the monitor gets another id
    bool byteMode = false;
    bool withPipe = true;
    bool withStrings = true;
    std::wstring arguments;
    std::map<std::wstring, std::wstring> environment;
};

// How the next records are written.
struct Writing {
    WriteAs as = WriteAs::OneMessage;
    std::size_t chunkBytes = 1;
    int joined = 0;  // how many more records are collected in `joinedBytes`
    std::string joinedBytes;
    std::optional<std::size_t> cutAfter;  // how many bytes of the next record are written
};

// Everything that the steps of one scenario use: the pipe, the monitor, its dialogs, the device.
// Members are destroyed from the last to the first, so the monitor ends before the things that it
// uses are destroyed.
class ScenarioRun {
public:
    ScenarioRun(const Options& options, Timeline& timeline);
    ~ScenarioRun();
    ScenarioRun(const ScenarioRun&) = delete;
    ScenarioRun& operator=(const ScenarioRun&) = delete;

    const Options& options() const { return _options; }
    Timeline& timeline() { return _timeline; }
    std::filesystem::path workFile(const wchar_t* name) const { return _work / name; }
    // The bytes of a file that the scenario names by a path from its own folder. Throws Failure if
    // the file cannot be read.
    std::string readBesideScenario(const std::string& name) const;

    void startMonitor();
    // The running monitor; throws Failure when it has ended unexpectedly.
    MonitorProcess& monitor();
    // Waits for the end of the monitor and returns its exit code. Throws Failure when it does not
    // end in time.
    DWORD awaitExit(const Step& step);
    bool started() const { return _monitor != nullptr; }

    // Asks `condition` every few milliseconds until it is true. After the step's "within", or the
    // time-out of the options, it throws Failure with what was awaited, which dialogs are open and
    // what `found` returns.
    void waitUntil(const Step& step, const std::string& what,
                   const std::function<bool()>& condition,
                   const std::function<std::string()>& found = nullptr);
    // Waits until the monitor has read and handled everything that was written.
    void settle();

    // The monitor's open dialogs without its message boxes, the newest first.
    std::vector<HWND> alerts();
    HWND messageBox();  // null when none is open
    // Reads the gauges when no window and no handle has come or gone for a while, because a closed
    // window may not be destroyed yet.
    Gauges settledGauges();
    // Writes to the timeline which dialogs have opened and closed since the last call.
    void noticeDialogs();
    std::string describeOpenDialogs();

    // Lines that the monitor has traced since the scenario began.
    std::string trace() const;

    SimulatedDevice& device();
    LinkRecorder& recorder();
    int timeoutMs(const Step& step) const;

    Preparation preparation;
    Writing writing;
    HWND dialog = nullptr;  // the dialog that the last wait-dialog found
    // The current round of the outermost repeated part, counted from 1, and the number of rounds.
    std::int64_t round = 1;
    std::int64_t rounds = 1;
    GaugeLog gaugeLog;
    std::unique_ptr<SimulatedDevice> simulatedDevice;
    std::unique_ptr<LinkRecorder> linkRecorder;
    std::unique_ptr<MirroredDesktop> mirroredDesktop;
    std::vector<std::unique_ptr<SpoolerPrinter>> printers;
    RegistryRestorer registry;
    std::unique_ptr<PipeServer> pipe;
    std::map<std::wstring, Handle> protectedFiles;  // the key is the path

private:
    std::filesystem::path monitorToStart() const;
    std::vector<HWND> dialogs() const;
    void awaitQuiet();

    const Options& _options;
    Timeline& _timeline;
    std::filesystem::path _work;
    std::filesystem::path _traceFile;
    std::size_t _tracedBefore = 0;  // bytes in the trace file before the scenario began
    std::map<HWND, std::string> _noticed;
    std::unique_ptr<MonitorProcess> _monitor;
    int _runs = 0;
};

}  // namespace printpath
