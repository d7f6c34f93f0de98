#include "platform/windows/lazy_library.h"

#include <windows.h>

namespace platform {

void* findFunction(const wchar_t* library, const char* name) noexcept {
    // Call LoadLibrary even if the library is loaded: it waits until another thread's load has
    // finished. Only the system's folder is searched, because a file of this name that somebody
    // left beside the program would be found first and executed.
    const HMODULE module = ::LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (module == nullptr) return nullptr;
    return reinterpret_cast<void*>(::GetProcAddress(module, name));
}

}  // namespace platform
