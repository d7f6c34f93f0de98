#include "platform/windows/lazy_library.h"

#include <windows.h>

namespace platform {

void* findFunction(const wchar_t* library, const char* name) noexcept {
    HMODULE module = ::GetModuleHandleW(library);
    if (module == nullptr) module = ::LoadLibraryW(library);
    if (module == nullptr) return nullptr;
    return reinterpret_cast<void*>(::GetProcAddress(module, name));
}

}  // namespace platform
