#include "platform/trace_line.h"

#include "platform/machine_settings.h"
#include "platform/trace.h"
#include "platform/trace_path.h"
#include "platform/windows/handles.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <new>
#include <string>

namespace platform {
namespace {

constexpr DWORD kPathUnits = 1024;  // Equally right with 1025: a little more room.
constexpr wchar_t kOlderFile[] = L".old";

enum class Wanted { NotYetKnown, No, Yes };
std::atomic<Wanted> wanted{Wanted::NotYetKnown};

// Guards what follows. Besides, finding the end of a file and writing there is not one step on
// every system (on Wine it is not): without the lock two lines could be written to the same place.
SRWLOCK oneAtATime = SRWLOCK_INIT;
// Never closed at the end of the process, because any thread may still write a line.
HANDLE traceFile = invalidHandle();
wchar_t tracePathOfThisProcess[kPathUnits];

// The product may write a trace line between a failed call and the question for its error number.
class TraceScope {
public:
    TraceScope() noexcept : _lastError(::GetLastError()) { ::AcquireSRWLockExclusive(&oneAtATime); }
    ~TraceScope() {
        ::ReleaseSRWLockExclusive(&oneAtATime);  // Equally right after the next: it sets no error.
        ::SetLastError(_lastError);
    }
    TraceScope(const TraceScope&) = delete;
    TraceScope& operator=(const TraceScope&) = delete;

private:
    DWORD _lastError;
};

bool environmentVariable(const std::wstring& name, std::wstring& value) {
    wchar_t text[kPathUnits];
    const DWORD units = ::GetEnvironmentVariableW(name.c_str(), text, kPathUnits);
    // Equally right with >: a text for which there is no room says one unit more, for its end.
    if (units == 0 || units >= kPathUnits) return false;
    value.assign(text, units);
    return true;
}

// What the administrator wants for all processes, also for those whose environment nobody sets.
std::wstring machinePath() {
    wchar_t pattern[kPathUnits];
    DWORD bytes = sizeof pattern;
    if (::RegGetValueW(HKEY_LOCAL_MACHINE, kMachineSettings, L"TraceFile", RRF_RT_REG_SZ, nullptr,
                       pattern, &bytes) != ERROR_SUCCESS)
        return {};
    return tracePath(pattern, ::GetCurrentProcessId(), environmentVariable);
}

bool findPath() noexcept try {
    std::wstring path;
    if (!environmentVariable(L"QVSM_TRACE", path)) path = machinePath();
    // Equally right with true: no file has an empty name.
    if (path.empty() || path.size() + std::size(kOlderFile) > kPathUnits) return false;
    tracePathOfThisProcess[path.copy(tracePathOfThisProcess, path.size())] = L'\0';
    return true;
} catch (const std::bad_alloc&) {
    return false;  // Equally right with true: the path stays empty, and no file opens by it.
}

// FILE_APPEND_DATA makes every write go to the end of the file, so that one process does not
// overwrite the lines of another. The file may be renamed meanwhile.
bool openFile() noexcept {
    traceFile = ::CreateFileW(tracePathOfThisProcess, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    return traceFile != invalidHandle();
}

bool isFull() noexcept {
    LARGE_INTEGER size;
    return ::GetFileSizeEx(traceFile, &size) != 0 && size.QuadPart >= kTraceFileLimit;
}

// The full file becomes the older one, and the older one before it goes.
bool setAside() noexcept {
    wchar_t older[kPathUnits];
    ::lstrcpyW(older, tracePathOfThisProcess);
    ::lstrcatW(older, kOlderFile);
    return ::MoveFileExW(tracePathOfThisProcess, older, MOVEFILE_REPLACE_EXISTING) != 0;
}

// A file with room, or none. Another process may have set the full one aside already: then the name
// stands for a new file.
bool makeRoom() noexcept {
    for (int attempt = 0; isFull(); ++attempt) {
        ::CloseHandle(traceFile);
        traceFile = invalidHandle();
        const bool isStillFull = attempt > 0;
        // Equally right with 2: somebody would have to fill the new file at this moment.
        // Equally right with &&: what cannot be set aside is tried once more.
        if ((isStillFull && !setAside()) || attempt > 1 || !openFile()) return false;
    }
    return true;
}

}  // namespace

bool isTraceKept() noexcept {
    if (wanted.load(std::memory_order_acquire) == Wanted::NotYetKnown) {
        const TraceScope scope;
        if (wanted.load(std::memory_order_relaxed) == Wanted::NotYetKnown)
            wanted.store(findPath() && openFile() ? Wanted::Yes : Wanted::No,
                         std::memory_order_release);
    }
    return wanted.load(std::memory_order_acquire) == Wanted::Yes;
}

void keepTraceLine(std::string_view line) noexcept {
    constexpr std::size_t kPrefixLimit = 64;  // Equally right with 65: a little more room.
    // Equally right with 3 or with - (2): a prefix has at most 36 characters.
    char text[kPrefixLimit + kTraceLimit + 2];
    SYSTEMTIME time;
    ::GetLocalTime(&time);
    const int prefix =
        std::snprintf(text, kPrefixLimit, "%04u-%02u-%02u %02u:%02u:%02u.%03u %lu ",
                      static_cast<unsigned>(time.wYear), static_cast<unsigned>(time.wMonth),
                      static_cast<unsigned>(time.wDay), static_cast<unsigned>(time.wHour),
                      static_cast<unsigned>(time.wMinute), static_cast<unsigned>(time.wSecond),
                      static_cast<unsigned>(time.wMilliseconds), ::GetCurrentThreadId());
    char* end = text + std::max(prefix, 0);
    end = std::copy_n(line.data(), std::min<std::size_t>(line.size(), kTraceLimit), end);
    *end++ = '\r';
    *end++ = '\n';

    const TraceScope scope;
    if (traceFile == invalidHandle()) return;
    if (!makeRoom()) {
        wanted.store(Wanted::No, std::memory_order_release);
        return;
    }
    DWORD written = 0;
    ::WriteFile(traceFile, text, static_cast<DWORD>(end - text), &written, nullptr);
}

void debugOutput(const char* text) noexcept {
    ::OutputDebugStringA(text);
}

}  // namespace platform
