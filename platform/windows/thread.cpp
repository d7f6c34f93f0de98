#include "platform/thread.h"

#include <windows.h>
#include <memory>
#include <new>

namespace platform {
namespace {

struct Start {
    ThreadProcedure procedure;
    void* parameter;
};

// The system calls a thread procedure with its own calling convention and result type.
DWORD WINAPI runThread(void* parameter) {
    const std::unique_ptr<const Start> start(static_cast<const Start*>(parameter));
    const Start what = *start;
    return what.procedure(what.parameter);
}

}  // namespace

NativeHandle startThread(ThreadProcedure procedure, void* parameter,
                         std::atomic<std::uint32_t>& threadId) noexcept {
    // Let the system write the id directly: it does so before the thread begins to run. If we
    // copied the id after the call, a thread that asks for it at once could find the old value.
    static_assert(sizeof threadId == sizeof(DWORD) && std::atomic<DWORD>::is_always_lock_free);
    auto* const id = reinterpret_cast<DWORD*>(&threadId);
    std::unique_ptr<Start> start(new (std::nothrow) Start{procedure, parameter});
    if (start == nullptr) return nullptr;
    const HANDLE thread = ::CreateThread(nullptr, 0, &runThread, start.get(), 0, id);
    if (thread == nullptr) return nullptr;
    static_cast<void>(start.release());  // runThread() now owns it and deletes it
    return thread;
}

bool threadExitCode(NativeHandle thread, std::uint32_t& code) noexcept {
    static_assert(kStillActive == STILL_ACTIVE);
    DWORD exitCode = 0;
    if (::GetExitCodeThread(thread, &exitCode) == 0) return false;
    code = exitCode;
    return true;
}

std::uint32_t waitForThread(NativeHandle thread, std::uint32_t timeoutMs) noexcept {
    return ::WaitForSingleObject(thread, timeoutMs);
}

void closeThread(NativeHandle thread) noexcept {
    if (thread != nullptr) ::CloseHandle(thread);
}

std::uint32_t currentThreadId() noexcept {
    return ::GetCurrentThreadId();
}

void sleepFor(std::uint32_t milliseconds) noexcept {
    ::Sleep(milliseconds);
}

}  // namespace platform
