#include "platform/pipe.h"

#include <windows.h>

namespace platform {
namespace {

NativeHandle openPipe(const wchar_t* path, DWORD access) noexcept {
    // Another program may have made a pipe of this name before the print path did. With these flags
    // its server can only ask who the user is; without them it could act as the user.
    constexpr DWORD kFlags = SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION;
    return ::CreateFileW(path, access, 0, nullptr, OPEN_EXISTING, kFlags, nullptr);
}

}  // namespace

bool waitForPipe(const wchar_t* path) noexcept {
    return ::WaitNamedPipeW(path, NMPWAIT_USE_DEFAULT_WAIT) != 0;
}

NativeHandle openPipeForReading(const wchar_t* path) noexcept {
    return openPipe(path, GENERIC_READ);
}

NativeHandle openPipeForWriting(const wchar_t* path) noexcept {
    return openPipe(path, GENERIC_WRITE);
}

void setMessageReadMode(NativeHandle pipe) noexcept {
    DWORD mode = PIPE_READMODE_MESSAGE;
    ::SetNamedPipeHandleState(pipe, &mode, nullptr, nullptr);
}

PipeRead readPipe(NativeHandle pipe, void* to, std::uint32_t count) noexcept {
    DWORD bytes = 0;
    if (::ReadFile(pipe, to, count, &bytes, nullptr) != 0) return {false, bytes, kSuccess};
    const DWORD error = ::GetLastError();
    // A message longer than the buffer is no failure: `bytes` have arrived, and the next read gets
    // the rest.
    if (error == ERROR_MORE_DATA) return {false, bytes, kSuccess};
    return {true, bytes, error};
}

bool writePipe(NativeHandle pipe, const void* from, std::uint32_t count) noexcept {
    DWORD written = 0;
    return ::WriteFile(pipe, from, count, &written, nullptr) != 0 && written == count;
}

}  // namespace platform
