// startup_meter MONITOR EMPTY_PROGRAM [RUNS]: starts both programs in turn and prints, for each and
// as a ratio, the median time from the start of the process to its visible dialog, the median of
// its peak memory, and its size. The monitor is given a pipe from which it reads a printer's
// identity and a status that opens an alert.
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
constexpr DWORD kTimeLimitMs = 20000;
constexpr DWORD kSettleMs = 200;  // for what a program still does when its dialog stands
constexpr std::uint32_t kPrinterId = 7400;
constexpr std::uint32_t kPaperOut = 41150;

struct CloseHandleOf {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<HANDLE, CloseHandleOf>;

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

template <typename Member>
double median(std::vector<Figures> all, Member member) {
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
    std::nth_element(all.begin(), middle, all.end(), [member](const Figures& a, const Figures& b) {
        return a.*member < b.*member;
    });
    return (*middle).*member;
}

double sizeKiB(const std::wstring& program) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    ::GetFileAttributesExW(program.c_str(), GetFileExInfoStandard, &data);
    return static_cast<double>(data.nFileSizeLow) / 1024;
}

void print(const char* what, double monitor, double empty, const char* aim) {
    std::printf("%-36s %10.1f %10.1f %8.3f  %s\n", what, monitor, empty, monitor / empty, aim);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 3) return 2;
    const std::wstring monitor = argv[1], empty = argv[2];
    const int runs = argc > 3 ? static_cast<int>(std::wcstol(argv[3], nullptr, 10)) : kRuns;

    std::vector<Figures> ours, theirs;
    for (int run = -1; run < runs; ++run) {  // the first pair warms the caches and does not count
        Figures monitorFigures, emptyFigures;
        if (!measureMonitor(monitor, run + 1, monitorFigures) ||
            !measure(L"\"" + empty + L"\"", nullptr, emptyFigures)) {
            std::printf("a program did not start or showed no dialog\n");
            return 1;
        }
        if (run < 0) continue;
        ours.push_back(monitorFigures);
        theirs.push_back(emptyFigures);
    }

    std::printf("%-36s %10s %10s %8s  %s\n", "", "monitor", "empty", "ratio", "aim");
    print("start to visible dialog, ms", median(ours, &Figures::milliseconds),
          median(theirs, &Figures::milliseconds), "<= 1.15");
    print("peak working set, KiB", median(ours, &Figures::workingSetKiB),
          median(theirs, &Figures::workingSetKiB), "<= 1.2");
    print("peak committed memory, KiB", median(ours, &Figures::commitKiB),
          median(theirs, &Figures::commitKiB), "<= 1.2");
    print("size of the program, KiB", sizeKiB(monitor), sizeKiB(empty), "<= 600 KiB");
    return 0;
}
