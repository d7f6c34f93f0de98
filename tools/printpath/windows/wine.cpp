#include "tools/printpath/windows/wine.h"

#include <windows.h>

namespace printpath {

bool underWine() {
    return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace printpath
