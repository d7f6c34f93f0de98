#pragma once

#include "platform/native_handle.h"

namespace platform {

// A library that is loaded by name at run time and freed by the destructor. The name is looked for
// where platform/library_search.h says. Any thread may make one and use it while it exists.
class DynamicLibrary {
public:
    explicit DynamicLibrary(const wchar_t* name) noexcept;
    ~DynamicLibrary();
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    [[nodiscard]] NativeHandle handle() const noexcept { return _module; }  // null: not loaded
    // The address of an exported function; null when the library or the function is missing.
    [[nodiscard]] void* function(const char* name) const noexcept;

private:
    NativeHandle _module;  // owned
};

}  // namespace platform
