#pragma once

#include "platform/native_handle.h"

#include <cstdint>

// The client end of a named pipe. Pipe handles live until the process ends: a thread may be blocked
// in a read that nobody can take back, so nothing here closes them. Any thread may call; one thread
// at a time reads from a pipe.
namespace platform {

// Waits until a pipe of this path ("\\.\pipe\name") takes a client, at most for the default
// time-out of its server. False when there is no such pipe or it takes none in that time.
[[nodiscard]] bool waitForPipe(const wchar_t* path) noexcept;

// Not shared. The server may identify the user but not act as the user. invalidHandle() on failure.
[[nodiscard]] NativeHandle openPipeForReading(const wchar_t* path) noexcept;
[[nodiscard]] NativeHandle openPipeForWriting(const wchar_t* path) noexcept;

// A failure is ignored, so a reader must work with a pipe that stays in byte mode too.
void setMessageReadMode(NativeHandle pipe) noexcept;

struct PipeRead {
    bool failed;          // kMoreData is no failure: the bytes have arrived
    std::uint32_t bytes;  // how many arrived; 0 without a failure is an empty message: read again
    std::uint32_t error;  // the system's error number when failed, else 0
};

// Blocks until at least one byte or an empty message has arrived, or the pipe fails.
[[nodiscard]] PipeRead readPipe(NativeHandle pipe, void* to, std::uint32_t count) noexcept;

// Writes the whole block in one synchronous call. False when not all of it was written.
bool writePipe(NativeHandle pipe, const void* from, std::uint32_t count) noexcept;

}  // namespace platform
