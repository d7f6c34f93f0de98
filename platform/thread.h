#pragma once

#include "platform/native_handle.h"

#include <atomic>
#include <cstdint>

// Threads of the operating system. The caller must close a handle that startThread() returns. Any
// thread may call.
namespace platform {

inline constexpr std::uint32_t kStillActive = 259;  // exit code of a thread that has not ended

using ThreadProcedure = std::uint32_t (*)(void* parameter);

// Runs `procedure` at once on a new thread with the default stack size. Null on failure. `threadId`
// is written on success only and before the thread runs, so that the procedure can read its own id
// there. It must exist until this returns.
[[nodiscard]] NativeHandle startThread(ThreadProcedure procedure, void* parameter,
                                       std::atomic<std::uint32_t>& threadId) noexcept;

// False when the system cannot say; `code` is then untouched. A running thread has kStillActive.
[[nodiscard]] bool threadExitCode(NativeHandle thread, std::uint32_t& code) noexcept;

// The system's wait result: 0 when the thread has ended, 258 at the time-out, 0xFFFFFFFF
// when the wait fails.
std::uint32_t waitForThread(NativeHandle thread, std::uint32_t timeoutMs) noexcept;

// Closes the handle; the thread goes on running. Null is ignored.
void closeThread(NativeHandle thread) noexcept;

[[nodiscard]] std::uint32_t currentThreadId() noexcept;

void sleepFor(std::uint32_t milliseconds) noexcept;

}  // namespace platform
