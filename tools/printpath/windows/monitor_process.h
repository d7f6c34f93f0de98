#pragma once

#include "tools/printpath/windows/handle.h"

#include <filesystem>
#include <map>
#include <string>

namespace printpath {

// A running monitor. Destroying the object ends a monitor that still runs.
class MonitorProcess {
public:
    // Starts `program` with the arguments as one text, after setting these environment variables.
    // Throws Failure when it cannot be started.
    MonitorProcess(const std::filesystem::path& program, const std::wstring& arguments,
                   const std::map<std::wstring, std::wstring>& environment);
    ~MonitorProcess();
    MonitorProcess(const MonitorProcess&) = delete;
    MonitorProcess& operator=(const MonitorProcess&) = delete;

    DWORD id() const { return _id; }
    bool running() const { return ::WaitForSingleObject(_process.get(), 0) == WAIT_TIMEOUT; }
    // All 32 bits of the exit code. The monitor must have ended.
    DWORD exitCode() const;
    void terminate();

private:
    Handle _process;
    DWORD _id = 0;
};

// The exit code for messages, such as "0 (0x00000000)", with a word for well-known codes.
std::string describeExitCode(DWORD code);
// Whether this exit code means that an exception or abort() has ended the process.
bool isCrash(DWORD code);

}  // namespace printpath
