#pragma once

#include "platform/native_handle.h"

#include <windows.h>
#include <memory>

// Owners for the handles of the system, which have different values for "no handle".
namespace platform {

struct CloseFileHandle {
    // "No file" is INVALID_HANDLE_VALUE, but unique_ptr tests for null and resets to null. This
    // pointer type translates between the two.
    class pointer {
    public:
        // NOLINTBEGIN(google-explicit-constructor): unique_ptr asks for a pointer that converts
        pointer(HANDLE handle = invalidHandle()) noexcept : _handle(handle) {}
        pointer(std::nullptr_t) noexcept : pointer() {}
        explicit operator bool() const noexcept { return _handle != invalidHandle(); }
        operator HANDLE() const noexcept { return _handle; }
        // NOLINTEND(google-explicit-constructor)
        friend bool operator==(pointer a, pointer b) noexcept { return a._handle == b._handle; }
        friend bool operator==(pointer a, std::nullptr_t) noexcept { return !a; }

    private:
        HANDLE _handle;
    };
    void operator()(pointer file) const noexcept { ::CloseHandle(file); }
};
using FileHandle = std::unique_ptr<void, CloseFileHandle>;

}  // namespace platform
