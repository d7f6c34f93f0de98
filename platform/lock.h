#pragma once

#include "platform/native_handle.h"

#include <cstddef>
#include <cstdint>

namespace platform {

inline constexpr std::uint32_t kNoTimeout = 0xFFFFFFFF;  // milliseconds: wait for ever

// An unnamed kernel mutex, re-entrant for the thread that owns it. Where the system has none left
// the handle stays null, and lock and unlock do nothing.
class KernelMutex {
public:
    KernelMutex() noexcept;
    ~KernelMutex();
    KernelMutex(const KernelMutex&) = delete;
    KernelMutex& operator=(const KernelMutex&) = delete;

    // The result of the wait is not looked at: with kNoTimeout it ends only as the owner's.
    void lock(std::uint32_t timeoutMs) noexcept;
    void unlock() noexcept;

private:
    NativeHandle _handle;  // owned
};

// A lock inside the process, re-entrant for the thread that owns it, that costs no system call
// while nobody else wants it. Allocates nothing.
class CriticalSection {
public:
    CriticalSection() noexcept;
    ~CriticalSection();
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    void lock() noexcept;
    void unlock() noexcept;

private:
    static constexpr std::size_t kStorageBytes = 40;  // checked where the system's type is known
    alignas(8) unsigned char _storage[kStorageBytes];
};

}  // namespace platform
