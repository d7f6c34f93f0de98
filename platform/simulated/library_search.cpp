#include "platform/library_search.h"

namespace platform {

// Nothing to do: the simulated device library is found by its name and is in no folder.
void keepLibrarySearchToOwnAndSystemFolder() noexcept {}

}  // namespace platform
