#include "tools/printpath/windows/monitor_process.h"

#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/wide_text.h"

#include <cstdio>
#include <vector>

namespace printpath {

namespace {

constexpr DWORD kAbortCode = 3;
constexpr DWORD kFirstExceptionCode = 0xC0000000;
constexpr UINT kEndedByUs = 0xDEAD;
constexpr DWORD kEndMs = 5000;

struct FreeEnvironment {
    void operator()(wchar_t* block) const noexcept { ::FreeEnvironmentStringsW(block); }
};

// Names are compared without regard to case, as the system does.
struct LessWithoutCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return ::CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_LESS_THAN;
    }
};

std::wstring environmentBlock(const std::map<std::wstring, std::wstring>& changes) {
    std::map<std::wstring, std::wstring, LessWithoutCase> all;
    const std::unique_ptr<wchar_t, FreeEnvironment> own(::GetEnvironmentStringsW());
    for (const wchar_t* line = own.get(); line != nullptr && *line != 0;) {
        const std::wstring entry(line);
        const std::size_t equals = entry.find(L'=', 1);
        if (equals != std::wstring::npos) all[entry.substr(0, equals)] = entry.substr(equals + 1);
        line += entry.size() + 1;
    }
    for (const auto& [name, value] : changes)
        all[name] = value;
    std::wstring block;
    for (const auto& [name, value] : all) {
        block.append(name).append(1, L'=').append(value).append(1, L'\0');
    }
    block += L'\0';
    return block;
}

}  // namespace

MonitorProcess::MonitorProcess(const std::filesystem::path& program, const std::wstring& arguments,
                               const std::map<std::wstring, std::wstring>& environment) {
    std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
    std::wstring block = environmentBlock(environment);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!::CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                          CREATE_UNICODE_ENVIRONMENT, block.data(), nullptr, &startup, &started)) {
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
