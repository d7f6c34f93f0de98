#pragma once

#include <windows.h>

#include <memory>

namespace printpath {

struct CloseKernelHandle {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};
// Owns a process, thread or event, for which null means "none".
using Handle = std::unique_ptr<HANDLE, CloseKernelHandle>;

// Owns a file or pipe. INVALID_HANDLE_VALUE, the system's "none" for these, becomes null.
inline Handle fileHandle(HANDLE handle) {
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

struct CloseRegistryKey {
    using pointer = HKEY;
    void operator()(HKEY key) const noexcept { ::RegCloseKey(key); }
};
using RegistryKey = std::unique_ptr<HKEY, CloseRegistryKey>;

}  // namespace printpath
