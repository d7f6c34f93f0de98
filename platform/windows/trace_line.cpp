#include "platform/trace_line.h"

#include "platform/trace.h"
#include "platform/windows/handles.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdio>

namespace platform {
namespace {

// Null until the first line or question; invalidHandle() if no trace is wanted. The file is never
// closed before the process ends, because any thread may still write a line.
std::atomic<HANDLE> traceFile{nullptr};

// Finding the end of a file and writing there is not one step on every system (on Wine it is not).
// Without this lock two threads could write to the same place, and one line would be lost.
SRWLOCK oneLineAtATime = SRWLOCK_INIT;

HANDLE openWantedFile() noexcept {
    constexpr DWORD kPathUnits = 1024;
    wchar_t path[kPathUnits];
    const DWORD units = ::GetEnvironmentVariableW(L"QVSM_TRACE", path, kPathUnits);
    if (units == 0 || units >= kPathUnits) return invalidHandle();
    // FILE_APPEND_DATA alone makes every write go to the end of the file, so that one process does
    // not overwrite the lines of another.
    return ::CreateFileW(path, FILE_APPEND_DATA,
                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

HANDLE openedFile() noexcept {
    HANDLE known = traceFile.load(std::memory_order_acquire);
    if (known != nullptr) return known;
    // Keep the last error, because the product may write a trace line between a failed call and
    // the question for its error number.
    const DWORD lastError = ::GetLastError();
    FileHandle mine(openWantedFile());
    if (traceFile.compare_exchange_strong(known, mine.get())) known = mine.release();
    ::SetLastError(lastError);
    return known;  // another thread's file if it was faster; `mine` then closes ours
}

}  // namespace

bool isTraceKept() noexcept {
    return openedFile() != invalidHandle();
}

void keepTraceLine(std::string_view line) noexcept {
    constexpr std::size_t kPrefixLimit = 64;
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
    const DWORD lastError = ::GetLastError();
    DWORD written = 0;
    const HANDLE file = openedFile();
    ::AcquireSRWLockExclusive(&oneLineAtATime);
    ::WriteFile(file, text, static_cast<DWORD>(end - text), &written, nullptr);
    ::ReleaseSRWLockExclusive(&oneLineAtATime);
    ::SetLastError(lastError);
}

void debugOutput(const char* text) noexcept {
    ::OutputDebugStringA(text);
}

}  // namespace platform
