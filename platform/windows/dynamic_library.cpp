#include "platform/dynamic_library.h"

#include <windows.h>

namespace platform {

DynamicLibrary::DynamicLibrary(const wchar_t* name) noexcept : _module(::LoadLibraryW(name)) {}

DynamicLibrary::~DynamicLibrary() {
    if (_module != nullptr) ::FreeLibrary(static_cast<HMODULE>(_module));
}

void* DynamicLibrary::function(const char* name) const noexcept {
    if (_module == nullptr) return nullptr;
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(_module), name));
}

}  // namespace platform
