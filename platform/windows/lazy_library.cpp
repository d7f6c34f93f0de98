#include "platform/windows/lazy_library.h"

#include <windows.h>

namespace platform {

void* findFunction(const wchar_t* library, const char* name) noexcept {
    // Also where it is loaded: another thread may be about it, and this waits until it has started.
    const HMODULE module = ::LoadLibraryW(library);
    if (module == nullptr) return nullptr;
    return reinterpret_cast<void*>(::GetProcAddress(module, name));
}

}  // namespace platform
