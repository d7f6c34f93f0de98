#include "tools/printpath/windows/monitor_process.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"

#include <cstdio>

namespace printpath {

namespace {

constexpr DWORD kAbortCode = 3;
constexpr DWORD kFirstExceptionCode = 0xC0000000;
constexpr UINT kEndedByUs = 0xDEAD;
constexpr DWORD kEndMs = 5000;

}  // namespace

MonitorProcess::MonitorProcess(const std::filesystem::path& program, const std::wstring& arguments,
                               const std::map<std::wstring, std::wstring>& environment) {
    // The monitor inherits the variables. printpath itself does not use them, so it does no harm
    // that they are set here as well.
    for (const auto& [name, value] : environment)
        ::SetEnvironmentVariableW(name.c_str(), value.c_str());
    std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                          nullptr, &startup, &started)) {
        const DWORD error = ::GetLastError();
        throw Failure("the monitor " + utf8FromWide(program.wstring()) +
                          " could not be started (system error " + std::to_string(error) + ")",
                      Outcome::Unusable);
    }
    const Handle thread(started.hThread);
    _process.reset(started.hProcess);
    _id = started.dwProcessId;
}

MonitorProcess::~MonitorProcess() {
    if (running()) terminate();
}

DWORD MonitorProcess::exitCode() const {
    DWORD code = 0;
    ::GetExitCodeProcess(_process.get(), &code);
    return code;
}

void MonitorProcess::terminate() {
    ::TerminateProcess(_process.get(), kEndedByUs);
    ::WaitForSingleObject(_process.get(), kEndMs);
}

std::string describeExitCode(DWORD code) {
    char text[64];
    std::snprintf(text, sizeof text, "%lu (0x%08lX)", code, code);
    std::string result = text;
    if (code == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION)) result += ", an access violation";
    if (code == static_cast<DWORD>(EXCEPTION_STACK_OVERFLOW)) result += ", a stack overflow";
    if (code == kAbortCode) result += ", abort() or an exception that nobody caught";
    return result;
}

bool isCrash(DWORD code) {
    return code >= kFirstExceptionCode || code == kAbortCode;
}

}  // namespace printpath
