#pragma once

#include "platform/native_handle.h"

#include <atomic>
#include <cstdint>

// Threads of the operating system. A handle that startThread gave is the caller's to close. Any
// thread may call.
namespace platform {

inline constexpr std::uint32_t kStillActive = 259;  // exit code of a thread that has not ended

using ThreadProcedure = std::uint32_t (*)(void* parameter);

// Runs `procedure` at once on a thread of its own with the default stack. Null on failure.
// `threadId` is written on success only, before the thread runs: a procedure that looks there finds
// its own id. It must live until this returns.
[[nodiscard]] NativeHandle startThread(ThreadProcedure procedure, void* parameter,
                                       std::atomic<std::uint32_t>& threadId) noexcept;

// False when the system does not tell; `code` is then untouched. A running thread has kStillActive.
[[nodiscard]] bool threadExitCode(NativeHandle thread, std::uint32_t& code) noexcept;

// The system's wait result: 0 when the thread has ended, 258 at the time-out, 0xFFFFFFFF
// when the wait fails.
std::uint32_t waitForThread(NativeHandle thread, std::uint32_t timeoutMs) noexcept;

// The thread itself goes on running. Null is ignored.
void closeThread(NativeHandle thread) noexcept;

[[nodiscard]] std::uint32_t currentThreadId() noexcept;

void sleepFor(std::uint32_t milliseconds) noexcept;

}  // namespace platform
