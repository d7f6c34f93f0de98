#pragma once

#include <windows.h>

#include <memory>

namespace printpath {

struct CloseKernelHandle {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};
// Processes, threads, events: empty at null.
using Handle = std::unique_ptr<HANDLE, CloseKernelHandle>;

// Files and pipes: the system says "none" with INVALID_HANDLE_VALUE, which becomes null here.
inline Handle fileHandle(HANDLE handle) {
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

struct CloseRegistryKey {
    using pointer = HKEY;
    void operator()(HKEY key) const noexcept { ::RegCloseKey(key); }
};
using RegistryKey = std::unique_ptr<HKEY, CloseRegistryKey>;

}  // namespace printpath
