#include "platform/trace_line.h"

#include "platform/trace.h"
#include "platform/windows/handles.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdio>

namespace platform {
namespace {

// Null until somebody asks; the invalid handle where no trace is wanted. Open until the process
// ends: any thread may be about to write its last line.
std::atomic<HANDLE> traceFile{nullptr};

// Not every system finds the end of a file and writes there in one step (Wine does not): two
// threads would write to the same place, and a line would be lost.
SRWLOCK oneLineAtATime = SRWLOCK_INIT;

HANDLE openWantedFile() noexcept {
    constexpr DWORD kPathUnits = 1024;
    wchar_t path[kPathUnits];
    const DWORD units = ::GetEnvironmentVariableW(L"QVSM_TRACE", path, kPathUnits);
    if (units == 0 || units >= kPathUnits) return invalidHandle();
    // Without the right to write elsewhere than at the end, lines of several processes do not mix.
    return ::CreateFileW(path, FILE_APPEND_DATA,
                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

HANDLE openedFile() noexcept {
    HANDLE known = traceFile.load(std::memory_order_acquire);
    if (known != nullptr) return known;
    // Kept, because a trace may stand between a failed call and the question for its error.
    const DWORD lastError = ::GetLastError();
    FileHandle mine(openWantedFile());
    if (traceFile.compare_exchange_strong(known, mine.get())) known = mine.release();
    ::SetLastError(lastError);
    return known;  // if another thread was first this is its file, and ours closes itself
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
