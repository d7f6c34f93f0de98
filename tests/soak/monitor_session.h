#pragma once

#include "tests/support/gauges.h"
#include "tools/printpath/windows/device_stage.h"
#include "tools/printpath/windows/monitor_process.h"
#include "tools/printpath/windows/pipe_server.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace soak {

// A folder with the shipped programs, the library of the simulated device beside them, gone with
// the object.
class Workplace {
public:
    explicit Workplace(const std::filesystem::path& programs);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::filesystem::path monitor() const;
    std::filesystem::path deviceFolder() const;

private:
    std::filesystem::path _folder;
    std::unique_ptr<printpath::DeviceStage> _device;
};

// One monitor and its pipe. What does not come within a minute throws printpath::Failure: the
// machine may be slow.
class MonitorSession {
public:
    // Starts the monitor and waits until it has opened the pipe.
    MonitorSession(const Workplace& workplace, bool byteMode);

    DWORD processId() const { return _process->id(); }
    void write(const std::string& bytes);
    // The print path goes, when everything written has been read.
    void hangUp();

    // Visible dialogs, in no fixed order.
    std::vector<HWND> alerts() const;
    // Waits until so many are open, and gives them back.
    std::vector<HWND> awaitAlerts(std::size_t count) const;
    // The user chooses a time where one is asked for, and closes the dialog.
    void answer(HWND dialog, int choice) const;

    // When no window has come or gone for a while: what has closed may not be destroyed yet.
    Gauges settledGauges() const;

    // Waits for the monitor's own end and gives back its exit code.
    DWORD awaitEnd() const;

private:
    std::unique_ptr<printpath::PipeServer> _pipe;
    std::unique_ptr<printpath::MonitorProcess> _process;
};

// Monitors of the system that run, whoever started them.
int runningMonitors();

}  // namespace soak
