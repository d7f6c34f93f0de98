// startup_meter MONITOR EMPTY_PROGRAM [RUNS [--check]]: starts the programs in turn. For each it
// prints the time from the start of the process to its visible dialog, its peak memory and its
// size, and for the monitor also the ratios to the others. The monitor reads a printer's identity
// and a status that opens an alert from a pipe. The third program of each round is the empty one
// again, which first asks the spooler for the printer: the monitor cannot avoid this cost. The
// size, both kinds of memory and the shortest start have limits; with --check the meter ends with 1
// when one of them is exceeded. The middle of the starts has none, because it depends on what else
// the machine does.
#include "tools/printpath/windows/handle.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kRuns = 15;
// What --check demands. Time and memory are those of the monitor beside the empty program's. On a
// quiet machine the start takes 1.3 to 1.5 of the empty program's, and 2.2 or more if the first
// record waits for the sleep of the main loop.
constexpr double kStartLimit = 1.8, kWorkingSetLimit = 1.32, kCommitLimit = 1.4;
constexpr double kSizeLimitKiB = 800;  // the pictures have 350 of them, for screens of 200 %
// A single start may take any time on a busy machine, so it gets more rounds there.
constexpr int kMoreRounds = 80;
constexpr DWORD kTimeLimitMs = 20000;
constexpr DWORD kSettleMs = 200;  // a program goes on allocating after its dialog is visible
constexpr std::uint32_t kPrinterId = 7400;
constexpr std::uint32_t kPaperOut = 41150;

using printpath::Handle;

struct Figures {
    double milliseconds = 0;
    double workingSetKiB = 0;
    double commitKiB = 0;
};

// --- What the print path writes ---

std::string number(std::uint32_t value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string record(std::uint32_t recordClass, std::uint32_t subcode, const std::string& body) {
    return "VELO" + number(recordClass) + number(subcode) + number(kPrinterId) +
           number(static_cast<std::uint32_t>(body.size())) + body;
}

bool write(HANDLE pipe, const std::string& bytes) {
    DWORD written = 0;
    return ::WriteFile(pipe, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) !=
           FALSE;
}

bool openAlert(HANDLE pipe) {
    if (!::ConnectNamedPipe(pipe, nullptr) && ::GetLastError() != ERROR_PIPE_CONNECTED)
        return false;
    using namespace std::string_literals;
    return write(pipe, record(0, 0, "USB001\0Beamline K7400\0"s)) &&
           write(pipe, record(2, 3, number(kPaperOut)));
}

// --- Watching a process ---

struct Search {
    DWORD process;
    HWND found;
};

// Takes dialogs only ("#32770" is the system's class for them): a program may have other windows.
BOOL CALLBACK lookAtWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    wchar_t name[16] = {};
    ::GetClassNameW(window, name, 16);
    if (process != search.process || !::IsWindowVisible(window) ||
        std::wcscmp(name, L"#32770") != 0)
        return TRUE;
    search.found = window;
    return FALSE;
}

bool waitForDialog(const PROCESS_INFORMATION& process) {
    Search search{process.dwProcessId, nullptr};
    for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < kTimeLimitMs;) {
        ::EnumWindows(&lookAtWindow, reinterpret_cast<LPARAM>(&search));
        if (search.found != nullptr) return true;
        if (::WaitForSingleObject(process.hProcess, 1) == WAIT_OBJECT_0) return false;
    }
    return false;
}

double now() {
    LARGE_INTEGER ticks, perSecond;
    ::QueryPerformanceCounter(&ticks);
    ::QueryPerformanceFrequency(&perSecond);
    return 1000.0 * static_cast<double>(ticks.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

// One start. `pipe` is null for a program that shows its dialog by itself.
bool measure(std::wstring commandLine, HANDLE pipe, Figures& figures) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const double start = now();
    if (!::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &process))
        return false;
    const Handle closeProcess(process.hProcess), closeThread(process.hThread);

    const bool shown = (pipe == nullptr || openAlert(pipe)) && waitForDialog(process);
    figures.milliseconds = now() - start;
    ::Sleep(kSettleMs);
    PROCESS_MEMORY_COUNTERS memory{};
    const bool known = ::GetProcessMemoryInfo(process.hProcess, &memory, sizeof memory) != FALSE;
    figures.workingSetKiB = static_cast<double>(memory.PeakWorkingSetSize) / 1024;
    figures.commitKiB = static_cast<double>(memory.PeakPagefileUsage) / 1024;
    // Ended by force, because a dialog would wait for its user.
    ::TerminateProcess(process.hProcess, 0);
    ::WaitForSingleObject(process.hProcess, kTimeLimitMs);
    return shown && known;
}

