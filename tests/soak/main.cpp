// soak.exe: the shipped monitor for a night. docs/verification.md says what it does.
#include "tests/soak/job_starts.h"
#include "tests/soak/long_life.h"
#include "tests/soak/monitor_session.h"
#include "tests/soak/report.h"
#include "tests/soak/soak_records.h"
#include "tools/printpath/windows/cartridge_memory.h"
#include "tools/printpath/windows/failure.h"
#include "tools/printpath/windows/spooler_printer.h"
#include "tools/printpath/windows/wide_text.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cwchar>
#include <optional>
#include <string>
#include <vector>

namespace soak {

namespace {

constexpr DWORD kEndedMs = 10000;  // for what has ended to be gone from the system's list
constexpr DWORD kPollMs = 50;
constexpr std::uint32_t kAllAlerts = 7;

struct Options {
    std::filesystem::path programs;
    std::uint64_t jobs = 10000;
    std::uint64_t records = 1000000;
    bool watched = false;
};

// Nothing when the arguments are wrong.
std::optional<Options> readOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::wstring& argument = arguments[at];
        const bool hasValue = at + 1 < arguments.size();
        if (argument == L"--watched")
            options.watched = true;
        else if (argument == L"--jobs" && hasValue)
            options.jobs = std::wcstoull(arguments[++at].c_str(), nullptr, 10);
        else if (argument == L"--records" && hasValue)
            options.records = std::wcstoull(arguments[++at].c_str(), nullptr, 10);
        else if (options.programs.empty() && argument.front() != L'-')
            options.programs = argument;
        else
            return std::nullopt;
    }
    if (options.programs.empty()) return std::nullopt;
    return options;
}

bool allHaveEnded() {
    const ULONGLONG end = ::GetTickCount64() + kEndedMs;
    while (runningMonitors() > 0 && ::GetTickCount64() < end)
        ::Sleep(kPollMs);
    return runningMonitors() == 0;
}

void soakMonitor(const Options& options, Report& report) {
    printpath::forgetCartridges();
    const std::wstring name = printpath::wideFromUtf8(kPrinterName);
    const printpath::SpoolerPrinter printer(name);
    printpath::setPrinterValue(name, L"AlertMask", kAllAlerts);
    const Workplace workplace(options.programs);
    if (options.records > 0) playLongLife(workplace, options.records, report);
    if (options.jobs > 0) playJobs(workplace, options.jobs, report);
    report.line("");
    report.expect(allHaveEnded(), "no monitor is left");
    report.expect(printpath::memoryIsWhole(), "the memory of cartridges is whole");
}

}  // namespace

}  // namespace soak

int wmain(int count, wchar_t** values) {
    ::_setmode(::_fileno(stdout), _O_BINARY);
    const auto options = soak::readOptions(std::vector<std::wstring>(values + 1, values + count));
    if (!options) {
        std::fputs("soak [--jobs N] [--records N] [--watched] FOLDER-OF-THE-PROGRAMS\n", stderr);
        return 2;
    }
    soak::Report report(options->watched);
    try {
        soak::soakMonitor(*options, report);
    } catch (const std::exception& error) {
        report.expect(false, error.what());
    }
    report.line(report.summary());
    return report.failed() == 0 ? 0 : 1;
}
