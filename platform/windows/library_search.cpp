#include "platform/library_search.h"

#include "platform/trace.h"

#include <windows.h>

namespace platform {

void keepLibrarySearchToOwnAndSystemFolder() noexcept {
    // The folder of the program comes first: the maker's library is installed there. Windows 7
    // knows this function since its update of 2011 (KB2533623).
    if (!::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_APPLICATION_DIR |
                                    LOAD_LIBRARY_SEARCH_SYSTEM32))
        trace("TERNA - libraries of other folders are not kept out, error %lu", ::GetLastError());
}

}  // namespace platform