bool measureMonitor(const std::wstring& program, int run, Figures& figures) {
    const std::wstring name =
        L"startup" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(run);
    const Handle pipe(::CreateNamedPipeW((L"\\\\.\\pipe\\" + name).c_str(), PIPE_ACCESS_OUTBOUND,
                                         PIPE_TYPE_MESSAGE | PIPE_WAIT, 1, 4096, 4096, 0, nullptr));
    return measure(
        L"\"" + program + L"\" inputPipe=" + name + L" printerid=" + std::to_wstring(kPrinterId),
        pipe.get(), figures);
}

// --- Report ---

using Runs = std::vector<Figures>;

// The median, because one start that another program has slowed down does not move it.
double middle(std::vector<double> values) {
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

double least(const std::vector<double>& values) {
    return *std::min_element(values.begin(), values.end());
}

std::vector<double> column(const Runs& runs, double Figures::*figure) {
    std::vector<double> values;
    for (const Figures& run : runs)
        values.push_back(run.*figure);
    return values;
}

double sizeKiB(const std::wstring& program) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    ::GetFileAttributesExW(program.c_str(), GetFileExInfoStandard, &data);
    return static_cast<double>(data.nFileSizeLow) / 1024;
}

// One figure of the three programs, the monitor beside each of the others.
struct Row {
    const char* what;
    double monitor, empty, asking;
    double limit = 0;  // of the monitor beside the empty program, 0 without one

    [[nodiscard]] double ratio() const { return monitor / empty; }
    [[nodiscard]] bool isWithin() const { return limit == 0 || ratio() <= limit; }
    void print() const {
        std::printf("%-34s %8.1f %8.1f %8.1f %8.3f %8.3f", what, monitor, empty, asking, ratio(),
                    monitor / asking);
        if (limit != 0) std::printf("  %s %.2f", isWithin() ? "<=" : "not <=", limit);
        std::printf("\n");
    }
};

struct Measured {
    Runs monitor, empty, asking;

    template <typename Summary>
    [[nodiscard]] Row row(const char* what, double Figures::*figure, Summary summary,
                          double limit = 0) const {
        return {what, summary(column(monitor, figure)), summary(column(empty, figure)),
                summary(column(asking, figure)), limit};
    }
    [[nodiscard]] Row shortestStart() const {
        return row("  shortest", &Figures::milliseconds, least, kStartLimit);
    }
};

bool measureAll(const std::wstring& monitor, const std::wstring& empty, int runs, Measured& all) {
    const std::wstring plain = L"\"" + empty + L"\"";
    for (int run = -1; run < runs; ++run) {  // the first round fills the caches, it is not counted
        Figures ours, theirs, asking;
        if (!measureMonitor(monitor, run + 1, ours) || !measure(plain, nullptr, theirs) ||
            !measure(plain + L" printer", nullptr, asking))
            return false;
        if (run < 0) continue;
        all.monitor.push_back(ours);
        all.empty.push_back(theirs);
        all.asking.push_back(asking);
    }
    return true;
}

// Whether every figure is within its limit.
bool report(const Measured& all, double monitorKiB) {
    const Row rows[] = {
        all.row("start to visible dialog, ms", &Figures::milliseconds, middle),
        all.shortestStart(),
        all.row("peak working set, KiB", &Figures::workingSetKiB, middle, kWorkingSetLimit),
        all.row("peak committed memory, KiB", &Figures::commitKiB, middle, kCommitLimit),
    };
    std::printf("%-34s %8s %8s %8s %8s %8s  %s\n", "", "monitor", "empty", "asking", "/empty",
                "/asking", "limit of /empty");
    bool isWithin = monitorKiB <= kSizeLimitKiB;
    for (const Row& row : rows) {
        row.print();
        isWithin = isWithin && row.isWithin();
    }
    std::printf("%-34s %8.1f, %s %.0f\n", "size of the program, KiB", monitorKiB,
                monitorKiB <= kSizeLimitKiB ? "<=" : "not <=", kSizeLimitKiB);
    std::printf("startup: %s\n", isWithin ? "within its limits" : "a limit is exceeded");
    return isWithin;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3) return 2;
    const std::wstring monitor = argv[1], empty = argv[2];
    const int runs = argc > 3 ? static_cast<int>(std::wcstol(argv[3], nullptr, 10)) : kRuns;
    const bool check = argc > 4 && std::wcscmp(argv[4], L"--check") == 0;

    Measured all;
    bool measured = runs > 0 && measureAll(monitor, empty, runs, all);
    for (int round = 0; check && measured && round < kMoreRounds; ++round) {
        const Row start = all.shortestStart();
        if (start.isWithin()) break;
        measured = measureAll(monitor, empty, 1, all);
    }
    if (!measured) {
        std::printf("a program did not start or showed no dialog\n");
        return 1;
    }
    return report(all, sizeKiB(monitor)) || !check ? 0 : 1;
}
