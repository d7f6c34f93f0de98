#include "platform/library_search.h"

namespace platform {

void keepLibrarySearchToOwnAndSystemFolder() noexcept {}  // the one library here has no folder

}  // namespace platform
