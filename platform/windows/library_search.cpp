#include "platform/library_search.h"

#include <windows.h>

namespace platform {

void dropCurrentDirectoryFromLibrarySearch() noexcept {
    ::SetDllDirectoryW(L"");
}

}  // namespace platform
